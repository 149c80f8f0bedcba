#include "controller/HomingRun.h"

#include "protocol/DiagnosisCodes.h"

namespace {
bool isActive(HomingSignal signal, const Mechanics& machine)
{
    switch (signal) {
    case HomingSignal::NegativeLimit:
        return machine.negativeLimit();
    case HomingSignal::PositiveLimit:
        return machine.positiveLimit();
    case HomingSignal::HomeSwitch:
        return machine.homeSwitch();
    case HomingSignal::Index:
    case HomingSignal::None:
        break;
    }
    return false;
}

/// -1 or +1 where the edge is one of entering a limit switch, otherwise 0.
int limitEntered(const PassedEdge& edge)
{
    const bool becomesActive = (edge.edge == SignalEdge::Left) == (edge.direction > 0);
    if (!becomesActive)
        return 0;
    if (edge.signal == HomingSignal::NegativeLimit)
        return -1;
    return edge.signal == HomingSignal::PositiveLimit ? 1 : 0;
}
} // namespace

HomingRun::HomingRun(const HomingMethod& method, const Speeds& speeds) : m_method(method), m_speeds(speeds) { }

HomingRun::Order HomingRun::start(const Mechanics& machine)
{
    if (m_method.signal == HomingSignal::None) {
        m_latched = machine.position();
        return { Order::Done, 0, 0 };
    }
    const int direction = isActive(m_method.signal, machine) ? m_method.whenActive : m_method.whenInactive;
    const HomingSignal ahead = direction < 0 ? HomingSignal::NegativeLimit : HomingSignal::PositiveLimit;
    if (ahead == m_method.signal || !isActive(ahead, machine))
        return m_method.signal == HomingSignal::Index ? approach() : search(direction);
    // Standing on the limit already: there is nothing to be met on the way there.
    if (direction != m_method.turnsAtLimit)
        return fail(Diagnosis::homingLimit);
    return search(-direction);
}

HomingRun::Order HomingRun::search(int direction)
{
    m_leg = Leg::Search;
    m_direction = direction;
    return { Order::Run, direction * m_speeds.search, 0 };
}

HomingRun::Order HomingRun::approach()
{
    m_leg = Leg::Close;
    m_direction = m_method.finalDirection;
    return { Order::Run, m_direction * m_speeds.close, 0 };
}

HomingRun::Order HomingRun::fail(std::int16_t code) const
{
    return { Order::Failed, 0, code };
}

HomingRun::Order HomingRun::cycle(const Mechanics& machine, bool standing, double seconds)
{
    m_elapsed += seconds;
    if (m_elapsed > m_speeds.timeout)
        return fail(Diagnosis::homingTimeout);
    for (const PassedEdge& edge : machine.passed()) {
        const Order order = pass(edge);
        if (order.kind != Order::Keep)
            return order;
    }
    return standing ? nextLeg() : Order{};
}

HomingRun::Order HomingRun::pass(const PassedEdge& edge)
{
    if (edge.signal == m_method.signal)
        return edge.edge == m_method.edge && edge.direction == m_direction ? passOwn(edge) : Order{};
    const int side = limitEntered(edge);
    return side == 0 ? Order{} : meetLimit(side);
}

HomingRun::Order HomingRun::passOwn(const PassedEdge& edge)
{
    switch (m_leg) {
    case Leg::Search:
        m_leg = Leg::AfterSearch;
        return brakeAt(edge);
    case Leg::Back:
        m_leg = Leg::AfterBack;
        return brakeAt(edge);
    case Leg::Close:
        m_latched = edge.position;
        m_leg = Leg::Settle;
        return brakeAt(edge);
    case Leg::TurningRound:
    case Leg::AfterSearch:
    case Leg::AfterBack:
    case Leg::Settle:
        break;
    }
    return {};
}

HomingRun::Order HomingRun::brakeAt(const PassedEdge& edge) const
{
    return { limitEntered(edge) == 0 ? Order::Brake : Order::BrakeHard, 0, 0 };
}

HomingRun::Order HomingRun::meetLimit(int side)
{
    // After the turn every way leads away from that switch, and braking that comes back to it is no search any more.
    const bool allowed = side == m_method.turnsAtLimit;
    if (allowed && m_leg == Leg::Search) {
        m_leg = Leg::TurningRound;
        return { Order::BrakeHard, 0, 0 };
    }
    // The way of braking behind the edge may reach the switch; the axis turns round there in any case.
    if (allowed && m_leg == Leg::AfterSearch)
        return { Order::BrakeHard, 0, 0 };
    return fail(Diagnosis::homingLimit);
}

HomingRun::Order HomingRun::nextLeg()
{
    switch (m_leg) {
    case Leg::TurningRound:
        return search(-m_direction);
    case Leg::AfterSearch:
        if (m_direction != m_method.finalDirection)
            return approach();
        m_leg = Leg::Back;
        m_direction = -m_direction;
        return { Order::Run, m_direction * m_speeds.search, 0 };
    case Leg::AfterBack:
        return approach();
    case Leg::Settle:
        return { Order::Done, 0, 0 };
    case Leg::Search:
    case Leg::Back:
    case Leg::Close:
        break;
    }
    return {};
}
