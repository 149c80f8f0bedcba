#include "bench/Measure.h"
#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "online/MotionControlOnlineTransaction.h"
#include "protocol/controller.grpc.pb.h"
#include "sdk/AxisDebugParams.h"
#include "tests/communication/ControllerHost.h"
#include "tests/support/TestHost.h"

#include <grpcpp/grpcpp.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

// What a status request costs from the hand-over to the background service until the page's slot runs, beside the same
// call, the same two changes of thread and the same connections made by hand, and beside a bare exchange over TCP.
namespace {
constexpr int warmUp = 300;
constexpr int rounds = 4000;
constexpr double bound = 1.3;

/// A receiver with the page's fifteen slots.
class Page : public QObject {
    Q_OBJECT

public slots:
    void axisDebugGetAxisRef(QByteArray data)
    {
        bytes = data.size();
        ++replies;
    }
    void axisDebugEnterDebugMode(qint16) { }
    void axisDebugKeepAlive(qint16) { }
    void axisDebugSetEnable(qint16) { }
    void axisDebugSetPosition(qint16) { }
    void axisDebugSetHomeOffset(qint16) { }
    void axisDebugSetVelRatio(qint16) { }
    void axisDebugSetHome(qint16) { }
    void axisDebugSetStop(qint16) { }
    void axisDebugMoveAbs(qint16) { }
    void axisDebugMoveRel(qint16) { }
    void axisDebugMoveVel(qint16) { }
    void axisDebugJopPos(qint16) { }
    void axisDebugJopNeg(qint16) { }
    void axisDebugReset(qint16) { }

public:
    int bytes = 0;
    int replies = 0;
};

/// The signals that a transaction has, without the transaction.
class Bare : public QObject {
    Q_OBJECT

public:
    void answer(const QByteArray& data) { emit axisDebugGetAxisRef(data); }

signals:
    void axisDebugGetAxisRef(QByteArray);
    void axisDebugEnterDebugMode(qint16);
    void axisDebugKeepAlive(qint16);
    void axisDebugSetEnable(qint16);
    void axisDebugSetPosition(qint16);
    void axisDebugSetHomeOffset(qint16);
    void axisDebugSetVelRatio(qint16);
    void axisDebugSetHome(qint16);
    void axisDebugSetStop(qint16);
    void axisDebugMoveAbs(qint16);
    void axisDebugMoveRel(qint16);
    void axisDebugMoveVel(qint16);
    void axisDebugJopPos(qint16);
    void axisDebugJopNeg(qint16);
    void axisDebugReset(qint16);
};

void connectAll(QObject* from, QObject* to)
{
    static const char* const names[] = { "axisDebugGetAxisRef(QByteArray)", "axisDebugEnterDebugMode(qint16)",
        "axisDebugKeepAlive(qint16)", "axisDebugSetEnable(qint16)", "axisDebugSetPosition(qint16)",
        "axisDebugSetHomeOffset(qint16)", "axisDebugSetVelRatio(qint16)", "axisDebugSetHome(qint16)",
        "axisDebugSetStop(qint16)", "axisDebugMoveAbs(qint16)", "axisDebugMoveRel(qint16)", "axisDebugMoveVel(qint16)",
        "axisDebugJopPos(qint16)", "axisDebugJopNeg(qint16)", "axisDebugReset(qint16)" };
    for (const char* name : names) {
        const QByteArray signal = QByteArray("2") + name;
        const QByteArray slot = QByteArray("1") + name;
        QObject::connect(from, signal.constData(), to, slot.constData(),
            Qt::ConnectionType(Qt::AutoConnection | Qt::UniqueConnection));
    }
}

/// A thread that makes the call, with nothing around it.
class BareWorker {
public:
    BareWorker(std::shared_ptr<grpc::Channel> channel, std::string session)
        : m_stub(kestrun::protocol::AxisController::NewStub(std::move(channel))), m_session(std::move(session)),
          m_thread([this] { run(); })
    {
    }

    ~BareWorker()
    {
        submit(nullptr);
        m_thread.join();
    }

    void submit(Bare* bare)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_queue.push_back(bare);
        }
        m_wake.notify_one();
    }

private:
    void run()
    {
        while (Bare* bare = take()) {
            kestrun::protocol::StatusRequest request;
            kestrun::protocol::StatusReply reply;
            request.set_session(m_session);
            request.set_size(axisRefSize);
            grpc::ClientContext context;
            context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(1));
            m_stub->GetAxisRef(&context, request, &reply);
            bare->answer(QByteArray::fromStdString(reply.data()));
            bare->deleteLater();
        }
    }

    Bare* take()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_wake.wait(lock, [this] { return !m_queue.empty(); });
        Bare* bare = m_queue.front();
        m_queue.pop_front();
        return bare;
    }

    std::unique_ptr<kestrun::protocol::AxisController::Stub> m_stub;
    std::string m_session;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Bare*> m_queue;
    std::thread m_thread;
};

void waitForReply(const Page& page, int before)
{
    while (page.replies == before)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

QVariant statusParam(short axisNo)
{
    GetAxisRefParam param;
    param.axisNo = axisNo;
    param.size = axisRefSize;
    return QVariant::fromValue(param);
}

/// One request and reply of the same sizes over plain sockets.
class TcpPair {
public:
    TcpPair()
    {
        const int listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        bind(listener, reinterpret_cast<sockaddr*>(&address), length);
        listen(listener, 1);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
        m_client = socket(AF_INET, SOCK_STREAM, 0);
        connect(m_client, reinterpret_cast<sockaddr*>(&address), length);
        m_server = accept(listener, nullptr, nullptr);
        close(listener);
        const int on = 1;
        setsockopt(m_client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        setsockopt(m_server, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        m_thread = std::thread([this] { serve(); });
    }

    ~TcpPair()
    {
        shutdown(m_client, SHUT_RDWR);
        m_thread.join();
        close(m_client);
        close(m_server);
    }

    void exchange() const
    {
        char bytes[axisRefSize] = {};
        if (write(m_client, bytes, 24) == 24)
            recv(m_client, bytes, sizeof bytes, MSG_WAITALL);
    }

private:
    void serve() const
    {
        char bytes[axisRefSize] = {};
        while (recv(m_server, bytes, 24, MSG_WAITALL) == 24) {
            if (write(m_server, bytes, sizeof bytes) != sizeof bytes)
                return;
        }
    }

    int m_client = -1;
    int m_server = -1;
    std::thread m_thread;
};

bool openConnection(ControllerConnection& connection, const ControllerAddress& address)
{
    QEventLoop loop;
    QObject::connect(&connection, &ControllerConnection::opened, &loop, [&loop] { loop.exit(0); });
    QObject::connect(&connection, &ControllerConnection::failed, &loop, [&loop] { loop.exit(1); });
    connection.open(address);
    return loop.exec() == 0;
}

/// Sixteen pages that ask every 10 ms for a minute, each when its last reply is there; gives the replies that never
/// came.
int pollSixteenAxes(BackgroundTransactionService& service, int seconds)
{
    constexpr int axes = 16;
    std::vector<std::unique_ptr<Page>> pages;
    std::vector<int> asked(axes, 0);
    for (int i = 0; i < axes; ++i)
        pages.push_back(std::make_unique<Page>());
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (int i = 0; i < axes; ++i) {
            if (pages[i]->replies != asked[i])
                continue;
            ++asked[i];
            service.submitTransaction(
                new MotionControlOnlineTransaction(0, statusParam(static_cast<short>(i)), pages[i].get()), true);
        }
    });
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    timer.start(10);
    loop.exec();
    timer.stop();
    QTimer::singleShot(1500, &loop, &QEventLoop::quit);
    loop.exec();
    int requests = 0;
    int lost = 0;
    for (int i = 0; i < axes; ++i) {
        requests += asked[i];
        lost += asked[i] - pages[i]->replies;
        lost += pages[i]->bytes == axisRefSize ? 0 : 1;
    }
    // An axis is not asked again before its reply, so a slow service would show as few requests.
    const int whole = axes * 100 * seconds;
    std::printf("%d axes asked every 10 ms for %d s: %d requests of %d, %d without a reply\n", axes, seconds, requests,
        whole, lost);
    return requests < whole * 9 / 10 ? whole - requests : lost;
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    TestHost host;
    ControllerHost controller;
    controller.addAxes(16);
    ControllerConnection connection;
    if (!openConnection(connection, controller.address())) {
        std::puts("the controller cannot be reached");
        return 1;
    }
    bool fine = true;
    {
        BackgroundTransactionService service;
        // The bare way has a session and a channel like the other one.
        kestrun::protocol::LoginRequest login;
        kestrun::protocol::LoginReply reply;
        const std::shared_ptr<grpc::Channel> channel
            = grpc::CreateChannel(controller.address().text().toStdString(), grpc::InsecureChannelCredentials());
        grpc::ClientContext context;
        login.set_version(1);
        login.set_token("right");
        kestrun::protocol::AxisController::NewStub(channel)->Login(&context, login, &reply);
        BareWorker worker(channel, reply.session());
        Page page;
        const auto bare = [&] {
            const int before = page.replies;
            auto* request = new Bare;
            connectAll(request, &page);
            worker.submit(request);
            waitForReply(page, before);
        };
        const auto whole = [&] {
            const int before = page.replies;
            service.submitTransaction(new MotionControlOnlineTransaction(0, statusParam(0), &page), true);
            waitForReply(page, before);
        };
        const TcpPair tcp;
        for (int i = 0; i < warmUp; ++i) {
            bare();
            whole();
            tcp.exchange();
        }
        const Measure::Pair pair = Measure::inTurns(
            rounds, [&] { return Measure::once(bare); }, [&] { return Measure::once(whole); });
        fine = Measure::report("status request, submit to slot", pair, bound) && fine;
        const Measure::Pair wire = Measure::inTurns(
            rounds, [&] { return Measure::once([&] { tcp.exchange(); }); },
            [&] { return Measure::once([&] { RpcCmdSend().rpc_AxisDebug_GetAxisRef(0, axisRefSize); }); });
        std::printf("the call alone %.1f us, a bare exchange over TCP %.1f us, ratio %.2f\n", wire.measured, wire.floor,
            wire.ratio());
        fine = page.bytes == axisRefSize && fine;
        fine = pollSixteenAxes(service, seconds) == 0 && fine;
    }
    connection.close();
    return fine ? 0 : 1;
}

#include "StatusRequestBench.moc"
