#pragma once

#include <QByteArray>
#include <QString>

/// The path of the first member of a sound JSON text whose name another member of the same object has, empty if there
/// is none. Parsers drop such a member without a word.
QString pathOfDoubledKey(const QByteArray& json);
