#include "tests/controller/MotionControllerRig.h"

#include <QtTest>

#include <atomic>
#include <limits>
#include <thread>

namespace {
using Kind = MotionController::Kind;

MotionController::Options options()
{
    return {};
}
} // namespace

class MotionControllerTest : public QObject {
    Q_OBJECT

private slots:
    void commandsNeedTheDebugSession();
    void anotherClientIsKeptOut();
    void silenceEndsTheSession_data();
    void silenceEndsTheSession();
    void requestsKeepTheSessionAlive_data();
    void requestsKeepTheSessionAlive();
    void whatKeepsNoSessionAlive_data();
    void whatKeepsNoSessionAlive();
    void aSecondEnterRenews();
    void timeOutsAreChecked_data();
    void timeOutsAreChecked();
    void leavingWhileMovingStopsFirst();
    void leavingSwitchesTheDriveOff();
    void aLostClientsAxesStop();
    void onlyItsOwnAxesAreLeft();
    void downloadsAreCheckedWhole_data();
    void downloadsAreCheckedWhole();
    void downloadReplacesTheAxes();
    void eachDownloadThatIsTakenCounts();
    void downloadIsRefusedWhileAnAxisIsEnabledOrMoves();
    void downloadIsRefusedWhileAnotherClientHasAnAxis();
    void unsoundMachinesAreRefused();
    void axesReadBackAsTheyWere();
    void theThreadAnswersAtOnce();
    void shutdownAnswersWhoeverWaits();
    void commandsFromManyThreadsKeepTheirOrder();
    void sixtyFourAxesRun();
};

void MotionControllerTest::commandsNeedTheDebugSession()
{
    Rig rig;
    QCOMPARE(rig.jog(alice, 0), Diagnosis::notInDebugMode);
    QCOMPARE(rig.jog(alice, 3), Diagnosis::unknownAxis);
    QCOMPARE(rig.jog(alice, -1), Diagnosis::unknownAxis);
    QCOMPARE(rig.jog(alice, 256), Diagnosis::unknownAxis);
    QCOMPARE(rig.enter(alice, 3), Diagnosis::unknownAxis);
    QCOMPARE(rig.enter(alice, 0), Diagnosis::ok);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(1));
    QCOMPARE(rig.ref(1).debugMode, std::uint8_t(0));
    QCOMPARE(rig.jog(alice, 0), Diagnosis::notEnabled);
    QCOMPARE(rig.controller.keepAlive(alice, 0), Diagnosis::ok);
    QCOMPARE(rig.controller.keepAlive(alice, 1), Diagnosis::notInDebugMode);
}

void MotionControllerTest::anotherClientIsKeptOut()
{
    Rig rig;
    rig.bringToJog(alice, 0);
    QCOMPARE(rig.enter(bob, 0), Diagnosis::ownedByOther);
    QCOMPARE(rig.jog(bob, 0), Diagnosis::ownedByOther);
    QCOMPARE(rig.controller.keepAlive(bob, 0), Diagnosis::ownedByOther);
    QCOMPARE(rig.controller.enterDebugMode(bob, 0, 0, 0), Diagnosis::ownedByOther);
    QCOMPARE(rig.controller.endJog(bob, 0, 1, 100, 0), Diagnosis::ok);
    rig.controller.step(100);
    QCOMPARE(rig.ref(0).setVelocity, 50.0);
    AxisRef ref{};
    QVERIFY(rig.controller.status(bob, 0, &ref));
    QCOMPARE(ref.setVelocity, 50.0);
    QCOMPARE(rig.controller.endJog(alice, 0, 1, 1000, 0), Diagnosis::ok);
    rig.controller.step(100);
    QCOMPARE(rig.ref(0).setVelocity, 0.0);
}

void MotionControllerTest::silenceEndsTheSession_data()
{
    QTest::addColumn<int>("timeout");
    for (const int timeout : { 1, 100, 1000, 5000, 32767 })
        QTest::newRow(qPrintable(QStringLiteral("%1 ms").arg(timeout))) << timeout;
}

void MotionControllerTest::silenceEndsTheSession()
{
    QFETCH(int, timeout);
    Rig rig;
    rig.bringToJog(alice, 7, 32767);
    QCOMPARE(rig.enter(alice, 7, timeout), Diagnosis::ok);
    rig.controller.step(timeout);
    QCOMPARE(rig.ref(7).setVelocity, 50.0);
    rig.controller.step(2);
    // On the emergency ramp: 50 units/s at 100 units/s2 are half a second.
    QVERIFY(rig.ref(7).setVelocity < 50);
    QCOMPARE(rig.ref(7).axisState, std::uint16_t(2));
    QCOMPARE(rig.jog(alice, 7), Diagnosis::notInDebugMode);
    rig.controller.step(490);
    QVERIFY(rig.ref(7).setVelocity > 0);
    rig.controller.step(500);
    QCOMPARE(rig.ref(7).setVelocity, 0.0);
    QCOMPARE(rig.ref(7).debugMode, std::uint8_t(0));
    QCOMPARE(rig.ref(7).axisState, std::uint16_t(0));
    QCOMPARE(rig.enter(bob, 7), Diagnosis::ok);
}

void MotionControllerTest::requestsKeepTheSessionAlive_data()
{
    QTest::addColumn<int>("request");
    QTest::newRow("status") << 0;
    QTest::newRow("keep-alive") << 1;
    QTest::newRow("command") << 2;
    QTest::newRow("refused command") << 3;
    QTest::newRow("end of a jog") << 4;
}

void MotionControllerTest::requestsKeepTheSessionAlive()
{
    QFETCH(int, request);
    Rig rig;
    rig.bringToJog(alice, 0, 500);
    for (int i = 0; i < 20; ++i) {
        rig.controller.step(300);
        AxisRef ref{};
        switch (request) {
        case 0:
            QVERIFY(rig.controller.status(alice, 0, &ref));
            break;
        case 1:
            QCOMPARE(rig.controller.keepAlive(alice, 0), Diagnosis::ok);
            break;
        case 2:
            rig.controller.command(alice, 0, Kind::Plain, [](Axis& axis) { return axis.setHomeOffset(1); });
            break;
        case 3:
            rig.controller.command(alice, 0, Kind::Plain, [](Axis& axis) { return axis.setVelocityRatio(-1); });
            break;
        default:
            QCOMPARE(rig.controller.endJog(alice, 0, -1, 10, 0), Diagnosis::ok);
        }
    }
    QCOMPARE(rig.ref(0).setVelocity, 50.0);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(1));
}

void MotionControllerTest::whatKeepsNoSessionAlive_data()
{
    QTest::addColumn<int>("request");
    QTest::newRow("reading curves") << 0;
    QTest::newRow("the status read by another client") << 1;
    QTest::newRow("a command of another client") << 2;
    QTest::newRow("a request for another axis") << 3;
}

void MotionControllerTest::whatKeepsNoSessionAlive()
{
    QFETCH(int, request);
    Rig rig;
    rig.bringToJog(alice, 0, 500);
    rig.enter(alice, 1, 30000);
    for (int i = 0; i < 20; ++i) {
        rig.controller.step(100);
        AxisRef ref{};
        switch (request) {
        case 0:
            rig.controller.peek(0, &ref, nullptr);
            break;
        case 1:
            rig.controller.status(bob, 0, &ref);
            break;
        case 2:
            rig.controller.keepAlive(bob, 0);
            break;
        default:
            rig.controller.keepAlive(alice, 1);
        }
    }
    QCOMPARE(rig.ref(0).setVelocity, 0.0);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(0));
    QCOMPARE(rig.ref(1).debugMode, std::uint8_t(1));
}

void MotionControllerTest::aSecondEnterRenews()
{
    Rig rig;
    rig.bringToJog(alice, 0, 500);
    QCOMPARE(rig.enter(alice, 0, 3000), Diagnosis::ok);
    rig.controller.step(2500);
    QCOMPARE(rig.ref(0).setVelocity, 50.0);
    // Also in the middle of a stop for silence, which then ends in debug mode.
    rig.controller.step(502);
    QCOMPARE(rig.enter(alice, 0, 30000), Diagnosis::ok);
    rig.controller.step(1000);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(1));
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(3));
}

void MotionControllerTest::timeOutsAreChecked_data()
{
    QTest::addColumn<int>("enter");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<std::int16_t>("code");
    QTest::newRow("the lowest number there is") << 1 << std::numeric_limits<int>::min() << Diagnosis::argumentInvalid;
    QTest::newRow("a negative one") << 1 << -5 << Diagnosis::argumentInvalid;
    QTest::newRow("none") << 1 << 0 << Diagnosis::argumentInvalid;
    QTest::newRow("the shortest") << 1 << 1 << Diagnosis::ok;
    QTest::newRow("the longest") << 1 << 32767 << Diagnosis::ok;
    QTest::newRow("one that is just too long") << 1 << 32768 << Diagnosis::argumentInvalid;
    QTest::newRow("one that nobody sits out") << 1 << std::numeric_limits<int>::max() << Diagnosis::argumentInvalid;
    QTest::newRow("neither entering nor leaving") << 3 << 100 << Diagnosis::argumentInvalid;
    QTest::newRow("leaving needs none") << 0 << 0 << Diagnosis::ok;
    QTest::newRow("leaving takes any") << 0 << std::numeric_limits<int>::max() << Diagnosis::ok;
}

void MotionControllerTest::timeOutsAreChecked()
{
    QFETCH(int, enter);
    QFETCH(int, timeout);
    QFETCH(std::int16_t, code);
    Rig rig;
    QCOMPARE(rig.controller.enterDebugMode(alice, 0, enter, timeout), code);
    rig.controller.step(1);
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(enter == 1 && code == Diagnosis::ok));
    // Nor does a refused time-out replace the one that holds.
    rig.bringToJog(alice, 1, 500);
    QCOMPARE(rig.controller.enterDebugMode(alice, 1, enter, timeout), code);
    rig.controller.step(32768);
    rig.controller.step(500);
    QCOMPARE(rig.ref(1).setVelocity, 0.0);
    QCOMPARE(rig.ref(1).debugMode, std::uint8_t(0));
}

void MotionControllerTest::leavingWhileMovingStopsFirst()
{
    Rig rig;
    rig.bringToJog(alice, 7, 30000);
    QCOMPARE(rig.controller.enterDebugMode(alice, 7, 0, 0), Diagnosis::ok);
    rig.controller.step(100);
    QVERIFY(rig.ref(7).setVelocity > 0);
    QCOMPARE(rig.ref(7).debugMode, std::uint8_t(1));
    rig.controller.step(1000);
    QCOMPARE(rig.ref(7).setVelocity, 0.0);
    QCOMPARE(rig.ref(7).debugMode, std::uint8_t(0));
}

void MotionControllerTest::leavingSwitchesTheDriveOff()
{
    Rig rig;
    rig.enter(alice, 0);
    rig.enable(alice, 0);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(3));
    rig.controller.enterDebugMode(alice, 0, 0, 0);
    rig.controller.step(2);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(0));
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(0));
}

void MotionControllerTest::aLostClientsAxesStop()
{
    Rig rig;
    rig.bringToJog(alice, 0, 30000);
    rig.bringToJog(alice, 1, 30000);
    rig.controller.endSession(alice);
    rig.controller.step(1);
    QVERIFY(rig.ref(0).setVelocity < 50);
    rig.controller.step(300);
    for (const int axisNo : { 0, 1 }) {
        QCOMPARE(rig.ref(axisNo).setVelocity, 0.0);
        QCOMPARE(rig.ref(axisNo).debugMode, std::uint8_t(0));
    }
}

void MotionControllerTest::onlyItsOwnAxesAreLeft()
{
    Rig rig;
    rig.bringToJog(alice, 0, 30000);
    rig.bringToJog(bob, 1, 30000);
    rig.controller.endSession(bob);
    rig.controller.step(500);
    QCOMPARE(rig.ref(0).setVelocity, 50.0);
    QCOMPARE(rig.ref(1).debugMode, std::uint8_t(0));
}

void MotionControllerTest::downloadsAreCheckedWhole_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<std::int16_t>("code");
    const auto add = [](const char* name, const char* key, const char* value, std::int16_t code) {
        QTest::newRow(name) << QString::fromLatin1(key) << QString::fromLatin1(value) << code;
    };
    for (const char* key : { "AxisNo", "PulseCountPerCircle", "UnUseGearValue", "SoftLimitNeg", "SoftLimitPos",
             "RotationPeriod", "LimitDec", "AxisErrorDec", "FollowErrorThreshold", "MaxVel", "MaxAcc", "JogMaxVel",
             "HomeSpeed", "HomeAcc", "HomeCloseSpeed", "HomeTimeOut", "PosTorqueMaxValue", "NegTorqueMaxValue" }) {
        for (const char* value : { "", "ten", "1,5", "nan", "inf", "1e999", "1.5x", " 1", "0x10" })
            add(qPrintable(QStringLiteral("%1 \"%2\"").arg(QLatin1String(key), QLatin1String(value))), key, value,
                Diagnosis::parameterInvalid);
    }
    add("a negative axis number", "AxisNo", "-1", Diagnosis::parameterInvalid);
    add("an axis number that is too high", "AxisNo", "256", Diagnosis::parameterInvalid);
    add("half an axis number", "AxisNo", "1.5", Diagnosis::parameterInvalid);
    add("a doubled axis number", "AxisNo", "0", Diagnosis::axisNumberDoubled);
    add("an unknown type", "AxisType", "Axis_Steam", Diagnosis::parameterInvalid);
    add("limits that cross", "SoftLimitPos", "-1", Diagnosis::limitsCross);
    add("no pulses", "PulseCountPerCircle", "0", Diagnosis::unitRatioInvalid);
    add("no travel", "UnUseGearValue", "0", Diagnosis::unitRatioInvalid);
    add("negative travel", "UnUseGearValue", "-1", Diagnosis::unitRatioInvalid);
    add("pulses without end", "PulseCountPerCircle", "1e308", Diagnosis::unitRatioInvalid);
    add("a negative velocity", "MaxVel", "-1", Diagnosis::parameterInvalid);
    add("a negative acceleration", "MaxAcc", "-3", Diagnosis::parameterInvalid);
    add("a negative deceleration at a limit", "LimitDec", "-1", Diagnosis::parameterInvalid);
    add("no deceleration on an error", "AxisErrorDec", "0", Diagnosis::parameterInvalid);
    add("a negative jog velocity", "JogMaxVel", "-1", Diagnosis::parameterInvalid);
    add("a time-out beyond 32 bits that is no number", "HomeTimeOut", "4294967296ms", Diagnosis::parameterInvalid);
}

void MotionControllerTest::downloadsAreCheckedWhole()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(std::int16_t, code);
    Rig rig;
    const AxisText bad = makeAxisText(1, { { key.toStdString(), value.toStdString() } });
    const DownloadResult result = rig.controller.download({ makeAxisText(0), bad, makeAxisText(2) });
    QCOMPARE(result.code, code);
    QCOMPARE(result.axis, std::string("Axis1"));
    QCOMPARE(result.key, key.toStdString());
    QVERIFY(!result.reason.empty());
    QCOMPARE(rig.controller.axes().size(), std::size_t(3));
    AxisRef ref{};
    QVERIFY(rig.controller.peek(7, &ref, nullptr));
    QVERIFY(!rig.controller.peek(2, &ref, nullptr));
    AxisText incomplete = makeAxisText(1);
    incomplete.values.erase(key.toStdString());
    if (key != QLatin1String("AxisType"))
        QCOMPARE(rig.controller.download({ incomplete }).code, Diagnosis::parameterInvalid);
}

void MotionControllerTest::downloadReplacesTheAxes()
{
    Rig rig;
    rig.enter(alice, 0, 30000);
    QCOMPARE(rig.controller.download({ makeAxisText(0), makeAxisText(200) }, alice).code, Diagnosis::ok);
    AxisRef ref{};
    QVERIFY(rig.controller.peek(200, &ref, nullptr));
    QVERIFY(!rig.controller.peek(1, &ref, nullptr));
    QCOMPARE(rig.ref(0).debugMode, std::uint8_t(0));
    QCOMPARE(rig.controller.download({}).code, Diagnosis::ok);
    QVERIFY(rig.controller.axes().empty());
    std::vector<AxisText> many;
    for (int i = 0; i < 257; ++i)
        many.push_back(makeAxisText(i));
    QCOMPARE(rig.controller.download(many).code, Diagnosis::tooManyAxes);
    many.pop_back();
    QCOMPARE(rig.controller.download(many).code, Diagnosis::ok);
}

void MotionControllerTest::eachDownloadThatIsTakenCounts()
{
    Rig rig;
    const std::uint64_t before = rig.controller.axesRevision();
    QVERIFY(before > 0);
    QCOMPARE(rig.controller.download({ makeAxisText(0) }).revision, before + 1);
    QCOMPARE(rig.controller.axesRevision(), before + 1);
    // The same once more counts too: its axes begin anew.
    QCOMPARE(rig.controller.download({ makeAxisText(0) }).revision, before + 2);
    QCOMPARE(rig.controller.download({ makeAxisText(0, { { "MaxVel", "fast" } }) }).revision, std::uint64_t(0));
    rig.enter(alice, 0, 30000);
    QCOMPARE(rig.controller.download({ makeAxisText(0) }, bob).revision, std::uint64_t(0));
    std::uint64_t read = 0;
    rig.controller.axes(&read);
    QCOMPARE(read, before + 2);
    QCOMPARE(rig.controller.axesRevision(), before + 2);
}

void MotionControllerTest::downloadIsRefusedWhileAnAxisIsEnabledOrMoves()
{
    Rig rig;
    rig.enter(alice, 0, 30000);
    rig.enable(alice, 0);
    const DownloadResult result = rig.controller.download({ makeAxisText(0) }, alice);
    QCOMPARE(result.code, Diagnosis::axisEnabled);
    QCOMPARE(result.axis, std::string("Axis0"));
    QCOMPARE(rig.controller.axes().size(), std::size_t(3));
    rig.controller.command(alice, 0, Kind::Plain, [](Axis& axis) { return axis.setEnable(false); });
    QCOMPARE(rig.controller.download({ makeAxisText(0) }, alice).code, Diagnosis::ok);
    // An axis that runs down after the drive was switched off still moves.
    Rig coasting;
    coasting.bringToJog(alice, 7, 30000);
    coasting.controller.command(alice, 7, Kind::Plain, [](Axis& axis) { return axis.setEnable(false); });
    QCOMPARE(coasting.controller.download({ makeAxisText(0) }, alice).code, Diagnosis::axisEnabled);
    coasting.controller.step(1000);
    QCOMPARE(coasting.controller.download({ makeAxisText(0) }, alice).code, Diagnosis::ok);
}

void MotionControllerTest::downloadIsRefusedWhileAnotherClientHasAnAxis()
{
    Rig rig;
    QCOMPARE(rig.enter(alice, 1, 30000), Diagnosis::ok);
    for (const SessionId other : { bob, SessionId(0) }) {
        const DownloadResult result = rig.controller.download({ makeAxisText(0) }, other);
        QCOMPARE(result.code, Diagnosis::ownedByOther);
        QCOMPARE(result.axis, std::string("Axis1"));
        QCOMPARE(result.reason, std::string("the axis is in debug mode of another client"));
        QCOMPARE(rig.controller.axes().size(), std::size_t(3));
        QCOMPARE(rig.controller.keepAlive(alice, 1), Diagnosis::ok);
    }
    // Its own axis keeps nobody from a download.
    QCOMPARE(rig.enter(bob, 0, 30000), Diagnosis::ok);
    QCOMPARE(rig.controller.download({ makeAxisText(0) }, bob).axis, std::string("Axis1"));
    QCOMPARE(rig.controller.enterDebugMode(alice, 1, 0, 0), Diagnosis::ok);
    QCOMPARE(rig.controller.download({ makeAxisText(0) }, bob).code, Diagnosis::ok);
    QCOMPARE(rig.controller.axes().size(), std::size_t(1));
}

void MotionControllerTest::unsoundMachinesAreRefused()
{
    for (const char* text : { "[]", "{\"gain\": 0}", "{\"gain\": \"x\"}", "{\"colour\": 1}", "{\"start\": 1e9}",
             "{\"homeOnWhenPressed\": 1}", "{\"indexPeriod\": null}", "nonsense" }) {
        MotionController::Options bad;
        bad.mechanics[4] = text;
        MotionController controller(bad);
        QCOMPARE(controller.download({ makeAxisText(3) }).code, Diagnosis::ok);
        const DownloadResult result = controller.download({ makeAxisText(4) });
        QCOMPARE(result.code, Diagnosis::parameterInvalid);
        QCOMPARE(result.key, std::string("simulated machine"));
    }
}

void MotionControllerTest::axesReadBackAsTheyWere()
{
    Rig rig;
    const std::vector<AxisText> axes = rig.controller.axes();
    QCOMPARE(axes.size(), std::size_t(3));
    QCOMPARE(axes[2].name, std::string("Axis7"));
    QVERIFY(axes[2].values == makeAxisText(7, { { "AxisErrorDec", "100" } }).values);
}

void MotionControllerTest::theThreadAnswersAtOnce()
{
    MotionController controller(options());
    QCOMPARE(controller.download({ makeAxisText(0) }).code, Diagnosis::ok);
    controller.start();
    controller.start();
    for (int i = 0; i < 50; ++i) {
        QCOMPARE(controller.enterDebugMode(alice, 0, 1, 30000), Diagnosis::ok);
        AxisRef ref{};
        QVERIFY(controller.peek(0, &ref, nullptr));
        QCOMPARE(ref.debugMode, std::uint8_t(1));
        QCOMPARE(controller.enterDebugMode(alice, 0, 0, 0), Diagnosis::ok);
        QVERIFY(controller.peek(0, &ref, nullptr));
        QCOMPARE(ref.debugMode, std::uint8_t(0));
    }
    QVERIFY(controller.statistics().cycles >= 100);
}

void MotionControllerTest::shutdownAnswersWhoeverWaits()
{
    MotionController controller(options());
    controller.download({ makeAxisText(0) });
    controller.start();
    std::atomic<bool> ended{ false };
    std::vector<std::thread> clients;
    for (int i = 0; i < 4; ++i) {
        clients.emplace_back([&] {
            while (!ended)
                controller.keepAlive(alice, 0);
        });
    }
    QTest::qWait(50);
    controller.shutdown();
    ended = true;
    for (std::thread& client : clients)
        client.join();
}

void MotionControllerTest::commandsFromManyThreadsKeepTheirOrder()
{
    MotionController controller(options());
    controller.download({ makeAxisText(0), makeAxisText(1), makeAxisText(2), makeAxisText(3) });
    controller.start();
    std::array<std::atomic<int>, 4> wrong{};
    std::vector<std::thread> clients;
    for (int axisNo = 0; axisNo < 4; ++axisNo) {
        clients.emplace_back([&, axisNo] {
            const SessionId session = 10 + axisNo;
            controller.enterDebugMode(session, axisNo, 1, 30000);
            for (int i = 0; i < 100; ++i) {
                controller.command(session, axisNo, Kind::Plain, [i](Axis& axis) { return axis.setVelocityRatio(i); });
                AxisRef ref{};
                controller.status(session, axisNo, &ref);
                wrong[axisNo] += static_cast<int>(ref.speedRatio * 100) != i;
            }
        });
    }
    for (std::thread& client : clients)
        client.join();
    for (const auto& count : wrong)
        QCOMPARE(count.load(), 0);
}

void MotionControllerTest::sixtyFourAxesRun()
{
    MotionController controller(options());
    std::vector<AxisText> axes;
    for (int i = 0; i < 64; ++i)
        axes.push_back(makeAxisText(i));
    QCOMPARE(controller.download(axes).code, Diagnosis::ok);
    for (int i = 0; i < 64; ++i) {
        QCOMPARE(controller.enterDebugMode(alice, i, 1, 30000), Diagnosis::ok);
        controller.command(alice, i, Kind::Plain, [](Axis& axis) { return axis.setEnable(true); });
    }
    controller.step(50);
    for (int i = 0; i < 64; ++i)
        controller.command(
            alice, i, Kind::Motion, [i](Axis& axis) { return axis.moveAbsolute(i, numbers(100, 1000, 1000)); });
    controller.step(2000);
    for (int i = 0; i < 64; ++i) {
        AxisRef ref{};
        QVERIFY(controller.peek(i, &ref, nullptr));
        QCOMPARE(ref.setPosition, double(i));
        QVERIFY(std::fabs(ref.actualPosition - i) < 1e-3);
    }
}

QTEST_GUILESS_MAIN(MotionControllerTest)
#include "MotionControllerTest.moc"
