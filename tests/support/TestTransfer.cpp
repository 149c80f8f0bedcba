#include "tests/support/TestTransfer.h"

#include "tests/support/CallLog.h"

TestTransfer::TestTransfer(CallLog& log) : m_log(log) { }

TestTransfer::~TestTransfer() = default;

bool TestTransfer::isOnline()
{
    m_log.add("transfer.isOnline");
    return m_online;
}

bool TestTransfer::isDirectLogin()
{
    m_log.add("transfer.isDirectLogin");
    return m_directLogin;
}

void TestTransfer::setOnline(bool online)
{
    if (m_online == online)
        return;
    m_online = online;
    emit onlineState(online);
}

void TestTransfer::setDirectLogin(bool direct)
{
    m_directLogin = direct;
}
