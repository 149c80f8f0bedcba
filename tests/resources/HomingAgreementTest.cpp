#include "resources/HomingMethods.h"
#include "tests/controller/ControllerRig.h"

#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

using homing::Change;
using homing::Direction;
using homing::HomePlace;
using homing::HomeRange;
using homing::LimitAction;
using homing::Method;
using homing::Move;
using homing::Signal;
using homing::Speed;
using homing::Start;
using homing::StartingCase;

namespace {

/// The machine: the travel goes from -100 to 100, N is pressed below -80 and P from 80 on, a is at -10 and b at 10, and
/// an index pulse comes every 7 units from 2 on.
constexpr double n = -80;
constexpr double p = 80;
constexpr double a = -10;
constexpr double b = 10;
constexpr double indexBelowZero = -5;
constexpr double indexAboveZero = 2;

constexpr double searchSpeed = 20;
constexpr double closeSpeed = 2;

AxisValues record(int method)
{
    return { { "HomeMode", "Homing_" + std::to_string(method) }, { "HomeSpeed", std::to_string(searchSpeed) },
        { "HomeCloseSpeed", std::to_string(closeSpeed) }, { "HomeAcc", "2000" }, { "HomeTimeOut", "300000" },
        { "PosLimitEnable", "TRUE" }, { "NegsLimitEnable", "TRUE" }, { "OrgSignalEnable", "TRUE" } };
}

std::string machine(HomeRange range, double start, double negativeSwitch = n, double positiveSwitch = p)
{
    const auto number = [](double place) { return std::to_string(place); };
    std::string home;
    switch (range) {
    case HomeRange::None:
        home = R"("homeFrom": 2000, "homeTo": 2001)";
        break;
    case HomeRange::ToPositiveEnd:
        home = "\"homeFrom\": " + number(a) + ", \"homeTo\": null";
        break;
    case HomeRange::FromNegativeEnd:
        home = "\"homeFrom\": null, \"homeTo\": " + number(b);
        break;
    case HomeRange::Cam:
        home = "\"homeFrom\": " + number(a) + ", \"homeTo\": " + number(b);
        break;
    }
    return "{\"lowest\": -100, \"highest\": 100, \"indexOffset\": 2, \"indexPeriod\": 7, \"negativeSwitch\": "
        + number(negativeSwitch) + ", \"positiveSwitch\": " + number(positiveSwitch) + ", \"start\": " + number(start)
        + ", " + home + "}";
}

/// The machine on which a starting case comes to pass.
std::string machineFor(const Method& method, const StartingCase& start)
{
    const bool right = !start.moves.empty() && start.moves.front().direction == Direction::Right;
    switch (start.start) {
    case Start::SwitchInactive:
        return machine(method.range, method.range == HomeRange::None ? 0 : right ? -50 : 50);
    case Start::SwitchActive:
        if (method.range == HomeRange::None)
            return machine(method.range, method.home == HomePlace::NegativeLimitEdge ? -90 : 90);
        return machine(method.range,
            method.range == HomeRange::FromNegativeEnd     ? -50
                : method.range == HomeRange::ToPositiveEnd ? 50
                                                           : 0);
    // A switch that is missing where it should reach to the end of the travel is a cam with the axis behind it.
    case Start::BehindCam:
    case Start::MeetsLimit:
        return machine(HomeRange::Cam, right ? 50 : -50);
    case Start::Anywhere:
        break;
    }
    return machine(method.range, 0);
}

double placeOf(const Method& method)
{
    switch (method.home) {
    case HomePlace::NegativeLimitEdge:
        return n;
    case HomePlace::PositiveLimitEdge:
        return p;
    case HomePlace::CamLeft:
        return a;
    case HomePlace::CamRight:
        return b;
    case HomePlace::NextIndexPulse:
        return method.cases.front().moves.front().direction == Direction::Left ? indexBelowZero : indexAboveZero;
    case HomePlace::PresentPosition:
        break;
    }
    return 0;
}

/// A change of a signal that the axis passed.
struct Passed {
    Signal signal;
    Change change;
    /// Number of the cycle of its leg.
    size_t cycle;
};

/// What the axis did between two turns.
struct Leg {
    Direction direction;
    std::vector<double> speeds; ///< of each cycle
    std::vector<Passed> passed;

    double fastest() const { return *std::max_element(speeds.begin(), speeds.end()); }
    const Passed* first(Signal signal, Change change) const
    {
        const auto found = std::find_if(passed.begin(), passed.end(),
            [&](const Passed& each) { return each.signal == signal && each.change == change; });
        return found == passed.end() ? nullptr : &*found;
    }
    bool onlySlowsAfter(size_t cycle) const
    {
        return std::is_sorted(speeds.rbegin(), speeds.rend() - static_cast<std::ptrdiff_t>(cycle));
    }
};

Signal signalOf(HomingSignal signal)
{
    switch (signal) {
    case HomingSignal::NegativeLimit:
        return Signal::NegativeLimit;
    case HomingSignal::PositiveLimit:
        return Signal::PositiveLimit;
    case HomingSignal::HomeSwitch:
        return Signal::HomeSwitch;
    case HomingSignal::Index:
    case HomingSignal::None:
        break;
    }
    return Signal::IndexPulse;
}

Passed passedOf(const PassedEdge& edge, size_t cycle)
{
    const bool enters = edge.signal == HomingSignal::Index || (edge.edge == SignalEdge::Left) == (edge.direction > 0);
    return { signalOf(edge.signal), enters ? Change::Rise : Change::Fall, cycle };
}

/// Homes the axis and tells its legs.
std::vector<Leg> home(AxisRig& rig)
{
    std::vector<Leg> legs;
    rig.runUntil(
        [&] {
            const double velocity = rig.axis.setPoint().velocity;
            const Direction direction = velocity < 0 ? Direction::Left : Direction::Right;
            if (velocity != 0 && (legs.empty() || legs.back().direction != direction))
                legs.push_back({ direction, {}, {} });
            if (!legs.empty()) {
                legs.back().speeds.push_back(std::fabs(velocity));
                for (const PassedEdge& edge : rig.axis.machine().passed())
                    legs.back().passed.push_back(passedOf(edge, legs.back().speeds.size() - 1));
            }
            return rig.axis.state() != AxisState::Homing;
        },
        400);
    return legs;
}

/// The limit switches that were run onto, in their order: "N", "PN" and the like.
QString limitsOf(const std::vector<Leg>& legs)
{
    QString limits;
    for (const Leg& leg : legs) {
        for (const Passed& each : leg.passed) {
            if (each.change == Change::Rise && each.signal == Signal::NegativeLimit)
                limits += QLatin1Char('N');
            if (each.change == Change::Rise && each.signal == Signal::PositiveLimit)
                limits += QLatin1Char('P');
        }
    }
    return limits;
}

LimitAction actionOf(const Method& method, QChar limit)
{
    return limit == QLatin1Char('N') ? method.negativeLimit : method.positiveLimit;
}

const char* nameOf(Start start)
{
    switch (start) {
    case Start::SwitchInactive:
        return "with the switch inactive";
    case Start::SwitchActive:
        return "with the switch active";
    case Start::BehindCam:
        return "from behind the cam";
    case Start::MeetsLimit:
        return "by way of the limit";
    case Start::Anywhere:
        break;
    }
    return "from anywhere";
}

} // namespace

/// The data that the homing pictures are drawn from against what the soft controller does: two sources of the same
/// facts, so that one slip cannot hide in both.
class HomingAgreementTest : public QObject {
    Q_OBJECT

private slots:
    void theControllerDrivesThePicturedPath_data();
    void theControllerDrivesThePicturedPath();
    void limitsDoWhatThePicturesSay_data();
    void limitsDoWhatThePicturesSay();
    void aTargetsOtherLimitIsAFault_data();
    void aTargetsOtherLimitIsAFault();
    void aLimitThatIsAFaultIsOneAtTheFirstContact_data();
    void aLimitThatIsAFaultIsOneAtTheFirstContact();
    void theSameSignalsAreNeeded_data();
    void theSameSignalsAreNeeded();
    void bothKnowTheSameMethods();
};

void HomingAgreementTest::theControllerDrivesThePicturedPath_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("start");
    const std::vector<Method>& methods = homing::methods();
    for (size_t i = 0; i < methods.size(); ++i) {
        for (size_t j = 0; j < methods[i].cases.size(); ++j)
            QTest::addRow("%d %s", methods[i].number, nameOf(methods[i].cases[j].start)) << int(i) << int(j);
    }
}

void HomingAgreementTest::theControllerDrivesThePicturedPath()
{
    QFETCH(int, method);
    QFETCH(int, start);
    const Method& pictured = homing::methods()[size_t(method)];
    const StartingCase& path = pictured.cases[size_t(start)];
    AxisRig rig(record(pictured.number), machineFor(pictured, path));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    const std::vector<Leg> legs = home(rig);
    QCOMPARE(rig.axis.state(), AxisState::StandStill);
    QCOMPARE(legs.size(), path.moves.size());
    for (size_t i = 0; i < legs.size(); ++i) {
        const Move& move = path.moves[i];
        QCOMPARE(legs[i].direction, move.direction);
        QVERIFY2(std::fabs(legs[i].fastest() - (move.speed == Speed::Search ? searchSpeed : closeSpeed)) < 1e-9,
            qPrintable(QStringLiteral("leg %1 runs at %2").arg(i).arg(legs[i].fastest())));
        const Passed* edge = legs[i].first(move.signal, move.change);
        QVERIFY2(edge, qPrintable(QStringLiteral("leg %1 meets its change of signal").arg(i)));
        QVERIFY2(std::fabs(legs[i].speeds[edge->cycle] - legs[i].fastest()) < 1e-9, "it runs at its speed up to there");
        QVERIFY2(legs[i].onlySlowsAfter(edge->cycle), "it ends there");
    }
    const double found = rig.axis.zeroPlace();
    QVERIFY2(std::fabs(found - placeOf(pictured)) < 1e-9, qPrintable(QStringLiteral("home at %1").arg(found)));
}

void HomingAgreementTest::limitsDoWhatThePicturesSay_data()
{
    QTest::addColumn<int>("method");
    const std::vector<Method>& methods = homing::methods();
    for (size_t i = 0; i < methods.size(); ++i)
        QTest::addRow("%d on a machine without home switch and pulses", methods[i].number) << int(i);
}

void HomingAgreementTest::limitsDoWhatThePicturesSay()
{
    QFETCH(int, method);
    const Method& pictured = homing::methods()[size_t(method)];
    std::string text = machine(HomeRange::None, 0);
    text.replace(text.find("\"indexPeriod\": 7"), 16, "\"indexPeriod\": 1000");
    text.replace(text.find("\"indexOffset\": 2"), 16, "\"indexOffset\": 500");
    AxisRig rig(record(pictured.number), text);
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    const QString met = limitsOf(home(rig));

    QString expected;
    bool isFault = false;
    if (!pictured.cases.front().moves.empty()) {
        const bool left = pictured.cases.front().moves.front().direction == Direction::Left;
        QString ahead = left ? QStringLiteral("NP") : QStringLiteral("PN");
        const LimitAction first = actionOf(pictured, ahead.front());
        QVERIFY(first != LimitAction::NoMotion);
        expected = first == LimitAction::ReverseOnce ? ahead : ahead.left(1);
        isFault = actionOf(pictured, expected.back()) == LimitAction::Fault;
    }
    QCOMPARE(met, expected);
    QCOMPARE(rig.axis.state(), isFault ? AxisState::ErrorStop : AxisState::StandStill);
    QCOMPARE(rig.axis.error(), isFault ? Diagnosis::homingLimit : Diagnosis::ok);
}

void HomingAgreementTest::aTargetsOtherLimitIsAFault_data()
{
    QTest::addColumn<int>("method");
    for (const Method& method : homing::methods()) {
        if (method.negativeLimit == LimitAction::Target || method.positiveLimit == LimitAction::Target)
            QTest::addRow("%d", method.number) << method.number;
    }
}

void HomingAgreementTest::aTargetsOtherLimitIsAFault()
{
    QFETCH(int, method);
    const auto pictured = std::find_if(homing::methods().begin(), homing::methods().end(),
        [method](const Method& each) { return each.number == method; });
    const bool negative = pictured->negativeLimit == LimitAction::Target;
    QCOMPARE(negative ? pictured->positiveLimit : pictured->negativeLimit, LimitAction::Fault);
    // The switches overlap, so that the way off the one leads onto the other.
    AxisRig rig(record(method), negative ? machine(HomeRange::None, -90, n, -85) : machine(HomeRange::None, 90, 85, p));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QCOMPARE(limitsOf(home(rig)), negative ? QStringLiteral("P") : QStringLiteral("N"));
    QCOMPARE(rig.axis.error(), Diagnosis::homingLimit);
}

void HomingAgreementTest::aLimitThatIsAFaultIsOneAtTheFirstContact_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<bool>("left");
    for (const Method& method : homing::methods()) {
        for (const StartingCase& start : method.cases) {
            if (start.start != Start::SwitchActive || method.range == HomeRange::None)
                continue;
            const bool left = start.moves.front().direction == Direction::Left;
            if ((left ? method.negativeLimit : method.positiveLimit) == LimitAction::Fault)
                QTest::addRow("%d", method.number) << method.number << left;
        }
    }
}

void HomingAgreementTest::aLimitThatIsAFaultIsOneAtTheFirstContact()
{
    QFETCH(int, method);
    QFETCH(bool, left);
    // The switch is active up to the end towards which the axis leaves it, so that the limit comes before its edge.
    AxisRig rig(record(method), machine(left ? HomeRange::FromNegativeEnd : HomeRange::ToPositiveEnd, 0));
    rig.enabled();
    QCOMPARE(rig.axis.home(), Diagnosis::ok);
    QCOMPARE(limitsOf(home(rig)), left ? QStringLiteral("N") : QStringLiteral("P"));
    QCOMPARE(rig.axis.error(), Diagnosis::homingLimit);
}

void HomingAgreementTest::theSameSignalsAreNeeded_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("signal");
    const std::vector<Method>& methods = homing::methods();
    for (size_t i = 0; i < methods.size(); ++i) {
        const int number = methods[i].number;
        QTest::addRow("%d without N", number) << int(i) << int(Signal::NegativeLimit);
        QTest::addRow("%d without P", number) << int(i) << int(Signal::PositiveLimit);
        QTest::addRow("%d without H", number) << int(i) << int(Signal::HomeSwitch);
    }
}

void HomingAgreementTest::theSameSignalsAreNeeded()
{
    QFETCH(int, method);
    QFETCH(int, signal);
    const Method& pictured = homing::methods()[size_t(method)];
    AxisValues values = record(pictured.number);
    const auto missing = static_cast<Signal>(signal);
    values[missing == Signal::NegativeLimit    ? "NegsLimitEnable"
            : missing == Signal::PositiveLimit ? "PosLimitEnable"
                                               : "OrgSignalEnable"]
        = "FALSE";
    AxisRig rig(values, machineFor(pictured, pictured.cases.front()));
    rig.enabled();
    const bool needed
        = std::find(pictured.required.begin(), pictured.required.end(), missing) != pictured.required.end();
    QCOMPARE(rig.axis.home(), needed ? Diagnosis::homingSignalMissing : Diagnosis::ok);
}

void HomingAgreementTest::bothKnowTheSameMethods()
{
    for (int number = -1; number <= 255; ++number) {
        const bool pictured = std::any_of(homing::methods().begin(), homing::methods().end(),
            [number](const Method& method) { return method.number == number; });
        QVERIFY2((findHomingMethod(number) != nullptr) == pictured, qPrintable(QString::number(number)));
    }
}

QTEST_APPLESS_MAIN(HomingAgreementTest)
#include "HomingAgreementTest.moc"
