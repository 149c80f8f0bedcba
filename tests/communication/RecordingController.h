#pragma once

#include "host/communication/ControllerAddress.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"

#include <grpcpp/grpcpp.h>

#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// What a call carried over the wire. Fields that its message does not have are 0.
struct WireCall {
    std::string method;
    std::string session;
    int axis = 0;
    int size = 0;
    int value = 0;
    int timeout = 0;
    double position = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
    std::uint64_t number = 0;
    std::uint64_t seen = 0;
};

/// A controller without axes, on a free port of loopback: notes what arrives on the wire, and answers what it is told.
class RecordingController : private kestrun::protocol::AxisController::Service {
public:
    explicit RecordingController(const std::string& session = "0123456789abcdef") : m_session(session)
    {
        grpc::ServerBuilder builder;
        builder.AddListeningPort("127.0.0.1:0", grpc::InsecureServerCredentials(), &m_port);
        builder.RegisterService(this);
        m_server = builder.BuildAndStart();
        if (!m_server || m_port == 0)
            qFatal("no port to listen on");
    }

    ~RecordingController() override
    {
        m_ending = true;
        m_server->Shutdown(std::chrono::system_clock::now());
        m_server->Wait();
    }

    ControllerAddress address() const
    {
        ControllerAddress address;
        address.host = QStringLiteral("127.0.0.1");
        address.port = static_cast<quint16>(m_port);
        address.token = "right";
        return address;
    }

    std::string session() const { return m_session; }

    /// All calls so far, but those that open and keep a session.
    std::vector<WireCall> calls() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_calls;
    }

    kestrun::protocol::LoginRequest login() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_login;
    }

    int logouts() const { return m_logouts; }

    /// Blocks until a client attends its session; false when none has come.
    bool waitForAttendance()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(5), [this] { return m_attended; });
    }

    /// From now on the debug requests end so.
    void answerWith(int result, const grpc::Status& status = grpc::Status::OK)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_result = result;
        m_status = status;
    }

    void answerCurvesWith(const kestrun::protocol::CurvesReply& reply)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_curves = reply;
    }

private:
    using Context = grpc::ServerContext;
    using Status = grpc::Status;
    using Result = kestrun::protocol::Result;
    using AxisOnly = kestrun::protocol::AxisOnlyRequest;
    using Flag = kestrun::protocol::FlagRequest;
    using Place = kestrun::protocol::PositionRequest;
    using Motion = kestrun::protocol::MotionRequest;
    using StatusRequest = kestrun::protocol::StatusRequest;
    using StatusReply = kestrun::protocol::StatusReply;

    template <typename Reply>
    Status note(const WireCall& call, Reply* reply)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_calls.push_back(call);
        reply->set_result(m_result);
        return m_status;
    }

    template <typename Request>
    static WireCall callOf(const char* method, const Request& request)
    {
        WireCall call;
        call.method = method;
        call.session = request.session();
        call.axis = request.axis();
        return call;
    }

    Status noteStatus(const char* method, const StatusRequest& request, StatusReply* reply)
    {
        WireCall call = callOf(method, request);
        call.size = request.size();
        return note(call, reply);
    }

    Status noteFlag(const char* method, const Flag& request, Result* reply)
    {
        WireCall call = callOf(method, request);
        call.value = request.value();
        return note(call, reply);
    }

    Status notePlace(const char* method, const Place& request, Result* reply)
    {
        WireCall call = callOf(method, request);
        call.position = request.position();
        return note(call, reply);
    }

    Status noteMotion(const char* method, const Motion& request, Result* reply)
    {
        WireCall call = callOf(method, request);
        call.value = request.pressed();
        call.position = request.position();
        call.velocity = request.velocity();
        call.acceleration = request.acceleration();
        call.deceleration = request.deceleration();
        call.jerk = request.jerk();
        return note(call, reply);
    }

    Status Handshake(
        Context*, const kestrun::protocol::HandshakeRequest*, kestrun::protocol::HandshakeReply* reply) override
    {
        reply->set_version(protocolVersion);
        return Status::OK;
    }

    Status Login(
        Context*, const kestrun::protocol::LoginRequest* request, kestrun::protocol::LoginReply* reply) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_login = *request;
        reply->set_session(m_session);
        return Status::OK;
    }

    Status Attend(Context* context, const kestrun::protocol::SessionRequest*,
        grpc::ServerWriter<kestrun::protocol::SessionEvent>* writer) override
    {
        writer->Write({});
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_attended = true;
        }
        m_changed.notify_all();
        while (!m_ending && !context->IsCancelled())
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return Status::OK;
    }

    Status Logout(Context*, const kestrun::protocol::SessionRequest*, Result*) override
    {
        ++m_logouts;
        return Status::OK;
    }

    Status StopAll(Context*, const kestrun::protocol::StopAllRequest* request, Result* reply) override
    {
        WireCall call;
        call.method = "StopAll";
        call.session = request->session();
        call.value = request->hold() ? 1 : 0;
        call.number = request->number();
        call.seen = request->seen();
        return note(call, reply);
    }

    Status ReadCurves(
        Context*, const kestrun::protocol::CurvesRequest* request, kestrun::protocol::CurvesReply* reply) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        WireCall call;
        call.method = "ReadCurves";
        call.session = request->session();
        call.size = request->axes_size();
        m_calls.push_back(call);
        *reply = m_curves;
        return Status::OK;
    }

    Status GetAxisRef(Context*, const StatusRequest* request, StatusReply* reply) override
    {
        return noteStatus("GetAxisRef", *request, reply);
    }
    Status GetAxesGroupRef(Context*, const StatusRequest* request, StatusReply* reply) override
    {
        return noteStatus("GetAxesGroupRef", *request, reply);
    }
    Status EnterDebugMode(Context*, const kestrun::protocol::EnterDebugModeRequest* request, Result* reply) override
    {
        WireCall call = callOf("EnterDebugMode", *request);
        call.value = request->enter();
        call.timeout = request->timeout();
        return note(call, reply);
    }
    Status KeepAlive(Context*, const AxisOnly* request, Result* reply) override
    {
        return note(callOf("KeepAlive", *request), reply);
    }
    Status SetEnable(Context*, const Flag* request, Result* reply) override
    {
        return noteFlag("SetEnable", *request, reply);
    }
    Status SetPosition(Context*, const Place* request, Result* reply) override
    {
        return notePlace("SetPosition", *request, reply);
    }
    Status SetHomeOffset(Context*, const Place* request, Result* reply) override
    {
        return notePlace("SetHomeOffset", *request, reply);
    }
    Status SetVelRatio(Context*, const Flag* request, Result* reply) override
    {
        return noteFlag("SetVelRatio", *request, reply);
    }
    Status SetHome(Context*, const AxisOnly* request, Result* reply) override
    {
        return note(callOf("SetHome", *request), reply);
    }
    Status SetStop(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("SetStop", *request, reply);
    }
    Status MoveAbs(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("MoveAbs", *request, reply);
    }
    Status MoveRel(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("MoveRel", *request, reply);
    }
    Status MoveVel(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("MoveVel", *request, reply);
    }
    Status JopPos(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("JopPos", *request, reply);
    }
    Status JopNeg(Context*, const Motion* request, Result* reply) override
    {
        return noteMotion("JopNeg", *request, reply);
    }
    Status Reset(Context*, const AxisOnly* request, Result* reply) override
    {
        return note(callOf("Reset", *request), reply);
    }

    const std::string m_session;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<WireCall> m_calls;
    kestrun::protocol::LoginRequest m_login;
    kestrun::protocol::CurvesReply m_curves;
    Status m_status;
    int m_result = 0;
    bool m_attended = false;
    std::atomic<int> m_logouts{ 0 };
    std::atomic<bool> m_ending{ false };
    int m_port = 0;
    std::unique_ptr<grpc::Server> m_server;
};
