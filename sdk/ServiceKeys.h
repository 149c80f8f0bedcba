#pragma once

#include <QString>

/// The keys under which services stand in the application's object table, and the configuration keys that host and
/// plug-ins share. The texts are part of the contract.
namespace Solution {
namespace ServiceKey {
inline QString view()
{
    return QStringLiteral("Solution.View");
}
inline QString viewHelper()
{
    return QStringLiteral("Solution.ViewHelper");
}
inline QString cookies()
{
    return QStringLiteral("ICookies");
}
inline QString settings()
{
    return QStringLiteral("ISettings");
}
inline QString logManager()
{
    return QStringLiteral("LogManager");
}
inline QString transfer()
{
    return QStringLiteral("zelport.Transfer");
}
inline QString comparatorManager()
{
    return QStringLiteral("COMPARATORMAN");
}
inline QString motionControlDebug()
{
    return QStringLiteral("MotionControlDebug");
}
inline QString backgroundTransaction()
{
    return QStringLiteral("BackgroundTransaction.name");
}
inline QString variableMonitor()
{
    return QStringLiteral("varMonitor");
}
inline QString diagnosisInfo()
{
    return QStringLiteral("werkbay.DiagnosisInfo");
}
} // namespace ServiceKey

namespace ManagerName {
inline QString editor()
{
    return QStringLiteral("editor");
}
inline QString option()
{
    return QStringLiteral("option");
}
} // namespace ManagerName

namespace ConfigKey {
/// Name of the style sheet: "default.qss" is the light theme, anything else the dark one.
inline QString theme()
{
    return QStringLiteral("Werkbay/Qss");
}
/// Name of the open project.
inline QString projectName()
{
    return QStringLiteral("Project.Name");
}
/// bool: a project comparison is in progress.
inline QString projectComparison()
{
    return QStringLiteral("IDE/ProjectCompration");
}
/// Locale name such as "zh_CN" or "en_US".
inline QString language()
{
    return QStringLiteral("General/Language");
}
/// Poll period of online pages in ms.
inline QString monitorTime()
{
    return QStringLiteral("Communication/monitortime");
}
/// Time-out in ms that a controller gets on entering debug mode.
inline QString communicationTimeout()
{
    return QStringLiteral("Communication/commtimeout");
}
} // namespace ConfigKey

namespace ThemeName {
inline QString light()
{
    return QStringLiteral("default.qss");
}
inline QString dark()
{
    return QStringLiteral("dark.qss");
}
} // namespace ThemeName
} // namespace Solution
