#include "workbench/online/StopButton.h"

#include "workbench/online/StopKey.h"

#include <QEvent>
#include <QKeySequence>
#include <QVariant>

StopButton::StopButton(QWidget* parent) : QToolButton(parent)
{
    setObjectName(QStringLiteral("stopButton"));
    setProperty("styleType", QStringLiteral("stopButton"));
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setFocusPolicy(Qt::NoFocus);
    retranslate();
}

StopButton::~StopButton() = default;

void StopButton::retranslate()
{
    const QString keys = QKeySequence(StopKey::key).toString(QKeySequence::NativeText);
    setText(tr("STOP"));
    setToolTip(tr("Stop every axis in debug mode (%1)").arg(keys));
    setAccessibleName(tr("Stop every axis in debug mode"));
}

void StopButton::changeEvent(QEvent* event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}
