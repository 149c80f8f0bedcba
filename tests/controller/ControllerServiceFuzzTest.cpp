#include "controller/ControllerServer.h"
#include "controller/MotionController.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"
#include "tests/controller/AxisRecords.h"
#include "tests/support/FuzzRounds.h"

#include <grpcpp/generic/generic_stub.h>
#include <grpcpp/grpcpp.h>

#include <QtTest>

#include <cmath>
#include <cstring>
#include <random>

namespace proto = kestrun::protocol;

// Requests that no sound client makes, from fixed seeds: the controller answers each, runs on, and no axis leaves its
// bounds.
namespace {
using Random = std::mt19937;

double oddNumber(Random& random)
{
    static const double odd[] = { 0, -0.0, 1, -1, 1e-300, -1e-300, 1e300, -1e300, std::nan(""), INFINITY, -INFINITY, 5,
        -5, 1e9, -1e9, 0.5, 100, 1e-9 };
    if (random() % 4 == 0) {
        double value = 0;
        const std::uint64_t bits = (std::uint64_t(random()) << 32) | random();
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    return odd[random() % std::size(odd)];
}

int oddInteger(Random& random)
{
    static const int odd[] = { 0, 1, 2, 3, -1, 255, 256, 32767, -32768, 65536, INT_MAX, INT_MIN };
    return odd[random() % std::size(odd)];
}

std::string oddText(Random& random)
{
    static const char* const odd[] = { "", "0", "-1", "1", "TRUE", "FALSE", "nan", "inf", "-inf", "1e308", "1e309",
        "1,5", "0x10", "99999999999999999999999999", "Axis_Pulse", "Axis_Virtual", "Homing_17", "Homing_", "\xff\xfe",
        " 5", "5 ", "+5", "++5", "1e-320", "-0" };
    if (random() % 5 == 0)
        return std::string(random() % 300, static_cast<char>('0' + random() % 60));
    return odd[random() % std::size(odd)];
}
} // namespace

class ControllerServiceFuzzTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void requestsWithOddNumbers();
    void downloadsWithOddTexts();
    void bytesThatAreNoMessages();
    void sessionsThatAreNone();

private:
    void login();
    bool answers();
    void restoreAxes();

    std::unique_ptr<MotionController> m_controller;
    std::unique_ptr<ControllerServer> m_server;
    std::shared_ptr<grpc::Channel> m_channel;
    std::unique_ptr<proto::AxisController::Stub> m_stub;
    std::string m_session;
};

void ControllerServiceFuzzTest::initTestCase()
{
    m_controller = std::make_unique<MotionController>(MotionController::Options());
    m_controller->start();
    ServerOptions options;
    options.token = "token";
    m_server = std::make_unique<ControllerServer>(m_controller.get(), options);
    std::string error;
    QVERIFY2(m_server->start(&error), error.c_str());
    m_channel = grpc::CreateChannel(m_server->address(), grpc::InsecureChannelCredentials());
    m_stub = proto::AxisController::NewStub(m_channel);
    login();
    restoreAxes();
}

void ControllerServiceFuzzTest::cleanupTestCase()
{
    m_server->shutdown();
    m_controller->shutdown();
}

void ControllerServiceFuzzTest::login()
{
    grpc::ClientContext context;
    proto::LoginRequest request;
    proto::LoginReply reply;
    request.set_version(protocolVersion);
    request.set_token("token");
    QVERIFY(m_stub->Login(&context, request, &reply).ok());
    QCOMPARE(reply.result(), 0);
    m_session = reply.session();
}

void ControllerServiceFuzzTest::restoreAxes()
{
    for (int i = 0; i < 4; ++i) {
        grpc::ClientContext context;
        proto::EnterDebugModeRequest leave;
        proto::Result result;
        leave.set_session(m_session);
        leave.set_axis(i);
        m_stub->EnterDebugMode(&context, leave, &result);
    }
    std::vector<AxisText> axes;
    for (int i = 0; i < 4; ++i)
        axes.push_back(makeAxisText(i, { { "SoftLimitEnable", i % 2 ? "TRUE" : "FALSE" } }));
    QTRY_COMPARE_WITH_TIMEOUT(m_controller->download(axes).code, Diagnosis::ok, 20000);
}

bool ControllerServiceFuzzTest::answers()
{
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
    proto::HandshakeReply reply;
    return m_stub->Handshake(&context, proto::HandshakeRequest(), &reply).ok() && reply.version() == protocolVersion;
}

void ControllerServiceFuzzTest::requestsWithOddNumbers()
{
    Random random(20260521);
    using Stub = proto::AxisController::Stub;
    using Motion = grpc::Status (Stub::*)(grpc::ClientContext*, const proto::MotionRequest&, proto::Result*);
    static const Motion motions[]
        = { &Stub::SetStop, &Stub::MoveAbs, &Stub::MoveRel, &Stub::MoveVel, &Stub::JopPos, &Stub::JopNeg };
    for (int i = 0; i < fuzzRounds(3000); ++i) {
        const int axis = random() % 8 == 0 ? oddInteger(random) : static_cast<int>(random() % 4);
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
        proto::Result result;
        grpc::Status status;
        switch (random() % 6) {
        case 0: {
            proto::EnterDebugModeRequest request;
            request.set_session(m_session);
            request.set_axis(axis);
            request.set_enter(random() % 3 ? 1 : oddInteger(random));
            request.set_timeout(random() % 2 ? 30000 : oddInteger(random));
            status = m_stub->EnterDebugMode(&context, request, &result);
            break;
        }
        case 1: {
            proto::FlagRequest request;
            request.set_session(m_session);
            request.set_axis(axis);
            request.set_value(random() % 2 ? 1 : oddInteger(random));
            status = random() % 2 ? m_stub->SetEnable(&context, request, &result)
                                  : m_stub->SetVelRatio(&context, request, &result);
            break;
        }
        case 2: {
            proto::PositionRequest request;
            request.set_session(m_session);
            request.set_axis(axis);
            request.set_position(oddNumber(random));
            status = random() % 2 ? m_stub->SetPosition(&context, request, &result)
                                  : m_stub->SetHomeOffset(&context, request, &result);
            break;
        }
        case 3: {
            proto::StatusRequest request;
            proto::StatusReply reply;
            request.set_session(m_session);
            request.set_axis(axis);
            request.set_size(oddInteger(random));
            status = m_stub->GetAxisRef(&context, request, &reply);
            QVERIFY(reply.data().size() <= axisRefSize);
            break;
        }
        default: {
            proto::MotionRequest request;
            request.set_session(m_session);
            request.set_axis(axis);
            request.set_pressed(random() % 4 ? 1 : oddInteger(random));
            request.set_position(oddNumber(random));
            request.set_velocity(random() % 2 ? 50 : oddNumber(random));
            request.set_acceleration(random() % 2 ? 1000 : oddNumber(random));
            request.set_deceleration(random() % 2 ? 1000 : oddNumber(random));
            request.set_jerk(random() % 2 ? 0 : oddNumber(random));
            status = (m_stub.get()->*motions[random() % std::size(motions)])(&context, request, &result);
        }
        }
        QVERIFY2(status.ok(), status.error_message().c_str());
        QVERIFY(result.result() >= 0 && result.result() <= 32767);
        for (int axisNo = 0; axisNo < 4; ++axisNo) {
            AxisRef ref{};
            QVERIFY(m_controller->peek(axisNo, &ref, nullptr));
            QVERIFY2(
                std::isfinite(ref.setPosition) && std::isfinite(ref.actualPosition), qPrintable(QString::number(i)));
            QVERIFY2(std::fabs(ref.setVelocity) <= 1000 + 1e-6, qPrintable(QString::number(i)));
            QVERIFY(ref.axisState <= 7);
        }
    }
    QVERIFY(answers());
    restoreAxes();
}

void ControllerServiceFuzzTest::downloadsWithOddTexts()
{
    Random random(815);
    for (int i = 0; i < fuzzRounds(1500); ++i) {
        proto::DownloadRequest request;
        request.set_session(m_session);
        const int count = static_cast<int>(random() % 4);
        for (int k = 0; k < count; ++k) {
            const AxisText text = makeAxisText(k);
            proto::AxisRecord* record = request.add_axes();
            record->set_name(text.name);
            for (const auto& value : text.values) {
                if (random() % 40 == 0)
                    continue;
                std::string odd = random() % 40 == 0 ? oddText(random) : value.second;
                // A text that is no UTF-8 does not even leave a client.
                if (odd.find('\xff') == std::string::npos)
                    (*record->mutable_values())[value.first] = odd;
            }
        }
        grpc::ClientContext context;
        proto::DownloadReply reply;
        QVERIFY(m_stub->DownloadAxes(&context, request, &reply).ok());
        const std::size_t now = m_controller->axes().size();
        if (reply.result() == 0)
            QCOMPARE(now, std::size_t(count));
        else
            QVERIFY(!reply.key().empty() && !reply.reason().empty());
        // Whatever was taken can be run.
        for (const AxisText& text : m_controller->axes()) {
            const int axisNo = std::stoi(text.values.at("AxisNo"));
            m_controller->enterDebugMode(99, axisNo, 1, 50);
            m_controller->command(99, axisNo, MotionController::Kind::Motion, [](Axis& axis) {
                return axis.moveVelocity({ 1, 1, 1, 1 });
            });
        }
        // Axes in debug mode of another client would stand in the way of the next download.
        m_controller->endSession(99);
    }
    QVERIFY(answers());
    restoreAxes();
}

void ControllerServiceFuzzTest::bytesThatAreNoMessages()
{
    Random random(4242);
    static const char* const methods[]
        = { "Login", "DownloadAxes", "MoveAbs", "GetAxisRef", "StopAll", "Handshake", "ReadCurves", "NoSuchMethod" };
    grpc::GenericStub generic(m_channel);
    for (int i = 0; i < fuzzRounds(600); ++i) {
        std::string bytes(random() % 200, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        grpc::Slice slice(bytes);
        grpc::ByteBuffer request(&slice, 1);
        grpc::ByteBuffer reply;
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
        grpc::CompletionQueue queue;
        const std::string method
            = std::string("/kestrun.protocol.AxisController/") + methods[random() % std::size(methods)];
        const auto call = generic.PrepareUnaryCall(&context, method, request, &queue);
        grpc::Status status;
        call->StartCall();
        call->Finish(&reply, &status, this);
        void* tag = nullptr;
        bool fine = false;
        QVERIFY(queue.Next(&tag, &fine));
        QVERIFY2(status.error_code() != grpc::StatusCode::DEADLINE_EXCEEDED, method.c_str());
        QVERIFY2(status.error_code() != grpc::StatusCode::UNAVAILABLE, method.c_str());
    }
    QVERIFY(answers());
    QVERIFY(!m_controller->isStopHeld());
}

void ControllerServiceFuzzTest::sessionsThatAreNone()
{
    Random random(7);
    for (int i = 0; i < fuzzRounds(500); ++i) {
        std::string session = m_session;
        if (random() % 3 == 0)
            session.resize(random() % 40);
        else
            session[random() % session.size()] ^= static_cast<char>(1 + random() % 255);
        if (session == m_session)
            continue;
        grpc::ClientContext context;
        proto::EnterDebugModeRequest request;
        proto::Result result;
        request.set_session(session);
        request.set_enter(1);
        request.set_timeout(1000);
        QVERIFY(m_stub->EnterDebugMode(&context, request, &result).ok());
        QCOMPARE(result.result(), int(Diagnosis::refused));
    }
    // Logins by the dozen do not lock anybody out.
    for (int i = 0; i < 200; ++i)
        login();
    AxisRef ref{};
    QVERIFY(m_controller->peek(0, &ref, nullptr));
    QCOMPARE(ref.debugMode, std::uint8_t(0));
}

QTEST_GUILESS_MAIN(ControllerServiceFuzzTest)
#include "ControllerServiceFuzzTest.moc"
