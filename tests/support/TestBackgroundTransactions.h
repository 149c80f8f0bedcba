#pragma once

#include "sdk/IBackgroundTransaction.h"

#include <QPointer>

#include <deque>

class CallLog;
class Transaction;

/// Takes transactions and runs them when told, on the calling thread. What has not run is deleted unrun at the end.
class TestBackgroundTransactions : public IBackgroundTransaction {
    Q_OBJECT

public:
    explicit TestBackgroundTransactions(CallLog& log);
    ~TestBackgroundTransactions() override;

    void submitTransaction(Transaction* transaction, bool report) override;

    /// Runs the oldest transaction and deletes it. False when none is waiting.
    bool runNext();
    /// Runs all that wait, also those that come meanwhile. Returns how many ran.
    int runAll();
    /// Deletes what waits without running it.
    void dropAll();

    int waiting() const { return static_cast<int>(m_queue.size()); }
    /// The transaction at a place of the queue, from 0 for the oldest; null past the end.
    Transaction* transactionAt(int place) const;

    /// True: each transaction runs as soon as it is submitted.
    bool immediate = false;
    /// Number of submissions so far, and whether all of them had their flag set.
    int submitted = 0;
    bool allReported = true;

private:
    CallLog& m_log;
    std::deque<QPointer<Transaction>> m_queue;
};
