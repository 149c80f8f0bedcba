#pragma once

#include "sdk/IManager.h"

#include <QString>

class IEditor;
class IEditorFactory;

/// The editor area of the host. A null editor as an argument is survived by every operation. Main thread only.
class KESTRUN_SDK_EXPORT IEditorManager : public IManager {
    Q_OBJECT

public:
    explicit IEditorManager(QObject* parent = nullptr);
    ~IEditorManager() override;

    /// Opens or finds the editor of a file name, through the factory whose canCreate accepts the type. Null when no
    /// factory makes one or its open failed.
    virtual IEditor* openEditor(const QString& fileName, const QString& mimeType) = 0;
    /// Registers a factory. The plug-in keeps ownership.
    virtual void addEditorFactory(IEditorFactory* factory) = 0;
    /// The active editor, or null.
    virtual IEditor* currentEditor() = 0;
    virtual void activateEditor(IEditor* editor) = 0;
    /// The open editor of a file name, or null. The flag prefers the current project when two are open.
    virtual IEditor* findEditor(const QString& fileName, bool currentProjectFirst) = 0;
    /// The current editor has changed its state: titles and actions are brought up to date.
    virtual void updateCurrentEditor() = 0;
    /// Passes a message of an editor on as editorMessage.
    virtual void sendEditorMessage(IEditor* editor, const QString& type, const QString& param) = 0;

signals:
    void currentEditorChanged(IEditor* editor);
    void editorCreated(IEditor* editor);
    void editorAboutToClose(IEditor* editor);
    void editorAboutToSave(IEditor* editor);
    void editorSaved(IEditor* editor);
    void editorClosed(IEditor* editor);
    void editorMessage(IEditor* editor, QString type, QString param);

public slots:
    virtual void saveEditor(IEditor* editor, bool emitAboutSave) = 0;
    void saveEditor(IEditor* editor);
    void saveEditor();
    virtual void saveEditorAs(IEditor* editor) = 0;
    void saveEditorAs();
    virtual void saveAllEditors(bool emitAboutSave) = 0;
    void saveAllEditors();
    /// Closes and deletes the editor without asking for unsaved changes.
    virtual void closeEditor(IEditor* editor) = 0;
    /// The operations without an editor act on the current one.
    void closeEditor();
    virtual void closeAllEditors() = 0;
};
