#include "host/components/ProjectVariables.h"

#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

namespace ProjectVariables {

QString currentProject()
{
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    return cookies == nullptr ? QString() : cookies->value(Solution::ConfigKey::projectName(), QVariant()).toString();
}

void forEach(const QString& projectName, const std::function<void(const ac::VariableInfo&)>& function)
{
    const SafeAccore core(projectName.toStdString(), false);
    if (!core)
        return;
    for (const ac::VariableInfo& variable : core->variables())
        function(variable);
}

bool isBooleanPath(const ac::VariableInfo& variable)
{
    return variable.type != nullptr && variable.type->dataType() == ac::Bool
        && variable.path.find('.') != std::string::npos;
}

QStringList booleanPaths(const QString& projectName)
{
    QStringList paths;
    forEach(projectName, [&paths](const ac::VariableInfo& variable) {
        if (isBooleanPath(variable))
            paths.append(QString::fromStdString(variable.path));
    });
    return paths;
}

} // namespace ProjectVariables
