#include "controller/ControllerService.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"

#include <QProcess>
#include <QtTest>

#include <grpcpp/grpcpp.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <set>

namespace proto = kestrun::protocol;

namespace {
enum Error {
    AnyTimeout,
    SharedDebugMode,
    SharedAxes,
    SharedDownloads,
    DownloadsWhileEnabled,
    FormerAxesRunOn,
    RefusedLoginsEnd,
    ShortBytesTell,
    OlderReleasesTaken,
    BlindReleasesTaken
};

/// The reference, but for one rule.
class ErringService : public ControllerService {
public:
    ErringService(int error, MotionController* controller, Faults* faults)
        : ControllerService(controller, faults, "secret"), m_error(error)
    {
    }

    Status Login(Context* context, const proto::LoginRequest* request, proto::LoginReply* reply) override
    {
        proto::LoginRequest changed = *request;
        if (m_error == ShortBytesTell && !changed.client().empty())
            changed.mutable_client()->resize(protocolSessionLength, 'x');
        if (m_error == RefusedLoginsEnd && changed.version() != protocolVersion) {
            proto::LoginReply ignored;
            changed.set_version(protocolVersion);
            ControllerService::Login(context, &changed, &ignored);
            changed.set_version(request->version());
        }
        if (m_error == FormerAxesRunOn)
            changed.clear_client();
        const Status status = ControllerService::Login(context, &changed, reply);
        if (m_error == FormerAxesRunOn && !request->client().empty())
            replaceFormer(request->client(), reply->session());
        return status;
    }

    Status ReadCurves(Context* context, const proto::CurvesRequest* request, proto::CurvesReply* reply) override
    {
        const Status status = ControllerService::ReadCurves(context, request, reply);
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_former.count(request->session()) != 0)
            reply->set_result(Diagnosis::refused);
        return status;
    }

    Status EnterDebugMode(Context* context, const proto::EnterDebugModeRequest* request, proto::Result* reply) override
    {
        proto::EnterDebugModeRequest changed = *request;
        if (m_error == AnyTimeout)
            changed.set_timeout(std::clamp(request->timeout(), 1, 32767));
        if (m_error == SharedDebugMode && changed.enter() == 1)
            changed.set_session(owner(request->session()));
        const Status status = ControllerService::EnterDebugMode(context, &changed, reply);
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (reply->result() == Diagnosis::ok)
            m_owner = changed.enter() == 1 ? changed.session() : std::string();
        return status;
    }

    Status MoveVel(Context* context, const proto::MotionRequest* request, proto::Result* reply) override
    {
        proto::MotionRequest changed = *request;
        if (m_error == SharedAxes)
            changed.set_session(owner(request->session()));
        return ControllerService::MoveVel(context, &changed, reply);
    }

    Status StopAll(Context* context, const proto::StopAllRequest* request, proto::Result* reply) override
    {
        proto::StopAllRequest changed = *request;
        if (m_error == OlderReleasesTaken)
            changed.clear_number();
        if (m_error == BlindReleasesTaken)
            changed.clear_seen();
        return ControllerService::StopAll(context, &changed, reply);
    }

    Status DownloadAxes(Context* context, const proto::DownloadRequest* request, proto::DownloadReply* reply) override
    {
        proto::DownloadRequest changed = *request;
        if (m_error == SharedDownloads)
            changed.set_session(owner(request->session()));
        const Status status = ControllerService::DownloadAxes(context, &changed, reply);
        if (m_error == DownloadsWhileEnabled && reply->result() == Diagnosis::axisEnabled)
            reply->set_result(Diagnosis::ok);
        return status;
    }

private:
    void replaceFormer(const std::string& client, const std::string& session)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::string& present = m_sessions[client];
        m_former.insert(present);
        present = session;
    }

    /// Whose axis it is, or else who asks.
    std::string owner(const std::string& session)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_owner.empty() ? session : m_owner;
    }

    int m_error;
    std::mutex m_mutex;
    std::string m_owner;
    std::map<std::string, std::string> m_sessions;
    std::set<std::string> m_former;
};

/// It on a free port of loopback.
class ErringController {
public:
    explicit ErringController(int error) : m_service(error, &m_controller, &m_faults)
    {
        m_controller.start();
        grpc::ServerBuilder builder;
        builder.AddListeningPort("127.0.0.1:0", grpc::InsecureServerCredentials(), &m_port);
        builder.RegisterService(&m_service);
        m_server = builder.BuildAndStart();
    }
    ~ErringController()
    {
        m_service.endStreams();
        m_server->Shutdown();
        m_controller.shutdown();
    }
    ErringController(const ErringController&) = delete;
    ErringController& operator=(const ErringController&) = delete;

    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }

private:
    MotionController m_controller{ MotionController::Options() };
    Faults m_faults;
    ErringService m_service;
    std::unique_ptr<grpc::Server> m_server;
    int m_port = 0;
};

QString program(const char* name)
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/bin/") + QString::fromLatin1(name);
}
} // namespace

/// The checking client against the controller that is the reference, whole and broken on purpose.
class ProtocolCheckTest : public QObject {
    Q_OBJECT

private slots:
    void passesTheReference();
    void noticesWhatIsWrong_data();
    void noticesWhatIsWrong();
    void noticesWhoBreaksARule_data();
    void noticesWhoBreaksARule();
    void leavesAxesAloneUnlessTold();
    void saysHowItIsUsed();

private:
    struct Outcome {
        int code = -1;
        QString said;
    };
    static Outcome askAt(const QString& address, const QStringList& options, const QByteArray& token);
    static Outcome check(const QStringList& faults, const QStringList& options, const QByteArray& token = "secret");
};

ProtocolCheckTest::Outcome ProtocolCheckTest::askAt(
    const QString& address, const QStringList& options, const QByteArray& token)
{
    QProcess client;
    client.start(program("kestrun-protocol-check"), QStringList{ address } + options);
    client.write(token + '\n');
    client.closeWriteChannel();
    client.waitForFinished(60000);
    return { client.exitCode(), QString::fromUtf8(client.readAllStandardOutput() + client.readAllStandardError()) };
}

ProtocolCheckTest::Outcome ProtocolCheckTest::check(
    const QStringList& faults, const QStringList& options, const QByteArray& token)
{
    QStringList arguments{ QStringLiteral("--end-with-input") };
    for (const QString& fault : faults)
        arguments << QStringLiteral("--fault") << fault;
    QProcess controller;
    controller.start(program("kestrun-controller"), arguments);
    controller.write("secret\n");
    if (!controller.waitForReadyRead(5000))
        return {};
    const QString line = QString::fromUtf8(controller.readLine()).trimmed();
    const Outcome outcome = askAt(line.section(QLatin1Char(' '), -1), options, token);
    controller.write("quit\n");
    controller.waitForFinished(3000);
    return outcome;
}

void ProtocolCheckTest::passesTheReference()
{
    const Outcome outcome = check({}, { QStringLiteral("--yes") });
    QVERIFY2(outcome.code == 0, qPrintable(outcome.said));
    QVERIFY(outcome.said.contains(QStringLiteral("The controller speaks the protocol.")));
    QVERIFY2(outcome.said.count(QStringLiteral("fine ")) >= 74, qPrintable(outcome.said));
}

void ProtocolCheckTest::noticesWhatIsWrong_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("line");
    QTest::newRow("another version") << QStringLiteral("version 7") << QStringLiteral("FAILED  the version is 1");
    QTest::newRow("a short status") << QStringLiteral("wrong-length 247")
                                    << QStringLiteral("FAILED  the status has 248 bytes");
    QTest::newRow("a refused move") << QStringLiteral("refuse 9 MoveAbs")
                                    << QStringLiteral("FAILED  an absolute move arrives");
    QTest::newRow("a stop that does nothing")
        << QStringLiteral("refuse 9 StopAll") << QStringLiteral("FAILED  the emergency stop stops a jog");
}

void ProtocolCheckTest::noticesWhatIsWrong()
{
    QFETCH(QString, fault);
    QFETCH(QString, line);
    const Outcome outcome = check({ fault }, { QStringLiteral("--yes") });
    QVERIFY(outcome.code != 0);
    QVERIFY2(outcome.said.contains(line), qPrintable(outcome.said));
}

void ProtocolCheckTest::noticesWhoBreaksARule_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("line");
    QTest::newRow("any time-out taken") << int(AnyTimeout)
                                        << QStringLiteral("a time-out outside 1 to 32767 ms is refused with 32");
    QTest::newRow("debug mode of another entered")
        << int(SharedDebugMode) << QStringLiteral("another client is refused with 4: EnterDebugMode");
    QTest::newRow("an axis of another moved")
        << int(SharedAxes) << QStringLiteral("another client is refused with 4: MoveVel");
    QTest::newRow("axes of another replaced") << int(
        SharedDownloads) << QStringLiteral("axes of another client are refused with 4 while one is in debug mode");
    QTest::newRow("an enabled axis replaced")
        << int(DownloadsWhileEnabled) << QStringLiteral("axes are refused with 48 while one is enabled");
    QTest::newRow("axes that run on when their client is back")
        << int(FormerAxesRunOn) << QStringLiteral("the axes of its former session stop when a client comes back");
    QTest::newRow("a refused login that ends a session")
        << int(RefusedLoginsEnd) << QStringLiteral("a login that is refused ends no session");
    QTest::newRow("short bytes that tell a client") << int(ShortBytesTell) << QStringLiteral("15 bytes tell no client");
    QTest::newRow("an older release taken")
        << int(OlderReleasesTaken) << QStringLiteral("a release that is older than the stop is refused with 26");
    QTest::newRow("a release taken that has not seen the stop") << int(
        BlindReleasesTaken) << QStringLiteral("a release that has not seen another client's stop is refused with 26");
}

void ProtocolCheckTest::noticesWhoBreaksARule()
{
    QFETCH(int, error);
    QFETCH(QString, line);
    const ErringController controller(error);
    const Outcome outcome = askAt(controller.address(), { QStringLiteral("--yes") }, "secret");
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.said.contains(QStringLiteral("FAILED  ") + line), qPrintable(outcome.said));
    // The other checks go on, and most are not concerned.
    QVERIFY2(outcome.said.count(QStringLiteral("fine ")) >= 40, qPrintable(outcome.said));
}

void ProtocolCheckTest::leavesAxesAloneUnlessTold()
{
    const Outcome outcome = check({}, {});
    QCOMPARE(outcome.code, 0);
    QVERIFY(outcome.said.contains(QStringLiteral("--yes")));
    QVERIFY(!outcome.said.contains(QStringLiteral("taken over")));
    const Outcome stranger = check({}, {}, "wrong");
    QVERIFY(stranger.code != 0);
    QVERIFY(stranger.said.contains(QStringLiteral("FAILED  the login")));
}

void ProtocolCheckTest::saysHowItIsUsed()
{
    QProcess process;
    process.start(program("kestrun-protocol-check"), { QStringLiteral("--help") });
    QVERIFY(process.waitForFinished(5000));
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().contains("--tls-authority"));
    process.start(program("kestrun-protocol-check"), { QStringLiteral("--wrong") });
    QVERIFY(process.waitForFinished(5000));
    QCOMPARE(process.exitCode(), 2);
}

QTEST_GUILESS_MAIN(ProtocolCheckTest)
#include "ProtocolCheckTest.moc"
