#include "host/communication/AxisSampler.h"

#include "protocol/AxisRefLayout.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/RecordingController.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

namespace {
std::string bytesOf(const AxisRef& ref)
{
    return std::string(reinterpret_cast<const char*>(&ref), sizeof ref);
}
} // namespace

class AxisSamplerTest : public QObject {
    Q_OBJECT

private slots:
    void samplesTellTheValuesAndTheSecond();
    void whatIsNoStatusIsLeftOut();
    void samplerReadsCurves();
    void samplingKeepsNoSessionAlive();
    void faultsOfEveryRequestConcernItToo();
    void theEndOfTheConnectionEndsTheReading();
    void anyPeriodIsSurvived_data();
    void anyPeriodIsSurvived();
};

void AxisSamplerTest::samplesTellTheValuesAndTheSecond()
{
    AxisRef ref{};
    ref.setPosition = 1.25;
    ref.setVelocity = -2.5;
    ref.actualPosition = 3.75;
    ref.actualVelocity = -4.5;
    kestrun::protocol::CurvesReply reply;
    reply.set_time_us(1500000);
    reply.add_status(bytesOf(ref));
    RecordingController controller;
    controller.answerCurvesWith(reply);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    sampler.setAxes({ 7 }, 1);
    connection.open(controller.address());
    QTRY_VERIFY(!sampled.isEmpty());
    const auto samples = sampled.first().first().value<QVector<AxisSample>>();
    QCOMPARE(samples.size(), 1);
    QCOMPARE(samples.first().axisNo, 7);
    QCOMPARE(samples.first().time, 1.5);
    QCOMPARE(samples.first().setPosition, 1.25);
    QCOMPARE(samples.first().setVelocity, -2.5);
    QCOMPARE(samples.first().actualPosition, 3.75);
    QCOMPARE(samples.first().actualVelocity, -4.5);
    QCOMPARE(controller.calls().front().session, controller.session());
}

void AxisSamplerTest::whatIsNoStatusIsLeftOut()
{
    kestrun::protocol::CurvesReply reply;
    reply.add_status(std::string());
    reply.add_status(std::string(sizeof(AxisRef) - 1, '\0'));
    reply.add_status(bytesOf(AxisRef{}));
    reply.add_status(std::string(sizeof(AxisRef) + 1, '\0'));
    reply.add_status(bytesOf(AxisRef{}));
    RecordingController controller;
    controller.answerCurvesWith(reply);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    // One status more than was asked for is nobody's.
    sampler.setAxes({ 1, 2, 3, 4 }, 1);
    connection.open(controller.address());
    QTRY_VERIFY(!sampled.isEmpty());
    const auto samples = sampled.first().first().value<QVector<AxisSample>>();
    QCOMPARE(samples.size(), 1);
    QCOMPARE(samples.first().axisNo, 3);
}

void AxisSamplerTest::samplerReadsCurves()
{
    ControllerHost host;
    host.addAxes(2);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    sampler.setAxes({ 1, 9, 0 }, 5);
    QVERIFY(connectTo(connection, host.address()));
    QVERIFY(enableAxis(1));
    RpcCmdSend().rpc_AxisDebug_JopNeg(1, 1, 50, 1000, 1000, 0);
    QTRY_VERIFY(sampled.count() > 20);
    const auto isFast = [&] {
        const auto samples = sampled.last().at(0).value<QVector<AxisSample>>();
        return samples.size() == 2 && samples.at(0).axisNo == 1 && samples.at(1).axisNo == 0
            && samples.at(0).setVelocity == -50 && samples.at(0).actualPosition < 0 && samples.at(1).setVelocity == 0;
    };
    QTRY_VERIFY(isFast());
    double time = -1;
    for (int i = 0; i < sampled.count(); ++i) {
        const auto samples = sampled.at(i).at(0).value<QVector<AxisSample>>();
        QVERIFY(samples.first().time >= time);
        time = samples.first().time;
    }
    sampler.setAxes({}, 5);
    // What was under way may still arrive.
    QTRY_VERIFY(!sampled.wait(300));
}

void AxisSamplerTest::samplingKeepsNoSessionAlive()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    sampler.setAxes({ 0 }, 5);
    QVERIFY(connectTo(connection, host.address()));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_EnterDebugMode(0, 1, 1000), Diagnosis::ok);
    QCOMPARE(host.peek(0).debugMode, std::uint8_t(1));
    QTRY_COMPARE_WITH_TIMEOUT(host.peek(0).debugMode, std::uint8_t(0), 5000);
}

void AxisSamplerTest::faultsOfEveryRequestConcernItToo()
{
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    QVERIFY(connectTo(connection, host.address()));
    sampler.setAxes({ 0 }, 5);
    QTRY_VERIFY(sampled.count() > 5);
    for (const char* line : { "refuse 77", "lost-replies 0" }) {
        host.fault(line);
        // What was under way may still arrive.
        QTRY_VERIFY2(!sampled.wait(400), line);
        const int before = sampled.count();
        host.fault("none");
        QTRY_VERIFY2_WITH_TIMEOUT(sampled.count() > before + 5, line, 5000);
    }
    host.fault("late-replies 300");
    QTest::qWait(100);
    int before = sampled.count();
    QElapsedTimer timer;
    timer.start();
    // One of them may have been asked for before the fault, and one since.
    QTRY_VERIFY(sampled.count() >= before + 4);
    QVERIFY2(timer.elapsed() >= 500, "each comes 300 ms later");
    host.fault("none");
    host.fault("lost-replies 1");
    QTest::qWait(100);
    before = sampled.count();
    QTRY_VERIFY_WITH_TIMEOUT(sampled.count() > before + 5, 5000);
}

void AxisSamplerTest::theEndOfTheConnectionEndsTheReading()
{
    RecordingController controller;
    auto connection = std::make_unique<ControllerConnection>();
    AxisSampler sampler(connection.get());
    sampler.setAxes({ 7 }, 1);
    connection->open(controller.address());
    QTRY_VERIFY(controller.calls().size() > 3);
    connection.reset();
    // One reading may have been under way.
    const std::size_t before = controller.calls().size() + 1;
    QVERIFY(!QTest::qWaitFor([&] { return controller.calls().size() > before; }, 300));
    sampler.setAxes({ 7, 8 }, 1);
    QVERIFY(!QTest::qWaitFor([&] { return controller.calls().size() > before; }, 300));
}

void AxisSamplerTest::anyPeriodIsSurvived_data()
{
    QTest::addColumn<int>("period");
    QTest::addColumn<bool>("quick");
    QTest::newRow("none") << 0 << true;
    QTest::newRow("negative") << -5 << true;
    QTest::newRow("the lowest there is") << std::numeric_limits<int>::min() << true;
    QTest::newRow("the highest there is") << std::numeric_limits<int>::max() << false;
}

void AxisSamplerTest::anyPeriodIsSurvived()
{
    QFETCH(int, period);
    QFETCH(bool, quick);
    ControllerHost host;
    host.addAxes(1);
    ControllerConnection connection;
    AxisSampler sampler(&connection);
    QSignalSpy sampled(&sampler, &AxisSampler::sampled);
    QVERIFY(connectTo(connection, host.address()));
    sampler.setAxes({ 0 }, period);
    QTRY_VERIFY(sampled.count() > (quick ? 10 : 0));
    if (quick)
        return;
    // It waits as long as it was told, and still hears the next order at once.
    QTest::qWait(50);
    QCOMPARE(sampled.count(), 1);
    sampler.setAxes({ 0 }, 5);
    QTRY_VERIFY(sampled.count() > 5);
}

QTEST_GUILESS_MAIN(AxisSamplerTest)
#include "AxisSamplerTest.moc"
