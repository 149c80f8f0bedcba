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
    void onHeldChanged(bool held);
    void onSessionState();
    void tell(const QString& text, const char* styleType);
    void tellFailure(bool hold, short result);

    OnlineSession& m_session;
    Parts m_parts;
    StopLine m_line;
    StopKey* m_key;
    StopInReach* m_inReach;
    QElapsedTimer m_pressed;
    bool m_held = false;
    /// A stop is on its way: another press would only stand behind it.
    bool m_underWay = false;
    /// Pressed once more while a stop was under way.
    bool m_again = false;
};
