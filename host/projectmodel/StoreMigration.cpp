#include "host/projectmodel/StoreMigration.h"

#include "host/projectmodel/StoreConnection.h"
#include "host/projectmodel/StoreSchema.h"
#include "host/projectmodel/StoreWriter.h"
#include "sdk/AxisDefaults.h"

#include <QFileInfo>

namespace {

QString freeCopyName(const QString& path, int version)
{
    const QString stem = QStringLiteral("%1.v%2").arg(path).arg(version);
    QString name = stem;
    for (int i = 2; QFileInfo::exists(name); ++i)
        name = QStringLiteral("%1.%2").arg(stem).arg(i);
    return name;
}

AxisRecordData upToDate(AxisRecordData record)
{
    const QString key = QStringLiteral("Version");
    if (record.properties.value(key).toInt() >= axisRecordVersion)
        return record;
    for (const AxisDefaultGroup* group : { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults })
        for (auto it = group->begin(); it != group->end(); ++it)
            if (!record.properties.contains(it.key()))
                record.properties.insert(it.key(), it.value());
    record.properties.insert(key, QString::number(axisRecordVersion));
    return record;
}

bool addTables(StoreConnection& connection, int version)
{
    const QStringList present = StoreSchema::tables(version);
    const QStringList wanted = StoreSchema::tables(StoreSchema::version);
    for (const QString& each : wanted)
        if (!present.contains(each) && !connection.run(each))
            return false;
    return true;
}

} // namespace

bool keepCopy(StoreConnection& connection, const QString& path, int version, QString* reason)
{
    if (connection.run(QStringLiteral("VACUUM INTO ?"), freeCopyName(path, version)))
        return true;
    *reason = connection.errorText();
    return false;
}

bool migrate(StoreConnection& connection, int version, ProjectContents* contents, QString* reason)
{
    StoreTransaction transaction(connection);
    StoreWriter writer(connection);
    bool done = transaction.isOpen() && addTables(connection, version);
    for (AxisRecordData& each : contents->axes) {
        const AxisRecordData now = upToDate(each);
        done = done && writer.writeAxis({ now, each, true });
        each = now;
    }
    const QStringList header = StoreSchema::headerStatements();
    for (const QString& statement : header)
        done = done && connection.run(statement);
    if (done && transaction.commit())
        return true;
    *reason = connection.errorText();
    return false;
}
