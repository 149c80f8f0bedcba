#include "host/communication/StopLine.h"

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerCredentials.h"
#include "host/communication/GrpcLink.h"
#include "host/communication/Mailbox.h"
#include "host/communication/TaskThread.h"
#include "protocol/DiagnosisCodes.h"

#include <QPointer>

#include <mutex>

namespace proto = kestrun::protocol;

namespace {
using CredentialsPtr = std::shared_ptr<const ControllerConnection::Credentials>;
constexpr auto deadline = std::chrono::milliseconds(1000);

/// The channel of the emergency stop; used by its thread only, but for giveUpRelease.
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

    short send(const CredentialsPtr& credentials, bool hold)
    {
        if (!m_channel || m_session != credentials->session)
            prepare(credentials);
        if (!m_channel)
            return Diagnosis::notConnected;
        proto::StopAllRequest request;
        proto::Result reply;
        request.set_session(credentials->session);
        request.set_hold(hold);
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + deadline);
        context.set_wait_for_ready(true);
        noteRelease(hold ? nullptr : &context);
        const grpc::Status status = proto::AxisController::NewStub(m_channel)->StopAll(&context, request, &reply);
        noteRelease(nullptr);
        return status.ok() ? resultOfNumber(reply.result()) : resultOfStatus(status);
    }

    /// Ends the wait for the answer to a release, so that it holds up no stop. Both go over one connection, so the stop
    /// arrives behind the release all the same. From any thread.
    void giveUpRelease()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_release)
            m_release->TryCancel();
    }

private:
    void noteRelease(grpc::ClientContext* context)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_release = context;
    }

    std::shared_ptr<grpc::Channel> m_channel;
    std::string m_session;
    std::mutex m_mutex;
    grpc::ClientContext* m_release = nullptr;
};
} // namespace

struct StopLine::Private {
    void send(StopLine* line, bool hold);

    QPointer<ControllerConnection> connection;
    QPointer<BackgroundTransactionService> service;
    Mailbox mailbox;
    StopChannel channel;
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

void StopLine::Private::send(StopLine* line, bool hold)
{
    const CredentialsPtr credentials = connection ? connection->credentials() : nullptr;
    if (!credentials) {
        mailbox.post([line, hold] { emit line->answered(hold, Diagnosis::notConnected); });
        return;
    }
    tasks.post([this, line, credentials, hold] {
        const short result = channel.send(credentials, hold);
        mailbox.post([line, hold, result] { emit line->answered(hold, result); });
    });
}

void StopLine::stop()
{
    if (d->service)
        d->service->refuseQueued(Diagnosis::emergencyStop);
    d->channel.giveUpRelease();
    d->send(this, true);
}

void StopLine::release()
{
    d->send(this, false);
}
