#pragma once

#include <cstdint>

/// Turns distances into whole pulses for the drive and carries what is left over, so that no pulse is lost however long
/// the run.
class PulseCounter {
public:
    /// Pulses per user unit, positive.
    explicit PulseCounter(double pulsesPerUnit) : m_pulsesPerUnit(pulsesPerUnit) { }

    /// Goes on by a signed distance in user units; gives the pulses of this step.
    std::int64_t advance(double distance);
    /// Starts from a place in user units, without a remainder beyond half a pulse.
    void restart(double position);

    std::int64_t pulses() const { return m_pulses; }
    double pulsesPerUnit() const { return m_pulsesPerUnit; }
    /// The place that the pulses so far stand for, in user units.
    double position() const { return static_cast<double>(m_pulses) / m_pulsesPerUnit; }

private:
    double m_pulsesPerUnit;
    std::int64_t m_pulses = 0;
    long double m_remainder = 0;
};
