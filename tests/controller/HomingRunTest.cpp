#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>

// What each method is to do, written down from the definition of the methods, not from the program. The travel goes
// from -100 (N pressed below -80) to 100 (P pressed from 80 on). Unless a row says otherwise a is at -10 and b at 10.
namespace {
constexpr double n = -80;
constexpr double p = 80;
constexpr double a = -10;
constexpr double b = 10;
constexpr int left = -1;
constexpr int right = 1;

enum class Cam { None, ToPositiveEnd, FromNegativeEnd, Middle };

struct Path {
    int method;
    Cam cam;
    double start;
    /// Direction in which the axis sets out.
    int first;
    /// Where the home position is, and the direction of travel at it.
    double home;
    int last;
    const char* name;
};

const Path paths[] = {
    { 17, Cam::None, 0, left, n, right, "17 from between the switches" },
    { 17, Cam::None, -90, right, n, right, "17 from on the negative switch" },
    { 18, Cam::None, 0, right, p, left, "18 from between the switches" },
    { 18, Cam::None, 90, left, p, left, "18 from on the positive switch" },
    { 19, Cam::ToPositiveEnd, -50, right, a, left, "19 with the switch inactive" },
    { 19, Cam::ToPositiveEnd, 50, left, a, left, "19 with the switch active" },
    { 20, Cam::ToPositiveEnd, -50, right, a, right, "20 with the switch inactive" },
    { 20, Cam::ToPositiveEnd, 50, left, a, right, "20 with the switch active" },
    { 21, Cam::FromNegativeEnd, 50, left, b, right, "21 with the switch inactive" },
    { 21, Cam::FromNegativeEnd, -50, right, b, right, "21 with the switch active" },
    { 22, Cam::FromNegativeEnd, 50, left, b, left, "22 with the switch inactive" },
    { 22, Cam::FromNegativeEnd, -50, right, b, left, "22 with the switch active" },
    { 23, Cam::Middle, -50, right, a, left, "23 from the left of the cam" },
    { 23, Cam::Middle, 0, left, a, left, "23 from on the cam" },
    { 23, Cam::Middle, 50, right, a, left, "23 from the right of the cam, by way of P" },
    { 24, Cam::Middle, -50, right, a, right, "24 from the left of the cam" },
    { 24, Cam::Middle, 0, left, a, right, "24 from on the cam" },
    { 24, Cam::Middle, 50, right, a, right, "24 from the right of the cam, by way of P" },
    { 25, Cam::Middle, -50, right, b, left, "25 from the left of the cam" },
    { 25, Cam::Middle, 0, right, b, left, "25 from on the cam" },
    { 25, Cam::Middle, 50, right, b, left, "25 from the right of the cam, by way of P" },
    { 26, Cam::Middle, -50, right, b, right, "26 from the left of the cam" },
    { 26, Cam::Middle, 0, right, b, right, "26 from on the cam" },
    { 26, Cam::Middle, 50, right, b, right, "26 from the right of the cam, by way of P" },
    { 27, Cam::Middle, 50, left, b, right, "27 from the right of the cam" },
    { 27, Cam::Middle, 0, right, b, right, "27 from on the cam" },
    { 27, Cam::Middle, -50, left, b, right, "27 from the left of the cam, by way of N" },
    { 28, Cam::Middle, 50, left, b, left, "28 from the right of the cam" },
    { 28, Cam::Middle, 0, right, b, left, "28 from on the cam" },
    { 28, Cam::Middle, -50, left, b, left, "28 from the left of the cam, by way of N" },
    { 29, Cam::Middle, 50, left, a, right, "29 from the right of the cam" },
    { 29, Cam::Middle, 0, left, a, right, "29 from on the cam" },
    { 29, Cam::Middle, -50, left, a, right, "29 from the left of the cam, by way of N" },
    { 30, Cam::Middle, 50, left, a, left, "30 from the right of the cam" },
    { 30, Cam::Middle, 0, left, a, left, "30 from on the cam" },
    { 30, Cam::Middle, -50, left, a, left, "30 from the left of the cam, by way of N" },
    { 23, Cam::Middle, 90, left, a, left, "23 from on the positive switch" },
    { 26, Cam::Middle, 90, left, b, right, "26 from on the positive switch" },
    { 27, Cam::Middle, -90, right, b, right, "27 from on the negative switch" },
    { 30, Cam::Middle, -90, right, a, left, "30 from on the negative switch" },
    { 24, Cam::Middle, 90, left, a, right, "24 from on the positive switch" },
    { 25, Cam::Middle, 90, left, b, left, "25 from on the positive switch" },
    { 28, Cam::Middle, -90, right, b, left, "28 from on the negative switch" },
    { 29, Cam::Middle, -90, right, a, right, "29 from on the negative switch" },
    // Where the switch of reversal is within the home switch it is passed unheeded on the way off both.
    { 19, Cam::ToPositiveEnd, 90, left, a, left, "19 from on the positive switch" },
    { 20, Cam::ToPositiveEnd, 90, left, a, right, "20 from on the positive switch" },
    { 21, Cam::FromNegativeEnd, -90, right, b, right, "21 from on the negative switch" },
    { 22, Cam::FromNegativeEnd, -90, right, b, left, "22 from on the negative switch" },
    // The switch behind the axis is left and does not count.
    { 17, Cam::None, 90, left, n, right, "17 from on the wrong switch" },
    { 18, Cam::None, -90, right, p, left, "18 from on the wrong switch" },
    { 19, Cam::ToPositiveEnd, -90, right, a, left, "19 from on the wrong switch" },
    { 20, Cam::ToPositiveEnd, -90, right, a, right, "20 from on the wrong switch" },
    { 21, Cam::FromNegativeEnd, 90, left, b, right, "21 from on the wrong switch" },
    { 22, Cam::FromNegativeEnd, 90, left, b, left, "22 from on the wrong switch" },
    { 23, Cam::Middle, -90, right, a, left, "23 from on the wrong switch" },
    { 24, Cam::Middle, -90, right, a, right, "24 from on the wrong switch" },
    { 25, Cam::Middle, -90, right, b, left, "25 from on the wrong switch" },
    { 26, Cam::Middle, -90, right, b, right, "26 from on the wrong switch" },
    { 27, Cam::Middle, 90, left, b, right, "27 from on the wrong switch" },
    { 28, Cam::Middle, 90, left, b, left, "28 from on the wrong switch" },
    { 29, Cam::Middle, 90, left, a, right, "29 from on the wrong switch" },
    { 30, Cam::Middle, 90, left, a, left, "30 from on the wrong switch" },
    // The index pulse comes every 7 units from 2 on.
    { 33, Cam::None, 90, left, 86, left, "33 from on the switch behind it" },
    { 34, Cam::None, -90, right, -89, right, "34 from on the switch behind it" },
    { 33, Cam::None, 0, left, -5, left, "33 from between two index pulses" },
    { 34, Cam::None, 0, right, 2, right, "34 from between two index pulses" },
    { 33, Cam::None, 2, left, -5, left, "33 from on an index pulse" },
    { 34, Cam::None, 2, right, 9, right, "34 from on an index pulse" },
};

AxisValues record(int method)
{
    return { { "HomeMode", "Homing_" + std::to_string(method) }, { "HomeSpeed", "20" }, { "HomeCloseSpeed", "2" },
        { "HomeAcc", "200" }, { "HomeTimeOut", "300000" }, { "PosLimitEnable", "TRUE" }, { "NegsLimitEnable", "TRUE" },
        { "OrgSignalEnable", "TRUE" } };
}

/// Where the limit switches of a machine stand.
struct Switches {
    double negative = n;
    double positive = p;
};

std::string machine(Cam cam, double start, double from = a, double to = b, const Switches& switches = {})
{
    std::string home;
    switch (cam) {
    case Cam::None:
        home = R"("homeFrom": 2000, "homeTo": 2001)";
        break;
    case Cam::ToPositiveEnd:
        home = "\"homeTo\": null, \"homeFrom\": " + std::to_string(from);
        break;
    case Cam::FromNegativeEnd:
        home = "\"homeFrom\": null, \"homeTo\": " + std::to_string(to);
        break;
    case Cam::Middle:
        home = "\"homeFrom\": " + std::to_string(from) + ", \"homeTo\": " + std::to_string(to);
        break;
    }
    return "{\"lowest\": -100, \"highest\": 100, \"indexOffset\": 2, \"indexPeriod\": 7, \"negativeSwitch\": "
        + std::to_string(switches.negative) + ", \"positiveSwitch\": " + std::to_string(switches.positive)
        + ", \"start\": " + std::to_string(start) + ", " + home + "}";
}

/// What was seen of a run: the direction of its first motion, and the last direction in which it passed the edge.
struct Seen {
    int first = 0;
    int last = 0;
    double speedAtEdge = 0;
    double fastest = 0;
};

Seen watch(AxisRig& rig, double edge)
{
    Seen seen;
    double before = rig.axis.machine().position();
    rig.runUntil(
        [&] {
            const double now = rig.axis.machine().position();
            const double velocity = rig.axis.setPoint().velocity;
            if (seen.first == 0 && velocity != 0)
                seen.first = velocity < 0 ? left : right;
            if ((before < edge) != (now < edge)) {
                seen.last = now > before ? right : left;
                seen.speedAtEdge = std::fabs(velocity);
            }
            seen.fastest = std::max(seen.fastest, std::fabs(velocity));
            before = now;
            return rig.axis.state() != AxisState::Homing;
        },
        400);
    return seen;
}
} // namespace

class HomingRunTest : public QObject {
    Q_OBJECT

private slots:
    void findsItsEdge_data();
    void findsItsEdge();
    void findsItsEdgeOnAShortCam_data();
    void findsItsEdgeOnAShortCam();
    void staysWhereItIsWithMethod35();
    void theLimitOfReversalMayBeReachedBehindTheEdge_data();
    void theLimitOfReversalMayBeReachedBehindTheEdge();
    void limitsThatAreNotAllowedAreFaults_data();
    void limitsThatAreNotAllowedAreFaults();
    void refusesWithoutItsSignals_data();
    void refusesWithoutItsSignals();
    void refusesUnknownMethods_data();
    void refusesUnknownMethods();
    void endsAtItsTimeOut();
    void everyLegCountsAgainstTheTimeOut();
    void acceptsOnlyAStop();
    void stopsOnDemand();
    void brakesAtTheEmergencyRateOnALimit();
    void worksWithNegativeLogic_data();
    void worksWithNegativeLogic();
    void findsNothingWithTheSwitchWiredTheWrongWay();
    void everyMethodIsTried();
};

void HomingRunTest::findsItsEdge_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(paths)); ++i)
        QTest::newRow(paths[i].name) << i;
}

void HomingRunTest::findsItsEdge()
{
    QFETCH(int, row);
    const Path& path = paths[row];
    AxisRig rig(record(path.method), machine(path.cam, path.start));
    rig.enabled();
    QCOMPARE(rig.axis.setHomeOffset(12.5), Diagnosis::ok);
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Homing);
    const Seen seen = watch(rig, path.home);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QCOMPARE(seen.first, path.first);
    QCOMPARE(seen.last, path.last);
    QVERIFY2(std::fabs(rig.axis.zeroPlace() + 12.5 - path.home) < 1e-9,
        qPrintable(QStringLiteral("home at %1").arg(rig.axis.zeroPlace() + 12.5)));
    QVERIFY2(seen.speedAtEdge <= 2.0 + 1e-9, "the edge counts at close speed only");
    QVERIFY(seen.fastest <= 20 + 1e-9);
    // The position shown is that of the machine seen from the edge.
    const double expected = rig.axis.machine().position() - path.home + 12.5;
    QVERIFY(std::fabs(rig.axis.shownActualPosition() - expected) <= 1 / rig.settings.pulsesPerUnit);
    QVERIFY(std::fabs(rig.axis.shownSetPosition() - expected) <= 2 / rig.settings.pulsesPerUnit);
}

void HomingRunTest::findsItsEdgeOnAShortCam_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(paths)); ++i) {
        if (paths[i].cam == Cam::Middle && paths[i].start != 0)
            QTest::newRow(paths[i].name) << i;
    }
}

void HomingRunTest::findsItsEdgeOnAShortCam()
{
    QFETCH(int, row);
    Path path = paths[row];
    // Much shorter than the way that braking from search speed takes, and passed in less than a cycle.
    const double from = 3.0;
    const double to = 3.01;
    path.home = path.home == a ? from : to;
    AxisRig rig(record(path.method), machine(path.cam, path.start, from, to));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    const Seen seen = watch(rig, path.home);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QVERIFY2(std::fabs(rig.axis.zeroPlace() - path.home) < 1e-9, qPrintable(QString::number(rig.axis.zeroPlace())));
    QCOMPARE(seen.last, path.last);
}

void HomingRunTest::staysWhereItIsWithMethod35()
{
    AxisRig rig(record(35), machine(Cam::Middle, 33));
    rig.enabled();
    rig.axis.setHomeOffset(-4);
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    rig.run(1);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QVERIFY(std::fabs(rig.axis.machine().position() - 33) < 1e-3);
    QCOMPARE(rig.axis.shownSetPosition(), -4.0);
    QVERIFY(std::fabs(rig.axis.shownActualPosition() + 4) <= 1 / rig.settings.pulsesPerUnit);
}

void HomingRunTest::theLimitOfReversalMayBeReachedBehindTheEdge_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("edge");
    QTest::addColumn<bool>("toTheRight");
    // Braking from search speed takes a unit; the switch stands half a unit behind the edge that is sought.
    for (const int method : { 19, 20, 23, 24 })
        QTest::newRow(qPrintable(QStringLiteral("%1 with P behind its edge").arg(method)))
            << method << -50.0 << a << true;
    for (const int method : { 25, 26 })
        QTest::newRow(qPrintable(QStringLiteral("%1 with P behind its edge").arg(method)))
            << method << -50.0 << b << true;
    for (const int method : { 21, 22, 27, 28 })
        QTest::newRow(qPrintable(QStringLiteral("%1 with N behind its edge").arg(method)))
            << method << 50.0 << b << false;
    for (const int method : { 29, 30 })
        QTest::newRow(qPrintable(QStringLiteral("%1 with N behind its edge").arg(method)))
            << method << 50.0 << a << false;
}

void HomingRunTest::theLimitOfReversalMayBeReachedBehindTheEdge()
{
    QFETCH(int, method);
    QFETCH(double, start);
    QFETCH(double, edge);
    QFETCH(bool, toTheRight);
    const Switches switches = toTheRight ? Switches{ n, edge + 0.5 } : Switches{ edge - 0.5, p };
    const Cam cam = method == 19 || method == 20 ? Cam::ToPositiveEnd
        : method == 21 || method == 22           ? Cam::FromNegativeEnd
                                                 : Cam::Middle;
    AxisRig rig(record(method), machine(cam, start, a, b, switches));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    bool met = false;
    QVERIFY(rig.runUntil(
        [&] {
            met = met || (toTheRight ? rig.axis.machine().positiveLimit() : rig.axis.machine().negativeLimit());
            return rig.axis.state() != AxisState::Homing;
        },
        300));
    QVERIFY(met);
    QCOMPARE(rig.axis.error(), Diagnosis::ok);
    QVERIFY2(std::fabs(rig.axis.zeroPlace() - edge) < 1e-9, qPrintable(QString::number(rig.axis.zeroPlace())));
}

void HomingRunTest::limitsThatAreNotAllowedAreFaults_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("machine");
    const auto add = [](const char* name, int method, const std::string& text) {
        QTest::newRow(name) << method << QString::fromStdString(text);
    };
    // No cam anywhere: a search turns once at the limit it knows and then meets the other one.
    for (const int method : { 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30 })
        add(qPrintable(QStringLiteral("%1 without a cam meets a second limit").arg(method)), method,
            machine(Cam::None, 0));
    add("33 meets N before an index pulse", 33,
        R"({"lowest":-100,"highest":100,"negativeSwitch":-80,"positiveSwitch":80,"indexOffset":500,"indexPeriod":1000})");
    add("34 meets P before an index pulse", 34,
        R"({"lowest":-100,"highest":100,"negativeSwitch":-80,"positiveSwitch":80,"indexOffset":500,"indexPeriod":1000})");
    add("33 from on the negative switch", 33, machine(Cam::None, -90));
    add("34 from on the positive switch", 34, machine(Cam::None, 90));
    // The cam goes on behind the other limit, which is met before the edge.
    add("23 meets N first", 23, machine(Cam::FromNegativeEnd, 0));
    add("24 meets N first", 24, machine(Cam::FromNegativeEnd, 0));
    add("27 meets P first", 27, machine(Cam::ToPositiveEnd, 0));
    add("28 meets P first", 28, machine(Cam::ToPositiveEnd, 0));
    // From on the cam 25, 26, 29 and 30 set out away from that limit; it is met where they turn round behind the edge.
    add("25 meets N at close speed", 25, machine(Cam::Middle, 0, a, b, { b + 0.5, p }));
    add("29 meets P at close speed", 29, machine(Cam::Middle, 0, a, b, { n, a - 0.5 }));
    add("26 meets N on the way back", 26, machine(Cam::Middle, 0, a, b, { b + 0.2, p }));
    add("30 meets P on the way back", 30, machine(Cam::Middle, 0, a, b, { n, a - 0.2 }));
    add("26 meets N braking after the way back", 26, machine(Cam::Middle, 0, a, b, { b - 0.5, p }));
    add("30 meets P braking after the way back", 30, machine(Cam::Middle, 0, a, b, { n, a + 0.5 }));
    for (const int method : { 23, 24 })
        add(qPrintable(QStringLiteral("%1 meets N behind the edge").arg(method)), method,
            machine(Cam::Middle, 0, a, b, { a - 0.5, p }));
    for (const int method : { 27, 28 })
        add(qPrintable(QStringLiteral("%1 meets P behind the edge").arg(method)), method,
            machine(Cam::Middle, 0, a, b, { n, b + 0.5 }));
    add("25 meets N braking after the home position", 25, machine(Cam::Middle, 0, a, b, { b - 0.002, p }));
    // It has turned at the switch once, and braking from close speed behind the edge reaches it again.
    add("26 meets P again behind the edge", 26, machine(Cam::Middle, 79.998, 78, 79.995));
    add("30 meets N again behind the edge", 30, machine(Cam::Middle, -79.998, -79.995, -78));
    // Both switches overlap: that machine is broken.
    add("18 meets N on its way off P", 18,
        R"({"lowest":-100,"highest":100,"start":90,"negativeSwitch":85,"positiveSwitch":80})");
    add("17 meets P on its way off N", 17,
        R"({"lowest":-100,"highest":100,"start":-90,"negativeSwitch":-80,"positiveSwitch":-85})");
}

void HomingRunTest::limitsThatAreNotAllowedAreFaults()
{
    QFETCH(int, method);
    QFETCH(QString, machine);
    AxisRig rig(record(method), machine.toStdString());
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.state() != AxisState::Homing; }, 300));
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    QCOMPARE(rig.axis.error(), Diagnosis::homingLimit);
    QVERIFY(rig.runUntilStill());
    QCOMPARE(rig.axis.reset(), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void HomingRunTest::refusesWithoutItsSignals_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("needed");
    const QString negative = QStringLiteral("NegsLimitEnable");
    const QString positive = QStringLiteral("PosLimitEnable");
    const QString home = QStringLiteral("OrgSignalEnable");
    for (int m = 17; m <= 34; ++m) {
        if (m == 31 || m == 32)
            continue;
        const auto add = [m](const char* signal, const QString& key, bool needed) {
            QTest::newRow(qPrintable(QStringLiteral("%1 without %2").arg(m).arg(QLatin1String(signal))))
                << m << key << needed;
        };
        add("N", negative, m == 17 || (m >= 27 && m <= 30));
        add("P", positive, m == 18 || (m >= 23 && m <= 26));
        add("H", home, m >= 19 && m <= 30);
    }
}

void HomingRunTest::refusesWithoutItsSignals()
{
    QFETCH(int, method);
    QFETCH(QString, key);
    QFETCH(bool, needed);
    AxisValues values = record(method);
    values[key.toStdString()] = "FALSE";
    AxisRig rig(values, machine(Cam::Middle, 0));
    rig.enabled();
    QCOMPARE(rig.axis.home(), needed ? Diagnosis::homingSignalMissing : Diagnosis::ok);
    if (needed)
        QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void HomingRunTest::refusesUnknownMethods_data()
{
    QTest::addColumn<QString>("word");
    for (const int method : { 0, 1, 16, 31, 32, 36, 235 })
        QTest::newRow(qPrintable(QStringLiteral("method %1").arg(method))) << QStringLiteral("Homing_%1").arg(method);
    QTest::newRow("no number at all") << QStringLiteral("Homing");
    QTest::newRow("an absurd number") << QStringLiteral("Homing_99999999999999999999");
}

void HomingRunTest::refusesUnknownMethods()
{
    QFETCH(QString, word);
    AxisValues values = record(35);
    values["HomeMode"] = word.toStdString();
    AxisRig rig(values);
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::homingMethodUnknown);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
}

void HomingRunTest::endsAtItsTimeOut()
{
    AxisValues values = record(24);
    values["HomeTimeOut"] = "1500";
    AxisRig rig(values, machine(Cam::Middle, -70));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    rig.run(1490);
    QCOMPARE(rig.axis.state(), AxisState::Homing);
    rig.run(20);
    QCOMPARE(rig.axis.state(), AxisState::ErrorStop);
    QCOMPARE(rig.axis.error(), Diagnosis::homingTimeout);
}

void HomingRunTest::everyLegCountsAgainstTheTimeOut()
{
    // 60 units at 20 are three seconds; the rest at close speed takes longer than what is left.
    AxisValues values = record(19);
    values["HomeTimeOut"] = "3500";
    AxisRig rig(values, machine(Cam::ToPositiveEnd, -70));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.state() != AxisState::Homing; }, 60));
    QCOMPARE(rig.axis.error(), Diagnosis::homingTimeout);
}

void HomingRunTest::acceptsOnlyAStop()
{
    AxisRig rig(record(24), machine(Cam::Middle, -50));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    rig.run(100);
    QCOMPARE(rig.axis.home(), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.moveAbsolute(1, numbers(5)), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.moveRelative(1, numbers(5)), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.moveVelocity(numbers(5)), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.startJog(1, numbers(5)), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.setPosition(5), Diagnosis::notAllowedInState);
    QCOMPARE(rig.axis.state(), AxisState::Homing);
    QCOMPARE(rig.axis.stop(100, 0), Diagnosis::ok);
}

void HomingRunTest::stopsOnDemand()
{
    AxisRig rig(record(24), machine(Cam::Middle, -50));
    rig.enabled();
    const double zero = rig.axis.zeroPlace();
    rig.axis.home();
    rig.run(500);
    QCOMPARE(rig.axis.stop(100, 0), Diagnosis::ok);
    QCOMPARE(rig.axis.state(), AxisState::Stopping);
    QVERIFY(rig.runUntilState(AxisState::StandStill));
    QCOMPARE(rig.axis.zeroPlace(), zero);
}

void HomingRunTest::brakesAtTheEmergencyRateOnALimit()
{
    AxisRig rig(record(17), machine(Cam::None, 0));
    rig.enabled();
    rig.axis.home();
    QVERIFY(rig.runUntil([&] { return rig.axis.machine().negativeLimit(); }));
    rig.run(1);
    // 20 units/s at 10000 units/s2 are over in two cycles.
    rig.run(3);
    QCOMPARE(rig.axis.setPoint().velocity, 0.0);
}

void HomingRunTest::worksWithNegativeLogic_data()
{
    QTest::addColumn<int>("method");
    for (const int method : { 17, 18, 24, 29 })
        QTest::newRow(qPrintable(QStringLiteral("method %1").arg(method))) << method;
}

void HomingRunTest::worksWithNegativeLogic()
{
    QFETCH(int, method);
    AxisValues values = record(method);
    for (const char* key : { "PosLimitLogic", "NegLimitLogic", "OrgSignalLogic" })
        values[key] = "FALSE";
    AxisRig rig(values, machine(Cam::Middle, 50));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.state() != AxisState::Homing; }, 300));
    const double expected = method == 17 ? n : method == 18 ? p : a;
    QVERIFY(std::fabs(rig.axis.zeroPlace() - expected) < 1e-9);
}

void HomingRunTest::findsNothingWithTheSwitchWiredTheWrongWay()
{
    std::string text = machine(Cam::None, 0);
    text.insert(1, "\"negativeOnWhenPressed\": false, ");
    AxisRig rig(record(17), text);
    rig.enabled();
    QVERIFY(rig.axis.machine().negativeLimit());
    QCOMPARE(rig.axis.status().negativeHardLimit, std::uint8_t(1));
    // It takes itself to be on the switch and runs off it to the right, into P.
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QVERIFY(rig.runUntil([&] { return rig.axis.state() != AxisState::Homing; }, 300));
    QCOMPARE(rig.axis.error(), Diagnosis::homingLimit);
}

void HomingRunTest::everyMethodIsTried()
{
    for (int method = 1; method <= 40; ++method) {
        const bool known = (method >= 17 && method <= 30) || (method >= 33 && method <= 35);
        QCOMPARE(findHomingMethod(method) != nullptr, known);
        const bool tried
            = std::any_of(std::begin(paths), std::end(paths), [&](const Path& path) { return path.method == method; });
        QCOMPARE(tried, known && method != 35);
    }
}

QTEST_APPLESS_MAIN(HomingRunTest)
#include "HomingRunTest.moc"
