#include "host/communication/RpcCmdSend.h"
#include "tests/communication/ControllerClient.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/online/StopButton.h"

#include <QDrag>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QToolBar>

#include <csignal>

namespace {

/// An X server of this test's own, without a screen.
class Display {
public:
    bool start()
    {
        m_server.start(QStringLiteral("Xvfb"),
            { QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                QStringLiteral("1400x900x24") });
        if (!m_server.waitForReadyRead(10000))
            return false;
        qputenv("DISPLAY", ":" + m_server.readLine().trimmed());
        qputenv("QT_QPA_PLATFORM", "xcb");
        return true;
    }
    ~Display()
    {
        m_server.terminate();
        m_server.waitForFinished(3000);
    }

private:
    QProcess m_server;
};

/// Real events, as from the user's mouse and keyboard.
bool xdotool(const QStringList& arguments)
{
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    return QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }, 5000)
        && tool.error() == QProcess::UnknownError && tool.exitCode() == 0;
}

bool pointAt(const QPoint& place, const QStringList& then)
{
    return xdotool(
        QStringList{ QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()) } + then);
}

bool click(const QPoint& place)
{
    return pointAt(place, { QStringLiteral("click"), QStringLiteral("1") });
}

bool moves()
{
    return QTest::qWaitFor([] { return statusOf(0).setVelocity != 0; }, 3000);
}

bool stands()
{
    return QTest::qWaitFor([] { return statusOf(0).setVelocity == 0; }, 2000);
}

/// A window of another program, which takes the keyboard.
int showWindow()
{
    QWidget window;
    window.setGeometry(900, 500, 300, 200);
    window.show();
    window.activateWindow();
    return QApplication::exec();
}

} // namespace

// The whole way in a real window: from the press of a real mouse to a moving axis of the real controller, and back.
class RealWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fromTheMouseToTheAxisAndBack();
    void theKeyStopsUnderABox();
    void theKeyStopsWhileSomethingIsDragged();
    void theButtonStopsUnderABox();
    void anotherProgramInFrontEndsTheJog();
    void theControllerGoesWithAKilledWorkbench();

private:
    QPoint on(const char* control) const
    {
        return m_program->workbench->window().mapToGlobal(m_program->placeOf(control));
    }
    QPoint onAction(const char* name) const
    {
        auto* bar = m_program->workbench->window().findChild<QToolBar*>(QStringLiteral("mainToolBar"));
        const QWidget* button = bar->widgetForAction(m_program->workbench->action(QLatin1String(name)));
        return button->mapToGlobal(button->rect().center());
    }
    QPoint onAxis(const QString& name) const;
    /// By mouse alone: connects, opens the axis, enters debug mode, enables.
    void makeReady();
    void holdJog()
    {
        QVERIFY(pointAt(on("posJogPushButton"), { QStringLiteral("mousedown"), QStringLiteral("1") }));
        QVERIFY(moves());
    }
    static bool letGo() { return xdotool({ QStringLiteral("mouseup"), QStringLiteral("1") }); }

    std::unique_ptr<OnlineProgram> m_program;
};

void RealWindowTest::init()
{
    m_program = std::make_unique<OnlineProgram>();
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
}

void RealWindowTest::cleanup()
{
    QVERIFY(letGo());
    m_program.reset();
}

QPoint RealWindowTest::onAxis(const QString& name) const
{
    ProjectTreeView& tree = m_program->workbench->window().tree();
    tree.expandAll();
    const QModelIndexList found = tree.model()->match(
        tree.model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QPoint() : tree.viewport()->mapToGlobal(tree.visualRect(found.first()).center());
}

void RealWindowTest::makeReady()
{
    QVERIFY(click(onAction("online.connect")));
    QTRY_COMPARE_WITH_TIMEOUT(m_program->session().state(), OnlineSession::Online, 10000);
    QVERIFY(pointAt(onAxis(QStringLiteral("Alpha")),
        { QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"), QStringLiteral("--delay"),
            QStringLiteral("60"), QStringLiteral("1") }));
    QTRY_VERIFY(m_program->workbench->editors().currentEditor());
    m_program->view = m_program->workbench->editors().currentEditor()->widget();
    auto* tabs = m_program->view->findChild<QTabBar*>();
    QVERIFY(click(tabs->mapToGlobal(tabs->tabRect(tabs->count() - 1).center())));
    QTRY_VERIFY(m_program->find("enterDebugButton")->isVisible());
    QVERIFY(click(on("enterDebugButton")));
    QTRY_VERIFY(m_program->find("basicTabWidget")->isEnabled());
    QVERIFY(click(on("enablePushButton")));
    QTRY_VERIFY(m_program->find("posJogPushButton")->isEnabled());
}

void RealWindowTest::fromTheMouseToTheAxisAndBack()
{
    makeReady();
    holdJog();
    QTRY_VERIFY(statusOf(0).actualPosition > 1);
    QVERIFY(letGo());
    QVERIFY(stands());
    const double place = statusOf(0).actualPosition;
    QVERIFY(pointAt(on("negJogPushButton"), { QStringLiteral("mousedown"), QStringLiteral("1") }));
    QTRY_VERIFY(statusOf(0).actualPosition < place - 1);
    QVERIFY(letGo());
    QVERIFY(stands());
    // The page shows what the controller has.
    QTRY_COMPARE(m_program->find<QLineEdit>("statueLineEdit")->text(), QStringLiteral("StandStill"));
}

void RealWindowTest::theKeyStopsUnderABox()
{
    makeReady();
    holdJog();
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    OnlineProgram::showModal(box);
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QVERIFY(xdotool({ QStringLiteral("key"), QStringLiteral("F9") }));
    QVERIFY(stands());
    QTRY_VERIFY(m_program->workbench->online().stop().isHeld());
    QVERIFY(box.isVisible());
}

void RealWindowTest::theKeyStopsWhileSomethingIsDragged()
{
    makeReady();
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), short(0));
    QVERIFY(moves());
    auto* data = new QMimeData;
    data->setText(QStringLiteral("dragged"));
    auto* drag = new QDrag(&m_program->workbench->window());
    drag->setMimeData(data);
    bool stopped = false;
    QTimer::singleShot(0, this, [this, &stopped] {
        stopped = pointAt(onAxis(QStringLiteral("Alpha")), { QStringLiteral("key"), QStringLiteral("F9") }) && stands();
        QDrag::cancel();
    });
    drag->exec();
    QVERIFY(stopped);
    QTRY_VERIFY(m_program->workbench->online().stop().isHeld());
}

void RealWindowTest::theButtonStopsUnderABox()
{
    makeReady();
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), short(0));
    QVERIFY(moves());
    QMessageBox box(QMessageBox::Information, QStringLiteral("box"), QStringLiteral("box"), QMessageBox::Ok);
    OnlineProgram::showModal(box);
    QVERIFY(QTest::qWaitForWindowActive(&box));
    const StopButton& button = m_program->workbench->window().stopButton();
    QVERIFY(click(button.mapToGlobal(button.rect().center())));
    QVERIFY(stands());
    QTRY_VERIFY(m_program->workbench->online().stop().isHeld());
    QVERIFY(box.isVisible());
}

void RealWindowTest::anotherProgramInFrontEndsTheJog()
{
    makeReady();
    holdJog();
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--window") });
    QTRY_VERIFY_WITH_TIMEOUT(QGuiApplication::applicationState() != Qt::ApplicationActive, 15000);
    QVERIFY(stands());
    QVERIFY2(QGuiApplication::mouseButtons() & Qt::LeftButton, "the button is still held");
    other.terminate();
    QVERIFY(other.waitForFinished(3000));
}

void RealWindowTest::theControllerGoesWithAKilledWorkbench()
{
    QProcess program;
    program.start(QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun"),
        { QStringLiteral("--settings"), m_program->directory.filePath(QStringLiteral("other.ini")),
            m_program->write(m_program->file(QStringLiteral("Other")), { QStringLiteral("Gamma") }) });
    QVERIFY(program.waitForStarted(5000));
    // The program of another user of the screen: its window covers this one, so its tool bar lies at the same place.
    m_program->workbench->window().hide();
    const QString controllerOf = QStringLiteral("/proc/%1/task/%1/children").arg(program.processId());
    const auto controller = [&controllerOf]() -> qint64 {
        QFile file(controllerOf);
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    };
    m_program->workbench->window().show();
    const QPoint connectHere = onAction("online.connect") - m_program->workbench->window().mapToGlobal(QPoint(0, 0));
    m_program->workbench->window().hide();
    QVERIFY(QTest::qWaitFor(
        [&] {
            return controller() != 0 || (click(connectHere) && QTest::qWaitFor([&] { return controller() != 0; }, 500));
        },
        15000));
    const qint64 process = controller();
    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    QVERIFY(program.waitForFinished(3000));
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(QStringLiteral("/proc/%1/fd/0").arg(process)), 3000);
    m_program->workbench->window().show();
}

int main(int argc, char* argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "--window") == 0) {
        QApplication application(argc, argv);
        return showWindow();
    }
    // A server for the time of the test; the application needs it from its first moment on.
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    Display display;
    if (!display.start())
        qFatal("Xvfb does not start");
    QApplication application(argc, argv);
    RealWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RealWindowTest.moc"
