#pragma once

#include "host/projectmodel/ProjectContents.h"

#include <QMap>
#include <QString>
#include <QVector>

class StoreConnection;

/// Writes rows of a project file, with their checksums. The transaction is the caller's. Each operation is false when
/// a statement failed; the connection knows why.
class StoreWriter {
public:
    explicit StoreWriter(StoreConnection& connection);

    /// Tables and header of an empty project.
    bool createTables();
    bool write(const ProjectChanges& changes);
    /// Writes the axis's row, and of its properties and view information what differs from what is stored.
    bool writeAxis(const AxisChange& change);

private:
    using Texts = QMap<QString, QString>;

    bool writeTexts(const QString& table, const Texts& texts);
    bool writeTallies();
    bool writeMap(const QString& table, quint32 axis, const Texts& now, const Texts& stored);
    bool writeRows(const QString& table, quint32 axis, const QVector<Texts::const_iterator>& rows);
    bool removeAxis(quint32 id);
    bool removeSources(const QStringList& names);

    StoreConnection& m_connection;
};
