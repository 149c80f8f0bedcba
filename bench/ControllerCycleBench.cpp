#include "controller/MotionController.h"
#include "tests/controller/ControllerRig.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <thread>

// Whether the controller's cycle, with 64 axes on the move, begins as punctually as a loop that does nothing but sleep,
// both at the same time on the same machine.
namespace {
using Clock = std::chrono::steady_clock;
constexpr int axes = 64;
constexpr auto period = std::chrono::milliseconds(1);
constexpr auto lateness = std::chrono::microseconds(500);

/// Processor time that the calling thread has taken so far, in seconds.
double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// The same of the thread that runs the controller's cycle: between two cycles it reads its own clock.
double cycleSeconds(MotionController& controller)
{
    double seconds = 0;
    controller.withAxis(0, [&seconds](Axis&) { seconds = threadSeconds(); });
    return seconds;
}

struct LoopResult {
    CycleStatistics statistics;
    double processorSeconds = 0;
};

/// The loop that the controller's cycle is measured by: the same sleep and the same rule for a pause.
class SleepingLoop {
public:
    SleepingLoop() : m_thread([this] { run(); }) { }

    LoopResult end()
    {
        m_ending = true;
        m_thread.join();
        return { m_statistics, m_processorSeconds };
    }

private:
    void run()
    {
        Clock::time_point next = Clock::now() + period;
        while (!m_ending) {
            std::this_thread::sleep_until(next);
            ++m_statistics.cycles;
            m_statistics.late += Clock::now() - next > lateness ? 1 : 0;
            next += period;
            if (Clock::now() > next + 10 * period)
                next = Clock::now() + period;
        }
        m_processorSeconds = threadSeconds();
    }

    std::atomic<bool> m_ending{ false };
    CycleStatistics m_statistics;
    double m_processorSeconds = 0;
    std::thread m_thread;
};

double share(const CycleStatistics& statistics)
{
    return 100.0 * static_cast<double>(statistics.late) / static_cast<double>(statistics.cycles);
}

bool waitFor(const std::function<bool()>& condition)
{
    const auto until = Clock::now() + std::chrono::seconds(2);
    while (!condition() && Clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return condition();
}

bool allAxes(MotionController& controller, const std::function<bool(const AxisRef&)>& condition)
{
    for (int i = 0; i < axes; ++i) {
        AxisRef ref{};
        if (!controller.peek(i, &ref, nullptr) || !condition(ref))
            return false;
    }
    return true;
}

bool allMove(MotionController& controller)
{
    return allAxes(controller, [](const AxisRef& ref) {
        return ref.axisState == static_cast<std::uint16_t>(AxisState::ContinuousMotion) && ref.setVelocity != 0
            && ref.actualVelocity != 0;
    });
}

bool moveAll(MotionController& controller, int direction)
{
    bool fine = true;
    for (int i = 0; i < axes; ++i) {
        fine = fine && controller.command(1, i, MotionController::Kind::Motion, [direction](Axis& axis) {
            return axis.moveVelocity(numbers(direction * 100, 500, 500, 5000));
        }) == 0;
    }
    return fine;
}

/// What has kept the axes from moving; null for nothing. Axes that stand would be no measurement.
const char* bringAxesToMove(MotionController& controller)
{
    std::vector<AxisText> texts;
    texts.reserve(axes);
    for (int i = 0; i < axes; ++i)
        texts.push_back(makeAxisText(i, { { "ModeSet", "TRUE" } }));
    if (controller.download(texts).code != 0)
        return "the axes were not taken over";
    for (int i = 0; i < axes; ++i) {
        if (controller.enterDebugMode(1, i, 1, 32767) != 0)
            return "an axis did not enter debug mode";
        if (controller.command(1, i, MotionController::Kind::Plain, [](Axis& axis) { return axis.setEnable(true); })
            != 0)
            return "an axis was not enabled";
    }
    const auto stands
        = [](const AxisRef& ref) { return ref.axisState == static_cast<std::uint16_t>(AxisState::StandStill); };
    if (!waitFor([&] { return allAxes(controller, stands); }))
        return "not all axes came on";
    if (!moveAll(controller, 1))
        return "an axis refused to move";
    return waitFor([&] { return allMove(controller); }) ? nullptr : "not all axes move";
}

/// All axes run to and fro, so that plans are made anew all the time. False when one of them did not.
bool keepMoving(MotionController& controller, double seconds)
{
    const auto until = Clock::now() + std::chrono::duration<double>(seconds);
    int direction = -1;
    bool fine = true;
    while (fine && Clock::now() < until) {
        fine = moveAll(controller, direction);
        direction = -direction;
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        fine = fine && allMove(controller);
    }
    return fine;
}
} // namespace

int main(int argc, char** argv)
{
    const double seconds = argc > 1 ? std::atof(argv[1]) : 60;
    MotionController controller({});
    controller.start();
    if (const char* trouble = bringAxesToMove(controller)) {
        std::printf("nothing is measured: %s\n", trouble);
        return 1;
    }
    const CycleStatistics before = controller.statistics();
    const double processorBefore = cycleSeconds(controller);
    SleepingLoop loop;
    const bool moved = keepMoving(controller, seconds);
    const LoopResult sleeping = loop.end();
    const CycleStatistics& bare = sleeping.statistics;
    CycleStatistics cycle = controller.statistics();
    const double processor = cycleSeconds(controller) - processorBefore;
    controller.shutdown();
    if (!moved) {
        std::puts("nothing is measured: not all axes have moved all the time");
        return 1;
    }
    cycle.cycles -= before.cycles;
    cycle.late -= before.late;
    const double allowed = 1.2 * share(bare) + 0.1;
    const bool fine = share(cycle) <= allowed && cycle.cycles > 0.9 * seconds * 1000;
    std::printf("cycle of 1 ms with %d moving axes, %.0f s\n", axes, seconds);
    std::printf("  later than 0.5 ms: %.3f %% of %llu cycles; the sleeping loop %.3f %% of %llu; allowed %.3f %%  %s\n",
        share(cycle), static_cast<unsigned long long>(cycle.cycles), share(bare),
        static_cast<unsigned long long>(bare.cycles), allowed, fine ? "ok" : "EXCEEDED");
    std::printf("  processor: the cycle %.2f %% of one core, %.1f us a cycle; the sleeping loop %.2f %%, %.1f us\n",
        100 * processor / seconds, 1e6 * processor / static_cast<double>(cycle.cycles),
        100 * sleeping.processorSeconds / seconds, 1e6 * sleeping.processorSeconds / static_cast<double>(bare.cycles));
    return fine ? 0 : 1;
}
