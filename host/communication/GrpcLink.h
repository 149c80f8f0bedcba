#pragma once

#include "host/communication/ControllerAddress.h"
#include "host/communication/ControllerAxis.h"
#include "host/communication/ControllerLink.h"
#include "host/communication/ControllerTransport.h"
#include "protocol/controller.grpc.pb.h"

#include <grpcpp/grpcpp.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

/// The code of the diagnosis table for what the transport says.
short resultOfStatus(const grpc::Status& status);
/// The code as the calls give it; a number that no code has counts as a refusal.
short resultOfNumber(int number);

/// The link to a controller over its service. Any thread.
class GrpcLink : public ControllerLink {
public:
    struct LoginOutcome {
        short result = 0;
        QString reason;
        /// What answers there, for people.
        QString name;
    };

    /// The client's bytes tell the controller whose former session a login replaces; empty: nobody's.
    GrpcLink(std::shared_ptr<const ControllerTransport> transport, const ControllerAddress& address,
        std::string client = {});
    ~GrpcLink() override;

    /// Handshake and login. Waits for a controller that is still starting, until the deadline.
    LoginOutcome login(std::chrono::milliseconds deadline);
    /// What the controller tells all its clients by itself.
    struct News {
        bool stopHeld = false;
        quint64 axesRevision = 0;
        /// Counts the stops and releases.
        quint64 stopRevision = 0;
    };
    /// Blocks while the session is there; tells the news. Gives what ended it.
    QString attend(const std::function<void(News)>& tell);
    /// Ends the session at the controller. The only call that still goes out after retire().
    void logout(std::chrono::milliseconds deadline);

    AxisReply request(const AxisRequest& request, std::chrono::milliseconds deadline) override;
    void cancelInFlight() override;
    /// Ends the calls that are under way; from now on those that come, or have waited for others, end at once.
    void retire();
    /// Ends everything, the session's stream included; from now on every call ends at once.
    void shutDown();

    DownloadOutcome download(const QVector<ControllerAxis>& axes);
    /// The revision stays as it is when the axes cannot be read.
    short readAxes(QVector<ControllerAxis>* axes, quint64* revision);

    std::string session() const;
    const std::shared_ptr<const ControllerTransport>& transport() const { return m_transport; }

private:
    class Call;
    using Stub = kestrun::protocol::AxisController::Stub;
    using Deadline = std::chrono::milliseconds;

    template <typename Request, typename Reply>
    grpc::Status send(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*),
        const Request& request, Reply* reply, Deadline deadline, bool waitForReady = false);
    template <typename Request, typename Reply>
    grpc::Status sendLast(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, Reply*),
        const Request& request, Reply* reply, Deadline deadline);
    template <typename Request>
    AxisReply command(grpc::Status (Stub::*method)(grpc::ClientContext*, const Request&, kestrun::protocol::Result*),
        Request request, const AxisRequest& from, Deadline deadline);
    AxisReply status(grpc::Status (Stub::*method)(grpc::ClientContext*, const kestrun::protocol::StatusRequest&,
                         kestrun::protocol::StatusReply*),
        const AxisRequest& from, Deadline deadline);
    AxisReply enterDebugMode(const AxisRequest& from, Deadline deadline);
    AxisReply axisOnly(const AxisRequest& from, Deadline deadline);
    AxisReply flag(const AxisRequest& from, Deadline deadline);
    AxisReply place(const AxisRequest& from, Deadline deadline);
    AxisReply motion(const AxisRequest& from, Deadline deadline);
    grpc::Status handshake(kestrun::protocol::HandshakeReply* reply, Deadline deadline, std::string* detail);
    LoginOutcome sendLogin(Deadline deadline);

    std::shared_ptr<const ControllerTransport> m_transport;
    ControllerAddress m_address;
    std::string m_client;
    std::unique_ptr<Stub> m_stub;
    std::atomic<bool> m_up{ true };
    std::atomic<bool> m_retired{ false };
    mutable std::mutex m_mutex;
    std::string m_session;
    std::set<grpc::ClientContext*> m_calls;
    std::unique_ptr<grpc::ClientContext> m_attendance;
};
