#include "workbench/online/StopControl.h"

#include "protocol/DiagnosisCodes.h"
#include "workbench/LogManager.h"
#include "workbench/MessageBar.h"
#include "workbench/online/OnlineSession.h"
#include "workbench/online/StopButton.h"
#include "workbench/online/StopInReach.h"
#include "workbench/online/StopKey.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QVariant>

#include <algorithm>

StopControl::StopControl(
    OnlineSession& session, BackgroundTransactionService& service, const Parts& parts, QObject* parent)
    : QObject(parent), m_session(session), m_parts(parts), m_line(&session.connection(), &service),
      m_key(new StopKey(this)), m_inReach(new StopInReach(parts.button, this))
{
    m_key->setButtonAt([&button = m_parts.button](const QPoint& place) {
        return button.isVisible() && button.rect().contains(button.mapFromGlobal(place));
    });
    connect(m_key, &StopKey::pressed, this, &StopControl::stop);
    connect(m_inReach, &StopInReach::pressed, this, &StopControl::stop);
    connect(&m_parts.button, &QAbstractButton::pressed, this, &StopControl::stop);
    connect(&m_parts.stopAction, &QAction::triggered, this, &StopControl::stop);
    connect(&m_parts.releaseAction, &QAction::triggered, this, &StopControl::release);
    connect(&m_line, &StopLine::answered, this, &StopControl::onAnswered);
    connect(&session.connection(), &ControllerConnection::stopHeldTold, this, &StopControl::onHeldTold);
    connect(&session, &OnlineSession::stateChanged, this, &StopControl::onSessionState);
    onSessionState();
}

StopControl::~StopControl() = default;

// Each press goes out, and a call that is still under way is given up for it: it may have been lost, or ended by a
// release of which nothing is known here yet.
void StopControl::stop()
{
    if (!m_session.isWanted())
        return;
    beginCall(true);
    m_awaited = true;
    tell(tr("STOP sent…"), "warning");
    m_line.stop();
}

void StopControl::release()
{
    if (!m_session.isWanted())
        return;
    beginCall(false);
    m_awaited = false;
    m_line.release();
}

void StopControl::beginCall(bool hold)
{
    m_failed = m_heldSince = m_endedSince = m_disconnected = false;
    m_sessionGone = !m_loggedIn;
    const auto before = static_cast<quint64>(m_calls.size());
    m_ownRevision = m_session.connection().stopRevision() + before + 1;
    ++m_untold;
    Call call{ hold, QElapsedTimer(), m_session.target(), m_ownRevision };
    call.since.start();
    m_calls.enqueue(call);
}

void StopControl::onAnswered(bool hold, short result)
{
    if (m_calls.isEmpty())
        return;
    const Call call = m_calls.dequeue();
    emit answered(hold, result, call.since.nsecsElapsed() / 1000);
    const bool perhapsTaken
        = result == Diagnosis::ok || result == Diagnosis::notConnected || result == Diagnosis::noAnswer;
    if (!perhapsTaken && m_untold > 0)
        --m_untold;
    // What came of a call has no meaning any more when another one was made behind it.
    if (!m_calls.isEmpty())
        return;
    // The session tells of holds too, so the answer may be missing and the call carried out.
    if (result == Diagnosis::ok || (hold ? m_heldSince : m_endedSince))
        tellDone(call);
    else
        tellFailure(call, result);
}

void StopControl::tellDone(const Call& call)
{
    // The session will tell of it.
    if (m_sessionGone || m_toldRevision >= call.revision)
        m_awaited = false;
    showHold();
    m_parts.log.report(call.hold ? LogWarning : LogInfo, doneText(call));
}

// Another client may have had its say before the answer came.
QString StopControl::doneText(const Call& call) const
{
    const bool overtaken = !m_sessionGone && m_held != call.hold && m_toldRevision > call.revision;
    if (!call.hold)
        return overtaken ? tr("STOP has been released, and holds again.") : tr("STOP has been released.");
    return (overtaken
            ? tr("STOP: the controller has stopped every axis in debug mode (%1 ms), and has been released since.")
            : tr("STOP: the controller has stopped every axis in debug mode and holds them (%1 ms)."))
        .arg(call.since.elapsed());
}

void StopControl::tellFailure(const Call& call, short result)
{
    // Behind a disconnection there is nothing to label, nor behind a new login; the message stays.
    m_failed = call.hold && !call.target.isEmpty() && !m_disconnected && !(m_sessionGone && m_loggedIn);
    m_awaited = false;
    showHold();
    const QString text = failureText(call, result);
    m_parts.messages.showMessage(text);
    m_parts.log.report(LogError, text);
}

QString StopControl::failureText(const Call& call, short result) const
{
    if (call.target.isEmpty())
        return tr(
            "The built-in controller is still starting and has no axes in debug mode: there was nothing to stop.");
    if (!call.hold && result == Diagnosis::emergencyStop)
        return tr("The controller at %1 has not released STOP: it has been pressed again, here or by another client.")
            .arg(call.target);
    return (call.hold ? tr("STOP was not acknowledged by the controller at %1: %2 Use the machine's own emergency "
                           "stop. Without a connection the controller stops its axes by itself.")
                      : tr("The controller at %1 has not released STOP: %2"))
        .arg(call.target, m_parts.errorText(result));
}

void StopControl::onHeldTold(bool held)
{
    const bool first = !m_told;
    m_told = true;
    m_held = held;
    if (!m_sessionGone) {
        m_heldSince = m_heldSince || held;
        m_endedSince = m_endedSince || !held;
    }
    tellOthers(first);
    if (held)
        m_failed = m_awaited = false;
    else if (m_calls.isEmpty() && m_toldRevision >= m_ownRevision)
        m_awaited = false;
    m_parts.releaseAction.setEnabled(held);
    m_parts.releaseAction.setVisible(held);
    showHold();
}

void StopControl::tellOthers(bool first)
{
    const quint64 revision = m_session.connection().stopRevision();
    const quint64 news = first ? 0 : revision - m_toldRevision;
    const bool byOthers = news > m_untold;
    m_untold -= std::min(news, m_untold);
    m_toldRevision = revision;
    if (first && m_held) {
        m_parts.log.report(LogWarning, tr("The controller holds all axes in debug mode: STOP has not been released."));
    } else if (byOthers && m_held) {
        const QString text
            = tr("Another client has pressed STOP: the controller has stopped every axis in debug mode.");
        m_parts.messages.showMessage(text);
        m_parts.log.report(LogWarning, text);
    } else if (byOthers) {
        m_parts.log.report(LogInfo, tr("Another client has released STOP."));
    }
}

void StopControl::showHold()
{
    if (m_failed)
        tell(tr("STOP not acknowledged"), "danger");
    else if (m_held)
        tell(tr("STOP holds"), "danger");
    else if (m_awaited)
        tell(tr("STOP sent…"), "warning");
    else
        tell(QString(), "");
}

void StopControl::onSessionState()
{
    const bool wanted = m_session.isWanted();
    m_key->setEnabled(wanted);
    m_parts.button.setEnabled(wanted);
    m_parts.stopAction.setEnabled(wanted);
    const bool wasLoggedIn = m_loggedIn;
    m_loggedIn = m_session.isLoggedIn();
    if (m_loggedIn && !wasLoggedIn)
        onLoggedIn();
    else if (!m_loggedIn)
        onLoggedOut(wanted);
    showHold();
}

void StopControl::onLoggedIn()
{
    m_failed = false;
    m_awaited = m_awaited && !m_calls.isEmpty();
    m_untold = 0;
}

// That a stop was not acknowledged stays to be seen: until the next login nobody knows what became of it.
void StopControl::onLoggedOut(bool wanted)
{
    m_held = m_told = false;
    m_sessionGone = true;
    if (!wanted) {
        m_failed = m_awaited = false;
        m_disconnected = true;
    }
    m_parts.releaseAction.setEnabled(false);
    m_parts.releaseAction.setVisible(false);
}

void StopControl::tell(const QString& text, const char* styleType)
{
    m_parts.feedback.setProperty("styleType", QString::fromLatin1(styleType));
    m_parts.feedback.style()->unpolish(&m_parts.feedback);
    m_parts.feedback.style()->polish(&m_parts.feedback);
    // With this event the label takes over the room that the style wants around its text.
    QEvent change(QEvent::StyleChange);
    QCoreApplication::sendEvent(&m_parts.feedback, &change);
    m_parts.feedback.setText(text);
    m_parts.feedback.updateGeometry();
}
