#include "sdk/ServiceLocator.h"

#include "sdk/IApplication.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"

#include <QCoreApplication>
#include <QVariant>

namespace Solution {

const char* const applicationProperty = "IApplication";

IApplication* application()
{
    const QCoreApplication* core = QCoreApplication::instance();
    if (!core)
        return nullptr;
    return reinterpret_cast<IApplication*>(core->property(applicationProperty).toULongLong());
}

void publishApplication(IApplication* application)
{
    QCoreApplication::instance()->setProperty(
        applicationProperty, QVariant(static_cast<qulonglong>(reinterpret_cast<quintptr>(application))));
}

QObject* service(const QString& key)
{
    return service(application(), key);
}

QObject* service(IApplication* application, const QString& key)
{
    return application ? application->objectTable.value(key, nullptr) : nullptr;
}

IEditorManager* editorManager()
{
    return editorManager(application());
}

IEditorManager* editorManager(IApplication* application)
{
    return application ? qobject_cast<IEditorManager*>(application->manager(ManagerName::editor())) : nullptr;
}

} // namespace Solution
