#include "host/languagecore/CheckUnitHelper.h"

#include "host/languagecore/ACCore.h"

namespace ac {

CheckUnitHelper::CheckUnitHelper(const ACCore& core) : m_core(core) { }

bool CheckUnitHelper::checkVarName(const std::string& name) const
{
    return !m_core.isNameTaken(name);
}

} // namespace ac
