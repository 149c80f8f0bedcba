#include "host/languagecore/VariableLister.h"

#include <utility>

namespace ac {

namespace {

constexpr std::size_t mostElements = 1000;
constexpr std::size_t mostOfVariable = 10000;
constexpr std::size_t mostVariables = 50000;
constexpr std::size_t mostPathBytes = 16U * 1024 * 1024;
constexpr int deepest = 32;

/// Number of elements, 0 for an empty array and for one with too many.
std::size_t elementCount(const std::vector<Bounds>& bounds)
{
    std::size_t count = 1;
    for (const Bounds& each : bounds) {
        // As unsigned numbers the difference is right also where the signed one would overflow.
        const std::uint64_t less = static_cast<std::uint64_t>(each.high) - static_cast<std::uint64_t>(each.low);
        if (each.high < each.low || less >= mostElements)
            return 0;
        count *= static_cast<std::size_t>(less) + 1;
        if (count > mostElements)
            return 0;
    }
    return count;
}

/// "[1,4]" for the n-th element, the last index running fastest.
std::string indexText(const std::vector<Bounds>& bounds, std::size_t n)
{
    std::vector<std::int64_t> indices(bounds.size());
    for (std::size_t i = bounds.size(); i-- > 0;) {
        const auto size = static_cast<std::size_t>(bounds[i].high - bounds[i].low) + 1;
        indices[i] = bounds[i].low + static_cast<std::int64_t>(n % size);
        n /= size;
    }
    std::string text;
    for (const std::int64_t index : indices) {
        text += text.empty() ? '[' : ',';
        text += std::to_string(index);
    }
    text += ']';
    return text;
}

} // namespace

std::vector<VariableInfo> VariableLister::list()
{
    for (const Declaration& declaration : m_table.declarations()) {
        if (declaration.kind == Declaration::Kind::Program || declaration.kind == Declaration::Kind::GlobalList)
            addUnit(declaration);
    }
    return std::move(m_variables);
}

void VariableLister::addUnit(const Declaration& unit)
{
    for (const VariableDecl& variable : unit.variables) {
        const bool lasting = variable.section != VarSection::Temp && variable.section != VarSection::External;
        // A name that is declared twice counts once.
        if (!lasting || m_table.variableOf(unit.name, variable.name) != &variable)
            continue;
        m_endOfVariable = m_variables.size() + mostOfVariable;
        add(unit.name + '.' + variable.name, variable, unit.source, variable.type.get(), 0);
    }
}

void VariableLister::add(
    const std::string& path, const VariableDecl& variable, const std::string& source, const TypeSpec* type, int depth)
{
    if (isFull())
        return;
    const ResolvedType resolved = m_table.resolve(type);
    m_pathBytes += path.size();
    m_variables.push_back({ path, m_makeType(resolved), depth == 0 ? variable.address : std::string(), variable.comment,
        source, variable.position.line, variable.position.column });
    if (depth >= deepest)
        return;
    if (resolved.declaration != nullptr)
        addMembers(path, *resolved.declaration, depth + 1);
    else if (resolved.array != nullptr)
        addElements(path, variable, source, *resolved.array, depth + 1);
}

void VariableLister::addMembers(const std::string& path, const Declaration& owner, int depth)
{
    for (const VariableDecl* member : m_table.members(owner)) {
        if (isFull())
            return;
        add(path + '.' + member->name, *member, owner.source, member->type.get(), depth);
    }
}

void VariableLister::addElements(
    const std::string& path, const VariableDecl& variable, const std::string& source, const TypeSpec& array, int depth)
{
    const auto bounds = m_table.bounds(array);
    const std::size_t count = bounds ? elementCount(*bounds) : 0;
    for (std::size_t i = 0; i < count && !isFull(); ++i)
        add(path + indexText(*bounds, i), variable, source, array.element.get(), depth);
}

bool VariableLister::isFull() const
{
    return m_variables.size() >= mostVariables || m_variables.size() >= m_endOfVariable || m_pathBytes >= mostPathBytes;
}

} // namespace ac
