#include "online/JogPushButton.h"

#include <QMouseEvent>
#include <QTimer>

namespace {

constexpr int holdTimeMs = 200;

}

JogPushButton::JogPushButton(QWidget* parent) : QPushButton(parent), m_holdTimer(new QTimer(this))
{
    connect(m_holdTimer, &QTimer::timeout, this, &JogPushButton::onTimeout);
    m_holdTimer->setSingleShot(true);
}

JogPushButton::~JogPushButton() = default;

void JogPushButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_holdTimer->start(holdTimeMs);
    QAbstractButton::mousePressEvent(event);
}

void JogPushButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        if (m_holdTimer->isActive())
            m_holdTimer->stop();
        emit jogReleased();
    }
    QAbstractButton::mouseReleaseEvent(event);
}

void JogPushButton::onTimeout()
{
    if (hasFocus())
        emit jogPressed();
}
