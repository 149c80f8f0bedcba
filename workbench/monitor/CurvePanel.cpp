#include "workbench/monitor/CurvePanel.h"

#include "workbench/monitor/CurveLegend.h"
#include "workbench/monitor/CurvePlot.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFileDialog>
#include <QIcon>
#include <QLabel>
#include <QResizeEvent>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int drawPeriodMs = 50;
/// Drawing takes one part in so many of the time at most, however many curves there are.
constexpr int leisure = 4;
/// Numbers that change faster cannot be read.
constexpr qint64 valuesPeriodMs = 200;
/// Below this height the plots stand side by side.
constexpr int heightForTwo = 320;
/// Below this height there is room for short titles only.
constexpr int heightForUnits = 200;

} // namespace

CurvePanel::CurvePanel(VariableMonitor& monitor, QWidget* parent)
    : QWidget(parent), m_monitor(monitor), m_bar(new QToolBar(this)), m_pause(m_bar->addAction(QString())),
      m_follow(m_bar->addAction(QString())), m_fit(m_bar->addAction(QString())), m_back(m_bar->addAction(QString())),
      m_clear(m_bar->addAction(QString())), m_export(m_bar->addAction(QString())), m_status(new QLabel(this)),
      m_plotArea(new QSplitter(Qt::Horizontal)), m_legend(new CurveLegend)
{
    setObjectName(QStringLiteral("curvePanel"));
    buildPlots();
    buildActions();
    auto* sides = new QSplitter(this);
    sides->addWidget(m_plotArea);
    sides->addWidget(m_legend);
    sides->setStretchFactor(0, 1);
    sides->setChildrenCollapsible(false);
    sides->setSizes({ 680, 340 });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 4);
    column->setSpacing(4);
    column->addWidget(m_bar);
    column->addWidget(sides, 1);
    m_timer.setInterval(drawPeriodMs);
    connect(&m_timer, &QTimer::timeout, this, &CurvePanel::refresh);
    connect(&m_monitor, &VariableMonitor::axesChanged, this, &CurvePanel::takeAxes);
    connect(m_legend, &CurveLegend::hiddenChanged, this, &CurvePanel::takeHidden);
    connect(m_legend, &CurveLegend::stopRequested, this, [this](int axisNo) { m_monitor.releaseAxis(axisNo, true); });
    connect(&m_exporter, &CurveExporter::finished, this, &CurvePanel::tellExport);
    retranslate();
    restyle();
    takeAxes();
}

CurvePanel::~CurvePanel() = default;

void CurvePanel::buildActions()
{
    m_bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_bar->setIconSize({ 16, 16 });
    m_status->setObjectName(QStringLiteral("curveStatus"));
    m_status->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_status->setProperty("styleType", QStringLiteral("hint"));
    m_status->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_status->setMinimumWidth(0);
    m_bar->addWidget(m_status);
    const std::pair<QAction*, const char*> names[]
        = { { m_pause, "curves.pause" }, { m_follow, "curves.follow" }, { m_fit, "curves.fit" },
              { m_back, "curves.back" }, { m_clear, "curves.clear" }, { m_export, "curves.export" } };
    for (const auto& [action, name] : names) {
        action->setObjectName(QLatin1String(name));
        // A tool bar keeps its buttons out of the way of the Tab key; here it is the way to them.
        m_bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
    m_pause->setCheckable(true);
    connect(m_pause, &QAction::toggled, this, &CurvePanel::setPaused);
    connect(m_follow, &QAction::triggered, this, [this] {
        m_range.follow();
        applyRange();
    });
    connect(m_fit, &QAction::triggered, this, [this] {
        m_range.fit(shownCurves().begin(), shownCurves().end());
        applyRange();
    });
    connect(m_back, &QAction::triggered, this, [this] {
        m_range.back();
        applyRange();
    });
    connect(m_clear, &QAction::triggered, this, [this] {
        m_pause->setChecked(false);
        m_monitor.clear();
        m_range.follow();
        applyRange();
    });
    connect(m_export, &QAction::triggered, this, &CurvePanel::chooseAndExport);
}

void CurvePanel::buildPlots()
{
    const auto source = [this]() -> const CurveStore& { return shownCurves(); };
    m_plots[0] = new CurvePlot({ SetPosition, ActualPosition }, source);
    m_plots[1] = new CurvePlot({ SetVelocity, ActualVelocity }, source);
    m_plots[0]->setObjectName(QStringLiteral("positionPlot"));
    m_plots[1]->setObjectName(QStringLiteral("velocityPlot"));
    m_plotArea->setChildrenCollapsible(false);
    // Of the height that one plot needs, lest the panels that share the place become as high as two.
    m_plotArea->setMinimumSize(200, 64);
    for (int i = 0; i < CurveRange::plots; ++i) {
        m_plotArea->addWidget(&plot(i));
        connectPlot(i);
    }
}

void CurvePanel::connectPlot(int index)
{
    CurvePlot* plot = m_plots[static_cast<std::size_t>(index)];
    connect(plot, &CurvePlot::areaChosen, this, [this, index](const QRectF& area) {
        m_range.zoomTo(index, area);
        applyRange();
    });
    connect(plot, &CurvePlot::timeZoomed, this, [this, plot](double factor, double around) {
        m_range.zoomTime(factor, around, plot->shownTimes());
        applyRange();
    });
    connect(plot, &CurvePlot::valuesZoomed, this, [this, plot, index](double factor, double around) {
        m_range.zoomValues(index, factor, around, plot->shownValues());
        applyRange();
    });
    connect(plot, &CurvePlot::panned, this, [this, plot](double seconds) {
        m_range.pan(seconds, plot->shownTimes());
        applyRange();
    });
    connect(plot, &CurvePlot::backRequested, m_back, &QAction::trigger);
    connect(plot, &CurvePlot::fitRequested, m_fit, &QAction::trigger);
    connect(plot, &CurvePlot::followRequested, m_follow, &QAction::trigger);
    connect(plot, &CurvePlot::cursorMoved, this, [this](double time) { setCursorTime(time); });
    connect(plot, &CurvePlot::cursorLeft, this, [this] { setCursorTime(std::nullopt); });
}

const CurveStore& CurvePanel::shownCurves() const
{
    return m_held ? *m_held : m_monitor.curves();
}

void CurvePanel::setPaused(bool paused)
{
    if (paused == isPaused())
        return;
    m_held = paused ? std::make_unique<const CurveStore>(m_monitor.curves()) : nullptr;
    m_pause->setChecked(paused);
    m_notice.clear();
    retranslate();
    restyle();
    takeAxes();
}

void CurvePanel::takeAxes()
{
    QVector<int> axes = shownCurves().axes();
    const QVector<int> recorded = m_monitor.recordedAxes();
    for (const int axisNo : recorded) {
        if (!axes.contains(axisNo))
            axes.append(axisNo);
    }
    std::sort(axes.begin(), axes.end());
    m_legend->setAxes(axes, [this](int axisNo) { return m_monitor.axisName(axisNo); });
    for (CurvePlot* plot : m_plots)
        plot->setAxes(axes, m_legend->hidden());
    allowExport();
    draw();
    showValues();
    showStatus();
}

void CurvePanel::takeHidden()
{
    for (CurvePlot* plot : m_plots) {
        for (const auto& item : plot->items())
            item->setVisible(!m_legend->hidden().contains(CurvePlot::key(item->axisNo(), item->kind())));
    }
    draw();
}

void CurvePanel::applyRange()
{
    m_notice.clear();
    draw();
    showStatus();
}

bool CurvePanel::isInSight() const
{
    // A panel behind others in the same place counts as visible, but lies where no part of it can be seen.
    return isVisible() && !window()->isMinimized() && !visibleRegion().isEmpty();
}

void CurvePanel::refresh()
{
    if (!isInSight())
        return;
    if (!isUpToDate()) {
        // A part that stands and lies before what is new needs no drawing.
        if (m_stale || m_range.isFollowing() || m_range.times(0, 0).to > m_drawnEnd)
            drawAtLeisure();
        m_drawnRevision = m_monitor.revision();
    }
    const bool due = !m_sinceValues.isValid() || m_sinceValues.hasExpired(valuesPeriodMs);
    if (due && m_valuesRevision != m_drawnRevision)
        showValues();
}

void CurvePanel::drawAtLeisure()
{
    QElapsedTimer clock;
    clock.start();
    draw();
    for (CurvePlot* plot : m_plots)
        plot->canvas()->repaint();
    m_timer.setInterval(std::max(drawPeriodMs, leisure * static_cast<int>(clock.elapsed())));
}

void CurvePanel::showValues()
{
    m_sinceValues.start();
    m_valuesRevision = m_drawnRevision;
    m_legend->showValues(shownCurves(), m_cursor);
}

void CurvePanel::draw()
{
    m_back->setEnabled(m_range.canGoBack());
    m_follow->setEnabled(!m_range.isFollowing() || m_range.values(0) || m_range.values(1));
    m_stale = !isInSight();
    if (m_stale)
        return;
    m_drawnRevision = m_monitor.revision();
    m_drawnEnd = shownCurves().end();
    const CurveRange::Interval times = m_range.times(shownCurves().begin(), shownCurves().end());
    for (int i = 0; i < CurveRange::plots; ++i)
        plot(i).show(times, m_range.values(i));
    const double extent = std::max(plot(0).neededExtent(), plot(1).neededExtent());
    for (CurvePlot* plot : m_plots)
        plot->setExtent(m_plotArea->orientation() == Qt::Vertical ? extent : 0);
}

void CurvePanel::setCursorTime(const std::optional<double>& time)
{
    m_cursor = time;
    for (CurvePlot* plot : m_plots)
        plot->setCursorTime(time);
    showValues();
    showStatus();
}

void CurvePanel::chooseAndExport()
{
    QFileDialog dialog(this, tr("Export curves"), QDir::homePath(), tr("Comma-separated values (*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.selectFile(QStringLiteral("curves.csv"));
    if (dialog.exec() == QDialog::Accepted)
        exportTo(dialog.selectedFiles().value(0));
}

QVector<CurveExport::Column> CurvePanel::exportedColumns() const
{
    QVector<CurveExport::Column> columns;
    const QVector<int> axes = shownCurves().axes();
    for (const int axisNo : axes) {
        for (int i = 0; i < curveKinds; ++i) {
            const auto kind = static_cast<CurveKind>(i);
            if (m_legend->hidden().contains(CurvePlot::key(axisNo, kind)))
                continue;
            columns.append({ axisNo, kind,
                QStringLiteral("%1: %2 [%3]")
                    .arg(m_monitor.axisName(axisNo), CurveLegend::kindName(kind), CurveLegend::unit(kind)) });
        }
    }
    return columns;
}

bool CurvePanel::exportTo(const QString& fileName)
{
    if (!m_exporter.start(fileName, { shownCurves(), exportedColumns(), CurveExport::timeTitle() }))
        return false;
    allowExport();
    showStatus();
    return true;
}

void CurvePanel::tellExport(const QString& fileName, const QString& error)
{
    const QString text
        = error.isEmpty() ? tr("The curves are saved in %1.").arg(QDir::toNativeSeparators(fileName)) : error;
    allowExport();
    notice(text);
    emit reported(error.isEmpty() ? LogInfo : LogError, text);
}

void CurvePanel::allowExport()
{
    m_export->setEnabled(!isExporting() && !shownCurves().isEmpty());
}

void CurvePanel::notice(const QString& text)
{
    m_notice = text;
    showStatus();
}

bool CurvePanel::isUpToDate() const
{
    return !m_stale && (m_held || m_drawnRevision == m_monitor.revision());
}

QString CurvePanel::statusText() const
{
    return m_status->text();
}

void CurvePanel::showStatus()
{
    QString text = m_notice;
    if (m_cursor)
        text = tr("Values at %1 s").arg(*m_cursor, 0, 'f', 3);
    else if (isExporting())
        text = tr("The curves are being saved…");
    else if (text.isEmpty() && isPaused())
        text = tr("Paused; recording goes on");
    else if (text.isEmpty() && m_monitor.recordedAxes().isEmpty())
        text = tr("No axis is recorded: open an axis's online tab while online");
    else if (text.isEmpty())
        text = tr("The last %1 minutes are kept").arg(CurveStore::keptSeconds / 60);
    m_status->setText(text);
    m_status->setToolTip(text);
}

void CurvePanel::retranslate()
{
    setWindowTitle(tr("Curves"));
    m_pause->setText(isPaused() ? tr("Continue") : tr("Pause"));
    m_follow->setText(tr("Follow"));
    m_fit->setText(tr("Show all"));
    m_back->setText(tr("Back"));
    m_clear->setText(tr("Clear"));
    m_export->setText(tr("Export…"));
    m_pause->setToolTip(tr("Hold the picture; recording goes on"));
    m_follow->setToolTip(tr("Let the newest readings run through (End)"));
    m_fit->setToolTip(tr("Show everything that is kept (Home)"));
    m_back->setToolTip(tr("Back to the part shown before (Backspace, right button)"));
    m_clear->setToolTip(tr("Forget all readings"));
    m_export->setToolTip(tr("Write the readings of the shown curves to a file"));
    setAccessibleName(tr("Curves"));
    m_bar->setAccessibleName(tr("Tools for the curves"));
    m_status->setAccessibleName(tr("State of the curves"));
    titlePlots();
    m_legend->retranslate();
    showStatus();
}

void CurvePanel::titlePlots()
{
    const QString names[] = { tr("Position"), tr("Velocity") };
    QFont small = font();
    small.setPointSizeF(font().pointSizeF() * 0.85);
    for (int i = 0; i < CurveRange::plots; ++i) {
        const QString& name = names[i];
        const QString unit = CurveLegend::unit(i == 0 ? SetPosition : SetVelocity);
        // The legend has the units too.
        QwtText title(height() < heightForUnits ? name : QStringLiteral("%1 [%2]").arg(name, unit));
        title.setFont(small);
        plot(i).setAxisTitle(QwtPlot::yLeft, title);
        plot(i).setAccessibleName(tr("Plot: %1").arg(name));
        plot(i).canvas()->setAccessibleName(tr("Plot: %1").arg(name));
    }
}

void CurvePanel::restyle()
{
    m_pause->setIcon(
        QIcon::fromTheme(isPaused() ? QStringLiteral("media-playback-start") : QStringLiteral("media-playback-pause")));
    m_follow->setIcon(QIcon::fromTheme(QStringLiteral("go-last")));
    m_fit->setIcon(QIcon::fromTheme(QStringLiteral("zoom-fit-best")));
    m_back->setIcon(QIcon::fromTheme(QStringLiteral("edit-undo")));
    m_clear->setIcon(QIcon::fromTheme(QStringLiteral("edit-clear")));
    m_export->setIcon(QIcon::fromTheme(QStringLiteral("document-export")));
    for (CurvePlot* plot : m_plots)
        plot->restyle();
    m_legend->restyle();
}

void CurvePanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    takeAxes();
    m_timer.start();
}

void CurvePanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void CurvePanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_plotArea->setOrientation(event->size().height() < heightForTwo ? Qt::Horizontal : Qt::Vertical);
    titlePlots();
}

void CurvePanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        restyle();
}
