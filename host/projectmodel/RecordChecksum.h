#pragma once

#include <QMap>
#include <QString>
#include <QtGlobal>

/// The checksum that stands beside every row, or group of rows, of a project file. It notices any change of a single
/// unit for certain, and any other change but for one in 2^64; it is no protection against intent.
class RecordChecksum {
public:
    RecordChecksum& add(quint64 number);
    /// Adds the length too, so that no two sequences of texts sum up alike by shifting their borders.
    RecordChecksum& add(const QString& text);
    RecordChecksum& add(const QMap<QString, QString>& texts);

    /// As SQLite stores it.
    qint64 value() const { return static_cast<qint64>(m_state); }

private:
    quint64 m_state = 0xcbf29ce484222325u;
};
