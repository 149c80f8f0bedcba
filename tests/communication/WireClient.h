#pragma once

#include "host/communication/ControllerAddress.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"

#include <grpcpp/grpcpp.h>

#include <chrono>
#include <memory>
#include <string>

/// Another client of a controller that listens on loopback, with a session of its own. It speaks the protocol by
/// itself, since the links of this program share one place.
class WireClient {
public:
    explicit WireClient(const ControllerAddress& address)
        : m_stub(kestrun::protocol::AxisController::NewStub(
            grpc::CreateChannel(address.text().toStdString(), grpc::InsecureChannelCredentials())))
    {
        kestrun::protocol::LoginRequest request;
        kestrun::protocol::LoginReply reply;
        request.set_version(protocolVersion);
        request.set_token(address.token.toStdString());
        call(&Stub::Login, request, &reply);
        m_session = reply.session();
    }

    bool isLoggedIn() const { return !m_session.empty(); }

    // Each gives the controller's result, or -1 when none has come.
    int endJog(int axis, bool forwards)
    {
        Motion request = motion(axis);
        request.set_pressed(0);
        return forwards ? result(&Stub::JopPos, request) : result(&Stub::JopNeg, request);
    }
    int stop(int axis) { return result(&Stub::SetStop, motion(axis)); }
    int keepAlive(int axis)
    {
        kestrun::protocol::AxisOnlyRequest request;
        request.set_axis(axis);
        return result(&Stub::KeepAlive, request);
    }
    int enterDebugMode(int axis, int timeout)
    {
        kestrun::protocol::EnterDebugModeRequest request;
        request.set_axis(axis);
        request.set_enter(1);
        request.set_timeout(timeout);
        return result(&Stub::EnterDebugMode, request);
    }
    int readStatus(int axis)
    {
        kestrun::protocol::StatusRequest request;
        kestrun::protocol::StatusReply reply;
        request.set_session(m_session);
        request.set_axis(axis);
        request.set_size(248);
        return call(&Stub::GetAxisRef, request, &reply) ? reply.result() : -1;
    }

private:
    using Stub = kestrun::protocol::AxisController::Stub;
    using Motion = kestrun::protocol::MotionRequest;
    using Result = kestrun::protocol::Result;

    static Motion motion(int axis)
    {
        Motion request;
        request.set_axis(axis);
        request.set_velocity(10);
        request.set_acceleration(1000);
        request.set_deceleration(1000);
        return request;
    }

    template <typename Request, typename Reply>
    bool call(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*), const Request& request,
        Reply* reply)
    {
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(2));
        context.set_wait_for_ready(true);
        return (m_stub.get()->*method)(&context, request, reply).ok();
    }

    template <typename Request>
    int result(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Result*), Request request)
    {
        Result reply;
        request.set_session(m_session);
        return call(method, request, &reply) ? reply.result() : -1;
    }

    std::unique_ptr<Stub> m_stub;
    std::string m_session;
};
