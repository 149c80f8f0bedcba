#include "host/projectmodel/StoreSchema.h"

namespace StoreSchema {

QStringList talliedTables()
{
    return { QStringLiteral("axis"), QStringLiteral("controller"), QStringLiteral("setting"),
        QStringLiteral("source") };
}

QStringList tables(int schemaVersion)
{
    QStringList all{
        QStringLiteral("CREATE TABLE axis(id INTEGER PRIMARY KEY, name TEXT NOT NULL, checksum INTEGER NOT NULL)"),
        QStringLiteral("CREATE TABLE axis_property(axis INTEGER NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL, "
                       "PRIMARY KEY(axis, key)) WITHOUT ROWID"),
    };
    if (schemaVersion >= 2) {
        all << QStringLiteral("CREATE TABLE axis_view(axis INTEGER NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL, "
                              "PRIMARY KEY(axis, key)) WITHOUT ROWID");
    }
    return all << QStringLiteral("CREATE TABLE controller(role TEXT PRIMARY KEY, description TEXT NOT NULL, "
                                 "checksum INTEGER NOT NULL) WITHOUT ROWID")
               << QStringLiteral("CREATE TABLE setting(key TEXT PRIMARY KEY, value TEXT NOT NULL, "
                                 "checksum INTEGER NOT NULL) WITHOUT ROWID")
               << QStringLiteral("CREATE TABLE source(name TEXT PRIMARY KEY, text TEXT NOT NULL, "
                                 "checksum INTEGER NOT NULL) WITHOUT ROWID")
               << QStringLiteral("CREATE TABLE tally(name TEXT PRIMARY KEY, row_count INTEGER NOT NULL, "
                                 "checksum INTEGER NOT NULL) WITHOUT ROWID");
}

QStringList headerStatements()
{
    return { QStringLiteral("PRAGMA application_id=%1").arg(applicationId),
        QStringLiteral("PRAGMA user_version=%1").arg(version) };
}

} // namespace StoreSchema
