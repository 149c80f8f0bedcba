#include "tests/support/MissingKeys.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisRecordData.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/AxisDefaults.h"
#include "tests/support/TestProject.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace {

QString connectionName()
{
    return QStringLiteral("missing keys");
}

void mustRun(QSqlQuery& query)
{
    if (!query.exec())
        qFatal("the project file cannot be changed");
}

AxisRecordData dataOf(const AxisTable& axis)
{
    AxisRecordData record;
    record.id = axis.id();
    record.name = axis.name();
    for (const AxisDefaultGroup& group : { AxisBaseDefaults, AxisUnitDefaults, AxisModeDefaults, AxisHomeDefaults })
        for (auto entry = group.begin(); entry != group.end(); ++entry)
            record.properties.insert(entry.key(), axis.property(entry.key(), QString()));
    return record;
}

void removeFrom(QSqlDatabase& database, AxisRecordData record, const QStringList& keys)
{
    QSqlQuery query(database);
    for (const QString& key : keys) {
        record.properties.remove(key);
        query.prepare(QStringLiteral("DELETE FROM axis_property WHERE axis=? AND key=?"));
        query.addBindValue(record.id);
        query.addBindValue(key);
        mustRun(query);
    }
    query.prepare(QStringLiteral("PRAGMA user_version"));
    mustRun(query);
    query.next();
    const int version = query.value(0).toInt();
    query.prepare(QStringLiteral("UPDATE axis SET checksum=? WHERE id=?"));
    query.addBindValue(checksumOf(record, version));
    query.addBindValue(record.id);
    mustRun(query);
}

} // namespace

void removeAxisKeys(TestProject& project, quint32 axis, const QStringList& keys)
{
    project.save();
    const AxisRecordData record = dataOf(*project.axisModel()->axisTable(axis));
    project.close();
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName());
        database.setDatabaseName(project.filePath());
        if (!database.open())
            qFatal("the project file cannot be opened");
        removeFrom(database, record, keys);
    }
    QSqlDatabase::removeDatabase(connectionName());
    project.reopen();
}
