#include "sdk/AxisDefaults.h"

#include <QtTest>

namespace {

/// "Key=text" of each entry in the map's order.
QStringList entriesOf(const AxisDefaultGroup& group)
{
    QStringList entries;
    for (auto entry = group.begin(); entry != group.end(); ++entry)
        entries.append(entry.key() + QLatin1Char('=') + entry.value());
    return entries;
}

QStringList sorted(QStringList entries)
{
    entries.sort();
    return entries;
}

} // namespace

class AxisDefaultsTest : public QObject {
    Q_OBJECT

private slots:
    void groupHoldsItsKeysAtTheirDefaults_data();
    void groupHoldsItsKeysAtTheirDefaults();
    void noKeyStandsInTwoGroups();
};

void AxisDefaultsTest::groupHoldsItsKeysAtTheirDefaults_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("expected");

    QTest::newRow("base group")
        << entriesOf(AxisBaseDefaults)
        << QStringLiteral(
               "Version=3 AxisID=0 AxisNo=0 AxisType=Axis_Virtual InputDevice=0 OutputDevice=0 VirtualAxis=FALSE "
               "AxisAutoMap=FALSE");
    QTest::newRow("unit group") << entriesOf(AxisUnitDefaults)
                                << QStringLiteral("ReverseEnable=FALSE PulseCountDecOrHex=TRUE "
                                                  "PulseCountPerCircle=10000 UseGearEnable=FALSE UseGearValue=1 "
                                                  "UnUseGearValue=1 GearRatioMolecule=1 GearRatioParent=1");
    QTest::newRow("mode group")
        << entriesOf(AxisModeDefaults)
        << QStringLiteral(
               "EncoderMode=FALSE ModeSet=FALSE SoftLimitEnable=FALSE SoftLimitNeg=0 SoftLimitPos=1000 "
               "RotationPeriod=360 "
               "LimitDec=1000 AxisErrorDec=10000 FollowErrorThreshold=0.0 VelocityThreshold=5 MaxVel=10 MaxAcc=500000 "
               "JogMaxVel=500 NegTorqueMaxValue=0 PosTorqueMaxValue=0 ErrorStopEnable=TRUE HardLimitPos=FALSE "
               "HardLimitNeg=FALSE OutputMethod=0 InputSignal=0 InputSignalFilterTime=0 PresetEnable=FALSE Preset=0 "
               "Probe1Enable=FALSE Probe1=0 Probe2Enable=FALSE Probe2=0 CompareOutEnable=FALSE CompareOutputPin=0 "
               "PulseOutputMethod=0 OutputPin=0 CompareOutputWidth=0.0 CompareOutputWidthUnit=FALSE");
    QTest::newRow("homing group")
        << entriesOf(AxisHomeDefaults)
        << QStringLiteral(
               "HomeSpeed=10 HomeAcc=100 HomeCloseSpeed=1 HomeTimeOut=50000 HomeMode=Homing_1 PosLimitEnable=FALSE "
               "PosLimitPin=%IX100.0 PosLimitLogic=TRUE NegsLimitEnable=FALSE NegLimitPin=%IX100.1 NegLimitLogic=TRUE "
               "OrgSignalEnable=FALSE OrgSignalPin=%IX0.0 OrgSignalLogic=TRUE");
}

void AxisDefaultsTest::groupHoldsItsKeysAtTheirDefaults()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, expected);
    QCOMPARE(sorted(entries), sorted(expected.split(QLatin1Char(' '))));
}

void AxisDefaultsTest::noKeyStandsInTwoGroups()
{
    AxisDefaultGroup all;
    for (const AxisDefaultGroup& group : { AxisBaseDefaults, AxisUnitDefaults, AxisModeDefaults, AxisHomeDefaults }) {
        for (auto entry = group.begin(); entry != group.end(); ++entry)
            all.insert(entry.key(), entry.value());
    }
    QCOMPARE(all.size(), 8 + 8 + 33 + 14);
}

QTEST_APPLESS_MAIN(AxisDefaultsTest)
#include "AxisDefaultsTest.moc"
