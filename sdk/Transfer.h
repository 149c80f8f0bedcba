#pragma once

#include "sdk/Export.h"

#include <QObject>

/// The connection to the controller as the rest of the program sees it. Main thread only.
class KESTRUN_SDK_EXPORT Transfer : public QObject {
    Q_OBJECT

public:
    explicit Transfer(QObject* parent = nullptr);
    ~Transfer() override;

    /// True while a controller is connected.
    virtual bool isOnline() = 0;
    /// True while the connection is a direct login, which has no online debugging.
    virtual bool isDirectLogin() = 0;

signals:
    /// The connection has come up or gone down. Emitted once a change.
    void onlineState(bool online);
};
