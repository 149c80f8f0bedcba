#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerLink.h"
#include "online/MotionControlDebugInstance.h"
#include "sdk/AxisDebugParams.h"
#include "sdk/IApplication.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "tests/communication/FakeLink.h"
#include "workbench/online/RequestTap.h"

#include <QThread>
#include <QtTest>

#include <atomic>
#include <thread>

namespace {

/// As much of a host as a request needs.
class Settings : public IConfiguration {
public:
    void setValue(const QString&, const QVariant&) override { }
    QVariant value(const QString&, const QVariant& fallback) const override { return fallback; }
};

class Host : public IApplication {
public:
    Host()
    {
        objectTable.insert(Solution::ServiceKey::settings(), &m_settings);
        Solution::publishApplication(this);
    }
    ~Host() override { Solution::publishApplication(nullptr); }
    IManager* manager(const QString&) override { return nullptr; }

private:
    Settings m_settings;
};

/// What a page takes of its answers.
class Page : public QObject {
    Q_OBJECT

public:
    int statuses = 0;
    int results = 0;
    bool onItsThread = true;

public slots:
    void axisDebugGetAxisRef(const QByteArray&) { note(&statuses); }
    void axisDebugKeepAlive(qint16) { note(&results); }
    void axisDebugSetEnable(qint16) { note(&results); }
    void axisDebugMoveAbs(qint16) { note(&results); }

private:
    void note(int* count)
    {
        ++*count;
        onItsThread = onItsThread && QThread::currentThread() == thread();
    }
};

constexpr int rounds = 50;

} // namespace

/// The whole way of a page's requests over the real threads, without a network: the transaction is made here, carried
/// out on the service's thread, watched by the tap, answered and destroyed here.
class OnlineRequestThreadsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyAnswerComesBack();
    void linksMayChangeMeanwhile();
    void pagesMayGoMeanwhile();
    void theServiceMayEndMeanwhile();

private:
    void submitRound(QObject* page);

    Host m_host;
    MotionControlDebugInstance m_debug;
    std::unique_ptr<BackgroundTransactionService> m_service;
    std::shared_ptr<FakeLink> m_link;
};

void OnlineRequestThreadsTest::init()
{
    m_service = std::make_unique<BackgroundTransactionService>();
    m_link = std::make_shared<FakeLink>();
    m_link->answerWith({ 0, QByteArray(248, 'x') });
    ControllerLink::setActive(m_link);
}

void OnlineRequestThreadsTest::cleanup()
{
    m_service.reset();
    ControllerLink::setActive(nullptr);
}

void OnlineRequestThreadsTest::submitRound(QObject* page)
{
    const auto submit = [this, page](int code, const QVariant& param) {
        m_service->submitTransaction(m_debug.createTransaction(code, param, page), true);
    };
    submit(AxisDebugGetAxisRef, QVariant::fromValue(GetAxisRefParam{ 1, 248 }));
    submit(AxisDebugKeepAlive, QVariant::fromValue(KeepAliveParam{ 1 }));
    submit(AxisDebugSetEnable, QVariant::fromValue(SetEnableParam{ 1, 1 }));
    submit(AxisDebugMoveAbs, QVariant::fromValue(MoveAbsParam()));
}

void OnlineRequestThreadsTest::everyAnswerComesBack()
{
    RequestTap tap;
    QSignalSpy started(&tap, &RequestTap::started);
    QSignalSpy answered(&tap, &RequestTap::answered);
    Page page;
    for (int i = 0; i < rounds; ++i)
        submitRound(&page);
    QTRY_COMPARE(page.results, 3 * rounds);
    QTRY_COMPARE(page.statuses, rounds);
    QVERIFY(page.onItsThread);
    QCOMPARE(m_link->requests().size(), std::size_t(4 * rounds));
    // Asking for the status and staying alive are no commands.
    QTRY_COMPARE(answered.count(), 2 * rounds);
    QCOMPARE(started.count(), 2 * rounds);
}

void OnlineRequestThreadsTest::linksMayChangeMeanwhile()
{
    std::atomic<bool> over{ false };
    std::thread other([this, &over] {
        while (!over) {
            ControllerLink::setActive(nullptr);
            m_link->cancelInFlight();
            ControllerLink::setActive(m_link);
        }
    });
    Page page;
    for (int i = 0; i < rounds; ++i)
        submitRound(&page);
    const bool done = QTest::qWaitFor([&page] { return page.results + page.statuses == 4 * rounds; });
    over = true;
    other.join();
    QVERIFY(done);
    QVERIFY(page.onItsThread);
}

void OnlineRequestThreadsTest::pagesMayGoMeanwhile()
{
    Page stays;
    for (int i = 0; i < rounds; ++i) {
        const auto goes = std::make_unique<Page>();
        submitRound(goes.get());
        submitRound(&stays);
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(stays.results + stays.statuses, 4 * rounds);
    QTRY_COMPARE(m_service->pending(), 0);
    QCOMPARE(m_link->requests().size(), std::size_t(8 * rounds));
}

void OnlineRequestThreadsTest::theServiceMayEndMeanwhile()
{
    for (int i = 0; i < 20; ++i) {
        Page page;
        m_link->hang(i % 2 == 0);
        submitRound(&page);
        submitRound(&page);
        m_service.reset();
        m_link->hang(false);
        m_service = std::make_unique<BackgroundTransactionService>();
        QCoreApplication::processEvents();
        QVERIFY(page.onItsThread);
    }
}

QTEST_GUILESS_MAIN(OnlineRequestThreadsTest)
#include "OnlineRequestThreadsTest.moc"
