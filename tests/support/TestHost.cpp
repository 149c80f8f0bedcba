#include "tests/support/TestHost.h"

#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMap>

namespace Key = Solution::ServiceKey;

TestHost::TestHost()
{
    const QStringList all = keys();
    for (const QString& key : all)
        restore(key);
    Solution::publishApplication(this);
}

TestHost::~TestHost()
{
    editorManager.closeAllEditors();
    // Editors go before the services that they use.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    background.dropAll();
    Solution::publishApplication(nullptr);
    objectTable.clear();
}

IManager* TestHost::manager(const QString& name)
{
    calls.add("application.manager", { name });
    return name == Solution::ManagerName::editor() && !m_withheldManagers.contains(name) ? &editorManager : nullptr;
}

void TestHost::withhold(const QString& key)
{
    if (key == Solution::ManagerName::editor())
        m_withheldManagers.insert(key);
    else
        objectTable.remove(key);
}

void TestHost::restore(const QString& key)
{
    if (QObject* service = serviceOf(key))
        objectTable.insert(key, service);
    else
        m_withheldManagers.remove(key);
}

QStringList TestHost::keys()
{
    return { Key::view(), Key::viewHelper(), Key::cookies(), Key::settings(), Key::logManager(), Key::transfer(),
        Key::comparatorManager(), Key::backgroundTransaction(), Key::variableMonitor(), Key::diagnosisInfo(),
        Solution::ManagerName::editor() };
}

QObject* TestHost::serviceOf(const QString& key)
{
    const QMap<QString, QObject*> services{
        { Key::view(), &view },
        { Key::viewHelper(), &viewHelper },
        { Key::cookies(), &cookies },
        { Key::settings(), &settings },
        { Key::logManager(), &logManager },
        { Key::transfer(), &transfer },
        { Key::comparatorManager(), &comparatorMan },
        { Key::backgroundTransaction(), &background },
        { Key::variableMonitor(), &variableMonitor },
        { Key::diagnosisInfo(), &diagnosisInfo },
    };
    return services.value(key);
}
