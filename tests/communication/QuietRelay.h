#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

/// Passes bytes on to a port of this machine and back, and can fall silent without closing anything: a link that is
/// half open. It can also cut the clients off alone. Lives on the thread of its maker, whose events it needs.
class QuietRelay : public QObject {
public:
    explicit QuietRelay(int port)
    {
        if (!m_server.listen(QHostAddress::LocalHost))
            qFatal("the relay cannot listen");
        connect(&m_server, &QTcpServer::newConnection, this, [this, port] {
            QTcpSocket* client = m_server.nextPendingConnection();
            m_clients.append(client);
            connect(client, &QTcpSocket::disconnected, this, [this, client] { m_clients.removeOne(client); });
            auto* server = new QTcpSocket(client);
            server->connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
            pass(client, server);
            pass(server, client);
        });
    }

    quint16 port() const { return m_server.serverPort(); }

    /// Cuts the link for those who are connected now; the other end hears nothing of it, and who comes again gets
    /// through.
    void hangUp()
    {
        const QList<QTcpSocket*> clients = m_clients;
        for (QTcpSocket* client : clients)
            client->abort();
    }

    /// The same for who came first of those who are there: the session loses its link, the way of the emergency stop
    /// stays.
    void hangUpOnFirst() { m_clients.first()->abort(); }

    bool silent = false;

    /// Ends a silence: what was held back gets through now.
    void speak()
    {
        silent = false;
        const auto sockets = m_server.findChildren<QTcpSocket*>();
        for (QTcpSocket* socket : sockets)
            QMetaObject::invokeMethod(socket, "readyRead");
    }

    /// Nobody else gets through until accepting resumes.
    void pauseAccepting() { m_server.pauseAccepting(); }
    void resumeAccepting() { m_server.resumeAccepting(); }

    /// Closes all that goes through it, on both sides.
    void cut() const
    {
        const auto sockets = m_server.findChildren<QTcpSocket*>();
        for (QTcpSocket* socket : sockets)
            socket->abort();
    }

private:
    void pass(QTcpSocket* from, QTcpSocket* to)
    {
        connect(from, &QTcpSocket::readyRead, to, [this, from, to] {
            if (!silent && to->isOpen())
                to->write(from->readAll());
        });
    }

    QList<QTcpSocket*> m_clients;
    // The last member: sockets that go with it still leave the list.
    QTcpServer m_server;
};
