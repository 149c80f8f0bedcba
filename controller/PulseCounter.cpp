#include "controller/PulseCounter.h"

#include <cmath>
#include <limits>

void PulseCounter::advance(double distance)
{
    m_remainder += static_cast<long double>(distance) * m_pulsesPerUnit;
    const long double whole = std::rint(m_remainder);
    m_remainder -= whole;
    m_pulses += whole;
}

void PulseCounter::restart(double position)
{
    const long double exact = static_cast<long double>(position) * m_pulsesPerUnit;
    m_pulses = std::rint(exact);
    m_remainder = exact - m_pulses;
}

std::int64_t PulseCounter::pulses() const
{
    using Limits = std::numeric_limits<std::int64_t>;
    if (m_pulses >= static_cast<long double>(Limits::max()))
        return Limits::max();
    return m_pulses <= static_cast<long double>(Limits::min()) ? Limits::min() : static_cast<std::int64_t>(m_pulses);
}
