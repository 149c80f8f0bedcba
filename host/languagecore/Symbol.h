#pragma once

#include "host/languagecore/Export.h"
#include "host/languagecore/Types.h"

#include <string>
#include <vector>

namespace ac {

/// Anything that the declarations of a project name. Owned by the core, valid until the sources change.
class KESTRUN_LANGUAGECORE_EXPORT Symbol {
public:
    Symbol(std::string name, SymbolKind kind);
    virtual ~Symbol();

    const std::string& name() const { return m_name; }
    SymbolKind kind() const { return m_kind; }

private:
    std::string m_name;
    SymbolKind m_kind;
};

/// One value of an enumeration.
struct EnumMember {
    std::string name;
    int value = 0;
};

/// An enumeration.
class KESTRUN_LANGUAGECORE_EXPORT SymbolEnumType : public Symbol {
public:
    SymbolEnumType(std::string name, std::vector<EnumMember> members);
    ~SymbolEnumType() override;

    int membersCount() const;
    /// The member at a position from 0, or null.
    const EnumMember* member(int position) const;

private:
    std::vector<EnumMember> m_members;
};

/// The type of a symbol.
class KESTRUN_LANGUAGECORE_EXPORT SymbolDataType {
public:
    SymbolDataType(BasicDataType dataType, std::string typeName);
    ~SymbolDataType();

    BasicDataType dataType() const { return m_dataType; }
    /// The type as declared: "BOOL", a structure's name, "ARRAY".
    const std::string& typeName() const { return m_typeName; }

private:
    BasicDataType m_dataType;
    std::string m_typeName;
};

} // namespace ac
