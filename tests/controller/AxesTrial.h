#pragma once

#include "controller/MotionController.h"
#include "protocol/DiagnosisCodes.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <random>

/// Puts axes that have been taken into a controller of its own on a simulated clock, and does with each what a user can
/// do, holding every cycle against what no parameter may break: numbers are numbers, speeds keep their bounds, nothing
/// jumps, and every stop ends within its ramp.
class AxesTrial {
public:
    explicit AxesTrial(const std::vector<AxisText>& axes) : m_controller(endless())
    {
        m_taken = m_controller.download(axes).code;
    }

    /// What did not hold; empty when all did.
    QString run(int axisNo, std::mt19937& random)
    {
        m_axisNo = axisNo;
        m_problem = m_taken == 0 ? QString() : QStringLiteral("not taken again: %1").arg(m_taken);
        const int entered = m_controller.enterDebugMode(client, axisNo, 1, 32767);
        demand(entered == 0, QStringLiteral("debug mode is refused with %1").arg(entered));
        const int enabled = command([](Axis& axis) { return axis.setEnable(true); });
        const AxisSettings settings = look().settings;
        m_dynamics = { 0, 0 };
        step(30);
        if (!settings.hasOutput()) {
            demand(
                enabled == Diagnosis::noOutput && look().state == AxisState::Disabled, QStringLiteral("has no output"));
            return m_problem;
        }
        demand(
            enabled == 0 && look().state == AxisState::StandStill, QStringLiteral("does not come on: %1").arg(enabled));
        move(settings, random, Command::Velocity);
        move(settings, random, Command::Absolute);
        move(settings, random, Command::Jog);
        home(settings);
        leave(settings, random);
        return m_problem;
    }

private:
    enum class Command { Velocity, Absolute, Jog };
    static constexpr SessionId client = 99;
    static constexpr double cycle = 0.001;
    static constexpr double hardestStop = 2000;

    /// What may happen within a cycle: speed, and change of speed a second.
    struct Dynamics {
        double velocity;
        double acceleration;
    };

    /// Machines that run against no end of their travel.
    static MotionController::Options endless()
    {
        MotionController::Options options;
        options.mechanics[-1] = R"({"lowest": null, "highest": null})";
        return options;
    }

    struct Look {
        AxisSettings settings;
        AxisState state = AxisState::Disabled;
        MotionState set;
        AxisRef status{};
        bool powered = false;
    };

    Look look()
    {
        Look result;
        m_controller.withAxis(m_axisNo, [&result](Axis& axis) {
            result = { axis.settings(), axis.state(), axis.setPoint(), axis.status(), axis.isPowered() };
        });
        return result;
    }

    void demand(bool holds, const QString& what)
    {
        if (!holds && m_problem.isEmpty())
            m_problem = QStringLiteral("axis %1: %2").arg(m_axisNo).arg(what);
    }

    int command(const MotionController::Command& work)
    {
        return m_controller.command(client, m_axisNo, MotionController::Kind::Motion, work);
    }

    void step(int cycles)
    {
        for (int i = 0; i < cycles && m_problem.isEmpty(); ++i)
            stepOnce();
    }

    void stepOnce()
    {
        const Look before = look();
        m_controller.step();
        const Look now = look();
        const AxisRef& ref = now.status;
        for (const double number : { ref.setPosition, ref.setVelocity, ref.setAcceleration, ref.setTorque,
                 ref.actualPosition, ref.actualVelocity, ref.actualAcceleration, ref.actualTorque })
            demand(std::isfinite(number), QStringLiteral("shows what is no number"));
        demand(ref.axisState <= 7, QStringLiteral("state %1").arg(ref.axisState));
        const double speed = std::fabs(now.set.velocity);
        const double most = std::max(m_dynamics.velocity, std::fabs(before.set.velocity));
        demand(speed <= most * (1 + 1e-9), QStringLiteral("is faster than it may be: %1").arg(speed));
        if (!before.powered || !now.powered)
            return;
        const double rate = std::fabs(now.set.velocity - before.set.velocity) / cycle;
        demand(
            rate <= m_dynamics.acceleration * (1 + 1e-6) + 1e-6, QStringLiteral("changes its speed by %1").arg(rate));
        // Where homing has ended the same place has another position.
        if (before.state == AxisState::Homing && now.state != AxisState::Homing)
            return;
        const double way = std::fabs(now.set.position - before.set.position);
        demand(way <= std::max(speed, std::fabs(before.set.velocity)) * cycle * (1 + 1e-6) + 1e-6,
            QStringLiteral("leaps by %1").arg(way));
        follows(now);
    }

    /// The machine lags by its speed / gain, to the pulse.
    void follows(const Look& now)
    {
        double behind = now.status.setPosition - now.status.actualPosition;
        if (now.settings.rotary)
            behind = std::remainder(behind, now.settings.rotationPeriod);
        const double most = std::max(50.0, now.settings.homingVelocity) / 100 + 2 / now.settings.pulsesPerUnit + 1e-6;
        demand(std::fabs(behind) <= most, QStringLiteral("has its machine %1 behind it").arg(behind));
    }

    /// The ramp ends in time, or is as far as it can be by then.
    void stops(double deceleration)
    {
        const double speed = std::fabs(look().set.velocity);
        const int cycles = static_cast<int>(std::min(1000.0, std::ceil(speed / deceleration / cycle) + 2));
        step(cycles);
        const double left = std::max(0.0, speed - deceleration * (cycles - 2) * cycle);
        const double now = std::fabs(look().set.velocity);
        demand(now <= left + 1e-9, QStringLiteral("brakes from %1 to %2 instead of %3").arg(speed).arg(now).arg(left));
    }

    static double oneOf(std::mt19937& random, std::initializer_list<double> values)
    {
        return values.begin()[random() % values.size()];
    }

    std::int16_t begin(Command kind, const MotionNumbers& numbers)
    {
        switch (kind) {
        case Command::Velocity:
            return static_cast<std::int16_t>(command([&](Axis& axis) { return axis.moveVelocity(numbers); }));
        case Command::Absolute:
            return static_cast<std::int16_t>(command(
                [&](Axis& axis) { return axis.moveAbsolute(axis.setPoint().position + numbers.velocity, numbers); }));
        case Command::Jog:
            break;
        }
        return static_cast<std::int16_t>(command([&](Axis& axis) { return axis.startJog(1, numbers); }));
    }

    /// Starts a motion, which may be refused only for a reason that the axis's parameters give, and stops it.
    void move(const AxisSettings& s, std::mt19937& random, Command kind)
    {
        const MotionNumbers n{ oneOf(random, { 0.01, 1, 50 }), oneOf(random, { 1, 100, 2000 }),
            oneOf(random, { 100, 500, 2000 }), oneOf(random, { 0, 0, 5000 }) };
        const double fastest = kind == Command::Jog ? s.maximumJogVelocity : s.maximumVelocity;
        m_dynamics = { std::min(n.velocity, fastest),
            std::max({ n.acceleration, n.deceleration, hardestStop, s.limitDeceleration, s.emergencyDeceleration }) };
        const bool refusable = look().state == AxisState::ErrorStop || s.softLimits || s.positiveLimit.enabled
            || s.negativeLimit.enabled;
        const int code = begin(kind, n);
        const bool fast = kind == Command::Jog ? fastest == 0 : n.velocity > fastest;
        const bool steep = std::max(n.acceleration, n.deceleration) > s.maximumAcceleration;
        if (fast || steep)
            demand(code != 0, QStringLiteral("moves faster than it may"));
        else
            demand(code == 0 || refusable, QStringLiteral("refuses to move with %1").arg(code));
        step(150);
        const Look moving = look();
        demand(
            moving.state != AxisState::ContinuousMotion || moving.set.velocity != 0, QStringLiteral("does not move"));
        const double ramp = oneOf(random, { 500, hardestStop });
        // The end of a jog that a limit has ended already leaves the limit's ramp alone.
        const bool ended = kind == Command::Jog && moving.state != AxisState::ContinuousMotion;
        if (kind == Command::Jog)
            m_controller.endJog(client, m_axisNo, 1, ramp, 0);
        else
            command([ramp](Axis& axis) { return axis.stop(ramp, 0); });
        const bool failed = look().state == AxisState::ErrorStop;
        stops(failed || ended ? std::min(s.emergencyDeceleration, rampAtLimit(s)) : ramp);
    }

    static double rampAtLimit(const AxisSettings& s)
    {
        return s.limitDeceleration > 0 ? s.limitDeceleration : s.emergencyDeceleration;
    }

    void home(const AxisSettings& s)
    {
        command([](Axis& axis) { return axis.reset(); });
        m_dynamics = { std::max(s.homingVelocity, s.homingCloseVelocity),
            std::max({ s.homingAcceleration, s.limitDeceleration, s.emergencyDeceleration }) };
        if (command([](Axis& axis) { return axis.home(); }) != 0)
            return;
        for (int i = 0; i < 1000 && look().state == AxisState::Homing; ++i)
            step(1);
        if (look().state != AxisState::Homing)
            return;
        m_dynamics.acceleration = std::max(m_dynamics.acceleration, 1000.0);
        command([](Axis& axis) { return axis.stop(1000, 0); });
        stops(1000);
    }

    /// The client goes while the axis moves.
    void leave(const AxisSettings& s, std::mt19937& random)
    {
        m_dynamics = { 1, std::max({ 2000.0, s.limitDeceleration, s.emergencyDeceleration }) };
        begin(random() % 2 ? Command::Velocity : Command::Jog, { 1, 2000, 2000, 0 });
        step(100);
        m_controller.endSession(client);
        stops(s.emergencyDeceleration);
    }

    MotionController m_controller;
    int m_taken;
    int m_axisNo = 0;
    Dynamics m_dynamics{ 0, 0 };
    QString m_problem;
};
