#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace ac {
struct VariableInfo;
}

/// What the widgets of this library read from the language core of a project. Main thread only.
namespace ProjectVariables {

/// Name of the project that the host calls current (cookie "Project.Name"); empty without one.
QString currentProject();

/// Calls the function for each variable of the project, members and array elements included. Nothing is called for an
/// unknown project. The info holds during the call only.
void forEach(const QString& projectName, const std::function<void(const ac::VariableInfo&)>& function);

/// True for a variable that a pin may name: boolean, and known by a path with at least one point.
bool isBooleanPath(const ac::VariableInfo& variable);

/// Paths of all such variables, in the order of declaration.
QStringList booleanPaths(const QString& projectName);

} // namespace ProjectVariables
