#pragma once

#include "host/communication/Export.h"

#include <QByteArray>

/// The debug requests to the connected controller as blocking calls. Light: one is made for a call and thrown away,
/// the connection behind it is shared. Any thread.
///
/// A short result of 0 means that the controller has carried the command out, anything else is a code of the diagnosis
/// table, those of the connection itself included. A status request that failed gives an empty array. Status requests
/// and keep-alives end after one second at most; a call on a link that is known to be down ends at once.
class KESTRUN_COMMUNICATION_EXPORT RpcCmdSend {
public:
    RpcCmdSend();
    virtual ~RpcCmdSend();

    /// Time in seconds after which a call ends without an answer. Below 1 counts as 1.
    int deadline = 10;

    /// The first size bytes of the axis's status.
    QByteArray rpc_AxisDebug_GetAxisRef(short axisNo, int size);
    /// The same of an axes group.
    QByteArray rpc_AxisDebug_GetAxesGroupRef(short groupNo, int size);
    /// Enters (1) or leaves (0) debug mode; the time-out is in ms.
    short rpc_AxisDebug_EnterDebugMode(short axisNo, short enter, short timeout);
    short rpc_AxisDebug_KeepAlive(short axisNo);
    short rpc_AxisDebug_SetEnable(short axisNo, short enable);
    short rpc_AxisDebug_SetPosition(short axisNo, double position);
    short rpc_AxisDebug_SetHomeOffset(short axisNo, double offset);
    /// The ratio is in percent.
    short rpc_AxisDebug_SetVelRatio(short axisNo, short ratio);
    short rpc_AxisDebug_SetHome(short axisNo);
    short rpc_AxisDebug_SetStop(short axisNo, double deceleration, double jerk);
    short rpc_AxisDebug_MoveAbs(
        short axisNo, double position, double velocity, double acceleration, double deceleration, double jerk);
    /// The position is the distance.
    short rpc_AxisDebug_MoveRel(
        short axisNo, double position, double velocity, double acceleration, double deceleration, double jerk);
    short rpc_AxisDebug_MoveVel(short axisNo, double velocity, double acceleration, double deceleration, double jerk);
    short rpc_AxisDebug_JopPos(
        short axisNo, short pressed, double velocity, double acceleration, double deceleration, double jerk);
    short rpc_AxisDebug_JopNeg(
        short axisNo, short pressed, double velocity, double acceleration, double deceleration, double jerk);
    short rpc_AxisDebug_Reset(short axisNo);
};
