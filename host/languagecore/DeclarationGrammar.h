#pragma once

#include "host/languagecore/Grammar.h"

/// The declarations of a source. What stands in the bodies of programs is walked over and not read.
namespace ac::grammar {

KESTRUN_KEYWORD(kw_program, "PROGRAM");
KESTRUN_KEYWORD(kw_end_program, "END_PROGRAM");
KESTRUN_KEYWORD(kw_function_block, "FUNCTION_BLOCK");
KESTRUN_KEYWORD(kw_end_function_block, "END_FUNCTION_BLOCK");
KESTRUN_KEYWORD(kw_function, "FUNCTION");
KESTRUN_KEYWORD(kw_end_function, "END_FUNCTION");
KESTRUN_KEYWORD(kw_type, "TYPE");
KESTRUN_KEYWORD(kw_end_type, "END_TYPE");
KESTRUN_KEYWORD(kw_struct, "STRUCT");
KESTRUN_KEYWORD(kw_end_struct, "END_STRUCT");
KESTRUN_KEYWORD(kw_union, "UNION");
KESTRUN_KEYWORD(kw_end_union, "END_UNION");
KESTRUN_KEYWORD(kw_var, "VAR");
KESTRUN_KEYWORD(kw_var_input, "VAR_INPUT");
KESTRUN_KEYWORD(kw_var_output, "VAR_OUTPUT");
KESTRUN_KEYWORD(kw_var_in_out, "VAR_IN_OUT");
KESTRUN_KEYWORD(kw_var_temp, "VAR_TEMP");
KESTRUN_KEYWORD(kw_var_external, "VAR_EXTERNAL");
KESTRUN_KEYWORD(kw_var_global, "VAR_GLOBAL");
KESTRUN_KEYWORD(kw_var_access, "VAR_ACCESS");
KESTRUN_KEYWORD(kw_var_config, "VAR_CONFIG");
KESTRUN_KEYWORD(kw_end_var, "END_VAR");
KESTRUN_KEYWORD(kw_constant, "CONSTANT");
KESTRUN_KEYWORD(kw_at, "AT");
KESTRUN_KEYWORD(kw_array, "ARRAY");
KESTRUN_KEYWORD(kw_of, "OF");
KESTRUN_KEYWORD(kw_pointer, "POINTER");
KESTRUN_KEYWORD(kw_reference, "REFERENCE");
KESTRUN_KEYWORD(kw_ref_to, "REF_TO");
KESTRUN_KEYWORD(kw_to, "TO");
KESTRUN_KEYWORD(kw_extends, "EXTENDS");
KESTRUN_KEYWORD(kw_implements, "IMPLEMENTS");
KESTRUN_KEYWORD(kw_configuration, "CONFIGURATION");
KESTRUN_KEYWORD(kw_end_configuration, "END_CONFIGURATION");
KESTRUN_KEYWORD(kw_resource, "RESOURCE");
KESTRUN_KEYWORD(kw_end_resource, "END_RESOURCE");
KESTRUN_KEYWORD(kw_on, "ON");
KESTRUN_KEYWORD(kw_task, "TASK");
KESTRUN_KEYWORD(kw_with, "WITH");
struct modifier : sor<keyword<TAO_PEGTL_ISTRING("PUBLIC")>, keyword<TAO_PEGTL_ISTRING("PRIVATE")>,
                      keyword<TAO_PEGTL_ISTRING("PROTECTED")>, keyword<TAO_PEGTL_ISTRING("INTERNAL")>,
                      keyword<TAO_PEGTL_ISTRING("ABSTRACT")>, keyword<TAO_PEGTL_ISTRING("FINAL")>> { };
struct storage : sor<keyword<TAO_PEGTL_ISTRING("RETAIN")>, keyword<TAO_PEGTL_ISTRING("NON_RETAIN")>,
                     keyword<TAO_PEGTL_ISTRING("PERSISTENT")>> { };

/// A name with the namespace or library that it comes from.
struct qualified : seq<name, star<one<'.'>, name>> { };

struct const_sign : one<'+', '-'> { };
struct const_integer : seq<integer, not_at<word_part>> { };
struct const_name : qualified { };
struct const_value : sor<const_integer, const_name> { };
struct const_expression
    : seq<star<tok<const_sign>>, tok<const_value>, star<plus<tok<const_sign>>, must<tok<const_value>>>> { };

struct type_spec;

struct low_bound : const_expression { };
struct high_bound : const_expression { };
struct open_dimension : one<'*'> { };
struct dimension : sor<tok<open_dimension>, seq<low_bound, must<tok<range_dots>>, must<high_bound>>> { };
struct array_head : seq<tok<kw_array>, must<tok<left_bracket>>> { };
struct array_spec : seq<array_head, must<dimension>, star<tok<comma>, must<dimension>>, must<tok<right_bracket>>,
                        must<tok<kw_of>>, must<nested<type_spec>>> { };

struct pointer_head : sor<seq<tok<sor<kw_pointer, kw_reference>>, must<tok<kw_to>>>, tok<kw_ref_to>> { };
struct pointer_spec : seq<pointer_head, must<nested<type_spec>>> { };

struct text_type : sor<keyword<TAO_PEGTL_ISTRING("STRING")>, keyword<TAO_PEGTL_ISTRING("WSTRING")>> { };
struct text_length : sor<seq<tok<left_bracket>, must<const_expression>, must<tok<right_bracket>>>,
                         seq<tok<left_paren>, must<const_expression>, must<tok<right_paren>>>> { };
struct text_spec : seq<tok<text_type>, opt<text_length>> { };

struct item_name : name { };
struct item_value : const_expression { };
struct enum_item : seq<tok<item_name>, opt<tok<assign>, must<item_value>>> { };
struct enum_head : left_paren { };
struct enum_items : seq<tok<enum_head>, must<enum_item>, star<tok<comma>, must<enum_item>>, must<tok<right_paren>>> { };
struct integer_word
    : sor<keyword<TAO_PEGTL_ISTRING("SINT")>, keyword<TAO_PEGTL_ISTRING("INT")>, keyword<TAO_PEGTL_ISTRING("DINT")>,
          keyword<TAO_PEGTL_ISTRING("LINT")>, keyword<TAO_PEGTL_ISTRING("USINT")>, keyword<TAO_PEGTL_ISTRING("UINT")>,
          keyword<TAO_PEGTL_ISTRING("UDINT")>, keyword<TAO_PEGTL_ISTRING("ULINT")>, keyword<TAO_PEGTL_ISTRING("BYTE")>,
          keyword<TAO_PEGTL_ISTRING("WORD")>, keyword<TAO_PEGTL_ISTRING("DWORD")>,
          keyword<TAO_PEGTL_ISTRING("LWORD")>> { };
/// "INT (Off, On := 4)" is an enumeration and "INT (LOW..HIGH)" a range.
struct begins_items : seq<tok<integer_word>, tok<left_paren>, tok<name>, sor<one<','>, assign, one<')'>>> { };
struct enum_spec : sor<seq<enum_items, opt<tok<integer_word>>>, seq<at<begins_items>, tok<integer_word>, enum_items>> {
};

struct type_name : qualified { };
/// A range of values, or the arguments of a function block's instance.
struct named_spec : seq<tok<type_name>, opt<nested<argument_list>>> { };

struct type_spec : sor<array_spec, pointer_spec, text_spec, enum_spec, named_spec> { };

struct initial_value : expression { };
struct initial : seq<tok<assign>, must<initial_value>> { };

struct variable_name : name { };
struct location : address { };
struct variable_end : semicolon { };
struct located : seq<tok<kw_at>, must<tok<location>>> { };
struct edge : sor<keyword<TAO_PEGTL_ISTRING("R_EDGE")>, keyword<TAO_PEGTL_ISTRING("F_EDGE")>> { };
struct variable_rest
    : seq<must<tok<colon>>, must<type_spec>, opt<tok<edge>>, opt<initial>, must<variable_end>, blanks> { };
struct variable : sor<seq<tok<variable_name>, star<tok<comma>, must<tok<variable_name>>>, opt<located>, variable_rest>,
                      seq<located, variable_rest>> { };

struct section_local : kw_var { };
struct section_input : kw_var_input { };
struct section_output : kw_var_output { };
struct section_in_out : kw_var_in_out { };
struct section_temp : kw_var_temp { };
struct section_external : kw_var_external { };
struct section_kind
    : sor<section_local, section_input, section_output, section_in_out, section_temp, section_external> { };
struct qualifier : sor<kw_constant, storage, modifier> { };
struct section : seq<tok<section_kind>, star<tok<qualifier>>, star<variable>, must<tok<kw_end_var>>> { };

/// One step through a body. It fails at a word that opens or closes a declaration, and at the end of the source.
struct body_word {
    using rule_t = body_word;
    using subs_t = empty_list;

    template <typename Input>
    static bool match(Input& in)
    {
        if (in.empty() || !Lexical::isWordPart(in.peek_char()))
            return false;
        const std::size_t at = offsetOf(in);
        const std::size_t end = Lexical::endOfWord(wholeText(in), at);
        if (Lexical::boundsBody(wholeText(in).substr(at, end - at)))
            return false;
        in.bump(end - at);
        return true;
    }
};
struct body_step : sor<plus<blank>, comment, text_literal, seq<one<'.'>, opt<word>>, body_word,
                       seq<not_at<word_part>, not_at<one<'\'', '"'>>, any>> { };
struct body : star<body_step> { };

struct unit_name : name { };
struct base_name : qualified { };
struct extends : seq<tok<kw_extends>, must<tok<base_name>>> { };
struct implements : seq<tok<kw_implements>, must<tok<qualified>>, star<tok<comma>, must<tok<qualified>>>> { };

struct program_head : kw_program { };
struct program : seq<tok<program_head>, must<tok<unit_name>>, star<section>, body, must<tok<kw_end_program>>> { };
struct block_head : kw_function_block { };
struct block : seq<tok<block_head>, star<tok<modifier>>, must<tok<unit_name>>, opt<extends>, opt<implements>,
                   opt<tok<semicolon>>, star<section>, body, must<tok<kw_end_function_block>>> { };
struct function_head : kw_function { };
struct function_result : type_spec { };
struct function
    : seq<tok<function_head>, star<tok<modifier>>, must<tok<unit_name>>, opt<tok<colon>, must<function_result>>,
          opt<tok<semicolon>>, star<section>, body, must<tok<kw_end_function>>> { };

struct struct_head : sor<kw_struct, kw_union> { };
struct struct_end : sor<kw_end_struct, kw_end_union> { };
struct overlap : keyword<TAO_PEGTL_ISTRING("OVERLAP")> { };
struct struct_spec
    : seq<tok<struct_head>, opt<tok<overlap>>, star<variable>, must<tok<struct_end>>, opt<tok<semicolon>>> { };
struct declared_type : type_spec { };
struct plain_type : seq<declared_type, opt<initial>, must<tok<semicolon>>> { };
struct type_body : sor<struct_spec, plain_type> { };
struct type_declaration : seq<tok<unit_name>, opt<extends>, must<tok<colon>>, must<type_body>> { };
struct types : seq<tok<kw_type>, star<tok<modifier>>, star<type_declaration>, must<tok<kw_end_type>>> { };

struct list_name : name { };
/// The first word behind VAR_GLOBAL names the list unless it is a variable.
struct begins_variable : seq<tok<name>, sor<one<','>, one<':'>, kw_at>> { };
struct named_list : seq<not_at<begins_variable>, tok<list_name>> { };
struct global_head : kw_var_global { };
struct globals : seq<tok<global_head>, star<tok<qualifier>>, opt<named_list>, star<tok<qualifier>>, star<variable>,
                     must<tok<kw_end_var>>> { };

struct task_name : name { };
struct task : seq<tok<kw_task>, must<tok<task_name>>, opt<nested<argument_list>>, must<tok<semicolon>>> { };
struct instance : seq<tok<kw_program>, opt<tok<storage>>, must<tok<qualified>>, opt<tok<kw_with>, must<tok<qualified>>>,
                      must<tok<colon>>, must<tok<qualified>>, opt<nested<argument_list>>, must<tok<semicolon>>> { };
/// Access paths and start values of instances: walked over.
struct access
    : seq<tok<sor<kw_var_access, kw_var_config>>, star<not_at<kw_end_var>, body_step>, must<tok<kw_end_var>>> { };
struct resource : seq<tok<kw_resource>, must<tok<qualified>>, opt<tok<kw_on>, must<tok<qualified>>>,
                      star<sor<globals, access, task, instance>>, must<tok<kw_end_resource>>> { };
struct configuration : seq<tok<kw_configuration>, must<tok<qualified>>,
                           star<sor<globals, access, task, instance, resource>>, must<tok<kw_end_configuration>>> { };

struct declaration : sor<program, block, function, types, globals, configuration, task> { };
struct end_of_source : eof { };
struct byte_order_mark : string<'\xEF', '\xBB', '\xBF'> { };
struct source_text : seq<opt<byte_order_mark>, blanks, star<declaration, opt<tok<semicolon>>>, must<end_of_source>> { };

#define KESTRUN_EXPECTED(rule, text)                                                                                   \
    template <>                                                                                                        \
    inline constexpr const char* expected<rule> = text

KESTRUN_EXPECTED(end_of_source,
    QT_TRANSLATE_NOOP("LanguageCore",
        "a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected"));
KESTRUN_EXPECTED(tok<unit_name>, QT_TRANSLATE_NOOP("LanguageCore", "a name is expected"));
KESTRUN_EXPECTED(tok<variable_name>, QT_TRANSLATE_NOOP("LanguageCore", "the name of a variable is expected"));
KESTRUN_EXPECTED(tok<task_name>, QT_TRANSLATE_NOOP("LanguageCore", "the name of a task is expected"));
KESTRUN_EXPECTED(tok<qualified>, QT_TRANSLATE_NOOP("LanguageCore", "a name is expected"));
KESTRUN_EXPECTED(tok<base_name>, QT_TRANSLATE_NOOP("LanguageCore", "the name of the extended type is expected"));
KESTRUN_EXPECTED(enum_item, QT_TRANSLATE_NOOP("LanguageCore", "the name of a value is expected"));
KESTRUN_EXPECTED(tok<colon>, QT_TRANSLATE_NOOP("LanguageCore", "':' is expected"));
KESTRUN_EXPECTED(tok<semicolon>, QT_TRANSLATE_NOOP("LanguageCore", "';' is expected"));
KESTRUN_EXPECTED(variable_end, QT_TRANSLATE_NOOP("LanguageCore", "';' is expected"));
KESTRUN_EXPECTED(tok<left_bracket>, QT_TRANSLATE_NOOP("LanguageCore", "'[' is expected"));
KESTRUN_EXPECTED(tok<range_dots>, QT_TRANSLATE_NOOP("LanguageCore", "'..' is expected"));
KESTRUN_EXPECTED(tok<kw_of>, QT_TRANSLATE_NOOP("LanguageCore", "OF is expected"));
KESTRUN_EXPECTED(tok<kw_to>, QT_TRANSLATE_NOOP("LanguageCore", "TO is expected"));
KESTRUN_EXPECTED(tok<location>, QT_TRANSLATE_NOOP("LanguageCore", "an address such as %IX0.0 is expected"));
KESTRUN_EXPECTED(dimension, QT_TRANSLATE_NOOP("LanguageCore", "a range such as 0..9 is expected"));
KESTRUN_EXPECTED(high_bound, QT_TRANSLATE_NOOP("LanguageCore", "an upper bound is expected"));
KESTRUN_EXPECTED(const_expression, QT_TRANSLATE_NOOP("LanguageCore", "a whole number or constant is expected"));
KESTRUN_EXPECTED(item_value, QT_TRANSLATE_NOOP("LanguageCore", "a whole number or constant is expected"));
KESTRUN_EXPECTED(tok<const_value>, QT_TRANSLATE_NOOP("LanguageCore", "a whole number or constant is expected"));
KESTRUN_EXPECTED(type_spec, QT_TRANSLATE_NOOP("LanguageCore", "a type is expected"));
KESTRUN_EXPECTED(nested<type_spec>, QT_TRANSLATE_NOOP("LanguageCore", "a type is expected"));
KESTRUN_EXPECTED(function_result, QT_TRANSLATE_NOOP("LanguageCore", "a type is expected"));
KESTRUN_EXPECTED(type_body, QT_TRANSLATE_NOOP("LanguageCore", "a type is expected"));
KESTRUN_EXPECTED(initial_value, QT_TRANSLATE_NOOP("LanguageCore", "an initial value is expected"));
KESTRUN_EXPECTED(
    tok<struct_end>, QT_TRANSLATE_NOOP("LanguageCore", "the declaration of a member or END_STRUCT is expected"));
KESTRUN_EXPECTED(
    tok<kw_end_var>, QT_TRANSLATE_NOOP("LanguageCore", "the declaration of a variable or END_VAR is expected"));
KESTRUN_EXPECTED(
    tok<kw_end_type>, QT_TRANSLATE_NOOP("LanguageCore", "the declaration of a type or END_TYPE is expected"));
KESTRUN_EXPECTED(tok<kw_end_program>, QT_TRANSLATE_NOOP("LanguageCore", "END_PROGRAM is expected"));
KESTRUN_EXPECTED(tok<kw_end_function_block>, QT_TRANSLATE_NOOP("LanguageCore", "END_FUNCTION_BLOCK is expected"));
KESTRUN_EXPECTED(tok<kw_end_function>, QT_TRANSLATE_NOOP("LanguageCore", "END_FUNCTION is expected"));
KESTRUN_EXPECTED(
    tok<kw_end_resource>, QT_TRANSLATE_NOOP("LanguageCore", "a task, a program or END_RESOURCE is expected"));
KESTRUN_EXPECTED(tok<kw_end_configuration>,
    QT_TRANSLATE_NOOP("LanguageCore", "a resource, a task, a program or END_CONFIGURATION is expected"));

} // namespace ac::grammar
