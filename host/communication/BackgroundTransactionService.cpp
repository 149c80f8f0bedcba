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

struct BackgroundTransactionService::Private {
    /// Lives on the service's thread.
    Mailbox mailbox;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Transaction*> queue;
    /// Have run, and wait to be destroyed where they live.
    std::vector<Transaction*> finished;
    Transaction* running = nullptr;
    bool ending = false;
    bool ended = false;
    std::thread worker;

    void work();
    void sweep();
    std::deque<Transaction*> takeQueue();
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
        running->execute();
        lock.lock();
        finished.push_back(std::exchange(running, nullptr));
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

std::deque<Transaction*> BackgroundTransactionService::Private::takeQueue()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return std::exchange(queue, {});
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
            d->queue.push_back(transaction);
            d->changed.notify_one();
            return;
        }
    }
    delete transaction;
    if (report)
        emit dropped();
}

void BackgroundTransactionService::discardQueued()
{
    for (Transaction* transaction : d->takeQueue())
        delete transaction;
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
    discardQueued();
    d->sweep();
}

int BackgroundTransactionService::pending() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return static_cast<int>(d->queue.size()) + (d->running ? 1 : 0);
}
