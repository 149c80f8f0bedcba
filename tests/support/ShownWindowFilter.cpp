#include "tests/support/ShownWindowFilter.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>

ShownWindowFilter::ShownWindowFilter()
{
    qApp->installEventFilter(this);
}

ShownWindowFilter::~ShownWindowFilter() = default;

bool ShownWindowFilter::eventFilter(QObject* watched, QEvent* event)
{
    auto* window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(watched) : nullptr;
    if (window && window->isWindow() && wants(window)) {
        const QPointer<QWidget> guarded(window);
        QTimer::singleShot(0, this, [this, guarded] {
            if (guarded)
                handle(guarded);
        });
    }
    return QObject::eventFilter(watched, event);
}
