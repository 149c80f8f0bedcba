#pragma once

#include <QMap>
#include <QString>

/// The contents of one axis record as they are stored.
struct AxisRecordData {
    quint32 id = 0;
    QString name;
    QMap<QString, QString> properties;
    QMap<QString, QString> viewInfo;
};

/// The checksum of such a record in a file of that schema version.
qint64 checksumOf(const AxisRecordData& record, int schemaVersion);
