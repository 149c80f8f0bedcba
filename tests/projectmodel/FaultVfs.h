#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QVector>

/// A layer between the database and its files, through which all databases of the process go once it is installed.
/// Fails operations on demand and keeps a log of all that would have reached the disk.
namespace FaultVfs {

enum class Operation { Write, Sync, Truncate, Delete };

/// One operation as it was carried out.
struct Step {
    Operation operation;
    QString file;
    qint64 offset;
    /// What was written; for a truncation the offset is the new size.
    QByteArray data;
};

/// Makes this layer the default. Call once, before the first database is opened.
void install();

/// The nth operation of that kind from now on fails (n from 1), and with forGood all that follow it.
/// The code is what the database gets, 0 the usual input/output error of that operation.
void failNth(Operation operation, int n, bool forGood, int code = 0);
/// Ends all failing. True when a failure has happened since failNth.
bool stopFailing();

void startLog();
QVector<Step> takeLog();
/// Number of steps in the log so far.
int logSize();

} // namespace FaultVfs

Q_DECLARE_METATYPE(FaultVfs::Operation)
