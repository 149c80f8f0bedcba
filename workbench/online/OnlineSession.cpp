#include "workbench/online/OnlineSession.h"

#include "workbench/ConnectionState.h"

OnlineSession::OnlineSession(ConnectionState& transfer, const QString& controllerProgram, QObject* parent)
    : QObject(parent), m_transfer(transfer),
      m_program(controllerProgram.isEmpty() ? ControllerProcess::defaultProgram() : controllerProgram)
{
    connect(&m_process, &ControllerProcess::ready, this, &OnlineSession::onReady);
    connect(&m_process, &ControllerProcess::failed, this, &OnlineSession::giveUp);
    connect(&m_process, &ControllerProcess::ended, this, [this](const QString& reason) {
        giveUp(tr("The built-in controller has ended unexpectedly. %1").arg(reason));
    });
    connect(&m_connection, &ControllerConnection::opened, this, &OnlineSession::onOpened);
    connect(&m_connection, &ControllerConnection::lost, this, &OnlineSession::onLost);
    connect(&m_connection, &ControllerConnection::failed, this, [this](short, const QString& reason) {
        if (isWanted())
            giveUp(reason);
    });
}

OnlineSession::~OnlineSession()
{
    m_process.disconnect(this);
    m_connection.disconnect(this);
}

void OnlineSession::connectBuiltIn()
{
    if (isWanted())
        return;
    m_builtIn = true;
    m_direct = false;
    setState(Starting);
    m_process.start(m_program);
}

void OnlineSession::connectTo(const ControllerAddress& address, bool directLogin)
{
    if (isWanted())
        return;
    m_builtIn = false;
    m_direct = directLogin;
    m_connection.open(address);
    setState(Connecting);
}

void OnlineSession::onReady()
{
    m_connection.open(m_process.address());
    setState(Connecting);
}

void OnlineSession::onOpened()
{
    setState(Checking);
    emit loggedIn();
}

void OnlineSession::beginWork(bool onlineDebugging)
{
    if (!isLoggedIn())
        return;
    setState(Online);
    m_transfer.setOnline(true, !onlineDebugging);
    emit stateChanged();
}

void OnlineSession::checkAgain()
{
    if (m_state != Online)
        return;
    setState(Checking);
    m_transfer.setOnline(false, false);
}

void OnlineSession::onLost(const QString& reason)
{
    setState(Lost);
    m_transfer.setOnline(false, false);
    emit lost(reason);
}

void OnlineSession::disconnectNow()
{
    if (!isWanted())
        return;
    // The pages end their work first, then the session, then what it was with.
    m_transfer.setOnline(false, false);
    m_connection.close();
    m_process.stop();
    setState(Offline);
}

void OnlineSession::giveUp(const QString& text)
{
    disconnectNow();
    emit failed(text);
}

bool OnlineSession::isDirectLogin() const
{
    return m_transfer.isDirectLogin();
}

QString OnlineSession::target() const
{
    const ControllerAddress address = m_connection.address();
    return m_state == Starting || address.host.isEmpty() ? QString() : address.text();
}

void OnlineSession::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}
