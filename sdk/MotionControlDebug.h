#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QVariant>

class Transaction;

/// Makes the transactions that carry a debug request to the controller; published under "MotionControlDebug".
class KESTRUN_SDK_EXPORT MotionControlDebug : public QObject {
    Q_OBJECT

public:
    explicit MotionControlDebug(QObject* parent = nullptr);
    ~MotionControlDebug() override;

    /// A transaction for the request number (see AxisDebugRequest) with its parameter record, whose result goes to the
    /// receiver's slot of the request's name. The caller owns it until it hands it to the background service. Null
    /// only when memory is short. Main thread.
    virtual Transaction* createTransaction(int code, QVariant param, QObject* receiver) = 0;
};
