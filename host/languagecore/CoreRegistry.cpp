#include "host/languagecore/CoreRegistry.h"

#include "host/languagecore/ACCore.h"
#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/SourceModel.h"

#include <map>
#include <string>

namespace {

SourceModel* sourcesOf(const AbstractProjectModel& project)
{
    return qobject_cast<SourceModel*>(project.subModel("SourceModel"));
}

std::map<std::string, std::string> sourceTexts(const AbstractProjectModel& project)
{
    std::map<std::string, std::string> texts;
    if (const SourceModel* sources = sourcesOf(project)) {
        const QStringList names = sources->sourceNames();
        for (const QString& name : names)
            texts[name.toStdString()] = sources->source(name).toStdString();
    }
    return texts;
}

ac::ProgramStyle styleOf(const AbstractProjectModel& project)
{
    const auto* model = qobject_cast<const ProjectModel*>(&project);
    return model != nullptr && model->programStyle() == ac::AddressStyle ? ac::AddressStyle : ac::SymbolicStyle;
}

} // namespace

CoreRegistry& CoreRegistry::instance()
{
    static CoreRegistry registry;
    return registry;
}

std::shared_ptr<ac::ACCore> CoreRegistry::coreOf(AbstractProjectModel* project)
{
    Entry& entry = entryOf(project);
    const ac::ProgramStyle style = styleOf(*project);
    if (entry.outdated || entry.core->getProgramStyle() != style) {
        // A new core instead of a changed one: guards that are held keep the symbols that they have read.
        entry.core = std::make_shared<ac::ACCore>();
        entry.core->setSources(sourceTexts(*project));
        entry.core->setProgramStyle(style);
        entry.outdated = false;
    }
    return entry.core;
}

CoreRegistry::Entry& CoreRegistry::entryOf(AbstractProjectModel* project)
{
    const auto known = m_entries.find(project);
    if (known != m_entries.end())
        return known->second;
    connect(project, &QObject::destroyed, this, [this](const QObject* gone) { m_entries.erase(gone); });
    if (SourceModel* sources = sourcesOf(*project)) {
        connect(sources, &SourceModel::sourcesChanged, this, [this, project] {
            const auto entry = m_entries.find(project);
            if (entry != m_entries.end())
                entry->second.outdated = true;
        });
    }
    return m_entries[project];
}
