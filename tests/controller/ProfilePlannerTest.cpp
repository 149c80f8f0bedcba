#include "controller/ProfilePlanner.h"

#include <kdl/velocityprofile_trap.hpp>

#include <QtTest>

#include <cmath>
#include <random>

namespace {
/// What a profile does between two looks at it, against what it may do.
struct Worst {
    double velocity = 0;
    double acceleration = 0;
    double jerk = 0;
    double jump = 0;
    bool reversed = false;
};

Worst inspect(const Profile& profile)
{
    Worst worst;
    const int steps = 1000;
    const double dt = profile.duration() / steps;
    MotionState last = profile.at(0);
    for (int i = 1; i <= steps; ++i) {
        const MotionState state = profile.at(i * dt);
        worst.velocity = std::max(worst.velocity, std::fabs(state.velocity));
        worst.acceleration = std::max(worst.acceleration, std::fabs((state.velocity - last.velocity) / dt));
        worst.jerk = std::max(worst.jerk, std::fabs((state.acceleration - last.acceleration) / dt));
        const double travelled = state.position - last.position;
        worst.jump = std::max(worst.jump, std::fabs(travelled - (state.velocity + last.velocity) / 2 * dt));
        last = state;
    }
    return worst;
}

double trapezoidTime(double s, double v, double a, double d)
{
    const double ramps = v * v / 2 * (1 / a + 1 / d);
    if (s > ramps)
        return s / v + v / 2 * (1 / a + 1 / d);
    const double peak = std::sqrt(2 * s * a * d / (a + d));
    return peak / a + peak / d;
}
} // namespace

class ProfilePlannerTest : public QObject {
    Q_OBJECT

private slots:
    void trapezoidKeepsItsClosedForm_data();
    void trapezoidKeepsItsClosedForm();
    void agreesWithTheLibraryFromRest_data();
    void agreesWithTheLibraryFromRest();
    void jerkLimitedChangeKeepsItsClosedForm_data();
    void jerkLimitedChangeKeepsItsClosedForm();
    void stopsWithinTheCheckFigures_data();
    void stopsWithinTheCheckFigures();
    void arrivesFromAnyStart();
    void changesVelocityFromAnyStart();
    void neverOverrunsAReachableTarget();
    void stopsFullyBeforeItTurnsRound_data();
    void stopsFullyBeforeItTurnsRound();
    void plannedAnewItGoesOnAsBefore_data();
    void plannedAnewItGoesOnAsBefore();
    void goesOnAtTheEndsVelocity();
    void shiftsAsAWhole();
    void knowsHowFarItGoes();
    void brakesWithoutRunningBack();
};

void ProfilePlannerTest::trapezoidKeepsItsClosedForm_data()
{
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("velocity");
    QTest::addColumn<double>("acceleration");
    QTest::addColumn<double>("deceleration");
    QTest::newRow("long way with a stretch at speed") << 100.0 << 10.0 << 20.0 << 40.0;
    QTest::newRow("way that the ramps just use up") << 3.75 << 10.0 << 20.0 << 40.0;
    QTest::newRow("short way that never reaches the speed") << 1.0 << 10.0 << 20.0 << 40.0;
    QTest::newRow("to the left") << -100.0 << 10.0 << 20.0 << 40.0;
    QTest::newRow("short way to the left") << -0.001 << 1000.0 << 500.0 << 2000.0;
}

void ProfilePlannerTest::trapezoidKeepsItsClosedForm()
{
    QFETCH(double, distance);
    QFETCH(double, velocity);
    QFETCH(double, acceleration);
    QFETCH(double, deceleration);
    const MotionState from{ 5, 0, 0 };
    const Profile profile = ProfilePlanner::toPosition(from, 5 + distance, velocity, { acceleration, deceleration, 0 });
    const double expected = trapezoidTime(std::fabs(distance), velocity, acceleration, deceleration);
    QVERIFY2(std::fabs(profile.duration() - expected) < 1e-9 * expected,
        qPrintable(QStringLiteral("%1 s instead of %2").arg(profile.duration()).arg(expected)));
    QCOMPARE(profile.at(profile.duration()).position, 5 + distance);
    QCOMPARE(profile.at(profile.duration()).velocity, 0.0);
    QVERIFY(inspect(profile).velocity <= velocity * (1 + 1e-12));
}

void ProfilePlannerTest::agreesWithTheLibraryFromRest_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("velocity");
    QTest::addColumn<double>("acceleration");
    QTest::newRow("long way right") << 0.0 << 50.0 << 7.0 << 13.0;
    QTest::newRow("long way left") << 20.0 << -50.0 << 7.0 << 13.0;
    QTest::newRow("short way right") << 0.0 << 0.5 << 7.0 << 13.0;
    QTest::newRow("short way left") << -3.0 << -3.01 << 7.0 << 13.0;
}

void ProfilePlannerTest::agreesWithTheLibraryFromRest()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, velocity);
    QFETCH(double, acceleration);
    KDL::VelocityProfile_Trap reference(velocity, acceleration);
    reference.SetProfile(from, to);
    const Profile profile = ProfilePlanner::toPosition({ from, 0, 0 }, to, velocity, { acceleration, acceleration, 0 });
    QVERIFY(std::fabs(profile.duration() - reference.Duration()) < 1e-9);
    for (int i = 0; i <= 200; ++i) {
        const double t = reference.Duration() * i / 200;
        QVERIFY(std::fabs(profile.at(t).position - reference.Pos(t)) < 1e-9);
        QVERIFY(std::fabs(profile.at(t).velocity - reference.Vel(t)) < 1e-9);
    }
}

void ProfilePlannerTest::jerkLimitedChangeKeepsItsClosedForm_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("ramp");
    QTest::addColumn<double>("jerk");
    QTest::newRow("up, with a stretch at full acceleration") << 0.0 << 100.0 << 500.0 << 5000.0;
    QTest::newRow("up, just reaching full acceleration") << 0.0 << 50.0 << 500.0 << 5000.0;
    QTest::newRow("up, never reaching full acceleration") << 10.0 << 20.0 << 500.0 << 5000.0;
    QTest::newRow("down to a lower speed") << 100.0 << 30.0 << 500.0 << 5000.0;
    QTest::newRow("down to a stop in a small step") << 2.0 << 0.0 << 500.0 << 5000.0;
    QTest::newRow("up to the left") << 0.0 << -100.0 << 500.0 << 5000.0;
    QTest::newRow("down on the left side") << -100.0 << -10.0 << 500.0 << 5000.0;
}

void ProfilePlannerTest::jerkLimitedChangeKeepsItsClosedForm()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, ramp);
    QFETCH(double, jerk);
    const double change = std::fabs(to - from);
    const double expected = change >= ramp * ramp / jerk ? change / ramp + ramp / jerk : 2 * std::sqrt(change / jerk);
    const Profile profile = ProfilePlanner::toVelocity({ 0, from, 0 }, to, { ramp, ramp, jerk });
    QVERIFY(std::fabs(profile.duration() - expected) < 1e-12);
    QVERIFY(std::fabs(profile.end().position - (from + to) / 2 * expected) < 1e-9);
    QCOMPARE(profile.end().velocity, to);
    const double peak = change >= ramp * ramp / jerk ? ramp : std::sqrt(change * jerk);
    const Worst worst = inspect(profile);
    QVERIFY(std::fabs(worst.acceleration - peak) < 2e-3 * peak);
    QVERIFY(worst.jerk < jerk * 1.001);
}

void ProfilePlannerTest::stopsWithinTheCheckFigures_data()
{
    QTest::addColumn<double>("acceleration");
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("time");
    QTest::newRow("from constant speed") << 0.0 << 15.0 << 0.30;
    QTest::newRow("while still accelerating") << 300.0 << 23.69 << 0.378;
}

void ProfilePlannerTest::stopsWithinTheCheckFigures()
{
    QFETCH(double, acceleration);
    QFETCH(double, distance);
    QFETCH(double, time);
    const MotionLimits limits{ 500, 500, 5000 };
    QVERIFY(std::fabs(ProfilePlanner::stoppingDistance(100, acceleration, limits) - distance) < 0.005);
    QVERIFY(std::fabs(ProfilePlanner::stoppingDistance(-100, -acceleration, limits) - distance) < 0.005);
    const Profile profile = ProfilePlanner::toVelocity({ 0, 100, acceleration }, 0, limits);
    QVERIFY(std::fabs(profile.duration() - time) < 0.0005);
    QVERIFY(std::fabs(profile.end().position - distance) < 0.005);
}

void ProfilePlannerTest::arrivesFromAnyStart()
{
    std::mt19937 random(4711);
    std::uniform_real_distribution<double> place(-100, 100);
    std::uniform_real_distribution<double> part(-1, 1);
    std::uniform_real_distribution<double> ratio(0.1, 4);
    for (int i = 0; i < 1500; ++i) {
        const double velocity = 20 * ratio(random);
        const MotionLimits limits{ 100 * ratio(random), 100 * ratio(random), i % 3 ? 2000 * ratio(random) : 0 };
        MotionState from{ place(random), 1.5 * velocity * part(random), 0 };
        if (limits.jerk > 0)
            from.acceleration = limits.acceleration * part(random);
        const double target = place(random);
        const Profile profile = ProfilePlanner::toPosition(from, target, velocity, limits);
        const MotionState end = profile.at(profile.duration());
        QVERIFY2(std::fabs(end.position - target) < 1e-9, qPrintable(QString::number(i)));
        QCOMPARE(end.velocity, 0.0);
        const MotionState before = profile.at(profile.duration() * (1 - 1e-9));
        QVERIFY2(std::fabs(before.position - target) < 1e-5, qPrintable(QString::number(i)));
        const Worst worst = inspect(profile);
        const double gained = limits.jerk > 0 ? from.acceleration * from.acceleration / (2 * limits.jerk) : 0;
        QVERIFY2(worst.velocity <= std::max(velocity, std::fabs(from.velocity) + gained) * 1.0001,
            qPrintable(QString::number(i)));
        const double hardest = std::max({ limits.acceleration, limits.deceleration, std::fabs(from.acceleration) });
        QVERIFY2(worst.acceleration <= hardest * 1.001, qPrintable(QString::number(i)));
        const double dt = profile.duration() / 1000;
        QVERIFY2(worst.jump <= hardest * dt * dt, qPrintable(QString::number(i)));
    }
}

void ProfilePlannerTest::changesVelocityFromAnyStart()
{
    std::mt19937 random(815);
    std::uniform_real_distribution<double> part(-1, 1);
    std::uniform_real_distribution<double> ratio(0.1, 4);
    for (int i = 0; i < 1500; ++i) {
        const MotionLimits limits{ 100 * ratio(random), 100 * ratio(random), i % 3 ? 2000 * ratio(random) : 0 };
        const MotionState from{ 0, 80 * part(random), limits.jerk > 0 ? limits.acceleration * part(random) : 0 };
        const double velocity = i % 5 ? 80 * part(random) : 0;
        const Profile profile = ProfilePlanner::toVelocity(from, velocity, limits);
        const MotionState near = profile.at(profile.duration() * (1 - 1e-9));
        QVERIFY2(std::fabs(near.velocity - velocity) < 1e-4, qPrintable(QString::number(i)));
        QCOMPARE(profile.end().velocity, velocity);
        QVERIFY(inspect(profile).acceleration
            <= std::max({ limits.acceleration, limits.deceleration, std::fabs(from.acceleration) }) * 1.001);
    }
}

void ProfilePlannerTest::neverOverrunsAReachableTarget()
{
    std::mt19937 random(99);
    std::uniform_real_distribution<double> part(0, 1);
    for (int i = 0; i < 2000; ++i) {
        const MotionLimits limits{ 300, 200, i % 2 ? 4000.0 : 0.0 };
        const MotionState from{ 0, 50 * part(random), 0 };
        const double stop = ProfilePlanner::stoppingDistance(from.velocity, 0, limits);
        const double target = stop * (1 + part(random));
        const Profile profile = ProfilePlanner::toPosition(from, target, 40, limits);
        QVERIFY(profile.highest() <= target + 1e-9);
        for (int k = 0; k <= 500; ++k)
            QVERIFY(profile.at(profile.duration() * k / 500).velocity >= -1e-6);
    }
}

void ProfilePlannerTest::stopsFullyBeforeItTurnsRound_data()
{
    QTest::addColumn<double>("jerk");
    QTest::newRow("trapezoid") << 0.0;
    QTest::newRow("jerk-limited") << 5000.0;
}

void ProfilePlannerTest::stopsFullyBeforeItTurnsRound()
{
    QFETCH(double, jerk);
    const MotionLimits limits{ 500, 500, jerk };
    const double way = ProfilePlanner::stoppingDistance(50, 0, limits);
    const Profile profile = ProfilePlanner::toPosition({ 0, 50, 0 }, -10, 50, limits);
    QVERIFY(std::fabs(profile.highest() - way) < 1e-9);
    QCOMPARE(profile.end().position, -10.0);
    const Profile overrun = ProfilePlanner::toPosition({ 0, 50, 0 }, way / 2, 50, limits);
    QVERIFY(std::fabs(overrun.highest() - way) < 1e-9);
    QCOMPARE(overrun.end().position, way / 2);
}

void ProfilePlannerTest::plannedAnewItGoesOnAsBefore_data()
{
    stopsFullyBeforeItTurnsRound_data();
}

void ProfilePlannerTest::plannedAnewItGoesOnAsBefore()
{
    QFETCH(double, jerk);
    const MotionLimits limits{ 300, 150, jerk };
    const Profile whole = ProfilePlanner::toPosition({ 0, 0, 0 }, 60, 40, limits);
    for (int i = 1; i < 100; ++i) {
        const double t = whole.duration() * i / 100;
        MotionState middle = whole.at(t);
        const Profile rest = ProfilePlanner::toPosition(middle, 60, 40, limits);
        QVERIFY2(std::fabs(rest.duration() - (whole.duration() - t)) < 1e-3,
            qPrintable(
                QStringLiteral("at %1: %2 instead of %3").arg(t).arg(rest.duration()).arg(whole.duration() - t)));
        QCOMPARE(rest.end().position, 60.0);
        QVERIFY(rest.highest() <= 60 + 1e-9);
    }
}

void ProfilePlannerTest::goesOnAtTheEndsVelocity()
{
    const Profile profile = ProfilePlanner::toVelocity({ 0, 0, 0 }, 10, { 100, 100, 0 });
    QCOMPARE(profile.at(1000.1).velocity, 10.0);
    QCOMPARE(profile.at(1000.1).position, 0.5 + 10 * 1000.0);
}

void ProfilePlannerTest::shiftsAsAWhole()
{
    Profile profile = ProfilePlanner::toPosition({ 0, 0, 0 }, 10, 5, { 10, 10, 100 });
    const double before = profile.at(1).position;
    profile.shift(7);
    QVERIFY(std::fabs(profile.at(1).position - before - 7) < 1e-12);
    QCOMPARE(profile.start().position, 7.0);
    QCOMPARE(profile.end().position, 17.0);
}

void ProfilePlannerTest::knowsHowFarItGoes()
{
    QVERIFY(std::isinf(ProfilePlanner::toVelocity({ 0, 0, 0 }, 5, { 10, 10, 0 }).highest()));
    QCOMPARE(ProfilePlanner::toVelocity({ 3, 0, 0 }, 5, { 10, 10, 0 }).lowest(), 3.0);
    QVERIFY(std::isinf(ProfilePlanner::toVelocity({ 0, 0, 0 }, -5, { 10, 10, 0 }).lowest()));
    QCOMPARE(ProfilePlanner::toPosition({ 0, 0, 0 }, -8, 5, { 10, 10, 0 }).lowest(), -8.0);
}

void ProfilePlannerTest::brakesWithoutRunningBack()
{
    // Braking at full rate with almost no speed left cannot be taken back in time at this jerk.
    const MotionLimits limits{ 500, 500, 100 };
    const Profile profile = ProfilePlanner::toVelocity({ 0, 1, -500 }, 0, limits);
    for (int i = 0; i <= 1000; ++i)
        QVERIFY(profile.at(profile.duration() * i / 1000).velocity >= -1e-9);
    QCOMPARE(profile.end().velocity, 0.0);
}

QTEST_APPLESS_MAIN(ProfilePlannerTest)
#include "ProfilePlannerTest.moc"
