#include "workbench/ProjectObjects.h"

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SafeProjectModel.h"
#include "workbench/ProjectTree.h"

#include <algorithm>
#include <vector>

namespace {

bool hasViewInfo(const AxisTable& axis)
{
    return !axis.getViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QString()).isNull();
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

bool allHaveLeftViewInfo(const QString& projectName)
{
    const SafeProjectModel project(projectName);
    const auto* axes = project ? qobject_cast<AxisModel*>(project->subModel("AxisModel")) : nullptr;
    std::vector<AxisTable*> tables;
    if (axes)
        axes->allAxisTables(tables);
    return std::all_of(tables.begin(), tables.end(), [](const AxisTable* table) { return hasViewInfo(*table); });
}
