#pragma once

#include "sdk/Export.h"

#include <QObject>

/// A unit of work for the background service. It is made on the main thread, run once by the service on a thread of
/// the service's, and destroyed by the service on the thread where it lives.
class KESTRUN_SDK_EXPORT Transaction : public QObject {
    Q_OBJECT

public:
    explicit Transaction(QObject* parent = nullptr);
    ~Transaction() override;

    /// Does the work. Blocking calls are allowed; no object of the main thread may be touched but by queued signals.
    virtual void execute();

protected:
    /// For the service: place in its queue, whether it was cancelled before it ran, and how often it may run.
    int queueNumber = 0;
    bool cancelled = false;
    int runsAllowed = 1;
};
