#pragma once

#include "workbench/monitor/CurveStore.h"

#include <QSet>
#include <QTreeWidget>

#include <functional>
#include <optional>

/// The axes with their curves: the line that each is drawn with, whether it is shown, its value and unit.
class CurveLegend : public QTreeWidget {
    Q_OBJECT

public:
    explicit CurveLegend(QWidget* parent = nullptr);
    ~CurveLegend() override;

    static QString kindName(CurveKind kind);
    static QString unit(CurveKind kind);

    /// Lists these axes; what was shown or hidden of them stays so.
    void setAxes(const QVector<int>& axes, const std::function<QString(int axisNo)>& name);
    /// Keys (CurvePlot::key) of the curves that are not to be shown.
    const QSet<int>& hidden() const { return m_hidden; }
    /// Shows the values at a time, or none of an axis without a reading there.
    void showValues(const CurveStore& curves, const std::optional<double>& cursor);
    /// Draws the samples of the lines anew.
    void restyle();
    void retranslate();

    /// The action "Stop recording" for the axis of the current row; also on the Delete key and the context menu.
    QAction* stopAction() const { return m_stop; }

signals:
    void hiddenChanged();
    void stopRequested(int axisNo);

private:
    void note(QTreeWidgetItem* item, int column);
    void stopCurrent();
    void forEachCurve(const std::function<void(QTreeWidgetItem& item, int axisNo, CurveKind kind)>& call) const;

    QAction* m_stop;
    QSet<int> m_hidden;
    bool m_filling = false;
};
