#pragma once

#include "controller/AxisSettings.h"
#include "controller/HomingMethod.h"

#include <optional>
#include <string>
#include <vector>

/// Where the switches of a simulated machine stand and how it moves, in user units measured from its own zero.
struct MechanicsSettings {
    /// Where the axis stands when the controller starts.
    double start = 0;
    /// Hard ends of the travel; infinite for none.
    double lowest = 0;
    double highest = 0;
    /// The negative limit switch is pressed up to here, the positive one from here on.
    double negativeSwitch = 0;
    double positiveSwitch = 0;
    /// The home switch is pressed from the first up to the second place; infinite for a switch without that end.
    double homeFrom = 0;
    double homeTo = 0;
    /// Places of the index pulse: the offset and every so many units from it.
    double indexOffset = 0;
    double indexPeriod = 1;
    /// The home switch comes again after every turn of so many units; 0 for a linear axis.
    double turn = 0;
    /// Gain of the drive's position loop in 1/s: the actual position follows with a lag of velocity / gain.
    double gain = 100;
    /// Seconds from switching the drive on until it reports so.
    double enableDelay = 0.01;
    /// Torque in 0.1 % for an acceleration of 1, and against the direction of travel.
    double inertia = 0.05;
    double friction = 20;
    /// The switch is wired so that its input is on while it is pressed (false: while it is not). Not set: as the
    /// record's logic expects it.
    std::optional<bool> positiveWiring;
    std::optional<bool> negativeWiring;
    std::optional<bool> homeWiring;

    /// A machine on which the axis can be tried out at once, homing included.
    static MechanicsSettings defaultsFor(const AxisSettings& axis);
    /// Replaces what the JSON text of one axis names. False with a text for the user when it is no such thing.
    bool read(const std::string& json, std::string* error);
    /// All keys of that text.
    static std::vector<std::string> keys();
};

/// What is broken about a machine.
struct MachineFaults {
    /// It does not move.
    bool blocked = false;
    /// The drive has no power.
    bool powerLost = false;
    /// What the drive reports, 0 for no error.
    std::int16_t driveError = 0;
};

/// An edge that the axis has passed in a cycle.
struct PassedEdge {
    HomingSignal signal;
    SignalEdge edge;
    /// +1 moving right, -1 moving left.
    int direction;
    double position;
};

/// The machine behind an axis: follows what the drive commands, presses switches, can be broken on purpose.
class Mechanics {
public:
    Mechanics(const MechanicsSettings& settings, const AxisSettings& axis);

    /// Follows the commanded place for one cycle.
    void follow(double commanded, double seconds);
    /// Runs down for one cycle, with this deceleration, while the drive is off.
    void coast(double deceleration, double seconds);

    double position() const { return m_position; }
    double velocity() const { return m_velocity; }
    double acceleration() const { return m_acceleration; }
    double torque(double acceleration, double velocity) const;

    /// Level of the input as the record's logic reads it; false for an input that the record does not use.
    bool negativeLimit() const;
    bool positiveLimit() const;
    bool homeSwitch() const;
    /// What was passed in the last cycle, in the order in which it was met.
    const std::vector<PassedEdge>& passed() const { return m_passed; }

    double enableDelay() const { return m_settings.enableDelay; }

    MachineFaults faults;

private:
    void moveTo(double position, double seconds);
    void notePassed(double from, double to);
    void noteEdge(HomingSignal signal, SignalEdge edge, double at, double from, double to);
    void noteRepeated(HomingSignal signal, SignalEdge edge, double at, double period, double from, double to);
    void noteHome(SignalEdge edge, double at, double from, double to);
    bool homePressed() const;

    MechanicsSettings m_settings;
    SwitchSettings m_positive;
    SwitchSettings m_negative;
    SwitchSettings m_home;
    bool m_direct;
    double m_position;
    double m_velocity = 0;
    double m_acceleration = 0;
    std::vector<PassedEdge> m_passed;
};
