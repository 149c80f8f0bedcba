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

    /// Has queued commands refused, then stops every axis in debug mode and holds. May be pressed again at any time; a
    /// call that is still under way, or waits, is given up for it. Goes out while the session's own link is lost, too:
    /// this way may still be there, and so may the session.
    void stop();
    /// Allows motion again. One that is still waiting is dropped for it, and when the connection is closed.
    void release();

signals:
    /// The controller's answer to stop() or release(), in their order, 0 or a code of the diagnosis table:
    /// notConnected when it was given up, emergencyStop for a release that waited when a stop was pressed. The revision
    /// is what the connection's stopRevision() becomes when it tells of it; 0 when that is not known.
    void answered(bool hold, short result, quint64 revision);

private:
    struct Private;
    std::shared_ptr<Private> d;
};
