#include "workbench/online/StopKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

StopKey::StopKey(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

StopKey::~StopKey() = default;

bool StopKey::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_enabled)
        return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() != key)
            return false;
        // No shortcut of the same key may come before.
        event->accept();
        return true;
    case QEvent::KeyPress:
        return takeKey(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        if (watched->isWindowType() && QApplication::activePopupWidget() && m_buttonAt
            && m_buttonAt(mouse->globalPos()))
            emit pressed();
        return false;
    }
    case QEvent::DragEnter:
        // A drag takes all keys by a filter that is younger than this one, and begins by entering a window.
        qApp->installEventFilter(this);
        return false;
    default:
        return false;
    }
}

bool StopKey::takeKey(QKeyEvent& event)
{
    // Whatever else is held down by a hand that comes in a hurry does not matter.
    if (event.key() != key)
        return false;
    if (!event.isAutoRepeat())
        emit pressed();
    event.accept();
    return true;
}
