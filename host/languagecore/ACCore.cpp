#include "host/languagecore/ACCore.h"

#include "host/languagecore/CheckUnitHelper.h"
#include "host/languagecore/Declarations.h"
#include "host/languagecore/ExpressionParser.h"
#include "host/languagecore/Keywords.h"
#include "host/languagecore/Names.h"
#include "host/languagecore/PathResolver.h"
#include "host/languagecore/SourceParser.h"
#include "host/languagecore/Symbol.h"
#include "host/languagecore/SymbolTable.h"
#include "host/languagecore/SystemLibrary.h"
#include "host/languagecore/VariableLister.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

namespace ac {

namespace {

using Kind = Declaration::Kind;

SymbolKind symbolKind(const Declaration& declaration)
{
    switch (declaration.kind) {
    case Kind::Program:
        return ProgramSymbols;
    case Kind::FunctionBlock:
        return FunctionBlockSymbols;
    case Kind::Function:
        return FunctionSymbols;
    case Kind::Structure:
        return StructSymbols;
    case Kind::Type:
        return OtherTypeSymbols;
    case Kind::GlobalList:
        return GlobalVariableListSymbols;
    case Kind::Task:
        return TaskSymbols;
    }
    return OtherTypeSymbols;
}

bool isEnumeration(const Declaration& declaration)
{
    return declaration.kind == Kind::Type && declaration.type && declaration.type->form == TypeSpec::Form::Enumeration;
}

int bounded(std::int64_t value)
{
    return static_cast<int>(
        std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::unique_ptr<Symbol> makeEnumeration(const Declaration& declaration, const SymbolTable& table)
{
    std::vector<EnumMember> members;
    const std::vector<std::int64_t>& values = table.itemValues(declaration);
    for (std::size_t i = 0; i < values.size(); ++i)
        members.push_back({ declaration.type->items[i].name, bounded(values[i]) });
    return std::make_unique<SymbolEnumType>(declaration.name, std::move(members));
}

bool isAxisGroup(const VariableDecl& variable)
{
    return variable.type && sameName(variable.type->name, "AXES_GROUP_REF");
}

LocalName localName(const Declaration& declaration, const VariableDecl& variable)
{
    const bool external = variable.section == VarSection::External;
    return { external ? LocalName::Kind::External : LocalName::Kind::Own, declaration.source, variable.position.line,
        variable.position.column };
}

} // namespace

struct ACCore::Private {
    explicit Private(const ACCore& core) : checkUnitHelper(core) { }

    void makeSymbols();
    void makeVariableSymbols(const Declaration& unit);
    SymbolDataType* dataType(const ResolvedType& type);
    /// The declaration that a line of a source lies in or behind.
    const Declaration* declarationAt(const std::string& source, int line) const;
    void classify(const ExpressionSymbol& symbol, std::map<int, std::map<int, Language::LogicSymInfo>>& symbols,
        std::map<std::string, std::string>& types, ParseDetails& details) const;

    CheckUnitHelper checkUnitHelper;
    ProgramStyle style = SymbolicStyle;
    std::vector<Declaration> declarations;
    std::vector<SourceProblem> problems;
    std::unique_ptr<SymbolTable> table;
    std::vector<std::unique_ptr<Symbol>> symbols;
    std::map<std::pair<BasicDataType, std::string>, std::unique_ptr<SymbolDataType>> dataTypes;
    /// Made when it is first asked for.
    std::optional<std::vector<VariableInfo>> variables;
};

void ACCore::Private::makeSymbols()
{
    for (const Declaration& declaration : declarations) {
        if (isEnumeration(declaration))
            symbols.push_back(makeEnumeration(declaration, *table));
        else
            symbols.push_back(std::make_unique<Symbol>(declaration.name, symbolKind(declaration)));
        if (declaration.kind == Kind::Program || declaration.kind == Kind::GlobalList)
            makeVariableSymbols(declaration);
    }
}

void ACCore::Private::makeVariableSymbols(const Declaration& unit)
{
    for (const VariableDecl& variable : unit.variables) {
        symbols.push_back(std::make_unique<Symbol>(unit.name + '.' + variable.name, VariableSymbols));
        if (isAxisGroup(variable))
            symbols.push_back(std::make_unique<Symbol>(variable.name, AxisGroupSymbols));
    }
}

SymbolDataType* ACCore::Private::dataType(const ResolvedType& type)
{
    std::unique_ptr<SymbolDataType>& made = dataTypes[{ type.dataType, type.text }];
    if (!made)
        made = std::make_unique<SymbolDataType>(type.dataType, type.text);
    return made.get();
}

void ACCore::Private::classify(const ExpressionSymbol& symbol,
    std::map<int, std::map<int, Language::LogicSymInfo>>& symbols, std::map<std::string, std::string>& types,
    ParseDetails& details) const
{
    details.identifiers.push_back(symbol.path);
    const auto type = PathResolver(*table, PathResolver::Indices::Any).resolve(symbol.path);
    if (type) {
        std::map<int, Language::LogicSymInfo>& found = symbols[symbol.statement];
        found[static_cast<int>(found.size())]
            = { symbol.path, type->dataType, symbol.position.line, symbol.position.column };
        types[symbol.path] = type->text;
        return;
    }
    const bool function = symbol.called && (Keywords::isReserved(symbol.path) || table->isFunction(symbol.path));
    if (table->isEnumValue(symbol.path))
        details.literals.push_back(symbol.path);
    else if (!function)
        details.unknown.push_back(symbol.path);
}

ACCore::ACCore() : d(std::make_unique<Private>(*this))
{
    setSources({});
}

ACCore::~ACCore() = default;

void ACCore::setSources(const std::map<std::string, std::string>& sources)
{
    d->variables.reset();
    d->symbols.clear();
    d->dataTypes.clear();
    d->problems.clear();
    d->table.reset();
    d->declarations.clear();
    parseSource(systemLibraryName(), systemLibraryText(), d->declarations, d->problems);
    for (const auto& source : sources)
        parseSource(source.first, source.second, d->declarations, d->problems);
    d->table = std::make_unique<SymbolTable>(d->declarations, d->problems);
    d->makeSymbols();
    std::stable_sort(d->problems.begin(), d->problems.end(), [](const SourceProblem& a, const SourceProblem& b) {
        return std::tie(a.source, a.line, a.column) < std::tie(b.source, b.line, b.column);
    });
}

void ACCore::setProgramStyle(ProgramStyle style)
{
    d->style = style;
}

ProgramStyle ACCore::getProgramStyle() const
{
    return d->style;
}

CheckUnitHelper* ACCore::checkUnitHelper() const
{
    return &d->checkUnitHelper;
}

SymbolDataType* ACCore::type(const std::string& name) const
{
    const auto type = PathResolver(*d->table, PathResolver::Indices::Known).resolve(name);
    return type ? d->dataType(*type) : nullptr;
}

void ACCore::allSymbols(int kind, std::vector<Symbol*>& out) const
{
    for (const auto& symbol : d->symbols) {
        if (symbol->kind() == kind)
            out.push_back(symbol.get());
    }
}

bool ACCore::parserVariables(const std::string& text, const std::string& unitName, int section,
    std::map<int, std::map<int, Language::LogicSymInfo>>& symbols, std::map<std::string, std::string>& types,
    ParseDetails& details) const
{
    Q_UNUSED(section)
    const ParsedExpression parsed = parseExpression(text);
    details.literals.insert(details.literals.end(), parsed.literals.begin(), parsed.literals.end());
    details.addresses.insert(details.addresses.end(), parsed.addresses.begin(), parsed.addresses.end());
    for (const ExpressionSymbol& symbol : parsed.symbols)
        d->classify(symbol, symbols, types, details);
    if (!parsed.problem)
        return true;
    const Position& position = parsed.problem->position;
    details.problems.push_back({ unitName, position.line, position.column, parsed.problem->text });
    return false;
}

bool ACCore::isNameTaken(const std::string& name) const
{
    return d->table->isTaken(name);
}

const std::vector<VariableInfo>& ACCore::variables() const
{
    if (!d->variables) {
        VariableLister lister(*d->table, [this](const ResolvedType& type) { return d->dataType(type); });
        d->variables = lister.list();
    }
    return *d->variables;
}

const Declaration* ACCore::Private::declarationAt(const std::string& source, int line) const
{
    const Declaration* found = nullptr;
    for (const Declaration& declaration : declarations) {
        if (declaration.source == source && declaration.position.line <= line
            && (found == nullptr || declaration.position.line >= found->position.line))
            found = &declaration;
    }
    return found;
}

std::string ACCore::unitAt(const std::string& source, int line) const
{
    const Declaration* unit = d->declarationAt(source, line);
    return unit == nullptr ? std::string() : unit->name;
}

LocalName ACCore::localName(const std::string& source, int line, const std::string& name) const
{
    const Declaration* unit = d->declarationAt(source, line);
    if (unit == nullptr)
        return {};
    const auto written = std::find_if(unit->variables.begin(), unit->variables.end(),
        [&name](const VariableDecl& variable) { return sameName(variable.name, name); });
    if (written != unit->variables.end())
        return ac::localName(*unit, *written);
    const VariableDecl* inherited = d->table->member(*unit, name);
    for (const Declaration& declaration : d->declarations) {
        for (const VariableDecl& variable : declaration.variables) {
            if (&variable == inherited)
                return ac::localName(declaration, variable);
        }
    }
    return {};
}

ACCore::Owner ACCore::ownerOf(const std::string& path) const
{
    const std::size_t point = path.find('.');
    if (point == std::string::npos)
        return Owner::NoUnit;
    const std::size_t end = path.find_first_of(".[", point + 1);
    const VariableDecl* variable = d->table->variableOf(path.substr(0, point), path.substr(point + 1, end - point - 1));
    if (variable == nullptr)
        return Owner::NoUnit;
    return variable->section == VarSection::External ? Owner::Elsewhere : Owner::Unit;
}

ACCore::Reach ACCore::reachOf(const std::string& path) const
{
    const PathResolver resolver(*d->table, PathResolver::Indices::Fitting);
    if (resolver.resolve(path)) {
        if (!PathResolver::hasNamedIndex(path) || type(path) != nullptr)
            return Reach::Variable;
        return resolver.hasStrayIndex(path) ? Reach::Stray : Reach::Element;
    }
    return resolver.resolveInner(path) ? Reach::Inner : Reach::None;
}

std::string ACCore::withIndexValues(const std::string& path, const std::string& owner) const
{
    return PathResolver(*d->table, PathResolver::Indices::Any).withIndexValues(path, owner);
}

const std::vector<SourceProblem>& ACCore::problems() const
{
    return d->problems;
}

} // namespace ac
