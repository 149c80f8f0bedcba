#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/Transaction.h"
#include "tests/communication/RecordingController.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

namespace {
/// Asks something once it is let go, and tells with what result.
class Ask : public Transaction {
    Q_OBJECT

public:
    Ask(QSemaphore& begun, QSemaphore& goOn) : m_begun(begun), m_goOn(goOn) { }

    void execute() override
    {
        m_begun.release();
        m_goOn.acquire();
        emit done(RpcCmdSend().rpc_AxisDebug_Reset(1));
    }

signals:
    void done(qint16 result);

private:
    QSemaphore& m_begun;
    QSemaphore& m_goOn;
};
} // namespace

class StopLineTest : public QObject {
    Q_OBJECT

private slots:
    void stopAndReleaseGoOverTheWire();
    void whatWaitsBehindASlowCallIsRefused_data();
    void whatWaitsBehindASlowCallIsRefused();
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
    controller.answerWith(4711);
    line.stop();
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(answered.at(2).at(1).value<short>(), short(4711));
}

void StopLineTest::whatWaitsBehindASlowCallIsRefused_data()
{
    QTest::addColumn<bool>("stop");
    QTest::addColumn<QVector<qint16>>("results");
    const qint16 out = Diagnosis::notConnected;
    const qint16 refused = Diagnosis::emergencyStop;
    QTest::newRow("after a stop") << true << QVector<qint16>{ out, refused, refused, out };
    QTest::newRow("not after a release") << false << QVector<qint16>{ out, out, out, out };
}

void StopLineTest::whatWaitsBehindASlowCallIsRefused()
{
    QFETCH(bool, stop);
    QSemaphore begun;
    QSemaphore goOn;
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    const auto letGo = qScopeGuard([&goOn] { goOn.release(4); });
    QVector<qint16> results;
    const auto submit = [&] {
        auto* ask = new Ask(begun, goOn);
        connect(ask, &Ask::done, this, [&results](qint16 result) { results.append(result); });
        service.submitTransaction(ask, true);
    };
    for (int i = 0; i < 3; ++i)
        submit();
    begun.acquire();
    if (stop)
        line.stop();
    else
        line.release();
    // What comes later is the controller's to refuse.
    submit();
    goOn.release(4);
    QTRY_COMPARE(results.size(), 4);
    QTEST(results, "results");
}

QTEST_GUILESS_MAIN(StopLineTest)
#include "StopLineTest.moc"
