#include "host/communication/RpcCmdSend.h"

#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/AxisDebugParams.h"

#include <algorithm>

namespace {
AxisRequest makeRequest(int code, short axisNo)
{
    AxisRequest request;
    request.code = code;
    request.axisNo = axisNo;
    return request;
}

/// What brings an axis to rest is in nobody's way.
bool bringsToRest(const AxisRequest& request)
{
    switch (request.code) {
    case AxisDebugSetStop:
        return true;
    case AxisDebugEnterDebugMode:
    case AxisDebugSetEnable:
    case AxisDebugJopPos:
    case AxisDebugJopNeg:
        return request.value == 0;
    default:
        return false;
    }
}

AxisReply ask(const AxisRequest& request, int seconds)
{
    const short refusal = ControllerLink::Refusal::present();
    if (refusal != 0 && !bringsToRest(request))
        return { refusal, {} };
    const std::shared_ptr<ControllerLink> link = ControllerLink::active();
    if (!link)
        return { Diagnosis::notConnected, {} };
    if (const auto announcer = ControllerLink::announcer())
        (*announcer)(request);
    return link->request(request, std::chrono::seconds(std::max(seconds, 1)));
}

AxisReply send(const AxisRequest& request, int seconds)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    AxisReply reply = ask(request, seconds);
    if (const auto observer = ControllerLink::observer())
        (*observer)(request, reply, std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start));
    return reply;
}

// A lost reply to a request that is repeated anyway must never hold up a command for long.
AxisReply sendBriefly(const AxisRequest& request)
{
    return send(request, 1);
}

AxisRequest makeMotion(int code, short axisNo, double velocity, double acceleration, double deceleration, double jerk)
{
    AxisRequest request = makeRequest(code, axisNo);
    request.velocity = velocity;
    request.acceleration = acceleration;
    request.deceleration = deceleration;
    request.jerk = jerk;
    return request;
}
} // namespace

RpcCmdSend::RpcCmdSend() = default;
RpcCmdSend::~RpcCmdSend() = default;

QByteArray RpcCmdSend::rpc_AxisDebug_GetAxisRef(short axisNo, int size)
{
    AxisRequest request = makeRequest(AxisDebugGetAxisRef, axisNo);
    request.size = size;
    return sendBriefly(request).data;
}

QByteArray RpcCmdSend::rpc_AxisDebug_GetAxesGroupRef(short groupNo, int size)
{
    AxisRequest request = makeRequest(AxisDebugGetAxesGroupRef, groupNo);
    request.size = size;
    return sendBriefly(request).data;
}

short RpcCmdSend::rpc_AxisDebug_EnterDebugMode(short axisNo, short enter, short timeout)
{
    AxisRequest request = makeRequest(AxisDebugEnterDebugMode, axisNo);
    request.value = enter;
    request.timeout = timeout;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_KeepAlive(short axisNo)
{
    return sendBriefly(makeRequest(AxisDebugKeepAlive, axisNo)).result;
}

short RpcCmdSend::rpc_AxisDebug_SetEnable(short axisNo, short enable)
{
    AxisRequest request = makeRequest(AxisDebugSetEnable, axisNo);
    request.value = enable;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_SetPosition(short axisNo, double position)
{
    AxisRequest request = makeRequest(AxisDebugSetPosition, axisNo);
    request.position = position;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_SetHomeOffset(short axisNo, double offset)
{
    AxisRequest request = makeRequest(AxisDebugSetHomeOffset, axisNo);
    request.position = offset;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_SetVelRatio(short axisNo, short ratio)
{
    AxisRequest request = makeRequest(AxisDebugSetVelRatio, axisNo);
    request.value = ratio;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_SetHome(short axisNo)
{
    return send(makeRequest(AxisDebugSetHome, axisNo), deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_SetStop(short axisNo, double deceleration, double jerk)
{
    return send(makeMotion(AxisDebugSetStop, axisNo, 0, 0, deceleration, jerk), deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_MoveAbs(
    short axisNo, double position, double velocity, double acceleration, double deceleration, double jerk)
{
    AxisRequest request = makeMotion(AxisDebugMoveAbs, axisNo, velocity, acceleration, deceleration, jerk);
    request.position = position;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_MoveRel(
    short axisNo, double position, double velocity, double acceleration, double deceleration, double jerk)
{
    AxisRequest request = makeMotion(AxisDebugMoveRel, axisNo, velocity, acceleration, deceleration, jerk);
    request.position = position;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_MoveVel(
    short axisNo, double velocity, double acceleration, double deceleration, double jerk)
{
    return send(makeMotion(AxisDebugMoveVel, axisNo, velocity, acceleration, deceleration, jerk), deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_JopPos(
    short axisNo, short pressed, double velocity, double acceleration, double deceleration, double jerk)
{
    AxisRequest request = makeMotion(AxisDebugJopPos, axisNo, velocity, acceleration, deceleration, jerk);
    request.value = pressed;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_JopNeg(
    short axisNo, short pressed, double velocity, double acceleration, double deceleration, double jerk)
{
    AxisRequest request = makeMotion(AxisDebugJopNeg, axisNo, velocity, acceleration, deceleration, jerk);
    request.value = pressed;
    return send(request, deadline).result;
}

short RpcCmdSend::rpc_AxisDebug_Reset(short axisNo)
{
    return send(makeRequest(AxisDebugReset, axisNo), deadline).result;
}
