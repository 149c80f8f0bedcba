#include "host/projectmodel/ProjectContents.h"

bool ProjectChanges::isEmpty() const
{
    return axes.isEmpty() && removedAxes.isEmpty() && settings.isEmpty() && sources.isEmpty()
        && removedSources.isEmpty() && !controllerChanged;
}

QMap<QString, QString> differences(const QMap<QString, QString>& now, const QMap<QString, QString>& stored)
{
    QMap<QString, QString> changed;
    for (auto it = now.begin(); it != now.end(); ++it) {
        const auto old = stored.constFind(it.key());
        if (old == stored.constEnd() || *old != it.value())
            changed.insert(it.key(), it.value());
    }
    return changed;
}
