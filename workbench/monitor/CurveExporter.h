#pragma once

#include "workbench/monitor/CurveExport.h"

#include <QObject>

#include <atomic>
#include <thread>

/// Writes curves to a file on a thread of its own. With many axes that takes seconds, and meanwhile the emergency
/// stop's key and the watch on jogs must not stand still. To be used on one thread.
class CurveExporter : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    /// Gives an export under way up and waits for its thread; the file is then as it was before.
    ~CurveExporter() override;

    bool isBusy() const { return m_thread.joinable(); }
    /// False, and nothing is done, while another export is under way.
    bool start(const QString& fileName, CurveExport::Sheet sheet);

signals:
    /// error is empty when the file has been written; otherwise a text for the user, which names the file.
    void finished(const QString& fileName, const QString& error);

private:
    void finish();

    std::atomic<bool> m_cancelled{ false };
    QString m_fileName;
    /// The thread's, until it has been joined.
    bool m_saved = false;
    QString m_reason;
    std::thread m_thread;
};
