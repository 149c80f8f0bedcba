#include "host/languagecore/SystemLibrary.h"

#include "protocol/DiagnosisCodes.h"

#include <cstdint>

namespace ac {

namespace {

struct ErrorName {
    const char* name;
    std::int16_t code;
};

/// The names of the codes in programs, where names of a library carry its prefix.
constexpr ErrorName errorNames[] = {
    { "MC_NO_ERROR", Diagnosis::ok },
    { "MC_NOT_ALLOWED_IN_STATE", Diagnosis::notAllowedInState },
    { "MC_NOT_ENABLED", Diagnosis::notEnabled },
    { "MC_NOT_IN_DEBUG_MODE", Diagnosis::notInDebugMode },
    { "MC_OWNED_BY_OTHER", Diagnosis::ownedByOther },
    { "MC_UNKNOWN_AXIS", Diagnosis::unknownAxis },
    { "MC_TARGET_BEYOND_SOFT_LIMIT", Diagnosis::targetBeyondSoftLimit },
    { "MC_SOFT_LIMIT_POSITIVE", Diagnosis::softLimitPositive },
    { "MC_SOFT_LIMIT_NEGATIVE", Diagnosis::softLimitNegative },
    { "MC_HARD_LIMIT_POSITIVE", Diagnosis::hardLimitPositive },
    { "MC_HARD_LIMIT_NEGATIVE", Diagnosis::hardLimitNegative },
    { "MC_VELOCITY_TOO_HIGH", Diagnosis::velocityTooHigh },
    { "MC_ACCELERATION_TOO_HIGH", Diagnosis::accelerationTooHigh },
    { "MC_VELOCITY_INVALID", Diagnosis::velocityInvalid },
    { "MC_ACCELERATION_INVALID", Diagnosis::accelerationInvalid },
    { "MC_DECELERATION_INVALID", Diagnosis::decelerationInvalid },
    { "MC_JERK_INVALID", Diagnosis::jerkInvalid },
    { "MC_POSITION_INVALID", Diagnosis::positionInvalid },
    { "MC_FOLLOWING_ERROR", Diagnosis::followingError },
    { "MC_SET_POSITION_NOT_ALLOWED", Diagnosis::setPositionNotAllowed },
    { "MC_RATIO_OUT_OF_RANGE", Diagnosis::ratioOutOfRange },
    { "MC_HOMING_METHOD_UNKNOWN", Diagnosis::homingMethodUnknown },
    { "MC_HOMING_SIGNAL_MISSING", Diagnosis::homingSignalMissing },
    { "MC_HOMING_TIMEOUT", Diagnosis::homingTimeout },
    { "MC_HOMING_LIMIT", Diagnosis::homingLimit },
    { "MC_UNIT_RATIO_INVALID", Diagnosis::unitRatioInvalid },
    { "MC_EMERGENCY_STOP", Diagnosis::emergencyStop },
    { "MC_POWER_LOST", Diagnosis::powerLost },
    { "MC_DRIVE_ERROR", Diagnosis::driveError },
    { "MC_CAUSE_NOT_GONE", Diagnosis::causeNotGone },
    { "MC_DEBUG_TIMEOUT", Diagnosis::debugTimeout },
    { "MC_ARGUMENT_INVALID", Diagnosis::argumentInvalid },
    { "MC_NO_OUTPUT", Diagnosis::noOutput },
    { "MC_AXIS_ENABLED", Diagnosis::axisEnabled },
    { "MC_PARAMETER_INVALID", Diagnosis::parameterInvalid },
    { "MC_AXIS_NUMBER_DOUBLED", Diagnosis::axisNumberDoubled },
    { "MC_LIMITS_CROSS", Diagnosis::limitsCross },
    { "MC_TOO_MANY_AXES", Diagnosis::tooManyAxes },
    { "MC_NOT_CONNECTED", Diagnosis::notConnected },
    { "MC_NO_ANSWER", Diagnosis::noAnswer },
    { "MC_REFUSED", Diagnosis::refused },
    { "MC_VERSION_DIFFERS", Diagnosis::versionDiffers },
};

const char* const axisTypes = R"(
TYPE
    MC_AXIS_STATE : (
        MC_DISABLED := 0,
        MC_ERROR_STOP := 1,
        MC_STOPPING := 2,
        MC_STANDSTILL := 3,
        MC_DISCRETE_MOTION := 4,
        MC_CONTINUOUS_MOTION := 5,
        MC_SYNCHRONIZED_MOTION := 6,
        MC_HOMING := 7
    ) INT;

    AXIS_REF : STRUCT
        AxisNo : INT;                // Number of the axis on the controller
        State : MC_AXIS_STATE;       // State of the axis
        ErrorId : MC_AXIS_ERROR_ID;  // Error that holds the axis
        SetPosition : LREAL;         // Position that is commanded
        ActPosition : LREAL;         // Position that is measured
        SetVelocity : LREAL;         // Velocity that is commanded
        ActVelocity : LREAL;         // Velocity that is measured
    END_STRUCT

    AXES_GROUP_REF : STRUCT
        GroupNo : INT;  // Number of the group on the controller
    END_STRUCT
END_TYPE
)";

const char* const standardBlocks = R"(
FUNCTION_BLOCK SR
    VAR_INPUT S1, R : BOOL; END_VAR
    VAR_OUTPUT Q1 : BOOL; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK RS
    VAR_INPUT S, R1 : BOOL; END_VAR
    VAR_OUTPUT Q1 : BOOL; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK R_TRIG
    VAR_INPUT CLK : BOOL; END_VAR
    VAR_OUTPUT Q : BOOL; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK F_TRIG
    VAR_INPUT CLK : BOOL; END_VAR
    VAR_OUTPUT Q : BOOL; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK CTU
    VAR_INPUT CU, R : BOOL; PV : INT; END_VAR
    VAR_OUTPUT Q : BOOL; CV : INT; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK CTD
    VAR_INPUT CD, LD : BOOL; PV : INT; END_VAR
    VAR_OUTPUT Q : BOOL; CV : INT; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK CTUD
    VAR_INPUT CU, CD, R, LD : BOOL; PV : INT; END_VAR
    VAR_OUTPUT QU, QD : BOOL; CV : INT; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK TP
    VAR_INPUT IN : BOOL; PT : TIME; END_VAR
    VAR_OUTPUT Q : BOOL; ET : TIME; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK TON
    VAR_INPUT IN : BOOL; PT : TIME; END_VAR
    VAR_OUTPUT Q : BOOL; ET : TIME; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK TOF
    VAR_INPUT IN : BOOL; PT : TIME; END_VAR
    VAR_OUTPUT Q : BOOL; ET : TIME; END_VAR
END_FUNCTION_BLOCK
)";

const char* const axisBlocks = R"(
FUNCTION_BLOCK MC_Power
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Enable : BOOL; END_VAR
    VAR_OUTPUT Status, Busy, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_Reset
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; END_VAR
    VAR_OUTPUT Done, Busy, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_Home
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; Position : LREAL; END_VAR
    VAR_OUTPUT Done, Busy, CommandAborted, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_Stop
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; Deceleration, Jerk : LREAL; END_VAR
    VAR_OUTPUT Done, Busy, CommandAborted, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_MoveAbsolute
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; Position, Velocity, Acceleration, Deceleration, Jerk : LREAL; END_VAR
    VAR_OUTPUT Done, Busy, Active, CommandAborted, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_MoveRelative
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; Distance, Velocity, Acceleration, Deceleration, Jerk : LREAL; END_VAR
    VAR_OUTPUT Done, Busy, Active, CommandAborted, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
FUNCTION_BLOCK MC_MoveVelocity
    VAR_IN_OUT Axis : AXIS_REF; END_VAR
    VAR_INPUT Execute : BOOL; Velocity, Acceleration, Deceleration, Jerk : LREAL; END_VAR
    VAR_OUTPUT InVelocity, Busy, Active, CommandAborted, Error : BOOL; ErrorId : MC_AXIS_ERROR_ID; END_VAR
END_FUNCTION_BLOCK
)";

std::string errorEnumeration()
{
    std::string text = "TYPE MC_AXIS_ERROR_ID : (\n";
    for (const ErrorName& error : errorNames) {
        text += &error == errorNames ? "    " : ",\n    ";
        text += std::string(error.name) + " := " + std::to_string(error.code);
    }
    return text + "\n) INT;\nEND_TYPE\n";
}

} // namespace

const char* systemLibraryName()
{
    return "System";
}

std::string systemLibraryText()
{
    return errorEnumeration() + axisTypes + standardBlocks + axisBlocks;
}

} // namespace ac
