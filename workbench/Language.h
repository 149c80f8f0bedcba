#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTranslator;

/// The language of the program: installs the translation files of the program, of Qt and of the plug-ins.
/// Files are named by what they belong to: "kestrun_zh_CN.qm" beside the program, "NAME_zh_CN.qm" beside the module
/// NAME.so.
class Language : public QObject {
    Q_OBJECT

public:
    explicit Language(QObject* parent = nullptr);
    ~Language() override;

    /// Languages that can be chosen, with the name that a speaker gives them.
    struct Choice {
        QString locale;
        QString name;
    };
    static QVector<Choice> choices();

    QString current() const { return m_current; }
    /// Replaces what is installed by the files of that locale. Widgets get QEvent::LanguageChange.
    void install(const QString& locale);
    /// Adds modules (paths without ending) whose translations go with the program's, from now on.
    void addModules(const QStringList& paths);

private:
    bool installFile(const QString& name, const QString& directory);

    QString m_current;
    QStringList m_modules;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};
