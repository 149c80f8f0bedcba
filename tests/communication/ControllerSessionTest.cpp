#include "host/communication/ControllerSession.h"

#include "protocol/DiagnosisCodes.h"
#include "sdk/AxisDebugParams.h"
#include "tests/communication/RecordingController.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QtTest>

#include <future>

namespace {

/// Far below the time that a login without an answer takes.
constexpr int quick = 1500;

ControllerAddress addressOf(quint16 port)
{
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = port;
    address.token = "right";
    return address;
}

std::shared_ptr<GrpcLink> linkTo(const ControllerAddress& address)
{
    QString error;
    return std::make_shared<GrpcLink>(ControllerTransport::make(address, &error), address);
}

/// Counts what a session tells.
struct Ears {
    std::atomic<int> opened{ 0 };
    std::atomic<int> failed{ 0 };
    std::atomic<int> lost{ 0 };

    ControllerSession::Events events()
    {
        return { [this](const std::shared_ptr<GrpcLink>&, const QString&) { ++opened; },
            [this](short, const QString&) { ++failed; }, [this](const QString&) { ++lost; }, [](GrpcLink::News) {} };
    }
};

} // namespace

/// The end of a session at any moment of its way.
class ControllerSessionTest : public QObject {
    Q_OBJECT

private slots:
    void anEndWhileTheLinkIsMadeIsNotLost_data();
    void anEndWhileTheLinkIsMadeIsNotLost();
    void endsAtAnyMomentAreQuick();
    void aLinkIsInUseUntilTheEnd_data();
    void aLinkIsInUseUntilTheEnd();
    void afterItsRetirementOnlyTheFarewellGoesOut();
    void theEndOfOneLeavesTheLinkOfAnother();
    void withoutALinkItFails();

private:
    enum End { Retired, Ended, Cut };
    static void addEnds();
    static void finish(ControllerSession& session, int end);
};

void ControllerSessionTest::addEnds()
{
    QTest::addColumn<int>("end");
    QTest::newRow("retired, then ended") << int(Retired);
    QTest::newRow("ended") << int(Ended);
    QTest::newRow("cut") << int(Cut);
}

void ControllerSessionTest::finish(ControllerSession& session, int end)
{
    if (end == Retired)
        session.retire();
    if (end == Cut)
        session.cut();
    else
        session.end();
}

void ControllerSessionTest::anEndWhileTheLinkIsMadeIsNotLost_data()
{
    addEnds();
}

void ControllerSessionTest::anEndWhileTheLinkIsMadeIsNotLost()
{
    QFETCH(int, end);
    // It takes connections and never says a word, so that a login lasts for as long as it may.
    QTcpServer mute;
    QVERIFY(mute.listen(QHostAddress::LocalHost));
    const ControllerAddress address = addressOf(mute.serverPort());
    std::promise<void> begun;
    std::promise<void> told;
    Ears ears;
    QElapsedTimer timer;
    {
        ControllerSession session(
            [&](QString*) {
                begun.set_value();
                told.get_future().wait();
                return linkTo(address);
            },
            ears.events());
        begun.get_future().wait();
        finish(session, end);
        timer.start();
        told.set_value();
    }
    QVERIFY2(timer.elapsed() < quick, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(ears.opened + ears.failed + ears.lost, 0);
    QVERIFY(!ControllerLink::active());
}

void ControllerSessionTest::endsAtAnyMomentAreQuick()
{
    QTcpServer mute;
    QVERIFY(mute.listen(QHostAddress::LocalHost));
    const ControllerAddress address = addressOf(mute.serverPort());
    for (int round = 0; round < 150; ++round) {
        Ears ears;
        QElapsedTimer timer;
        auto session
            = std::make_unique<ControllerSession>([&address](QString*) { return linkTo(address); }, ears.events());
        std::this_thread::sleep_for(std::chrono::microseconds(round * 20));
        timer.start();
        session->cut();
        // What there is of a link is down, whenever it was made.
        if (const std::shared_ptr<GrpcLink> link = session->currentLink())
            QCOMPARE(link->request({}, std::chrono::milliseconds(10)).result, Diagnosis::notConnected);
        session.reset();
        QVERIFY2(timer.elapsed() < quick, qPrintable(QString::number(timer.elapsed())));
    }
}

void ControllerSessionTest::aLinkIsInUseUntilTheEnd_data()
{
    addEnds();
}

void ControllerSessionTest::aLinkIsInUseUntilTheEnd()
{
    QFETCH(int, end);
    RecordingController controller;
    Ears ears;
    ControllerSession session([&controller](QString*) { return linkTo(controller.address()); }, ears.events());
    QVERIFY(controller.waitForAttendance());
    QCOMPARE(ears.opened.load(), 1);
    QCOMPARE(ControllerLink::active(), std::shared_ptr<ControllerLink>(session.currentLink()));
    finish(session, end);
    QTRY_VERIFY(!ControllerLink::active());
    QCOMPARE(ears.lost + ears.failed, 0);
    // It does not come back.
    QTest::qWait(250);
    QCOMPARE(ears.opened.load(), 1);
    QVERIFY(!ControllerLink::active());
}

void ControllerSessionTest::afterItsRetirementOnlyTheFarewellGoesOut()
{
    RecordingController controller;
    Ears ears;
    ControllerSession session([&controller](QString*) { return linkTo(controller.address()); }, ears.events());
    QVERIFY(controller.waitForAttendance());
    // As it is held by requests that wait for others.
    const std::shared_ptr<GrpcLink> link = session.currentLink();
    AxisRequest request;
    request.code = AxisDebugKeepAlive;
    QCOMPARE(link->request(request, std::chrono::milliseconds(quick)).result, Diagnosis::ok);
    session.retire();
    QVector<ControllerAxis> axes;
    quint64 revision = 0;
    QCOMPARE(link->request(request, std::chrono::milliseconds(quick)).result, Diagnosis::notConnected);
    QCOMPARE(link->readAxes(&axes, &revision), Diagnosis::notConnected);
    QCOMPARE(link->download({}).result, Diagnosis::notConnected);
    QCOMPARE(controller.calls().size(), std::size_t(1));
    QCOMPARE(controller.logouts(), 0);
    session.end();
    QCOMPARE(controller.logouts(), 1);
}

void ControllerSessionTest::theEndOfOneLeavesTheLinkOfAnother()
{
    RecordingController one;
    RecordingController two;
    Ears ears;
    ControllerSession first([&one](QString*) { return linkTo(one.address()); }, ears.events());
    QVERIFY(one.waitForAttendance());
    ControllerSession second([&two](QString*) { return linkTo(two.address()); }, ears.events());
    QVERIFY(two.waitForAttendance());
    const std::shared_ptr<ControllerLink> inUse = ControllerLink::active();
    QCOMPARE(inUse, std::shared_ptr<ControllerLink>(second.currentLink()));
    first.retire();
    first.end();
    QTest::qWait(150);
    QCOMPARE(ControllerLink::active(), inUse);
}

void ControllerSessionTest::withoutALinkItFails()
{
    Ears ears;
    int asked = 0;
    QString told;
    short code = 0;
    {
        ControllerSession::Events events = ears.events();
        events.failed = [&](short result, const QString& reason) {
            code = result;
            told = reason;
            ++ears.failed;
        };
        const ControllerSession session(
            [&asked](QString* error) -> std::shared_ptr<GrpcLink> {
                ++asked;
                *error = QStringLiteral("no certificate");
                return nullptr;
            },
            std::move(events));
        QTRY_COMPARE(ears.failed.load(), 1);
    }
    QCOMPARE(code, Diagnosis::notConnected);
    QCOMPARE(told, QStringLiteral("no certificate"));
    QCOMPARE(asked, 1);
}

QTEST_GUILESS_MAIN(ControllerSessionTest)
#include "ControllerSessionTest.moc"
