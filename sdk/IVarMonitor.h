#pragma once

#include "sdk/Export.h"

#include <QObject>

/// The variable monitor: records the values of axes while online. Main thread only.
class KESTRUN_SDK_EXPORT IVarMonitor : public QObject {
    Q_OBJECT

public:
    explicit IVarMonitor(QObject* parent = nullptr);
    ~IVarMonitor() override;

    /// Makes the axis of that number on the controller known to the monitor.
    virtual void addAxis(int axisNo) = 0;
    /// Starts recording the axis (false), or stops it because its page goes (true).
    virtual void releaseAxis(int axisNo, bool released) = 0;
};
