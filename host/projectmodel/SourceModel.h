#pragma once

#include "host/projectmodel/SubModel.h"

#include <QMap>
#include <QString>
#include <QStringList>

class ProjectModel;
struct ProjectChanges;

/// The structured-text sources of a project, by name. Sub-model name "SourceModel". Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT SourceModel : public SubModel {
    Q_OBJECT

public:
    ~SourceModel() override;

    QString subModelName() const override;

    QStringList sourceNames() const;
    /// The text of a source, empty for an unknown name.
    QString source(const QString& name) const;
    /// Adds or replaces a source in memory; the project's save stores it.
    void setSource(const QString& name, const QString& text);
    /// False for an unknown name.
    bool removeSource(const QString& name);

    /// Sources are no objects: nothing can be taken out, put back or renamed by the undo commands.
    bool takeObject(ModelObject* object) override;
    bool putObjectBack(ModelObject* object) override;
    bool renameObject(ModelObject* object, const QString& name) override;

signals:
    /// A source has been added, changed or removed.
    void sourcesChanged();

private:
    friend class ProjectModel;
    explicit SourceModel(ProjectModel* project);

    void fill(const QMap<QString, QString>& sources);
    bool isModified() const;
    void collect(ProjectChanges& changes) const;
    void markStored();
    void changed();

    ProjectModel* m_projectModel;
    QMap<QString, QString> m_sources;
    QMap<QString, QString> m_stored;
};
