#include "workbench/online/ProjectAxes.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"

#include <algorithm>
#include <vector>

namespace {

QString numberKey()
{
    return QStringLiteral("AxisNo");
}

ControllerAxis controllerAxis(const AxisTable& table)
{
    ControllerAxis axis{ table.name(), table.getCompareData() };
    axis.values.remove(QStringLiteral("Name"));
    axis.values.insert(numberKey(), table.property(numberKey(), QString()));
    return axis;
}

} // namespace

QVector<ControllerAxis> controllerAxes(const ProjectModel& project)
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    QVector<ControllerAxis> axes;
    for (const AxisTable* table : tables)
        axes.append(controllerAxis(*table));
    return axes;
}

bool sameNumbers(const QVector<ControllerAxis>& project, const QVector<ControllerAxis>& controller)
{
    return std::all_of(project.begin(), project.end(), [&controller](const ControllerAxis& mine) {
        return std::any_of(controller.begin(), controller.end(), [&mine](const ControllerAxis& theirs) {
            return theirs.name == mine.name && theirs.values.value(numberKey()) == mine.values.value(numberKey());
        });
    });
}

QString axisNameOf(const ProjectModel* project, int axisNo)
{
    std::vector<AxisTable*> tables;
    if (project)
        project->axisModel()->allAxisTables(tables);
    for (const AxisTable* table : tables) {
        if (table->property(numberKey(), QString()).toInt() == axisNo)
            return table->name();
    }
    return QString();
}
