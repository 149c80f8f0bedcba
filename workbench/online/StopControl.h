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
    /// One stop or release on its way.
    struct Call {
        bool hold = true;
        QElapsedTimer since;
        /// Where to.
        QString target;
        /// The connection's stopRevision() once this call, and those in front of it, have been taken and told.
        quint64 revision = 0;
    };

    void beginCall(bool hold);
    void onAnswered(bool hold, short result);
    void onHeldTold(bool held);
    void onSessionState();
    void onLoggedIn();
    void onLoggedOut(bool wanted);
    void tell(const QString& text, const char* styleType);
    void tellDone(const Call& call);
    QString doneText(const Call& call) const;
    void tellFailure(const Call& call, short result);
    QString failureText(const Call& call, short result) const;
    /// What others have done; own calls tell of themselves.
    void tellOthers(bool first);
    /// The label says what the controller has told last, or that a stop is on its way, or was not acknowledged.
    void showHold();

    OnlineSession& m_session;
    Parts m_parts;
    StopLine m_line;
    StopKey* m_key;
    StopInReach* m_inReach;
    bool m_loggedIn = false;
    /// As the controller's session has told it last. Answers report only: they come on another way, and late.
    bool m_held = false;
    /// The present session has told whether STOP holds, and when it did so last its count was this.
    bool m_told = false;
    quint64 m_toldRevision = 0;
    /// So many of one's own calls may still come up in what is told.
    quint64 m_untold = 0;
    /// The answers come in the order of the calls.
    QQueue<Call> m_calls;
    /// Count at which the last call has been taken and told.
    quint64 m_ownRevision = 0;
    /// A stop has been pressed, and nothing is known of it yet.
    bool m_awaited = false;
    /// The last stop was not acknowledged.
    bool m_failed = false;
    /// What the session in which the last call was made has told since: a hold, or its end.
    bool m_heldSince = false;
    bool m_endedSince = false;
    /// The session in which the last call was made has gone; what another one tells says nothing of that call.
    bool m_sessionGone = false;
    /// Nobody wanted the connection any more since the last call.
    bool m_disconnected = false;
};
