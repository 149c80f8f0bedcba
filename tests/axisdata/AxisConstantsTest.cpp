#include "axisdata/AxisConstants.h"

#include <QtTest>

#include <utility>
#include <vector>

namespace {

using Rows = std::vector<std::pair<const char*, const char*>>;

const Rows expectedBaseDefaults{
    { "Version", "3" },
    { "AxisID", "0" },
    { "AxisNo", "0" },
    { "AxisType", "Axis_Virtual" },
    { "InputDevice", "0" },
    { "OutputDevice", "0" },
    { "VirtualAxis", "FALSE" },
    { "AxisAutoMap", "FALSE" },
};

const Rows expectedUnitDefaults{
    { "ReverseEnable", "FALSE" },
    { "PulseCountDecOrHex", "TRUE" },
    { "PulseCountPerCircle", "10000" },
    { "UseGearEnable", "FALSE" },
    { "UseGearValue", "1" },
    { "UnUseGearValue", "1" },
    { "GearRatioMolecule", "1" },
    { "GearRatioParent", "1" },
};

const Rows expectedModeDefaults{
    { "EncoderMode", "FALSE" },
    { "ModeSet", "FALSE" },
    { "SoftLimitEnable", "FALSE" },
    { "SoftLimitNeg", "0" },
    { "SoftLimitPos", "1000" },
    { "RotationPeriod", "360" },
    { "LimitDec", "1000" },
    { "AxisErrorDec", "10000" },
    { "FollowErrorThreshold", "0.0" },
    { "VelocityThreshold", "5" },
    { "MaxVel", "10" },
    { "MaxAcc", "500000" },
    { "JogMaxVel", "500" },
    { "NegTorqueMaxValue", "0" },
    { "PosTorqueMaxValue", "0" },
    { "ErrorStopEnable", "TRUE" },
    { "HardLimitPos", "FALSE" },
    { "HardLimitNeg", "FALSE" },
    { "OutputMethod", "0" },
    { "InputSignal", "0" },
    { "InputSignalFilterTime", "0" },
    { "PresetEnable", "FALSE" },
    { "Preset", "0" },
    { "Probe1Enable", "FALSE" },
    { "Probe1", "0" },
    { "Probe2Enable", "FALSE" },
    { "Probe2", "0" },
    { "CompareOutEnable", "FALSE" },
    { "CompareOutputPin", "0" },
    { "PulseOutputMethod", "0" },
    { "OutputPin", "0" },
    { "CompareOutputWidth", "0.0" },
    { "CompareOutputWidthUnit", "FALSE" },
};

const Rows expectedHomeDefaults{
    { "HomeSpeed", "10" },
    { "HomeAcc", "100" },
    { "HomeCloseSpeed", "1" },
    { "HomeTimeOut", "50000" },
    { "HomeMode", "Homing_1" },
    { "PosLimitEnable", "FALSE" },
    { "PosLimitPin", "%IX100.0" },
    { "PosLimitLogic", "TRUE" },
    { "NegsLimitEnable", "FALSE" },
    { "NegLimitPin", "%IX100.1" },
    { "NegLimitLogic", "TRUE" },
    { "OrgSignalEnable", "FALSE" },
    { "OrgSignalPin", "%IX0.0" },
    { "OrgSignalLogic", "TRUE" },
};

} // namespace

Q_DECLARE_METATYPE(Rows)

class AxisConstantsTest : public QObject {
    Q_OBJECT

private slots:
    void defaultGroups_data();
    void defaultGroups();
    void groupsShareNoKey();
    void resetsOfATypeChangeAre41Keys();
    void recordVersionIsThree();
    void typeWords();
    void cycleTimes();
    void modelSets();
    void modelNamesCompareExactly();
};

void AxisConstantsTest::defaultGroups_data()
{
    QTest::addColumn<AxisDefaultGroup>("group");
    QTest::addColumn<Rows>("expected");
    QTest::newRow("identity and type of the axis") << AxisBaseDefaults << expectedBaseDefaults;
    QTest::newRow("unit conversion") << AxisUnitDefaults << expectedUnitDefaults;
    QTest::newRow("mode and parameters") << AxisModeDefaults << expectedModeDefaults;
    QTest::newRow("homing") << AxisHomeDefaults << expectedHomeDefaults;
}

void AxisConstantsTest::defaultGroups()
{
    QFETCH(AxisDefaultGroup, group);
    QFETCH(Rows, expected);
    for (const auto& row : expected) {
        const QString key = QLatin1String(row.first);
        QVERIFY2(group.contains(key), row.first);
        QVERIFY2(group.value(key) == QLatin1String(row.second), row.first);
    }
    QCOMPARE(group.size(), static_cast<int>(expected.size()));
}

void AxisConstantsTest::groupsShareNoKey()
{
    QSet<QString> keys;
    for (const AxisDefaultGroup* group :
        { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults }) {
        for (const QString& key : group->keys()) {
            QVERIFY2(!keys.contains(key), qPrintable(key));
            keys.insert(key);
        }
    }
    QCOMPARE(keys.size(), 63);
    QVERIFY(!keys.contains(QStringLiteral("Row")));
}

void AxisConstantsTest::resetsOfATypeChangeAre41Keys()
{
    QCOMPARE(AxisUnitDefaults.size() + AxisModeDefaults.size(), 41);
}

void AxisConstantsTest::recordVersionIsThree()
{
    QCOMPARE(axisRecordVersion, 3);
    QCOMPARE(AxisBaseDefaults.value(QStringLiteral("Version")), QString::number(3, 10));
}

void AxisConstantsTest::typeWords()
{
    QCOMPARE(AxisTypeVirtual, QStringLiteral("Axis_Virtual"));
    QCOMPARE(AxisTypePulse, QStringLiteral("Axis_Pulse"));
    QCOMPARE(AxisTypeEncoder, QStringLiteral("Axis_Encoder"));
    QCOMPARE(AxisTypeEtherCAT, QStringLiteral("Axis_EtherCAT"));
    QCOMPARE(AxisTrue, QStringLiteral("TRUE"));
    QCOMPARE(AxisFalse, QStringLiteral("FALSE"));
    QCOMPARE(AxisViewKey, QStringLiteral("AxisView"));
    QCOMPARE(axisSubModelName, "AxisModel");
}

void AxisConstantsTest::cycleTimes()
{
    const QMap<QString, quint16> expected{
        { QStringLiteral("4000"), quint16(4000) },
        { QStringLiteral("2000"), quint16(2000) },
        { QStringLiteral("1000"), quint16(1000) },
        { QStringLiteral("750"), quint16(750) },
        { QStringLiteral("500"), quint16(500) },
    };
    QCOMPARE(CycleTimeChoices, expected);
}

void AxisConstantsTest::modelSets()
{
    const QSet<QString> small{ QStringLiteral("NV2_H48Q6E"), QStringLiteral("NV2_H48Q8E") };
    QCOMPARE(NV2ModelSet, small);
    const QSet<QString> large{
        QStringLiteral("NV3T_50Q4"),
        QStringLiteral("NV3T_50Q4E"),
        QStringLiteral("NV3T_50Q6"),
        QStringLiteral("NV3T_50Q6E"),
        QStringLiteral("NV3T_70Q6"),
        QStringLiteral("NV3T_70Q6E"),
        QStringLiteral("NV3T_70Q8"),
        QStringLiteral("NV3T_70Q8E"),
        QStringLiteral("NV3T_70Q12"),
        QStringLiteral("NV3T_70Q12E"),
    };
    QCOMPARE(NV3TModelSet, large);
}

void AxisConstantsTest::modelNamesCompareExactly()
{
    QVERIFY(!NV2ModelSet.contains(QStringLiteral("nv2_h48q6e")));
    QVERIFY(!NV3TModelSet.contains(QStringLiteral("NV3T_70q12")));
}

QTEST_APPLESS_MAIN(AxisConstantsTest)
#include "AxisConstantsTest.moc"
