#pragma once

#include <string>

namespace ac {

/// Elementary data types of IEC 61131-3 and the kinds of derived ones. The numbers are part of the contract.
enum BasicDataType {
    NoType = 0,
    SInt = 1,
    Int = 2,
    DInt = 3,
    LInt = 4,
    USInt = 5,
    UInt = 6,
    UDInt = 7,
    ULInt = 8,
    Bool = 9,
    Byte = 10,
    Word = 11,
    DWord = 12,
    LWord = 13,
    Real = 14,
    LReal = 15,
    Time = 16,
    Date = 17,
    TimeOfDay = 18,
    DateAndTime = 19,
    String = 20,
    WString = 21,
    Array = 30,
    Struct = 31,
    Enum = 32,
    FunctionBlock = 33
};

/// How the programs of a project name what they use.
enum ProgramStyle {
    /// Variables and addresses.
    SymbolicStyle = 0,
    /// Addresses only.
    AddressStyle = 1
};

/// Kinds of symbols for ACCore::allSymbols.
enum SymbolKind {
    EnumSymbols = 1,
    StructSymbols = 2,
    ProgramSymbols = 3,
    FunctionBlockSymbols = 4,
    FunctionSymbols = 5,
    GlobalVariableListSymbols = 6,
    /// Global variables, and variables of programs.
    VariableSymbols = 7,
    /// Named types that are neither structure nor enumeration: aliases, arrays, subranges.
    OtherTypeSymbols = 8,
    TaskSymbols = 9,
    /// Variables of the type AXES_GROUP_REF.
    AxisGroupSymbols = 10
};

namespace Language {

/// One symbol that an expression names.
struct LogicSymInfo {
    /// Path of the symbol as the expression writes it, segments joined by points.
    std::string path;
    BasicDataType dataType = NoType;
    /// Position in the expression, line and column from 1.
    int line = 0;
    int column = 0;
};

} // namespace Language

} // namespace ac
