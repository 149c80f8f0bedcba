#pragma once

#include "sdk/Transfer.h"

/// The state of the connection to the controller, as the rest of the program sees it; published as "zelport.Transfer".
/// Offline until whoever makes connections says otherwise.
class ConnectionState : public Transfer {
    Q_OBJECT

public:
    explicit ConnectionState(QObject* parent = nullptr);
    ~ConnectionState() override;

    bool isOnline() override;
    bool isDirectLogin() override;

    /// Tells of a connection that has come up or gone down; the news goes out once a change. A direct login has no
    /// online debugging; the flag counts while online only.
    void setOnline(bool online, bool directLogin);

private:
    bool m_online = false;
    bool m_directLogin = false;
};
