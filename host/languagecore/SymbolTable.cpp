#include "host/languagecore/SymbolTable.h"

#include "host/languagecore/ContainmentGraph.h"
#include "host/languagecore/ElementaryTypes.h"
#include "host/languagecore/Names.h"
#include "host/languagecore/SourceParser.h"
#include "host/languagecore/SplitPath.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

namespace ac {

namespace {

/// Chains of names that stand for each other end somewhere; one that has not ended here goes in a circle.
constexpr int longestChain = 64;

bool isMemberSection(VarSection section)
{
    return section != VarSection::Temp && section != VarSection::External;
}

SourceProblem problemAt(const std::string& source, const Position& position, const char* text, const std::string& name)
{
    std::string full = userText(text);
    const std::size_t place = full.find("%1");
    if (place != std::string::npos)
        full.replace(place, 2, name);
    return { source, position.line, position.column, full };
}

} // namespace

SymbolTable::SymbolTable(const std::vector<Declaration>& declarations, std::vector<SourceProblem>& problems)
    : m_declarations(declarations)
{
    for (const Declaration& declaration : m_declarations)
        collect(declaration, problems);
    for (const auto& type : m_types)
        collectItems(*type.second);
    checkTypes(problems);
    findEndlessTypes(problems);
}

void SymbolTable::collect(const Declaration& declaration, std::vector<SourceProblem>& problems)
{
    using Kind = Declaration::Kind;
    const std::string key = foldedName(declaration.name);
    const bool list = declaration.kind == Kind::GlobalList;
    // Several blocks of global variables make up one list.
    const bool known = isTaken(key) && !(list && m_lists.count(key) > 0);
    if (known && declaration.kind != Kind::Task) {
        problems.push_back(problemAt(declaration.source, declaration.position,
            QT_TRANSLATE_NOOP("LanguageCore", "the name %1 is declared already"), declaration.name));
        if (!list)
            return;
    }
    if (declaration.kind == Kind::Program)
        m_programs.emplace(key, &declaration);
    else if (declaration.kind == Kind::Function)
        m_functions.insert(key);
    else if (list)
        m_lists.insert(key);
    else if (declaration.kind != Kind::Task)
        m_types.emplace(key, &declaration);
    collectVariables(declaration, problems);
}

void SymbolTable::collectVariables(const Declaration& declaration, std::vector<SourceProblem>& problems)
{
    const bool list = declaration.kind == Declaration::Kind::GlobalList;
    const bool unit = list || declaration.kind == Declaration::Kind::Program;
    VariableMap& own = unit ? m_unitVariables[foldedName(declaration.name)] : m_members[&declaration];
    for (const VariableDecl& variable : declaration.variables) {
        const std::string key = foldedName(variable.name);
        bool fresh = own.emplace(key, &variable).second;
        if (list) {
            fresh = fresh && !isTaken(key);
            m_globals.emplace(key, &variable);
        }
        if (!fresh)
            problems.push_back(problemAt(declaration.source, variable.position,
                QT_TRANSLATE_NOOP("LanguageCore", "the name %1 is declared already"), variable.name));
    }
}

void SymbolTable::collectItems(const Declaration& declaration)
{
    if (declaration.kind != Declaration::Kind::Type || !declaration.type
        || declaration.type->form != TypeSpec::Form::Enumeration)
        return;
    std::vector<std::int64_t>& values = m_itemValues[&declaration];
    std::int64_t next = 0;
    for (const EnumItem& item : declaration.type->items) {
        if (!item.value.empty())
            next = value(item.value).value_or(next);
        values.push_back(next);
        const std::string key = foldedName(item.name);
        m_items.emplace(key, next);
        m_items.emplace(foldedName(declaration.name) + '.' + key, next);
        if (__builtin_add_overflow(next, std::int64_t(1), &next))
            next = 0;
    }
}

void SymbolTable::checkTypes(std::vector<SourceProblem>& problems) const
{
    for (const Declaration& declaration : m_declarations) {
        std::vector<const TypeSpec*> types{ declaration.type.get() };
        for (const VariableDecl& variable : declaration.variables)
            types.push_back(variable.type.get());
        for (const TypeSpec* type : types) {
            while (type != nullptr && type->element)
                type = type->element.get();
            if (type != nullptr && !isKnownType(*type))
                problems.push_back(problemAt(declaration.source, type->position,
                    QT_TRANSLATE_NOOP("LanguageCore", "the type %1 is not declared"), type->name));
        }
    }
}

bool SymbolTable::isKnownType(const TypeSpec& type) const
{
    return type.form != TypeSpec::Form::Named || elementaryType(type.name) != NoType || isGenericType(type.name)
        || typeOf(type.name) != nullptr;
}

void SymbolTable::findEndlessTypes(std::vector<SourceProblem>& problems)
{
    ContainmentGraph graph;
    for (const auto& each : m_types) {
        for (const Declaration* content : contents(*each.second))
            graph.add(each.second, content);
    }
    m_endless = graph.onCircles();
    for (const Declaration& declaration : m_declarations) {
        if (m_endless.count(&declaration) > 0)
            problems.push_back(problemAt(declaration.source, declaration.position,
                QT_TRANSLATE_NOOP("LanguageCore", "the type %1 contains itself"), declaration.name));
    }
}

std::vector<const Declaration*> SymbolTable::contents(const Declaration& owner) const
{
    std::vector<const Declaration*> found;
    if (const Declaration* base = typeOf(owner.base))
        found.push_back(base);
    for (const VariableDecl& variable : owner.variables) {
        const TypeSpec* type = variable.type.get();
        ResolvedType resolved = resolve(type);
        for (int i = 0; resolved.array != nullptr && i < longestChain; ++i)
            resolved = resolve(resolved.array->element.get());
        if (resolved.declaration != nullptr && isMemberSection(variable.section)
            && variable.section != VarSection::InOut)
            found.push_back(resolved.declaration);
    }
    return found;
}

bool SymbolTable::isTaken(std::string_view name) const
{
    const std::string key = foldedName(name);
    return m_types.count(key) > 0 || m_programs.count(key) > 0 || m_functions.count(key) > 0 || m_lists.count(key) > 0
        || m_globals.count(key) > 0;
}

const VariableDecl* SymbolTable::variableOf(std::string_view unit, std::string_view name) const
{
    const auto variables = m_unitVariables.find(foldedName(unit));
    if (variables == m_unitVariables.end())
        return nullptr;
    const auto variable = variables->second.find(foldedName(name));
    return variable == variables->second.end() ? nullptr : variable->second;
}

const VariableDecl* SymbolTable::declared(std::string_view owner, std::string_view name) const
{
    if (const VariableDecl* variable = variableOf(owner, name))
        return variable;
    for (const Declaration& declaration : m_declarations) {
        const auto own = m_members.find(&declaration);
        if (own == m_members.end() || !sameName(declaration.name, owner))
            continue;
        const auto variable = own->second.find(foldedName(name));
        return variable == own->second.end() ? member(declaration, name) : variable->second;
    }
    return nullptr;
}

bool SymbolTable::isDeclaredAnywhere(std::string_view name) const
{
    const auto isVariable = [name](const VariableDecl& variable) { return sameName(variable.name, name); };
    return isTaken(name) || isEnumValue(name)
        || std::any_of(m_declarations.begin(), m_declarations.end(), [&isVariable](const Declaration& declaration) {
               return std::any_of(declaration.variables.begin(), declaration.variables.end(), isVariable);
           });
}

const VariableDecl* SymbolTable::globalVariable(std::string_view name) const
{
    const auto variable = m_globals.find(foldedName(name));
    return variable == m_globals.end() ? nullptr : variable->second;
}

bool SymbolTable::isFunction(std::string_view name) const
{
    return m_functions.count(foldedName(name)) > 0;
}

bool SymbolTable::isEnumValue(std::string_view path) const
{
    return m_items.count(foldedName(path)) > 0;
}

const Declaration* SymbolTable::typeOf(std::string_view name) const
{
    const auto type = m_types.find(foldedName(name));
    if (type != m_types.end())
        return type->second;
    // The part in front of a point is the library or namespace that a type comes from.
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? nullptr : typeOf(name.substr(point + 1));
}

ResolvedType SymbolTable::resolve(const TypeSpec* type) const
{
    ResolvedType resolved;
    for (int i = 0; type != nullptr && i < longestChain; ++i) {
        const bool first = resolved.text.empty();
        if (type->form != TypeSpec::Form::Named) {
            resolved.dataType = structuredType(*type);
            resolved.array = type->form == TypeSpec::Form::Array ? type : nullptr;
            if (first)
                resolved.text = resolved.array != nullptr ? arrayText(*type) : structuredText(*type);
            return resolved;
        }
        if (first)
            resolved.text = type->name;
        resolved.dataType = elementaryType(type->name);
        const Declaration* declared = resolved.dataType == NoType ? typeOf(type->name) : nullptr;
        if (declared == nullptr)
            return resolved;
        if (declared->kind != Declaration::Kind::Type) {
            resolved.dataType = declared->kind == Declaration::Kind::Structure ? Struct : FunctionBlock;
            resolved.declaration = declared;
            return resolved;
        }
        resolved.declaration = nullptr;
        type = declared->type.get();
    }
    resolved.dataType = NoType;
    return resolved;
}

std::string SymbolTable::arrayText(const TypeSpec& array) const
{
    std::string text = "ARRAY [";
    const auto known = bounds(array);
    for (std::size_t i = 0; known && i < known->size(); ++i) {
        text += i == 0 ? "" : ", ";
        text += std::to_string((*known)[i].low) + ".." + std::to_string((*known)[i].high);
    }
    text += known ? "" : "*";
    return text + "] OF " + resolve(array.element.get()).text;
}

std::vector<const Declaration*> SymbolTable::lineage(const Declaration& owner) const
{
    std::vector<const Declaration*> line;
    if (m_endless.count(&owner) > 0)
        return line;
    const Declaration* declaration = &owner;
    for (int i = 0; declaration != nullptr && i < longestChain; ++i) {
        line.push_back(declaration);
        declaration = declaration->base.empty() ? nullptr : typeOf(declaration->base);
    }
    return line;
}

const VariableDecl* SymbolTable::member(const Declaration& owner, std::string_view name) const
{
    for (const Declaration* declaration : lineage(owner)) {
        const auto own = m_members.find(declaration);
        if (own == m_members.end())
            continue;
        const auto variable = own->second.find(foldedName(name));
        if (variable != own->second.end())
            return isMemberSection(variable->second->section) ? variable->second : nullptr;
    }
    return nullptr;
}

std::vector<const VariableDecl*> SymbolTable::members(const Declaration& owner) const
{
    std::vector<const VariableDecl*> found;
    const std::vector<const Declaration*> line = lineage(owner);
    for (auto declaration = line.rbegin(); declaration != line.rend(); ++declaration) {
        for (const VariableDecl& variable : (*declaration)->variables) {
            // A name that is declared twice counts once.
            if (isMemberSection(variable.section) && member(owner, variable.name) == &variable)
                found.push_back(&variable);
        }
    }
    return found;
}

std::optional<std::vector<Bounds>> SymbolTable::bounds(const TypeSpec& array) const
{
    std::vector<Bounds> found;
    for (const Dimension& dimension : array.dimensions) {
        const auto low = value(dimension.low);
        const auto high = value(dimension.high);
        if (dimension.open || !low || !high)
            return std::nullopt;
        found.push_back({ *low, *high });
    }
    return found;
}

std::optional<std::int64_t> SymbolTable::value(const ConstExpression& expression, std::string_view owner) const
{
    return value(expression, owner, 0);
}

std::optional<std::int64_t> SymbolTable::value(
    const ConstExpression& expression, std::string_view owner, int depth) const
{
    std::int64_t sum = 0;
    if (expression.empty() || depth > longestChain)
        return std::nullopt;
    for (const ConstTerm& term : expression) {
        const auto part = term.name.empty() ? term.number : constant(term.name, owner, depth + 1);
        if (!part)
            return std::nullopt;
        const bool overflow
            = term.negative ? __builtin_sub_overflow(sum, *part, &sum) : __builtin_add_overflow(sum, *part, &sum);
        if (overflow)
            return std::nullopt;
    }
    return sum;
}

std::optional<std::int64_t> SymbolTable::constant(std::string_view name, std::string_view owner, int depth) const
{
    const VariableDecl* own = owner.empty() ? nullptr : declared(owner, name);
    if (own != nullptr && own->section != VarSection::External)
        return own->constant ? initialValue(*own, owner, depth) : std::nullopt;
    const auto item = m_items.find(foldedName(name));
    if (item != m_items.end())
        return item->second;
    const VariableDecl* variable = variableByPath(name);
    const std::size_t point = name.find('.');
    const std::string_view unit = point == std::string_view::npos ? std::string_view() : name.substr(0, point);
    return variable != nullptr && variable->constant ? initialValue(*variable, unit, depth) : std::nullopt;
}

std::optional<std::int64_t> SymbolTable::initialValue(
    const VariableDecl& variable, std::string_view owner, int depth) const
{
    const auto known = m_constants.emplace(&variable, std::nullopt);
    if (!known.second)
        return known.first->second;
    const auto initial = parseConstExpression(variable.initial);
    const auto found = initial ? value(*initial, owner, depth) : std::nullopt;
    m_constants[&variable] = found;
    return found;
}

const VariableDecl* SymbolTable::variableByPath(std::string_view path) const
{
    const std::size_t point = path.find('.');
    return point == std::string_view::npos ? globalVariable(path)
                                           : variableOf(path.substr(0, point), path.substr(point + 1));
}

const std::vector<std::int64_t>& SymbolTable::itemValues(const Declaration& enumeration) const
{
    static const std::vector<std::int64_t> none;
    const auto values = m_itemValues.find(&enumeration);
    return values == m_itemValues.end() ? none : values->second;
}

} // namespace ac
