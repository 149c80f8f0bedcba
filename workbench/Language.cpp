#include "workbench/Language.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>
#include <QVector>

namespace {

/// Texts of the standard buttons, which Qt looks up here where its own translation files are not installed.
[[maybe_unused]] const char* const standardButtons[] = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Apply"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Save"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Discard"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&No"),
};

} // namespace

Language::Language(QObject* parent) : QObject(parent) { }

Language::~Language() = default;

QVector<Language::Choice> Language::choices()
{
    return { { QStringLiteral("en_US"), QStringLiteral("English") },
        { QStringLiteral("zh_CN"), QStringLiteral("简体中文") } };
}

void Language::install(const QString& locale)
{
    m_translators.clear();
    m_current = locale;
    const QString suffix = QLatin1Char('_') + locale;
    installFile(QString(QLatin1String("qtbase") + suffix), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    installFile(QString(QLatin1String("kestrun") + suffix), QCoreApplication::applicationDirPath());
    for (const QString& module : qAsConst(m_modules)) {
        const QFileInfo file(module);
        installFile(QString(file.fileName() + suffix), file.absolutePath());
    }
}

void Language::addModules(const QStringList& paths)
{
    m_modules += paths;
    for (const QString& module : paths) {
        const QFileInfo file(module);
        installFile(QString(file.fileName() + QLatin1Char('_') + m_current), file.absolutePath());
    }
}

bool Language::installFile(const QString& name, const QString& directory)
{
    auto translator = std::make_unique<QTranslator>();
    // A name with points in it would lose its end to QTranslator's search, so the whole file name is given.
    if (!translator->load(QString(directory + QLatin1Char('/') + name + QLatin1String(".qm"))))
        return false;
    QCoreApplication::installTranslator(translator.get());
    m_translators.push_back(std::move(translator));
    return true;
}
