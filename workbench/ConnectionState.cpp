#include "workbench/ConnectionState.h"

ConnectionState::ConnectionState(QObject* parent) : Transfer(parent) { }

ConnectionState::~ConnectionState() = default;

bool ConnectionState::isOnline()
{
    return m_online;
}

bool ConnectionState::isDirectLogin()
{
    return m_online && m_directLogin;
}

void ConnectionState::setOnline(bool online, bool directLogin)
{
    m_directLogin = directLogin;
    if (m_online == online)
        return;
    m_online = online;
    emit onlineState(online);
}
