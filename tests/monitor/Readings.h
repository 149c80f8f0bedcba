#pragma once

#include "host/communication/AxisSampler.h"

#include <QVector>

/// Readings as a connection brings them.
namespace Readings {

/// One of an axis that runs at 2 units a second; the actual values lag by half a unit and a quarter unit a second.
inline AxisSample running(int axisNo, double time)
{
    return { axisNo, time, 2 * time + axisNo, 2, 2 * time + axisNo - 0.5, 1.75 };
}

inline QVector<AxisSample> runningAll(const QVector<int>& axes, double time)
{
    QVector<AxisSample> samples;
    for (const int axisNo : axes)
        samples.append(running(axisNo, time));
    return samples;
}

} // namespace Readings
