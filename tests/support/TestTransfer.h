#pragma once

#include "sdk/Transfer.h"

class CallLog;

/// A connection whose state the test sets.
class TestTransfer : public Transfer {
    Q_OBJECT

public:
    explicit TestTransfer(CallLog& log);
    ~TestTransfer() override;

    bool isOnline() override;
    bool isDirectLogin() override;

    /// Sets the state and emits onlineState when it has changed.
    void setOnline(bool online);
    void setDirectLogin(bool direct);

private:
    CallLog& m_log;
    bool m_online = false;
    bool m_directLogin = false;
};
