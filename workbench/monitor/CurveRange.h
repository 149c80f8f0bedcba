#pragma once

#include <QRectF>
#include <QVector>

#include <array>
#include <optional>

/// The stretch of time that the plots share and the stretch of values of each, with the ways of moving through them and
/// back. Times in s.
class CurveRange {
public:
    static constexpr int plots = 2;

    struct Interval {
        double from = 0;
        double to = 0;
        double width() const { return to - from; }
    };

    /// The newest readings run through; else the stretch stands.
    bool isFollowing() const { return m_state.following; }
    /// The times to show of readings from begin to end.
    Interval times(double begin, double end) const;
    /// The values to show; none: as the curves need it.
    const std::optional<Interval>& values(int plot) const { return m_state.values[plot]; }

    /// Shows a rectangle of times and values of one plot.
    void zoomTo(int plot, const QRectF& area);
    /// Widens (factor above 1) or narrows the time around one that keeps its place; while following, the newest does.
    /// Several in a row are one step back.
    void zoomTime(double factor, double around, const Interval& shown);
    void zoomValues(int plot, double factor, double around, const Interval& shown);
    /// Moves the stretch by a time and ends following.
    void pan(double seconds, const Interval& shown);
    /// Shows everything from begin to end.
    void fit(double begin, double end);
    /// Lets the newest readings run through again, with all values.
    void follow();
    bool canGoBack() const { return !m_history.isEmpty(); }
    void back();

private:
    struct State {
        bool following = true;
        double followed = 20;
        Interval times;
        std::array<std::optional<Interval>, plots> values;
    };
    enum class Step { Other, Wheel };

    void remember(Step step);

    State m_state;
    QVector<State> m_history;
    Step m_last = Step::Other;
};
