#pragma once

#include "host/projectmodel/Export.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <string>

class AbstractProjectModel;
class ControllerDescription;
class ProjectModel;

/// Opens, creates and closes projects and finds the open ones by name. One for the process. Main thread only.
///
/// Files that cannot be read are refused with a text that names the file and the reason, and are left as they are.
class KESTRUN_PROJECTMODEL_EXPORT ProjectModelManager : public QObject {
    Q_OBJECT

public:
    static ProjectModelManager* instance();

    /// The open project of that name, or null. The flag is not read.
    AbstractProjectModel* projectModel(const std::string& name, bool reserved) const;
    /// All open projects in the order of opening.
    QVector<ProjectModel*> projects() const;

    /// Creates a project file with that controller and opens it. An existing file is not touched: that is an error.
    ProjectModel* createProject(const QString& filePath, const ControllerDescription& controller, QString* error);
    /// Opens a project file. The name of the project is the file's base name, made fit for a node path, or the alias
    /// if one is given (for a second project of the same name). Null sets the error.
    ProjectModel* openProject(const QString& filePath, QString* error, const QString& alias = QString());
    /// The same for a project that is only to be looked at: the file stays as it is and every save fails.
    ProjectModel* openProjectReadOnly(const QString& filePath, QString* error, const QString& alias = QString());
    /// Closes without saving. The model dies when its last guard lets go.
    void closeProject(ProjectModel* project);
    /// Copies the project by the database's own means to another file, stores what is not stored there, and goes on
    /// with that file, whose name the project takes. An existing file is replaced, once the new one is whole; the
    /// original stays as it was last stored. False sets the error and changes nothing.
    bool saveProjectAs(ProjectModel* project, const QString& filePath, QString* error);
    /// Reads what is whole in a damaged project file into a new file. Returns the number of axes rescued, -1 with the
    /// error set when nothing could be read.
    int salvageProject(const QString& damagedPath, const QString& newPath, QString* error);

    /// The name that a project of that file gets.
    static QString projectNameForFile(const QString& filePath);

signals:
    /// Emitted before the model goes.
    void projectAboutToClose(ProjectModel* project);

private:
    explicit ProjectModelManager(QObject* parent = nullptr);
    ~ProjectModelManager() override;
    friend class SafeProjectModel;

    ProjectModel* open(const QString& filePath, QString* error, const QString& alias, bool readOnly);
    /// False sets the error: another project than the exception has that file or that name.
    bool isFree(const QString& filePath, const QString& name, const ProjectModel* except, QString* error) const;

    void hold(AbstractProjectModel* model);
    void release(AbstractProjectModel* model);

    QVector<ProjectModel*> m_projects;
    struct Holding {
        AbstractProjectModel* model;
        int count;
        bool closed;
    };
    QVector<Holding> m_holdings;
};
