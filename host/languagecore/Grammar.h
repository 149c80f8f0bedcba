#pragma once

#include "host/languagecore/Keywords.h"
#include "host/languagecore/Lexical.h"

#include <tao/pegtl.hpp>

#include <QtGlobal>

#include <cstddef>
#include <string_view>

/// What declarations and expressions have in common: blanks, words, literals, expressions.
namespace ac::grammar {

using namespace tao::pegtl;

/// Ends the parse of a declaration. Thrown by rules and caught by the parsers of this library; it never leaves it.
struct Fault {
    std::size_t offset;
    /// What was expected, a text to translate.
    const char* expected;
};

template <typename Input>
std::string_view wholeText(const Input& in)
{
    return { in.begin(), static_cast<std::size_t>(in.end() - in.begin()) };
}

template <typename Input>
std::size_t offsetOf(const Input& in)
{
    return static_cast<std::size_t>(in.current() - in.begin());
}

/// Deeper nesting of parentheses or types than anybody writes; it bounds the parser's own recursion.
constexpr int deepestNesting = 64;

/// State that every parse carries along.
struct Nesting {
    int depth = 0;
};

/// A rule that contains itself.
template <typename Rule>
struct nested {
    using rule_t = nested;
    using subs_t = type_list<Rule>;

    template <apply_mode A, rewind_mode M, template <typename...> class Action, template <typename...> class Control,
        typename Input, typename State>
    static bool match(Input& in, State& state)
    {
        struct Level {
            explicit Level(Nesting& nesting) : nesting(nesting) { ++nesting.depth; }
            ~Level() { --nesting.depth; }
            Nesting& nesting;
        };
        const Level level(state);
        if (state.depth > deepestNesting)
            throw Fault{ offsetOf(in), QT_TRANSLATE_NOOP("LanguageCore", "less nesting is expected") };
        return tao::pegtl::match<Rule, A, M, Action, Control>(in, state);
    }
};

/// A comment of any kind, or a pragma.
struct comment {
    using rule_t = comment;
    using subs_t = empty_list;

    template <typename Input>
    static bool match(Input& in)
    {
        const std::size_t at = offsetOf(in);
        if (!Lexical::beginsComment(wholeText(in), at))
            return false;
        const auto end = Lexical::endOfComment(wholeText(in), at);
        if (!end)
            throw Fault{ at, QT_TRANSLATE_NOOP("LanguageCore", "the end of this comment is expected") };
        in.bump(*end - at);
        return true;
    }
};

struct blank : one<' ', '\t', '\r', '\n', '\f', '\v'> { };
struct blanks : star<sor<plus<blank>, comment>> { };

/// A text in quotes.
template <char Quote>
struct quoted {
    using rule_t = quoted;
    using subs_t = empty_list;

    template <typename Input>
    static bool match(Input& in)
    {
        if (in.empty() || in.peek_char() != Quote)
            return false;
        const std::size_t at = offsetOf(in);
        const auto end = Lexical::endOfText(wholeText(in), at);
        if (!end)
            throw Fault{ at, QT_TRANSLATE_NOOP("LanguageCore", "the closing quote of this text is expected") };
        in.bump(*end - at);
        return true;
    }
};
struct text_literal : sor<quoted<'\''>, quoted<'"'>> { };

struct word_part : sor<alnum, one<'_'>> { };
struct word : identifier { };

/// A word that may name something.
struct name {
    using rule_t = name;
    using subs_t = empty_list;

    template <typename Input>
    static bool match(Input& in)
    {
        if (in.empty() || !Lexical::isWordStart(in.peek_char()))
            return false;
        const std::size_t at = offsetOf(in);
        const std::size_t end = Lexical::endOfWord(wholeText(in), at);
        if (Keywords::isStructural(wholeText(in).substr(at, end - at)))
            return false;
        in.bump(end - at);
        return true;
    }
};

/// A keyword in any case, as a whole word.
template <typename Text>
struct keyword : seq<Text, not_at<word_part>> {
};
#define KESTRUN_KEYWORD(rule, text)                                                                                    \
    struct rule : keyword<TAO_PEGTL_ISTRING(text)> { }

/// A rule and the blanks behind it.
template <typename Rule>
struct tok : seq<Rule, blanks> {
};

struct comma : one<','> { };
struct semicolon : one<';'> { };
struct assign : string<':', '='> { };
struct colon : seq<one<':'>, not_at<one<'='>>> { };
struct left_paren : one<'('> { };
struct right_paren : one<')'> { };
struct left_bracket : one<'['> { };
struct right_bracket : one<']'> { };
struct range_dots : two<'.'> { };

struct digits : seq<digit, star<sor<digit, seq<one<'_'>, digit>>>> { };
struct based_digits : seq<xdigit, star<sor<xdigit, seq<one<'_'>, xdigit>>>> { };
struct based_integer : seq<digits, one<'#'>, based_digits> { };
struct integer : sor<based_integer, digits> { };
struct exponent : seq<one<'e', 'E'>, opt<one<'+', '-'>>, digits> { };
/// "1..2" is a range and no real.
struct real : seq<digits, sor<seq<one<'.'>, digits, opt<exponent>>, exponent>> { };
struct number : seq<sor<based_integer, real, digits>, not_at<word_part>> { };
/// "T#1s500ms", "DT#2020-01-01-12:00:00", "INT#-5", "Color#Red".
struct typed_literal : seq<word, one<'#'>, opt<one<'+', '-'>>, sor<number, plus<sor<word_part, one<'.', ':'>>>>,
                           star<one<'-', ':'>, plus<sor<word_part, one<'.', ':'>>>>> { };
KESTRUN_KEYWORD(kw_true, "TRUE");
KESTRUN_KEYWORD(kw_false, "FALSE");
struct literal : sor<text_literal, kw_true, kw_false, typed_literal, number> { };

/// "%IX100.0", "%MW2"; "%I*" is an address that is not settled yet.
struct address
    : seq<one<'%'>, one<'I', 'Q', 'M', 'i', 'q', 'm'>, opt<one<'X', 'B', 'W', 'D', 'L', 'x', 'b', 'w', 'd', 'l'>>,
          sor<one<'*'>, seq<plus<digit>, star<one<'.'>, plus<digit>>>>> { };

struct expression;

struct argument_name : seq<tok<name>, tok<sor<assign, string<'=', '>'>>>> { };
/// "5", "a := 1", "1..5".
struct argument : sor<seq<argument_name, must<expression>>, seq<expression, opt<tok<range_dots>, must<expression>>>> {
};
struct arguments : list_must<argument, tok<comma>> { };
struct argument_list : seq<tok<left_paren>, opt<arguments>, must<tok<right_paren>>> { };
struct element_list : seq<tok<left_bracket>, opt<arguments>, must<tok<right_bracket>>> { };

struct path_member
    : seq<blanks, one<'.'>, not_at<one<'.'>>, blanks, sor<name, seq<opt<one<'%'>, one<'X', 'x'>>, plus<digit>>>> { };
struct path_index
    : seq<blanks, left_bracket, blanks, expression, star<tok<comma>, must<expression>>, must<right_bracket>> { };
struct path_reference : seq<blanks, one<'^'>> { };
struct symbol : seq<name, star<sor<path_member, path_index, path_reference>>> { };

KESTRUN_KEYWORD(kw_not, "NOT");
KESTRUN_KEYWORD(kw_and, "AND");
KESTRUN_KEYWORD(kw_and_then, "AND_THEN");
KESTRUN_KEYWORD(kw_or, "OR");
KESTRUN_KEYWORD(kw_or_else, "OR_ELSE");
KESTRUN_KEYWORD(kw_xor, "XOR");
KESTRUN_KEYWORD(kw_mod, "MOD");

struct group : seq<tok<left_paren>, must<arguments>, must<tok<right_paren>>> { };
/// A literal may be followed by what it repeats: "3(0)".
struct operand : sor<nested<group>, nested<element_list>, seq<tok<literal>, opt<nested<argument_list>>>, tok<address>,
                     seq<nested<symbol>, blanks, opt<nested<argument_list>>>> { };
struct sign : sor<kw_not, one<'-', '+'>> { };
struct signed_operand : seq<star<tok<sign>>, operand> { };
struct operation
    : sor<string<'*', '*'>, string<'<', '='>, string<'>', '='>, string<'<', '>'>,
          one<'=', '<', '>', '+', '-', '*', '/', '&'>, kw_and_then, kw_and, kw_or_else, kw_or, kw_xor, kw_mod> { };
struct further_operand : signed_operand { };
struct expression : seq<signed_operand, star<tok<operation>, must<further_operand>>> { };

/// What a rule that must match expected, a text to translate.
template <typename Rule>
inline constexpr const char* expected = nullptr;
template <>
inline constexpr const char* expected<expression> = QT_TRANSLATE_NOOP("LanguageCore", "an expression is expected");
template <>
inline constexpr const char* expected<further_operand> = QT_TRANSLATE_NOOP("LanguageCore", "an operand is expected");
template <>
inline constexpr const char* expected<argument> = QT_TRANSLATE_NOOP("LanguageCore", "an expression is expected");
template <>
inline constexpr const char* expected<arguments> = QT_TRANSLATE_NOOP("LanguageCore", "an expression is expected");
template <>
inline constexpr const char* expected<tok<right_paren>> = QT_TRANSLATE_NOOP("LanguageCore", "')' is expected");
template <>
inline constexpr const char* expected<tok<right_bracket>> = QT_TRANSLATE_NOOP("LanguageCore", "']' is expected");
template <>
inline constexpr const char* expected<right_bracket> = QT_TRANSLATE_NOOP("LanguageCore", "']' is expected");

/// Turns a rule that must match and does not into a fault that says what it expected.
template <typename Rule>
struct control : normal<Rule> {
    template <typename Input, typename... States>
    [[noreturn]] static void raise(const Input& in, States&&... /*unused*/)
    {
        static_assert(expected<Rule> != nullptr, "the rule has no text for the user");
        throw Fault{ offsetOf(in), expected<Rule> };
    }
};

} // namespace ac::grammar
