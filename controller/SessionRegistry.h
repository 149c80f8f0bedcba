#pragma once

#include "controller/MotionController.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

/// The sessions that are open, by the random bytes that their requests carry. Any thread.
class SessionRegistry {
public:
    struct Opened {
        /// Empty when there are too many.
        std::string bytes;
        /// What has been ended for it: the former session of the same client, and one that nobody attends when there
        /// were too many.
        std::vector<SessionId> ended;
    };
    /// Opens a session. The client is told by the bytes that it keeps through its logins; bytes of another length than
    /// a session's tell no client.
    Opened open(const std::string& client = {});
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
        std::string client;
    };

    using Sessions = std::map<std::string, Session>;
    Sessions::iterator former(const std::string& client);
    Sessions::iterator oldestUnattended();
    void drop(Sessions::iterator session, std::vector<SessionId>* ended);

    mutable std::mutex m_mutex;
    Sessions m_sessions;
    SessionId m_last = 0;
};

/// So many random bytes from the system.
std::string randomBytes(int count);
/// Compares in a time that does not tell how much is right.
bool equalSecrets(const std::string& a, const std::string& b);
