#include "workbench/monitor/CurveItem.h"

#include "workbench/monitor/CurveStore.h"

#include <qwt_scale_map.h>

#include <algorithm>
#include <vector>

namespace {

/// From so many points a pixel on, those of a pixel are drawn as four.
constexpr int pointsToReduce = 4;

/// The points of one pixel column that decide what is drawn there: the first, the least, the greatest and the last.
class ColumnOfPoints {
public:
    explicit ColumnOfPoints(const QPointF& point) : m_least(point), m_greatest(point), m_first(point), m_last(point) { }

    void add(const QPointF& point)
    {
        if (point.y() < m_least.y())
            m_least = point;
        if (point.y() > m_greatest.y())
            m_greatest = point;
        m_last = point;
    }
    void appendTo(std::vector<QPointF>& points) const
    {
        const bool leastFirst = m_least.x() < m_greatest.x();
        points.insert(points.end(), { m_first, leastFirst ? m_least : m_greatest, leastFirst ? m_greatest : m_least });
        points.push_back(m_last);
    }

private:
    QPointF m_least;
    QPointF m_greatest;
    QPointF m_first;
    QPointF m_last;
};

} // namespace

/// The points of a curve between two gaps, reduced where they are many times as dense as the pixels.
class CurveItem::Series : public QwtSeriesData<QPointF> {
public:
    size_t size() const override { return m_points.size(); }
    QPointF sample(size_t i) const override { return m_points[i]; }
    // The scales are set by the panel and never taken from here.
    QRectF boundingRect() const override { return { 0, 0, -1, -1 }; }

    void take(const CurveRing& ring, CurveKind kind, int from, int to, const QwtScaleMap& xMap)
    {
        m_points.clear();
        const auto point = [&](int i) { return QPointF(ring.at(i).time, ring.at(i).values[kind]); };
        const double width = xMap.transform(ring.at(to - 1).time) - xMap.transform(ring.at(from).time);
        if (to - from < pointsToReduce * std::max(width, 1.0)) {
            for (int i = from; i < to; ++i)
                m_points.push_back(point(i));
            return;
        }
        ColumnOfPoints column(point(from));
        int x = qRound(xMap.transform(ring.at(from).time));
        for (int i = from + 1; i < to; ++i) {
            const int next = qRound(xMap.transform(ring.at(i).time));
            if (next == x) {
                column.add(point(i));
                continue;
            }
            column.appendTo(m_points);
            column = ColumnOfPoints(point(i));
            x = next;
        }
        column.appendTo(m_points);
    }

private:
    std::vector<QPointF> m_points;
};

CurveItem::CurveItem(int axisNo, CurveKind kind, Source source)
    : m_axisNo(axisNo), m_kind(kind), m_source(std::move(source)), m_series(new Series)
{
    setSamples(m_series);
    setPaintAttribute(FilterPoints);
    setPaintAttribute(ClipPolygons);
    // The set value on top: it is the one with open places.
    setZ(kind == SetPosition || kind == SetVelocity ? 21 : 20);
}

CurveItem::~CurveItem() = default;

void CurveItem::includeValues(double from, double to, double& least, double& most) const
{
    const CurveRing* ring = m_source().curves(m_axisNo);
    if (!ring)
        return;
    for (int i = ring->firstFrom(from); i < ring->size() && ring->at(i).time <= to; ++i) {
        if (!ring->at(i).isDrawable(m_kind))
            continue;
        least = std::min(least, ring->at(i).values[m_kind]);
        most = std::max(most, ring->at(i).values[m_kind]);
    }
}

void CurveItem::drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
    const QRectF& canvasRect, int /*from*/, int /*to*/) const
{
    const CurveRing* ring = m_source().curves(m_axisNo);
    if (!ring)
        return;
    // One point more on either side, so that the line reaches the edge.
    const int end = std::min(ring->size(), ring->firstFrom(xMap.s2()) + 1);
    int i = std::max(0, ring->firstFrom(xMap.s1()) - 1);
    while (i < end) {
        int next = i;
        while (next < end && ring->at(next).isDrawable(m_kind))
            ++next;
        if (next > i) {
            m_series->take(*ring, m_kind, i, next, xMap);
            QwtPlotCurve::drawSeries(painter, xMap, yMap, canvasRect, 0, static_cast<int>(m_series->size()) - 1);
        }
        i = next + 1;
    }
}
