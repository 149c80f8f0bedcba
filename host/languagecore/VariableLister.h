#pragma once

#include "host/languagecore/ACCore.h"
#include "host/languagecore/SymbolTable.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace ac {

/// Lists the variables of a project by path. What is larger than anybody looks through is bounded: an array of more
/// than 1,000 elements is listed without them, a variable has 10,000 members and elements at most, 32 deep, and a
/// project 50,000 variables, whose paths take 16 MB at most.
class VariableLister {
public:
    /// Gives the type that stands for a resolved one.
    using TypeMaker = std::function<SymbolDataType*(const ResolvedType&)>;

    VariableLister(const SymbolTable& table, TypeMaker makeType) : m_table(table), m_makeType(std::move(makeType)) { }

    std::vector<VariableInfo> list();

private:
    void addUnit(const Declaration& unit);
    void add(const std::string& path, const VariableDecl& variable, const std::string& source, const TypeSpec* type,
        int depth);
    void addMembers(const std::string& path, const Declaration& owner, int depth);
    void addElements(const std::string& path, const VariableDecl& variable, const std::string& source,
        const TypeSpec& array, int depth);
    bool isFull() const;

    const SymbolTable& m_table;
    TypeMaker m_makeType;
    std::vector<VariableInfo> m_variables;
    std::size_t m_pathBytes = 0;
    std::size_t m_endOfVariable = 0;
};

} // namespace ac
