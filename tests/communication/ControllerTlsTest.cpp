#include "host/communication/ControllerConnection.h"
#include "host/communication/ControllerProcess.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"
#include "tests/communication/Certificates.h"

#include <grpcpp/grpcpp.h>

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpSocket>
#include <QtTest>

#include <chrono>
#include <memory>
#include <vector>

namespace proto = kestrun::protocol;

// The real program behind mutual TLS: who gets in, who does not, and what strangers can do to it.
namespace {
const QString ours = QStringLiteral("ours");
const QString strange = QStringLiteral("strange");
const QString elsewhere = QStringLiteral("elsewhere");

/// A client of no library of ours, with what it is given.
struct BareClient {
    BareClient(const ControllerAddress& address, const std::shared_ptr<grpc::ChannelCredentials>& credentials)
        : stub(proto::AxisController::NewStub(grpc::CreateChannel(address.text().toStdString(), credentials)))
    {
    }

    grpc::Status handshake() const
    {
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(3));
        proto::HandshakeReply reply;
        return stub->Handshake(&context, proto::HandshakeRequest(), &reply);
    }

    /// The session, or nothing where the transport or the controller refuses it.
    std::string login() const
    {
        grpc::ClientContext context;
        context.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(3));
        proto::LoginRequest request;
        proto::LoginReply reply;
        request.set_version(protocolVersion);
        return stub->Login(&context, request, &reply).ok() ? reply.session() : std::string();
    }

    std::unique_ptr<proto::AxisController::Stub> stub;
};

/// The first bytes of an encrypted connection: the head of a hello of 512 bytes, and some of it.
QByteArray beginningOfHello(int bytes)
{
    return QByteArray::fromHex("16030102000100") + QByteArray(bytes, '\1');
}
} // namespace

class ControllerTlsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void certificatesLetInWhoHasThem_data();
    void certificatesLetInWhoHasThem();
    void theAuthorityAloneIsNotEnough_data();
    void theAuthorityAloneIsNotEnough();
    void survivesGarbage_data();
    void survivesGarbage();
    void survivesHalfOpenConnections_data();
    void survivesHalfOpenConnections();

private:
    bool start(ControllerProcess& process, const QString& set) const;
    ControllerAddress withFiles(ControllerAddress address, const QString& own, const QString& trusted) const;
    bool lets(const ControllerAddress& address) const;
    bool encrypt(QSslSocket& socket, quint16 port) const;

    Certificates m_certificates;
};

void ControllerTlsTest::initTestCase()
{
    const QStringList here{ QStringLiteral("localhost"), QStringLiteral("127.0.0.1") };
    QVERIFY(m_certificates.make(ours, here));
    QVERIFY(m_certificates.make(strange, here));
    QVERIFY(m_certificates.make(elsewhere, { QStringLiteral("elsewhere.example") }, ours));
    QCOMPARE(m_certificates.text(elsewhere, QStringLiteral("authority.pem")),
        m_certificates.text(ours, QStringLiteral("authority.pem")));
}

bool ControllerTlsTest::start(ControllerProcess& process, const QString& set) const
{
    QSignalSpy ready(&process, &ControllerProcess::ready);
    process.start(QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller"), m_certificates.controllerArguments(set));
    return ready.wait(5000);
}

ControllerAddress ControllerTlsTest::withFiles(
    ControllerAddress address, const QString& own, const QString& trusted) const
{
    address.authorityFile = m_certificates.file(trusted, QStringLiteral("authority.pem"));
    address.certificateFile = m_certificates.file(own, QStringLiteral("workbench.pem"));
    address.keyFile = m_certificates.file(own, QStringLiteral("workbench.key"));
    return address;
}

bool ControllerTlsTest::lets(const ControllerAddress& address) const
{
    ControllerConnection connection;
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy failed(&connection, &ControllerConnection::failed);
    connection.open(address);
    return QTest::qWaitFor([&] { return opened.count() + failed.count() > 0; }, 8000) && opened.count() == 1
        && connection.isOpen();
}

/// As far as a client of our authority gets before its first word to the service.
bool ControllerTlsTest::encrypt(QSslSocket& socket, quint16 port) const
{
    QSslConfiguration configuration = socket.sslConfiguration();
    configuration.setAllowedNextProtocols({ QByteArray("h2") });
    configuration.setCaCertificates(
        QSslCertificate::fromPath(m_certificates.file(ours, QStringLiteral("authority.pem"))));
    configuration.setLocalCertificate(
        QSslCertificate::fromPath(m_certificates.file(ours, QStringLiteral("workbench.pem"))).value(0));
    const std::string key = m_certificates.text(ours, QStringLiteral("workbench.key"));
    configuration.setPrivateKey(QSslKey(QByteArray::fromStdString(key), QSsl::Ec));
    socket.setSslConfiguration(configuration);
    socket.connectToHostEncrypted(QStringLiteral("127.0.0.1"), port);
    return socket.waitForEncrypted(3000);
}

void ControllerTlsTest::certificatesLetInWhoHasThem_data()
{
    QTest::addColumn<QString>("controller");
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("trusted");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<bool>("fine");
    const QByteArray none;
    const QByteArray some("t");
    QTest::newRow("with the certificate of the same authority") << ours << ours << ours << none << true;
    QTest::newRow("with that certificate and a token besides") << ours << ours << ours << some << true;
    QTest::newRow("with the certificate of another authority") << ours << strange << ours << none << false;
    QTest::newRow("in the clear") << ours << QString() << QString() << some << false;
    QTest::newRow("with a controller that another authority has signed") << ours << ours << strange << none << false;
    QTest::newRow("with a controller whose certificate is for another host")
        << elsewhere << ours << ours << none << false;
}

void ControllerTlsTest::certificatesLetInWhoHasThem()
{
    QFETCH(QString, controller);
    QFETCH(QString, own);
    QFETCH(QString, trusted);
    QFETCH(QByteArray, token);
    QFETCH(bool, fine);
    ControllerProcess process;
    QVERIFY(start(process, controller));
    ControllerAddress address = process.address();
    if (!own.isEmpty())
        address = withFiles(address, own, trusted);
    address.token = token;
    QCOMPARE(lets(address), fine);
}

void ControllerTlsTest::theAuthorityAloneIsNotEnough_data()
{
    QTest::addColumn<bool>("certificate");
    QTest::newRow("with a certificate") << true;
    QTest::newRow("with none") << false;
}

void ControllerTlsTest::theAuthorityAloneIsNotEnough()
{
    QFETCH(bool, certificate);
    ControllerProcess process;
    QVERIFY(start(process, ours));
    grpc::SslCredentialsOptions options;
    options.pem_root_certs = m_certificates.text(ours, QStringLiteral("authority.pem"));
    if (certificate) {
        options.pem_cert_chain = m_certificates.text(ours, QStringLiteral("workbench.pem"));
        options.pem_private_key = m_certificates.text(ours, QStringLiteral("workbench.key"));
    }
    const BareClient client(process.address(), grpc::SslCredentials(options));
    const grpc::Status status = client.handshake();
    QCOMPARE(status.ok(), certificate);
    if (!certificate)
        QCOMPARE(int(status.error_code()), int(grpc::StatusCode::UNAVAILABLE));
    QCOMPARE(client.login().empty(), !certificate);
}

void ControllerTlsTest::survivesGarbage_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("encrypted");
    QTest::newRow("from the first byte") << QByteArray() << false;
    QTest::newRow("in the clear, where encrypted bytes should be")
        << QByteArray("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n") << false;
    QTest::newRow("in the first message of the encryption") << beginningOfHello(20) << false;
    QTest::newRow("inside the encryption") << QByteArray() << true;
    QTest::newRow("inside the encryption, after the greeting")
        << QByteArray("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n") << true;
}

void ControllerTlsTest::survivesGarbage()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, encrypted);
    ControllerProcess process;
    QVERIFY(start(process, ours));
    const quint16 port = process.address().port;
    QRandomGenerator random(20260101);
    for (int i = 0; i < (encrypted ? 40 : 200); ++i) {
        QSslSocket socket;
        if (encrypted) {
            QVERIFY2(encrypt(socket, port), qPrintable(socket.errorString()));
        } else {
            socket.connectToHost(QStringLiteral("127.0.0.1"), port);
            QVERIFY(socket.waitForConnected(2000));
        }
        QByteArray bytes = before;
        for (int rest = static_cast<int>(random.bounded(600)); rest > 0; --rest)
            bytes.append(static_cast<char>(random.bounded(256)));
        socket.write(bytes);
        socket.waitForBytesWritten(1000);
        if (i % 2 == 0)
            socket.abort();
    }
    QVERIFY(process.isRunning());
    QVERIFY(lets(withFiles(process.address(), ours, ours)));
}

void ControllerTlsTest::survivesHalfOpenConnections_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("encrypted");
    QTest::newRow("that say nothing") << QByteArray() << false;
    QTest::newRow("that say half a hello") << beginningOfHello(100) << false;
    QTest::newRow("that say nothing once they are encrypted") << QByteArray() << true;
}

void ControllerTlsTest::survivesHalfOpenConnections()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, encrypted);
    ControllerProcess process;
    QVERIFY(start(process, ours));
    const quint16 port = process.address().port;
    std::vector<std::unique_ptr<QSslSocket>> sockets;
    for (int i = 0; i < 100; ++i) {
        sockets.push_back(std::make_unique<QSslSocket>());
        if (encrypted) {
            QVERIFY2(encrypt(*sockets.back(), port), qPrintable(sockets.back()->errorString()));
            continue;
        }
        sockets.back()->connectToHost(QStringLiteral("127.0.0.1"), port);
        QVERIFY(sockets.back()->waitForConnected(2000));
        if (!before.isEmpty()) {
            sockets.back()->write(before);
            QVERIFY(sockets.back()->waitForBytesWritten(1000));
        }
    }
    QVERIFY(lets(withFiles(process.address(), ours, ours)));
    QVERIFY(process.isRunning());
}

QTEST_GUILESS_MAIN(ControllerTlsTest)
#include "ControllerTlsTest.moc"
