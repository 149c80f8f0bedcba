#pragma once

#include "controller/Profile.h"

/// Plans motions from any position, velocity and acceleration. The velocity never changes its sign within a ramp: a
/// target in the opposite direction first gets a full stop. Limits must be usable (ramps positive, jerk not negative).
namespace ProfilePlanner {

/// Changes the velocity (signed) and goes on at it. Acceleration is 0 at the end.
Profile toVelocity(const MotionState& from, double velocity, const MotionLimits& limits);

/// Goes to the position and stands there, never faster than the velocity (positive), except while slowing down from a
/// higher one. A target that can no longer be reached in time is passed and come back to.
Profile toPosition(const MotionState& from, double position, double velocity, const MotionLimits& limits);

/// The distance (not negative) that a stop from this velocity and acceleration takes in the direction of travel.
double stoppingDistance(double velocity, double acceleration, const MotionLimits& limits);

} // namespace ProfilePlanner
