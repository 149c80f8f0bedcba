#pragma once

#include "sdk/Export.h"

#include <QObject>

/// Tells that the user has been idle. Main thread only.
class KESTRUN_SDK_EXPORT IAppIdleTimer : public QObject {
    Q_OBJECT

public:
    explicit IAppIdleTimer(QObject* parent = nullptr);
    ~IAppIdleTimer() override;

signals:
    /// No input for that many seconds.
    void appIdle(int sec);
};
