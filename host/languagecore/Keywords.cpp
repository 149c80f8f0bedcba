#include "host/languagecore/Keywords.h"

#include "host/languagecore/Names.h"

#include <sstream>
#include <string>
#include <unordered_set>

namespace ac::Keywords {

namespace {

using Words = std::unordered_set<std::string>;

const char* const structural
    = "ACTION END_ACTION ARRAY OF AT CASE END_CASE CLASS END_CLASS CONFIGURATION END_CONFIGURATION CONSTANT CONTINUE "
      "DO "
      "ELSE ELSIF END_IF END_FOR END_WHILE END_REPEAT EXIT EXTENDS FOR FUNCTION END_FUNCTION FUNCTION_BLOCK "
      "END_FUNCTION_BLOCK IF IMPLEMENTS INTERFACE END_INTERFACE METHOD END_METHOD NAMESPACE END_NAMESPACE NON_RETAIN "
      "PERSISTENT PROGRAM END_PROGRAM PROPERTY END_PROPERTY REF_TO REPEAT RESOURCE END_RESOURCE RETAIN RETURN STRUCT "
      "END_STRUCT TASK THEN TRANSITION END_TRANSITION TYPE END_TYPE UNION END_UNION UNTIL VAR END_VAR VAR_ACCESS "
      "VAR_CONFIG VAR_EXTERNAL VAR_GLOBAL VAR_INPUT VAR_IN_OUT VAR_OUTPUT VAR_TEMP WHILE WITH POINTER REFERENCE TRUE "
      "FALSE AND AND_THEN OR OR_ELSE XOR NOT MOD";
const char* const furtherWords
    = "ABSTRACT BEGIN FINAL FROM GOTO INITIAL_STEP STEP END_STEP INTERNAL INTERVAL OVERLAP "
      "OVERRIDE PRIORITY PRIVATE PROTECTED PUBLIC READ_ONLY READ_WRITE REF SINGLE SUPER THIS "
      "TO USING ENO EN NULL R_EDGE F_EDGE";
const char* const elementaryTypes
    = "BOOL SINT INT DINT LINT USINT UINT UDINT ULINT BYTE WORD DWORD LWORD REAL LREAL TIME LTIME DATE LDATE "
      "TIME_OF_DAY "
      "TOD LTIME_OF_DAY LTOD DATE_AND_TIME DT LDATE_AND_TIME LDT STRING WSTRING CHAR WCHAR";
const char* const genericTypes = "ANY ANY_DERIVED ANY_ELEMENTARY ANY_MAGNITUDE ANY_NUM ANY_REAL ANY_INT ANY_UNSIGNED "
                                 "ANY_SIGNED ANY_DURATION ANY_BIT "
                                 "ANY_CHARS ANY_STRING ANY_CHAR ANY_DATE";
const char* const functions
    = "ABS SQRT LN LOG EXP SIN COS TAN ASIN ACOS ATAN ATAN2 ADD SUB MUL DIV EXPT MOVE SHL SHR ROL ROR SEL MAX MIN "
      "LIMIT "
      "MUX GT GE EQ LE LT NE LEN LEFT RIGHT MID CONCAT INSERT DELETE REPLACE FIND TRUNC ROUND ADR SIZEOF "
      "CONCAT_DATE_TOD CONCAT_DATE CONCAT_TOD CONCAT_DT SPLIT_DATE SPLIT_TOD SPLIT_DT DAY_OF_WEEK ADD_TIME SUB_TIME "
      "MUL_TIME DIV_TIME IS_VALID IS_VALID_BCD LOWER_BOUND UPPER_BOUND";

void addWords(Words& words, const char* list)
{
    std::istringstream stream(list);
    for (std::string word; stream >> word;)
        words.insert(word);
}

Words wordsOf(std::initializer_list<const char*> lists)
{
    Words words;
    for (const char* list : lists)
        addWords(words, list);
    return words;
}

/// The conversion functions are named by their types: "INT_TO_REAL", "TO_REAL", "WORD_BCD_TO_UINT".
bool isConversion(const std::string& folded)
{
    static const Words ends = [] {
        Words words = wordsOf({ elementaryTypes,
            "ANY BCD BCD_BYTE BCD_WORD BCD_DWORD BCD_LWORD BYTE_BCD WORD_BCD "
            "DWORD_BCD LWORD_BCD" });
        words.insert(std::string());
        return words;
    }();
    const std::string padded = '_' + folded;
    const std::size_t at = padded.find("_TO_");
    if (at == std::string::npos || folded.size() < 4)
        return false;
    const std::string from = at == 0 ? std::string() : padded.substr(1, at - 1);
    const std::string to = padded.substr(at + 4);
    return !to.empty() && ends.count(from) > 0 && ends.count(to) > 0;
}

} // namespace

bool isReserved(std::string_view word)
{
    static const Words words = wordsOf({ structural, furtherWords, elementaryTypes, genericTypes, functions });
    const std::string folded = foldedName(word);
    return words.count(folded) > 0 || isConversion(folded);
}

bool isStructural(std::string_view word)
{
    static const Words words = wordsOf({ structural });
    return words.count(foldedName(word)) > 0;
}

} // namespace ac::Keywords
