#include "host/communication/ControllerConnection.h"

#include "host/communication/ConnectionTexts.h"
#include "host/communication/ControllerCredentials.h"
#include "host/communication/ControllerSession.h"
#include "host/communication/GrpcLink.h"
#include "host/communication/Mailbox.h"
#include "host/communication/TaskThread.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <optional>

namespace {
std::string randomClient()
{
    std::array<quint32, protocolSessionLength / sizeof(quint32)> numbers{};
    QRandomGenerator::system()->fillRange(numbers.data(), numbers.size());
    return std::string(reinterpret_cast<const char*>(numbers.data()), sizeof numbers);
}

/// All links of a connection share a transport, which is made when the first is needed, on the session's thread.
ControllerSession::MakeLink linkMaker(const ControllerAddress& address, const std::string& client)
{
    return [address, client, transport = std::shared_ptr<const ControllerTransport>()](QString* error) mutable {
        if (!transport)
            transport = ControllerTransport::make(address, error);
        return transport ? std::make_shared<GrpcLink>(transport, address, client) : nullptr;
    };
}
} // namespace

struct ControllerConnection::Private {
    explicit Private(ControllerConnection* connection) : q(connection) { }

    void begin(const ControllerAddress& newAddress);
    void retire(bool tell);
    void post(int generation, std::function<void()> work);
    void opened(const std::shared_ptr<GrpcLink>& link, const QString& name);
    void failed(short code, const QString& reason);
    void lost(const QString& reason);
    void hear(const GrpcLink::News& news);
    void tellStop(bool held, quint64 revision);
    void seeAxes(quint64 revision);
    void compareRevisions();

    ControllerConnection* q;
    Mailbox mailbox;
    State state = Closed;
    ControllerAddress address;
    /// What tells the controller there that a login comes from this connection again.
    std::string client;
    QString name;
    std::shared_ptr<const Credentials> credentials;
    std::shared_ptr<ControllerSession> session;
    bool stopHeld = false;
    /// Nothing until the session has told it.
    std::optional<quint64> stopRevision;
    /// Of the controller's axes: what it has told, and what has been seen of them; 0 for nothing yet.
    quint64 toldRevision = 0;
    quint64 seenRevision = 0;
    /// Requests under way that will tell more.
    int axesRequests = 0;
    /// Number of the present session: what an earlier one still has to tell concerns nobody.
    int generation = 0;
    // The last member: its end waits for tasks that use the others.
    TaskThread tasks;
};

ControllerConnection::ControllerConnection(QObject* parent) : QObject(parent), d(std::make_shared<Private>(this))
{
    qRegisterMetaType<QVector<ControllerAxis>>();
    qRegisterMetaType<DownloadOutcome>();
}

ControllerConnection::~ControllerConnection()
{
    d->retire(false);
}

ControllerConnection::State ControllerConnection::state() const
{
    return d->state;
}

ControllerAddress ControllerConnection::address() const
{
    return d->address;
}

QString ControllerConnection::controllerName() const
{
    return d->name;
}

int ControllerConnection::version() const
{
    return static_cast<int>(protocolVersion);
}

std::shared_ptr<const ControllerConnection::Credentials> ControllerConnection::credentials() const
{
    return d->credentials;
}

void ControllerConnection::Private::post(int number, std::function<void()> work)
{
    mailbox.post([this, number, work = std::move(work)] {
        if (number == generation)
            work();
    });
}

void ControllerConnection::Private::begin(const ControllerAddress& newAddress)
{
    const int number = ++generation;
    // A secret between this connection and one controller: whoever knows it can end the session there.
    if (client.empty() || newAddress.text() != address.text())
        client = randomClient();
    address = newAddress;
    state = Connecting;
    stopHeld = false;
    stopRevision.reset();
    axesRequests = 0;
    ControllerSession::Events events;
    events.opened = [this, number](const std::shared_ptr<GrpcLink>& link, const QString& who) {
        post(number, [this, link, who] { opened(link, who); });
    };
    events.failed = [this, number](short code, const QString& reason) {
        post(number, [this, code, reason] { failed(code, reason); });
    };
    events.lost = [this, number](const QString& reason) { post(number, [this, reason] { lost(reason); }); };
    events.news = [this, number](const GrpcLink::News& news) { post(number, [this, news] { hear(news); }); };
    session = std::make_shared<ControllerSession>(linkMaker(address, client), std::move(events));
}

// The farewell may take a while when nobody answers any more, so it is said in the background. Requests that wait
// there in front of it are refused by the retired link, since axes may be moving until the farewell has been heard.
void ControllerConnection::Private::retire(bool tell)
{
    const int number = ++generation;
    credentials.reset();
    const std::shared_ptr<ControllerSession> old = std::move(session);
    session.reset();
    const bool wasClosed = state == Closed;
    state = Closed;
    if (old) {
        old->retire();
        tasks.post([old] { old->end(); });
    }
    if (tell && !wasClosed)
        post(number, [this] { emit q->closed(); });
}

void ControllerConnection::Private::opened(const std::shared_ptr<GrpcLink>& link, const QString& who)
{
    name = who;
    auto fresh = std::make_shared<Credentials>();
    fresh->transport = link->transport();
    fresh->session = link->session();
    credentials = fresh;
    state = Open;
    // It may be another controller, which counts anew.
    toldRevision = seenRevision = 0;
    emit q->opened();
}

void ControllerConnection::Private::failed(short code, const QString& reason)
{
    retire(false);
    emit q->failed(code, reason);
}

void ControllerConnection::Private::lost(const QString& reason)
{
    credentials.reset();
    state = Connecting;
    // Whether STOP still holds is told anew with the next session.
    stopHeld = false;
    stopRevision.reset();
    emit q->lost(reason.isEmpty() ? ConnectionTexts::tr("The controller has ended the connection.") : reason);
}

void ControllerConnection::Private::hear(const GrpcLink::News& news)
{
    tellStop(news.stopHeld, news.stopRevision);
    toldRevision = news.axesRevision;
    compareRevisions();
}

void ControllerConnection::Private::seeAxes(quint64 revision)
{
    --axesRequests;
    seenRevision = std::max(seenRevision, revision);
    // Behind the news of this answer, on which the other rests.
    post(generation, [this] { compareRevisions(); });
}

// The answer to a download of this client and the news of it come on different ways, in either order.
void ControllerConnection::Private::compareRevisions()
{
    if (seenRevision == 0 || axesRequests > 0 || toldRevision <= seenRevision)
        return;
    seenRevision = toldRevision;
    emit q->axesReplaced();
}

void ControllerConnection::Private::tellStop(bool held, quint64 revision)
{
    const bool isNew = held != stopHeld || stopRevision != revision;
    stopHeld = held;
    stopRevision = revision;
    if (isNew)
        emit q->stopHeldTold(held);
}

void ControllerConnection::open(const ControllerAddress& address)
{
    d->retire(false);
    const QString objection = address.objection();
    if (objection.isEmpty()) {
        d->begin(address);
        return;
    }
    d->address = address;
    d->post(d->generation, [this, objection] { emit failed(Diagnosis::notConnected, objection); });
}

void ControllerConnection::close()
{
    d->retire(true);
}

quint64 ControllerConnection::stopRevision() const
{
    return d->stopRevision.value_or(0);
}

void ControllerConnection::readAxes()
{
    const int number = d->generation;
    const std::shared_ptr<GrpcLink> link = isOpen() ? d->session->currentLink() : nullptr;
    ++d->axesRequests;
    d->tasks.post([this, number, link] {
        QVector<ControllerAxis> axes;
        quint64 revision = 0;
        const short result = link ? link->readAxes(&axes, &revision) : Diagnosis::notConnected;
        d->post(number, [this, result, axes, revision] {
            d->seeAxes(revision);
            emit axesRead(result, axes);
        });
    });
}

void ControllerConnection::downloadAxes(const QVector<ControllerAxis>& axes)
{
    const int number = d->generation;
    const std::shared_ptr<GrpcLink> link = isOpen() ? d->session->currentLink() : nullptr;
    ++d->axesRequests;
    d->tasks.post([this, number, link, axes] {
        const DownloadOutcome outcome
            = link ? link->download(axes) : DownloadOutcome{ Diagnosis::notConnected, {}, {}, {} };
        d->post(number, [this, outcome] {
            d->seeAxes(outcome.revision);
            emit axesDownloaded(outcome);
        });
    });
}
