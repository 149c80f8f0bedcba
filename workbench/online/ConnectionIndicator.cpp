#include "workbench/online/ConnectionIndicator.h"

#include "workbench/online/OnlineSession.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>

namespace {

QString symbolOf(OnlineSession::State state)
{
    switch (state) {
    case OnlineSession::Starting:
    case OnlineSession::Connecting:
    case OnlineSession::Checking:
        return QStringLiteral("view-refresh");
    case OnlineSession::Online:
        return QStringLiteral("network-connect");
    case OnlineSession::Lost:
        return QStringLiteral("dialog-warning");
    case OnlineSession::Offline:
        break;
    }
    return QStringLiteral("network-disconnect");
}

} // namespace

ConnectionIndicator::ConnectionIndicator(const OnlineSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_symbol(new QLabel(this)), m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("connectionIndicator"));
    m_text->setObjectName(QStringLiteral("connectionLabel"));
    m_text->setTextFormat(Qt::PlainText);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_symbol);
    layout->addWidget(m_text);
    connect(&session, &OnlineSession::stateChanged, this, &ConnectionIndicator::show);
    show();
}

ConnectionIndicator::~ConnectionIndicator() = default;

QString ConnectionIndicator::text() const
{
    return m_text->text();
}

void ConnectionIndicator::show()
{
    m_symbolName = symbolOf(m_session.state());
    m_symbol->setPixmap(QIcon::fromTheme(m_symbolName).pixmap(16, 16));
    m_text->setText(describe());
    setToolTip(describe());
    setAccessibleName(describe());
}

QString ConnectionIndicator::describe() const
{
    switch (m_session.state()) {
    case OnlineSession::Starting:
        return tr("Starting the built-in controller…");
    case OnlineSession::Connecting:
        return tr("Connecting to %1…").arg(m_session.target());
    case OnlineSession::Checking:
        return tr("Connected to %1, comparing the axes…").arg(m_session.target());
    case OnlineSession::Online:
        return describeOnline();
    case OnlineSession::Lost:
        return tr("Connection to %1 lost, reconnecting…").arg(m_session.target());
    case OnlineSession::Offline:
        break;
    }
    return tr("Offline");
}

QString ConnectionIndicator::describeOnline() const
{
    const QString text = m_session.isDirectLogin() ? tr("Direct login, no debugging: %1 at %2, protocol version %3")
                                                   : tr("Online: %1 at %2, protocol version %3");
    return text.arg(m_session.controllerName(), m_session.target()).arg(m_session.version());
}

void ConnectionIndicator::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Symbols come from the theme that belongs to the style sheet.
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::StyleChange)
        show();
}
