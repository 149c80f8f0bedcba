#include "workbench/online/OnlineSide.h"

#include "host/projectmodel/DeviceDiagnosiInfo.h"
#include "host/projectmodel/ProjectModel.h"
#include "workbench/ActionManager.h"
#include "workbench/ConnectionState.h"
#include "workbench/LogManager.h"
#include "workbench/MainWindow.h"
#include "workbench/MessageBar.h"
#include "workbench/Workspace.h"
#include "workbench/online/CommandLogPanel.h"
#include "workbench/online/ConnectDialog.h"
#include "workbench/online/ConnectionIndicator.h"
#include "workbench/online/ProjectAxes.h"
#include "workbench/online/StopButton.h"

#include <QAction>
#include <QStatusBar>

namespace {

/// Class of the codes of axis debugging in the diagnosis table.
constexpr int axisDebugErrorClass = 11;

} // namespace

OnlineSide::OnlineSide(const Host& host, QObject* parent)
    : QObject(parent), m_host(host), m_session(host.transfer, host.controllerProgram),
      m_takeover(m_session, host.workspace, host.window, host.log, [this](short code) { return errorText(code); }),
      m_commands(makeNames()), m_stop(m_session, m_background, makeStopParts())
{
    addToWindow();
    connectActions();
    connectTap();
    connectSession();
    showState();
}

OnlineSide::~OnlineSide()
{
    shutDown();
    delete m_indicator;
}

CommandLog::Names OnlineSide::makeNames()
{
    return { [this](int axisNo) { return axisName(axisNo); },
        [&diagnosis = m_host.diagnosis](short code) {
            const ErrorInfo info = diagnosis.errorInfo(axisDebugErrorClass, static_cast<unsigned short>(code));
            return QString(info.name + QStringLiteral(" \u2013 ") + info.text);
        } };
}

StopControl::Parts OnlineSide::makeStopParts()
{
    const auto action = [this](const char* name) -> QAction& { return *m_host.actions.action(QLatin1String(name)); };
    return { m_host.window.stopButton(), m_host.window.stopFeedback(), action("online.stop"), action("online.release"),
        m_host.window.messageBar(), m_host.log, [this](short code) { return errorText(code); } };
}

QString OnlineSide::errorText(short code) const
{
    return m_host.diagnosis.errorInfo(axisDebugErrorClass, static_cast<unsigned short>(code)).text;
}

void OnlineSide::addToWindow()
{
    m_indicator = new ConnectionIndicator(m_session);
    m_host.window.statusBar()->addPermanentWidget(m_indicator);
    m_host.window.addPanel("commands", QT_TRANSLATE_NOOP("MainWindow", "Command log"), new CommandLogPanel(m_commands));
}

void OnlineSide::connectActions()
{
    const auto on = [this](const char* name, auto slot) {
        connect(m_host.actions.action(QLatin1String(name)), &QAction::triggered, this, slot);
    };
    on("online.connect", [this] { m_session.connectBuiltIn(); });
    on("online.connectTo", [this] { askAndConnect(); });
    on("online.disconnect", [this] { m_session.disconnectNow(); });
    on("online.takeOver", [this] { m_takeover.compareNow(); });
}

void OnlineSide::connectTap()
{
    connect(&m_tap, &RequestTap::started, &m_jogs, &JogWatch::onStarted);
    connect(&m_tap, &RequestTap::answered, &m_jogs, &JogWatch::onAnswered);
    connect(&m_tap, &RequestTap::answered, &m_commands, &CommandLog::add);
    connect(&m_stop, &StopControl::answered, &m_commands, &CommandLog::addStop);
    connect(&m_jogs, &JogWatch::ended, this, [this](int axisNo) {
        m_host.log.report(LogWarning,
            tr("The jog of axis %1 was ended here, since its button is no longer held.").arg(axisName(axisNo)));
    });
}

void OnlineSide::connectSession()
{
    connect(&m_session, &OnlineSession::stateChanged, this, &OnlineSide::showState);
    connect(&m_session, &OnlineSession::failed, this, &OnlineSide::report);
    connect(&m_takeover, &AxesTakeover::failed, this, &OnlineSide::report);
    connect(&m_session, &OnlineSession::lost, this, [this](const QString& reason) {
        m_host.log.report(LogWarning, tr("The connection to %1 is lost. %2").arg(m_session.target(), reason));
    });
    // The editors are closed by then: what was under way concerns nobody any more.
    connect(&m_host.workspace, &Workspace::closed, &m_session, &OnlineSession::disconnectNow);
    connect(&m_host.workspace, &Workspace::opened, this, &OnlineSide::showState);
    connect(&m_host.workspace, &Workspace::closed, this, &OnlineSide::showState);
}

void OnlineSide::showState()
{
    const bool open = m_host.workspace.project();
    const bool wanted = m_session.isWanted();
    m_host.actions.action(QStringLiteral("online.connect"))->setEnabled(open && !wanted);
    m_host.actions.action(QStringLiteral("online.connectTo"))->setEnabled(open && !wanted);
    m_host.actions.action(QStringLiteral("online.disconnect"))->setEnabled(wanted);
    m_host.actions.action(QStringLiteral("online.takeOver"))
        ->setEnabled(m_session.state() == OnlineSession::Online && !m_session.wantsDirectLogin());
    m_jogs.setLinked(m_session.isLoggedIn());
}

void OnlineSide::askAndConnect()
{
    ConnectDialog dialog(m_host.settings, &m_host.window);
    if (dialog.exec() == QDialog::Accepted && m_host.workspace.project())
        m_session.connectTo(dialog.address(), dialog.isDirectLogin());
}

void OnlineSide::report(const QString& text)
{
    m_host.log.report(LogError, text);
    m_host.window.messageBar().showMessage(text);
}

QString OnlineSide::axisName(int axisNo) const
{
    return axisNameOf(m_host.workspace.project(), axisNo);
}

void OnlineSide::shutDown()
{
    m_session.disconnectNow();
    m_jogs.shutDown();
    m_background.shutdown();
}
