#pragma once

#include "host/languagecore/Export.h"

#include <string_view>

/// The reserved words of the language, in any case.
namespace ac::Keywords {

/// All words that may name nothing in a project: keywords, operators, elementary and generic types, standard functions.
KESTRUN_LANGUAGECORE_EXPORT bool isReserved(std::string_view word);

/// The words that give a declaration its structure, so that they can be no name in it. Fewer than the reserved ones: a
/// member may well be called "limit" or "word", since its place says that it is no function and no type.
bool isStructural(std::string_view word);

} // namespace ac::Keywords
