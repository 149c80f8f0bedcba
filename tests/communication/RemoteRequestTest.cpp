#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"

#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <thread>

class RemoteRequestTest : public QObject {
    Q_OBJECT

private slots:
    void everyRequestReachesItsAxis();
    void refusalsComeBackAsCodes();
    void statusCallsEndAfterOneSecond();
    void commandsEndAtTheirDeadline();
    void lateRepliesStillCount();
    void repliesOfAnyLengthAreHandedOn_data();
    void repliesOfAnyLengthAreHandedOn();
    void closingCancelsWhatIsUnderWay();
    void requestsAreObserved();
    void callsEndAtOnceWithoutAConnection();
};

void RemoteRequestTest::everyRequestReachesItsAxis()
{
    ControllerHost host;
    host.addAxes(3, { { "HomeMode", "Homing_35" }, { "MaxVel", "1000" } });
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_KeepAlive(1), Diagnosis::notInDebugMode);
    QVERIFY(enableAxis(1));
    QCOMPARE(rpc.rpc_AxisDebug_KeepAlive(1), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetPosition(1, 25.5), Diagnosis::ok);
    QCOMPARE(statusOf(1).setPosition, 25.5);
    QCOMPARE(rpc.rpc_AxisDebug_SetVelRatio(1, 70), Diagnosis::ok);
    QCOMPARE(static_cast<int>(statusOf(1).speedRatio * 100), 70);
    QCOMPARE(rpc.rpc_AxisDebug_SetHomeOffset(1, -3), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetHome(1), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setPosition, -3.0);
    QCOMPARE(rpc.rpc_AxisDebug_MoveAbs(1, 2, 500, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setPosition, 2.0);
    QCOMPARE(rpc.rpc_AxisDebug_MoveRel(1, -1, 500, 1000, 1000, 10000), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setPosition, 1.0);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(1, -20, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setVelocity, -14.0);
    QCOMPARE(rpc.rpc_AxisDebug_SetStop(1, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).axisState, std::uint16_t(3));
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(1, 1, 10, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setVelocity, 7.0);
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(1, 0, 10, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).axisState, std::uint16_t(3));
    QCOMPARE(rpc.rpc_AxisDebug_JopNeg(1, 1, 10, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).setVelocity, -7.0);
    QCOMPARE(rpc.rpc_AxisDebug_JopNeg(1, 0, 10, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).axisState, std::uint16_t(3));
    QCOMPARE(rpc.rpc_AxisDebug_Reset(1), Diagnosis::ok);
    QCOMPARE(statusOf(1).debugMode, std::uint8_t(1));
    QCOMPARE(statusOf(0).debugMode, std::uint8_t(0));
    QCOMPARE(statusOf(0).setPosition, 0.0);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(1, 0, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).debugMode, std::uint8_t(0));
    QCOMPARE(statusOf(1).axisState, std::uint16_t(0));
    QVERIFY(rpc.rpc_AxisDebug_GetAxesGroupRef(0, 8).isEmpty());
}

void RemoteRequestTest::refusalsComeBackAsCodes()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(7, 1), Diagnosis::unknownAxis);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(-1, 1), Diagnosis::unknownAxis);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(0, 1, 1, 1, 0), Diagnosis::notInDebugMode);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 2, 100), Diagnosis::argumentInvalid);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, 0), Diagnosis::argumentInvalid);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, millisecondsEnough), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 2), Diagnosis::argumentInvalid);
    host.fault("refuse 4711 Reset");
    QCOMPARE(rpc.rpc_AxisDebug_Reset(0), short(4711));
    QCOMPARE(rpc.rpc_AxisDebug_KeepAlive(0), Diagnosis::ok);
    host.fault("none");
    QCOMPARE(rpc.rpc_AxisDebug_Reset(0), Diagnosis::ok);
    // The end of a jog that never was is no failure, whoever asks.
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 0, 0, 0, 0, 0), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 2, 1, 1, 1, 0), Diagnosis::argumentInvalid);
}

void RemoteRequestTest::statusCallsEndAfterOneSecond()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    host.fault("lost-replies 2 GetAxisRef");
    QElapsedTimer timer;
    timer.start();
    RpcCmdSend rpc;
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).isEmpty());
    QVERIFY2(timer.elapsed() >= 900 && timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    host.fault("lost-replies 1 KeepAlive");
    timer.start();
    QCOMPARE(rpc.rpc_AxisDebug_KeepAlive(0), Diagnosis::noAnswer);
    QVERIFY(timer.elapsed() < 3000);
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).isEmpty());
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), axisRefSize);
    QVERIFY(connection.isOpen());
}

void RemoteRequestTest::commandsEndAtTheirDeadline()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    host.fault("lost-replies 0 Reset");
    QElapsedTimer timer;
    timer.start();
    RpcCmdSend rpc;
    rpc.deadline = 2;
    QCOMPARE(rpc.rpc_AxisDebug_Reset(0), Diagnosis::noAnswer);
    QVERIFY2(timer.elapsed() >= 1900 && timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    rpc.deadline = -5;
    timer.start();
    QCOMPARE(rpc.rpc_AxisDebug_Reset(0), Diagnosis::noAnswer);
    QVERIFY(timer.elapsed() < 3000);
}

void RemoteRequestTest::lateRepliesStillCount()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    host.fault("late-replies 300 EnterDebugMode");
    QElapsedTimer timer;
    timer.start();
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, millisecondsEnough), Diagnosis::ok);
    QVERIFY(timer.elapsed() >= 290);
}

void RemoteRequestTest::repliesOfAnyLengthAreHandedOn_data()
{
    QTest::addColumn<int>("length");
    for (const int length : { 0, 1, 247, 249, 1000000 })
        QTest::newRow(qPrintable(QStringLiteral("%1 bytes").arg(length))) << length;
}

void RemoteRequestTest::repliesOfAnyLengthAreHandedOn()
{
    QFETCH(int, length);
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    host.fault(qPrintable(QStringLiteral("wrong-length %1").arg(length)));
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), length);
    host.fault("none");
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), axisRefSize);
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, 100).size(), 100);
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, -4).size(), 0);
}

void RemoteRequestTest::closingCancelsWhatIsUnderWay()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    host.fault("lost-replies 0");
    std::atomic<short> result{ 0 };
    std::thread caller([&result] { result = RpcCmdSend().rpc_AxisDebug_Reset(0); });
    QTest::qWait(100);
    QElapsedTimer timer;
    timer.start();
    connection.close();
    caller.join();
    QVERIFY(timer.elapsed() < 5000);
    QCOMPARE(result.load(), Diagnosis::notConnected);
}

void RemoteRequestTest::requestsAreObserved()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    std::vector<std::pair<int, short>> seen;
    ControllerLink::setObserver([&seen](const AxisRequest& request, const AxisReply& reply, std::chrono::microseconds) {
        seen.emplace_back(request.code, reply.result);
    });
    RpcCmdSend rpc;
    rpc.rpc_AxisDebug_Reset(0);
    rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize);
    ControllerLink::setObserver({});
    rpc.rpc_AxisDebug_Reset(0);
    QCOMPARE(seen.size(), std::size_t(2));
    QCOMPARE(seen[0].first, 15);
    QCOMPARE(seen[0].second, Diagnosis::notInDebugMode);
    QCOMPARE(seen[1].first, 0);
    QCOMPARE(seen[1].second, Diagnosis::ok);
}

void RemoteRequestTest::callsEndAtOnceWithoutAConnection()
{
    QElapsedTimer timer;
    timer.start();
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 1), Diagnosis::notConnected);
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).isEmpty());
    QVERIFY(timer.elapsed() < 500);
}

QTEST_GUILESS_MAIN(RemoteRequestTest)
#include "RemoteRequestTest.moc"
