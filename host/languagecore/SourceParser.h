#pragma once

#include "host/languagecore/ACCore.h"
#include "host/languagecore/Declarations.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ac {

/// More faults of one source than anybody reads at once; the rest of the source is left out then.
constexpr int mostProblems = 100;

/// Reads the declarations of a source. A fault is reported with its place and ends the declaration that it stands in,
/// which keeps what it has; reading goes on at the next word that begins a declaration.
void parseSource(const std::string& name, const std::string& text, std::vector<Declaration>& declarations,
    std::vector<SourceProblem>& problems);

/// Reads a sum or difference of whole numbers and constants; nothing when the text is none.
std::optional<ConstExpression> parseConstExpression(std::string_view text);

/// A text for the user, translated.
std::string userText(const char* text);

} // namespace ac
