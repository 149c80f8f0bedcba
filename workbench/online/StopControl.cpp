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
#include <utility>

namespace {

/// For so long a press is meant for a session that was not there yet, too.
constexpr qint64 meantForMs = 3000;

} // namespace

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
    showHold();
    m_line.stop();
}

void StopControl::release()
{
    if (!m_session.isWanted())
        return;
    beginCall(false);
    m_awaited = false;
    showHold();
    m_line.release();
}

void StopControl::beginCall(bool hold)
{
    m_failed = m_heldSince = m_endedSince = m_disconnected = false;
    m_awaitedRevision = 0;
    m_between.reset();
    Call call{ hold, QElapsedTimer(), m_session.target(), m_loggedIn ? m_login : 0 };
    call.since.start();
    m_calls.enqueue(call);
}

void StopControl::onAnswered(bool hold, short result, quint64 revision)
{
    if (m_calls.isEmpty())
        return;
    const Outcome outcome{ m_calls.dequeue(), result, revision };
    emit answered(hold, result, outcome.call.since.nsecsElapsed() / 1000);
    count(outcome);
    // What came of a call has no meaning any more when another one was made behind it.
    if (!m_calls.isEmpty())
        return;
    if (isBetweenSessions(outcome)) {
        if (m_loggedIn && sendAgain(outcome.call))
            return;
        if (!m_loggedIn)
            m_between = outcome.call;
    }
    // The session tells of holds too, so the answer may be missing and the call carried out.
    const bool unanswered = result == Diagnosis::notConnected || result == Diagnosis::noAnswer;
    if (result == Diagnosis::ok || (unanswered && (hold ? m_heldSince : m_endedSince)))
        tellDone(outcome);
    else
        tellFailure(outcome);
    tellOthers();
}

// With the login the controller has ended the session in which the stop went out.
bool StopControl::isBetweenSessions(const Outcome& outcome) const
{
    const Call& call = outcome.call;
    return call.hold && !call.isRepeated && !m_disconnected && outcome.result == Diagnosis::refused
        && (!m_loggedIn || call.login != m_login);
}

bool StopControl::sendAgain(const Call& call)
{
    if (!m_session.isWanted() || call.target != m_session.target() || call.since.elapsed() > meantForMs)
        return false;
    const QString text = tr("STOP goes out once more: it came between two sessions.");
    // In the place of the message that it was not acknowledged.
    m_parts.messages.showMessage(text);
    m_parts.log.report(LogWarning, text);
    stop();
    m_calls.last().isRepeated = true;
    return true;
}

void StopControl::count(const Outcome& outcome)
{
    if (outcome.call.login == 0 || outcome.call.login != m_login || !m_loggedIn)
        return;
    if (outcome.revision != 0)
        m_own.append(outcome.revision);
    else if (outcome.result == Diagnosis::ok || outcome.result == Diagnosis::notConnected
        || outcome.result == Diagnosis::noAnswer || outcome.result == Diagnosis::refused)
        ++m_unknown;
}

void StopControl::tellDone(const Outcome& outcome)
{
    // The session will tell of it.
    const bool willBeTold = outcome.call.login == m_login && m_loggedIn && outcome.revision > m_toldRevision;
    m_awaited = m_awaited && willBeTold;
    m_awaitedRevision = outcome.revision;
    showHold();
    m_parts.log.report(outcome.call.hold ? LogWarning : LogInfo, doneText(outcome));
}

// Another client may have had its say before the answer came.
QString StopControl::doneText(const Outcome& outcome) const
{
    const Call& call = outcome.call;
    // Without an answer it is the news that has told of it.
    const bool told = outcome.revision != 0 ? m_toldRevision > outcome.revision : m_heldSince && m_endedSince;
    const bool overtaken = call.login == m_login && m_loggedIn && told && m_held != call.hold;
    if (!call.hold)
        return overtaken ? tr("STOP has been released, and holds again.") : tr("STOP has been released.");
    if (outcome.result != Diagnosis::ok && (call.login != m_login || !m_loggedIn))
        return tr("STOP: the controller had stopped every axis in debug mode before the connection was lost.");
    return (overtaken
            ? tr("STOP: the controller has stopped every axis in debug mode (%1 ms), and has been released since.")
            : tr("STOP: the controller has stopped every axis in debug mode and holds them (%1 ms)."))
        .arg(call.since.elapsed());
}

void StopControl::tellFailure(const Outcome& outcome)
{
    const Call& call = outcome.call;
    // Behind a disconnection there is nothing to label, nor behind a new login; the message stays.
    m_failed = call.hold && !call.target.isEmpty() && !m_disconnected && (!m_loggedIn || call.login == m_login);
    m_awaited = false;
    showHold();
    const QString text = failureText(outcome);
    m_parts.messages.showMessage(text);
    m_parts.log.report(LogError, text);
}

QString StopControl::failureText(const Outcome& outcome) const
{
    const Call& call = outcome.call;
    if (call.target.isEmpty())
        return tr(
            "The built-in controller is still starting and has no axes in debug mode: there was nothing to stop.");
    if (!call.hold && outcome.result == Diagnosis::emergencyStop)
        return tr("The controller at %1 has not released STOP: it has been pressed again, here or by another client.")
            .arg(call.target);
    // It may have been carried out all the same.
    const bool unanswered = outcome.result == Diagnosis::noAnswer || outcome.result == Diagnosis::notConnected;
    if (!call.hold && unanswered)
        return tr("The controller at %1 has not acknowledged the release of STOP: %2")
            .arg(call.target, m_parts.errorText(outcome.result));
    return (call.hold ? tr("STOP was not acknowledged by the controller at %1: %2 Use the machine's own emergency "
                           "stop. Without a connection the controller stops its axes by itself.")
                      : tr("The controller at %1 has not released STOP: %2"))
        .arg(call.target, m_parts.errorText(outcome.result));
}

void StopControl::onHeldTold(bool held)
{
    const bool first = !m_told;
    m_held = held;
    noteNews(held);
    if (held)
        m_failed = false;
    if (m_calls.isEmpty() && m_toldRevision >= m_awaitedRevision)
        m_awaited = false;
    if (first && held)
        m_parts.log.report(LogWarning, tr("The controller holds all axes in debug mode: STOP has not been released."));
    m_parts.releaseAction.setEnabled(held);
    m_parts.releaseAction.setVisible(held);
    showHold();
    tellOthers();
}

void StopControl::noteNews(bool held)
{
    const quint64 revision = m_session.connection().stopRevision();
    const News news{ m_told ? m_toldRevision : revision, revision, held };
    m_unexplained.append(news);
    m_toldRevision = revision;
    m_told = true;
    // What one's own earlier calls have become says nothing of the last one.
    const bool isNews = news.from == news.to || ownOf(news) < news.to - news.from;
    if (!isNews || m_calls.isEmpty() || m_calls.last().login != m_login)
        return;
    m_heldSince = m_heldSince || held;
    m_endedSince = m_endedSince || !held;
}

quint64 StopControl::ownOf(const News& news) const
{
    const auto isIn = [&news](quint64 revision) { return revision > news.from && revision <= news.to; };
    return static_cast<quint64>(std::count_if(m_own.begin(), m_own.end(), isIn));
}

void StopControl::tellOthers()
{
    if (!m_calls.isEmpty())
        return;
    // A call that was answered came behind those that were not: once it is told, they have been told too.
    const bool allTold = m_awaitedRevision != 0 && m_awaitedRevision <= m_toldRevision;
    for (const News& news : qAsConst(m_unexplained)) {
        const quint64 others = news.to - news.from - ownOf(news);
        if (others > m_unknown)
            tellOther(news);
        m_unknown -= std::min(others, m_unknown);
    }
    m_unexplained.clear();
    if (allTold)
        m_unknown = 0;
}

void StopControl::tellOther(const News& news)
{
    if (m_own.contains(news.to)) {
        // What came before one's own call cannot be told from the news.
        m_parts.log.report(LogInfo, tr("Another client has pressed or released STOP, too."));
    } else if (!news.held) {
        m_parts.log.report(LogInfo, tr("Another client has released STOP."));
    } else {
        const QString text
            = tr("Another client has pressed STOP: the controller has stopped every axis in debug mode.");
        if (m_held)
            m_parts.messages.showMessage(text);
        m_parts.log.report(LogWarning, text);
    }
}

void StopControl::showHold()
{
    if (m_failed)
        tell(tr("STOP not acknowledged"), "danger");
    else if (m_awaited && !(m_held && m_heldSince))
        tell(tr("STOP sent…"), "warning");
    else if (m_held)
        tell(tr("STOP holds"), "danger");
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
    ++m_login;
    m_failed = false;
    if (const std::optional<Call> between = std::exchange(m_between, std::nullopt))
        sendAgain(*between);
}

// That a stop was not acknowledged stays to be seen: until the next login nobody knows what became of it.
void StopControl::onLoggedOut(bool wanted)
{
    m_held = m_told = false;
    m_toldRevision = 0;
    m_unexplained.clear();
    m_own.clear();
    m_unknown = 0;
    m_awaited = m_awaited && wanted && !m_calls.isEmpty();
    if (!wanted) {
        m_failed = false;
        m_disconnected = true;
        m_between.reset();
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
