#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>

class AxisMotionTest : public QObject {
    Q_OBJECT

private slots:
    void targetsBeyondSoftLimitsAreRefused();
    void motionStopsAtTheSoftLimit_data();
    void motionStopsAtTheSoftLimit();
    void aMoveToTheLimitIsNoError();
    void motionStopsAtTheHardLimit_data();
    void motionStopsAtTheHardLimit();
    void offALimitTheWayBackIsFree();
    void followingErrorIsSupervised();
    void powerLossCoastsOut();
    void setPositionMovesNothing();
    void setPositionInMotionKeepsTheMotion();
    void velocityRatioScalesTheVelocityOnly();
    void velocityRatioOfNothingHoldsTheCommand();
    void velocityRatioNeverJumps();
    void velocityRatioReadsBackToThePercent();
    void velocityRatioOutOfRangeIsRefused_data();
    void velocityRatioOutOfRangeIsRefused();
    void stopsAreNotScaled();
    void rotaryAxesShowOneTurn();
    void rotaryAxesTakeTheShorterWay_data();
    void rotaryAxesTakeTheShorterWay();
    void actualFollowsWithALag();
    void aMillionCyclesLoseNoPulse_data();
    void aMillionCyclesLoseNoPulse();
    void emergencyStopBrakesAtTheEmergencyRate();
    void virtualAxesFollowExactly();
    void encodersCannotBeMoved();
    void statusTellsWhatTheAxisDoes();
    void reverseTurnsThePulsesRound();
    void enablingWaitsUntilTheMachineStands();
    void jerkLimitedMovesStayWithinTheirJerk();
};
void AxisMotionTest::targetsBeyondSoftLimitsAreRefused()
{
    AxisRig rig(AxisValues{ { "SoftLimitEnable", "TRUE" }, { "SoftLimitNeg", "-10" }, { "SoftLimitPos", "20" } });
    rig.enabled();
    QCOMPARE(rig.axis.moveAbsolute(20.001, numbers(10)), Diagnosis::targetBeyondSoftLimit);
    QCOMPARE(rig.axis.moveAbsolute(-10.001, numbers(10)), Diagnosis::targetBeyondSoftLimit);
    QCOMPARE(rig.axis.moveRelative(21, numbers(10)), Diagnosis::targetBeyondSoftLimit);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(rig.axis.moveAbsolute(20, numbers(10)), Diagnosis::ok);
    AxisRig off(AxisValues{ { "SoftLimitEnable", "FALSE" }, { "SoftLimitNeg", "-10" }, { "SoftLimitPos", "20" } });
    QCOMPARE(off.enabled().axis.moveAbsolute(25, numbers(10)), Diagnosis::ok);
}

void AxisMotionTest::motionStopsAtTheSoftLimit_data()
{
    QTest::addColumn<double>("jerk");
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("errorStop");
    for (const double jerk : { 0.0, 5000.0 }) {
        for (const int direction : { -1, 1 }) {
            for (const bool errorStop : { false, true }) {
                const QString name = QStringLiteral("%1, %2, %3")
                                         .arg(jerk > 0 ? QStringLiteral("jerk-limited") : QStringLiteral("trapezoid"),
                                             direction > 0 ? QStringLiteral("right") : QStringLiteral("left"),
                                             errorStop ? QStringLiteral("with an error") : QStringLiteral("without"));
                QTest::newRow(qPrintable(name)) << jerk << direction << errorStop;
            }
        }
    }
}

void AxisMotionTest::motionStopsAtTheSoftLimit()
{
    QFETCH(double, jerk);
    QFETCH(int, direction);
    QFETCH(bool, errorStop);
    AxisRig rig(AxisValues{ { "SoftLimitEnable", "TRUE" }, { "SoftLimitNeg", "-30" }, { "SoftLimitPos", "30" },
                    { "ErrorStopEnable", errorStop ? "FALSE" : "TRUE" }, { "LimitDec", "500" } },
        R"({"lowest": -100, "highest": 100})");
    rig.enabled();
    QCOMPARE(rig.axis.moveVelocity(numbers(direction * 100, 700, 50, jerk)), Diagnosis::ok);
    double farthest = 0;
    QVERIFY(rig.runUntil([&] {
        farthest = std::max(farthest, direction * rig.axis.setPoint().position);
        return rig.axis.setPoint().velocity == 0 && !rig.axis.isMoving();
    }));
    QVERIFY2(farthest <= 30 + 1e-6, qPrintable(QString::number(farthest)));
    QVERIFY2(farthest > 29.99, qPrintable(QString::number(farthest)));
    const std::int16_t code = direction > 0 ? Diagnosis::softLimitPositive : Diagnosis::softLimitNegative;
    QCOMPARE(rig.axis.error(), code);
    QCOMPARE(rig.axis.state(), errorStop ? AxisState::ErrorStop : AxisState::StandStill);
    QCOMPARE(rig.axis.status().positiveSoftLimit, std::uint8_t(direction > 0));
    QCOMPARE(rig.axis.status().negativeSoftLimit, std::uint8_t(direction < 0));
    QCOMPARE(rig.axis.reset(), Diagnosis::ok);
    QCOMPARE(rig.axis.moveVelocity(numbers(direction * 5)), code);
    QCOMPARE(rig.axis.startJog(direction, numbers(5)), code);
    QCOMPARE(rig.axis.moveVelocity(numbers(-direction * 5)), Diagnosis::ok);
}

void AxisMotionTest::aMoveToTheLimitIsNoError()
{
    // It brakes harder than the limit's own deceleration would.
    AxisRig rig(
        { { "SoftLimitEnable", "TRUE" }, { "SoftLimitPos", "30" }, { "SoftLimitNeg", "-30" }, { "LimitDec", "10" } });
    rig.enabled();
    QCOMPARE(rig.axis.moveAbsolute(30, numbers(100, 1000, 5000)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QCOMPARE(rig.axis.shownSetPosition(), 30.0);
}

void AxisMotionTest::motionStopsAtTheHardLimit_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("errorStop");
    QTest::newRow("right, without an error") << 1 << false;
    QTest::newRow("left, without an error") << -1 << false;
    QTest::newRow("right, with an error") << 1 << true;
    QTest::newRow("left, with an error") << -1 << true;
}

void AxisMotionTest::motionStopsAtTheHardLimit()
{
    QFETCH(int, direction);
    QFETCH(bool, errorStop);
    AxisRig rig(AxisValues{ { "PosLimitEnable", "TRUE" }, { "NegsLimitEnable", "TRUE" },
                    { "ErrorStopEnable", errorStop ? "FALSE" : "TRUE" } },
        R"({"negativeSwitch": -20, "positiveSwitch": 20, "lowest": -60, "highest": 60})");
    rig.enabled();
    QCOMPARE(rig.axis.moveVelocity(numbers(direction * 50, 1000)), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.setPoint().velocity == 0 && !rig.axis.isMoving(); }));
    const std::int16_t code = direction > 0 ? Diagnosis::hardLimitPositive : Diagnosis::hardLimitNegative;
    QCOMPARE(rig.axis.error(), code);
    QCOMPARE(rig.axis.state(), errorStop ? AxisState::ErrorStop : AxisState::StandStill);
    QCOMPARE(rig.axis.status().positiveHardLimit, std::uint8_t(direction > 0));
    QCOMPARE(rig.axis.status().negativeHardLimit, std::uint8_t(direction < 0));
    // 50 units/s at LimitDec 1000 take 1.25 units, and the lag half a unit more.
    QVERIFY(std::fabs(rig.axis.machine().position()) < 22);
    QCOMPARE(rig.axis.reset(), Diagnosis::ok);
    QCOMPARE(rig.axis.moveRelative(direction, numbers(5)), code);
}

void AxisMotionTest::offALimitTheWayBackIsFree()
{
    AxisRig rig(AxisValues{ { "PosLimitEnable", "TRUE" } }, R"({"positiveSwitch": 20, "highest": 60})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(50, 1000));
    QVERIFY(rig.runUntil([&] { return rig.axis.setPoint().velocity == 0 && !rig.axis.isMoving(); }));
    QCOMPARE(rig.axis.moveAbsolute(0, numbers(50)), Diagnosis::ok);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 0.0);
    QCOMPARE(rig.axis.moveAbsolute(10, numbers(50)), Diagnosis::ok);
}

void AxisMotionTest::followingErrorIsSupervised()
{
    // Lag is velocity / gain: 100 / 100 = 1.
    AxisRig loose(AxisValues{ { "FollowErrorThreshold", "1.05" } });
    loose.enabled();
    loose.axis.moveVelocity(numbers(100, 1000));
    loose.run(1000);
    QCOMPARE(loose.axis.state(), AxisState::ContinuousMotion);
    AxisRig tight(AxisValues{ { "FollowErrorThreshold", "0.9" } });
    tight.enabled();
    tight.axis.moveVelocity(numbers(100, 1000));
    QVERIFY(tight.runUntilState(AxisState::ErrorStop, 1));
    QCOMPARE(tight.axis.error(), Diagnosis::followingError);
    QVERIFY(tight.runUntilStill(1));
}

void AxisMotionTest::powerLossCoastsOut()
{
    AxisRig rig(AxisValues{ { "AxisErrorDec", "100" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(50, 1000));
    rig.run(1000);
    rig.axis.machine().faults.powerLost = true;
    rig.run(100);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    QVERIFY(rig.axis.machine().velocity() > 30);
    rig.run(600);
    QCOMPARE(rig.axis.machine().velocity(), 0.0);
}

void AxisMotionTest::setPositionMovesNothing()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveAbsolute(10, numbers(50));
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    rig.run(500);
    const double place = rig.axis.machine().position();
    QCOMPARE(rig.axis.setPosition(-1234.5), Diagnosis::ok);
    QCOMPARE(rig.axis.shownSetPosition(), -1234.5);
    rig.run(1000);
    QCOMPARE(rig.axis.machine().position(), place);
    QVERIFY(std::fabs(rig.axis.shownActualPosition() + 1234.5) < 2 / rig.settings.pulsesPerUnit);
    rig.axis.moveAbsolute(-1230, numbers(50));
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY(rig.runUntilStill());
    QVERIFY(std::fabs(rig.axis.machine().position() - place - 4.5) < 2 / rig.settings.pulsesPerUnit);
}

void AxisMotionTest::setPositionInMotionKeepsTheMotion()
{
    AxisRig rig;
    AxisRig same;
    for (AxisRig* each : { &rig, &same }) {
        each->enabled();
        each->axis.moveAbsolute(50, numbers(20, 100, 100, 1000));
        each->run(1000);
    }
    QCOMPARE(rig.axis.setPosition(-500), Diagnosis::ok);
    rig.axis.setVelocityRatio(50);
    same.axis.setVelocityRatio(50);
    for (int i = 0; i < 8000; ++i) {
        rig.run(1);
        same.run(1);
        QVERIFY(std::fabs(rig.axis.machine().position() - same.axis.machine().position()) < 2e-4);
    }
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisMotionTest::velocityRatioScalesTheVelocityOnly()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.setVelocityRatio(50);
    rig.axis.moveAbsolute(100, numbers(20, 100, 100));
    rig.run(100);
    // The ramp is as steep as ever.
    QVERIFY(std::fabs(rig.axis.setPoint().velocity - 10) < 0.2);
    rig.run(1000);
    QCOMPARE(rig.axis.setPoint().velocity, 10.0);
    QCOMPARE(rig.axis.status().speedRatio, 0.5);
    rig.axis.setVelocityRatio(200);
    rig.run(1000);
    QCOMPARE(rig.axis.setPoint().velocity, 40.0);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 100.0);
    AxisRig bounded(AxisValues{ { "MaxVel", "30" } });
    bounded.enabled();
    bounded.axis.setVelocityRatio(1000);
    bounded.axis.moveVelocity(numbers(20, 1000));
    bounded.run(1000);
    QCOMPARE(bounded.axis.setPoint().velocity, 30.0);
}

void AxisMotionTest::velocityRatioOfNothingHoldsTheCommand()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveAbsolute(100, numbers(20, 100, 100));
    rig.run(1000);
    rig.axis.setVelocityRatio(0);
    rig.run(5000);
    QCOMPARE(rig.axis.state(), AxisState::DiscreteMotion);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
    QVERIFY(rig.axis.setPoint().position < 100);
    rig.axis.setVelocityRatio(100);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 100.0);
    AxisRig jog;
    jog.enabled();
    jog.axis.setVelocityRatio(0);
    QCOMPARE(jog.axis.startJog(1, numbers(10)), Diagnosis::ok);
    jog.run(1000);
    QCOMPARE(jog.axis.state(), AxisState::ContinuousMotion);
    QCOMPARE(jog.axis.setPoint().velocity, 0.0);
    jog.axis.setVelocityRatio(100);
    jog.run(1000);
    QCOMPARE(jog.axis.setPoint().velocity, 10.0);
}

void AxisMotionTest::velocityRatioNeverJumps()
{
    AxisRig rig;
    rig.enabled();
    const MotionNumbers given = numbers(40, 200, 300, 4000);
    rig.axis.moveAbsolute(400, given);
    double velocity = 0;
    double acceleration = 0;
    double position = 0;
    for (int i = 0; i < 30000 && rig.axis.state() == AxisState::DiscreteMotion; ++i) {
        if (i % 777 == 0)
            rig.axis.setVelocityRatio((i / 777 * 37) % 200);
        if (i == 20000)
            rig.axis.setVelocityRatio(100);
        rig.run(1);
        const MotionState now = rig.axis.setPoint();
        QVERIFY2(std::fabs(now.velocity - velocity) <= 300 * 0.001 + 1e-9, qPrintable(QString::number(i)));
        QVERIFY2(std::fabs(now.acceleration - acceleration) <= 4000 * 0.001 + 1e-6, qPrintable(QString::number(i)));
        QVERIFY(std::fabs(now.position - position) <= 81 * 0.001);
        velocity = now.velocity;
        acceleration = now.acceleration;
        position = now.position;
    }
    rig.axis.setVelocityRatio(100);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 400.0);
}

void AxisMotionTest::velocityRatioReadsBackToThePercent()
{
    AxisRig rig;
    for (int percent = 0; percent <= 1000; ++percent) {
        QCOMPARE(rig.axis.setVelocityRatio(percent), Diagnosis::ok);
        QCOMPARE(static_cast<int>(rig.axis.status().speedRatio * 100), percent);
    }
}

void AxisMotionTest::velocityRatioOutOfRangeIsRefused_data()
{
    QTest::addColumn<int>("percent");
    QTest::newRow("below nothing") << -1;
    QTest::newRow("above tenfold") << 1001;
    QTest::newRow("far away") << -32768;
}

void AxisMotionTest::velocityRatioOutOfRangeIsRefused()
{
    QFETCH(int, percent);
    AxisRig rig;
    QCOMPARE(rig.axis.setVelocityRatio(percent), Diagnosis::ratioOutOfRange);
    QCOMPARE(rig.axis.status().speedRatio, 1.0);
}

void AxisMotionTest::stopsAreNotScaled()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    rig.axis.stop(100, 0);
    rig.axis.setVelocityRatio(1);
    rig.run(990);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    rig.run(20);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisMotionTest::rotaryAxesShowOneTurn()
{
    AxisRig rig(AxisValues{ { "ModeSet", "TRUE" }, { "RotationPeriod", "360" }, { "SoftLimitEnable", "TRUE" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(-400, 10000));
    rig.run(20000);
    const AxisRef ref = rig.axis.status();
    QVERIFY(ref.setPosition >= 0 && ref.setPosition < 360);
    QVERIFY(ref.actualPosition >= 0 && ref.actualPosition < 360);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    QVERIFY(rig.axis.setPoint().position < -7000);
}

void AxisMotionTest::rotaryAxesTakeTheShorterWay_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("target");
    QTest::addColumn<double>("travelled");
    QTest::newRow("a little on") << 10.0 << 50.0 << 40.0;
    QTest::newRow("back over zero") << 10.0 << 350.0 << -20.0;
    QTest::newRow("on over zero") << 350.0 << 10.0 << 20.0;
    QTest::newRow("a target of more than a turn") << 0.0 << 730.0 << 10.0;
    QTest::newRow("a negative target") << 0.0 << -90.0 << -90.0;
}

void AxisMotionTest::rotaryAxesTakeTheShorterWay()
{
    QFETCH(double, from);
    QFETCH(double, target);
    QFETCH(double, travelled);
    AxisRig rig(AxisValues{ { "ModeSet", "TRUE" } });
    rig.enabled();
    rig.axis.setPosition(from);
    QCOMPARE(rig.axis.moveAbsolute(target, numbers(100, 1000)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY(std::fabs(rig.axis.setPoint().position - from - travelled) < 1e-9);
    QCOMPARE(rig.axis.moveRelative(720, numbers(100, 1000)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY(std::fabs(rig.axis.setPoint().position - from - travelled - 720) < 1e-9);
}

void AxisMotionTest::actualFollowsWithALag()
{
    AxisRig rig({}, R"({"gain": 50})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(2000);
    const double behind = rig.axis.setPoint().position - rig.axis.shownActualPosition();
    QVERIFY2(std::fabs(behind - 100.0 / 50) < 0.06, qPrintable(QString::number(behind)));
    QVERIFY(std::fabs(rig.axis.status().actualVelocity - 100) < 0.5);
}

void AxisMotionTest::aMillionCyclesLoseNoPulse_data()
{
    QTest::addColumn<double>("velocity");
    QTest::addColumn<QString>("numerator");
    QTest::addColumn<QString>("denominator");
    QTest::newRow("whole pulses") << 10.0 << QStringLiteral("1") << QStringLiteral("1");
    QTest::newRow("a third of a pulse a unit") << 7.0 << QStringLiteral("1") << QStringLiteral("30000");
    QTest::newRow("an odd gear, to the left") << -3.3 << QStringLiteral("17") << QStringLiteral("23");
    QTest::newRow("slower than a pulse a cycle") << 0.0123 << QStringLiteral("355") << QStringLiteral("113");
}

void AxisMotionTest::aMillionCyclesLoseNoPulse()
{
    QFETCH(double, velocity);
    QFETCH(QString, numerator);
    QFETCH(QString, denominator);
    AxisRig rig(AxisValues{ { "UseGearEnable", "TRUE" }, { "GearRatioMolecule", numerator.toStdString() },
                    { "GearRatioParent", denominator.toStdString() } },
        R"({"lowest": null, "highest": null})");
    rig.enabled();
    const double perUnit = 10000 * numerator.toDouble() / denominator.toDouble();
    QVERIFY(std::fabs(rig.settings.pulsesPerUnit - perUnit) < 1e-9 * perUnit);
    QCOMPARE(rig.axis.moveVelocity(numbers(velocity, 100)), Diagnosis::ok);
    rig.run(1000000);
    const double ramp = std::fabs(velocity) / 100;
    const double expected = velocity * (1000 - ramp / 2);
    QVERIFY(std::fabs(rig.axis.setPoint().position - expected) < 1e-6);
    QVERIFY2(std::fabs(rig.axis.pulses() - expected * perUnit) <= 1,
        qPrintable(QStringLiteral("%1 pulses instead of %2").arg(rig.axis.pulses()).arg(expected * perUnit)));
}

void AxisMotionTest::emergencyStopBrakesAtTheEmergencyRate()
{
    AxisRig rig(AxisValues{ { "AxisErrorDec", "1000" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    rig.axis.emergencyStop();
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    rig.run(1);
    QVERIFY(rig.axis.setPoint().velocity < 100);
    rig.run(97);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    rig.run(4);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    rig.axis.emergencyStop();
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    AxisRig disabled;
    disabled.axis.emergencyStop();
    QCOMPARE(disabled.axis.state(), AxisState::Disabled);
}

void AxisMotionTest::virtualAxesFollowExactly()
{
    AxisRig rig(AxisValues{ { "AxisType", "Axis_Virtual" }, { "HomeMode", "Homing_35" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    QVERIFY(std::fabs(rig.axis.setPoint().position - rig.axis.shownActualPosition()) <= 1e-4);
    AxisRig index(AxisValues{ { "AxisType", "Axis_Virtual" }, { "HomeMode", "Homing_33" } });
    QCOMPARE(index.enabled().axis.home(), Diagnosis::homingSignalMissing);
}

void AxisMotionTest::encodersCannotBeMoved()
{
    AxisRig rig(AxisValues{ { "AxisType", "Axis_Encoder" } });
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::noOutput);
    rig.run(100);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QCOMPARE(rig.axis.moveAbsolute(1, numbers(1)), Diagnosis::noOutput);
    QCOMPARE(rig.axis.home(), Diagnosis::noOutput);
    QCOMPARE(rig.axis.stop(1, 1), Diagnosis::noOutput);
}

void AxisMotionTest::statusTellsWhatTheAxisDoes()
{
    AxisRig rig(AxisValues{ { "OrgSignalEnable", "TRUE" } }, R"({"homeFrom": 5, "homeTo": 6})");
    rig.enabled();
    QCOMPARE(rig.axis.status().communication, std::uint8_t(1));
    rig.axis.moveAbsolute(5.5, numbers(10, 50, 50));
    rig.run(100);
    const AxisRef accelerating = rig.axis.status();
    QCOMPARE(accelerating.axisState, std::uint16_t(4));
    QVERIFY(std::fabs(accelerating.setVelocity - 5) < 0.1);
    QCOMPARE(accelerating.setAcceleration, 50.0);
    QVERIFY(accelerating.actualVelocity > 0 && accelerating.actualVelocity < accelerating.setVelocity);
    QVERIFY(accelerating.actualPosition < accelerating.setPosition);
    QVERIFY(accelerating.setTorque > 0);
    QVERIFY(accelerating.actualAcceleration > 0);
    QCOMPARE(accelerating.homeSwitch, std::uint8_t(0));
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY(rig.runUntilStill());
    QCOMPARE(rig.axis.status().homeSwitch, std::uint8_t(1));
    QCOMPARE(rig.axis.status().setVelocity, 0.0);
}

void AxisMotionTest::reverseTurnsThePulsesRound()
{
    AxisRig rig(AxisValues{ { "ReverseEnable", "TRUE" } });
    rig.enabled();
    rig.axis.moveAbsolute(2, numbers(10));
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.pulses(), std::int64_t(-20000));
}

void AxisMotionTest::enablingWaitsUntilTheMachineStands()
{
    AxisRig rig(AxisValues{ { "AxisErrorDec", "20" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(40, 1000));
    rig.run(1000);
    rig.axis.setEnable(false);
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::ok);
    rig.run(1000);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    rig.run(1200);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisMotionTest::jerkLimitedMovesStayWithinTheirJerk()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.moveAbsolute(100, numbers(50, 200, 200, 1000));
    double acceleration = 0;
    while (rig.axis.state() == AxisState::DiscreteMotion) {
        rig.run(1);
        const double now = rig.axis.setPoint().acceleration;
        QVERIFY(std::fabs(now - acceleration) <= 1000 * 0.001 + 1e-6);
        acceleration = now;
    }
}

QTEST_APPLESS_MAIN(AxisMotionTest)
#include "AxisMotionTest.moc"
