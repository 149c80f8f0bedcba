#include <QProcess>
#include <QtTest>

namespace {
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
    void leavesAxesAloneUnlessTold();
    void saysHowItIsUsed();

private:
    struct Outcome {
        int code = -1;
        QString said;
    };
    static Outcome check(const QStringList& faults, const QStringList& options, const QByteArray& token = "secret");
};

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
    QProcess client;
    client.start(program("kestrun-protocol-check"), QStringList{ line.section(QLatin1Char(' '), -1) } + options);
    client.write(token + '\n');
    client.closeWriteChannel();
    client.waitForFinished(60000);
    controller.write("quit\n");
    controller.waitForFinished(3000);
    return { client.exitCode(), QString::fromUtf8(client.readAllStandardOutput() + client.readAllStandardError()) };
}

void ProtocolCheckTest::passesTheReference()
{
    const Outcome outcome = check({}, { QStringLiteral("--yes") });
    QVERIFY2(outcome.code == 0, qPrintable(outcome.said));
    QVERIFY(outcome.said.contains(QStringLiteral("The controller speaks the protocol.")));
    QVERIFY2(outcome.said.count(QStringLiteral("fine ")) >= 40, qPrintable(outcome.said));
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
