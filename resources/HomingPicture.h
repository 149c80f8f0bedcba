#pragma once

#include "resources/HomingMethods.h"
#include "resources/PictureCanvas.h"

namespace drawing {

/// Size of every homing picture.
constexpr int homingPictureWidth = 1280;
constexpr int homingPictureHeight = 720;

/// Draws how the method finds its home position: the travel with its switches, the level of the signals along it, the
/// path of each starting case, what happens at the limits, and what the signs mean.
Picture drawHomingPicture(const homing::Method& method, Theme theme, Language language);

} // namespace drawing
