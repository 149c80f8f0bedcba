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
    m_fileName = fileName;
    m_thread = std::thread([this, fileName, sheet = std::move(sheet)] {
        m_saved = CurveExport::save(fileName, sheet, m_cancelled, &m_reason);
        QMetaObject::invokeMethod(this, &CurveExporter::finish, Qt::QueuedConnection);
    });
    return true;
}

void CurveExporter::finish()
{
    m_thread.join();
    // Whoever hears of it may start another.
    const QString fileName = m_fileName;
    emit finished(fileName, m_saved ? QString() : CurveExport::failure(fileName, m_reason));
}
