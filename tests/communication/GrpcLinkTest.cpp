#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/RecordingController.h"

#include <QSignalSpy>
#include <QSysInfo>
#include <QtTest>

#include <functional>

namespace {
using Send = std::function<void(RpcCmdSend&)>;

struct Row {
    Send send;
    WireCall expected;
};

WireCall expect(const char* method, int axis, int size, int value, int timeout = 0, double position = 0,
    double velocity = 0, double acceleration = 0, double deceleration = 0, double jerk = 0)
{
    return { method, {}, axis, size, value, timeout, position, velocity, acceleration, deceleration, jerk };
}

const Row rows[] = {
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_GetAxisRef(3, 248); }, expect("GetAxisRef", 3, 248, 0) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_GetAxesGroupRef(4, 16); }, expect("GetAxesGroupRef", 4, 16, 0) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_EnterDebugMode(5, 1, 5000); }, expect("EnterDebugMode", 5, 0, 1, 5000) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_KeepAlive(6); }, expect("KeepAlive", 6, 0, 0) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetEnable(7, 1); }, expect("SetEnable", 7, 0, 1) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetPosition(8, 1.5); }, expect("SetPosition", 8, 0, 0, 0, 1.5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetHomeOffset(9, -2.5); }, expect("SetHomeOffset", 9, 0, 0, 0, -2.5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetVelRatio(10, 70); }, expect("SetVelRatio", 10, 0, 70) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetHome(11); }, expect("SetHome", 11, 0, 0) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_SetStop(12, 4, 5); }, expect("SetStop", 12, 0, 0, 0, 0, 0, 0, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveAbs(13, 1, 2, 3, 4, 5); },
        expect("MoveAbs", 13, 0, 0, 0, 1, 2, 3, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveRel(14, 1, 2, 3, 4, 5); },
        expect("MoveRel", 14, 0, 0, 0, 1, 2, 3, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveVel(15, 2, 3, 4, 5); }, expect("MoveVel", 15, 0, 0, 0, 0, 2, 3, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_JopPos(16, 1, 2, 3, 4, 5); }, expect("JopPos", 16, 0, 1, 0, 0, 2, 3, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_JopNeg(17, 1, 2, 3, 4, 5); }, expect("JopNeg", 17, 0, 1, 0, 0, 2, 3, 4, 5) },
    { [](RpcCmdSend& r) { r.rpc_AxisDebug_Reset(-1); }, expect("Reset", -1, 0, 0) },
};
} // namespace

Q_DECLARE_METATYPE(grpc::StatusCode)

/// What goes over the wire, and what its answers become.
class GrpcLinkTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyFieldGoesOverTheWire_data();
    void everyFieldGoesOverTheWire();
    void aResultThatIsNoCodeIsARefusal_data();
    void aResultThatIsNoCodeIsARefusal();
    void faultsOfTheTransportReadAsCodes_data();
    void faultsOfTheTransportReadAsCodes();
    void theLoginTellsWhoAsks();

private:
    std::unique_ptr<RecordingController> controller;
    std::unique_ptr<ControllerConnection> connection;
};

void GrpcLinkTest::init()
{
    controller = std::make_unique<RecordingController>();
    connection = std::make_unique<ControllerConnection>();
    QSignalSpy opened(connection.get(), &ControllerConnection::opened);
    connection->open(controller->address());
    QVERIFY(opened.wait(5000));
}

void GrpcLinkTest::cleanup()
{
    connection.reset();
    controller.reset();
}

void GrpcLinkTest::everyFieldGoesOverTheWire_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(rows)); ++i)
        QTest::newRow(rows[i].expected.method.c_str()) << i;
}

void GrpcLinkTest::everyFieldGoesOverTheWire()
{
    QFETCH(int, row);
    RpcCmdSend rpc;
    rows[row].send(rpc);
    const std::vector<WireCall> calls = controller->calls();
    QCOMPARE(calls.size(), std::size_t(1));
    const WireCall& given = calls.front();
    const WireCall& expected = rows[row].expected;
    QCOMPARE(given.method, expected.method);
    QCOMPARE(given.session, controller->session());
    QCOMPARE(given.axis, expected.axis);
    QCOMPARE(given.size, expected.size);
    QCOMPARE(given.value, expected.value);
    QCOMPARE(given.timeout, expected.timeout);
    QCOMPARE(given.position, expected.position);
    QCOMPARE(given.velocity, expected.velocity);
    QCOMPARE(given.acceleration, expected.acceleration);
    QCOMPARE(given.deceleration, expected.deceleration);
    QCOMPARE(given.jerk, expected.jerk);
}

void GrpcLinkTest::aResultThatIsNoCodeIsARefusal_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<short>("result");
    QTest::newRow("success") << 0 << Diagnosis::ok;
    QTest::newRow("the greatest code") << 32767 << short(32767);
    QTest::newRow("the least code") << -32768 << short(-32768);
    QTest::newRow("above the codes") << 32768 << Diagnosis::refused;
    QTest::newRow("below the codes") << -32769 << Diagnosis::refused;
    QTest::newRow("what would read as success") << 65536 << Diagnosis::refused;
}

void GrpcLinkTest::aResultThatIsNoCodeIsARefusal()
{
    QFETCH(int, answer);
    controller->answerWith(answer);
    QTEST(RpcCmdSend().rpc_AxisDebug_Reset(1), "result");
}

void GrpcLinkTest::faultsOfTheTransportReadAsCodes_data()
{
    QTest::addColumn<grpc::StatusCode>("code");
    QTest::addColumn<short>("result");
    QTest::newRow("no answer in time") << grpc::StatusCode::DEADLINE_EXCEEDED << Diagnosis::noAnswer;
    QTest::newRow("a method that is not there") << grpc::StatusCode::UNIMPLEMENTED << Diagnosis::versionDiffers;
    QTest::newRow("nobody there") << grpc::StatusCode::UNAVAILABLE << Diagnosis::notConnected;
    QTest::newRow("a cancelled call") << grpc::StatusCode::CANCELLED << Diagnosis::notConnected;
    QTest::newRow("no permission") << grpc::StatusCode::PERMISSION_DENIED << Diagnosis::refused;
    QTest::newRow("a fault of the controller") << grpc::StatusCode::INTERNAL << Diagnosis::refused;
}

void GrpcLinkTest::faultsOfTheTransportReadAsCodes()
{
    QFETCH(grpc::StatusCode, code);
    controller->answerWith(0, grpc::Status(code, "on purpose"));
    RpcCmdSend rpc;
    QTEST(rpc.rpc_AxisDebug_Reset(1), "result");
    QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(1, 248).isEmpty());
}

void GrpcLinkTest::theLoginTellsWhoAsks()
{
    const kestrun::protocol::LoginRequest login = controller->login();
    QCOMPARE(login.version(), protocolVersion);
    QCOMPARE(login.token(), std::string("right"));
    QCOMPARE(login.client_name(), QSysInfo::machineHostName().toStdString());
}

QTEST_GUILESS_MAIN(GrpcLinkTest)
#include "GrpcLinkTest.moc"
