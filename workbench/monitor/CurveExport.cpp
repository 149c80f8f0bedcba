#include "workbench/monitor/CurveExport.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

#include <cmath>
#include <limits>
#include <map>

namespace {

/// How far the writing has come in the points of an axis.
struct Reader {
    const CurveRing* ring;
    int index = 0;

    double time() const
    {
        return index < ring->size() ? ring->at(index).time : std::numeric_limits<double>::infinity();
    }
};

QByteArray quoted(const QString& text)
{
    QString inner = text;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QString(QLatin1Char('"') + inner + QLatin1Char('"')).toUtf8();
}

QByteArray field(double value)
{
    return std::isfinite(value) ? QByteArray::number(value, 'g', 15) : QByteArray();
}

} // namespace

namespace CurveExport {

QString timeTitle()
{
    return QCoreApplication::translate("CurveExport", "Time [s]");
}

QString failure(const QString& fileName, const QString& reason)
{
    return QCoreApplication::translate("CurveExport", "The curves are not saved: %1 cannot be written. %2")
        .arg(QDir::toNativeSeparators(fileName), reason);
}

void write(QIODevice& device, const Sheet& sheet, const std::atomic<bool>& cancelled)
{
    QByteArray line = quoted(sheet.timeTitle);
    std::map<int, Reader> readers;
    for (const Column& column : sheet.columns) {
        line += ',' + quoted(column.title);
        if (const CurveRing* ring = sheet.curves.curves(column.axisNo))
            readers.emplace(column.axisNo, Reader{ ring });
    }
    device.write(line + '\n');
    while (!cancelled) {
        double time = std::numeric_limits<double>::infinity();
        for (const auto& reader : readers)
            time = std::min(time, reader.second.time());
        if (std::isinf(time))
            return;
        line = QByteArray::number(time, 'f', 6);
        for (const Column& column : sheet.columns) {
            line += ',';
            const auto reader = readers.find(column.axisNo);
            if (reader != readers.end() && reader->second.time() == time)
                line += field(reader->second.ring->at(reader->second.index).values[column.kind]);
        }
        device.write(line + '\n');
        for (auto& reader : readers)
            reader.second.index += reader.second.time() == time ? 1 : 0;
    }
}

bool save(const QString& fileName, const Sheet& sheet, const std::atomic<bool>& cancelled, QString* reason)
{
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly)) {
        write(file, sheet, cancelled);
        if (cancelled)
            return false;
        if (file.commit())
            return true;
    }
    *reason = file.errorString();
    return false;
}

} // namespace CurveExport
