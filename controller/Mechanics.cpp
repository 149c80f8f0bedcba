#include "controller/Mechanics.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Places of the switches as parts of the travel between the soft limits, seen from where the axis starts.
void placeHomeSwitch(MechanicsSettings& mechanics, const HomingMethod* method, double range)
{
    const bool searchesLeft = method && method->whenInactive < 0;
    mechanics.homeFrom = searchesLeft ? -0.05 * range : 0.03 * range;
    mechanics.homeTo = searchesLeft ? -0.03 * range : 0.05 * range;
    if (!method)
        return;
    // A turntable's switch comes round again, so there it is half a turn long instead of endless.
    if (method->number == 19 || method->number == 20)
        mechanics.homeTo = mechanics.turn > 0 ? mechanics.homeFrom + 0.5 * range : infinity;
    if (method->number == 21 || method->number == 22)
        mechanics.homeFrom = mechanics.turn > 0 ? mechanics.homeTo - 0.5 * range : -infinity;
}

using Json = nlohmann::json;

bool readPlace(const Json& value, double* place)
{
    if (value.is_number()) {
        *place = value.get<double>();
        return std::isfinite(*place);
    }
    if (!value.is_null())
        return false;
    return true;
}

struct NumberKey {
    const char* key;
    double MechanicsSettings::*member;
    double lowest;
};

constexpr NumberKey numberKeys[] = {
    { "start", &MechanicsSettings::start, -1e12 },
    { "lowest", &MechanicsSettings::lowest, -1e12 },
    { "highest", &MechanicsSettings::highest, -1e12 },
    { "negativeSwitch", &MechanicsSettings::negativeSwitch, -1e12 },
    { "positiveSwitch", &MechanicsSettings::positiveSwitch, -1e12 },
    { "homeFrom", &MechanicsSettings::homeFrom, -1e12 },
    { "homeTo", &MechanicsSettings::homeTo, -1e12 },
    { "indexOffset", &MechanicsSettings::indexOffset, -1e12 },
    { "indexPeriod", &MechanicsSettings::indexPeriod, 1e-6 },
    { "gain", &MechanicsSettings::gain, 1e-3 },
    { "enableDelay", &MechanicsSettings::enableDelay, 0 },
    { "inertia", &MechanicsSettings::inertia, 0 },
    { "friction", &MechanicsSettings::friction, 0 },
};

struct WiringKey {
    const char* key;
    std::optional<bool> MechanicsSettings::*member;
};

constexpr WiringKey wiringKeys[] = {
    { "positiveOnWhenPressed", &MechanicsSettings::positiveWiring },
    { "negativeOnWhenPressed", &MechanicsSettings::negativeWiring },
    { "homeOnWhenPressed", &MechanicsSettings::homeWiring },
};

bool isOpenEnd(const char* key)
{
    static const char* const ends[] = { "lowest", "highest", "negativeSwitch", "positiveSwitch", "homeFrom", "homeTo" };
    return std::any_of(std::begin(ends), std::end(ends), [key](const char* end) { return std::string(end) == key; });
}

double openEnd(const std::string& key)
{
    return key == "lowest" || key == "negativeSwitch" || key == "homeFrom" ? -infinity : infinity;
}

/// One entry; the error is empty when it was understood.
std::string readEntry(MechanicsSettings& settings, const std::string& key, const Json& value)
{
    for (const NumberKey& known : numberKeys) {
        if (key != known.key)
            continue;
        if (value.is_null() && isOpenEnd(known.key)) {
            settings.*known.member = openEnd(key);
            return {};
        }
        double place = 0;
        if (value.is_null() || !readPlace(value, &place))
            return key + ": a number is needed";
        if (place < known.lowest)
            return key + ": is too small";
        settings.*known.member = place;
        return {};
    }
    for (const WiringKey& known : wiringKeys) {
        if (key != known.key)
            continue;
        if (!value.is_boolean())
            return key + ": true or false is needed";
        settings.*known.member = value.get<bool>();
        return {};
    }
    return key + ": is not known";
}

/// How the input reads: a switch wired as the record expects gives what is pressed.
bool reads(bool pressed, const SwitchSettings& input, const std::optional<bool>& wiring)
{
    if (!input.enabled)
        return false;
    const bool on = pressed == wiring.value_or(input.activeHigh);
    return on == input.activeHigh;
}

/// The edge as the record reads it: a switch that is wired the wrong way round begins where it should end.
SignalEdge readEdge(SignalEdge edge, const SwitchSettings& input, const std::optional<bool>& wiring)
{
    if (wiring.value_or(input.activeHigh) == input.activeHigh)
        return edge;
    return edge == SignalEdge::Left ? SignalEdge::Right : SignalEdge::Left;
}
} // namespace

MechanicsSettings MechanicsSettings::defaultsFor(const AxisSettings& axis)
{
    MechanicsSettings mechanics;
    const HomingMethod* method = findHomingMethod(axis.homingMethod);
    const double range
        = axis.rotary ? axis.rotationPeriod : std::max(1.0, axis.softLimitPositive - axis.softLimitNegative);
    mechanics.indexPeriod = axis.pulsesPerUnit > 0 ? std::max(1e-6, 10000 / axis.pulsesPerUnit) : 1;
    mechanics.indexOffset = mechanics.indexPeriod / 4;
    mechanics.turn = axis.rotary ? axis.rotationPeriod : 0;
    placeHomeSwitch(mechanics, method, range);
    const bool endless = axis.rotary || axis.kind == AxisKind::Virtual;
    mechanics.negativeSwitch = endless ? -infinity : -0.1 * range;
    // Homing to the positive limit must get there within its usual time.
    mechanics.positiveSwitch = endless ? infinity : (axis.homingMethod == 18 ? 0.3 : 1.1) * range;
    mechanics.lowest = endless ? -infinity : mechanics.negativeSwitch - 0.05 * range;
    mechanics.highest = endless ? infinity : mechanics.positiveSwitch + 0.05 * range;
    return mechanics;
}

std::vector<std::string> MechanicsSettings::keys()
{
    std::vector<std::string> keys;
    for (const NumberKey& known : numberKeys)
        keys.emplace_back(known.key);
    for (const WiringKey& known : wiringKeys)
        keys.emplace_back(known.key);
    return keys;
}

bool MechanicsSettings::read(const std::string& json, std::string* error)
{
    const Json object = Json::parse(json, nullptr, false);
    if (!object.is_object()) {
        *error = "an object with the machine's places is needed";
        return false;
    }
    MechanicsSettings changed = *this;
    for (const auto& entry : object.items()) {
        *error = readEntry(changed, entry.key(), entry.value());
        if (!error->empty())
            return false;
    }
    if (!(changed.lowest <= changed.start && changed.start <= changed.highest)) {
        *error = "start: lies outside the travel";
        return false;
    }
    *this = changed;
    return true;
}

Mechanics::Mechanics(const MechanicsSettings& settings, const AxisSettings& axis)
    : m_settings(settings), m_positive(axis.positiveLimit), m_negative(axis.negativeLimit), m_home(axis.homeSwitch),
      m_direct(axis.kind == AxisKind::Virtual), m_position(settings.start)
{
}

void Mechanics::follow(double commanded, double seconds)
{
    const double share = m_direct ? 1 : 1 - std::exp(-m_settings.gain * seconds);
    moveTo(faults.blocked ? m_position : m_position + (commanded - m_position) * share, seconds);
}

void Mechanics::coast(double deceleration, double seconds)
{
    const double slower = std::max(0.0, std::fabs(m_velocity) - deceleration * seconds);
    const double velocity = std::copysign(slower, m_velocity);
    moveTo(faults.blocked ? m_position : m_position + (m_velocity + velocity) / 2 * seconds, seconds);
    m_velocity = faults.blocked ? 0 : velocity;
}

void Mechanics::moveTo(double position, double seconds)
{
    position = std::clamp(position, m_settings.lowest, m_settings.highest);
    m_passed.clear();
    if (position != m_position)
        notePassed(m_position, position);
    const double velocity = (position - m_position) / seconds;
    m_acceleration = (velocity - m_velocity) / seconds;
    m_velocity = velocity;
    m_position = position;
}

double Mechanics::torque(double acceleration, double velocity) const
{
    const double against = velocity == 0 ? 0 : std::copysign(m_settings.friction, velocity);
    return m_settings.inertia * acceleration + against;
}

bool Mechanics::homePressed() const
{
    double place = m_position;
    if (m_settings.turn > 0)
        place -= std::floor((place - m_settings.homeFrom) / m_settings.turn) * m_settings.turn;
    return place >= m_settings.homeFrom && place < m_settings.homeTo;
}

bool Mechanics::negativeLimit() const
{
    return reads(m_position < m_settings.negativeSwitch, m_negative, m_settings.negativeWiring);
}

bool Mechanics::positiveLimit() const
{
    return reads(m_position >= m_settings.positiveSwitch, m_positive, m_settings.positiveWiring);
}

bool Mechanics::homeSwitch() const
{
    return reads(homePressed(), m_home, m_settings.homeWiring);
}

void Mechanics::noteEdge(HomingSignal signal, SignalEdge edge, double at, double from, double to)
{
    // A level changes on the way over its edge; an index pulse on which the axis stands is not the next one.
    const bool falling = signal == HomingSignal::Index ? to <= at && at < from : to < at && at <= from;
    const bool passed = to > from ? from < at && at <= to : falling;
    if (passed)
        m_passed.push_back({ signal, edge, to > from ? 1 : -1, at });
}

void Mechanics::noteRepeated(HomingSignal signal, SignalEdge edge, double at, double period, double from, double to)
{
    // More than a few in one cycle cannot be told apart by any input.
    constexpr int most = 16;
    if (!std::isfinite(at))
        return;
    const double low = std::min(from, to);
    const double high = std::max(from, to);
    double k = std::ceil((low - at) / period);
    for (int i = 0; i < most && at + k * period <= high; ++i, ++k)
        noteEdge(signal, edge, at + k * period, from, to);
}

void Mechanics::noteHome(SignalEdge edge, double at, double from, double to)
{
    const SignalEdge read = readEdge(edge, m_home, m_settings.homeWiring);
    if (m_settings.turn > 0)
        noteRepeated(HomingSignal::HomeSwitch, read, at, m_settings.turn, from, to);
    else
        noteEdge(HomingSignal::HomeSwitch, read, at, from, to);
}

void Mechanics::notePassed(double from, double to)
{
    if (m_negative.enabled)
        noteEdge(HomingSignal::NegativeLimit, readEdge(SignalEdge::Right, m_negative, m_settings.negativeWiring),
            m_settings.negativeSwitch, from, to);
    if (m_positive.enabled)
        noteEdge(HomingSignal::PositiveLimit, readEdge(SignalEdge::Left, m_positive, m_settings.positiveWiring),
            m_settings.positiveSwitch, from, to);
    if (m_home.enabled) {
        noteHome(SignalEdge::Left, m_settings.homeFrom, from, to);
        noteHome(SignalEdge::Right, m_settings.homeTo, from, to);
    }
    noteRepeated(HomingSignal::Index, SignalEdge::Left, m_settings.indexOffset, m_settings.indexPeriod, from, to);
    std::stable_sort(m_passed.begin(), m_passed.end(), [from](const PassedEdge& x, const PassedEdge& y) {
        return std::fabs(x.position - from) < std::fabs(y.position - from);
    });
}
