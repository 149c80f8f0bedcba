#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerCredentials.h"
#include "host/communication/ControllerTransport.h"
#include "host/communication/GrpcLink.h"
#include "host/communication/Mailbox.h"
#include "host/communication/TaskThread.h"
#include "protocol/DiagnosisCodes.h"

#include <QPointer>

#include <cstdint>
#include <mutex>

namespace proto = kestrun::protocol;

namespace {
using CredentialsPtr = std::shared_ptr<const ControllerConnection::Credentials>;
constexpr auto deadline = std::chrono::milliseconds(1000);

/// One call as it goes out.
struct Order {
    bool hold = true;
    std::uint64_t number = 0;
    std::uint64_t seen = 0;
    /// Logged in: whoever does not answer may be waited for.
    bool linked = true;
};

/// The channel of the emergency stop; used by its thread only, but for giveUpEarlier.
class StopChannel {
public:
    /// Begins to connect ahead of the need, so that the stop itself is one round trip.
    void prepare(const CredentialsPtr& credentials)
    {
        m_channel = credentials->transport->makeChannel();
        m_channel->GetState(true);
        m_session = credentials->session;
    }

    short send(const CredentialsPtr& credentials, const Order& order)
    {
        if (!m_channel || m_session != credentials->session)
            prepare(credentials);
        proto::StopAllRequest request;
        proto::Result reply;
        request.set_session(credentials->session);
        request.set_hold(order.hold);
        request.set_number(order.number);
        request.set_seen(order.seen);
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + deadline);
        context.set_wait_for_ready(order.linked);
        if (!begin(context, order.number))
            return order.hold ? Diagnosis::notConnected : Diagnosis::emergencyStop;
        const grpc::Status status = proto::AxisController::NewStub(m_channel)->StopAll(&context, request, &reply);
        end();
        return status.ok() ? resultOfNumber(reply.result()) : resultOfStatus(status);
    }

    /// Ends the wait for an answer and drops calls that wait, so that none holds up the stop of that number. Should the
    /// controller take a release behind the stop, it knows by the numbers which came last. From any thread.
    void giveUpEarlier(std::uint64_t stop)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = stop;
        if (m_call)
            m_call->TryCancel();
    }

private:
    /// False when a stop has been pressed since.
    bool begin(grpc::ClientContext& context, std::uint64_t number)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (number < m_stop)
            return false;
        m_call = &context;
        return true;
    }

    void end()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_call = nullptr;
    }

    std::shared_ptr<grpc::Channel> m_channel;
    std::string m_session;
    std::mutex m_mutex;
    /// Number of the latest stop.
    std::uint64_t m_stop = 0;
    grpc::ClientContext* m_call = nullptr;
};
} // namespace

struct StopLine::Private {
    void use(const CredentialsPtr& fresh);
    /// Null when there is nobody to send to.
    CredentialsPtr present() const;
    void send(StopLine* line, bool hold);

    QPointer<ControllerConnection> connection;
    QPointer<BackgroundTransactionService> service;
    /// Of the last login until the connection is closed, also while the session's own link is gone.
    CredentialsPtr credentials;
    Mailbox mailbox;
    StopChannel channel;
    /// Of the call that was made last.
    std::uint64_t number = 0;
    // The last member: its end waits for tasks that use the others.
    TaskThread tasks;
};

StopLine::StopLine(ControllerConnection* connection, BackgroundTransactionService* service, QObject* parent)
    : QObject(parent), d(std::make_shared<Private>())
{
    d->connection = connection;
    d->service = service;
    d->use(connection->credentials());
    connect(connection, &ControllerConnection::opened, this, [this] { d->use(d->connection->credentials()); });
    connect(connection, &ControllerConnection::closed, this, [this] { d->credentials.reset(); });
    connect(connection, &ControllerConnection::failed, this, [this] { d->credentials.reset(); });
}

StopLine::~StopLine() = default;

void StopLine::Private::use(const CredentialsPtr& fresh)
{
    credentials = fresh;
    if (fresh)
        tasks.post([this, fresh] { channel.prepare(fresh); });
}

CredentialsPtr StopLine::Private::present() const
{
    return connection && connection->state() != ControllerConnection::Closed ? credentials : nullptr;
}

void StopLine::Private::send(StopLine* line, bool hold)
{
    const bool linked = connection && connection->isOpen();
    const Order order{ hold, number, connection ? connection->stopRevision() : 0, linked };
    // Without a connection too, so that answers keep the order of the calls.
    tasks.post([this, line, order, to = present()] {
        const short result = to ? channel.send(to, order) : Diagnosis::notConnected;
        mailbox.post([line, hold = order.hold, result] { emit line->answered(hold, result); });
    });
}

void StopLine::stop()
{
    if (d->service)
        d->service->refuseQueued(Diagnosis::emergencyStop);
    ++d->number;
    if (d->present())
        d->channel.giveUpEarlier(d->number);
    d->send(this, true);
}

void StopLine::release()
{
    ++d->number;
    d->send(this, false);
}
