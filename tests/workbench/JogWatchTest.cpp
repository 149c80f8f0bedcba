#include "workbench/online/JogWatch.h"
#include "host/communication/RpcCmdSend.h"
#include "sdk/AxisDebugParams.h"
#include "tests/communication/FakeLink.h"
#include "workbench/online/RequestTap.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QWidget>
#include <QWindow>
#include <QtTest>

#include <thread>

namespace {

constexpr short axis = 3;

short jog(short pressed)
{
    return RpcCmdSend().rpc_AxisDebug_JopPos(axis, pressed, 10, 20, 30, 0.5);
}

AxisRequest request(short pressed)
{
    AxisRequest request;
    request.code = AxisDebugJopPos;
    request.axisNo = axis;
    request.value = pressed;
    return request;
}

} // namespace

class JogWatchTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aHeldButtonIsLeftAlone();
    void aButtonThatIsUpEndsTheJog_data();
    void aButtonThatIsUpEndsTheJog();
    void theEndOfThePageNeedsNoOther();
    void theEndOfThePageIsWaitedFor();
    void anEndThatMayHaveOvertakenTheStartDoesNotCount_data();
    void anEndThatMayHaveOvertakenTheStartDoesNotCount();
    void anEarlyEndThatFailedLeavesTheNextItsAnswer();
    void theEndOfTheJogBeforeDoesNotCount();
    void anEndThatIsStillUnderWayDoesNotCountForTheNextJog();
    void aRefusedStartLeavesTheJogBeforeWatched_data();
    void aRefusedStartLeavesTheJogBeforeWatched();
    void aFailedEndOfThePageIsFollowedByTheWatchs();
    void aStartThatIsRefusedNeedsNoEnd();
    void aDeactivatedProgramEndsTheJog();
    void aHangingStartIsEndedAndEndedAgainAfterItsAnswer();
    void anEndWithoutAnAnswerIsSentAgain_data();
    void anEndWithoutAnAnswerIsSentAgain();
    void withoutALinkThereIsNothingToEnd();
    void nothingGoesOutAfterTheEnd();

private:
    void hold() const { QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5)); }
    void letGo() const { QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5)); }
    /// The values of the jogs that went out: 1 for a start, 0 for an end.
    std::vector<int> sent() const
    {
        std::vector<int> values;
        for (const AxisRequest& request : m_link->requests())
            values.push_back(request.value);
        return values;
    }
    bool staysAt(const std::vector<int>& values) const
    {
        return !QTest::qWaitFor([&] { return sent() != values; }, 150);
    }

    std::unique_ptr<QWidget> m_window;
    std::shared_ptr<FakeLink> m_link;
    // The watch ends its requests before the tap goes.
    std::unique_ptr<RequestTap> m_tap;
    std::unique_ptr<JogWatch> m_watch;
    std::unique_ptr<QSignalSpy> m_ended;
};

void JogWatchTest::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_link = std::make_shared<FakeLink>();
    ControllerLink::setActive(m_link);
    m_tap = std::make_unique<RequestTap>();
    m_watch = std::make_unique<JogWatch>();
    m_watch->setLinked(true);
    connect(m_tap.get(), &RequestTap::started, m_watch.get(), &JogWatch::onStarted);
    connect(m_tap.get(), &RequestTap::answered, m_watch.get(), &JogWatch::onAnswered);
    m_ended = std::make_unique<QSignalSpy>(m_watch.get(), &JogWatch::ended);
}

void JogWatchTest::cleanup()
{
    letGo();
    m_watch.reset();
    m_tap.reset();
    ControllerLink::setActive(nullptr);
    m_window.reset();
}

void JogWatchTest::aHeldButtonIsLeftAlone()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    QVERIFY(staysAt({ 1 }));
    QVERIFY(m_ended->isEmpty());
}

void JogWatchTest::aButtonThatIsUpEndsTheJog_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("forwards") << int(AxisDebugJopPos);
    QTest::newRow("backwards") << int(AxisDebugJopNeg);
}

void JogWatchTest::aButtonThatIsUpEndsTheJog()
{
    QFETCH(int, code);
    hold();
    if (code == AxisDebugJopPos)
        QCOMPARE(jog(1), Diagnosis::ok);
    else
        QCOMPARE(RpcCmdSend().rpc_AxisDebug_JopNeg(axis, 1, 10, 20, 30, 0.5), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    letGo();
    QTRY_COMPARE(m_link->requests().size(), std::size_t(2));
    const AxisRequest end = m_link->requests().back();
    QCOMPARE(end.code, code);
    QCOMPARE(end.axisNo, axis);
    QCOMPARE(end.value, short(0));
    QCOMPARE(end.velocity, 10.0);
    QCOMPARE(end.acceleration, 20.0);
    QCOMPARE(end.deceleration, 30.0);
    QCOMPARE(end.jerk, 0.5);
    QTRY_COMPARE(m_watch->count(), 0);
    QCOMPARE(m_ended->count(), 1);
    QCOMPARE(m_ended->at(0).at(0).toInt(), int(axis));
}

void JogWatchTest::theEndOfThePageNeedsNoOther()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    letGo();
    QCOMPARE(jog(0), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 0);
    QVERIFY(staysAt({ 1, 0 }));
    QVERIFY(m_ended->isEmpty());
}

// Its answer takes longer than the page needs to send it: a second end is for safety only, and nothing to tell.
void JogWatchTest::theEndOfThePageIsWaitedFor()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    m_link->hang(true);
    QElapsedTimer timer;
    timer.start();
    std::thread page([] { jog(0); });
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0 }));
    letGo();
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0, 0 }));
    const qint64 waited = timer.elapsed();
    m_link->hang(false);
    page.join();
    QVERIFY2(waited >= 200, qPrintable(QString::number(waited)));
    QTRY_COMPARE(m_watch->count(), 0);
    QVERIFY(m_ended->isEmpty());
}

void JogWatchTest::anEndThatMayHaveOvertakenTheStartDoesNotCount_data()
{
    QTest::addColumn<qint16>("first");
    QTest::addColumn<qint16>("second");
    QTest::addColumn<int>("left");
    QTest::newRow("both are answered") << Diagnosis::ok << Diagnosis::ok << 0;
    QTest::newRow("the later answer does not come") << Diagnosis::ok << Diagnosis::noAnswer << 1;
    QTest::newRow("the first answer does not come") << Diagnosis::noAnswer << Diagnosis::ok << 1;
}

void JogWatchTest::anEndThatMayHaveOvertakenTheStartDoesNotCount()
{
    QFETCH(qint16, first);
    QFETCH(qint16, second);
    QFETCH(int, left);
    hold();
    const AxisRequest start = request(1);
    const AxisRequest end = request(0);
    m_watch->onStarted(start);
    m_watch->onStarted(end);
    m_watch->onAnswered(start, { Diagnosis::ok, {} });
    m_watch->onStarted(end);
    m_watch->onAnswered(end, { first, {} });
    QCOMPARE(m_watch->count(), 1);
    m_watch->onAnswered(end, { second, {} });
    QCOMPARE(m_watch->count(), left);
    letGo();
    QTRY_COMPARE(m_watch->count(), 0);
    QCOMPARE(int(sent().size()), left);
}

void JogWatchTest::anEarlyEndThatFailedLeavesTheNextItsAnswer()
{
    hold();
    m_watch->onStarted(request(1));
    m_watch->onStarted(request(0));
    m_watch->onAnswered(request(0), { Diagnosis::noAnswer, {} });
    m_watch->onAnswered(request(1), { Diagnosis::ok, {} });
    m_watch->onStarted(request(0));
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 0);
}

void JogWatchTest::theEndOfTheJogBeforeDoesNotCount()
{
    hold();
    for (int i = 0; i < 2; ++i) {
        m_watch->onStarted(request(1));
        m_watch->onAnswered(request(1), { Diagnosis::ok, {} });
        m_watch->onStarted(request(0));
    }
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 1);
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 0);
}

void JogWatchTest::anEndThatIsStillUnderWayDoesNotCountForTheNextJog()
{
    hold();
    m_watch->onStarted(request(1));
    m_watch->onAnswered(request(1), { Diagnosis::ok, {} });
    m_watch->onStarted(request(0));
    m_watch->onStarted(request(0));
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 0);
    m_watch->onStarted(request(1));
    m_watch->onAnswered(request(1), { Diagnosis::ok, {} });
    m_watch->onStarted(request(0));
    // Of the jog before.
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 1);
    m_watch->onAnswered(request(0), { Diagnosis::ok, {} });
    QCOMPARE(m_watch->count(), 0);
}

void JogWatchTest::aRefusedStartLeavesTheJogBeforeWatched_data()
{
    QTest::addColumn<bool>("wentOut");
    QTest::newRow("refused by the controller") << true;
    QTest::newRow("refused here") << false;
}

void JogWatchTest::aRefusedStartLeavesTheJogBeforeWatched()
{
    QFETCH(bool, wentOut);
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    QCoreApplication::processEvents();
    if (wentOut)
        m_watch->onStarted(request(1));
    m_watch->onAnswered(request(1), { Diagnosis::emergencyStop, {} });
    QCOMPARE(m_watch->count(), 1);
    letGo();
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0 }));
    QTRY_COMPARE(m_watch->count(), 0);
}

void JogWatchTest::aFailedEndOfThePageIsFollowedByTheWatchs()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    m_link->answerWith({ Diagnosis::noAnswer, {} });
    QCOMPARE(jog(0), Diagnosis::noAnswer);
    m_link->answerWith({ Diagnosis::ok, {} });
    letGo();
    QTRY_COMPARE(m_watch->count(), 0);
    QCOMPARE(sent(), (std::vector<int>{ 1, 0, 0 }));
    QCOMPARE(m_ended->count(), 1);
}

void JogWatchTest::aStartThatIsRefusedNeedsNoEnd()
{
    m_link->answerWith({ Diagnosis::notEnabled, {} });
    QCOMPARE(jog(1), Diagnosis::notEnabled);
    QVERIFY(staysAt({ 1 }));
    QCOMPARE(m_watch->count(), 0);
}

void JogWatchTest::aDeactivatedProgramEndsTheJog()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0 }));
    QTRY_COMPARE(m_watch->count(), 0);
    // A start that was still on its way is ended too.
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0, 1, 0 }));
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
}

void JogWatchTest::aHangingStartIsEndedAndEndedAgainAfterItsAnswer()
{
    hold();
    m_link->hang(true);
    std::thread starter([] { jog(1); });
    QTRY_COMPARE(m_watch->count(), 1);
    letGo();
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0 }));
    m_link->hang(false);
    starter.join();
    // The first end may have overtaken the start.
    QTRY_COMPARE(sent(), (std::vector<int>{ 1, 0, 0 }));
    QTRY_COMPARE(m_watch->count(), 0);
    QVERIFY(staysAt({ 1, 0, 0 }));
    QCOMPARE(m_ended->count(), 1);
}

void JogWatchTest::anEndWithoutAnAnswerIsSentAgain_data()
{
    QTest::addColumn<qint16>("answer");
    QTest::newRow("none in time") << Diagnosis::noAnswer;
    QTest::newRow("a transport that refuses") << Diagnosis::refused;
    QTest::newRow("a transport that is cut") << Diagnosis::notConnected;
}

void JogWatchTest::anEndWithoutAnAnswerIsSentAgain()
{
    QFETCH(qint16, answer);
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    m_link->answerWith({ answer, {} });
    letGo();
    QTRY_VERIFY(m_link->requests().size() >= 3);
    m_link->answerWith({ Diagnosis::ok, {} });
    QTRY_COMPARE(m_watch->count(), 0);
    QCOMPARE(m_ended->count(), 1);
}

void JogWatchTest::withoutALinkThereIsNothingToEnd()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    m_watch->setLinked(false);
    QCOMPARE(m_watch->count(), 0);
    letGo();
    QCOMPARE(jog(1), Diagnosis::ok);
    QVERIFY(staysAt({ 1, 1 }));
    QCOMPARE(m_watch->count(), 0);
}

void JogWatchTest::nothingGoesOutAfterTheEnd()
{
    hold();
    QCOMPARE(jog(1), Diagnosis::ok);
    QTRY_COMPARE(m_watch->count(), 1);
    m_watch->shutDown();
    letGo();
    QVERIFY(staysAt({ 1 }));
}

QTEST_MAIN(JogWatchTest)
#include "JogWatchTest.moc"
