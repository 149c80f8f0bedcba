#include "online/MotionControlOnlineTransaction.h"

#include "host/communication/RpcCmdSend.h"
#include "sdk/AxisDebugParams.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

#include <QMetaMethod>

#include <array>

namespace {

constexpr int callDeadlineSeconds = 10;

QByteArray call(RpcCmdSend& rpc, const GetAxisRefParam& p)
{
    return rpc.rpc_AxisDebug_GetAxisRef(p.axisNo, p.size);
}

QByteArray call(RpcCmdSend& rpc, const GetAxesGroupRefParam& p)
{
    return rpc.rpc_AxisDebug_GetAxesGroupRef(p.groupNo, p.size);
}

qint16 call(RpcCmdSend& rpc, const EnterDebugModelParam& p)
{
    return rpc.rpc_AxisDebug_EnterDebugMode(p.axisNo, p.enter, p.timeout);
}

qint16 call(RpcCmdSend& rpc, const KeepAliveParam& p)
{
    return rpc.rpc_AxisDebug_KeepAlive(p.axisNo);
}

qint16 call(RpcCmdSend& rpc, const SetEnableParam& p)
{
    return rpc.rpc_AxisDebug_SetEnable(p.axisNo, p.enable);
}

qint16 call(RpcCmdSend& rpc, const SetPositionParam& p)
{
    return rpc.rpc_AxisDebug_SetPosition(p.axisNo, p.position);
}

qint16 call(RpcCmdSend& rpc, const SetHomeOffsetParam& p)
{
    return rpc.rpc_AxisDebug_SetHomeOffset(p.axisNo, p.offset);
}

qint16 call(RpcCmdSend& rpc, const SetVelRatioParam& p)
{
    return rpc.rpc_AxisDebug_SetVelRatio(p.axisNo, p.ratio);
}

qint16 call(RpcCmdSend& rpc, const SetHomeParam& p)
{
    return rpc.rpc_AxisDebug_SetHome(p.axisNo);
}

qint16 call(RpcCmdSend& rpc, const SetStopParam& p)
{
    return rpc.rpc_AxisDebug_SetStop(p.axisNo, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const MoveAbsParam& p)
{
    return rpc.rpc_AxisDebug_MoveAbs(p.axisNo, p.position, p.velocity, p.acceleration, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const MoveRelParam& p)
{
    return rpc.rpc_AxisDebug_MoveRel(p.axisNo, p.position, p.velocity, p.acceleration, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const MoveVelParam& p)
{
    return rpc.rpc_AxisDebug_MoveVel(p.axisNo, p.velocity, p.acceleration, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const JopPosParam& p)
{
    return rpc.rpc_AxisDebug_JopPos(p.axisNo, p.pressed, p.velocity, p.acceleration, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const JopNegParam& p)
{
    return rpc.rpc_AxisDebug_JopNeg(p.axisNo, p.pressed, p.velocity, p.acceleration, p.deceleration, p.jerk);
}

qint16 call(RpcCmdSend& rpc, const ResetParam& p)
{
    return rpc.rpc_AxisDebug_Reset(p.axisNo);
}

using Online = MotionControlOnlineTransaction;
using Request = void (*)(Online&, RpcCmdSend&, const QVariant&);

// A variant of another type is converted if Qt can, and reads as a record of zeros if not.
template <typename Param, auto Signal>
void carryOut(Online& transaction, RpcCmdSend& rpc, const QVariant& param)
{
    emit(transaction.*Signal)(call(rpc, param.value<Param>()));
}

// By code.
constexpr std::array<Request, 16> requests{
    carryOut<GetAxisRefParam, &Online::axisDebugGetAxisRef>,
    carryOut<GetAxesGroupRefParam, &Online::axisDebugGetAxesGroupRef>,
    carryOut<EnterDebugModelParam, &Online::axisDebugEnterDebugMode>,
    carryOut<KeepAliveParam, &Online::axisDebugKeepAlive>,
    carryOut<SetEnableParam, &Online::axisDebugSetEnable>,
    carryOut<SetPositionParam, &Online::axisDebugSetPosition>,
    carryOut<SetHomeOffsetParam, &Online::axisDebugSetHomeOffset>,
    carryOut<SetVelRatioParam, &Online::axisDebugSetVelRatio>,
    carryOut<SetHomeParam, &Online::axisDebugSetHome>,
    carryOut<SetStopParam, &Online::axisDebugSetStop>,
    carryOut<MoveAbsParam, &Online::axisDebugMoveAbs>,
    carryOut<MoveRelParam, &Online::axisDebugMoveRel>,
    carryOut<MoveVelParam, &Online::axisDebugMoveVel>,
    carryOut<JopPosParam, &Online::axisDebugJopPos>,
    carryOut<JopNegParam, &Online::axisDebugJopNeg>,
    carryOut<ResetParam, &Online::axisDebugReset>,
};

void connectBySignature(Online* transaction, int code, QObject* receiver)
{
    const QMetaObject& meta = Online::staticMetaObject;
    const QByteArray signature = meta.method(meta.methodOffset() + code).methodSignature();
    const QByteArray signal = QByteArray::number(QSIGNAL_CODE) + signature;
    const QByteArray slot = QByteArray::number(QSLOT_CODE) + signature;
    QObject::connect(transaction, signal.constData(), receiver, slot.constData(),
        static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::UniqueConnection));
}

} // namespace

MotionControlOnlineTransaction::MotionControlOnlineTransaction(int code, const QVariant& param, QObject* receiver)
    : m_code(code), m_param(param)
{
    connectTo(receiver);
}

MotionControlOnlineTransaction::~MotionControlOnlineTransaction()
{
    disconnect();
}

void MotionControlOnlineTransaction::connectTo(QObject* receiver)
{
    auto* settings = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::settings());
    if (!settings)
        return;
    // The poll time has no effect on a request; hosts may count on its being read.
    settings->value(Solution::ConfigKey::monitorTime(), QVariant());
    if (m_code == AxisDebugGetAxesGroupRef) {
        connectBySignature(this, m_code, receiver);
        return;
    }
    for (int code = 0; code < static_cast<int>(requests.size()); ++code) {
        if (code != AxisDebugGetAxesGroupRef)
            connectBySignature(this, code, receiver);
    }
}

void MotionControlOnlineTransaction::execute()
{
    RpcCmdSend rpc;
    rpc.deadline = callDeadlineSeconds;
    if (m_code < 0 || m_code >= static_cast<int>(requests.size()))
        return;
    requests[static_cast<size_t>(m_code)](*this, rpc, m_param);
}
