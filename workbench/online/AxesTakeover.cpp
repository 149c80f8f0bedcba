#include "workbench/online/AxesTakeover.h"

#include "host/projectmodel/ProjectModel.h"
#include "protocol/DiagnosisCodes.h"
#include "workbench/LogManager.h"
#include "workbench/Workspace.h"
#include "workbench/online/AxesDifferenceDialog.h"
#include "workbench/online/OnlineSession.h"
#include "workbench/online/ProjectAxes.h"

namespace {

/// How long a session without a client may stand in the way, and its axes brake.
constexpr int patienceMs = 3000;
constexpr int retryPauseMs = 200;

} // namespace

AxesTakeover::AxesTakeover(OnlineSession& session, Workspace& workspace, QWidget& window, LogManager& log,
    std::function<QString(short)> errorText, QObject* parent)
    : QObject(parent), m_session(session), m_workspace(workspace), m_window(window), m_log(log),
      m_errorText(std::move(errorText))
{
    m_nextTry.setSingleShot(true);
    m_nextTry.setInterval(retryPauseMs);
    connect(&m_nextTry, &QTimer::timeout, this, &AxesTakeover::takeOver);
    connect(&session, &OnlineSession::loggedIn, this, &AxesTakeover::onLoggedIn);
    connect(&session, &OnlineSession::stateChanged, this, [this] {
        if (!m_session.isLoggedIn())
            closeOffer();
    });
    const ControllerConnection& connection = session.connection();
    connect(&connection, &ControllerConnection::axesRead, this, &AxesTakeover::onRead);
    connect(&connection, &ControllerConnection::axesDownloaded, this, &AxesTakeover::onDownloaded);
    connect(&connection, &ControllerConnection::axesReplaced, this, &AxesTakeover::onReplaced);
}

AxesTakeover::~AxesTakeover()
{
    closeOffer();
}

AxesDifferenceDialog* AxesTakeover::offer() const
{
    return m_offer;
}

void AxesTakeover::onLoggedIn()
{
    m_sinceLogin.start();
    begin();
}

void AxesTakeover::onReplaced()
{
    if (!m_session.isLoggedIn())
        return;
    // An offer that is open, and an answer to it that is still to be carried out, were about other axes.
    closeOffer();
    m_log.report(LogInfo,
        tr("The axes in the controller at %1 have been replaced; they are compared with the project again.")
            .arg(m_session.target()));
    m_session.checkAgain();
    begin();
}

void AxesTakeover::begin()
{
    m_askedByUser = false;
    if (m_session.wantsDirectLogin() || !m_workspace.project()) {
        m_session.beginWork(false);
        return;
    }
    m_reading = true;
    m_session.connection().readAxes();
}

void AxesTakeover::compareNow()
{
    if (!m_session.isLoggedIn() || m_session.wantsDirectLogin() || !m_workspace.project() || m_reading || m_sending
        || m_offer || m_nextTry.isActive())
        return;
    m_askedByUser = true;
    m_reading = true;
    m_session.connection().readAxes();
}

void AxesTakeover::onRead(short result, const QVector<ControllerAxis>& axes)
{
    if (!m_reading)
        return;
    m_reading = false;
    if (!m_session.isLoggedIn())
        return;
    m_inController = axes;
    if (result == Diagnosis::ok && m_workspace.project()) {
        judge(axes);
        return;
    }
    // A comparison that the user asks for while at work leaves the work as it is: axes may be in debug mode.
    if (m_askedByUser) {
        emit failed(
            tr("The axes of the controller at %1 cannot be read: %2").arg(m_session.target(), m_errorText(result)));
        return;
    }
    m_session.beginWork(false);
    emit failed(tr("The axes of the controller at %1 cannot be read, so online debugging is off: %2")
                    .arg(m_session.target(), m_errorText(result)));
}

void AxesTakeover::judge(const QVector<ControllerAxis>& axes)
{
    const QVector<AxisDifference> differences = compareAxes(controllerAxes(*m_workspace.project()), axes);
    if (differences.isEmpty()) {
        if (m_askedByUser)
            m_log.report(LogInfo, tr("The controller has the axes of the project."));
        m_session.beginWork(true);
    } else if (m_session.isBuiltIn() && axes.isEmpty()) {
        // It has just been started for this project; there is nothing in it that could be lost.
        takeOver();
    } else {
        ask(differences);
    }
}

void AxesTakeover::ask(const QVector<AxisDifference>& differences)
{
    m_offer = new AxesDifferenceDialog(differences, m_session.target(), &m_window);
    m_offer->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_offer, &QDialog::accepted, this, &AxesTakeover::takeOver);
    connect(m_offer, &QDialog::rejected, this, &AxesTakeover::leaveAsItIs);
    m_offer->open();
}

void AxesTakeover::takeOver()
{
    if (!m_session.isLoggedIn() || !m_workspace.project())
        return;
    m_taken = controllerAxes(*m_workspace.project());
    m_sending = true;
    m_session.connection().downloadAxes(m_taken);
}

void AxesTakeover::onDownloaded(const DownloadOutcome& outcome)
{
    m_sending = false;
    if (!m_session.isLoggedIn())
        return;
    if (outcome.result == Diagnosis::ok) {
        m_log.report(LogInfo, tr("The controller at %1 has taken the axes over.").arg(m_session.target()));
        // The project may have been edited while they were on their way.
        if (m_workspace.project() && compareAxes(controllerAxes(*m_workspace.project()), m_taken).isEmpty())
            m_session.beginWork(true);
        else
            begin();
        return;
    }
    if (mayPass(outcome.result)) {
        m_nextTry.start();
        return;
    }
    leaveAsItIs();
    QString place;
    if (!outcome.axis.isEmpty())
        place = outcome.key.isEmpty() ? tr("axis %1: ").arg(outcome.axis)
                                      : tr("axis %1, %2: ").arg(outcome.axis, outcome.key);
    emit failed(tr("The controller at %1 has not taken the axes over: %2%3 %4")
                    .arg(m_session.target(), place, m_errorText(outcome.result), outcome.reason)
                    .trimmed());
}

bool AxesTakeover::mayPass(short refusal) const
{
    return (refusal == Diagnosis::ownedByOther || refusal == Diagnosis::axisEnabled)
        && !m_sinceLogin.hasExpired(patienceMs);
}

void AxesTakeover::leaveAsItIs()
{
    if (!m_session.isLoggedIn() || !m_workspace.project())
        return;
    const bool numbered = sameNumbers(controllerAxes(*m_workspace.project()), m_inController);
    m_log.report(LogWarning,
        numbered ? tr("The controller runs its axes with other parameters than the project has.")
                 : tr("The controller has other axes than the project; online debugging is off until it has taken the "
                      "project's axes over."));
    m_session.beginWork(numbered);
}

void AxesTakeover::closeOffer()
{
    m_reading = false;
    m_sending = false;
    m_nextTry.stop();
    if (!m_offer)
        return;
    m_offer->disconnect(this);
    m_offer->close();
    m_offer.clear();
}
