#pragma once

#include <QString>
#include <QStringList>

class AxisModel;
class AxisTable;

/// Holds axis records against the lists of a controller that a project has just been given. Selections are carried
/// over by the text of their entry where that is asked for, never by position alone; what no longer fits goes back to
/// the first entry. Made for one pass over all records, in their order. Main thread.
class AxisRevalidation {
public:
    explicit AxisRevalidation(AxisModel& model);

    /// Corrects the record's keys. False when the axis cannot exist on the controller: its device is gone, or it is a
    /// virtual axis beyond the limit. Axes of other types are always kept.
    bool revise(AxisTable& axis);

private:
    void reviseInputs(AxisTable& axis) const;
    void reviseInput(AxisTable& axis, const QString& key, const QString& group) const;
    bool revisePulse(AxisTable& axis) const;
    bool reviseEncoder(AxisTable& axis) const;
    bool countVirtual();
    void reviseCompareOutput(AxisTable& axis) const;
    uint carriedSignal(uint signal, const QStringList& signalNames, const QString& oldMode) const;
    QStringList list(const QString& group) const;
    QStringList formerList(const QString& group) const;

    AxisModel& m_model;
    uint m_virtualLimit;
    uint m_virtualCount = 0;
};
