#include "host/communication/ControllerSession.h"

#include "protocol/DiagnosisCodes.h"

#include <chrono>

namespace {
constexpr auto firstLogin = std::chrono::milliseconds(3000);
constexpr auto laterLogin = std::chrono::milliseconds(1000);
constexpr auto logoutTime = std::chrono::milliseconds(300);
constexpr auto retryPause = std::chrono::milliseconds(100);
} // namespace

ControllerSession::ControllerSession(MakeLink makeLink, Events events)
    : m_makeLink(std::move(makeLink)), m_events(std::move(events)), m_thread([this] { run(); })
{
}

ControllerSession::~ControllerSession()
{
    cut();
    m_thread.join();
}

std::shared_ptr<GrpcLink> ControllerSession::currentLink() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_link;
}

std::shared_ptr<GrpcLink> ControllerSession::beginEnd()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_ending = true;
    return m_link;
}

void ControllerSession::retire()
{
    const std::shared_ptr<GrpcLink> link = beginEnd();
    if (!link)
        return;
    ControllerLink::endUse(link);
    link->retire();
}

void ControllerSession::end()
{
    if (const std::shared_ptr<GrpcLink> link = beginEnd())
        link->logout(logoutTime);
    cut();
}

void ControllerSession::cut()
{
    const std::shared_ptr<GrpcLink> link = beginEnd();
    m_wake.notify_all();
    if (link)
        link->shutDown();
}

void ControllerSession::run()
{
    bool first = true;
    while (!m_ending && logInAndStay(first))
        first = false;
}

bool ControllerSession::take(const std::shared_ptr<GrpcLink>& link)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_ending)
        return false;
    m_link = link;
    return true;
}

bool ControllerSession::putInUse(const std::shared_ptr<GrpcLink>& link)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_ending)
        return false;
    ControllerLink::setActive(link);
    return true;
}

/// False when there is no point in trying again.
bool ControllerSession::logInAndStay(bool first)
{
    QString error;
    const std::shared_ptr<GrpcLink> link = m_makeLink(&error);
    if (!link) {
        m_events.failed(Diagnosis::notConnected, error);
        return false;
    }
    if (!take(link))
        return false;
    const GrpcLink::LoginOutcome outcome = link->login(first ? firstLogin : laterLogin);
    if (m_ending)
        return false;
    if (outcome.result == Diagnosis::ok) {
        stay(link, outcome.name);
        return true;
    }
    const bool unreachable = outcome.result == Diagnosis::notConnected || outcome.result == Diagnosis::noAnswer;
    if (first || !unreachable) {
        m_events.failed(outcome.result, outcome.reason);
        return false;
    }
    pause();
    return true;
}

void ControllerSession::stay(const std::shared_ptr<GrpcLink>& link, const QString& name)
{
    if (!putInUse(link))
        return;
    m_events.opened(link, name);
    const QString reason = link->attend(m_events.news);
    link->shutDown();
    ControllerLink::endUse(link);
    if (!m_ending)
        m_events.lost(reason);
    // A controller that lets everybody in and nobody stay must not be asked without a rest.
    pause();
}

void ControllerSession::pause()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait_for(lock, retryPause, [this] { return m_ending.load(); });
}
