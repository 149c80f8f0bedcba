#pragma once

#include <QString>

/// Where a name stands in a source of a project.
struct VariablePlace {
    QString project;
    QString source;
    /// From 1.
    int line = 1;
    /// The name as it is written there, members and indices included.
    QString written;
};

/// The full path of the variable that is meant by a name at a place: the one that is declared nearest before the place
/// in the same source, or one of the whole project with that path. Empty when the project knows none.
QString variablePathAt(const VariablePlace& place);

/// True when the project knows a variable of that path.
bool isVariable(const QString& project, const QString& path);
