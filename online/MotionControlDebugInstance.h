#pragma once

#include "sdk/MotionControlDebug.h"

/// The debug service of this plug-in: makes a transaction for each request. The plug-in object owns the one instance
/// and publishes it in the host's table.
class MotionControlDebugInstance : public MotionControlDebug {
    Q_OBJECT

public:
    explicit MotionControlDebugInstance(QObject* parent = nullptr);
    ~MotionControlDebugInstance() override;

    /// A MotionControlOnlineTransaction that the caller owns; null only when memory is short.
    Transaction* createTransaction(int code, QVariant param, QObject* receiver) override;
};
