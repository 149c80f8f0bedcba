#pragma once

#include "host/communication/BackgroundTransactionService.h"
#include "host/communication/ControllerConnection.h"
#include "host/communication/ControllerProcess.h"

#include <QObject>

class ConnectionState;

/// The way of the workbench to one controller: starts the built-in one if that is wanted, connects, tells the rest of
/// the program when work may begin, follows losses, and ends all of it again. Asks the user nothing. Main thread.
class OnlineSession : public QObject {
    Q_OBJECT

public:
    enum State {
        Offline,
        /// The built-in controller is being started.
        Starting,
        Connecting,
        /// Logged in; what the controller holds is still being compared with the project.
        Checking,
        Online,
        /// The link is gone; trying to get it back.
        Lost
    };

    /// The state is told to the rest of the program through transfer, which is not owned. An empty program stands for
    /// the controller beside this program.
    OnlineSession(ConnectionState& transfer, const QString& controllerProgram, QObject* parent = nullptr);
    ~OnlineSession() override;

    /// Starts the built-in controller and connects to it. Without effect unless offline.
    void connectBuiltIn();
    /// Connects to a controller that runs elsewhere. A direct login has no online debugging. Without effect unless
    /// offline.
    void connectTo(const ControllerAddress& address, bool directLogin);
    /// Logs out and ends the built-in controller. Quick, also when nobody answers any more.
    void disconnectNow();

    /// Ends Checking: work may begin. Without online debugging the login counts as a direct one.
    void beginWork(bool onlineDebugging);
    /// From Online back to Checking: what the controller holds is no longer what was compared, so nothing may be
    /// commanded until beginWork(). Without effect in any other state.
    void checkAgain();

    State state() const { return m_state; }
    /// True from the wish to connect to the disconnection.
    bool isWanted() const { return m_state != Offline; }
    bool isBuiltIn() const { return m_builtIn; }
    /// The user asked for a direct login.
    bool wantsDirectLogin() const { return m_direct; }
    /// The link is up: logged in and not lost.
    bool isLoggedIn() const { return m_state == Checking || m_state == Online; }
    /// Without online debugging, whatever the reason.
    bool isDirectLogin() const;
    /// "HOST:PORT" of the controller; empty while it is not known yet.
    QString target() const;
    /// What answers there.
    QString controllerName() const { return m_connection.controllerName(); }
    int version() const { return m_connection.version(); }

    ControllerConnection& connection() { return m_connection; }
    /// The built-in controller's process; runs while connected to it.
    ControllerProcess& process() { return m_process; }

signals:
    void stateChanged();
    /// Logged in, for the first time or again; somebody has to call beginWork().
    void loggedIn();
    /// Could not connect, or the connection ended for a reason that trying again does not mend; offline afterwards.
    void failed(const QString& text);
    void lost(const QString& text);

private:
    void onReady();
    void onOpened();
    void onLost(const QString& reason);
    void setState(State state);
    /// Offline with everything ended, then the news.
    void giveUp(const QString& text);

    ConnectionState& m_transfer;
    QString m_program;
    // The process outlives the connection, which says farewell to it.
    ControllerProcess m_process;
    ControllerConnection m_connection;
    State m_state = Offline;
    bool m_builtIn = false;
    bool m_direct = false;
};
