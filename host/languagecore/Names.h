#pragma once

#include <string>
#include <string_view>

namespace ac {

/// The name in the form under which names are looked up: ASCII letters in upper case, anything else as it is.
std::string foldedName(std::string_view name);

/// True when two names are the same, case ignored.
bool sameName(std::string_view a, std::string_view b);

} // namespace ac
