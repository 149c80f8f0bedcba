#include "bench/Measure.h"
#include "tests/communication/BrakingWatch.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/QuietRelay.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <memory>

// From the end of a link to the cycle of the controller that brakes first. A client in a process of its own moves an
// axis, which it holds by a time-out of half a minute, so that nothing but the loss of the link can stop the axis; then
// the connection is closed, or falls silent with all sockets open, or the client is killed or stopped.
namespace {

constexpr int axisNo = 0;
constexpr double speed = 5;
constexpr short timeoutMs = 32767;
constexpr double boundMs = 2000;

/// What the client does.
int work(const QString& address, const QByteArray& token)
{
    ControllerAddress controller;
    QString error;
    controller.token = token;
    ControllerConnection connection;
    if (!controller.setHostAndPort(address, &error) || !connectTo(connection, controller) || !enableAxis(axisNo))
        return EXIT_FAILURE;
    RpcCmdSend rpc;
    if (rpc.rpc_AxisDebug_EnterDebugMode(axisNo, 1, timeoutMs) != 0
        || rpc.rpc_AxisDebug_MoveVel(axisNo, speed, 500, 500, 0) != 0)
        return EXIT_FAILURE;
    std::puts("moving");
    std::fflush(stdout);
    // As an open page does.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [] { statusOf(axisNo); });
    poll.start(10);
    return QCoreApplication::exec();
}

/// This program once more, as the client; killed with this object.
class Client {
public:
    explicit Client(const ControllerAddress& address)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(),
            { QStringLiteral("--work"), address.text(), QString::fromLatin1(address.token) });
    }
    ~Client()
    {
        signal(SIGKILL);
        m_process.waitForFinished(3000);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool isMoving()
    {
        return QTest::qWaitFor([this] { return m_process.canReadLine(); }, 10000)
            && m_process.readLine().trimmed() == "moving";
    }
    void signal(int number) const
    {
        if (m_process.processId() > 0)
            ::kill(static_cast<pid_t>(m_process.processId()), number);
    }

private:
    QProcess m_process;
};

enum class End { Closed, Silent, Killed, Stopped };

/// Milliseconds from the end of the link to the braking cycle; negative when the axis did not move or did not brake.
double endLink(ControllerHost& host, BrakingWatch& watch, End end)
{
    QuietRelay relay(host.server->port());
    ControllerAddress address = host.address();
    // The relay keeps its side open when a client goes.
    if (end == End::Closed || end == End::Silent)
        address.port = relay.port();
    Client client(address);
    const auto speedNow = [&host] { return host.peek(axisNo).setVelocity; };
    if (!client.isMoving() || !QTest::qWaitFor([&] { return speedNow() >= speed; }, 3000))
        return -1;
    watch.arm(speed);
    const BrakingWatch::Time ended = BrakingWatch::Clock::now();
    switch (end) {
    case End::Closed:
        relay.cut();
        break;
    case End::Silent:
        relay.silent = true;
        break;
    case End::Killed:
    case End::Stopped:
        client.signal(end == End::Killed ? SIGKILL : SIGSTOP);
        break;
    }
    // The next client takes the axis over.
    if (!QTest::qWaitFor([&] { return watch.braked() && host.peek(axisNo).debugMode == 0; }, 10000))
        return -1;
    return BrakingWatch::milliseconds(ended, *watch.braked());
}

bool measure(const char* name, ControllerHost& host, BrakingWatch& watch, End end, int rounds)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        times.push_back(endLink(host, watch, end));
        if (times.back() < 0) {
            std::printf("%-44s round %d was not carried out\n", name, i + 1);
            return false;
        }
    }
    const double worst = *std::max_element(times.begin(), times.end());
    const bool fine = worst <= boundMs;
    std::printf("%-44s median %7.1f ms  worst of %d %7.1f ms  allowed %.0f ms  %s\n", name, Measure::median(times),
        rounds, worst, boundMs, fine ? "ok" : "EXCEEDED");
    std::fflush(stdout);
    return fine;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 4 && qstrcmp(argv[1], "--work") == 0)
        return work(QString::fromLatin1(argv[2]), argv[3]);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 10;
    ControllerHost host;
    host.addAxes(1);
    BrakingWatch watch(host.controller, axisNo);
    bool fine = true;
    for (const auto& [name, end] : { std::pair{ "connection closed, to the braking cycle", End::Closed },
             std::pair{ "link half open, to the braking cycle", End::Silent },
             std::pair{ "client killed, to the braking cycle", End::Killed },
             std::pair{ "client stopped, to the braking cycle", End::Stopped } })
        fine = measure(name, host, watch, end, rounds) && fine;
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}
