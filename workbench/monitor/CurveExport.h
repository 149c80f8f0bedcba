#pragma once

#include "workbench/monitor/CurveStore.h"

#include <QString>
#include <QVector>

class QIODevice;

/// Writes readings as comma-separated values: a header with names and units, then one line a time, the numbers with a
/// point whatever the language. A time at which an axis has no reading leaves its fields empty, and so does a gap.
namespace CurveExport {

struct Column {
    int axisNo = 0;
    CurveKind kind = SetPosition;
    /// What stands in the header.
    QString title;
};

void write(QIODevice& device, const CurveStore& curves, const QVector<Column>& columns);
/// Writes the file whole or not at all. False with a text for the user, which names the file.
bool save(const QString& fileName, const CurveStore& curves, const QVector<Column>& columns, QString* error);

} // namespace CurveExport
