#pragma once

#include <QMap>
#include <QString>

/// Keys and default texts of a new axis record, in four groups. The data-model library fills new records from them, the
/// pages restore a group when the axis gets another type. Maps are in key order.
///
/// Texts: "TRUE" and "FALSE" for booleans, decimal numbers, positions in option lists, IEC addresses for pins. Lengths
/// are in user units, times in ms, unless the key says otherwise; spelling is part of the stored format.
using AxisDefaultGroup = QMap<QString, QString>;

/// Format version that new records carry.
constexpr int axisRecordVersion = 3;

/// Identity and type of the axis.
inline const AxisDefaultGroup AxisBaseDefaults{
    { QStringLiteral("Version"), QString::number(axisRecordVersion, 10) },
    { QStringLiteral("AxisID"), QStringLiteral("0") },
    { QStringLiteral("AxisNo"), QStringLiteral("0") },
    { QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual") },
    { QStringLiteral("InputDevice"), QStringLiteral("0") },
    { QStringLiteral("OutputDevice"), QStringLiteral("0") },
    { QStringLiteral("VirtualAxis"), QStringLiteral("FALSE") },
    { QStringLiteral("AxisAutoMap"), QStringLiteral("FALSE") },
};

/// Unit conversion between pulses and user units.
inline const AxisDefaultGroup AxisUnitDefaults{
    { QStringLiteral("ReverseEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("PulseCountDecOrHex"), QStringLiteral("TRUE") },
    { QStringLiteral("PulseCountPerCircle"), QStringLiteral("10000") },
    { QStringLiteral("UseGearEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("UseGearValue"), QStringLiteral("1") },
    { QStringLiteral("UnUseGearValue"), QStringLiteral("1") },
    { QStringLiteral("GearRatioMolecule"), QStringLiteral("1") },
    { QStringLiteral("GearRatioParent"), QStringLiteral("1") },
};

/// Mode, limits, dynamics, inputs and outputs.
inline const AxisDefaultGroup AxisModeDefaults{
    { QStringLiteral("EncoderMode"), QStringLiteral("FALSE") },
    { QStringLiteral("ModeSet"), QStringLiteral("FALSE") },
    { QStringLiteral("SoftLimitEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("SoftLimitNeg"), QStringLiteral("0") },
    { QStringLiteral("SoftLimitPos"), QStringLiteral("1000") },
    { QStringLiteral("RotationPeriod"), QStringLiteral("360") },
    { QStringLiteral("LimitDec"), QStringLiteral("1000") },
    { QStringLiteral("AxisErrorDec"), QStringLiteral("10000") },
    { QStringLiteral("FollowErrorThreshold"), QStringLiteral("0.0") },
    { QStringLiteral("VelocityThreshold"), QStringLiteral("5") },
    { QStringLiteral("MaxVel"), QStringLiteral("10") },
    { QStringLiteral("MaxAcc"), QStringLiteral("500000") },
    { QStringLiteral("JogMaxVel"), QStringLiteral("500") },
    { QStringLiteral("NegTorqueMaxValue"), QStringLiteral("0") },
    { QStringLiteral("PosTorqueMaxValue"), QStringLiteral("0") },
    { QStringLiteral("ErrorStopEnable"), QStringLiteral("TRUE") },
    { QStringLiteral("HardLimitPos"), QStringLiteral("FALSE") },
    { QStringLiteral("HardLimitNeg"), QStringLiteral("FALSE") },
    { QStringLiteral("OutputMethod"), QStringLiteral("0") },
    { QStringLiteral("InputSignal"), QStringLiteral("0") },
    { QStringLiteral("InputSignalFilterTime"), QStringLiteral("0") },
    { QStringLiteral("PresetEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("Preset"), QStringLiteral("0") },
    { QStringLiteral("Probe1Enable"), QStringLiteral("FALSE") },
    { QStringLiteral("Probe1"), QStringLiteral("0") },
    { QStringLiteral("Probe2Enable"), QStringLiteral("FALSE") },
    { QStringLiteral("Probe2"), QStringLiteral("0") },
    { QStringLiteral("CompareOutEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("CompareOutputPin"), QStringLiteral("0") },
    { QStringLiteral("PulseOutputMethod"), QStringLiteral("0") },
    { QStringLiteral("OutputPin"), QStringLiteral("0") },
    { QStringLiteral("CompareOutputWidth"), QStringLiteral("0.0") },
    { QStringLiteral("CompareOutputWidthUnit"), QStringLiteral("FALSE") },
};

/// Homing and its signals.
inline const AxisDefaultGroup AxisHomeDefaults{
    { QStringLiteral("HomeSpeed"), QStringLiteral("10") },
    { QStringLiteral("HomeAcc"), QStringLiteral("100") },
    { QStringLiteral("HomeCloseSpeed"), QStringLiteral("1") },
    { QStringLiteral("HomeTimeOut"), QStringLiteral("50000") },
    { QStringLiteral("HomeMode"), QStringLiteral("Homing_1") },
    { QStringLiteral("PosLimitEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("PosLimitPin"), QStringLiteral("%IX100.0") },
    { QStringLiteral("PosLimitLogic"), QStringLiteral("TRUE") },
    { QStringLiteral("NegsLimitEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("NegLimitPin"), QStringLiteral("%IX100.1") },
    { QStringLiteral("NegLimitLogic"), QStringLiteral("TRUE") },
    { QStringLiteral("OrgSignalEnable"), QStringLiteral("FALSE") },
    { QStringLiteral("OrgSignalPin"), QStringLiteral("%IX0.0") },
    { QStringLiteral("OrgSignalLogic"), QStringLiteral("TRUE") },
};
