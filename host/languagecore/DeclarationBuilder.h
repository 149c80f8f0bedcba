#pragma once

#include "host/languagecore/Declarations.h"
#include "host/languagecore/Grammar.h"
#include "host/languagecore/Lexical.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ac {

/// Collects what the rules of the declaration grammar match. A declaration that a fault cuts off keeps what it has.
class DeclarationBuilder : public grammar::Nesting {
public:
    DeclarationBuilder(std::string_view text, std::string sourceName, std::vector<Declaration>& out);

    /// \name Declarations
    /// @{
    void begin(Declaration::Kind kind);
    void beginGlobals(std::string_view head);
    void nameUnit(std::string_view name);
    void nameList(std::string_view name);
    void addTask(std::string_view name);
    void setStructure();
    void setBase(std::string_view name);
    void setDeclaredType();
    /// The declaration is whole, or a fault has ended it.
    void finish();
    /// After a fault: what is half built goes.
    void abandon();
    /// @}

    /// \name Variables
    /// @{
    void beginSection(VarSection section);
    void setConstant() { m_constant = true; }
    void nameVariable(std::string_view name);
    void setAddress(std::string_view address) { m_address = address; }
    void setInitial(std::string_view text) { m_initial = text; }
    void endVariables(std::string_view semicolon);
    void noteComment(std::string_view comment) { m_lastComment = comment; }
    /// @}

    /// \name Types
    /// @{
    void setNamedType(TypeSpec::Form form, std::string_view name);
    void beginType(TypeSpec::Form form, std::string_view at);
    void endType();
    void endTypeOf();
    void addOpenDimension();
    void setLowBound();
    void addDimension();
    void addItem(std::string_view name);
    void setItemValue();
    /// @}

    /// \name Whole numbers
    /// @{
    void addSign(char sign);
    void addNumber(std::string_view text);
    void addConstant(std::string_view name);
    ConstExpression takeExpression();
    /// @}

    Position position(std::size_t offset) const { return m_positions.at(offset); }

private:
    struct PendingVariable {
        std::string name;
        Position position;
        std::string comment;
    };

    std::size_t offsetOf(std::string_view part) const;
    Position positionOf(std::string_view part) const { return m_positions.at(offsetOf(part)); }
    /// The comment behind a declaration, on its line.
    std::string commentBehind(std::size_t offset) const;
    /// The comment on the lines above a declaration.
    std::string commentAbove(std::size_t offset) const;
    void addTerm(ConstTerm term);

    std::string_view m_text;
    Lexical::PositionIndex m_positions;
    std::string m_sourceName;
    std::vector<Declaration>& m_out;

    std::optional<Declaration> m_current;
    VarSection m_section = VarSection::Local;
    bool m_constant = false;
    std::vector<PendingVariable> m_pending;
    std::string m_address;
    std::string m_initial;
    std::string_view m_lastComment;

    /// Types that are being read, the innermost last, and the one that was read last.
    std::vector<TypeSpec> m_types;
    TypeSpecPtr m_type;
    ConstExpression m_low;
    ConstExpression m_terms;
    bool m_negative = false;
};

/// A whole number of the language ("1_000", "16#FF"); nothing when it needs more than 64 bits.
std::optional<std::int64_t> integerValue(std::string_view text);

} // namespace ac
