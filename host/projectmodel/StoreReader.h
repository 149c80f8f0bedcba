#pragma once

#include "host/projectmodel/ProjectContents.h"

#include <QCoreApplication>
#include <QString>

class StoreConnection;

/// Reads a project file and checks what it reads.
class StoreReader {
    Q_DECLARE_TR_FUNCTIONS(StoreReader)

public:
    /// Reads files of that schema version.
    StoreReader(StoreConnection& connection, int schemaVersion);

    /// The database's own check, the tables as they must be, every checksum, every tally. False: errorText tells the
    /// first thing that is wrong.
    bool readAll(ProjectContents* contents);
    /// One axis by its id. False when it is not there or not whole.
    bool readAxis(quint32 id, AxisRecordData* record);
    /// All that is whole of a damaged file; the rest is left out.
    void readWhole(ProjectContents* contents);

    QString errorText() const { return m_error; }

private:
    using Texts = QMap<QString, QString>;

    bool checkFile();
    bool checkTables();
    bool checkTally(const QString& table, int rows);
    bool readTexts(const QString& table, Texts* texts);
    bool readController(ProjectContents* contents);
    bool readAxes(QVector<AxisRecordData>* axes);
    bool readAxisRows(QVector<AxisRecordData>* axes, QVector<qint64>* sums);
    bool readMaps(const QString& table, QVector<AxisRecordData>* axes, Texts AxisRecordData::*member);
    bool readMap(const QString& table, quint32 axis, Texts* texts);
    bool fail(const QString& reason);
    bool failed();

    StoreConnection& m_connection;
    int m_version;
    QString m_error;
};
