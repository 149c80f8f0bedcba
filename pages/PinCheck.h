#pragma once

#include <QString>

/// Whether a limit or origin pin may be stored: a direct bit address, or the full path of a BOOL variable of the
/// project. What is refused is told to the user in a message box, but for a project without a language core, which
/// refuses in silence. Holds the language core while a box is open. Main thread only.
bool checkPinText(const QString& projectName, const QString& text);
