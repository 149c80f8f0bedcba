#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

/// Helpers of the programs that show what a piece of the house costs beside the least that its work can cost.
namespace Measure {

/// Microseconds that the call takes.
template <typename Call>
double once(Call call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Pair {
    double floor = 0;
    double measured = 0;
    double ratio() const { return measured / floor; }
};

/// Medians of both calls, taken in turns, so that what else the machine does meets both alike.
template <typename Floor, typename Measured>
Pair inTurns(int rounds, Floor floor, Measured measured)
{
    std::vector<double> floors;
    std::vector<double> measureds;
    for (int i = 0; i < rounds; ++i) {
        floors.push_back(floor());
        measureds.push_back(measured());
    }
    return { median(floors), median(measureds) };
}

/// Prints a line and returns whether the bound holds.
inline bool report(const char* what, const Pair& pair, double bound)
{
    const bool holds = pair.ratio() <= bound;
    std::printf("%-44s floor %10.1f us  measured %10.1f us  ratio %5.2f  bound %.2f  %s\n", what, pair.floor,
        pair.measured, pair.ratio(), bound, holds ? "ok" : "EXCEEDED");
    std::fflush(stdout);
    return holds;
}

} // namespace Measure
