#include "workbench/online/StopControl.h"

#include "protocol/DiagnosisCodes.h"
#include "tests/communication/QuietRelay.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/StopProgram.h"
#include "workbench/MessageBar.h"
#include "workbench/ProjectTreeView.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QToolBar>

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
    void theButtonStaysInANarrowWindow_data();
    void theButtonStaysInANarrowWindow();
    void nobodyCanHideTheButton();
    void theMenuStopsToo();
    void offlineThereIsNothingToStop();
    void itHoldsUntilItIsReleased();
    void aHoldOutlivesALostLink();
    void everyPressDiscardsTheQueue();
    void theKeyReachesThroughAFileDialog();
    void theHoldOfAnotherClientIsShown();
    void aStopThatIsNotAcknowledgedIsNamed();
    void aHoldWhoseReplyIsLostIsSeenAllTheSame();
    void aHangingCallDoesNotHoldItUp();
    void whatWasQueuedIsRefusedAndThePageGoesOn();
    void itStandsInTheCommandLog();
    void theTipNamesTheKey();

private:
    std::unique_ptr<StopProgram> m_program;
};

void StopControlTest::init()
{
    m_program = std::make_unique<StopProgram>();
}

void StopControlTest::cleanup()
{
    m_program.reset();
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
    QVERIFY(m_program->move());
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
        OnlineProgram::showModal(box);
        if (place == 3)
            OnlineProgram::showModal(second);
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
    QVERIFY(m_program->stoppedAndHeld());
    QTest::keyRelease(target, Qt::Key_F9, Qt::KeyboardModifiers(modifiers));
    if (place == 5)
        combo->hidePopup();
}

void StopControlTest::theKeyCountsOnceAPress()
{
    QVERIFY(m_program->makeReady());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
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
    QVERIFY(m_program->move());
    const QPoint place
        = m_program->button().mapTo(&m_program->workbench->window(), m_program->button().rect().center());
    QTest::mousePress(m_program->window(), Qt::LeftButton, {}, place);
    QVERIFY(m_program->stoppedAndHeld());
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, place);
    QVERIFY(!m_program->button().hasFocus());
}

void StopControlTest::theButtonStaysInReachUnderAModalBox()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->move());
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    OnlineProgram::showModal(box);
    auto* reach = box.findChild<StopButton*>(QStringLiteral("stopButtonInReach"));
    QVERIFY(reach && reach->isVisible() && reach->isEnabled());
    QCOMPARE(reach->geometry().topLeft(), m_program->button().mapToGlobal(QPoint(0, 0)));
    QCOMPARE(reach->size(), m_program->button().size());
    // The window's own is shut off.
    const QPoint place
        = m_program->button().mapTo(&m_program->workbench->window(), m_program->button().rect().center());
    QTest::mouseClick(m_program->window(), Qt::LeftButton, {}, place);
    QVERIFY(m_program->isMoving());
    QCOMPARE(m_program->feedback(), QString());
    QTest::mousePress(reach->windowHandle(), Qt::LeftButton, {}, reach->rect().center());
    QVERIFY(m_program->stoppedAndHeld());
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
    QVERIFY(m_program->move());
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    menu.popup(QPoint(300, 300));
    const QPoint place = m_program->button().mapToGlobal(m_program->button().rect().center());
    QTest::mousePress(menu.windowHandle(), Qt::LeftButton, {}, menu.mapFromGlobal(place));
    QVERIFY(m_program->stoppedAndHeld());
    menu.close();
}

void StopControlTest::theButtonStaysInANarrowWindow_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("in English") << QStringLiteral("en");
    QTest::newRow("in Chinese") << QStringLiteral("zh_CN");
}

void StopControlTest::theButtonStaysInANarrowWindow()
{
    QFETCH(QString, language);
    m_program->workbench->setLanguage(language);
    QVERIFY(m_program->connectHere());
    MainWindow& window = m_program->workbench->window();
    const auto inSight = [&window](const QWidget& widget) {
        return widget.isVisible() && window.rect().contains(QRect(widget.mapTo(&window, QPoint()), widget.size()))
            && widget.width() >= widget.sizeHint().width();
    };
    window.resize(window.minimumSizeHint());
    QTRY_VERIFY(inSight(m_program->button()));
    m_program->host.fault("refuse 9 StopAll");
    m_program->stop().stop();
    const QLabel& feedback = window.stopFeedback();
    QTRY_VERIFY(inSight(m_program->button()) && inSight(feedback) && feedback.width() > m_program->button().width());
    m_program->host.fault("none");
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    QTRY_VERIFY(inSight(m_program->button()) && inSight(feedback));
}

void StopControlTest::nobodyCanHideTheButton()
{
    const std::unique_ptr<QMenu> menu(m_program->workbench->window().createPopupMenu());
    auto* bar = m_program->workbench->window().findChild<QToolBar*>(QStringLiteral("stopBar"));
    QVERIFY(menu && bar);
    for (const QAction* action : menu->actions())
        QVERIFY(action != bar->toggleViewAction() || !action->isVisible());
    QVERIFY(bar->isAncestorOf(&m_program->button()));
}

void StopControlTest::theMenuStopsToo()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->move());
    m_program->workbench->action(QStringLiteral("online.stop"))->trigger();
    QVERIFY(m_program->stoppedAndHeld());
}

void StopControlTest::offlineThereIsNothingToStop()
{
    QVERIFY(!m_program->button().isEnabled());
    QVERIFY(!m_program->workbench->action(QStringLiteral("online.stop"))->isEnabled());
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    QTest::keyClick(m_program->window(), Qt::Key_F9);
    m_program->stop().stop();
    m_program->stop().release();
    QVERIFY(!QTest::qWaitFor([&answered] { return !answered.isEmpty(); }, 200));
    QVERIFY(m_program->feedback().isEmpty());
}

void StopControlTest::itHoldsUntilItIsReleased()
{
    QVERIFY(m_program->makeReady());
    QAction* release = m_program->workbench->action(QStringLiteral("online.release"));
    QVERIFY(!release->isEnabled() && !release->isVisible());
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
    QVERIFY(release->isEnabled() && release->isVisible());
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::emergencyStop);
    release->trigger();
    QTRY_VERIFY(!m_program->stop().isHeld());
    QVERIFY(m_program->feedback().isEmpty());
    QVERIFY(!release->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::ok, 3000);
}

void StopControlTest::aHoldOutlivesALostLink()
{
    QVERIFY(m_program->makeReady());
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
    m_program->host.fault("drop-link");
    QTRY_VERIFY_WITH_TIMEOUT(m_program->session().state() != OnlineSession::Online, 3000);
    QVERIFY(m_program->waitUntilOnline());
    QTRY_VERIFY(m_program->stop().isHeld());
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    m_program->workbench->action(QStringLiteral("online.release"))->trigger();
    QTRY_VERIFY(!m_program->stop().isHeld());
}

/// Also a press that adds nothing keeps queued motion from going out.
void StopControlTest::everyPressDiscardsTheQueue()
{
    MessageBoxWatcher boxes;
    QVERIFY(m_program->makeReady());
    const double before = m_program->host.peek(0).setPosition;
    m_program->host.fault("late-replies 2500 Reset");
    m_program->host.fault("late-replies 700 StopAll");
    QVERIFY(m_program->resetIsOnItsWay());
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->host.controller.stopAll(false);
    m_program->click("motionPushButton");
    QTRY_VERIFY(m_program->workbench->online().background().pending() > 1);
    m_program->stop().stop();
    QTRY_VERIFY(m_program->host.controller.isStopHeld());
    m_program->host.controller.stopAll(false);
    QTRY_COMPARE_WITH_TIMEOUT(boxes.texts().filter(QStringLiteral("FAIL TO START!")).size(), 1, 5000);
    QCOMPARE(m_program->host.peek(0).setPosition, before);
}

void StopControlTest::theKeyReachesThroughAFileDialog()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->move());
    QFileDialog dialog(&m_program->workbench->window());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_F9);
    QVERIFY(m_program->stoppedAndHeld());
}

void StopControlTest::theHoldOfAnotherClientIsShown()
{
    QVERIFY(m_program->makeReady());
    m_program->host.controller.stopAll(true);
    QTRY_COMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(m_program->stop().isHeld());
    m_program->workbench->action(QStringLiteral("online.release"))->trigger();
    QTRY_VERIFY(!m_program->stop().isHeld());
}

void StopControlTest::aStopThatIsNotAcknowledgedIsNamed()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    relay.silent = true;
    QElapsedTimer timer;
    timer.start();
    m_program->stop().stop();
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP sent…"));
    QTRY_COMPARE_WITH_TIMEOUT(m_program->feedback(), QStringLiteral("STOP not acknowledged"), 3000);
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    const QString text = m_program->workbench->window().messageBar().text();
    QVERIFY2(text.contains(m_program->session().target()), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("has not answered in time")));
    QVERIFY(m_program->outputText().contains(text));
    // Another press tries again.
    relay.silent = false;
    QTRY_COMPARE_WITH_TIMEOUT(m_program->session().state(), OnlineSession::Online, 5000);
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
}

void StopControlTest::aHoldWhoseReplyIsLostIsSeenAllTheSame()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->move());
    m_program->host.fault("lost-replies 1 StopAll");
    QSignalSpy answered(&m_program->stop(), &StopControl::answered);
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
    QTRY_COMPARE_WITH_TIMEOUT(answered.count(), 1, 3000);
    QCOMPARE(m_program->feedback(), QStringLiteral("STOP holds"));
    QVERIFY(!m_program->workbench->window().messageBar().isVisible());
}

void StopControlTest::aHangingCallDoesNotHoldItUp()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(m_program->move());
    m_program->host.fault("late-replies 3000 Reset");
    QVERIFY(m_program->resetIsOnItsWay());
    QElapsedTimer timer;
    timer.start();
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
    QVERIFY2(timer.elapsed() < 2500, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_program->workbench->online().background().pending() > 0);
}

void StopControlTest::whatWasQueuedIsRefusedAndThePageGoesOn()
{
    MessageBoxWatcher boxes;
    QVERIFY(m_program->makeReady());
    const double before = m_program->host.peek(0).setPosition;
    m_program->host.fault("late-replies 2500 Reset");
    QVERIFY(m_program->resetIsOnItsWay());
    m_program->click("motionPushButton");
    QTRY_VERIFY(m_program->workbench->online().background().pending() > 1);
    m_program->stop().stop();
    QTRY_VERIFY(m_program->stop().isHeld());
    m_program->stop().release();
    QTRY_VERIFY(!m_program->stop().isHeld());
    // The motion was refused without going out, and says so.
    QTRY_COMPARE_WITH_TIMEOUT(boxes.texts().filter(QStringLiteral("FAIL TO START!")).size(), 1, 5000);
    QCOMPARE(m_program->host.peek(0).setPosition, before);
    // The page still asks for the status.
    QVERIFY(m_program->move());
    const auto shown = [this] { return m_program->find<QLineEdit>("statueLineEdit")->text(); };
    QTRY_COMPARE_WITH_TIMEOUT(shown(), QStringLiteral("ContinuousMotion"), 3000);
}

void StopControlTest::itStandsInTheCommandLog()
{
    QVERIFY(m_program->makeReady());
    const CommandLog& log = m_program->workbench->online().commands();
    const int before = log.rowCount();
    m_program->stop().stop();
    QVERIFY(m_program->stoppedAndHeld());
    // The news may come before the answer, which is what is logged.
    QTRY_COMPARE(log.rowCount(), before + 1);
    QCOMPARE(log.index(before, CommandLog::AxisColumn).data().toString(), QStringLiteral("all"));
    QCOMPARE(log.index(before, CommandLog::CommandColumn).data().toString(), QStringLiteral("Stop all axes"));
    QCOMPARE(log.index(before, CommandLog::ArgumentsColumn).data().toString(), QStringLiteral("hold"));
    QCOMPARE(log.index(before, CommandLog::AnswerColumn).data().toString(), QStringLiteral("done"));
}

void StopControlTest::theTipNamesTheKey()
{
    QVERIFY2(m_program->button().toolTip().contains(QStringLiteral("F9")), qPrintable(m_program->button().toolTip()));
    QCOMPARE(m_program->workbench->action(QStringLiteral("online.stop"))->shortcut(), QKeySequence(Qt::Key_F9));
    m_program->workbench->setLanguage(QStringLiteral("zh_CN"));
    QVERIFY2(m_program->button().toolTip().contains(QStringLiteral("F9")), qPrintable(m_program->button().toolTip()));
}

QTEST_MAIN(StopControlTest)
#include "StopControlTest.moc"
