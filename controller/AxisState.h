#pragma once

#include <cstdint>

/// States of an axis; the numbers are those of the status reply.
enum class AxisState : std::uint16_t {
    Disabled = 0,
    ErrorStop = 1,
    Stopping = 2,
    StandStill = 3,
    DiscreteMotion = 4,
    ContinuousMotion = 5,
    SynchronizedMotion = 6,
    Homing = 7
};
