#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QString>

class IApplication;
class IEditorManager;

/// The one way from anywhere in the process to a service of the host. Main thread only.
///
/// Nothing here reports an error: a missing host or service is a null pointer, and the caller ends its operation or
/// leaves the step out.
namespace Solution {

/// Name of the dynamic property of QCoreApplication that holds the application's address.
KESTRUN_SDK_EXPORT extern const char* const applicationProperty;

/// The host application, or null when no host has published itself.
KESTRUN_SDK_EXPORT IApplication* application();

/// Publishes the application (null withdraws it). Called by the host only.
KESTRUN_SDK_EXPORT void publishApplication(IApplication* application);

/// The object under that key in the application's table, or null.
KESTRUN_SDK_EXPORT QObject* service(const QString& key);
/// The same in the table of an application that the caller has kept; a null application yields null.
KESTRUN_SDK_EXPORT QObject* service(IApplication* application, const QString& key);

/// The editor manager, or null.
KESTRUN_SDK_EXPORT IEditorManager* editorManager();
KESTRUN_SDK_EXPORT IEditorManager* editorManager(IApplication* application);

/// The service under that key as a Service, or null when it is missing or of another class.
template <typename Service>
Service* serviceAs(const QString& key)
{
    return qobject_cast<Service*>(service(key));
}

template <typename Service>
Service* serviceAs(IApplication* application, const QString& key)
{
    return qobject_cast<Service*>(service(application, key));
}

} // namespace Solution
