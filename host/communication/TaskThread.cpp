#include "host/communication/TaskThread.h"

#include <utility>

TaskThread::TaskThread() : m_thread([this] { run(); }) { }

TaskThread::~TaskThread()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void TaskThread::post(std::function<void()> task)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_changed.notify_one();
}

void TaskThread::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_ending || !m_tasks.empty(); });
        if (m_tasks.empty())
            return;
        std::function<void()> task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
        // What the task holds may take its time to go, and post() is not to wait for that.
        task = nullptr;
        lock.lock();
    }
}
