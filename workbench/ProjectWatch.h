#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QVector>

class ProjectModel;
class Workspace;

/// What a project holds, to be compared: names and properties of its axes, and its sources. The names that editors give
/// their controls are left out.
struct ProjectContents {
    struct Axis {
        quint32 id = 0;
        QString name;
        QMap<QString, QString> properties;
        bool operator==(const Axis& other) const;
    };
    QVector<Axis> axes;
    QMap<QString, QString> sources;
    bool operator==(const ProjectContents& other) const;
    bool operator!=(const ProjectContents& other) const { return !(*this == other); }
};
/// Empty without a project.
ProjectContents contentsOf(const ProjectModel* project);

/// Tells when something that a project holds has changed: an axis, the list of axes, a source. Follows the workspace
/// from project to project; that another one is open is no change.
class ProjectWatch : public QObject {
    Q_OBJECT

public:
    explicit ProjectWatch(Workspace& workspace, QObject* parent = nullptr);
    ~ProjectWatch() override;

signals:
    /// Also when nothing is other than before in the end: an editor that opens sets its fields one by one.
    void changed();

private:
    void follow();
    void followAxis(quint32 id);

    Workspace& m_workspace;
};
