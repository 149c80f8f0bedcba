#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the declarations of a source say, as they are written: names are not looked up yet.
namespace ac {

/// Line and column from 1; the column counts characters.
struct Position {
    int line = 1;
    int column = 1;
};

/// A sum or difference of whole numbers and constants, such as "MAX - 1": a bound, a length, a value.
struct ConstTerm {
    bool negative = false;
    /// A number, or nothing when the term is a name or the number is too large.
    std::optional<std::int64_t> number;
    std::string name;
};
using ConstExpression = std::vector<ConstTerm>;

/// One dimension of an array.
struct Dimension {
    /// "*": known to the callee only.
    bool open = false;
    ConstExpression low;
    ConstExpression high;
};

struct EnumItem {
    std::string name;
    /// Empty: one more than the item before.
    ConstExpression value;
    Position position;
};

/// A type as it is written.
struct TypeSpec {
    enum class Form { Named, Text, Array, Enumeration, Pointer };

    Form form = Form::Named;
    /// As written: "INT", "Axis.Kind", "STRING".
    std::string name;
    std::vector<Dimension> dimensions;
    std::vector<EnumItem> items;
    /// Of an array or pointer.
    std::shared_ptr<const TypeSpec> element;
    Position position;
};
using TypeSpecPtr = std::shared_ptr<const TypeSpec>;

enum class VarSection {
    Local,
    Input,
    Output,
    InOut,
    Temp,
    External,
    Global,
    /// A member of a structure.
    Member
};

struct VariableDecl {
    std::string name;
    TypeSpecPtr type;
    VarSection section = VarSection::Local;
    bool constant = false;
    std::string address;
    /// Text of the initial value, empty without one.
    std::string initial;
    std::string comment;
    Position position;
};

/// A declaration at the top of a source.
struct Declaration {
    enum class Kind {
        Program,
        FunctionBlock,
        Function,
        Structure,
        /// An enumeration, alias, array or subrange under a name.
        Type,
        GlobalList,
        Task
    };

    Kind kind = Kind::Program;
    std::string name;
    /// What it extends, or empty.
    std::string base;
    /// Of a type; the result of a function.
    TypeSpecPtr type;
    std::vector<VariableDecl> variables;
    std::string source;
    Position position;
};

} // namespace ac
