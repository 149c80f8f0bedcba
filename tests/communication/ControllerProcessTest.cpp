#include "host/communication/ControllerProcess.h"

#include "controller/ControllerOptions.h"
#include "controller/Faults.h"
#include "controller/Mechanics.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/AxisRefLayout.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/ControllerClient.h"
#include "tests/communication/Promise.h"

#include <grpcpp/generic/generic_stub.h>
#include <grpcpp/grpcpp.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>

// The real program, as the workbench starts it, and what can happen to it.
namespace {
QString program()
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller");
}

/// A controller of its own and a connection to it, with two axes in it.
class Setup {
public:
    bool start(const QStringList& arguments = {})
    {
        QSignalSpy ready(&process, &ControllerProcess::ready);
        process.start(program(), arguments);
        if (!ready.wait(5000))
            return false;
        QSignalSpy opened(&connection, &ControllerConnection::opened);
        connection.open(process.address());
        return opened.wait(5000) && download();
    }

    bool download()
    {
        QSignalSpy downloaded(&connection, &ControllerConnection::axesDownloaded);
        connection.downloadAxes({ makeControllerAxis(0), makeControllerAxis(1) });
        return downloaded.wait(5000) && downloaded.at(0).at(0).value<DownloadOutcome>().result == 0;
    }

    bool jog(short timeout)
    {
        RpcCmdSend rpc;
        return rpc.rpc_AxisDebug_EnterDebugMode(0, 1, timeout) == 0 && rpc.rpc_AxisDebug_SetEnable(0, 1) == 0
            && QTest::qWaitFor([] { return statusOf(0).axisState == 3; }, 3000)
            && rpc.rpc_AxisDebug_JopPos(0, 1, 5, 1000, 1000, 0) == 0;
    }

    void signalProcess(int number) const { ::kill(static_cast<pid_t>(process.processId()), number); }

    ControllerProcess process;
    ControllerConnection connection;
};

/// Whether the program has the file through which signals come to it.
bool takesSignalsAsInput(qint64 processId)
{
    const QString folder = QStringLiteral("/proc/%1/fd").arg(processId);
    const QStringList files = QDir(folder).entryList(QDir::System | QDir::Files | QDir::Hidden);
    return std::any_of(files.begin(), files.end(), [&folder](const QString& file) {
        char target[64] = {};
        const QByteArray path = QFile::encodeName(folder + QLatin1Char('/') + file);
        return ::readlink(path.constData(), target, sizeof target - 1) > 0 && std::strstr(target, "signalfd");
    });
}

struct Outcome {
    int code = -1;
    QString said;
};

Outcome runProgram(const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(program(), arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(5000);
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardError() + process.readAllStandardOutput()) };
}
} // namespace

class ControllerProcessTest : public QObject {
    Q_OBJECT

private slots:
    void startsAndServes();
    void endsWithItsOwner();
    void endsWithItsInput();
    void signalsEndIt_data();
    void signalsEndIt();
    void isMissedWhenItIsKilled();
    void aProgramThatIsNotThereFails();
    void saysWhyItCannotStart_data();
    void saysWhyItCannotStart();
    void helpTellsAll();
    void onePortIsForOne();
    void tokenIsNotAmongItsArguments();
    void wrongTokenIsRefused();
    void killedWhileJogging();
    void pausedWhileJogging();
    void survivesGarbage();
    void survivesHalfOpenConnections();
    void saysNothingAboutStrangers();
    void faultsComeThroughItsInput();
    void faultsOfAxesAreKeptForThem();
    void cycleIsReportedOnDemand();
};

void ControllerProcessTest::startsAndServes()
{
    Setup setup;
    QVERIFY(setup.start());
    QVERIFY(setup.process.isRunning());
    QVERIFY(setup.process.address().isLoopback());
    QVERIFY(setup.jog(20000));
    QTRY_COMPARE(statusOf(0).setVelocity, 5.0);
    QTRY_VERIFY(statusOf(0).actualPosition > 1);
}

void ControllerProcessTest::endsWithItsOwner()
{
    qint64 id = 0;
    {
        ControllerProcess process;
        QSignalSpy ready(&process, &ControllerProcess::ready);
        QSignalSpy ended(&process, &ControllerProcess::ended);
        process.start(program());
        QVERIFY(ready.wait(5000));
        id = process.processId();
        QCOMPARE(::kill(static_cast<pid_t>(id), 0), 0);
        process.stop();
        QCOMPARE(ended.count(), 0);
        QVERIFY(!process.isRunning());
        process.start(program());
        QVERIFY(ready.wait(5000));
        id = process.processId();
    }
    QCOMPARE(::kill(static_cast<pid_t>(id), 0), -1);
}

void ControllerProcessTest::endsWithItsInput()
{
    // As when the workbench dies: the pipe closes and nobody says a word.
    QProcess process;
    process.start(program(), { QStringLiteral("--end-with-input") });
    process.write("token\n");
    QVERIFY(process.waitForReadyRead(5000));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(3000));
    QCOMPARE(process.exitCode(), 0);
}

void ControllerProcessTest::signalsEndIt_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("SIGINT while it waits for its token") << SIGINT << QByteArray();
    QTest::newRow("SIGTERM while it waits for its token") << SIGTERM << QByteArray();
    QTest::newRow("SIGHUP while it waits for its token") << SIGHUP << QByteArray();
    QTest::newRow("SIGTERM while it waits for the rest of its token") << SIGTERM << QByteArray("tok");
    QTest::newRow("SIGINT while it serves") << SIGINT << QByteArray("token\n");
    QTest::newRow("SIGTERM while it serves") << SIGTERM << QByteArray("token\n");
}

void ControllerProcessTest::signalsEndIt()
{
    QFETCH(int, signal);
    QFETCH(QByteArray, input);
    QProcess process;
    process.start(program(), QStringList());
    QVERIFY(process.waitForStarted(5000));
    if (!input.isEmpty())
        process.write(input);
    if (input.endsWith('\n'))
        QVERIFY(process.waitForReadyRead(5000));
    else
        QTRY_VERIFY(takesSignalsAsInput(process.processId()));
    ::kill(static_cast<pid_t>(process.processId()), signal);
    const bool ended = process.waitForFinished(3000);
    if (!ended)
        process.kill();
    QVERIFY(ended);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void ControllerProcessTest::isMissedWhenItIsKilled()
{
    ControllerProcess process;
    QSignalSpy ready(&process, &ControllerProcess::ready);
    QSignalSpy ended(&process, &ControllerProcess::ended);
    process.start(program());
    QVERIFY(ready.wait(5000));
    ::kill(static_cast<pid_t>(process.processId()), SIGKILL);
    QVERIFY(ended.wait(2000));
    QVERIFY(!process.isRunning());
}

void ControllerProcessTest::aProgramThatIsNotThereFails()
{
    ControllerProcess process;
    QSignalSpy failed(&process, &ControllerProcess::failed);
    process.start(QStringLiteral("/nowhere/kestrun-controller"));
    QTRY_COMPARE(failed.count(), 1);
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("/nowhere/kestrun-controller")));
    process.start(program(), { QStringLiteral("--listen"), QStringLiteral("nonsense") });
    QTRY_COMPARE(failed.count(), 2);
    QVERIFY(failed.at(1).at(0).toString().contains(QStringLiteral("nonsense")));
}

void ControllerProcessTest::saysWhyItCannotStart_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("word");
    const auto add = [](const char* name, const char* arguments, const QByteArray& input, const char* word) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << input << QString::fromLatin1(word);
    };
    add("no token", "", "", "token");
    add("an empty token", "", "\n", "token");
    add("another host without TLS", "--listen 0.0.0.0:0", "t\n", "make-certificates");
    add("no address", "--listen here", "t\n", "HOST:PORT");
    add("a port that is none", "--listen 127.0.0.1:70000", "t\n", "HOST:PORT");
    add("a host that there is not", "--listen no-such-host.invalid:0 --tls-key x", "t\n", "not given");
    add("a certificate that is not there", "--tls-authority a --tls-certificate b --tls-key c", "", "Cannot read a");
    add("an unknown option", "--colour red", "t\n", "--colour");
    add("an option without its value", "--listen", "t\n", "needs a value");
    add("an unknown fault", "--fault earthquake", "t\n", "earthquake");
    add("machines that are not there", "--mechanics /nowhere.json", "t\n", "/nowhere.json");
}

void ControllerProcessTest::saysWhyItCannotStart()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, input);
    QFETCH(QString, word);
    QStringList list;
    for (const QString& argument : arguments.split(QLatin1Char(' '))) {
        if (!argument.isEmpty())
            list.append(argument);
    }
    const Outcome outcome = runProgram(list, input);
    QVERIFY(outcome.code != 0);
    QVERIFY2(outcome.said.contains(word), qPrintable(outcome.said));
    QVERIFY(outcome.said.startsWith(QStringLiteral("kestrun-controller: ")));
}

void ControllerProcessTest::helpTellsAll()
{
    const Outcome outcome = runProgram({ QStringLiteral("--help") });
    QCOMPARE(outcome.code, 0);
    // What is told about stands in front of its line, between two blanks and the text.
    QStringList told;
    for (const QString& line : outcome.said.split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("^  (\\S.*?)(  |$)")).match(line);
        for (const QString& word : match.captured(1).split(QRegularExpression(QStringLiteral("[ ,]+")))) {
            // Words in capitals and in brackets stand for values.
            if (word.contains(QRegularExpression(QStringLiteral("^-?-?[a-z][-a-zA-Z]*$"))))
                told.append(word);
        }
    }
    QStringList known;
    for (const auto& names : { ControllerOptions::names(), MechanicsSettings::keys(), Faults::names() }) {
        for (const std::string& name : names)
            known.append(QString::fromStdString(name));
    }
    told.sort();
    known.sort();
    QCOMPARE(told, known);
    for (const char* command : { "\"fault LINE\"", "\"statistics\"", "\"quit\"" })
        QVERIFY2(outcome.said.contains(QLatin1String(command)), command);
}

void ControllerProcessTest::onePortIsForOne()
{
    Setup setup;
    QVERIFY(setup.start());
    const Outcome outcome = runProgram({ QStringLiteral("--listen"), setup.process.address().text() }, "t\n");
    QVERIFY(outcome.code != 0);
    QVERIFY2(outcome.said.contains(QStringLiteral("in use")), qPrintable(outcome.said));
}

void ControllerProcessTest::tokenIsNotAmongItsArguments()
{
    Setup setup;
    QVERIFY(setup.start());
    QFile arguments(QStringLiteral("/proc/%1/cmdline").arg(setup.process.processId()));
    QVERIFY(arguments.open(QIODevice::ReadOnly));
    QVERIFY(setup.process.address().token.size() >= 32);
    QVERIFY(!arguments.readAll().contains(setup.process.address().token));
    QFile environment(QStringLiteral("/proc/%1/environ").arg(setup.process.processId()));
    QVERIFY(environment.open(QIODevice::ReadOnly));
    QVERIFY(!environment.readAll().contains(setup.process.address().token));
}

void ControllerProcessTest::wrongTokenIsRefused()
{
    Setup setup;
    QVERIFY(setup.start());
    ControllerConnection stranger;
    QSignalSpy failed(&stranger, &ControllerConnection::failed);
    ControllerAddress address = setup.process.address();
    address.token = QByteArray(address.token.size(), 'a');
    stranger.open(address);
    QVERIFY(failed.wait(5000));
    QCOMPARE(failed.at(0).at(0).value<short>(), Diagnosis::refused);
    QVERIFY(setup.connection.isOpen());
}

void ControllerProcessTest::killedWhileJogging()
{
    Setup setup;
    QVERIFY(setup.start());
    QVERIFY(setup.jog(20000));
    QSignalSpy lost(&setup.connection, &ControllerConnection::lost);
    QElapsedTimer timer;
    timer.start();
    setup.signalProcess(SIGKILL);
    QVERIFY(lost.wait(2000));
    QVERIFY(timer.elapsed() < 1000);
    timer.start();
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_JopPos(0, 0, 5, 10, 10, 0), Diagnosis::notConnected);
    QVERIFY(timer.elapsed() < 500);
}

void ControllerProcessTest::pausedWhileJogging()
{
    Setup setup;
    QVERIFY(setup.start());
    QVERIFY(setup.jog(1000));
    QSignalSpy lost(&setup.connection, &ControllerConnection::lost);
    QSignalSpy opened(&setup.connection, &ControllerConnection::opened);
    // A link with traffic on it is no slower to be missed than a silent one.
    for (int i = 0; i < 60; ++i) {
        QVERIFY(statusOf(0).setVelocity > 0);
        QTest::qWait(10);
    }
    QElapsedTimer timer;
    timer.start();
    setup.signalProcess(SIGSTOP);
    QVERIFY(lost.wait(4000));
    QVERIFY2(timer.elapsed() < silenceNoticedMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_Reset(0), Diagnosis::notConnected);
    setup.signalProcess(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, 5000);
    QCOMPARE(lost.count(), 1);
    // Nobody has looked after the axis meanwhile.
    QTRY_COMPARE_WITH_TIMEOUT(statusOf(0).debugMode, std::uint8_t(0), 3000);
    QCOMPARE(statusOf(0).setVelocity, 0.0);
    QVERIFY(setup.jog(1000));
}

void ControllerProcessTest::survivesGarbage()
{
    Setup setup;
    QVERIFY(setup.start());
    QRandomGenerator random(20260101);
    for (int i = 0; i < 300; ++i) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, setup.process.address().port);
        QVERIFY(socket.waitForConnected(2000));
        QByteArray bytes(static_cast<int>(random.bounded(600)), Qt::Uninitialized);
        for (char& byte : bytes)
            byte = static_cast<char>(random.bounded(256));
        if (i % 3 == 0)
            bytes.prepend("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n");
        socket.write(bytes);
        socket.waitForBytesWritten(1000);
        if (i % 2 == 0)
            socket.abort();
    }
    QVERIFY(setup.process.isRunning());
    QVERIFY(setup.connection.isOpen());
    QVERIFY(setup.jog(20000));
}

void ControllerProcessTest::survivesHalfOpenConnections()
{
    Setup setup;
    QVERIFY(setup.start());
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    for (int i = 0; i < 100; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        sockets.back()->connectToHost(QHostAddress::LocalHost, setup.process.address().port);
        QVERIFY(sockets.back()->waitForConnected(2000));
        if (i % 2 == 0)
            sockets.back()->write("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n");
    }
    QVERIFY(setup.jog(20000));
    QTRY_COMPARE(statusOf(0).setVelocity, 5.0);
    ControllerConnection another;
    QSignalSpy opened(&another, &ControllerConnection::opened);
    another.open(setup.process.address());
    QVERIFY(opened.wait(3000));
}

void ControllerProcessTest::saysNothingAboutStrangers()
{
    QProcess process;
    process.start(program(), { QStringLiteral("--end-with-input") });
    process.write("token\n");
    QVERIFY(process.waitForReadyRead(5000));
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = process.readLine().trimmed().split(':').last().toUShort();
    // A login whose name of the client is no text.
    grpc::Slice slice("\x1a\x02\xff\xfe", 4);
    const grpc::ByteBuffer request(&slice, 1);
    grpc::ByteBuffer reply;
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(5));
    grpc::CompletionQueue queue;
    grpc::GenericStub stub(grpc::CreateChannel(address.text().toStdString(), grpc::InsecureChannelCredentials()));
    const auto call = stub.PrepareUnaryCall(&context, "/kestrun.protocol.AxisController/Login", request, &queue);
    grpc::Status status;
    void* tag = nullptr;
    bool fine = false;
    call->StartCall();
    call->Finish(&reply, &status, this);
    QVERIFY(queue.Next(&tag, &fine));
    QVERIFY(status.error_code() != grpc::StatusCode::DEADLINE_EXCEEDED);
    process.write("quit\n");
    QVERIFY(process.waitForFinished(3000));
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void ControllerProcessTest::faultsComeThroughItsInput()
{
    Setup setup;
    QVERIFY(setup.start({ QStringLiteral("--fault"), QStringLiteral("refuse 77 SetPosition") }));
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_SetPosition(0, 1), short(77));
    setup.process.command(QStringLiteral("fault wrong-length 10"));
    QTRY_COMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), 10);
    setup.process.command(QStringLiteral("fault none"));
    QTRY_COMPARE(rpc.rpc_AxisDebug_GetAxisRef(0, axisRefSize).size(), axisRefSize);
    QVERIFY(setup.jog(20000));
    setup.process.command(QStringLiteral("fault drive-error 42 0"));
    QTRY_COMPARE(statusOf(0).servoError, std::int16_t(42));
    QCOMPARE(statusOf(0).axisState, std::uint16_t(1));
}

void ControllerProcessTest::faultsOfAxesAreKeptForThem()
{
    Setup setup;
    QVERIFY(setup.start({ QStringLiteral("--fault"), QStringLiteral("power-lost 0"), QStringLiteral("--fault"),
        QStringLiteral("blocked 1") }));
    RpcCmdSend rpc;
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(0, 1, 20000), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 1), Diagnosis::powerLost);
    QCOMPARE(statusOf(0).communication, std::uint8_t(0));
    QCOMPARE(rpc.rpc_AxisDebug_EnterDebugMode(1, 1, 20000), Diagnosis::ok);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(1, 1), Diagnosis::ok);
    QTRY_COMPARE(statusOf(1).axisState, std::uint16_t(3));
    QCOMPARE(rpc.rpc_AxisDebug_MoveVel(1, 5, 1000, 1000, 0), Diagnosis::ok);
    QTRY_VERIFY(statusOf(1).setPosition > 0.5);
    QCOMPARE(statusOf(1).actualPosition, 0.0);
    setup.process.command(QStringLiteral("fault none"));
    QTRY_VERIFY(statusOf(1).actualPosition > 0.5);
    QCOMPARE(rpc.rpc_AxisDebug_SetEnable(0, 1), Diagnosis::ok);
    QTRY_COMPARE(statusOf(0).axisState, std::uint16_t(3));

    // On its input the program says whether the axis is there.
    QProcess process;
    process.start(program(), { QStringLiteral("--end-with-input") });
    process.write("token\n");
    QVERIFY(process.waitForReadyRead(5000));
    process.readLine();
    process.write("fault power-lost 5\n");
    QVERIFY(process.waitForReadyRead(5000));
    QCOMPARE(process.readLine(), QByteArray("waiting for the axis: fault power-lost 5\n"));
    process.write("fault late-replies 5\n");
    QVERIFY(process.waitForReadyRead(5000));
    QCOMPARE(process.readLine(), QByteArray("done fault late-replies 5\n"));
    process.write("quit\n");
    QVERIFY(process.waitForFinished(3000));
}

void ControllerProcessTest::cycleIsReportedOnDemand()
{
    QProcess process;
    process.start(program(), { QStringLiteral("--end-with-input") });
    process.write("token\n");
    QVERIFY(process.waitForReadyRead(5000));
    QVERIFY(process.readLine().startsWith("listening on 127.0.0.1:"));
    const auto cycles = [&process] {
        process.write("statistics\n");
        process.waitForReadyRead(5000);
        const QList<QByteArray> words = process.readLine().split(' ');
        return words.value(0) == "cycles" ? words.value(1).toInt() : -1;
    };
    QVERIFY(cycles() >= 0);
    QTRY_VERIFY(cycles() > 50);
    process.write("quit\n");
    QVERIFY(process.waitForFinished(3000));
    QCOMPARE(process.exitCode(), 0);
}

QTEST_GUILESS_MAIN(ControllerProcessTest)
#include "ControllerProcessTest.moc"
