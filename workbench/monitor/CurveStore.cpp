#include "workbench/monitor/CurveStore.h"

#include <algorithm>
#include <cmath>

namespace {

// After an interruption the clocks of the same controller and of this machine still agree to this many s.
constexpr double sameController = 1.0;

CurvePoint pointOf(const AxisSample& sample, double time)
{
    CurvePoint point;
    point.time = time;
    point.values = { sample.setPosition, sample.actualPosition, sample.setVelocity, sample.actualVelocity };
    return point;
}

void endCurve(CurveRing& ring)
{
    if (!ring.newest().isGap())
        ring.append(CurvePoint::gapAt(ring.newest().time));
}

} // namespace

double CurveStore::shownTime(double controllerTime, double now)
{
    if (m_rings.empty()) {
        m_offset = -controllerTime;
    } else {
        const double expected = m_shown + std::max(now - m_now, periodMs / 1000.0);
        const bool wentBack = controllerTime < m_controllerTime;
        const bool another = m_interrupted && std::abs(controllerTime + m_offset - expected) > sameController;
        if (wentBack || another) {
            interrupt();
            m_offset = expected - controllerTime;
        }
    }
    m_interrupted = false;
    m_controllerTime = controllerTime;
    m_now = now;
    return controllerTime + m_offset;
}

void CurveStore::append(const QVector<AxisSample>& samples, double now)
{
    if (samples.isEmpty() || !std::isfinite(samples.first().time))
        return;
    m_shown = shownTime(samples.first().time, now);
    for (const AxisSample& sample : samples) {
        CurveRing& ring = m_rings.emplace(sample.axisNo, CurveRing(keptPoints)).first->second;
        if (!ring.isEmpty()) {
            const double step = m_shown - ring.newest().time;
            if (step <= 0 && !ring.newest().isGap())
                continue;
            if (step > longestStep)
                endCurve(ring);
        }
        ring.append(pointOf(sample, m_shown));
    }
}

void CurveStore::interrupt()
{
    m_interrupted = true;
    for (auto& ring : m_rings)
        endCurve(ring.second);
}

void CurveStore::clear()
{
    *this = CurveStore();
}

QVector<int> CurveStore::axes() const
{
    QVector<int> axes;
    for (const auto& ring : m_rings)
        axes.append(ring.first);
    return axes;
}

const CurveRing* CurveStore::curves(int axisNo) const
{
    const auto found = m_rings.find(axisNo);
    return found == m_rings.end() ? nullptr : &found->second;
}

double CurveStore::begin() const
{
    double begin = m_shown;
    for (const auto& ring : m_rings)
        begin = std::min(begin, ring.second.at(0).time);
    return begin;
}

const CurvePoint* CurveStore::nearest(int axisNo, double time) const
{
    const CurveRing* ring = curves(axisNo);
    if (!ring)
        return nullptr;
    const int next = ring->firstFrom(time);
    const CurvePoint* best = nullptr;
    for (const int index : { next - 1, next }) {
        if (index < 0 || index >= ring->size() || ring->at(index).isGap())
            continue;
        const CurvePoint& point = ring->at(index);
        const double distance = std::abs(point.time - time);
        if (distance <= longestStep && (!best || distance < std::abs(best->time - time)))
            best = &point;
    }
    return best;
}
