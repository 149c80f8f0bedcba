#include "host/projectmodel/AxisModel.h"

#include "host/projectmodel/AxisNumbers.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectContents.h"
#include "host/projectmodel/ProjectModel.h"
#include "sdk/AxisDefaults.h"

#include <QHash>

#include <algorithm>

namespace {

QString cycleTimeKey()
{
    return QStringLiteral("MotionTaskCycleTime");
}

QMap<QString, QString> allDefaults()
{
    QMap<QString, QString> all = AxisBaseDefaults;
    for (const AxisDefaultGroup* group : { &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults })
        for (auto it = group->begin(); it != group->end(); ++it)
            all.insert(it.key(), it.value());
    return all;
}

int rowOf(const AxisRecordData& record)
{
    return record.properties.value(QStringLiteral("Row")).toInt();
}

} // namespace

struct AxisModel::Private {
    ProjectModel* project;
    /// In the model, by sequence.
    std::vector<AxisTable*> records;
    QHash<quint32, AxisTable*> byId;
    /// Out of the model, kept for the undo stack until the project closes.
    std::vector<AxisTable*> removed;
    int nextSequence = 0;

    bool contains(const AxisTable* table) const
    {
        return std::find(records.begin(), records.end(), table) != records.end();
    }

    AxisTable* named(const QString& name) const
    {
        const auto it = std::find_if(records.begin(), records.end(),
            [&name](const AxisTable* each) { return each->name().compare(name, Qt::CaseInsensitive) == 0; });
        return it == records.end() ? nullptr : *it;
    }

    // A removed record may come back, so its id is taken as long as it lives.
    quint32 lowestFreeId() const
    {
        quint32 id = 1;
        const auto isTaken = [this](quint32 candidate) {
            return byId.contains(candidate)
                || std::any_of(removed.begin(), removed.end(),
                    [candidate](const AxisTable* each) { return each->id() == candidate; });
        };
        while (isTaken(id))
            ++id;
        return id;
    }

    void insert(AxisTable* table)
    {
        const auto place = std::upper_bound(records.begin(), records.end(), table,
            [](const AxisTable* a, const AxisTable* b) { return a->m_sequence < b->m_sequence; });
        records.insert(place, table);
        byId.insert(table->id(), table);
    }
};

AxisModel::AxisModel(ProjectModel* project) : SubModel(project), d(new Private)
{
    d->project = project;
}

AxisModel::~AxisModel() = default;

QString AxisModel::subModelName() const
{
    return QStringLiteral("AxisModel");
}

AxisTable* AxisModel::axisTable(quint32 id) const
{
    return d->byId.value(id);
}

void AxisModel::allAxisTables(std::vector<AxisTable*>& out) const
{
    out = d->records;
}

AxisTable* AxisModel::addAxisTable(const QString& name)
{
    if (name.isEmpty() || d->named(name) || d->project->isReadOnly())
        return nullptr;
    static const QMap<QString, QString> defaults = allDefaults();
    auto* table = new AxisTable({ d->lowestFreeId(), name, defaults, {} }, this);
    renumber(*table);
    table->modified = true;
    table->m_sequence = d->nextSequence++;
    d->insert(table);
    emit axisAdded(table->id());
    recordChanged();
    return table;
}

bool AxisModel::removeAxisTable(AxisTable* table)
{
    const auto place = std::find(d->records.begin(), d->records.end(), table);
    if (place == d->records.end())
        return false;
    d->records.erase(place);
    d->byId.remove(table->id());
    d->removed.push_back(table);
    emit axisRemoved(table->id());
    recordChanged();
    return true;
}

bool AxisModel::renameAxisTable(quint32 id, const QString& name)
{
    AxisTable* table = axisTable(id);
    AxisTable* holder = d->named(name);
    if (!table || name.isEmpty() || (holder && holder != table))
        return false;
    if (table->m_data.name == name)
        return true;
    table->m_data.name = name;
    table->m_touched = true;
    emit axisRenamed(id);
    emit table->dataChanged(table, QStringLiteral("name"), name);
    recordChanged();
    return true;
}

bool AxisModel::takeObject(ModelObject* object)
{
    return removeAxisTable(qobject_cast<AxisTable*>(object));
}

bool AxisModel::putObjectBack(ModelObject* object)
{
    const auto place = std::find(d->removed.begin(), d->removed.end(), object);
    if (place == d->removed.end() || d->named((*place)->name()))
        return false;
    AxisTable* table = *place;
    d->removed.erase(place);
    renumber(*table);
    table->m_touched = true;
    d->insert(table);
    emit axisAdded(table->id());
    recordChanged();
    return true;
}

bool AxisModel::renameObject(ModelObject* object, const QString& name)
{
    const auto* table = qobject_cast<AxisTable*>(object);
    return table && d->contains(table) && renameAxisTable(table->id(), name);
}

QStringList AxisModel::getAxisBaseSettingList(QString& group) const
{
    return d->project->controller().list(group);
}

QStringList AxisModel::getPreAxisBaseSettingList(QString& group) const
{
    return d->project->formerController().list(group);
}

QMap<QString, unsigned char> AxisModel::getMaxAxisNumber() const
{
    return d->project->controller().limits();
}

QMap<QString, QString> AxisModel::getAxisTypeNameMap() const
{
    return d->project->controller().axisTypeNames();
}

QString AxisModel::getDeviceName() const
{
    return d->project->controller().model();
}

QMap<int, QString> AxisModel::getInputPointMap() const
{
    return d->project->controller().inputPoints();
}

QMap<AxisModel::AxisState, QString> AxisModel::getAxisStateMap() const
{
    return d->project->controller().stateTexts();
}

QString AxisModel::getMotionTaskCfgCycleTime() const
{
    return d->project->setting(cycleTimeKey(), QString());
}

void AxisModel::setMotionTaskCfgCycleTime(QString& text)
{
    if (getMotionTaskCfgCycleTime() == text)
        return;
    d->project->setSetting(cycleTimeKey(), text);
    emit cycleTimeChanged();
}

void AxisModel::updateDeviceAxisInfo()
{
    const int limit = getMaxAxisNumber().value(QStringLiteral("MaxAxis"));
    std::vector<QMap<QString, QString>*> records;
    for (AxisTable* each : d->records)
        records.push_back(&each->m_data.properties);
    const QStringList keys = axisNumberKeys();
    for (const QString& key : keys)
        repairNumbers(records, key, limit);
}

void AxisModel::fill(const QVector<AxisRecordData>& records)
{
    QVector<const AxisRecordData*> ordered;
    for (const AxisRecordData& each : records)
        ordered.append(&each);
    std::stable_sort(ordered.begin(), ordered.end(),
        [](const AxisRecordData* a, const AxisRecordData* b) { return rowOf(*a) < rowOf(*b); });
    d->byId.reserve(ordered.size());
    for (const AxisRecordData* each : ordered) {
        auto* table = new AxisTable(*each, this);
        table->m_stored = *each;
        table->m_isStored = true;
        table->m_sequence = d->nextSequence++;
        d->records.push_back(table);
        d->byId.insert(table->id(), table);
    }
}

bool AxisModel::isModified() const
{
    const auto isUnsaved = [](const AxisTable* each) { return each->modified || each->m_touched; };
    const auto isStored = [](const AxisTable* each) { return each->m_isStored; };
    return std::any_of(d->records.begin(), d->records.end(), isUnsaved)
        || std::any_of(d->removed.begin(), d->removed.end(), isStored);
}

void AxisModel::collect(ProjectChanges& changes) const
{
    for (const AxisTable* each : d->records)
        changes.axes.append({ each->m_data, each->m_stored, each->m_isStored });
    for (const AxisTable* each : d->removed)
        if (each->m_isStored)
            changes.removedAxes.append(each->id());
}

void AxisModel::markStored()
{
    for (AxisTable* each : d->records)
        each->markStored();
    for (AxisTable* each : d->removed)
        each->m_isStored = false;
}

bool AxisModel::save(AxisTable& record)
{
    if (!d->contains(&record)) {
        emit project()->storeFailed(tr("The axis %1 is not stored: it has been removed.").arg(record.name()));
        return false;
    }
    if (d->project->isReadOnly() && !record.modified)
        return false;
    ProjectChanges changes;
    const std::vector<AxisTable*> givers = freeStoredName(record, changes);
    changes.axes.append({ record.m_data, record.m_stored, record.m_isStored });
    QString error;
    if (!d->project->write(changes, &error)) {
        // What an editor corrected while it was built is no change of the user's, but it is not stored now.
        if (record.m_data.properties != record.m_stored.properties
            || record.m_data.viewInfo != record.m_stored.viewInfo)
            record.modified = true;
        emit project()->storeFailed(tr("The axis %1 is not stored. %2").arg(record.name(), error));
        return false;
    }
    for (AxisTable* each : givers) {
        each->m_isStored = d->contains(each);
        each->m_stored.name = each->m_data.name;
    }
    record.markStored();
    recordChanged();
    return true;
}

// Removals and renamings wait in memory for the project's save. If a record were stored under a name that another one
// still has in the file, a crash would leave two axes of one name there. Of a renamed holder just the new name is
// stored, which may in turn be a name that the file still has elsewhere.
std::vector<AxisTable*> AxisModel::freeStoredName(const AxisTable& record, ProjectChanges& changes) const
{
    std::vector<AxisTable*> givers;
    QStringList wanted{ record.m_data.name };
    for (int i = 0; i < wanted.size(); ++i) {
        const auto holds = [&](const AxisTable* each) {
            return each != &record && each->m_isStored
                && each->m_stored.name.compare(wanted.at(i), Qt::CaseInsensitive) == 0
                && std::find(givers.begin(), givers.end(), each) == givers.end();
        };
        for (AxisTable* each : d->removed) {
            if (!holds(each))
                continue;
            changes.removedAxes.append(each->id());
            givers.push_back(each);
        }
        for (AxisTable* each : d->records) {
            if (!holds(each))
                continue;
            AxisRecordData renamed = each->m_stored;
            renamed.name = each->m_data.name;
            changes.axes.append({ renamed, each->m_stored, true });
            wanted.append(renamed.name);
            givers.push_back(each);
        }
    }
    return givers;
}

bool AxisModel::load(AxisTable& record)
{
    AxisRecordData data;
    if (!d->project->read(record.id(), &data))
        return false;
    record.m_stored = data;
    data.name = record.m_data.name;
    const QStringList keys = axisNumberKeys();
    for (const QString& key : keys)
        if (record.m_data.properties.contains(key))
            data.properties.insert(key, record.m_data.properties.value(key));
    record.m_data = data;
    record.m_isStored = true;
    record.modified = false;
    emit record.dataChanged(&record, QStringLiteral("load"), QString());
    recordChanged();
    return true;
}

void AxisModel::recordChanged() const
{
    d->project->noteChange();
}

void AxisModel::renumber(AxisTable& record)
{
    std::vector<QMap<QString, QString>*> others;
    for (AxisTable* each : d->records)
        others.push_back(&each->m_data.properties);
    const QStringList keys = axisNumberKeys();
    for (const QString& key : keys)
        record.m_data.properties.insert(key, QString::number(lowestFreeNumber(others, key)));
}
