#pragma once

#include "tests/monitor/Readings.h"
#include "workbench/Theme.h"
#include "workbench/monitor/CurveLegend.h"
#include "workbench/monitor/CurvePanel.h"
#include "workbench/monitor/CurvePlot.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QAction>
#include <QToolBar>
#include <QWheelEvent>
#include <QtTest>

#include <qwt_plot_canvas.h>

#include <memory>
#include <optional>
#include <vector>

/// Counts how often a plot is drawn.
class DrawCounter : public QwtPlotItem {
public:
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override { ++count; }
    mutable int count = 0;
};

/// A shown panel on a monitor that records the axes 0 and 1, and hands for it.
class CurvePanelFixture {
public:
    CurvePanelFixture()
    {
        Theme::apply(QStringLiteral("default.qss"));
        monitor.emplace();
        panel.emplace(*monitor);
        for (const int axisNo : { 0, 1 }) {
            monitor->addAxis(axisNo);
            monitor->releaseAxis(axisNo, false);
        }
        panel->resize(1000, 600);
        panel->show();
        panel->activateWindow();
        if (!QTest::qWaitForWindowActive(&*panel))
            qFatal("the panel does not come up");
    }

    CurvePlot& plot(int index) const { return panel->plot(index); }
    QWidget* canvas(int index = 0) const { return plot(index).canvas(); }
    void feed(double from, double to, const QVector<int>& axes = { 0 })
    {
        for (int i = qRound(from * 100); i < qRound(to * 100); ++i)
            monitor->addSamples(Readings::runningAll(axes, i * 0.01));
    }
    /// Waits until the panel has drawn what it knows.
    void drawn() const
    {
        QVERIFY(QTest::qWaitFor([this] { return panel->isUpToDate(); }));
    }
    QAction* action(const char* name) const
    {
        auto* found = panel->findChild<QAction*>(QLatin1String(name));
        if (!found)
            qFatal("no action %s", name);
        return found;
    }
    void press(const char* name) const
    {
        auto* bar = panel->findChild<QToolBar*>();
        QTest::mouseClick(bar->widgetForAction(action(name)), Qt::LeftButton);
    }
    void wheel(const QPoint& at, int steps, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWheelEvent event(at, canvas()->mapToGlobal(at), QPoint(), QPoint(0, 120 * steps), Qt::NoButton, modifiers,
            Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(canvas(), &event);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton, int index = 0) const
    {
        QTest::mousePress(canvas(index), button, Qt::NoModifier, from);
        QTest::mouseMove(canvas(index), (from + to) / 2);
        QTest::mouseMove(canvas(index), to);
        QTest::mouseRelease(canvas(index), button, Qt::NoModifier, to);
    }
    QTreeWidgetItem* curve(int axis, CurveKind kind) const
    {
        return panel->legend().topLevelItem(axis)->child(int(kind));
    }
    void toggle(QTreeWidgetItem* item) const
    {
        // The box stands left of symbol and text.
        const QRect row = panel->legend().visualItemRect(item);
        QTest::mouseClick(
            panel->legend().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(row.left() + 10, row.center().y()));
    }
    void hover(const QPoint& at) const
    {
        QTest::mouseMove(canvas(), at + QPoint(9, 9));
        QTest::mouseMove(canvas(), at);
    }
    bool isSeen(int plotIndex, int axisNo, CurveKind kind) const
    {
        for (const auto& item : plot(plotIndex).items()) {
            if (item->axisNo() == axisNo && item->kind() == kind)
                return item->isVisible();
        }
        qFatal("no such curve");
        return false;
    }
    /// Number of pixels of a plot in the colour of an axis' lines.
    int inked(int index, int axisNo = 0) const
    {
        const QImage image = canvas(index)->grab().toImage();
        const QColor ink = plot(index).items().at(static_cast<std::size_t>(axisNo) * 2)->pen().color();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y).rgb() == ink.rgb() ? 1 : 0;
        }
        return count;
    }

    using Reports = std::vector<std::pair<LogLevel, QString>>;
    std::shared_ptr<Reports> noteReports() const
    {
        auto reports = std::make_shared<Reports>();
        QObject::connect(&*panel, &CurvePanel::reported, &*panel,
            [reports](LogLevel level, const QString& text) { reports->emplace_back(level, text); });
        return reports;
    }

    std::optional<VariableMonitor> monitor;
    std::optional<CurvePanel> panel;
};
