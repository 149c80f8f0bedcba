#pragma once

#include "host/languagecore/ACCore.h"

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
/// the whole project (see namedVariable). What a type or block declares is the first variable of the project that it
/// makes. Blanks in a name do not matter. Empty when the project knows no such name there.
QString variablePathAt(const VariablePlace& place);

/// What a name means anywhere in a project: a path, the bare name of a global variable, or either by way of a program's
/// VAR_EXTERNAL.
struct NamedVariable {
    ac::ACCore::Reach reach = ac::ACCore::Reach::None;
    /// The full path as it is declared, with the values of constants in its indices. Empty when the project knows none.
    QString path;
    /// What it is is known only while the program runs, since a pointer leads there; it has no reach then.
    bool isBehindPointer = false;
    /// All paths under which it may be used: that one first, then without its list, then by way of the programs that
    /// declare it as external, then the same with the constants by name. Of what the project does not know, the name as
    /// it is written. None is there twice, in whichever letters.
    QStringList paths;
};
/// The texts are what stands where variables are used: those with a constant in an index that has the value of the
/// variable's are among its paths.
NamedVariable namedVariable(const QString& project, const QString& written, const QStringList& texts = {});
/// Without the blanks that do not matter in a name.
QString withoutBlanks(const QString& written);
