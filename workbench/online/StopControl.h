#pragma once

#include "host/communication/StopLine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQueue>

#include <functional>

class LogManager;
class MessageBar;
class OnlineSession;
class QAction;
class QLabel;
class StopButton;
class StopInReach;
class StopKey;

/// The emergency stop as the user has it: a button, a key, a word on what became of it, and the release. Main thread.
class StopControl : public QObject {
    Q_OBJECT

public:
    /// The button and the label stand in the window; the actions are those of the menu.
    struct Parts {
        StopButton& button;
        QLabel& feedback;
        QAction& stopAction;
        QAction& releaseAction;
        MessageBar& messages;
        LogManager& log;
        /// The text for a code that is not 0.
        std::function<QString(short code)> errorText;
    };

    StopControl(
        OnlineSession& session, BackgroundTransactionService& service, const Parts& parts, QObject* parent = nullptr);
    ~StopControl() override;

    void stop();
    void release();
    /// The controller holds all axes.
    bool isHeld() const { return m_held; }

signals:
    /// The controller's answer, or that there is none, after so many microseconds.
    void answered(bool hold, short result, qint64 microseconds);

private:
    void beginCall();
    void onAnswered(bool hold, short result);
    void onHeldTold(bool held);
    void onLoggedOut();
    void onSessionState();
    void tell(const QString& text, const char* styleType);
    void tellDone(bool hold, qint64 milliseconds);
    QString doneText(bool hold, qint64 milliseconds) const;
    void tellFailure(bool hold, short result);
    /// The label says what the controller has told last, or that a stop is on its way.
    void showHold();

    OnlineSession& m_session;
    Parts m_parts;
    StopLine m_line;
    StopKey* m_key;
    StopInReach* m_inReach;
    /// As the controller's session has told it last. Answers report only: they come on another way, and late.
    bool m_held = false;
    /// Since when each call waits for its answer; the answers come in their order.
    QQueue<QElapsedTimer> m_calls;
    /// The last call was a stop.
    bool m_stopping = false;
    /// What the session in which the last call was made has told since: a hold, or its end.
    bool m_heldSince = false;
    bool m_endedSince = false;
    /// The session in which the last call was made has gone; what another one tells says nothing of that call.
    bool m_sessionGone = false;
    /// The last stop was not acknowledged.
    bool m_failed = false;
    bool m_loggedIn = false;
};
