#pragma once

#include "resources/DrawingStyle.h"

#include <QImage>

namespace drawing {

/// Side of all icons and lamps: twice the 16 pixels of a tree row. Edges lie on even pixels, so that halving keeps
/// them sharp.
constexpr int smallImageSide = 32;

/// Icon of the tree nodes: a carriage on its rail between two stops.
QImage axisConfigIcon(Theme theme);

/// Icon of a single axis: a coordinate line through its origin.
QImage axisIcon(Theme theme);

/// Lamp of something that is on and well: a round disc with a light inside. Stands on both themes.
QImage statusOnLamp();

/// Lamp of something that holds the axis back: an octagon with a bar. Stands on both themes.
QImage statusOffLamp();

} // namespace drawing
