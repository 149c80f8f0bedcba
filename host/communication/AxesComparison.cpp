#include "host/communication/AxesComparison.h"

#include <QSet>

namespace {
bool isCompared(const QString& key)
{
    return key != QLatin1String("Row") && key != QLatin1String("AxisID") && key != QLatin1String("Version");
}

QMap<QString, ControllerAxis> byName(const QVector<ControllerAxis>& axes)
{
    QMap<QString, ControllerAxis> map;
    for (const ControllerAxis& axis : axes)
        map.insert(axis.name, axis);
    return map;
}

void compareValues(const ControllerAxis& project, const ControllerAxis& controller, QVector<AxisDifference>& list)
{
    // A map counts every key once and keeps them in order.
    QMap<QString, QString> keys = project.values;
    for (auto it = controller.values.begin(); it != controller.values.end(); ++it)
        keys.insert(it.key(), it.value());
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        const QString mine = project.values.value(it.key());
        const QString theirs = controller.values.value(it.key());
        if (isCompared(it.key()) && mine != theirs)
            list.append({ AxisDifference::Parameter, project.name, it.key(), mine, theirs });
    }
}
} // namespace

QVector<AxisDifference> compareAxes(const QVector<ControllerAxis>& project, const QVector<ControllerAxis>& controller)
{
    QVector<AxisDifference> list;
    const QMap<QString, ControllerAxis> mine = byName(project);
    const QMap<QString, ControllerAxis> theirs = byName(controller);
    for (const ControllerAxis& axis : mine) {
        if (theirs.contains(axis.name))
            compareValues(axis, theirs.value(axis.name), list);
        else
            list.append({ AxisDifference::OnlyInProject, axis.name, QString(), QString(), QString() });
    }
    for (const ControllerAxis& axis : theirs) {
        if (!mine.contains(axis.name))
            list.append({ AxisDifference::OnlyInController, axis.name, QString(), QString(), QString() });
    }
    return list;
}
