#include "controller/ControllerService.h"

#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "tests/controller/AxisRecords.h"

#include <QElapsedTimer>
#include <QtTest>

namespace proto = kestrun::protocol;

// The service by itself, without a network.
namespace {
class Rig {
public:
    explicit Rig(const std::string& token) : controller({}), service(&controller, &faults, token) { }

    proto::LoginReply login(
        const std::string& token, std::uint32_t version = protocolVersion, const std::string& client = {})
    {
        grpc::ServerContext context;
        proto::LoginRequest request;
        proto::LoginReply reply;
        request.set_version(version);
        request.set_token(token);
        request.set_client(client);
        service.Login(&context, &request, &reply);
        return reply;
    }

    int enterDebugMode(const std::string& session, int axis)
    {
        grpc::ServerContext context;
        proto::EnterDebugModeRequest request;
        proto::Result reply;
        request.set_session(session);
        request.set_axis(axis);
        request.set_enter(1);
        request.set_timeout(30000);
        service.EnterDebugMode(&context, &request, &reply);
        return reply.result();
    }

    proto::DownloadReply download(const std::string& session)
    {
        grpc::ServerContext context;
        proto::DownloadRequest request;
        proto::DownloadReply reply;
        request.set_session(session);
        service.DownloadAxes(&context, &request, &reply);
        return reply;
    }

    proto::CurvesReply curves(const std::string& session, const std::vector<int>& axes)
    {
        grpc::ServerContext context;
        proto::CurvesRequest request;
        proto::CurvesReply reply;
        request.set_session(session);
        for (const int axisNo : axes)
            request.add_axes(axisNo);
        service.ReadCurves(&context, &request, &reply);
        return reply;
    }

    void fault(const char* line)
    {
        Faults::Action action;
        std::string error;
        if (!faults.set(line, &action, &error))
            qFatal("%s", error.c_str());
    }

    MotionController controller;
    Faults faults;
    ControllerService service;
};
} // namespace

class ControllerServiceTest : public QObject {
    Q_OBJECT

private slots:
    void theLoginWantsTheToken_data();
    void theLoginWantsTheToken();
    void aNewSessionEndsTheFormerOneOfItsClient_data();
    void aNewSessionEndsTheFormerOneOfItsClient();
    void oneClientMoreEndsTheOldestThatNobodyAttends();
    void theHandshakeTellsWhatIsNeeded();
    void refusalsOnPurposeSayThatTheyAre();
    void curvesNeedASession();
    void faultsOfEveryRequestConcernCurves();
};

void ControllerServiceTest::theLoginWantsTheToken_data()
{
    QTest::addColumn<QByteArray>("wanted");
    QTest::addColumn<QByteArray>("shown");
    QTest::addColumn<bool>("fine");
    QTest::newRow("the right one") << QByteArray("right") << QByteArray("right") << true;
    QTest::newRow("a wrong one") << QByteArray("right") << QByteArray("wrong") << false;
    QTest::newRow("none") << QByteArray("right") << QByteArray() << false;
    QTest::newRow("none where the certificate stands for it") << QByteArray() << QByteArray() << true;
    QTest::newRow("one where the certificate stands for it") << QByteArray() << QByteArray("right") << true;
}

void ControllerServiceTest::theLoginWantsTheToken()
{
    QFETCH(QByteArray, wanted);
    QFETCH(QByteArray, shown);
    QFETCH(bool, fine);
    Rig rig(wanted.toStdString());
    const proto::LoginReply reply = rig.login(shown.toStdString());
    QCOMPARE(reply.result(), fine ? 0 : int(Diagnosis::refused));
    QCOMPARE(reply.session().size(), std::size_t(fine ? protocolSessionLength : 0));
    QCOMPARE(reply.reason(), std::string(fine ? "" : "The token is wrong."));
    QCOMPARE(rig.login(shown.toStdString(), protocolVersion + 1).result(), int(Diagnosis::versionDiffers));
}

void ControllerServiceTest::aNewSessionEndsTheFormerOneOfItsClient_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QByteArray>("now");
    QTest::addColumn<bool>("ends");
    const QByteArray mine(protocolSessionLength, 'm');
    const QByteArray other(protocolSessionLength, 'o');
    QTest::newRow("the same client") << mine << QByteArray("right") << mine << true;
    QTest::newRow("another client") << mine << QByteArray("right") << other << false;
    QTest::newRow("the same client with a wrong token") << mine << QByteArray("wrong") << mine << false;
    QTest::newRow("a client that is not told") << mine << QByteArray("right") << QByteArray() << false;
    QTest::newRow("two that are not told") << QByteArray() << QByteArray("right") << QByteArray() << false;
    QTest::newRow("bytes that are too few") << mine.mid(1) << QByteArray("right") << mine.mid(1) << false;
    QTest::newRow("bytes that are too many") << mine + 'm' << QByteArray("right") << mine + 'm' << false;
}

void ControllerServiceTest::aNewSessionEndsTheFormerOneOfItsClient()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, token);
    QFETCH(QByteArray, now);
    QFETCH(bool, ends);
    Rig rig("right");
    QCOMPARE(rig.controller.download({ makeAxisText(3) }).code, Diagnosis::ok);
    const std::string former = rig.login("right", protocolVersion, before.toStdString()).session();
    const std::string bystander = rig.login("right").session();
    QCOMPARE(rig.enterDebugMode(former, 3), 0);
    const std::string next = rig.login(token.toStdString(), protocolVersion, now.toStdString()).session();
    QCOMPARE(rig.curves(former, {}).result(), ends ? int(Diagnosis::refused) : 0);
    QCOMPARE(rig.curves(bystander, {}).result(), 0);
    rig.controller.step();
    AxisRef ref{};
    QVERIFY(rig.controller.peek(3, &ref, nullptr));
    QCOMPARE(ref.debugMode, std::uint8_t(!ends));
    // What has been in its own way is so no more; what is another's stays so.
    if (!next.empty())
        QCOMPARE(rig.download(next).result(), ends ? 0 : int(Diagnosis::ownedByOther));
}

void ControllerServiceTest::oneClientMoreEndsTheOldestThatNobodyAttends()
{
    Rig rig("right");
    QCOMPARE(rig.controller.download({ makeAxisText(0, {}) }).code, Diagnosis::ok);
    std::vector<std::string> sessions;
    for (int i = 0; i < 32; ++i) {
        sessions.push_back(rig.login("right").session());
        QVERIFY(!sessions.back().empty());
    }
    QCOMPARE(rig.enterDebugMode(sessions.front(), 0), int(Diagnosis::ok));
    QCOMPARE(rig.enterDebugMode(sessions.at(1), 0), int(Diagnosis::ownedByOther));
    const proto::LoginReply reply = rig.login("right");
    QCOMPARE(reply.result(), 0);
    QCOMPARE(rig.enterDebugMode(sessions.front(), 0), int(Diagnosis::refused));
    // Its axis does not wait for the time-out.
    rig.controller.step(1);
    QCOMPARE(rig.enterDebugMode(sessions.at(1), 0), int(Diagnosis::ok));
}

void ControllerServiceTest::theHandshakeTellsWhatIsNeeded()
{
    for (const bool token : { false, true }) {
        Rig rig(token ? "right" : "");
        grpc::ServerContext context;
        const proto::HandshakeRequest request;
        proto::HandshakeReply reply;
        QVERIFY(rig.service.Handshake(&context, &request, &reply).ok());
        QCOMPARE(reply.version(), protocolVersion);
        QCOMPARE(reply.token_needed(), token);
        QVERIFY(!reply.name().empty());
        rig.fault("refuse 77 Handshake");
        const grpc::Status status = rig.service.Handshake(&context, &request, &reply);
        QVERIFY(!status.ok());
        QVERIFY(status.error_message().find("77") != std::string::npos);
    }
}

void ControllerServiceTest::refusalsOnPurposeSayThatTheyAre()
{
    Rig rig("right");
    rig.fault("refuse 77 Login");
    const proto::LoginReply reply = rig.login("right");
    QCOMPARE(reply.result(), 77);
    QVERIFY(reply.session().empty());
    QVERIFY(reply.reason().find("token") == std::string::npos);
}

void ControllerServiceTest::curvesNeedASession()
{
    Rig rig("right");
    QCOMPARE(rig.controller.download({ makeAxisText(3) }).code, Diagnosis::ok);
    const std::string session = rig.login("right").session();
    QCOMPARE(rig.curves("", { 3 }).result(), int(Diagnosis::refused));
    const proto::CurvesReply reply = rig.curves(session, { 3, 4, -1, 300 });
    QCOMPARE(reply.result(), 0);
    QCOMPARE(reply.status_size(), 4);
    QCOMPARE(reply.status(0).size(), std::size_t(axisRefSize));
    for (const int missing : { 1, 2, 3 })
        QVERIFY(reply.status(missing).empty());
}

void ControllerServiceTest::faultsOfEveryRequestConcernCurves()
{
    Rig rig("right");
    const std::string session = rig.login("right").session();
    rig.fault("refuse 77");
    const proto::CurvesReply reply = rig.curves(session, { 0 });
    QCOMPARE(reply.result(), 77);
    QCOMPARE(reply.status_size(), 0);
    rig.fault("none");
    rig.fault("late-replies 80");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(rig.curves(session, { 0 }).result(), 0);
    QVERIFY(timer.elapsed() >= 79);
}

QTEST_GUILESS_MAIN(ControllerServiceTest)
#include "ControllerServiceTest.moc"
