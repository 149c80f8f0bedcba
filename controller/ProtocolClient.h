#pragma once

#include "protocol/AxisRefLayout.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"

#include <grpcpp/grpcpp.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

/// A client of a controller's service with one session at a time, for checking what the controller does. It commands
/// the axis of number 0.
class ProtocolClient {
public:
    using Stub = kestrun::protocol::AxisController::Stub;

    explicit ProtocolClient(std::shared_ptr<grpc::Channel> channel);
    /// Ends the stream; the session stays as the controller sees fit.
    ~ProtocolClient();
    ProtocolClient(const ProtocolClient&) = delete;
    ProtocolClient& operator=(const ProtocolClient&) = delete;

    std::shared_ptr<grpc::Channel> channel() const { return m_channel; }

    /// Logs in and takes the session that it is given, or none. The client's bytes tell who comes back. True when the
    /// controller has answered; code is its result.
    bool login(const std::string& token, const std::string& client = {}, int* code = nullptr,
        std::uint32_t version = protocolVersion);
    void logout();
    /// The session's bytes, empty while there is none.
    const std::string& session() const { return m_session; }
    /// Whether the controller knows the session.
    bool isLoggedIn();

    /// Opens the session's stream.
    void attend();
    /// What the controller sees when a client is gone.
    void endStream();
    /// What the stream has told: how many events, and the last of them.
    int events() const { return m_events; }
    bool stopHeld() const { return m_stopHeld; }
    std::uint64_t axesRevision() const { return m_axesRevision; }
    std::uint64_t stopRevision() const { return m_stopRevision; }

    /// False, with a line for the user, when there is no answer.
    template <typename Request, typename Reply>
    bool call(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*), const Request& request,
        Reply* reply)
    {
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
        const grpc::Status status = (m_stub.get()->*method)(&context, request, reply);
        if (!status.ok())
            std::cout << "        (" << status.error_message() << ")\n";
        return status.ok();
    }
    /// The result of a request of this session; -1 when there is no answer.
    template <typename Request>
    int result(
        grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, kestrun::protocol::Result*), Request request)
    {
        kestrun::protocol::Result reply;
        request.set_session(m_session);
        return call(method, request, &reply) ? reply.result() : -1;
    }

    /// The status of the axis; all zero, and not fine, when there is none of the right length.
    AxisRef status(bool* fine = nullptr);
    /// Whether the status becomes so within the time. Every look counts as a sign of life.
    bool becomes(const std::function<bool(const AxisRef&)>& condition, int milliseconds = 3000);
    static bool waitFor(const std::function<bool()>& condition);

    int enterDebugMode(int enter, int timeout);
    int enable(int on);
    int jog(int pressed);
    static kestrun::protocol::MotionRequest motion(double position, double velocity, double ramp = 100);

private:
    std::shared_ptr<grpc::Channel> m_channel;
    std::unique_ptr<Stub> m_stub;
    std::string m_session;
    std::unique_ptr<grpc::ClientContext> m_attendance;
    std::thread m_reader;
    std::atomic<int> m_events{ 0 };
    std::atomic<bool> m_stopHeld{ false };
    std::atomic<std::uint64_t> m_axesRevision{ 0 };
    std::atomic<std::uint64_t> m_stopRevision{ 0 };
};
