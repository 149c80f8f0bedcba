#include "controller/SessionRegistry.h"

#include "protocol/ProtocolVersion.h"

#include <algorithm>
#include <random>

namespace {
constexpr std::size_t mostSessions = 32;
}

std::string randomBytes(int count)
{
    std::random_device device;
    std::string bytes;
    while (static_cast<int>(bytes.size()) < count)
        bytes.push_back(static_cast<char>(device() & 0xff));
    return bytes;
}

bool equalSecrets(const std::string& a, const std::string& b)
{
    unsigned difference = a.size() == b.size() ? 0 : 1;
    for (std::size_t i = 0; i < a.size() && !b.empty(); ++i)
        difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i % b.size()]);
    return difference == 0;
}

SessionRegistry::Opened SessionRegistry::open(const std::string& client)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Opened opened;
    drop(former(client), &opened.ended);
    // Whoever logs in and goes without a word must not keep others out.
    if (m_sessions.size() >= mostSessions)
        drop(oldestUnattended(), &opened.ended);
    if (m_sessions.size() >= mostSessions)
        return opened;
    opened.bytes = randomBytes(protocolSessionLength);
    m_sessions[opened.bytes] = { ++m_last, false, client };
    return opened;
}

SessionRegistry::Sessions::iterator SessionRegistry::former(const std::string& client)
{
    if (client.size() != protocolSessionLength)
        return m_sessions.end();
    return std::find_if(m_sessions.begin(), m_sessions.end(),
        [&client](const auto& session) { return session.second.client == client; });
}

SessionRegistry::Sessions::iterator SessionRegistry::oldestUnattended()
{
    auto oldest = m_sessions.end();
    for (auto it = m_sessions.begin(); it != m_sessions.end(); ++it) {
        if (!it->second.attended && (oldest == m_sessions.end() || it->second.id < oldest->second.id))
            oldest = it;
    }
    return oldest;
}

void SessionRegistry::drop(Sessions::iterator session, std::vector<SessionId>* ended)
{
    if (session == m_sessions.end())
        return;
    ended->push_back(session->second.id);
    m_sessions.erase(session);
}

SessionId SessionRegistry::find(const std::string& bytes) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_sessions.find(bytes);
    return found == m_sessions.end() ? 0 : found->second.id;
}

SessionId SessionRegistry::close(const std::string& bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_sessions.find(bytes);
    if (found == m_sessions.end())
        return 0;
    const SessionId id = found->second.id;
    m_sessions.erase(found);
    return id;
}

bool SessionRegistry::attend(const std::string& bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_sessions.find(bytes);
    if (found == m_sessions.end() || found->second.attended)
        return false;
    found->second.attended = true;
    return true;
}
