#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/Transaction.h"
#include "tests/communication/ControllerClient.h"

#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace {
/// Transactions that hold the service's thread until they are let go, and note what their requests would come to.
class Queue {
public:
    explicit Queue(BackgroundTransactionService& service)
    {
        for (int i = 0; i < 3; ++i)
            service.submitTransaction(new Hold(*this), true);
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_refusals.size() == 1; });
    }

    ~Queue() { letGo(); }

    void letGo()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free = true;
        m_changed.notify_all();
    }

    /// The refusal, 0 for none, under which each has run.
    std::vector<short> refusals()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_refusals;
    }

private:
    class Hold : public Transaction {
    public:
        explicit Hold(Queue& queue) : m_queue(queue) { }

        void execute() override
        {
            std::unique_lock<std::mutex> lock(m_queue.m_mutex);
            m_queue.m_refusals.push_back(ControllerLink::Refusal::present());
            m_queue.m_changed.notify_all();
            m_queue.m_changed.wait(lock, [this] { return m_queue.m_free; });
        }

    private:
        Queue& m_queue;
    };

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<short> m_refusals;
    bool m_free = false;
};

/// One request, as a page has it made in the background.
class Request : public Transaction {
    Q_OBJECT

public:
    enum Kind { Hang, Status, Move };
    explicit Request(Kind kind) : m_kind(kind) { }

    void execute() override
    {
        RpcCmdSend rpc;
        switch (m_kind) {
        case Hang:
            rpc.deadline = 2;
            emit done(rpc.rpc_AxisDebug_Reset(0));
            break;
        case Status:
            emit read(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize));
            break;
        case Move:
            emit done(rpc.rpc_AxisDebug_MoveVel(0, 10, 1000, 1000, 0));
            break;
        }
    }

signals:
    void done(qint16 result);
    void read(const QByteArray& data);

private:
    Kind m_kind;
};

/// Submits a request whose answer is lost and waits until it is no longer queued.
bool hangs(BackgroundTransactionService& service, Request* request)
{
    std::atomic<bool> out{ false };
    const std::shared_ptr<const ControllerLink::Announcer> former = ControllerLink::announcer();
    ControllerLink::setAnnouncer([&out](const AxisRequest&) { out = true; });
    service.submitTransaction(request, true);
    const bool done = QTest::qWaitFor([&out] { return out.load(); });
    ControllerLink::setAnnouncer(former ? *former : ControllerLink::Announcer());
    return done;
}

} // namespace

/// What becomes of the commands that wait in the background when the emergency stop is pressed.
class StopLineQueueTest : public QObject {
    Q_OBJECT

private slots:
    void stopRefusesWhatWaitsBehindASlowCall();
    void releaseLeavesTheQueueAlone();
    void whatWaitsEndsWithAResult();
};

void StopLineQueueTest::stopRefusesWhatWaitsBehindASlowCall()
{
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    Queue queue(service);
    line.stop();
    queue.letGo();
    QTRY_COMPARE(service.pending(), 0);
    QCOMPARE(queue.refusals(), (std::vector<short>{ 0, Diagnosis::emergencyStop, Diagnosis::emergencyStop }));
}

void StopLineQueueTest::releaseLeavesTheQueueAlone()
{
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    Queue queue(service);
    line.release();
    queue.letGo();
    QTRY_COMPARE(service.pending(), 0);
    QCOMPARE(queue.refusals(), (std::vector<short>{ 0, 0, 0 }));
}

void StopLineQueueTest::whatWaitsEndsWithAResult()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    BackgroundTransactionService service;
    StopLine line(&connection, &service);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(0));
    host.fault("lost-replies 1 Reset");
    QStringList ended;
    const auto make = [&](Request::Kind kind) {
        auto* request = new Request(kind);
        connect(request, &Request::done, this, [&ended, kind](qint16 result) {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            ended.append(QStringLiteral("%1:%2").arg(kind).arg(result));
        });
        connect(request, &Request::read, this,
            [&ended](const QByteArray& data) { ended.append(QStringLiteral("status:%1").arg(data.size())); });
        return request;
    };
    const auto submit = [&](Request::Kind kind) { service.submitTransaction(make(kind), true); };
    QVERIFY(hangs(service, make(Request::Hang)));
    submit(Request::Status);
    submit(Request::Move);
    submit(Request::Status);
    QSignalSpy answered(&line, &StopLine::answered);
    line.stop();
    QVERIFY(answered.wait(2000));
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::ok);
    QVERIFY2(ended.isEmpty(), "the stop passes the call that hangs");
    // Released at once, a command that went out late would move the axis.
    line.release();
    QVERIFY(answered.wait(2000));
    submit(Request::Status);
    const QStringList expected{ QStringLiteral("0:%1").arg(Diagnosis::noAnswer), QStringLiteral("status:0"),
        QStringLiteral("2:%1").arg(Diagnosis::emergencyStop), QStringLiteral("status:0"),
        QStringLiteral("status:%1").arg(axisRefSize) };
    QTRY_COMPARE_WITH_TIMEOUT(ended, expected, 5000);
    QCOMPARE(host.peek(0).axisState, std::uint16_t(3));
    QCOMPARE(host.peek(0).setPosition, 0.0);
}

QTEST_GUILESS_MAIN(StopLineQueueTest)
#include "StopLineQueueTest.moc"
