#include "controller/Profile.h"

#include <algorithm>
#include <limits>

namespace {
MotionState advance(const MotionState& from, double jerk, double time)
{
    MotionState state;
    state.acceleration = from.acceleration + jerk * time;
    state.velocity = from.velocity + (from.acceleration + jerk * time / 2) * time;
    state.position = from.position + (from.velocity + (from.acceleration / 2 + jerk * time / 6) * time) * time;
    return state;
}
} // namespace

Profile::Profile(const MotionState& start) : m_start(start), m_end(start)
{
    m_end.acceleration = 0;
}

void Profile::append(double duration, double acceleration, double jerk)
{
    if (!(duration > 0))
        return;
    Segment segment{ m_duration, jerk, m_end };
    segment.start.acceleration = acceleration;
    m_end = advance(segment.start, jerk, duration);
    m_end.acceleration = 0;
    m_duration += duration;
    m_segments.push_back(segment);
}

void Profile::append(const Profile& next)
{
    for (Segment segment : next.m_segments) {
        segment.begin += m_duration;
        m_segments.push_back(segment);
    }
    m_duration += next.m_duration;
    m_end = next.m_end;
}

void Profile::shift(double distance)
{
    m_start.position += distance;
    m_end.position += distance;
    for (Segment& segment : m_segments)
        segment.start.position += distance;
}

MotionState Profile::at(double time) const
{
    if (time >= m_duration)
        return advance(m_end, 0, time - m_duration);
    if (m_segments.empty() || time < 0)
        return m_start;
    const auto after = std::upper_bound(
        m_segments.begin(), m_segments.end(), time, [](double t, const Segment& s) { return t < s.begin; });
    const Segment& segment = *std::prev(after);
    return advance(segment.start, segment.jerk, time - segment.begin);
}

double Profile::highest() const
{
    if (m_end.velocity > 0)
        return std::numeric_limits<double>::infinity();
    double value = std::max(m_start.position, m_end.position);
    for (const Segment& segment : m_segments)
        value = std::max(value, segment.start.position);
    return value;
}

double Profile::lowest() const
{
    if (m_end.velocity < 0)
        return -std::numeric_limits<double>::infinity();
    double value = std::min(m_start.position, m_end.position);
    for (const Segment& segment : m_segments)
        value = std::min(value, segment.start.position);
    return value;
}
