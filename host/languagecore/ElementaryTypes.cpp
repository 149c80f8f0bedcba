#include "host/languagecore/ElementaryTypes.h"

#include "host/languagecore/Declarations.h"
#include "host/languagecore/Names.h"

#include <unordered_map>

namespace ac {

BasicDataType elementaryType(std::string_view name)
{
    static const std::unordered_map<std::string, BasicDataType> types{ { "SINT", SInt }, { "INT", Int },
        { "DINT", DInt }, { "LINT", LInt }, { "USINT", USInt }, { "UINT", UInt }, { "UDINT", UDInt },
        { "ULINT", ULInt }, { "BOOL", Bool }, { "BYTE", Byte }, { "WORD", Word }, { "DWORD", DWord },
        { "LWORD", LWord }, { "REAL", Real }, { "LREAL", LReal }, { "TIME", Time }, { "LTIME", Time }, { "DATE", Date },
        { "LDATE", Date }, { "TIME_OF_DAY", TimeOfDay }, { "TOD", TimeOfDay }, { "LTIME_OF_DAY", TimeOfDay },
        { "LTOD", TimeOfDay }, { "DATE_AND_TIME", DateAndTime }, { "DT", DateAndTime },
        { "LDATE_AND_TIME", DateAndTime }, { "LDT", DateAndTime }, { "STRING", String }, { "WSTRING", WString },
        { "CHAR", String }, { "WCHAR", WString } };
    const auto type = types.find(foldedName(name));
    return type == types.end() ? NoType : type->second;
}

bool isGenericType(std::string_view name)
{
    const std::string folded = foldedName(name);
    return folded == "ANY" || folded.compare(0, 4, "ANY_") == 0;
}

int bitsOf(BasicDataType type)
{
    switch (type) {
    case SInt:
    case USInt:
    case Byte:
        return 8;
    case Int:
    case UInt:
    case Word:
        return 16;
    case DInt:
    case UDInt:
    case DWord:
        return 32;
    case LInt:
    case ULInt:
    case LWord:
        return 64;
    default:
        return 0;
    }
}

BasicDataType structuredType(const TypeSpec& type)
{
    switch (type.form) {
    case TypeSpec::Form::Text:
        return elementaryType(type.name);
    case TypeSpec::Form::Array:
        return Array;
    case TypeSpec::Form::Enumeration:
        return Enum;
    default:
        return NoType;
    }
}

std::string structuredText(const TypeSpec& type)
{
    std::string prefix;
    const TypeSpec* inner = &type;
    for (; inner->form == TypeSpec::Form::Pointer && inner->element; inner = inner->element.get())
        prefix += "POINTER TO ";
    if (inner->form == TypeSpec::Form::Enumeration)
        return prefix + "(" + (inner->items.empty() ? std::string() : inner->items.front().name) + ", ...)";
    return prefix + (inner->form == TypeSpec::Form::Array ? "ARRAY" : inner->name);
}

} // namespace ac
