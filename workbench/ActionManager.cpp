#include "workbench/ActionManager.h"

ActionManager::ActionManager(QObject* parent) : IActionManager(parent) { }

ActionManager::~ActionManager() = default;

QAction* ActionManager::action(const QString& name)
{
    return m_actions.value(name, nullptr);
}

void ActionManager::add(const QString& name, QAction* action)
{
    m_actions.insert(name, action);
}
