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
    beginCall();
    m_stopping = true;
    m_failed = false;
    tell(tr("STOP sent…"), "warning");
    m_line.stop();
}

void StopControl::release()
{
    if (!m_session.isWanted())
        return;
    beginCall();
    m_stopping = false;
    m_line.release();
}

void StopControl::beginCall()
{
    m_heldSince = m_endedSince = m_sessionGone = false;
    QElapsedTimer since;
    since.start();
    m_calls.enqueue(since);
}

void StopControl::onAnswered(bool hold, short result)
{
    const QElapsedTimer since = m_calls.isEmpty() ? QElapsedTimer() : m_calls.dequeue();
    emit answered(hold, result, since.isValid() ? since.nsecsElapsed() / 1000 : 0);
    // What came of a call has no meaning any more when another one was made behind it.
    if (!m_calls.isEmpty())
        return;
    // The session tells of holds too, so the answer may be missing and the call carried out.
    if (result == Diagnosis::ok || (hold ? m_heldSince : m_endedSince))
        tellDone(hold, since.elapsed());
    else
        tellFailure(hold, result);
}

void StopControl::tellDone(bool hold, qint64 milliseconds)
{
    // Before the session has told of it there is nothing better to show.
    if (m_held || m_heldSince || m_endedSince || m_sessionGone)
        showHold();
    m_parts.log.report(hold ? LogWarning : LogInfo, doneText(hold, milliseconds));
}

// Another client may have had its say before the answer came.
QString StopControl::doneText(bool hold, qint64 milliseconds) const
{
    const bool overtaken = m_heldSince && m_endedSince && m_held != hold;
    if (hold)
        return (overtaken
                ? tr("STOP: the controller has stopped every axis in debug mode (%1 ms), and has been released since.")
                : tr("STOP: the controller has stopped every axis in debug mode and holds them (%1 ms)."))
            .arg(milliseconds);
    return overtaken ? tr("STOP has been released, and holds again.") : tr("STOP has been released.");
}

void StopControl::tellFailure(bool hold, short result)
{
    // Without a connection there is nothing to label; the message stays.
    m_failed = hold && m_session.isWanted();
    const QString reason = m_parts.errorText(result);
    const QString text = hold
        ? tr("STOP was not acknowledged by the controller at %1: %2 Use the machine's own emergency "
             "stop. Without a connection the controller stops its axes by itself.")
              .arg(m_session.target(), reason)
        : tr("The controller at %1 has not released STOP: %2").arg(m_session.target(), reason);
    showHold();
    m_parts.messages.showMessage(text);
    m_parts.log.report(LogError, text);
}

void StopControl::onHeldTold(bool held)
{
    m_held = held;
    if (!m_sessionGone) {
        m_heldSince = m_heldSince || held;
        m_endedSince = m_endedSince || !held;
    }
    m_failed = false;
    m_parts.releaseAction.setEnabled(held);
    m_parts.releaseAction.setVisible(held);
    showHold();
}

void StopControl::showHold()
{
    if (m_held)
        tell(tr("STOP holds"), "danger");
    else if (m_failed)
        tell(tr("STOP not acknowledged"), "danger");
    else if (!m_calls.isEmpty() && m_stopping)
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
    const bool loggedIn = m_session.isLoggedIn();
    if (!wanted || (loggedIn && !m_loggedIn))
        m_failed = false;
    m_loggedIn = loggedIn;
    if (!loggedIn)
        onLoggedOut();
    else
        showHold();
}

// That a stop was not acknowledged stays to be seen: until the next login nobody knows what became of it.
void StopControl::onLoggedOut()
{
    m_held = m_heldSince = m_endedSince = false;
    m_sessionGone = true;
    m_parts.releaseAction.setEnabled(false);
    m_parts.releaseAction.setVisible(false);
    showHold();
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
