#include "host/communication/RpcCmdSend.h"

#include "sdk/AxisDebugParams.h"
#include "tests/communication/FakeLink.h"

#include <QtTest>

#include <functional>
#include <thread>

namespace {
using Call = std::function<void(RpcCmdSend&)>;

struct Row {
    const char* name;
    Call call;
    AxisRequest expected;
    /// Ends after one second whatever the deadline.
    bool brief;
};

AxisRequest expect(int code, short axisNo, int size, short value, short timeout, double position = 0,
    double velocity = 0, double acceleration = 0, double deceleration = 0, double jerk = 0)
{
    return { code, axisNo, size, value, timeout, position, velocity, acceleration, deceleration, jerk };
}

const Row rows[] = {
    { "GetAxisRef", [](RpcCmdSend& r) { r.rpc_AxisDebug_GetAxisRef(3, 248); }, expect(0, 3, 248, 0, 0), true },
    { "GetAxesGroupRef", [](RpcCmdSend& r) { r.rpc_AxisDebug_GetAxesGroupRef(4, 16); }, expect(1, 4, 16, 0, 0), true },
    { "EnterDebugMode", [](RpcCmdSend& r) { r.rpc_AxisDebug_EnterDebugMode(5, 1, 5000); }, expect(2, 5, 0, 1, 5000),
        false },
    { "KeepAlive", [](RpcCmdSend& r) { r.rpc_AxisDebug_KeepAlive(6); }, expect(3, 6, 0, 0, 0), true },
    { "SetEnable", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetEnable(7, 1); }, expect(4, 7, 0, 1, 0), false },
    { "SetPosition", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetPosition(8, 1.5); }, expect(5, 8, 0, 0, 0, 1.5), false },
    { "SetHomeOffset", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetHomeOffset(9, -2.5); }, expect(6, 9, 0, 0, 0, -2.5),
        false },
    { "SetVelRatio", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetVelRatio(10, 70); }, expect(7, 10, 0, 70, 0), false },
    { "SetHome", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetHome(11); }, expect(8, 11, 0, 0, 0), false },
    { "SetStop", [](RpcCmdSend& r) { r.rpc_AxisDebug_SetStop(12, 4, 5); }, expect(9, 12, 0, 0, 0, 0, 0, 0, 4, 5),
        false },
    { "MoveAbs", [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveAbs(13, 1, 2, 3, 4, 5); },
        expect(10, 13, 0, 0, 0, 1, 2, 3, 4, 5), false },
    { "MoveRel", [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveRel(14, 1, 2, 3, 4, 5); },
        expect(11, 14, 0, 0, 0, 1, 2, 3, 4, 5), false },
    { "MoveVel", [](RpcCmdSend& r) { r.rpc_AxisDebug_MoveVel(15, 2, 3, 4, 5); }, expect(12, 15, 0, 0, 0, 0, 2, 3, 4, 5),
        false },
    { "JopPos", [](RpcCmdSend& r) { r.rpc_AxisDebug_JopPos(16, 1, 2, 3, 4, 5); },
        expect(13, 16, 0, 1, 0, 0, 2, 3, 4, 5), false },
    { "JopNeg", [](RpcCmdSend& r) { r.rpc_AxisDebug_JopNeg(17, 1, 2, 3, 4, 5); },
        expect(14, 17, 0, 1, 0, 0, 2, 3, 4, 5), false },
    { "Reset", [](RpcCmdSend& r) { r.rpc_AxisDebug_Reset(-1); }, expect(15, -1, 0, 0, 0), false },
};
} // namespace

class RpcCmdSendTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { ControllerLink::setActive(nullptr); }
    void carriesItsFields_data();
    void carriesItsFields();
    void handsTheResultOn();
    void isShortOfNothingWithoutALink();
    void keepsTheLinkThatItStartedWith();
    void whatGoesOutIsAnnounced();
    void whatIsRefusedStaysHere();
};

void RpcCmdSendTest::carriesItsFields_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(rows)); ++i)
        QTest::newRow(rows[i].name) << i;
}

void RpcCmdSendTest::carriesItsFields()
{
    QFETCH(int, row);
    const auto link = std::make_shared<FakeLink>();
    ControllerLink::setActive(link);
    for (const int deadline : { 10, 1, 0, -3 }) {
        RpcCmdSend rpc;
        QCOMPARE(rpc.deadline, 10);
        rpc.deadline = deadline;
        rows[row].call(rpc);
        const AxisRequest& expected = rows[row].expected;
        const AxisRequest given = link->requests().back();
        QCOMPARE(given.code, expected.code);
        QCOMPARE(given.axisNo, expected.axisNo);
        QCOMPARE(given.size, expected.size);
        QCOMPARE(given.value, expected.value);
        QCOMPARE(given.timeout, expected.timeout);
        QCOMPARE(given.position, expected.position);
        QCOMPARE(given.velocity, expected.velocity);
        QCOMPARE(given.acceleration, expected.acceleration);
        QCOMPARE(given.deceleration, expected.deceleration);
        QCOMPARE(given.jerk, expected.jerk);
        const int seconds = rows[row].brief ? 1 : std::max(deadline, 1);
        QVERIFY(link->deadlines().back() == std::chrono::seconds(seconds));
    }
}

void RpcCmdSendTest::handsTheResultOn()
{
    const auto link = std::make_shared<FakeLink>();
    ControllerLink::setActive(link);
    link->answerWith({ -321, QByteArray("status") });
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_Reset(1), short(-321));
    QCOMPARE(rpc.rpc_AxisDebug_GetAxisRef(1, 6), QByteArray("status"));
}

void RpcCmdSendTest::isShortOfNothingWithoutALink()
{
    RpcCmdSend rpc;
    for (const Row& row : rows)
        row.call(rpc);
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(0, 1, 1, 1, 1), Diagnosis::notConnected);
}

void RpcCmdSendTest::keepsTheLinkThatItStartedWith()
{
    auto link = std::make_shared<FakeLink>();
    ControllerLink::setActive(link);
    const std::weak_ptr<FakeLink> watch = link;
    ControllerLink::setActive(nullptr);
    QVERIFY(!watch.expired());
    link.reset();
    QVERIFY(watch.expired());
}

void RpcCmdSendTest::whatGoesOutIsAnnounced()
{
    const auto link = std::make_shared<FakeLink>();
    std::vector<int> announced;
    std::size_t sentBefore = 99;
    ControllerLink::setAnnouncer([&](const AxisRequest& request) {
        announced.push_back(request.code);
        sentBefore = link->requests().size();
    });
    RpcCmdSend rpc;
    rpc.rpc_AxisDebug_Reset(1);
    QVERIFY(announced.empty());
    ControllerLink::setActive(link);
    rpc.rpc_AxisDebug_Reset(1);
    QCOMPARE(announced, std::vector<int>{ int(AxisDebugReset) });
    QCOMPARE(sentBefore, std::size_t(0));
    ControllerLink::setAnnouncer({});
    rpc.rpc_AxisDebug_Reset(1);
    QCOMPARE(announced.size(), std::size_t(1));
}

void RpcCmdSendTest::whatIsRefusedStaysHere()
{
    const auto link = std::make_shared<FakeLink>();
    ControllerLink::setActive(link);
    std::vector<short> observed;
    bool announced = false;
    ControllerLink::setAnnouncer([&](const AxisRequest&) { announced = true; });
    ControllerLink::setObserver([&](const AxisRequest&, const AxisReply& reply, std::chrono::microseconds) {
        observed.push_back(reply.result);
    });
    RpcCmdSend rpc;
    {
        const ControllerLink::Refusal refusal(26);
        QCOMPARE(rpc.rpc_AxisDebug_Reset(1), short(26));
        QVERIFY(rpc.rpc_AxisDebug_GetAxisRef(1, 248).isEmpty());
        short elsewhere = -1;
        std::thread([&elsewhere] { elsewhere = RpcCmdSend().rpc_AxisDebug_Reset(2); }).join();
        QCOMPARE(elsewhere, Diagnosis::ok);
    }
    QCOMPARE(rpc.rpc_AxisDebug_Reset(1), Diagnosis::ok);
    ControllerLink::setAnnouncer({});
    ControllerLink::setObserver({});
    QCOMPARE(link->requests().size(), std::size_t(2));
    QCOMPARE(observed, (std::vector<short>{ 26, 26, 0, 0 }));
    QVERIFY(announced);
}

QTEST_APPLESS_MAIN(RpcCmdSendTest)
#include "RpcCmdSendTest.moc"
