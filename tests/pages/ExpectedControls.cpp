#include "tests/pages/ExpectedControls.h"

#include "tests/pages/ExpectedVisibility.h"

#include <QAbstractButton>

#include <cmath>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

const QString pulse = QStringLiteral("Axis_Pulse");
const QString encoder = QStringLiteral("Axis_Encoder");

/// Where in a list of names the point with the number stands; the first entry when it is in none.
int pointIndex(const QMap<int, QString>& points, const QString& number, const QStringList& names)
{
    const int index = names.indexOf(points.value(number.toInt()));
    return names.isEmpty() ? -1 : qMax(index, 0);
}

/// A width as it is shown in milliseconds: without its fraction, as far as an integer goes.
QString wholeWidth(float width)
{
    if (width >= 2147483648.0F)
        return latin("2147483647");
    if (width <= -2147483648.0F)
        return latin("-2147483648");
    return QString::number(std::isnan(width) ? 0 : static_cast<int>(std::trunc(width)));
}

} // namespace

ExpectedControls::ExpectedControls(
    const ModePage& page, const QString& type, const QString& model, const QMap<QString, QString>& texts)
    : m_page(page), m_type(type), m_model(model), m_texts(texts)
{
}

QStringList ExpectedControls::differences()
{
    checkMarks();
    checkFields();
    checkPoints();
    checkPulseLists();
    checkEncoderLists();
    checkEnabled();
    checkVisible();
    return m_wrong;
}

bool ExpectedControls::isTrue(const char* key) const
{
    return m_texts.value(latin(key)).toUpper() == QLatin1String("TRUE");
}

bool ExpectedControls::isFalse(const char* key) const
{
    return m_texts.value(latin(key)).toUpper() == QLatin1String("FALSE");
}

int ExpectedControls::position(const char* key, const QStringList& list) const
{
    const uint stored = m_texts.value(latin(key)).toUInt();
    return stored < static_cast<uint>(list.size()) ? static_cast<int>(stored) : 0;
}

void ExpectedControls::checkMarks()
{
    const bool absolute = isTrue("EncoderMode") && m_type != pulse;
    mark("radioButton", !absolute);
    mark("radioButton_2", absolute);
    mark("radioButton_3", !isTrue("ModeSet"));
    mark("radioButton_4", isTrue("ModeSet"));
    mark("radioButton_5", isTrue("CompareOutputWidthUnit"));
    mark("radioButton_6", !isTrue("CompareOutputWidthUnit"));
    mark("checkBox", isTrue("SoftLimitEnable"));
    mark("checkBox_2", !isFalse("ErrorStopEnable"));
    mark("checkBox_3", !isFalse("CompareOutEnable"));
    mark("checkBox_4", !isFalse("PresetEnable"));
    mark("probe1checkBox", !isFalse("Probe1Enable"));
    mark("probe2checkBox", !isFalse("Probe2Enable"));
}

void ExpectedControls::checkFields()
{
    const char* const shown[][2] = { { "lineEdit", "SoftLimitNeg" }, { "lineEdit_2", "SoftLimitPos" },
        { "lineEdit_3", "LimitDec" }, { "lineEdit_4", "AxisErrorDec" }, { "lineEdit_5", "FollowErrorThreshold" },
        { "lineEdit_6", "VelocityThreshold" }, { "lineEdit_7", "MaxVel" }, { "lineEdit_8", "MaxAcc" },
        { "lineEdit_9", "PosTorqueMaxValue" }, { "lineEdit_10", "NegTorqueMaxValue" }, { "lineEdit_11", "JogMaxVel" },
        { "lineEdit_12", "RotationPeriod" }, { "lineEdit_13", "InputSignalFilterTime" } };
    for (const auto& row : shown)
        if (m_page.edit(row[0])->text() != m_texts.value(latin(row[1])))
            m_wrong.append(latin(row[0]) + latin(" shows another text"));
    const float width = m_texts.value(latin("CompareOutputWidth")).toFloat();
    const QString text = isTrue("CompareOutputWidthUnit") ? wholeWidth(width) : QString::number(width, 'f', 1);
    if (m_page.edit("lineEdit_14")->text() != text)
        m_wrong.append(latin("lineEdit_14 shows ") + m_page.edit("lineEdit_14")->text().left(20));
}

void ExpectedControls::checkPoints()
{
    const QMap<int, QString> points = m_page.project.axisModel()->getInputPointMap();
    const char* const boxes[][3]
        = { { "probe1ComboBox", "Probe1", "ProbelInputPoint" }, { "probe2ComboBox", "Probe2", "ProbelInputPoint" },
              { "inputPinComboBox", "Preset", "HightSpeedCountInputPoint" } };
    for (const auto& box : boxes) {
        const QStringList names = m_page.list(latin(box[2]));
        entries(box[0], names, pointIndex(points, m_texts.value(latin(box[1])), names));
    }
    for (const char* box : { "HardLimPosBox", "HardLimNegBox" })
        entries(box, { latin("Positive Logic"), latin("Negitive Logic") }, 0);
}

void ExpectedControls::checkPulseLists()
{
    if (m_type != pulse) {
        for (const char* box : { "pulseMethodComboBox", "outputPinComboBox" })
            entries(box, {}, -1);
        return;
    }
    const QStringList modes = m_page.list(latin("PulseEncodeMode"));
    const int mode = position("PulseOutputMethod", modes);
    entries("pulseMethodComboBox", modes, mode);
    const QStringList devices = m_page.list(latin("AxisPulseOutputDev"));
    const int device = position("OutputDevice", devices);
    const QStringList pins = m_page.list(QString(devices.at(device) + QLatin1Char('.') + modes.at(mode)));
    entries("outputPinComboBox", pins, position("OutputPin", pins));
    const QStringList fast = m_page.list(latin("HightSpeedPlusOutputPoint"));
    if (isNv3(m_model) && !(isTwelve(m_model) && device > 3))
        entries("compareOutputPinCheckBox", fast, position("CompareOutputPin", fast));
    else
        entries("compareOutputPinCheckBox", {}, -1);
}

void ExpectedControls::checkEncoderLists()
{
    if (m_type != encoder) {
        for (const char* box : { "outputMethodComboBox", "inputSignalComboBox" })
            entries(box, {}, -1);
        if (m_type != pulse)
            entries("compareOutputPinCheckBox", {}, -1);
        return;
    }
    const QStringList modes = m_page.list(latin("EncoderEncodeMode"));
    const int mode = position("OutputMethod", modes);
    entries("outputMethodComboBox", modes, mode);
    const QStringList inputs = m_page.list(QString(latin("Encoder.") + modes.at(mode)));
    const int input = position("InputSignal", inputs);
    entries("inputSignalComboBox", inputs, input);
    // The slot that decides runs for any selection but the first, which is there from the start.
    const bool withoutFilter = input > 0 && mode == modes.size() - 1 && input > inputs.size() - 3;
    enabled("lineEdit_13", !withoutFilter);
    const QStringList pins = m_page.list(isNv3(m_model) ? latin("HightSpeedPlusOutputPoint") : latin("OutputPoint"));
    entries("compareOutputPinCheckBox", pins, position("CompareOutputPin", pins));
}

void ExpectedControls::checkEnabled()
{
    enabled("lineEdit", isTrue("SoftLimitEnable"));
    enabled("lineEdit_2", isTrue("SoftLimitEnable"));
    enabled("probe1ComboBox", !isFalse("Probe1Enable"));
    enabled("probe2ComboBox", !isFalse("Probe2Enable"));
    enabled("inputPinComboBox", !isFalse("PresetEnable"));
    for (const char* name : { "lineEdit_14", "radioButton_5", "radioButton_6" })
        enabled(name, !isFalse("CompareOutEnable"));
    const bool listed = m_type == pulse || m_type == encoder;
    enabled("compareOutputPinCheckBox", !listed || !isFalse("CompareOutEnable"));
    enabled("radioButton_2", m_type != pulse);
    for (const char* name :
        { "radioButton", "radioButton_3", "radioButton_4", "checkBox", "checkBox_2", "checkBox_3", "checkBox_4",
            "probe1checkBox", "probe2checkBox", "lineEdit_3", "lineEdit_4", "lineEdit_5", "lineEdit_6", "lineEdit_7",
            "lineEdit_8", "lineEdit_9", "lineEdit_10", "lineEdit_11", "lineEdit_12", "HardLimPosBox", "HardLimNegBox",
            "pulseMethodComboBox", "outputPinComboBox", "outputMethodComboBox", "inputSignalComboBox" })
        enabled(name, true);
    if (m_type != encoder)
        enabled("lineEdit_13", true);
}

void ExpectedControls::checkVisible()
{
    const QStringList outputs = m_page.list(latin("AxisPulseOutputDev"));
    const uint input = m_texts.value(latin("InputDevice")).toUInt();
    ExpectedVisibility visibility(m_page);
    visibility.apply(m_type, m_model, m_type == pulse ? static_cast<uint>(position("OutputDevice", outputs)) : input);
    m_wrong += visibility.differences(m_page);
}

void ExpectedControls::mark(const char* button, bool checked)
{
    if (m_page.find<QAbstractButton>(button)->isChecked() != checked)
        m_wrong.append(latin(button) + (checked ? latin(" is not checked") : latin(" is checked")));
}

void ExpectedControls::entries(const char* box, const QStringList& expected, int index)
{
    if (m_page.entries(box) != expected)
        m_wrong.append(latin(box) + latin(" has other entries"));
    if (m_page.combo(box)->currentIndex() != index)
        m_wrong.append(latin(box) + latin(" is at ") + QString::number(m_page.combo(box)->currentIndex()));
}

void ExpectedControls::enabled(const char* control, bool expected)
{
    if (m_page.find<QWidget>(control)->isEnabledTo(m_page.page.get()) != expected)
        m_wrong.append(latin(control) + (expected ? latin(" is disabled") : latin(" is enabled")));
}
