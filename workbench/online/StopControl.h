#pragma once

#include "host/communication/StopLine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQueue>
#include <QVector>

#include <functional>
#include <optional>

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
        /// In which session: m_login at that time, 0 for none; another one tells nothing of it.
        int login = 0;
        /// Nobody has pressed for it: it goes out for the one before.
        bool isRepeated = false;
    };
    /// What has become of it.
    struct Outcome {
        Call call;
        short result = 0;
        /// What the connection's stopRevision() becomes when it tells of it; 0 when that is not known.
        quint64 revision = 0;
    };

    /// Whether STOP held behind the stops and releases of these revisions, the first excluded.
    struct News {
        quint64 from = 0;
        quint64 to = 0;
        bool held = false;
    };

    void beginCall(bool hold);
    void onAnswered(bool hold, short result, quint64 revision);
    /// A stop that the controller did not take since it did not know the session any more.
    bool isBetweenSessions(const Outcome& outcome) const;
    /// Has it go out in the present session. False, and nothing is done, when it is too old or was meant for another
    /// controller.
    bool sendAgain(const Call& call);
    void count(const Outcome& outcome);
    void onHeldTold(bool held);
    void onSessionState();
    void onLoggedIn();
    void onLoggedOut(bool wanted);
    void tell(const QString& text, const char* styleType);
    void tellDone(const Outcome& outcome);
    QString doneText(const Outcome& outcome) const;
    void tellFailure(const Outcome& outcome);
    QString failureText(const Outcome& outcome) const;
    void noteNews(bool held);
    /// How many of the news were one's own calls.
    quint64 ownOf(const News& news) const;
    /// Once nothing of one's own is on its way: what is left of the news is the deed of others.
    void tellOthers();
    void tellOther(const News& news);
    /// The label says that a stop was not acknowledged, or is on its way, or what the controller has told last.
    void showHold();

    OnlineSession& m_session;
    Parts m_parts;
    StopLine m_line;
    StopKey* m_key;
    StopInReach* m_inReach;
    /// Number of the last login, and whether it still counts.
    int m_login = 0;
    bool m_loggedIn = false;
    /// As the controller's session has told it last. Answers report only: they come on another way, and late.
    bool m_held = false;
    /// Of the last news of this session; 0 before the first.
    quint64 m_toldRevision = 0;
    bool m_told = false;
    /// The answers come in the order of the calls.
    QQueue<Call> m_calls;
    /// What this session has told and nobody has explained yet, and the revisions of one's own calls.
    QVector<News> m_unexplained;
    QVector<quint64> m_own;
    /// So many of one's own calls have ended without an answer: each may come up in the news or not.
    quint64 m_unknown = 0;
    /// A stop has been pressed, and the news does not have it yet. Taken: when they have come as far as this.
    bool m_awaited = false;
    quint64 m_awaitedRevision = 0;
    /// The last stop was not acknowledged.
    bool m_failed = false;
    /// What the session in which the last call was made has told since: a hold, or its end.
    bool m_heldSince = false;
    bool m_endedSince = false;
    /// The last call, when it came between two sessions and waits for the login.
    std::optional<Call> m_between;
    /// Nobody wanted the connection any more since the last call.
    bool m_disconnected = false;
};
