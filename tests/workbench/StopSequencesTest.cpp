#include "workbench/online/StopControl.h"

#include "protocol/DiagnosisCodes.h"
#include "tests/communication/QuietRelay.h"
#include "tests/workbench/StopProgram.h"
#include "workbench/MessageBar.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <functional>
#include <memory>

// Stops and releases one behind the other, when answers are late or lost, links go, and other clients have their say.
class StopSequencesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aLateReleaseHoldsUpNoStop();
    void aStopBehindAReleaseIsSentAtOnce_data();
    void aStopBehindAReleaseIsSentAtOnce();
    void aStopBehindAnothersReleaseIsSentAtOnce();
    void theEndOfTheConnectionIsNoRelease();
    void aStopThatOutlivesItsConnectionIsToldAsItIs();
    void aStopThatFailsBehindItsConnectionLeavesNoLabel();
    void aStopBehindOneOfTheFormerSessionIsSentAtOnce();
    void theNextSessionAcknowledgesNoStopOfTheFormer();
    void everyCallHasItsOwnDuration();
    void aStopGoesOutWhileTheSessionsLinkIsLost();
    void aStopBetweenTwoSessionsGoesOutAgain_data();
    void aStopBetweenTwoSessionsGoesOutAgain();
    void anOldStopDoesNotGoOutAgain();
    void aStopGoesOutAgainOnce();
    void aStopThatNobodyWantsAnyMoreDoesNotGoOutAgain_data();
    void aStopThatNobodyWantsAnyMoreDoesNotGoOutAgain();
    void aStopThatIsRefusedInItsSessionIsNotRepeated();
    void aStopIsNotBlamedOnTheNextController();
    void whileTheControllerStartsThereIsNothingToStop();
    void aRefusedReleaseSaysWhy();
    void aLossLeavesNoStopThatWasAnswered();
    void releasesDoNotHoldUpTheEnd();
    void anotherPressIsSentWhenTheFirstIsLost();

private:
    /// As a controller does that does not know the session.
    void refuseStops() const
    {
        m_program->host.fault(("refuse " + std::to_string(Diagnosis::refused) + " StopAll").c_str());
    }
    bool says(const QString& text) const { return m_program->outputText().contains(text); }
    QString said() const { return m_program->workbench->window().messageBar().text(); }

    bool connectOverARelay();
    /// A stop whose answer is still to come while the session is the next one already. False also when the answer was
    /// faster than the way back.
    bool stopOutlivesItsSession(bool refused);
    /// A stop in a session that the controller does not know any more; its refusal comes before the next login or is
    /// still to come behind it. False also when the machine was too slow for that.
    bool isRefusedBetweenSessions(bool loginFirst);
    /// Tries, each with a new program, until one comes out as it mostly does.
    bool comesToBe(const std::function<bool()>& attempt);

    std::unique_ptr<QuietRelay> m_relay;
    std::unique_ptr<StopProgram> m_program;
    std::unique_ptr<QSignalSpy> m_answered;
};

void StopSequencesTest::init()
{
    m_program = std::make_unique<StopProgram>();
}

void StopSequencesTest::cleanup()
{
    m_answered.reset();
    m_program.reset();
    m_relay.reset();
}

void StopSequencesTest::aLateReleaseHoldsUpNoStop()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->stopsAndHolds());
    m_program->host.fault("late-replies 900 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    const OutputPanel& output = m_program->workbench->window().output();
    const int before = output.lines().size();
    m_program->stop().release();
    m_program->stop().release();
    QTest::qWait(50);
    QElapsedTimer timer;
    timer.start();
    m_program->stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 700);
    QCOMPARE(answered.at(0).at(0).toBool(), false);
    QCOMPARE(answered.at(1).at(0).toBool(), false);
    m_program->host.fault("none");
    QTRY_VERIFY(m_program->host.controller.isStopHeld());
    QVERIFY2(timer.elapsed() < 900, qPrintable(QString::number(timer.elapsed())));
    // Nobody is told that a release failed which nobody wants any more.
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QTRY_COMPARE(answered.count(), 3);
    const QStringList said = output.lines().mid(before);
    QVERIFY2(
        !said.join(QLatin1Char('|')).contains(QStringLiteral("released")), qPrintable(said.join(QLatin1Char('|'))));
}

void StopSequencesTest::aStopBehindAReleaseIsSentAtOnce_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("the first one's answer is late") << QByteArray("late-replies 900 StopAll");
    QTest::newRow("the first one's answer is lost") << QByteArray("lost-replies 1 StopAll");
}

/// Stop, release and stop again, faster than the controller answers.
void StopSequencesTest::aStopBehindAReleaseIsSentAtOnce()
{
    QFETCH(QByteArray, fault);
    QVERIFY(m_program->makeReady());
    m_program->host.fault(fault.constData());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->stop().release();
    m_program->stop().stop();
    m_program->host.fault("none");
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 3, 3000);
    QVERIFY(m_program->host.controller.isStopHeld());
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(m_program->stop().isHeld());
}

void StopSequencesTest::aStopBehindAnothersReleaseIsSentAtOnce()
{
    QVERIFY(m_program->makeReady());
    m_program->host.fault("late-replies 900 StopAll");
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(!m_program->stop().isHeld());
    m_program->host.fault("none");
    QElapsedTimer timer;
    timer.start();
    m_program->stop().stop();
    QTRY_VERIFY_WITH_TIMEOUT(m_program->host.controller.isStopHeld(), 700);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

/// The end of a session is no release, and what a later one tells is no answer to a call of the former one.
void StopSequencesTest::theEndOfTheConnectionIsNoRelease()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QVERIFY(m_program->stopsAndHolds());
    const OutputPanel& output = m_program->workbench->window().output();
    const int before = output.lines().size();
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    relay.silent = true;
    m_program->stop().release();
    m_program->session().disconnectNow();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    const QString said = output.lines().mid(before).join(QLatin1Char('|'));
    QVERIFY2(!said.contains(QStringLiteral("has been released")), qPrintable(said));
    QVERIFY(m_program->host.controller.isStopHeld());
    QCOMPARE(m_program->feedback(), QString());
}

void StopSequencesTest::aStopThatOutlivesItsConnectionIsToldAsItIs()
{
    QVERIFY(m_program->makeReady());
    const OutputPanel& output = m_program->workbench->window().output();
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 400 StopAll");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->session().disconnectNow();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    for (const QString& line : output.lines())
        QVERIFY2(!line.contains(QStringLiteral("released")), qPrintable(line));
    QTRY_COMPARE(m_program->feedback(), QString());
    QVERIFY(m_program->host.controller.isStopHeld());
}

void StopSequencesTest::aStopThatFailsBehindItsConnectionLeavesNoLabel()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    relay.silent = true;
    m_program->stop().stop();
    m_program->session().disconnectNow();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QVERIFY(answered.at(0).at(1).value<short>() != Diagnosis::ok);
    QCOMPARE(m_program->feedback(), QString());
    // What became of it is told all the same.
    const QString text = m_program->workbench->window().messageBar().text();
    QVERIFY2(text.startsWith(QStringLiteral("STOP was not acknowledged")), qPrintable(text));
}

bool StopSequencesTest::connectOverARelay()
{
    m_relay = std::make_unique<QuietRelay>(m_program->host.server->port());
    m_answered = std::make_unique<QSignalSpy>(&m_program->stop(), &StopControl::answered);
    return m_program->connectHere(m_relay->port());
}

bool StopSequencesTest::stopOutlivesItsSession(bool refused)
{
    QSignalSpy lost(&m_program->session(), &OnlineSession::lost);
    QSignalSpy told(&m_program->session().connection(), &ControllerConnection::stopHeldTold);
    connect(&m_program->session(), &OnlineSession::lost, &told, [&told] { told.clear(); });
    if (!connectOverARelay())
        return false;
    if (refused)
        m_program->host.fault("refuse 9 StopAll");
    m_program->host.fault(refused ? "late-replies 900 StopAll" : "lost-replies 1 StopAll");
    m_program->stop().stop();
    const bool isSent = refused || QTest::qWaitFor([this] { return m_program->host.controller.isStopHeld(); });
    m_relay->hangUpOnFirst();
    // The first news of a session tells of nobody's deed.
    const bool isBack
        = QTest::qWaitFor([&] { return !lost.isEmpty() && m_program->session().isLoggedIn() && !told.isEmpty(); });
    m_program->host.controller.stopAll(refused);
    return isSent && isBack && QTest::qWaitFor([&] { return m_program->stop().isHeld() == refused; })
        && m_answered->isEmpty();
}

bool StopSequencesTest::comesToBe(const std::function<bool()>& attempt)
{
    for (int i = 0; i < 10; ++i) {
        if (attempt())
            return true;
        cleanup();
        init();
    }
    return false;
}

/// The call of the former session is still under way then.
void StopSequencesTest::aStopBehindOneOfTheFormerSessionIsSentAtOnce()
{
    QVERIFY(comesToBe([this] { return stopOutlivesItsSession(false); }));
    m_program->stop().stop();
    QTRY_COMPARE(m_answered->count(), 2);
    // It has been given up, and has not run out of its time.
    QCOMPARE(m_answered->at(0).at(1).value<short>(), Diagnosis::notConnected);
    QVERIFY(m_program->host.controller.isStopHeld());
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

void StopSequencesTest::theNextSessionAcknowledgesNoStopOfTheFormer()
{
    QVERIFY(comesToBe([this] { return stopOutlivesItsSession(true); }));
    QTRY_COMPARE(m_answered->count(), 1);
    QVERIFY2(says(QStringLiteral("STOP was not acknowledged")), qPrintable(m_program->outputText()));
    QVERIFY(says(QStringLiteral("Another client has pressed STOP")));
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

void StopSequencesTest::everyCallHasItsOwnDuration()
{
    QVERIFY(m_program->makeReady());
    m_program->host.fault("late-replies 900 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    QTest::qWait(300);
    m_program->host.fault("none");
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 2);
    const qint64 givenUp = answered.at(0).at(2).toLongLong();
    const qint64 second = answered.at(1).at(2).toLongLong();
    QVERIFY2(givenUp >= 300000, qPrintable(QString::number(givenUp)));
    QVERIFY2(second > 0 && second < givenUp, qPrintable(QString::number(second)));
}

/// Its own way may still be there, and the session too.
void StopSequencesTest::aStopGoesOutWhileTheSessionsLinkIsLost()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    // No way back until the stop is answered.
    relay.pauseAccepting();
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(answered.at(0).at(1).value<short>(), Diagnosis::ok);
    QVERIFY(m_program->host.controller.isStopHeld());
    QCOMPARE(m_program->feedback(), QString());
    relay.resumeAccepting();
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

bool StopSequencesTest::isRefusedBetweenSessions(bool loginFirst)
{
    if (!connectOverARelay())
        return false;
    refuseStops();
    if (loginFirst)
        m_program->host.fault("late-replies 700 StopAll");
    m_relay->pauseAccepting();
    m_relay->hangUpOnFirst();
    if (!QTest::qWaitFor([this] { return m_program->session().state() == OnlineSession::Lost; }))
        return false;
    m_program->stop().stop();
    if (!loginFirst)
        return QTest::qWaitFor([this] { return m_answered->count() == 1; });
    m_relay->resumeAccepting();
    return QTest::qWaitFor([this] { return m_program->session().isLoggedIn(); }) && m_answered->isEmpty();
}

void StopSequencesTest::aStopBetweenTwoSessionsGoesOutAgain_data()
{
    QTest::addColumn<bool>("loginFirst");
    QTest::newRow("that is refused before the login") << false;
    QTest::newRow("that is refused after the login") << true;
}

/// A controller that has taken a login knows the session before no more.
void StopSequencesTest::aStopBetweenTwoSessionsGoesOutAgain()
{
    QFETCH(bool, loginFirst);
    QVERIFY(comesToBe([this, loginFirst] { return isRefusedBetweenSessions(loginFirst); }));
    m_program->host.fault("none");
    QVERIFY(!m_program->host.controller.isStopHeld());
    m_relay->resumeAccepting();
    QTRY_COMPARE_WITH_TIMEOUT(m_answered->count(), 2, 5000);
    QCOMPARE(m_answered->at(0).at(1).value<short>(), Diagnosis::refused);
    QCOMPARE(m_answered->at(1).at(1).value<short>(), Diagnosis::ok);
    QVERIFY(m_program->host.controller.isStopHeld());
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(says(QStringLiteral("STOP goes out once more")));
}

/// Nobody stops a machine by surprise.
void StopSequencesTest::anOldStopDoesNotGoOutAgain()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    refuseStops();
    m_program->host.fault("late-replies 3000 Login");
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 1);
    QTest::qWait(3100);
    m_program->host.fault("none");
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(m_program->feedback(), QString());
    QVERIFY(!m_program->host.controller.isStopHeld());
    QCOMPARE(answered.count(), 1);
}

void StopSequencesTest::aStopGoesOutAgainOnce()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    refuseStops();
    m_program->host.fault("late-replies 900 StopAll");
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    m_program->stop().stop();
    QTRY_VERIFY(m_program->session().isLoggedIn());
    QTRY_COMPARE(answered.count(), 1);
    // What goes out again, over a channel of its own, is refused, too, and its session ends before the answer.
    QTest::qWait(200);
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(answered.count(), 2);
    m_program->host.fault("none");
    QVERIFY(!answered.wait(1200));
    QVERIFY(!m_program->host.controller.isStopHeld());
    QVERIFY2(said().startsWith(QStringLiteral("STOP was not acknowledged")), qPrintable(said()));
}

void StopSequencesTest::aStopThatNobodyWantsAnyMoreDoesNotGoOutAgain_data()
{
    QTest::addColumn<QString>("what");
    for (const char* what : { "released since", "disconnected since", "disconnected before its answer", "a release" })
        QTest::newRow(what) << QString::fromLatin1(what);
}

void StopSequencesTest::aStopThatNobodyWantsAnyMoreDoesNotGoOutAgain()
{
    QFETCH(QString, what);
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    refuseStops();
    const bool isLate = what == QLatin1String("disconnected before its answer");
    m_program->host.fault(isLate ? "late-replies 900 StopAll" : "late-replies 3000 Login");
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    if (what == QLatin1String("a release"))
        m_program->stop().release();
    else
        m_program->stop().stop();
    QTRY_COMPARE(answered.count(), isLate ? 0 : 1);
    if (what == QLatin1String("released since"))
        m_program->stop().release();
    if (!isLate)
        m_program->host.fault("none");
    if (what.startsWith(QLatin1String("disconnected"))) {
        m_program->session().disconnectNow();
        QVERIFY(m_program->connectHere(relay.port()));
    }
    QVERIFY(m_program->waitUntilOnline());
    QTRY_VERIFY(!answered.isEmpty());
    QVERIFY(!QTest::qWaitFor([this] { return m_program->host.controller.isStopHeld(); }, 1200));
    QVERIFY(!says(QStringLiteral("STOP goes out once more")));
}

void StopSequencesTest::aStopThatIsRefusedInItsSessionIsNotRepeated()
{
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    refuseStops();
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    QVERIFY(!answered.wait(300));
    QCOMPARE(answered.count(), 1);
}

void StopSequencesTest::aStopIsNotBlamedOnTheNextController()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    const QString target = m_program->session().target();
    relay.silent = true;
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    m_program->session().disconnectNow();
    ControllerHost next;
    m_program->session().connectTo(next.address(), false);
    QCOMPARE(m_program->feedback(), QString());
    QVERIFY(m_program->session().target() != target);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QVERIFY2(said().contains(target), qPrintable(said()));
    QCOMPARE(m_program->feedback(), QString());
    m_program->session().disconnectNow();
}

void StopSequencesTest::whileTheControllerStartsThereIsNothingToStop()
{
    m_program->workbench->action(QStringLiteral("online.connect"))->trigger();
    QCOMPARE(m_program->session().state(), OnlineSession::Starting);
    m_program->stop().stop();
    QTRY_VERIFY2(said().contains(QStringLiteral("is still starting")), qPrintable(said()));
    QCOMPARE(m_program->feedback(), QString());
}

void StopSequencesTest::aRefusedReleaseSaysWhy()
{
    QVERIFY(m_program->connectHere());
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.fault("refuse 26 StopAll");
    m_program->stop().release();
    QTRY_VERIFY2(said().contains(QStringLiteral("pressed again, here or by another client")), qPrintable(said()));
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

void StopSequencesTest::aLossLeavesNoStopThatWasAnswered()
{
    QuietRelay relay(m_program->host.server->port());
    m_program->host.fault("late-replies 60000 Attend");
    QVERIFY(m_program->connectHere(relay.port()));
    m_program->host.fault("none");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    m_program->host.fault("late-replies 3000 Login");
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    QCOMPARE(m_program->feedback(), QString());
}

void StopSequencesTest::releasesDoNotHoldUpTheEnd()
{
    QVERIFY(m_program->connectHere());
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.fault("lost-replies 0 StopAll");
    for (int i = 0; i < 5; ++i)
        m_program->stop().release();
    QElapsedTimer timer;
    timer.start();
    m_program->workbench.reset();
    // One after the other they would take two seconds; what the whole program takes for itself depends on the machine.
    QVERIFY2(timer.elapsed() < 1600, qPrintable(QString::number(timer.elapsed())));
}

void StopSequencesTest::anotherPressIsSentWhenTheFirstIsLost()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    relay.silent = true;
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    m_program->stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 4000);
    // Once a press: nobody has pressed since.
    QTest::qWait(1200);
    QCOMPARE(answered.count(), 2);
}

QTEST_MAIN(StopSequencesTest)
#include "StopSequencesTest.moc"
