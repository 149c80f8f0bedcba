#include "controller/Faults.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <sstream>

namespace {
/// The key of a fault that concerns every request.
const std::string everyMethod;

const char* const methodNames[]
    = { "Handshake", "Login", "Attend", "Logout", "DownloadAxes", "ReadAxes", "StopAll", "ReadCurves", "GetAxisRef",
          "GetAxesGroupRef", "EnterDebugMode", "KeepAlive", "SetEnable", "SetPosition", "SetHomeOffset", "SetVelRatio",
          "SetHome", "SetStop", "MoveAbs", "MoveRel", "MoveVel", "JopPos", "JopNeg", "Reset" };

bool isMethod(const std::string& name)
{
    return std::any_of(
        std::begin(methodNames), std::end(methodNames), [&name](const char* method) { return name == method; });
}

bool toNumber(const std::string& word, int lowest, int highest, int* number)
{
    const auto parsed = std::from_chars(word.data(), word.data() + word.size(), *number);
    return parsed.ec == std::errc() && parsed.ptr == word.data() + word.size() && *number >= lowest
        && *number <= highest;
}

template <typename Map>
typename Map::iterator findFor(Map& map, const std::string& method)
{
    const auto found = map.find(method);
    return found != map.end() ? found : map.find(everyMethod);
}

bool needsNumber(std::string* error, const std::string& name)
{
    *error = name + ": a number within its range is needed";
    return false;
}
} // namespace

const char* Faults::help()
{
    return "  late-replies MS [METHOD]      answers come so much later\n"
           "  lost-replies COUNT [METHOD]   so many requests are carried out and never answered; 0 is all\n"
           "  wrong-length BYTES            status replies have so many bytes\n"
           "  refuse CODE [METHOD]          the request is not carried out and answered with the code\n"
           "  version NUMBER                the handshake tells this version of the protocol\n"
           "  power-lost AXIS               the drive has no power, also of an axis to come\n"
           "  drive-error CODE AXIS         the drive reports an error\n"
           "  blocked AXIS                  the machine does not move\n"
           "  drop-link                     all connections are cut; new ones are taken\n"
           "  none                          ends all of them\n";
}

bool Faults::set(const std::string& line, Action* action, std::string* error)
{
    std::istringstream stream(line);
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    *action = {};
    const auto setter = words.empty() ? setters().end() : setters().find(words.front());
    if (setter == setters().end()) {
        *error = words.empty() ? "the name of a fault is needed" : words.front() + ": is no fault";
        return false;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    return (this->*setter->second)(words, action, error);
}

const std::map<std::string, Faults::Setter>& Faults::setters()
{
    static const std::map<std::string, Setter> table{
        { "late-replies", &Faults::setReplies },
        { "lost-replies", &Faults::setReplies },
        { "refuse", &Faults::setReplies },
        { "wrong-length", &Faults::setNumber },
        { "version", &Faults::setNumber },
        { "power-lost", &Faults::setAxis },
        { "drive-error", &Faults::setAxis },
        { "blocked", &Faults::setAxis },
        { "drop-link", &Faults::setLink },
        { "none", &Faults::setLink },
    };
    return table;
}

std::vector<std::string> Faults::names()
{
    std::vector<std::string> names;
    for (const auto& setter : setters())
        names.push_back(setter.first);
    return names;
}

bool Faults::setLink(const Words& words, Action* action, std::string*)
{
    const bool heals = words.front() == "none";
    action->kind = heals ? Action::Heal : Action::DropLink;
    if (heals)
        clear();
    return true;
}

void Faults::clear()
{
    m_late.clear();
    m_lost.clear();
    m_refused.clear();
    m_statusLength = -1;
    m_version = -1;
}

bool Faults::setReplies(const Words& words, Action*, std::string* error)
{
    const bool refuse = words.front() == "refuse";
    int number = 0;
    if (words.size() < 2 || words.size() > 3
        || !toNumber(words[1], refuse ? -32768 : 0, refuse ? 32767 : 3600000, &number))
        return needsNumber(error, words.front());
    const std::string method = words.size() == 3 ? words[2] : everyMethod;
    if (method != everyMethod && !isMethod(method)) {
        *error = method + ": is no request";
        return false;
    }
    if (refuse)
        m_refused[method] = static_cast<std::int16_t>(number);
    else if (words.front() == "late-replies")
        m_late[method] = number;
    else
        m_lost[method] = { number, number == 0 };
    return true;
}

bool Faults::setNumber(const Words& words, Action*, std::string* error)
{
    int number = 0;
    if (words.size() != 2 || !toNumber(words[1], 0, 64 * 1024 * 1024, &number))
        return needsNumber(error, words.front());
    if (words.front() == "version")
        m_version = number;
    else
        m_statusLength = number;
    return true;
}

bool Faults::setAxis(const Words& words, Action* action, std::string* error)
{
    static const std::map<std::string, Action::Kind> kinds{
        { "power-lost", Action::PowerLost },
        { "drive-error", Action::DriveError },
        { "blocked", Action::Blocked },
    };
    const Action::Kind kind = kinds.at(words.front());
    const bool coded = kind == Action::DriveError;
    int code = 0;
    if (words.size() != (coded ? 3 : 2) || (coded && !toNumber(words[1], 1, 32767, &code))
        || !toNumber(words.back(), 0, 255, &action->axis))
        return needsNumber(error, words.front());
    action->kind = kind;
    action->code = static_cast<std::int16_t>(code);
    return true;
}

Faults::Effect Faults::take(const std::string& method)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Effect effect;
    const auto late = findFor(m_late, method);
    if (late != m_late.end())
        effect.delayMs = late->second;
    const auto refused = findFor(m_refused, method);
    if (refused != m_refused.end())
        effect.refusal = refused->second;
    const auto lost = findFor(m_lost, method);
    if (lost != m_lost.end()) {
        effect.lost = true;
        if (!lost->second.forEver && --lost->second.left <= 0)
            m_lost.erase(lost);
    }
    return effect;
}

int Faults::statusLength() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_statusLength;
}

std::int64_t Faults::version() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_version;
}
