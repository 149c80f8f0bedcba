#pragma once

#include <QtGlobal>

#include <algorithm>

/// How many tries a fuzzer makes. Continuous integration makes the number that is given, which takes seconds; whoever
/// has a night sets KESTRUN_FUZZ_FACTOR to make that many times more of them, from the same seeds on, and runs the
/// test's program itself (with QTEST_FUNCTION_TIMEOUT in ms), since CTest ends a test after two minutes.
inline int fuzzRounds(int usual)
{
    return usual * std::clamp(qEnvironmentVariableIntValue("KESTRUN_FUZZ_FACTOR"), 1, 10000);
}
