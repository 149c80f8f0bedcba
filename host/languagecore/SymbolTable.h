#pragma once

#include "host/languagecore/ACCore.h"
#include "host/languagecore/Declarations.h"
#include "host/languagecore/Types.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ac {

/// A type with its names looked up.
struct ResolvedType {
    BasicDataType dataType = NoType;
    /// As a user reads it: "BOOL", "Guard", "ARRAY [0..9] OF BOOL".
    std::string text;
    /// Of an array.
    const TypeSpec* array = nullptr;
    /// Of a structure or function block.
    const Declaration* declaration = nullptr;
};

/// Bounds of one dimension of an array.
struct Bounds {
    std::int64_t low = 0;
    std::int64_t high = -1;
};

/// All declarations of a project by name, and what they mean together. Names compare without regard to case; of two
/// declarations of one name the first counts.
class SymbolTable {
public:
    /// The declarations must outlive the table. What does not fit together is added to the problems.
    SymbolTable(const std::vector<Declaration>& declarations, std::vector<SourceProblem>& problems);

    const std::vector<Declaration>& declarations() const { return m_declarations; }

    /// Is the name taken at the top of the project: program, function, type, list, global variable?
    bool isTaken(std::string_view name) const;
    /// A program, or a list of global variables, that has the variable.
    const VariableDecl* variableOf(std::string_view unit, std::string_view name) const;
    /// What any declaration, also a function or type, declares of itself or inherits.
    const VariableDecl* declared(std::string_view owner, std::string_view name) const;
    /// Is the name that of a declaration, of a variable in one, or of a value of an enumeration?
    bool isDeclaredAnywhere(std::string_view name) const;
    const VariableDecl* globalVariable(std::string_view name) const;
    bool isFunction(std::string_view name) const;
    /// A value of an enumeration, alone or behind its type's name.
    bool isEnumValue(std::string_view path) const;

    ResolvedType resolve(const TypeSpec* type) const;
    /// A member of a structure or function block, also an inherited one. Null for a type that contains itself.
    const VariableDecl* member(const Declaration& owner, std::string_view name) const;
    /// All members of a structure or function block that a path can name, the inherited ones first. Empty for a type
    /// that contains itself.
    std::vector<const VariableDecl*> members(const Declaration& owner) const;
    /// The bounds of an array's dimensions; nothing when one is open or not known.
    std::optional<std::vector<Bounds>> bounds(const TypeSpec& array) const;
    /// Names are those of the owner, a declaration or none, before the global ones.
    std::optional<std::int64_t> value(const ConstExpression& expression, std::string_view owner = {}) const;
    /// The values of an enumeration that has a name, in the order of its items.
    const std::vector<std::int64_t>& itemValues(const Declaration& enumeration) const;

private:
    using VariableMap = std::unordered_map<std::string, const VariableDecl*>;

    void collect(const Declaration& declaration, std::vector<SourceProblem>& problems);
    void collectVariables(const Declaration& declaration, std::vector<SourceProblem>& problems);
    void collectItems(const Declaration& declaration);
    void checkTypes(std::vector<SourceProblem>& problems) const;
    void findEndlessTypes(std::vector<SourceProblem>& problems);
    std::vector<const Declaration*> contents(const Declaration& owner) const;
    std::vector<const Declaration*> lineage(const Declaration& owner) const;
    const Declaration* typeOf(std::string_view name) const;
    std::optional<std::int64_t> value(const ConstExpression& expression, std::string_view owner, int depth) const;
    std::optional<std::int64_t> constant(std::string_view name, std::string_view owner, int depth) const;
    std::optional<std::int64_t> initialValue(const VariableDecl& variable, std::string_view owner, int depth) const;
    bool isKnownType(const TypeSpec& type) const;
    const VariableDecl* variableByPath(std::string_view path) const;
    std::string arrayText(const TypeSpec& array) const;

    const std::vector<Declaration>& m_declarations;
    std::unordered_map<std::string, const Declaration*> m_types;
    std::unordered_map<std::string, const Declaration*> m_programs;
    std::unordered_set<std::string> m_functions;
    std::unordered_set<std::string> m_lists;
    VariableMap m_globals;
    /// Variables of a unit by its name, and of a structure or block by its declaration.
    std::unordered_map<std::string, VariableMap> m_unitVariables;
    std::unordered_map<const Declaration*, VariableMap> m_members;
    std::unordered_map<std::string, std::int64_t> m_items;
    std::unordered_map<const Declaration*, std::vector<std::int64_t>> m_itemValues;
    /// Constants that have been asked for; nothing for one whose value is not known or just being sought.
    mutable std::unordered_map<const VariableDecl*, std::optional<std::int64_t>> m_constants;
    std::unordered_set<const Declaration*> m_endless;
};

} // namespace ac
