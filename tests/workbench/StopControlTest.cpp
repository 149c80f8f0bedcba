#include "workbench/online/StopControl.h"
#include "host/communication/ControllerLink.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/AxisDebugParams.h"
#include "tests/communication/QuietRelay.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/MessageBar.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/online/StopButton.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>

#include <atomic>
#include <memory>

// The emergency stop as a user has it, in the whole program: by key and by button, whatever else is open.
class StopControlTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theKeyStopsWhateverHasTheFocus_data();
    void theKeyStopsWhateverHasTheFocus();
    void theKeyCountsOnceAPress();
    void theButtonCountsFromThePress();
    void theButtonStaysInReachUnderAModalBox();
    void theButtonStaysInReachBehindAMenu();
    void theMenuStopsToo();
    void offlineThereIsNothingToStop();
    void itHoldsUntilItIsReleased();
    void aHoldOutlivesALostLink();
    void aLateReleaseHoldsUpNoStop();
    void aStopBehindAReleaseIsSentAtOnce_data();
    void aStopBehindAReleaseIsSentAtOnce();
    void aStopBehindAnothersReleaseIsSentAtOnce();
    void aLateAnswerDoesNotHideWhatAnotherHasDone();
    void anOlderHoldDoesNotAcknowledgeAStop();
    void theEndOfTheConnectionIsNoRelease();
    void aStopThatOutlivesItsConnectionIsToldAsItIs();
    void everyPressDiscardsTheQueue();
    void anotherPressIsSentWhenTheFirstIsLost();
    void theKeyReachesThroughAFileDialog();
    void theHoldOfAnotherClientIsShown();
    void aStopThatIsNotAcknowledgedIsNamed();
    void aHoldWhoseReplyIsLostIsSeenAllTheSame();
    void aHangingCallDoesNotHoldItUp();
    void whatWasQueuedIsRefusedAndThePageGoesOn();
    void itStandsInTheCommandLog();
    void theTipNamesTheKey();

private:
    StopControl& stop() const { return m_program->workbench->online().stop(); }
    StopButton& button() const { return m_program->workbench->window().stopButton(); }
    QString feedback() const { return m_program->workbench->window().stopFeedback().text(); }
    bool connectThrough(const QuietRelay& relay);
    /// Moves the axis for a long time.
    bool move();
    bool stoppedAndHeld();
    /// Clicks "Reset" and waits until the request is no longer queued.
    bool resetIsOnItsWay();

    std::unique_ptr<OnlineProgram> m_program;
};

void StopControlTest::init()
{
    m_program = std::make_unique<OnlineProgram>();
}

void StopControlTest::cleanup()
{
    m_program.reset();
}

bool StopControlTest::move()
{
    return RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0) == 0 && m_program->moves();
}

bool StopControlTest::connectThrough(const QuietRelay& relay)
{
    ControllerAddress address = m_program->host.address();
    address.port = relay.port();
    m_program->session().connectTo(address, false);
    return m_program->waitUntilOnline();
}

bool StopControlTest::resetIsOnItsWay()
{
    const auto out = std::make_shared<std::atomic<bool>>(false);
    const std::shared_ptr<const ControllerLink::Announcer> former = ControllerLink::announcer();
    ControllerLink::setAnnouncer([former, out](const AxisRequest& request) {
        (*former)(request);
        if (request.code == AxisDebugReset)
            *out = true;
    });
    m_program->click("resetPushButton");
    const bool done = QTest::qWaitFor([&out] { return out->load(); });
    ControllerLink::setAnnouncer(*former);
    return done;
}

bool StopControlTest::stoppedAndHeld()
{
    const auto held = [this] { return stop().isHeld() && feedback() == QLatin1String("STOP holds"); };
    return m_program->stands(1500) && QTest::qWaitFor(held, 2000);
}

void StopControlTest::theKeyStopsWhateverHasTheFocus_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("a field of the page") << 0 << int(Qt::NoModifier);
    QTest::newRow("a field of the page, with other keys held") << 0 << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("the project tree") << 1 << int(Qt::NoModifier);
    QTest::newRow("a message box") << 2 << int(Qt::NoModifier);
    QTest::newRow("a message box over a message box") << 3 << int(Qt::NoModifier);
    QTest::newRow("a menu") << 4 << int(Qt::NoModifier);
    QTest::newRow("the list of a combo box") << 5 << int(Qt::NoModifier);
    QTest::newRow("another window") << 6 << int(Qt::NoModifier);
}

void StopControlTest::theKeyStopsWhateverHasTheFocus()
{
    QFETCH(int, place);
    QFETCH(int, modifiers);
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    QMessageBox second(QMessageBox::Information, QStringLiteral("two"), QStringLiteral("two"), QMessageBox::Ok);
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    QWidget other;
    auto* combo = m_program->find<QComboBox>("motionTypeComboBox");
    QWindow* target = m_program->window();
    switch (place) {
    case 0:
        m_program->find("posJogSpeedLineEdit")->setFocus();
        break;
    case 1:
        m_program->workbench->window().tree().setFocus();
        break;
    case 2:
    case 3:
        box.open();
        if (place == 3)
            second.open();
        target = (place == 3 ? second : box).windowHandle();
        break;
    case 4:
        menu.popup(QPoint(300, 300));
        target = menu.windowHandle();
        break;
    case 5:
        combo->showPopup();
        target = QApplication::activePopupWidget()->windowHandle();
        break;
    default:
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        target = other.windowHandle();
        break;
    }
    QTest::keyPress(target, Qt::Key_F9, Qt::KeyboardModifiers(modifiers));
    QVERIFY(stoppedAndHeld());
    QTest::keyRelease(target, Qt::Key_F9, Qt::KeyboardModifiers(modifiers));
    if (place == 5)
        combo->hidePopup();
}

void StopControlTest::theKeyCountsOnceAPress()
{
    QVERIFY(m_program->makeReady());
    QSignalSpy answered(&stop(), &StopControl::answered);
    QTest::keyPress(m_program->window(), Qt::Key_F9);
    QTRY_COMPARE(answered.count(), 1);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_F9, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(m_program->find("posJogSpeedLineEdit"), &repeated);
    QTest::keyRelease(m_program->window(), Qt::Key_F9);
    QTest::keyClick(m_program->window(), Qt::Key_F8);
    QVERIFY(!QTest::qWaitFor([&answered] { return answered.count() > 1; }, 200));
}

void StopControlTest::theButtonCountsFromThePress()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    const QPoint place = button().mapTo(&m_program->workbench->window(), button().rect().center());
    QTest::mousePress(m_program->window(), Qt::LeftButton, {}, place);
    QVERIFY(stoppedAndHeld());
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, place);
    QVERIFY(!button().hasFocus());
}

void StopControlTest::theButtonStaysInReachUnderAModalBox()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    box.open();
    auto* reach = box.findChild<StopButton*>(QStringLiteral("stopButtonInReach"));
    QVERIFY(reach && reach->isVisible() && reach->isEnabled());
    QCOMPARE(reach->geometry().topLeft(), button().mapToGlobal(QPoint(0, 0)));
    QCOMPARE(reach->size(), button().size());
    QTest::mousePress(reach->windowHandle(), Qt::LeftButton, {}, reach->rect().center());
    QVERIFY(stoppedAndHeld());
    QTest::mouseRelease(reach->windowHandle(), Qt::LeftButton, {}, reach->rect().center());
    // The box is still there and still has the keyboard; the button goes with it.
    QVERIFY(box.isVisible());
    QVERIFY(box.focusWidget());
    box.close();
    QTRY_VERIFY(!box.findChild<StopButton*>());
}

void StopControlTest::theButtonStaysInReachBehindAMenu()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    menu.popup(QPoint(300, 300));
    const QPoint place = button().mapToGlobal(button().rect().center());
    QTest::mousePress(menu.windowHandle(), Qt::LeftButton, {}, menu.mapFromGlobal(place));
    QVERIFY(stoppedAndHeld());
    menu.close();
}

void StopControlTest::theMenuStopsToo()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    m_program->workbench->action(QStringLiteral("online.stop"))->trigger();
    QVERIFY(stoppedAndHeld());
}

void StopControlTest::offlineThereIsNothingToStop()
{
    QVERIFY(!button().isEnabled());
    QVERIFY(!m_program->workbench->action(QStringLiteral("online.stop"))->isEnabled());
    QSignalSpy answered(&stop(), &StopControl::answered);
    QTest::keyClick(m_program->window(), Qt::Key_F9);
    stop().stop();
    stop().release();
    QVERIFY(!QTest::qWaitFor([&answered] { return !answered.isEmpty(); }, 200));
    QVERIFY(feedback().isEmpty());
}

void StopControlTest::itHoldsUntilItIsReleased()
{
    QVERIFY(m_program->makeReady());
    QAction* release = m_program->workbench->action(QStringLiteral("online.release"));
    QVERIFY(!release->isEnabled() && !release->isVisible());
    stop().stop();
    QVERIFY(stoppedAndHeld());
    QVERIFY(release->isEnabled() && release->isVisible());
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::emergencyStop);
    release->trigger();
    QTRY_VERIFY(!stop().isHeld());
    QVERIFY(feedback().isEmpty());
    QVERIFY(!release->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::ok, 3000);
}

void StopControlTest::aHoldOutlivesALostLink()
{
    QVERIFY(m_program->makeReady());
    stop().stop();
    QVERIFY(stoppedAndHeld());
    m_program->host.fault("drop-link");
    QTRY_VERIFY_WITH_TIMEOUT(m_program->session().state() != OnlineSession::Online, 3000);
    QVERIFY(m_program->waitUntilOnline());
    QTRY_VERIFY(stop().isHeld());
    QCOMPARE(feedback(), QStringLiteral("STOP holds"));
    m_program->workbench->action(QStringLiteral("online.release"))->trigger();
    QTRY_VERIFY(!stop().isHeld());
}

void StopControlTest::aLateReleaseHoldsUpNoStop()
{
    QVERIFY(m_program->makeReady());
    stop().stop();
    QVERIFY(stoppedAndHeld());
    m_program->host.fault("late-replies 900 StopAll");
    QSignalSpy answered(&stop(), &StopControl::answered);
    const OutputPanel& output = m_program->workbench->window().output();
    const int before = output.lines().size();
    stop().release();
    stop().release();
    QTest::qWait(50);
    QElapsedTimer timer;
    timer.start();
    stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 700);
    QCOMPARE(answered.at(0).at(0).toBool(), false);
    QCOMPARE(answered.at(1).at(0).toBool(), false);
    m_program->host.fault("none");
    QTRY_VERIFY(m_program->host.controller.isStopHeld());
    QVERIFY2(timer.elapsed() < 900, qPrintable(QString::number(timer.elapsed())));
    // Nobody is told that a release failed which nobody wants any more.
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    QTRY_COMPARE(answered.count(), 3);
    const QStringList said = output.lines().mid(before);
    QVERIFY2(
        !said.join(QLatin1Char('|')).contains(QStringLiteral("released")), qPrintable(said.join(QLatin1Char('|'))));
}

void StopControlTest::aStopBehindAReleaseIsSentAtOnce_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::newRow("the first one's answer is late") << QByteArray("late-replies 900 StopAll");
    QTest::newRow("the first one's answer is lost") << QByteArray("lost-replies 1 StopAll");
}

/// Stop, release and stop again, faster than the controller answers.
void StopControlTest::aStopBehindAReleaseIsSentAtOnce()
{
    QFETCH(QByteArray, fault);
    QVERIFY(m_program->makeReady());
    m_program->host.fault(fault.constData());
    QSignalSpy answered(&stop(), &StopControl::answered);
    stop().stop();
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    stop().release();
    stop().stop();
    m_program->host.fault("none");
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 3, 3000);
    QVERIFY(m_program->host.controller.isStopHeld());
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    QVERIFY(stop().isHeld());
}

void StopControlTest::aStopBehindAnothersReleaseIsSentAtOnce()
{
    QVERIFY(m_program->makeReady());
    m_program->host.fault("late-replies 900 StopAll");
    stop().stop();
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(!stop().isHeld());
    m_program->host.fault("none");
    QElapsedTimer timer;
    timer.start();
    stop().stop();
    QTRY_VERIFY_WITH_TIMEOUT(m_program->host.controller.isStopHeld(), 700);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
}

/// What the session tells is newer than an answer that comes late.
void StopControlTest::aLateAnswerDoesNotHideWhatAnotherHasDone()
{
    QVERIFY(m_program->makeReady());
    const OutputPanel& output = m_program->workbench->window().output();
    QSignalSpy answered(&stop(), &StopControl::answered);
    m_program->host.fault("late-replies 400 StopAll");
    stop().stop();
    QTRY_VERIFY(stop().isHeld());
    m_program->host.controller.stopAll(false);
    QTRY_VERIFY(!stop().isHeld());
    QTRY_COMPARE(answered.count(), 1);
    QVERIFY(!stop().isHeld());
    QCOMPARE(feedback(), QString());
    QVERIFY2(output.lines().last().contains(QStringLiteral("released since")), qPrintable(output.lines().last()));
    stop().stop();
    QTRY_COMPARE(answered.count(), 2);
    stop().release();
    QTRY_VERIFY(!stop().isHeld());
    m_program->host.controller.stopAll(true);
    QTRY_VERIFY(stop().isHeld());
    QTRY_COMPARE(answered.count(), 3);
    QCOMPARE(feedback(), QStringLiteral("STOP holds"));
    QVERIFY(m_program->workbench->action(QStringLiteral("online.release"))->isVisible());
    QVERIFY2(output.lines().last().contains(QStringLiteral("holds again")), qPrintable(output.lines().last()));
}

/// A hold from before the press says nothing of it.
void StopControlTest::anOlderHoldDoesNotAcknowledgeAStop()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(connectThrough(relay));
    stop().stop();
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    QSignalSpy answered(&stop(), &StopControl::answered);
    relay.silent = true;
    stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QVERIFY(answered.at(0).at(1).value<short>() != Diagnosis::ok);
    const QString last = m_program->workbench->window().output().lines().last();
    QVERIFY2(!last.contains(QStringLiteral("has stopped every axis")), qPrintable(last));
    // It stays to be seen when the loss of the link is noticed, and goes with the next login.
    QTRY_VERIFY_WITH_TIMEOUT(!m_program->session().isLoggedIn(), 5000);
    QCOMPARE(feedback(), QStringLiteral("STOP not acknowledged"));
    m_program->host.controller.stopAll(false);
    relay.silent = false;
    QVERIFY(m_program->waitUntilOnline());
    QTRY_COMPARE(feedback(), QString());
}

/// The end of a session is no release, and what a later one tells is no answer to a call of the former one.
void StopControlTest::theEndOfTheConnectionIsNoRelease()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(connectThrough(relay));
    stop().stop();
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    const OutputPanel& output = m_program->workbench->window().output();
    const int before = output.lines().size();
    QSignalSpy answered(&stop(), &StopControl::answered);
    relay.silent = true;
    stop().release();
    m_program->session().disconnectNow();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    const QString said = output.lines().mid(before).join(QLatin1Char('|'));
    QVERIFY2(!said.contains(QStringLiteral("has been released")), qPrintable(said));
    QVERIFY(m_program->host.controller.isStopHeld());
    QCOMPARE(feedback(), QString());
}

void StopControlTest::aStopThatOutlivesItsConnectionIsToldAsItIs()
{
    QVERIFY(m_program->makeReady());
    const OutputPanel& output = m_program->workbench->window().output();
    QSignalSpy answered(&stop(), &StopControl::answered);
    m_program->host.fault("late-replies 400 StopAll");
    stop().stop();
    QTRY_VERIFY(stop().isHeld());
    m_program->session().disconnectNow();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    for (const QString& line : output.lines())
        QVERIFY2(!line.contains(QStringLiteral("released")), qPrintable(line));
    QTRY_COMPARE(feedback(), QString());
    QVERIFY(m_program->host.controller.isStopHeld());
}

/// Also a press that adds nothing keeps queued motion from going out.
void StopControlTest::everyPressDiscardsTheQueue()
{
    MessageBoxWatcher boxes;
    QVERIFY(m_program->makeReady());
    const double before = m_program->host.peek(0).setPosition;
    m_program->host.fault("late-replies 700 Reset");
    m_program->host.fault("late-replies 700 StopAll");
    QVERIFY(resetIsOnItsWay());
    stop().stop();
    QTRY_VERIFY(stop().isHeld());
    m_program->host.controller.stopAll(false);
    m_program->click("motionPushButton");
    QTRY_VERIFY(m_program->workbench->online().background().pending() > 1);
    stop().stop();
    QTRY_VERIFY(m_program->host.controller.isStopHeld());
    m_program->host.controller.stopAll(false);
    QTRY_COMPARE_WITH_TIMEOUT(boxes.texts().filter(QStringLiteral("FAIL TO START!")).size(), 1, 5000);
    QCOMPARE(m_program->host.peek(0).setPosition, before);
}

void StopControlTest::anotherPressIsSentWhenTheFirstIsLost()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(connectThrough(relay));
    relay.silent = true;
    QSignalSpy answered(&stop(), &StopControl::answered);
    stop().stop();
    stop().stop();
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 2, 4000);
    // Once a press: nobody has pressed since.
    QTest::qWait(1200);
    QCOMPARE(answered.count(), 2);
}

void StopControlTest::theKeyReachesThroughAFileDialog()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    QFileDialog dialog(&m_program->workbench->window());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_F9);
    QVERIFY(stoppedAndHeld());
}

void StopControlTest::theHoldOfAnotherClientIsShown()
{
    QVERIFY(m_program->makeReady());
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(feedback(), QStringLiteral("STOP holds"));
    QVERIFY(stop().isHeld());
    m_program->workbench->action(QStringLiteral("online.release"))->trigger();
    QTRY_VERIFY(!stop().isHeld());
}

void StopControlTest::aStopThatIsNotAcknowledgedIsNamed()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(connectThrough(relay));
    relay.silent = true;
    QElapsedTimer timer;
    timer.start();
    stop().stop();
    QCOMPARE(feedback(), QStringLiteral("STOP sent…"));
    QTRY_COMPARE_WITH_TIMEOUT(feedback(), QStringLiteral("STOP not acknowledged"), 3000);
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    const QString text = m_program->workbench->window().messageBar().text();
    QVERIFY2(text.contains(m_program->session().target()), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("has not answered in time")));
    QVERIFY(m_program->outputText().contains(text));
    // Another press tries again.
    relay.silent = false;
    QTRY_COMPARE_WITH_TIMEOUT(m_program->session().state(), OnlineSession::Online, 5000);
    stop().stop();
    QVERIFY(stoppedAndHeld());
}

void StopControlTest::aHoldWhoseReplyIsLostIsSeenAllTheSame()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    m_program->host.fault("lost-replies 1 StopAll");
    QSignalSpy answered(&stop(), &StopControl::answered);
    stop().stop();
    QVERIFY(stoppedAndHeld());
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QCOMPARE(feedback(), QStringLiteral("STOP holds"));
    QVERIFY(!m_program->workbench->window().messageBar().isVisible());
}

void StopControlTest::aHangingCallDoesNotHoldItUp()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(move());
    m_program->host.fault("late-replies 3000 Reset");
    QVERIFY(resetIsOnItsWay());
    QElapsedTimer timer;
    timer.start();
    stop().stop();
    QVERIFY(stoppedAndHeld());
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_program->workbench->online().background().pending() > 0);
}

void StopControlTest::whatWasQueuedIsRefusedAndThePageGoesOn()
{
    MessageBoxWatcher boxes;
    QVERIFY(m_program->makeReady());
    const double before = m_program->host.peek(0).setPosition;
    m_program->host.fault("late-replies 800 Reset");
    QVERIFY(resetIsOnItsWay());
    m_program->click("motionPushButton");
    QTRY_VERIFY(m_program->workbench->online().background().pending() > 1);
    stop().stop();
    QTRY_VERIFY(stop().isHeld());
    stop().release();
    QTRY_VERIFY(!stop().isHeld());
    // The motion was refused without going out, and says so.
    QTRY_COMPARE_WITH_TIMEOUT(boxes.texts().filter(QStringLiteral("FAIL TO START!")).size(), 1, 5000);
    QCOMPARE(m_program->host.peek(0).setPosition, before);
    // The page still asks for the status.
    QVERIFY(move());
    const auto shown = [this] { return m_program->find<QLineEdit>("statueLineEdit")->text(); };
    QTRY_COMPARE_WITH_TIMEOUT(shown(), QStringLiteral("ContinuousMotion"), 3000);
}

void StopControlTest::itStandsInTheCommandLog()
{
    QVERIFY(m_program->makeReady());
    const CommandLog& log = m_program->workbench->online().commands();
    const int before = log.rowCount();
    stop().stop();
    QVERIFY(stoppedAndHeld());
    QCOMPARE(log.rowCount(), before + 1);
    QCOMPARE(log.index(before, CommandLog::AxisColumn).data().toString(), QStringLiteral("all"));
    QCOMPARE(log.index(before, CommandLog::CommandColumn).data().toString(), QStringLiteral("Stop all axes"));
    QCOMPARE(log.index(before, CommandLog::ArgumentsColumn).data().toString(), QStringLiteral("hold"));
    QCOMPARE(log.index(before, CommandLog::AnswerColumn).data().toString(), QStringLiteral("done"));
}

void StopControlTest::theTipNamesTheKey()
{
    QVERIFY2(button().toolTip().contains(QStringLiteral("F9")), qPrintable(button().toolTip()));
    QCOMPARE(m_program->workbench->action(QStringLiteral("online.stop"))->shortcut(), QKeySequence(Qt::Key_F9));
    m_program->workbench->setLanguage(QStringLiteral("zh_CN"));
    QVERIFY2(button().toolTip().contains(QStringLiteral("F9")), qPrintable(button().toolTip()));
}

QTEST_MAIN(StopControlTest)
#include "StopControlTest.moc"
