#pragma once

#include <string>

namespace ac {

/// Name under which faults of the system library would be reported.
const char* systemLibraryName();

/// The declarations that every project has, in structured text: the enumerations of axis states and errors, the types
/// of axes and groups of axes, the standard function blocks and those that move axes.
std::string systemLibraryText();

} // namespace ac
