#pragma once

#include <vector>

/// Where a set point stands: user units, units per second, units per second squared.
struct MotionState {
    double position = 0;
    double velocity = 0;
    double acceleration = 0;
};

/// What a motion may use. Both ramps are positive; a jerk of 0 means none, that is a trapezoid.
struct MotionLimits {
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

/// A motion as a chain of segments of constant jerk, evaluated in closed form at any time, so that nothing adds up over
/// a long run. Times are in seconds from its start.
class Profile {
public:
    Profile() = default;
    explicit Profile(const MotionState& start);

    /// Goes on from the present end, with the acceleration that the segment begins with (it may jump where there is no
    /// jerk limit) and a constant jerk. A duration that is not positive adds nothing.
    void append(double duration, double acceleration, double jerk);
    /// Puts another profile, which must begin where this one ends, behind it. One without segments fixes the end where
    /// rounding would miss it by a little.
    void append(const Profile& next);
    /// Moves the whole motion in space.
    void shift(double distance);

    /// Before the start: the start. After the end: going on at the end's velocity, without acceleration.
    MotionState at(double time) const;
    double duration() const { return m_duration; }
    MotionState start() const { return m_start; }
    MotionState end() const { return m_end; }
    /// The farthest positions that it passes, its end included; infinite where it goes on for ever.
    double highest() const;
    double lowest() const;

private:
    struct Segment {
        double begin;
        double jerk;
        MotionState start;
    };

    MotionState m_start;
    MotionState m_end;
    double m_duration = 0;
    std::vector<Segment> m_segments;
};
