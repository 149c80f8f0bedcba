#include "controller/ControllerService.h"

#include "protocol/ProtocolVersion.h"
#include "tests/controller/AxisRecords.h"
#include "tests/controller/ClosedForm.h"

#include <QtTest>

#include <cmath>

namespace proto = kestrun::protocol;

// The service by itself, on a simulated clock: each number of a command goes to its own place. Five different ones show
// every exchange and every loss in the motion that follows.
namespace {
using Method = grpc::Status (ControllerService::*)(grpc::ServerContext*, const proto::MotionRequest*, proto::Result*);

constexpr double position = 57;
constexpr double velocity = 40;
constexpr double acceleration = 400;
constexpr double deceleration = 150;
constexpr double jerk = 4000;
constexpr double cycle = 0.001;
constexpr int axisNo = 3;

proto::MotionRequest fiveNumbers(bool pressed)
{
    proto::MotionRequest request;
    request.set_position(position);
    request.set_velocity(velocity);
    request.set_acceleration(acceleration);
    request.set_deceleration(deceleration);
    request.set_jerk(jerk);
    request.set_pressed(pressed ? 1 : 0);
    return request;
}

/// A controller whose one axis is in debug mode of a session and stands, switched on.
class Rig {
public:
    Rig() : m_controller(endless()), m_service(&m_controller, &m_faults, "right")
    {
        grpc::ServerContext context;
        proto::LoginRequest request;
        proto::LoginReply reply;
        request.set_version(protocolVersion);
        request.set_token("right");
        m_service.Login(&context, &request, &reply);
        m_session = reply.session();
    }

    bool enable()
    {
        grpc::ServerContext first;
        grpc::ServerContext second;
        proto::EnterDebugModeRequest enter;
        proto::FlagRequest on;
        proto::Result entered;
        proto::Result enabled;
        enter.set_session(m_session);
        enter.set_axis(axisNo);
        enter.set_enter(1);
        enter.set_timeout(30000);
        on.set_session(m_session);
        on.set_axis(axisNo);
        on.set_value(1);
        if (m_controller.download({ makeAxisText(axisNo) }).code != 0)
            return false;
        m_service.EnterDebugMode(&first, &enter, &entered);
        m_service.SetEnable(&second, &on, &enabled);
        m_controller.step(50);
        return entered.result() == 0 && enabled.result() == 0 && status().axisState == 3;
    }

    int call(Method method, proto::MotionRequest request)
    {
        grpc::ServerContext context;
        proto::Result reply;
        request.set_session(m_session);
        request.set_axis(axisNo);
        (m_service.*method)(&context, &request, &reply);
        return reply.result();
    }

    /// Steep ramps without a jerk limit, so that they are soon over and are none of the five numbers.
    int call(Method method, double speed)
    {
        proto::MotionRequest request;
        request.set_velocity(speed);
        request.set_acceleration(5000);
        request.set_deceleration(5000);
        request.set_pressed(1);
        const int result = call(method, request);
        m_controller.step(200);
        return result;
    }

    AxisRef status()
    {
        AxisRef ref{};
        m_controller.peek(axisNo, &ref, nullptr);
        return ref;
    }

    QString difference(const ClosedForm& expected)
    {
        for (int i = 1; i * cycle < expected.duration() + 0.02; ++i) {
            m_controller.step();
            const AxisRef is = status();
            const MotionState should = expected.at(i * cycle);
            if (std::fabs(is.setPosition - should.position) > 1e-8
                || std::fabs(is.setVelocity - should.velocity) > 1e-7)
                return QStringLiteral("after %1 s at %2 with %3 instead of at %4 with %5")
                    .arg(i * cycle)
                    .arg(is.setPosition)
                    .arg(is.setVelocity)
                    .arg(should.position)
                    .arg(should.velocity);
        }
        return {};
    }

private:
    static MotionController::Options endless()
    {
        MotionController::Options options;
        options.cycle = cycle;
        options.mechanics[-1] = R"({"lowest": null, "highest": null})";
        return options;
    }

    MotionController m_controller;
    Faults m_faults;
    ControllerService m_service;
    std::string m_session;
};
} // namespace

class ControllerServiceMotionTest : public QObject {
    Q_OBJECT

private slots:
    void movesTakeTheirNumbers_data();
    void movesTakeTheirNumbers();
    void changesOfSpeedTakeTheirNumbers_data();
    void changesOfSpeedTakeTheirNumbers();
    void stopsTakeTheirNumbers_data();
    void stopsTakeTheirNumbers();
};

void ControllerServiceMotionTest::movesTakeTheirNumbers_data()
{
    QTest::addColumn<bool>("relative");
    QTest::newRow("MoveAbs") << false;
    QTest::newRow("MoveRel") << true;
}

void ControllerServiceMotionTest::movesTakeTheirNumbers()
{
    QFETCH(bool, relative);
    Rig rig;
    QVERIFY(rig.enable());
    // Away from zero, so that a place and a distance differ.
    proto::MotionRequest away = fiveNumbers(false);
    away.set_position(-20);
    QCOMPARE(rig.call(&ControllerService::MoveAbs, away), 0);
    QCOMPARE(rig.difference(ClosedForm(0).move(-20, { velocity, acceleration, deceleration, jerk })), QString());
    const Method method = relative ? &ControllerService::MoveRel : &ControllerService::MoveAbs;
    QCOMPARE(rig.call(method, fiveNumbers(false)), 0);
    const double distance = relative ? position : position + 20;
    QCOMPARE(rig.difference(ClosedForm(-20).move(distance, { velocity, acceleration, deceleration, jerk })), QString());
    QCOMPARE(rig.status().axisState, std::uint16_t(3));
    QCOMPARE(rig.status().setPosition, -20 + distance);
}

void ControllerServiceMotionTest::changesOfSpeedTakeTheirNumbers_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("jog");
    QTest::newRow("MoveVel") << 1 << false;
    QTest::newRow("JopPos") << 1 << true;
    QTest::newRow("JopNeg") << -1 << true;
}

void ControllerServiceMotionTest::changesOfSpeedTakeTheirNumbers()
{
    QFETCH(int, direction);
    QFETCH(bool, jog);
    const Method jogMethod = direction > 0 ? &ControllerService::JopPos : &ControllerService::JopNeg;
    Rig rig;
    QVERIFY(rig.enable());
    // From the other direction, so that both ramps are seen.
    QCOMPARE(rig.call(&ControllerService::MoveVel, direction * -30.0), 0);
    QCOMPARE(rig.status().setVelocity, direction * -30.0);
    ClosedForm expected(rig.status().setPosition, direction * -30);
    expected.change(0, deceleration, jerk).change(direction * velocity, acceleration, jerk);
    QCOMPARE(rig.call(jog ? jogMethod : &ControllerService::MoveVel, fiveNumbers(true)), 0);
    QCOMPARE(rig.difference(expected), QString());
    QCOMPARE(rig.status().axisState, std::uint16_t(5));
}

void ControllerServiceMotionTest::stopsTakeTheirNumbers_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<bool>("jog");
    QTest::newRow("SetStop") << 1 << false;
    QTest::newRow("JopPos released") << 1 << true;
    QTest::newRow("JopNeg released") << -1 << true;
}

void ControllerServiceMotionTest::stopsTakeTheirNumbers()
{
    QFETCH(int, direction);
    QFETCH(bool, jog);
    const Method jogMethod = direction > 0 ? &ControllerService::JopPos : &ControllerService::JopNeg;
    Rig rig;
    QVERIFY(rig.enable());
    QCOMPARE(rig.call(jogMethod, 60.0), 0);
    QCOMPARE(rig.status().setVelocity, direction * 60.0);
    ClosedForm expected(rig.status().setPosition, direction * 60);
    expected.change(0, deceleration, jerk);
    QCOMPARE(rig.call(jog ? jogMethod : &ControllerService::SetStop, fiveNumbers(false)), 0);
    QCOMPARE(rig.difference(expected), QString());
    QCOMPARE(rig.status().axisState, std::uint16_t(3));
}

QTEST_GUILESS_MAIN(ControllerServiceMotionTest)
#include "ControllerServiceMotionTest.moc"
