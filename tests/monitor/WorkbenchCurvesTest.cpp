#include "tests/monitor/CurvePanelFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/monitor/CurveLegend.h"
#include "workbench/monitor/CurvePanel.h"
#include "workbench/monitor/CurvePlot.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QDockWidget>
#include <QMenu>
#include <QTranslator>
#include <QtTest>

#include <optional>

/// The curves in the whole program, from the press of a button on the online page to the line in the plot.
class WorkbenchCurvesTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void theOutputStaysInFront();
    void theViewMenuShowsThePanel();
    void theTitleFollowsTheLanguage();
    void anAxisOnLineIsRecordedUnderItsName();
    void aMoveIsDrawn();
    void behindAnotherPanelNothingIsDrawn();
    void aCutLinkLeavesAGap();
    void closingInDebugModeStopsTheRecording();
    void closingWithoutDebugModeGoesOnRecording();
    void closingTheProjectForgets();
    void quittingWhileRecordingIsClean();

private:
    VariableMonitor& monitor() const { return m->workbench->monitor(); }
    QDockWidget* dock() const { return m->workbench->window().toolWindows().panel(QStringLiteral("curves")); }
    CurvePanel& panel() const { return *static_cast<CurvePanel*>(dock()->widget()); }
    const CurveRing* ring() const { return monitor().curves().curves(0); }
    bool isRecording() const { return ring() && ring()->size() > 20; }
    double newest(CurveKind kind) const { return ring()->newest().values[kind]; }

    /// Answers what closing may ask.
    MessageBoxWatcher boxes;
    std::optional<OnlineProgram> m;
};

void WorkbenchCurvesTest::theOutputStaysInFront()
{
    QVERIFY(m->workbench->window().output().isVisible());
    QVERIFY(!panel().isInSight());
    QVERIFY(dock()->height() < 260);
}

void WorkbenchCurvesTest::theViewMenuShowsThePanel()
{
    auto* menu = m->workbench->window().findChild<QMenu*>(QStringLiteral("viewMenu"));
    QVERIFY(menu->actions().contains(dock()->toggleViewAction()));
    QCOMPARE(dock()->toggleViewAction()->text(), QStringLiteral("Curves"));
    m->workbench->window().toolWindows().showToolWindow(QStringLiteral("curves"));
    QTRY_VERIFY(panel().isInSight());
}

void WorkbenchCurvesTest::theTitleFollowsTheLanguage()
{
    QTranslator chinese;
    QVERIFY(chinese.load(QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun_zh_CN.qm")));
    QCoreApplication::installTranslator(&chinese);
    QTRY_COMPARE(dock()->windowTitle(), QString::fromUtf8("曲线"));
    QCOMPARE(panel().plot(0).axisTitle(QwtPlot::yLeft).text().left(2), QString::fromUtf8("位置"));
    QCOMPARE(panel().legend().headerItem()->text(1), QString::fromUtf8("值"));
    QCoreApplication::removeTranslator(&chinese);
    QTRY_COMPARE(dock()->windowTitle(), QStringLiteral("Curves"));
}

void WorkbenchCurvesTest::anAxisOnLineIsRecordedUnderItsName()
{
    QVERIFY(m->connectHere());
    QVERIFY(monitor().recordedAxes().isEmpty());
    QVERIFY(m->openPage(QStringLiteral("Alpha")));
    QCOMPARE(monitor().recordedAxes(), QVector<int>({ 0 }));
    QCOMPARE(panel().legend().topLevelItem(0)->text(0), QStringLiteral("Alpha"));
    QTRY_VERIFY(isRecording());
    QVERIFY(m->openPage(QStringLiteral("Beta")));
    QCOMPARE(monitor().recordedAxes(), QVector<int>({ 0, 1 }));
    QCOMPARE(panel().legend().topLevelItem(1)->text(0), QStringLiteral("Beta"));
}

void WorkbenchCurvesTest::aMoveIsDrawn()
{
    m->workbench->window().toolWindows().showToolWindow(QStringLiteral("curves"));
    QVERIFY(m->makeReady());
    m->press("posJogPushButton");
    QVERIFY(m->moves());
    QTRY_VERIFY(newest(SetVelocity) > 0);
    QTRY_VERIFY(newest(ActualVelocity) > 0);
    QTRY_VERIFY(newest(ActualPosition) > 1);
    m->release("posJogPushButton");
    QVERIFY(m->stands(3000));
    QTRY_COMPARE(newest(SetVelocity), 0.0);
    // Where drawing takes long, it is done less often.
    QTRY_VERIFY(panel().plot(1).shownValues().to >= 5);
    QTRY_VERIFY(panel().plot(0).shownValues().to >= 1);
}

void WorkbenchCurvesTest::behindAnotherPanelNothingIsDrawn()
{
    QVERIFY(m->connectHere());
    QVERIFY(m->openPage(QStringLiteral("Alpha")));
    QTRY_VERIFY(isRecording());
    const CurveRange::Interval before = panel().plot(0).shownTimes();
    DrawCounter counter;
    counter.attach(&panel().plot(0));
    const double end = monitor().curves().end();
    QTRY_VERIFY(monitor().curves().end() > end + 0.5);
    QCOMPARE(counter.count, 0);
    QCOMPARE(panel().plot(0).shownTimes().to, before.to);
    m->workbench->window().toolWindows().showToolWindow(QStringLiteral("curves"));
    QTRY_VERIFY(counter.count > 0);
    QTRY_VERIFY(panel().plot(0).shownTimes().to >= 20);
    counter.detach();
}

void WorkbenchCurvesTest::aCutLinkLeavesAGap()
{
    QVERIFY(m->connectHere());
    QVERIFY(m->openPage(QStringLiteral("Alpha")));
    QTRY_VERIFY(isRecording());
    const int port = m->host.server->port();
    m->host.server->shutdown();
    m->host.server.reset();
    QTRY_VERIFY(ring()->newest().isGap());
    m->host.listen(port);
    QTRY_VERIFY_WITH_TIMEOUT(!ring()->newest().isGap(), 8000);
    QCOMPARE(monitor().recordedAxes(), QVector<int>({ 0 }));
}

void WorkbenchCurvesTest::closingInDebugModeStopsTheRecording()
{
    QVERIFY(m->makeReady());
    QTRY_VERIFY(isRecording());
    m->workbench->editors().closeAllEditors();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(monitor().recordedAxes().isEmpty());
    QVERIFY(isRecording());
}

void WorkbenchCurvesTest::closingWithoutDebugModeGoesOnRecording()
{
    QVERIFY(m->connectHere());
    QVERIFY(m->openPage(QStringLiteral("Alpha")));
    m->workbench->editors().closeAllEditors();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(monitor().recordedAxes(), QVector<int>({ 0 }));
}

void WorkbenchCurvesTest::closingTheProjectForgets()
{
    QVERIFY(m->connectHere());
    QVERIFY(m->openPage(QStringLiteral("Alpha")));
    QTRY_VERIFY(isRecording());
    m->workbench->workspace().close();
    QVERIFY(monitor().recordedAxes().isEmpty());
    QVERIFY(monitor().curves().isEmpty());
    QCOMPARE(panel().legend().topLevelItemCount(), 0);
}

void WorkbenchCurvesTest::quittingWhileRecordingIsClean()
{
    m->workbench->window().toolWindows().showToolWindow(QStringLiteral("curves"));
    QVERIFY(m->makeReady());
    QTRY_VERIFY(isRecording());
    QElapsedTimer timer;
    timer.start();
    m->workbench.reset();
    QVERIFY(timer.elapsed() < 5000);
}

QTEST_MAIN(WorkbenchCurvesTest)
#include "WorkbenchCurvesTest.moc"
