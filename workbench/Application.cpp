#include "workbench/Application.h"

#include "sdk/IManager.h"
#include "sdk/ServiceLocator.h"

Application::Application(QObject* parent) : IApplication(parent)
{
    Solution::publishApplication(this);
}

Application::~Application()
{
    Solution::publishApplication(nullptr);
}

IManager* Application::manager(const QString& name)
{
    return m_managers.value(name, nullptr);
}

void Application::addManager(const QString& name, IManager* manager)
{
    m_managers.insert(name, manager);
}

void Application::publish(const QString& key, QObject* service)
{
    if (!objectTable.contains(key))
        objectTable.insert(key, service);
}

void Application::withdrawAll()
{
    objectTable.clear();
    m_managers.clear();
}
