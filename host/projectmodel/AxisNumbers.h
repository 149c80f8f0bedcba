#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

/// The keys of a record whose numbers the model gives: "AxisNo" and "AxisID".
QStringList axisNumberKeys();

/// The lowest number from 0 that none of the records has under that key.
int lowestFreeNumber(const std::vector<QMap<QString, QString>*>& records, const QString& key);

/// Gives a number to each record that has none under that key, one outside 0 to limit - 1, or one that an earlier
/// record has; sound numbers stay. A limit of 0 stands for 256.
void repairNumbers(const std::vector<QMap<QString, QString>*>& records, const QString& key, int limit);
