#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/BrakingWatch.h"
#include "tests/communication/Promise.h"
#include "tests/communication/QuietRelay.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTableWidget>

#include <csignal>
#include <cstdio>

namespace {

/// The other workbench: this program once more, with its own axis held on JOG+.
class OtherWorkbench {
public:
    explicit OtherWorkbench(const ControllerAddress& address, const char* what = "--work")
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(),
            { QString::fromLatin1(what), address.text(), QString::fromLatin1(address.token) });
    }
    ~OtherWorkbench()
    {
        signal(SIGKILL);
        m_process.waitForFinished(3000);
    }

    bool isJogging() { return says("jogging"); }
    bool hasReplaced() { return says("replaced"); }
    void signal(int number) const
    {
        if (m_process.processId() > 0)
            ::kill(static_cast<pid_t>(m_process.processId()), number);
    }

private:
    bool says(const char* word)
    {
        return QTest::qWaitFor([this] { return m_process.canReadLine(); }, 20000)
            && m_process.readLine().trimmed() == word;
    }

    QProcess m_process;
};

void say(const char* word)
{
    std::puts(word);
    std::fflush(stdout);
}

/// The other workbench connects and has the controller take its axes over.
void connectTo(const OnlineProgram& program, const QString& address, const QByteArray& token)
{
    ControllerAddress controller;
    QString error;
    controller.token = token;
    if (!controller.setHostAndPort(address, &error))
        qFatal("%s", qPrintable(error));
    program.session().connectTo(controller, false);
    if (!program.waitUntilOnline())
        qFatal("the other workbench does not come on line");
}

/// It has an axis in debug mode and holds a jog.
int work(const QString& address, const QByteArray& token)
{
    OnlineProgram program;
    connectTo(program, address, token);
    if (!program.openPage(QStringLiteral("Alpha")) || !program.enterDebugMode() || !program.enable())
        qFatal("the other workbench cannot work");
    program.press("posJogPushButton");
    if (!QTest::qWaitFor([&program] { return program.workbench->online().jogs().count() > 0; }, 3000))
        qFatal("the other workbench cannot jog");
    say("jogging");
    return QApplication::exec();
}

/// Its project says something else of an axis.
int replace(const QString& address, const QByteArray& token)
{
    OnlineProgram program;
    program.axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("55"));
    connectTo(program, address, token);
    say("replaced");
    return QApplication::exec();
}

} // namespace

// Two workbenches on one controller, and the end of one of them while its user holds a jog button.
class TwoWorkbenchesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aWorkbenchThatGoesLeavesNothingMoving_data();
    void aWorkbenchThatGoesLeavesNothingMoving();
    void theirAxesDoNotDisturbEachOther();
    void stopStopsTheAxesOfBoth();
    void theAxesOfAWorkingWorkbenchAreNotReplaced();
    void theAxesOfAWorkbenchThatIsGoneAreReplacedAtOnce_data();
    void theAxesOfAWorkbenchThatIsGoneAreReplacedAtOnce();
    void aWorkbenchThatComesBackLeavesTheOtherAlone();
    void axesThatTheOtherReplacesAreComparedAgain();

private:
    std::unique_ptr<OnlineProgram> m_program;
    std::unique_ptr<OtherWorkbench> m_other;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
};

void TwoWorkbenchesTest::init()
{
    m_boxes = std::make_unique<MessageBoxWatcher>();
    m_program = std::make_unique<OnlineProgram>();
    QVERIFY(m_program->connectHere());
    m_other = std::make_unique<OtherWorkbench>(m_program->host.address());
    QVERIFY(m_other->isJogging());
    QVERIFY(m_program->moves());
}

void TwoWorkbenchesTest::cleanup()
{
    m_other.reset();
    m_program.reset();
    m_boxes.reset();
}

void TwoWorkbenchesTest::aWorkbenchThatGoesLeavesNothingMoving_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("stopped") << SIGSTOP;
    QTest::newRow("terminated") << SIGTERM;
}

void TwoWorkbenchesTest::aWorkbenchThatGoesLeavesNothingMoving()
{
    QFETCH(int, signal);
    BrakingWatch watch(m_program->host.controller, 0);
    const double speed = m_program->constantSpeed();
    QVERIFY(speed > 0);
    watch.arm(speed);
    const BrakingWatch::Time gone = BrakingWatch::Clock::now();
    m_other->signal(signal);
    QVERIFY(m_program->stands(4000));
    QTRY_VERIFY(watch.braked());
    const double milliseconds = BrakingWatch::milliseconds(gone, *watch.braked());
    QVERIFY2(milliseconds <= silenceNoticedMs, qPrintable(QString::number(milliseconds)));
    QTRY_COMPARE(int(m_program->host.peek(0).debugMode), 0);
    // The axis is free for this one.
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->enterDebugMode() && m_program->enable());
}

void TwoWorkbenchesTest::theirAxesDoNotDisturbEachOther()
{
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")));
    QTRY_VERIFY(m_program->find("basicTabWidget")->isEnabled());
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 1, 5000), Diagnosis::ownedByOther);
    m_program->click("stopPushButton");
    QTRY_COMPARE(m_boxes->count(), 1);
    QCOMPARE(m_boxes->texts().first(), QStringLiteral("Stop failed!,Another client has the axis in debug mode."));
    QVERIFY(m_program->isMoving());
    QVERIFY(m_program->openPage(QStringLiteral("Beta")) && m_program->enterDebugMode() && m_program->enable());
    // Off the screen nobody gives the focus back after a box.
    m_program->workbench->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_program->workbench->window()));
    m_program->press("posJogPushButton");
    QVERIFY(m_program->moves(1));
    m_program->release("posJogPushButton");
    QVERIFY(m_program->stands(1500, 1));
    QVERIFY(m_program->isMoving(0));
}

void TwoWorkbenchesTest::stopStopsTheAxesOfBoth()
{
    QTest::keyClick(m_program->window(), Qt::Key_F9);
    QVERIFY(m_program->stands(1500));
    QTRY_VERIFY(m_program->workbench->online().stop().isHeld());
}

void TwoWorkbenchesTest::theAxesOfAWorkingWorkbenchAreNotReplaced()
{
    m_program->session().disconnectNow();
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QVERIFY(m_program->connectHere());
    // An enabled axis forbids it; the reason stands in the output.
    const QString lines = m_program->outputText();
    QVERIFY2(lines.contains(QStringLiteral("has not taken the axes over")), qPrintable(lines));
    QVERIFY(m_program->isMoving());
}

void TwoWorkbenchesTest::theAxesOfAWorkbenchThatIsGoneAreReplacedAtOnce_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("stopped") << SIGSTOP;
}

void TwoWorkbenchesTest::theAxesOfAWorkbenchThatIsGoneAreReplacedAtOnce()
{
    QFETCH(int, signal);
    m_program->session().disconnectNow();
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    m_other->signal(signal);
    // The controller may not have noticed yet; nobody has to click twice for that.
    QVERIFY(m_program->connectHere());
    QVERIFY2(!m_program->outputText().contains(QStringLiteral("has not taken")), qPrintable(m_program->outputText()));
    QVERIFY(!m_program->isMoving());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->enterDebugMode());
}

void TwoWorkbenchesTest::aWorkbenchThatComesBackLeavesTheOtherAlone()
{
    m_program->session().disconnectNow();
    QuietRelay relay(m_program->host.server->port());
    QVERIFY(m_program->connectHere(relay.port()));
    QSignalSpy lost(&m_program->session(), &OnlineSession::lost);
    relay.hangUp();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, 3000);
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(!QTest::qWaitFor([this] { return !m_program->isMoving(); }, 500));
}

void TwoWorkbenchesTest::axesThatTheOtherReplacesAreComparedAgain()
{
    m_other = std::make_unique<OtherWorkbench>(m_program->host.address(), "--replace");
    QVERIFY(m_other->hasReplaced());
    AxesTakeover& takeover = m_program->workbench->online().takeover();
    QTRY_VERIFY_WITH_TIMEOUT(takeover.offer(), 5000);
    QVERIFY(!m_program->workbench->connection().isOnline());
    const auto* table = takeover.offer()->findChild<QTableWidget*>();
    QCOMPARE(table->rowCount(), 1);
    QCOMPARE(table->item(0, 3)->text(), QStringLiteral("55"));
    // This one wants its own back; then it is the other's turn to be asked.
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(!m_program->session().isDirectLogin());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->enterDebugMode());
}

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    if (argc == 4 && qstrcmp(argv[1], "--work") == 0)
        return work(QString::fromLatin1(argv[2]), argv[3]);
    if (argc == 4 && qstrcmp(argv[1], "--replace") == 0)
        return replace(QString::fromLatin1(argv[2]), argv[3]);
    TwoWorkbenchesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TwoWorkbenchesTest.moc"
