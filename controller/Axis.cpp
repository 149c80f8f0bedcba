#include "controller/Axis.h"

#include "controller/ProfilePlanner.h"
#include "protocol/DiagnosisCodes.h"

#include <algorithm>
#include <cmath>

namespace {
double positiveOr(double value, double otherwise)
{
    return std::isfinite(value) && value > 0 ? value : otherwise;
}
} // namespace

Axis::Axis(const AxisSettings& settings, const MechanicsSettings& mechanics, double cycle)
    : m_settings(settings), m_machine(mechanics, settings), m_counter(settings.pulsesPerUnit), m_cycle(cycle),
      m_zeroPlace(m_machine.position())
{
    m_counter.restart(m_machine.position());
}

double Axis::shown(double position) const
{
    if (!m_settings.rotary)
        return position;
    const double turns = std::floor(position / m_settings.rotationPeriod);
    const double rest = position - turns * m_settings.rotationPeriod;
    return rest < m_settings.rotationPeriod ? rest : 0;
}

double Axis::actual() const
{
    return m_machine.position() - m_zeroPlace;
}

double Axis::shownActualPosition() const
{
    // An encoder counts whole pulses from the machine's zero.
    const double pulses = std::rint(m_machine.position() * m_settings.pulsesPerUnit);
    return shown(pulses / m_settings.pulsesPerUnit - m_zeroPlace);
}

std::int64_t Axis::pulses() const
{
    return m_settings.reverse ? -m_counter.pulses() : m_counter.pulses();
}

bool Axis::profileDone() const
{
    return static_cast<double>(m_cycles) * m_cycle >= m_profile.duration();
}

bool Axis::isMoving() const
{
    // The lag dies away without end; below a pulse a second nobody calls it moving.
    return !profileDone() || m_set.velocity != 0 || std::fabs(m_machine.velocity()) > 1 / m_settings.pulsesPerUnit;
}

bool Axis::standing() const
{
    if (!profileDone() || m_set.velocity != 0)
        return false;
    const double behind = std::fabs(m_counter.position() - m_machine.position());
    return behind <= 1 / m_settings.pulsesPerUnit || m_machine.velocity() == 0;
}

void Axis::begin(Profile profile)
{
    m_profile = std::move(profile);
    m_cycles = 0;
    m_stopping = false;
}

void Axis::beginStop(Profile profile)
{
    const double way = std::fabs(profile.end().position - m_set.position);
    const double present = std::fabs(m_profile.end().position - m_set.position);
    if (m_stopping && present <= way)
        return;
    begin(std::move(profile));
    m_stopping = true;
}

double Axis::ratioVelocity(double highest) const
{
    return std::min(std::fabs(m_velocity) * m_percent / 100, highest);
}

void Axis::plan()
{
    const bool jog = m_activity == Activity::Jog;
    const double speed = ratioVelocity(jog ? m_settings.maximumJogVelocity : m_settings.maximumVelocity);
    if (m_activity == Activity::None || m_activity == Activity::Halt)
        return;
    if (speed == 0)
        begin(ProfilePlanner::toVelocity(m_set, 0, m_limits));
    else if (m_activity == Activity::ToPosition)
        begin(ProfilePlanner::toPosition(m_set, m_target, speed, m_limits));
    else
        begin(ProfilePlanner::toVelocity(m_set, std::copysign(speed, m_velocity), m_limits));
}

void Axis::brake(double deceleration, double jerk)
{
    const double usable = positiveOr(deceleration, limitDeceleration());
    beginStop(ProfilePlanner::toVelocity(m_set, 0, { usable, usable, positiveOr(jerk, 0) }));
}

double Axis::limitDeceleration() const
{
    return positiveOr(m_settings.limitDeceleration, m_settings.emergencyDeceleration);
}

void Axis::step()
{
    stepDrive();
    if (m_powered)
        stepMotion();
    else
        coast();
    superviseDrive();
}

void Axis::synchronize()
{
    m_set = { actual(), 0, 0 };
    m_counter.restart(m_machine.position());
    begin(Profile(m_set));
}

void Axis::stepDrive()
{
    if (m_enableIn < 0)
        return;
    m_enableIn -= m_cycle;
    // The drive takes hold of an axis that stands.
    if (m_enableIn > 0 || m_machine.velocity() != 0) {
        m_enableIn = std::max(m_enableIn, 0.0);
        return;
    }
    powerUp();
}

void Axis::powerUp()
{
    m_enableIn = -1;
    m_powered = true;
    m_atLimit = false;
    m_state = AxisState::StandStill;
    synchronize();
}

void Axis::coast()
{
    m_machine.coast(m_settings.emergencyDeceleration, m_cycle);
    synchronize();
}

void Axis::stepMotion()
{
    superviseSoftLimits();
    ++m_cycles;
    const MotionState next = m_profile.at(static_cast<double>(m_cycles) * m_cycle);
    m_counter.advance(next.position - m_set.position);
    m_set = next;
    m_machine.follow(m_counter.position(), m_cycle);
    if (m_state == AxisState::Homing) {
        stepHoming();
        return;
    }
    superviseHardLimits();
    if (profileDone())
        finish();
}

void Axis::finish()
{
    const bool held = m_percent == 0 && m_activity != Activity::None && m_activity != Activity::Halt;
    if (held || m_set.velocity != 0)
        return;
    m_activity = Activity::None;
    m_atLimit = false;
    if (m_state != AxisState::ErrorStop)
        m_state = AxisState::StandStill;
}

void Axis::fail(std::int16_t code, bool keepPower)
{
    m_homing.reset();
    m_activity = Activity::None;
    if (m_state != AxisState::ErrorStop) {
        m_error = code;
        m_state = AxisState::ErrorStop;
        brake(m_settings.emergencyDeceleration, 0);
    }
    m_powered = m_powered && keepPower;
}

void Axis::limitReached(std::int16_t code)
{
    m_atLimit = true;
    m_activity = Activity::None;
    m_error = code;
    m_state = m_settings.limitWithoutError ? AxisState::Stopping : AxisState::ErrorStop;
}

void Axis::stopAtSoftLimit(double limit, std::int16_t code)
{
    const MotionLimits limits = limitRamp();
    const double way = ProfilePlanner::stoppingDistance(m_set.velocity, m_set.acceleration, limits);
    const double room = m_set.velocity < 0 ? m_set.position - limit : limit - m_set.position;
    limitReached(code);
    if (way <= room + 1e-9)
        beginStop(ProfilePlanner::toPosition(m_set, limit, std::max(std::fabs(m_set.velocity), 1e-9), limits));
    else
        brake(std::max(limits.deceleration, m_settings.emergencyDeceleration), 0);
}

MotionLimits Axis::limitRamp() const
{
    return { m_settings.maximumAcceleration, limitDeceleration(), m_limits.jerk };
}

void Axis::superviseSoftLimits()
{
    const bool supervised = m_state == AxisState::DiscreteMotion || m_state == AxisState::ContinuousMotion
        || m_state == AxisState::Stopping;
    if (!m_settings.softLimits || m_atLimit || !supervised)
        return;
    const bool leavesUp = m_profile.highest() > m_settings.softLimitPositive;
    const bool leavesDown = m_profile.lowest() < m_settings.softLimitNegative;
    if (!leavesUp && !leavesDown)
        return;
    // Braking in the next cycle would come too late if it then ended behind the limit, so it begins in this one.
    const MotionState next = m_profile.at(static_cast<double>(m_cycles + 1) * m_cycle);
    const double way = ProfilePlanner::stoppingDistance(next.velocity, next.acceleration, limitRamp());
    if (leavesUp && next.velocity > 0 && next.position + way > m_settings.softLimitPositive)
        stopAtSoftLimit(m_settings.softLimitPositive, Diagnosis::softLimitPositive);
    else if (leavesDown && next.velocity < 0 && next.position - way < m_settings.softLimitNegative)
        stopAtSoftLimit(m_settings.softLimitNegative, Diagnosis::softLimitNegative);
}

void Axis::superviseHardLimits()
{
    const bool up = m_set.velocity > 0 && m_machine.positiveLimit();
    const bool down = m_set.velocity < 0 && m_machine.negativeLimit();
    if (!up && !down)
        return;
    // What has led to ErrorStop or to a stop at the other kind of limit is the cause, and stays the error that is
    // shown.
    if (m_state != AxisState::ErrorStop && !m_atLimit)
        limitReached(up ? Diagnosis::hardLimitPositive : Diagnosis::hardLimitNegative);
    brake(limitDeceleration(), 0);
}

void Axis::superviseDrive()
{
    if (!isPowered())
        return;
    if (m_machine.faults.powerLost || m_machine.faults.driveError != 0) {
        m_enableIn = -1;
        fail(m_machine.faults.powerLost ? Diagnosis::powerLost : Diagnosis::driveError, false);
        return;
    }
    const double behind = std::fabs(m_set.position - actual());
    const bool lost = m_settings.followingErrorThreshold > 0 && behind > m_settings.followingErrorThreshold;
    if (m_powered && lost && m_state != AxisState::ErrorStop)
        fail(Diagnosis::followingError, true);
}

void Axis::stepHoming()
{
    obey(m_homing->cycle(m_machine, standing(), m_cycle));
}

void Axis::obey(const HomingRun::Order& order)
{
    const double ramp = m_settings.homingAcceleration;
    switch (order.kind) {
    case HomingRun::Order::Keep:
        return;
    case HomingRun::Order::Run:
        begin(ProfilePlanner::toVelocity(m_set, order.velocity, { ramp, ramp, 0 }));
        return;
    case HomingRun::Order::Brake:
        brake(ramp, 0);
        return;
    case HomingRun::Order::BrakeHard:
        brake(m_settings.emergencyDeceleration, 0);
        return;
    case HomingRun::Order::Done:
        homed();
        return;
    case HomingRun::Order::Failed:
        fail(order.code, true);
        return;
    }
}

void Axis::homed()
{
    const double place = m_set.position + m_zeroPlace;
    // Without a motion it is the set point that becomes the home position, not where the lag has left the machine.
    const double home = m_settings.homingMethod == 35 ? place : m_homing->latched();
    m_zeroPlace = home - m_offsetOfRun;
    m_set = { place - m_zeroPlace, 0, 0 };
    begin(Profile(m_set));
    m_homing.reset();
    m_state = AxisState::StandStill;
}

AxisRef Axis::status() const
{
    AxisRef ref{};
    ref.axisState = static_cast<std::uint16_t>(m_state);
    ref.communication = m_machine.faults.powerLost ? 0 : 1;
    ref.setPosition = shown(m_set.position);
    ref.setVelocity = m_set.velocity;
    ref.setAcceleration = m_set.acceleration;
    ref.setTorque = m_machine.torque(m_set.acceleration, m_set.velocity);
    ref.actualPosition = shownActualPosition();
    ref.actualVelocity = m_machine.velocity();
    ref.actualAcceleration = m_machine.acceleration();
    ref.actualTorque = m_machine.torque(m_machine.acceleration(), m_machine.velocity());
    ref.axisError = static_cast<std::uint16_t>(m_error);
    ref.servoError = m_machine.faults.driveError;
    ref.positiveHardLimit = m_machine.positiveLimit();
    ref.negativeHardLimit = m_machine.negativeLimit();
    ref.homeSwitch = m_machine.homeSwitch();
    ref.positiveSoftLimit = softLimitReached(1);
    ref.negativeSoftLimit = softLimitReached(-1);
    ref.speedRatio = m_percent / 100.0;
    // Readers multiply by 100 and cut off; the ratio must not come out one percent lower.
    if (static_cast<int>(ref.speedRatio * 100) < m_percent)
        ref.speedRatio = std::nextafter(ref.speedRatio, 1e9);
    return ref;
}
