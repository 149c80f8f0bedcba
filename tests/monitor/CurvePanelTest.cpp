#include "workbench/monitor/CurvePanel.h"
#include "tests/monitor/Readings.h"
#include "tests/support/ModalDialogDriver.h"
#include "workbench/Theme.h"
#include "workbench/monitor/CurveLegend.h"
#include "workbench/monitor/CurvePlot.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRubberBand>
#include <QSplitter>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest>

#include <qwt_plot_canvas.h>

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace {

/// Counts how often a plot is drawn.
class DrawCounter : public QwtPlotItem {
public:
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override { ++count; }
    mutable int count = 0;
};

} // namespace

/// The panel with real mouse, wheel and key events.
class CurvePanelTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void withoutReadingsItSaysWhatToDo();
    void theNewestReadingsRunThrough();
    void bothPlotsShareTheTime();
    void valuesFillThePlots();
    void theLegendHidesCurves();
    void theLegendHidesAnAxis();
    void theLegendIsWorkedByKeys();
    void hiddenCurvesStayHiddenWhenAxesCome();
    void theLegendShowsTheNewestValues();
    void pauseHoldsThePicture();
    void pausedReadingsCanStillBeZoomed();
    void aDragZooms();
    void aTinyDragDoesNothing();
    void anotherButtonDragsNothing();
    void theRightButtonGoesBack();
    void theWheelZoomsTime();
    void theWheelWithCtrlZoomsValues();
    void theWheelWithShiftMoves();
    void showAllShowsEverything();
    void followRunsAgain();
    void keysDoTheSame();
    void theCursorReadsValues();
    void theCursorMovesByKeys();
    void inAGapTheCursorReadsNothing();
    void aGapIsNotDrawn();
    void valuesThatAreNoneAreNotDrawn();
    void clearForgets();
    void whileHiddenNothingIsDrawn();
    void withoutNewReadingsNothingIsDrawn();
    void exportAsksForAFile();
    void exportWritesTheShownCurves();
    void aFileThatCannotBeWrittenIsReported();
    void aLowPanelPutsThePlotsSideBySide();
    void bothThemesAreDrawn();
    void everythingHasAName();
    void theButtonsAreReachedByTab();

private:
    CurvePlot& plot(int index) const { return panel->plot(index); }
    QWidget* canvas(int index = 0) const { return plot(index).canvas(); }
    void feed(double from, double to, const QVector<int>& axes = { 0 })
    {
        for (int i = qRound(from * 100); i < qRound(to * 100); ++i)
            monitor->addSamples(Readings::runningAll(axes, i * 0.01));
    }
    /// Waits until the panel has drawn what it knows.
    void drawn() const { QTRY_VERIFY(panel->isUpToDate()); }
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
        connect(&*panel, &CurvePanel::reported, &*panel,
            [reports](LogLevel level, const QString& text) { reports->emplace_back(level, text); });
        return reports;
    }

    std::optional<VariableMonitor> monitor;
    std::optional<CurvePanel> panel;
};

void CurvePanelTest::initTestCase()
{
    Theme::prepare();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void CurvePanelTest::init()
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
    QVERIFY(QTest::qWaitForWindowExposed(&*panel));
    panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&*panel));
}

void CurvePanelTest::cleanup()
{
    panel.reset();
    monitor.reset();
}

void CurvePanelTest::withoutReadingsItSaysWhatToDo()
{
    monitor->forgetAll();
    QVERIFY(panel->statusText().startsWith(QStringLiteral("No axis is recorded")));
    QVERIFY(!action("curves.export")->isEnabled());
    monitor->addAxis(0);
    monitor->releaseAxis(0, false);
    QCOMPARE(panel->statusText(), QStringLiteral("The last 5 minutes are kept"));
    QCOMPARE(panel->legend().topLevelItemCount(), 1);
}

void CurvePanelTest::theNewestReadingsRunThrough()
{
    feed(0, 5);
    QTRY_COMPARE(plot(0).shownTimes().to, 20.0);
    feed(5, 30);
    QTRY_VERIFY(std::abs(plot(0).shownTimes().to - 29.99) < 1e-6);
    QVERIFY(std::abs(plot(0).shownTimes().from - 9.99) < 1e-6);
}

void CurvePanelTest::bothPlotsShareTheTime()
{
    feed(0, 30);
    drawn();
    drag({ 100, 40 }, { 200, 100 }, Qt::LeftButton, 1);
    QVERIFY(plot(1).shownTimes().width() < 10);
    QCOMPARE(plot(0).shownTimes().from, plot(1).shownTimes().from);
    QCOMPARE(plot(0).shownTimes().to, plot(1).shownTimes().to);
}

void CurvePanelTest::valuesFillThePlots()
{
    feed(0, 10);
    drawn();
    const CurveRange::Interval positions = plot(0).shownValues();
    QVERIFY(positions.from <= -0.5 && positions.from > -6);
    QVERIFY(positions.to >= 19.98 && positions.to < 26);
    const CurveRange::Interval velocities = plot(1).shownValues();
    QVERIFY(velocities.from <= 1.75 && velocities.from > 1);
    QVERIFY(velocities.to >= 2 && velocities.to < 2.5);
}

void CurvePanelTest::theLegendHidesCurves()
{
    feed(0, 10, { 0, 1 });
    drawn();
    QVERIFY(isSeen(0, 0, SetPosition));
    toggle(curve(0, SetPosition));
    QVERIFY(!isSeen(0, 0, SetPosition));
    QVERIFY(isSeen(0, 0, ActualPosition));
    QVERIFY(isSeen(0, 1, SetPosition));
    QVERIFY(isSeen(1, 0, SetVelocity));
    toggle(curve(0, SetPosition));
    QVERIFY(isSeen(0, 0, SetPosition));
    toggle(curve(0, SetVelocity));
    QVERIFY(!isSeen(1, 0, SetVelocity));
}

void CurvePanelTest::theLegendHidesAnAxis()
{
    feed(0, 10, { 0, 1 });
    drawn();
    QVERIFY(inked(0, 0) > 100);
    toggle(panel->legend().topLevelItem(0));
    for (const CurveKind kind : { SetPosition, ActualPosition })
        QVERIFY(!isSeen(0, 0, kind));
    for (const CurveKind kind : { SetVelocity, ActualVelocity })
        QVERIFY(!isSeen(1, 0, kind));
    QVERIFY(isSeen(0, 1, SetPosition));
    QCOMPARE(inked(0, 0), 0);
    toggle(panel->legend().topLevelItem(0));
    QVERIFY(isSeen(1, 0, ActualVelocity));
}

void CurvePanelTest::theLegendIsWorkedByKeys()
{
    feed(0, 1);
    drawn();
    panel->legend().setFocus();
    panel->legend().setCurrentItem(curve(0, ActualVelocity));
    QTest::keyClick(&panel->legend(), Qt::Key_Space);
    QVERIFY(!isSeen(1, 0, ActualVelocity));
}

void CurvePanelTest::hiddenCurvesStayHiddenWhenAxesCome()
{
    feed(0, 1);
    drawn();
    toggle(curve(0, SetPosition));
    monitor->addAxis(7);
    monitor->releaseAxis(7, false);
    QCOMPARE(panel->legend().topLevelItemCount(), 3);
    QVERIFY(!isSeen(0, 0, SetPosition));
    QCOMPARE(curve(0, SetPosition)->checkState(0), Qt::Unchecked);
    QCOMPARE(panel->legend().topLevelItem(0)->checkState(0), Qt::PartiallyChecked);
}

void CurvePanelTest::theLegendShowsTheNewestValues()
{
    feed(0, 1);
    QTRY_COMPARE(curve(0, SetPosition)->text(1), QStringLiteral("1.980"));
    QCOMPARE(curve(0, ActualPosition)->text(1), QStringLiteral("1.480"));
    QCOMPARE(curve(0, SetVelocity)->text(1), QStringLiteral("2.000"));
    QCOMPARE(curve(0, ActualVelocity)->text(1), QStringLiteral("1.750"));
    QCOMPARE(curve(0, SetPosition)->text(2), QStringLiteral("Unit"));
    QCOMPARE(curve(0, ActualVelocity)->text(2), QStringLiteral("Unit/s"));
    QCOMPARE(curve(1, SetPosition)->text(1), QStringLiteral("\u2013"));
}

void CurvePanelTest::pauseHoldsThePicture()
{
    feed(0, 30);
    drawn();
    press("curves.pause");
    QVERIFY(panel->isPaused());
    QCOMPARE(action("curves.pause")->text(), QStringLiteral("Continue"));
    QVERIFY(panel->statusText().startsWith(QStringLiteral("Paused")));
    const CurveRange::Interval held = plot(0).shownTimes();
    const QImage before = canvas()->grab().toImage();
    DrawCounter counter;
    counter.attach(&plot(0));
    feed(30, 500);
    QTest::qWait(120);
    QCOMPARE(plot(0).shownTimes().to, held.to);
    QCOMPARE(counter.count, 0);
    // What has left the live readings meanwhile still stands in the held picture.
    plot(0).replot();
    QCOMPARE(canvas()->grab().toImage(), before);
    press("curves.pause");
    QVERIFY(!panel->isPaused());
    QTRY_VERIFY(std::abs(plot(0).shownTimes().to - 499.99) < 1e-6);
    counter.detach();
}

void CurvePanelTest::pausedReadingsCanStillBeZoomed()
{
    feed(0, 30);
    drawn();
    press("curves.pause");
    feed(30, 60);
    press("curves.fit");
    QVERIFY(std::abs(plot(0).shownTimes().to - 29.99) < 1e-6);
    QCOMPARE(plot(0).shownTimes().from, 0.0);
}

void CurvePanelTest::aDragZooms()
{
    feed(0, 30);
    drawn();
    const double from = plot(0).invTransform(QwtPlot::xBottom, 100);
    const double to = plot(0).invTransform(QwtPlot::xBottom, 300);
    const double top = plot(0).invTransform(QwtPlot::yLeft, 30);
    const double bottom = plot(0).invTransform(QwtPlot::yLeft, 90);
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::NoModifier, { 100, 30 });
    QTest::mouseMove(canvas(), { 300, 90 });
    QVERIFY(canvas()->findChild<QRubberBand*>()->isVisible());
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, { 300, 90 });
    QVERIFY(!canvas()->findChild<QRubberBand*>()->isVisible());
    QVERIFY(!panel->range().isFollowing());
    QVERIFY(std::abs(plot(0).shownTimes().from - from) < 0.05);
    QVERIFY(std::abs(plot(0).shownTimes().to - to) < 0.05);
    QVERIFY(std::abs(plot(0).shownValues().to - top) < 0.5);
    QVERIFY(std::abs(plot(0).shownValues().from - bottom) < 0.5);
    // The part stands while new readings come.
    feed(30, 40);
    QTest::qWait(120);
    QVERIFY(std::abs(plot(0).shownTimes().from - from) < 0.05);
}

void CurvePanelTest::aTinyDragDoesNothing()
{
    feed(0, 30);
    drawn();
    drag({ 100, 30 }, { 103, 90 });
    drag({ 100, 30 }, { 300, 33 });
    QTest::mouseClick(canvas(), Qt::LeftButton, Qt::NoModifier, { 50, 50 });
    QVERIFY(panel->range().isFollowing());
}

void CurvePanelTest::anotherButtonDragsNothing()
{
    feed(0, 30);
    drawn();
    drag({ 100, 30 }, { 300, 90 }, Qt::MiddleButton);
    QVERIFY(panel->range().isFollowing());
}

void CurvePanelTest::theRightButtonGoesBack()
{
    feed(0, 30);
    drawn();
    QVERIFY(!action("curves.back")->isEnabled());
    drag({ 100, 30 }, { 300, 90 });
    const double first = plot(0).shownTimes().from;
    drag({ 100, 30 }, { 300, 90 });
    QVERIFY(plot(0).shownTimes().from > first);
    QTest::mouseClick(canvas(), Qt::RightButton, Qt::NoModifier, { 10, 10 });
    QCOMPARE(plot(0).shownTimes().from, first);
    press("curves.back");
    QVERIFY(panel->range().isFollowing());
    QVERIFY(!action("curves.back")->isEnabled());
}

void CurvePanelTest::theWheelZoomsTime()
{
    feed(0, 30);
    drawn();
    press("curves.fit");
    const double under = plot(0).invTransform(QwtPlot::xBottom, 200);
    wheel({ 200, 50 }, 3);
    QVERIFY(std::abs(plot(0).shownTimes().width() - 29.99 * 0.512) < 0.01);
    QVERIFY(std::abs(plot(0).invTransform(QwtPlot::xBottom, 200) - under) < 0.05);
    wheel({ 200, 50 }, -3);
    QVERIFY(std::abs(plot(0).shownTimes().width() - 29.99) < 0.01);
}

void CurvePanelTest::theWheelWithCtrlZoomsValues()
{
    feed(0, 30);
    drawn();
    const CurveRange::Interval before = plot(0).shownValues();
    wheel({ 200, 50 }, 1, Qt::ControlModifier);
    QVERIFY(std::abs(plot(0).shownValues().width() - before.width() * 0.8) < 1e-6);
    QVERIFY(panel->range().isFollowing());
    QVERIFY(!panel->range().values(1));
    QVERIFY(action("curves.follow")->isEnabled());
}

void CurvePanelTest::theWheelWithShiftMoves()
{
    feed(0, 60);
    drawn();
    const CurveRange::Interval before = plot(0).shownTimes();
    wheel({ 200, 50 }, 2, Qt::ShiftModifier);
    QVERIFY(std::abs(plot(0).shownTimes().from - (before.from - 4)) < 1e-6);
    QVERIFY(std::abs(plot(0).shownTimes().width() - before.width()) < 1e-6);
}

void CurvePanelTest::showAllShowsEverything()
{
    feed(0, 120);
    drawn();
    press("curves.fit");
    QCOMPARE(plot(0).shownTimes().from, 0.0);
    QVERIFY(std::abs(plot(0).shownTimes().to - 119.99) < 1e-6);
    QVERIFY(plot(0).shownValues().to >= 239);
}

void CurvePanelTest::followRunsAgain()
{
    feed(0, 60);
    drawn();
    QVERIFY(!action("curves.follow")->isEnabled());
    drag({ 100, 30 }, { 300, 90 });
    press("curves.follow");
    QVERIFY(std::abs(plot(0).shownTimes().to - 59.99) < 1e-6);
    feed(60, 70);
    QTRY_VERIFY(std::abs(plot(0).shownTimes().to - 69.99) < 1e-6);
}

void CurvePanelTest::keysDoTheSame()
{
    feed(0, 60);
    drawn();
    canvas()->setFocus();
    QTest::keyClick(canvas(), Qt::Key_Home);
    QCOMPARE(plot(0).shownTimes().from, 0.0);
    const double whole = plot(0).shownTimes().width();
    QTest::keyClick(canvas(), Qt::Key_Plus);
    QVERIFY(std::abs(plot(0).shownTimes().width() - whole * 0.8) < 1e-6);
    QTest::keyClick(canvas(), Qt::Key_Minus);
    QVERIFY(std::abs(plot(0).shownTimes().width() - whole) < 1e-6);
    const CurveRange::Interval values = plot(0).shownValues();
    QTest::keyClick(canvas(), Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(std::abs(plot(0).shownValues().width() - values.width() * 0.8) < 1e-6);
    const double from = plot(0).shownTimes().from;
    QTest::keyClick(canvas(), Qt::Key_PageDown);
    QVERIFY(std::abs(plot(0).shownTimes().from - from - whole / 2) < 1e-6);
    QTest::keyClick(canvas(), Qt::Key_PageUp);
    QVERIFY(std::abs(plot(0).shownTimes().from - from) < 1e-6);
    QTest::keyClick(canvas(), Qt::Key_End);
    QVERIFY(panel->range().isFollowing());
    QTest::keyClick(canvas(), Qt::Key_Backspace);
    QVERIFY(!panel->range().isFollowing());
}

void CurvePanelTest::theCursorReadsValues()
{
    feed(0, 20);
    drawn();
    const QPoint at(static_cast<int>(plot(0).transform(QwtPlot::xBottom, 10)), 40);
    const double time = plot(0).invTransform(QwtPlot::xBottom, at.x());
    hover(at);
    QTRY_VERIFY(panel->cursor());
    QVERIFY(std::abs(*panel->cursor() - time) < 1e-9);
    QVERIFY(std::abs(curve(0, SetPosition)->text(1).toDouble() - 2 * time) < 0.03);
    QVERIFY(panel->statusText().startsWith(QStringLiteral("Values at ")));
    // A line in both plots at the same time.
    for (int i = 0; i < 2; ++i) {
        const auto lines = canvas(i)->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first()->isVisible());
        QVERIFY(std::abs(lines.first()->x() - plot(i).transform(QwtPlot::xBottom, time)) < 1.5);
    }
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(canvas(), &leave);
    QVERIFY(!panel->cursor());
    QVERIFY(!canvas()->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly).first()->isVisible());
    QCOMPARE(curve(0, SetPosition)->text(1), QStringLiteral("39.980"));
}

void CurvePanelTest::theCursorMovesByKeys()
{
    feed(0, 20);
    drawn();
    canvas()->setFocus();
    const double middle = (plot(0).shownTimes().from + plot(0).shownTimes().to) / 2;
    QTest::keyClick(canvas(), Qt::Key_Right);
    QVERIFY(std::abs(*panel->cursor() - (middle + 0.1)) < 1e-6);
    QTest::keyClick(canvas(), Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(std::abs(*panel->cursor() - (middle - 0.9)) < 1e-6);
    QTest::keyClick(canvas(), Qt::Key_Escape);
    QVERIFY(!panel->cursor());
}

void CurvePanelTest::inAGapTheCursorReadsNothing()
{
    feed(0, 5);
    feed(15, 20);
    drawn();
    const QPoint at(static_cast<int>(plot(0).transform(QwtPlot::xBottom, 10)), 40);
    hover(at);
    QTRY_VERIFY(panel->cursor());
    QCOMPARE(curve(0, SetPosition)->text(1), QStringLiteral("\u2013"));
}

void CurvePanelTest::aGapIsNotDrawn()
{
    feed(0, 5);
    feed(15, 20);
    drawn();
    const QImage image = canvas()->grab().toImage();
    const QColor ink = plot(0).items().at(0)->pen().color();
    const auto inkAt = [&](double time) {
        const int x = static_cast<int>(plot(0).transform(QwtPlot::xBottom, time));
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            count += image.pixelColor(x, y).rgb() == ink.rgb() ? 1 : 0;
        return count;
    };
    QVERIFY(inkAt(3) > 0);
    QVERIFY(inkAt(17) > 0);
    for (double time = 5.2; time < 14.9; time += 0.2)
        QCOMPARE(inkAt(time), 0);
}

void CurvePanelTest::valuesThatAreNoneAreNotDrawn()
{
    for (int i = 0; i < 500; ++i) {
        const double odd[] = { std::nan(""), INFINITY, -INFINITY, 1e308, -1e308 };
        AxisSample sample = Readings::running(0, i * 0.01);
        if (i >= 100 && i < 400)
            sample.setPosition = odd[i % 5];
        monitor->addSamples({ sample });
    }
    drawn();
    QVERIFY(plot(0).shownValues().width() < 30);
    QVERIFY(inked(0) > 20);
}

void CurvePanelTest::clearForgets()
{
    feed(0, 30);
    drawn();
    drag({ 100, 30 }, { 300, 90 });
    press("curves.pause");
    press("curves.clear");
    QVERIFY(!panel->isPaused());
    QVERIFY(monitor->curves().isEmpty());
    QVERIFY(panel->range().isFollowing());
    QCOMPARE(inked(0), 0);
    feed(100, 101);
    QTRY_VERIFY(inked(0) > 0);
    QCOMPARE(monitor->curves().begin(), 0.0);
}

void CurvePanelTest::whileHiddenNothingIsDrawn()
{
    feed(0, 5);
    drawn();
    DrawCounter counters[2];
    for (int i = 0; i < 2; ++i)
        counters[i].attach(&plot(i));
    panel->hide();
    QCoreApplication::processEvents();
    counters[0].count = counters[1].count = 0;
    for (int i = 0; i < 10; ++i) {
        feed(5 + i, 6 + i);
        QTest::qWait(20);
    }
    QCOMPARE(counters[0].count + counters[1].count, 0);
    QCOMPARE(plot(0).shownTimes().to, 20.0);
    feed(15, 40);
    panel->show();
    QTRY_VERIFY(counters[0].count > 0 && counters[1].count > 0);
    QVERIFY(std::abs(plot(0).shownTimes().to - 39.99) < 1e-6);
    for (DrawCounter& counter : counters)
        counter.detach();
}

void CurvePanelTest::withoutNewReadingsNothingIsDrawn()
{
    feed(0, 5);
    drawn();
    QTest::qWait(120);
    DrawCounter counter;
    counter.attach(&plot(0));
    QCoreApplication::processEvents();
    counter.count = 0;
    QTest::qWait(200);
    QCOMPARE(counter.count, 0);
    counter.detach();
}

void CurvePanelTest::exportAsksForAFile()
{
    const QTemporaryDir directory;
    feed(0, 1);
    drawn();
    ModalDialogDriver driver([&directory](QDialog* dialog) {
        auto* chooser = qobject_cast<QFileDialog*>(dialog);
        QVERIFY(chooser);
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
            ->setText(directory.filePath(QStringLiteral("run")));
        QTest::mouseClick(chooser->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    press("curves.export");
    QCOMPARE(driver.count, 1);
    QVERIFY(QFile::exists(directory.filePath(QStringLiteral("run.csv"))));
    driver.next([](QDialog* dialog) { dialog->reject(); });
    press("curves.export");
    QCOMPARE(driver.count, 2);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

void CurvePanelTest::exportWritesTheShownCurves()
{
    const QTemporaryDir directory;
    monitor->setAxisNames([](int axisNo) { return axisNo == 0 ? QStringLiteral("Feeder") : QString(); });
    feed(0, 1, { 0, 1 });
    drawn();
    toggle(panel->legend().topLevelItem(1));
    toggle(curve(0, ActualPosition));
    const auto reported = noteReports();
    const QString name = directory.filePath(QStringLiteral("curves.csv"));
    QVERIFY(panel->exportTo(name));
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QCOMPARE(lines.first(),
        QByteArray("\"Time [s]\",\"Feeder: Set position [Unit]\",\"Feeder: Set velocity [Unit/s]\","
                   "\"Feeder: Actual velocity [Unit/s]\""));
    QCOMPARE(lines.at(100), QByteArray("0.990000,1.98,2,1.75"));
    QCOMPARE(reported->size(), std::size_t(1));
    QCOMPARE(reported->front().first, LogInfo);
    QVERIFY(panel->statusText().contains(name));
}

void CurvePanelTest::aFileThatCannotBeWrittenIsReported()
{
    feed(0, 1);
    drawn();
    const auto reported = noteReports();
    const QString name = QStringLiteral("/nowhere at all/curves.csv");
    QVERIFY(!panel->exportTo(name));
    QCOMPARE(reported->size(), std::size_t(1));
    QCOMPARE(reported->front().first, LogError);
    QVERIFY(reported->front().second.contains(name));
    QVERIFY(panel->statusText().contains(name));
}

void CurvePanelTest::aLowPanelPutsThePlotsSideBySide()
{
    feed(0, 5);
    drawn();
    QVERIFY(plot(0).y() + plot(0).height() <= plot(1).y());
    QCOMPARE(canvas(0)->mapTo(&*panel, QPoint()).x(), canvas(1)->mapTo(&*panel, QPoint()).x());
    panel->resize(1000, 200);
    QTRY_VERIFY(plot(0).x() + plot(0).width() <= plot(1).x());
    QVERIFY(canvas(0)->height() > 60);
    QCOMPARE(plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity [Unit/s]"));
    panel->resize(1000, 150);
    QCOMPARE(plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity"));
    QVERIFY(panel->minimumSizeHint().height() <= 150);
    panel->resize(1000, 600);
    QTRY_VERIFY(plot(0).y() + plot(0).height() <= plot(1).y());
}

void CurvePanelTest::bothThemesAreDrawn()
{
    feed(0, 10);
    drawn();
    const QRgb light = canvas()->grab().toImage().pixel(2, 2);
    QVERIFY(inked(0) > 50);
    Theme::apply(QStringLiteral("dark.qss"));
    QTRY_VERIFY(canvas()->grab().toImage().pixel(2, 2) != light);
    QVERIFY(qGray(canvas()->grab().toImage().pixel(2, 2)) < 64);
    QVERIFY(plot(0).items().at(0)->pen().color().lightness() > 128);
    QVERIFY(inked(0) > 50);
}

void CurvePanelTest::everythingHasAName()
{
    feed(0, 1);
    drawn();
    QCOMPARE(panel->windowTitle(), QStringLiteral("Curves"));
    for (const QWidget* widget : { static_cast<QWidget*>(&*panel), canvas(0), canvas(1),
             static_cast<QWidget*>(&panel->legend()), static_cast<QWidget*>(panel->findChild<QToolBar*>()) })
        QVERIFY(!widget->accessibleName().isEmpty());
    QVERIFY(canvas(0)->accessibleName() != canvas(1)->accessibleName());
    for (const char* name :
        { "curves.pause", "curves.follow", "curves.fit", "curves.back", "curves.clear", "curves.export" }) {
        QVERIFY(!action(name)->text().isEmpty());
        QVERIFY(!action(name)->toolTip().isEmpty());
        QVERIFY2(!action(name)->icon().isNull(), name);
    }
    QCOMPARE(plot(0).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Position [Unit]"));
    QCOMPARE(plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity [Unit/s]"));
}

void CurvePanelTest::theButtonsAreReachedByTab()
{
    feed(0, 1);
    drawn();
    auto* bar = panel->findChild<QToolBar*>();
    bar->widgetForAction(action("curves.pause"))->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QVERIFY(panel->isPaused());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(QApplication::focusWidget() != bar->widgetForAction(action("curves.pause")));
    QVERIFY(QApplication::focusWidget()->parentWidget() == bar);
}

QTEST_MAIN(CurvePanelTest)
#include "CurvePanelTest.moc"
