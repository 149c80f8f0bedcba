#pragma once

#include "host/languagecore/Export.h"

#include <string>

namespace ac {

class ACCore;

/// Name checks against the declarations of a project. Owned by the core.
class KESTRUN_LANGUAGECORE_EXPORT CheckUnitHelper {
public:
    explicit CheckUnitHelper(const ACCore& core);

    /// True when no declaration at the top of the project (program, function, type, global list, global variable)
    /// has that name, case ignored. The system library's declarations count too.
    bool checkVarName(const std::string& name) const;

private:
    const ACCore& m_core;
};

} // namespace ac
