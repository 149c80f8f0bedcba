#include "controller/PulseCounter.h"

#include <cmath>

std::int64_t PulseCounter::advance(double distance)
{
    m_remainder += static_cast<long double>(distance) * m_pulsesPerUnit;
    const long double whole = std::rint(m_remainder);
    m_remainder -= whole;
    m_pulses += static_cast<std::int64_t>(whole);
    return static_cast<std::int64_t>(whole);
}

void PulseCounter::restart(double position)
{
    const long double exact = static_cast<long double>(position) * m_pulsesPerUnit;
    m_pulses = static_cast<std::int64_t>(std::rint(exact));
    m_remainder = exact - m_pulses;
}
