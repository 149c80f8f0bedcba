#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// What a project file looks like inside.
///
/// Every table's rows carry checksums: of the row itself, and of an axis's row with all its properties and view
/// information. "tally" holds the number of rows of the other tables, so that a lost row is noticed too.
namespace StoreSchema {

/// In the file's header, "KSTP": marks a file as a project of this program.
constexpr quint32 applicationId = 0x4b535450;
/// Version 1 had no view information.
constexpr int version = 2;

/// The tables whose rows "tally" counts.
QStringList talliedTables();
/// The statements that make the tables of a version, by the order of the tables' names.
QStringList tables(int schemaVersion);
/// The statements that write application id and version into a file's header.
QStringList headerStatements();

} // namespace StoreSchema
