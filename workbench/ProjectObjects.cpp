#include "workbench/ProjectObjects.h"

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/AxisTrial.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SafeProjectModel.h"
#include "workbench/ProjectTree.h"

#include <algorithm>
#include <vector>

namespace {

bool hasViewInfo(const AxisTable& axis)
{
    const QStringList names = axis.allViewInfo().values();
    return !names.isEmpty() && !names.contains(QString());
}

std::vector<AxisTable*> axesOf(const QString& projectName)
{
    const SafeProjectModel project(projectName);
    const auto* axes = project ? qobject_cast<AxisModel*>(project->subModel("AxisModel")) : nullptr;
    std::vector<AxisTable*> tables;
    if (axes)
        axes->allAxisTables(tables);
    return tables;
}

} // namespace

ModelObject* objectOfNode(ProjectTree& tree, const QString& path)
{
    const QVariant key = tree.nodeProperty(path, QStringLiteral("DataBaseKey"), QVariant());
    const SafeProjectModel project(path.section(QLatin1Char('.'), 0, 0));
    if (!project || !key.isValid())
        return nullptr;
    // Axes are the one kind of objects that projects store by themselves.
    auto* axes = qobject_cast<AxisModel*>(project->subModel("AxisModel"));
    return axes ? axes->axisTable(key.toUInt()) : nullptr;
}

bool hasLeftViewInfo(ProjectTree& tree, const QString& path)
{
    const auto* axis = qobject_cast<AxisTable*>(objectOfNode(tree, path));
    return !axis || hasViewInfo(*axis);
}

bool borrowViewInfo(ProjectTree& tree, const QString& path)
{
    auto* axis = qobject_cast<AxisTable*>(objectOfNode(tree, path));
    const std::vector<AxisTable*> tables = axesOf(path.section(QLatin1Char('.'), 0, 0));
    const auto lender
        = std::find_if(tables.begin(), tables.end(), [](const AxisTable* table) { return hasViewInfo(*table); });
    if (!axis || lender == tables.end())
        return false;
    const AxisTrial trial(*axis);
    const QMap<QString, QString> names = (*lender)->allViewInfo();
    for (auto name = names.begin(); name != names.end(); ++name)
        axis->setViewInfo(name.key(), name.value());
    return true;
}

bool allHaveLeftViewInfo(const QString& projectName)
{
    const std::vector<AxisTable*> tables = axesOf(projectName);
    return std::all_of(tables.begin(), tables.end(), [](const AxisTable* table) { return hasViewInfo(*table); });
}
