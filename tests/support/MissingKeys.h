#pragma once

#include <QStringList>

class TestProject;

/// Takes keys of an axis out of the project, as a program that knows fewer of them would have stored it: saves, takes
/// them out of the file and opens it again. Models and records taken before are gone.
void removeAxisKeys(TestProject& project, quint32 axis, const QStringList& keys);
