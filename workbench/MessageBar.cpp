#include "workbench/MessageBar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent), m_symbol(new QLabel(this)), m_text(new QLabel(this)), m_offer(new QPushButton(this)),
      m_close(new QPushButton(this))
{
    setObjectName(QStringLiteral("messageBar"));
    m_text->setObjectName(QStringLiteral("messageText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_offer->setObjectName(QStringLiteral("messageOffer"));
    m_close->setObjectName(QStringLiteral("messageClose"));
    m_symbol->setPixmap(QIcon::fromTheme(QStringLiteral("dialog-error")).pixmap(22, 22));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(12);
    layout->addWidget(m_symbol, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_offer, 0, Qt::AlignTop);
    layout->addWidget(m_close, 0, Qt::AlignTop);
    connect(m_close, &QPushButton::clicked, this, &QWidget::hide);
    connect(m_offer, &QPushButton::clicked, this, [this] {
        hide();
        emit offerTaken();
    });
    retranslate();
    hide();
}

MessageBar::~MessageBar() = default;

void MessageBar::retranslate()
{
    m_close->setText(tr("Close"));
}

void MessageBar::showMessage(const QString& text, const QString& offer)
{
    m_text->setText(text);
    m_offer->setText(offer);
    m_offer->setVisible(!offer.isEmpty());
    show();
}

QString MessageBar::text() const
{
    return m_text->text();
}

void MessageBar::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}
