#pragma once

#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "tests/communication/ControllerHost.h"

#include <QSignalSpy>
#include <QtTest>

#include <cstring>

// What a workbench does with a connection, as its tests need it.

constexpr short millisecondsEnough = 20000;

inline bool connectTo(ControllerConnection& connection, const ControllerAddress& address)
{
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    connection.open(address);
    return opened.wait(5000);
}

inline AxisRef statusOf(short axisNo)
{
    RpcCmdSend rpc;
    const QByteArray data = rpc.rpc_AxisDebug_GetAxisRef(axisNo, axisRefSize);
    AxisRef ref{};
    if (data.size() == axisRefSize)
        std::memcpy(&ref, data.constData(), sizeof ref);
    return ref;
}

inline bool enableAxis(short axisNo)
{
    RpcCmdSend rpc;
    if (rpc.rpc_AxisDebug_EnterDebugMode(axisNo, 1, millisecondsEnough) != 0
        || rpc.rpc_AxisDebug_SetEnable(axisNo, 1) != 0)
        return false;
    return QTest::qWaitFor([axisNo] { return statusOf(axisNo).axisState == 3; }, 5000);
}
