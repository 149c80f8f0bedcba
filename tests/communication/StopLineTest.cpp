#include "host/communication/StopLine.h"

#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/QuietRelay.h"
#include "tests/communication/RecordingController.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <thread>
#include <vector>

namespace {
/// A line on an open connection.
struct LinkedLine {
    ControllerHost host;
    ControllerConnection connection;
    const bool isConnected = connectTo(connection, host.address());
    StopLine line{ &connection, nullptr };
    QSignalSpy answered{ &line, &StopLine::answered };

    /// A stop with its answer, which is forgotten.
    bool stopsFirst()
    {
        line.stop();
        const bool done = QTest::qWaitFor([this] { return answered.count() == 1; }, 2000);
        answered.clear();
        return done;
    }
};
} // namespace

class StopLineTest : public QObject {
    Q_OBJECT

private slots:
    void stopAndReleaseGoOverTheWire();
    void stopGoesPastAHangingCall();
    void stopHoldsUntilItIsReleased();
    void stopWithoutAConnectionSaysSo();
    void answersKeepTheirOrderWithoutAConnection();
    void stopWorksAfterAReconnection();
    void stopGoesOutWhileTheSessionsLinkIsLost();
    void stopNeedsNoFileThatTheLoginHasRead();
    void aLineMadeOnAnOpenConnectionWorks();
    void releasesThatWaitHoldUpNoStop();
    void releasesDoNotHoldUpTheEnd_data();
    void releasesDoNotHoldUpTheEnd();
    void aStopWhoseAnswerIsLateHoldsUpNoStop();
    void whatBringsAnAxisToRestIsNotRefused();
    void aReleaseTellsWhichStopItHasSeen();
    void everyStopAndReleaseIsTold();
};

void StopLineTest::stopAndReleaseGoOverTheWire()
{
    RecordingController controller;
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    connection.open(controller.address());
    QVERIFY(opened.wait(5000));
    QSignalSpy answered(&line, &StopLine::answered);
    line.stop();
    line.release();
    QTRY_COMPARE(answered.count(), 2);
    QCOMPARE(answered.at(0).at(0).toBool(), true);
    QCOMPARE(answered.at(1).at(0).toBool(), false);
    const std::vector<WireCall> calls = controller.calls();
    QCOMPARE(calls.size(), std::size_t(2));
    for (const WireCall& call : calls) {
        QCOMPARE(call.method, std::string("StopAll"));
        QCOMPARE(call.session, controller.session());
    }
    QCOMPARE(calls.at(0).value, 1);
    QCOMPARE(calls.at(1).value, 0);
    QVERIFY(calls.at(0).number > 0);
    QVERIFY2(calls.at(1).number > calls.at(0).number, "the controller can tell which came last");
    controller.answerWith(4711);
    line.stop();
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(answered.at(2).at(1).value<short>(), short(4711));
}

void StopLineTest::stopGoesPastAHangingCall()
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
    QVERIFY(answered.wait(5000));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(answered.at(0).at(0).toBool(), true);
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::ok);
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).setVelocity, 0.0, 2000);
    hanging.join();
}

void StopLineTest::stopHoldsUntilItIsReleased()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy held(&connection, &ControllerConnection::stopHeldTold);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    QTRY_COMPARE(held.count(), 1);
    QCOMPARE(held.at(0).at(0).toBool(), false);
    line.stop();
    QTRY_COMPARE(held.count(), 2);
    QCOMPARE(held.at(1).at(0).toBool(), true);
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 1, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_MoveAbs(0, 5, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_SetHome(0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_SetVelRatio(0, 50), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetStop(0, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(statusOf(0).axisState, std::uint16_t(3));
    // A client that comes later learns of it as well.
    ControllerConnection other;
    QSignalSpy otherHeld(&other, &ControllerConnection::stopHeldTold);
    const std::shared_ptr<ControllerLink> link = ControllerLink::active();
    QVERIFY(connectTo(other, host.address()));
    QTRY_COMPARE(otherHeld.count(), 1);
    QCOMPARE(otherHeld.at(0).at(0).toBool(), true);
    line.release();
    QTRY_COMPARE(held.count(), 3);
    QTRY_COMPARE(otherHeld.count(), 2);
    ControllerLink::setActive(link);
    QCOMPARE(rpc.rpc_AxisDebug_MoveAbs(0, 5, 5, 10, 10, 0), Diagnosis::ok);
}

void StopLineTest::stopWithoutAConnectionSaysSo()
{
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy answered(&line, &StopLine::answered);
    line.stop();
    QVERIFY(answered.wait(5000));
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::notConnected);
}

void StopLineTest::answersKeepTheirOrderWithoutAConnection()
{
    LinkedLine on;
    QVERIFY(on.isConnected && on.stopsFirst());
    on.host.fault("late-replies 500 StopAll");
    on.line.release();
    QTRY_VERIFY(!on.host.controller.isStopHeld());
    on.connection.close();
    on.line.stop();
    QTRY_COMPARE_WITH_TIMEOUT(on.answered.count(), 2, 3000);
    QCOMPARE(on.answered.at(0).at(0).toBool(), false);
    QCOMPARE(on.answered.at(1).at(0).toBool(), true);
    QCOMPARE(on.answered.at(1).at(1).value<short>(), Diagnosis::notConnected);
}

void StopLineTest::stopWorksAfterAReconnection()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QVERIFY(connectTo(connection, host.address()));
    QSignalSpy answered(&line, &StopLine::answered);
    line.stop();
    QVERIFY(answered.wait(2000));
    line.release();
    QVERIFY(answered.wait(2000));
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    host.fault("drop-link");
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, 3000);
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 5000);
    // The session is another one now, and the channel has been made anew.
    QTRY_VERIFY_WITH_TIMEOUT(enableAxis(0), 3000);
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_JopPos(0, 1, 50, 1000, 1000, 0), Diagnosis::ok);
    QTRY_COMPARE(host.peek(0).setVelocity, 50.0);
    QElapsedTimer timer;
    timer.start();
    line.stop();
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(answered.at(2).at(0).toBool(), true);
    QCOMPARE(answered.at(2).at(1).value<short>(), Diagnosis::ok);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).setVelocity, 0.0, 500);
    QVERIFY(host.controller.isStopHeld());
}

void StopLineTest::stopGoesOutWhileTheSessionsLinkIsLost()
{
    ControllerHost host;
    QuietRelay relay(host.server->port());
    ControllerAddress address = host.address();
    address.port = relay.port();
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    QSignalSpy answered(&line, &StopLine::answered);
    QSignalSpy told(&connection, &ControllerConnection::stopHeldTold);
    QVERIFY(connectTo(connection, address));
    QTRY_COMPARE(told.count(), 1);
    line.release();
    QTRY_COMPARE(answered.count(), 1);
    // No way back until the stop is answered.
    relay.pauseAccepting();
    relay.hangUpOnFirst();
    while (lost.isEmpty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    line.stop();
    QVERIFY(!connection.isOpen());
    QTRY_COMPARE(answered.count(), 2);
    QCOMPARE(answered.at(1).at(1).value<short>(), Diagnosis::ok);
    QVERIFY(host.controller.isStopHeld());
    // After a farewell there is no session to speak in.
    connection.close();
    line.stop();
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(answered.at(2).at(1).value<short>(), Diagnosis::notConnected);
}

void StopLineTest::stopNeedsNoFileThatTheLoginHasRead()
{
    QTemporaryDir directory;
    const auto file = [&directory](const char* name) { return directory.filePath(QString::fromLatin1(name)); };
    QCOMPARE(QProcess::execute(QStringLiteral(KESTRUN_SOURCE_DIR "/scripts/make-certificates"),
                 { directory.path(), QStringLiteral("localhost"), QStringLiteral("127.0.0.1") }),
        0);
    MotionController controller({});
    controller.start();
    ServerOptions options;
    options.authorityFile = file("authority.pem").toStdString();
    options.certificateFile = file("controller.pem").toStdString();
    options.keyFile = file("controller.key").toStdString();
    ControllerServer server(&controller, options);
    std::string error;
    QVERIFY2(server.start(&error), error.c_str());
    QuietRelay relay(server.port());
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = relay.port();
    address.authorityFile = file("authority.pem");
    address.certificateFile = file("workbench.pem");
    address.keyFile = file("workbench.key");
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy answered(&line, &StopLine::answered);
    QSignalSpy told(&connection, &ControllerConnection::stopHeldTold);
    QVERIFY(connectTo(connection, address));
    // Before its stream is there a session outlives a cut.
    QTRY_COMPARE(told.count(), 1);
    QVERIFY(QFile::remove(file("workbench.key")));
    relay.cut();
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 2, 5000);
    line.stop();
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::ok);
    QVERIFY(controller.isStopHeld());
    connection.close();
    server.shutdown();
    controller.shutdown();
}

void StopLineTest::aLineMadeOnAnOpenConnectionWorks()
{
    LinkedLine on;
    QVERIFY(on.isConnected);
    on.line.stop();
    QTRY_COMPARE_WITH_TIMEOUT(on.answered.count(), 1, 2000);
    on.line.stop();
    QTRY_COMPARE_WITH_TIMEOUT(on.answered.count(), 2, 2000);
    for (const auto& answer : on.answered)
        QCOMPARE(answer.at(1).value<short>(), Diagnosis::ok);
    QVERIFY(on.host.controller.isStopHeld());
}

void StopLineTest::aStopWhoseAnswerIsLateHoldsUpNoStop()
{
    LinkedLine on;
    QVERIFY(on.isConnected);
    on.host.fault("late-replies 900 StopAll");
    on.line.stop();
    QTRY_VERIFY(on.host.controller.isStopHeld());
    on.host.controller.stopAll(false);
    on.host.fault("none");
    QElapsedTimer timer;
    timer.start();
    on.line.stop();
    QTRY_VERIFY_WITH_TIMEOUT(on.host.controller.isStopHeld(), 800);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE_WITH_TIMEOUT(on.answered.count(), 2, 2000);
    QCOMPARE(on.answered.at(0).at(1).value<short>(), Diagnosis::notConnected);
    QCOMPARE(on.answered.at(1).at(1).value<short>(), Diagnosis::ok);
}

void StopLineTest::whatBringsAnAxisToRestIsNotRefused()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    const ControllerLink::Refusal refusal(Diagnosis::emergencyStop);
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 1, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_JopNeg(0, 1, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(0, 5, 10, 10, 0), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 1), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, 1000), Diagnosis::emergencyStop);
    QCOMPARE(rpc.rpc_AxisDebug_JopPos(0, 0, 5, 10, 10, 0), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_JopNeg(0, 0, 5, 10, 10, 0), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetStop(0, 1000, 0), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 0), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 0, 1000), Diagnosis::ok);
}

void StopLineTest::aReleaseTellsWhichStopItHasSeen()
{
    ControllerHost host;
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    StopLine line(&connection, nullptr);
    host.controller.stopAll(true);
    QTRY_COMPARE(connection.stopRevision(), quint64(host.controller.stopRevision()));
    // Before the news of the second stop has come.
    host.controller.stopAll(true);
    QSignalSpy answered(&line, &StopLine::answered);
    line.release();
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::emergencyStop);
    QCOMPARE(answered.at(0).at(2).toULongLong(), quint64(0));
    QVERIFY(host.controller.isStopHeld());
    QTRY_COMPARE(connection.stopRevision(), quint64(host.controller.stopRevision()));
    line.release();
    QTRY_COMPARE(answered.count(), 2);
    QCOMPARE(answered.at(1).at(1).value<short>(), Diagnosis::ok);
    QCOMPARE(answered.at(1).at(2).toULongLong(), quint64(host.controller.stopRevision()));
}

void StopLineTest::everyStopAndReleaseIsTold()
{
    ControllerHost host;
    ControllerConnection connection;
    QSignalSpy told(&connection, &ControllerConnection::stopHeldTold);
    host.controller.stopAll(false);
    QVERIFY(connectTo(connection, host.address()));
    QTRY_COMPARE(told.count(), 1);
    QVERIFY2(!told.wait(200), "once after the login");
    told.clear();
    // Both within one look at the controller.
    host.controller.stopAll(true);
    host.controller.stopAll(false);
    QTRY_VERIFY(!told.isEmpty());
    QTRY_COMPARE(told.last().at(0).toBool(), false);
    told.clear();
    host.controller.stopAll(true);
    QTRY_VERIFY(!told.isEmpty() && told.last().at(0).toBool());
    told.clear();
    host.controller.stopAll(true);
    QTRY_COMPARE(told.count(), 1);
    QCOMPARE(told.last().at(0).toBool(), true);
}

void StopLineTest::releasesThatWaitHoldUpNoStop()
{
    LinkedLine on;
    QVERIFY(on.isConnected && on.stopsFirst());
    on.host.fault("late-replies 900 StopAll");
    on.line.release();
    QTRY_VERIFY(!on.host.controller.isStopHeld());
    on.line.release();
    on.line.release();
    // The first has its delay already; the stop is to be answered before its deadline.
    on.host.fault("none");
    QElapsedTimer timer;
    timer.start();
    on.line.stop();
    QTRY_VERIFY_WITH_TIMEOUT(on.host.controller.isStopHeld(), 800);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE_WITH_TIMEOUT(on.answered.count(), 4, 2000);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(on.answered.at(i).at(0).toBool(), false);
        QVERIFY(on.answered.at(i).at(1).value<short>() != Diagnosis::ok);
    }
    // The first was on its way, the others never went out.
    QCOMPARE(on.answered.at(0).at(1).value<short>(), Diagnosis::notConnected);
    QCOMPARE(on.answered.at(1).at(1).value<short>(), Diagnosis::emergencyStop);
    QCOMPARE(on.answered.at(2).at(1).value<short>(), Diagnosis::emergencyStop);
    QCOMPARE(on.answered.at(3).at(1).value<short>(), Diagnosis::ok);
    QVERIFY(on.host.controller.isStopHeld());
}

void StopLineTest::releasesDoNotHoldUpTheEnd_data()
{
    QTest::addColumn<bool>("destroyed");
    QTest::newRow("of the connection") << false;
    QTest::newRow("of the line") << true;
}

/// Neither the one that is under way nor those that wait.
void StopLineTest::releasesDoNotHoldUpTheEnd()
{
    QFETCH(bool, destroyed);
    ControllerHost host;
    ControllerConnection connection;
    QVERIFY(connectTo(connection, host.address()));
    auto line = std::make_unique<StopLine>(&connection, nullptr);
    host.controller.stopAll(true);
    host.fault("lost-replies 0 StopAll");
    line->release();
    QTRY_VERIFY(!host.controller.isStopHeld());
    for (int i = 0; i < 5; ++i)
        line->release();
    QSignalSpy answered(line.get(), &StopLine::answered);
    QElapsedTimer timer;
    timer.start();
    if (destroyed) {
        line.reset();
    } else {
        connection.close();
        QTRY_COMPARE(answered.count(), 6);
    }
    QVERIFY2(timer.elapsed() < 700, qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(StopLineTest)
#include "StopLineTest.moc"
