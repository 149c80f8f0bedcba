#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>

// What happens when stops and limits meet each other.
namespace {
AxisValues softLimits(const AxisValues& changes = {})
{
    AxisValues values{ { "SoftLimitEnable", "TRUE" }, { "SoftLimitNeg", "-30" }, { "SoftLimitPos", "30" },
        { "LimitDec", "500" } };
    for (const auto& change : changes)
        values[change.first] = change.second;
    return values;
}

const char* const wide = R"({"lowest": -1000, "highest": 1000})";

/// The farthest position to the right until the axis stands.
double farthest(AxisRig& rig)
{
    double place = rig.axis.setPoint().position;
    rig.runUntil([&] {
        place = std::max(place, rig.axis.setPoint().position);
        return !rig.axis.isMoving() && rig.axis.setPoint().velocity == 0;
    });
    return place;
}
} // namespace

class AxisLimitsTest : public QObject {
    Q_OBJECT

private slots:
    void aWeakerStopReplacesNoHarderOne();
    void aHarderStopReplacesAWeakerOne();
    void aSoftStopDoesNotReplaceTheStopAtALimit_data();
    void aSoftStopDoesNotReplaceTheStopAtALimit();
    void aStopTooSoftForTheLimitAheadIsHardened();
    void aHardLimitDoesNotSoftenAnEmergencyStop();
    void aHardLimitHardensASoftStop();
    void aHardLimitIsHeededWhileStoppingAtASoftOne();
    void theSoftLimitHoldsWhileStillAccelerating_data();
    void theSoftLimitHoldsWhileStillAccelerating();
    void setPositionBeyondALimitWhileStanding();
    void setPositionBeyondALimitWhileMoving_data();
    void setPositionBeyondALimitWhileMoving();
    void withoutALimitDecelerationTheEmergencyOneServes();
    void anythingButFalseMeansWithoutAnError_data();
    void anythingButFalseMeansWithoutAnError();
};

void AxisLimitsTest::aWeakerStopReplacesNoHarderOne()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    QCOMPARE(rig.axis.stop(1000, 0), Diagnosis::ok);
    rig.run(50);
    QCOMPARE(rig.axis.stop(10, 0), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    rig.run(55);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    // Nor does it soften what the emergency stop has begun.
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    rig.axis.emergencyStop();
    rig.run(2);
    QCOMPARE(rig.axis.stop(10, 0), Diagnosis::ok);
    rig.run(12);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    // A stop is over once the axis stands: the next one has its own ramp.
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    QCOMPARE(rig.axis.stop(100, 0), Diagnosis::ok);
    rig.run(500);
    QVERIFY(std::fabs(rig.axis.setPoint().velocity - 50) < 0.5);
}

void AxisLimitsTest::aHarderStopReplacesAWeakerOne()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveVelocity(numbers(20));
    rig.run(500);
    rig.axis.stop(5, 0);
    rig.run(300);
    QCOMPARE(rig.axis.stop(1000, 0), Diagnosis::ok);
    rig.run(25);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
}

void AxisLimitsTest::aSoftStopDoesNotReplaceTheStopAtALimit_data()
{
    QTest::addColumn<bool>("hard");
    QTest::addColumn<bool>("emergency");
    QTest::newRow("a stop at the soft limit") << false << false;
    QTest::newRow("a stop at the limit switch") << true << false;
    QTest::newRow("the emergency stop at the soft limit, with a weak emergency ramp") << false << true;
    QTest::newRow("the emergency stop at the limit switch, with a weak emergency ramp") << true << true;
}

void AxisLimitsTest::aSoftStopDoesNotReplaceTheStopAtALimit()
{
    QFETCH(bool, hard);
    QFETCH(bool, emergency);
    AxisRig rig(softLimits({ { "SoftLimitEnable", hard ? "FALSE" : "TRUE" }, { "PosLimitEnable", "TRUE" },
                    { "AxisErrorDec", "60" } }),
        hard ? R"({"positiveSwitch": 20, "lowest": -100, "highest": 100})" : wide);
    rig.enabled();
    QCOMPARE(rig.axis.moveVelocity(numbers(100, 1000)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::Stopping));
    const std::int16_t code = rig.axis.error();
    QCOMPARE(code, hard ? Diagnosis::hardLimitPositive : Diagnosis::softLimitPositive);
    rig.run(20);
    if (emergency)
        rig.axis.emergencyStop();
    else
        QCOMPARE(rig.axis.stop(10, 0), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    const double place = farthest(rig);
    // 100 units/s at LimitDec 500 take 10 units; the switch is seen where the machine is, a unit behind the set point.
    QVERIFY2(place <= (hard ? 31.5 : 30 + 1e-6), qPrintable(QString::number(place)));
    QCOMPARE(rig.axis.error(), code);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisLimitsTest::aStopTooSoftForTheLimitAheadIsHardened()
{
    // The move would have braked harder than LimitDec; the stop that replaces it just before the limit must too.
    AxisRig rig(softLimits({ { "LimitDec", "10" }, { "AxisErrorDec", "5000" } }), wide);
    rig.enabled();
    QCOMPARE(rig.axis.moveAbsolute(30, numbers(100, 1000, 5000)), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.setPoint().position > 28.5; }));
    QCOMPARE(rig.axis.setPoint().velocity, 100.0);
    QCOMPARE(rig.axis.stop(10, 0), Diagnosis::ok);
    const double place = farthest(rig);
    QVERIFY2(place <= 30 + 1e-6, qPrintable(QString::number(place)));
    QCOMPARE(rig.axis.error(), Diagnosis::softLimitPositive);
}

void AxisLimitsTest::aHardLimitDoesNotSoftenAnEmergencyStop()
{
    AxisRig rig(AxisValues{ { "PosLimitEnable", "TRUE" }, { "LimitDec", "50" }, { "AxisErrorDec", "2000" } },
        R"({"positiveSwitch": 20, "lowest": -100, "highest": 100})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    // The machine lags a unit behind and meets the switch while it brakes.
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().position() > 18.5; }));
    rig.axis.emergencyStop();
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().positiveLimit(); }));
    QVERIFY(rig.axis.setPoint().velocity > 0);
    // 100 units/s at 2000 units/s2 are over in 50 ms; LimitDec would take two seconds.
    rig.run(50);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    QCOMPARE(rig.axis.error(), Diagnosis::hardLimitPositive);
}

void AxisLimitsTest::aHardLimitHardensASoftStop()
{
    AxisRig rig(AxisValues{ { "PosLimitEnable", "TRUE" }, { "LimitDec", "1000" } },
        R"({"positiveSwitch": 20, "lowest": -100, "highest": 100})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().position() > 15; }));
    QCOMPARE(rig.axis.stop(20, 0), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().positiveLimit(); }));
    rig.run(101);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    QCOMPARE(rig.axis.error(), Diagnosis::hardLimitPositive);
}

void AxisLimitsTest::aHardLimitIsHeededWhileStoppingAtASoftOne()
{
    // The jerk limit makes the stop at the soft limit begin slowly; the switch stands within its way.
    AxisRig rig(softLimits({ { "PosLimitEnable", "TRUE" } }), R"({"positiveSwitch": 20, "highest": 100})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000, 1000, 2000));
    QVERIFY(rig.runUntilState(AxisState::Stopping));
    QVERIFY(!rig.axis.machine().positiveLimit());
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().positiveLimit(); }));
    const MotionState met = rig.axis.setPoint();
    QVERIFY(met.velocity > 10);
    const double place = farthest(rig);
    QVERIFY2(place - met.position <= met.velocity * met.velocity / 1000 + 0.2,
        qPrintable(QString::number(place - met.position)));
    QCOMPARE(rig.axis.error(), Diagnosis::softLimitPositive);
}

void AxisLimitsTest::theSoftLimitHoldsWhileStillAccelerating_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<double>("limit");
    for (const double limit : { 0.5, 3.0, 7.0, 20.0 }) {
        for (const int direction : { 1, -1 }) {
            QTest::newRow(qPrintable(QStringLiteral("%1 units to the %2")
                                         .arg(limit)
                                         .arg(direction > 0 ? QStringLiteral("right") : QStringLiteral("left"))))
                << direction << limit;
        }
    }
}

void AxisLimitsTest::theSoftLimitHoldsWhileStillAccelerating()
{
    QFETCH(int, direction);
    QFETCH(double, limit);
    const std::string place = std::to_string(limit);
    AxisRig rig(softLimits({ { "SoftLimitPos", place }, { "SoftLimitNeg", "-" + place } }), wide);
    rig.enabled();
    QCOMPARE(rig.axis.moveVelocity(numbers(direction * 1000, 300, 300, 5000)), Diagnosis::ok);
    double acceleration = 0;
    QVERIFY(rig.runUntil([&] {
        if (rig.axis.state() == AxisState::ContinuousMotion)
            acceleration = direction * rig.axis.setPoint().acceleration;
        return rig.axis.state() != AxisState::ContinuousMotion;
    }));
    QVERIFY2(acceleration > 0, "the limit must be met while the axis still accelerates");
    double reached = 0;
    double jerk = 0;
    acceleration *= direction;
    QVERIFY(rig.runUntil([&] {
        reached = std::max(reached, direction * rig.axis.setPoint().position);
        jerk = std::max(jerk, std::fabs(rig.axis.setPoint().acceleration - acceleration) / AxisRig::cycle);
        acceleration = rig.axis.setPoint().acceleration;
        return rig.axis.setPoint().velocity == 0 && !rig.axis.isMoving();
    }));
    QVERIFY2(reached <= limit + 1e-6, qPrintable(QString::number(reached, 'g', 12)));
    QVERIFY2(reached > limit - 0.01, qPrintable(QString::number(reached, 'g', 12)));
    QVERIFY2(jerk <= 2 * 5000 + 1, qPrintable(QString::number(jerk)));
    QCOMPARE(rig.axis.error(), direction > 0 ? Diagnosis::softLimitPositive : Diagnosis::softLimitNegative);
}

void AxisLimitsTest::setPositionBeyondALimitWhileStanding()
{
    AxisRig rig(softLimits(), wide);
    rig.enabled();
    const double place = rig.axis.machine().position();
    QCOMPARE(rig.axis.setPosition(500), Diagnosis::ok);
    rig.run(1000);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QCOMPARE(rig.axis.machine().position(), place);
    QCOMPARE(rig.axis.status().positiveSoftLimit, std::uint8_t(1));
    QCOMPARE(rig.axis.moveVelocity(numbers(10)), Diagnosis::softLimitPositive);
    QCOMPARE(rig.axis.startJog(1, numbers(10)), Diagnosis::softLimitPositive);
    QCOMPARE(rig.axis.moveRelative(-10, numbers(10)), Diagnosis::targetBeyondSoftLimit);
    // Back is free, by whatever way leads inside.
    QCOMPARE(rig.axis.startJog(-1, numbers(10)), Diagnosis::ok);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, -10.0);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QCOMPARE(rig.axis.moveAbsolute(0, numbers(100, 1000)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QCOMPARE(rig.axis.shownSetPosition(), 0.0);
}

void AxisLimitsTest::setPositionBeyondALimitWhileMoving_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("velocity");
    QTest::addColumn<std::int16_t>("code");
    QTest::newRow("far beyond, moving on") << 500.0 << 100.0 << Diagnosis::softLimitPositive;
    QTest::newRow("just beyond, moving on") << 30.5 << 100.0 << Diagnosis::softLimitPositive;
    QTest::newRow("too near to stop before it") << 29.0 << 100.0 << Diagnosis::softLimitPositive;
    QTest::newRow("beyond the negative one, moving on") << -500.0 << -100.0 << Diagnosis::softLimitNegative;
    QTest::newRow("beyond, on the way back") << 32.0 << -10.0 << Diagnosis::ok;
}

void AxisLimitsTest::setPositionBeyondALimitWhileMoving()
{
    QFETCH(double, position);
    QFETCH(double, velocity);
    QFETCH(std::int16_t, code);
    AxisRig rig(softLimits({ { "AxisErrorDec", "2000" } }), wide);
    rig.enabled();
    rig.axis.moveVelocity(numbers(velocity, 2000));
    rig.run(150);
    QCOMPARE(rig.axis.setPoint().velocity, velocity);
    QCOMPARE(rig.axis.setPosition(position), Diagnosis::ok);
    rig.run(100);
    QCOMPARE(rig.axis.error(), code);
    if (code == Diagnosis::ok) {
        QCOMPARE(rig.axis.setPoint().velocity, velocity);
        return;
    }
    // It stops where it is; it is not carried back to the limit.
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    QVERIFY(std::fabs(rig.axis.setPoint().position - position) < 5);
    const double place = rig.axis.setPoint().position;
    rig.run(2000);
    QCOMPARE(rig.axis.setPoint().position, place);
}

void AxisLimitsTest::withoutALimitDecelerationTheEmergencyOneServes()
{
    AxisRig rig(softLimits({ { "LimitDec", "0" }, { "AxisErrorDec", "1000" } }), wide);
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    const double place = farthest(rig);
    QVERIFY2(place <= 30 + 1e-6 && place > 29.9, qPrintable(QString::number(place)));
    rig.axis.moveVelocity(numbers(-100, 1000));
    rig.run(200);
    QCOMPARE(rig.axis.stop(0, 0), Diagnosis::ok);
    rig.run(99);
    QVERIFY(rig.axis.setPoint().velocity < 0);
    rig.run(2);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
}

void AxisLimitsTest::anythingButFalseMeansWithoutAnError_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("errorStop");
    QTest::newRow("TRUE") << QStringLiteral("TRUE") << false;
    QTest::newRow("FALSE") << QStringLiteral("FALSE") << true;
    QTest::newRow("false in small letters") << QStringLiteral("False") << true;
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("an unknown word") << QStringLiteral("maybe") << false;
}

void AxisLimitsTest::anythingButFalseMeansWithoutAnError()
{
    QFETCH(QString, value);
    QFETCH(bool, errorStop);
    AxisRig rig(softLimits({ { "ErrorStopEnable", value.toStdString() } }), wide);
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    QVERIFY(rig.runUntil([&] { return !rig.axis.isMoving() && rig.axis.setPoint().velocity == 0; }));
    QCOMPARE(rig.axis.state(), errorStop ? AxisState::ErrorStop : AxisState::StandStill);
    QCOMPARE(rig.axis.error(), Diagnosis::softLimitPositive);
}

QTEST_APPLESS_MAIN(AxisLimitsTest)
#include "AxisLimitsTest.moc"
