#pragma once

#include "host/communication/AxesComparison.h"
#include "host/communication/ControllerAxis.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class AxesDifferenceDialog;
class LogManager;
class OnlineSession;
class QWidget;
class Workspace;

/// Sees to it that the controller runs the axes that the project says, before anything is commanded by number: reads
/// them after each login and whenever another client has replaced them, compares, and offers to put the project's axes
/// into the controller. Main thread; nothing blocks.
///
/// For three seconds after a login a controller that refuses the axes, since one is still enabled or in debug mode of
/// another client, is asked again: a session that went with a lost link, or with a workbench that was killed, lives for
/// up to two seconds more, and then its axes brake. Who still works on the controller after that is somebody else, and
/// the refusal is told.
class AxesTakeover : public QObject {
    Q_OBJECT

public:
    /// The offer opens over the window.
    /// errorText gives the text for a code that is not 0.
    AxesTakeover(OnlineSession& session, Workspace& workspace, QWidget& window, LogManager& log,
        std::function<QString(short code)> errorText, QObject* parent = nullptr);
    ~AxesTakeover() override;

    /// Compares again, and offers what differs; says so when nothing does. Without effect while axes are being read or
    /// taken over already.
    void compareNow();
    /// The offer that is open, or null.
    AxesDifferenceDialog* offer() const;

signals:
    /// The controller has not taken the axes over, or they could not be read; the text names which and why.
    void failed(const QString& text);

private:
    void onLoggedIn();
    void onReplaced();
    void begin();
    void onRead(short result, const QVector<ControllerAxis>& axes);
    void judge(const QVector<ControllerAxis>& axes);
    void ask(const QVector<AxisDifference>& differences);
    void takeOver();
    bool mayPass(short refusal) const;
    void onDownloaded(const DownloadOutcome& outcome);
    void leaveAsItIs();
    void closeOffer();

    OnlineSession& m_session;
    Workspace& m_workspace;
    QWidget& m_window;
    LogManager& m_log;
    std::function<QString(short)> m_errorText;
    QPointer<AxesDifferenceDialog> m_offer;
    QVector<ControllerAxis> m_inController;
    /// As they were sent to the controller.
    QVector<ControllerAxis> m_taken;
    QElapsedTimer m_sinceLogin;
    QTimer m_nextTry;
    bool m_reading = false;
    bool m_sending = false;
    bool m_askedByUser = false;
};
