#include "controller/Axis.h"

#include "controller/ProfilePlanner.h"
#include "protocol/DiagnosisCodes.h"

#include <algorithm>
#include <cmath>

namespace {
bool isPositive(double value)
{
    return std::isfinite(value) && value > 0;
}

double usableJerk(double jerk)
{
    return isPositive(jerk) ? jerk : 0;
}

/// Twice around the earth in micrometres; what lies beyond is a slip of the keyboard and no machine.
constexpr double farthest = 1e14;

bool isPlace(double position)
{
    return std::isfinite(position) && std::fabs(position) <= farthest;
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

// ---- Refusals

std::int16_t Axis::checkMotionState() const
{
    switch (m_state) {
    case AxisState::Disabled:
        return m_settings.hasOutput() ? Diagnosis::notEnabled : Diagnosis::noOutput;
    case AxisState::ErrorStop:
    case AxisState::Stopping:
    case AxisState::Homing:
        return Diagnosis::notAllowedInState;
    case AxisState::StandStill:
    case AxisState::DiscreteMotion:
    case AxisState::ContinuousMotion:
    case AxisState::SynchronizedMotion:
        break;
    }
    return Diagnosis::ok;
}

std::int16_t Axis::checkRamps(const MotionNumbers& numbers) const
{
    if (!isPositive(numbers.acceleration))
        return Diagnosis::accelerationInvalid;
    if (!isPositive(numbers.deceleration))
        return Diagnosis::decelerationInvalid;
    if (!std::isfinite(numbers.jerk) || numbers.jerk < 0)
        return Diagnosis::jerkInvalid;
    if (std::max(numbers.acceleration, numbers.deceleration) > m_settings.maximumAcceleration)
        return Diagnosis::accelerationTooHigh;
    return Diagnosis::ok;
}

std::int16_t Axis::checkNumbers(const MotionNumbers& numbers) const
{
    if (!std::isfinite(numbers.velocity) || numbers.velocity == 0)
        return Diagnosis::velocityInvalid;
    if (std::fabs(numbers.velocity) > m_settings.maximumVelocity)
        return Diagnosis::velocityTooHigh;
    return checkRamps(numbers);
}

std::int16_t Axis::checkTarget(double target) const
{
    if (!isPlace(target))
        return Diagnosis::positionInvalid;
    if (m_settings.softLimits && (target > m_settings.softLimitPositive || target < m_settings.softLimitNegative))
        return Diagnosis::targetBeyondSoftLimit;
    return checkDirection(target - m_set.position);
}

std::int16_t Axis::checkDirection(double direction) const
{
    if (direction > 0 && m_machine.positiveLimit())
        return Diagnosis::hardLimitPositive;
    if (direction < 0 && m_machine.negativeLimit())
        return Diagnosis::hardLimitNegative;
    if (direction > 0 && softLimitReached(1))
        return Diagnosis::softLimitPositive;
    if (direction < 0 && softLimitReached(-1))
        return Diagnosis::softLimitNegative;
    return Diagnosis::ok;
}

bool Axis::softLimitReached(int side) const
{
    if (!m_settings.softLimits)
        return false;
    const double slack = 0.5 / m_settings.pulsesPerUnit;
    return side > 0 ? m_set.position >= m_settings.softLimitPositive - slack
                    : m_set.position <= m_settings.softLimitNegative + slack;
}

// ---- Commands

std::int16_t Axis::setEnable(bool on)
{
    if (!on) {
        m_enableIn = -1;
        m_powered = false;
        m_homing.reset();
        m_activity = Activity::None;
        if (m_state != AxisState::ErrorStop)
            m_state = AxisState::Disabled;
        return Diagnosis::ok;
    }
    if (!m_settings.hasOutput())
        return Diagnosis::noOutput;
    if (m_state == AxisState::ErrorStop)
        return Diagnosis::notAllowedInState;
    if (m_machine.powerLost)
        return Diagnosis::powerLost;
    if (m_machine.driveError != 0)
        return Diagnosis::driveError;
    if (!isPowered())
        m_enableIn = m_machine.enableDelay();
    return Diagnosis::ok;
}

std::int16_t Axis::setPosition(double position)
{
    if (m_state == AxisState::Disabled || m_state == AxisState::ErrorStop)
        return Diagnosis::setPositionNotAllowed;
    if (m_state == AxisState::Homing)
        return Diagnosis::notAllowedInState;
    if (!isPlace(position))
        return Diagnosis::positionInvalid;
    const double distance = position - m_set.position;
    m_zeroPlace -= distance;
    m_set.position = position;
    m_profile.shift(distance);
    m_target += distance;
    return Diagnosis::ok;
}

std::int16_t Axis::setHomeOffset(double offset)
{
    if (!isPlace(offset))
        return Diagnosis::positionInvalid;
    m_homeOffset = offset;
    return Diagnosis::ok;
}

std::int16_t Axis::setVelocityRatio(int percent)
{
    if (percent < 0 || percent > 1000)
        return Diagnosis::ratioOutOfRange;
    if (percent == m_percent)
        return Diagnosis::ok;
    m_percent = percent;
    // Stops and homing have speeds of their own.
    if (m_state == AxisState::DiscreteMotion || m_state == AxisState::ContinuousMotion)
        plan();
    return Diagnosis::ok;
}

std::int16_t Axis::checkHomingNumbers() const
{
    if (m_settings.homingMethod == 35)
        return Diagnosis::ok;
    const MotionNumbers search{ m_settings.homingVelocity, m_settings.homingAcceleration, m_settings.homingAcceleration,
        0 };
    MotionNumbers close = search;
    close.velocity = m_settings.homingCloseVelocity;
    const std::int16_t code = checkNumbers(search);
    return code != Diagnosis::ok ? code : checkNumbers(close);
}

std::int16_t Axis::checkHoming(const HomingMethod* method) const
{
    if (!method)
        return Diagnosis::homingMethodUnknown;
    // Where the cam may lie behind the axis, the search ends only if there is a switch to turn round at.
    const bool negative
        = method->signal == HomingSignal::NegativeLimit || (method->number >= 27 && method->number <= 30);
    const bool positive
        = method->signal == HomingSignal::PositiveLimit || (method->number >= 23 && method->number <= 26);
    const bool missing = (negative && !m_settings.negativeLimit.enabled)
        || (positive && !m_settings.positiveLimit.enabled)
        || (method->signal == HomingSignal::HomeSwitch && !m_settings.homeSwitch.enabled)
        || (method->signal == HomingSignal::Index && m_settings.kind == AxisKind::Virtual);
    return missing ? Diagnosis::homingSignalMissing : checkHomingNumbers();
}

std::int16_t Axis::home()
{
    if (m_state == AxisState::Disabled)
        return m_settings.hasOutput() ? Diagnosis::notEnabled : Diagnosis::noOutput;
    if (m_state != AxisState::StandStill)
        return Diagnosis::notAllowedInState;
    const HomingMethod* method = findHomingMethod(m_settings.homingMethod);
    const std::int16_t code = checkHoming(method);
    if (code != Diagnosis::ok)
        return code;
    m_error = 0;
    m_state = AxisState::Homing;
    m_offsetOfRun = m_homeOffset;
    m_homing.emplace(*method,
        HomingRun::Speeds{ m_settings.homingVelocity, m_settings.homingCloseVelocity, m_settings.homingTimeout });
    obey(m_homing->start(m_machine));
    return Diagnosis::ok;
}

std::int16_t Axis::stop(double deceleration, double jerk)
{
    if (m_state == AxisState::Disabled)
        return m_settings.hasOutput() ? Diagnosis::notEnabled : Diagnosis::noOutput;
    if (m_state == AxisState::ErrorStop)
        return Diagnosis::notAllowedInState;
    m_homing.reset();
    m_activity = Activity::None;
    m_state = AxisState::Stopping;
    brake(deceleration, jerk);
    return Diagnosis::ok;
}

std::int16_t Axis::startMove(double target, const MotionNumbers& numbers)
{
    std::int16_t code = checkNumbers(numbers);
    // The target alone says where to; a velocity against it cannot be meant.
    if (code == Diagnosis::ok && numbers.velocity < 0)
        code = Diagnosis::velocityInvalid;
    if (code == Diagnosis::ok)
        code = checkTarget(target);
    if (code != Diagnosis::ok)
        return code;
    m_error = 0;
    m_state = AxisState::DiscreteMotion;
    m_activity = Activity::ToPosition;
    m_target = target;
    m_velocity = numbers.velocity;
    m_limits = { numbers.acceleration, numbers.deceleration, numbers.jerk };
    plan();
    return Diagnosis::ok;
}

std::int16_t Axis::moveAbsolute(double position, const MotionNumbers& numbers)
{
    const std::int16_t code = checkMotionState();
    if (code != Diagnosis::ok)
        return code;
    if (!m_settings.rotary || !isPlace(position))
        return startMove(position, numbers);
    // Within a turn the shorter way is taken.
    return startMove(m_set.position + std::remainder(position - m_set.position, m_settings.rotationPeriod), numbers);
}

std::int16_t Axis::moveRelative(double distance, const MotionNumbers& numbers)
{
    const std::int16_t code = checkMotionState();
    return code != Diagnosis::ok ? code : startMove(m_set.position + distance, numbers);
}

void Axis::startAtVelocity(Activity activity, double velocity, const MotionNumbers& numbers)
{
    m_error = 0;
    m_state = AxisState::ContinuousMotion;
    m_activity = activity;
    m_velocity = velocity;
    m_limits = { numbers.acceleration, numbers.deceleration, numbers.jerk };
    plan();
}

std::int16_t Axis::moveVelocity(const MotionNumbers& numbers)
{
    std::int16_t code = checkMotionState();
    if (code == Diagnosis::ok)
        code = checkNumbers(numbers);
    if (code == Diagnosis::ok)
        code = checkDirection(numbers.velocity);
    if (code == Diagnosis::ok)
        startAtVelocity(Activity::AtVelocity, numbers.velocity, numbers);
    return code;
}

std::int16_t Axis::startJog(int direction, const MotionNumbers& numbers)
{
    std::int16_t code = checkMotionState();
    if (code == Diagnosis::ok && (!std::isfinite(numbers.velocity) || numbers.velocity == 0))
        code = Diagnosis::velocityInvalid;
    if (code == Diagnosis::ok)
        code = checkRamps(numbers);
    if (code == Diagnosis::ok)
        code = checkDirection(direction);
    if (code != Diagnosis::ok)
        return code;
    m_jogDirection = direction;
    const double speed = std::min(std::fabs(numbers.velocity), m_settings.maximumJogVelocity);
    startAtVelocity(Activity::Jog, direction * speed, numbers);
    return Diagnosis::ok;
}

std::int16_t Axis::endJog(int direction, double deceleration, double jerk)
{
    if (m_activity != Activity::Jog || m_jogDirection != direction)
        return Diagnosis::ok;
    m_activity = Activity::Halt;
    brake(deceleration, jerk);
    return Diagnosis::ok;
}

std::int16_t Axis::reset()
{
    if (m_state != AxisState::ErrorStop) {
        m_error = 0;
        return Diagnosis::ok;
    }
    if (isMoving() || m_machine.powerLost || m_machine.driveError != 0)
        return Diagnosis::causeNotGone;
    m_error = 0;
    m_atLimit = false;
    m_state = m_powered ? AxisState::StandStill : AxisState::Disabled;
    synchronize();
    return Diagnosis::ok;
}

void Axis::emergencyStop()
{
    m_homing.reset();
    m_activity = Activity::None;
    if (!m_powered || (profileDone() && m_set.velocity == 0)) {
        if (m_powered && m_state != AxisState::ErrorStop)
            m_state = AxisState::StandStill;
        return;
    }
    if (m_state != AxisState::ErrorStop)
        m_state = AxisState::Stopping;
    brake(m_settings.emergencyDeceleration, 0);
}

// ---- Planning

void Axis::begin(Profile profile)
{
    m_profile = std::move(profile);
    m_cycles = 0;
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
    const double usable = isPositive(deceleration) ? deceleration : m_settings.limitDeceleration;
    begin(ProfilePlanner::toVelocity(m_set, 0, { usable, usable, usableJerk(jerk) }));
}

// ---- The cycle

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

// ---- Supervision

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
    const bool enough = way <= std::fabs(limit - m_set.position) + 1e-9;
    // A stop that is under way already may be harder than this one.
    if (!enough && m_state == AxisState::Stopping)
        return;
    limitReached(code);
    if (enough)
        begin(ProfilePlanner::toPosition(m_set, limit, std::max(std::fabs(m_set.velocity), 1e-9), limits));
    else
        brake(limits.deceleration, limits.jerk);
}

MotionLimits Axis::limitRamp() const
{
    return { m_settings.maximumAcceleration, m_settings.limitDeceleration, m_limits.jerk };
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
    if (m_state == AxisState::ErrorStop || m_atLimit || (!up && !down))
        return;
    limitReached(up ? Diagnosis::hardLimitPositive : Diagnosis::hardLimitNegative);
    brake(m_settings.limitDeceleration, 0);
}

void Axis::superviseDrive()
{
    if (!isPowered())
        return;
    if (m_machine.powerLost || m_machine.driveError != 0) {
        m_enableIn = -1;
        fail(m_machine.powerLost ? Diagnosis::powerLost : Diagnosis::driveError, false);
        return;
    }
    const double behind = std::fabs(m_set.position - actual());
    const bool lost = m_settings.followingErrorThreshold > 0 && behind > m_settings.followingErrorThreshold;
    if (m_powered && lost && m_state != AxisState::ErrorStop)
        fail(Diagnosis::followingError, true);
}

// ---- Homing

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

// ---- Status

AxisRef Axis::status() const
{
    AxisRef ref{};
    ref.axisState = static_cast<std::uint16_t>(m_state);
    ref.communication = m_machine.powerLost ? 0 : 1;
    ref.setPosition = shown(m_set.position);
    ref.setVelocity = m_set.velocity;
    ref.setAcceleration = m_set.acceleration;
    ref.setTorque = m_machine.torque(m_set.acceleration, m_set.velocity);
    ref.actualPosition = shownActualPosition();
    ref.actualVelocity = m_machine.velocity();
    ref.actualAcceleration = m_machine.acceleration();
    ref.actualTorque = m_machine.torque(m_machine.acceleration(), m_machine.velocity());
    ref.axisError = static_cast<std::uint16_t>(m_error);
    ref.servoError = m_machine.driveError;
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
