#pragma once

#include "sdk/SolutionTypes.h"

#include <QIcon>
#include <QString>

class AxisTable;

/// The nodes of the axes in the project tree: their names, types and descriptions.
namespace AxisNodes {

/// Values of the property "NodeType".
inline QString unitType()
{
    return QStringLiteral("AxisUnitNode");
}
inline QString axisType()
{
    return QStringLiteral("AxisNode");
}

/// The path of a child node.
QString childPath(const QString& parentPath, const QString& name);

/// The icon of all nodes of a theme.
QIcon icon(bool lightTheme);

/// The node that carries a project's axes.
Solution::NodeDescription unitNode(bool lightTheme);
/// The node of an axis, with the axis's device number. Its file is named by the path of the current project's unit
/// node.
Solution::NodeDescription axisNode(const AxisTable& axis, const QString& unitPath, bool lightTheme);
/// The same for an axis that comes back through an undo: without the device number.
Solution::NodeDescription restoredAxisNode(const AxisTable& axis, const QString& unitPath, bool lightTheme);

} // namespace AxisNodes
