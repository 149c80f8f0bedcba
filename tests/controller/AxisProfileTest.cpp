#include "tests/controller/ClosedForm.h"
#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <kdl/velocityprofile_trap.hpp>
#include <kdl/velocityprofile_traphalf.hpp>

#include <QtTest>

#include <cmath>

Q_DECLARE_METATYPE(MotionNumbers)

// What an axis does cycle by cycle on a simulated clock, held against closed forms and against the trapezoids of a
// library. The ramps and the jerk of each command differ, so that none can stand in for another.
namespace {
enum class Way { Velocity, Jog };

/// Whether the axis follows the motion from now on, to its end and a little beyond; gives the first difference.
QString difference(AxisRig& rig, const ClosedForm& expected, bool jerkLimited)
{
    const int cycles = static_cast<int>(expected.duration() / AxisRig::cycle) + 20;
    for (int i = 1; i <= cycles; ++i) {
        rig.run(1);
        const double time = i * AxisRig::cycle;
        const MotionState should = expected.at(time);
        const AxisRef is = rig.axis.status();
        // Where there is no jerk limit the acceleration jumps, at a time that need not be that of a cycle.
        const bool fine = std::fabs(is.setPosition - should.position) < 1e-8
            && std::fabs(is.setVelocity - should.velocity) < 1e-7
            && (!jerkLimited || std::fabs(is.setAcceleration - should.acceleration) < 1e-3);
        if (!fine) {
            return QStringLiteral("at %1 s: position %2, velocity %3, acceleration %4 instead of %5, %6, %7")
                .arg(time)
                .arg(is.setPosition, 0, 'g', 12)
                .arg(is.setVelocity, 0, 'g', 12)
                .arg(is.setAcceleration, 0, 'g', 12)
                .arg(should.position, 0, 'g', 12)
                .arg(should.velocity, 0, 'g', 12)
                .arg(should.acceleration, 0, 'g', 12);
        }
    }
    return {};
}

/// Brings the axis to a constant speed, to the left if it is negative.
void cruise(AxisRig& rig, double velocity)
{
    rig.axis.moveVelocity(numbers(velocity, 5000, 5000));
    rig.run(500);
}

std::int16_t start(AxisRig& rig, Way way, double velocity, double acceleration, double deceleration, double jerk)
{
    if (way == Way::Velocity)
        return rig.axis.moveVelocity({ velocity, acceleration, deceleration, jerk });
    return rig.axis.startJog(velocity < 0 ? -1 : 1, { std::fabs(velocity), acceleration, deceleration, jerk });
}

/// An axis with so many pulses that their whole numbers do not blur its speed.
AxisValues finePulses()
{
    return { { "UseGearEnable", "TRUE" }, { "GearRatioMolecule", "100000" }, { "GearRatioParent", "1" } };
}
} // namespace

Q_DECLARE_METATYPE(Way)

class AxisProfileTest : public QObject {
    Q_OBJECT

private slots:
    void movesKeepTheirClosedForm_data();
    void movesKeepTheirClosedForm();
    void movesAgreeWithTheLibrary_data();
    void movesAgreeWithTheLibrary();
    void changesOfSpeedKeepTheirClosedForm_data();
    void changesOfSpeedKeepTheirClosedForm();
    void moveFromAConstantSpeedKeepsItsClosedForm_data();
    void moveFromAConstantSpeedKeepsItsClosedForm();
    void stopsKeepTheirOwnRamp_data();
    void stopsKeepTheirOwnRamp();
    void endsOfJogsKeepTheirOwnRamp_data();
    void endsOfJogsKeepTheirOwnRamp();
    void errorsBrakeAtTheErrorRate();
    void limitsBrakeAtTheLimitRate_data();
    void limitsBrakeAtTheLimitRate();
    void theOffsetOfBeforeHomingCounts();
    void statusTellsTheMachinesAccelerationAndTorque();
};

void AxisProfileTest::movesKeepTheirClosedForm_data()
{
    QTest::addColumn<double>("distance");
    QTest::addColumn<MotionNumbers>("given");
    QTest::newRow("far, braking softer") << 90.0 << numbers(40, 400, 100);
    QTest::newRow("far, braking harder") << 90.0 << numbers(40, 100, 400);
    QTest::newRow("far to the left") << -90.0 << numbers(40, 100, 400);
    QTest::newRow("so near that the speed is never reached") << 3.0 << numbers(40, 400, 100);
    QTest::newRow("near to the left, braking harder") << -3.0 << numbers(40, 100, 400);
    QTest::newRow("far with a jerk, braking softer") << 90.0 << numbers(40, 400, 100, 4000);
    QTest::newRow("far with a jerk, braking harder") << 90.0 << numbers(40, 100, 400, 4000);
    QTest::newRow("far to the left with a jerk") << -90.0 << numbers(40, 400, 100, 4000);
    QTest::newRow("far, with a jerk that never lets the full acceleration be reached")
        << 90.0 << numbers(40, 400, 300, 1000);
    QTest::newRow("near with a jerk, both ramps at full acceleration") << 10.0 << numbers(80, 400, 100, 10000);
    QTest::newRow("near with a jerk to the left, braking harder") << -10.0 << numbers(80, 100, 400, 10000);
    QTest::newRow("so near with a jerk that no ramp is at full acceleration") << 0.5 << numbers(80, 400, 300, 1000);
}

void AxisProfileTest::movesKeepTheirClosedForm()
{
    QFETCH(double, distance);
    QFETCH(MotionNumbers, given);
    for (const bool relative : { false, true }) {
        AxisRig rig({}, R"({"lowest": null, "highest": null})");
        rig.enabled();
        rig.axis.setPosition(5);
        QCOMPARE(relative ? rig.axis.moveRelative(distance, given) : rig.axis.moveAbsolute(5 + distance, given),
            Diagnosis::ok);
        const ClosedForm expected = ClosedForm(5).move(distance, given);
        QCOMPARE(difference(rig, expected, given.jerk > 0), QString());
        QCOMPARE(rig.axis.state(), AxisState::StandStill);
        QCOMPARE(rig.axis.shownSetPosition(), 5 + distance);
    }
}

void AxisProfileTest::movesAgreeWithTheLibrary_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<MotionNumbers>("given");
    QTest::newRow("long way right") << 0.0 << 50.0 << numbers(7, 13, 13);
    QTest::newRow("long way left") << 20.0 << -50.0 << numbers(7, 13, 13);
    QTest::newRow("short way right") << 0.0 << 0.5 << numbers(7, 13, 13);
    QTest::newRow("short way left") << -3.0 << -3.01 << numbers(7, 13, 13);
    QTest::newRow("long way right, braking harder") << 0.0 << 50.0 << numbers(7, 13, 39);
    QTest::newRow("long way left, braking softer") << 20.0 << -50.0 << numbers(7, 39, 13);
}

void AxisProfileTest::movesAgreeWithTheLibrary()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(MotionNumbers, given);
    AxisRig rig({}, R"({"lowest": null, "highest": null})");
    rig.enabled();
    rig.axis.setPosition(from);
    QCOMPARE(rig.axis.moveAbsolute(to, given), Diagnosis::ok);
    // A trapezoid of the library has one ramp for both ends, so one of two ramps is put together from its halves.
    const bool halves = given.acceleration != given.deceleration;
    const double middle = (from + to) / 2;
    KDL::VelocityProfile_Trap whole(given.velocity, given.acceleration);
    KDL::VelocityProfile_TrapHalf first(given.velocity, given.acceleration, true);
    KDL::VelocityProfile_TrapHalf second(given.velocity, given.deceleration, false);
    whole.SetProfile(from, to);
    first.SetProfile(from, middle);
    second.SetProfile(middle, to);
    const double duration = halves ? first.Duration() + second.Duration() : whole.Duration();
    for (int i = 1; i * AxisRig::cycle < duration; ++i) {
        rig.run(1);
        const double t = i * AxisRig::cycle;
        const bool later = t >= first.Duration();
        const KDL::VelocityProfile& half = later ? static_cast<const KDL::VelocityProfile&>(second)
                                                 : static_cast<const KDL::VelocityProfile&>(first);
        const double halfTime = later ? t - first.Duration() : t;
        const double position = halves ? half.Pos(halfTime) : whole.Pos(t);
        const double velocity = halves ? half.Vel(halfTime) : whole.Vel(t);
        QVERIFY2(std::fabs(rig.axis.setPoint().position - position) < 1e-8, qPrintable(QString::number(t)));
        QVERIFY2(std::fabs(rig.axis.setPoint().velocity - velocity) < 1e-7, qPrintable(QString::number(t)));
        QCOMPARE(rig.axis.state(), AxisState::DiscreteMotion);
    }
    rig.run(2);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(rig.axis.setPoint().position, to);
}

void AxisProfileTest::changesOfSpeedKeepTheirClosedForm_data()
{
    QTest::addColumn<Way>("way");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("jerk");
    for (const Way way : { Way::Velocity, Way::Jog }) {
        for (const double jerk : { 0.0, 6000.0 }) {
            const auto row = [&](const char* name, double from, double to) {
                const QString whole = QStringLiteral("%1 %2%3").arg(
                    way == Way::Jog ? QStringLiteral("jog") : QStringLiteral("velocity motion"), QLatin1String(name),
                    jerk > 0 ? QStringLiteral(", with a jerk") : QString());
                QTest::newRow(qPrintable(whole)) << way << from << to << jerk;
            };
            row("from rest", 0, 60);
            row("from rest to the left", 0, -60);
            row("up from a lower speed", 20, 60);
            row("down from a higher speed", 60, 20);
            row("down on the left side", -60, -20);
            row("to the other side", 60, -40);
        }
    }
}

void AxisProfileTest::changesOfSpeedKeepTheirClosedForm()
{
    QFETCH(Way, way);
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, jerk);
    AxisRig rig({}, R"({"lowest": null, "highest": null})");
    rig.enabled();
    if (from != 0)
        cruise(rig, from);
    QCOMPARE(rig.axis.setPoint().velocity, from);
    ClosedForm expected(rig.axis.setPoint().position, from);
    QCOMPARE(start(rig, way, to, 300, 120, jerk), Diagnosis::ok);
    // Slowing down takes the deceleration, and so does the full stop before a turn.
    if (from * to < 0)
        expected.change(0, 120, jerk).change(to, 300, jerk);
    else
        expected.change(to, std::fabs(to) > std::fabs(from) ? 300 : 120, jerk);
    QCOMPARE(difference(rig, expected, jerk > 0), QString());
    QCOMPARE(rig.axis.state(), AxisState::ContinuousMotion);
    QCOMPARE(rig.axis.setPoint().velocity, to);
}

void AxisProfileTest::moveFromAConstantSpeedKeepsItsClosedForm_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("jerk");
    QTest::newRow("faster than before") << 20.0 << 0.0;
    QTest::newRow("slower than before") << 70.0 << 0.0;
    QTest::newRow("faster than before, with a jerk") << 20.0 << 6000.0;
    QTest::newRow("slower than before, with a jerk") << 70.0 << 6000.0;
}

void AxisProfileTest::moveFromAConstantSpeedKeepsItsClosedForm()
{
    QFETCH(double, from);
    QFETCH(double, jerk);
    AxisRig rig({}, R"({"lowest": null, "highest": null})");
    rig.enabled();
    cruise(rig, from);
    const double place = rig.axis.setPoint().position;
    QCOMPARE(rig.axis.moveRelative(100, numbers(40, 300, 120, jerk)), Diagnosis::ok);
    const double first = ClosedForm::changeTime(std::fabs(40 - from), from < 40 ? 300 : 120, jerk);
    const double last = ClosedForm::changeTime(40, 120, jerk);
    const double atSpeed = (100 - (from + 40) / 2 * first - 20 * last) / 40;
    ClosedForm expected(place, from);
    expected.change(40, from < 40 ? 300 : 120, jerk).keep(atSpeed).change(0, 120, jerk);
    QCOMPARE(difference(rig, expected, jerk > 0), QString());
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisProfileTest::stopsKeepTheirOwnRamp_data()
{
    QTest::addColumn<double>("velocity");
    QTest::addColumn<double>("deceleration");
    QTest::addColumn<double>("jerk");
    QTest::newRow("softer than the motion") << 60.0 << 70.0 << 0.0;
    QTest::newRow("harder than the motion") << 60.0 << 900.0 << 0.0;
    QTest::newRow("from the left") << -60.0 << 70.0 << 0.0;
    QTest::newRow("with a jerk") << 60.0 << 200.0 << 2000.0;
    QTest::newRow("from the left with a jerk") << -60.0 << 200.0 << 2000.0;
    QTest::newRow("with a jerk that never lets the full rate be reached") << 60.0 << 900.0 << 2000.0;
}

void AxisProfileTest::stopsKeepTheirOwnRamp()
{
    QFETCH(double, velocity);
    QFETCH(double, deceleration);
    QFETCH(double, jerk);
    AxisRig rig({}, R"({"lowest": null, "highest": null})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(velocity, 1000, 300, 20000));
    rig.run(500);
    ClosedForm expected(rig.axis.setPoint().position, velocity);
    QCOMPARE(rig.axis.stop(deceleration, jerk), Diagnosis::ok);
    expected.change(0, deceleration, jerk);
    QCOMPARE(difference(rig, expected, jerk > 0), QString());
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisProfileTest::endsOfJogsKeepTheirOwnRamp_data()
{
    stopsKeepTheirOwnRamp_data();
}

void AxisProfileTest::endsOfJogsKeepTheirOwnRamp()
{
    QFETCH(double, velocity);
    QFETCH(double, deceleration);
    QFETCH(double, jerk);
    const int direction = velocity < 0 ? -1 : 1;
    AxisRig rig({}, R"({"lowest": null, "highest": null})");
    rig.enabled();
    rig.axis.startJog(direction, numbers(60, 1000, 300, 20000));
    rig.run(500);
    ClosedForm expected(rig.axis.setPoint().position, velocity);
    QCOMPARE(rig.axis.endJog(direction, deceleration, jerk), Diagnosis::ok);
    expected.change(0, deceleration, jerk);
    QCOMPARE(difference(rig, expected, jerk > 0), QString());
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void AxisProfileTest::errorsBrakeAtTheErrorRate()
{
    AxisRig rig({ { "AxisErrorDec", "400" }, { "LimitDec", "90" }, { "FollowErrorThreshold", "5" } },
        R"({"lowest": null, "highest": null})");
    rig.enabled();
    cruise(rig, 80);
    rig.axis.machine().faults.blocked = true;
    QVERIFY(rig.runUntilState(AxisState::ErrorStop, 1));
    QCOMPARE(rig.axis.error(), Diagnosis::followingError);
    QVERIFY(rig.axis.isPowered());
    QCOMPARE(rig.axis.setPoint().velocity, 80.0);
    ClosedForm expected(rig.axis.setPoint().position, 80);
    expected.change(0, 400, 0);
    QCOMPARE(difference(rig, expected, false), QString());
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
}

void AxisProfileTest::limitsBrakeAtTheLimitRate_data()
{
    QTest::addColumn<bool>("hard");
    QTest::addColumn<int>("direction");
    QTest::newRow("soft limit, to the right") << false << 1;
    QTest::newRow("soft limit, to the left") << false << -1;
    QTest::newRow("limit switch, to the right") << true << 1;
    QTest::newRow("limit switch, to the left") << true << -1;
}

void AxisProfileTest::limitsBrakeAtTheLimitRate()
{
    QFETCH(bool, hard);
    QFETCH(int, direction);
    AxisRig rig({ { "AxisErrorDec", "4000" }, { "LimitDec", "250" }, { "SoftLimitEnable", hard ? "FALSE" : "TRUE" },
                    { "SoftLimitPos", "60" }, { "SoftLimitNeg", "-60" }, { "PosLimitEnable", "TRUE" },
                    { "NegsLimitEnable", "TRUE" } },
        R"({"lowest": null, "highest": null, "positiveSwitch": 61, "negativeSwitch": -61})");
    rig.enabled();
    rig.axis.moveVelocity(numbers(direction * 80, 1000, 30));
    QVERIFY(rig.runUntil([&] { return rig.axis.error() != 0; }, 2));
    // A switch is met within a cycle and braked for in the next, a soft limit in time before it.
    const MotionState from = rig.axis.setPoint();
    if (hard)
        QCOMPARE(from.velocity, direction * 80.0);
    const double rate = 250 * AxisRig::cycle;
    double speed = std::fabs(from.velocity);
    QVERIFY(speed > 79.7);
    int cycles = 0;
    for (; speed > rate; ++cycles) {
        rig.run(1);
        const double now = std::fabs(rig.axis.setPoint().velocity);
        // A soft limit is met exactly, with the last little bit of the old speed before the ramp.
        const double slack = hard ? 1e-9 : cycles == 0 ? rate : 1e-9;
        QVERIFY2(std::fabs(speed - now - rate) <= slack, qPrintable(QString::number(speed - now)));
        speed = now;
    }
    QVERIFY(std::fabs(cycles - std::fabs(from.velocity) / rate) <= 1.01);
    if (!hard) {
        rig.run(5);
        QCOMPARE(rig.axis.setPoint().position, direction * 60.0);
    }
}

void AxisProfileTest::theOffsetOfBeforeHomingCounts()
{
    AxisRig rig({ { "HomeMode", "Homing_24" }, { "OrgSignalEnable", "TRUE" }, { "PosLimitEnable", "TRUE" } },
        R"({"lowest": null, "highest": null, "homeFrom": 10, "homeTo": 12, "positiveSwitch": 100})");
    rig.enabled();
    QCOMPARE(rig.axis.setHomeOffset(7), Diagnosis::ok);
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    rig.run(200);
    QCOMPARE(rig.axis.state(), AxisState::Homing);
    QCOMPARE(rig.axis.setHomeOffset(-300), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY2(std::fabs(rig.axis.machine().position() - 10 - (rig.axis.shownActualPosition() - 7)) < 1e-3,
        qPrintable(QString::number(rig.axis.shownActualPosition())));
    // The one that was set meanwhile is that of the next time.
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QVERIFY(std::fabs(rig.axis.machine().position() - 10 - (rig.axis.shownActualPosition() + 300)) < 1e-3);
}

void AxisProfileTest::statusTellsTheMachinesAccelerationAndTorque()
{
    AxisRig rig(finePulses(), R"({"lowest": null, "highest": null, "gain": 100, "inertia": 0.25, "friction": 30})");
    rig.enabled();
    const double a = 400;
    rig.axis.moveVelocity(numbers(100, a, 200));
    for (int i = 1; i <= 200; ++i) {
        rig.run(1);
        const AxisRef ref = rig.axis.status();
        // A first-order lag of 1 / gain; within a cycle the machine has the acceleration of its middle.
        const double lagging = a * (1 - std::exp(-100 * (i - 0.5) * AxisRig::cycle));
        QVERIFY2(std::fabs(ref.actualAcceleration - lagging) < 0.003 * a,
            qPrintable(QStringLiteral("%1: %2 instead of %3").arg(i).arg(ref.actualAcceleration).arg(lagging)));
        QVERIFY(std::fabs(ref.actualTorque - (0.25 * ref.actualAcceleration + 30)) < 1e-9);
        QVERIFY(std::fabs(ref.setTorque - (0.25 * a + 30)) < 1e-9);
        QCOMPARE(ref.setAcceleration, a);
    }
    rig.run(500);
    QVERIFY(std::fabs(rig.axis.status().actualAcceleration) < 1);
    QVERIFY(std::fabs(rig.axis.status().actualTorque - 30) < 0.25);
    rig.axis.moveVelocity(numbers(-100, a, 200));
    rig.run(250);
    QVERIFY(std::fabs(rig.axis.status().actualAcceleration + 200) < 1);
    QVERIFY(std::fabs(rig.axis.status().actualTorque - (-50 + 30)) < 0.25);
    rig.run(400);
    QVERIFY(std::fabs(rig.axis.status().actualAcceleration + 400) < 1);
    QVERIFY(std::fabs(rig.axis.status().actualTorque - (-100 - 30)) < 0.25);
    QVERIFY(std::fabs(rig.axis.status().setTorque - (-100 - 30)) < 1e-9);
}

QTEST_APPLESS_MAIN(AxisProfileTest)
#include "AxisProfileTest.moc"
