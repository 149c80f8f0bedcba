#include "host/communication/ControllerConnection.h"

#include "host/communication/AxisSampler.h"
#include "host/communication/ControllerLink.h"
#include "host/communication/RpcCmdSend.h"
#include "host/communication/StopLine.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerHost.h"
#include "tests/communication/QuietRelay.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <cstring>
#include <thread>

namespace {
constexpr short millisecondsEnough = 20000;

bool connectTo(ControllerConnection& connection, const ControllerAddress& address)
{
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    connection.open(address);
    return opened.wait(5000);
}

AxisRef statusOf(short axisNo)
{
    RpcCmdSend rpc;
    const QByteArray data = rpc.rpc_AxisDebug_GetAxisRef(axisNo, axisRefSize);
    AxisRef ref{};
    if (data.size() == axisRefSize)
        std::memcpy(&ref, data.constData(), sizeof ref);
    return ref;
}

bool enableAxis(short axisNo)
{
    RpcCmdSend rpc;
    if (rpc.rpc_AxisDebug_EnterDebugMode(axisNo, 1, millisecondsEnough) != 0
        || rpc.rpc_AxisDebug_SetEnable(axisNo, 1) != 0)
        return false;
    return QTest::qWaitFor([axisNo] { return statusOf(axisNo).axisState == 3; }, 5000);
}
} // namespace

class ControllerConnectionTest : public QObject {
    Q_OBJECT

private slots:
    void logsInAndOut();
    void refusesAWrongToken();
    void refusesAnotherVersion();
    void saysWhenNobodyAnswers();
    void refusesOtherHostsWithoutTls();
    void callsEndAtOnceWithoutAConnection();
    void everyRequestReachesItsAxis();
    void refusalsComeBackAsCodes();
    void statusCallsEndAfterOneSecond();
    void commandsEndAtTheirDeadline();
    void lateRepliesStillCount();
    void repliesOfAnyLengthAreHandedOn_data();
    void repliesOfAnyLengthAreHandedOn();
    void aCutLinkIsReportedOnceAndComesBack();
    void aRestartedControllerIsFoundQuickly();
    void aReplacedControllerIsRefused();
    void aSilentNetworkIsNoticedWithinTwoSeconds();
    void axesGoThereAndComeBack();
    void anUnsoundDownloadIsRefusedWhole();
    void downloadIsRefusedWhileAnAxisIsEnabled();
    void twoClientsDoNotDisturbEachOther();
    void axesStopWhenTheirClientLeaves();
    void stopGoesPastAHangingCall();
    void stopHoldsUntilItIsReleased();
    void stopWithoutAConnectionSaysSo();
    void samplerReadsCurves();
    void samplingKeepsNoSessionAlive();
    void closingCancelsWhatIsUnderWay();
    void openingAgainReplacesTheConnection();
    void destructionWhileConnectingIsQuick();
    void requestsAreObserved();
};

void ControllerConnectionTest::logsInAndOut()
{
    ControllerHost host;
    ControllerConnection connection;
    QCOMPARE(connection.state(), ControllerConnection::Closed);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(connection.isOpen());
    QVERIFY(ControllerLink::active());
    QVERIFY(connection.credentials());
    QSignalSpy closed(&connection, &ControllerConnection::closed);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    connection.close();
    QVERIFY(!ControllerLink::active());
    QVERIFY(closed.wait(2000));
    QVERIFY(!connection.isOpen());
    QVERIFY(!connection.credentials());
    QCOMPARE(lost.count(), 0);
    connection.close();
    QCOMPARE(closed.count(), 1);
}

void ControllerConnectionTest::refusesAWrongToken()
{
    ControllerHost host;
    ControllerConnection connection;
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    ControllerAddress address = host.address();
    address.token = "wrong";
    connection.open(address);
    QVERIFY(failed.wait(5000));
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::refused);
    QVERIFY2(
        failed.at(0).at(1).toString().contains(QStringLiteral("token")), qPrintable(failed.at(0).at(1).toString()));
    QCOMPARE(connection.state(), ControllerConnection::Closed);
    QVERIFY(!ControllerLink::active());
    // A prefix is no token either, nor is none.
    for (const QByteArray& token : { QByteArray("righ"), QByteArray(), QByteArray("right1") }) {
        address.token = token;
        connection.open(address);
        QVERIFY(failed.wait(5000));
    }
    QCOMPARE(failed.count(), 4);
}

void ControllerConnectionTest::refusesAnotherVersion()
{
    ControllerHost host;
    host.fault("version 2");
    ControllerConnection connection;
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    connection.open(host.address());
    QVERIFY(failed.wait(5000));
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::versionDiffers);
    QVERIFY(failed.at(0).at(1).toString().contains(QStringLiteral("version 2")));
}

void ControllerConnectionTest::saysWhenNobodyAnswers()
{
    QTcpServer reserved;
    QVERIFY(reserved.listen(QHostAddress::LocalHost));
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = reserved.serverPort();
    address.token = "right";
    reserved.close();
    ControllerConnection connection;
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    connection.open(address);
    QVERIFY(failed.wait(6000));
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::notConnected);
    QVERIFY(failed.at(0).at(1).toString().contains(address.text()));
}

void ControllerConnectionTest::refusesOtherHostsWithoutTls()
{
    ControllerAddress address;
    address.host = QStringLiteral("192.0.2.7");
    address.port = 50700;
    address.token = "right";
    ControllerConnection connection;
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    connection.open(address);
    QVERIFY(failed.wait(1000));
    QVERIFY(failed.at(0).at(1).toString().contains(QStringLiteral("make-certificates")));
    QCOMPARE(connection.state(), ControllerConnection::Closed);
}

void ControllerConnectionTest::callsEndAtOnceWithoutAConnection()
{
    QElapsedTimer timer;
    timer.start();
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 1), Diagnosis::notConnected);
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).isEmpty());
    QVERIFY(timer.elapsed() < 100);
}

void ControllerConnectionTest::everyRequestReachesItsAxis()
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

void ControllerConnectionTest::refusalsComeBackAsCodes()
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

void ControllerConnectionTest::statusCallsEndAfterOneSecond()
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
    QVERIFY2(timer.elapsed() >= 900 && timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    host.fault("lost-replies 1 KeepAlive");
    timer.start();
    QCOMPARE(rpc.rpc_AxisDebug_KeepAlive(0), Diagnosis::noAnswer);
    QVERIFY(timer.elapsed() < 1500);
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).isEmpty());
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), axisRefSize);
    QVERIFY(connection.isOpen());
}

void ControllerConnectionTest::commandsEndAtTheirDeadline()
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
    QVERIFY2(timer.elapsed() >= 1900 && timer.elapsed() < 2500, qPrintable(QString::number(timer.elapsed())));
    rpc.deadline = -5;
    timer.start();
    QCOMPARE(rpc.rpc_AxisDebug_Reset(0), Diagnosis::noAnswer);
    QVERIFY(timer.elapsed() < 1500);
}

void ControllerConnectionTest::lateRepliesStillCount()
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

void ControllerConnectionTest::repliesOfAnyLengthAreHandedOn_data()
{
    QTest::addColumn<int>("length");
    for (const int length : { 0, 1, 247, 249, 1000000 })
        QTest::newRow(qPrintable(QStringLiteral("%1 bytes").arg(length))) << length;
}

void ControllerConnectionTest::repliesOfAnyLengthAreHandedOn()
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

void ControllerConnectionTest::aCutLinkIsReportedOnceAndComesBack()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    host.fault("drop-link");
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, 2000);
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 5000);
    QVERIFY(connection.isOpen());
    QCOMPARE(lost.count(), 1);
    QVERIFY(enableAxis(0));
}

void ControllerConnectionTest::aRestartedControllerIsFoundQuickly()
{
    auto host = std::make_unique<ControllerHost>();
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host->address()));
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    const int port = host->server->port();
    host.reset();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, 2000);
    QVERIFY(!ControllerLink::active());
    QTest::qWait(1500);
    ControllerHost next;
    next.server->shutdown();
    QElapsedTimer timer;
    timer.start();
    next.listen(port);
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 3000);
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(lost.count(), 1);
}

void ControllerConnectionTest::aReplacedControllerIsRefused()
{
    auto host = std::make_unique<ControllerHost>();
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host->address()));
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    const int port = host->server->port();
    host.reset();
    ControllerHost next;
    next.server->shutdown();
    next.listen(port);
    next.fault("version 9");
    // Whether the first look at it came before the fault or after it, the next loss settles it.
    QTRY_VERIFY_WITH_TIMEOUT(connection.isOpen() || failed.count() == 1, 5000);
    next.fault("drop-link");
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 5000);
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::versionDiffers);
    QCOMPARE(connection.state(), ControllerConnection::Closed);
}

void ControllerConnectionTest::aSilentNetworkIsNoticedWithinTwoSeconds()
{
    ControllerHost host;
    QuietRelay relay(host.server->port());
    ControllerAddress address = host.address();
    address.port = relay.port();
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, address));
    // The calls block, and the relay lives on this thread.
    std::atomic<bool> jogging{ false };
    std::thread caller([&jogging] {
        RpcCmdSend rpc;
        const bool entered
            = rpc.rpc_AxisDebug_EnterDebugMode(0, 1, 32767) == 0 && rpc.rpc_AxisDebug_SetEnable(0, 1) == 0;
        while (entered && statusOf(0).axisState != 3) { }
        jogging = entered && rpc.rpc_AxisDebug_JopPos(0, 1, 20, 1000, 1000, 0) == 0;
    });
    QTRY_VERIFY_WITH_TIMEOUT(jogging.load(), 5000);
    caller.join();
    QTRY_COMPARE(host.peek(0).setVelocity, 20.0);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QElapsedTimer timer;
    timer.start();
    relay.silent = true;
    QTRY_VERIFY_WITH_TIMEOUT(lost.count() == 1 && host.peek(0).setVelocity == 0, 4000);
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(lost.count(), 1);
}

void ControllerConnectionTest::axesGoThereAndComeBack()
{
    ControllerHost host;
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    QSignalSpy read(&connection, &ControllerConnection::axesRead);
    QVector<ControllerAxis> axes{ makeControllerAxis(0), makeControllerAxis(5) };
    axes[1].name = QString::fromUtf8("\xe8\xbd\xb4 5");
    connection.downloadAxes(axes);
    QVERIFY(downloaded.wait(5000));
    QCOMPARE(downloaded.at(0).at(0).value<DownloadOutcome>().result, Diagnosis::ok);
    connection.readAxes();
    QVERIFY(read.wait(5000));
    const auto back = read.at(0).at(1).value<QVector<ControllerAxis>>();
    QCOMPARE(back.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(back.at(i).name, axes.at(i).name);
        QCOMPARE(back.at(i).values, axes.at(i).values);
    }
    connection.close();
    connection.readAxes();
    connection.downloadAxes(axes);
    QTRY_COMPARE(read.count(), 2);
    QCOMPARE(read.at(1).at(0).value<short>(), Diagnosis::notConnected);
    QTRY_COMPARE(downloaded.count(), 2);
    QCOMPARE(downloaded.at(1).at(0).value<DownloadOutcome>().result, Diagnosis::notConnected);
}

void ControllerConnectionTest::anUnsoundDownloadIsRefusedWhole()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    connection.downloadAxes({ makeControllerAxis(1), makeControllerAxis(2, { { "MaxVel", "fast" } }) });
    QVERIFY(downloaded.wait(5000));
    const auto outcome = downloaded.at(0).at(0).value<DownloadOutcome>();
    QCOMPARE(outcome.result, Diagnosis::parameterInvalid);
    QCOMPARE(outcome.axis, QStringLiteral("Axis2"));
    QCOMPARE(outcome.key, QStringLiteral("MaxVel"));
    QVERIFY(outcome.reason.contains(QStringLiteral("fast")));
    QCOMPARE(host.controller.axes().size(), std::size_t(1));
    QCOMPARE(host.controller.axes().at(0).name, std::string("Axis0"));
}

void ControllerConnectionTest::downloadIsRefusedWhileAnAxisIsEnabled()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(1));
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    connection.downloadAxes({ makeControllerAxis(0) });
    QVERIFY(downloaded.wait(5000));
    QCOMPARE(downloaded.at(0).at(0).value<DownloadOutcome>().result, Diagnosis::axisEnabled);
    QCOMPARE(downloaded.at(0).at(0).value<DownloadOutcome>().axis, QStringLiteral("Axis1"));
    RpcCmdSend().rpc_AxisDebug_SetEnable(1, 0);
    connection.downloadAxes({ makeControllerAxis(0) });
    QVERIFY(downloaded.wait(5000));
    QCOMPARE(downloaded.at(1).at(0).value<DownloadOutcome>().result, Diagnosis::ok);
}

void ControllerConnectionTest::twoClientsDoNotDisturbEachOther()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection first;
    QVERIFY(connectTo(first, host.address()));
    const std::shared_ptr<ControllerLink> firstLink = ControllerLink::active();
    QVERIFY(enableAxis(0));
    ControllerConnection second;
    QVERIFY(connectTo(second, host.address()));
    const std::shared_ptr<ControllerLink> secondLink = ControllerLink::active();
    QVERIFY(firstLink != secondLink);
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, millisecondsEnough), Diagnosis::ownedByOther);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(0, 5, 10, 10, 0), Diagnosis::ownedByOther);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 0), Diagnosis::ownedByOther);
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 0, 5, 10, 10, 0), Diagnosis::ok);
    QCOMPARE(statusOf(0).debugMode, std::uint8_t(1));
    QVERIFY(enableAxis(1));
    second.close();
    QTRY_COMPARE(host.peek(1).debugMode, std::uint8_t(0));
    QCOMPARE(host.peek(0).debugMode, std::uint8_t(1));
    ControllerLink::setActive(firstLink);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(0, 5, 10, 10, 0), Diagnosis::ok);
    first.close();
}

void ControllerConnectionTest::axesStopWhenTheirClientLeaves()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_JopPos(0, 1, 50, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(host.peek(0).setVelocity, 50.0);
    connection.close();
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).setVelocity, 0.0, 1000);
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).debugMode, std::uint8_t(0), 1000);
    QCOMPARE(host.peek(0).axisState, std::uint16_t(0));
}

void ControllerConnectionTest::stopGoesPastAHangingCall()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_JopPos(0, 1, 50, 1000, 1000, 0), Diagnosis::ok);
    host.fault("lost-replies 0 Reset");
    std::thread hanging([] {
        RpcCmdSend rpc;
        rpc.deadline = 3;
        rpc.rpc_AxisDebug_Reset(0);
    });
    QSignalSpy answered(&line, &StopLine::answered);
    QElapsedTimer timer;
    timer.start();
    line.stop();
    QVERIFY(answered.wait(2000));
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(answered.at(0).at(0).toBool(), true);
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::ok);
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).setVelocity, 0.0, 500);
    hanging.join();
}

void ControllerConnectionTest::stopHoldsUntilItIsReleased()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy held(&connection, &ControllerConnection::stopHeldChanged);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    line.stop();
    QTRY_COMPARE(held.count(), 1);
    QCOMPARE(held.at(0).at(0).toBool(), true);
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 1, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_MoveAbs(0, 5, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_SetHome(0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_SetVelRatio(0, 50), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetStop(0, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(0).axisState, std::uint16_t(3));
    // A client that comes later learns of it as well.
    ControllerConnection other;
    QSignalSpy otherHeld(&other, &ControllerConnection::stopHeldChanged);
    const std::shared_ptr<ControllerLink> link = ControllerLink::active();
    QVERIFY(connectTo(other, host.address()));
    QTRY_COMPARE(otherHeld.count(), 1);
    line.release();
    QTRY_COMPARE(held.count(), 2);
    QTRY_COMPARE(otherHeld.count(), 2);
    ControllerLink::setActive(link);
    QCOMPARE(rpc.rpc_AxisDebug_MoveAbs(0, 5, 5, 10, 10, 0), Diagnosis::ok);
}

void ControllerConnectionTest::stopWithoutAConnectionSaysSo()
{
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy answered(&line, &StopLine::answered);
    line.stop();
    QVERIFY(answered.wait(500));
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::notConnected);
}

void ControllerConnectionTest::samplerReadsCurves()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    sampler.setAxes({ 1, 9, 0 }, 5);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(1));
    RpcCmdSend().rpc_AxisDebug_JopNeg(1, 1, 50, 1000, 1000, 0);
    QTRY_VERIFY(sampled.count() > 20);
    const auto isFast = [&] {
        const auto samples = sampled.last().at(0).value<QVector<AxisSample>>();
        return samples.size() == 2 && samples.at(0).axisNo == 1 && samples.at(1).axisNo == 0
            && samples.at(0).setVelocity == -50 && samples.at(0).actualPosition < 0 && samples.at(1).setVelocity == 0;
    };
    QTRY_VERIFY(isFast());
    double time = -1;
    for (int i = 0; i < sampled.count(); ++i) {
        const auto samples = sampled.at(i).at(0).value<QVector<AxisSample>>();
        QVERIFY(samples.first().time >= time);
        time = samples.first().time;
    }
    sampler.setAxes({}, 5);
    QTest::qWait(50);
    const int before = sampled.count();
    QTest::qWait(100);
    QCOMPARE(sampled.count(), before);
}

void ControllerConnectionTest::samplingKeepsNoSessionAlive()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    sampler.setAxes({ 0 }, 5);
    QVERIFY(connectTo(connection, host.address()));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 1, 300), Diagnosis::ok);
    QCOMPARE(host.peek(0).debugMode, std::uint8_t(1));
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).debugMode, std::uint8_t(0), 2000);
}

void ControllerConnectionTest::closingCancelsWhatIsUnderWay()
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
    QVERIFY(timer.elapsed() < 500);
    QCOMPARE(result.load(), Diagnosis::notConnected);
}

void ControllerConnectionTest::openingAgainReplacesTheConnection()
{
    ControllerHost one;
    ControllerHost two;
    one.addAxes(1);
    two.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, one.address()));
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QSignalSpy closed(&connection, &ControllerConnection::closed);
    QVERIFY(connectTo(connection, two.address()));
    QVERIFY(enableAxis(0));
    QCOMPARE(two.peek(0).debugMode, std::uint8_t(1));
    QCOMPARE(one.peek(0).debugMode, std::uint8_t(0));
    QCOMPARE(lost.count() + closed.count(), 0);
}

void ControllerConnectionTest::destructionWhileConnectingIsQuick()
{
    // It takes connections and never says a word.
    QTcpServer mute;
    QVERIFY(mute.listen(QHostAddress::LocalHost));
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = mute.serverPort();
    address.token = "right";
    QElapsedTimer timer;
    {
        ControllerConnection connection;
        connection.open(address);
        QTest::qWait(100);
        timer.start();
    }
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

void ControllerConnectionTest::requestsAreObserved()
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

QTEST_GUILESS_MAIN(ControllerConnectionTest)
#include "ControllerConnectionTest.moc"
