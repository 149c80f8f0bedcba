#pragma once

#include "host/communication/Export.h"

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

/// Brings work from other threads to the thread where the mailbox lives, in order. Standard locks only, so that the
/// thread sanitizer sees what happens here.
class KESTRUN_COMMUNICATION_EXPORT Mailbox : public QObject {
public:
    explicit Mailbox(QObject* parent = nullptr);
    ~Mailbox() override;

    /// Any thread. Runs the work when the mailbox's thread comes to its events, also those of a loop that earlier work
    /// has opened; never, when the mailbox dies first. Work may destroy the mailbox.
    void post(std::function<void()> work);

protected:
    void customEvent(QEvent* event) override;

private:
    void wake();
    void openNext();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_letters;
};
