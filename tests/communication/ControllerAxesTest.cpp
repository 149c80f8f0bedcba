#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/QuietRelay.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <thread>

namespace {

/// Into debug mode and enabled, without a turn of the thread's events.
bool enableFrom(short axisNo)
{
    RpcCmdSend rpc;
    const bool entered
        = rpc.rpc_AxisDebug_EnterDebugMode(axisNo, 1, 32767) == 0 && rpc.rpc_AxisDebug_SetEnable(axisNo, 1) == 0;
    while (entered && statusOf(axisNo).axisState != 3) { }
    return entered;
}

} // namespace

class ControllerAxesTest : public QObject {
    Q_OBJECT

private slots:
    void axesGoThereAndComeBack();
    void anUnsoundDownloadIsRefusedWhole();
    void downloadIsRefusedWhileAnAxisIsEnabled();
    void twoClientsDoNotDisturbEachOther();
    void axesStopWhenTheirClientLeaves();
    void aClientThatIsBackIsNotInItsOwnWay();
    void axesThatAnotherReplacesAreTold();
    void whatOneDoesOneselfIsNoNews_data();
    void whatOneDoesOneselfIsNoNews();
    void aReplacementOnTheWayIsToldAtItsEnd();
    void requestsThatWaitDoNotHoldTheEndUp_data();
    void requestsThatWaitDoNotHoldTheEndUp();
};

void ControllerAxesTest::axesGoThereAndComeBack()
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

void ControllerAxesTest::anUnsoundDownloadIsRefusedWhole()
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

void ControllerAxesTest::downloadIsRefusedWhileAnAxisIsEnabled()
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

void ControllerAxesTest::twoClientsDoNotDisturbEachOther()
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

void ControllerAxesTest::axesStopWhenTheirClientLeaves()
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

void ControllerAxesTest::aClientThatIsBackIsNotInItsOwnWay()
{
    ControllerHost host;
    host.addAxes(3);
    // Another client, which has an axis of its own.
    const SessionId other = 4711;
    QCOMPARE(host.controller.enterDebugMode(other, 1, 1, 30000), Diagnosis::ok);
    QuietRelay relay(host.server->port());
    ControllerAddress address = host.address();
    address.port = relay.port();
    ControllerConnection connection;
    QVERIFY(connectTo(connection, address));
    // The calls block, and the relay lives on this thread.
    std::atomic<bool> jogging{ false };
    std::thread caller(
        [&jogging] { jogging = enableFrom(0) && RpcCmdSend().rpc_AxisDebug_JopPos(0, 1, 20, 1000, 1000, 0) == 0; });
    QTRY_VERIFY_WITH_TIMEOUT(jogging.load(), 5000);
    caller.join();
    QTRY_COMPARE(host.peek(0).setVelocity, 20.0);
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QElapsedTimer timer;
    timer.start();
    relay.hangUp();
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 3000);
    // The controller, which has heard nothing of the cut, has ended the former session with the login.
    QTRY_COMPARE(host.peek(0).debugMode, std::uint8_t(0));
    QCOMPARE(host.peek(0).setVelocity, 0.0);
    QVERIFY2(timer.elapsed() < 1250, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(host.peek(1).debugMode, std::uint8_t(1));
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    const auto outcome = [&connection, &downloaded] {
        downloaded.clear();
        connection.downloadAxes({ makeControllerAxis(0) });
        downloaded.wait(5000);
        return downloaded.value(0).value(0).value<DownloadOutcome>();
    };
    QCOMPARE(outcome().result, Diagnosis::ownedByOther);
    QCOMPARE(outcome().axis, QStringLiteral("Axis1"));
    host.controller.endSession(other);
    QTRY_COMPARE(host.peek(1).debugMode, std::uint8_t(0));
    QCOMPARE(outcome().result, Diagnosis::ok);
}

void ControllerAxesTest::axesThatAnotherReplacesAreTold()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection first;
    ControllerConnection second;
    QVERIFY(connectTo(first, host.address()));
    QVERIFY(connectTo(second, host.address()));
    QSignalSpy replaced(&first, &ControllerConnection::axesReplaced);
    QSignalSpy read(&first, &ControllerConnection::axesRead);
    QSignalSpy downloaded(&second, &ControllerConnection::axesDownloaded);
    const auto replace = [&second, &downloaded](const char* velocity) {
        downloaded.clear();
        second.downloadAxes({ makeControllerAxis(0, { { "MaxVel", velocity } }) });
        return downloaded.wait(5000) && downloaded.at(0).at(0).value<DownloadOutcome>().result == Diagnosis::ok;
    };
    // Who has not looked yet knows nothing that could become stale.
    QVERIFY(replace("70"));
    QVERIFY(!replaced.wait(150));
    first.readAxes();
    QVERIFY(read.wait(5000));
    QVERIFY(!replaced.wait(150));
    QVERIFY(replace("71"));
    QTRY_COMPARE_WITH_TIMEOUT(replaced.count(), 1, 1000);
    QVERIFY(!replace("fast"));
    QVERIFY(!replaced.wait(150));
    QVERIFY(replace("72"));
    QTRY_COMPARE_WITH_TIMEOUT(replaced.count(), 2, 1000);
    // A controller that has been started anew counts anew.
    QSignalSpy opened(&first, &ControllerConnection::opened);
    host.fault("drop-link");
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 5000);
    QVERIFY(!replaced.wait(150));
    QCOMPARE(replaced.count(), 2);
}

void ControllerAxesTest::whatOneDoesOneselfIsNoNews_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("the answer at once") << QStringLiteral("none");
    QTest::newRow("the news before the answer") << QStringLiteral("late-replies 300 DownloadAxes");
}

void ControllerAxesTest::whatOneDoesOneselfIsNoNews()
{
    QFETCH(QString, fault);
    ControllerHost host;
    host.fault(fault.toLatin1().constData());
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy replaced(&connection, &ControllerConnection::axesReplaced);
    QSignalSpy read(&connection, &ControllerConnection::axesRead);
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    connection.readAxes();
    QVERIFY(read.wait(5000));
    connection.downloadAxes({ makeControllerAxis(0) });
    QVERIFY(downloaded.wait(5000));
    QCOMPARE(downloaded.at(0).at(0).value<DownloadOutcome>().revision, quint64(host.controller.axesRevision()));
    QVERIFY(!replaced.wait(200));
    QCOMPARE(replaced.count(), 0);
}

void ControllerAxesTest::aReplacementOnTheWayIsToldAtItsEnd()
{
    ControllerHost host;
    host.fault("late-replies 2000 DownloadAxes");
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy replaced(&connection, &ControllerConnection::axesReplaced);
    QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
    connection.downloadAxes({ makeControllerAxis(0) });
    QTRY_COMPARE(host.controller.axes().size(), std::size_t(1));
    // Somebody else is a moment later, while the answer is on its way.
    QCOMPARE(host.controller.download({ makeAxisText(0), makeAxisText(1) }).code, Diagnosis::ok);
    QTRY_COMPARE(downloaded.count(), 1);
    QTRY_COMPARE(replaced.count(), 1);
}

void ControllerAxesTest::requestsThatWaitDoNotHoldTheEndUp_data()
{
    QTest::addColumn<int>("end");
    QTest::newRow("closed") << 0;
    QTest::newRow("opened elsewhere") << 1;
    QTest::newRow("destroyed") << 2;
}

void ControllerAxesTest::requestsThatWaitDoNotHoldTheEndUp()
{
    QFETCH(int, end);
    ControllerHost other;
    ControllerHost host;
    host.addAxes(1);
    auto connection = std::make_unique<ControllerConnection>();
    QVERIFY(connectTo(*connection, host.address()));
    QVERIFY(enableFrom(0));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::ok);
    QTRY_COMPARE(host.peek(0).setVelocity, 5.0);
    host.fault("late-replies 20000 DownloadAxes");
    host.fault("late-replies 20000 ReadAxes");
    connection->downloadAxes({ makeControllerAxis(0) });
    connection->readAxes();
    connection->downloadAxes({ makeControllerAxis(0) });
    // The first is under way, the others wait behind it.
    QTest::qWait(100);
    QElapsedTimer timer;
    timer.start();
    if (end == 0)
        connection->close();
    else if (end == 1)
        connection->open(other.address());
    else
        connection.reset();
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).setVelocity, 0.0, 5000);
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).debugMode, std::uint8_t(0), 5000);
    // What comes next does not wait for them either.
    if (end == 1) {
        QTRY_VERIFY(connection->isOpen());
        QSignalSpy read(connection.get(), &ControllerConnection::axesRead);
        connection->readAxes();
        QVERIFY(read.wait(1000));
        QCOMPARE(read.at(0).at(0).value<short>(), Diagnosis::ok);
    }
}

QTEST_GUILESS_MAIN(ControllerAxesTest)
#include "ControllerAxesTest.moc"
