#pragma once

#include "host/languagecore/Export.h"

#include <string>

class AbstractProjectModel;

namespace ac {
class ACCore;
}

/// Holds the language core of an open project for a scope; the project is held with it. Null without such a project.
/// The core follows the project's sources: it is brought up to date when a guard is taken.
class KESTRUN_LANGUAGECORE_EXPORT SafeAccore {
public:
    /// The flag is not read.
    SafeAccore(const std::string& projectName, bool reserved);
    ~SafeAccore();
    SafeAccore(const SafeAccore&) = delete;
    SafeAccore& operator=(const SafeAccore&) = delete;

    ac::ACCore* core() const { return m_core; }
    ac::ACCore* operator->() const { return m_core; }
    explicit operator bool() const { return m_core != nullptr; }

private:
    AbstractProjectModel* m_project;
    ac::ACCore* m_core;
};
