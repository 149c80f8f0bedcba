#include "host/languagecore/DeclarationBuilder.h"

#include <algorithm>
#include <utility>

namespace ac {

namespace {

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'Z' ? c - 'A' + 10 : -1;
}

std::optional<std::int64_t> digitsValue(std::string_view digits, int base)
{
    std::int64_t value = 0;
    for (const char c : digits) {
        if (c == '_')
            continue;
        const int digit = digitValue(c);
        if (digit < 0 || digit >= base || __builtin_mul_overflow(value, base, &value)
            || __builtin_add_overflow(value, digit, &value))
            return std::nullopt;
    }
    return value;
}

/// A list is named by its source unless the source names it: "IO.st" gives "IO".
std::string listNameOf(const std::string& sourceName)
{
    std::string name = sourceName.substr(0, sourceName.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !Lexical::isWordPart(c); }, '_');
    return name;
}

} // namespace

std::optional<std::int64_t> integerValue(std::string_view text)
{
    const std::size_t sign = text.find('#');
    if (sign == std::string_view::npos)
        return digitsValue(text, 10);
    const auto base = digitsValue(text.substr(0, sign), 10);
    if (!base || *base < 2 || *base > 16)
        return std::nullopt;
    return digitsValue(text.substr(sign + 1), static_cast<int>(*base));
}

DeclarationBuilder::DeclarationBuilder(std::string_view text, std::string sourceName, std::vector<Declaration>& out)
    : m_text(text), m_positions(text), m_sourceName(std::move(sourceName)), m_out(out)
{
}

std::size_t DeclarationBuilder::offsetOf(std::string_view part) const
{
    return static_cast<std::size_t>(part.data() - m_text.data());
}

void DeclarationBuilder::begin(Declaration::Kind kind)
{
    finish();
    m_current = Declaration();
    m_current->kind = kind;
    m_current->source = m_sourceName;
}

void DeclarationBuilder::beginGlobals(std::string_view head)
{
    begin(Declaration::Kind::GlobalList);
    m_current->name = listNameOf(m_sourceName);
    m_current->position = positionOf(head);
    beginSection(VarSection::Global);
}

void DeclarationBuilder::nameUnit(std::string_view name)
{
    // A type has no word of its own in front of its name.
    if (!m_current || !m_current->name.empty())
        begin(Declaration::Kind::Type);
    m_current->name = name;
    m_current->position = positionOf(name);
}

void DeclarationBuilder::nameList(std::string_view name)
{
    m_current->name = name;
    m_current->position = positionOf(name);
}

void DeclarationBuilder::addTask(std::string_view name)
{
    begin(Declaration::Kind::Task);
    nameList(name);
    finish();
}

void DeclarationBuilder::setStructure()
{
    m_current->kind = Declaration::Kind::Structure;
    beginSection(VarSection::Member);
}

void DeclarationBuilder::setBase(std::string_view name)
{
    m_current->base = name;
}

void DeclarationBuilder::setDeclaredType()
{
    m_current->type = m_type;
}

void DeclarationBuilder::finish()
{
    if (m_current && !m_current->name.empty())
        m_out.push_back(std::move(*m_current));
    m_current.reset();
}

void DeclarationBuilder::abandon()
{
    finish();
    m_pending.clear();
    m_address.clear();
    m_initial.clear();
    m_types.clear();
    m_type.reset();
    takeExpression();
    depth = 0;
}

void DeclarationBuilder::beginSection(VarSection section)
{
    m_section = section;
    m_constant = false;
}

void DeclarationBuilder::nameVariable(std::string_view name)
{
    m_pending.push_back({ std::string(name), positionOf(name), commentAbove(offsetOf(name)) });
}

void DeclarationBuilder::endVariables(std::string_view semicolon)
{
    const std::string comment = commentBehind(offsetOf(semicolon) + 1);
    for (PendingVariable& pending : m_pending) {
        VariableDecl variable;
        variable.name = std::move(pending.name);
        variable.position = pending.position;
        variable.comment = comment.empty() ? pending.comment : comment;
        variable.type = m_type;
        variable.section = m_section;
        variable.constant = m_constant;
        variable.address = m_address;
        variable.initial = m_initial;
        m_current->variables.push_back(std::move(variable));
    }
    m_pending.clear();
    m_address.clear();
    m_initial.clear();
}

std::string DeclarationBuilder::commentBehind(std::size_t offset) const
{
    const std::size_t at = m_text.find_first_not_of(" \t", offset);
    if (at == std::string_view::npos || m_text[at] == '{' || !Lexical::beginsComment(m_text, at))
        return {};
    const auto end = Lexical::endOfComment(m_text, at);
    return end ? Lexical::commentText(m_text.substr(at, *end - at)) : std::string();
}

std::string DeclarationBuilder::commentAbove(std::size_t offset) const
{
    if (m_lastComment.empty() || m_lastComment.front() == '{')
        return {};
    const std::size_t begin = offsetOf(m_lastComment);
    const std::size_t end = begin + m_lastComment.size();
    if (end > offset)
        return {};
    const std::string_view between = m_text.substr(end, offset - end);
    const bool adjacent = between.find_first_not_of(" \t\r\n") == std::string_view::npos
        && std::count(between.begin(), between.end(), '\n') <= 1;
    // A comment behind something belongs to that.
    const std::size_t before = m_text.find_last_not_of(" \t", begin == 0 ? 0 : begin - 1);
    const bool ownLine = begin == 0 || before == std::string_view::npos || m_text[before] == '\n';
    return adjacent && ownLine ? Lexical::commentText(m_lastComment) : std::string();
}

void DeclarationBuilder::setNamedType(TypeSpec::Form form, std::string_view name)
{
    auto type = std::make_shared<TypeSpec>();
    type->form = form;
    type->name = name;
    type->position = positionOf(name);
    m_type = std::move(type);
}

void DeclarationBuilder::beginType(TypeSpec::Form form, std::string_view at)
{
    TypeSpec type;
    type.form = form;
    type.position = positionOf(at);
    m_types.push_back(std::move(type));
}

void DeclarationBuilder::endType()
{
    m_type = std::make_shared<TypeSpec>(std::move(m_types.back()));
    m_types.pop_back();
}

void DeclarationBuilder::endTypeOf()
{
    m_types.back().element = m_type;
    endType();
}

void DeclarationBuilder::addOpenDimension()
{
    Dimension dimension;
    dimension.open = true;
    m_types.back().dimensions.push_back(dimension);
}

void DeclarationBuilder::setLowBound()
{
    m_low = takeExpression();
}

void DeclarationBuilder::addDimension()
{
    m_types.back().dimensions.push_back({ false, std::move(m_low), takeExpression() });
}

void DeclarationBuilder::addItem(std::string_view name)
{
    m_types.back().items.push_back({ std::string(name), {}, positionOf(name) });
}

void DeclarationBuilder::setItemValue()
{
    m_types.back().items.back().value = takeExpression();
}

void DeclarationBuilder::addSign(char sign)
{
    if (sign == '-')
        m_negative = !m_negative;
}

void DeclarationBuilder::addNumber(std::string_view text)
{
    ConstTerm term;
    term.number = integerValue(text);
    addTerm(std::move(term));
}

void DeclarationBuilder::addConstant(std::string_view name)
{
    ConstTerm term;
    term.name = name;
    addTerm(std::move(term));
}

void DeclarationBuilder::addTerm(ConstTerm term)
{
    term.negative = std::exchange(m_negative, false);
    m_terms.push_back(std::move(term));
}

ConstExpression DeclarationBuilder::takeExpression()
{
    m_negative = false;
    return std::exchange(m_terms, {});
}

} // namespace ac
