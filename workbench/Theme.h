#pragma once

#include <QPalette>
#include <QString>

/// The looks of the program: the Fusion style, a palette and a style sheet for each theme, and the symbols that go
/// with it.
namespace Theme {

/// Sets style, fonts and where symbols are looked for. Once, at the start.
void prepare();
/// Puts the theme of that style sheet name on the whole application; any name but the light one's is the dark theme.
void apply(const QString& name);
/// The palette of a theme, which style sheet and drawn parts share.
QPalette palette(bool light);
bool isLight(const QString& name);

} // namespace Theme
