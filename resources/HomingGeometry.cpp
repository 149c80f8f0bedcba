#include "resources/HomingGeometry.h"

namespace drawing {

namespace {

using homing::Change;
using homing::Direction;
using homing::HomePlace;
using homing::HomeRange;
using homing::Method;
using homing::Move;
using homing::Signal;
using homing::Start;

constexpr double middle = 0.5;

/// Home switch: a is the first, b the second.
Stretch homeSwitch(const Method& method)
{
    switch (method.range) {
    case HomeRange::FromNegativeEnd:
        return { 0.0, 0.54 };
    case HomeRange::ToPositiveEnd:
        return { 0.46, 1.0 };
    case HomeRange::Cam:
    case HomeRange::None:
        break;
    }
    return { 0.42, 0.58 };
}

bool startsRight(const homing::StartingCase& start)
{
    return !start.moves.empty() && start.moves.front().direction == Direction::Right;
}

double limitSwitchMiddle(Signal limit)
{
    return limit == Signal::NegativeLimit ? negativeLimitEdge / 2 : (1 + positiveLimitEdge) / 2;
}

double activeStart(const Method& method)
{
    const Signal first = method.required.front();
    if (first != Signal::HomeSwitch)
        return limitSwitchMiddle(first);
    switch (method.range) {
    case HomeRange::FromNegativeEnd:
        return 0.38;
    case HomeRange::ToPositiveEnd:
        return 0.62;
    case HomeRange::Cam:
    case HomeRange::None:
        break;
    }
    return middle;
}

} // namespace

std::vector<Stretch> activeStretches(const Method& method, Signal signal)
{
    switch (signal) {
    case Signal::NegativeLimit:
        return { { 0.0, negativeLimitEdge } };
    case Signal::PositiveLimit:
        return { { positiveLimitEdge, 1.0 } };
    case Signal::HomeSwitch:
        return { homeSwitch(method) };
    case Signal::IndexPulse:
        break;
    }
    std::vector<Stretch> pulses;
    for (double turn : { 0.18, 0.34, 0.50, 0.66, 0.82 })
        pulses.emplace_back(turn - 0.003, turn + 0.003);
    return pulses;
}

double edgeOf(const Method& method, const Move& move)
{
    switch (move.signal) {
    case Signal::NegativeLimit:
        return negativeLimitEdge;
    case Signal::PositiveLimit:
        return positiveLimitEdge;
    case Signal::IndexPulse:
        return middle;
    case Signal::HomeSwitch:
        break;
    }
    const bool leftEdge = (move.direction == Direction::Right) == (move.change == Change::Rise);
    return leftEdge ? homeSwitch(method).first : homeSwitch(method).second;
}

double startOf(const Method& method, const homing::StartingCase& start)
{
    switch (start.start) {
    case Start::SwitchInactive:
        return startsRight(start) ? 0.22 : 0.78;
    case Start::SwitchActive:
        return activeStart(method);
    case Start::BehindCam:
    case Start::MeetsLimit:
        return startsRight(start) ? 0.74 : 0.26;
    case Start::Anywhere:
        break;
    }
    if (start.moves.empty())
        return middle;
    return startsRight(start) ? 0.38 : 0.62;
}

double homeOf(const Method& method)
{
    switch (method.home) {
    case HomePlace::NegativeLimitEdge:
        return negativeLimitEdge;
    case HomePlace::PositiveLimitEdge:
        return positiveLimitEdge;
    case HomePlace::CamLeft:
        return homeSwitch(method).first;
    case HomePlace::CamRight:
        return homeSwitch(method).second;
    case HomePlace::NextIndexPulse:
    case HomePlace::PresentPosition:
        break;
    }
    return middle;
}

} // namespace drawing
