#pragma once

#include "sdk/Export.h"

#include <QObject>

class Transaction;

/// Runs transactions in the background, one at a time, in the order of submission.
class KESTRUN_SDK_EXPORT IBackgroundTransaction : public QObject {
    Q_OBJECT

public:
    explicit IBackgroundTransaction(QObject* parent = nullptr);
    ~IBackgroundTransaction() override;

    /// Takes the transaction over. Main thread. False for the flag drops it when the service is shutting down without
    /// a log line, true leaves one.
    virtual void submitTransaction(Transaction* transaction, bool report) = 0;
};
