#include "tests/support/TestBackgroundTransactions.h"

#include "sdk/Transaction.h"
#include "tests/support/CallLog.h"

#include <memory>

TestBackgroundTransactions::TestBackgroundTransactions(CallLog& log) : m_log(log) { }

TestBackgroundTransactions::~TestBackgroundTransactions()
{
    dropAll();
}

void TestBackgroundTransactions::submitTransaction(Transaction* transaction, bool report)
{
    m_log.add("background.submitTransaction", { CallLog::text(report) });
    ++submitted;
    allReported = allReported && report;
    m_queue.emplace_back(transaction);
    if (immediate)
        runAll();
}

bool TestBackgroundTransactions::runNext()
{
    if (m_queue.empty())
        return false;
    const std::unique_ptr<Transaction> transaction(m_queue.front().data());
    m_queue.pop_front();
    if (transaction)
        transaction->execute();
    return true;
}

int TestBackgroundTransactions::runAll()
{
    int count = 0;
    while (runNext())
        ++count;
    return count;
}

void TestBackgroundTransactions::dropAll()
{
    for (const QPointer<Transaction>& transaction : m_queue)
        delete transaction.data();
    m_queue.clear();
}

Transaction* TestBackgroundTransactions::transactionAt(int place) const
{
    return place >= 0 && place < waiting() ? m_queue[static_cast<size_t>(place)].data() : nullptr;
}
