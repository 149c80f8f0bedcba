#include "workbench/online/StopBar.h"

#include "workbench/online/StopButton.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>

StopBar::StopBar(QAction* release, QWidget* parent)
    : QToolBar(parent), m_button(new StopButton(this)), m_feedback(new QLabel(this))
{
    setObjectName(QStringLiteral("stopBar"));
    setMovable(false);
    setIconSize({ 22, 22 });
    setContextMenuPolicy(Qt::PreventContextMenu);
    // Otherwise the menu of the panels' titles would offer to hide it.
    toggleViewAction()->setVisible(false);
    auto* gap = new QWidget(this);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_feedback->setObjectName(QStringLiteral("stopFeedback"));
    m_feedback->setTextFormat(Qt::PlainText);
    addWidget(gap);
    addWidget(m_feedback);
    addAction(release);
    if (auto* button = qobject_cast<QToolButton*>(widgetForAction(release)))
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addWidget(m_button);
}

StopBar::~StopBar() = default;

QSize StopBar::minimumSizeHint() const
{
    return sizeHint();
}
