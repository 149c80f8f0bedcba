#include "resources/HomingMethods.h"
#include "resources/HomingGeometry.h"

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

/// What each method must be, written down apart from the table that is tested. Signals go by their letters. Paths read
/// "Ra La": to the right up to the edge a, to the left up to the edge a; a limit's edge goes by the limit's letter.
struct Facts {
    int number;
    const char* required;
    const char* advised;
    /// "N" or "P": inner edge of that limit; "a", "b": edges of the home switch; "Z": next pulse; "-": stays.
    const char* home;
    /// How the home signal changes and in which direction the axis then moves, such as "fall L".
    const char* finish;
    const char* fromInactive;
    const char* fromActive;
    /// The path that leads over the limit of reversal.
    const char* overLimit;
    /// What N and P do: t target, r reverse once, f fault, - not met.
    const char* limits;
};

const Facts allFacts[] = {
    { 17, "N", "", "N", "fall R", "LN RN", "RN LN RN", "", "tf" },
    { 18, "P", "", "P", "fall L", "RP LP", "LP RP LP", "", "ft" },
    { 19, "H", "NP", "a", "fall L", "Ra La", "La Ra La", "RP La Ra La", "fr" },
    { 20, "H", "NP", "a", "rise R", "Ra La Ra", "La Ra", "RP La Ra", "fr" },
    { 21, "H", "NP", "b", "fall R", "Lb Rb", "Rb Lb Rb", "LN Rb Lb Rb", "rf" },
    { 22, "H", "NP", "b", "rise L", "Lb Rb Lb", "Rb Lb", "LN Rb Lb", "rf" },
    { 23, "HP", "", "a", "fall L", "Ra La", "La Ra La", "RP La Ra La", "fr" },
    { 24, "HP", "", "a", "rise R", "Ra La Ra", "La Ra", "RP La Ra", "fr" },
    { 25, "HP", "", "b", "rise L", "Rb Lb", "Rb Lb", "RP Lb Rb Lb", "fr" },
    { 26, "HP", "", "b", "fall R", "Rb Lb Rb", "Rb Lb Rb", "RP Lb Rb", "fr" },
    { 27, "HN", "", "b", "fall R", "Lb Rb", "Rb Lb Rb", "LN Rb Lb Rb", "rf" },
    { 28, "HN", "", "b", "rise L", "Lb Rb Lb", "Rb Lb", "LN Rb Lb", "rf" },
    { 29, "HN", "", "a", "rise R", "La Ra", "La Ra", "LN Ra La Ra", "rf" },
    { 30, "HN", "", "a", "fall L", "La Ra La", "La Ra La", "LN Ra La", "rf" },
    { 33, "Z", "", "Z", "rise L", "", "", "", "ff" },
    { 34, "Z", "", "Z", "rise R", "", "", "", "ff" },
    { 35, "", "", "-", "", "", "", "", "--" },
};

const Method* methodOf(int number)
{
    for (const Method& method : homing::methods())
        if (method.number == number)
            return &method;
    return nullptr;
}

const StartingCase* caseOf(const Method& method, Start start)
{
    for (const StartingCase& each : method.cases)
        if (each.start == start)
            return &each;
    return nullptr;
}

QString lettersOf(const std::vector<Signal>& signalList)
{
    QString letters;
    for (Signal signal : signalList)
        letters += signal == Signal::NegativeLimit ? QLatin1Char('N')
            : signal == Signal::PositiveLimit      ? QLatin1Char('P')
            : signal == Signal::HomeSwitch         ? QLatin1Char('H')
                                                   : QLatin1Char('Z');
    return letters;
}

QChar edgeOf(const Move& move)
{
    if (move.signal != Signal::HomeSwitch)
        return lettersOf({ move.signal }).front();
    const bool enters = move.change == Change::Rise;
    return QLatin1Char((move.direction == Direction::Right) == enters ? 'a' : 'b');
}

QString pathOf(const StartingCase& start)
{
    QStringList moves;
    for (const Move& move : start.moves)
        moves << QString(QLatin1Char(move.direction == Direction::Left ? 'L' : 'R')) + edgeOf(move);
    return moves.join(QLatin1Char(' '));
}

QChar letterOf(LimitAction action)
{
    switch (action) {
    case LimitAction::NoMotion:
        return QLatin1Char('-');
    case LimitAction::Target:
        return QLatin1Char('t');
    case LimitAction::ReverseOnce:
        return QLatin1Char('r');
    case LimitAction::Fault:
        break;
    }
    return QLatin1Char('f');
}

/// A travel with switches of its own, on which paths are really driven.
struct Travel {
    double a = 0.45;
    double b = 0.55;
    double negative = 0.15;
    double positive = 0.85;

    static Travel of(HomeRange range)
    {
        Travel travel;
        if (range == HomeRange::FromNegativeEnd)
            travel.a = -1;
        if (range == HomeRange::ToPositiveEnd)
            travel.b = 2;
        return travel;
    }

    bool active(Signal signal, double place) const
    {
        switch (signal) {
        case Signal::NegativeLimit:
            return place < negative;
        case Signal::PositiveLimit:
            return place > positive;
        case Signal::HomeSwitch:
            return place > a && place < b;
        case Signal::IndexPulse:
            break;
        }
        return std::fmod(place + 1, 0.2) < 0.005;
    }

    double placeOf(QChar home) const
    {
        switch (home.toLatin1()) {
        case 'N':
            return negative;
        case 'P':
            return positive;
        case 'a':
            return a;
        default:
            return b;
        }
    }

    double startOf(const Method& method, const StartingCase& start) const
    {
        const bool right = start.moves.front().direction == Direction::Right;
        switch (start.start) {
        case Start::SwitchActive:
            if (method.required.front() == Signal::NegativeLimit)
                return 0.05;
            if (method.required.front() == Signal::PositiveLimit)
                return 0.95;
            return method.range == HomeRange::FromNegativeEnd ? 0.4
                : method.range == HomeRange::ToPositiveEnd    ? 0.6
                                                              : 0.5;
        case Start::BehindCam:
        case Start::MeetsLimit:
            return right ? 0.7 : 0.3;
        case Start::SwitchInactive:
        case Start::Anywhere:
            break;
        }
        return right ? 0.33 : 0.67;
    }
};

/// What came of driving a path.
struct Drive {
    bool arrived = true; ///< every move met its change of signal
    double place = 0;
    int negativeContacts = 0;
    int positiveContacts = 0;
};

constexpr double step = 0.0005;

/// Drives the path in small steps; at search speed the axis runs on by `braking` past the change that ends a move.
Drive drive(const Travel& travel, const StartingCase& path, double from, double braking)
{
    Drive result;
    double place = from;
    const auto advance = [&](double ahead) {
        const double next = qBound(0.0, place + ahead * step, 1.0);
        result.negativeContacts
            += !travel.active(Signal::NegativeLimit, place) && travel.active(Signal::NegativeLimit, next) ? 1 : 0;
        result.positiveContacts
            += !travel.active(Signal::PositiveLimit, place) && travel.active(Signal::PositiveLimit, next) ? 1 : 0;
        place = next;
    };
    for (const Move& move : path.moves) {
        const double ahead = move.direction == Direction::Right ? 1 : -1;
        bool met = false;
        for (int i = 0; i < int(1.2 / step) && !met; ++i) {
            const bool before = travel.active(move.signal, place);
            advance(ahead);
            met = before != travel.active(move.signal, place) && before == (move.change == Change::Fall);
        }
        result.arrived = result.arrived && met;
        result.place = place;
        if (move.speed == Speed::Search)
            for (double run = 0; run < braking; run += step)
                advance(ahead);
    }
    return result;
}

} // namespace

/// The table of the homing methods against facts that are written down apart from it, and its paths against a travel
/// on which they are driven.
class HomingMethodsTest : public QObject {
    Q_OBJECT

private slots:
    void tableHoldsTheSeventeenMethodsInOrder();
    void methodAgreesWithItsFacts_data();
    void methodAgreesWithItsFacts();
    void pathsTakeTheFinalEdgeAtCloseSpeedAlone_data();
    void pathsTakeTheFinalEdgeAtCloseSpeedAlone();
    void everyPathEndsAtTheHomePosition_data();
    void everyPathEndsAtTheHomePosition();
    void pathsMeetNoLimitThatIsAFault_data();
    void pathsMeetNoLimitThatIsAFault();
    void indexPulseMethodsStopAtTheNextPulse();
    void picturedPulsesLeaveRoomForTheLimitThatComesFirst();
    void noTwoMethodsAreTheSame();
    void pictureGeometryLeadsToTheSameHomePosition_data();
    void pictureGeometryLeadsToTheSameHomePosition();

private:
    static void methodRows();
    static void pathRows();
};

void HomingMethodsTest::tableHoldsTheSeventeenMethodsInOrder()
{
    QVector<int> numbers;
    for (const Method& method : homing::methods())
        numbers << method.number;
    const QVector<int> expected{ 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35 };
    QCOMPARE(numbers, expected);
}

void HomingMethodsTest::methodRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(allFacts)); ++i)
        QTest::addRow("method %d", allFacts[i].number) << i;
}

void HomingMethodsTest::methodAgreesWithItsFacts_data()
{
    methodRows();
}

void HomingMethodsTest::methodAgreesWithItsFacts()
{
    QFETCH(int, index);
    const Facts& facts = allFacts[index];
    const Method* method = methodOf(facts.number);
    QVERIFY(method);
    QCOMPARE(lettersOf(method->required), QString::fromLatin1(facts.required));
    QCOMPARE(lettersOf(method->advised), QString::fromLatin1(facts.advised));
    const QString limits = QString(letterOf(method->negativeLimit)) + letterOf(method->positiveLimit);
    QCOMPARE(limits, QString::fromLatin1(facts.limits));

    const QHash<QChar, HomePlace> places{ { QLatin1Char('N'), HomePlace::NegativeLimitEdge },
        { QLatin1Char('P'), HomePlace::PositiveLimitEdge }, { QLatin1Char('a'), HomePlace::CamLeft },
        { QLatin1Char('b'), HomePlace::CamRight }, { QLatin1Char('Z'), HomePlace::NextIndexPulse },
        { QLatin1Char('-'), HomePlace::PresentPosition } };
    QCOMPARE(method->home, places.value(QLatin1Char(facts.home[0])));

    const auto path = [method](Start start) {
        const StartingCase* found = caseOf(*method, start);
        return found ? pathOf(*found) : QString();
    };
    QCOMPARE(path(Start::SwitchInactive), QString::fromLatin1(facts.fromInactive));
    QCOMPARE(path(Start::SwitchActive), QString::fromLatin1(facts.fromActive));
    const Start overLimit = method->range == HomeRange::Cam ? Start::BehindCam : Start::MeetsLimit;
    QCOMPARE(path(overLimit), QString::fromLatin1(facts.overLimit));

    for (const StartingCase& start : method->cases) {
        if (QByteArray(facts.finish).isEmpty()) {
            QVERIFY(start.moves.empty());
            continue;
        }
        const Move& last = start.moves.back();
        const QString finish = QLatin1String(last.change == Change::Rise ? "rise " : "fall ")
            + QLatin1String(last.direction == Direction::Left ? "L" : "R");
        QCOMPARE(finish, QString::fromLatin1(facts.finish));
        QCOMPARE(last.signal, method->required.front());
    }
}

void HomingMethodsTest::pathsTakeTheFinalEdgeAtCloseSpeedAlone_data()
{
    methodRows();
}

void HomingMethodsTest::pathsTakeTheFinalEdgeAtCloseSpeedAlone()
{
    QFETCH(int, index);
    for (const StartingCase& start : methodOf(allFacts[index].number)->cases)
        for (size_t i = 0; i < start.moves.size(); ++i) {
            const bool last = i + 1 == start.moves.size();
            QCOMPARE(start.moves[i].speed, last ? Speed::Close : Speed::Search);
            if (i > 0)
                QVERIFY2(start.moves[i].direction != start.moves[i - 1].direction, "each move turns round");
        }
}

void HomingMethodsTest::pathRows()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("path");
    QTest::addColumn<double>("braking");
    for (int i = 0; i < 14; ++i) {
        const size_t paths = methodOf(allFacts[i].number)->cases.size();
        for (size_t path = 0; path < paths; ++path) {
            QTest::addRow("method %d, path %d, short braking", allFacts[i].number, int(path)) << i << int(path) << 0.03;
            QTest::addRow("method %d, path %d, braking longer than the cam", allFacts[i].number, int(path))
                << i << int(path) << 0.12;
        }
    }
}

void HomingMethodsTest::everyPathEndsAtTheHomePosition_data()
{
    pathRows();
}

void HomingMethodsTest::everyPathEndsAtTheHomePosition()
{
    QFETCH(int, index);
    QFETCH(int, path);
    QFETCH(double, braking);
    const Method& method = *methodOf(allFacts[index].number);
    const StartingCase& start = method.cases[size_t(path)];
    const Travel travel = Travel::of(method.range);
    const double from = travel.startOf(method, start);
    const bool active = travel.active(method.required.front(), from);
    if (start.start == Start::SwitchActive)
        QVERIFY(active);
    if (start.start == Start::SwitchInactive || start.start == Start::BehindCam)
        QVERIFY(!active);
    const Drive drove = drive(travel, start, from, braking);
    QVERIFY(drove.arrived);
    const double home = travel.placeOf(QLatin1Char(allFacts[index].home[0]));
    QVERIFY2(qAbs(drove.place - home) <= 2 * step, qPrintable(QString::number(drove.place)));
}

void HomingMethodsTest::pathsMeetNoLimitThatIsAFault_data()
{
    pathRows();
}

void HomingMethodsTest::pathsMeetNoLimitThatIsAFault()
{
    QFETCH(int, index);
    QFETCH(int, path);
    QFETCH(double, braking);
    const Method& method = *methodOf(allFacts[index].number);
    const StartingCase& start = method.cases[size_t(path)];
    const Travel travel = Travel::of(method.range);
    const Drive drove = drive(travel, start, travel.startOf(method, start), braking);
    const bool overLimit = start.start == Start::BehindCam || start.start == Start::MeetsLimit;
    const auto check = [overLimit](LimitAction action, int contacts) {
        if (action == LimitAction::Fault)
            QCOMPARE(contacts, 0);
        if (action == LimitAction::ReverseOnce)
            QCOMPARE(contacts, overLimit ? 1 : 0);
    };
    check(method.negativeLimit, drove.negativeContacts);
    check(method.positiveLimit, drove.positiveContacts);
}

void HomingMethodsTest::indexPulseMethodsStopAtTheNextPulse()
{
    const Travel travel;
    const Drive left = drive(travel, methodOf(33)->cases.front(), 0.5, 0);
    QVERIFY(left.arrived);
    QVERIFY2(qAbs(left.place - 0.405) <= 2 * step, qPrintable(QString::number(left.place)));
    const Drive right = drive(travel, methodOf(34)->cases.front(), 0.5, 0);
    QVERIFY(right.arrived);
    QVERIFY2(qAbs(right.place - 0.6) <= 2 * step, qPrintable(QString::number(right.place)));
}

void HomingMethodsTest::picturedPulsesLeaveRoomForTheLimitThatComesFirst()
{
    // The pictures show a start 62 of 916 pixels before the limit from which no pulse comes before it.
    constexpr double room = 62.0 / 916;
    for (int number : { 33, 34 })
        for (const drawing::Stretch& pulse : drawing::activeStretches(*methodOf(number), Signal::IndexPulse)) {
            QVERIFY(pulse.first > drawing::negativeLimitEdge + room);
            QVERIFY(pulse.second < drawing::positiveLimitEdge - room);
        }
}

void HomingMethodsTest::noTwoMethodsAreTheSame()
{
    QStringList seen;
    for (const Method& method : homing::methods()) {
        QString all = lettersOf(method.required) + QString::number(int(method.home));
        for (const StartingCase& start : method.cases) {
            all += QLatin1Char(' ');
            for (const Move& move : start.moves)
                all += QString::number(int(move.direction)) + QString::number(int(move.change));
        }
        QVERIFY2(!seen.contains(all), qPrintable(QString::number(method.number)));
        seen << all;
    }
}

void HomingMethodsTest::pictureGeometryLeadsToTheSameHomePosition_data()
{
    methodRows();
}

void HomingMethodsTest::pictureGeometryLeadsToTheSameHomePosition()
{
    QFETCH(int, index);
    const Method& method = *methodOf(allFacts[index].number);
    for (const StartingCase& start : method.cases) {
        double place = drawing::startOf(method, start);
        for (const Move& move : start.moves) {
            const double edge = drawing::edgeOf(method, move);
            const double ahead = move.direction == Direction::Right ? 1 : -1;
            QVERIFY2((edge - place) * ahead > 0, "the edge lies ahead");
            place = move.speed == Speed::Search ? edge + ahead * drawing::brakingDistance : edge;
            QVERIFY(place > 0 && place < 1);
        }
        QCOMPARE(place, drawing::homeOf(method));
    }
}

QTEST_GUILESS_MAIN(HomingMethodsTest)

#include "HomingMethodsTest.moc"
