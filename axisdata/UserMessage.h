#pragma once

#include <QString>

/// Shows a modal information box without a parent, titled "Kestrun", with the one button "OK", both translated in
/// QObject's context. The text is translated by the caller and shown as it stands: what a user has typed into it is
/// never read as markup. Returns when the user has closed the box; events go on meanwhile.
void showInformation(const QString& text);
