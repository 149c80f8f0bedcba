#pragma once

#include "controller/AxisSettings.h"
#include "controller/AxisState.h"
#include "controller/HomingRun.h"
#include "controller/Mechanics.h"
#include "controller/Profile.h"
#include "controller/PulseCounter.h"
#include "protocol/AxisRefLayout.h"

#include <cstdint>
#include <optional>

/// The numbers of a motion command as they come in a request: user units and seconds.
struct MotionNumbers {
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

/// One axis: its states, its motion, its errors, and the simulated machine behind it. Not for use from several threads
/// at once.
///
/// Every command answers at once with 0 or a code of protocol/DiagnosisCodes.h; a refused command leaves the axis as it
/// was.
class Axis {
public:
    /// The cycle is in seconds.
    Axis(const AxisSettings& settings, const MechanicsSettings& mechanics, double cycle);

    /// \name Commands
    /// @{
    std::int16_t setEnable(bool on);
    /// Takes the position as the present one, without moving.
    std::int16_t setPosition(double position);
    std::int16_t setHomeOffset(double offset);
    std::int16_t setVelocityRatio(int percent);
    std::int16_t home();
    std::int16_t stop(double deceleration, double jerk);
    std::int16_t moveAbsolute(double position, const MotionNumbers& numbers);
    std::int16_t moveRelative(double distance, const MotionNumbers& numbers);
    std::int16_t moveVelocity(const MotionNumbers& numbers);
    /// Direction -1 or +1.
    std::int16_t startJog(int direction, const MotionNumbers& numbers);
    std::int16_t endJog(int direction, double deceleration, double jerk);
    std::int16_t reset();
    /// Stops at the emergency rate, whatever the axis does; an axis that stands stays as it is.
    void emergencyStop();
    /// Shows a code as the axis's error, without the state ErrorStop; an error that has led there stays.
    void showError(std::int16_t code);
    /// @}

    /// One cycle.
    void step();

    const AxisSettings& settings() const { return m_settings; }
    AxisState state() const { return m_state; }
    /// The drive is on, or about to be.
    bool isPowered() const { return m_powered || m_enableIn >= 0; }
    /// Set or actual position moves.
    bool isMoving() const;
    std::int16_t error() const { return m_error; }
    const MotionState& setPoint() const { return m_set; }
    /// Position as it is shown, within one turn for a rotary axis.
    double shownSetPosition() const { return shown(m_set.position); }
    double shownActualPosition() const;
    /// Pulses sent to the drive since it was last switched on, counted from the machine's zero.
    std::int64_t pulses() const;
    /// Status as it goes over the wire, less what belongs to the debug session.
    AxisRef status() const;

    Mechanics& machine() { return m_machine; }
    const Mechanics& machine() const { return m_machine; }
    /// The machine's place of position 0.
    double zeroPlace() const { return m_zeroPlace; }

private:
    enum class Activity { None, ToPosition, AtVelocity, Jog, Halt };

    std::int16_t checkMotionState() const;
    std::int16_t checkRamps(const MotionNumbers& numbers) const;
    std::int16_t checkNumbers(const MotionNumbers& numbers) const;
    std::int16_t checkTarget(double target) const;
    std::int16_t checkDirection(double direction) const;
    std::int16_t checkHoming(const HomingMethod* method) const;
    std::int16_t checkHomingNumbers() const;
    std::int16_t startMove(double target, const MotionNumbers& numbers);
    void startAtVelocity(Activity activity, double velocity, const MotionNumbers& numbers);

    void begin(Profile profile);
    void beginStop(Profile profile);
    void plan();
    void brake(double deceleration, double jerk);
    double limitDeceleration() const;
    double ratioVelocity(double highest) const;
    bool profileDone() const;
    bool standing() const;

    void powerUp();
    void stepDrive();
    void stepMotion();
    void coast();
    void superviseSoftLimits();
    void superviseHardLimits();
    void superviseDrive();
    void limitReached(std::int16_t code);
    void stopAtSoftLimit(double limit, std::int16_t code);
    MotionLimits limitRamp() const;
    void fail(std::int16_t code, bool keepPower);
    void finish();
    void stepHoming();
    void obey(const HomingRun::Order& order);
    void homed();

    double shown(double position) const;
    double actual() const;
    void synchronize();
    bool softLimitReached(int side) const;

    AxisSettings m_settings;
    Mechanics m_machine;
    PulseCounter m_counter;
    double m_cycle;

    AxisState m_state = AxisState::Disabled;
    std::int16_t m_error = 0;
    bool m_powered = false;
    /// Seconds until the drive reports on; negative while it is not being switched on.
    double m_enableIn = -1;

    /// Machine's place minus position.
    double m_zeroPlace = 0;
    MotionState m_set;
    Profile m_profile;
    std::int64_t m_cycles = 0;

    Activity m_activity = Activity::None;
    double m_target = 0;
    double m_velocity = 0;
    int m_jogDirection = 0;
    MotionLimits m_limits;
    int m_percent = 100;
    /// The profile is a stop under way, which only a harder one may replace.
    bool m_stopping = false;
    /// A limit has been met and the axis is braking because of it.
    bool m_atLimit = false;

    double m_homeOffset = 0;
    std::optional<HomingRun> m_homing;
    double m_offsetOfRun = 0;
};
