#pragma once

#include "controller/Faults.h"
#include "controller/MotionController.h"
#include "controller/SessionRegistry.h"
#include "protocol/controller.grpc.pb.h"

#include <atomic>
#include <string>

/// Answers the requests of clients: checks the session, hands the command to the cycle, misbehaves where it is told to.
/// Called by the threads of the server.
class ControllerService : public kestrun::protocol::AxisController::Service {
public:
    /// An empty token means that the client's certificate stands for it. Neither object is owned.
    ControllerService(MotionController* controller, Faults* faults, std::string token);

    /// Ends the streams that clients keep open, so that the server can go.
    void endStreams() { m_ending = true; }

    using Context = grpc::ServerContext;
    using Status = grpc::Status;

    Status Handshake(Context* context, const kestrun::protocol::HandshakeRequest* request,
        kestrun::protocol::HandshakeReply* reply) override;
    Status Login(Context* context, const kestrun::protocol::LoginRequest* request,
        kestrun::protocol::LoginReply* reply) override;
    Status Attend(Context* context, const kestrun::protocol::SessionRequest* request,
        grpc::ServerWriter<kestrun::protocol::SessionEvent>* writer) override;
    Status Logout(
        Context* context, const kestrun::protocol::SessionRequest* request, kestrun::protocol::Result* reply) override;
    Status DownloadAxes(Context* context, const kestrun::protocol::DownloadRequest* request,
        kestrun::protocol::DownloadReply* reply) override;
    Status ReadAxes(Context* context, const kestrun::protocol::SessionRequest* request,
        kestrun::protocol::AxisList* reply) override;
    Status StopAll(
        Context* context, const kestrun::protocol::StopAllRequest* request, kestrun::protocol::Result* reply) override;
    Status ReadCurves(Context* context, const kestrun::protocol::CurvesRequest* request,
        kestrun::protocol::CurvesReply* reply) override;
    Status GetAxisRef(Context* context, const kestrun::protocol::StatusRequest* request,
        kestrun::protocol::StatusReply* reply) override;
    Status GetAxesGroupRef(Context* context, const kestrun::protocol::StatusRequest* request,
        kestrun::protocol::StatusReply* reply) override;
    Status EnterDebugMode(Context* context, const kestrun::protocol::EnterDebugModeRequest* request,
        kestrun::protocol::Result* reply) override;
    Status KeepAlive(
        Context* context, const kestrun::protocol::AxisOnlyRequest* request, kestrun::protocol::Result* reply) override;
    Status SetEnable(
        Context* context, const kestrun::protocol::FlagRequest* request, kestrun::protocol::Result* reply) override;
    Status SetPosition(
        Context* context, const kestrun::protocol::PositionRequest* request, kestrun::protocol::Result* reply) override;
    Status SetHomeOffset(
        Context* context, const kestrun::protocol::PositionRequest* request, kestrun::protocol::Result* reply) override;
    Status SetVelRatio(
        Context* context, const kestrun::protocol::FlagRequest* request, kestrun::protocol::Result* reply) override;
    Status SetHome(
        Context* context, const kestrun::protocol::AxisOnlyRequest* request, kestrun::protocol::Result* reply) override;
    Status SetStop(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status MoveAbs(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status MoveRel(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status MoveVel(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status JopPos(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status JopNeg(
        Context* context, const kestrun::protocol::MotionRequest* request, kestrun::protocol::Result* reply) override;
    Status Reset(
        Context* context, const kestrun::protocol::AxisOnlyRequest* request, kestrun::protocol::Result* reply) override;

private:
    template <typename Request, typename Work>
    Status answer(Context* context, const char* method, const Request& request, kestrun::protocol::Result* reply,
        const Work& work);
    template <typename Request>
    Status command(Context* context, const char* method, const Request& request, kestrun::protocol::Result* reply,
        MotionController::Kind kind, const MotionController::Command& command);
    Status jog(Context* context, const char* method, int direction, const kestrun::protocol::MotionRequest& request,
        kestrun::protocol::Result* reply);
    Status status(Context* context, const char* method, const kestrun::protocol::StatusRequest& request,
        kestrun::protocol::StatusReply* reply, bool known);
    Status finish(Context* context, const Faults::Effect& effect) const;
    void waitFor(Context* context, const Faults::Effect& effect) const;

    MotionController* m_controller;
    Faults* m_faults;
    std::string m_token;
    SessionRegistry m_sessions;
    std::atomic<bool> m_ending{ false };
};
