#include "bench/Measure.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/controller.grpc.pb.h"
#include "sdk/Transaction.h"
#include "tests/communication/BrakingWatch.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/online/StopButton.h"
#include "workbench/online/StopKey.h"

#include <grpcpp/grpcpp.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>

// From the press of STOP to the cycle of the controller that brakes first, in the whole program, with an axis that runs
// and the page and the curves in sight. A hand on a thread of its own presses the key or the button at any moment, as
// events come from a desktop: what the window is about then counts too. With and without another call that hangs.
namespace {

constexpr double cycles = 20;
constexpr double cycleUs = 1000;
constexpr int axisNo = 0;
constexpr double speed = 5;
constexpr int patienceMs = 5000;

using Clock = BrakingWatch::Clock;
using What = std::function<bool()>;

/// Turns the events until something is so; false when it does not become so. In between the thread sleeps, as it does
/// under a user who looks on.
bool turnUntil(const What& isSo)
{
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    tick.start(2);
    const auto end = Clock::now() + std::chrono::milliseconds(patienceMs);
    while (!isSo() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isSo();
}

/// A call of no effect over a channel like the one of the emergency stop.
double bareRoundTrip(const ControllerAddress& address)
{
    const auto stub = kestrun::protocol::AxisController::NewStub(
        grpc::CreateChannel(address.text().toStdString(), grpc::InsecureChannelCredentials()));
    std::vector<double> times;
    times.reserve(1000);
    for (int i = 0; i < 1000; ++i) {
        times.push_back(Measure::once([&stub] {
            grpc::ClientContext context;
            kestrun::protocol::HandshakeReply reply;
            stub->Handshake(&context, kestrun::protocol::HandshakeRequest(), &reply);
        }));
    }
    return Measure::median(times);
}

std::atomic<bool> callUnderWay{ false };

/// A call whose reply does not come.
class HangingCall : public Transaction {
    Q_OBJECT

public:
    void execute() override
    {
        callUnderWay = true;
        RpcCmdSend rpc;
        rpc.deadline = 2;
        rpc.rpc_AxisDebug_Reset(axisNo);
        callUnderWay = false;
    }
};

enum class By { Key, Button };

class Presser {
public:
    explicit Presser(OnlineProgram& program)
        : m_program(program), m_stop(program.workbench->online().stop()),
          m_button(program.workbench->window().stopButton()), m_watch(program.host.controller, axisNo)
    {
        QObject::connect(&m_stop, &StopControl::answered, &m_stop, [this](bool, short result) {
            m_failed += result == 0 ? 0 : 1;
            ++m_answers;
        });
    }

    /// From now on there is a call under way that hangs, at each press.
    void letACallHang()
    {
        m_program.host.fault("lost-replies 0 Reset");
        m_hanging = true;
    }

    /// Microseconds from the press to the braking cycle; negative when the axis was not stopped and released.
    double press(By by)
    {
        if (!move())
            return fail("the axis does not move");
        if (!hang())
            return fail("no call hangs");
        const int answers = m_answers;
        m_watch.arm(speed);
        Clock::time_point pressed;
        // The axis moves at a steady speed, so that nothing but the press slows it down.
        std::thread hand([&] {
            std::this_thread::sleep_for(std::chrono::microseconds(m_moment(m_random)));
            pressed = Clock::now();
            send(by, true);
        });
        const bool stopped = turnUntil([&] { return m_answers > answers && m_stop.isHeld() && m_watch.braked(); });
        hand.join();
        send(by, false);
        if (!stopped)
            return fail("the axis does not stop");
        if (!release() || m_failed != 0)
            return fail("the stop is not released");
        return std::chrono::duration<double, std::micro>(*m_watch.braked() - pressed).count();
    }

private:
    static double fail(const char* reason)
    {
        std::puts(reason);
        return -1;
    }

    double speedNow() const { return std::abs(m_program.host.peek(axisNo).setVelocity); }

    bool move() const
    {
        return RpcCmdSend().rpc_AxisDebug_MoveVel(axisNo, speed, 500, 500, 0) == 0
            && turnUntil([this] { return speedNow() >= speed; });
    }

    bool hang()
    {
        if (!m_hanging || callUnderWay)
            return true;
        m_program.workbench->online().background().submitTransaction(new HangingCall, false);
        return turnUntil([] { return callUnderWay.load(); });
    }

    bool release()
    {
        const int answers = m_answers;
        m_stop.release();
        return turnUntil([&] { return m_answers > answers && !m_stop.isHeld() && speedNow() == 0; });
    }

    /// Hands the event to the window, as the desktop does. From any thread.
    void send(By by, bool down) const
    {
        QCoreApplication::postEvent(m_program.window(), by == By::Key ? keyEvent(down) : mouseEvent(down));
    }
    static QEvent* keyEvent(bool down)
    {
        return new QKeyEvent(down ? QEvent::KeyPress : QEvent::KeyRelease, StopKey::key, Qt::NoModifier);
    }
    QEvent* mouseEvent(bool down) const
    {
        return new QMouseEvent(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, m_place, m_place,
            m_button.mapToGlobal(m_button.rect().center()), Qt::LeftButton, down ? Qt::LeftButton : Qt::NoButton,
            Qt::NoModifier);
    }

    OnlineProgram& m_program;
    StopControl& m_stop;
    const StopButton& m_button;
    const QPointF m_place = m_button.mapTo(&m_program.workbench->window(), m_button.rect().center());
    BrakingWatch m_watch;
    std::mt19937 m_random{ 1 };
    std::uniform_int_distribution<int> m_moment{ 0, 10000 };
    bool m_hanging = false;
    int m_answers = 0;
    int m_failed = 0;
};

bool measure(const char* name, int presses, double roundTrip, const std::function<double()>& press)
{
    std::vector<double> times;
    for (int i = 0; i < presses; ++i) {
        times.push_back(press());
        if (times.back() < 0) {
            std::printf("%-44s press %d was not carried out\n", name, i + 1);
            return false;
        }
    }
    const double worst = *std::max_element(times.begin(), times.end());
    const double allowed = roundTrip + cycles * cycleUs;
    const bool fine = worst <= allowed;
    std::printf("%-44s median %7.1f us  worst of %d %8.1f us  allowed %8.1f us  %s\n", name, Measure::median(times),
        presses, worst, allowed, fine ? "ok" : "EXCEEDED");
    std::fflush(stdout);
    return fine;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const int presses = argc > 1 ? std::atoi(argv[1]) : 1000;
    MessageBoxWatcher boxes;
    OnlineProgram program;
    program.workbench->window().toolWindows().showToolWindow(QStringLiteral("curves"));
    if (!program.makeReady()) {
        std::puts("the axis cannot be brought into debug mode");
        return EXIT_FAILURE;
    }
    const double roundTrip = bareRoundTrip(program.host.address());
    std::printf("bare round trip %.1f us\n", roundTrip);
    Presser presser(program);
    bool fine = measure("F9 to the braking cycle", presses, roundTrip, [&] { return presser.press(By::Key); });
    fine = measure("STOP button to the braking cycle", presses, roundTrip, [&] { return presser.press(By::Button); })
        && fine;
    presser.letACallHang();
    fine = measure("F9, while another call hangs", presses, roundTrip, [&] { return presser.press(By::Key); }) && fine;
    fine = measure("STOP button, while another call hangs", presses, roundTrip, [&] {
        return presser.press(By::Button);
    }) && fine;
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}

#include "StopPressBench.moc"
