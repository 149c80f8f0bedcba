#include "host/projectmodel/ProjectModel.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/ProjectContents.h"
#include "host/projectmodel/ProjectStore.h"
#include "host/projectmodel/SourceModel.h"

struct ProjectModel::Private {
    QString name;
    std::unique_ptr<ProjectStore> store;
    QMap<QString, QString> settings;
    QMap<QString, QString> storedSettings;
    ControllerDescription controller;
    ControllerDescription formerController;
    bool controllerChanged = false;
    AxisModel* axes = nullptr;
    SourceModel* sources = nullptr;
    bool wasModified = false;
};

ProjectModel::ProjectModel(const QString& name, std::unique_ptr<ProjectStore> store) : d(new Private)
{
    d->name = name;
    d->store = std::move(store);
    d->axes = new AxisModel(this);
    d->sources = new SourceModel(this);
}

ProjectModel::~ProjectModel()
{
    // The sub-models reach for the project while they are there, so they go before its data.
    delete d->axes;
    delete d->sources;
}

bool ProjectModel::fill(const ProjectContents& contents, QString* error)
{
    // A project that was rescued from a damaged file may have lost its controller's description.
    if (!contents.controller.isEmpty() && !d->controller.read(contents.controller, filePath(), error))
        return false;
    if (!contents.formerController.isEmpty() && !d->formerController.read(contents.formerController, filePath(), error))
        return false;
    d->settings = contents.settings;
    d->storedSettings = contents.settings;
    d->sources->fill(contents.sources);
    d->axes->fill(contents.axes);
    return true;
}

QString ProjectModel::name() const
{
    return d->name;
}

SubModel* ProjectModel::subModel(const std::string& name) const
{
    const QString wanted = QString::fromStdString(name);
    for (SubModel* each : { static_cast<SubModel*>(d->axes), static_cast<SubModel*>(d->sources) })
        if (each->subModelName() == wanted)
            return each;
    return nullptr;
}

AxisModel* ProjectModel::axisModel() const
{
    return d->axes;
}

SourceModel* ProjectModel::sourceModel() const
{
    return d->sources;
}

QString ProjectModel::filePath() const
{
    return d->store->filePath();
}

bool ProjectModel::isReadOnly() const
{
    return d->store->isReadOnly();
}

bool ProjectModel::isModified() const
{
    return d->controllerChanged || d->settings != d->storedSettings || d->sources->isModified()
        || d->axes->isModified();
}

bool ProjectModel::save(QString* error)
{
    QString reason;
    if (!write(unsavedChanges(), &reason)) {
        if (error)
            *error = reason;
        emit storeFailed(reason);
        return false;
    }
    markStored();
    return true;
}

QString ProjectModel::setting(const QString& key, const QString& fallback) const
{
    return d->settings.value(key, fallback);
}

void ProjectModel::setSetting(const QString& key, const QString& value)
{
    d->settings.insert(key, value);
    noteChange();
}

int ProjectModel::programStyle() const
{
    return setting(QStringLiteral("ProgramStyle"), QString()).toInt();
}

const ControllerDescription& ProjectModel::controller() const
{
    return d->controller;
}

void ProjectModel::changeController(const ControllerDescription& controller)
{
    d->formerController = d->controller;
    d->controller = controller;
    d->controllerChanged = true;
    emit controllerChanged();
    noteChange();
}

const ControllerDescription& ProjectModel::formerController() const
{
    return d->formerController;
}

ProjectChanges ProjectModel::unsavedChanges() const
{
    ProjectChanges changes;
    changes.settings = differences(d->settings, d->storedSettings);
    changes.controllerChanged = d->controllerChanged;
    changes.controller = d->controller.json();
    changes.formerController = d->formerController.json();
    d->sources->collect(changes);
    d->axes->collect(changes);
    return changes;
}

void ProjectModel::markStored()
{
    d->storedSettings = d->settings;
    d->controllerChanged = false;
    d->sources->markStored();
    d->axes->markStored();
    noteChange();
}

bool ProjectModel::write(const ProjectChanges& changes, QString* error)
{
    return d->store->write(changes, error);
}

bool ProjectModel::read(quint32 axisId, AxisRecordData* record) const
{
    return d->store->readAxis(axisId, record);
}

ProjectStore& ProjectModel::store() const
{
    return *d->store;
}

void ProjectModel::moveTo(std::unique_ptr<ProjectStore> store, const QString& name)
{
    d->store = std::move(store);
    d->name = name;
    markStored();
}

void ProjectModel::noteChange()
{
    const bool now = isModified();
    if (now == d->wasModified)
        return;
    d->wasModified = now;
    emit modifiedChanged(now);
}
