#pragma once

#include "controller/HomingMethod.h"

#include <cstdint>
#include <map>
#include <string>

/// The parameters of an axis under the keys of a project's record, as text.
using AxisValues = std::map<std::string, std::string>;

enum class AxisKind { Virtual, Pulse, Encoder, EtherCat };

/// Why a record cannot be run.
struct SettingsFault {
    std::int16_t code = 0;
    std::string key;
    std::string reason;
};

/// One switch input as the record has it.
struct SwitchSettings {
    bool enabled = false;
    /// The signal is active while the input is on; false: while it is off.
    bool activeHigh = true;
};

/// What an axis is, checked: user units, seconds, user units per second.
struct AxisSettings {
    int number = 0;
    std::string name;
    AxisKind kind = AxisKind::Virtual;

    double pulsesPerUnit = 10000;
    bool reverse = false;

    bool rotary = false;
    double rotationPeriod = 360;

    bool softLimits = false;
    double softLimitNegative = 0;
    double softLimitPositive = 1000;
    /// A limit stops the axis without an error.
    bool limitWithoutError = true;

    /// 0: the emergency deceleration serves.
    double limitDeceleration = 1000;
    double emergencyDeceleration = 10000;
    /// What no motion may exceed; 0 lets none through.
    double maximumVelocity = 10;
    double maximumAcceleration = 500000;
    double maximumJogVelocity = 500;
    /// Not positive: not supervised.
    double followingErrorThreshold = 0;

    int homingMethod = 0;
    double homingVelocity = 10;
    double homingAcceleration = 100;
    double homingCloseVelocity = 1;
    double homingTimeout = 50;
    SwitchSettings positiveLimit;
    SwitchSettings negativeLimit;
    SwitchSettings homeSwitch;

    bool hasOutput() const { return kind != AxisKind::Encoder; }

    /// Reads a record. False, with the fault, when it cannot be run; the settings are then not to be used.
    static bool read(const std::string& name, const AxisValues& values, AxisSettings* settings, SettingsFault* fault);
};
