#include "plugin/AxisNodes.h"

#include "axisdata/AxisConstants.h"
#include "host/projectmodel/AxisTable.h"
#include "plugin/MotionControlAxisPlugin.h"

namespace AxisNodes {

QString childPath(const QString& parentPath, const QString& name)
{
    return parentPath + QLatin1Char('.') + name;
}

QIcon icon(bool lightTheme)
{
    return QIcon(
        lightTheme ? QStringLiteral(":/images/default/axiscfg.png") : QStringLiteral(":/images/dark/axiscfg.png"));
}

Solution::NodeDescription unitNode(bool lightTheme)
{
    Solution::NodeDescription node;
    node.name = QStringLiteral("Axis");
    node.displayText = MotionControlAxisPlugin::tr("Axis Config");
    node.icon = icon(lightTheme);
    node.properties.insert(QStringLiteral("NodeType"), unitType());
    return node;
}

Solution::NodeDescription axisNode(const AxisTable& axis, const QString& unitPath, bool lightTheme)
{
    Solution::NodeDescription node = restoredAxisNode(axis, unitPath, lightTheme);
    node.properties.insert(QStringLiteral("DeviceID"), axis.property(QStringLiteral("AxisID"), QLatin1String("")));
    return node;
}

Solution::NodeDescription restoredAxisNode(const AxisTable& axis, const QString& unitPath, bool lightTheme)
{
    Solution::NodeDescription node;
    node.name = AxisViewKey + QString::number(axis.id());
    node.displayText = axis.name();
    node.icon = icon(lightTheme);
    node.properties.insert(QStringLiteral("FileName"), childPath(unitPath, node.name));
    node.properties.insert(QStringLiteral("MimeType"), AxisViewKey);
    node.properties.insert(QStringLiteral("NodeType"), axisType());
    node.properties.insert(QStringLiteral("DataBaseKey"), axis.id());
    return node;
}

} // namespace AxisNodes
