#include "bench/Measure.h"
#include "host/communication/RpcCmdSend.h"
#include "tests/workbench/OnlineProgram.h"

#include <QApplication>
#include <QPushButton>

#include <cmath>
#include <cstdlib>
#include <vector>

// How long the axis goes on after a click on "Stop" of the online page, in the whole program on a controller in this
// process, until it moves more slowly. Printed; no promise hangs on it: the way of the STOP is measured by its own.

namespace {

constexpr int rounds = 20;
constexpr int axisNo = 0;
constexpr double speedWanted = 5;

bool stopOnce(OnlineProgram& program, std::vector<double>& times)
{
    if (RpcCmdSend().rpc_AxisDebug_MoveVel(axisNo, speedWanted, 100, 100, 0) != 0)
        return false;
    const auto speed = [&program] { return std::abs(program.host.peek(axisNo).setVelocity); };
    if (!QTest::qWaitFor([&] { return speed() >= speedWanted; }, 3000))
        return false;
    bool slower = false;
    times.push_back(Measure::once([&] {
        program.find<QPushButton>("stopPushButton")->click();
        // Waiting in steps would count the steps.
        for (int turn = 0; !slower && turn < 1000000; ++turn) {
            QCoreApplication::processEvents();
            slower = speed() < speedWanted;
        }
    }));
    return slower && program.stands(10000, axisNo);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    OnlineProgram program;
    if (!program.makeReady()) {
        std::puts("the axis cannot be brought into debug mode");
        return EXIT_FAILURE;
    }
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        if (!stopOnce(program, times)) {
            std::puts("the axis does not stop");
            return EXIT_FAILURE;
        }
    }
    std::printf("from the click on \"Stop\" to a slower axis: median %.2f ms, worst of %d %.2f ms\n",
        Measure::median(times) / 1000, rounds, *std::max_element(times.begin(), times.end()) / 1000);
    return EXIT_SUCCESS;
}
