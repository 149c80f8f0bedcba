#include "host/communication/BackgroundTransactionService.h"

#include "host/communication/ControllerLink.h"
#include "host/communication/Mailbox.h"
#include "sdk/Transaction.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace {
struct Entry {
    Transaction* transaction = nullptr;
    /// Not 0: it runs, but what it asks does not go out.
    short refusal = 0;
};

void run(const Entry& entry)
{
    if (entry.refusal == 0) {
        entry.transaction->execute();
        return;
    }
    const ControllerLink::Refusal refusal(entry.refusal);
    entry.transaction->execute();
}
} // namespace

struct BackgroundTransactionService::Private {
    /// Lives on the service's thread.
    Mailbox mailbox;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Entry> queue;
    /// Have run, and wait to be destroyed where they live.
    std::vector<Transaction*> finished;
    Entry running;
    bool ending = false;
    bool ended = false;
    std::thread worker;

    void work();
    void sweep();
    void destroyQueue();
};

void BackgroundTransactionService::Private::work()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !queue.empty(); });
        if (ending)
            break;
        running = queue.front();
        queue.pop_front();
        lock.unlock();
        run(running);
        lock.lock();
        finished.push_back(std::exchange(running, {}).transaction);
        mailbox.post([this] { sweep(); });
    }
    ended = true;
    changed.notify_all();
}

void BackgroundTransactionService::Private::sweep()
{
    std::vector<Transaction*> done;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        done.swap(finished);
    }
    for (Transaction* transaction : done)
        delete transaction;
}

void BackgroundTransactionService::Private::destroyQueue()
{
    std::deque<Entry> rest;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        rest.swap(queue);
    }
    for (const Entry& entry : rest)
        delete entry.transaction;
}

BackgroundTransactionService::BackgroundTransactionService(QObject* parent)
    : IBackgroundTransaction(parent), d(new Private)
{
    d->worker = std::thread([this] { d->work(); });
}

BackgroundTransactionService::~BackgroundTransactionService()
{
    shutdown();
}

void BackgroundTransactionService::submitTransaction(Transaction* transaction, bool report)
{
    if (!transaction)
        return;
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        if (!d->ending) {
            d->queue.push_back({ transaction, 0 });
            d->changed.notify_one();
            return;
        }
    }
    delete transaction;
    if (report)
        emit dropped();
}

void BackgroundTransactionService::refuseQueued(short code)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    for (Entry& entry : d->queue)
        entry.refusal = code;
}

void BackgroundTransactionService::shutdown()
{
    if (!d->worker.joinable())
        return;
    {
        std::unique_lock<std::mutex> lock(d->mutex);
        d->ending = true;
        d->changed.notify_all();
        // A transaction may be just about to make its call, so cancelling once is not enough.
        while (!d->changed.wait_for(lock, std::chrono::milliseconds(10), [this] { return d->ended; })) {
            lock.unlock();
            if (const auto link = ControllerLink::active())
                link->cancelInFlight();
            lock.lock();
        }
    }
    d->worker.join();
    d->destroyQueue();
    d->sweep();
}

int BackgroundTransactionService::pending() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return static_cast<int>(d->queue.size()) + (d->running.transaction ? 1 : 0);
}
