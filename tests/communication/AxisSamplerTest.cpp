#include "host/communication/AxisSampler.h"

#include "host/communication/ControllerConnection.h"
#include "protocol/AxisRefLayout.h"
#include "tests/communication/RecordingController.h"

#include <QSignalSpy>
#include <QtTest>

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

QTEST_GUILESS_MAIN(AxisSamplerTest)
#include "AxisSamplerTest.moc"
