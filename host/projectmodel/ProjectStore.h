#pragma once

#include "host/projectmodel/ProjectContents.h"

#include <QCoreApplication>
#include <QString>

#include <memory>

class StoreConnection;
class StoreSnapshot;

/// The file of one open project. Holds it locked against every other opener for as long as it lives. Main thread only.
///
/// Errors are texts for the user that name the file and the reason; whoever gets one finds the file as it was.
class ProjectStore {
    Q_DECLARE_TR_FUNCTIONS(ProjectStore)

public:
    /// Writes a new project file. The file appears whole or not at all; one that exists is not touched.
    static bool create(const QString& path, const ProjectContents& contents, QString* error);
    /// Opens a project file, checks all of it and reads it. Brings a file of an older version up to date, after a copy
    /// has been put beside it. A file that cannot be written, or that lies in a folder where nothing can, is opened to
    /// be read only, and so is any file if the caller asks for that: it then stays as it is, its version included. Null
    /// sets the error.
    static std::unique_ptr<ProjectStore> open(
        const QString& path, ProjectContents* contents, QString* error, bool readOnly = false);

    ~ProjectStore();
    ProjectStore(const ProjectStore&) = delete;
    ProjectStore& operator=(const ProjectStore&) = delete;

    QString filePath() const { return m_path; }
    bool isReadOnly() const { return m_snapshot != nullptr; }

    /// Makes all changes durable, or none.
    bool write(const ProjectChanges& changes, QString* error);
    /// False when the store has no such axis or cannot read it.
    bool readAxis(quint32 id, AxisRecordData* record) const;
    /// Writes a copy with the changes to that path, replacing a file there once the copy is whole, and opens it. Null
    /// sets the error; then nothing has changed.
    std::unique_ptr<ProjectStore> copyTo(const QString& path, const ProjectChanges& changes, QString* error) const;

private:
    ProjectStore(const QString& path, std::unique_ptr<StoreSnapshot> snapshot);
    static std::unique_ptr<ProjectStore> openFile(
        const QString& path, ProjectContents* contents, QString* reason, bool readOnly = false);
    bool load(ProjectContents* contents, QString* reason);
    bool read(int version, ProjectContents* contents, QString* reason);
    bool bringUpToDate(int version, ProjectContents* contents, QString* reason);

    QString m_path;
    /// The copy on which a project works that can only be read.
    std::unique_ptr<StoreSnapshot> m_snapshot;
    std::unique_ptr<StoreConnection> m_connection;
};
