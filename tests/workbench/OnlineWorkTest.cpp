#include "host/communication/RpcCmdSend.h"
#include "protocol/AxisRefLayout.h"
#include "tests/communication/ControllerClient.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>

namespace {

/// The real program at a port that stays the same, so that it can be replaced by another.
class RealController {
public:
    ~RealController() { end(); }

    bool start(const QStringList& more = {})
    {
        QStringList arguments{ QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(m_address.port) };
        m_process = std::make_unique<QProcess>();
        m_process->start(QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller"), arguments + more);
        m_process->write("right\n");
        if (!m_process->waitForReadyRead(5000))
            return false;
        QString ignored;
        m_address.token = "right";
        const QByteArray line = m_process->readLine().trimmed();
        return m_address.setHostAndPort(QString::fromLatin1(line.mid(int(qstrlen("listening on ")))), &ignored);
    }
    void signal(int number) const { ::kill(static_cast<pid_t>(m_process->processId()), number); }
    void end()
    {
        if (!m_process)
            return;
        signal(SIGKILL);
        m_process->waitForFinished(3000);
        m_process.reset();
    }
    ControllerAddress address() const { return m_address; }

private:
    std::unique_ptr<QProcess> m_process;
    ControllerAddress m_address;
};

enum Accident { Killed, Paused, Restarted, Replaced };
enum Work { Polling, Jogging, ReadingABox };

} // namespace

// Work on a controller in the whole program, and what can come between.
class OnlineWorkTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void oneClickLeadsToAMovingAxis();
    void accidentsOfTheController_data();
    void accidentsOfTheController();
    void aRestartedControllerStandsWhileTheButtonIsHeld();
    void theConnectionSurvivesTheEditor();
    void whatIsUnderWayDoesNotHoldUpTheEnd_data();
    void whatIsUnderWayDoesNotHoldUpTheEnd();
    void settingsOfAnyKindLeaveThePageUsable_data();
    void settingsOfAnyKindLeaveThePageUsable();
    void aDirectLoginRefusesDebugging();
    void repliesOfAnotherLengthLeaveThePageAsItIs();
    void theWholeWayWorksOverTls();
    void lateAndLostRepliesLeaveThePageUsable_data();
    void lateAndLostRepliesLeaveThePageUsable();

private:
    void happen(int accident);
    void endWork(int end, const QString& otherProject);
    /// Debug mode, enabled, and a jog that moves and ends.
    bool canWork();
    QString shownState() const { return m_program->find<QLineEdit>("statueLineEdit")->text(); }

    std::unique_ptr<OnlineProgram> m_program;
    std::unique_ptr<RealController> m_controller;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
};

void OnlineWorkTest::init()
{
    m_program = std::make_unique<OnlineProgram>();
    m_boxes = std::make_unique<MessageBoxWatcher>();
}

void OnlineWorkTest::cleanup()
{
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, QPoint(2, 2));
    m_program.reset();
    m_controller.reset();
    m_boxes.reset();
}

bool OnlineWorkTest::canWork()
{
    if (!m_program->find("basicTabWidget")->isEnabled() && !m_program->enterDebugMode())
        return false;
    if (!m_program->find("posJogPushButton")->isEnabled() && !m_program->enable())
        return false;
    m_program->press("posJogPushButton");
    const bool moved = QTest::qWaitFor([] { return statusOf(0).setVelocity != 0; }, 3000);
    m_program->release("posJogPushButton");
    return moved && QTest::qWaitFor([] { return statusOf(0).setVelocity == 0; }, 3000);
}

void OnlineWorkTest::oneClickLeadsToAMovingAxis()
{
    QVERIFY(m_program->connectBuiltIn());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")));
    QVERIFY(canWork());
    const double place = statusOf(0).actualPosition;
    QVERIFY(place > 0);
    m_program->press("negJogPushButton");
    QVERIFY(QTest::qWaitFor([place] { return statusOf(0).actualPosition < place; }, 3000));
    m_program->release("negJogPushButton");
    QVERIFY(QTest::qWaitFor([] { return statusOf(0).setVelocity == 0; }, 3000));
    QVERIFY(m_boxes->boxes.isEmpty());
}

void OnlineWorkTest::accidentsOfTheController_data()
{
    QTest::addColumn<int>("accident");
    QTest::addColumn<int>("work");
    const char* const accidents[] = { "killed", "paused", "restarted", "replaced by another version" };
    const char* const works[] = { "polling", "jogging", "a message box is open" };
    for (int accident = Killed; accident <= Replaced; ++accident) {
        for (int work = Polling; work <= ReadingABox; ++work)
            QTest::newRow(qPrintable(
                QStringLiteral("%1 while %2").arg(QLatin1String(accidents[accident]), QLatin1String(works[work]))))
                << accident << work;
    }
}

void OnlineWorkTest::happen(int accident)
{
    if (accident == Paused) {
        m_controller->signal(SIGSTOP);
        return;
    }
    m_controller->end();
    if (accident == Restarted)
        QVERIFY(m_controller->start());
    if (accident == Replaced)
        QVERIFY(m_controller->start({ QStringLiteral("--fault"), QStringLiteral("version 2") }));
}

void OnlineWorkTest::accidentsOfTheController()
{
    QFETCH(int, accident);
    QFETCH(int, work);
    m_controller = std::make_unique<RealController>();
    QVERIFY(m_controller->start());
    m_program->session().connectTo(m_controller->address(), false);
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->enterDebugMode() && m_program->enable());
    QElapsedTimer timer;
    if (work == ReadingABox) {
        m_boxes->meanwhile([&] {
            timer.start();
            happen(accident);
            QTRY_VERIFY_WITH_TIMEOUT(!m_program->workbench->connection().isOnline(), 4000);
        });
        // The page shows what the controller says to a preset position of an axis that jogs elsewhere: a refusal.
        RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 0, 5000);
        m_program->click("motionPushButton");
        QTRY_VERIFY_WITH_TIMEOUT(m_boxes->count() > 0, 5000);
    } else {
        if (work == Jogging) {
            m_program->press("posJogPushButton");
            QVERIFY(QTest::qWaitFor([] { return statusOf(0).setVelocity != 0; }, 3000));
        }
        timer.start();
        happen(accident);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!m_program->workbench->connection().isOnline(), 4000);
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QTRY_VERIFY(shownState().isEmpty());
    QVERIFY(!m_program->find("posJogPushButton")->isEnabled());
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, QPoint(2, 2));
    if (accident == Replaced) {
        QTRY_COMPARE_WITH_TIMEOUT(m_program->session().state(), OnlineSession::Offline, 8000);
        QVERIFY(m_program->outputText().contains(QStringLiteral("version 2")));
        happen(Restarted);
        m_program->session().connectTo(m_controller->address(), false);
    } else if (accident == Killed) {
        QCOMPARE(m_program->session().state(), OnlineSession::Lost);
        QVERIFY(m_controller->start());
    } else if (accident == Paused) {
        m_controller->signal(SIGCONT);
    }
    QVERIFY(QTest::qWaitFor([this] { return m_program->waitUntilOnline(); }, 8000));
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")));
    // After a pause the controller has left debug mode by itself; the page follows.
    QTRY_VERIFY_WITH_TIMEOUT(!shownState().isEmpty(), 3000);
    QTRY_VERIFY_WITH_TIMEOUT(statusOf(0).debugMode == 0, 3000);
    QTRY_VERIFY_WITH_TIMEOUT(!m_program->find("basicTabWidget")->isEnabled(), 3000);
    QVERIFY(canWork());
}

void OnlineWorkTest::aRestartedControllerStandsWhileTheButtonIsHeld()
{
    m_controller = std::make_unique<RealController>();
    QVERIFY(m_controller->start());
    m_program->session().connectTo(m_controller->address(), false);
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->enterDebugMode() && m_program->enable());
    m_program->press("posJogPushButton");
    QVERIFY(QTest::qWaitFor([] { return statusOf(0).setVelocity != 0; }, 3000));
    QSignalSpy lost(&m_program->session(), &OnlineSession::lost);
    happen(Restarted);
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, 4000);
    QCOMPARE(m_program->workbench->online().jogs().count(), 0);
    QVERIFY(QTest::qWaitFor([this] { return m_program->waitUntilOnline(); }, 8000));
    QVERIFY(QGuiApplication::mouseButtons() & Qt::LeftButton);
    QCOMPARE(statusOf(0).axisState, std::uint16_t(0));
    QVERIFY(!QTest::qWaitFor([] { return statusOf(0).setVelocity != 0 || statusOf(0).debugMode != 0; }, 500));
    m_program->release("posJogPushButton");
    QVERIFY(canWork());
}

void OnlineWorkTest::theConnectionSurvivesTheEditor()
{
    QVERIFY(m_program->makeReady());
    m_program->workbench->editors().closeEditor(m_program->workbench->editors().currentEditor());
    QVERIFY(m_program->workbench->connection().isOnline());
    QVERIFY(m_program->openPage(QStringLiteral("Beta")));
    QVERIFY(m_program->enterDebugMode() && m_program->enable());
    // The axis of the closed page is still in debug mode, since closing sends nothing.
    QVERIFY(m_program->host.peek(0).debugMode != 0);
}

void OnlineWorkTest::whatIsUnderWayDoesNotHoldUpTheEnd_data()
{
    QTest::addColumn<int>("end");
    QTest::newRow("the editor closed") << 0;
    QTest::newRow("the project closed") << 1;
    QTest::newRow("another project opened") << 2;
    QTest::newRow("the workbench quit") << 3;
}

void OnlineWorkTest::endWork(int end, const QString& otherProject)
{
    switch (end) {
    case 0:
        m_program->workbench->editors().closeEditor(m_program->workbench->editors().currentEditor());
        break;
    case 1:
        m_program->workbench->workspace().close();
        break;
    case 2:
        QVERIFY(m_program->workbench->flows().open(otherProject));
        break;
    default:
        m_program->workbench.reset();
        break;
    }
}

void OnlineWorkTest::whatIsUnderWayDoesNotHoldUpTheEnd()
{
    QFETCH(int, end);
    const QString other = m_program->write(m_program->file(QStringLiteral("Other")), { QStringLiteral("Gamma") });
    QVERIFY(m_program->makeReady());
    m_program->host.fault("lost-replies 0 Reset");
    m_program->click("resetPushButton");
    m_program->click("resetPushButton");
    QTRY_VERIFY(m_program->workbench->online().background().pending() > 1);
    QElapsedTimer timer;
    qint64 taken = 0;
    // As from a click: objects that are to go later do so when the loop comes round.
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        timer.start();
        endWork(end, other);
        taken = timer.elapsed();
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
    });
    loop.exec();
    QVERIFY2(taken < 5000, qPrintable(QString::number(taken)));
    if (end == 0) {
        QVERIFY(m_program->workbench->connection().isOnline());
    } else {
        // The controller has been told, and has taken the axis out of debug mode.
        QTRY_COMPARE_WITH_TIMEOUT(int(m_program->host.peek(0).debugMode), 0, 3000);
    }
    if (end == 1 || end == 2) {
        QCOMPARE(m_program->session().state(), OnlineSession::Offline);
        QTRY_COMPARE_WITH_TIMEOUT(m_program->workbench->online().background().pending(), 0, 2000);
    }
    // No news of what was under way comes to anybody.
    if (end != 0)
        QVERIFY(!QTest::qWaitFor([this] { return m_boxes->count() > 0; }, 200));
    if (end == 3) {
        m_program = std::make_unique<OnlineProgram>();
        QVERIFY(m_program->makeReady());
    }
}

void OnlineWorkTest::settingsOfAnyKindLeaveThePageUsable_data()
{
    QTest::addColumn<QVariant>("monitorTime");
    QTest::addColumn<QVariant>("timeout");
    QTest::newRow("missing") << QVariant() << QVariant();
    QTest::newRow("nought") << QVariant(0) << QVariant(0);
    QTest::newRow("negative") << QVariant(-100) << QVariant(-5000);
    QTest::newRow("huge") << QVariant(2147483647) << QVariant(2147483647);
    QTest::newRow("beyond any number") << QVariant(QStringLiteral("99999999999999999999"))
                                       << QVariant(QStringLiteral("99999999999999999999"));
    QTest::newRow("words") << QVariant(QStringLiteral("often")) << QVariant(QStringLiteral("never"));
}

void OnlineWorkTest::settingsOfAnyKindLeaveThePageUsable()
{
    QFETCH(QVariant, monitorTime);
    QFETCH(QVariant, timeout);
    Settings& settings = m_program->workbench->settings();
    settings.setValue(Solution::ConfigKey::monitorTime(), monitorTime);
    settings.setValue(Solution::ConfigKey::communicationTimeout(), timeout);
    QVERIFY(m_program->makeReady());
    QVERIFY(canWork());
}

void OnlineWorkTest::aDirectLoginRefusesDebugging()
{
    m_program->session().connectTo(m_program->host.address(), true);
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")));
    m_program->click("enterDebugButton");
    QTRY_COMPARE(
        m_boxes->texts(), QStringList{ QStringLiteral("Direct login mode does not support axis online debugging.") });
    QCOMPARE(m_program->workbench->online().commands().rowCount(), 0);
}

void OnlineWorkTest::repliesOfAnotherLengthLeaveThePageAsItIs()
{
    QVERIFY(m_program->makeReady());
    QTRY_COMPARE(shownState(), QStringLiteral("StandStill"));
    for (const char* fault : { "wrong-length 0", "wrong-length 247", "wrong-length 249", "wrong-length 1000000" }) {
        m_program->host.fault(fault);
        QVERIFY(!QTest::qWaitFor([this] { return shownState() != QLatin1String("StandStill"); }, 350));
    }
    m_program->host.fault("none");
    QVERIFY(canWork());
}

/// The controller takes nothing in the clear, so each channel that there is has to show its certificate.
void OnlineWorkTest::theWholeWayWorksOverTls()
{
    QTemporaryDir directory;
    const auto file = [&directory](const char* name) { return directory.filePath(QString::fromLatin1(name)); };
    QCOMPARE(QProcess::execute(QStringLiteral(KESTRUN_SOURCE_DIR "/scripts/make-certificates"),
                 { directory.path(), QStringLiteral("localhost"), QStringLiteral("127.0.0.1") }),
        0);
    m_controller = std::make_unique<RealController>();
    QVERIFY(m_controller->start(
        { QStringLiteral("--tls-authority"), file("authority.pem"), QStringLiteral("--tls-certificate"),
            file("controller.pem"), QStringLiteral("--tls-key"), file("controller.key") }));
    ControllerAddress address = m_controller->address();
    address.authorityFile = file("authority.pem");
    address.certificateFile = file("workbench.pem");
    address.keyFile = file("workbench.key");
    m_program->session().connectTo(address, false);
    QVERIFY(m_program->waitUntilOnline());
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")));
    QVERIFY(canWork());
    const VariableMonitor& monitor = m_program->workbench->monitor();
    QTRY_VERIFY(monitor.curves().curves(0) && monitor.curves().curves(0)->size() > 20);
    m_program->press("posJogPushButton");
    QVERIFY(QTest::qWaitFor([] { return statusOf(0).setVelocity != 0; }, 3000));
    QTest::keyClick(m_program->window(), Qt::Key_F9);
    QVERIFY(QTest::qWaitFor([] { return statusOf(0).setVelocity == 0; }, 2000));
    QTRY_VERIFY(m_program->workbench->online().stop().isHeld());
    m_program->release("posJogPushButton");
}

void OnlineWorkTest::lateAndLostRepliesLeaveThePageUsable_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QStringList>("texts");
    const QString noAnswer = QStringLiteral("The controller has not answered in time.");
    QTest::newRow("late replies of the status") << QByteArray("late-replies 400 GetAxisRef") << QStringList();
    QTest::newRow("late replies of a command") << QByteArray("late-replies 1500 Reset") << QStringList();
    QTest::newRow("a lost reply of the status") << QByteArray("lost-replies 1 GetAxisRef") << QStringList();
    QTest::newRow("a lost reply of a command") << QByteArray("lost-replies 1 Reset") << QStringList{ noAnswer };
}

void OnlineWorkTest::lateAndLostRepliesLeaveThePageUsable()
{
    QFETCH(QByteArray, fault);
    QFETCH(QStringList, texts);
    QVERIFY(m_program->makeReady());
    const CommandLog& log = m_program->workbench->online().commands();
    const int before = log.rowCount();
    m_program->host.fault(fault.constData());
    m_program->click("resetPushButton");
    // Nothing hangs longer than the ten seconds that a call may take.
    QTRY_COMPARE_WITH_TIMEOUT(log.rowCount(), before + 1, 20000);
    QTRY_COMPARE(m_boxes->count(), texts.size());
    for (const QString& text : texts)
        QVERIFY2(m_boxes->texts().first().contains(text), qPrintable(m_boxes->texts().first()));
    // While nothing was answered the controller may have ended debug mode; the page follows.
    QTRY_COMPARE(m_program->find("basicTabWidget")->isEnabled(), m_program->host.peek(0).debugMode != 0);
    // Off the screen nobody else gives the focus back after a box.
    m_program->workbench->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_program->workbench->window()) && canWork());
}

QTEST_MAIN(OnlineWorkTest)
#include "OnlineWorkTest.moc"
