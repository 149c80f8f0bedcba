#include "workbench/ProjectWatch.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/SourceModel.h"
#include "workbench/Workspace.h"

#include <vector>

bool ProjectContents::Axis::operator==(const Axis& other) const
{
    return id == other.id && name == other.name && properties == other.properties;
}

bool ProjectContents::operator==(const ProjectContents& other) const
{
    return axes == other.axes && sources == other.sources;
}

ProjectContents contentsOf(const ProjectModel* project)
{
    ProjectContents contents;
    if (!project)
        return contents;
    std::vector<AxisTable*> tables;
    project->axisModel()->allAxisTables(tables);
    for (const AxisTable* table : tables)
        contents.axes.append({ table->id(), table->name(), table->allProperties() });
    const SourceModel* sources = project->sourceModel();
    const QStringList names = sources->sourceNames();
    for (const QString& name : names)
        contents.sources.insert(name, sources->source(name));
    return contents;
}

ProjectWatch::ProjectWatch(Workspace& workspace, QObject* parent) : QObject(parent), m_workspace(workspace)
{
    connect(&workspace, &Workspace::opened, this, &ProjectWatch::follow);
}

ProjectWatch::~ProjectWatch() = default;

// A project comes more than once when it is only shown anew.
void ProjectWatch::follow()
{
    const AxisModel* axes = m_workspace.project()->axisModel();
    connect(axes, &AxisModel::axisAdded, this, &ProjectWatch::followAxis, Qt::UniqueConnection);
    connect(axes, &AxisModel::axisRemoved, this, &ProjectWatch::changed, Qt::UniqueConnection);
    connect(axes, &AxisModel::axisRenamed, this, &ProjectWatch::changed, Qt::UniqueConnection);
    connect(m_workspace.project()->sourceModel(), &SourceModel::sourcesChanged, this, &ProjectWatch::changed,
        Qt::UniqueConnection);
    std::vector<AxisTable*> tables;
    axes->allAxisTables(tables);
    for (const AxisTable* table : tables)
        connect(table, &ModelObject::dataChanged, this, &ProjectWatch::changed, Qt::UniqueConnection);
}

void ProjectWatch::followAxis(quint32 id)
{
    const ProjectModel* project = m_workspace.project();
    if (const AxisTable* table = project ? project->axisModel()->axisTable(id) : nullptr)
        connect(table, &ModelObject::dataChanged, this, &ProjectWatch::changed, Qt::UniqueConnection);
    emit changed();
}
