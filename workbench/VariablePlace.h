#pragma once

#include <QString>
#include <QStringList>

/// Where a name stands in a source of a project.
struct VariablePlace {
    QString project;
    QString source;
    /// From 1.
    int line = 1;
    /// The name as it is written there, members and indices included.
    QString written;
};

/// The full path of the variable that is meant by a name at a place: one of the program or list around it, else one of
/// the whole project (see variablePath). What a type or block declares is the first variable of the project that it
/// makes. Empty when the
/// project knows no such name there.
QString variablePathAt(const VariablePlace& place);

/// The full path of the variable that a name means anywhere in a project: a path, the bare name of
/// a global variable, or either by way of a program's VAR_EXTERNAL. Empty when the project knows none.
QString variablePath(const QString& project, const QString& written);

/// All paths under which a variable may be used, given the one as declared: itself first, then without
/// its list, then by way of the programs that declare it as external.
QStringList pathSpellings(const QString& project, const QString& path);
