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

struct Answer {
    short result = 0;
    /// What the call has become among the controller's stops and releases; 0 when that is not known.
    std::uint64_t revision = 0;
};

/// The channel of the emergency stop; used by its thread only, but for what gives calls up.
class StopChannel {
public:
    /// Begins to connect ahead of the need, so that the stop itself is one round trip.
    void prepare(const CredentialsPtr& credentials)
    {
        m_channel = credentials->transport->makeChannel();
        m_channel->GetState(true);
        m_session = credentials->session;
    }

    Answer send(const CredentialsPtr& credentials, const Order& order)
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
        if (const short code = begin(context, order))
            return { code, 0 };
        const grpc::Status status = proto::AxisController::NewStub(m_channel)->StopAll(&context, request, &reply);
        end();
        return status.ok() ? Answer{ resultOfNumber(reply.result()), reply.stop_revision() }
                           : Answer{ resultOfStatus(status), 0 };
    }

    /// Ends the wait for an answer and drops calls that wait, so that none holds up the stop of that number. Should the
    /// controller take a release behind the stop, it knows by the numbers which came last. From any thread.
    void giveUpEarlier(std::uint64_t stop)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = m_release = stop;
        if (m_call)
            m_call->TryCancel();
    }

    /// Drops releases that wait; one that is under way goes on.
    void dropReleases(std::uint64_t until)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_release = until;
    }

    /// The same as giveUpEarlier for releases alone: nobody wants them any more.
    void giveUpReleases(std::uint64_t until)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_release = until;
        if (m_call && !m_callHolds)
            m_call->TryCancel();
    }

private:
    /// Not ok when the call has been given up.
    short begin(grpc::ClientContext& context, const Order& order)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (order.number < (order.hold ? m_stop : m_release))
            return !order.hold && order.number < m_stop ? Diagnosis::emergencyStop : Diagnosis::notConnected;
        m_call = &context;
        m_callHolds = order.hold;
        return Diagnosis::ok;
    }

    void end()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_call = nullptr;
    }

    std::shared_ptr<grpc::Channel> m_channel;
    std::string m_session;
    std::mutex m_mutex;
    /// Stops and releases of smaller numbers have been given up.
    std::uint64_t m_stop = 0;
    std::uint64_t m_release = 0;
    grpc::ClientContext* m_call = nullptr;
    bool m_callHolds = false;
};
} // namespace

struct StopLine::Private {
    void use(const CredentialsPtr& fresh);
    void end();
    /// Null when there is nobody to send to.
    CredentialsPtr present() const;
    void send(StopLine* line, bool hold);

    QPointer<ControllerConnection> connection;
    QPointer<BackgroundTransactionService> service;
    /// Of the last login until the connection is closed: while the session's own link is gone there are no others.
    CredentialsPtr credentials;
    /// Where they count.
    QString address;
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
    connect(connection, &ControllerConnection::closed, this, [this] { d->end(); });
    connect(connection, &ControllerConnection::failed, this, [this] { d->end(); });
}

StopLine::~StopLine()
{
    d->end();
}

void StopLine::Private::use(const CredentialsPtr& fresh)
{
    credentials = fresh;
    address = connection->address().text();
    if (fresh)
        tasks.post([this, fresh] { channel.prepare(fresh); });
}

// A stop that is under way still goes out; what would allow motion again has lost its sense.
void StopLine::Private::end()
{
    credentials.reset();
    channel.giveUpReleases(number + 1);
}

CredentialsPtr StopLine::Private::present() const
{
    if (CredentialsPtr open = connection ? connection->credentials() : nullptr)
        return open;
    const bool wanted = connection && connection->state() != ControllerConnection::Closed;
    return wanted && connection->address().text() == address ? credentials : nullptr;
}

void StopLine::Private::send(StopLine* line, bool hold)
{
    const bool linked = connection && connection->isOpen();
    const Order order{ hold, number, connection ? connection->stopRevision() : 0, linked };
    // Without a connection too, so that answers keep the order of the calls.
    tasks.post([this, line, order, to = present()] {
        const Answer answer = to ? channel.send(to, order) : Answer{ Diagnosis::notConnected, 0 };
        mailbox.post([line, hold = order.hold, answer] { emit line->answered(hold, answer.result, answer.revision); });
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
    // One that still waits in front of it would only hold it up.
    d->channel.dropReleases(++d->number);
    d->send(this, false);
}
