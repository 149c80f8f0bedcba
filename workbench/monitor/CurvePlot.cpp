#include "workbench/monitor/CurvePlot.h"

#include "workbench/monitor/CurveLook.h"

#include <QEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int shortestDrag = 6;
constexpr double wheelStep = 0.8;

/// Labels with as many decimals as the distance of the ticks asks for, and a unit.
class ScaleLabels : public QwtScaleDraw {
public:
    explicit ScaleLabels(QString suffix = QString()) : m_suffix(std::move(suffix)) { }

    QwtText label(double value) const override
    {
        const QList<double> ticks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
        const double step = ticks.size() > 1 ? std::abs(ticks.at(1) - ticks.at(0)) : 1;
        const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 9);
        const bool isLong = std::abs(value) >= 1e7;
        return QString(QString::number(value, isLong ? 'g' : 'f', isLong ? 6 : decimals) + m_suffix);
    }

private:
    QString m_suffix;
};

} // namespace

CurvePlot::CurvePlot(std::vector<CurveKind> kinds, CurveItem::Source source, QWidget* parent)
    : QwtPlot(parent), m_kinds(std::move(kinds)), m_source(std::move(source)), m_grid(new QwtPlotGrid),
      m_cursor(new QFrame(canvas())), m_band(new QRubberBand(QRubberBand::Rectangle, canvas()))
{
    setAxisScaleDraw(xBottom, new ScaleLabels(QStringLiteral(" s")));
    setAxisScaleDraw(yLeft, new ScaleLabels);
    setAxisMaxMinor(xBottom, 0);
    setAxisMaxMinor(yLeft, 0);
    plotLayout()->setAlignCanvasToScales(true);
    auto* drawn = static_cast<QwtPlotCanvas*>(canvas());
    drawn->setFrameShape(QFrame::NoFrame);
    drawn->setFocusIndicator(QwtPlotCanvas::CanvasFocusIndicator);
    drawn->setFocusPolicy(Qt::StrongFocus);
    drawn->setMouseTracking(true);
    drawn->setCursor(Qt::CrossCursor);
    drawn->installEventFilter(this);
    m_grid->attach(this);
    m_cursor->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_cursor->setAutoFillBackground(true);
    m_cursor->hide();
    setMinimumSize(160, 64);
    restyle();
}

CurvePlot::~CurvePlot()
{
    canvas()->removeEventFilter(this);
}

void CurvePlot::setAxes(const QVector<int>& axes, const QSet<int>& hidden)
{
    m_items.clear();
    const bool light = CurveLook::isLight(QGuiApplication::palette());
    for (const int axisNo : axes) {
        for (const CurveKind kind : m_kinds) {
            auto item = std::make_unique<CurveItem>(axisNo, kind, m_source);
            item->setPen(CurveLook::pen(axisNo, kind, light));
            item->setVisible(!hidden.contains(key(axisNo, kind)));
            item->attach(this);
            m_items.push_back(std::move(item));
        }
    }
}

CurveRange::Interval CurvePlot::neededValues(const CurveRange::Interval& times) const
{
    double least = std::numeric_limits<double>::max();
    double most = std::numeric_limits<double>::lowest();
    for (const auto& item : m_items) {
        if (item->isVisible())
            item->includeValues(times.from, times.to, least, most);
    }
    return least <= most ? CurveRange::Interval{ least, most } : CurveRange::Interval{ -1, 1 };
}

void CurvePlot::show(const CurveRange::Interval& times, const std::optional<CurveRange::Interval>& values)
{
    setAxisScale(xBottom, times.from, times.to);
    m_times = times;
    m_values = values;
    scaleValues();
    replot();
    placeCursor();
}

void CurvePlot::scaleValues()
{
    // Each label wants its own height and as much again.
    const int label = QFontMetrics(axisFont(yLeft)).height();
    setAxisMaxMajor(yLeft, std::clamp(canvas()->height() / (2 * label), 2, 8));
    if (m_values) {
        setAxisScale(yLeft, m_values->from, m_values->to);
        return;
    }
    CurveRange::Interval needed = neededValues(m_times);
    double step = 0;
    axisScaleEngine(yLeft)->autoScale(axisMaxMajor(yLeft), needed.from, needed.to, step);
    setAxisScale(yLeft, needed.from, needed.to, step);
}

CurveRange::Interval CurvePlot::shownTimes() const
{
    const QwtInterval interval = axisInterval(xBottom);
    return { interval.minValue(), interval.maxValue() };
}

CurveRange::Interval CurvePlot::shownValues() const
{
    const QwtInterval interval = axisInterval(yLeft);
    return { interval.minValue(), interval.maxValue() };
}

void CurvePlot::setCursorTime(const std::optional<double>& time)
{
    m_cursorTime = time;
    placeCursor();
}

void CurvePlot::placeCursor()
{
    const CurveRange::Interval shown = shownTimes();
    const bool inSight = m_cursorTime && *m_cursorTime >= shown.from && *m_cursorTime <= shown.to;
    if (inSight) {
        const int x = qRound(transform(xBottom, *m_cursorTime));
        m_cursor->setGeometry(x, 0, 1, canvas()->height());
    }
    m_cursor->setVisible(inSight);
}

void CurvePlot::restyle()
{
    // A style sheet keeps the widgets' own palettes behind while a theme changes.
    const QPalette theme = QGuiApplication::palette();
    const bool light = CurveLook::isLight(theme);
    setCanvasBackground(theme.color(QPalette::Base));
    m_grid->setPen(QPen(theme.color(QPalette::Mid), 0, Qt::DotLine));
    QPalette line = theme;
    line.setColor(QPalette::Window, theme.color(QPalette::Text));
    m_cursor->setPalette(line);
    for (const auto& item : m_items)
        item->setPen(CurveLook::pen(item->axisNo(), item->kind(), light));
    QFont small = font();
    small.setPointSizeF(font().pointSizeF() * 0.85);
    for (const int axis : { int(xBottom), int(yLeft) })
        setAxisFont(axis, small);
    replot();
}

double CurvePlot::neededExtent() const
{
    auto* draw = const_cast<QwtScaleDraw*>(axisScaleDraw(yLeft));
    const double set = draw->minimumExtent();
    draw->setMinimumExtent(0);
    const double needed = draw->extent(axisFont(yLeft));
    draw->setMinimumExtent(set);
    return needed;
}

void CurvePlot::setExtent(double extent)
{
    if (axisScaleDraw(yLeft)->minimumExtent() == extent)
        return;
    axisScaleDraw(yLeft)->setMinimumExtent(extent);
    updateLayout();
}

double CurvePlot::timeAt(int x) const
{
    return invTransform(xBottom, x);
}

double CurvePlot::valueAt(int y) const
{
    return invTransform(yLeft, y);
}

bool CurvePlot::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == canvas()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            return onMousePress(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseMove:
            return onMouseMove(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonRelease:
            return onMouseRelease(*static_cast<QMouseEvent*>(event));
        case QEvent::Wheel:
            onWheel(*static_cast<QWheelEvent*>(event));
            // Else a scroll area around would move as well.
            event->accept();
            return true;
        case QEvent::KeyPress:
            if (onKey(*static_cast<QKeyEvent*>(event)))
                return true;
            break;
        case QEvent::Leave:
            emit cursorLeft();
            break;
        case QEvent::Resize:
            scaleValues();
            replot();
            placeCursor();
            break;
        default:
            break;
        }
    }
    return QwtPlot::eventFilter(watched, event);
}

bool CurvePlot::onMousePress(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton) {
        m_pressed = event.pos();
        m_band->setGeometry(QRect(m_pressed, QSize()));
        m_band->show();
    } else if (event.button() == Qt::RightButton || event.button() == Qt::BackButton) {
        emit backRequested();
    }
    return false;
}

bool CurvePlot::onMouseMove(const QMouseEvent& event)
{
    if (m_band->isVisible())
        m_band->setGeometry(QRect(m_pressed, event.pos()).normalized() & canvas()->rect());
    emit cursorMoved(timeAt(event.pos().x()));
    return false;
}

bool CurvePlot::onMouseRelease(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton || !m_band->isVisible())
        return false;
    m_band->hide();
    const QRect drawn = QRect(m_pressed, event.pos()).normalized() & canvas()->rect();
    if (drawn.width() < shortestDrag || drawn.height() < shortestDrag)
        return false;
    emit areaChosen(QRectF(
        QPointF(timeAt(drawn.left()), valueAt(drawn.bottom())), QPointF(timeAt(drawn.right()), valueAt(drawn.top()))));
    return false;
}

void CurvePlot::onWheel(const QWheelEvent& event)
{
    // Some platforms turn the wheel sideways while a modifier is held.
    const int turned = event.angleDelta().y() != 0 ? event.angleDelta().y() : event.angleDelta().x();
    const double steps = turned / 120.0;
    if (event.modifiers() & Qt::ShiftModifier)
        emit panned(-steps * shownTimes().width() / 10);
    else if (event.modifiers() & Qt::ControlModifier)
        emit valuesZoomed(std::pow(wheelStep, steps), valueAt(event.pos().y()));
    else
        emit timeZoomed(std::pow(wheelStep, steps), timeAt(event.pos().x()));
}

bool CurvePlot::onKey(const QKeyEvent& event)
{
    const CurveRange::Interval times = shownTimes();
    const CurveRange::Interval values = shownValues();
    const auto zoom = [&](double factor) {
        if (event.modifiers() & Qt::ControlModifier)
            emit valuesZoomed(factor, (values.from + values.to) / 2);
        else
            emit timeZoomed(factor, m_cursorTime.value_or((times.from + times.to) / 2));
    };
    const double step = times.width() / (event.modifiers() & Qt::ShiftModifier ? 20 : 200);
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(wheelStep);
        return true;
    case Qt::Key_Minus:
        zoom(1 / wheelStep);
        return true;
    case Qt::Key_PageUp:
        emit panned(-times.width() / 2);
        return true;
    case Qt::Key_PageDown:
        emit panned(times.width() / 2);
        return true;
    case Qt::Key_Home:
        emit fitRequested();
        return true;
    case Qt::Key_End:
        emit followRequested();
        return true;
    case Qt::Key_Backspace:
        emit backRequested();
        return true;
    case Qt::Key_Left:
        moveCursorBy(-step);
        return true;
    case Qt::Key_Right:
        moveCursorBy(step);
        return true;
    case Qt::Key_Escape:
        if (!m_cursorTime)
            return false;
        emit cursorLeft();
        return true;
    default:
        return false;
    }
}

void CurvePlot::moveCursorBy(double seconds)
{
    const CurveRange::Interval times = shownTimes();
    const double from = m_cursorTime.value_or((times.from + times.to) / 2);
    emit cursorMoved(std::clamp(from + seconds, times.from, times.to));
}
