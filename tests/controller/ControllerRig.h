#pragma once

#include "tests/controller/AxisRecords.h"

#include "controller/Axis.h"

#include <functional>

/// An axis on a simulated clock, with its drive on.
class AxisRig {
public:
    static constexpr double cycle = 0.001;

    explicit AxisRig(const AxisValues& changes = {}, const std::string& machine = "{}")
        : settings(makeAxisSettings(changes)), axis(settings, machineOf(settings, machine), cycle)
    {
    }

    AxisRig& enabled()
    {
        axis.setEnable(true);
        run(50);
        return *this;
    }

    void run(int cycles)
    {
        for (int i = 0; i < cycles; ++i)
            axis.step();
    }

    /// Runs until the condition holds; false when that takes longer than so many simulated seconds.
    bool runUntil(const std::function<bool()>& condition, double seconds = 100)
    {
        for (double t = 0; t < seconds; t += cycle) {
            axis.step();
            if (condition())
                return true;
        }
        return false;
    }

    bool runUntilState(AxisState state, double seconds = 100)
    {
        return runUntil([this, state] { return axis.state() == state; }, seconds);
    }

    /// Until set and actual position rest.
    bool runUntilStill(double seconds = 100)
    {
        return runUntil([this] { return !axis.isMoving(); }, seconds);
    }

    AxisSettings settings;
    Axis axis;

private:
    static MechanicsSettings machineOf(const AxisSettings& settings, const std::string& json)
    {
        MechanicsSettings machine = MechanicsSettings::defaultsFor(settings);
        std::string error;
        if (!machine.read(json, &error))
            qFatal("the machine of a test is not sound: %s", error.c_str());
        return machine;
    }
};

inline MotionNumbers numbers(double velocity, double acceleration = 100, double deceleration = 100, double jerk = 0)
{
    return { velocity, acceleration, deceleration, jerk };
}
