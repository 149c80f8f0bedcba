#include "workbench/monitor/CurveExporter.h"

#include <utility>

CurveExporter::~CurveExporter()
{
    m_cancelled = true;
    if (m_thread.joinable())
        m_thread.join();
}

bool CurveExporter::start(const QString& fileName, CurveExport::Sheet sheet)
{
    if (isBusy())
        return false;
    m_thread = std::thread([this, fileName, sheet = std::move(sheet)] {
        QString reason;
        const bool saved = CurveExport::save(fileName, sheet, m_cancelled, &reason);
        QMetaObject::invokeMethod(
            this, [this, fileName, saved, reason] { finish(fileName, saved, reason); }, Qt::QueuedConnection);
    });
    return true;
}

void CurveExporter::finish(const QString& fileName, bool saved, const QString& reason)
{
    m_thread.join();
    emit finished(fileName, saved ? QString() : CurveExport::failure(fileName, reason));
}
