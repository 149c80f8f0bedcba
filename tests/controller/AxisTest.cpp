#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Brings an axis into each state by what a user can do.
void bringTo(AxisRig& rig, AxisState state)
{
    if (state != AxisState::Disabled)
        rig.enabled();
    switch (state) {
    case AxisState::Disabled:
    case AxisState::StandStill:
    case AxisState::SynchronizedMotion:
        return;
    case AxisState::DiscreteMotion:
        rig.axis.moveAbsolute(500, numbers(20));
        break;
    case AxisState::ContinuousMotion:
        rig.axis.moveVelocity(numbers(20));
        break;
    case AxisState::Homing:
        rig.axis.home();
        break;
    case AxisState::Stopping:
        rig.axis.moveVelocity(numbers(20));
        rig.run(500);
        rig.axis.stop(5, 0);
        break;
    case AxisState::ErrorStop:
        rig.axis.machine().faults.driveError = 7;
        rig.run(1);
        rig.axis.machine().faults.driveError = 0;
        rig.run(100);
        return;
    }
    rig.run(300);
}

AxisValues homingRecord()
{
    return { { "HomeMode", "Homing_24" }, { "OrgSignalEnable", "TRUE" }, { "PosLimitEnable", "TRUE" } };
}
} // namespace

Q_DECLARE_METATYPE(AxisState)

class AxisTest : public QObject {
    Q_OBJECT

private slots:
    void startsDisabled();
    void enableLeadsToStandStillOnceTheDriveReports();
    void disableLeadsToDisabledFromEverywhere_data();
    void disableLeadsToDisabledFromEverywhere();
    void errorsLeadToErrorStopFromEverywhere_data();
    void errorsLeadToErrorStopFromEverywhere();
    void resetLeavesErrorStopByItsPower();
    void resetWaitsForTheCause();
    void homeLeadsThroughHomingToStandStill();
    void movesLeadToDiscreteMotionAndStandStill_data();
    void movesLeadToDiscreteMotionAndStandStill();
    void velocityLeadsToContinuousMotionAndStays();
    void stopLeadsThroughStoppingToStandStill_data();
    void stopLeadsThroughStoppingToStandStill();
    void statesRefuseWhatTheyMust_data();
    void statesRefuseWhatTheyMust();
    void unusableNumbersAreRefused_data();
    void unusableNumbersAreRefused();
    void aRefusedCommandChangesNothing();
    void readsAndParametersLeaveTheStateAlone_data();
    void readsAndParametersLeaveTheStateAlone();
    void stopAndTheEndOfAJogNeverFailOnTheirArguments_data();
    void stopAndTheEndOfAJogNeverFailOnTheirArguments();
    void jogTakesTheButtonsDirectionAndABoundedSpeed_data();
    void jogTakesTheButtonsDirectionAndABoundedSpeed();
    void endOfAJogWithoutAJogTouchesNothing();
    void aMoveTakesTheMagnitudeOfItsVelocity();
    void velocityAndJogTakeOverFromAMove_data();
    void velocityAndJogTakeOverFromAMove();
    void aBrokenDriveIsNotSwitchedOn_data();
    void aBrokenDriveIsNotSwitchedOn();
};

void AxisTest::startsDisabled()
{
    AxisRig rig;
    rig.run(10);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QCOMPARE(rig.axis.status().axisState, std::uint16_t(0));
    QVERIFY(!rig.axis.isPowered());
}

void AxisTest::enableLeadsToStandStillOnceTheDriveReports()
{
    AxisRig rig({}, R"({"enableDelay": 0.02})");
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::ok);
    rig.run(18);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    rig.run(4);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisTest::disableLeadsToDisabledFromEverywhere_data()
{
    QTest::addColumn<AxisState>("state");
    QTest::newRow("StandStill") << AxisState::StandStill;
    QTest::newRow("Stopping") << AxisState::Stopping;
    QTest::newRow("DiscreteMotion") << AxisState::DiscreteMotion;
    QTest::newRow("ContinuousMotion") << AxisState::ContinuousMotion;
    QTest::newRow("Homing") << AxisState::Homing;
}

void AxisTest::disableLeadsToDisabledFromEverywhere()
{
    QFETCH(AxisState, state);
    AxisRig rig(homingRecord());
    bringTo(rig, state);
    QCOMPARE(rig.axis.state(), state);
    QCOMPARE(rig.axis.setEnable(false), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QVERIFY(rig.runUntilStill(5));
    const double place = rig.axis.machine().position();
    rig.enabled();
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    rig.run(1000);
    QVERIFY2(std::fabs(rig.axis.machine().position() - place) < 1e-3, "the aborted command must not go on");
}

void AxisTest::errorsLeadToErrorStopFromEverywhere_data()
{
    disableLeadsToDisabledFromEverywhere_data();
}

void AxisTest::errorsLeadToErrorStopFromEverywhere()
{
    QFETCH(AxisState, state);
    AxisRig rig(homingRecord());
    bringTo(rig, state);
    rig.axis.machine().faults.driveError = 99;
    rig.run(1);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    QCOMPARE(rig.axis.error(), Diagnosis::driveError);
    QCOMPARE(rig.axis.status().servoError, std::int16_t(99));
    QCOMPARE(rig.axis.setEnable(false), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
}

void AxisTest::resetLeavesErrorStopByItsPower()
{
    AxisRig off;
    bringTo(off, AxisState::ErrorStop);
    QVERIFY(!off.axis.isPowered());
    QCOMPARE(off.axis.reset(), Diagnosis::ok);
    QCOMPARE(off.axis.state(), AxisState::Disabled);
    QCOMPARE(off.axis.error(), Diagnosis::ok);

    AxisRig on(AxisValues{ { "FollowErrorThreshold", "0.5" } });
    on.enabled();
    on.axis.machine().faults.blocked = true;
    on.axis.moveVelocity(numbers(20));
    QVERIFY(on.runUntilState(AxisState::ErrorStop));
    QVERIFY(on.axis.isPowered());
    on.axis.machine().faults.blocked = false;
    QVERIFY(on.runUntilStill());
    QCOMPARE(on.axis.reset(), Diagnosis::ok);
    QCOMPARE(on.axis.state(), AxisState::StandStill);
}

void AxisTest::resetWaitsForTheCause()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.machine().faults.powerLost = true;
    rig.run(1);
    QCOMPARE(rig.axis.error(), Diagnosis::powerLost);
    QCOMPARE(rig.axis.status().communication, std::uint8_t(0));
    QCOMPARE(rig.axis.reset(), Diagnosis::causeNotGone);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    rig.axis.machine().faults.powerLost = false;
    QCOMPARE(rig.axis.reset(), Diagnosis::ok);

    AxisRig moving(AxisValues{ { "FollowErrorThreshold", "0.1" }, { "AxisErrorDec", "10" } });
    moving.enabled();
    moving.axis.moveVelocity(numbers(50, 1000));
    QVERIFY(moving.runUntilState(AxisState::ErrorStop));
    QCOMPARE(moving.axis.reset(), Diagnosis::causeNotGone);
    QVERIFY(moving.runUntilStill());
    QCOMPARE(moving.axis.reset(), Diagnosis::ok);
}

void AxisTest::homeLeadsThroughHomingToStandStill()
{
    AxisRig rig(homingRecord());
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Homing);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
}

void AxisTest::movesLeadToDiscreteMotionAndStandStill_data()
{
    QTest::addColumn<AxisState>("state");
    QTest::addColumn<bool>("relative");
    for (const bool relative : { false, true }) {
        const char* kind = relative ? "relative" : "absolute";
        QTest::newRow(qPrintable(QStringLiteral("%1 from StandStill").arg(QLatin1String(kind))))
            << AxisState::StandStill << relative;
        QTest::newRow(qPrintable(QStringLiteral("%1 from DiscreteMotion").arg(QLatin1String(kind))))
            << AxisState::DiscreteMotion << relative;
        QTest::newRow(qPrintable(QStringLiteral("%1 from ContinuousMotion").arg(QLatin1String(kind))))
            << AxisState::ContinuousMotion << relative;
    }
}

void AxisTest::movesLeadToDiscreteMotionAndStandStill()
{
    QFETCH(AxisState, state);
    QFETCH(bool, relative);
    AxisRig rig;
    bringTo(rig, state);
    QCOMPARE(rig.axis.state(), state);
    const double from = rig.axis.setPoint().position;
    const double target = relative ? from + 60 : 60;
    QCOMPARE(relative ? rig.axis.moveRelative(60, numbers(30)) : rig.axis.moveAbsolute(60, numbers(30)), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::DiscreteMotion);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), target);
    QVERIFY(rig.runUntilStill());
    QVERIFY(std::fabs(rig.axis.shownActualPosition() - target) < 2 / rig.settings.pulsesPerUnit);
}

void AxisTest::velocityLeadsToContinuousMotionAndStays()
{
    AxisRig rig;
    rig.enabled();
    QCOMPARE(rig.axis.moveVelocity(numbers(-12)), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    rig.run(5000);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    QCOMPARE(rig.axis.setPoint().velocity, -12.0);
}

void AxisTest::stopLeadsThroughStoppingToStandStill_data()
{
    QTest::addColumn<AxisState>("state");
    QTest::newRow("StandStill") << AxisState::StandStill;
    QTest::newRow("DiscreteMotion") << AxisState::DiscreteMotion;
    QTest::newRow("ContinuousMotion") << AxisState::ContinuousMotion;
    QTest::newRow("Homing") << AxisState::Homing;
}

void AxisTest::stopLeadsThroughStoppingToStandStill()
{
    QFETCH(AxisState, state);
    AxisRig rig(homingRecord());
    bringTo(rig, state);
    QCOMPARE(rig.axis.stop(40, 0), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    QVERIFY(rig.runUntilState(AxisState::StandStill, 5));
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
}

void AxisTest::statesRefuseWhatTheyMust_data()
{
    QTest::addColumn<AxisState>("state");
    QTest::addColumn<std::int16_t>("code");
    QTest::newRow("Disabled") << AxisState::Disabled << Diagnosis::notEnabled;
    QTest::newRow("ErrorStop") << AxisState::ErrorStop << Diagnosis::notAllowedInState;
    QTest::newRow("Stopping") << AxisState::Stopping << Diagnosis::notAllowedInState;
}

void AxisTest::statesRefuseWhatTheyMust()
{
    QFETCH(AxisState, state);
    QFETCH(std::int16_t, code);
    AxisRig rig(homingRecord());
    bringTo(rig, state);
    QCOMPARE(rig.axis.state(), state);
    QCOMPARE(rig.axis.moveAbsolute(5, numbers(10)), code);
    QCOMPARE(rig.axis.moveRelative(5, numbers(10)), code);
    QCOMPARE(rig.axis.moveVelocity(numbers(10)), code);
    QCOMPARE(rig.axis.startJog(1, numbers(10)), code);
    QCOMPARE(rig.axis.home(), code);
    if (state != AxisState::Stopping) {
        QCOMPARE(rig.axis.stop(10, 0), code);
        QCOMPARE(rig.axis.setPosition(1), Diagnosis::setPositionNotAllowed);
    }
    QCOMPARE(rig.axis.state(), state);
    // Home is for an axis that stands.
    AxisRig moving(homingRecord());
    bringTo(moving, AxisState::ContinuousMotion);
    QCOMPARE(moving.axis.home(), Diagnosis::notAllowedInState);
    AxisRig faulty;
    bringTo(faulty, AxisState::ErrorStop);
    QCOMPARE(faulty.axis.setEnable(true), Diagnosis::notAllowedInState);
}

void AxisTest::unusableNumbersAreRefused_data()
{
    QTest::addColumn<double>("velocity");
    QTest::addColumn<double>("acceleration");
    QTest::addColumn<double>("deceleration");
    QTest::addColumn<double>("jerk");
    QTest::addColumn<std::int16_t>("move");
    QTest::addColumn<std::int16_t>("atVelocity");
    const auto add = [](const char* name, const MotionNumbers& n, std::int16_t move, std::int16_t atVelocity) {
        QTest::newRow(name) << n.velocity << n.acceleration << n.deceleration << n.jerk << move << atVelocity;
    };
    add("no velocity", numbers(0), Diagnosis::velocityInvalid, Diagnosis::velocityInvalid);
    add("velocity that is no number", numbers(noNumber), Diagnosis::velocityInvalid, Diagnosis::velocityInvalid);
    add("endless velocity", numbers(infinity), Diagnosis::velocityInvalid, Diagnosis::velocityInvalid);
    add("negative velocity", numbers(-10), Diagnosis::ok, Diagnosis::ok);
    add("velocity over the maximum", numbers(1000.5), Diagnosis::velocityTooHigh, Diagnosis::velocityTooHigh);
    add("negative velocity over the maximum", numbers(-1000.5), Diagnosis::velocityTooHigh, Diagnosis::velocityTooHigh);
    add("velocity at the maximum", numbers(1000), Diagnosis::ok, Diagnosis::ok);
    add("no acceleration", numbers(10, 0), Diagnosis::accelerationInvalid, Diagnosis::accelerationInvalid);
    add("negative acceleration", numbers(10, -1), Diagnosis::accelerationInvalid, Diagnosis::accelerationInvalid);
    add("acceleration that is no number", numbers(10, noNumber), Diagnosis::accelerationInvalid,
        Diagnosis::accelerationInvalid);
    add("no deceleration", numbers(10, 10, 0), Diagnosis::decelerationInvalid, Diagnosis::decelerationInvalid);
    add("endless deceleration", numbers(10, 10, infinity), Diagnosis::decelerationInvalid,
        Diagnosis::decelerationInvalid);
    add("negative jerk", numbers(10, 10, 10, -1), Diagnosis::jerkInvalid, Diagnosis::jerkInvalid);
    add("jerk that is no number", numbers(10, 10, 10, noNumber), Diagnosis::jerkInvalid, Diagnosis::jerkInvalid);
    add("acceleration over the maximum", numbers(10, 500001), Diagnosis::accelerationTooHigh,
        Diagnosis::accelerationTooHigh);
    add("deceleration over the maximum", numbers(10, 10, 500001), Diagnosis::accelerationTooHigh,
        Diagnosis::accelerationTooHigh);
}

void AxisTest::unusableNumbersAreRefused()
{
    QFETCH(double, velocity);
    QFETCH(double, acceleration);
    QFETCH(double, deceleration);
    QFETCH(double, jerk);
    QFETCH(std::int16_t, move);
    QFETCH(std::int16_t, atVelocity);
    const MotionNumbers given{ velocity, acceleration, deceleration, jerk };
    AxisRig absolute;
    QCOMPARE(absolute.enabled().axis.moveAbsolute(5, given), move);
    QCOMPARE(absolute.axis.state(), move == 0 ? AxisState::DiscreteMotion : AxisState::StandStill);
    AxisRig relative;
    QCOMPARE(relative.enabled().axis.moveRelative(5, given), move);
    AxisRig continuous;
    QCOMPARE(continuous.enabled().axis.moveVelocity(given), atVelocity);
    QCOMPARE(continuous.axis.state(), atVelocity == 0 ? AxisState::ContinuousMotion : AxisState::StandStill);
    AxisRig jog;
    // A jog is bounded, not refused, when it is too fast.
    const bool fast = atVelocity == Diagnosis::velocityTooHigh;
    QCOMPARE(jog.enabled().axis.startJog(1, given), fast ? Diagnosis::ok : atVelocity);
    AxisRig far;
    QCOMPARE(far.enabled().axis.moveAbsolute(noNumber, numbers(10)), Diagnosis::positionInvalid);
    QCOMPARE(far.axis.moveRelative(infinity, numbers(10)), Diagnosis::positionInvalid);
    QCOMPARE(far.axis.moveAbsolute(1e300, numbers(10)), Diagnosis::positionInvalid);
    QCOMPARE(far.axis.setPosition(noNumber), Diagnosis::positionInvalid);
    QCOMPARE(far.axis.setHomeOffset(-infinity), Diagnosis::positionInvalid);
}

void AxisTest::aRefusedCommandChangesNothing()
{
    AxisRig rig;
    AxisRig same;
    for (AxisRig* each : { &rig, &same }) {
        each->enabled();
        each->axis.moveAbsolute(50, numbers(20));
        each->run(700);
    }
    QCOMPARE(rig.axis.moveAbsolute(10, numbers(0)), Diagnosis::velocityInvalid);
    QCOMPARE(rig.axis.moveVelocity(numbers(5000)), Diagnosis::velocityTooHigh);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    for (int i = 0; i < 3000; ++i) {
        rig.run(1);
        same.run(1);
        QCOMPARE(rig.axis.setPoint().position, same.axis.setPoint().position);
        QCOMPARE(rig.axis.state(), same.axis.state());
    }
}

void AxisTest::readsAndParametersLeaveTheStateAlone_data()
{
    disableLeadsToDisabledFromEverywhere_data();
}

void AxisTest::readsAndParametersLeaveTheStateAlone()
{
    QFETCH(AxisState, state);
    AxisRig rig(homingRecord());
    bringTo(rig, state);
    rig.axis.status();
    QCOMPARE(rig.axis.state(), state);
    rig.axis.setPosition(3);
    QCOMPARE(rig.axis.state(), state);
    QCOMPARE(rig.axis.setHomeOffset(3), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), state);
    QCOMPARE(rig.axis.setVelocityRatio(50), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), state);
}

void AxisTest::stopAndTheEndOfAJogNeverFailOnTheirArguments_data()
{
    QTest::addColumn<double>("deceleration");
    QTest::addColumn<double>("jerk");
    QTest::newRow("no deceleration") << 0.0 << 0.0;
    QTest::newRow("negative deceleration") << -10.0 << 0.0;
    QTest::newRow("deceleration that is no number") << noNumber << 0.0;
    QTest::newRow("endless deceleration") << infinity << 0.0;
    QTest::newRow("negative jerk") << 0.0 << -5.0;
    QTest::newRow("jerk that is no number") << 0.0 << noNumber;
}

void AxisTest::stopAndTheEndOfAJogNeverFailOnTheirArguments()
{
    QFETCH(double, deceleration);
    QFETCH(double, jerk);
    AxisRig stopped(AxisValues{ { "LimitDec", "250" } });
    stopped.enabled();
    stopped.axis.moveVelocity(numbers(100, 1000));
    stopped.run(500);
    QCOMPARE(stopped.axis.stop(deceleration, jerk), Diagnosis::ok);
    stopped.run(395);
    QCOMPARE(stopped.axis.state(), AxisState::Stopping);
    stopped.run(10);
    QCOMPARE(stopped.axis.state(), AxisState::StandStill);
    AxisRig jogged(AxisValues{ { "LimitDec", "250" } });
    jogged.enabled();
    jogged.axis.startJog(-1, numbers(100, 1000));
    jogged.run(500);
    QCOMPARE(jogged.axis.endJog(-1, deceleration, jerk), Diagnosis::ok);
    jogged.run(395);
    QVERIFY(jogged.axis.setPoint().velocity != 0);
    jogged.run(10);
    QCOMPARE(jogged.axis.setPoint().velocity, 0.0);
    QCOMPARE(jogged.axis.state(), AxisState::StandStill);
}

void AxisTest::jogTakesTheButtonsDirectionAndABoundedSpeed_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<double>("speed");
    QTest::addColumn<double>("expected");
    QTest::newRow("to the right") << 1 << 10.0 << 10.0;
    QTest::newRow("to the left") << -1 << 10.0 << -10.0;
    QTest::newRow("to the right with a negative speed") << 1 << -10.0 << 10.0;
    QTest::newRow("to the left with a negative speed") << -1 << -10.0 << -10.0;
    QTest::newRow("faster than the jog maximum") << 1 << 400.0 << 50.0;
}

void AxisTest::jogTakesTheButtonsDirectionAndABoundedSpeed()
{
    QFETCH(int, direction);
    QFETCH(double, speed);
    QFETCH(double, expected);
    AxisRig rig(AxisValues{ { "JogMaxVel", "50" } });
    rig.enabled();
    QCOMPARE(rig.axis.startJog(direction, numbers(speed, 1000, 1000)), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, expected);
    rig.axis.setVelocityRatio(1000);
    rig.run(500);
    QVERIFY(std::fabs(rig.axis.setPoint().velocity) <= 50);
    // The ratio scales what the bound has left.
    rig.axis.setVelocityRatio(50);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, expected / 2);
}

void AxisTest::endOfAJogWithoutAJogTouchesNothing()
{
    AxisRig rig;
    rig.enabled();
    QCOMPARE(rig.axis.endJog(1, 10, 0), Diagnosis::ok);
    rig.axis.moveVelocity(numbers(20, 1000));
    rig.run(500);
    QCOMPARE(rig.axis.endJog(1, 10, 0), Diagnosis::ok);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, 20.0);
    rig.axis.startJog(1, numbers(30, 1000));
    rig.run(500);
    QCOMPARE(rig.axis.endJog(-1, 10, 0), Diagnosis::ok);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, 30.0);
    AxisRig disabled;
    QCOMPARE(disabled.axis.endJog(1, 10, 0), Diagnosis::ok);
}

void AxisTest::aMoveTakesTheMagnitudeOfItsVelocity()
{
    AxisRig rig;
    rig.enabled();
    QCOMPARE(rig.axis.moveAbsolute(30, numbers(-20)), Diagnosis::ok);
    rig.run(500);
    QCOMPARE(rig.axis.setPoint().velocity, 20.0);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 30.0);
    QCOMPARE(rig.axis.moveRelative(-10, numbers(-20)), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.shownSetPosition(), 20.0);
}

void AxisTest::velocityAndJogTakeOverFromAMove_data()
{
    QTest::addColumn<bool>("jog");
    QTest::newRow("velocity move") << false;
    QTest::newRow("jog") << true;
}

void AxisTest::velocityAndJogTakeOverFromAMove()
{
    QFETCH(bool, jog);
    AxisRig rig;
    bringTo(rig, AxisState::DiscreteMotion);
    QCOMPARE(rig.axis.state(), AxisState::DiscreteMotion);
    QCOMPARE(jog ? rig.axis.startJog(-1, numbers(15)) : rig.axis.moveVelocity(numbers(-15)), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    rig.run(3000);
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    QCOMPARE(rig.axis.setPoint().velocity, -15.0);
}

void AxisTest::aBrokenDriveIsNotSwitchedOn_data()
{
    QTest::addColumn<bool>("powerLost");
    QTest::addColumn<std::int16_t>("code");
    QTest::newRow("without power") << true << Diagnosis::powerLost;
    QTest::newRow("with a drive error") << false << Diagnosis::driveError;
}

void AxisTest::aBrokenDriveIsNotSwitchedOn()
{
    QFETCH(bool, powerLost);
    QFETCH(std::int16_t, code);
    AxisRig rig;
    rig.axis.machine().faults.powerLost = powerLost;
    rig.axis.machine().faults.driveError = powerLost ? 0 : 5;
    rig.run(10);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QCOMPARE(rig.axis.setEnable(true), code);
    rig.run(100);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QVERIFY(!rig.axis.isPowered());
    rig.axis.machine().faults = {};
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
}

QTEST_APPLESS_MAIN(AxisTest)
#include "AxisTest.moc"
