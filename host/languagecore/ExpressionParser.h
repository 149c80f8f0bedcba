#pragma once

#include "host/languagecore/Declarations.h"

#include <optional>
#include <string>
#include <vector>

namespace ac {

/// A name that an expression uses, with members and indices, blanks taken out.
struct ExpressionSymbol {
    std::string path;
    int statement = 0;
    Position position;
    /// It is called: a function, or an instance of a function block.
    bool called = false;
};

/// What an expression, or a list of statements of expressions and assignments, is made of.
struct ParsedExpression {
    /// In the order of their places.
    std::vector<ExpressionSymbol> symbols;
    std::vector<std::string> literals;
    std::vector<std::string> addresses;
    /// Where and why it ends early; nothing when it was read whole.
    struct Problem {
        Position position;
        std::string text;
    };
    std::optional<Problem> problem;
};

ParsedExpression parseExpression(const std::string& text);

} // namespace ac
