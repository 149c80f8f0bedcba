#pragma once

#include <QObject>

class Workspace;

/// Tells when something that a project holds has changed: an axis, the list of axes, a source. Follows the workspace
/// from project to project; that another one is open is no change.
class ProjectWatch : public QObject {
    Q_OBJECT

public:
    explicit ProjectWatch(Workspace& workspace, QObject* parent = nullptr);
    ~ProjectWatch() override;

signals:
    void changed();

private:
    void follow();
    void followAxis(quint32 id);

    Workspace& m_workspace;
};
