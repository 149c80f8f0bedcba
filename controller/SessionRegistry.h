#pragma once

#include "controller/MotionController.h"

#include <map>
#include <mutex>
#include <string>

/// The sessions that are open, by the random bytes that their requests carry. Any thread.
class SessionRegistry {
public:
    /// Opens a session and gives its bytes; empty when there are too many.
    std::string open();
    /// The session of those bytes, 0 if there is none.
    SessionId find(const std::string& bytes) const;
    /// Ends it; gives what it was, 0 if there was none.
    SessionId close(const std::string& bytes);
    /// Notes that the session's stream is there. False if the session is not, or has one already.
    bool attend(const std::string& bytes);

private:
    struct Session {
        SessionId id = 0;
        bool attended = false;
    };

    void dropUnattended();

    mutable std::mutex m_mutex;
    std::map<std::string, Session> m_sessions;
    SessionId m_last = 0;
};

/// So many random bytes from the system.
std::string randomBytes(int count);
/// Compares in a time that does not tell how much is right.
bool equalSecrets(const std::string& a, const std::string& b);
