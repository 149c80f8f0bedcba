#include "controller/AxisSettings.h"

#include "protocol/DiagnosisCodes.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace {
constexpr int highestAxisNumber = 255;

/// Pulses per unit: beyond what the fields of any record can give, where places in pulses would be no numbers any more.
constexpr double finestRatio = 1e30;
constexpr double coarsestRatio = 1e-30;

/// Reads a record key by key and remembers the first fault; after one every further reading does nothing.
class Reader {
public:
    Reader(const AxisValues& values, SettingsFault* fault) : m_values(values), m_fault(fault) { }

    bool failed() const { return m_fault->code != 0; }

    void fail(const char* key, const std::string& reason, std::int16_t code = Diagnosis::parameterInvalid)
    {
        if (!failed())
            *m_fault = { code, key, reason };
    }

    double number(const char* key)
    {
        const std::string* value = text(key);
        if (!value)
            return 0;
        // A sign in front is usual in hand-written records, but the parser takes only a minus.
        const char* first = value->data() + (value->size() > 1 && value->front() == '+' ? 1 : 0);
        const char* last = value->data() + value->size();
        double result = 0;
        const auto parsed = std::from_chars(first, last, result);
        if (parsed.ec != std::errc() || parsed.ptr != last || !std::isfinite(result)) {
            fail(key, "\"" + value->substr(0, 40) + "\" is no number");
            return 0;
        }
        return result;
    }

    double positive(const char* key, std::int16_t code = Diagnosis::parameterInvalid)
    {
        const double value = number(key);
        if (!failed() && value <= 0)
            fail(key, "must be above 0", code);
        return value;
    }

    double notNegative(const char* key)
    {
        const double value = number(key);
        if (!failed() && value < 0)
            fail(key, "must not be below 0");
        return value;
    }

    /// True for "TRUE" in any case.
    bool flag(const char* key) const { return upperText(key) == "TRUE"; }

    /// True for everything but "FALSE" in any case.
    bool flagUnlessFalse(const char* key) const { return upperText(key) != "FALSE"; }

    const std::string* text(const char* key)
    {
        const auto found = m_values.find(key);
        if (found == m_values.end()) {
            fail(key, "is missing");
            return nullptr;
        }
        return &found->second;
    }

private:
    std::string upperText(const char* key) const
    {
        const auto found = m_values.find(key);
        std::string text = found == m_values.end() ? std::string() : found->second;
        std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
        return text;
    }

    const AxisValues& m_values;
    SettingsFault* m_fault;
};

AxisKind readKind(Reader& reader)
{
    static const std::map<std::string, AxisKind> kinds{
        { "Axis_Virtual", AxisKind::Virtual },
        { "Axis_Pulse", AxisKind::Pulse },
        { "Axis_Encoder", AxisKind::Encoder },
        { "Axis_EtherCAT", AxisKind::EtherCat },
    };
    const std::string* word = reader.text("AxisType");
    if (!word)
        return AxisKind::Virtual;
    const auto found = kinds.find(*word);
    if (found != kinds.end())
        return found->second;
    reader.fail("AxisType", "\"" + word->substr(0, 40) + "\" is no type of axis");
    return AxisKind::Virtual;
}

int readAxisNumber(Reader& reader)
{
    const double number = reader.number("AxisNo");
    if (number >= 0 && number <= highestAxisNumber && number == std::floor(number))
        return static_cast<int>(number);
    reader.fail("AxisNo", "must be a whole number from 0 to 255");
    return 0;
}

void readUnits(Reader& reader, AxisSettings& settings)
{
    settings.reverse = reader.flag("ReverseEnable");
    if (settings.kind == AxisKind::Virtual)
        return;
    const double pulses = reader.positive("PulseCountPerCircle", Diagnosis::unitRatioInvalid);
    const bool gear = reader.flag("UseGearEnable");
    const double travel = reader.positive(gear ? "UseGearValue" : "UnUseGearValue", Diagnosis::unitRatioInvalid);
    const double numerator = gear ? reader.positive("GearRatioMolecule", Diagnosis::unitRatioInvalid) : 1;
    const double denominator = gear ? reader.positive("GearRatioParent", Diagnosis::unitRatioInvalid) : 1;
    if (reader.failed())
        return;
    settings.pulsesPerUnit = pulses * numerator / (travel * denominator);
    if (!(settings.pulsesPerUnit >= coarsestRatio && settings.pulsesPerUnit <= finestRatio))
        reader.fail("PulseCountPerCircle", "gives no usable ratio", Diagnosis::unitRatioInvalid);
}

void readSoftLimits(Reader& reader, AxisSettings& settings)
{
    settings.softLimits = reader.flag("SoftLimitEnable") && !settings.rotary;
    settings.softLimitNegative = reader.number("SoftLimitNeg");
    settings.softLimitPositive = reader.number("SoftLimitPos");
    if (settings.softLimitPositive < settings.softLimitNegative)
        reader.fail("SoftLimitPos", "lies below SoftLimitNeg", Diagnosis::limitsCross);
}

void readDynamics(Reader& reader, AxisSettings& settings)
{
    settings.rotary = reader.flag("ModeSet");
    settings.rotationPeriod = settings.rotary ? reader.positive("RotationPeriod") : reader.number("RotationPeriod");
    readSoftLimits(reader, settings);
    settings.limitWithoutError = reader.flagUnlessFalse("ErrorStopEnable");
    settings.limitDeceleration = reader.notNegative("LimitDec");
    settings.emergencyDeceleration = reader.positive("AxisErrorDec");
    settings.maximumVelocity = reader.notNegative("MaxVel");
    settings.maximumAcceleration = reader.notNegative("MaxAcc");
    settings.maximumJogVelocity = reader.notNegative("JogMaxVel");
    settings.followingErrorThreshold = reader.number("FollowErrorThreshold");
    // The simulated drive has no torque loop that they could bound; that they are numbers is all that matters here.
    reader.number("PosTorqueMaxValue");
    reader.number("NegTorqueMaxValue");
}

void readHoming(Reader& reader, AxisSettings& settings)
{
    const std::string* word = reader.text("HomeMode");
    settings.homingMethod = word ? homingNumber(*word) : 0;
    settings.homingVelocity = reader.notNegative("HomeSpeed");
    settings.homingAcceleration = reader.notNegative("HomeAcc");
    settings.homingCloseVelocity = reader.notNegative("HomeCloseSpeed");
    settings.homingTimeout = reader.notNegative("HomeTimeOut") / 1000;
    settings.positiveLimit = { reader.flag("PosLimitEnable"), reader.flag("PosLimitLogic") };
    settings.negativeLimit = { reader.flag("NegsLimitEnable"), reader.flag("NegLimitLogic") };
    settings.homeSwitch = { reader.flag("OrgSignalEnable"), reader.flag("OrgSignalLogic") };
}
} // namespace

bool AxisSettings::read(const std::string& name, const AxisValues& values, AxisSettings* settings, SettingsFault* fault)
{
    *fault = {};
    *settings = {};
    Reader reader(values, fault);
    settings->name = name;
    settings->number = readAxisNumber(reader);
    settings->kind = readKind(reader);
    readUnits(reader, *settings);
    readDynamics(reader, *settings);
    readHoming(reader, *settings);
    return !reader.failed();
}
