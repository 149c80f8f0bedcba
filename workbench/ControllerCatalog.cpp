#include "workbench/ControllerCatalog.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

ControllerCatalog::ControllerCatalog(const QString& directory)
{
    const QDir folder(directory);
    const QStringList files = folder.entryList({ QStringLiteral("*.json") }, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        ControllerDescription description;
        QString error;
        if (description.readFile(folder.absoluteFilePath(file), &error))
            m_controllers.append(description);
        else
            m_problems.append(error);
    }
    if (m_controllers.isEmpty() && m_problems.isEmpty())
        m_problems.append(
            QCoreApplication::translate("ControllerCatalog", "There are no controller descriptions in %1.")
                .arg(QDir::toNativeSeparators(directory)));
    std::stable_sort(
        m_controllers.begin(), m_controllers.end(), [](const auto& a, const auto& b) { return a.model() < b.model(); });
}

const ControllerDescription* ControllerCatalog::find(const QString& model) const
{
    const auto found = std::find_if(m_controllers.begin(), m_controllers.end(),
        [&model](const ControllerDescription& description) { return description.model() == model; });
    return found == m_controllers.end() ? nullptr : &*found;
}
