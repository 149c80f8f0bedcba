#include "workbench/monitor/VariableMonitor.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "tests/communication/ControllerHost.h"
#include "tests/monitor/Readings.h"
#include "workbench/monitor/CurvePanel.h"

#include <QSignalSpy>
#include <QtTest>

#include <malloc.h>

/// Which axes are recorded, by the calls of their pages and against a controller.
class VariableMonitorTest : public QObject {
    Q_OBJECT

private slots:
    void aPageThatComesOnLineStartsItsAxis();
    void addingAloneRecordsNothing();
    void anAxisThatIsNotKnownIsNotRecorded();
    void startingAgainChangesNothing();
    void aPageThatGoesStopsItsAxis();
    void releasingAnAxisTwiceIsSurvived();
    void negativeNumbersAreNoAxes();
    void axesAreCalledByTheirNames();
    void readingsOfOtherAxesAreLeftOut();
    void clearingGoesOnRecording();
    void aClosedProjectIsForgotten();
    void aControllerIsRead();
    void anotherAxisJoins();
    void aCutLinkIsAGap();
    void aClosedConnectionIsAGap();
    void aThousandCyclesLeaveNothingBehind();

private:
    static void start(VariableMonitor& monitor, int axisNo)
    {
        monitor.addAxis(axisNo);
        monitor.releaseAxis(axisNo, false);
    }
    static bool connectTo(ControllerConnection& connection, const ControllerAddress& address)
    {
        QSignalSpy opened(&connection, &ControllerConnection::opened);
        connection.open(address);
        return opened.wait(5000);
    }
    /// Gaps behind this place.
    static int gaps(const VariableMonitor& monitor, int axisNo, int behind)
    {
        const CurveRing* ring = monitor.curves().curves(axisNo);
        int count = 0;
        for (int i = behind + 1; ring && i < ring->size(); ++i)
            count += ring->at(i).isGap() ? 1 : 0;
        return count;
    }
    /// Gaps that no silence explains, between readings that are near enough to be joined. A busy machine makes others.
    static int needlessGaps(const VariableMonitor& monitor, int axisNo, int interruption = -1)
    {
        const CurveRing* ring = monitor.curves().curves(axisNo);
        const auto isNeedless = [ring](int i) {
            return i == 0 || i + 1 == ring->size()
                || ring->at(i + 1).time - ring->at(i - 1).time <= CurveStore::longestStep;
        };
        int count = 0;
        for (int i = 0; ring && i < ring->size(); ++i)
            count += i != interruption && ring->at(i).isGap() && isNeedless(i) ? 1 : 0;
        return count;
    }
    static int readings(const VariableMonitor& monitor, int axisNo)
    {
        const CurveRing* ring = monitor.curves().curves(axisNo);
        return ring ? ring->size() : 0;
    }
};

void VariableMonitorTest::aPageThatComesOnLineStartsItsAxis()
{
    VariableMonitor monitor;
    QSignalSpy changed(&monitor, &VariableMonitor::axesChanged);
    start(monitor, 3);
    QCOMPARE(monitor.recordedAxes(), QVector<int>({ 3 }));
    QCOMPARE(changed.count(), 1);
    start(monitor, 1);
    QCOMPARE(monitor.recordedAxes(), QVector<int>({ 1, 3 }));
}

void VariableMonitorTest::addingAloneRecordsNothing()
{
    VariableMonitor monitor;
    monitor.addAxis(3);
    QVERIFY(monitor.recordedAxes().isEmpty());
}

void VariableMonitorTest::anAxisThatIsNotKnownIsNotRecorded()
{
    VariableMonitor monitor;
    QSignalSpy changed(&monitor, &VariableMonitor::axesChanged);
    monitor.releaseAxis(3, false);
    monitor.releaseAxis(3, true);
    QVERIFY(monitor.recordedAxes().isEmpty());
    QCOMPARE(changed.count(), 0);
}

void VariableMonitorTest::startingAgainChangesNothing()
{
    VariableMonitor monitor;
    start(monitor, 3);
    monitor.addSamples(Readings::runningAll({ 3 }, 1));
    QSignalSpy changed(&monitor, &VariableMonitor::axesChanged);
    start(monitor, 3);
    QCOMPARE(monitor.recordedAxes(), QVector<int>({ 3 }));
    QCOMPARE(readings(monitor, 3), 1);
    QCOMPARE(changed.count(), 0);
    monitor.releaseAxis(3, true);
    QVERIFY(monitor.recordedAxes().isEmpty());
}

void VariableMonitorTest::aPageThatGoesStopsItsAxis()
{
    VariableMonitor monitor;
    start(monitor, 3);
    monitor.addSamples(Readings::runningAll({ 3 }, 1));
    QSignalSpy changed(&monitor, &VariableMonitor::axesChanged);
    monitor.releaseAxis(3, true);
    QVERIFY(monitor.recordedAxes().isEmpty());
    QCOMPARE(changed.count(), 1);
    monitor.addSamples(Readings::runningAll({ 3 }, 1.01));
    QCOMPARE(readings(monitor, 3), 1);
}

void VariableMonitorTest::releasingAnAxisTwiceIsSurvived()
{
    VariableMonitor monitor;
    start(monitor, 3);
    monitor.releaseAxis(3, true);
    monitor.releaseAxis(3, true);
    monitor.releaseAxis(3, false);
    QVERIFY(monitor.recordedAxes().isEmpty());
    start(monitor, 3);
    QCOMPARE(monitor.recordedAxes(), QVector<int>({ 3 }));
}

void VariableMonitorTest::negativeNumbersAreNoAxes()
{
    VariableMonitor monitor;
    start(monitor, -1);
    QVERIFY(monitor.recordedAxes().isEmpty());
}

void VariableMonitorTest::axesAreCalledByTheirNames()
{
    VariableMonitor monitor;
    QCOMPARE(monitor.axisName(4), QStringLiteral("Axis 4"));
    QSignalSpy changed(&monitor, &VariableMonitor::axesChanged);
    monitor.setAxisNames([](int axisNo) { return axisNo == 4 ? QStringLiteral("Feeder") : QString(); });
    QCOMPARE(changed.count(), 1);
    QCOMPARE(monitor.axisName(4), QStringLiteral("Feeder"));
    QCOMPARE(monitor.axisName(5), QStringLiteral("Axis 5"));
}

void VariableMonitorTest::readingsOfOtherAxesAreLeftOut()
{
    VariableMonitor monitor;
    start(monitor, 3);
    const quint64 before = monitor.revision();
    monitor.addSamples(Readings::runningAll({ 1, 2 }, 1));
    QVERIFY(monitor.curves().isEmpty());
    QCOMPARE(monitor.revision(), before);
    monitor.addSamples(Readings::runningAll({ 1, 3 }, 1));
    QCOMPARE(monitor.curves().axes(), QVector<int>({ 3 }));
    QVERIFY(monitor.revision() != before);
}

void VariableMonitorTest::clearingGoesOnRecording()
{
    VariableMonitor monitor;
    start(monitor, 3);
    monitor.addSamples(Readings::runningAll({ 3 }, 1));
    monitor.clear();
    QVERIFY(monitor.curves().isEmpty());
    monitor.addSamples(Readings::runningAll({ 3 }, 2));
    QCOMPARE(readings(monitor, 3), 1);
}

void VariableMonitorTest::aClosedProjectIsForgotten()
{
    VariableMonitor monitor;
    start(monitor, 3);
    monitor.addSamples(Readings::runningAll({ 3 }, 1));
    monitor.forgetAll();
    QVERIFY(monitor.recordedAxes().isEmpty());
    QVERIFY(monitor.curves().isEmpty());
    monitor.releaseAxis(3, false);
    QVERIFY(monitor.recordedAxes().isEmpty());
}

void VariableMonitorTest::aControllerIsRead()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection connection;
    VariableMonitor monitor;
    monitor.readFrom(&connection);
    start(monitor, 1);
    QVERIFY(connectTo(connection, host.address()));
    QTRY_VERIFY(readings(monitor, 1) > 3);
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(1, 1, 20000), short(0));
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(1, 1), short(0));
    QTRY_COMPARE(host.peek(1).axisState, std::uint16_t(3));
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(1, 50, 1000, 1000, 0), short(0));
    QTRY_COMPARE(monitor.curves().curves(1)->newest().values[SetVelocity], 50.0);
    QTRY_VERIFY(monitor.curves().curves(1)->newest().values[ActualPosition] > 5);
    QCOMPARE(needlessGaps(monitor, 1), 0);
    QVERIFY(!monitor.curves().curves(0));
}

void VariableMonitorTest::anotherAxisJoins()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection connection;
    VariableMonitor monitor;
    monitor.readFrom(&connection);
    QVERIFY(connectTo(connection, host.address()));
    start(monitor, 1);
    QTRY_VERIFY(readings(monitor, 1) > 3);
    start(monitor, 0);
    QTRY_VERIFY(readings(monitor, 0) > 3);
    QCOMPARE(needlessGaps(monitor, 1), 0);
    monitor.releaseAxis(1, true);
    const int stopped = readings(monitor, 1);
    const int running = readings(monitor, 0);
    QTRY_VERIFY(readings(monitor, 0) > running + 10);
    QCOMPARE(readings(monitor, 1), stopped);
}

void VariableMonitorTest::aCutLinkIsAGap()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    VariableMonitor monitor;
    monitor.readFrom(&connection);
    start(monitor, 0);
    QVERIFY(connectTo(connection, host.address()));
    QTRY_VERIFY(readings(monitor, 0) > 10);
    const int port = host.server->port();
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    host.server->shutdown();
    host.server.reset();
    QVERIFY(lost.wait(3000));
    QVERIFY(monitor.curves().curves(0)->newest().isGap());
    const int interruption = readings(monitor, 0) - 1;
    host.listen(port);
    QVERIFY(opened.wait(5000));
    QTRY_VERIFY(!monitor.curves().curves(0)->newest().isGap());
    QCOMPARE(needlessGaps(monitor, 0, interruption), 0);
    QCOMPARE(monitor.recordedAxes(), QVector<int>({ 0 }));
}

void VariableMonitorTest::aClosedConnectionIsAGap()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    VariableMonitor monitor;
    monitor.readFrom(&connection);
    start(monitor, 0);
    QVERIFY(connectTo(connection, host.address()));
    QTRY_VERIFY(readings(monitor, 0) > 10);
    const int last = readings(monitor, 0) - 1;
    QSignalSpy closed(&connection, &ControllerConnection::closed);
    connection.close();
    QVERIFY(closed.wait(2000));
    QVERIFY(connectTo(connection, host.address()));
    const int before = readings(monitor, 0);
    QTRY_VERIFY(readings(monitor, 0) > before + 10);
    QVERIFY(gaps(monitor, 0, last) >= 1);
    // The way back may have been quick.
    QVERIFY(needlessGaps(monitor, 0) <= 1);
}

void VariableMonitorTest::aThousandCyclesLeaveNothingBehind()
{
    VariableMonitor monitor;
    CurvePanel panel(monitor);
    panel.show();
    const auto cycle = [&monitor](int number) {
        start(monitor, number % 16);
        for (int i = 0; i < 5; ++i)
            monitor.addSamples(Readings::runningAll({ number % 16 }, number + i * 0.01));
        monitor.releaseAxis(number % 16, true);
        monitor.clear();
    };
    for (int i = 0; i < 300; ++i)
        cycle(i);
    const auto before = static_cast<qint64>(mallinfo2().uordblks);
    const int children = panel.findChildren<QObject*>().size();
    for (int i = 0; i < 1000; ++i)
        cycle(i);
    const qint64 grown = static_cast<qint64>(mallinfo2().uordblks) - before;
    // Other threads of the process come and go meanwhile; whatever a cycle left would be more than this.
    constexpr qint64 leastLeak = 100;
    QVERIFY2(grown < 1000 * leastLeak, qPrintable(QString::number(grown)));
    QCOMPARE(panel.findChildren<QObject*>().size(), children);
    QVERIFY(monitor.recordedAxes().isEmpty());
    QVERIFY(monitor.curves().isEmpty());
}

QTEST_MAIN(VariableMonitorTest)
#include "VariableMonitorTest.moc"
