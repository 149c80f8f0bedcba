#include "host/projectmodel/SourceModel.h"

#include "host/projectmodel/ProjectContents.h"
#include "host/projectmodel/ProjectModel.h"

SourceModel::SourceModel(ProjectModel* project) : SubModel(project), m_projectModel(project) { }

SourceModel::~SourceModel() = default;

QString SourceModel::subModelName() const
{
    return QStringLiteral("SourceModel");
}

QStringList SourceModel::sourceNames() const
{
    return m_sources.keys();
}

QString SourceModel::source(const QString& name) const
{
    return m_sources.value(name);
}

void SourceModel::setSource(const QString& name, const QString& text)
{
    if (m_sources.contains(name) && m_sources.value(name) == text)
        return;
    m_sources.insert(name, text);
    changed();
}

bool SourceModel::removeSource(const QString& name)
{
    if (m_sources.remove(name) == 0)
        return false;
    changed();
    return true;
}

bool SourceModel::takeObject(ModelObject*)
{
    return false;
}

bool SourceModel::putObjectBack(ModelObject*)
{
    return false;
}

bool SourceModel::renameObject(ModelObject*, const QString&)
{
    return false;
}

void SourceModel::fill(const QMap<QString, QString>& sources)
{
    m_sources = sources;
    m_stored = sources;
}

bool SourceModel::isModified() const
{
    return m_sources != m_stored;
}

void SourceModel::collect(ProjectChanges& changes) const
{
    changes.sources = differences(m_sources, m_stored);
    for (auto it = m_stored.begin(); it != m_stored.end(); ++it)
        if (!m_sources.contains(it.key()))
            changes.removedSources.append(it.key());
}

void SourceModel::markStored()
{
    m_stored = m_sources;
}

void SourceModel::changed()
{
    emit sourcesChanged();
    m_projectModel->noteChange();
}
