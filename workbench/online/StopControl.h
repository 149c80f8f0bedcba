#pragma once

#include "host/communication/StopLine.h"

#include <QElapsedTimer>
#include <QObject>

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
    void onAnswered(bool hold, short result);
    void onHeldTold(bool held);
    void onLoggedOut();
    void onSessionState();
    void tell(const QString& text, const char* styleType);
    void tellDone(bool hold);
    QString doneText(bool hold) const;
    void tellFailure(bool hold, short result);
    /// The label says what the controller has told last, or that a stop is on its way.
    void showHold();

    OnlineSession& m_session;
    Parts m_parts;
    StopLine m_line;
    StopKey* m_key;
    StopInReach* m_inReach;
    QElapsedTimer m_pressed;
    /// As the controller's session has told it last. Answers report only: they come on another way, and late.
    bool m_held = false;
    /// Calls, and stops among them, whose answers are still to come.
    int m_calls = 0;
    int m_stops = 0;
    /// Pressed once more while a stop was under way.
    bool m_again = false;
    /// Since the last press: the session has told of a hold; it has told anything; a stop may be over, since it was
    /// told so or a release has gone out.
    bool m_heldSince = false;
    bool m_toldSince = false;
    bool m_endedSince = false;
    /// The last stop was not acknowledged.
    bool m_failed = false;
    bool m_loggedIn = false;
};
