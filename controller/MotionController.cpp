#include "controller/MotionController.h"

#include "protocol/DiagnosisCodes.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {
using Clock = std::chrono::steady_clock;

std::int64_t toUs(Clock::duration duration)
{
    return std::chrono::duration_cast<std::chrono::microseconds>(duration).count();
}
} // namespace

MotionController::MotionController(Options options) : m_options(std::move(options)) { }

MotionController::~MotionController()
{
    shutdown();
}

void MotionController::start()
{
    const std::lock_guard<std::mutex> lock(m_taskMutex);
    if (m_running)
        return;
    m_running = true;
    m_stopThread = false;
    m_thread = std::thread([this] { cycleLoop(); });
}

void MotionController::shutdown()
{
    m_stopThread = true;
    if (m_thread.joinable())
        m_thread.join();
    const std::lock_guard<std::mutex> lock(m_taskMutex);
    m_running = false;
    for (Task* task : m_waiting)
        task->result = Diagnosis::notConnected;
    m_taken.insert(m_taken.end(), m_waiting.begin(), m_waiting.end());
    m_waiting.clear();
    for (Task* task : m_taken)
        task->done = true;
    m_taken.clear();
    m_taskDone.notify_all();
}

void MotionController::cycleLoop()
{
    const auto period = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(m_options.cycle));
    constexpr auto lateness = std::chrono::microseconds(500);
    const Clock::time_point begin = Clock::now();
    const std::int64_t offset = m_clockUs.load();
    Clock::time_point next = begin + period;
    while (!m_stopThread) {
        std::this_thread::sleep_until(next);
        const Clock::time_point now = Clock::now();
        if (now - next > lateness)
            ++m_lateCount;
        {
            const std::lock_guard<std::mutex> lock(m_cycleMutex);
            cycle(offset + toUs(now - begin));
        }
        next += period;
        // After a pause of the whole process the missed cycles are not made up for: the axes would leap.
        if (Clock::now() > next + 10 * period)
            next = Clock::now() + period;
    }
}

void MotionController::step(int cycles)
{
    const std::lock_guard<std::mutex> lock(m_cycleMutex);
    const auto cycleUs = std::int64_t{ std::llround(m_options.cycle * 1e6) };
    for (int i = 0; i < cycles; ++i)
        cycle(m_nowUs + cycleUs);
}

void MotionController::cycle(std::int64_t nowUs)
{
    m_nowUs = nowUs;
    m_clockUs = nowUs;
    takeTasks();
    for (int axisNo = 0; axisNo < axisNumbers; ++axisNo) {
        if (Entry* entry = m_entries[axisNo].get()) {
            superviseSession(*entry, axisNo);
            entry->axis.step();
            finishLeaving(*entry, axisNo);
        }
    }
    ++m_cycleCount;
    // An answer must not come before the status that it has led to can be read.
    if (publish())
        answerTasks();
}

void MotionController::takeTasks()
{
    const std::unique_lock<std::mutex> lock(m_taskMutex, std::try_to_lock);
    if (!lock.owns_lock() || m_waiting.empty())
        return;
    for (Task* task : m_waiting)
        task->result = task->work();
    m_taken.insert(m_taken.end(), m_waiting.begin(), m_waiting.end());
    m_waiting.clear();
}

void MotionController::answerTasks()
{
    if (m_taken.empty())
        return;
    const std::unique_lock<std::mutex> lock(m_taskMutex, std::try_to_lock);
    if (!lock.owns_lock())
        return;
    for (Task* task : m_taken)
        task->done = true;
    m_taken.clear();
    m_taskDone.notify_all();
}

bool MotionController::publish()
{
    const std::unique_lock<std::mutex> lock(m_publishedMutex, std::try_to_lock);
    if (!lock.owns_lock())
        return false;
    for (int axisNo = 0; axisNo < axisNumbers; ++axisNo) {
        const Entry* entry = m_entries[axisNo].get();
        m_known[axisNo] = entry != nullptr;
        if (!entry)
            continue;
        m_published[axisNo] = entry->axis.status();
        m_published[axisNo].debugMode = entry->owner != 0;
    }
    m_publishedUs = static_cast<std::uint64_t>(m_nowUs);
    return true;
}

std::int16_t MotionController::run(const std::function<std::int16_t()>& work)
{
    Task task{ work };
    std::unique_lock<std::mutex> lock(m_taskMutex);
    if (!m_running) {
        lock.unlock();
        return runInline(work);
    }
    m_waiting.push_back(&task);
    m_taskDone.wait(lock, [&task] { return task.done; });
    return task.result;
}

std::int16_t MotionController::runInline(const std::function<std::int16_t()>& work)
{
    const std::lock_guard<std::mutex> lock(m_cycleMutex);
    const std::int16_t result = work();
    while (!publish())
        std::this_thread::yield();
    return result;
}

MotionController::Entry* MotionController::find(int axisNo) const
{
    return axisNo >= 0 && axisNo < axisNumbers ? m_entries[axisNo].get() : nullptr;
}

bool MotionController::readMechanics(
    const AxisSettings& settings, MechanicsSettings* mechanics, std::string* error) const
{
    *mechanics = MechanicsSettings::defaultsFor(settings);
    for (const int number : { -1, settings.number }) {
        const auto found = m_options.mechanics.find(number);
        if (found != m_options.mechanics.end() && !mechanics->read(found->second, error))
            return false;
    }
    return true;
}

bool MotionController::buildOne(const AxisText& text, Entries* entries, DownloadResult* result) const
{
    AxisSettings settings;
    SettingsFault fault;
    MechanicsSettings mechanics;
    if (!AxisSettings::read(text.name, text.values, &settings, &fault))
        *result = { fault.code, text.name, fault.key, fault.reason };
    else if ((*entries)[settings.number])
        *result = { Diagnosis::axisNumberDoubled, text.name, "AxisNo", "another axis has this number" };
    else if (!readMechanics(settings, &mechanics, &fault.reason))
        *result = { Diagnosis::parameterInvalid, text.name, "simulated machine", fault.reason };
    else
        (*entries)[settings.number] = std::make_unique<Entry>(settings, mechanics, m_options.cycle, text);
    return result->code == Diagnosis::ok;
}

bool MotionController::build(const std::vector<AxisText>& axes, Entries* entries, DownloadResult* result) const
{
    if (axes.size() > axisNumbers) {
        *result = { Diagnosis::tooManyAxes, {}, {}, "more axes than numbers" };
        return false;
    }
    return std::all_of(axes.begin(), axes.end(), [&](const AxisText& text) { return buildOne(text, entries, result); });
}

DownloadResult MotionController::download(const std::vector<AxisText>& axes, SessionId session)
{
    DownloadResult result;
    Entries entries;
    if (!build(axes, &entries, &result))
        return result;
    // The former axes are taken out by the cycle and destroyed here.
    result.code = run([&]() -> std::int16_t {
        for (const auto& entry : m_entries) {
            if (entry && (entry->axis.isPowered() || entry->axis.isMoving())) {
                result.axis = entry->text.name;
                result.reason = "the axis is enabled";
                return Diagnosis::axisEnabled;
            }
        }
        for (const auto& entry : m_entries) {
            if (entry && entry->owner != 0 && entry->owner != session && !entry->leaving) {
                result.axis = entry->text.name;
                result.reason = "the axis is in debug mode of another client";
                return Diagnosis::ownedByOther;
            }
        }
        m_entries.swap(entries);
        applyMachineFaults();
        for (auto& owner : m_owners)
            owner = 0;
        result.revision = ++m_axesRevision;
        return Diagnosis::ok;
    });
    return result;
}

std::vector<AxisText> MotionController::axes(std::uint64_t* revision)
{
    std::vector<AxisText> list;
    run([&]() -> std::int16_t {
        if (revision)
            *revision = m_axesRevision;
        for (const auto& entry : m_entries) {
            if (entry)
                list.push_back(entry->text);
        }
        return Diagnosis::ok;
    });
    return list;
}

void MotionController::applyMachineFaults()
{
    for (int axisNo = 0; axisNo < axisNumbers; ++axisNo) {
        if (Entry* entry = find(axisNo))
            entry->axis.machine().faults = m_machineFaults[axisNo];
    }
}

bool MotionController::breakMachine(int axisNo, const std::function<void(MachineFaults&)>& how)
{
    if (axisNo < 0 || axisNo >= axisNumbers)
        return false;
    return run([&]() -> std::int16_t {
        how(m_machineFaults[axisNo]);
        applyMachineFaults();
        return find(axisNo) ? Diagnosis::ok : Diagnosis::unknownAxis;
    }) == Diagnosis::ok;
}

void MotionController::healMachines()
{
    run([&]() -> std::int16_t {
        m_machineFaults.fill({});
        applyMachineFaults();
        return Diagnosis::ok;
    });
}

bool MotionController::withAxis(int axisNo, const std::function<void(Axis&)>& task)
{
    return run([&]() -> std::int16_t {
        Entry* entry = find(axisNo);
        if (entry)
            task(entry->axis);
        return entry ? Diagnosis::ok : Diagnosis::unknownAxis;
    }) == Diagnosis::ok;
}

void MotionController::setOwner(Entry& entry, int axisNo, SessionId owner)
{
    entry.owner = owner;
    entry.leaving = false;
    m_owners[axisNo] = owner;
    m_heardUs[axisNo] = m_nowUs;
}

void MotionController::touch(SessionId session, int axisNo)
{
    if (axisNo >= 0 && axisNo < axisNumbers && session != 0 && m_owners[axisNo] == session)
        m_heardUs[axisNo] = m_clockUs.load();
}

void MotionController::leave(Entry& entry)
{
    if (entry.owner == 0)
        return;
    entry.axis.emergencyStop();
    entry.leaving = true;
}

void MotionController::superviseSession(Entry& entry, int axisNo)
{
    if (entry.owner == 0 || entry.leaving)
        return;
    if (m_nowUs - m_heardUs[axisNo].load() <= entry.timeoutUs)
        return;
    // Whoever comes back to the axis is to see why it has stopped.
    entry.axis.showError(Diagnosis::debugTimeout);
    leave(entry);
}

void MotionController::finishLeaving(Entry& entry, int axisNo)
{
    if (!entry.leaving || entry.axis.isMoving())
        return;
    // The drive is on only for the debug session; nobody would be there to switch it off.
    entry.axis.setEnable(false);
    setOwner(entry, axisNo, 0);
}

std::int16_t MotionController::checkOwner(const Entry* entry, SessionId session) const
{
    if (!entry)
        return Diagnosis::unknownAxis;
    if (entry->owner == 0)
        return Diagnosis::notInDebugMode;
    return entry->owner == session ? Diagnosis::ok : Diagnosis::ownedByOther;
}

std::int16_t MotionController::command(SessionId session, int axisNo, Kind kind, const Command& command)
{
    return run([&]() -> std::int16_t {
        Entry* entry = find(axisNo);
        const std::int16_t code = checkOwner(entry, session);
        if (code != Diagnosis::ok)
            return code;
        touch(session, axisNo);
        if (entry->leaving)
            return Diagnosis::notInDebugMode;
        if (kind == Kind::Motion && m_stopHeld)
            return Diagnosis::emergencyStop;
        return command(entry->axis);
    });
}

std::int16_t MotionController::endJog(SessionId session, int axisNo, int direction, double deceleration, double jerk)
{
    return run([&]() -> std::int16_t {
        Entry* entry = find(axisNo);
        if (!entry)
            return Diagnosis::unknownAxis;
        touch(session, axisNo);
        if (entry->owner != session)
            return Diagnosis::ok;
        return entry->axis.endJog(direction, deceleration, jerk);
    });
}

std::int16_t MotionController::enterDebugMode(SessionId session, int axisNo, int enter, int timeout)
{
    return run([&]() -> std::int16_t {
        Entry* entry = find(axisNo);
        if (!entry)
            return Diagnosis::unknownAxis;
        if (enter != 0 && enter != 1)
            return Diagnosis::argumentInvalid;
        if (entry->owner != 0 && entry->owner != session)
            return Diagnosis::ownedByOther;
        if (enter == 0) {
            leave(*entry);
            return Diagnosis::ok;
        }
        if (timeout < 1 || timeout > longestTimeout)
            return Diagnosis::argumentInvalid;
        setOwner(*entry, axisNo, session);
        entry->timeoutUs = std::int64_t{ timeout } * 1000;
        return Diagnosis::ok;
    });
}

std::int16_t MotionController::keepAlive(SessionId session, int axisNo)
{
    return command(session, axisNo, Kind::Plain, [](Axis&) { return Diagnosis::ok; });
}

void MotionController::endSession(SessionId session)
{
    run([&]() -> std::int16_t {
        for (auto& entry : m_entries) {
            if (entry && entry->owner == session)
                leave(*entry);
        }
        m_stopNumbers.erase(session);
        return Diagnosis::ok;
    });
}

std::int16_t MotionController::stopAll(bool hold, const StopOrder& order, std::uint64_t* revision)
{
    return run([&]() -> std::int16_t {
        if (!hold && isOutdated(order))
            return Diagnosis::emergencyStop;
        m_stopHeld = hold;
        ++m_stopRevision;
        if (revision)
            *revision = m_stopRevision;
        if (hold)
            stopNow(order);
        else
            m_lastStop = m_othersStop = 0;
        return Diagnosis::ok;
    });
}

bool MotionController::isOutdated(const StopOrder& release) const
{
    const auto own = m_stopNumbers.find(release.session);
    if (release.number != 0 && own != m_stopNumbers.end() && release.number < own->second)
        return true;
    const std::uint64_t others = release.session == m_lastStopper ? m_othersStop : m_lastStop;
    return release.seen != 0 && release.seen < others;
}

void MotionController::stopNow(const StopOrder& order)
{
    std::uint64_t& latest = m_stopNumbers[order.session];
    latest = std::max(latest, order.number);
    if (order.session != m_lastStopper)
        m_othersStop = m_lastStop;
    m_lastStopper = order.session;
    m_lastStop = m_stopRevision;
    for (auto& entry : m_entries) {
        if (entry && entry->owner != 0)
            entry->axis.emergencyStop();
    }
    m_lastStopTime = Clock::now().time_since_epoch().count();
}

bool MotionController::status(SessionId session, int axisNo, AxisRef* ref)
{
    touch(session, axisNo);
    return peek(axisNo, ref, nullptr);
}

bool MotionController::peek(int axisNo, AxisRef* ref, std::uint64_t* timeUs)
{
    if (axisNo < 0 || axisNo >= axisNumbers)
        return false;
    const std::lock_guard<std::mutex> lock(m_publishedMutex);
    if (!m_known[axisNo])
        return false;
    *ref = m_published[axisNo];
    if (timeUs)
        *timeUs = m_publishedUs;
    return true;
}

CycleStatistics MotionController::statistics() const
{
    return { m_cycleCount.load(), m_lateCount.load() };
}
