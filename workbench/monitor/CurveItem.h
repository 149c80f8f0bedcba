#pragma once

#include "workbench/monitor/CurveRing.h"

#include <qwt_plot_curve.h>

#include <functional>

class CurveStore;

/// One curve of an axis in a plot. It reads the store that is shown at the moment of drawing, draws the times that are
/// in sight alone, and leaves gaps open.
class CurveItem : public QwtPlotCurve {
public:
    using Source = std::function<const CurveStore&()>;

    CurveItem(int axisNo, CurveKind kind, Source source);
    ~CurveItem() override;

    int axisNo() const { return m_axisNo; }
    CurveKind kind() const { return m_kind; }

    /// Widens least and most by the values of the curve between two times.
    void includeValues(double from, double to, double& least, double& most) const;

protected:
    void drawSeries(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap, const QRectF& canvasRect,
        int from, int to) const override;

private:
    class Series;

    int m_axisNo;
    CurveKind m_kind;
    Source m_source;
    /// Owned by the base class.
    Series* m_series;
};
