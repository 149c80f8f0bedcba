#include "workbench/online/StopControl.h"

#include "protocol/DiagnosisCodes.h"
#include "tests/communication/QuietRelay.h"
#include "tests/workbench/StopProgram.h"
#include "workbench/MessageBar.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <functional>
#include <initializer_list>
#include <memory>

// What the window makes of the news of stops and releases, of its own and of other clients.
class StopNewsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void anotherReleaseDoesNotHideAFailedStop();
    void whatOthersDoIsTold();
    void aStopThatOvertakesOnesReleaseIsTold();
    void aNewSessionCountsAnew_data();
    void aNewSessionCountsAnew();
    void everyOtherStopIsToldWhateverWasGivenUp();
    void aReleaseBehindTwoPressesIsTold();
    void aStopBeforeTheFirstNewsIsSeen_data();
    void aStopBeforeTheFirstNewsIsSeen();
    void aLateAnswerDoesNotHideWhatAnotherHasDone();
    void anOlderHoldDoesNotAcknowledgeAStop();
    void olderNewsDoesNotTakeAStopFromSight();
    void aRefusedStopIsNotAcknowledgedByNews();
    void onesEarlierStopDoesNotAcknowledgeTheNext();
    void aLostStopThatIsToldLaterIsNotAnothers();
    void deedsOfOthersAreToldAsTheyWere();
    void whatCameBeforeOnesOwnStopIsNotGuessed();
    void aHoldThatWentWithItsConnectionIsToldAsIt();
    void aReleaseThatADisconnectionDropsIsNotCalledAStop();

private:
    bool says(const QString& text) const { return m_program->outputText().contains(text); }
    QString said() const { return m_program->workbench->window().messageBar().text(); }

    bool isAllTold() const
    {
        return m_program->session().connection().stopRevision() == m_program->host.controller.stopRevision();
    }
    /// Tries, each with everything told and empty spies, until one comes out as it mostly does.
    bool comesToBe(std::initializer_list<QSignalSpy*> spies, const std::function<bool()>& attempt) const
    {
        for (int i = 0; i < 200 && QTest::qWaitFor([this] { return isAllTold(); }); ++i) {
            for (QSignalSpy* spy : spies)
                spy->clear();
            if (attempt())
                return true;
        }
        return false;
    }

    std::unique_ptr<StopProgram> m_program;
};

void StopNewsTest::init()
{
    m_program = std::make_unique<StopProgram>();
}

void StopNewsTest::cleanup()
{
    m_program.reset();
}

void StopNewsTest::anotherReleaseDoesNotHideAFailedStop()
{
    QVERIFY(m_program->connectHere());
    m_program->host.fault("refuse 9 StopAll");
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(m_program->outputText().contains(QStringLiteral("Another client has released STOP.")));
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
}

void StopNewsTest::whatOthersDoIsTold()
{
    QVERIFY(m_program->connectHere());
    const OutputPanel& output = m_program->workbench->window().output();
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QTRY_VERIFY(output.lines().last().contains(QStringLiteral("and holds them")));
    // The label has nothing to show of another stop while one holds.
    m_program->host.controller.stopAll(true);
    QTRY_VERIFY2(said().startsWith(QStringLiteral("Another client has pressed STOP")), qPrintable(said()));
    QVERIFY(output.lines().last().contains(said()));
    m_program->stop().release();
    QTRY_COMPARE(m_program->feedback(), QString());
    QTRY_VERIFY(output.lines().last().contains(QStringLiteral("STOP has been released.")));
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(output.lines().last().contains(QStringLiteral("Another client has released STOP.")));
    // What was before the login is nobody's deed.
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->session().disconnectNow();
    QVERIFY(m_program->connectHere());
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(m_program->outputText().contains(QStringLiteral("STOP has not been released.")));
    QCOMPARE(m_program->outputText().count(QStringLiteral("Another client has pressed STOP")), 3);
}

/// Both may come up in one piece of news.
void StopNewsTest::aStopThatOvertakesOnesReleaseIsTold()
{
    QVERIFY(m_program->connectHere());
    QVERIFY(m_program->stopsAndHolds());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 300 StopAll");
    m_program->stop().release();
    while (m_program->host.controller.isStopHeld())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY2(says(QStringLiteral("and holds again.")), qPrintable(m_program->outputText()));
    QVERIFY(says(QStringLiteral("Another client has pressed STOP")));
}

void StopNewsTest::aNewSessionCountsAnew_data()
{
    QTest::addColumn<bool>("lost");
    QTest::addColumn<bool>("other");
    QTest::newRow("after a lost link") << true << false;
    QTest::newRow("after a disconnection") << false << false;
    QTest::newRow("at another controller") << false << true;
}

/// Before the first news of it nothing is known.
void StopNewsTest::aNewSessionCountsAnew()
{
    QFETCH(bool, lost);
    QFETCH(bool, other);
    ControllerHost next;
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    for (int i = 0; i < 3; ++i) {
        m_program->stop().stop();
        QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
        m_program->stop().release();
        QTRY_VERIFY(!m_program->stop().isHeld());
    }
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    const ControllerHost& host = other ? next : m_program->host;
    host.fault("late-replies 3000 Attend");
    if (lost) {
        relay.hangUpOnFirst();
        QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
        QVERIFY(m_program->waitUntilOnline());
    } else {
        m_program->session().disconnectNow();
        m_program->session().connectTo(host.address(), false);
        QVERIFY(m_program->waitUntilOnline());
    }
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    QVERIFY2(!says(QStringLiteral("released since")), qPrintable(m_program->outputText()));
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    // What the first news had counts as told.
    (other ? next : m_program->host).controller.stopAll(true);
    QTRY_VERIFY(says(QStringLiteral("Another client has pressed STOP")));
    m_program->session().disconnectNow();
}

void StopNewsTest::everyOtherStopIsToldWhateverWasGivenUp()
{
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    for (int i = 0; i < 5; ++i)
        m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 5);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->stop().release();
    QTRY_COMPARE(answered.count(), 6);
    QTRY_VERIFY(!m_program->stop().isHeld());
    QVERIFY2(!says(QStringLiteral("Another client")), qPrintable(m_program->outputText()));
    m_program->host.controller.stopAll(true);
    QTRY_VERIFY2(said().startsWith(QStringLiteral("Another client has pressed STOP")), qPrintable(said()));
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(says(QStringLiteral("Another client has released STOP.")));
}

void StopNewsTest::aReleaseBehindTwoPressesIsTold()
{
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 700 StopAll");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.controller.stopAll(false);
    QTRY_COMPARE(answered.count(), 2);
    QTRY_COMPARE(m_program->feedback(), QString());
    QVERIFY2(says(QStringLiteral("and has been released since.")), qPrintable(m_program->outputText()));
    QVERIFY(!says(QStringLiteral("and holds them")));
}

void StopNewsTest::aStopBeforeTheFirstNewsIsSeen_data()
{
    QTest::addColumn<bool>("released");
    QTest::addColumn<QString>("label");
    QTest::newRow("and holds") << false << QStringLiteral("STOP holds");
    QTest::newRow("and has been released until then") << true << QString();
}

void StopNewsTest::aStopBeforeTheFirstNewsIsSeen()
{
    QFETCH(bool, released);
    QFETCH(QString, label);
    m_program->host.fault("late-replies 3000 Attend");
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 1);
    QVERIFY(m_program->host.controller.isStopHeld());
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    if (released)
        m_program->host.controller.stopAll(false);
    QTRY_COMPARE(m_program->feedback(), label);
}

/// What the session tells is newer than an answer that comes late.
void StopNewsTest::aLateAnswerDoesNotHideWhatAnotherHasDone()
{
    QVERIFY(m_program->makeReady());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 700 StopAll");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(!m_program->stop().isHeld());
    QTRY_COMPARE(answered.count(), 1);
    QVERIFY(!m_program->stop().isHeld());
    QCOMPARE(m_program->feedback(), QString());
    QVERIFY2(says(QStringLiteral("and has been released since.")), qPrintable(m_program->outputText()));
    QVERIFY(says(QStringLiteral("Another client has released STOP.")));
    m_program->stop().stop();
    QTRY_COMPARE(answered.count(), 2);
    m_program->stop().release();
    QTRY_VERIFY(!m_program->stop().isHeld());
    m_program->host.controller.stopAll(true);
    QTRY_VERIFY(m_program->stop().isHeld());
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(m_program->workbench->action(QStringLiteral("online.release"))->isVisible());
    QVERIFY2(says(QStringLiteral("and holds again.")), qPrintable(m_program->outputText()));
}

/// A hold from before the press says nothing of it.
void StopNewsTest::anOlderHoldDoesNotAcknowledgeAStop()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QVERIFY(m_program->stopsAndHolds());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    relay.silent = true;
    m_program->stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QVERIFY(answered.at(0).at(1).value<short>() != Diagnosis::ok);
    const QString last = m_program->workbench->window().output().lines().last();
    QVERIFY2(!last.contains(QStringLiteral("has stopped every axis")), qPrintable(last));
    QVERIFY(m_program->session().isLoggedIn());
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    // It stays to be seen when the loss of the link is noticed, and goes with the next login.
    QTRY_VERIFY_WITH_TIMEOUT(!m_program->session().isLoggedIn(), 5000);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    m_program->host.controller.stopAll(false);
    relay.silent = false;
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(m_program->feedback(), QString());
}

/// The news of a release may come behind the press of a stop that is on its way.
void StopNewsTest::olderNewsDoesNotTakeAStopFromSight()
{
    QVERIFY(m_program->makeReady());
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.fault("refuse 9 StopAll");
    m_program->host.fault("late-replies 700 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(!m_program->stop().isHeld());
    QCOMPARE(answered.count(), 0);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
}

/// A refusal is one, whatever the session tells meanwhile.
void StopNewsTest::aRefusedStopIsNotAcknowledgedByNews()
{
    QVERIFY(m_program->connectHere());
    m_program->host.fault("refuse 9 StopAll");
    m_program->host.fault("late-replies 700 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.controller.stopAll(true);
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->host.controller.stopAll(false);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    QCOMPARE(answered.count(), 0);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
    QVERIFY2(said().startsWith(QStringLiteral("STOP was not acknowledged")), qPrintable(said()));
    QVERIFY(!says(QStringLiteral("has stopped every axis in debug mode (")));
}

/// Its news may come behind the next press.
void StopNewsTest::onesEarlierStopDoesNotAcknowledgeTheNext()
{
    QVERIFY(m_program->connectHere());
    QVERIFY(m_program->stopsAndHolds());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    QSignalSpy told(&m_program->session().connection(), &ControllerConnection::stopHeldTold);
    // Mostly the answer is faster than the news.
    QVERIFY(comesToBe({ &told, &answered }, [&] {
        m_program->stop().stop();
        while (answered.isEmpty())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        return told.isEmpty();
    }));
    m_program->host.fault("refuse 9 StopAll");
    m_program->host.fault("lost-replies 1 StopAll");
    m_program->stop().stop();
    QTRY_COMPARE(told.count(), 1);
    m_program->host.controller.stopAll(false);
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 3000);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP not acknowledged"));
}

void StopNewsTest::aLostStopThatIsToldLaterIsNotAnothers()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    m_program->stop().stop();
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->stop().release();
    QTRY_VERIFY(says(QStringLiteral("STOP has been released.")));
    QTRY_VERIFY(!m_program->stop().isHeld());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 200 StopAll");
    m_program->stop().stop();
    while (!m_program->host.controller.isStopHeld())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    relay.silent = true;
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    relay.speak();
    QTRY_COMPARE_WITH_TIMEOUT(m_program->feedback(), QStringLiteral("STOP holds"), 5000);
    QVERIFY2(!says(QStringLiteral("Another client")), qPrintable(m_program->outputText()));
}

void StopNewsTest::deedsOfOthersAreToldAsTheyWere()
{
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 700 StopAll");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    const quint64 before = m_program->session().connection().stopRevision();
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->session().connection().stopRevision(), before + 1);
    m_program->host.fault("late-replies 100 StopAll");
    m_program->stop().release();
    QTRY_COMPARE(answered.count(), 2);
    QTRY_COMPARE(m_program->feedback(), QString());
    QVERIFY2(says(QStringLiteral("Another client has pressed STOP")), qPrintable(m_program->outputText()));
    QVERIFY(!says(QStringLiteral("Another client has released")));
    // By then it does not hold any more.
    QVERIFY(!m_program->workbench->window().messageBar().isVisible());
}

/// One piece of news has another's release and one's own stop.
void StopNewsTest::whatCameBeforeOnesOwnStopIsNotGuessed()
{
    QVERIFY(m_program->connectHere());
    QVERIFY(m_program->stopsAndHolds());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    QSignalSpy told(&m_program->session().connection(), &ControllerConnection::stopHeldTold);
    // Mostly both come up together.
    QVERIFY(comesToBe({ &told, &answered }, [&] {
        m_program->host.controller.stopAll(false);
        m_program->stop().stop();
        return QTest::qWaitFor([&] { return answered.count() == 1 && isAllTold(); }) && told.count() == 1;
    }));
    QVERIFY2(
        says(QStringLiteral("Another client has pressed or released STOP, too.")), qPrintable(m_program->outputText()));
    QVERIFY(!says(QStringLiteral("Another client has pressed STOP:")));
}

void StopNewsTest::aHoldThatWentWithItsConnectionIsToldAsIt()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    m_program->host.fault("lost-replies 1 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    relay.hangUpOnFirst();
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
    m_program->host.controller.stopAll(false);
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(answered.count(), 1);
    QVERIFY2(says(QStringLiteral("before the connection was lost.")), qPrintable(m_program->outputText()));
    QVERIFY(!says(QStringLiteral("and holds them")));
    QCOMPARE(m_program->feedback(), QString());
}

void StopNewsTest::aReleaseThatADisconnectionDropsIsNotCalledAStop()
{
    QVERIFY(m_program->connectHere());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->host.fault("late-replies 500 StopAll");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->stop().release();
    m_program->session().disconnectNow();
    QTRY_COMPARE(answered.count(), 2);
    QVERIFY2(said().contains(QStringLiteral("has not acknowledged the release of STOP")), qPrintable(said()));
    QVERIFY2(!said().contains(QStringLiteral("pressed again")), qPrintable(said()));
}

QTEST_MAIN(StopNewsTest)
#include "StopNewsTest.moc"
