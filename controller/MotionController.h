#pragma once

#include "controller/Axis.h"

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// Identity of a client's session; 0 is nobody.
using SessionId = std::uint64_t;

/// An axis as a project hands it over.
struct AxisText {
    std::string name;
    AxisValues values;
};

struct DownloadResult {
    std::int16_t code = 0;
    std::string axis;
    std::string key;
    std::string reason;
    /// What axesRevision() has become with these axes.
    std::uint64_t revision = 0;
};

/// How punctual the cycle has been.
struct CycleStatistics {
    std::uint64_t cycles = 0;
    /// Cycles that began more than 0.5 ms late.
    std::uint64_t late = 0;
};

/// What a client numbers its stops and releases with; see StopAllRequest.
struct StopOrder {
    SessionId session = 0;
    std::uint64_t number = 0;
    std::uint64_t seen = 0;
};

/// All axes of the controller, their debug sessions and the emergency stop.
///
/// One thread runs the cycle, or the owner runs it by step() on a simulated clock. Every other operation may be called
/// from any thread: commands are handed to the cycle and answered by it, and the cycle never waits for anybody.
class MotionController {
public:
    struct Options {
        /// Seconds.
        double cycle = 0.001;
        /// JSON texts of simulated machines by axis number; -1 for all others.
        std::map<int, std::string> mechanics;
    };

    explicit MotionController(Options options);
    /// Ends the cycle thread.
    ~MotionController();
    MotionController(const MotionController&) = delete;
    MotionController& operator=(const MotionController&) = delete;

    /// Runs the cycle on a thread of its own, in real time, from now on.
    void start();
    /// Ends that thread; commands that wait are answered "not connected".
    void shutdown();
    /// Runs so many cycles on the simulated clock. Only while the cycle has no thread.
    void step(int cycles = 1);

    /// Puts the axes into the controller, all or none. Refused while an axis is enabled or moves, or is in debug mode
    /// of another session than this one, whose client would go on with other axes under the same numbers.
    DownloadResult download(const std::vector<AxisText>& axes, SessionId session = 0);
    /// The axes as they were put in, and the revision that they are, if that is asked for.
    std::vector<AxisText> axes(std::uint64_t* revision = nullptr);
    /// Grows from 1 with each download that is taken.
    std::uint64_t axesRevision() const { return m_axesRevision.load(); }

    /// Kinds of command, which differ in what stands in their way.
    enum class Kind {
        /// Needs the debug session.
        Plain,
        /// Needs the debug session and is refused while the emergency stop holds.
        Motion
    };
    using Command = std::function<std::int16_t(Axis&)>;
    /// Carries the command out in the next cycle and gives its result.
    std::int16_t command(SessionId session, int axisNo, Kind kind, const Command& command);
    /// The end of a jog: without a jog of this session under way it is answered 0, whoever has the axis.
    std::int16_t endJog(SessionId session, int axisNo, int direction, double deceleration, double jerk);
    /// The longest time-out of debug mode in ms: no axis runs longer without a word from its client.
    static constexpr int longestTimeout = 32767;
    /// Enters (1) or leaves (0) debug mode; the time-out is 1 to longestTimeout ms and counts for entering only.
    std::int16_t enterDebugMode(SessionId session, int axisNo, int enter, int timeout);
    std::int16_t keepAlive(SessionId session, int axisNo);
    /// Ends all debug sessions of a client that has left or is lost; its axes stop at the emergency rate.
    void endSession(SessionId session);
    /// Stops every axis in debug mode and holds, or releases. Answers with emergencyStop when the release is older
    /// than a stop of its session, or was given without knowledge of one of another session.
    /// The revision is what stopRevision() became by it; it stays as it is when the answer is not ok.
    std::int16_t stopAll(bool hold, const StopOrder& order = {}, std::uint64_t* revision = nullptr);
    bool isStopHeld() const { return m_stopHeld.load(); }
    /// Grows with each stop and release that is taken.
    std::uint64_t stopRevision() const { return m_stopRevision.load(); }

    /// The axis's status as of the last cycle; false for an unknown axis. A request of the axis's own session keeps it
    /// alive.
    bool status(SessionId session, int axisNo, AxisRef* ref);
    /// The same for curves: keeps nothing alive. The time is that of the cycle in microseconds.
    bool peek(int axisNo, AxisRef* ref, std::uint64_t* timeUs);

    /// Breaks the machine of that axis. The fault stays through every download until healMachines(). False while there
    /// is no such axis: the fault then waits for it. An axis number out of range changes nothing.
    bool breakMachine(int axisNo, const std::function<void(MachineFaults&)>& how);
    /// Ends all faults of machines.
    void healMachines();

    /// Runs something with the axis between two cycles, for tests. False for an unknown axis.
    bool withAxis(int axisNo, const std::function<void(Axis&)>& task);

    CycleStatistics statistics() const;
    /// Time of the cycle that carried the last emergency stop out, on the steady clock, in ns.
    std::int64_t lastStopTime() const { return m_lastStopTime.load(); }

private:
    static constexpr int axisNumbers = 256;

    struct Entry {
        Entry(const AxisSettings& settings, const MechanicsSettings& mechanics, double cycle, AxisText axisText)
            : axis(settings, mechanics, cycle), text(std::move(axisText))
        {
        }
        Axis axis;
        AxisText text;
        SessionId owner = 0;
        std::int64_t timeoutUs = 0;
        bool leaving = false;
    };
    using Entries = std::array<std::unique_ptr<Entry>, axisNumbers>;

    /// A task for the cycle, on the stack of the thread that waits for it.
    struct Task {
        const std::function<std::int16_t()>& work;
        std::int16_t result = 0;
        bool done = false;
    };

    std::int16_t run(const std::function<std::int16_t()>& work);
    std::int16_t runInline(const std::function<std::int16_t()>& work);
    void cycleLoop();
    void cycle(std::int64_t nowUs);
    void takeTasks();
    void answerTasks();
    bool publish();
    void applyMachineFaults();
    void superviseSession(Entry& entry, int axisNo);
    void finishLeaving(Entry& entry, int axisNo);
    void leave(Entry& entry);
    /// Whether a release is older than a stop of its session, or does not know one of another.
    bool isOutdated(const StopOrder& release) const;
    void stopNow(const StopOrder& order);
    void setOwner(Entry& entry, int axisNo, SessionId owner);
    void touch(SessionId session, int axisNo);
    Entry* find(int axisNo) const;
    std::int16_t checkOwner(const Entry* entry, SessionId session) const;
    bool build(const std::vector<AxisText>& axes, Entries* entries, DownloadResult* result) const;
    bool buildOne(const AxisText& text, Entries* entries, DownloadResult* result) const;
    bool readMechanics(const AxisSettings& settings, MechanicsSettings* mechanics, std::string* error) const;

    Options m_options;

    // The cycle's own; others come to it by tasks.
    std::mutex m_cycleMutex;
    Entries m_entries;
    std::array<MachineFaults, axisNumbers> m_machineFaults;
    std::int64_t m_nowUs = 0;

    std::mutex m_taskMutex;
    std::condition_variable m_taskDone;
    std::vector<Task*> m_waiting;
    std::vector<Task*> m_taken;
    bool m_running = false;
    std::thread m_thread;
    std::atomic<bool> m_stopThread{ false };

    // What the last cycle left behind for readers.
    std::mutex m_publishedMutex;
    std::array<bool, axisNumbers> m_known{};
    std::array<AxisRef, axisNumbers> m_published{};
    std::uint64_t m_publishedUs = 0;

    std::array<std::atomic<SessionId>, axisNumbers> m_owners{};
    std::array<std::atomic<std::int64_t>, axisNumbers> m_heardUs{};
    std::atomic<std::int64_t> m_clockUs{ 0 };
    std::atomic<bool> m_stopHeld{ false };
    std::atomic<std::uint64_t> m_stopRevision{ 0 };
    std::atomic<std::uint64_t> m_axesRevision{ 1 };
    /// Number of each session's latest stop.
    std::map<SessionId, std::uint64_t> m_stopNumbers;
    /// Since the last release: who has stopped last, and what stopRevision() became by it, and by the last stop of
    /// anybody else.
    SessionId m_lastStopper = 0;
    std::uint64_t m_lastStop = 0;
    std::uint64_t m_othersStop = 0;
    std::atomic<std::uint64_t> m_cycleCount{ 0 };
    std::atomic<std::uint64_t> m_lateCount{ 0 };
    std::atomic<std::int64_t> m_lastStopTime{ 0 };
};
