#include "workbench/online/JogWatch.h"

#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/AxisDebugParams.h"
#include "sdk/Transaction.h"

#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr int watchPeriodMs = 10;
/// Time in which the page's own end goes out when the button comes up in the usual way.
constexpr auto grace = std::chrono::milliseconds(50);
/// An end that was not answered is sent again after this.
constexpr auto pauseBetweenEnds = std::chrono::milliseconds(200);

bool isJog(const AxisRequest& request)
{
    return request.code == AxisDebugJopPos || request.code == AxisDebugJopNeg;
}

/// The controller has decided what becomes of the request. A transport that has no answer, or none but its own, leaves
/// open whether the request has arrived.
bool isDecided(short result)
{
    return result != Diagnosis::noAnswer && result != Diagnosis::refused && result != Diagnosis::notConnected;
}

class JogEnd : public Transaction {
public:
    explicit JogEnd(const AxisRequest& request) : m_request(request) { }

    void execute() override
    {
        const AxisRequest& r = m_request;
        RpcCmdSend rpc;
        rpc.deadline = 1;
        if (r.code == AxisDebugJopPos)
            rpc.rpc_AxisDebug_JopPos(r.axisNo, 0, r.velocity, r.acceleration, r.deceleration, r.jerk);
        else
            rpc.rpc_AxisDebug_JopNeg(r.axisNo, 0, r.velocity, r.acceleration, r.deceleration, r.jerk);
    }

private:
    AxisRequest m_request;
};

} // namespace

JogWatch::JogWatch(QObject* parent) : QObject(parent)
{
    m_timer.setInterval(watchPeriodMs);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &JogWatch::watch);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &JogWatch::onApplicationState);
}

JogWatch::~JogWatch() = default;

void JogWatch::onStarted(const AxisRequest& request)
{
    if (!isJog(request) || !m_linked)
        return;
    if (request.value == 0)
        noteEnd({ request.axisNo, request.code });
    else
        noteStart(request);
}

void JogWatch::noteStart(const AxisRequest& request)
{
    const Key key(request.axisNo, request.code);
    Jog jog;
    jog.request = request;
    jog.vainEnds = m_ends.value(key);
    jog.isSecond = m_jogs.contains(key);
    m_jogs.insert(key, jog);
    updateTimer();
    watch();
}

void JogWatch::noteEnd(const Key& key)
{
    const int ends = ++m_ends[key];
    const auto found = m_jogs.find(key);
    if (found == m_jogs.end())
        return;
    found->endSent = found->startAnswered;
    if (!found->endSent)
        found->vainEnds = ends;
    found->since = Clock::now();
}

void JogWatch::onAnswered(const AxisRequest& request, const AxisReply& reply)
{
    if (!isJog(request))
        return;
    const Key key(request.axisNo, request.code);
    const bool isEnd = request.value == 0;
    const int endsLeft = std::max(0, m_ends.value(key) - 1);
    if (isEnd)
        m_ends[key] = endsLeft;
    const auto found = m_jogs.find(key);
    if (found == m_jogs.end())
        return;
    if (isEnd ? isOverWith(*found, reply, endsLeft) : neverBegan(*found, reply))
        m_jogs.erase(found);
    updateTimer();
}

bool JogWatch::neverBegan(Jog& jog, const AxisReply& reply)
{
    // The answer to a start that was refused here, behind the one that is watched.
    if (jog.startAnswered)
        return false;
    jog.startAnswered = true;
    return isDecided(reply.result) && reply.result != Diagnosis::ok && !jog.isSecond;
}

// Ends look alike and their answers come on two ways, so an answer is taken for that of an end that may have overtaken
// the start as long as there is one. The end of the link, which makes the controller stop what this client has moved,
// is told by setLinked.
bool JogWatch::isOverWith(Jog& jog, const AxisReply& reply, int endsLeft)
{
    jog.ending = false;
    jog.since = Clock::now();
    if (!isDecided(reply.result)) {
        jog.vainEnds = std::min(jog.vainEnds, endsLeft);
        jog.endSent = jog.endSent && endsLeft > 0;
        return false;
    }
    if (jog.vainEnds > 0) {
        --jog.vainEnds;
        return false;
    }
    return jog.endSent;
}

void JogWatch::watch()
{
    if (m_deactivated || !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        letGoAll();
    const Clock::time_point now = Clock::now();
    for (Jog& jog : m_jogs) {
        if (jog.letGo && !jog.ending && now - jog.since >= (jog.told || jog.endSent ? pauseBetweenEnds : grace))
            end(jog);
    }
}

void JogWatch::letGoAll()
{
    for (Jog& jog : m_jogs) {
        if (jog.letGo)
            continue;
        jog.letGo = true;
        jog.since = Clock::now();
    }
}

void JogWatch::end(Jog& jog)
{
    jog.ending = true;
    m_lane.submitTransaction(new JogEnd(jog.request), false);
    if (!jog.told && !jog.endSent)
        emit ended(jog.request.axisNo);
    jog.told = true;
}

void JogWatch::onApplicationState(Qt::ApplicationState state)
{
    m_deactivated = state != Qt::ApplicationActive;
    if (m_deactivated)
        watch();
}

void JogWatch::setLinked(bool linked)
{
    m_linked = linked;
    if (!linked)
        forget();
}

void JogWatch::forget()
{
    m_jogs.clear();
    m_ends.clear();
    updateTimer();
}

void JogWatch::shutDown()
{
    setLinked(false);
    m_lane.shutdown();
}

void JogWatch::updateTimer()
{
    if (m_jogs.isEmpty())
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
}
