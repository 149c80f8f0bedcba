#pragma once

#include <QObject>
#include <QPointer>

class IApplication;
class QString;

/// What the commands of the tree work on: the plug-in object's members, by reference, since dialogs run within a
/// command and the members may move on meanwhile. Valid for one call.
struct AxisTreeState {
    /// Name of the current project.
    const QString& projectName;
    /// Path of the node "Axis" of the current project.
    const QString& unitNodePath;
    /// Path of the node of the last node event.
    const QString& currentNodePath;
    /// True for the light theme.
    const bool& defaultTheme;
    /// The host as the plug-in object got to know it; null before that.
    IApplication* const& application;
    /// The plug-in object itself. Null once it is gone, as when the host shuts down under an open dialog; nothing else
    /// of this structure may be touched then.
    QPointer<const QObject> owner;
};
