#pragma once

#include <QMetaType>

/// The debug requests to an axis of a controller and their parameter records.
///
/// Records are packed and hold the fields in the order in which the remote call takes them. axisNo is the axis's
/// number on the controller. Lengths are in user units, times in seconds unless told otherwise.
enum AxisDebugRequest {
    AxisDebugGetAxisRef = 0,
    AxisDebugGetAxesGroupRef = 1,
    AxisDebugEnterDebugMode = 2,
    AxisDebugKeepAlive = 3,
    AxisDebugSetEnable = 4,
    AxisDebugSetPosition = 5,
    AxisDebugSetHomeOffset = 6,
    AxisDebugSetVelRatio = 7,
    AxisDebugSetHome = 8,
    AxisDebugSetStop = 9,
    AxisDebugMoveAbs = 10,
    AxisDebugMoveRel = 11,
    AxisDebugMoveVel = 12,
    AxisDebugJopPos = 13,
    AxisDebugJopNeg = 14,
    AxisDebugReset = 15
};

#pragma pack(push, 1)

struct GetAxisRefParam {
    short axisNo = 0;
    /// Number of bytes wanted.
    int size = 0;
};

struct GetAxesGroupRefParam {
    short groupNo = 0;
    int size = 0;
};

struct EnterDebugModelParam {
    short axisNo = 0;
    /// 1 enters debug mode, 0 leaves it.
    short enter = 0;
    /// Time in ms without a request after which the controller stops the axis and leaves debug mode.
    short timeout = 0;
};

struct KeepAliveParam {
    short axisNo = 0;
};

struct SetEnableParam {
    short axisNo = 0;
    short enable = 0;
};

struct SetPositionParam {
    short axisNo = 0;
    /// What the controller is to take as the present position.
    double position = 0;
};

struct SetHomeOffsetParam {
    short axisNo = 0;
    double offset = 0;
};

struct SetVelRatioParam {
    short axisNo = 0;
    /// Speed multiplier in percent.
    short ratio = 0;
};

struct SetHomeParam {
    short axisNo = 0;
};

struct SetStopParam {
    short axisNo = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct MoveAbsParam {
    short axisNo = 0;
    double position = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct MoveRelParam {
    short axisNo = 0;
    /// The distance, signed.
    double position = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct MoveVelParam {
    short axisNo = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct JopPosParam {
    short axisNo = 0;
    /// 1: the jog button is held; 0: it was released.
    short pressed = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct JopNegParam {
    short axisNo = 0;
    short pressed = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

struct ResetParam {
    short axisNo = 0;
};

#pragma pack(pop)

Q_DECLARE_METATYPE(GetAxisRefParam)
Q_DECLARE_METATYPE(GetAxesGroupRefParam)
Q_DECLARE_METATYPE(EnterDebugModelParam)
Q_DECLARE_METATYPE(KeepAliveParam)
Q_DECLARE_METATYPE(SetEnableParam)
Q_DECLARE_METATYPE(SetPositionParam)
Q_DECLARE_METATYPE(SetHomeOffsetParam)
Q_DECLARE_METATYPE(SetVelRatioParam)
Q_DECLARE_METATYPE(SetHomeParam)
Q_DECLARE_METATYPE(SetStopParam)
Q_DECLARE_METATYPE(MoveAbsParam)
Q_DECLARE_METATYPE(MoveRelParam)
Q_DECLARE_METATYPE(MoveVelParam)
Q_DECLARE_METATYPE(JopPosParam)
Q_DECLARE_METATYPE(JopNegParam)
Q_DECLARE_METATYPE(ResetParam)
