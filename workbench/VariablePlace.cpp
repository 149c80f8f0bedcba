#include "workbench/VariablePlace.h"

#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"

namespace {

bool endsWithPath(const QString& path, const QString& written)
{
    return path.endsWith(QString(QLatin1Char('.') + written), Qt::CaseInsensitive)
        || path.compare(written, Qt::CaseInsensitive) == 0;
}

} // namespace

QString variablePathAt(const VariablePlace& place)
{
    const SafeAccore core(place.project.toStdString(), false);
    if (!core || place.written.isEmpty())
        return {};
    QString nearest;
    for (const ac::VariableInfo& variable : core->variables()) {
        if (QString::fromStdString(variable.source) != place.source || variable.line > place.line)
            continue;
        const QString path = QString::fromStdString(variable.path);
        if (endsWithPath(path, place.written))
            nearest = path;
    }
    if (!nearest.isEmpty())
        return nearest;
    return core->type(place.written.toStdString()) ? place.written : QString();
}

bool isVariable(const QString& project, const QString& path)
{
    const SafeAccore core(project.toStdString(), false);
    return core && core->type(path.toStdString());
}
