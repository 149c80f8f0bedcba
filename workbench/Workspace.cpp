#include "workbench/Workspace.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SourceModel.h"
#include "sdk/IEditor.h"
#include "sdk/ServiceKeys.h"
#include "workbench/Configuration.h"
#include "workbench/ProjectTree.h"
#include "workbench/SourceEditor.h"
#include "workbench/UndoHelper.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace {

const QString nodeTypeKey = QStringLiteral("NodeType");

QString childPath(const QString& parent, const QString& name)
{
    return parent + QLatin1Char('.') + name;
}

Solution::NodeDescription node(const QString& name, const QString& text, const QString& symbol, const QString& nodeType)
{
    Solution::NodeDescription node;
    node.name = name;
    node.displayText = text;
    node.icon = QIcon::fromTheme(symbol);
    node.properties.insert(nodeTypeKey, nodeType);
    return node;
}

Solution::ProjectInfo describe(const ProjectModel& project)
{
    const QFileInfo file(project.filePath());
    Solution::ProjectInfo info;
    info.name = project.name();
    info.filePath = project.filePath();
    info.directory = file.absolutePath();
    info.title = project.setting(QStringLiteral("Title"), file.completeBaseName());
    info.author = project.setting(QStringLiteral("Author"), QString());
    info.company = project.setting(QStringLiteral("Company"), QString());
    info.kind = QStringLiteral("NormalProject");
    info.controller = project.controller().model();
    info.version = project.setting(QStringLiteral("Version"), QString());
    info.description = project.setting(QStringLiteral("Description"), QString());
    info.created = file.birthTime().toString(Qt::ISODate);
    info.changed = file.lastModified().toString(Qt::ISODate);
    info.readOnly = project.isReadOnly();
    info.current = true;
    return info;
}

QMap<quint32, QString> axisNames(const ProjectModel& project)
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    QMap<quint32, QString> names;
    for (const AxisTable* table : tables)
        names.insert(table->id(), table->name());
    return names;
}

} // namespace

Workspace::Workspace(ProjectTree& tree, UndoHelper& undo, EditorManager& editors, Cookies& cookies, QObject* parent)
    : QObject(parent), m_tree(tree), m_undo(undo), m_editors(editors), m_cookies(cookies)
{
}

Workspace::~Workspace() = default;

QString Workspace::configurationPath() const
{
    return m_name.isEmpty() ? QString() : childPath(m_name, QStringLiteral("ConfigAndSetup"));
}

QString Workspace::programsPath() const
{
    return m_name.isEmpty() ? QString() : childPath(m_name, QStringLiteral("Programs"));
}

bool Workspace::create(const QString& file, const ControllerDescription& controller, QString* error)
{
    return exchange(file, [&] { return ProjectModelManager::instance()->createProject(file, controller, error); });
}

bool Workspace::open(const QString& file, QString* error)
{
    if (m_project && QFileInfo(m_project->filePath()) == QFileInfo(file))
        return true;
    emit aboutToUse(file);
    return exchange(file, [&] { return ProjectModelManager::instance()->openProject(file, error); });
}

// Two projects of one name cannot be in the tree together, not even for the moment of the exchange.
bool Workspace::exchange(const QString& file, const std::function<ProjectModel*()>& take)
{
    const QString former = m_project ? m_project->filePath() : QString();
    const bool sameName = m_project && ProjectModelManager::projectNameForFile(file) == m_name;
    if (sameName)
        close();
    ProjectModel* project = take();
    if (!project) {
        QString ignored;
        if (sameName)
            open(former, &ignored);
        return false;
    }
    close();
    attach(project);
    return true;
}

void Workspace::close()
{
    if (!m_project)
        return;
    emit aboutToClose();
    m_editors.closeAllEditors();
    ProjectModel* project = m_project;
    detach();
    m_project = nullptr;
    ProjectModelManager::instance()->closeProject(project);
    emit closed();
}

void Workspace::attach(ProjectModel* project)
{
    m_project = project;
    m_name = project->name();
    m_undo.stack()->clear();
    m_cookies.setValue(Solution::ConfigKey::projectName(), m_name);
    m_tree.setCurrentProject(m_name);
    follow(project);
    addNodes();
    emit m_tree.projectOpened(configurationPath(), describe(*project), Solution::LevelConfiguration);
    emit opened();
}

void Workspace::follow(ProjectModel* project)
{
    connect(project, &ProjectModel::modifiedChanged, this, &Workspace::modifiedChanged);
    connect(project, &ProjectModel::modifiedChanged, &m_editors, &EditorManager::refreshTitles);
    connect(project, &AbstractProjectModel::storeFailed, this, &Workspace::storeFailed);
    connect(project->sourceModel(), &SourceModel::sourcesChanged, this, &Workspace::fillSources);
}

void Workspace::addNodes()
{
    m_tree.addNode(
        QString(), node(m_name, m_name, QStringLiteral("project-development"), QStringLiteral("ProjectNode")), 0);
    m_tree.addNode(m_name,
        node(QStringLiteral("ConfigAndSetup"), tr("Configuration"), QStringLiteral("configure"),
            QStringLiteral("ConfigurationNode")),
        0);
    m_tree.addNode(m_name,
        node(QStringLiteral("Programs"), tr("Program sources"), QStringLiteral("folder-text"),
            QStringLiteral("ProgramsNode")),
        0);
    fillSources();
}

void Workspace::fillSources()
{
    const QStringList former = m_tree.childNodes(programsPath());
    for (const QString& path : former)
        m_tree.removeNode(path, true);
    const QStringList names = m_project->sourceModel()->sourceNames();
    for (int i = 0; i < names.size(); ++i) {
        // The node's name is a number of its own: a source's name may hold a point.
        const QString segment = QString(QLatin1String("Source") + QString::number(i));
        Solution::NodeDescription source
            = node(segment, names.at(i), QStringLiteral("text-x-script"), QStringLiteral("SourceNode"));
        source.properties.insert(QStringLiteral("FileName"), childPath(programsPath(), segment));
        source.properties.insert(QStringLiteral("MimeType"), SourceEditor::mimeType());
        source.properties.insert(QStringLiteral("SourceName"), names.at(i));
        m_tree.addNode(programsPath(), source, 0);
    }
    emit sourcesChanged();
}

void Workspace::detach()
{
    m_project->disconnect(this);
    m_project->disconnect(&m_editors);
    m_project->sourceModel()->disconnect(this);
    m_undo.stack()->clear();
    m_tree.removeNode(m_name, true);
    m_tree.setCurrentProject(QString());
    m_cookies.remove(Solution::ConfigKey::projectName());
    m_name.clear();
    emit m_tree.projectClosed();
}

bool Workspace::isModified()
{
    const bool inEditors = m_editors.anyModified();
    return inEditors || (m_project && m_project->isModified());
}

bool Workspace::save(QString* error)
{
    if (!m_project)
        return true;
    m_editors.saveAllEditors(true);
    const bool saved = m_project->save(error);
    m_editors.refreshTitles();
    emit modifiedChanged();
    return saved;
}

bool Workspace::saveAs(const QString& file, QString* error)
{
    if (!m_project)
        return false;
    emit aboutToUse(file);
    m_editors.anyModified();
    const Shown shown = takeDown();
    ProjectModel* project = m_project;
    const bool saved = ProjectModelManager::instance()->saveProjectAs(project, file, error);
    attach(project);
    bringBack(shown);
    return saved;
}

void Workspace::showAnew()
{
    if (!m_project)
        return;
    const Shown shown = takeDown();
    attach(m_project);
    bringBack(shown);
}

Workspace::Shown Workspace::takeDown()
{
    const int prefix = m_name.size();
    Shown shown{ m_editors.openFiles(), QString() };
    for (EditorManager::OpenFile& file : shown.files)
        file.fileName.remove(0, prefix);
    if (IEditor* current = m_editors.currentEditor())
        shown.current = current->nodePath().mid(prefix);
    m_editors.closeAllEditors();
    detach();
    return shown;
}

void Workspace::bringBack(const Shown& shown)
{
    QVector<EditorManager::OpenFile> files = shown.files;
    for (EditorManager::OpenFile& file : files)
        file.fileName.prepend(m_name);
    openEditors(files, QString(m_name + shown.current));
}

QStringList Workspace::changeController(const ControllerDescription& controller)
{
    if (!m_project)
        return {};
    const QMap<quint32, QString> before = axisNames(*m_project);
    m_project->changeController(controller);
    emit m_tree.displayEvent(configurationPath(), Solution::DataControllerChanged, controller.model());
    m_undo.stack()->clear();
    const QMap<quint32, QString> after = axisNames(*m_project);
    QStringList removed;
    for (auto axis = before.begin(); axis != before.end(); ++axis) {
        if (!after.contains(axis.key()))
            removed.append(*axis);
    }
    m_editors.refreshTitles();
    emit controllerChanged();
    return removed;
}

void Workspace::showSource(const QString& source, int line, int column)
{
    const QStringList paths = m_tree.childNodes(programsPath());
    for (const QString& path : paths) {
        if (m_tree.nodeProperty(path, QStringLiteral("SourceName"), QString()).toString() != source)
            continue;
        if (IEditor* editor = m_editors.openEditor(path, SourceEditor::mimeType())) {
            m_editors.activateEditor(editor);
            editor->gotoLocation(QStringLiteral("%1:%2").arg(line).arg(column));
        }
    }
}

void Workspace::openEditors(const QVector<EditorManager::OpenFile>& files, const QString& current)
{
    for (const EditorManager::OpenFile& file : files) {
        // A node that is gone would only make its factory build an editor that cannot open.
        if (!m_tree.nodePathOfFile(file.fileName, true).isEmpty())
            m_editors.openEditor(file.fileName, file.mimeType);
    }
    if (IEditor* editor = m_editors.findEditor(current, true))
        m_editors.activateEditor(editor);
}
