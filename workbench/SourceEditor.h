#pragma once

#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"

#include <memory>

class ProjectTree;
class SourceView;

/// Shows a structured-text source of the project, to be read. A location is "line" or "line:column", from 1.
class SourceEditor : public IEditor {
    Q_OBJECT

public:
    explicit SourceEditor(ProjectTree& tree, QObject* parent = nullptr);
    ~SourceEditor() override;

    QWidget* widget() override;
    QString displayName() override;
    bool open(const QString& fileName, const QString& mimeType) override;
    bool load() override;
    bool reload() override;
    bool save() override;
    bool saveAs() override;
    bool gotoLocation(const QString& location) override;
    EditorLocation locationInfo() override;
    bool findReferences(const QString& path, QVector<FindResult>& results) override;
    void setReadOnly(bool readOnly) override;
    bool isReadOnly() override;
    bool isModified() override;
    QString nodePath() override;
    QString typeKey() override;
    QByteArray saveState() override;
    bool restoreState(const QByteArray& state) override;
    void activated() override;
    IEditContext* currentContext() override;

    static QString mimeType() { return QStringLiteral("SourceView"); }

private:
    ProjectTree& m_tree;
    QString m_path;
    QString m_name;
    std::unique_ptr<SourceView> m_view;
};

/// Makes the editors of sources.
class SourceEditorFactory : public IEditorFactory {
    Q_OBJECT

public:
    explicit SourceEditorFactory(ProjectTree& tree, QObject* parent = nullptr);
    ~SourceEditorFactory() override;

    QStringList typeKeys() override;
    IEditor* createEditor(const QString& fileName, const QString& mimeType) override;
    IEditor* createEditorForPath(const QString& fileName, const QString& mimeType) override;
    QString typeKey() override;
    QString typeName() override;
    bool canCreate(const QString& mimeType) override;

private:
    ProjectTree& m_tree;
};
