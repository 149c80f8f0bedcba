#pragma once

#include "host/communication/AxisRequest.h"
#include "host/communication/BackgroundTransactionService.h"

#include <QMap>
#include <QObject>
#include <QPair>
#include <QTimer>

#include <chrono>

/// Ends a jog whose release never comes. While one is on it watches the mouse: once the left button is up, or the
/// program is no longer in front, and the page has not ended the jog by itself, the watch ends it, on a way of its own
/// that no slow request can hold up, and again until the controller has answered. Main thread.
class JogWatch : public QObject {
    Q_OBJECT

public:
    explicit JogWatch(QObject* parent = nullptr);
    ~JogWatch() override;

    /// A command is going out, or has been answered.
    void onStarted(const AxisRequest& request);
    void onAnswered(const AxisRequest& request, const AxisReply& reply);
    /// While there is no link, whatever was on is forgotten: the controller stops what this client has moved.
    void setLinked(bool linked);
    /// Ends what is under way and takes no more.
    void shutDown();

    /// Jogs that are on as far as is known here.
    int count() const { return m_jogs.size(); }

signals:
    /// The watch has ended a jog, since nobody else has. What it adds to an end of the page's that was not answered is
    /// not told.
    void ended(int axisNo);

private:
    using Clock = std::chrono::steady_clock;
    /// Axis and request: an axis can jog in one direction only, but the ends of both may be on their way.
    using Key = QPair<int, int>;
    struct Jog {
        AxisRequest request;
        /// The controller has answered the start, so an end cannot overtake it any more.
        bool startAnswered = false;
        /// An end has gone out after that.
        bool endSent = false;
        /// So many answers to ends may be those of ends that count for nothing.
        int vainEnds = 0;
        /// The jog before in this direction was not ended for certain.
        bool isSecond = false;
        /// Nobody holds the button any more.
        bool letGo = false;
        /// The button came up, or an end has gone out or was answered.
        Clock::time_point since;
        /// An end of the watch's own is on its way.
        bool ending = false;
        bool told = false;
    };

    void noteStart(const AxisRequest& request);
    void noteEnd(const Key& key);
    /// True when there is nothing left to end.
    bool isOverWith(Jog& jog, const AxisReply& reply, int endsLeft);
    bool neverBegan(Jog& jog, const AxisReply& reply);
    void watch();
    void letGoAll();
    void end(Jog& jog);
    void onApplicationState(Qt::ApplicationState state);
    void forget();
    void updateTimer();

    QMap<Key, Jog> m_jogs;
    /// Ends on their way, whoever has sent them.
    QMap<Key, int> m_ends;
    QTimer m_timer;
    /// The program was in front and is not any more.
    bool m_deactivated = false;
    bool m_linked = false;
    BackgroundTransactionService m_lane;
};
