#pragma once

#include "host/communication/Export.h"

#include <QObject>
#include <QVector>

#include <memory>

class ControllerConnection;

/// One reading of an axis for curves.
struct AxisSample {
    int axisNo = 0;
    /// The controller's time in s, growing from its start.
    double time = 0;
    double setPosition = 0;
    double setVelocity = 0;
    double actualPosition = 0;
    double actualVelocity = 0;
};

Q_DECLARE_METATYPE(AxisSample)
Q_DECLARE_METATYPE(QVector<AxisSample>)

/// Reads the values of axes at a fixed period for curves, on a thread and a channel of its own. Keeps no debug session
/// alive. Main thread; nothing blocks.
class KESTRUN_COMMUNICATION_EXPORT AxisSampler : public QObject {
    Q_OBJECT

public:
    /// The connection is not owned. It may go first, which ends the reading.
    explicit AxisSampler(ControllerConnection* connection, QObject* parent = nullptr);
    ~AxisSampler() override;

    /// Reads these axes every so many ms (at least 1) from now on while the connection is open; no axes: pauses.
    void setAxes(const QVector<int>& axes, int periodMs);

signals:
    /// One sample an axis that the controller has.
    void sampled(const QVector<AxisSample>& samples);

private:
    struct Private;
    std::shared_ptr<Private> d;
};
