#pragma once

#include "resources/HomingMethods.h"

#include <utility>
#include <vector>

/// Where things stand along the travel in a homing picture: 0 is the negative end, 1 the positive end.
namespace drawing {

/// Inner edges of the limit switches.
constexpr double negativeLimitEdge = 0.10;
constexpr double positiveLimitEdge = 0.90;

/// What the axis runs on past an edge that it meets at search speed.
constexpr double brakingDistance = 0.045;

using Stretch = std::pair<double, double>;

/// The stretches where the signal is active.
std::vector<Stretch> activeStretches(const homing::Method& method, homing::Signal signal);

/// The place where the move's signal changes.
double edgeOf(const homing::Method& method, const homing::Move& move);

double startOf(const homing::Method& method, const homing::StartingCase& start);

double homeOf(const homing::Method& method);

} // namespace drawing
