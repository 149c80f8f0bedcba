#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Enter = std::function<void(AxisRig&)>;

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
        rig.axis.machine().driveError = 7;
        rig.run(1);
        rig.axis.machine().driveError = 0;
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
    rig.axis.machine().driveError = 99;
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
    on.axis.machine().blocked = true;
    on.axis.moveVelocity(numbers(20));
    QVERIFY(on.runUntilState(AxisState::ErrorStop));
    QVERIFY(on.axis.isPowered());
    on.axis.machine().blocked = false;
    QVERIFY(on.runUntilStill());
    QCOMPARE(on.axis.reset(), Diagnosis::ok);
    QCOMPARE(on.axis.state(), AxisState::StandStill);
}

void AxisTest::resetWaitsForTheCause()
{
    AxisRig rig;
    rig.enabled();
    rig.axis.machine().powerLost = true;
    rig.run(1);
    QCOMPARE(rig.axis.error(), Diagnosis::powerLost);
    QCOMPARE(rig.axis.status().communication, std::uint8_t(0));
    QCOMPARE(rig.axis.reset(), Diagnosis::causeNotGone);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    rig.axis.machine().powerLost = false;
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
    add("negative velocity", numbers(-10), Diagnosis::velocityInvalid, Diagnosis::ok);
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

void AxisTest::targetsBeyondSoftLimitsAreRefused()
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

void AxisTest::motionStopsAtTheSoftLimit_data()
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

void AxisTest::motionStopsAtTheSoftLimit()
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

void AxisTest::aMoveToTheLimitIsNoError()
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

void AxisTest::motionStopsAtTheHardLimit_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("errorStop");
    QTest::newRow("right, without an error") << 1 << false;
    QTest::newRow("left, without an error") << -1 << false;
    QTest::newRow("right, with an error") << 1 << true;
    QTest::newRow("left, with an error") << -1 << true;
}

void AxisTest::motionStopsAtTheHardLimit()
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

void AxisTest::offALimitTheWayBackIsFree()
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

void AxisTest::followingErrorIsSupervised()
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

void AxisTest::powerLossCoastsOut()
{
    AxisRig rig(AxisValues{ { "AxisErrorDec", "100" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(50, 1000));
    rig.run(1000);
    rig.axis.machine().powerLost = true;
    rig.run(100);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    QVERIFY(rig.axis.machine().velocity() > 30);
    rig.run(600);
    QCOMPARE(rig.axis.machine().velocity(), 0.0);
}

void AxisTest::setPositionMovesNothing()
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

void AxisTest::setPositionInMotionKeepsTheMotion()
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

void AxisTest::velocityRatioScalesTheVelocityOnly()
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

void AxisTest::velocityRatioOfNothingHoldsTheCommand()
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

void AxisTest::velocityRatioNeverJumps()
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

void AxisTest::velocityRatioReadsBackToThePercent()
{
    AxisRig rig;
    for (int percent = 0; percent <= 1000; ++percent) {
        QCOMPARE(rig.axis.setVelocityRatio(percent), Diagnosis::ok);
        QCOMPARE(static_cast<int>(rig.axis.status().speedRatio * 100), percent);
    }
}

void AxisTest::velocityRatioOutOfRangeIsRefused_data()
{
    QTest::addColumn<int>("percent");
    QTest::newRow("below nothing") << -1;
    QTest::newRow("above tenfold") << 1001;
    QTest::newRow("far away") << -32768;
}

void AxisTest::velocityRatioOutOfRangeIsRefused()
{
    QFETCH(int, percent);
    AxisRig rig;
    QCOMPARE(rig.axis.setVelocityRatio(percent), Diagnosis::ratioOutOfRange);
    QCOMPARE(rig.axis.status().speedRatio, 1.0);
}

void AxisTest::stopsAreNotScaled()
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

void AxisTest::rotaryAxesShowOneTurn()
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

void AxisTest::rotaryAxesTakeTheShorterWay_data()
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

void AxisTest::rotaryAxesTakeTheShorterWay()
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

void AxisTest::actualFollowsWithALag()
{
    AxisRig rig({}, R"({"gain": 50})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(2000);
    const double behind = rig.axis.setPoint().position - rig.axis.shownActualPosition();
    QVERIFY2(std::fabs(behind - 100.0 / 50) < 0.06, qPrintable(QString::number(behind)));
    QVERIFY(std::fabs(rig.axis.status().actualVelocity - 100) < 0.5);
}

void AxisTest::aMillionCyclesLoseNoPulse_data()
{
    QTest::addColumn<double>("velocity");
    QTest::addColumn<QString>("numerator");
    QTest::addColumn<QString>("denominator");
    QTest::newRow("whole pulses") << 10.0 << QStringLiteral("1") << QStringLiteral("1");
    QTest::newRow("a third of a pulse a unit") << 7.0 << QStringLiteral("1") << QStringLiteral("30000");
    QTest::newRow("an odd gear, to the left") << -3.3 << QStringLiteral("17") << QStringLiteral("23");
    QTest::newRow("slower than a pulse a cycle") << 0.0123 << QStringLiteral("355") << QStringLiteral("113");
}

void AxisTest::aMillionCyclesLoseNoPulse()
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

void AxisTest::emergencyStopBrakesAtTheEmergencyRate()
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

void AxisTest::virtualAxesFollowExactly()
{
    AxisRig rig(AxisValues{ { "AxisType", "Axis_Virtual" }, { "HomeMode", "Homing_35" } });
    rig.enabled();
    rig.axis.moveVelocity(numbers(100, 1000));
    rig.run(500);
    QVERIFY(std::fabs(rig.axis.setPoint().position - rig.axis.shownActualPosition()) <= 1e-4);
    AxisRig index(AxisValues{ { "AxisType", "Axis_Virtual" }, { "HomeMode", "Homing_33" } });
    QCOMPARE(index.enabled().axis.home(), Diagnosis::homingSignalMissing);
}

void AxisTest::encodersCannotBeMoved()
{
    AxisRig rig(AxisValues{ { "AxisType", "Axis_Encoder" } });
    QCOMPARE(rig.axis.setEnable(true), Diagnosis::noOutput);
    rig.run(100);
    QCOMPARE(rig.axis.state(), AxisState::Disabled);
    QCOMPARE(rig.axis.moveAbsolute(1, numbers(1)), Diagnosis::noOutput);
    QCOMPARE(rig.axis.home(), Diagnosis::noOutput);
    QCOMPARE(rig.axis.stop(1, 1), Diagnosis::noOutput);
}

void AxisTest::statusTellsWhatTheAxisDoes()
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

void AxisTest::reverseTurnsThePulsesRound()
{
    AxisRig rig(AxisValues{ { "ReverseEnable", "TRUE" } });
    rig.enabled();
    rig.axis.moveAbsolute(2, numbers(10));
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.pulses(), std::int64_t(-20000));
}

void AxisTest::enablingWaitsUntilTheMachineStands()
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

void AxisTest::jerkLimitedMovesStayWithinTheirJerk()
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

QTEST_APPLESS_MAIN(AxisTest)
#include "AxisTest.moc"
