#pragma once

#include <cstdint>

/// Turns distances into whole pulses for the drive and carries what is left over, so that no pulse is lost however long
/// the run.
class PulseCounter {
public:
    /// Pulses per user unit, positive.
    explicit PulseCounter(double pulsesPerUnit) : m_pulsesPerUnit(pulsesPerUnit) { }

    /// Goes on by a signed distance in user units.
    void advance(double distance);
    /// Starts from a place in user units, without a remainder beyond half a pulse.
    void restart(double position);

    /// The whole pulses so far; the highest or lowest number where there are more.
    std::int64_t pulses() const;
    double pulsesPerUnit() const { return m_pulsesPerUnit; }
    /// The place that the pulses so far stand for, in user units.
    double position() const { return static_cast<double>(m_pulses / m_pulsesPerUnit); }

private:
    double m_pulsesPerUnit;
    /// A whole number. Units can be made so fine that no integer counts their pulses; beyond 2^64 it is then the place
    /// that counts, and single pulses no more.
    long double m_pulses = 0;
    long double m_remainder = 0;
};
