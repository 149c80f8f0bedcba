#pragma once

#include <cstdint>

/// Results of requests and error ids of axes: 0 is success, everything else is looked up in the diagnosis table of the
/// controller's description, class 11. Positive 16-bit numbers; a number never changes its meaning.
namespace Diagnosis {

constexpr std::int16_t ok = 0;

/// \name Refusals and axis errors, given by the controller
/// @{
/// The command is not allowed in the axis's present state.
constexpr std::int16_t notAllowedInState = 1;
/// The axis is not enabled.
constexpr std::int16_t notEnabled = 2;
/// The axis is not in debug mode.
constexpr std::int16_t notInDebugMode = 3;
/// Another client has the axis in debug mode.
constexpr std::int16_t ownedByOther = 4;
/// The controller has no axis of that number.
constexpr std::int16_t unknownAxis = 5;
/// The target lies beyond a software limit.
constexpr std::int16_t targetBeyondSoftLimit = 6;
/// The positive software limit has been reached.
constexpr std::int16_t softLimitPositive = 7;
/// The negative software limit has been reached.
constexpr std::int16_t softLimitNegative = 8;
/// The positive limit switch is active.
constexpr std::int16_t hardLimitPositive = 9;
/// The negative limit switch is active.
constexpr std::int16_t hardLimitNegative = 10;
/// The velocity is above the axis's maximum.
constexpr std::int16_t velocityTooHigh = 11;
/// The acceleration or deceleration is above the axis's maximum.
constexpr std::int16_t accelerationTooHigh = 12;
/// The velocity is 0 or no number.
constexpr std::int16_t velocityInvalid = 13;
/// The acceleration is not positive or no number.
constexpr std::int16_t accelerationInvalid = 14;
/// The deceleration is not positive or no number.
constexpr std::int16_t decelerationInvalid = 15;
/// The jerk is negative or no number.
constexpr std::int16_t jerkInvalid = 16;
/// The position, distance or offset is no number or out of range.
constexpr std::int16_t positionInvalid = 17;
/// The actual position has fallen too far behind the set position.
constexpr std::int16_t followingError = 18;
/// The position cannot be set while the axis is Disabled or in ErrorStop.
constexpr std::int16_t setPositionNotAllowed = 19;
/// The speed multiplier is out of range.
constexpr std::int16_t ratioOutOfRange = 20;
/// The homing method is unknown.
constexpr std::int16_t homingMethodUnknown = 21;
/// The homing method needs a signal that is not enabled.
constexpr std::int16_t homingSignalMissing = 22;
/// Homing has not ended within its time-out.
constexpr std::int16_t homingTimeout = 23;
/// Homing has met a limit switch that its method does not allow.
constexpr std::int16_t homingLimit = 24;
/// The unit conversion of the axis gives no usable ratio.
constexpr std::int16_t unitRatioInvalid = 25;
/// The emergency stop holds all axes until it is released.
constexpr std::int16_t emergencyStop = 26;
/// The drive has lost its power while it was running.
constexpr std::int16_t powerLost = 27;
/// The drive reports an error.
constexpr std::int16_t driveError = 28;
/// The cause of the error is still there.
constexpr std::int16_t causeNotGone = 29;
/// The debug session has ended because its client was silent for too long; an axis shows it as its error, without the
/// state ErrorStop.
constexpr std::int16_t debugTimeout = 31;
/// A flag or time of the request is out of range.
constexpr std::int16_t argumentInvalid = 32;
/// The axis has no output to move.
constexpr std::int16_t noOutput = 33;
/// @}

/// \name Taking over axes
/// @{
/// An axis is enabled, so no axes are taken over.
constexpr std::int16_t axisEnabled = 48;
/// A parameter of an axis is missing, no number, or out of range.
constexpr std::int16_t parameterInvalid = 49;
/// Two axes have the same number.
constexpr std::int16_t axisNumberDoubled = 50;
/// An upper limit lies below the lower one.
constexpr std::int16_t limitsCross = 51;
/// There are more axes than the controller can run.
constexpr std::int16_t tooManyAxes = 52;
/// @}

/// \name The connection
/// @{
/// There is no connection to a controller.
constexpr std::int16_t notConnected = 0x7001;
/// The controller has not answered in time.
constexpr std::int16_t noAnswer = 0x7002;
/// The controller has refused the request or the login.
constexpr std::int16_t refused = 0x7003;
/// Workbench and controller speak different versions of the protocol.
constexpr std::int16_t versionDiffers = 0x7004;
/// @}

} // namespace Diagnosis
