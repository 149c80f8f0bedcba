#include "workbench/RefusalBubble.h"

#include "host/components/NumberRefusalNotifier.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

namespace {

constexpr int lifetimeInMs = 6000;
constexpr int gap = 4;

} // namespace

RefusalBubble::RefusalBubble(QWidget* window) : QFrame(window), m_text(new QLabel(this)), m_lifetime(new QTimer(this))
{
    setObjectName(QStringLiteral("refusalBubble"));
    setFocusPolicy(Qt::NoFocus);
    m_text->setTextFormat(Qt::PlainText);
    auto* symbol = new QLabel(this);
    symbol->setPixmap(QIcon::fromTheme(QStringLiteral("dialog-warning")).pixmap(16, 16));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(8);
    layout->addWidget(symbol);
    layout->addWidget(m_text);
    m_lifetime->setSingleShot(true);
    m_lifetime->setInterval(lifetimeInMs);
    connect(m_lifetime, &QTimer::timeout, this, &QWidget::hide);
    connect(NumberRefusalNotifier::instance(), &NumberRefusalNotifier::numberRefused, this, &RefusalBubble::onRefused);
    qApp->installEventFilter(this);
    hide();
}

RefusalBubble::~RefusalBubble() = default;

bool RefusalBubble::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        if (auto* field = qobject_cast<QLineEdit*>(watched))
            enter(field);
    } else if (event->type() == QEvent::KeyPress || event->type() == QEvent::Wheel) {
        hide();
    }
    return QFrame::eventFilter(watched, event);
}

void RefusalBubble::enter(QLineEdit* field)
{
    // Coming back from a popup or another window goes on with the same input.
    if (field == m_field)
        return;
    if (m_field)
        m_field->disconnect(this);
    m_field = field;
    m_touched = false;
    connect(field, &QLineEdit::textEdited, this, [this] { m_touched = true; });
}

QString RefusalBubble::textOf(const NumberRefusal& refusal)
{
    return tr("\u201c%1\u201d was not taken. Allowed: %2.").arg(refusal.text, refusal.range());
}

void RefusalBubble::onRefused(const NumberRefusal& refusal)
{
    // The check runs while the field loses the focus, before the next one gets it.
    if (!m_field || !m_touched)
        return;
    const QString text = textOf(refusal);
    m_touched = false;
    showAt(*m_field, text);
    emit refused(text);
}

void RefusalBubble::showAt(const QLineEdit& field, const QString& text)
{
    m_text->setText(text);
    adjustSize();
    const QWidget& window = *parentWidget();
    if (!window.isAncestorOf(&field))
        return;
    QPoint place = field.mapTo(parentWidget(), QPoint(0, field.height() + gap));
    place.setX(qMax(gap, qMin(place.x(), window.width() - width() - gap)));
    if (place.y() + height() > window.height())
        place.setY(field.mapTo(parentWidget(), QPoint(0, 0)).y() - height() - gap);
    move(place);
    raise();
    show();
    m_lifetime->start();
}
