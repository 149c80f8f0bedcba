#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerConnection.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/Transaction.h"
#include "tests/communication/RecordingController.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

namespace {
/// Holds the service's thread until it is let go.
class Hold : public Transaction {
public:
    Hold(QSemaphore& begun, QSemaphore& goOn) : m_begun(begun), m_goOn(goOn) { }

    void execute() override
    {
        m_begun.release();
        m_goOn.acquire();
    }

private:
    QSemaphore& m_begun;
    QSemaphore& m_goOn;
};
} // namespace

class StopLineTest : public QObject {
    Q_OBJECT

private slots:
    void stopAndReleaseGoOverTheWire();
    void stopDiscardsWhatWaitsBehindASlowCall();
    void releaseLeavesTheQueueAlone();
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

void StopLineTest::stopDiscardsWhatWaitsBehindASlowCall()
{
    QSemaphore begun;
    QSemaphore goOn;
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    const auto letGo = qScopeGuard([&goOn] { goOn.release(3); });
    for (int i = 0; i < 3; ++i)
        service.submitTransaction(new Hold(begun, goOn), true);
    begun.acquire();
    QCOMPARE(service.pending(), 3);
    line.stop();
    QCOMPARE(service.pending(), 1);
    goOn.release(3);
    QTRY_COMPARE(service.pending(), 0);
    QCOMPARE(begun.available(), 0);
}

void StopLineTest::releaseLeavesTheQueueAlone()
{
    QSemaphore begun;
    QSemaphore goOn;
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    const auto letGo = qScopeGuard([&goOn] { goOn.release(3); });
    for (int i = 0; i < 3; ++i)
        service.submitTransaction(new Hold(begun, goOn), true);
    begun.acquire();
    line.release();
    QCOMPARE(service.pending(), 3);
    goOn.release(3);
    QTRY_COMPARE(service.pending(), 0);
    QCOMPARE(begun.available(), 2);
}

QTEST_GUILESS_MAIN(StopLineTest)
#include "StopLineTest.moc"
