#pragma once

#include <cstddef>
#include <cstdint>

/// The status reply of an axis, byte for byte as it goes over the wire: little-endian, packed, 248 bytes.
///
/// Lengths are in user units, speeds in units per second, accelerations in units per second squared, torques in steps
/// of 0.1 % of the rated torque. Reserved bytes are zero when sent and are not read.
#pragma pack(push, 1)
struct AxisRef {
    std::uint8_t reserved0[4];
    /// Number of the axis state, 0 Disabled to 7 Homing.
    std::uint16_t axisState;
    std::uint8_t reserved6[2];
    /// Not 0: the controller talks to the drive.
    std::uint8_t communication;
    std::uint8_t reserved9[3];
    double setPosition;
    double setVelocity;
    double setAcceleration;
    double setTorque;
    double actualPosition;
    double actualVelocity;
    double actualAcceleration;
    double actualTorque;
    std::uint8_t reserved76[32];
    /// 0: no error, otherwise a code of DiagnosisCodes.h.
    std::uint16_t axisError;
    /// 0: the drive reports no error.
    std::int16_t servoError;
    std::uint8_t reserved112[8];
    std::uint8_t positiveHardLimit;
    std::uint8_t negativeHardLimit;
    std::uint8_t homeSwitch;
    std::uint8_t positiveSoftLimit;
    std::uint8_t negativeSoftLimit;
    std::uint8_t reserved125[75];
    /// Not 0: the axis is in debug mode.
    std::uint8_t debugMode;
    std::uint8_t reserved201[3];
    /// Factor on commanded velocities; 1 is 100 %.
    double speedRatio;
    std::uint8_t reserved212[36];
};
#pragma pack(pop)

constexpr int axisRefSize = 248;

static_assert(sizeof(double) == 8, "binary64 is what goes over the wire");
#if defined(__BYTE_ORDER__)
static_assert(
    __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the reply is copied as it stands, so the machine is little-endian");
#elif !defined(_WIN32)
#error "the reply is copied as it stands, so the machine must be little-endian; this compiler does not tell"
#endif
static_assert(sizeof(AxisRef) == axisRefSize, "the reply has 248 bytes");
static_assert(offsetof(AxisRef, axisState) == 4, "");
static_assert(offsetof(AxisRef, communication) == 8, "");
static_assert(offsetof(AxisRef, setPosition) == 12, "");
static_assert(offsetof(AxisRef, setVelocity) == 20, "");
static_assert(offsetof(AxisRef, setAcceleration) == 28, "");
static_assert(offsetof(AxisRef, setTorque) == 36, "");
static_assert(offsetof(AxisRef, actualPosition) == 44, "");
static_assert(offsetof(AxisRef, actualVelocity) == 52, "");
static_assert(offsetof(AxisRef, actualAcceleration) == 60, "");
static_assert(offsetof(AxisRef, actualTorque) == 68, "");
static_assert(offsetof(AxisRef, reserved76) == 76, "");
static_assert(offsetof(AxisRef, axisError) == 108, "");
static_assert(offsetof(AxisRef, servoError) == 110, "");
static_assert(offsetof(AxisRef, reserved112) == 112, "");
static_assert(offsetof(AxisRef, positiveHardLimit) == 120, "");
static_assert(offsetof(AxisRef, negativeHardLimit) == 121, "");
static_assert(offsetof(AxisRef, homeSwitch) == 122, "");
static_assert(offsetof(AxisRef, positiveSoftLimit) == 123, "");
static_assert(offsetof(AxisRef, negativeSoftLimit) == 124, "");
static_assert(offsetof(AxisRef, reserved125) == 125, "");
static_assert(offsetof(AxisRef, debugMode) == 200, "");
static_assert(offsetof(AxisRef, speedRatio) == 204, "");
static_assert(offsetof(AxisRef, reserved212) == 212, "");
