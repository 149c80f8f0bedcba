#pragma once

#include "host/communication/AxisSampler.h"
#include "workbench/monitor/CurveRing.h"

#include <QVector>

#include <map>

/// What has been recorded of the axes. Times are in s from the first reading on, and go on in wall-clock time over a
/// restart of the controller, whose own time starts again. A copy is a picture that stays.
class CurveStore {
public:
    /// Time from one reading to the next.
    static constexpr int periodMs = 10;
    /// What is kept of an axis: five minutes at that period.
    static constexpr int keptSeconds = 300;
    static constexpr int keptPoints = keptSeconds * 1000 / periodMs;
    /// Readings further apart than this are not joined.
    static constexpr double longestStep = 0.25;

    /// Takes the readings of one time in. now is a wall-clock time in s that never goes back.
    void append(const QVector<AxisSample>& samples, double now);
    /// What comes next is not joined with what is there.
    void interrupt();
    /// Forgets all readings; the next one is at time 0.
    void clear();

    bool isEmpty() const { return m_rings.empty(); }
    /// The axes that have readings, in ascending order.
    QVector<int> axes() const;
    /// Null when the axis has no readings.
    const CurveRing* curves(int axisNo) const;
    /// Times of the oldest and the newest reading, 0 when there is none.
    double begin() const;
    double end() const { return m_shown; }
    /// The reading of the axis that is nearest to a time; null in a gap and outside of what is recorded.
    const CurvePoint* nearest(int axisNo, double time) const;

private:
    double shownTime(double controllerTime, double now);

    std::map<int, CurveRing> m_rings;
    /// From the controller's time to the time here.
    double m_offset = 0;
    double m_controllerTime = 0;
    double m_now = 0;
    double m_shown = 0;
    bool m_interrupted = false;
};
