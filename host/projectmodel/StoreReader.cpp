#include "host/projectmodel/StoreReader.h"

#include "host/projectmodel/RecordChecksum.h"
#include "host/projectmodel/StoreConnection.h"
#include "host/projectmodel/StoreRows.h"
#include "host/projectmodel/StoreSchema.h"

#include <algorithm>
#include <iterator>

namespace {

// Texts are read as bytes: the database's own decoder takes several wrong sequences for one right character, so that a
// changed byte could go by unseen.
QString storedText(const QVariant& value)
{
    const QByteArray bytes = value.toByteArray();
    QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    // With one unit for each byte it is all in ASCII, and there was nothing to decode.
    if (text.size() == bytes.size() || text.toUtf8() == bytes)
        return text;
    return text + QChar(QChar::ReplacementCharacter);
}

QString textsQuery(const QString& table)
{
    static const QHash<QString, QString> columns{
        { QStringLiteral("controller"), QStringLiteral("CAST(role AS BLOB), CAST(description AS BLOB)") },
        { QStringLiteral("setting"), QStringLiteral("CAST(key AS BLOB), CAST(value AS BLOB)") },
        { QStringLiteral("source"), QStringLiteral("CAST(name AS BLOB), CAST(text AS BLOB)") },
    };
    return QStringLiteral("SELECT %1, checksum FROM %2").arg(columns.value(table), table);
}

} // namespace

StoreReader::StoreReader(StoreConnection& connection, int schemaVersion)
    : m_connection(connection), m_version(schemaVersion)
{
}

bool StoreReader::readAll(ProjectContents* contents)
{
    return checkTables() && checkFile() && readTexts(QStringLiteral("setting"), &contents->settings)
        && readTexts(QStringLiteral("source"), &contents->sources) && readController(contents)
        && readAxes(&contents->axes);
}

bool StoreReader::readAxis(quint32 id, AxisRecordData* record)
{
    QSqlQuery* query
        = m_connection.prepared(QStringLiteral("SELECT CAST(name AS BLOB), checksum FROM axis WHERE id=?"));
    if (!query)
        return failed();
    query->bindValue(0, id);
    if (!m_connection.execute(*query))
        return failed();
    const bool found = query->next();
    const QString name = storedText(query->value(0));
    const qint64 sum = query->value(1).toLongLong();
    query->finish();
    if (!found)
        return fail(tr("there is no axis %1").arg(id));
    AxisRecordData read{ id, name, {}, {} };
    if (!readMap(QStringLiteral("axis_property"), id, &read.properties)
        || (m_version >= 2 && !readMap(QStringLiteral("axis_view"), id, &read.viewInfo)))
        return false;
    if (checksumOf(read, m_version) != sum)
        return fail(tr("the record of axis %1 is damaged").arg(id));
    *record = read;
    return true;
}

void StoreReader::readWhole(ProjectContents* contents)
{
    readTexts(QStringLiteral("setting"), &contents->settings);
    readTexts(QStringLiteral("source"), &contents->sources);
    readController(contents);
    // A damaged page hides what lies behind it, so the identities are collected from both ends.
    QMap<quint32, AxisRecordData> found;
    for (const char* order : { "ASC", "DESC" }) {
        QSqlQuery* query
            = m_connection.prepared(QStringLiteral("SELECT id FROM axis ORDER BY id %1").arg(QLatin1String(order)));
        if (!query || !m_connection.execute(*query))
            continue;
        QVector<quint32> ids;
        while (query->next())
            ids.append(query->value(0).toUInt());
        for (const quint32 id : ids) {
            AxisRecordData record;
            if (!found.contains(id) && readAxis(id, &record))
                found.insert(id, record);
        }
    }
    contents->axes.clear();
    std::copy(found.begin(), found.end(), std::back_inserter(contents->axes));
}

bool StoreReader::checkTables()
{
    QSqlQuery* query
        = m_connection.prepared(QStringLiteral("SELECT sql FROM sqlite_master WHERE type='table' ORDER BY name"));
    if (!query || !m_connection.execute(*query))
        return failed();
    QStringList found;
    while (query->next())
        found.append(query->value(0).toString());
    if (!m_connection.endedWell(*query))
        return failed();
    return found == StoreSchema::tables(m_version)
        || fail(tr("the file is damaged (its tables are not as they were made)"));
}

bool StoreReader::checkFile()
{
    const QString result = m_connection.value(QStringLiteral("PRAGMA integrity_check(1)")).toString();
    if (result.isEmpty())
        return failed();
    return result == QLatin1String("ok") || fail(tr("the file is damaged (%1)").arg(result.simplified()));
}

bool StoreReader::checkTally(const QString& table, int rows)
{
    QSqlQuery* query = m_connection.prepared(QStringLiteral("SELECT row_count, checksum FROM tally WHERE name=?"));
    if (!query)
        return failed();
    query->bindValue(0, table);
    if (!m_connection.execute(*query))
        return failed();
    const bool whole = query->next() && query->value(1).toLongLong() == tallyChecksum(table, query->value(0).toInt())
        && query->value(0).toInt() == rows;
    query->finish();
    return whole || fail(tr("the file is damaged (rows of the table %1 are missing)").arg(table));
}

bool StoreReader::readTexts(const QString& table, Texts* texts)
{
    QSqlQuery* query = m_connection.prepared(textsQuery(table));
    if (!query || !m_connection.execute(*query))
        return failed();
    bool whole = true;
    while (query->next()) {
        const QString key = storedText(query->value(0));
        const QString text = storedText(query->value(1));
        if (query->value(2).toLongLong() == textChecksum(table, key, text))
            texts->insert(key, text);
        else
            whole = fail(tr("the file is damaged (the entry %1 of the table %2)").arg(key, table));
    }
    return m_connection.endedWell(*query) ? whole && checkTally(table, texts->size()) : failed();
}

bool StoreReader::readController(ProjectContents* contents)
{
    Texts texts;
    const bool whole = readTexts(QStringLiteral("controller"), &texts);
    contents->controller = texts.value(presentRole()).toUtf8();
    contents->formerController = texts.value(formerRole()).toUtf8();
    return whole;
}

bool StoreReader::readAxes(QVector<AxisRecordData>* axes)
{
    QVector<qint64> sums;
    if (!readAxisRows(axes, &sums) || !checkTally(QStringLiteral("axis"), axes->size())
        || !readMaps(QStringLiteral("axis_property"), axes, &AxisRecordData::properties)
        || (m_version >= 2 && !readMaps(QStringLiteral("axis_view"), axes, &AxisRecordData::viewInfo)))
        return false;
    for (int i = 0; i < axes->size(); ++i)
        if (checksumOf(axes->at(i), m_version) != sums.at(i))
            return fail(tr("the record of axis %1 is damaged").arg(axes->at(i).id));
    return true;
}

bool StoreReader::readAxisRows(QVector<AxisRecordData>* axes, QVector<qint64>* sums)
{
    QSqlQuery* query
        = m_connection.prepared(QStringLiteral("SELECT id, CAST(name AS BLOB), checksum FROM axis ORDER BY id"));
    if (!query || !m_connection.execute(*query))
        return failed();
    while (query->next()) {
        axes->append({ query->value(0).toUInt(), storedText(query->value(1)), {}, {} });
        sums->append(query->value(2).toLongLong());
    }
    return m_connection.endedWell(*query) || failed();
}

// Both tables come in the order of the axes, so one walk over each is enough.
bool StoreReader::readMaps(const QString& table, QVector<AxisRecordData>* axes, Texts AxisRecordData::*member)
{
    QSqlQuery* query = m_connection.prepared(
        QStringLiteral("SELECT axis, CAST(key AS BLOB), CAST(value AS BLOB) FROM %1 ORDER BY axis, key").arg(table));
    if (!query || !m_connection.execute(*query))
        return failed();
    auto axis = axes->begin();
    while (query->next()) {
        const quint32 id = query->value(0).toUInt();
        while (axis != axes->end() && axis->id < id)
            ++axis;
        if (axis == axes->end() || axis->id != id)
            return fail(
                tr("the file is damaged (the table %1 speaks of axis %2, which is not there)").arg(table).arg(id));
        Texts& texts = (*axis).*member;
        texts.insert(texts.cend(), storedText(query->value(1)), storedText(query->value(2)));
    }
    return m_connection.endedWell(*query) || failed();
}

bool StoreReader::readMap(const QString& table, quint32 axis, Texts* texts)
{
    QSqlQuery* query = m_connection.prepared(
        QStringLiteral("SELECT CAST(key AS BLOB), CAST(value AS BLOB) FROM %1 WHERE axis=? ORDER BY key").arg(table));
    if (!query)
        return failed();
    query->bindValue(0, axis);
    if (!m_connection.execute(*query))
        return failed();
    while (query->next())
        texts->insert(texts->cend(), storedText(query->value(0)), storedText(query->value(1)));
    return m_connection.endedWell(*query) || failed();
}

bool StoreReader::fail(const QString& reason)
{
    m_error = reason;
    return false;
}

bool StoreReader::failed()
{
    return fail(m_connection.errorText());
}
