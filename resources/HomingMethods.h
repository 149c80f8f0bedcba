#pragma once

#include <vector>

/// How an axis finds its home position, method by method: the facts that the homing pictures are drawn from.
///
/// Negative is left, positive is right. A signal rises where it becomes active in the direction travelled, and falls
/// where it becomes inactive. Plain data without any library, so that others can be held against it.
namespace homing {

enum class Signal {
    NegativeLimit, ///< N
    PositiveLimit, ///< P
    HomeSwitch, ///< H
    IndexPulse, ///< Z
};

enum class Direction {
    Left,
    Right,
};

enum class Speed {
    Search, ///< the record's HomeSpeed
    Close, ///< the record's HomeCloseSpeed
};

enum class Change {
    Rise,
    Fall,
};

/// A stretch of the way: it ends where the signal changes. What the axis still needs to brake is part of it.
struct Move {
    Direction direction;
    Speed speed;
    Signal signal;
    Change change;
};

/// Where along the travel the home switch is active.
enum class HomeRange {
    None, ///< the method has no home switch
    FromNegativeEnd, ///< from the negative end to b
    ToPositiveEnd, ///< from a to the positive end
    Cam, ///< between a on the left and b on the right
};

/// Where an axis may stand when homing starts, seen from the switch that the method looks for.
enum class Start {
    SwitchInactive, ///< on the side from which the first move leads to the switch
    SwitchActive, ///< on the switch
    BehindCam, ///< on the other side of the cam, so that the limit comes first
    MeetsLimit, ///< anywhere, when the limit comes although the switch should have come first
    Anywhere, ///< the method has no switch
};

struct StartingCase {
    Start start;
    std::vector<Move> moves; ///< in order; the last one ends at the home position. Empty: no motion
};

enum class HomePlace {
    NegativeLimitEdge, ///< the inner edge of N
    PositiveLimitEdge, ///< the inner edge of P
    CamLeft, ///< a
    CamRight, ///< b
    NextIndexPulse,
    PresentPosition,
};

/// What the method makes of a limit switch that is met on the way.
enum class LimitAction {
    NoMotion, ///< the axis does not move
    Target, ///< the method looks for it
    ReverseOnce, ///< the axis turns round; a second contact is a fault
    Fault,
};

struct Method {
    int number;
    std::vector<Signal> required;
    std::vector<Signal> advised;
    HomeRange range;
    HomePlace home;
    LimitAction negativeLimit;
    LimitAction positiveLimit;
    std::vector<StartingCase> cases;
};

/// The 17 methods that have a picture, by rising number.
const std::vector<Method>& methods();

} // namespace homing
