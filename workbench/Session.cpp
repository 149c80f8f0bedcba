#include "workbench/Session.h"

#include "host/projectmodel/ProjectModel.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditor.h"
#include "workbench/EditorManager.h"
#include "workbench/MainWindow.h"
#include "workbench/Workspace.h"

namespace {

/// Grows when the set of panels changes, so that an old layout is not forced on them.
constexpr int layoutVersion = 4;

QString geometryKey()
{
    return QStringLiteral("Session/Geometry");
}
QString layoutKey()
{
    return QStringLiteral("Session/Layout");
}
QString projectKey()
{
    return QStringLiteral("Session/Project");
}
QString filesKey()
{
    return QStringLiteral("Session/Editors");
}
QString typesKey()
{
    return QStringLiteral("Session/EditorTypes");
}
QString currentKey()
{
    return QStringLiteral("Session/CurrentEditor");
}

} // namespace

Session::Session(
    IConfiguration& settings, MainWindow& window, Workspace& workspace, EditorManager& editors, QObject* parent)
    : QObject(parent), m_settings(settings), m_window(window), m_workspace(workspace), m_editors(editors)
{
}

Session::~Session() = default;

void Session::saveWindow()
{
    m_settings.setValue(geometryKey(), m_window.saveGeometry());
    m_settings.setValue(layoutKey(), m_window.saveState(layoutVersion));
}

void Session::restoreWindow()
{
    m_window.restoreGeometry(m_settings.value(geometryKey(), QByteArray()).toByteArray());
    m_window.restoreState(m_settings.value(layoutKey(), QByteArray()).toByteArray(), layoutVersion);
}

void Session::saveProject()
{
    QStringList files;
    QStringList types;
    const QVector<EditorManager::OpenFile> open = m_editors.openFiles();
    for (const EditorManager::OpenFile& file : open) {
        files.append(file.fileName);
        types.append(file.mimeType);
    }
    const ProjectModel* project = m_workspace.project();
    IEditor* current = m_editors.currentEditor();
    m_settings.setValue(projectKey(), project ? project->filePath() : QString());
    m_settings.setValue(filesKey(), files);
    m_settings.setValue(typesKey(), types);
    m_settings.setValue(currentKey(), current ? current->nodePath() : QString());
}

QString Session::lastProject() const
{
    return m_settings.value(projectKey(), QString()).toString();
}

void Session::restoreEditors()
{
    if (!m_workspace.project() || m_workspace.project()->filePath() != lastProject())
        return;
    const QStringList files = m_settings.value(filesKey(), QStringList()).toStringList();
    const QStringList types = m_settings.value(typesKey(), QStringList()).toStringList();
    QVector<EditorManager::OpenFile> open;
    for (int i = 0; i < qMin(files.size(), types.size()); ++i)
        open.append({ files.at(i), types.at(i) });
    m_workspace.openEditors(open, m_settings.value(currentKey(), QString()).toString());
}
