#pragma once

#include "host/projectmodel/SubModel.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

class AxisTable;
class ProjectModel;
struct AxisRecordData;
struct ProjectChanges;

/// The axes of a project and what its controller offers them. Sub-model name "AxisModel". Main thread only.
///
/// Adding, removing, renaming and the cycle time stay in memory until the record's own save or the project's.
class KESTRUN_PROJECTMODEL_EXPORT AxisModel : public SubModel {
    Q_OBJECT

public:
    /// States of an axis on the controller, in the numbers of the status reply.
    enum AxisState : int {
        Disabled = 0,
        ErrorStop = 1,
        Stopping = 2,
        StandStill = 3,
        DiscreteMotion = 4,
        ContinuousMotion = 5,
        SynchronizedMotion = 6,
        Homing = 7
    };
    Q_ENUM(AxisState)

    ~AxisModel() override;

    QString subModelName() const override;

    /// The record of that id, or null.
    AxisTable* axisTable(quint32 id) const;
    /// Fills the list with all records in the order of their node rows at opening and of their creation after it.
    void allAxisTables(std::vector<AxisTable*>& out) const;
    /// A new record with the defaults of all four groups, the lowest free id from 1 and the lowest free "AxisNo" from
    /// 0. Null when the name is empty or another axis has it (case ignored), or when the project is read-only.
    AxisTable* addAxisTable(const QString& name);
    /// Takes the record out of the model. It stays alive, owned by the model, for the undo stack. False when it is not
    /// in the model.
    bool removeAxisTable(AxisTable* table);
    /// False when there is no such record, the name is empty, or another axis has it (case ignored).
    bool renameAxisTable(quint32 id, const QString& name);

    bool takeObject(ModelObject* object) override;
    bool putObjectBack(ModelObject* object) override;
    bool renameObject(ModelObject* object, const QString& name) override;

    /// The named option list of the present controller, empty for an unknown name. The argument is not changed.
    QStringList getAxisBaseSettingList(QString& group) const;
    /// The same of the controller that was in use before the last change.
    QStringList getPreAxisBaseSettingList(QString& group) const;
    /// Limits: "MaxAxis" for all axes of a project, the types' display names for each type.
    QMap<QString, unsigned char> getMaxAxisNumber() const;
    /// Type word to display name.
    QMap<QString, QString> getAxisTypeNameMap() const;
    /// Model name of the controller.
    QString getDeviceName() const;
    /// All input points: point key to point name.
    QMap<int, QString> getInputPointMap() const;
    QMap<AxisModel::AxisState, QString> getAxisStateMap() const;
    /// Cycle time of the motion task in microseconds as decimal text; may be empty.
    QString getMotionTaskCfgCycleTime() const;
    void setMotionTaskCfgCycleTime(QString& text);
    /// Repairs missing, doubled and out-of-range "AxisNo" and "AxisID"; sound numbers stay. Does not set modified
    /// flags.
    void updateDeviceAxisInfo();

signals:
    /// A record has come into the model, or back into it.
    void axisAdded(quint32 id);
    /// A record has left the model.
    void axisRemoved(quint32 id);
    void axisRenamed(quint32 id);
    /// The cycle time has changed.
    void cycleTimeChanged();

private:
    friend class AxisTable;
    friend class ProjectModel;
    explicit AxisModel(ProjectModel* project);

    void fill(const QVector<AxisRecordData>& records);
    bool isModified() const;
    /// Adds all that is not stored to the changes; markStored follows when they are.
    void collect(ProjectChanges& changes) const;
    void markStored();

    bool save(AxisTable& record);
    /// Adds to the changes that the name of the record is free in the file; the records that have given it up.
    std::vector<AxisTable*> freeStoredName(const AxisTable& record, ProjectChanges& changes) const;
    bool load(AxisTable& record);
    void recordChanged() const;
    void renumber(AxisTable& record);

    struct Private;
    std::unique_ptr<Private> d;
};
