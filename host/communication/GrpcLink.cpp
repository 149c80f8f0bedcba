#include "host/communication/GrpcLink.h"

#include "host/communication/ConnectionTexts.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "sdk/AxisDebugParams.h"

#include <QSysInfo>

#include <limits>

namespace proto = kestrun::protocol;

namespace {
constexpr auto axesDeadline = std::chrono::seconds(10);
} // namespace

short resultOfStatus(const grpc::Status& status)
{
    switch (status.error_code()) {
    case grpc::StatusCode::OK:
        return Diagnosis::ok;
    case grpc::StatusCode::DEADLINE_EXCEEDED:
        return Diagnosis::noAnswer;
    case grpc::StatusCode::UNIMPLEMENTED:
        return Diagnosis::versionDiffers;
    case grpc::StatusCode::UNAVAILABLE:
    case grpc::StatusCode::CANCELLED:
        return Diagnosis::notConnected;
    default:
        return Diagnosis::refused;
    }
}

short resultOfNumber(int number)
{
    const bool fits = number >= std::numeric_limits<short>::min() && number <= std::numeric_limits<short>::max();
    return fits ? static_cast<short>(number) : Diagnosis::refused;
}

/// A call under way, known to the link so that it can be cancelled from another thread.
class GrpcLink::Call {
public:
    /// Ends at once when the link is not to be used any more by then.
    Call(GrpcLink* link, Deadline deadline, bool isLast) : m_link(link)
    {
        context.set_deadline(std::chrono::system_clock::now() + deadline);
        const std::lock_guard<std::mutex> lock(m_link->m_mutex);
        m_link->m_calls.insert(&context);
        // The link may have gone down since the caller looked.
        if (!m_link->m_up || (m_link->m_retired && !isLast))
            context.TryCancel();
    }
    ~Call()
    {
        const std::lock_guard<std::mutex> lock(m_link->m_mutex);
        m_link->m_calls.erase(&context);
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    grpc::ClientContext context;

private:
    GrpcLink* m_link;
};

GrpcLink::GrpcLink(
    std::shared_ptr<const ControllerTransport> transport, const ControllerAddress& address, std::string client)
    : m_transport(std::move(transport)), m_address(address), m_client(std::move(client)),
      m_stub(proto::AxisController::NewStub(m_transport->channel()))
{
}

GrpcLink::~GrpcLink() = default;

template <typename Request, typename Reply>
grpc::Status GrpcLink::send(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*),
    const Request& request, Reply* reply, Deadline deadline, bool waitForReady)
{
    if (!m_up || m_retired)
        return grpc::Status(grpc::StatusCode::UNAVAILABLE, "the link is down");
    Call call(this, deadline, false);
    call.context.set_wait_for_ready(waitForReady);
    return (m_stub.get()->*method)(&call.context, request, reply);
}

template <typename Request, typename Reply>
grpc::Status GrpcLink::sendLast(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*),
    const Request& request, Reply* reply, Deadline deadline)
{
    if (!m_up)
        return grpc::Status(grpc::StatusCode::UNAVAILABLE, "the link is down");
    Call call(this, deadline, true);
    return (m_stub.get()->*method)(&call.context, request, reply);
}

grpc::Status GrpcLink::handshake(proto::HandshakeReply* reply, Deadline deadline, std::string* detail)
{
    proto::HandshakeRequest request;
    request.set_version(protocolVersion);
    // The first try tells why nobody answers; waiting does not.
    grpc::Status status = send(&Stub::Handshake, request, reply, deadline);
    *detail = status.error_message();
    if (status.error_code() == grpc::StatusCode::UNAVAILABLE)
        status = send(&Stub::Handshake, request, reply, deadline, true);
    return status;
}

GrpcLink::LoginOutcome GrpcLink::login(Deadline deadline)
{
    proto::HandshakeReply reply;
    std::string detail;
    const grpc::Status status = handshake(&reply, deadline, &detail);
    const short result = resultOfStatus(status);
    if (result == Diagnosis::versionDiffers || (status.ok() && reply.version() != protocolVersion)) {
        return { Diagnosis::versionDiffers,
            ConnectionTexts::tr("The controller at %1 speaks version %2 of the protocol, this program version %3.")
                .arg(m_address.text())
                .arg(reply.version())
                .arg(protocolVersion),
            QString() };
    }
    if (result == Diagnosis::refused)
        return { result, ConnectionTexts::tr("The controller at %1 has refused the connection.").arg(m_address.text()),
            QString() };
    if (!status.ok()) {
        const QString reason = (m_address.usesTls()
                ? ConnectionTexts::tr("No controller answers at %1: there is none, or the certificates do not fit.")
                : ConnectionTexts::tr("No controller answers at %1."))
                                   .arg(m_address.text());
        const QString text
            = detail.empty() ? reason : QString(reason + QLatin1Char(' ') + QString::fromStdString(detail));
        return { Diagnosis::notConnected, text, QString() };
    }
    LoginOutcome outcome = sendLogin(deadline);
    outcome.name = QString::fromStdString(reply.name());
    return outcome;
}

GrpcLink::LoginOutcome GrpcLink::sendLogin(Deadline deadline)
{
    proto::LoginRequest request;
    proto::LoginReply reply;
    request.set_version(protocolVersion);
    // Elsewhere the certificate stands for it, and a secret goes to nobody who does not ask for it.
    if (!m_address.usesTls())
        request.set_token(m_address.token.toStdString());
    request.set_client_name(QSysInfo::machineHostName().toStdString());
    request.set_client(m_client);
    const grpc::Status status = send(&Stub::Login, request, &reply, deadline, true);
    if (!status.ok())
        return { resultOfStatus(status),
            ConnectionTexts::tr("The controller at %1 has not answered the login.").arg(m_address.text()), QString() };
    if (reply.result() != 0) {
        return { resultOfNumber(reply.result()),
            ConnectionTexts::tr("The controller at %1 has refused the login. %2")
                .arg(m_address.text(), QString::fromStdString(reply.reason())),
            QString() };
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_session = reply.session();
    return {};
}

std::string GrpcLink::session() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_session;
}

QString GrpcLink::attend(const std::function<void(News)>& tell)
{
    proto::SessionRequest request;
    request.set_session(session());
    grpc::ClientContext* context = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_attendance = std::make_unique<grpc::ClientContext>();
        context = m_attendance.get();
    }
    if (!m_up)
        context->TryCancel();
    const auto reader = m_stub->Attend(context, request);
    proto::SessionEvent event;
    while (reader->Read(&event))
        tell({ event.stop_held(), event.axes_revision(), event.stop_revision() });
    const grpc::Status status = reader->Finish();
    m_up = false;
    return QString::fromStdString(status.error_message());
}

void GrpcLink::logout(Deadline deadline)
{
    proto::SessionRequest request;
    proto::Result reply;
    request.set_session(session());
    if (!request.session().empty())
        sendLast(&Stub::Logout, request, &reply, deadline);
}

void GrpcLink::cancelInFlight()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (grpc::ClientContext* context : m_calls)
        context->TryCancel();
}

void GrpcLink::retire()
{
    m_retired = true;
    cancelInFlight();
}

void GrpcLink::shutDown()
{
    m_up = false;
    cancelInFlight();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_attendance)
        m_attendance->TryCancel();
}

DownloadOutcome GrpcLink::download(const QVector<ControllerAxis>& axes)
{
    proto::DownloadRequest request;
    proto::DownloadReply reply;
    request.set_session(session());
    for (const ControllerAxis& axis : axes) {
        proto::AxisRecord* record = request.add_axes();
        record->set_name(axis.name.toStdString());
        for (auto it = axis.values.begin(); it != axis.values.end(); ++it)
            (*record->mutable_values())[it.key().toStdString()] = it.value().toStdString();
    }
    const grpc::Status status = send(&Stub::DownloadAxes, request, &reply, axesDeadline);
    if (!status.ok())
        return { resultOfStatus(status), QString(), QString(), QString::fromStdString(status.error_message()) };
    return { resultOfNumber(reply.result()), QString::fromStdString(reply.axis()), QString::fromStdString(reply.key()),
        QString::fromStdString(reply.reason()), reply.axes_revision() };
}

short GrpcLink::readAxes(QVector<ControllerAxis>* axes, quint64* revision)
{
    proto::SessionRequest request;
    proto::AxisList reply;
    request.set_session(session());
    const grpc::Status status = send(&Stub::ReadAxes, request, &reply, axesDeadline);
    if (!status.ok())
        return resultOfStatus(status);
    for (const proto::AxisRecord& record : reply.axes()) {
        ControllerAxis axis{ QString::fromStdString(record.name()), {} };
        for (const auto& value : record.values())
            axis.values.insert(QString::fromStdString(value.first), QString::fromStdString(value.second));
        axes->append(axis);
    }
    if (reply.result() == 0)
        *revision = reply.axes_revision();
    return resultOfNumber(reply.result());
}

template <typename Request>
AxisReply GrpcLink::command(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, proto::Result*),
    Request request, const AxisRequest& from, Deadline deadline)
{
    proto::Result reply;
    request.set_session(session());
    request.set_axis(from.axisNo);
    const grpc::Status status = send(method, request, &reply, deadline);
    return { status.ok() ? resultOfNumber(reply.result()) : resultOfStatus(status), {} };
}

AxisReply GrpcLink::status(
    grpc::Status (Stub::*method)(grpc::ClientContext*, const proto::StatusRequest&, proto::StatusReply*),
    const AxisRequest& from, Deadline deadline)
{
    proto::StatusRequest request;
    proto::StatusReply reply;
    request.set_session(session());
    request.set_axis(from.axisNo);
    request.set_size(from.size);
    const grpc::Status status = send(method, request, &reply, deadline);
    if (!status.ok())
        return { resultOfStatus(status), {} };
    return { resultOfNumber(reply.result()), QByteArray::fromStdString(reply.data()) };
}

AxisReply GrpcLink::enterDebugMode(const AxisRequest& from, Deadline deadline)
{
    proto::EnterDebugModeRequest request;
    request.set_enter(from.value);
    request.set_timeout(from.timeout);
    return command(&Stub::EnterDebugMode, request, from, deadline);
}

AxisReply GrpcLink::axisOnly(const AxisRequest& from, Deadline deadline)
{
    const proto::AxisOnlyRequest request;
    if (from.code == AxisDebugKeepAlive)
        return command(&Stub::KeepAlive, request, from, deadline);
    return command(from.code == AxisDebugSetHome ? &Stub::SetHome : &Stub::Reset, request, from, deadline);
}

AxisReply GrpcLink::flag(const AxisRequest& from, Deadline deadline)
{
    proto::FlagRequest request;
    request.set_value(from.value);
    return command(from.code == AxisDebugSetEnable ? &Stub::SetEnable : &Stub::SetVelRatio, request, from, deadline);
}

AxisReply GrpcLink::place(const AxisRequest& from, Deadline deadline)
{
    proto::PositionRequest request;
    request.set_position(from.position);
    return command(
        from.code == AxisDebugSetPosition ? &Stub::SetPosition : &Stub::SetHomeOffset, request, from, deadline);
}

AxisReply GrpcLink::motion(const AxisRequest& from, Deadline deadline)
{
    proto::MotionRequest request;
    request.set_pressed(from.value);
    request.set_position(from.position);
    request.set_velocity(from.velocity);
    request.set_acceleration(from.acceleration);
    request.set_deceleration(from.deceleration);
    request.set_jerk(from.jerk);
    switch (from.code) {
    case AxisDebugSetStop:
        return command(&Stub::SetStop, request, from, deadline);
    case AxisDebugMoveAbs:
        return command(&Stub::MoveAbs, request, from, deadline);
    case AxisDebugMoveRel:
        return command(&Stub::MoveRel, request, from, deadline);
    case AxisDebugMoveVel:
        return command(&Stub::MoveVel, request, from, deadline);
    case AxisDebugJopPos:
        return command(&Stub::JopPos, request, from, deadline);
    default:
        return command(&Stub::JopNeg, request, from, deadline);
    }
}

AxisReply GrpcLink::request(const AxisRequest& request, Deadline deadline)
{
    switch (request.code) {
    case AxisDebugGetAxisRef:
        return status(&Stub::GetAxisRef, request, deadline);
    case AxisDebugGetAxesGroupRef:
        return status(&Stub::GetAxesGroupRef, request, deadline);
    case AxisDebugEnterDebugMode:
        return enterDebugMode(request, deadline);
    case AxisDebugKeepAlive:
    case AxisDebugSetHome:
    case AxisDebugReset:
        return axisOnly(request, deadline);
    case AxisDebugSetEnable:
    case AxisDebugSetVelRatio:
        return flag(request, deadline);
    case AxisDebugSetPosition:
    case AxisDebugSetHomeOffset:
        return place(request, deadline);
    case AxisDebugSetStop:
    case AxisDebugMoveAbs:
    case AxisDebugMoveRel:
    case AxisDebugMoveVel:
    case AxisDebugJopPos:
    case AxisDebugJopNeg:
        return motion(request, deadline);
    default:
        return { Diagnosis::refused, {} };
    }
}
