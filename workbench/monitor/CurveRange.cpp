#include "workbench/monitor/CurveRange.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double shortestTime = 0.002;
constexpr double longestTime = 3600;
constexpr double narrowestValues = 1e-9;
constexpr double widestValues = 1e99;
constexpr int mostStepsBack = 100;

CurveRange::Interval scaled(const CurveRange::Interval& shown, double factor, double around, double least, double most)
{
    const double width = std::clamp(shown.width() * factor, least, most);
    const double part = shown.width() > 0 ? std::clamp((around - shown.from) / shown.width(), 0.0, 1.0) : 0.5;
    const double from = around - part * width;
    return { from, from + width };
}

} // namespace

CurveRange::Interval CurveRange::times(double begin, double end) const
{
    if (!m_state.following)
        return m_state.times;
    const double to = std::max(end, begin + m_state.followed);
    return { to - m_state.followed, to };
}

void CurveRange::remember(Step step)
{
    const bool sameGesture = step == Step::Wheel && m_last == Step::Wheel;
    m_last = step;
    if (sameGesture)
        return;
    m_history.append(m_state);
    if (m_history.size() > mostStepsBack)
        m_history.removeFirst();
}

void CurveRange::zoomTo(int plot, const QRectF& area)
{
    remember(Step::Other);
    const QRectF wanted = area.normalized();
    m_state.following = false;
    m_state.times = { wanted.left(), wanted.left() + std::max(wanted.width(), shortestTime) };
    m_state.values[plot] = Interval{ wanted.top(), wanted.top() + std::max(wanted.height(), narrowestValues) };
}

void CurveRange::zoomTime(double factor, double around, const Interval& shown)
{
    remember(Step::Wheel);
    if (m_state.following)
        m_state.followed = std::clamp(m_state.followed * factor, shortestTime, longestTime);
    else
        m_state.times = scaled(shown, factor, around, shortestTime, longestTime);
}

void CurveRange::zoomValues(int plot, double factor, double around, const Interval& shown)
{
    remember(Step::Wheel);
    m_state.values[plot] = scaled(shown, factor, around, narrowestValues, widestValues);
}

void CurveRange::pan(double seconds, const Interval& shown)
{
    remember(Step::Wheel);
    m_state.following = false;
    m_state.times = { shown.from + seconds, shown.to + seconds };
}

void CurveRange::fit(double begin, double end)
{
    remember(Step::Other);
    m_state.following = false;
    m_state.times = { begin, std::max(end, begin + shortestTime) };
    m_state.values.fill(std::nullopt);
}

void CurveRange::follow()
{
    remember(Step::Other);
    m_state.following = true;
    m_state.values.fill(std::nullopt);
}

void CurveRange::back()
{
    m_last = Step::Other;
    if (!m_history.isEmpty())
        m_state = m_history.takeLast();
}
