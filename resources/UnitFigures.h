#pragma once

#include "resources/PictureCanvas.h"

namespace drawing {

/// Size of both figures.
constexpr int unitFigureWidth = 960;
constexpr int unitFigureHeight = 420;

/// What the numbered wheels of both figures are. Motor turns per turn of the table are the teeth of the table's wheel
/// over the teeth of the motor's wheel: the numerator of the gear ratio belongs to the table's wheel.
constexpr int motorWheelNumber = 4;
constexpr int tableWheelNumber = 5;

/// Motor, gear, screw and table: how a turn of the motor becomes a distance. Without words, for every language.
Picture drawLinearUnitFigure(Theme theme);

/// Motor, gear and rotary table: how a turn of the motor becomes an angle.
Picture drawRotaryUnitFigure(Theme theme);

} // namespace drawing
