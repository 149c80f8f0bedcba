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

/// What is wrong in a source text: it does not parse, or it declares what cannot be.
struct SourceProblem {
    std::string source;
    int line = 0;
    int column = 0;
    /// What was expected or is wrong, for the user, translated.
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

/// What a name stands for inside a declaration, such as a program or a function block.
struct LocalName {
    enum class Kind {
        /// Not declared there.
        None,
        /// A variable or member of the declaration.
        Own,
        /// Declared there as external: it lives in a global list.
        External
    };
    Kind kind = Kind::None;
    /// Where it is declared; line and column from 1.
    std::string source;
    int line = 0;
    int column = 0;
};

/// Further results of ACCore::parserVariables, each list in the order of the text.
struct ParseDetails {
    /// All names with their members and indices, known or not.
    std::vector<std::string> identifiers;
    /// Numbers, texts and values of enumerations.
    std::vector<std::string> literals;
    /// Direct addresses.
    std::vector<std::string> addresses;
    /// Names that the project does not know.
    std::vector<std::string> unknown;
    std::vector<SourceProblem> problems;
};

/// The language core of one project: what its structured-text declarations and the system library declare. Names
/// compare without regard to case. A source that does not parse leaves the others, its own declarations before the
/// fault, and those from the next one on usable. Main thread only. All texts are UTF-8.
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
    /// structure members and array elements, or a bit of an integer by ".n". An index is a whole number or a constant
    /// within the bounds. The path holds no blanks. Null when it resolves to none. Owned by the core, valid until the
    /// sources change; equal types have one address.
    SymbolDataType* type(const std::string& name) const;
    /// Appends all symbols of a kind, the system library's first, then in the order of the sources.
    void allSymbols(int kind, std::vector<Symbol*>& out) const;
    /// Finds the variables that an expression names. The outer key is the number of the statement from 0, the inner
    /// one the variable's number in it from 0; the types are by the variable's path. Direct addresses, values of
    /// enumerations and functions are no variables, and what the project does not know goes to the details. Unit name
    /// and section are for error positions only. False when the text is no expression (statements may be parted by
    /// semicolons, and may be assignments); what was found before the fault is kept.
    bool parserVariables(const std::string& text, const std::string& unitName, int section,
        std::map<int, std::map<int, Language::LogicSymInfo>>& symbols, std::map<std::string, std::string>& types,
        ParseDetails& details) const;

    /// True when a declaration at the top of the project has that name, see CheckUnitHelper.
    bool isNameTaken(const std::string& name) const;
    /// All variables of programs and global lists with their members and array elements, in the order of declaration.
    /// Temporary and external ones are left out. An array of more than 1,000 elements is listed without them; a
    /// variable shows 10,000 members and elements at most and a project 50,000 in all.
    const std::vector<VariableInfo>& variables() const;
    /// Name of the declaration (program, function, block, list, type) that a line of a source, from 1, lies in or
    /// behind; empty before the first one. A list without a name of its own begins at its VAR_GLOBAL.
    std::string unitAt(const std::string& source, int line) const;
    /// What a name (without members and indices) stands for in the declaration of unitAt, inherited members included.
    LocalName localName(const std::string& source, int line, const std::string& name) const;
    /// Whether the first two names of a path are a unit and a variable in it. What a unit declares as external lives in
    /// a global list.
    enum class Owner { NoUnit, Unit, Elsewhere };
    Owner ownerOf(const std::string& path) const;
    /// How far a path leads that may have no type.
    enum class Reach {
        /// Nothing is declared of that name.
        None,
        /// A function, a block or a type declares it, where no path leads from outside.
        Inner,
        /// An element by an index that is nothing, or in which stands a name that no source declares.
        Stray,
        /// An element by an index that has no value before the program runs.
        Element,
        /// A variable. Its bounds may be out of sight, as those by constants of a program are.
        Variable
    };
    Reach reachOf(const std::string& path) const;
    /// The path with the values in place of the constants in its indices: "Main.row[3].open" for
    /// "Main.row[LAST].open". The names in them are those of the owner, any declaration or none, before global ones.
    std::string withIndexValues(const std::string& path, const std::string& owner) const;
    /// What is wrong in the sources, in their order.
    const std::vector<SourceProblem>& problems() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ac
