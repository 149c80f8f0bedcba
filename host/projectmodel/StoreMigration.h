#pragma once

#include "host/projectmodel/ProjectContents.h"

#include <QString>

class StoreConnection;

/// Puts a copy of the open file beside it, named after the version it has. False sets the reason.
bool keepCopy(StoreConnection& connection, const QString& path, int version, QString* reason);

/// Brings an open file of an older schema version up to date in one transaction, and with it what has been read from
/// it. Axis records of an older format get the keys that they lack, with their defaults. False sets the reason; then
/// the file is as it was.
bool migrate(StoreConnection& connection, int version, ProjectContents* contents, QString* reason);
