#pragma once

#include "host/communication/ControllerLink.h"
#include "protocol/DiagnosisCodes.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

/// A link without a network: notes what it is asked, and answers late or not at all when told to. Any thread.
class FakeLink : public ControllerLink {
public:
    AxisReply request(const AxisRequest& request, std::chrono::milliseconds deadline) override
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_requests.push_back(request);
        m_deadlines.push_back(deadline);
        m_changed.notify_all();
        const int cancelled = m_cancelled;
        const auto isOver = [&] { return !m_hanging || m_cancelled != cancelled; };
        if (!m_changed.wait_for(lock, deadline, isOver))
            return { Diagnosis::noAnswer, {} };
        if (m_cancelled != cancelled)
            return { Diagnosis::notConnected, {} };
        return m_reply;
    }

    void cancelInFlight() override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_cancelled;
        m_changed.notify_all();
    }

    /// Answers nothing until it is told otherwise.
    void hang(bool on)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_hanging = on;
        m_changed.notify_all();
    }

    void answerWith(const AxisReply& reply)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_reply = reply;
    }

    std::vector<AxisRequest> requests() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_requests;
    }

    std::vector<std::chrono::milliseconds> deadlines() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_deadlines;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<AxisRequest> m_requests;
    std::vector<std::chrono::milliseconds> m_deadlines;
    AxisReply m_reply;
    bool m_hanging = false;
    int m_cancelled = 0;
};
