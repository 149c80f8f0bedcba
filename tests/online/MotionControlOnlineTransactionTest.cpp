#include "online/MotionControlOnlineTransaction.h"

#include "host/communication/ControllerLink.h"
#include "sdk/AxisDebugParams.h"
#include "tests/support/TestHost.h"

#include <QMetaMethod>
#include <QThread>
#include <QtTest>

#include <memory>

namespace {

const short axis = 7;

/// Answers every request at once and keeps what it was asked.
class RecordingLink : public ControllerLink {
public:
    AxisReply request(const AxisRequest& request, std::chrono::milliseconds deadline) override
    {
        requests.append(request);
        lastDeadline = deadline;
        thread = QThread::currentThread();
        return reply;
    }
    void cancelInFlight() override { }

    QVector<AxisRequest> requests;
    std::chrono::milliseconds lastDeadline{ 0 };
    AxisReply reply;
    QThread* thread = nullptr;
};

/// All that a link can see of a request, as text.
QString textOf(const AxisRequest& request)
{
    return QStringLiteral("%1: axis %2 size %3 value %4 timeout %5 position %6 velocity %7 acceleration %8 "
                          "deceleration %9 jerk %10")
        .arg(request.code)
        .arg(request.axisNo)
        .arg(request.size)
        .arg(request.value)
        .arg(request.timeout)
        .arg(request.position)
        .arg(request.velocity)
        .arg(request.acceleration)
        .arg(request.deceleration)
        .arg(request.jerk);
}

AxisRequest request(int code)
{
    AxisRequest request;
    request.code = code;
    request.axisNo = axis;
    return request;
}

AxisRequest withSize(int code)
{
    AxisRequest filled = request(code);
    filled.size = 248;
    return filled;
}

AxisRequest withValue(int code, short value, short timeout = 0)
{
    AxisRequest filled = request(code);
    filled.value = value;
    filled.timeout = timeout;
    return filled;
}

AxisRequest withMotion(int code, double position, double velocity, double acceleration, short value = 0)
{
    AxisRequest filled = withValue(code, value);
    filled.position = position;
    filled.velocity = velocity;
    filled.acceleration = acceleration;
    filled.deceleration = 4.5;
    filled.jerk = 5.5;
    return filled;
}

AxisRequest withPosition(int code)
{
    AxisRequest filled = request(code);
    filled.position = 1.5;
    return filled;
}

/// Has the fifteen slots of an axis's page and the one of a group's, and notes what arrives.
class Receiver : public QObject {
    Q_OBJECT

public:
    QStringList arrived;
    QByteArray lastReply;
    QThread* thread = nullptr;

public slots:
    void axisDebugGetAxisRef(const QByteArray& reply) { noteReply(0, reply); }
    void axisDebugGetAxesGroupRef(const QByteArray& reply) { noteReply(1, reply); }
    void axisDebugEnterDebugMode(qint16 result) { note(2, result); }
    void axisDebugKeepAlive(qint16 result) { note(3, result); }
    void axisDebugSetEnable(qint16 result) { note(4, result); }
    void axisDebugSetPosition(qint16 result) { note(5, result); }
    void axisDebugSetHomeOffset(qint16 result) { note(6, result); }
    void axisDebugSetVelRatio(qint16 result) { note(7, result); }
    void axisDebugSetHome(qint16 result) { note(8, result); }
    void axisDebugSetStop(qint16 result) { note(9, result); }
    void axisDebugMoveAbs(qint16 result) { note(10, result); }
    void axisDebugMoveRel(qint16 result) { note(11, result); }
    void axisDebugMoveVel(qint16 result) { note(12, result); }
    void axisDebugJopPos(qint16 result) { note(13, result); }
    void axisDebugJopNeg(qint16 result) { note(14, result); }
    void axisDebugReset(qint16 result) { note(15, result); }

private:
    void note(int code, qint16 result)
    {
        arrived.append(QStringLiteral("%1=%2").arg(code).arg(result));
        thread = QThread::currentThread();
    }
    void noteReply(int code, const QByteArray& reply)
    {
        lastReply = reply;
        note(code, static_cast<qint16>(reply.size()));
    }
};

class OpenTransaction : public MotionControlOnlineTransaction {
public:
    using MotionControlOnlineTransaction::MotionControlOnlineTransaction;

    QVector<int> connectedCodes() const
    {
        QVector<int> codes;
        const QMetaObject& meta = MotionControlOnlineTransaction::staticMetaObject;
        for (int code = 0; code < 16; ++code) {
            if (isSignalConnected(meta.method(meta.methodOffset() + code)))
                codes.append(code);
        }
        return codes;
    }
};

} // namespace

Q_DECLARE_METATYPE(AxisRequest)

class MotionControlOnlineTransactionTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void signalsStandInTheOrderOfTheCodes();
    void aTransactionStartsUnqueuedAndMayRunOnce();
    void requestGoesOutWithItsFieldsAndComesBackByItsSignal_data();
    void requestGoesOutWithItsFieldsAndComesBackByItsSignal();
    void resultIsPassedOnAsItIs_data();
    void resultIsPassedOnAsItIs();
    void statusBytesAreCopiedWhatEverTheirLength();
    void callMayTakeTenSeconds();
    void codeOutsideTheTableDoesNothing_data();
    void codeOutsideTheTableDoesNothing();
    void parameterOfAnotherTypeGoesOutAsZeros_data();
    void parameterOfAnotherTypeGoesOutAsZeros();
    void convertibleParameterIsConverted();
    void groupRequestConnectsItsOneSignalOnly();
    void anyOtherRequestConnectsTheFifteenOthers_data();
    void anyOtherRequestConnectsTheFifteenOthers();
    void withoutSettingsNothingIsConnected();
    void pollTimeIsReadOnce();
    void withoutHostTheRequestStillRuns();
    void resultFromAnotherThreadArrivesQueued();
    void receiverThatIsGoneIsNotMissed();

private:
    std::unique_ptr<TestHost> m_host;
    std::shared_ptr<RecordingLink> m_link;
};

void MotionControlOnlineTransactionTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_link = std::make_shared<RecordingLink>();
    ControllerLink::setActive(m_link);
}

void MotionControlOnlineTransactionTest::cleanup()
{
    ControllerLink::setActive(nullptr);
    m_host.reset();
}

void MotionControlOnlineTransactionTest::aTransactionStartsUnqueuedAndMayRunOnce()
{
    class Opened : public Transaction {
    public:
        using Transaction::cancelled;
        using Transaction::queueNumber;
        using Transaction::runsAllowed;
    };
    const Opened transaction;
    QCOMPARE(transaction.queueNumber, 0);
    QCOMPARE(transaction.cancelled, false);
    QCOMPARE(transaction.runsAllowed, 1);
}

void MotionControlOnlineTransactionTest::signalsStandInTheOrderOfTheCodes()
{
    const QStringList expected = QStringLiteral(
        "axisDebugGetAxisRef(QByteArray) axisDebugGetAxesGroupRef(QByteArray) axisDebugEnterDebugMode(qint16) "
        "axisDebugKeepAlive(qint16) axisDebugSetEnable(qint16) axisDebugSetPosition(qint16) "
        "axisDebugSetHomeOffset(qint16) axisDebugSetVelRatio(qint16) axisDebugSetHome(qint16) "
        "axisDebugSetStop(qint16) axisDebugMoveAbs(qint16) axisDebugMoveRel(qint16) axisDebugMoveVel(qint16) "
        "axisDebugJopPos(qint16) axisDebugJopNeg(qint16) axisDebugReset(qint16)")
                                     .split(QLatin1Char(' '));
    const QMetaObject& meta = MotionControlOnlineTransaction::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), expected.size());
    for (int code = 0; code < expected.size(); ++code)
        QCOMPARE(meta.indexOfSignal(qPrintable(expected.at(code))), meta.methodOffset() + code);
}

void MotionControlOnlineTransactionTest::requestGoesOutWithItsFieldsAndComesBackByItsSignal_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QVariant>("param");
    QTest::addColumn<AxisRequest>("expected");
    const short one = 1;
    const auto add = [](const char* name, const auto& param, const AxisRequest& expected) {
        QTest::newRow(name) << expected.code << QVariant::fromValue(param) << expected;
    };
    add("status of an axis", GetAxisRefParam{ axis, 248 }, withSize(0));
    add("status of a group", GetAxesGroupRefParam{ axis, 248 }, withSize(1));
    add("enter debug mode", EnterDebugModelParam{ axis, one, 5000 }, withValue(2, 1, 5000));
    add("keep alive", KeepAliveParam{ axis }, request(3));
    add("enable", SetEnableParam{ axis, one }, withValue(4, 1));
    add("preset position", SetPositionParam{ axis, 1.5 }, withPosition(5));
    add("origin offset", SetHomeOffsetParam{ axis, 1.5 }, withPosition(6));
    add("speed multiplier", SetVelRatioParam{ axis, 80 }, withValue(7, 80));
    add("home", SetHomeParam{ axis }, request(8));
    add("stop", SetStopParam{ axis, 4.5, 5.5 }, withMotion(9, 0, 0, 0));
    add("absolute move", MoveAbsParam{ axis, 1.5, 2.5, 3.5, 4.5, 5.5 }, withMotion(10, 1.5, 2.5, 3.5));
    add("relative move", MoveRelParam{ axis, 1.5, 2.5, 3.5, 4.5, 5.5 }, withMotion(11, 1.5, 2.5, 3.5));
    add("continuous move", MoveVelParam{ axis, 2.5, 3.5, 4.5, 5.5 }, withMotion(12, 0, 2.5, 3.5));
    add("jog forwards", JopPosParam{ axis, one, 2.5, 3.5, 4.5, 5.5 }, withMotion(13, 0, 2.5, 3.5, 1));
    add("jog backwards", JopNegParam{ axis, one, 2.5, 3.5, 4.5, 5.5 }, withMotion(14, 0, 2.5, 3.5, 1));
    add("reset", ResetParam{ axis }, request(15));
}

void MotionControlOnlineTransactionTest::requestGoesOutWithItsFieldsAndComesBackByItsSignal()
{
    QFETCH(int, code);
    QFETCH(QVariant, param);
    QFETCH(AxisRequest, expected);
    m_link->reply = { 0, QByteArray() };

    Receiver receiver;
    MotionControlOnlineTransaction transaction(code, param, &receiver);
    QVERIFY2(m_link->requests.isEmpty(), "nothing goes out before it is run");
    transaction.execute();
    QCOMPARE(m_link->requests.size(), 1);
    QCOMPARE(textOf(m_link->requests.first()), textOf(expected));
    QCOMPARE(receiver.arrived, QStringList{ QStringLiteral("%1=0").arg(code) });
}

void MotionControlOnlineTransactionTest::resultIsPassedOnAsItIs_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("done") << 0;
    QTest::newRow("refused with a code") << 4711;
    QTest::newRow("negative code") << -1;
    QTest::newRow("largest code") << 32767;
}

void MotionControlOnlineTransactionTest::resultIsPassedOnAsItIs()
{
    QFETCH(int, result);
    m_link->reply.result = static_cast<short>(result);
    Receiver receiver;
    MotionControlOnlineTransaction(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), &receiver).execute();
    QCOMPARE(receiver.arrived, QStringList{ QStringLiteral("15=%1").arg(result) });
}

void MotionControlOnlineTransactionTest::statusBytesAreCopiedWhatEverTheirLength()
{
    Receiver receiver;
    for (const int length : { 0, 1, 247, 248, 249, 1000 }) {
        m_link->reply.data = QByteArray(length, 'x');
        const QVariant param = QVariant::fromValue(GetAxisRefParam{ axis, 248 });
        MotionControlOnlineTransaction(AxisDebugGetAxisRef, param, &receiver).execute();
        QCOMPARE(receiver.lastReply, QByteArray(length, 'x'));
    }
}

void MotionControlOnlineTransactionTest::callMayTakeTenSeconds()
{
    Receiver receiver;
    MotionControlOnlineTransaction(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), &receiver).execute();
    QCOMPARE(m_link->lastDeadline.count(), 10000);
}

void MotionControlOnlineTransactionTest::codeOutsideTheTableDoesNothing_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("one past the last") << 16;
    QTest::newRow("negative") << -1;
    QTest::newRow("far away") << 100000;
}

void MotionControlOnlineTransactionTest::codeOutsideTheTableDoesNothing()
{
    QFETCH(int, code);
    Receiver receiver;
    MotionControlOnlineTransaction(code, QVariant::fromValue(ResetParam{ axis }), &receiver).execute();
    QVERIFY(m_link->requests.isEmpty());
    QVERIFY(receiver.arrived.isEmpty());
}

void MotionControlOnlineTransactionTest::parameterOfAnotherTypeGoesOutAsZeros_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QVariant>("param");
    QTest::newRow("a record of another request") << 4 << QVariant::fromValue(KeepAliveParam{ axis });
    QTest::newRow("no value at all") << 10 << QVariant();
    QTest::newRow("a text") << 2 << QVariant(QStringLiteral("7"));
    QTest::newRow("a record of the same fields") << 13 << QVariant::fromValue(JopNegParam{ axis, 1, 1, 1, 1, 1 });
}

void MotionControlOnlineTransactionTest::parameterOfAnotherTypeGoesOutAsZeros()
{
    QFETCH(int, code);
    QFETCH(QVariant, param);
    AxisRequest zeros;
    zeros.code = code;
    Receiver receiver;
    MotionControlOnlineTransaction(code, param, &receiver).execute();
    QCOMPARE(m_link->requests.size(), 1);
    QCOMPARE(textOf(m_link->requests.first()), textOf(zeros));
    QCOMPARE(receiver.arrived, QStringList{ QStringLiteral("%1=0").arg(code) });
}

void MotionControlOnlineTransactionTest::convertibleParameterIsConverted()
{
    QMetaType::registerConverter<QString, SetHomeParam>(
        [](const QString& text) { return SetHomeParam{ text.toShort() }; });
    Receiver receiver;
    MotionControlOnlineTransaction(AxisDebugSetHome, QVariant(QStringLiteral("7")), &receiver).execute();
    QCOMPARE(textOf(m_link->requests.first()), textOf(request(8)));
}

void MotionControlOnlineTransactionTest::groupRequestConnectsItsOneSignalOnly()
{
    Receiver receiver;
    const OpenTransaction transaction(AxisDebugGetAxesGroupRef, QVariant(), &receiver);
    QCOMPARE(transaction.connectedCodes(), QVector<int>{ 1 });
}

void MotionControlOnlineTransactionTest::anyOtherRequestConnectsTheFifteenOthers_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("status") << 0;
    QTest::newRow("jog forwards") << 13;
    QTest::newRow("reset") << 15;
    QTest::newRow("a code outside the table") << 16;
}

void MotionControlOnlineTransactionTest::anyOtherRequestConnectsTheFifteenOthers()
{
    QFETCH(int, code);
    Receiver receiver;
    const OpenTransaction transaction(code, QVariant(), &receiver);
    QCOMPARE(transaction.connectedCodes(), (QVector<int>{ 0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15 }));
    const OpenTransaction next(code, QVariant(), &receiver);
    QCOMPARE(next.connectedCodes().size(), 15);
}

void MotionControlOnlineTransactionTest::withoutSettingsNothingIsConnected()
{
    m_host->withhold(QStringLiteral("ISettings"));
    Receiver receiver;
    OpenTransaction transaction(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), &receiver);
    QVERIFY(transaction.connectedCodes().isEmpty());
    transaction.execute();
    QCOMPARE(m_link->requests.size(), 1);
    QVERIFY(receiver.arrived.isEmpty());
}

void MotionControlOnlineTransactionTest::pollTimeIsReadOnce()
{
    Receiver receiver;
    const MotionControlOnlineTransaction transaction(AxisDebugReset, QVariant(), &receiver);
    QCOMPARE(m_host->calls.entries(), QStringList{ QStringLiteral("settings.value(Communication/monitortime)") });
    QVERIFY(!m_host->settings.lastFallback(QStringLiteral("Communication/monitortime")).isValid());
}

void MotionControlOnlineTransactionTest::withoutHostTheRequestStillRuns()
{
    m_host.reset();
    Receiver receiver;
    MotionControlOnlineTransaction(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), &receiver).execute();
    QCOMPARE(m_link->requests.size(), 1);
    QVERIFY(receiver.arrived.isEmpty());
}

void MotionControlOnlineTransactionTest::resultFromAnotherThreadArrivesQueued()
{
    m_link->reply = { 12, QByteArrayLiteral("abc") };
    Receiver receiver;
    MotionControlOnlineTransaction status(
        AxisDebugGetAxisRef, QVariant::fromValue(GetAxisRefParam{ axis, 248 }), &receiver);
    MotionControlOnlineTransaction reset(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), &receiver);
    const std::unique_ptr<QThread> worker(QThread::create([&] {
        status.execute();
        reset.execute();
    }));
    worker->start();
    QVERIFY(worker->wait());
    QCOMPARE(m_link->thread, worker.get());
    QVERIFY2(receiver.arrived.isEmpty(), "nothing runs on the receiver before its own thread comes to it");
    QTRY_COMPARE(receiver.arrived, (QStringList{ QStringLiteral("0=3"), QStringLiteral("15=12") }));
    QCOMPARE(receiver.thread, QThread::currentThread());
    QCOMPARE(receiver.lastReply, QByteArrayLiteral("abc"));
}

void MotionControlOnlineTransactionTest::receiverThatIsGoneIsNotMissed()
{
    auto receiver = std::make_unique<Receiver>();
    OpenTransaction transaction(AxisDebugReset, QVariant::fromValue(ResetParam{ axis }), receiver.get());
    receiver.reset();
    QVERIFY(transaction.connectedCodes().isEmpty());
    transaction.execute();
    QCOMPARE(m_link->requests.size(), 1);
}

QTEST_MAIN(MotionControlOnlineTransactionTest)
#include "MotionControlOnlineTransactionTest.moc"
