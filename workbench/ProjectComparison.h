#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class ComparatorManager;
class IComparator;
class ProjectModel;
class ProjectTree;
class QTimer;
struct CompareItem;

/// Two axes of one name, or one that has no counterpart.
struct ComparedAxis {
    enum State { Equal, Different, OnlyHere, OnlyThere };

    QString name;
    State state = Equal;
    /// Ids of the axis in the open project and in the other one; 0 where it is missing.
    quint32 here = 0;
    quint32 there = 0;
    /// How the other project writes the name; the letters' case may differ. Empty where it is missing.
    QString thereName;
};

/// Something of two projects that is no axis.
struct ComparedPart {
    enum Kind { Controller, ProgramStyle, CycleTime, Source };

    Kind kind = Controller;
    ComparedAxis::State state = ComparedAxis::Equal;
    /// What each side has: the controller's model, the number of the program style, the cycle time of the motion task
    /// in microseconds, the name of the source. Empty where it is missing.
    QString here;
    QString there;
};

/// One key of two axes.
struct ComparedValue {
    QString key;
    QString here;
    QString there;
    bool differs = false;
};

/// Compares the open project with one in another file: axis by axis, and what else makes up a project. Axes are paired
/// by name, case ignored, and judged by the comparator that a plug-in has given for their type; sources are paired by
/// name and equal when their texts are.
///
/// The other file is opened under a name of its own, to be read only, and held as long as the comparison is on. The
/// comparison ends by itself when either project closes. Main thread only.
class ProjectComparison : public QObject {
    Q_OBJECT

public:
    ProjectComparison(ProjectTree& tree, ComparatorManager& comparators, QObject* parent = nullptr);
    ~ProjectComparison() override;

    /// Ends a comparison that is on and begins another one. False sets the error, which names file and reason; no
    /// comparison is on then.
    bool start(ProjectModel& here, const QString& file, QString* error);
    void stop();
    /// Ends the comparison if it holds that file, which somebody else is about to use.
    void giveUp(const QString& file);

    bool isOn() const { return !m_other.isNull(); }
    /// The compared file, empty while no comparison is on.
    QString otherFile() const;
    /// The axes of the open project in their order, then those that only the other one has.
    const QVector<ComparedAxis>& axes() const { return m_axes; }
    /// Controller, program style, cycle time, then the sources by name.
    const QVector<ComparedPart>& parts() const { return m_parts; }
    /// True when neither an axis nor anything else differs.
    bool isEqual() const;
    /// All keys of two axes with both values, in the order of the keys; empty unless the axis is on both sides.
    QVector<ComparedValue> values(const ComparedAxis& axis) const;
    /// Path of the node of an axis of the open project; empty for one that it does not have.
    QString nodePath(const ComparedAxis& axis) const;
    /// Judges everything anew.
    void refresh();

signals:
    /// The comparison has begun, ended or come to another result.
    void changed();

private:
    void follow();
    void scheduleRefresh();
    void onProjectAboutToClose(ProjectModel* project);
    void compareAxes();
    void compareParts();
    void compareSources();
    ComparedAxis judge(const QString& name, quint32 here, quint32 there) const;
    bool isEqual(IComparator& comparator, quint32 here, quint32 there) const;

    ProjectTree& m_tree;
    ComparatorManager& m_comparators;
    QPointer<ProjectModel> m_here;
    QPointer<ProjectModel> m_other;
    QVector<ComparedAxis> m_axes;
    QVector<ComparedPart> m_parts;
    QTimer* m_refresh;
};
