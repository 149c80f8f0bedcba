#include "host/projectmodel/StoreWriter.h"

#include "host/projectmodel/StoreConnection.h"
#include "host/projectmodel/StoreRows.h"
#include "host/projectmodel/StoreSchema.h"

#include <algorithm>

namespace {

bool isStorable(const QMap<QString, QString>& texts)
{
    for (auto it = texts.begin(); it != texts.end(); ++it)
        if (!isStorableText(it.key()) || !isStorableText(it.value()))
            return false;
    return true;
}

QMap<QString, QString> storable(const QMap<QString, QString>& texts)
{
    if (isStorable(texts))
        return texts;
    QMap<QString, QString> sound;
    for (auto it = texts.begin(); it != texts.end(); ++it)
        sound.insert(storableText(it.key()), storableText(it.value()));
    return sound;
}

bool isSame(const AxisChange& change)
{
    return change.isStored && change.now.name == change.stored.name && change.now.properties == change.stored.properties
        && change.now.viewInfo == change.stored.viewInfo;
}

/// Bounds the number of statements that stay prepared.
constexpr int mostRowsAtOnce = 32;

QString insertRows(const QString& table, int count)
{
    return QStringLiteral("REPLACE INTO %1 VALUES(?, ?, ?)").arg(table)
        + QStringLiteral(", (?, ?, ?)").repeated(count - 1);
}

bool changesRowCounts(const ProjectChanges& changes)
{
    return !changes.removedAxes.isEmpty() || !changes.removedSources.isEmpty() || !changes.settings.isEmpty()
        || !changes.sources.isEmpty() || changes.controllerChanged
        || std::any_of(changes.axes.begin(), changes.axes.end(), [](const AxisChange& each) { return !each.isStored; });
}

} // namespace

StoreWriter::StoreWriter(StoreConnection& connection) : m_connection(connection) { }

bool StoreWriter::createTables()
{
    const QStringList statements = StoreSchema::tables(StoreSchema::version) + StoreSchema::headerStatements();
    return std::all_of(
        statements.begin(), statements.end(), [this](const QString& each) { return m_connection.run(each); });
}

bool StoreWriter::write(const ProjectChanges& changes)
{
    for (const quint32 id : changes.removedAxes)
        if (!removeAxis(id))
            return false;
    for (const AxisChange& each : changes.axes)
        if (!isSame(each) && !writeAxis(each))
            return false;
    if (!removeSources(changes.removedSources) || !writeTexts(QStringLiteral("source"), changes.sources)
        || !writeTexts(QStringLiteral("setting"), changes.settings))
        return false;
    if (changes.controllerChanged) {
        const Texts descriptions{ { presentRole(), QString::fromUtf8(changes.controller) },
            { formerRole(), QString::fromUtf8(changes.formerController) } };
        if (!writeTexts(QStringLiteral("controller"), descriptions))
            return false;
    }
    return !changesRowCounts(changes) || writeTallies();
}

bool StoreWriter::writeTexts(const QString& table, const Texts& texts)
{
    const QString sql = QStringLiteral("INSERT OR REPLACE INTO %1 VALUES(?, ?, ?)").arg(table);
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        const QString key = storableText(it.key());
        const QString text = storableText(it.value());
        if (!m_connection.run(sql, key, text, textChecksum(table, key, text)))
            return false;
    }
    return true;
}

bool StoreWriter::writeTallies()
{
    const QStringList tables = StoreSchema::talliedTables();
    for (const QString& table : tables) {
        const QVariant rows = m_connection.value(QStringLiteral("SELECT count(*) FROM %1").arg(table));
        if (!rows.isValid()
            || !m_connection.run(QStringLiteral("INSERT OR REPLACE INTO tally VALUES(?, ?, ?)"), table, rows.toInt(),
                tallyChecksum(table, rows.toInt())))
            return false;
    }
    return true;
}

bool StoreWriter::writeAxis(const AxisChange& change)
{
    const AxisRecordData now{ change.now.id, storableText(change.now.name), storable(change.now.properties),
        storable(change.now.viewInfo) };
    const AxisRecordData stored = change.isStored ? change.stored : AxisRecordData();
    return m_connection.run(QStringLiteral("INSERT OR REPLACE INTO axis VALUES(?, ?, ?)"), now.id, now.name,
               checksumOf(now, StoreSchema::version))
        && writeMap(QStringLiteral("axis_property"), now.id, now.properties, storable(stored.properties))
        && writeMap(QStringLiteral("axis_view"), now.id, now.viewInfo, storable(stored.viewInfo));
}

// A record never loses a key, so there is nothing to delete here. Both maps are in key order: one walk along both finds
// what is new or different.
bool StoreWriter::writeMap(const QString& table, quint32 axis, const Texts& now, const Texts& stored)
{
    QVector<Texts::const_iterator> different;
    auto old = stored.begin();
    for (auto it = now.begin(); it != now.end(); ++it) {
        const bool isKnown = old != stored.end() && old.key() == it.key();
        if (!isKnown || old.value() != it.value())
            different.append(it);
        if (isKnown)
            ++old;
    }
    return writeRows(table, axis, different);
}

// A statement for many rows saves most of what a run through the database's driver costs.
bool StoreWriter::writeRows(const QString& table, quint32 axis, const QVector<Texts::const_iterator>& rows)
{
    int next = 0;
    while (next < rows.size()) {
        const int count = std::min(rows.size() - next, mostRowsAtOnce);
        QSqlQuery* insert = m_connection.prepared(insertRows(table, count));
        if (!insert)
            return false;
        int place = 0;
        for (int i = next; i < next + count; ++i) {
            insert->bindValue(place++, axis);
            insert->bindValue(place++, rows[i].key());
            insert->bindValue(place++, rows[i].value());
        }
        if (!m_connection.execute(*insert))
            return false;
        next += count;
    }
    return true;
}

bool StoreWriter::removeAxis(quint32 id)
{
    return m_connection.run(QStringLiteral("DELETE FROM axis WHERE id=?"), id)
        && m_connection.run(QStringLiteral("DELETE FROM axis_property WHERE axis=?"), id)
        && m_connection.run(QStringLiteral("DELETE FROM axis_view WHERE axis=?"), id);
}

bool StoreWriter::removeSources(const QStringList& names)
{
    return std::all_of(names.begin(), names.end(), [this](const QString& each) {
        return m_connection.run(QStringLiteral("DELETE FROM source WHERE name=?"), storableText(each));
    });
}
