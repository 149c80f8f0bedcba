#pragma once

#include "host/communication/Export.h"
#include "sdk/IBackgroundTransaction.h"

#include <memory>

/// Runs transactions on one worker thread, in the order of submission, and destroys each on the thread of this service
/// (where transactions live). Published under "BackgroundTransaction.name".
class KESTRUN_COMMUNICATION_EXPORT BackgroundTransactionService : public IBackgroundTransaction {
    Q_OBJECT

public:
    explicit BackgroundTransactionService(QObject* parent = nullptr);
    /// Shuts down.
    ~BackgroundTransactionService() override;

    /// Main thread. After the shutdown the transaction is destroyed at once, with dropped() if report is true.
    void submitTransaction(Transaction* transaction, bool report) override;

    /// What has not been started yet is refused with this code instead of going out; the emergency stop does so, lest
    /// a queued motion follow it. Whoever waits for an answer gets one; what brings an axis to rest goes out.
    void refuseQueued(short code);
    /// Destroys what is queued, cancels what is under way on the active link, and joins the worker. Main thread.
    void shutdown();

    /// Transactions that wait or run.
    int pending() const;

signals:
    /// A transaction was handed in too late to be run.
    void dropped();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
