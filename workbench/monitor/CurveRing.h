#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// The curves that are drawn of an axis, in the order in which they stand everywhere.
enum CurveKind { SetPosition, ActualPosition, SetVelocity, ActualVelocity };
constexpr int curveKinds = 4;

/// The values of an axis at a time in s. At a gap they are no numbers.
struct CurvePoint {
    double time = 0;
    std::array<double, curveKinds> values{};

    static CurvePoint gapAt(double time);
    bool isGap() const;
    /// True when the value can be drawn: a number of a size that a scale can show.
    bool isDrawable(CurveKind kind) const;
};

/// The newest points of an axis in the order of time; beyond its capacity the oldest go.
class CurveRing {
public:
    explicit CurveRing(int capacity) : m_capacity(capacity) { }

    /// The time must not be before the newest point's.
    void append(const CurvePoint& point);

    int size() const { return static_cast<int>(m_points.size()); }
    bool isEmpty() const { return m_points.empty(); }
    /// From 0, the oldest, to size() - 1.
    const CurvePoint& at(int index) const;
    const CurvePoint& newest() const { return at(size() - 1); }
    /// Index of the first point at that time or behind it, size() when there is none.
    int firstFrom(double time) const;

private:
    int m_capacity;
    std::vector<CurvePoint> m_points;
    /// Where the oldest point stands once the ring is full.
    std::size_t m_first = 0;
};
