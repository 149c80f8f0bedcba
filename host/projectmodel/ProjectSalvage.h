#pragma once

#include <QString>

/// Reads what is whole in a damaged project file, which is left as it is, and writes it to a new project file. Returns
/// the number of axes rescued; -1 sets the error: nothing could be read, or the new file cannot be written.
int salvageProject(const QString& damagedPath, const QString& newPath, QString* error);
