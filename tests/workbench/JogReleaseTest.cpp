#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/AxisDebugParams.h"
#include "tests/communication/BrakingWatch.h"
#include "tests/communication/Promise.h"
#include "tests/communication/QuietRelay.h"
#include "tests/communication/WireClient.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>

#include <functional>

namespace {

const char* const forwards = "posJogPushButton";
const char* const backwards = "negJogPushButton";
/// The usual end goes out at once, the watch's after its grace; then the axis has to brake from a slow jog.
constexpr int soon = 1500;

/// Counts the double clicks that a widget gets.
class DoubleClicks : public QObject {
public:
    explicit DoubleClicks(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == QEvent::MouseButtonDblClick ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

/// What the command log has of a jog is one start, and ends behind it: the watch adds one when the page's own is late.
bool isOneJog(const QStringList& ends)
{
    return ends.count(QStringLiteral("start")) == 1 && ends.last() == QLatin1String("end");
}

} // namespace

// A jog whose release never comes ends: the whole program, from the press on the button to the axis.
class JogReleaseTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aHeldButtonMovesTheAxisUntilItsRelease_data();
    void aHeldButtonMovesTheAxisUntilItsRelease();
    void aReleaseThatTheButtonNeverGetsEnds_data();
    void aReleaseThatTheButtonNeverGetsEnds();
    void whatIsNoHoldMovesNothing_data();
    void whatIsNoHoldMovesNothing();
    void aDoublePressMovesWithItsSecondPressOnly_data();
    void aDoublePressMovesWithItsSecondPressOnly();
    void aDeactivatedProgramEndsItWhileTheButtonIsHeld();
    void theEndOfTheSessionEndsItWhileTheButtonIsHeld_data();
    void theEndOfTheSessionEndsItWhileTheButtonIsHeld();
    void aHalfOpenLinkEndsItWithinTwoSeconds();
    void aLinkCutOnThisSideAloneEndsItWithinTwoSeconds_data();
    void aLinkCutOnThisSideAloneEndsItWithinTwoSeconds();
    void aLateReplyToTheStartDoesNotHoldUpTheEnd();
    void aLostReplyToTheStartDoesNotHoldUpTheEnd();
    void aLostReplyToTheEndIsMadeUpFor();
    void aSecondClientDoesNotEndIt();
    void aSecondClientDoesNotKeepItGoing();
    void otherButtonsAndKeysDoNotHoldIt_data();
    void otherButtonsAndKeysDoNotHoldIt();
    void theWordOfTheWatchStandsInTheOutput();

private:
    /// Makes ready over the relay.
    bool makeReadyOver(const QuietRelay& relay);
    /// Holds the button until the axis moves.
    bool jog(const char* button = forwards);
    /// Milliseconds from what ends the jog of an axis at constant speed to the controller's first braking cycle;
    /// negative when the axis does not come to rest.
    double braking(const std::function<void()>& end);
    void endSession(int how);
    /// Lets go where the page does not see it, so that the end is left to the watch.
    void letGoOverAPopup() const;
    QStringList endsOf(const char* name) const;
    /// A press and its release, sooner than a press counts as a hold. False when this machine was not quick enough.
    bool tap() const;
    /// Makes ready and taps; tries with a new program until the machine was quick enough.
    bool makeReadyAndTap();
    /// Jogs to the end once more and gives what the command log has of that.
    QStringList endsOfAnother(const char* button, const char* name);

    std::unique_ptr<OnlineProgram> m_program;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
};

void JogReleaseTest::init()
{
    m_program = std::make_unique<OnlineProgram>();
    m_boxes = std::make_unique<MessageBoxWatcher>();
}

void JogReleaseTest::cleanup()
{
    // No button stays down for the next test.
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, QPoint(2, 2));
    m_program.reset();
    m_boxes.reset();
}

bool JogReleaseTest::jog(const char* button)
{
    m_program->press(button);
    return m_program->moves();
}

double JogReleaseTest::braking(const std::function<void()>& end)
{
    BrakingWatch watch(m_program->host.controller, 0);
    const double speed = m_program->constantSpeed();
    watch.arm(speed);
    const BrakingWatch::Time begin = BrakingWatch::Clock::now();
    end();
    if (speed == 0 || !m_program->stands(4000) || !QTest::qWaitFor([&watch] { return watch.braked().has_value(); }))
        return -1;
    return BrakingWatch::milliseconds(begin, *watch.braked());
}

void JogReleaseTest::letGoOverAPopup() const
{
    const QPoint place = m_program->workbench->window().mapToGlobal(m_program->placeOf(forwards));
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    menu.popup(place);
    QTest::mouseRelease(menu.windowHandle(), Qt::LeftButton, {}, menu.mapFromGlobal(place));
}

QStringList JogReleaseTest::endsOf(const char* name) const
{
    const CommandLog& log = m_program->workbench->online().commands();
    QStringList ends;
    for (int row = 0; row < log.rowCount(); ++row) {
        const QString command = log.index(row, CommandLog::CommandColumn).data().toString();
        const QString arguments = log.index(row, CommandLog::ArgumentsColumn).data().toString();
        if (command == QLatin1String(name))
            ends.append(arguments.section(QLatin1Char(','), 0, 0));
    }
    return ends;
}

bool JogReleaseTest::tap() const
{
    const QPoint place = m_program->placeOf(forwards);
    QElapsedTimer timer;
    timer.start();
    QTest::mousePress(m_program->window(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, place);
    return timer.elapsed() <= 150;
}

bool JogReleaseTest::makeReadyAndTap()
{
    for (int i = 0; i < 10 && m_program->makeReady(); ++i) {
        if (tap())
            return true;
        cleanup();
        init();
    }
    return false;
}

QStringList JogReleaseTest::endsOfAnother(const char* button, const char* name)
{
    const int before = endsOf(name).size();
    const bool moved = jog(button);
    m_program->release(button);
    const bool ended = moved && m_program->stands(soon)
        && QTest::qWaitFor([this] { return m_program->workbench->online().jogs().count() == 0; });
    return ended ? endsOf(name).mid(before) : QStringList();
}

void JogReleaseTest::aHeldButtonMovesTheAxisUntilItsRelease_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("direction");
    QTest::newRow("forwards") << QByteArray(forwards) << 1;
    QTest::newRow("backwards") << QByteArray(backwards) << -1;
}

void JogReleaseTest::aHeldButtonMovesTheAxisUntilItsRelease()
{
    QFETCH(QByteArray, button);
    QFETCH(int, direction);
    QVERIFY(m_program->makeReady());
    QVERIFY(jog(button));
    const double before = m_program->host.peek(0).actualPosition;
    QTRY_VERIFY(direction * (m_program->host.peek(0).actualPosition - before) > 1);
    QVERIFY(m_program->isMoving());
    m_program->release(button);
    QVERIFY(m_program->stands(soon));
    QTRY_COMPARE(m_program->workbench->online().jogs().count(), 0);
    // The page ends it by itself; where its end goes out in time the watch adds nothing.
    const char* const name = direction > 0 ? "Jog forwards" : "Jog backwards";
    const QStringList expected{ QStringLiteral("start"), QStringLiteral("end") };
    QStringList ends = endsOf(name);
    for (int i = 0; i < 5 && ends != expected; ++i)
        ends = endsOfAnother(button, name);
    QCOMPARE(ends, expected);
}

void JogReleaseTest::aReleaseThatTheButtonNeverGetsEnds_data()
{
    QTest::addColumn<int>("obstacle");
    QTest::newRow("a popup over the held button") << 0;
    QTest::newRow("the button disabled") << 1;
    QTest::newRow("the tab changed") << 2;
    QTest::newRow("another window of the program") << 3;
    QTest::newRow("a modal box") << 4;
    QTest::newRow("the editor closed") << 5;
    QTest::newRow("the axis deleted meanwhile") << 6;
}

void JogReleaseTest::aReleaseThatTheButtonNeverGetsEnds()
{
    QFETCH(int, obstacle);
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    const QPoint place = m_program->placeOf(forwards);
    const QPoint global = m_program->workbench->window().mapToGlobal(place);
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    QWidget other;
    m_boxes.reset();
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    QWindow* getsRelease = m_program->window();
    switch (obstacle) {
    case 0:
        menu.popup(global);
        getsRelease = menu.windowHandle();
        break;
    case 1:
        m_program->find(forwards)->setEnabled(false);
        break;
    case 2:
        m_program->view->findChild<QTabBar*>()->setCurrentIndex(0);
        break;
    case 3:
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        getsRelease = other.windowHandle();
        break;
    case 4:
        OnlineProgram::showModal(box);
        getsRelease = box.windowHandle();
        break;
    case 5:
        m_program->workbench->editors().closeEditor(m_program->workbench->editors().currentEditor());
        break;
    default:
        QVERIFY(m_program->project()->axisModel()->removeAxisTable(m_program->axis(QStringLiteral("Alpha"))));
        break;
    }
    QVERIFY2(m_program->isMoving(), "the jog was to be ended by the release");
    QTest::mouseRelease(getsRelease, Qt::LeftButton, {}, getsRelease->mapFromGlobal(global));
    QVERIFY(m_program->stands(soon));
    QTRY_COMPARE(m_program->workbench->online().jogs().count(), 0);
    QVERIFY2(isOneJog(endsOf("Jog forwards")), qPrintable(endsOf("Jog forwards").join(QLatin1Char(' '))));
    menu.close();
}

void JogReleaseTest::whatIsNoHoldMovesNothing_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("a tap") << 0;
    QTest::newRow("the right button") << 1;
    QTest::newRow("the space bar") << 2;
}

void JogReleaseTest::whatIsNoHoldMovesNothing()
{
    QFETCH(int, action);
    QVERIFY(action == 0 ? makeReadyAndTap() : m_program->makeReady());
    switch (action) {
    case 0:
        QTRY_VERIFY(endsOf("Jog forwards").contains(QStringLiteral("end")));
        break;
    case 1:
        m_program->press(forwards, Qt::RightButton);
        break;
    default:
        m_program->find(forwards)->setFocus();
        QTest::keyPress(m_program->window(), Qt::Key_Space);
        break;
    }
    QVERIFY(!QTest::qWaitFor([&] { return m_program->isMoving(); }, 500));
    if (action == 1)
        m_program->release(forwards, Qt::RightButton);
    if (action == 2)
        QTest::keyRelease(m_program->window(), Qt::Key_Space);
    QCOMPARE(m_program->host.peek(0).setPosition, 0.0);
    QVERIFY(!endsOf("Jog forwards").contains(QStringLiteral("start")));
}

void JogReleaseTest::aDoublePressMovesWithItsSecondPressOnly_data()
{
    QTest::addColumn<bool>("doubleClick");
    QTest::newRow("two presses") << false;
    QTest::newRow("a double click") << true;
}

void JogReleaseTest::aDoublePressMovesWithItsSecondPressOnly()
{
    QFETCH(bool, doubleClick);
    QVERIFY(makeReadyAndTap());
    DoubleClicks doubleClicks(*m_program->find(forwards));
    // The clock of the test's mouse runs on after each release, so that no two presses make a double click.
    if (doubleClick)
        QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval;
    QVERIFY(jog());
    QCOMPARE(doubleClicks.count, doubleClick ? 1 : 0);
    m_program->release(forwards);
    QVERIFY(m_program->stands(soon));
    QTRY_VERIFY2(isOneJog(endsOf("Jog forwards")), qPrintable(endsOf("Jog forwards").join(QLatin1Char(' '))));
    QCOMPARE(endsOf("Jog forwards").first(), QStringLiteral("end"));
}

void JogReleaseTest::aDeactivatedProgramEndsItWhileTheButtonIsHeld()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    // What the window system tells when another program comes to the front.
    emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    QVERIFY(m_program->stands(soon));
    QVERIFY(QGuiApplication::mouseButtons() & Qt::LeftButton);
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    m_program->release(forwards);
    QVERIFY(jog());
}

void JogReleaseTest::theEndOfTheSessionEndsItWhileTheButtonIsHeld_data()
{
    QTest::addColumn<int>("end");
    QTest::newRow("the project closed") << 0;
    QTest::newRow("disconnected") << 1;
    QTest::newRow("the link cut") << 2;
    QTest::newRow("the controller's service restarted") << 3;
    QTest::newRow("the workbench quit") << 4;
}

void JogReleaseTest::endSession(int how)
{
    const int port = m_program->host.server->port();
    switch (how) {
    case 0:
        m_program->workbench->workspace().close();
        break;
    case 1:
        m_program->workbench->action(QStringLiteral("online.disconnect"))->trigger();
        break;
    case 2:
        m_program->host.fault("drop-link");
        break;
    case 3:
        m_program->host.server->shutdown();
        m_program->host.listen(port);
        break;
    default:
        m_program->workbench->shutDown();
        break;
    }
}

void JogReleaseTest::theEndOfTheSessionEndsItWhileTheButtonIsHeld()
{
    QFETCH(int, end);
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    const double milliseconds = braking([this, end] { endSession(end); });
    QVERIFY2(milliseconds >= 0 && milliseconds <= 2000, qPrintable(QString::number(milliseconds)));
    QTRY_COMPARE(m_program->workbench->online().jogs().count(), 0);
    // By now the editor has put a homing method of the controller's list into the record, so there is an offer.
    if (end == 2 || end == 3)
        QVERIFY(m_program->waitUntilOnline());
    // The button is still down, and nothing starts by itself.
    QVERIFY(!m_program->isMoving());
}

bool JogReleaseTest::makeReadyOver(const QuietRelay& relay)
{
    // The page comes first: while it is built the relay passes nothing on, and the link might be lost.
    return m_program->openPage(QStringLiteral("Alpha")) && m_program->connectHere(relay.port())
        && QTest::qWaitFor([this] { return m_program->find("enterDebugButton")->isEnabled(); })
        && m_program->enterDebugMode() && m_program->enable();
}

void JogReleaseTest::aHalfOpenLinkEndsItWithinTwoSeconds()
{
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(makeReadyOver(relay));
    QVERIFY(jog());
    const double milliseconds = braking([&relay] { relay.silent = true; });
    QVERIFY2(milliseconds >= 0 && milliseconds <= silenceNoticedMs, qPrintable(QString::number(milliseconds)));
    QTRY_COMPARE(m_program->session().state(), OnlineSession::Lost);
}

void JogReleaseTest::aLinkCutOnThisSideAloneEndsItWithinTwoSeconds_data()
{
    QTest::addColumn<bool>("comesBack");
    QTest::newRow("and it does not come back") << false;
    QTest::newRow("and it is back at once") << true;
}

void JogReleaseTest::aLinkCutOnThisSideAloneEndsItWithinTwoSeconds()
{
    QFETCH(bool, comesBack);
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(makeReadyOver(relay));
    QVERIFY(jog());
    const double milliseconds = braking([&] {
        relay.silent = !comesBack;
        relay.hangUp();
    });
    // Who is back has ended its former session; otherwise the controller has to notice by itself.
    QVERIFY2(milliseconds >= 0 && milliseconds <= (comesBack ? 1200 : silenceNoticedMs),
        qPrintable(QString::number(milliseconds)));
    // The button is still down. Nothing starts by itself, nor is the axis in debug mode of a session that is gone.
    QTRY_COMPARE(int(m_program->host.peek(0).debugMode), 0);
    QVERIFY(!QTest::qWaitFor([this] { return m_program->isMoving(); }, 500));
    m_program->release(forwards);
    if (!comesBack)
        return;
    QTRY_VERIFY(m_program->workbench->online().takeover().offer() || m_program->workbench->connection().isOnline());
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(m_program->enterDebugMode() && m_program->enable() && jog());
}

void JogReleaseTest::aLateReplyToTheStartDoesNotHoldUpTheEnd()
{
    QVERIFY(m_program->makeReady());
    m_program->host.fault("late-replies 2000 JopPos");
    QVERIFY(jog());
    m_program->release(forwards);
    QVERIFY(m_program->stands(soon));
    m_program->host.fault("none");
    QTRY_COMPARE_WITH_TIMEOUT(m_program->workbench->online().jogs().count(), 0, 10000);
    QVERIFY(!m_program->isMoving());
    // The page goes on.
    QVERIFY(QTest::qWaitFor([this] { return m_program->find(forwards)->isEnabled(); }, 5000));
    QVERIFY(jog());
}

void JogReleaseTest::aLostReplyToTheStartDoesNotHoldUpTheEnd()
{
    QVERIFY(m_program->makeReady());
    m_program->host.fault("lost-replies 1 JopPos");
    QVERIFY(jog());
    m_program->release(forwards);
    QVERIFY(m_program->stands(soon));
}

void JogReleaseTest::aLostReplyToTheEndIsMadeUpFor()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    m_program->host.fault("lost-replies 1 JopPos");
    // The watch's end, since the page's own would wait for ten seconds.
    letGoOverAPopup();
    QVERIFY(m_program->stands(soon));
    QTRY_COMPARE_WITH_TIMEOUT(m_program->workbench->online().jogs().count(), 0, 5000);
    const QStringList ends = endsOf("Jog forwards");
    QVERIFY2(isOneJog(ends) && ends.size() >= 3, qPrintable(ends.join(QLatin1Char(' '))));
}

void JogReleaseTest::aSecondClientDoesNotEndIt()
{
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    WireClient stranger(m_program->host.address());
    QVERIFY(stranger.isLoggedIn());
    QCOMPARE(stranger.enterDebugMode(0, 5000), int(Diagnosis::ownedByOther));
    QCOMPARE(stranger.endJog(0, true), 0);
    QCOMPARE(stranger.endJog(0, false), 0);
    QCOMPARE(stranger.stop(0), int(Diagnosis::ownedByOther));
    QVERIFY(!QTest::qWaitFor([this] { return !m_program->isMoving(); }, 300));
    m_program->release(forwards);
    QVERIFY(m_program->stands(soon));
    QTRY_COMPARE(m_program->workbench->online().jogs().count(), 0);
    QVERIFY2(isOneJog(endsOf("Jog forwards")), qPrintable(endsOf("Jog forwards").join(QLatin1Char(' '))));
}

void JogReleaseTest::aSecondClientDoesNotKeepItGoing()
{
    constexpr int timeout = 1000;
    m_program->workbench->settings().setValue(Solution::ConfigKey::communicationTimeout(), timeout);
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    WireClient stranger(m_program->host.address());
    QVERIFY(stranger.isLoggedIn());
    // Without its page nobody asks for the axis any more, and the button is still down.
    m_program->workbench->editors().closeEditor(m_program->workbench->editors().currentEditor());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(QTest::qWaitFor(
        [&] {
            stranger.endJog(0, true);
            stranger.keepAlive(0);
            stranger.readStatus(0);
            return !m_program->isMoving();
        },
        4000));
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_program->session().isLoggedIn());
    QTRY_COMPARE(int(m_program->host.peek(0).debugMode), 0);
    // It was the time-out that has ended it.
    QCOMPARE(int(m_program->host.peek(0).axisError), int(Diagnosis::debugTimeout));
}

void JogReleaseTest::otherButtonsAndKeysDoNotHoldIt_data()
{
    QTest::addColumn<bool>("space");
    QTest::newRow("the right button held too") << false;
    QTest::newRow("the space bar held too") << true;
}

void JogReleaseTest::otherButtonsAndKeysDoNotHoldIt()
{
    QFETCH(bool, space);
    QVERIFY(m_program->makeReady());
    QVERIFY(jog());
    if (space)
        QTest::keyPress(m_program->window(), Qt::Key_Space);
    else
        m_program->press(forwards, Qt::RightButton);
    QVERIFY(m_program->isMoving());
    m_program->release(forwards);
    QVERIFY(m_program->stands(soon));
    QVERIFY(!QTest::qWaitFor([this] { return m_program->isMoving(); }, 300));
    if (space)
        QTest::keyRelease(m_program->window(), Qt::Key_Space);
    else
        m_program->release(forwards, Qt::RightButton);
    QVERIFY(!QTest::qWaitFor([this] { return m_program->isMoving(); }, 300));
}

void JogReleaseTest::theWordOfTheWatchStandsInTheOutput()
{
    QVERIFY(m_program->makeReady());
    QSignalSpy ended(&m_program->workbench->online().jogs(), &JogWatch::ended);
    QVERIFY(jog());
    letGoOverAPopup();
    QVERIFY(m_program->stands(soon));
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toInt(), 0);
    const QString lines = m_program->outputText();
    QVERIFY2(lines.contains(QStringLiteral("The jog of axis Alpha was ended here")), qPrintable(lines));
}

QTEST_MAIN(JogReleaseTest)
#include "JogReleaseTest.moc"
