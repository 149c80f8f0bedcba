#pragma once

#include "host/languagecore/Export.h"
#include "host/projectmodel/SafeProjectModel.h"

#include <memory>
#include <string>

namespace ac {
class ACCore;
}

/// Holds the language core of an open project for a scope; the project is held with it. Null without such a project.
/// The core follows the project's sources: it is brought up to date when a guard is taken, and goes with the project.
/// A core that a guard holds does not change while the guard lives, whatever happens to the sources meanwhile.
/// Guards nest and live on the stack of the main thread.
class KESTRUN_LANGUAGECORE_EXPORT SafeAccore {
public:
    /// The flag is not read.
    SafeAccore(const std::string& projectName, bool reserved);
    ~SafeAccore();
    SafeAccore(const SafeAccore&) = delete;
    SafeAccore& operator=(const SafeAccore&) = delete;

    ac::ACCore* core() const { return m_core.get(); }
    ac::ACCore* operator->() const { return m_core.get(); }
    explicit operator bool() const { return m_core != nullptr; }

private:
    SafeProjectModel m_project;
    std::shared_ptr<ac::ACCore> m_core;
};
