#pragma once

#include "workbench/monitor/CurveItem.h"
#include "workbench/monitor/CurveRange.h"

#include <qwt_plot.h>

#include <QSet>

#include <memory>
#include <vector>

class QFrame;
class QKeyEvent;
class QMouseEvent;
class QRubberBand;
class QWheelEvent;
class QwtPlotGrid;

/// A plot of two curves an axis over time. It shows what it is told and says what mouse and keys ask for: drag a
/// rectangle, wheel (with Ctrl for the values, with Shift to move), right button to go back; keys + and - (with Ctrl
/// for the values), Page Up and Down, Home for everything, End for the newest, Backspace to go back, left and right for
/// the cursor, Escape to take it away.
class CurvePlot : public QwtPlot {
    Q_OBJECT

public:
    /// The kinds of the curves of each axis.
    CurvePlot(std::vector<CurveKind> kinds, CurveItem::Source source, QWidget* parent = nullptr);
    ~CurvePlot() override;

    /// Has curves of these axes and no others; curves that are in hidden (key(...)) are not seen.
    void setAxes(const QVector<int>& axes, const QSet<int>& hidden);
    static int key(int axisNo, CurveKind kind) { return axisNo * curveKinds + kind; }
    const std::vector<std::unique_ptr<CurveItem>>& items() const { return m_items; }

    /// Sets the scales and draws. No values: as the visible curves need.
    void show(const CurveRange::Interval& times, const std::optional<CurveRange::Interval>& values);
    CurveRange::Interval shownTimes() const;
    CurveRange::Interval shownValues() const;
    /// Marks a time, or none.
    void setCursorTime(const std::optional<double>& time);
    /// Takes pens and colours from the palette.
    void restyle();
    /// Room for the labels of the values, in pixels, so that plots above one another line up.
    double neededExtent() const;
    void setExtent(double extent);

signals:
    void areaChosen(const QRectF& area);
    void timeZoomed(double factor, double around);
    void valuesZoomed(double factor, double around);
    void panned(double seconds);
    void backRequested();
    void fitRequested();
    void followRequested();
    void cursorMoved(double time);
    void cursorLeft();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    CurveRange::Interval neededValues(const CurveRange::Interval& times) const;
    void scaleValues();
    bool onMousePress(const QMouseEvent& event);
    bool onMouseMove(const QMouseEvent& event);
    bool onMouseRelease(const QMouseEvent& event);
    void onWheel(const QWheelEvent& event);
    bool onKey(const QKeyEvent& event);
    void moveCursorBy(double seconds);
    void placeCursor();
    double timeAt(int x) const;
    double valueAt(int y) const;

    std::vector<CurveKind> m_kinds;
    CurveItem::Source m_source;
    std::unique_ptr<QwtPlotGrid> m_grid;
    std::vector<std::unique_ptr<CurveItem>> m_items;
    QFrame* m_cursor;
    QRubberBand* m_band;
    QPoint m_pressed;
    std::optional<double> m_cursorTime;
    /// What is shown last. No values: as the visible curves need.
    CurveRange::Interval m_times;
    std::optional<CurveRange::Interval> m_values;
};
