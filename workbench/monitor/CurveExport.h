#pragma once

#include "workbench/monitor/CurveStore.h"

#include <QString>
#include <QVector>

#include <atomic>

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

/// All that is written, so that it can be written on any thread.
struct Sheet {
    CurveStore curves;
    QVector<Column> columns;
    /// What stands over the times.
    QString timeTitle;
};

/// The title over the times in the language of the program.
QString timeTitle();
/// A text for the user: the file has not been written for that reason.
QString failure(const QString& fileName, const QString& reason);

/// Ends early once cancelled is set, from whatever thread.
void write(QIODevice& device, const Sheet& sheet, const std::atomic<bool>& cancelled);
/// Writes the file whole or not at all. False with the reason when it cannot be written, and when cancelled.
bool save(const QString& fileName, const Sheet& sheet, const std::atomic<bool>& cancelled, QString* reason);

} // namespace CurveExport
