#include "controller/Axis.h"

#include "protocol/DiagnosisCodes.h"

#include <algorithm>
#include <cmath>

namespace {
bool isPositive(double value)
{
    return std::isfinite(value) && value > 0;
}

/// Twice around the earth in micrometres; what lies beyond is a slip of the keyboard and no machine.
constexpr double farthest = 1e14;

bool isPlace(double position)
{
    return std::isfinite(position) && std::fabs(position) <= farthest;
}
} // namespace

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
    if (m_machine.faults.powerLost)
        return Diagnosis::powerLost;
    if (m_machine.faults.driveError != 0)
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
    // The target alone says where to; of a signed velocity the magnitude counts.
    std::int16_t code = checkNumbers(numbers);
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
    if (code == Diagnosis::ok && m_settings.maximumJogVelocity == 0)
        code = Diagnosis::velocityTooHigh;
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
    if (isMoving() || m_machine.faults.powerLost || m_machine.faults.driveError != 0)
        return Diagnosis::causeNotGone;
    m_error = 0;
    m_atLimit = false;
    m_state = m_powered ? AxisState::StandStill : AxisState::Disabled;
    synchronize();
    return Diagnosis::ok;
}

void Axis::showError(std::int16_t code)
{
    if (m_state != AxisState::ErrorStop)
        m_error = code;
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
