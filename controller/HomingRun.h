#pragma once

#include "controller/HomingMethod.h"
#include "controller/Mechanics.h"

#include <cstdint>

/// Carries one homing method out: looks at what the machine passes in each cycle and says what the axis is to do.
class HomingRun {
public:
    struct Order {
        enum Kind {
            /// Go on as before.
            Keep,
            /// Run at the velocity.
            Run,
            /// Come to a stop.
            Brake,
            /// Come to a stop at the emergency rate.
            BrakeHard,
            /// The home position is known.
            Done,
            /// Homing is over, with the code.
            Failed
        };
        Kind kind = Keep;
        double velocity = 0;
        std::int16_t code = 0;
    };

    struct Speeds {
        double search = 0;
        double close = 0;
        /// Seconds for the whole run.
        double timeout = 0;
    };

    HomingRun(const HomingMethod& method, const Speeds& speeds);

    /// The first order.
    Order start(const Mechanics& machine);
    /// One cycle; standing says that the last order to brake has been carried out.
    Order cycle(const Mechanics& machine, bool standing, double seconds);

    /// The machine's place that was latched at the edge; valid when done.
    double latched() const { return m_latched; }

private:
    enum class Leg { Search, TurningRound, AfterSearch, Back, AfterBack, Close, Settle };

    Order search(int direction);
    Order pass(const PassedEdge& edge);
    Order passOwn(const PassedEdge& edge);
    Order meetLimit(int side);
    Order nextLeg();
    Order brakeAt(const PassedEdge& edge) const;
    Order approach();
    Order fail(std::int16_t code) const;

    HomingMethod m_method;
    Speeds m_speeds;
    Leg m_leg = Leg::Search;
    int m_direction = 0;
    double m_elapsed = 0;
    double m_latched = 0;
};
