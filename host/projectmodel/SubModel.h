#pragma once

#include "host/projectmodel/Export.h"

#include <QObject>
#include <QString>

class AbstractProjectModel;
class ModelObject;

/// One kind of objects of a project. Owned by the project model. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT SubModel : public QObject {
    Q_OBJECT

public:
    explicit SubModel(AbstractProjectModel* project);
    ~SubModel() override;

    /// The name under which AbstractProjectModel::subModel finds it, such as "AxisModel".
    virtual QString subModelName() const = 0;
    AbstractProjectModel* project() const;

    /// The three changes that the undo commands make. They neither touch the undo stack nor report to it.
    /// Taking an object out keeps it alive: it stays owned by the model until it comes back or the project closes.
    virtual bool takeObject(ModelObject* object) = 0;
    virtual bool putObjectBack(ModelObject* object) = 0;
    virtual bool renameObject(ModelObject* object, const QString& name) = 0;

private:
    AbstractProjectModel* m_project;
};
