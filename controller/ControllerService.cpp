#include "controller/ControllerService.h"

#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace proto = kestrun::protocol;
using Status = grpc::Status;
using Kind = MotionController::Kind;

namespace {
using Clock = std::chrono::steady_clock;

/// How soon a stream notices that its client has gone.
constexpr auto streamTick = std::chrono::milliseconds(20);

MotionNumbers numbersOf(const proto::MotionRequest& request)
{
    return { request.velocity(), request.acceleration(), request.deceleration(), request.jerk() };
}

std::string bytesOf(const AxisRef& ref, int size)
{
    const int length = std::clamp(size, 0, axisRefSize);
    return std::string(reinterpret_cast<const char*>(&ref), static_cast<std::size_t>(length));
}
/// For answers that have no room for a result.
Status refusedOnPurpose(const Faults::Effect& effect)
{
    return Status(grpc::StatusCode::FAILED_PRECONDITION, "refused on purpose with " + std::to_string(effect.refusal));
}

/// Brings the event up to date; false when it was.
bool tell(const MotionController& controller, proto::SessionEvent* event)
{
    // The revision first: should the hold change in between, the next event tells it anew.
    const std::uint64_t stops = controller.stopRevision();
    const bool held = controller.isStopHeld();
    const std::uint64_t axes = controller.axesRevision();
    const bool isNew = event->stop_held() != held || event->stop_revision() != stops || event->axes_revision() != axes;
    event->set_stop_held(held);
    event->set_stop_revision(stops);
    event->set_axes_revision(axes);
    return isNew;
}
} // namespace

ControllerService::ControllerService(MotionController* controller, Faults* faults, std::string token)
    : m_controller(controller), m_faults(faults), m_token(std::move(token))
{
}

void ControllerService::waitFor(Context* context, const Faults::Effect& effect) const
{
    const auto until = Clock::now() + std::chrono::milliseconds(effect.delayMs);
    while ((effect.lost || Clock::now() < until) && !m_ending && !context->IsCancelled())
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

Status ControllerService::finish(Context* context, const Faults::Effect& effect) const
{
    waitFor(context, effect);
    return effect.lost ? Status(grpc::StatusCode::CANCELLED, "lost on purpose") : Status::OK;
}

template <typename Request, typename Work>
Status ControllerService::answer(
    Context* context, const char* method, const Request& request, proto::Result* reply, const Work& work)
{
    const Faults::Effect effect = m_faults->take(method);
    const SessionId session = m_sessions.find(request.session());
    if (session == 0)
        reply->set_result(Diagnosis::refused);
    else
        reply->set_result(effect.refusal != 0 ? effect.refusal : work(session));
    return finish(context, effect);
}

template <typename Request>
Status ControllerService::command(Context* context, const char* method, const Request& request, proto::Result* reply,
    Kind kind, const MotionController::Command& command)
{
    return answer(context, method, request, reply,
        [&](SessionId session) { return m_controller->command(session, request.axis(), kind, command); });
}

Status ControllerService::Handshake(Context* context, const proto::HandshakeRequest*, proto::HandshakeReply* reply)
{
    const Faults::Effect effect = m_faults->take("Handshake");
    const std::int64_t told = m_faults->version();
    reply->set_version(told < 0 ? protocolVersion : static_cast<std::uint32_t>(told));
    reply->set_name("Soft controller");
    reply->set_token_needed(!m_token.empty());
    const Status status = finish(context, effect);
    return effect.refusal == 0 ? status : refusedOnPurpose(effect);
}

Status ControllerService::Login(Context* context, const proto::LoginRequest* request, proto::LoginReply* reply)
{
    const Faults::Effect effect = m_faults->take("Login");
    if (request->version() != protocolVersion) {
        reply->set_result(Diagnosis::versionDiffers);
        reply->set_reason("The controller speaks version " + std::to_string(protocolVersion) + " of the protocol.");
    } else if (effect.refusal != 0) {
        reply->set_result(effect.refusal);
        reply->set_reason("It does so on purpose.");
    } else if (!m_token.empty() && !equalSecrets(request->token(), m_token)) {
        reply->set_result(Diagnosis::refused);
        reply->set_reason("The token is wrong.");
    } else {
        const SessionRegistry::Opened opened = m_sessions.open(request->client());
        // A client that comes back has left its former session, whether that end has come through or not.
        for (const SessionId session : opened.ended)
            m_controller->endSession(session);
        reply->set_session(opened.bytes);
        if (opened.bytes.empty()) {
            reply->set_result(Diagnosis::refused);
            reply->set_reason("Too many clients are logged in.");
        }
    }
    return finish(context, effect);
}

Status ControllerService::Attend(
    Context* context, const proto::SessionRequest* request, grpc::ServerWriter<proto::SessionEvent>* writer)
{
    const Faults::Effect effect = m_faults->take("Attend");
    if (effect.refusal != 0)
        return refusedOnPurpose(effect);
    if (!m_sessions.attend(request->session()))
        return Status(grpc::StatusCode::UNAUTHENTICATED, "no such session, or it is attended already");
    waitFor(context, effect);
    proto::SessionEvent event;
    tell(*m_controller, &event);
    bool written = writer->Write(event);
    while (written && !m_ending && !context->IsCancelled() && m_sessions.find(request->session()) != 0) {
        std::this_thread::sleep_for(streamTick);
        if (tell(*m_controller, &event))
            written = writer->Write(event);
    }
    const SessionId session = m_sessions.close(request->session());
    if (session != 0)
        m_controller->endSession(session);
    return Status::OK;
}

Status ControllerService::Logout(Context* context, const proto::SessionRequest* request, proto::Result* reply)
{
    return answer(context, "Logout", *request, reply, [&](SessionId session) {
        m_sessions.close(request->session());
        m_controller->endSession(session);
        return Diagnosis::ok;
    });
}

Status ControllerService::DownloadAxes(
    Context* context, const proto::DownloadRequest* request, proto::DownloadReply* reply)
{
    const Faults::Effect effect = m_faults->take("DownloadAxes");
    const SessionId session = m_sessions.find(request->session());
    if (session == 0 || effect.refusal != 0) {
        reply->set_result(effect.refusal != 0 ? effect.refusal : Diagnosis::refused);
        return finish(context, effect);
    }
    std::vector<AxisText> axes;
    for (const proto::AxisRecord& record : request->axes())
        axes.push_back({ record.name(), AxisValues(record.values().begin(), record.values().end()) });
    const DownloadResult result = m_controller->download(axes, session);
    reply->set_result(result.code);
    reply->set_axis(result.axis);
    reply->set_key(result.key);
    reply->set_reason(result.reason);
    reply->set_axes_revision(result.revision);
    return finish(context, effect);
}

Status ControllerService::ReadAxes(Context* context, const proto::SessionRequest* request, proto::AxisList* reply)
{
    const Faults::Effect effect = m_faults->take("ReadAxes");
    if (m_sessions.find(request->session()) == 0 || effect.refusal != 0) {
        reply->set_result(effect.refusal != 0 ? effect.refusal : Diagnosis::refused);
        return finish(context, effect);
    }
    std::uint64_t revision = 0;
    const std::vector<AxisText> axes = m_controller->axes(&revision);
    reply->set_axes_revision(revision);
    for (const AxisText& axis : axes) {
        proto::AxisRecord* record = reply->add_axes();
        record->set_name(axis.name);
        record->mutable_values()->insert(axis.values.begin(), axis.values.end());
    }
    return finish(context, effect);
}

Status ControllerService::StopAll(Context* context, const proto::StopAllRequest* request, proto::Result* reply)
{
    return answer(context, "StopAll", *request, reply, [&](SessionId session) {
        std::uint64_t revision = 0;
        const std::int16_t result
            = m_controller->stopAll(request->hold(), { session, request->number(), request->seen() }, &revision);
        reply->set_stop_revision(revision);
        return result;
    });
}

Status ControllerService::ReadCurves(Context* context, const proto::CurvesRequest* request, proto::CurvesReply* reply)
{
    const Faults::Effect effect = m_faults->take("ReadCurves");
    if (m_sessions.find(request->session()) == 0 || effect.refusal != 0) {
        reply->set_result(effect.refusal != 0 ? effect.refusal : Diagnosis::refused);
        return finish(context, effect);
    }
    std::uint64_t time = 0;
    for (const int axisNo : request->axes()) {
        AxisRef ref{};
        reply->add_status(m_controller->peek(axisNo, &ref, &time) ? bytesOf(ref, axisRefSize) : std::string());
    }
    reply->set_time_us(time);
    return finish(context, effect);
}

Status ControllerService::status(
    Context* context, const char* method, const proto::StatusRequest& request, proto::StatusReply* reply, bool known)
{
    const Faults::Effect effect = m_faults->take(method);
    const SessionId session = m_sessions.find(request.session());
    AxisRef ref{};
    if (session == 0)
        reply->set_result(Diagnosis::refused);
    else if (effect.refusal != 0)
        reply->set_result(effect.refusal);
    else if (!known || !m_controller->status(session, request.axis(), &ref))
        reply->set_result(Diagnosis::unknownAxis);
    else
        reply->set_data(bytesOf(ref, request.size()));
    const int length = m_faults->statusLength();
    if (length >= 0)
        reply->mutable_data()->resize(static_cast<std::size_t>(length));
    return finish(context, effect);
}

Status ControllerService::GetAxisRef(Context* context, const proto::StatusRequest* request, proto::StatusReply* reply)
{
    return status(context, "GetAxisRef", *request, reply, true);
}

Status ControllerService::GetAxesGroupRef(
    Context* context, const proto::StatusRequest* request, proto::StatusReply* reply)
{
    // This controller has single axes only.
    return status(context, "GetAxesGroupRef", *request, reply, false);
}

Status ControllerService::EnterDebugMode(
    Context* context, const proto::EnterDebugModeRequest* request, proto::Result* reply)
{
    return answer(context, "EnterDebugMode", *request, reply, [&](SessionId session) {
        return m_controller->enterDebugMode(session, request->axis(), request->enter(), request->timeout());
    });
}

Status ControllerService::KeepAlive(Context* context, const proto::AxisOnlyRequest* request, proto::Result* reply)
{
    return answer(context, "KeepAlive", *request, reply,
        [&](SessionId session) { return m_controller->keepAlive(session, request->axis()); });
}

Status ControllerService::SetEnable(Context* context, const proto::FlagRequest* request, proto::Result* reply)
{
    const int on = request->value();
    return command(context, "SetEnable", *request, reply, Kind::Plain,
        [on](Axis& axis) { return on == 0 || on == 1 ? axis.setEnable(on == 1) : Diagnosis::argumentInvalid; });
}

Status ControllerService::SetPosition(Context* context, const proto::PositionRequest* request, proto::Result* reply)
{
    return command(context, "SetPosition", *request, reply, Kind::Plain,
        [request](Axis& axis) { return axis.setPosition(request->position()); });
}

Status ControllerService::SetHomeOffset(Context* context, const proto::PositionRequest* request, proto::Result* reply)
{
    return command(context, "SetHomeOffset", *request, reply, Kind::Plain,
        [request](Axis& axis) { return axis.setHomeOffset(request->position()); });
}

Status ControllerService::SetVelRatio(Context* context, const proto::FlagRequest* request, proto::Result* reply)
{
    return command(context, "SetVelRatio", *request, reply, Kind::Plain,
        [request](Axis& axis) { return axis.setVelocityRatio(request->value()); });
}

Status ControllerService::SetHome(Context* context, const proto::AxisOnlyRequest* request, proto::Result* reply)
{
    return command(context, "SetHome", *request, reply, Kind::Motion, [](Axis& axis) { return axis.home(); });
}

Status ControllerService::SetStop(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return command(context, "SetStop", *request, reply, Kind::Plain,
        [request](Axis& axis) { return axis.stop(request->deceleration(), request->jerk()); });
}

Status ControllerService::MoveAbs(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return command(context, "MoveAbs", *request, reply, Kind::Motion,
        [request](Axis& axis) { return axis.moveAbsolute(request->position(), numbersOf(*request)); });
}

Status ControllerService::MoveRel(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return command(context, "MoveRel", *request, reply, Kind::Motion,
        [request](Axis& axis) { return axis.moveRelative(request->position(), numbersOf(*request)); });
}

Status ControllerService::MoveVel(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return command(context, "MoveVel", *request, reply, Kind::Motion,
        [request](Axis& axis) { return axis.moveVelocity(numbersOf(*request)); });
}

Status ControllerService::jog(
    Context* context, const char* method, int direction, const proto::MotionRequest& request, proto::Result* reply)
{
    if (request.pressed() == 0) {
        return answer(context, method, request, reply, [&](SessionId session) {
            return m_controller->endJog(session, request.axis(), direction, request.deceleration(), request.jerk());
        });
    }
    return command(context, method, request, reply, Kind::Motion, [&request, direction](Axis& axis) {
        return request.pressed() == 1 ? axis.startJog(direction, numbersOf(request)) : Diagnosis::argumentInvalid;
    });
}

Status ControllerService::JopPos(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return jog(context, "JopPos", 1, *request, reply);
}

Status ControllerService::JopNeg(Context* context, const proto::MotionRequest* request, proto::Result* reply)
{
    return jog(context, "JopNeg", -1, *request, reply);
}

Status ControllerService::Reset(Context* context, const proto::AxisOnlyRequest* request, proto::Result* reply)
{
    return command(context, "Reset", *request, reply, Kind::Plain, [](Axis& axis) { return axis.reset(); });
}
