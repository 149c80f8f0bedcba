#include "host/languagecore/SourceParser.h"

#include "host/languagecore/DeclarationBuilder.h"
#include "host/languagecore/DeclarationGrammar.h"

#include <QCoreApplication>

#include <algorithm>

namespace ac {

namespace {

template <typename Rule>
struct Action : grammar::nothing<Rule> {
};

/// Passes the matched text on to an operation of the builder.
template <void (DeclarationBuilder::*operation)(std::string_view)>
struct WithText {
    template <typename Input>
    static void apply(const Input& in, DeclarationBuilder& builder)
    {
        (builder.*operation)(in.string_view());
    }
};

/// Calls an operation of the builder.
template <void (DeclarationBuilder::*operation)()>
struct Plain {
    static void apply0(DeclarationBuilder& builder) { (builder.*operation)(); }
};

template <Declaration::Kind kind>
struct Begin {
    static void apply0(DeclarationBuilder& builder) { builder.begin(kind); }
};

template <VarSection section>
struct BeginSection {
    static void apply0(DeclarationBuilder& builder) { builder.beginSection(section); }
};

template <TypeSpec::Form form>
struct BeginType {
    template <typename Input>
    static void apply(const Input& in, DeclarationBuilder& builder)
    {
        builder.beginType(form, in.string_view());
    }
};

template <TypeSpec::Form form>
struct NamedType {
    template <typename Input>
    static void apply(const Input& in, DeclarationBuilder& builder)
    {
        builder.setNamedType(form, in.string_view());
    }
};

using Builder = DeclarationBuilder;

template <>
struct Action<grammar::comment> : WithText<&Builder::noteComment> {
};

template <>
struct Action<grammar::program_head> : Begin<Declaration::Kind::Program> {
};
template <>
struct Action<grammar::block_head> : Begin<Declaration::Kind::FunctionBlock> {
};
template <>
struct Action<grammar::function_head> : Begin<Declaration::Kind::Function> {
};
template <>
struct Action<grammar::global_head> : WithText<&Builder::beginGlobals> {
};
template <>
struct Action<grammar::struct_head> : Plain<&Builder::setStructure> {
};
template <>
struct Action<grammar::unit_name> : WithText<&Builder::nameUnit> {
};
template <>
struct Action<grammar::list_name> : WithText<&Builder::nameList> {
};
template <>
struct Action<grammar::task_name> : WithText<&Builder::addTask> {
};
template <>
struct Action<grammar::base_name> : WithText<&Builder::setBase> {
};
template <>
struct Action<grammar::declared_type> : Plain<&Builder::setDeclaredType> {
};
template <>
struct Action<grammar::function_result> : Plain<&Builder::setDeclaredType> {
};
template <>
struct Action<grammar::program> : Plain<&Builder::finish> {
};
template <>
struct Action<grammar::block> : Plain<&Builder::finish> {
};
template <>
struct Action<grammar::function> : Plain<&Builder::finish> {
};
template <>
struct Action<grammar::globals> : Plain<&Builder::finish> {
};
template <>
struct Action<grammar::type_declaration> : Plain<&Builder::finish> {
};

template <>
struct Action<grammar::section_local> : BeginSection<VarSection::Local> {
};
template <>
struct Action<grammar::section_input> : BeginSection<VarSection::Input> {
};
template <>
struct Action<grammar::section_output> : BeginSection<VarSection::Output> {
};
template <>
struct Action<grammar::section_in_out> : BeginSection<VarSection::InOut> {
};
template <>
struct Action<grammar::section_temp> : BeginSection<VarSection::Temp> {
};
template <>
struct Action<grammar::section_external> : BeginSection<VarSection::External> {
};
template <>
struct Action<grammar::kw_constant> : Plain<&Builder::setConstant> {
};
template <>
struct Action<grammar::variable_name> : WithText<&Builder::nameVariable> {
};
template <>
struct Action<grammar::location> : WithText<&Builder::setAddress> {
};
template <>
struct Action<grammar::initial_value> : WithText<&Builder::setInitial> {
};
template <>
struct Action<grammar::variable_end> : WithText<&Builder::endVariables> {
};

template <>
struct Action<grammar::type_name> : NamedType<TypeSpec::Form::Named> {
};
template <>
struct Action<grammar::text_type> : NamedType<TypeSpec::Form::Text> {
};
template <>
struct Action<grammar::array_head> : BeginType<TypeSpec::Form::Array> {
};
template <>
struct Action<grammar::array_spec> : Plain<&Builder::endTypeOf> {
};
template <>
struct Action<grammar::pointer_head> : BeginType<TypeSpec::Form::Pointer> {
};
template <>
struct Action<grammar::pointer_spec> : Plain<&Builder::endTypeOf> {
};
template <>
struct Action<grammar::enum_head> : BeginType<TypeSpec::Form::Enumeration> {
};
template <>
struct Action<grammar::enum_spec> : Plain<&Builder::endType> {
};
template <>
struct Action<grammar::open_dimension> : Plain<&Builder::addOpenDimension> {
};
template <>
struct Action<grammar::low_bound> : Plain<&Builder::setLowBound> {
};
template <>
struct Action<grammar::high_bound> : Plain<&Builder::addDimension> {
};
template <>
struct Action<grammar::item_name> : WithText<&Builder::addItem> {
};
template <>
struct Action<grammar::item_value> : Plain<&Builder::setItemValue> {
};

template <>
struct Action<grammar::const_sign> {
    template <typename Input>
    static void apply(const Input& in, DeclarationBuilder& builder)
    {
        builder.addSign(in.peek_char());
    }
};
template <>
struct Action<grammar::const_integer> : WithText<&Builder::addNumber> {
};
template <>
struct Action<grammar::const_name> : WithText<&Builder::addConstant> {
};
/// The length of a text is not kept.
template <>
struct Action<grammar::text_length> {
    static void apply0(DeclarationBuilder& builder) { builder.takeExpression(); }
};

using Input = grammar::memory_input<grammar::tracking_mode::lazy>;

/// Parses from an offset to the end. True when that reached it, else the fault is set.
bool parseFrom(std::string_view text, std::size_t offset, DeclarationBuilder& builder, grammar::Fault& fault)
{
    Input in(text.data(), text.data() + text.size(), std::string());
    in.bump(offset);
    try {
        return grammar::parse<grammar::source_text, Action, grammar::control>(in, builder);
    } catch (const grammar::Fault& found) {
        fault = found;
        return false;
    }
}

struct WholeConstant : grammar::seq<grammar::const_expression, grammar::eof> { };

} // namespace

std::string userText(const char* text)
{
    return QCoreApplication::translate("LanguageCore", text).toStdString();
}

void parseSource(const std::string& name, const std::string& text, std::vector<Declaration>& declarations,
    std::vector<SourceProblem>& problems)
{
    DeclarationBuilder builder(text, name, declarations);
    std::size_t offset = 0;
    for (int count = 0; count < mostProblems; ++count) {
        grammar::Fault fault{ 0, nullptr };
        if (parseFrom(text, offset, builder, fault))
            return;
        const Position position = builder.position(fault.offset);
        problems.push_back({ name, position.line, position.column, userText(fault.expected) });
        builder.abandon();
        // The fault may stand on the very word where this attempt began, or in the middle of an open comment.
        offset = Lexical::nextDeclaration(text, std::max(fault.offset, offset + 1));
        if (offset == text.size())
            return;
    }
}

std::optional<ConstExpression> parseConstExpression(std::string_view text)
{
    std::vector<Declaration> none;
    DeclarationBuilder builder(text, std::string(), none);
    Input in(text.data(), text.data() + text.size(), std::string());
    try {
        if (grammar::parse<WholeConstant, Action, grammar::control>(in, builder))
            return builder.takeExpression();
    } catch (const grammar::Fault&) {
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace ac
