#include "controller/ControllerServer.h"
#include "controller/MotionController.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"
#include "tests/controller/AxesTrial.h"
#include "tests/controller/AxisRecords.h"
#include "tests/controller/OddRequests.h"
#include "tests/support/FuzzRounds.h"

#include <google/protobuf/stubs/logging.h>
#include <grpcpp/generic/generic_stub.h>
#include <grpcpp/grpcpp.h>

#include <QtTest>

#include <cmath>
#include <functional>
#include <map>

namespace proto = kestrun::protocol;

// Requests that no sound client makes, from fixed seeds: the controller answers each, runs on, and no axis leaves its
// bounds.
namespace {
/// An axis of any type with any of the methods, which has all signals and is soon at them.
AxisValues anyKind(Random& random)
{
    static const char* const types[] = { "Axis_Virtual", "Axis_Pulse", "Axis_Encoder", "Axis_EtherCAT" };
    return { { "AxisType", types[random() % std::size(types)] },
        { "HomeMode", "Homing_" + std::to_string(17 + random() % 19) }, { "PosLimitEnable", "TRUE" },
        { "NegsLimitEnable", "TRUE" }, { "OrgSignalEnable", "TRUE" }, { "HomeSpeed", "300" }, { "HomeAcc", "5000" },
        { "HomeCloseSpeed", "50" } };
}

/// What a failure names: where the record differs from that of a new axis.
QString oddValues(const AxisText& text)
{
    const AxisText usual = makeAxisText(0);
    QString odd;
    for (const auto& value : text.values) {
        const auto found = usual.values.find(value.first);
        if (found == usual.values.end() || found->second != value.second)
            odd += QStringLiteral(", %1 %2").arg(
                QString::fromStdString(value.first), QString::fromStdString(value.second));
    }
    return odd;
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
    void messagesWithChangedBytes();
    void sessionsThatAreNone();

private:
    using Stub = proto::AxisController::Stub;
    /// Sends a request for the axis; gives its result.
    using Sender = std::function<int(Random& random, int axis)>;
    static constexpr int axes = 4;
    static constexpr int unanswered = -1;

    void login();
    bool answers();
    void restoreAxes();
    static std::vector<AxisText> usualAxes();
    template <typename Request, typename Reply>
    int call(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*), Request request, Reply* reply);
    template <typename Request>
    int call(
        grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, proto::Result*), const Request& request);
    grpc::Status callRaw(const std::string& method, const std::string& bytes);
    std::map<QByteArray, Sender> oddRequests();
    void readOddly(Random& random, int axis);
    void axesAreSound();
    std::vector<std::pair<std::string, std::string>> soundMessages();

    std::unique_ptr<MotionController> m_controller;
    std::unique_ptr<ControllerServer> m_server;
    std::shared_ptr<grpc::Channel> m_channel;
    std::unique_ptr<proto::AxisController::Stub> m_stub;
    std::string m_session;
};

void ControllerServiceFuzzTest::initTestCase()
{
    // Texts that are none are found here by the hundred.
    google::protobuf::SetLogHandler(nullptr);
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

/// Half of them with software limits, and with homing that ends at once or at the next index pulse.
std::vector<AxisText> ControllerServiceFuzzTest::usualAxes()
{
    std::vector<AxisText> texts;
    for (int i = 0; i < axes; ++i)
        texts.push_back(makeAxisText(
            i, { { "SoftLimitEnable", i % 2 ? "TRUE" : "FALSE" }, { "HomeMode", i % 2 ? "Homing_35" : "Homing_34" } }));
    return texts;
}

void ControllerServiceFuzzTest::restoreAxes()
{
    for (int i = 0; i < axes; ++i)
        call(&Stub::EnterDebugMode, ofAxis<proto::EnterDebugModeRequest>(i));
    QTRY_COMPARE_WITH_TIMEOUT(m_controller->download(usualAxes()).code, Diagnosis::ok, 20000);
}

bool ControllerServiceFuzzTest::answers()
{
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
    proto::HandshakeReply reply;
    return m_stub->Handshake(&context, proto::HandshakeRequest(), &reply).ok() && reply.version() == protocolVersion;
}

template <typename Request, typename Reply>
int ControllerServiceFuzzTest::call(
    grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*), Request request, Reply* reply)
{
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
    request.set_session(m_session);
    return (m_stub.get()->*method)(&context, request, reply).ok() ? reply->result() : unanswered;
}

template <typename Request>
int ControllerServiceFuzzTest::call(
    grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, proto::Result*), const Request& request)
{
    proto::Result reply;
    return call(method, request, &reply);
}

std::map<QByteArray, ControllerServiceFuzzTest::Sender> ControllerServiceFuzzTest::oddRequests()
{
    std::map<QByteArray, Sender> senders;
    const auto motion = [&](const char* name, auto method) {
        senders[name] = [=](Random& random, int axis) { return call(method, oddMotion(random, axis)); };
    };
    const auto axisOnly = [&](const char* name, auto method) {
        senders[name] = [=](Random&, int axis) { return call(method, ofAxis<proto::AxisOnlyRequest>(axis)); };
    };
    const auto flag = [&](const char* name, auto method) {
        senders[name] = [=](Random& random, int axis) { return call(method, oddFlag(random, axis)); };
    };
    const auto position = [&](const char* name, auto method) {
        senders[name] = [=](Random& random, int axis) { return call(method, oddPosition(random, axis)); };
    };
    motion("SetStop", &Stub::SetStop);
    motion("MoveAbs", &Stub::MoveAbs);
    motion("MoveRel", &Stub::MoveRel);
    motion("MoveVel", &Stub::MoveVel);
    motion("JopPos", &Stub::JopPos);
    motion("JopNeg", &Stub::JopNeg);
    axisOnly("SetHome", &Stub::SetHome);
    axisOnly("Reset", &Stub::Reset);
    axisOnly("KeepAlive", &Stub::KeepAlive);
    flag("SetEnable", &Stub::SetEnable);
    flag("SetVelRatio", &Stub::SetVelRatio);
    position("SetPosition", &Stub::SetPosition);
    position("SetHomeOffset", &Stub::SetHomeOffset);
    senders["EnterDebugMode"]
        = [this](Random& random, int axis) { return call(&Stub::EnterDebugMode, oddEntering(random, axis)); };
    senders["StopAll"] = [this](Random& random, int) { return call(&Stub::StopAll, oddStop(random)); };
    return senders;
}

/// What reads: the answers have their sizes, whatever was asked for.
void ControllerServiceFuzzTest::readOddly(Random& random, int axis)
{
    proto::StatusReply status;
    const proto::StatusRequest request = oddStatus(random, axis);
    const int size = std::clamp(request.size(), 0, axisRefSize);
    const bool known = axis >= 0 && axis < axes;
    QCOMPARE(call(&Stub::GetAxisRef, request, &status), known ? 0 : int(Diagnosis::unknownAxis));
    QCOMPARE(status.data().size(), std::size_t(known ? size : 0));
    proto::StatusReply group;
    QCOMPARE(call(&Stub::GetAxesGroupRef, oddStatus(random, axis), &group), int(Diagnosis::unknownAxis));
    QVERIFY(group.data().empty());
    proto::CurvesReply curves;
    const proto::CurvesRequest wanted = oddCurves(random);
    QCOMPARE(call(&Stub::ReadCurves, wanted, &curves), 0);
    QCOMPARE(curves.status_size(), wanted.axes_size());
    for (int i = 0; i < curves.status_size(); ++i) {
        const bool there = wanted.axes(i) >= 0 && wanted.axes(i) < axes;
        QCOMPARE(curves.status(i).size(), std::size_t(there ? axisRefSize : 0));
    }
    proto::AxisList list;
    QCOMPARE(call(&Stub::ReadAxes, proto::SessionRequest(), &list), 0);
    QCOMPARE(list.axes_size(), axes);
}

void ControllerServiceFuzzTest::axesAreSound()
{
    for (int axisNo = 0; axisNo < axes; ++axisNo) {
        AxisRef ref{};
        QVERIFY(m_controller->peek(axisNo, &ref, nullptr));
        for (const double number : { ref.setPosition, ref.setVelocity, ref.setAcceleration, ref.setTorque,
                 ref.actualPosition, ref.actualVelocity, ref.actualAcceleration, ref.actualTorque })
            QVERIFY(std::isfinite(number));
        QVERIFY(std::fabs(ref.setVelocity) <= 1000 + 1e-6);
        QVERIFY(ref.axisState <= 7);
    }
}

void ControllerServiceFuzzTest::requestsWithOddNumbers()
{
    Random random(20260521);
    const std::map<QByteArray, Sender> senders = oddRequests();
    std::map<QByteArray, int> successes;
    for (int i = 0; i < fuzzRounds(3000) && !QTest::currentTestFailed(); ++i) {
        const int axis = random() % 8 == 0 ? oddInteger(random) : static_cast<int>(random() % axes);
        const auto sender = std::next(senders.begin(), static_cast<long>(random() % senders.size()));
        const int result = sender->second(random, axis);
        QVERIFY2(result >= 0 && result <= 32767, sender->first.constData());
        successes[sender->first] += result == 0 ? 1 : 0;
        if (i % 10 == 0)
            readOddly(random, axis);
        axesAreSound();
    }
    // Otherwise all of this would show no more than that everything is refused.
    for (const auto& sender : senders)
        QVERIFY2(successes[sender.first] > 0, sender.first.constData());
    QCOMPARE(call(&Stub::StopAll, proto::StopAllRequest()), 0);
    QVERIFY(answers());
    restoreAxes();
}

void ControllerServiceFuzzTest::downloadsWithOddTexts()
{
    Random random(815);
    int taken = 0;
    int refused = 0;
    for (int i = 0; i < fuzzRounds(1500); ++i) {
        proto::DownloadRequest request;
        request.set_session(m_session);
        const int count = static_cast<int>(random() % 4);
        for (int k = 0; k < count; ++k) {
            const AxisText text = makeAxisText(k, anyKind(random));
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
        const std::vector<AxisText> now = m_controller->axes();
        ++(reply.result() == 0 ? taken : refused);
        if (reply.result() != 0) {
            QVERIFY(!reply.key().empty() && !reply.reason().empty());
            continue;
        }
        QCOMPARE(now.size(), std::size_t(count));
        // Whatever was taken can be run.
        AxesTrial trial(now);
        for (const AxisText& text : now) {
            const QString problem = trial.run(std::stoi(text.values.at("AxisNo")), random);
            QVERIFY2(problem.isEmpty(), qPrintable(problem + oddValues(text)));
        }
    }
    QVERIFY(taken > 0 && refused > 0);
    QVERIFY(answers());
    restoreAxes();
}

/// Sends bytes as a request, and says how the call has ended.
grpc::Status ControllerServiceFuzzTest::callRaw(const std::string& method, const std::string& bytes)
{
    grpc::GenericStub generic(m_channel);
    grpc::Slice slice(bytes);
    grpc::ByteBuffer request(&slice, 1);
    grpc::ByteBuffer reply;
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
    grpc::CompletionQueue queue;
    const auto call = generic.PrepareUnaryCall(&context, "/kestrun.protocol.AxisController/" + method, request, &queue);
    grpc::Status status;
    call->StartCall();
    call->Finish(&reply, &status, this);
    void* tag = nullptr;
    bool fine = false;
    return queue.Next(&tag, &fine) ? status : grpc::Status::CANCELLED;
}

void ControllerServiceFuzzTest::bytesThatAreNoMessages()
{
    Random random(4242);
    static const char* const methods[]
        = { "Login", "DownloadAxes", "MoveAbs", "GetAxisRef", "StopAll", "Handshake", "ReadCurves", "NoSuchMethod" };
    for (int i = 0; i < fuzzRounds(600); ++i) {
        std::string bytes(random() % 200, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        const char* method = methods[random() % std::size(methods)];
        const grpc::Status status = callRaw(method, bytes);
        QVERIFY2(status.error_code() != grpc::StatusCode::DEADLINE_EXCEEDED, method);
        QVERIFY2(status.error_code() != grpc::StatusCode::UNAVAILABLE, method);
    }
    QVERIFY(answers());
    QVERIFY(!m_controller->isStopHeld());
}

/// Requests that a sound client makes, under the present session.
std::vector<std::pair<std::string, std::string>> ControllerServiceFuzzTest::soundMessages()
{
    std::vector<std::pair<std::string, std::string>> messages;
    const auto add = [&](const char* method, auto request) {
        request.set_session(m_session);
        messages.emplace_back(method, request.SerializeAsString());
    };
    auto motion = ofAxis<proto::MotionRequest>(1);
    motion.set_position(5);
    motion.set_velocity(10);
    motion.set_acceleration(100);
    motion.set_deceleration(200);
    motion.set_jerk(3000);
    motion.set_pressed(1);
    auto enter = ofAxis<proto::EnterDebugModeRequest>(1);
    enter.set_enter(1);
    enter.set_timeout(30000);
    auto on = ofAxis<proto::FlagRequest>(1);
    on.set_value(1);
    auto status = ofAxis<proto::StatusRequest>(1);
    status.set_size(axisRefSize);
    proto::CurvesRequest curves;
    for (int i = 0; i < axes; ++i)
        curves.add_axes(i);
    proto::StopAllRequest stop;
    stop.set_hold(true);
    stop.set_number(7);
    proto::DownloadRequest download;
    for (const AxisText& text : usualAxes()) {
        proto::AxisRecord* record = download.add_axes();
        record->set_name(text.name);
        record->mutable_values()->insert(text.values.begin(), text.values.end());
    }
    for (const char* method : { "MoveAbs", "MoveRel", "MoveVel", "JopPos", "JopNeg", "SetStop" })
        add(method, motion);
    for (const char* method : { "SetHome", "Reset", "KeepAlive" })
        add(method, ofAxis<proto::AxisOnlyRequest>(1));
    add("EnterDebugMode", enter);
    add("SetEnable", on);
    add("GetAxisRef", status);
    add("ReadCurves", curves);
    add("ReadAxes", proto::SessionRequest());
    add("Logout", proto::SessionRequest());
    add("StopAll", stop);
    add("DownloadAxes", download);
    proto::LoginRequest login;
    login.set_version(protocolVersion);
    login.set_token("token");
    login.set_client(std::string(protocolSessionLength, 'c'));
    messages.emplace_back("Login", login.SerializeAsString());
    return messages;
}

void ControllerServiceFuzzTest::messagesWithChangedBytes()
{
    Random random(31);
    for (int i = 0; i < fuzzRounds(1500); ++i) {
        // A logout that came through makes all the others strangers' requests.
        if (i % 30 == 0) {
            call(&Stub::Logout, proto::SessionRequest());
            login();
        }
        const auto messages = soundMessages();
        const auto& message = messages[random() % messages.size()];
        const bool sound = random() % 8 == 0;
        const grpc::Status status = callRaw(message.first, sound ? message.second : altered(message.second, random));
        QVERIFY2(status.error_code() != grpc::StatusCode::DEADLINE_EXCEEDED, message.first.c_str());
        QVERIFY2(status.error_code() != grpc::StatusCode::UNAVAILABLE, message.first.c_str());
        QVERIFY2(status.ok() || !sound, message.first.c_str());
        for (int axisNo = 0; axisNo < 256; ++axisNo) {
            AxisRef ref{};
            if (m_controller->peek(axisNo, &ref, nullptr))
                QVERIFY(std::isfinite(ref.setPosition) && std::fabs(ref.setVelocity) <= 1e6);
        }
    }
    call(&Stub::Logout, proto::SessionRequest());
    login();
    QCOMPARE(call(&Stub::StopAll, proto::StopAllRequest()), 0);
    QVERIFY(answers());
    restoreAxes();
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
