#pragma once

#include <string>

/// The switches and pulses that homing can look for.
enum class HomingSignal { None, NegativeLimit, PositiveLimit, HomeSwitch, Index };

/// The place on a signal: where it becomes active to the right of it, or where it ends.
enum class SignalEdge { Left, Right };

/// One homing method, told by what decides its path. Directions: -1 left, +1 right, 0 none.
///
/// Every path is made of the same legs: search until the edge is passed; go back over it if that is needed to meet it
/// in the final direction; pass it once more at close speed.
struct HomingMethod {
    int number;
    HomingSignal signal;
    SignalEdge edge;
    /// Direction in which the home position is taken.
    int finalDirection;
    /// Direction of the search where the signal is inactive, and where it is active, at the start.
    int whenInactive;
    int whenActive;
    /// Side of the limit switch at which the search turns round once: -1, +1, or 0 where any limit is a fault.
    int turnsAtLimit;
};

/// The method of that number, or null.
const HomingMethod* findHomingMethod(int number);

/// The last number in a word such as "Homing_35", 0 if there is none.
int homingNumber(const std::string& word);
