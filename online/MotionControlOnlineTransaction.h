#pragma once

#include "sdk/Transaction.h"

#include <QByteArray>
#include <QVariant>

/// One debug request on its way to the controller. Made on the main thread, run once by the background service on a
/// thread of its own, and reported by the one signal of the request's name, whose index among the signals is the
/// request's code (see AxisDebugRequest). The result is passed on as it is: no retry, no text.
class MotionControlOnlineTransaction : public Transaction {
    Q_OBJECT

public:
    /// The parameter holds the parameter record of that code. The receiver's slots of the signals' names are connected
    /// where it has them: for code 1 the one of that code, for any other code the fifteen others. Without the host's
    /// settings nothing is connected, and the result reaches nobody.
    MotionControlOnlineTransaction(int code, const QVariant& param, QObject* receiver);
    ~MotionControlOnlineTransaction() override;

    /// Makes the blocking call and emits its result. A parameter of another type that cannot be converted is sent as a
    /// record of zeros. A code outside 0 to 15 does nothing.
    void execute() override;

signals:
    void axisDebugGetAxisRef(QByteArray reply);
    void axisDebugGetAxesGroupRef(QByteArray reply);
    void axisDebugEnterDebugMode(qint16 result);
    void axisDebugKeepAlive(qint16 result);
    void axisDebugSetEnable(qint16 result);
    void axisDebugSetPosition(qint16 result);
    void axisDebugSetHomeOffset(qint16 result);
    void axisDebugSetVelRatio(qint16 result);
    void axisDebugSetHome(qint16 result);
    void axisDebugSetStop(qint16 result);
    void axisDebugMoveAbs(qint16 result);
    void axisDebugMoveRel(qint16 result);
    void axisDebugMoveVel(qint16 result);
    void axisDebugJopPos(qint16 result);
    void axisDebugJopNeg(qint16 result);
    void axisDebugReset(qint16 result);

private:
    void connectTo(QObject* receiver);

    int m_code;
    QVariant m_param;
};
