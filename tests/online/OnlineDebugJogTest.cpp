#include "online/JogPushButton.h"
#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"

#include <QPushButton>

#include <optional>

/// What the page makes of its two jog buttons: requests, counters of answers, and holds that end in another way.
class OnlineDebugJogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void aReleaseForgetsNoShownFailure_data();
    void aReleaseForgetsNoShownFailure();
    void aPressForgetsAShownFailure_data();
    void aPressForgetsAShownFailure();
    void aPressWithoutTheAxisForgetsAShownFailure_data();
    void aPressWithoutTheAxisForgetsAShownFailure();
    void answersAreCountedRoundToNought_data();
    void answersAreCountedRoundToNought();
    void aHoldThatLosesItsEnablingSendsNothingMore_data();
    void aHoldThatLosesItsEnablingSendsNothingMore();
    void aHoldThatLosesTheFocusSendsNothingUntilItsRelease_data();
    void aHoldThatLosesTheFocusSendsNothingUntilItsRelease();
    void aHeldAxisThatIsDeletedGetsNoRequest_data();
    void aHeldAxisThatIsDeletedGetsNoRequest();
    void answersDuringTheBoxStaySilent_data();
    void answersDuringTheBoxStaySilent();
    void everyPressShowsItsFailureOnce_data();
    void everyPressShowsItsFailureOnce();
    void goingOffLineForgetsAShownFailure();

private:
    struct Direction {
        const char* button;
        int code;
        void (OnlineDebugWidget::*answer)(qint16);
    };
    static void bothDirections();
    static Direction direction(bool positive)
    {
        return positive ? Direction{ "posJogPushButton", AxisDebugJopPos, &OnlineDebugWidget::axisDebugJopPos }
                        : Direction{ "negJogPushButton", AxisDebugJopNeg, &OnlineDebugWidget::axisDebugJopNeg };
    }
    void answer(const Direction& way, qint16 result) const { (m->page.get()->*way.answer)(result); }
    /// Holds the button until the start of the jog has been sent.
    void hold(const Direction& way);
    void release(const Direction& way) { QTest::mouseRelease(m->control(way.button), Qt::LeftButton); }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugJogTest::init()
{
    m.emplace();
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    m->receive(OnlinePageFixture::status(3, true));
}

void OnlineDebugJogTest::bothDirections()
{
    QTest::addColumn<bool>("positive");
    QTest::newRow("forward") << true;
    QTest::newRow("backward") << false;
}

void OnlineDebugJogTest::hold(const Direction& way)
{
    // A message box may have taken the activation from the page's window.
    m->show();
    m->debug.requests.clear();
    QTest::mousePress(m->control(way.button), Qt::LeftButton);
    QTRY_VERIFY(m->debug.codes().contains(way.code));
}

void OnlineDebugJogTest::aReleaseForgetsNoShownFailure_data()
{
    bothDirections();
}

void OnlineDebugJogTest::aReleaseForgetsNoShownFailure()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    hold(way);
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 1);
    release(way);
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 1);
}

void OnlineDebugJogTest::aPressForgetsAShownFailure_data()
{
    bothDirections();
}

void OnlineDebugJogTest::aPressForgetsAShownFailure()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    const Direction other = direction(!positive);
    answer(way, 5);
    answer(other, 5);
    QCOMPARE(m->boxes.count(), 2);
    hold(way);
    release(way);
    answer(other, 5);
    QCOMPARE(m->boxes.count(), 2);
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 3);
}

void OnlineDebugJogTest::aPressWithoutTheAxisForgetsAShownFailure_data()
{
    bothDirections();
}

void OnlineDebugJogTest::aPressWithoutTheAxisForgetsAShownFailure()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 1);
    m->show();
    m->debug.requests.clear();
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    auto* button = m->control<JogPushButton>(way.button);
    QSignalSpy held(button, &JogPushButton::jogPressed);
    QTest::mousePress(button, Qt::LeftButton);
    QTRY_COMPARE(held.count(), 1);
    release(way);
    QVERIFY(!m->debug.codes().contains(way.code));
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 2);
}

void OnlineDebugJogTest::answersAreCountedRoundToNought_data()
{
    bothDirections();
}

void OnlineDebugJogTest::answersAreCountedRoundToNought()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    for (int round = 0; round < 3; ++round) {
        answer(way, 0);
        answer(way, 0);
        answer(way, 0);
    }
    QCOMPARE(m->boxes.count(), 0);
    answer(way, 5);
    QCOMPARE(m->boxes.texts(),
        QStringList({ positive ? QStringLiteral("Forward jog failure!,text 5")
                               : QStringLiteral("Negative jog failure,text 5") }));
    answer(way, 0);
    answer(way, 5);
    QCOMPARE(m->boxes.count(), 1);
}

void OnlineDebugJogTest::aHoldThatLosesItsEnablingSendsNothingMore_data()
{
    bothDirections();
}

// Ending such a jog is the host's: the page sends nothing by itself.
void OnlineDebugJogTest::aHoldThatLosesItsEnablingSendsNothingMore()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    hold(way);
    m->receive(OnlinePageFixture::status(0, true));
    QVERIFY(!m->control(way.button)->isEnabled());
    release(way);
    QCOMPARE(m->debug.codes().count(way.code), 1);
}

void OnlineDebugJogTest::aHoldThatLosesTheFocusSendsNothingUntilItsRelease_data()
{
    bothDirections();
}

void OnlineDebugJogTest::aHoldThatLosesTheFocusSendsNothingUntilItsRelease()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    hold(way);
    m->field("positionLineEdit")->setFocus();
    QCOMPARE(m->debug.codes().count(way.code), 1);
    release(way);
    QCOMPARE(m->debug.codes().count(way.code), 2);
}

void OnlineDebugJogTest::aHeldAxisThatIsDeletedGetsNoRequest_data()
{
    bothDirections();
}

void OnlineDebugJogTest::aHeldAxisThatIsDeletedGetsNoRequest()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    hold(way);
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    release(way);
    QCOMPARE(m->debug.codes().count(way.code), 1);
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugJogTest::answersDuringTheBoxStaySilent_data()
{
    bothDirections();
}

void OnlineDebugJogTest::answersDuringTheBoxStaySilent()
{
    QFETCH(bool, positive);
    const Direction way = direction(positive);
    bool released = false;
    m->boxes.meanwhile([&] {
        // The release's answer comes while the box of the press is still open.
        answer(way, 5);
        released = true;
    });
    answer(way, 5);
    QVERIFY(released);
    QCOMPARE(m->boxes.count(), 1);
}

void OnlineDebugJogTest::everyPressShowsItsFailureOnce_data()
{
    QTest::addColumn<QVector<int>>("answers");
    QTest::addColumn<int>("shown");
    QTest::newRow("press and release succeed") << QVector<int>({ 0, 0 }) << 0;
    QTest::newRow("both fail") << QVector<int>({ 5, 5 }) << 1;
    QTest::newRow("the release fails") << QVector<int>({ 0, 5 }) << 1;
    QTest::newRow("success after failure keeps silence") << QVector<int>({ 5, 0, 5 }) << 1;
    QTest::newRow("three successes wrap round") << QVector<int>({ 0, 0, 0, 5 }) << 1;
}

void OnlineDebugJogTest::everyPressShowsItsFailureOnce()
{
    QFETCH(QVector<int>, answers);
    QFETCH(int, shown);
    for (const bool positive : { true, false }) {
        const Direction way = direction(positive);
        m->boxes.boxes.clear();
        for (int press = 1; press <= 2; ++press) {
            hold(way);
            release(way);
            for (const int result : answers)
                answer(way, static_cast<qint16>(result));
            QCOMPARE(m->boxes.count(), shown * press);
        }
    }
}

void OnlineDebugJogTest::goingOffLineForgetsAShownFailure()
{
    const Direction forward = direction(true);
    const Direction backward = direction(false);
    answer(forward, 5);
    answer(backward, 5);
    m->page->onlineStatechanged(false);
    answer(forward, 5);
    answer(backward, 5);
    QCOMPARE(m->boxes.count(), 4);
}

QTEST_MAIN(OnlineDebugJogTest)
#include "OnlineDebugJogTest.moc"
