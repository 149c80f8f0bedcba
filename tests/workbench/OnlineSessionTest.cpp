#include "workbench/online/OnlineSession.h"
#include "tests/communication/ControllerHost.h"
#include "tests/communication/Promise.h"
#include "tests/communication/QuietRelay.h"
#include "workbench/ConnectionState.h"
#include "workbench/online/ConnectionIndicator.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

QString program()
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller");
}

/// A session that begins work as soon as it may, with what it tells.
struct Desk {
    explicit Desk(const QString& controller = program())
        : session(transfer, controller), indicator(session), online(&transfer, &Transfer::onlineState),
          failed(&session, &OnlineSession::failed), lost(&session, &OnlineSession::lost)
    {
        QObject::connect(
            &session, &OnlineSession::loggedIn, &session, [this] { session.beginWork(!session.wantsDirectLogin()); });
        QObject::connect(&session, &OnlineSession::stateChanged, &session, [this] {
            texts.append(indicator.text());
            symbols.append(indicator.symbol());
        });
    }

    bool isOnlineSoon() const
    {
        return QTest::qWaitFor([this] { return session.state() == OnlineSession::Online; }, 8000);
    }

    ConnectionState transfer;
    OnlineSession session;
    ConnectionIndicator indicator;
    QSignalSpy online;
    QSignalSpy failed;
    QSignalSpy lost;
    QStringList texts;
    QStringList symbols;
};

} // namespace

class OnlineSessionTest : public QObject {
    Q_OBJECT

private slots:
    void theBuiltInControllerIsStartedAndEnded();
    void theBuiltInControllerEndsWithTheSessionObject();
    void aBuiltInControllerThatIsKilledIsReported();
    void aPausedBuiltInControllerComesBack();
    void aPausedBuiltInControllerDoesNotHoldUpTheEnd();
    void aProgramThatIsNotThereIsNamed();
    void aProgramThatCannotStartSaysWhy();
    void whoMayNotConnectIsToldWhyAndWhere_data();
    void whoMayNotConnectIsToldWhyAndWhere();
    void aControllerOfAnotherAuthorityIsNotTrusted();
    void anotherVersionIsRefusedAndNamed();
    void aReplacedControllerEndsTheConnection();
    void aLossIsToldOnceAndTheLinkComesBack();
    void aDirectLoginHasNoDebugging();
    void checkingAgainTakesTheWorkOffLine();
    void everyStateHasItsTextAndSymbol();
    void disconnectingIsPossibleInEveryState_data();
    void disconnectingIsPossibleInEveryState();
    void aSecondWishChangesNothing();
};

void OnlineSessionTest::theBuiltInControllerIsStartedAndEnded()
{
    Desk desk;
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
    QVERIFY(desk.transfer.isOnline() && !desk.transfer.isDirectLogin());
    QVERIFY(desk.session.isBuiltIn());
    const qint64 process = desk.session.process().processId();
    QVERIFY(process > 0);
    desk.session.disconnectNow();
    QVERIFY(!desk.transfer.isOnline());
    QCOMPARE(desk.online.count(), 2);
    QVERIFY(!QFile::exists(QStringLiteral("/proc/%1").arg(process)));
    QVERIFY(desk.failed.isEmpty() && desk.lost.isEmpty());
    // And once more.
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
}

void OnlineSessionTest::theBuiltInControllerEndsWithTheSessionObject()
{
    qint64 process = 0;
    {
        Desk desk;
        desk.session.connectBuiltIn();
        QVERIFY(desk.isOnlineSoon());
        process = desk.session.process().processId();
    }
    QVERIFY(!QFile::exists(QStringLiteral("/proc/%1").arg(process)));
}

void OnlineSessionTest::aBuiltInControllerThatIsKilledIsReported()
{
    Desk desk;
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
    ::kill(static_cast<pid_t>(desk.session.process().processId()), SIGKILL);
    QTRY_COMPARE_WITH_TIMEOUT(desk.session.state(), OnlineSession::Offline, 3000);
    QCOMPARE(desk.failed.count(), 1);
    QVERIFY(desk.failed.at(0).at(0).toString().startsWith(QStringLiteral("The built-in controller has ended")));
    QVERIFY(!desk.transfer.isOnline());
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
}

void OnlineSessionTest::aPausedBuiltInControllerComesBack()
{
    Desk desk;
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
    const auto process = static_cast<pid_t>(desk.session.process().processId());
    QElapsedTimer timer;
    timer.start();
    ::kill(process, SIGSTOP);
    QTRY_COMPARE_WITH_TIMEOUT(desk.session.state(), OnlineSession::Lost, 4000);
    QVERIFY2(timer.elapsed() < silenceNoticedMs, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!desk.transfer.isOnline());
    ::kill(process, SIGCONT);
    QVERIFY(desk.isOnlineSoon());
    QVERIFY(desk.transfer.isOnline());
    QCOMPARE(desk.lost.count(), 1);
}

void OnlineSessionTest::aPausedBuiltInControllerDoesNotHoldUpTheEnd()
{
    Desk desk;
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
    const qint64 process = desk.session.process().processId();
    ::kill(static_cast<pid_t>(process), SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    desk.session.disconnectNow();
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!QFile::exists(QStringLiteral("/proc/%1").arg(process)));
}

void OnlineSessionTest::aProgramThatIsNotThereIsNamed()
{
    Desk desk(QStringLiteral("/nowhere/kestrun-controller"));
    desk.session.connectBuiltIn();
    QTRY_COMPARE(desk.failed.count(), 1);
    const QString text = desk.failed.at(0).at(0).toString();
    QVERIFY2(text.contains(QStringLiteral("/nowhere/kestrun-controller")), qPrintable(text));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
}

void OnlineSessionTest::aProgramThatCannotStartSaysWhy()
{
    QTemporaryDir directory;
    const QString script = directory.filePath(QStringLiteral("controller"));
    QFile file(script);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\necho 'the machine is on fire' >&2\nexit 1\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Desk desk(script);
    desk.session.connectBuiltIn();
    QTRY_COMPARE(desk.failed.count(), 1);
    QVERIFY(desk.failed.at(0).at(0).toString().contains(QStringLiteral("the machine is on fire")));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
}

void OnlineSessionTest::whoMayNotConnectIsToldWhyAndWhere_data()
{
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("word");
    const QString here = QStringLiteral("127.0.0.1");
    QTest::newRow("a wrong token") << QByteArray("wrong") << here << QString() << QStringLiteral("refused the login");
    QTest::newRow("no token") << QByteArray() << here << QString() << QStringLiteral("refused the login");
    QTest::newRow("another host without certificates")
        << QByteArray("right") << QStringLiteral("192.0.2.1") << QString() << QStringLiteral("make-certificates");
    QTest::newRow("a certificate that is none")
        << QByteArray() << here << QStringLiteral("none") << QStringLiteral("no PEM file");
    QTest::newRow("a certificate that is not there")
        << QByteArray() << here << QStringLiteral("missing") << QStringLiteral("cannot be read");
    QTest::newRow("nobody there") << QByteArray("right") << QStringLiteral("::1") << QString()
                                  << QStringLiteral("No controller answers");
}

void OnlineSessionTest::whoMayNotConnectIsToldWhyAndWhere()
{
    QFETCH(QByteArray, token);
    QFETCH(QString, host);
    QFETCH(QString, certificate);
    QFETCH(QString, word);
    ControllerHost controller;
    QTemporaryDir directory;
    ControllerAddress address = controller.address();
    address.token = token;
    address.host = host;
    QString where = address.text();
    if (!certificate.isEmpty()) {
        where = directory.filePath(certificate);
        address.authorityFile = address.certificateFile = address.keyFile = where;
        QFile file(where);
        if (certificate == QLatin1String("none") && file.open(QIODevice::WriteOnly))
            file.write("not at all");
    }
    Desk desk;
    desk.session.connectTo(address, false);
    QTRY_COMPARE_WITH_TIMEOUT(desk.failed.count(), 1, 8000);
    const QString text = desk.failed.at(0).at(0).toString();
    QVERIFY2(text.contains(word), qPrintable(text));
    QVERIFY2(text.contains(where), qPrintable(text));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
    QVERIFY(desk.online.isEmpty());
}

void OnlineSessionTest::aControllerOfAnotherAuthorityIsNotTrusted()
{
    QTemporaryDir directory;
    const auto file = [&directory](const char* set, const char* name) {
        return directory.filePath(QString::fromLatin1(set) + QLatin1Char('/') + QString::fromLatin1(name));
    };
    for (const char* set : { "theirs", "mine" })
        QCOMPARE(QProcess::execute(QStringLiteral(KESTRUN_SOURCE_DIR "/scripts/make-certificates"),
                     { directory.filePath(QString::fromLatin1(set)), QStringLiteral("localhost"),
                         QStringLiteral("127.0.0.1") }),
            0);
    MotionController controller({});
    ServerOptions options;
    options.authorityFile = file("theirs", "authority.pem").toStdString();
    options.certificateFile = file("theirs", "controller.pem").toStdString();
    options.keyFile = file("theirs", "controller.key").toStdString();
    ControllerServer server(&controller, options);
    std::string error;
    QVERIFY2(server.start(&error), error.c_str());
    ControllerAddress address;
    address.host = QStringLiteral("127.0.0.1");
    address.port = static_cast<quint16>(server.port());
    address.authorityFile = file("mine", "authority.pem");
    address.certificateFile = file("mine", "workbench.pem");
    address.keyFile = file("mine", "workbench.key");
    Desk desk;
    desk.session.connectTo(address, false);
    QTRY_COMPARE_WITH_TIMEOUT(desk.failed.count(), 1, 8000);
    const QString text = desk.failed.at(0).at(0).toString();
    QVERIFY2(text.contains(address.text()), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("or the certificates do not fit")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("verify failed"), Qt::CaseInsensitive), qPrintable(text));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
    server.shutdown();
}

void OnlineSessionTest::anotherVersionIsRefusedAndNamed()
{
    ControllerHost controller;
    controller.fault("version 7");
    Desk desk;
    desk.session.connectTo(controller.address(), false);
    QTRY_COMPARE_WITH_TIMEOUT(desk.failed.count(), 1, 8000);
    const QString text = desk.failed.at(0).at(0).toString();
    QVERIFY2(
        text.contains(QStringLiteral("version 7")) && text.contains(QStringLiteral("version 1")), qPrintable(text));
    QVERIFY(text.contains(controller.address().text()));
}

void OnlineSessionTest::aReplacedControllerEndsTheConnection()
{
    ControllerHost controller;
    Desk desk;
    desk.session.connectTo(controller.address(), false);
    QVERIFY(desk.isOnlineSoon());
    controller.fault("version 2");
    controller.fault("drop-link");
    QTRY_COMPARE_WITH_TIMEOUT(desk.failed.count(), 1, 8000);
    QVERIFY(desk.failed.at(0).at(0).toString().contains(QStringLiteral("version 2")));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
    QVERIFY(!desk.transfer.isOnline());
    QCOMPARE(desk.online.count(), 2);
}

void OnlineSessionTest::aLossIsToldOnceAndTheLinkComesBack()
{
    ControllerHost controller;
    Desk desk;
    desk.session.connectTo(controller.address(), false);
    QVERIFY(desk.isOnlineSoon());
    const int port = controller.server->port();
    controller.server->shutdown();
    QTRY_COMPARE_WITH_TIMEOUT(desk.session.state(), OnlineSession::Lost, 3000);
    QVERIFY(!desk.transfer.isOnline());
    QVERIFY(desk.session.isWanted());
    controller.listen(port);
    QVERIFY(desk.isOnlineSoon());
    QCOMPARE(desk.lost.count(), 1);
    QCOMPARE(desk.online.count(), 3);
}

void OnlineSessionTest::aDirectLoginHasNoDebugging()
{
    ControllerHost controller;
    Desk desk;
    desk.session.connectTo(controller.address(), true);
    QVERIFY(desk.isOnlineSoon());
    QVERIFY(desk.transfer.isOnline() && desk.transfer.isDirectLogin());
    QVERIFY(desk.session.isDirectLogin());
    QVERIFY(desk.indicator.text().startsWith(QStringLiteral("Direct login")));
}

void OnlineSessionTest::checkingAgainTakesTheWorkOffLine()
{
    ControllerHost host;
    Desk desk;
    desk.session.checkAgain();
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
    desk.session.connectTo(host.address(), false);
    QVERIFY(desk.isOnlineSoon());
    desk.online.clear();
    desk.session.checkAgain();
    QCOMPARE(desk.session.state(), OnlineSession::Checking);
    QVERIFY(desk.session.isLoggedIn());
    QVERIFY(!desk.transfer.isOnline());
    // Once more changes nothing.
    desk.session.checkAgain();
    QCOMPARE(desk.online.count(), 1);
    desk.session.beginWork(true);
    QCOMPARE(desk.session.state(), OnlineSession::Online);
    QVERIFY(desk.transfer.isOnline());
    QCOMPARE(desk.online.count(), 2);
    QCOMPARE(desk.lost.count() + desk.failed.count(), 0);
}

void OnlineSessionTest::everyStateHasItsTextAndSymbol()
{
    Desk desk;
    QCOMPARE(desk.indicator.text(), QStringLiteral("Offline"));
    QCOMPARE(desk.indicator.symbol(), QStringLiteral("network-disconnect"));
    desk.session.connectBuiltIn();
    QVERIFY(desk.isOnlineSoon());
    const QString where = desk.session.target();
    QVERIFY(where.startsWith(QStringLiteral("127.0.0.1:")));
    const auto process = static_cast<pid_t>(desk.session.process().processId());
    ::kill(process, SIGSTOP);
    QTRY_COMPARE_WITH_TIMEOUT(desk.session.state(), OnlineSession::Lost, 3000);
    ::kill(process, SIGCONT);
    desk.session.disconnectNow();
    desk.texts.removeDuplicates();
    const QStringList expected{ QStringLiteral("Starting the built-in controller…"),
        QStringLiteral("Connecting to %1…").arg(where),
        QStringLiteral("Connected to %1, comparing the axes…").arg(where),
        QStringLiteral("Online: Soft controller at %1, protocol version 1").arg(where),
        QStringLiteral("Connection to %1 lost, reconnecting…").arg(where), QStringLiteral("Offline") };
    QCOMPARE(desk.texts, expected);
    QVERIFY(desk.symbols.contains(QStringLiteral("view-refresh")));
    QVERIFY(desk.symbols.contains(QStringLiteral("network-connect")));
    QVERIFY(desk.symbols.contains(QStringLiteral("dialog-warning")));
    QCOMPARE(desk.symbols.last(), QStringLiteral("network-disconnect"));
    QCOMPARE(desk.indicator.accessibleName(), QStringLiteral("Offline"));
}

void OnlineSessionTest::disconnectingIsPossibleInEveryState_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("while the controller is being started") << int(OnlineSession::Starting);
    QTest::newRow("while connecting") << int(OnlineSession::Connecting);
    QTest::newRow("online") << int(OnlineSession::Online);
    QTest::newRow("after a loss") << int(OnlineSession::Lost);
}

void OnlineSessionTest::disconnectingIsPossibleInEveryState()
{
    QFETCH(int, state);
    ControllerHost controller;
    QuietRelay relay(controller.server->port());
    ControllerAddress address = controller.address();
    address.port = relay.port();
    Desk desk;
    if (state == OnlineSession::Starting) {
        desk.session.connectBuiltIn();
    } else {
        relay.silent = state == OnlineSession::Connecting;
        desk.session.connectTo(address, false);
        if (state != OnlineSession::Connecting)
            QVERIFY(desk.isOnlineSoon());
        relay.silent = relay.silent || state == OnlineSession::Lost;
    }
    QTRY_COMPARE_WITH_TIMEOUT(int(desk.session.state()), state, 4000);
    QElapsedTimer timer;
    timer.start();
    desk.session.disconnectNow();
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(desk.session.state(), OnlineSession::Offline);
    QVERIFY(!desk.session.process().isRunning());
    // Nothing comes of what was under way.
    QVERIFY(!QTest::qWaitFor([&desk] { return desk.session.isWanted() || !desk.failed.isEmpty(); }, 300));
}

void OnlineSessionTest::aSecondWishChangesNothing()
{
    ControllerHost controller;
    Desk desk;
    desk.session.connectTo(controller.address(), false);
    QVERIFY(desk.isOnlineSoon());
    desk.session.connectBuiltIn();
    desk.session.connectTo(ControllerAddress(), true);
    QCOMPARE(desk.session.state(), OnlineSession::Online);
    QVERIFY(!desk.session.isBuiltIn() && !desk.session.isDirectLogin());
    QVERIFY(!desk.session.process().isRunning());
}

QTEST_MAIN(OnlineSessionTest)
#include "OnlineSessionTest.moc"
