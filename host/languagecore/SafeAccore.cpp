#include "host/languagecore/SafeAccore.h"

#include "host/languagecore/CoreRegistry.h"

#include <QString>

SafeAccore::SafeAccore(const std::string& projectName, bool reserved) : m_project(QString::fromStdString(projectName))
{
    Q_UNUSED(reserved)
    if (m_project)
        m_core = CoreRegistry::instance().coreOf(m_project.model());
}

SafeAccore::~SafeAccore() = default;
