#include "host/projectmodel/ProjectStore.h"

#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/StoreConnection.h"
#include "host/projectmodel/StoreFile.h"
#include "host/projectmodel/StoreMigration.h"
#include "host/projectmodel/StoreReader.h"
#include "host/projectmodel/StoreSchema.h"
#include "host/projectmodel/StoreWriter.h"

#include <QFile>

#include <functional>

namespace {

ProjectChanges allOf(const ProjectContents& contents)
{
    ProjectChanges changes;
    for (const AxisRecordData& each : contents.axes)
        changes.axes.append({ each, {}, false });
    changes.settings = contents.settings;
    changes.sources = contents.sources;
    changes.controllerChanged = true;
    changes.controller = contents.controller;
    changes.formerController = contents.formerController;
    return changes;
}

bool fillNew(const QString& path, const std::function<bool(StoreWriter&)>& write, QString* reason)
{
    StoreConnection connection;
    StoreWriter writer(connection);
    if (!connection.openNew(path)) {
        *reason = connection.errorText();
        return false;
    }
    StoreTransaction transaction(connection);
    if (transaction.isOpen() && write(writer) && transaction.commit())
        return true;
    *reason = connection.errorText();
    return false;
}

QString partOf(const QString& path)
{
    return path + QStringLiteral(".part");
}

/// The descriptions of controllers can be used. One that is missing is none that cannot be read.
bool areUsable(const ProjectContents& contents, QString* reason)
{
    const QString place = QStringLiteral("controller");
    for (const QByteArray& each : { contents.controller, contents.formerController })
        if (!each.isEmpty() && !ControllerDescription().read(each, place, reason))
            return false;
    return true;
}

} // namespace

ProjectStore::ProjectStore(const QString& path, std::unique_ptr<StoreSnapshot> snapshot)
    : m_path(path), m_snapshot(std::move(snapshot)), m_connection(new StoreConnection)
{
}

ProjectStore::~ProjectStore() = default;

bool ProjectStore::create(const QString& path, const ProjectContents& contents, QString* error)
{
    const StoreFile part(partOf(path));
    part.remove();
    QString reason;
    const auto fill
        = [&contents](StoreWriter& writer) { return writer.createTables() && writer.write(allOf(contents)); };
    if (fillNew(partOf(path), fill, &reason) && StoreFile::moveInPlace(partOf(path), path, false, &reason))
        return true;
    part.remove();
    StoreFile::tell(error, path, reason);
    return false;
}

std::unique_ptr<ProjectStore> ProjectStore::open(
    const QString& path, ProjectContents* contents, QString* error, bool readOnly)
{
    QString reason;
    std::unique_ptr<ProjectStore> store = openFile(path, contents, &reason, readOnly);
    if (!store)
        StoreFile::tell(error, path, reason);
    return store;
}

std::unique_ptr<ProjectStore> ProjectStore::openFile(
    const QString& path, ProjectContents* contents, QString* reason, bool readOnly)
{
    const StoreFile file(path);
    if (!file.checkHeader(reason))
        return nullptr;
    std::unique_ptr<StoreSnapshot> snapshot;
    const bool isWritable = !readOnly && file.isWritable();
    if (!isWritable || file.hasLog()) {
        if (file.isLockedElsewhere()) {
            *reason = tr("another program has the file open");
            return nullptr;
        }
        snapshot = StoreSnapshot::take(path, reason);
        if (!snapshot)
            return nullptr;
    }
    if (isWritable && snapshot) {
        // Opening a file with a log brings the log into the file. A copy shows first whether the file is to be refused,
        // for then it has to stay as it is.
        ProjectStore trial(path, std::move(snapshot));
        ProjectContents ignored;
        if (!trial.load(&ignored, reason) || !areUsable(ignored, reason))
            return nullptr;
    }
    std::unique_ptr<ProjectStore> store(new ProjectStore(path, std::move(snapshot)));
    return store->load(contents, reason) ? std::move(store) : nullptr;
}

bool ProjectStore::load(ProjectContents* contents, QString* reason)
{
    if (!m_connection->open(isReadOnly() ? m_snapshot->path() : m_path)) {
        *reason = m_connection->errorText();
        return false;
    }
    const QVariant found = m_connection->value(QStringLiteral("PRAGMA user_version"));
    if (!found.isValid()) {
        *reason = m_connection->errorText();
        return false;
    }
    const int version = found.toInt();
    if (version > StoreSchema::version) {
        *reason = tr("a newer version of this program has written it");
        return false;
    }
    return read(version, contents, reason) && bringUpToDate(version, contents, reason);
}

bool ProjectStore::read(int version, ProjectContents* contents, QString* reason)
{
    StoreReader reader(*m_connection, version);
    if (reader.readAll(contents))
        return true;
    *reason = reader.errorText();
    return false;
}

bool ProjectStore::bringUpToDate(int version, ProjectContents* contents, QString* reason)
{
    const bool isCurrent = version == StoreSchema::version;
    if (isCurrent && m_connection->isLogged())
        return true;
    // From here on the file changes, so nothing may be left for which it would be refused.
    if (!areUsable(*contents, reason))
        return false;
    if (!isCurrent && !isReadOnly() && !keepCopy(*m_connection, m_path, version, reason))
        return false;
    if (!m_connection->useLog()) {
        *reason = m_connection->errorText();
        return false;
    }
    return isCurrent || migrate(*m_connection, version, contents, reason);
}

bool ProjectStore::write(const ProjectChanges& changes, QString* error)
{
    if (isReadOnly()) {
        StoreFile::tell(error, m_path, tr("the file can only be read"));
        return false;
    }
    StoreTransaction transaction(*m_connection);
    StoreWriter writer(*m_connection);
    if (transaction.isOpen() && writer.write(changes) && transaction.commit())
        return true;
    StoreFile::tell(error, m_path, m_connection->errorText());
    return false;
}

bool ProjectStore::readAxis(quint32 id, AxisRecordData* record) const
{
    return StoreReader(*m_connection, StoreSchema::version).readAxis(id, record);
}

std::unique_ptr<ProjectStore> ProjectStore::copyTo(
    const QString& path, const ProjectChanges& changes, QString* error) const
{
    const StoreFile part(partOf(path));
    part.remove();
    QString reason;
    std::unique_ptr<ProjectStore> copy;
    if (StoreFile(path).isLockedElsewhere())
        reason = tr("another program has the file open");
    else if (!m_connection->run(QStringLiteral("VACUUM INTO ?"), partOf(path)))
        reason = m_connection->errorText();
    else if (fillNew(
                 partOf(path), [&changes](StoreWriter& writer) { return writer.write(changes); }, &reason)
        && StoreFile::moveInPlace(partOf(path), path, true, &reason)) {
        ProjectContents ignored;
        copy = openFile(path, &ignored, &reason);
    }
    if (copy)
        return copy;
    part.remove();
    StoreFile::tell(error, path, reason);
    return nullptr;
}
