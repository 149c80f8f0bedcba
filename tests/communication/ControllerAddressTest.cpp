#include "host/communication/ControllerAddress.h"

#include <QTemporaryFile>
#include <QtTest>

class ControllerAddressTest : public QObject {
    Q_OBJECT

private slots:
    void readsAddresses_data();
    void readsAddresses();
    void refusesWhatIsNoAddress_data();
    void refusesWhatIsNoAddress();
    void knowsLoopback_data();
    void knowsLoopback();
    void objectsWhereNobodyMayConnect();
};

void ControllerAddressTest::readsAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("loopback") << QStringLiteral("127.0.0.1:50700") << QStringLiteral("127.0.0.1") << 50700;
    QTest::newRow("a name, blanks around it") << QStringLiteral(" plc.line3:1 ") << QStringLiteral("plc.line3") << 1;
    QTest::newRow("version 6") << QStringLiteral("[::1]:65535") << QStringLiteral("::1") << 65535;
}

void ControllerAddressTest::readsAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, host);
    QFETCH(int, port);
    ControllerAddress address;
    QString error;
    QVERIFY(address.setHostAndPort(text, &error));
    QCOMPARE(address.host, host);
    QCOMPARE(int(address.port), port);
    QCOMPARE(address.text(), text.trimmed());
}

void ControllerAddressTest::refusesWhatIsNoAddress_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : { "", ":", "host", "host:", ":80", "host:0", "host:65536", "host:-1", "host:x", "::1:80",
             "[]:80", "host:80:90", "host: 80x" })
        QTest::newRow(text[0] ? text : "nothing") << QString::fromLatin1(text);
}

void ControllerAddressTest::refusesWhatIsNoAddress()
{
    QFETCH(QString, text);
    ControllerAddress address;
    address.host = QStringLiteral("before");
    address.port = 5;
    QString error;
    QVERIFY(!address.setHostAndPort(text, &error));
    QVERIFY(error.contains(QStringLiteral("127.0.0.1:50700")));
    QCOMPARE(address.host, QStringLiteral("before"));
    QCOMPARE(int(address.port), 5);
}

void ControllerAddressTest::knowsLoopback_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("loopback");
    QTest::newRow("127.0.0.1") << QStringLiteral("127.0.0.1") << true;
    QTest::newRow("127.255.1.2") << QStringLiteral("127.255.1.2") << true;
    QTest::newRow("localhost") << QStringLiteral("LocalHost") << true;
    QTest::newRow("::1") << QStringLiteral("::1") << true;
    QTest::newRow("128.0.0.1") << QStringLiteral("128.0.0.1") << false;
    QTest::newRow("a name that begins like it") << QStringLiteral("127.0.0.1.example.org") << false;
    QTest::newRow("too few numbers") << QStringLiteral("127.0.0") << false;
    QTest::newRow("numbers that are none") << QStringLiteral("127.0.0.256") << false;
    QTest::newRow("words") << QStringLiteral("127.a.b.c") << false;
    QTest::newRow("nothing") << QString() << false;
}

void ControllerAddressTest::knowsLoopback()
{
    QFETCH(QString, host);
    QFETCH(bool, loopback);
    ControllerAddress address;
    address.host = host;
    QCOMPARE(address.isLoopback(), loopback);
}

void ControllerAddressTest::objectsWhereNobodyMayConnect()
{
    ControllerAddress address;
    QVERIFY(!address.objection().isEmpty());
    address.host = QStringLiteral("127.0.0.1");
    QVERIFY(!address.objection().isEmpty());
    address.port = 50700;
    QVERIFY(address.objection().isEmpty());
    address.host = QStringLiteral("plc.line3");
    QVERIFY(address.objection().contains(QStringLiteral("scripts/make-certificates")));
    QTemporaryFile file;
    QVERIFY(file.open());
    address.authorityFile = file.fileName();
    address.certificateFile = file.fileName();
    QVERIFY(address.objection().contains(QStringLiteral("not given")));
    address.keyFile = QStringLiteral("/nowhere/key.pem");
    QVERIFY(address.objection().contains(QStringLiteral("/nowhere/key.pem")));
    address.keyFile = file.fileName();
    QVERIFY(address.objection().isEmpty());
}

QTEST_APPLESS_MAIN(ControllerAddressTest)
#include "ControllerAddressTest.moc"
