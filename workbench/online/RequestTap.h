#pragma once

#include "host/communication/AxisRequest.h"
#include "host/communication/Mailbox.h"

#include <QObject>

/// Brings the news of every command to the controller, and of its answer, to the main thread. Status requests and
/// keep-alives, which are repeated all the time, are left out. One at a time in a program.
class RequestTap : public QObject {
    Q_OBJECT

public:
    explicit RequestTap(QObject* parent = nullptr);
    /// Requests must no longer be made on other threads by then.
    ~RequestTap() override;

    /// True for requests that change something.
    static bool isCommand(int code);

signals:
    /// Is going out.
    void started(const AxisRequest& request);
    /// Has been answered after so many microseconds, or was refused without going out.
    void answered(const AxisRequest& request, const AxisReply& reply, qint64 microseconds);

private:
    Mailbox m_mailbox;
};
