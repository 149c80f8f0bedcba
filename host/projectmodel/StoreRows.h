#pragma once

#include <QString>
#include <QtGlobal>

/// The checksum of a row that holds a text under a key.
qint64 textChecksum(const QString& table, const QString& key, const QString& text);
/// The checksum of a row of "tally".
qint64 tallyChecksum(const QString& table, int rows);

/// The keys of the table "controller".
QString presentRole();
QString formerRole();

/// The database gives back exactly this text. A text with surrogate pairs counts as doubtful.
bool isStorableText(const QString& text);
/// The text as the database gives it back: without a leading byte order mark, with a question mark for half a surrogate
/// pair.
QString storableText(const QString& text);
