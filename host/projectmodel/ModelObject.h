#pragma once

#include "host/projectmodel/Export.h"

#include <QObject>
#include <QString>

/// One object of a project that is stored by itself. Owned by its sub-model. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT ModelObject : public QObject {
    Q_OBJECT

public:
    explicit ModelObject(QObject* parent = nullptr);
    ~ModelObject() override;

    /// Unique among the objects of its sub-model, stable for the life of the project.
    virtual quint32 objectId() const = 0;

    /// Writes the present contents to the project's store in one durable transaction. False: nothing was written, the
    /// modified flag stays, and the project reports the reason (AbstractProjectModel::storeFailed).
    virtual bool save() = 0;
    /// Replaces the contents by what the store holds. False: the object is not in the store, nothing changed.
    virtual bool load() = 0;

    /// True while the object holds changes that have not been saved. Kept by this library.
    bool modified = false;

signals:
    /// The contents have changed. The type is the kind of change ("property", "viewInfo", "name", "load"), the
    /// parameter what it was about, such as the key.
    void dataChanged(ModelObject* object, const QString& type, const QString& param);
};
