#include "host/languagecore/ExpressionParser.h"

#include "host/languagecore/Grammar.h"
#include "host/languagecore/Lexical.h"
#include "host/languagecore/SourceParser.h"

#include <map>
#include <utility>

namespace ac {

namespace grammar {

struct end_of_text : eof { };
struct statement_end : semicolon { };
struct first_expression : expression { };
struct statement : seq<first_expression, opt<tok<assign>, must<expression>>> { };
struct further_statement : seq<tok<statement_end>, opt<statement>> { };
struct expression_text : seq<blanks, must<statement>, star<further_statement>, must<end_of_text>> { };

template <>
inline constexpr const char* expected<statement> = QT_TRANSLATE_NOOP("LanguageCore", "an expression is expected");
template <>
inline constexpr const char* expected<end_of_text> = QT_TRANSLATE_NOOP(
    "LanguageCore", "an operator or the end of the expression is expected");

} // namespace grammar

namespace {

/// Keeps what was matched by its place, since a rule may match again on another way through the grammar.
struct Collector : grammar::Nesting {
    explicit Collector(const std::string& text) : text(text) { }

    std::size_t offset(std::string_view part) const { return static_cast<std::size_t>(part.data() - text.data()); }

    const std::string& text;
    std::map<std::size_t, std::string_view> symbols;
    std::map<std::size_t, std::string_view> literals;
    std::map<std::size_t, std::string_view> addresses;
    std::map<std::size_t, std::string_view> ends;
};

using Parts = std::map<std::size_t, std::string_view>;

template <Parts Collector::*parts>
struct Collect {
    template <typename Input>
    static void apply(const Input& in, Collector& collector)
    {
        (collector.*parts)[collector.offset(in.string_view())] = in.string_view();
    }
};

template <typename Rule>
struct Action : grammar::nothing<Rule> {
};
template <>
struct Action<grammar::symbol> : Collect<&Collector::symbols> {
};
template <>
struct Action<grammar::literal> : Collect<&Collector::literals> {
};
template <>
struct Action<grammar::address> : Collect<&Collector::addresses> {
};
template <>
struct Action<grammar::statement_end> : Collect<&Collector::ends> {
};

std::vector<std::string> texts(const Parts& parts)
{
    std::vector<std::string> found;
    for (const auto& part : parts)
        found.emplace_back(part.second);
    return found;
}

bool isCalled(const std::string& text, std::size_t behind)
{
    const std::size_t next = text.find_first_not_of(" \t\r\n", behind);
    return next != std::string::npos && text[next] == '(';
}

std::vector<ExpressionSymbol> symbolsOf(const Collector& collector, const Lexical::PositionIndex& positions)
{
    std::vector<ExpressionSymbol> symbols;
    auto end = collector.ends.begin();
    int statement = 0;
    for (const auto& part : collector.symbols) {
        for (; end != collector.ends.end() && end->first < part.first; ++end)
            ++statement;
        symbols.push_back({ Lexical::withoutBlanks(part.second), statement, positions.at(part.first),
            isCalled(collector.text, part.first + part.second.size()) });
    }
    return symbols;
}

} // namespace

ParsedExpression parseExpression(const std::string& text)
{
    Collector collector(text);
    const Lexical::PositionIndex positions(text);
    ParsedExpression parsed;
    grammar::memory_input<grammar::tracking_mode::lazy> in(text.data(), text.data() + text.size(), std::string());
    try {
        grammar::parse<grammar::expression_text, Action, grammar::control>(in, collector);
    } catch (const grammar::Fault& fault) {
        parsed.problem = ParsedExpression::Problem{ positions.at(fault.offset), userText(fault.expected) };
    }
    parsed.symbols = symbolsOf(collector, positions);
    parsed.literals = texts(collector.literals);
    parsed.addresses = texts(collector.addresses);
    return parsed;
}

} // namespace ac
