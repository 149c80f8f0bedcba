#pragma once

#include "host/languagecore/SymbolTable.h"

#include <optional>
#include <string>
#include <vector>

namespace ac {

/// One step of a path behind its first name.
struct PathStep {
    enum class Kind { Member, Index, Bit };

    Kind kind = Kind::Member;
    /// Name or digits.
    std::string text;
    /// Texts of the indices, one a dimension.
    std::vector<std::string> indices;
};

/// Finds what a path names. A path holds no blanks.
class PathResolver {
public:
    enum class Indices {
        /// Whole numbers and constants within the bounds.
        Known,
        /// The same, and whatever has no value before the program runs.
        Fitting,
        /// Whatever an expression may have there.
        Any
    };

    PathResolver(const SymbolTable& table, Indices indices) : m_table(table), m_indices(indices) { }

    /// Nothing when the path names no variable, member, element or bit.
    std::optional<ResolvedType> resolve(const std::string& path) const;
    /// The same for a path that begins with a function, block or type: what that declares.
    std::optional<ResolvedType> resolveInner(const std::string& path) const;
    /// True when an index of the path is not just a number.
    static bool hasNamedIndex(const std::string& path);
    /// True when an index of the path is empty, or has a name in it that nothing in the project declares.
    bool hasStrayIndex(const std::string& path) const;
    /// The path with the values of the indices that have one, the names in them being those of the owner before the
    /// global ones.
    std::string withIndexValues(const std::string& path, const std::string& owner) const;

private:
    std::optional<ResolvedType> follow(
        const VariableDecl* variable, const std::vector<PathStep>& steps, std::size_t from) const;
    std::optional<ResolvedType> step(const ResolvedType& type, const PathStep& step) const;
    std::optional<ResolvedType> element(const TypeSpec& array, const std::vector<std::string>& indices) const;
    bool isStray(const std::string& index) const;
    /// The bounds are null where they are not known.
    bool mayStand(const std::string& index, const Bounds* bounds) const;
    std::optional<std::int64_t> valueOf(const std::string& index, const std::string& owner = {}) const;

    const SymbolTable& m_table;
    Indices m_indices;
};

} // namespace ac
