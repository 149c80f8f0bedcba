#include "workbench/monitor/CurveRing.h"

#include <cmath>
#include <limits>

namespace {

// Beyond this the width of a scale leaves the range of numbers.
constexpr double largestDrawable = 1e100;

} // namespace

CurvePoint CurvePoint::gapAt(double time)
{
    CurvePoint point;
    point.time = time;
    point.values.fill(std::numeric_limits<double>::quiet_NaN());
    return point;
}

bool CurvePoint::isGap() const
{
    for (const double value : values) {
        if (!std::isnan(value))
            return false;
    }
    return true;
}

bool CurvePoint::isDrawable(CurveKind kind) const
{
    return std::abs(values[kind]) < largestDrawable;
}

void CurveRing::append(const CurvePoint& point)
{
    if (size() < m_capacity) {
        m_points.push_back(point);
        return;
    }
    m_points[m_first] = point;
    m_first = (m_first + 1) % m_points.size();
}

const CurvePoint& CurveRing::at(int index) const
{
    const std::size_t place = m_first + static_cast<std::size_t>(index);
    return m_points[place < m_points.size() ? place : place - m_points.size()];
}

int CurveRing::firstFrom(double time) const
{
    int low = 0;
    int high = size();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (at(middle).time < time)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}
