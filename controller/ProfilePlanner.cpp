#include "controller/ProfilePlanner.h"

#include <algorithm>
#include <cmath>

namespace {
/// All planning below is done for travel in the positive direction; the other direction is its mirror image.
struct Ramp {
    double duration;
    double acceleration;
    double jerk;
};

/// The at most four ramps of a change between two velocities that are not negative.
class RampList {
public:
    void add(double duration, double acceleration, double jerk)
    {
        if (duration > 0)
            m_ramps[m_count++] = { duration, acceleration, jerk };
    }
    const Ramp* begin() const { return m_ramps; }
    const Ramp* end() const { return m_ramps + m_count; }

private:
    Ramp m_ramps[4];
    int m_count = 0;
};

void addTrapezoid(RampList& ramps, double from, double to, const MotionLimits& limits)
{
    if (to > from)
        ramps.add((to - from) / limits.acceleration, limits.acceleration, 0);
    else
        ramps.add((from - to) / limits.deceleration, -limits.deceleration, 0);
}

/// Changes the velocity by change (which has the sign) and ends without acceleration; peak bounds the acceleration.
void addJerkLimited(RampList& ramps, double sign, double change, double acceleration, double peak, double jerk)
{
    const double a = sign * acceleration;
    const double delta = sign * change;
    if (a > peak) {
        // Harder than is allowed now: first ease off to the limit.
        ramps.add((a - peak) / jerk, acceleration, -sign * jerk);
        ramps.add((delta - a * a / (2 * jerk)) / peak, sign * peak, 0);
        ramps.add(peak / jerk, sign * peak, -sign * jerk);
        return;
    }
    const double top = std::min(peak, std::sqrt(std::max(0.0, jerk * delta + a * a / 2)));
    ramps.add((top - a) / jerk, acceleration, sign * jerk);
    if (top >= peak)
        ramps.add((delta - (2 * peak * peak - a * a) / (2 * jerk)) / peak, sign * peak, 0);
    ramps.add(top / jerk, sign * top, -sign * jerk);
}

/// The velocity at which the axis would be once its acceleration had been taken back.
double coastingVelocity(double velocity, double acceleration, double jerk)
{
    return jerk > 0 ? velocity + acceleration * std::fabs(acceleration) / (2 * jerk) : velocity;
}

RampList velocityRamps(double from, double acceleration, double to, const MotionLimits& limits)
{
    RampList ramps;
    if (limits.jerk <= 0) {
        addTrapezoid(ramps, from, to, limits);
        return ramps;
    }
    if (from <= 0 && acceleration < 0)
        acceleration = 0;
    double coasting = coastingVelocity(from, acceleration, limits.jerk);
    if (coasting < 0) {
        // Braking so hard that it cannot be taken back before the axis stands. It must not run backwards, so the
        // acceleration goes back faster than the jerk allows and both end together.
        const double jerk = acceleration * acceleration / (2 * from);
        ramps.add(-acceleration / jerk, acceleration, jerk);
        from = coasting = 0;
        acceleration = 0;
    }
    const double sign = coasting < to ? 1 : -1;
    const double peak = sign > 0 ? limits.acceleration : limits.deceleration;
    addJerkLimited(ramps, sign, to - from, acceleration, peak, limits.jerk);
    return ramps;
}

double distanceOf(const RampList& ramps, double velocity)
{
    double distance = 0;
    for (const Ramp& ramp : ramps) {
        const double t = ramp.duration;
        distance += (velocity + (ramp.acceleration / 2 + ramp.jerk * t / 6) * t) * t;
        velocity += (ramp.acceleration + ramp.jerk * t / 2) * t;
    }
    return distance;
}

double rampDistance(double from, double acceleration, double to, const MotionLimits& limits)
{
    return distanceOf(velocityRamps(from, acceleration, to, limits), from);
}

void appendRamps(Profile& profile, const RampList& ramps, double direction)
{
    for (const Ramp& ramp : ramps)
        profile.append(ramp.duration, direction * ramp.acceleration, direction * ramp.jerk);
}

/// Distance of a motion that changes to the peak velocity and at once brakes from it.
double distanceThroughPeak(double velocity, double acceleration, double peak, const MotionLimits& limits)
{
    return rampDistance(velocity, acceleration, peak, limits) + rampDistance(peak, 0, 0, limits);
}

/// The peak velocity, at most the given one, with which the motion covers just the distance. The distance must be
/// enough to stop in, and less than what the given peak takes.
double peakFor(double distance, double velocity, double acceleration, double highest, const MotionLimits& limits)
{
    // Going through the velocity at which the acceleration is taken back is the shortest of the motions that do not
    // slow down first; below it there is another, slower family.
    const double coasting = std::clamp(coastingVelocity(velocity, acceleration, limits.jerk), 0.0, highest);
    double low = distanceThroughPeak(velocity, acceleration, coasting, limits) <= distance ? coasting : 0;
    double high = highest;
    for (int i = 0; i < 200 && low < high; ++i) {
        const double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high)
            break;
        (distanceThroughPeak(velocity, acceleration, middle, limits) <= distance ? low : high) = middle;
    }
    return low;
}

double signOf(double value)
{
    return value < 0 ? -1 : 1;
}

Profile stopped(const MotionState& from, const MotionLimits& limits)
{
    Profile profile(from);
    const double direction = signOf(from.velocity);
    appendRamps(profile, velocityRamps(std::fabs(from.velocity), direction * from.acceleration, 0, limits), direction);
    // What is left of the velocity is rounding, and would carry the axis away if it went on.
    MotionState rest = profile.end();
    rest.velocity = 0;
    profile.append(Profile(rest));
    return profile;
}

/// The motion towards a target ahead that leaves enough distance to stop in.
Profile ahead(const MotionState& from, double direction, double distance, double highest, const MotionLimits& limits)
{
    const double velocity = std::fabs(from.velocity);
    const double acceleration = direction * from.acceleration;
    const double needed = distanceThroughPeak(velocity, acceleration, highest, limits);
    const double peak = needed <= distance ? highest : peakFor(distance, velocity, acceleration, highest, limits);
    Profile profile(from);
    appendRamps(profile, velocityRamps(velocity, acceleration, peak, limits), direction);
    if (needed < distance)
        profile.append((distance - needed) / highest, 0, 0);
    appendRamps(profile, velocityRamps(peak, 0, 0, limits), direction);
    return profile;
}
} // namespace

namespace ProfilePlanner {

Profile toVelocity(const MotionState& from, double velocity, const MotionLimits& limits)
{
    if (velocity == 0)
        return stopped(from, limits);
    const double direction = signOf(velocity);
    if (from.velocity * direction < 0) {
        Profile profile = stopped(from, limits);
        profile.append(toVelocity(profile.end(), velocity, limits));
        return profile;
    }
    Profile profile(from);
    appendRamps(profile,
        velocityRamps(std::fabs(from.velocity), direction * from.acceleration, std::fabs(velocity), limits), direction);
    MotionState cruise = profile.end();
    cruise.velocity = velocity;
    profile.append(Profile(cruise));
    return profile;
}

Profile toPosition(const MotionState& from, double position, double velocity, const MotionLimits& limits)
{
    const double way = position - from.position;
    const double direction = from.velocity != 0 ? signOf(from.velocity) : signOf(way);
    const double distance = direction * way;
    const double stop = rampDistance(std::fabs(from.velocity), direction * from.acceleration, 0, limits);
    // A motion that is planned anew during its last ramp needs just the distance that is left.
    const double slack = 1e-9 * (1 + std::fabs(position));
    Profile profile;
    if (distance < stop - slack) {
        profile = stopped(from, limits);
        profile.append(toPosition(profile.end(), position, velocity, limits));
    } else {
        profile = ahead(from, direction, std::max(distance, stop), velocity, limits);
    }
    MotionState target;
    target.position = position;
    profile.append(Profile(target));
    return profile;
}

double stoppingDistance(double velocity, double acceleration, const MotionLimits& limits)
{
    return rampDistance(std::fabs(velocity), signOf(velocity) * acceleration, 0, limits);
}

} // namespace ProfilePlanner
