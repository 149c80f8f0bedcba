#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// Misbehaviour on demand, by name, so that whoever tests a client can script what goes wrong. Any thread.
///
/// Each line is a name with its arguments; METHOD is the name of a request such as "MoveAbs", none means all that the
/// service offers, Handshake, Attend and ReadCurves included:
///
///   late-replies MS [METHOD]       answers come so much later
///   lost-replies COUNT [METHOD]    so many requests are carried out and never answered; 0 is all
///   wrong-length BYTES             status replies have so many bytes
///   refuse CODE [METHOD]           the request is not carried out and answered with the code
///   version NUMBER                 the handshake tells this version of the protocol
///   power-lost AXIS                the drive has no power, also of an axis to come
///   drive-error CODE AXIS          the drive reports an error
///   blocked AXIS                   the machine does not move
///   drop-link                      all connections are cut; new ones are taken
///   none                           ends all of them
class Faults {
public:
    /// What is to happen with one request.
    struct Effect {
        int delayMs = 0;
        bool lost = false;
        std::int16_t refusal = 0;
    };

    /// A fault of an axis, or the cut of the link, for whoever owns those.
    struct Action {
        enum Kind { None, PowerLost, DriveError, Blocked, DropLink, Heal };
        Kind kind = None;
        int axis = 0;
        std::int16_t code = 0;
    };

    /// Reads a line. False, with a text for the user, when it is none of the above; nothing is changed then.
    bool set(const std::string& line, Action* action, std::string* error);

    /// What is to happen with this request; counts lost replies down.
    Effect take(const std::string& method);
    /// Length that status replies have instead of their own, -1 for their own.
    int statusLength() const;
    /// Version that the handshake tells instead of the right one, -1 for the right one.
    std::int64_t version() const;

    static const char* help();
    /// The names with which a line can begin.
    static std::vector<std::string> names();

private:
    using Words = std::vector<std::string>;
    struct Lost {
        int left = 0;
        bool forEver = false;
    };

    using Setter = bool (Faults::*)(const Words&, Action*, std::string*);
    static const std::map<std::string, Setter>& setters();

    bool setReplies(const Words& words, Action* action, std::string* error);
    bool setNumber(const Words& words, Action* action, std::string* error);
    bool setLink(const Words& words, Action* action, std::string* error);
    bool setAxis(const Words& words, Action* action, std::string* error);
    void clear();

    mutable std::mutex m_mutex;
    std::map<std::string, int> m_late;
    std::map<std::string, Lost> m_lost;
    std::map<std::string, std::int16_t> m_refused;
    int m_statusLength = -1;
    std::int64_t m_version = -1;
};
