#include "host/communication/ControllerConnection.h"

#include "host/communication/ControllerCredentials.h"
#include "host/communication/GrpcLink.h"
#include "host/communication/Mailbox.h"
#include "host/communication/TaskThread.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {
constexpr auto firstLogin = std::chrono::milliseconds(3000);
constexpr auto laterLogin = std::chrono::milliseconds(1000);
constexpr auto logoutTime = std::chrono::milliseconds(300);
constexpr auto retryPause = std::chrono::milliseconds(100);

QString say(const char* text)
{
    return QCoreApplication::translate("ControllerConnection", text);
}

std::string randomClient()
{
    std::array<quint32, protocolSessionLength / sizeof(quint32)> numbers{};
    QRandomGenerator::system()->fillRange(numbers.data(), numbers.size());
    return std::string(reinterpret_cast<const char*>(numbers.data()), sizeof numbers);
}

/// What a session tells, on its own thread.
struct SessionEvents {
    std::function<void(const std::shared_ptr<GrpcLink>&, QString)> opened;
    std::function<void(short, QString)> failed;
    std::function<void(QString)> lost;
    std::function<void(GrpcLink::News)> news;
};

/// Logs in, stays while the session is there, and logs in again after a loss, until it is told to end.
class Session {
public:
    Session(const ControllerAddress& address, std::string client, SessionEvents events)
        : m_address(address), m_client(std::move(client)), m_events(std::move(events)), m_thread([this] { run(); })
    {
    }

    ~Session()
    {
        cut();
        m_thread.join();
    }

    /// Asks the controller to end the session, then ends it here. Blocks for a short time.
    void end()
    {
        m_ending = true;
        if (const std::shared_ptr<GrpcLink> link = currentLink())
            link->logout(logoutTime);
        cut();
    }

    /// Ends everything that is under way without asking anybody.
    void cut()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_ending = true;
        }
        m_wake.notify_all();
        if (const std::shared_ptr<GrpcLink> link = currentLink())
            link->shutDown();
    }

    /// From now on the link is not to be used for anything but the farewell.
    void retire()
    {
        m_ending = true;
        const std::shared_ptr<GrpcLink> link = currentLink();
        if (!link)
            return;
        if (ControllerLink::active() == link)
            ControllerLink::setActive(nullptr);
        link->cancelInFlight();
    }

    std::shared_ptr<GrpcLink> currentLink() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_link;
    }

private:
    void run()
    {
        QString error;
        const std::shared_ptr<grpc::Channel> channel = makeControllerChannel(m_address, &error);
        if (!channel) {
            m_events.failed(Diagnosis::notConnected, error);
            return;
        }
        bool first = true;
        while (!m_ending && logInAndStay(channel, first))
            first = false;
    }

    /// False when there is no point in trying again.
    bool logInAndStay(const std::shared_ptr<grpc::Channel>& channel, bool first)
    {
        const auto link = std::make_shared<GrpcLink>(channel, m_address, m_client);
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_link = link;
        }
        const GrpcLink::LoginOutcome outcome = link->login(first ? firstLogin : laterLogin);
        if (m_ending)
            return false;
        if (outcome.result != Diagnosis::ok) {
            const bool unreachable = outcome.result == Diagnosis::notConnected || outcome.result == Diagnosis::noAnswer;
            if (first || !unreachable) {
                m_events.failed(outcome.result, outcome.reason);
                return false;
            }
            pause();
            return true;
        }
        stay(link, outcome.name);
        return true;
    }

    void stay(const std::shared_ptr<GrpcLink>& link, const QString& name)
    {
        ControllerLink::setActive(link);
        m_events.opened(link, name);
        const QString reason = link->attend(m_events.news);
        link->shutDown();
        if (ControllerLink::active() == link)
            ControllerLink::setActive(nullptr);
        if (!m_ending)
            m_events.lost(reason);
        // A controller that lets everybody in and nobody stay must not be asked without a rest.
        pause();
    }

    void pause()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_wake.wait_for(lock, retryPause, [this] { return m_ending.load(); });
    }

    ControllerAddress m_address;
    std::string m_client;
    SessionEvents m_events;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::atomic<bool> m_ending{ false };
    std::shared_ptr<GrpcLink> m_link;
    std::thread m_thread;
};
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
    void tellStopHeld(bool held);
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
    std::shared_ptr<Session> session;
    bool stopHeld = false;
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
    axesRequests = 0;
    SessionEvents events;
    events.opened = [this, number](const std::shared_ptr<GrpcLink>& link, const QString& who) {
        post(number, [this, link, who] { opened(link, who); });
    };
    events.failed = [this, number](short code, const QString& reason) {
        post(number, [this, code, reason] { failed(code, reason); });
    };
    events.lost = [this, number](const QString& reason) { post(number, [this, reason] { lost(reason); }); };
    events.news = [this, number](const GrpcLink::News& news) { post(number, [this, news] { hear(news); }); };
    session = std::make_shared<Session>(address, client, std::move(events));
}

// The farewell may take a while when nobody answers any more, so it is said in the background.
void ControllerConnection::Private::retire(bool tell)
{
    const int number = ++generation;
    credentials.reset();
    const std::shared_ptr<Session> old = std::move(session);
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
    fresh->address = address;
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
    emit q->lost(reason.isEmpty() ? say("The controller has ended the connection.") : reason);
}

void ControllerConnection::Private::hear(const GrpcLink::News& news)
{
    tellStopHeld(news.stopHeld);
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

void ControllerConnection::Private::tellStopHeld(bool held)
{
    if (held == stopHeld)
        return;
    stopHeld = held;
    emit q->stopHeldChanged(held);
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
