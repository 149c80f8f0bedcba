#include "workbench/online/StopInReach.h"

#include "workbench/online/StopButton.h"

#include <QApplication>
#include <QEvent>

StopInReach::StopInReach(const StopButton& button, QObject* parent) : QObject(parent), m_button(button)
{
    qApp->installEventFilter(this);
}

StopInReach::~StopInReach() = default;

bool StopInReach::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show || !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (widget->isWindow() && widget->isModal() && m_button.isVisible())
        attachTo(widget);
    return false;
}

void StopInReach::attachTo(QWidget* modal)
{
    // A window of the modal one's own is not shut off by it; it must not take the keyboard away from it.
    auto* button = new StopButton(modal);
    button->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    button->setAttribute(Qt::WA_ShowWithoutActivating);
    button->setObjectName(QStringLiteral("stopButtonInReach"));
    button->setEnabled(m_button.isEnabled());
    button->setGeometry(QRect(m_button.mapToGlobal(QPoint(0, 0)), m_button.size()));
    connect(button, &QAbstractButton::pressed, this, &StopInReach::pressed);
    // It goes with the modal window, which may be shown again and then gets another.
    struct HideFilter : QObject {
        using QObject::QObject;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Hide)
                parent()->deleteLater();
            return false;
        }
    };
    modal->installEventFilter(new HideFilter(button));
    button->show();
}
