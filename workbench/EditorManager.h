#pragma once

#include "sdk/IEditorManager.h"
#include "workbench/TypedFields.h"

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTabWidget>
#include <QVector>

#include <functional>

class ModelObject;
class ProjectTree;
class QLineEdit;
class QTimer;

/// What a user wants done with unsaved changes.
enum class UnsavedAnswer { Save, Discard, Cancel };

/// The editors of the program as tabs; published as the manager "editor".
///
/// Whether an editor has changes is asked of the editor only before a save or a close, since asking moves the focus;
/// titles read the flag of the stored object.
class EditorManager : public IEditorManager {
    Q_OBJECT

public:
    /// What it takes to open an editor again.
    struct OpenFile {
        QString fileName;
        QString mimeType;
    };
    using AskUnsaved = std::function<UnsavedAnswer(const QStringList& names)>;

    explicit EditorManager(ProjectTree& tree, QObject* parent = nullptr);
    ~EditorManager() override;

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
    void closeEditor(IEditor* editor) override;
    void closeAllEditors() override;

    /// The tabs, to be put into a window. The window that takes them owns them.
    QTabWidget* tabs() const { return m_tabs; }
    /// The factory that makes editors of a type, or null.
    IEditorFactory* factory(const QString& mimeType) const;
    /// The editors in the order of their tabs.
    QVector<IEditor*> editors() const;
    QVector<OpenFile> openFiles() const;
    /// How the user is asked about unsaved changes; without it they are kept in memory.
    void setAskUnsaved(AskUnsaved ask) { m_ask = std::move(ask); }
    /// Closes editors, asking first where something is not stored. False: the user wants to stay, or a save failed.
    bool closeAsking(const QVector<IEditor*>& editors);
    /// Finishes pending input and tells whether any editor has changes. Moves the focus and brings it back.
    bool anyModified();
    /// Finishes what is being typed in the current editor: its field is left, unless nothing has been typed in it.
    /// Returns the field that has lost the focus by it, or null. An editor that is closed by what a page asks meanwhile
    /// goes with the next turn of the event loop.
    QWidget* finishInput();
    /// The field of the current editor that has the focus and in which nothing has been typed, or null.
    QLineEdit* untouchedField();
    /// True when what the editor shows is stored otherwise than it stands in memory. Does not ask the editor.
    bool isStoredModified(IEditor* editor) const;
    /// The title as a user reads it, without the mark.
    QString title(IEditor* editor) const;
    /// Brings titles, marks and icons up to date with the next turn of the event loop.
    void refreshTitles();
    /// Plug-ins go: no factory is asked any more. All editors have been closed by then.
    void forgetFactories();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        IEditor* editor;
        QString fileName;
        QString mimeType;
        QString title;
    };

    IEditor* createEditor(const QString& fileName, const QString& mimeType);
    void addTab(const Entry& entry);
    void watch(const Entry& entry);
    void refreshTitlesNow();
    void refreshTab(Entry& entry);
    bool resolveUnsaved(const QVector<IEditor*>& modified);
    const Entry* entryOf(IEditor* editor) const;
    ModelObject* objectOf(const Entry& entry) const;
    IEditor* editorOfTab(int tab) const;
    void deleteClosed();

    ProjectTree& m_tree;
    QPointer<QTabWidget> m_tabs;
    QTimer* m_refresh;
    QVector<IEditorFactory*> m_factories;
    QVector<Entry> m_entries;
    AskUnsaved m_ask;
    TypedFields m_fields;
    /// Calls of finishInput that have not returned yet; the editors that were closed meanwhile.
    int m_finishing = 0;
    QVector<QPointer<IEditor>> m_closed;
};
