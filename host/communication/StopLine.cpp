#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerCredentials.h"
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

/// The channel of the emergency stop; used by its thread only, but for giveUpEarlier.
class StopChannel {
public:
    /// Connects ahead of the need, so that the stop itself is one round trip.
    void prepare(const CredentialsPtr& credentials)
    {
        QString ignored;
        m_channel = makeControllerChannel(credentials->address, &ignored);
        if (m_channel)
            m_channel->WaitForConnected(std::chrono::system_clock::now() + deadline);
        m_session = credentials->session;
    }

    short send(const CredentialsPtr& credentials, bool hold, std::uint64_t number, std::uint64_t seen)
    {
        if (!m_channel || m_session != credentials->session)
            prepare(credentials);
        if (!m_channel)
            return Diagnosis::notConnected;
        proto::StopAllRequest request;
        proto::Result reply;
        request.set_session(credentials->session);
        request.set_hold(hold);
        request.set_number(number);
        request.set_seen(seen);
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + deadline);
        context.set_wait_for_ready(true);
        if (!begin(context, number))
            return hold ? Diagnosis::notConnected : Diagnosis::emergencyStop;
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
    void send(StopLine* line, bool hold, std::uint64_t number);

    QPointer<ControllerConnection> connection;
    QPointer<BackgroundTransactionService> service;
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
    connect(connection, &ControllerConnection::opened, this, [this] {
        d->tasks.post([channel = &d->channel, credentials = d->connection->credentials()] {
            if (credentials)
                channel->prepare(credentials);
        });
    });
}

StopLine::~StopLine() = default;

void StopLine::Private::send(StopLine* line, bool hold, std::uint64_t number)
{
    const CredentialsPtr credentials = connection ? connection->credentials() : nullptr;
    const std::uint64_t seen = connection ? connection->stopRevision() : 0;
    // Without a connection too, so that answers keep the order of the calls.
    tasks.post([this, line, credentials, hold, number, seen] {
        const short result = credentials ? channel.send(credentials, hold, number, seen) : Diagnosis::notConnected;
        mailbox.post([line, hold, result] { emit line->answered(hold, result); });
    });
}

void StopLine::stop()
{
    if (d->service)
        d->service->refuseQueued(Diagnosis::emergencyStop);
    const std::uint64_t number = ++d->number;
    if (d->connection && d->connection->credentials())
        d->channel.giveUpEarlier(number);
    d->send(this, true, number);
}

void StopLine::release()
{
    d->send(this, false, ++d->number);
}
