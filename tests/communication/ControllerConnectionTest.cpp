#include "host/communication/ControllerConnection.h"

#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/Promise.h"
#include "tests/communication/QuietRelay.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTcpServer>
#include <QtTest>

#include <atomic>
#include <thread>

class ControllerConnectionTest : public QObject {
    Q_OBJECT

private slots:
    void logsInAndOut();
    void refusesAWrongToken();
    void refusesAnotherVersion();
    void saysWhenNobodyAnswers();
    void refusesOtherHostsWithoutTls();
    void aCutLinkIsReportedOnceAndComesBack();
    void aRestartedControllerIsFoundQuickly();
    void aReplacedControllerIsRefused();
    void aSilentNetworkIsNoticedWithinTwoSeconds();
    void openingAgainReplacesTheConnection();
    void destructionWhileConnectingIsQuick();
    void aRefusedHandshakeIsARefusal();
    void aRefusedAttendanceIsALoss();
    void aLateAttendanceHoldsNothingUp();
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
    QVERIFY2(timer.elapsed() < silenceNoticedMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(lost.count(), 1);
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

void ControllerConnectionTest::aRefusedHandshakeIsARefusal()
{
    ControllerHost host;
    host.fault("refuse 77 Handshake");
    ControllerConnection connection;
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    connection.open(host.address());
    QVERIFY(failed.wait(5000));
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::refused);
    QVERIFY(failed.at(0).at(1).toString().contains(host.address().text()));
}

void ControllerConnectionTest::aRefusedAttendanceIsALoss()
{
    ControllerHost host;
    host.fault("refuse 77 Attend");
    ControllerConnection connection;
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QVERIFY(connectTo(connection, host.address()));
    QTRY_VERIFY(lost.count() >= 1);
    QVERIFY2(lost.at(0).at(0).toString().contains(QStringLiteral("77")), qPrintable(lost.at(0).at(0).toString()));
    // It tries again, but with rests.
    QTest::qWait(1000);
    QVERIFY2(lost.count() <= 12, qPrintable(QString::number(lost.count())));
    host.fault("none");
    // A login may just then be about to end with its refused attendance.
    QTRY_VERIFY_WITH_TIMEOUT(connection.isOpen() && !lost.wait(300), 6000);
}

void ControllerConnectionTest::aLateAttendanceHoldsNothingUp()
{
    ControllerHost host;
    host.addAxes(1);
    host.controller.stopAll(true);
    host.fault("late-replies 3000 Attend");
    ControllerConnection connection;
    QSignalSpy held(&connection, &ControllerConnection::stopHeldTold);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(connectTo(connection, host.address()));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 1, millisecondsEnough), Diagnosis::ok);
    QVERIFY(timer.elapsed() < 3000);
    QCOMPARE(held.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(held.count(), 1, 6000);
    QVERIFY2(timer.elapsed() >= 3000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(ControllerConnectionTest)
#include "ControllerConnectionTest.moc"
