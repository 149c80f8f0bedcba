#include "host/projectmodel/ProjectModelManager.h"

#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectContents.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectSalvage.h"
#include "host/projectmodel/ProjectStore.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace {

QString canonical(const QString& path)
{
    const QFileInfo info(path);
    const QString real = info.canonicalFilePath();
    return real.isEmpty() ? info.absoluteFilePath() : real;
}

bool refuse(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return false;
}

} // namespace

ProjectModelManager* ProjectModelManager::instance()
{
    static ProjectModelManager manager;
    return &manager;
}

ProjectModelManager::ProjectModelManager(QObject* parent) : QObject(parent)
{
    // The database's driver goes with the application object, so what is still open closes before that.
    qAddPostRoutine([] {
        const QVector<ProjectModel*> left = instance()->projects();
        for (ProjectModel* each : left)
            instance()->closeProject(each);
    });
}

ProjectModelManager::~ProjectModelManager() = default;

AbstractProjectModel* ProjectModelManager::projectModel(const std::string& name, bool) const
{
    const QString wanted = QString::fromStdString(name);
    const auto it = std::find_if(
        m_projects.begin(), m_projects.end(), [&wanted](const ProjectModel* each) { return each->name() == wanted; });
    return it == m_projects.end() ? nullptr : *it;
}

QVector<ProjectModel*> ProjectModelManager::projects() const
{
    return m_projects;
}

ProjectModel* ProjectModelManager::createProject(
    const QString& filePath, const ControllerDescription& controller, QString* error)
{
    if (QFileInfo::exists(filePath)) {
        refuse(error, tr("%1: the file exists already.").arg(filePath));
        return nullptr;
    }
    ProjectContents contents;
    contents.controller = controller.json();
    return ProjectStore::create(filePath, contents, error) ? openProject(filePath, error) : nullptr;
}

ProjectModel* ProjectModelManager::openProject(const QString& filePath, QString* error, const QString& alias)
{
    return open(filePath, error, alias, false);
}

ProjectModel* ProjectModelManager::openProjectReadOnly(const QString& filePath, QString* error, const QString& alias)
{
    return open(filePath, error, alias, true);
}

ProjectModel* ProjectModelManager::open(const QString& filePath, QString* error, const QString& alias, bool readOnly)
{
    const QString name = alias.isEmpty() ? projectNameForFile(filePath) : alias;
    if (!isFree(filePath, name, nullptr, error))
        return nullptr;
    ProjectContents contents;
    std::unique_ptr<ProjectStore> store = ProjectStore::open(filePath, &contents, error, readOnly);
    if (!store)
        return nullptr;
    std::unique_ptr<ProjectModel> project(new ProjectModel(name, std::move(store)));
    if (!project->fill(contents, error))
        return nullptr;
    m_projects.append(project.get());
    return project.release();
}

void ProjectModelManager::closeProject(ProjectModel* project)
{
    if (!m_projects.contains(project))
        return;
    emit projectAboutToClose(project);
    m_projects.removeAll(project);
    const auto holding = std::find_if(
        m_holdings.begin(), m_holdings.end(), [project](const Holding& each) { return each.model == project; });
    if (holding == m_holdings.end())
        delete project;
    else
        holding->closed = true;
}

bool ProjectModelManager::saveProjectAs(ProjectModel* project, const QString& filePath, QString* error)
{
    if (canonical(filePath) == canonical(project->filePath()))
        return project->save(error);
    const QString name = projectNameForFile(filePath);
    if (!isFree(filePath, name, project, error))
        return false;
    std::unique_ptr<ProjectStore> copy = project->store().copyTo(filePath, project->unsavedChanges(), error);
    if (!copy)
        return false;
    project->moveTo(std::move(copy), name);
    return true;
}

int ProjectModelManager::salvageProject(const QString& damagedPath, const QString& newPath, QString* error)
{
    return ::salvageProject(damagedPath, newPath, error);
}

QString ProjectModelManager::projectNameForFile(const QString& filePath)
{
    QString name = QFileInfo(filePath).completeBaseName().simplified();
    name.replace(QLatin1Char('.'), QLatin1Char('_'));
    return name.isEmpty() ? QStringLiteral("Project") : name;
}

bool ProjectModelManager::isFree(
    const QString& filePath, const QString& name, const ProjectModel* except, QString* error) const
{
    const QString path = canonical(filePath);
    for (const Holding& each : m_holdings) {
        const auto* project = each.closed ? qobject_cast<ProjectModel*>(each.model) : nullptr;
        if (project && canonical(project->filePath()) == path)
            return refuse(error, tr("%1: the project is still closing.").arg(filePath));
    }
    for (const ProjectModel* each : m_projects) {
        if (each == except)
            continue;
        if (canonical(each->filePath()) == path)
            return refuse(error, tr("%1: the project is open already.").arg(filePath));
        if (each->name() == name)
            return refuse(error, tr("%1: a project with the name %2 is open already.").arg(filePath, name));
    }
    return true;
}

void ProjectModelManager::hold(AbstractProjectModel* model)
{
    for (Holding& each : m_holdings) {
        if (each.model == model) {
            ++each.count;
            return;
        }
    }
    m_holdings.append({ model, 1, false });
}

void ProjectModelManager::release(AbstractProjectModel* model)
{
    const auto it = std::find_if(
        m_holdings.begin(), m_holdings.end(), [model](const Holding& each) { return each.model == model; });
    Q_ASSERT(it != m_holdings.end());
    if (--it->count > 0)
        return;
    const bool closed = it->closed;
    m_holdings.erase(it);
    if (closed)
        delete model;
}
