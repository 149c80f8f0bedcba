#include "tests/support/TestEditorManager.h"

#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "tests/support/CallLog.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

TestEditorManager::TestEditorManager(CallLog& log) : m_log(log) { }

TestEditorManager::~TestEditorManager()
{
    closeAllEditors();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

IEditor* TestEditorManager::openEditor(const QString& fileName, const QString& mimeType)
{
    m_log.add("editorManager.openEditor", { fileName, mimeType });
    if (refuseToOpen)
        return nullptr;
    if (IEditor* open = editorOf(fileName))
        return open;
    const auto factory = std::find_if(factories.begin(), factories.end(),
        [&mimeType](IEditorFactory* candidate) { return candidate->canCreate(mimeType); });
    IEditor* editor = factory == factories.end() ? nullptr : (*factory)->createEditor(fileName, mimeType);
    if (editor)
        adoptEditor(fileName, editor);
    return editor;
}

void TestEditorManager::addEditorFactory(IEditorFactory* factory)
{
    m_log.add("editorManager.addEditorFactory", { factory->typeKey() });
    factories.append(factory);
}

IEditor* TestEditorManager::currentEditor()
{
    m_log.add("editorManager.currentEditor");
    return m_current;
}

void TestEditorManager::activateEditor(IEditor* editor)
{
    m_log.add("editorManager.activateEditor", { fileNameOf(editor) });
    if (!editor)
        return;
    setCurrent(editor);
    editor->activated();
}

IEditor* TestEditorManager::findEditor(const QString& fileName, bool currentProjectFirst)
{
    m_log.add("editorManager.findEditor", { fileName, CallLog::text(currentProjectFirst) });
    return editorOf(fileName);
}

void TestEditorManager::updateCurrentEditor()
{
    m_log.add("editorManager.updateCurrentEditor");
}

void TestEditorManager::sendEditorMessage(IEditor* editor, const QString& type, const QString& param)
{
    m_log.add("editorManager.sendEditorMessage", { fileNameOf(editor), type, param });
    emit editorMessage(editor, type, param);
}

void TestEditorManager::saveEditor(IEditor* editor, bool emitAboutSave)
{
    m_log.add("editorManager.saveEditor", { fileNameOf(editor), CallLog::text(emitAboutSave) });
    if (!editor)
        return;
    if (emitAboutSave)
        emit editorAboutToSave(editor);
    if (editor->save())
        emit editorSaved(editor);
}

void TestEditorManager::saveEditorAs(IEditor* editor)
{
    m_log.add("editorManager.saveEditorAs", { fileNameOf(editor) });
    if (editor)
        editor->saveAs();
}

void TestEditorManager::saveAllEditors(bool emitAboutSave)
{
    const QVector<Open> open = m_open;
    for (const Open& entry : open)
        saveEditor(entry.editor, emitAboutSave);
}

void TestEditorManager::closeEditor(IEditor* editor)
{
    m_log.add("editorManager.closeEditor", { fileNameOf(editor) });
    if (!editor)
        return;
    emit editorAboutToClose(editor);
    m_open.erase(
        std::remove_if(m_open.begin(), m_open.end(), [editor](const Open& entry) { return entry.editor == editor; }),
        m_open.end());
    if (m_current == editor)
        setCurrent(m_open.isEmpty() ? nullptr : m_open.last().editor.data());
    emit editorClosed(editor);
    editor->deleteLater();
}

void TestEditorManager::closeAllEditors()
{
    while (!m_open.isEmpty()) {
        if (m_open.last().editor)
            closeEditor(m_open.last().editor);
        else
            m_open.removeLast();
    }
}

void TestEditorManager::adoptEditor(const QString& fileName, IEditor* editor)
{
    m_open.append({ fileName, editor });
    emit editorCreated(editor);
    setCurrent(editor);
}

QStringList TestEditorManager::openFiles() const
{
    QStringList names;
    for (const Open& entry : m_open) {
        if (entry.editor)
            names.append(entry.fileName);
    }
    return names;
}

IEditor* TestEditorManager::editorOf(const QString& fileName) const
{
    const auto found = std::find_if(m_open.begin(), m_open.end(),
        [&fileName](const Open& entry) { return entry.editor && entry.fileName == fileName; });
    return found == m_open.end() ? nullptr : found->editor.data();
}

QString TestEditorManager::fileNameOf(const IEditor* editor) const
{
    const auto found = std::find_if(
        m_open.begin(), m_open.end(), [editor](const Open& entry) { return editor && entry.editor == editor; });
    return found == m_open.end() ? QString() : found->fileName;
}

void TestEditorManager::setCurrent(IEditor* editor)
{
    if (m_current == editor)
        return;
    m_current = editor;
    emit currentEditorChanged(editor);
}
