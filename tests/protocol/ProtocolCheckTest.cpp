#include "controller/ControllerService.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "tests/communication/Certificates.h"

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
    BlindReleasesTaken,
    NamelessStops,
    AnyRecordTaken,
    CrossedLimitsTaken,
    AnyUnitTaken,
    AnyNumberTaken,
    PingsForbidden
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
        const Status status = ControllerService::StopAll(context, &changed, reply);
        if (m_error == NamelessStops)
            reply->clear_stop_revision();
        return status;
    }

    Status DownloadAxes(Context* context, const proto::DownloadRequest* request, proto::DownloadReply* reply) override
    {
        proto::DownloadRequest changed = *request;
        if (m_error == SharedDownloads)
            changed.set_session(owner(request->session()));
        const Status status = ControllerService::DownloadAxes(context, &changed, reply);
        if (m_error == DownloadsWhileEnabled && reply->result() == Diagnosis::axisEnabled)
            reply->set_result(Diagnosis::ok);
        static const std::map<int, int> taken{ { AnyRecordTaken, Diagnosis::parameterInvalid },
            { CrossedLimitsTaken, Diagnosis::limitsCross }, { AnyUnitTaken, Diagnosis::unitRatioInvalid },
            { AnyNumberTaken, Diagnosis::tooManyAxes } };
        const auto code = taken.find(m_error);
        if (code != taken.end() && code->second == reply->result())
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
        // Otherwise the transport forbids them by itself.
        if (error != PingsForbidden)
            builder.AddChannelArgument(GRPC_ARG_HTTP2_MIN_RECV_PING_INTERVAL_WITHOUT_DATA_MS, 300);
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
    void passesTheReferenceOverTls();
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
    static Outcome checkWith(QStringList arguments, const QStringList& options, const QByteArray& token);
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
    QStringList arguments;
    for (const QString& fault : faults)
        arguments << QStringLiteral("--fault") << fault;
    return checkWith(arguments, options, token);
}

ProtocolCheckTest::Outcome ProtocolCheckTest::checkWith(
    QStringList arguments, const QStringList& options, const QByteArray& token)
{
    arguments << QStringLiteral("--end-with-input");
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
    QVERIFY2(outcome.said.count(QStringLiteral("fine ")) >= 80, qPrintable(outcome.said));
}

void ProtocolCheckTest::passesTheReferenceOverTls()
{
    const QString set = QStringLiteral("set");
    const QString strange = QStringLiteral("strange");
    const Certificates certificates;
    QVERIFY(certificates.make(set, { QStringLiteral("127.0.0.1") }));
    QVERIFY(certificates.make(strange, { QStringLiteral("127.0.0.1") }));
    const auto options = [&](const QString& own) {
        return QStringList{ QStringLiteral("--tls-authority"), certificates.file(set, QStringLiteral("authority.pem")),
            QStringLiteral("--tls-certificate"), certificates.file(own, QStringLiteral("workbench.pem")),
            QStringLiteral("--tls-key"), certificates.file(own, QStringLiteral("workbench.key")) };
    };
    const QStringList controller = certificates.controllerArguments(set);
    const Outcome outcome = checkWith(controller, options(set) + QStringList{ QStringLiteral("--yes") }, {});
    QVERIFY2(outcome.code == 0, qPrintable(outcome.said));
    QVERIFY(outcome.said.contains(QStringLiteral("fine    a sound axis is taken over")));
    // The certificate stands for the token.
    QVERIFY(!outcome.said.contains(QStringLiteral("wrong token")));
    const Outcome stranger = checkWith(controller, options(strange), {});
    QCOMPARE(stranger.code, 1);
    QVERIFY2(stranger.said.contains(QStringLiteral("FAILED  the handshake")), qPrintable(stranger.said));
    const Outcome clear = checkWith(controller, {}, "secret");
    QCOMPARE(clear.code, 1);
    QVERIFY2(clear.said.contains(QStringLiteral("FAILED  the handshake")), qPrintable(clear.said));
    const Outcome nowhere = checkWith(controller, options(QStringLiteral("nowhere")), {});
    QCOMPARE(nowhere.code, 2);
    QVERIFY2(nowhere.said.contains(QStringLiteral("Cannot read")), qPrintable(nowhere.said));
    const Outcome half = checkWith(controller, options(set).mid(0, 4), {});
    QCOMPARE(half.code, 2);
    QVERIFY(half.said.contains(QStringLiteral("Usage")));
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
    QTest::newRow("a stop without its revision")
        << int(NamelessStops) << QStringLiteral("the answer to a stop tells the same revision");
    QTest::newRow("a record without a parameter taken")
        << int(AnyRecordTaken) << QStringLiteral("a missing parameter is refused with 49, and named");
    QTest::newRow("limits that cross taken") << int(
        CrossedLimitsTaken) << QStringLiteral("an upper limit below the lower one is refused with 51, and named");
    QTest::newRow("a unit without pulses taken")
        << int(AnyUnitTaken) << QStringLiteral("a unit without pulses is refused with 25, and named");
    QTest::newRow("too many axes taken") << int(AnyNumberTaken) << QStringLiteral("257 axes are refused with 52 or 50");
    QTest::newRow("pings forbidden") << int(PingsForbidden)
                                     << QStringLiteral("a ping a second is answered, and allowed");
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
