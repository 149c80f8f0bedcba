#include "tests/controller/ControllerRig.h"

#include "controller/MotionController.h"
#include "protocol/DiagnosisCodes.h"

#include <QtTest>

#include <cmath>

// What ends a session while an axis homes, faults of machines that outlast a download, and records that pages accept.
namespace {
constexpr SessionId alice = 1;
constexpr SessionId bob = 2;
using Kind = MotionController::Kind;

/// A controller on a simulated clock.
class Rig {
public:
    explicit Rig(const std::vector<AxisText>& axes) : controller({})
    {
        const DownloadResult result = controller.download(axes);
        if (result.code != 0)
            qFatal("%s %s", result.key.c_str(), result.reason.c_str());
    }

    AxisRef ref(int axisNo)
    {
        AxisRef status{};
        controller.peek(axisNo, &status, nullptr);
        return status;
    }

    std::int16_t enable(int axisNo, int timeout = 30000)
    {
        controller.enterDebugMode(alice, axisNo, 1, timeout);
        const std::int16_t code
            = controller.command(alice, axisNo, Kind::Plain, [](Axis& axis) { return axis.setEnable(true); });
        controller.step(50);
        return code;
    }

    std::int16_t move(int axisNo, double velocity)
    {
        return controller.command(alice, axisNo, Kind::Motion,
            [velocity](Axis& axis) { return axis.moveVelocity(numbers(velocity, 1000, 1000)); });
    }

    std::int16_t jog(int axisNo)
    {
        return controller.command(
            alice, axisNo, Kind::Motion, [](Axis& axis) { return axis.startJog(1, numbers(10, 1000, 1000)); });
    }

    MotionController controller;
};

/// Homes to the right at 20 units/s for some seconds; the emergency ramp takes a fifth of a second.
AxisText homingAxis()
{
    return makeAxisText(0,
        { { "HomeMode", "Homing_24" }, { "OrgSignalEnable", "TRUE" }, { "PosLimitEnable", "TRUE" },
            { "HomeSpeed", "20" }, { "HomeAcc", "1000" }, { "AxisErrorDec", "100" } });
}

enum class End { Leave, Silence, Lost, Stop };
} // namespace

Q_DECLARE_METATYPE(End)

class MotionControllerSafetyTest : public QObject {
    Q_OBJECT

private slots:
    void homingEndsWithItsSession_data();
    void homingEndsWithItsSession();
    void silenceShowsAsTheAxissError();
    void faultsOfMachinesWaitForTheirAxis();
    void faultsOfMachinesOutlastADownload();
    void whatAPageAcceptsCanBeRun_data();
    void whatAPageAcceptsCanBeRun();
    void anEndlessHomingTimeOutIsOne();
};

void MotionControllerSafetyTest::homingEndsWithItsSession_data()
{
    QTest::addColumn<End>("end");
    QTest::newRow("leaving") << End::Leave;
    QTest::newRow("silence") << End::Silence;
    QTest::newRow("a lost client") << End::Lost;
    QTest::newRow("STOP") << End::Stop;
}

void MotionControllerSafetyTest::homingEndsWithItsSession()
{
    QFETCH(End, end);
    Rig rig({ homingAxis() });
    QCOMPARE(rig.enable(0, end == End::Silence ? 400 : 30000), Diagnosis::ok);
    QCOMPARE(rig.controller.command(alice, 0, Kind::Motion, [](Axis& axis) { return axis.home(); }), Diagnosis::ok);
    rig.controller.step(300);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(7));
    QCOMPARE(rig.ref(0).setVelocity, 20.0);
    switch (end) {
    case End::Leave:
        QCOMPARE(rig.controller.enterDebugMode(alice, 0, 0, 0), Diagnosis::ok);
        break;
    case End::Silence:
        rig.controller.step(101);
        break;
    case End::Lost:
        rig.controller.endSession(alice);
        break;
    case End::Stop:
        rig.controller.stopAll(true);
        break;
    }
    rig.controller.step(100);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(2));
    QVERIFY2(rig.ref(0).setVelocity > 8 && rig.ref(0).setVelocity < 12, "half of the emergency ramp");
    rig.controller.step(200);
    QCOMPARE(rig.ref(0).setVelocity, 0.0);
    const bool left = end != End::Stop;
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(left ? 0 : 1));
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(left ? 0 : 3));
    // The home position was never found, and homing does not go on by itself.
    const double place = rig.ref(0).setPosition;
    rig.controller.stopAll(false);
    rig.controller.step(50);
    QCOMPARE(rig.ref(0).setPosition, place);
}

void MotionControllerSafetyTest::silenceShowsAsTheAxissError()
{
    Rig rig({ makeAxisText(0), makeAxisText(1) });
    QCOMPARE(rig.enable(0, 200), Diagnosis::ok);
    QCOMPARE(rig.enable(1, 30000), Diagnosis::ok);
    QCOMPARE(rig.move(0, 10), Diagnosis::ok);
    rig.controller.step(400);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(0));
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(0));
    QCOMPARE(rig.ref(0).axisError, std::uint16_t(Diagnosis::debugTimeout));
    // Whoever leaves by himself knows why.
    rig.controller.enterDebugMode(alice, 1, 0, 0);
    rig.controller.step(10);
    QCOMPARE(rig.ref(1).axisError, std::uint16_t(0));
    // It stays to be read by whoever comes back, and goes with a reset or the next motion.
    QCOMPARE(rig.enable(0), Diagnosis::ok);
    QCOMPARE(rig.ref(0).axisError, std::uint16_t(Diagnosis::debugTimeout));
    QCOMPARE(rig.move(0, 10), Diagnosis::ok);
    rig.controller.step(10);
    QCOMPARE(rig.ref(0).axisError, std::uint16_t(0));
    // An error that has led to ErrorStop is the better reason.
    rig.controller.withAxis(0, [](Axis& axis) { axis.machine().faults.driveError = 9; });
    rig.controller.step(1);
    rig.controller.enterDebugMode(alice, 0, 1, 100);
    rig.controller.step(500);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(0));
    QCOMPARE(rig.ref(0).axisError, std::uint16_t(Diagnosis::driveError));
}

void MotionControllerSafetyTest::faultsOfMachinesWaitForTheirAxis()
{
    MotionController controller({});
    QVERIFY(!controller.breakMachine(0, [](MachineFaults& faults) { faults.powerLost = true; }));
    QVERIFY(!controller.breakMachine(1, [](MachineFaults& faults) { faults.driveError = 42; }));
    QVERIFY(!controller.breakMachine(256, [](MachineFaults& faults) { faults.blocked = true; }));
    QVERIFY(!controller.breakMachine(-1, [](MachineFaults& faults) { faults.blocked = true; }));
    QCOMPARE(controller.download({ makeAxisText(0), makeAxisText(1), makeAxisText(2) }).code, Diagnosis::ok);
    QVERIFY(controller.breakMachine(2, [](MachineFaults& faults) { faults.blocked = true; }));
    const auto enable = [&controller](int axisNo) {
        controller.enterDebugMode(alice, axisNo, 1, 30000);
        return controller.command(alice, axisNo, Kind::Plain, [](Axis& axis) { return axis.setEnable(true); });
    };
    QCOMPARE(enable(0), Diagnosis::powerLost);
    QCOMPARE(enable(1), Diagnosis::driveError);
    controller.step();
    AxisRef ref{};
    QVERIFY(controller.peek(1, &ref, nullptr));
    QCOMPARE(ref.servoError, std::int16_t(42));
    controller.healMachines();
    for (const int axisNo : { 0, 1, 2 })
        QCOMPARE(enable(axisNo), Diagnosis::ok);
}

void MotionControllerSafetyTest::faultsOfMachinesOutlastADownload()
{
    Rig rig({ makeAxisText(0) });
    QVERIFY(rig.controller.breakMachine(0, [](MachineFaults& faults) { faults.blocked = true; }));
    QVERIFY(rig.controller.breakMachine(0, [](MachineFaults& faults) { faults.driveError = 3; }));
    QCOMPARE(rig.controller.download({ makeAxisText(0), makeAxisText(5) }).code, Diagnosis::ok);
    rig.controller.withAxis(0, [](Axis& axis) {
        QVERIFY(axis.machine().faults.blocked);
        QCOMPARE(axis.machine().faults.driveError, std::int16_t(3));
    });
    rig.controller.withAxis(5, [](Axis& axis) { QVERIFY(!axis.machine().faults.blocked); });
    rig.controller.healMachines();
    QCOMPARE(rig.controller.download({ makeAxisText(0) }).code, Diagnosis::ok);
    rig.controller.withAxis(0, [](Axis& axis) { QVERIFY(!axis.machine().faults.blocked); });
    QCOMPARE(rig.enable(0), Diagnosis::ok);
}

void MotionControllerSafetyTest::whatAPageAcceptsCanBeRun_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<std::int16_t>("move");
    QTest::addColumn<std::int16_t>("jog");
    const auto add = [](const char* key, const char* value, std::int16_t move, std::int16_t jog) {
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(key), QLatin1String(value))))
            << QString::fromLatin1(key) << QString::fromLatin1(value) << move << jog;
    };
    add("LimitDec", "0.000000", Diagnosis::ok, Diagnosis::ok);
    add("MaxVel", "0.000000", Diagnosis::velocityTooHigh, Diagnosis::ok);
    add("MaxAcc", "0.000000", Diagnosis::accelerationTooHigh, Diagnosis::accelerationTooHigh);
    add("JogMaxVel", "0", Diagnosis::ok, Diagnosis::velocityTooHigh);
    add("FollowErrorThreshold", "-1.500000", Diagnosis::ok, Diagnosis::ok);
    add("PosTorqueMaxValue", "-3000.000000", Diagnosis::ok, Diagnosis::ok);
    add("HomeTimeOut", "2147483647", Diagnosis::ok, Diagnosis::ok);
    add("PulseCountPerCircle", "2147483647", Diagnosis::ok, Diagnosis::ok);
    add("RotationPeriod", "0.010000", Diagnosis::ok, Diagnosis::ok);
}

void MotionControllerSafetyTest::whatAPageAcceptsCanBeRun()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(std::int16_t, move);
    QFETCH(std::int16_t, jog);
    // The others work, and the axis itself says by a code of its own what it cannot do.
    Rig rig({ makeAxisText(0), makeAxisText(1, { { key.toStdString(), value.toStdString() } }) });
    for (const int axisNo : { 0, 1 })
        QCOMPARE(rig.enable(axisNo), Diagnosis::ok);
    QCOMPARE(rig.move(0, 10), Diagnosis::ok);
    QCOMPARE(rig.move(1, 10), move);
    QCOMPARE(rig.jog(1), jog);
    rig.controller.step(200);
    QCOMPARE(rig.ref(0).setVelocity, 10.0);
    QCOMPARE(rig.ref(1).setVelocity, move == 0 || jog == 0 ? 10.0 : 0.0);
    QCOMPARE(rig.ref(1).axisError, std::uint16_t(0));
}

void MotionControllerSafetyTest::anEndlessHomingTimeOutIsOne()
{
    // Far beyond 32 bits, and no reason to refuse a record: it is a number.
    AxisText text = homingAxis();
    text.values["HomeTimeOut"] = "9999999999999999999999";
    Rig rig({ text });
    QCOMPARE(rig.enable(0), Diagnosis::ok);
    QCOMPARE(rig.controller.command(alice, 0, Kind::Motion, [](Axis& axis) { return axis.home(); }), Diagnosis::ok);
    rig.controller.step(20000);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(3));
    QCOMPARE(rig.controller.enterDebugMode(bob, 0, 1, 100), Diagnosis::ownedByOther);
    QCOMPARE(rig.controller.enterDebugMode(alice, 0, 1, MotionController::longestTimeout), Diagnosis::ok);
    rig.controller.step(20000);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(1));
}

QTEST_APPLESS_MAIN(MotionControllerSafetyTest)
#include "MotionControllerSafetyTest.moc"
