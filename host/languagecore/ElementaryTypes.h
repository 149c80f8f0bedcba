#pragma once

#include "host/languagecore/Types.h"

#include <string>
#include <string_view>

namespace ac {

struct TypeSpec;

/// The elementary type of that name, NoType for any other name.
BasicDataType elementaryType(std::string_view name);
/// "ANY", "ANY_INT" and so on: parameters of functions only.
bool isGenericType(std::string_view name);
/// Bits of an integer or bit string, 0 for other types.
int bitsOf(BasicDataType type);

/// Data type and text of a type that has no name of its own.
BasicDataType structuredType(const TypeSpec& type);
std::string structuredText(const TypeSpec& type);

} // namespace ac
