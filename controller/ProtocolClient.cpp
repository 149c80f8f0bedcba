#include "controller/ProtocolClient.h"

#include <cstring>
#include <utility>

namespace proto = kestrun::protocol;

ProtocolClient::ProtocolClient(std::shared_ptr<grpc::Channel> channel)
    : m_channel(std::move(channel)), m_stub(proto::AxisController::NewStub(m_channel))
{
}

ProtocolClient::~ProtocolClient()
{
    endStream();
}

bool ProtocolClient::login(const std::string& token, const std::string& client, int* code, std::uint32_t version)
{
    proto::LoginRequest request;
    proto::LoginReply reply;
    request.set_version(version);
    request.set_token(token);
    request.set_client_name("kestrun-protocol-check");
    request.set_client(client);
    const bool fine = call(&Stub::Login, request, &reply);
    m_session = reply.session();
    if (code)
        *code = reply.result();
    return fine;
}

void ProtocolClient::logout()
{
    result(&Stub::Logout, proto::SessionRequest());
    endStream();
    m_session.clear();
}

// Reading curves changes nothing, and counts for no axis.
bool ProtocolClient::isLoggedIn()
{
    proto::CurvesRequest request;
    proto::CurvesReply reply;
    request.set_session(m_session);
    return call(&Stub::ReadCurves, request, &reply) && reply.result() == 0;
}

void ProtocolClient::attend()
{
    proto::SessionRequest request;
    request.set_session(m_session);
    m_attendance = std::make_unique<grpc::ClientContext>();
    m_reader = std::thread([this, request] {
        const auto stream = m_stub->Attend(m_attendance.get(), request);
        proto::SessionEvent event;
        while (stream->Read(&event)) {
            m_stopHeld = event.stop_held();
            m_axesRevision = event.axes_revision();
            m_stopRevision = event.stop_revision();
            ++m_events;
        }
        stream->Finish();
    });
}

void ProtocolClient::endStream()
{
    if (m_attendance)
        m_attendance->TryCancel();
    if (m_reader.joinable())
        m_reader.join();
}

AxisRef ProtocolClient::status(bool* fine)
{
    proto::StatusRequest request;
    proto::StatusReply reply;
    request.set_session(m_session);
    request.set_size(axisRefSize);
    const bool whole = call(&Stub::GetAxisRef, request, &reply) && reply.data().size() == sizeof(AxisRef);
    AxisRef ref{};
    if (whole)
        std::memcpy(&ref, reply.data().data(), sizeof ref);
    if (fine)
        *fine = whole && reply.result() == 0;
    return ref;
}

bool ProtocolClient::becomes(const std::function<bool(const AxisRef&)>& condition, int milliseconds)
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    bool fine = true;
    while (fine && std::chrono::steady_clock::now() < until) {
        if (condition(status(&fine)))
            return fine;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

bool ProtocolClient::waitFor(const std::function<bool()>& condition)
{
    for (int i = 0; i < 200 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return condition();
}

int ProtocolClient::enterDebugMode(int enter, int timeout)
{
    proto::EnterDebugModeRequest request;
    request.set_enter(enter);
    request.set_timeout(timeout);
    return result(&Stub::EnterDebugMode, request);
}

int ProtocolClient::enable(int on)
{
    proto::FlagRequest request;
    request.set_value(on);
    return result(&Stub::SetEnable, request);
}

proto::MotionRequest ProtocolClient::motion(double position, double velocity, double ramp)
{
    proto::MotionRequest request;
    request.set_position(position);
    request.set_velocity(velocity);
    request.set_acceleration(ramp);
    request.set_deceleration(ramp);
    return request;
}

int ProtocolClient::jog(int pressed)
{
    proto::MotionRequest request = motion(0, 5);
    request.set_pressed(pressed);
    return result(&Stub::JopPos, request);
}
