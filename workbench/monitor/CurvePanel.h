#pragma once

#include "sdk/ILogger.h"
#include "workbench/monitor/CurveExporter.h"
#include "workbench/monitor/CurveRange.h"
#include "workbench/monitor/CurveStore.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <array>
#include <memory>
#include <optional>

class CurveLegend;
class CurvePlot;
class QAction;
class QLabel;
class QSplitter;
class QToolBar;
class VariableMonitor;

/// The curves of the monitored axes: positions and velocities in two plots over the same time, a legend with values,
/// and what can be done with them. Its window title is the panel's name. It draws only while it can be seen.
class CurvePanel : public QWidget {
    Q_OBJECT

public:
    /// The monitor is not owned and must outlive this object.
    explicit CurvePanel(VariableMonitor& monitor, QWidget* parent = nullptr);
    ~CurvePanel() override;

    /// The picture stands while the recording goes on; the other way it shows the newest readings again.
    void setPaused(bool paused);
    bool isPaused() const { return m_held != nullptr; }
    /// Begins to write the readings of the curves that are shown, all that are kept, as they are now. How that ends is
    /// reported; an end of the panel gives it up. False, and nothing is done, while another export is under way.
    bool exportTo(const QString& fileName);
    bool isExporting() const { return m_exporter.isBusy(); }

    /// True when the plots show what is recorded, or are held.
    bool isUpToDate() const;
    /// False while hidden, minimised or behind another panel: then nothing is drawn.
    bool isInSight() const;
    const CurveRange& range() const { return m_range; }
    std::optional<double> cursor() const { return m_cursor; }
    CurvePlot& plot(int index) const { return *m_plots[static_cast<std::size_t>(index)]; }
    CurveLegend& legend() const { return *m_legend; }
    /// The line beside the buttons.
    QString statusText() const;

signals:
    /// For the output panel.
    void reported(LogLevel level, const QString& text);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const CurveStore& shownCurves() const;
    void buildActions();
    void buildPlots();
    void connectPlot(int index);
    void takeAxes();
    void takeHidden();
    void applyRange();
    void refresh();
    void draw();
    void drawAtLeisure();
    void showValues();
    void setCursorTime(const std::optional<double>& time);
    void chooseAndExport();
    QVector<CurveExport::Column> exportedColumns() const;
    void tellExport(const QString& fileName, const QString& error);
    void allowExport();
    void showStatus();
    void notice(const QString& text);
    void retranslate();
    void titlePlots();
    void restyle();

    VariableMonitor& m_monitor;
    std::unique_ptr<const CurveStore> m_held;
    CurveRange m_range;
    std::optional<double> m_cursor;
    QTimer m_timer;
    /// Something has changed while the panel was out of sight.
    bool m_stale = true;
    quint64 m_drawnRevision = 0;
    quint64 m_valuesRevision = 0;
    double m_drawnEnd = 0;
    /// Since the values beside were shown.
    QElapsedTimer m_sinceValues;
    QString m_notice;
    CurveExporter m_exporter;
    QToolBar* m_bar;
    QAction* m_pause;
    QAction* m_follow;
    QAction* m_fit;
    QAction* m_back;
    QAction* m_clear;
    QAction* m_export;
    QLabel* m_status;
    QSplitter* m_plotArea;
    std::array<CurvePlot*, CurveRange::plots> m_plots{};
    CurveLegend* m_legend;
};
