#pragma once

#include "host/communication/ControllerAddress.h"
#include "host/communication/ControllerAxis.h"
#include "host/communication/Export.h"

#include <QObject>

#include <memory>

/// The connection to one controller: handshake, login, the channel that all calls share, notice of its loss. While it
/// is open its link is ControllerLink::active().
///
/// A controller may notice up to two seconds later than this side that a link is gone. So that the way back does not
/// stand against its own past, each connection shows a random identity of its own at login: with the new session the
/// controller ends the one that the same connection had before, which stops its axes on the emergency ramp.
///
/// Main thread only; nothing here blocks. Every answer comes as a signal on the main thread.
class KESTRUN_COMMUNICATION_EXPORT ControllerConnection : public QObject {
    Q_OBJECT

public:
    enum State {
        Closed,
        /// Logging in, for the first time or again after a loss.
        Connecting,
        Open
    };

    explicit ControllerConnection(QObject* parent = nullptr);
    /// Closes and waits for the connection's threads, one second at most.
    ~ControllerConnection() override;

    State state() const;
    bool isOpen() const { return state() == Open; }
    /// The address of the last open().
    ControllerAddress address() const;
    /// What answers there and the version of the protocol that both speak; valid from opened() on.
    QString controllerName() const;
    int version() const;

    /// Connects and logs in. Ends an earlier connection first. Leads to opened() or failed().
    void open(const ControllerAddress& address);
    /// Logs out. Axes that this client has in debug mode are stopped and left by the controller. Leads to closed(),
    /// also while connecting; without effect when closed.
    void close();

    /// Asks for the controller's axes. Leads to axesRead().
    void readAxes();
    /// How many stops and releases the controller has told of last; 0 before it has told any.
    quint64 stopRevision() const;
    /// Puts the axes into the controller, all or none. Leads to axesDownloaded().
    void downloadAxes(const QVector<ControllerAxis>& axes);

    /// For StopLine and AxisSampler: what they need to make channels of their own. Null while closed.
    class Credentials;
    std::shared_ptr<const Credentials> credentials() const;

signals:
    /// Logged in. Comes again when a lost connection is back.
    void opened();
    /// Could not be opened, or refused on the way back: a code of the diagnosis table and a text for the user. The
    /// connection is closed.
    void failed(short code, const QString& reason);
    /// The link has gone down; once for each loss. The connection goes on trying until it is closed.
    void lost(const QString& reason);
    void closed();
    /// The emergency stop of the controller holds, or does not, by whomever; told first after each login, and anew
    /// after each stop and release.
    void stopHeldTold(bool held);
    void axesRead(short result, const QVector<ControllerAxis>& axes);
    void axesDownloaded(const DownloadOutcome& outcome);
    /// The controller has other axes than those that were last read, or put there, over this connection since
    /// opened(): what is known of them is stale. Once for each time that is known; never before the first reading.
    void axesReplaced();

private:
    struct Private;
    std::shared_ptr<Private> d;
};
