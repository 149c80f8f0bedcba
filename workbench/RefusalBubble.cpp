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
constexpr int longestNumber = 40;

QString shortened(const QString& number)
{
    if (number.size() <= longestNumber)
        return number;
    return number.left(longestNumber / 2) + QChar(0x2026) + number.right(longestNumber / 4);
}

} // namespace

RefusalBubble::RefusalBubble(QWidget* window)
    : QFrame(window), m_symbol(new QLabel(this)), m_text(new QLabel(this)), m_lifetime(new QTimer(this))
{
    setObjectName(QStringLiteral("refusalBubble"));
    setFocusPolicy(Qt::NoFocus);
    m_symbol->setObjectName(QStringLiteral("refusalSymbol"));
    m_text->setTextFormat(Qt::PlainText);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(8);
    layout->addWidget(m_symbol);
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
        // A dialog tells its field of the focus before it is shown; the check of the field in use is still to come.
        auto* field = qobject_cast<QLineEdit*>(watched);
        if (field && field == QApplication::focusWidget())
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
    return tr("\u201c%1\u201d was not taken. Allowed: %2.").arg(shortened(refusal.text), refusal.range());
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

void RefusalBubble::fitInto(const QWidget& window)
{
    m_text->setWordWrap(false);
    const QSize whole = layout()->totalSizeHint();
    const int width = qMin(whole.width(), window.width() - 2 * gap);
    m_text->setWordWrap(width < whole.width());
    resize(width, m_text->wordWrap() ? layout()->totalHeightForWidth(width) : whole.height());
}

void RefusalBubble::showAt(const QLineEdit& field, const QString& text)
{
    const QWidget& window = *parentWidget();
    // The theme, and with it the symbol, may have changed since the last time.
    m_symbol->setPixmap(QIcon::fromTheme(QStringLiteral("dialog-warning")).pixmap(16, 16));
    m_text->setText(text);
    fitInto(window);
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
