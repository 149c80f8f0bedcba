#include "host/languagecore/Symbol.h"

#include <utility>

namespace ac {

Symbol::Symbol(std::string name, SymbolKind kind) : m_name(std::move(name)), m_kind(kind) { }

Symbol::~Symbol() = default;

SymbolEnumType::SymbolEnumType(std::string name, std::vector<EnumMember> members)
    : Symbol(std::move(name), EnumSymbols), m_members(std::move(members))
{
}

SymbolEnumType::~SymbolEnumType() = default;

int SymbolEnumType::membersCount() const
{
    return static_cast<int>(m_members.size());
}

const EnumMember* SymbolEnumType::member(int position) const
{
    return position < 0 || position >= membersCount() ? nullptr : &m_members[static_cast<std::size_t>(position)];
}

SymbolDataType::SymbolDataType(BasicDataType dataType, std::string typeName)
    : m_dataType(dataType), m_typeName(std::move(typeName))
{
}

SymbolDataType::~SymbolDataType() = default;

} // namespace ac
