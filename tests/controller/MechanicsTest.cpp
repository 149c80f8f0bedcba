#include "controller/Mechanics.h"

#include "tests/controller/AxisRecords.h"

#include <QtTest>

namespace {
AxisSettings watchedAxis()
{
    return makeAxisSettings({ { "PosLimitEnable", "TRUE" }, { "NegsLimitEnable", "TRUE" },
        { "OrgSignalEnable", "TRUE" }, { "HomeMode", "Homing_24" } });
}

Mechanics machineAt(double start, const AxisSettings& axis)
{
    MechanicsSettings settings = MechanicsSettings::defaultsFor(axis);
    settings.lowest = -100;
    settings.highest = 100;
    settings.negativeSwitch = -50;
    settings.positiveSwitch = 50;
    settings.homeFrom = 10;
    settings.homeTo = 20;
    settings.start = start;
    return Mechanics(settings, axis);
}
} // namespace

class MechanicsTest : public QObject {
    Q_OBJECT

private slots:
    void switchesReadAtTheirEdges_data();
    void switchesReadAtTheirEdges();
};

void MechanicsTest::switchesReadAtTheirEdges_data()
{
    QTest::addColumn<double>("place");
    QTest::addColumn<QString>("pressed");
    QTest::newRow("below the negative switch") << -50.001 << QStringLiteral("N");
    QTest::newRow("on the edge of the negative switch") << -50.0 << QString();
    QTest::newRow("before the home switch") << 9.999 << QString();
    QTest::newRow("on the first edge of the home switch") << 10.0 << QStringLiteral("H");
    QTest::newRow("on the home switch") << 19.999 << QStringLiteral("H");
    QTest::newRow("on the second edge of the home switch") << 20.0 << QString();
    QTest::newRow("before the positive switch") << 49.999 << QString();
    QTest::newRow("on the edge of the positive switch") << 50.0 << QStringLiteral("P");
}

void MechanicsTest::switchesReadAtTheirEdges()
{
    QFETCH(double, place);
    const Mechanics machine = machineAt(place, watchedAxis());
    QString pressed;
    if (machine.negativeLimit())
        pressed += QLatin1Char('N');
    if (machine.homeSwitch())
        pressed += QLatin1Char('H');
    if (machine.positiveLimit())
        pressed += QLatin1Char('P');
    QTEST(pressed, "pressed");
}

QTEST_APPLESS_MAIN(MechanicsTest)
#include "MechanicsTest.moc"
