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
    connect(&session.connection(), &ControllerConnection::stopHeldChanged, this, &StopControl::onHeldChanged);
    connect(&session, &OnlineSession::stateChanged, this, &StopControl::onSessionState);
    onSessionState();
}

StopControl::~StopControl() = default;

void StopControl::stop()
{
    if (!m_session.isWanted())
        return;
    m_again = m_underWay;
    if (m_underWay)
        return;
    m_underWay = true;
    m_pressed.start();
    tell(tr("STOP sent…"), "warning");
    m_line.stop();
}

void StopControl::release()
{
    if (!m_session.isWanted())
        return;
    m_pressed.start();
    m_line.release();
}

void StopControl::onAnswered(bool hold, short result)
{
    const bool again = hold && m_again && result == Diagnosis::noAnswer;
    if (hold)
        m_underWay = m_again = false;
    emit answered(hold, result, m_pressed.nsecsElapsed() / 1000);
    // Whoever has pressed STOP again has no use for what became of the release before it.
    if (!hold && m_underWay)
        return;
    // The session tells of a hold too, so the answer may be missing and the stop done.
    if (result != Diagnosis::ok && m_held != hold) {
        tellFailure(hold, result);
        // Whoever has pressed once more meanwhile means it.
        if (again)
            stop();
        return;
    }
    onHeldChanged(hold);
    m_parts.log.report(hold ? LogWarning : LogInfo,
        hold ? tr("STOP: the controller has stopped every axis in debug mode and holds them (%1 ms).")
                   .arg(m_pressed.elapsed())
             : tr("STOP has been released."));
}

void StopControl::tellFailure(bool hold, short result)
{
    const QString reason = m_parts.errorText(result);
    const QString text = hold
        ? tr("STOP was not acknowledged by the controller at %1: %2 Use the machine's own emergency "
             "stop. Without a connection the controller stops its axes by itself.")
              .arg(m_session.target(), reason)
        : tr("The controller at %1 has not released STOP: %2").arg(m_session.target(), reason);
    tell(hold ? tr("STOP not acknowledged") : tr("STOP holds"), "danger");
    m_parts.messages.showMessage(text);
    m_parts.log.report(LogError, text);
}

void StopControl::onHeldChanged(bool held)
{
    m_held = held;
    m_parts.releaseAction.setEnabled(held);
    m_parts.releaseAction.setVisible(held);
    tell(held ? tr("STOP holds") : QString(), held ? "danger" : "");
}

void StopControl::onSessionState()
{
    const bool wanted = m_session.isWanted();
    m_key->setEnabled(wanted);
    m_parts.button.setEnabled(wanted);
    m_parts.stopAction.setEnabled(wanted);
    if (!m_session.isLoggedIn())
        onHeldChanged(false);
    if (!wanted)
        m_underWay = false;
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
