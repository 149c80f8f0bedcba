#include "host/communication/BackgroundTransactionService.h"

#include "host/communication/RpcCmdSend.h"
#include "sdk/Transaction.h"
#include "tests/communication/FakeLink.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <set>
#include <thread>

namespace {
/// Does something and tells what became of it.
class Work : public Transaction {
    Q_OBJECT

public:
    explicit Work(std::function<void()> work) : m_work(std::move(work)) { }
    ~Work() override { emit destroyedOn(QThread::currentThread()); }

    void execute() override
    {
        m_work();
        emit done(RpcCmdSend().rpc_AxisDebug_Reset(1));
    }

signals:
    void done(qint16 result);
    void destroyedOn(QThread* thread);

private:
    std::function<void()> m_work;
};

/// What comes back, on the main thread.
class Receiver : public QObject {
    Q_OBJECT

public slots:
    void take(qint16 result)
    {
        results.append(result);
        threads.insert(QThread::currentThread());
    }

public:
    QVector<qint16> results;
    QSet<QThread*> threads;
};
} // namespace

class BackgroundTransactionServiceTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void runsInTheOrderOfSubmission();
    void runsOnOneThreadThatIsNotTheMainOne();
    void resultsArriveOnTheMainThread();
    void destroysWhereTheTransactionLives();
    void refusesWhatWaits();
    void shutdownCancelsWhatIsUnderWay();
    void shutdownWithoutAnythingIsQuick();
    void dropsWhatComesTooLate();
    void survivesAReceiverThatIsGone();
    void takesNothingForNothing();
    void carriesManyRequests();

private:
    std::shared_ptr<FakeLink> m_link;
};

void BackgroundTransactionServiceTest::init()
{
    m_link = std::make_shared<FakeLink>();
    ControllerLink::setActive(m_link);
}

void BackgroundTransactionServiceTest::cleanup()
{
    ControllerLink::setActive(nullptr);
}

void BackgroundTransactionServiceTest::runsInTheOrderOfSubmission()
{
    BackgroundTransactionService service;
    Receiver receiver;
    std::mutex mutex;
    std::vector<int> order;
    for (int i = 0; i < 200; ++i) {
        auto* work = new Work([&mutex, &order, i] {
            // Early ones take longer, so that a second worker would overtake them.
            if (i < 5)
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            const std::lock_guard<std::mutex> lock(mutex);
            order.push_back(i);
        });
        connect(work, &Work::done, &receiver, &Receiver::take);
        service.submitTransaction(work, true);
    }
    QTRY_COMPARE(receiver.results.size(), 200);
    QVERIFY(std::is_sorted(order.begin(), order.end()));
    QTRY_COMPARE(service.pending(), 0);
}

void BackgroundTransactionServiceTest::runsOnOneThreadThatIsNotTheMainOne()
{
    BackgroundTransactionService service;
    Receiver receiver;
    std::mutex mutex;
    std::set<std::thread::id> threads;
    for (int i = 0; i < 20; ++i) {
        auto* work = new Work([&] {
            const std::lock_guard<std::mutex> lock(mutex);
            threads.insert(std::this_thread::get_id());
        });
        connect(work, &Work::done, &receiver, &Receiver::take);
        service.submitTransaction(work, true);
    }
    QTRY_COMPARE(receiver.results.size(), 20);
    QCOMPARE(threads.size(), std::size_t(1));
    QVERIFY(threads.count(std::this_thread::get_id()) == 0);
}

void BackgroundTransactionServiceTest::resultsArriveOnTheMainThread()
{
    BackgroundTransactionService service;
    Receiver receiver;
    m_link->answerWith({ 42, {} });
    auto* work = new Work([] {});
    connect(work, &Work::done, &receiver, &Receiver::take);
    service.submitTransaction(work, true);
    QTRY_COMPARE(receiver.results, QVector<qint16>{ 42 });
    QCOMPARE(receiver.threads, QSet<QThread*>{ QThread::currentThread() });
}

void BackgroundTransactionServiceTest::destroysWhereTheTransactionLives()
{
    QVector<QThread*> threads;
    {
        BackgroundTransactionService service;
        for (int i = 0; i < 10; ++i) {
            auto* work = new Work([] {});
            connect(
                work, &Work::destroyedOn, this, [&threads](QThread* thread) { threads.append(thread); },
                Qt::DirectConnection);
            service.submitTransaction(work, true);
            if (i == 5)
                QTRY_COMPARE(threads.size(), 6);
        }
    }
    QCOMPARE(threads.size(), 10);
    for (QThread* thread : threads)
        QCOMPARE(thread, QThread::currentThread());
}

void BackgroundTransactionServiceTest::refusesWhatWaits()
{
    BackgroundTransactionService service;
    Receiver receiver;
    m_link->hang(true);
    for (int i = 0; i < 10; ++i) {
        auto* work = new Work([] {});
        connect(work, &Work::done, &receiver, &Receiver::take);
        service.submitTransaction(work, true);
    }
    QTRY_COMPARE(m_link->requests().size(), std::size_t(1));
    QCOMPARE(service.pending(), 10);
    service.refuseQueued(Diagnosis::emergencyStop);
    QCOMPARE(service.pending(), 10);
    m_link->hang(false);
    // Whoever waits for an answer gets one, though nothing has gone out.
    QTRY_COMPARE(receiver.results.size(), 10);
    QCOMPARE(receiver.results.first(), Diagnosis::ok);
    QCOMPARE(receiver.results.count(Diagnosis::emergencyStop), 9);
    QCOMPARE(m_link->requests().size(), std::size_t(1));
    auto* later = new Work([] {});
    connect(later, &Work::done, &receiver, &Receiver::take);
    service.submitTransaction(later, true);
    QTRY_COMPARE(receiver.results.size(), 11);
    QCOMPARE(receiver.results.last(), Diagnosis::ok);
    QCOMPARE(m_link->requests().size(), std::size_t(2));
}

void BackgroundTransactionServiceTest::shutdownCancelsWhatIsUnderWay()
{
    BackgroundTransactionService service;
    Receiver receiver;
    m_link->hang(true);
    int destroyed = 0;
    for (int i = 0; i < 3; ++i) {
        auto* work = new Work([] {});
        connect(work, &Work::done, &receiver, &Receiver::take);
        connect(work, &QObject::destroyed, this, [&destroyed] { ++destroyed; });
        service.submitTransaction(work, true);
    }
    QTRY_COMPARE(m_link->requests().size(), std::size_t(1));
    QElapsedTimer timer;
    timer.start();
    service.shutdown();
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(destroyed, 3);
    QTRY_COMPARE(receiver.results, QVector<qint16>{ Diagnosis::notConnected });
    QCOMPARE(m_link->requests().size(), std::size_t(1));
}

void BackgroundTransactionServiceTest::shutdownWithoutAnythingIsQuick()
{
    ControllerLink::setActive(nullptr);
    QElapsedTimer timer;
    timer.start();
    {
        BackgroundTransactionService service;
        service.shutdown();
        service.shutdown();
    }
    QVERIFY(timer.elapsed() < 500);
}

void BackgroundTransactionServiceTest::dropsWhatComesTooLate()
{
    BackgroundTransactionService service;
    QSignalSpy dropped(&service, &BackgroundTransactionService::dropped);
    service.shutdown();
    int destroyed = 0;
    bool ran = false;
    for (const bool report : { true, false }) {
        auto* work = new Work([&ran] { ran = true; });
        connect(work, &QObject::destroyed, this, [&destroyed] { ++destroyed; });
        service.submitTransaction(work, report);
    }
    QCOMPARE(destroyed, 2);
    QCOMPARE(dropped.count(), 1);
    QVERIFY(!ran);
}

void BackgroundTransactionServiceTest::survivesAReceiverThatIsGone()
{
    BackgroundTransactionService service;
    m_link->hang(true);
    int destroyed = 0;
    {
        Receiver receiver;
        auto* work = new Work([] {});
        connect(work, &Work::done, &receiver, &Receiver::take);
        connect(work, &QObject::destroyed, this, [&destroyed] { ++destroyed; });
        service.submitTransaction(work, true);
        QTRY_COMPARE(m_link->requests().size(), std::size_t(1));
    }
    m_link->hang(false);
    QTRY_COMPARE(destroyed, 1);
}

void BackgroundTransactionServiceTest::takesNothingForNothing()
{
    BackgroundTransactionService service;
    service.submitTransaction(nullptr, true);
    QCOMPARE(service.pending(), 0);
}

void BackgroundTransactionServiceTest::carriesManyRequests()
{
    BackgroundTransactionService service;
    Receiver receiver;
    for (int round = 0; round < 50; ++round) {
        for (int i = 0; i < 40; ++i) {
            auto* work = new Work([] {});
            connect(work, &Work::done, &receiver, &Receiver::take);
            service.submitTransaction(work, true);
        }
        QTRY_COMPARE(receiver.results.size(), 40 * (round + 1));
    }
    QCOMPARE(m_link->requests().size(), std::size_t(2000));
}

QTEST_GUILESS_MAIN(BackgroundTransactionServiceTest)
#include "BackgroundTransactionServiceTest.moc"
