#pragma once

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/ControllerDescription.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

class AxisModel;
class ProjectStore;
class SourceModel;
struct AxisRecordData;
struct ProjectChanges;
struct ProjectContents;

/// A project in a file. Made by the ProjectModelManager only. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT ProjectModel : public AbstractProjectModel {
    Q_OBJECT

public:
    ~ProjectModel() override;

    QString name() const override;
    SubModel* subModel(const std::string& name) const override;
    AxisModel* axisModel() const;
    SourceModel* sourceModel() const;

    QString filePath() const;
    /// True when the file can only be read; every save then fails with a message.
    bool isReadOnly() const;

    /// True while anything of the project is not stored: a record, the list of axes, a source, a setting.
    bool isModified() const;
    /// Stores everything that is not stored, in one durable transaction. False sets the error.
    bool save(QString* error);

    /// Settings of the project as a whole, such as "Author", "Company", "Description", "ProgramStyle".
    QString setting(const QString& key, const QString& fallback) const;
    void setSetting(const QString& key, const QString& value);
    /// Style of the IEC program, 0 by default; 1 knows addresses only.
    int programStyle() const;

    const ControllerDescription& controller() const;
    /// Gives the project another controller in memory. The lists of the former one stay readable through
    /// AxisModel::getPreAxisBaseSettingList until the next change. Raising the tree's event is the caller's.
    void changeController(const ControllerDescription& controller);

signals:
    void modifiedChanged(bool modified);
    void controllerChanged();

private:
    friend class AxisModel;
    friend class ProjectModelManager;
    friend class SourceModel;

    ProjectModel(const QString& name, std::unique_ptr<ProjectStore> store);
    /// Fills the model with what the file held when it was opened. False: the controller's description cannot be read.
    bool fill(const ProjectContents& contents, QString* error);

    const ControllerDescription& formerController() const;
    ProjectChanges unsavedChanges() const;
    void markStored();
    bool write(const ProjectChanges& changes, QString* error);
    bool read(quint32 axisId, AxisRecordData* record) const;
    ProjectStore& store() const;
    /// Goes on with another file that holds all that this model holds.
    void moveTo(std::unique_ptr<ProjectStore> store, const QString& name);
    /// Raises modifiedChanged when that is so.
    void noteChange();

    struct Private;
    std::unique_ptr<Private> d;
};
