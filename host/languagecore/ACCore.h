#pragma once

#include "host/languagecore/Export.h"
#include "host/languagecore/Types.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ac {

class CheckUnitHelper;
class Symbol;
class SymbolDataType;

/// A source text that does not parse.
struct SourceProblem {
    std::string source;
    int line = 0;
    int column = 0;
    /// What was expected, for the user.
    std::string text;
};

/// A variable of the project as a picker or a list of references shows it.
struct VariableInfo {
    /// Full path, such as "Main.guard.open".
    std::string path;
    SymbolDataType* type = nullptr;
    /// Direct address it is bound to, or empty.
    std::string address;
    std::string comment;
    /// Where it is declared; line and column from 1.
    std::string source;
    int line = 0;
    int column = 0;
};

/// Further results of ACCore::parserVariables.
struct ParseDetails {
    std::vector<std::string> identifiers;
    std::vector<std::string> literals;
    std::vector<std::string> addresses;
    std::vector<std::string> unknown;
    std::vector<SourceProblem> problems;
};

/// The language core of one project: what its structured-text declarations and the system library declare. Names
/// compare without regard to case. A source that does not parse leaves the others, and its own declarations before the
/// fault, usable. Main thread only. All texts are UTF-8.
class KESTRUN_LANGUAGECORE_EXPORT ACCore {
public:
    ACCore();
    ~ACCore();
    ACCore(const ACCore&) = delete;
    ACCore& operator=(const ACCore&) = delete;

    /// Replaces all declarations by those of the system library and of these sources (name to text).
    void setSources(const std::map<std::string, std::string>& sources);
    void setProgramStyle(ProgramStyle style);

    ProgramStyle getProgramStyle() const;
    CheckUnitHelper* checkUnitHelper() const;
    /// Type of the symbol that the text resolves to: a global variable, a path of program or global list, variable,
    /// structure members and array elements, or a bit of an integer by ".n". Null when it resolves to none.
    SymbolDataType* type(const std::string& name) const;
    /// Appends all symbols of a kind, the system library's first, then in the order of the sources.
    void allSymbols(int kind, std::vector<Symbol*>& out) const;
    /// Finds the symbols that an expression names, by statement and by their order in it. The unit name and section
    /// are for error positions only. False when the text is no expression; what was found before the fault is kept.
    bool parserVariables(const std::string& text, const std::string& unitName, int section,
        std::map<int, std::map<int, Language::LogicSymInfo>>& symbols, std::map<std::string, std::string>& types,
        ParseDetails& details) const;

    /// All variables with members and array elements, in the order of declaration.
    std::vector<VariableInfo> variables() const;
    const std::vector<SourceProblem>& problems() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ac
