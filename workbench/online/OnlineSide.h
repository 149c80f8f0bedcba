#pragma once

#include "host/communication/BackgroundTransactionService.h"
#include "workbench/online/AxesTakeover.h"
#include "workbench/online/CommandLog.h"
#include "workbench/online/JogWatch.h"
#include "workbench/online/OnlineSession.h"
#include "workbench/online/RequestTap.h"
#include "workbench/online/StopControl.h"

#include <QObject>
#include <QPointer>

class ActionManager;
class ConnectionIndicator;
class DeviceDiagnosiInfo;
class IConfiguration;
class MainWindow;

/// All that the workbench has for work on a connected controller, put together. Main thread.
class OnlineSide : public QObject {
    Q_OBJECT

public:
    /// None of them is owned; all must outlive this object.
    struct Host {
        ConnectionState& transfer;
        Workspace& workspace;
        MainWindow& window;
        ActionManager& actions;
        IConfiguration& settings;
        LogManager& log;
        DeviceDiagnosiInfo& diagnosis;
        /// Empty for the controller beside this program.
        QString controllerProgram;
    };

    explicit OnlineSide(const Host& host, QObject* parent = nullptr);
    ~OnlineSide() override;

    /// Runs the requests of pages; published under its key.
    BackgroundTransactionService& background() { return m_background; }
    OnlineSession& session() { return m_session; }
    AxesTakeover& takeover() { return m_takeover; }
    CommandLog& commands() { return m_commands; }
    StopControl& stop() { return m_stop; }
    JogWatch& jogs() { return m_jogs; }
    /// Name of the project's axis of that number on the controller; empty when there is none.
    QString axisName(int axisNo) const;

    /// Asks for an address and connects to it.
    void askAndConnect();
    /// Disconnects and ends what is under way; nothing can be requested afterwards. Can be called again.
    void shutDown();

private:
    StopControl::Parts makeStopParts();
    CommandLog::Names makeNames();
    /// The text of the diagnosis table for a code that is not 0.
    QString errorText(short code) const;
    void connectActions();
    void connectTap();
    void connectSession();
    void addToWindow();
    void showState();
    void report(const QString& text);

    Host m_host;
    BackgroundTransactionService m_background;
    OnlineSession m_session;
    AxesTakeover m_takeover;
    CommandLog m_commands;
    StopControl m_stop;
    JogWatch m_jogs;
    RequestTap m_tap;
    QPointer<ConnectionIndicator> m_indicator;
};
