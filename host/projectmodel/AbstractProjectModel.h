#pragma once

#include "host/projectmodel/Export.h"

#include <QObject>
#include <QString>

#include <string>

class SubModel;

/// An open project: a set of sub-models by name. Owned by the ProjectModelManager; see SafeProjectModel for how long a
/// pointer to it holds. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT AbstractProjectModel : public QObject {
    Q_OBJECT

public:
    explicit AbstractProjectModel(QObject* parent = nullptr);
    ~AbstractProjectModel() override;

    /// The name under which the project is open; the first segment of its node paths. Holds no point.
    virtual QString name() const = 0;
    /// The sub-model of that name ("AxisModel", "SourceModel") or null.
    virtual SubModel* subModel(const std::string& name) const = 0;

signals:
    /// Something could not be stored. The text is for the user and names file and reason.
    void storeFailed(const QString& text);
};
