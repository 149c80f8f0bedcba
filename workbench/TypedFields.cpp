#include "workbench/TypedFields.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>

TypedFields::TypedFields(QObject* parent) : QObject(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { enter(now); });
}

TypedFields::~TypedFields() = default;

void TypedFields::enter(QWidget* widget)
{
    auto* field = qobject_cast<QLineEdit*>(widget);
    if (!field || m_entered.contains(field))
        return;
    m_entered.insert(field, { field->text() });
    field->installEventFilter(this);
    // One that was entered before is followed already.
    field->disconnect(this);
    connect(field, &QLineEdit::textEdited, this, [this, field] { m_entered[field].typed = true; });
    connect(field, &QObject::destroyed, this, [this, field] { m_entered.remove(field); });
}

bool TypedFields::isUntouched(const QLineEdit& field) const
{
    const auto entry = m_entered.constFind(&field);
    return entry != m_entered.constEnd() && !entry->typed && entry->text == field.text();
}

bool TypedFields::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_entered.remove(watched);
    }
    return QObject::eventFilter(watched, event);
}
