#include "host/projectmodel/ProjectSalvage.h"

#include "host/projectmodel/ProjectStore.h"
#include "host/projectmodel/StoreConnection.h"
#include "host/projectmodel/StoreFile.h"
#include "host/projectmodel/StoreReader.h"
#include "host/projectmodel/StoreSchema.h"

namespace {

/// False sets the reason: nothing at all can be read.
bool readDamaged(const QString& path, ProjectContents* contents, QString* reason)
{
    StoreConnection connection;
    if (!connection.open(path)) {
        *reason = connection.errorText();
        return false;
    }
    const int version = connection.value(QStringLiteral("PRAGMA user_version")).toInt();
    StoreReader reader(connection, qBound(1, version, StoreSchema::version));
    reader.readWhole(contents);
    if (!contents->axes.isEmpty() || !contents->controller.isEmpty() || !contents->sources.isEmpty())
        return true;
    *reason = reader.errorText();
    return false;
}

} // namespace

int salvageProject(const QString& damagedPath, const QString& newPath, QString* error)
{
    QString reason;
    ProjectContents contents;
    const std::unique_ptr<StoreSnapshot> copy = StoreSnapshot::take(damagedPath, &reason);
    if (copy)
        StoreFile(copy->path()).prepareForRescue();
    if (!copy || !readDamaged(copy->path(), &contents, &reason)) {
        StoreFile::tell(error, damagedPath, reason);
        return -1;
    }
    return ProjectStore::create(newPath, contents, error) ? contents.axes.size() : -1;
}
