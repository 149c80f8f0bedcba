#pragma once

#include "controller/Axis.h"

#include <algorithm>
#include <cmath>
#include <vector>

/// A motion written down from the formulas of uniformly changing acceleration, stretch by stretch. It shares nothing
/// with the planner that it is held against.
class ClosedForm {
public:
    explicit ClosedForm(double position, double velocity = 0) : m_end{ position, velocity, 0 } { }

    /// Changes the speed without turning round: a straight ramp, or with a jerk the S of two or three stretches.
    ClosedForm& change(double velocity, double ramp, double jerk)
    {
        const double delta = std::fabs(velocity - m_end.velocity);
        const double sign = velocity < m_end.velocity ? -1 : 1;
        if (jerk == 0)
            return stretch(delta / ramp, sign * ramp, 0);
        const double round = delta >= ramp * ramp / jerk ? ramp / jerk : std::sqrt(delta / jerk);
        stretch(round, 0, sign * jerk);
        stretch(changeTime(delta, ramp, jerk) - 2 * round, sign * jerk * round, 0);
        return stretch(round, sign * jerk * round, -sign * jerk);
    }

    /// Goes on without acceleration.
    ClosedForm& keep(double seconds) { return stretch(seconds, 0, 0); }

    /// From rest over the distance to rest.
    ClosedForm& move(double distance, const MotionNumbers& n)
    {
        const double way = std::fabs(distance);
        const double sign = distance < 0 ? -1 : 1;
        const double peak = std::min(std::fabs(n.velocity), peakOver(way, n));
        const double ramps
            = peak / 2 * (changeTime(peak, n.acceleration, n.jerk) + changeTime(peak, n.deceleration, n.jerk));
        change(sign * peak, n.acceleration, n.jerk);
        keep((way - ramps) / peak);
        return change(0, n.deceleration, n.jerk);
    }

    double duration() const { return m_duration; }

    MotionState at(double time) const
    {
        const Stretch* last = nullptr;
        for (const Stretch& each : m_stretches) {
            if (time >= each.begin)
                last = &each;
        }
        return last && time < m_duration ? after(*last, time - last->begin) : after({ 0, m_end, 0 }, time - m_duration);
    }

    /// How long a change of speed takes from no acceleration to none.
    static double changeTime(double delta, double ramp, double jerk)
    {
        if (jerk == 0)
            return delta / ramp;
        return delta >= ramp * ramp / jerk ? delta / ramp + ramp / jerk : 2 * std::sqrt(delta / jerk);
    }

private:
    struct Stretch {
        double begin;
        MotionState start;
        double jerk;
    };

    static MotionState after(const Stretch& s, double t)
    {
        return { s.start.position + s.start.velocity * t + s.start.acceleration * t * t / 2 + s.jerk * t * t * t / 6,
            s.start.velocity + s.start.acceleration * t + s.jerk * t * t / 2, s.start.acceleration + s.jerk * t };
    }

    ClosedForm& stretch(double seconds, double acceleration, double jerk)
    {
        if (seconds <= 0)
            return *this;
        const Stretch added{ m_duration, { m_end.position, m_end.velocity, acceleration }, jerk };
        m_stretches.push_back(added);
        m_end = after(added, seconds);
        m_end.acceleration = 0;
        m_duration += seconds;
        return *this;
    }

    /// The speed whose two ramps use the whole way up.
    static double peakOver(double way, const MotionNumbers& n)
    {
        const double a = n.acceleration;
        const double d = n.deceleration;
        const double j = n.jerk;
        if (j == 0)
            return std::sqrt(2 * way * a * d / (a + d));
        // Neither ramp reaches its full acceleration: way = 2 peak sqrt(peak / jerk).
        const double rounded = std::pow(way * std::sqrt(j) / 2, 2.0 / 3);
        if (rounded <= std::min(a, d) * std::min(a, d) / j)
            return rounded;
        // Both do: way = peak / 2 (peak / a + a / j + peak / d + d / j). Between the two there is no such formula, so
        // no test has its numbers there.
        const double half = (a + d) / (2 * j);
        const double inverse = 1 / a + 1 / d;
        return (std::sqrt(half * half + 2 * way * inverse) - half) / inverse;
    }

    MotionState m_end;
    double m_duration = 0;
    std::vector<Stretch> m_stretches;
};
