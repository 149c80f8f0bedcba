#pragma once

#include "sdk/IEditorManager.h"

#include <QPointer>
#include <QVector>

class CallLog;

/// Opens editors through registered factories and keeps them in memory; nothing is shown by itself.
class TestEditorManager : public IEditorManager {
    Q_OBJECT

public:
    explicit TestEditorManager(CallLog& log);
    /// Closes what is open, and deletes what was closed and still waits for it.
    ~TestEditorManager() override;

    IEditor* openEditor(const QString& fileName, const QString& mimeType) override;
    void addEditorFactory(IEditorFactory* factory) override;
    IEditor* currentEditor() override;
    void activateEditor(IEditor* editor) override;
    IEditor* findEditor(const QString& fileName, bool currentProjectFirst) override;
    void updateCurrentEditor() override;
    void sendEditorMessage(IEditor* editor, const QString& type, const QString& param) override;

    using IEditorManager::closeEditor;
    using IEditorManager::saveAllEditors;
    using IEditorManager::saveEditor;
    using IEditorManager::saveEditorAs;
    void saveEditor(IEditor* editor, bool emitAboutSave) override;
    void saveEditorAs(IEditor* editor) override;
    void saveAllEditors(bool emitAboutSave) override;
    /// The editor is deleted once control returns to the event loop, since a slot of one of its pages may be running.
    void closeEditor(IEditor* editor) override;
    void closeAllEditors() override;

    /// Puts an editor that no factory has made among the open ones. The manager takes it over.
    void adoptEditor(const QString& fileName, IEditor* editor);
    /// File names of the open editors in the order of opening.
    QStringList openFiles() const;

    QVector<IEditorFactory*> factories;
    /// True: openEditor gives null, as for an editor that could not be opened.
    bool refuseToOpen = false;

private:
    struct Open {
        QString fileName;
        QPointer<IEditor> editor;
    };

    IEditor* editorOf(const QString& fileName) const;
    QString fileNameOf(const IEditor* editor) const;
    void setCurrent(IEditor* editor);

    CallLog& m_log;
    QVector<Open> m_open;
    QPointer<IEditor> m_current;
};
