#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A copy of a project file, with its log, that nothing else knows. Goes with this object.
class StoreSnapshot {
public:
    /// Null sets the error.
    static std::unique_ptr<StoreSnapshot> take(const QString& path, QString* error);

    QString path() const { return m_directory.filePath(QStringLiteral("project")); }

private:
    StoreSnapshot() = default;
    QTemporaryDir m_directory;
};

/// What can be told, and done, about a project file without opening it as a database. Errors are clauses without the
/// file's name.
class StoreFile {
    Q_DECLARE_TR_FUNCTIONS(StoreFile)

public:
    explicit StoreFile(const QString& path) : m_path(path) { }

    /// Puts a clause behind the name of the file that it is about. Nobody may want the error: null.
    static void tell(QString* error, const QString& path, const QString& reason);

    /// Tells from its header whether this is a project file that this program can read.
    bool checkHeader(QString* error) const;
    /// Gives a damaged file the first bytes and the size without which the database does not look at the rest.
    void prepareForRescue() const;
    /// The file and its folder can be written.
    bool isWritable() const;
    /// A log lies beside it: the last program that had it open was killed.
    bool hasLog() const;
    QString logPath() const;
    /// Another process has the file open as a project.
    bool isLockedElsewhere() const;
    /// Brings a complete new file, of which there is one reference only, to the disk and to its place. Replaces a file
    /// there if told so, else fails when there is one.
    static bool moveInPlace(const QString& from, const QString& to, bool replace, QString* error);
    /// Removes the file and what a database may leave beside it.
    void remove() const;

private:
    QString m_path;
};
