#include "workbench/EditorManager.h"

#include "host/components/PlainToolTip.h"
#include "host/projectmodel/ModelObject.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "workbench/ProjectObjects.h"
#include "workbench/ProjectTree.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>

namespace {

/// Gives the focus back to the field that had it, once an editor has taken it away to finish pending input.
class FocusKeeper {
public:
    FocusKeeper() : m_widget(QApplication::focusWidget()) { }
    ~FocusKeeper()
    {
        if (m_widget && m_widget->isVisible() && m_widget->isEnabled() && !m_widget->hasFocus())
            m_widget->setFocus(Qt::OtherFocusReason);
    }
    Q_DISABLE_COPY(FocusKeeper)

private:
    QPointer<QWidget> m_widget;
};

} // namespace

EditorManager::EditorManager(ProjectTree& tree, QObject* parent)
    : IEditorManager(parent), m_tree(tree), m_tabs(new QTabWidget), m_refresh(new QTimer(this))
{
    m_tabs->setObjectName(QStringLiteral("editorTabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setMovable(true);
    m_tabs->setElideMode(Qt::ElideRight);
    m_tabs->tabBar()->installEventFilter(this);
    m_refresh->setSingleShot(true);
    m_refresh->setInterval(0);
    connect(m_refresh, &QTimer::timeout, this, &EditorManager::refreshTitlesNow);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, [this](int tab) { closeAsking({ editorOfTab(tab) }); });
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int tab) {
        IEditor* editor = editorOfTab(tab);
        if (editor)
            editor->activated();
        emit currentEditorChanged(editor);
    });
}

EditorManager::~EditorManager()
{
    // Editors that still stand belong to their factories; the tabs must not take their widgets along.
    closeAllEditors();
    if (m_tabs && !m_tabs->parent())
        delete m_tabs;
}

IEditor* EditorManager::openEditor(const QString& fileName, const QString& mimeType)
{
    if (IEditor* open = findEditor(fileName, true))
        return open;
    IEditor* editor = createEditor(fileName, mimeType);
    if (!editor)
        return nullptr;
    const Entry entry{ editor, fileName, mimeType, editor->displayName() };
    m_entries.append(entry);
    watch(entry);
    addTab(entry);
    emit editorCreated(editor);
    return editor;
}

IEditor* EditorManager::createEditor(const QString& fileName, const QString& mimeType)
{
    IEditorFactory* maker = factory(mimeType);
    IEditor* editor = maker ? maker->createEditor(fileName, mimeType) : nullptr;
    if (!editor)
        return nullptr;
    // Factories hand out editors whose open has failed: those know no name of what they show.
    if (editor->widget() && !editor->displayName().isEmpty())
        return editor;
    editor->deleteLater();
    return nullptr;
}

IEditorFactory* EditorManager::factory(const QString& mimeType) const
{
    const auto fits = [&mimeType](IEditorFactory* each) { return each->canCreate(mimeType); };
    const auto found = std::find_if(m_factories.begin(), m_factories.end(), fits);
    return found == m_factories.end() ? nullptr : *found;
}

void EditorManager::addTab(const Entry& entry)
{
    m_tabs->addTab(entry.editor->widget(), entry.title);
    refreshTitlesNow();
}

void EditorManager::watch(const Entry& entry)
{
    connect(entry.editor, &IEditor::modificationChanged, this, [this, editor = entry.editor] {
        editor->modifiedHook();
        refreshTitles();
    });
    if (const ModelObject* object = objectOf(entry))
        connect(object, &ModelObject::dataChanged, this, &EditorManager::refreshTitles, Qt::UniqueConnection);
}

void EditorManager::addEditorFactory(IEditorFactory* factory)
{
    if (factory && !m_factories.contains(factory))
        m_factories.append(factory);
}

IEditor* EditorManager::editorOfTab(int tab) const
{
    const QWidget* widget = m_tabs ? m_tabs->widget(tab) : nullptr;
    for (const Entry& entry : m_entries) {
        if (widget && entry.editor->widget() == widget)
            return entry.editor;
    }
    return nullptr;
}

IEditor* EditorManager::currentEditor()
{
    return m_tabs ? editorOfTab(m_tabs->currentIndex()) : nullptr;
}

void EditorManager::activateEditor(IEditor* editor)
{
    if (!entryOf(editor))
        return;
    m_tabs->setCurrentWidget(editor->widget());
    if (!editor->widget()->isAncestorOf(QApplication::focusWidget()))
        editor->widget()->setFocus(Qt::OtherFocusReason);
}

IEditor* EditorManager::findEditor(const QString& fileName, bool)
{
    // A file name begins with its project, so it names one editor whichever project is current.
    for (const Entry& entry : qAsConst(m_entries)) {
        if (entry.fileName == fileName)
            return entry.editor;
    }
    return nullptr;
}

void EditorManager::updateCurrentEditor()
{
    refreshTitles();
}

void EditorManager::sendEditorMessage(IEditor* editor, const QString& type, const QString& param)
{
    emit editorMessage(editor, type, param);
}

void EditorManager::saveEditor(IEditor* editor, bool emitAboutSave)
{
    if (!entryOf(editor))
        return;
    const FocusKeeper keeper;
    if (emitAboutSave)
        emit editorAboutToSave(editor);
    editor->isModified();
    // An editor's answer to a save says nothing of the store; the flag of what it shows does.
    if (editor->save() && !isStoredModified(editor))
        emit editorSaved(editor);
    refreshTitlesNow();
}

void EditorManager::saveEditorAs(IEditor* editor)
{
    if (entryOf(editor))
        editor->saveAs();
}

void EditorManager::saveAllEditors(bool emitAboutSave)
{
    const QVector<IEditor*> all = editors();
    for (IEditor* editor : all) {
        const FocusKeeper keeper;
        if (editor->isModified())
            saveEditor(editor, emitAboutSave);
    }
    refreshTitlesNow();
}

void EditorManager::closeEditor(IEditor* editor)
{
    if (!entryOf(editor))
        return;
    emit editorAboutToClose(editor);
    const auto isEditor = [editor](const Entry& entry) { return entry.editor == editor; };
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), isEditor), m_entries.end());
    QWidget* widget = editor->widget();
    if (m_tabs)
        m_tabs->removeTab(m_tabs->indexOf(widget));
    // The tabs stay the widget's parent; without this they would delete it a second time.
    widget->hide();
    widget->setParent(nullptr);
    emit editorClosed(editor);
    m_closed.append(editor);
    if (m_finishing == 0)
        deleteClosed();
}

void EditorManager::deleteClosed()
{
    // A slot of one of its pages may be on the stack.
    for (const QPointer<IEditor>& editor : qAsConst(m_closed)) {
        if (editor)
            editor->deleteLater();
    }
    m_closed.clear();
}

void EditorManager::closeAllEditors()
{
    const QVector<IEditor*> all = editors();
    for (IEditor* editor : all)
        closeEditor(editor);
}

QVector<IEditor*> EditorManager::editors() const
{
    QVector<IEditor*> editors;
    for (int tab = 0; m_tabs && tab < m_tabs->count(); ++tab)
        editors.append(editorOfTab(tab));
    return editors;
}

QVector<EditorManager::OpenFile> EditorManager::openFiles() const
{
    QVector<OpenFile> files;
    const auto opened = editors();
    for (IEditor* editor : opened)
        files.append({ entryOf(editor)->fileName, entryOf(editor)->mimeType });
    return files;
}

bool EditorManager::closeAsking(const QVector<IEditor*>& editors)
{
    QVector<IEditor*> modified;
    for (IEditor* editor : editors) {
        if (!entryOf(editor))
            continue;
        if (!editor->closeCheck())
            return false;
        if (editor->isModified())
            modified.append(editor);
    }
    if (!modified.isEmpty() && !resolveUnsaved(modified))
        return false;
    for (IEditor* editor : editors)
        closeEditor(editor);
    return true;
}

bool EditorManager::resolveUnsaved(const QVector<IEditor*>& modified)
{
    QStringList names;
    for (IEditor* editor : modified)
        names.append(title(editor));
    const UnsavedAnswer answer = m_ask ? m_ask(names) : UnsavedAnswer::Cancel;
    if (answer == UnsavedAnswer::Cancel)
        return false;
    for (IEditor* editor : modified) {
        if (answer == UnsavedAnswer::Discard)
            editor->reload();
        else
            saveEditor(editor, true);
        if (answer == UnsavedAnswer::Save && isStoredModified(editor))
            return false;
    }
    return true;
}

bool EditorManager::anyModified()
{
    const FocusKeeper keeper;
    const QVector<IEditor*> all = editors();
    // Each is asked, not just up to the first: asking finishes the input that is pending in it.
    return std::count_if(all.begin(), all.end(), [](IEditor* editor) { return editor->isModified(); }) > 0;
}

QWidget* EditorManager::finishInput()
{
    IEditor* editor = currentEditor();
    const QPointer<QWidget> field = QApplication::focusWidget();
    if (!editor || !editor->widget()->isAncestorOf(field) || untouchedField())
        return nullptr;
    // A box of its page turns the event loop, and what closes the editor there must not delete it under its own feet.
    ++m_finishing;
    editor->isModified();
    if (--m_finishing == 0)
        deleteClosed();
    return entryOf(editor) && field && !field->hasFocus() ? field : nullptr;
}

QLineEdit* EditorManager::untouchedField()
{
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    IEditor* editor = currentEditor();
    const bool isInput = editor && field && editor->widget()->isAncestorOf(field);
    return isInput && m_fields.isUntouched(*field) ? field : nullptr;
}

bool EditorManager::isStoredModified(IEditor* editor) const
{
    const Entry* entry = entryOf(editor);
    const ModelObject* object = entry ? objectOf(*entry) : nullptr;
    return object && object->modified;
}

QString EditorManager::title(IEditor* editor) const
{
    const Entry* entry = entryOf(editor);
    return entry ? entry->title : QString();
}

void EditorManager::refreshTitles()
{
    m_refresh->start();
}

void EditorManager::refreshTitlesNow()
{
    for (Entry& entry : m_entries)
        refreshTab(entry);
}

void EditorManager::refreshTab(Entry& entry)
{
    const int tab = m_tabs ? m_tabs->indexOf(entry.editor->widget()) : -1;
    if (tab < 0)
        return;
    const QString path = m_tree.nodePathOfFile(entry.fileName, true);
    const QString name = entry.editor->displayName();
    if (!name.isEmpty())
        entry.title = name;
    QString text = path.isEmpty() ? tr("%1 (removed)").arg(entry.title) : entry.title;
    if (isStoredModified(entry.editor))
        text += QStringLiteral(" \u2022");
    // A lone ampersand would be read as a mnemonic.
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    m_tabs->setTabText(tab, text);
    m_tabs->setTabToolTip(tab, plainToolTip(path));
    m_tabs->setTabIcon(tab, m_tree.nodeProperty(path, QStringLiteral("Icon"), QVariant()).value<QIcon>());
}

const EditorManager::Entry* EditorManager::entryOf(IEditor* editor) const
{
    for (const Entry& entry : m_entries) {
        if (entry.editor == editor)
            return &entry;
    }
    return nullptr;
}

ModelObject* EditorManager::objectOf(const Entry& entry) const
{
    return objectOfNode(m_tree, m_tree.nodePathOfFile(entry.fileName, true));
}

void EditorManager::forgetFactories()
{
    m_factories.clear();
}

bool EditorManager::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && m_tabs && watched == m_tabs->tabBar()) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const int tab = m_tabs->tabBar()->tabAt(mouse->pos());
        if (mouse->button() == Qt::MiddleButton && tab >= 0) {
            closeAsking({ editorOfTab(tab) });
            return true;
        }
    }
    return IEditorManager::eventFilter(watched, event);
}
