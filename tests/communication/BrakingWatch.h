#pragma once

#include "controller/MotionController.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <optional>
#include <thread>

/// Looks at an axis of a controller in this process all the time and tells which of its cycles was the first to brake.
/// What is told is the time at which that cycle began, not the time at which this has been seen.
class BrakingWatch {
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    /// The controller must outlive this object.
    BrakingWatch(MotionController& controller, int axisNo)
        : m_controller(controller), m_axisNo(axisNo), m_thread([this] { run(); })
    {
    }
    ~BrakingWatch()
    {
        m_ending = true;
        m_thread.join();
    }
    BrakingWatch(const BrakingWatch&) = delete;
    BrakingWatch& operator=(const BrakingWatch&) = delete;

    static double milliseconds(Time from, Time to)
    {
        return std::chrono::duration<double, std::milli>(to - from).count();
    }

    /// From now on the first cycle counts that is slower than this speed, which the axis must have.
    void arm(double speed)
    {
        m_braked = 0;
        m_speed = speed;
    }
    /// Nothing while no cycle has been slower since.
    std::optional<Time> braked() const
    {
        const std::int64_t time = m_braked;
        if (time == 0)
            return {};
        return Time(std::chrono::duration_cast<Clock::duration>(std::chrono::microseconds(time)));
    }

private:
    void run()
    {
        // The cycle's clock starts when the controller does. The quickest of many looks tells by how much it is behind.
        std::int64_t behind = 0;
        bool known = false;
        for (; !m_ending; std::this_thread::sleep_for(std::chrono::microseconds(200))) {
            AxisRef ref{};
            std::uint64_t cycle = 0;
            if (!m_controller.peek(m_axisNo, &ref, &cycle))
                continue;
            const auto now = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now().time_since_epoch());
            const std::int64_t seen = now.count() - static_cast<std::int64_t>(cycle);
            behind = known ? std::min(behind, seen) : seen;
            known = true;
            if (m_braked == 0 && std::abs(ref.setVelocity) < m_speed) {
                m_speed = 0;
                m_braked = static_cast<std::int64_t>(cycle) + behind;
            }
        }
    }

    MotionController& m_controller;
    const int m_axisNo;
    std::atomic<bool> m_ending{ false };
    std::atomic<double> m_speed{ 0 };
    /// Microseconds of the steady clock; 0 for none.
    std::atomic<std::int64_t> m_braked{ 0 };
    // The last member: it uses the others.
    std::thread m_thread;
};
