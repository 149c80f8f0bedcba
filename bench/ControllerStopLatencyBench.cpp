#include "bench/Measure.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "host/communication/StopLine.h"
#include "protocol/controller.grpc.pb.h"
#include "tests/communication/ControllerHost.h"

#include <grpcpp/grpcpp.h>

#include <QCoreApplication>
#include <QEventLoop>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

// From the press of STOP to the cycle of the controller that brakes first, with and without another call that hangs.
namespace {
using Clock = std::chrono::steady_clock;
constexpr double cycles = 20;
constexpr double cycleUs = 1000;

bool openConnection(ControllerConnection& connection, const ControllerAddress& address)
{
    QEventLoop loop;
    QObject::connect(&connection, &ControllerConnection::opened, &loop, [&loop] { loop.exit(0); });
    QObject::connect(&connection, &ControllerConnection::failed, &loop, [&loop] { loop.exit(1); });
    connection.open(address);
    return loop.exec() == 0;
}

/// A call of no effect over a channel like the one of the emergency stop.
double bareRoundTrip(const ControllerAddress& address)
{
    const auto stub = kestrun::protocol::AxisController::NewStub(
        grpc::CreateChannel(address.text().toStdString(), grpc::InsecureChannelCredentials()));
    std::vector<double> times;
    for (int i = 0; i < 1000; ++i) {
        times.push_back(Measure::once([&stub] {
            grpc::ClientContext context;
            kestrun::protocol::HandshakeReply reply;
            stub->Handshake(&context, kestrun::protocol::HandshakeRequest(), &reply);
        }));
    }
    return Measure::median(times);
}

class Presser {
public:
    Presser(ControllerHost& host, StopLine& line) : m_host(host), m_line(line)
    {
        QObject::connect(&line, &StopLine::answered, &line, [this](bool, short result) {
            m_failed += result == 0 ? 0 : 1;
            ++m_answers;
        });
    }

    /// Microseconds from the press to the braking cycle; negative when the stop was not carried out.
    double press()
    {
        const Clock::time_point pressed = Clock::now();
        m_line.stop();
        waitForAnswer();
        const double latency
            = static_cast<double>(m_host.controller.lastStopTime() - pressed.time_since_epoch().count()) / 1000;
        m_line.release();
        waitForAnswer();
        return m_failed == 0 ? latency : -1;
    }

private:
    void waitForAnswer()
    {
        const int before = m_answers;
        while (m_answers == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    ControllerHost& m_host;
    StopLine& m_line;
    int m_answers = 0;
    int m_failed = 0;
};

bool measure(const char* name, Presser& presser, int presses, double roundTrip)
{
    std::vector<double> times;
    for (int i = 0; i < presses; ++i)
        times.push_back(presser.press());
    const double worst = *std::max_element(times.begin(), times.end());
    const double best = *std::min_element(times.begin(), times.end());
    const double allowed = roundTrip + cycles * cycleUs;
    const bool fine = best >= 0 && worst <= allowed;
    std::printf("%-36s median %8.1f us  worst of %d %8.1f us  allowed %8.1f us  %s\n", name, Measure::median(times),
        presses, worst, allowed, fine ? "ok" : "EXCEEDED");
    return fine;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const int presses = argc > 1 ? std::atoi(argv[1]) : 1000;
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    StopLine line(&connection, nullptr);
    if (!openConnection(connection, host.address()))
        return 1;
    RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 1, 32767);
    Presser presser(host, line);
    presser.press();
    const double roundTrip = bareRoundTrip(host.address());
    std::printf("bare round trip %.1f us\n", roundTrip);
    bool fine = measure("press of STOP to braking cycle", presser, presses, roundTrip);
    host.fault("lost-replies 0 Reset");
    std::atomic<bool> ending{ false };
    std::thread hanging([&ending] {
        while (!ending) {
            RpcCmdSend rpc;
            rpc.deadline = 2;
            rpc.rpc_AxisDebug_Reset(0);
        }
    });
    fine = measure("the same while another call hangs", presser, presses, roundTrip) && fine;
    ending = true;
    hanging.join();
    return fine ? 0 : 1;
}
