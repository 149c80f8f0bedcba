#include "workbench/monitor/CurveItem.h"

#include "workbench/monitor/CurveStore.h"

#include <qwt_scale_map.h>

#include <algorithm>

/// The points of the ring that is being drawn.
class CurveItem::Series : public QwtSeriesData<QPointF> {
public:
    explicit Series(CurveKind kind) : m_kind(kind) { }

    size_t size() const override { return ring ? static_cast<size_t>(ring->size()) : 0; }
    QPointF sample(size_t i) const override
    {
        const CurvePoint& point = ring->at(static_cast<int>(i));
        return { point.time, point.values[m_kind] };
    }
    // The scales are set by the panel and never taken from here.
    QRectF boundingRect() const override { return { 0, 0, -1, -1 }; }

    const CurveRing* ring = nullptr;

private:
    CurveKind m_kind;
};

CurveItem::CurveItem(int axisNo, CurveKind kind, Source source)
    : m_axisNo(axisNo), m_kind(kind), m_source(std::move(source)), m_series(new Series(kind))
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
    m_series->ring = ring;
    // One point more on either side, so that the line reaches the edge.
    const int end = std::min(ring->size(), ring->firstFrom(xMap.s2()) + 1);
    int i = std::max(0, ring->firstFrom(xMap.s1()) - 1);
    while (i < end) {
        int next = i;
        while (next < end && ring->at(next).isDrawable(m_kind))
            ++next;
        if (next > i)
            QwtPlotCurve::drawSeries(painter, xMap, yMap, canvasRect, i, next - 1);
        i = next + 1;
    }
    m_series->ring = nullptr;
}
