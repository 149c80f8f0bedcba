#include "plugin/AxisRevalidation.h"

#include "axisdata/AxisConstants.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"

namespace {

uint number(const AxisTable& axis, const QString& key)
{
    return axis.property(key, QString()).toUInt(nullptr, 10);
}

void setNumber(AxisTable& axis, const QString& key, uint value)
{
    axis.setProperty(key, QString::number(value, 10));
}

bool isPosition(uint value, const QStringList& list)
{
    return value < static_cast<uint>(list.size());
}

uint positionOrFirst(uint value, const QStringList& list)
{
    return isPosition(value, list) ? value : 0;
}

QString entry(const QStringList& list, uint position)
{
    return list.value(static_cast<int>(position));
}

QString encoderGroup(const QString& mode)
{
    return QStringLiteral("Encoder.") + mode;
}

uint limitOfVirtualAxes(const AxisModel& model)
{
    const QString displayName = model.getAxisTypeNameMap().value(AxisTypeVirtual);
    return model.getMaxAxisNumber().value(displayName, 0);
}

bool isType(const AxisTable& axis, const QString& typeWord)
{
    return axis.property(QStringLiteral("AxisType"), QString()).compare(typeWord, Qt::CaseInsensitive) == 0;
}

} // namespace

AxisRevalidation::AxisRevalidation(AxisModel& model) : m_model(model), m_virtualLimit(limitOfVirtualAxes(model)) { }

bool AxisRevalidation::revise(AxisTable& axis)
{
    reviseInputs(axis);
    if (isType(axis, AxisTypePulse))
        return revisePulse(axis);
    if (isType(axis, AxisTypeEncoder))
        return reviseEncoder(axis);
    if (isType(axis, AxisTypeVirtual))
        return countVirtual();
    return true;
}

void AxisRevalidation::reviseInputs(AxisTable& axis) const
{
    reviseInput(axis, QStringLiteral("Preset"), QStringLiteral("HightSpeedCountInputPoint"));
    reviseInput(axis, QStringLiteral("Probe1"), QStringLiteral("ProbelInputPoint"));
    reviseInput(axis, QStringLiteral("Probe2"), QStringLiteral("ProbelInputPoint"));
}

void AxisRevalidation::reviseInput(AxisTable& axis, const QString& key, const QString& group) const
{
    const QString point = m_model.getInputPointMap().value(static_cast<int>(number(axis, key)));
    if (!list(group).contains(point, Qt::CaseInsensitive))
        setNumber(axis, key, 0);
}

bool AxisRevalidation::revisePulse(AxisTable& axis) const
{
    const QStringList devices = list(QStringLiteral("AxisPulseOutputDev"));
    const uint device = number(axis, QStringLiteral("OutputDevice"));
    if (!isPosition(device, devices))
        return false;
    const QStringList modes = list(QStringLiteral("PulseEncodeMode"));
    const uint mode = positionOrFirst(number(axis, QStringLiteral("PulseOutputMethod")), modes);
    setNumber(axis, QStringLiteral("PulseOutputMethod"), mode);
    const QString pinGroup = entry(devices, device) + QLatin1Char('.') + entry(modes, mode);
    setNumber(
        axis, QStringLiteral("OutputPin"), positionOrFirst(number(axis, QStringLiteral("OutputPin")), list(pinGroup)));
    reviseCompareOutput(axis);
    return true;
}

bool AxisRevalidation::reviseEncoder(AxisTable& axis) const
{
    if (!isPosition(number(axis, QStringLiteral("InputDevice")), list(QStringLiteral("AxisEncoderInputDev"))))
        return false;
    const QStringList modes = list(QStringLiteral("EncoderEncodeMode"));
    const QStringList oldModes = formerList(QStringLiteral("EncoderEncodeMode"));
    const uint oldMode = number(axis, QStringLiteral("OutputMethod"));
    const bool carryOver = isPosition(oldMode, oldModes);
    uint mode = oldMode;
    if (carryOver)
        mode = static_cast<uint>(qMax(0, modes.indexOf(entry(oldModes, oldMode))));
    mode = positionOrFirst(mode, modes);
    setNumber(axis, QStringLiteral("OutputMethod"), mode);

    const QStringList signalNames = list(encoderGroup(entry(modes, mode)));
    uint signal = number(axis, QStringLiteral("InputSignal"));
    if (carryOver)
        signal = carriedSignal(signal, signalNames, entry(oldModes, oldMode));
    setNumber(axis, QStringLiteral("InputSignal"), positionOrFirst(signal, signalNames));
    reviseCompareOutput(axis);
    return true;
}

/// A signal that brings its own time base does not stand for another one at the same position.
uint AxisRevalidation::carriedSignal(uint signal, const QStringList& signalNames, const QString& oldMode) const
{
    const QStringList oldSignals = formerList(encoderGroup(oldMode));
    if (!isPosition(signal, oldSignals))
        return signal;
    const int match = signalNames.indexOf(entry(oldSignals, signal));
    if (match >= 0)
        return static_cast<uint>(match);
    const QString samePlace = entry(signalNames, signal);
    const bool timed = samePlace.contains(QLatin1String("1ms")) || samePlace.contains(QLatin1String("1us"));
    return timed ? 0 : signal;
}

bool AxisRevalidation::countVirtual()
{
    ++m_virtualCount;
    return m_virtualCount <= m_virtualLimit;
}

/// Against the ordinary output points for every type and controller, whatever list a page may offer.
void AxisRevalidation::reviseCompareOutput(AxisTable& axis) const
{
    const QString key = QStringLiteral("CompareOutputPin");
    setNumber(axis, key, positionOrFirst(number(axis, key), list(QStringLiteral("OutputPoint"))));
}

QStringList AxisRevalidation::list(const QString& group) const
{
    QString name = group;
    return m_model.getAxisBaseSettingList(name);
}

QStringList AxisRevalidation::formerList(const QString& group) const
{
    QString name = group;
    return m_model.getPreAxisBaseSettingList(name);
}
