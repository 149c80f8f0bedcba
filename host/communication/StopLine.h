#pragma once

#include "host/communication/Export.h"

#include <QObject>

#include <memory>

class BackgroundTransactionService;
class ControllerConnection;

/// The emergency stop's own way to the controller: own thread, own channel, own method, so that no slow call can hold
/// it up. Main thread; nothing blocks.
class KESTRUN_COMMUNICATION_EXPORT StopLine : public QObject {
    Q_OBJECT

public:
    /// Neither is owned; both must outlive this object. The service may be null.
    StopLine(ControllerConnection* connection, BackgroundTransactionService* service, QObject* parent = nullptr);
    ~StopLine() override;

    /// Has queued commands refused, then stops every axis in debug mode and holds. May be pressed again at any time.
    void stop();
    /// Allows motion again. A release that a later stop finds still under way is given up, with emergencyStop or
    /// noAnswer for its result.
    void release();

signals:
    /// The controller's answer to stop() or release(), 0 or a code of the diagnosis table.
    void answered(bool hold, short result);

private:
    struct Private;
    std::shared_ptr<Private> d;
};
