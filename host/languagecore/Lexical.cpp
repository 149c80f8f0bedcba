#include "host/languagecore/Lexical.h"

#include "host/languagecore/Names.h"

#include <algorithm>
#include <unordered_set>

namespace ac::Lexical {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool startsWith(std::string_view text, std::size_t at, std::string_view with)
{
    return text.compare(at, with.size(), with) == 0;
}

std::optional<std::size_t> endOfNested(
    std::string_view text, std::size_t at, std::string_view open, std::string_view close)
{
    std::size_t depth = 0;
    while (at < text.size()) {
        if (startsWith(text, at, open)) {
            ++depth;
            at += open.size();
        } else if (startsWith(text, at, close)) {
            at += close.size();
            if (--depth == 0)
                return at;
        } else {
            ++at;
        }
    }
    return std::nullopt;
}

/// What stands at an offset, as one step of a walk over a source. Whatever is left open is one character.
std::size_t stepOver(std::string_view text, std::size_t at, bool& commentsEnd)
{
    if (commentsEnd && beginsComment(text, at)) {
        if (const auto end = endOfComment(text, at))
            return *end;
        // Once a comment runs to the end of the source, looking for the end of each further one would cost a walk each.
        commentsEnd = false;
    }
    if (text[at] == '\'' || text[at] == '"')
        return endOfText(text, at).value_or(at + 1);
    return isWordPart(text[at]) ? endOfWord(text, at) : at + 1;
}

/// The bytes behind the first one of a character in UTF-8 have 10 as their upper bits.
int characters(std::string_view text)
{
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U; }));
}

bool isBlank(char c)
{
    return std::string_view(" \t\r\n\f\v").find(c) != std::string_view::npos;
}

} // namespace

bool isWordStart(char c)
{
    return isLetter(c) || c == '_';
}

bool isWordPart(char c)
{
    return isWordStart(c) || (c >= '0' && c <= '9');
}

bool beginsComment(std::string_view text, std::size_t at)
{
    return startsWith(text, at, "//") || startsWith(text, at, "(*") || startsWith(text, at, "/*")
        || startsWith(text, at, "{");
}

std::optional<std::size_t> endOfComment(std::string_view text, std::size_t at)
{
    if (startsWith(text, at, "//"))
        return std::min(text.find('\n', at), text.size());
    if (startsWith(text, at, "(*"))
        return endOfNested(text, at, "(*", "*)");
    if (startsWith(text, at, "/*"))
        return endOfNested(text, at, "/*", "*/");
    const std::size_t close = text.find('}', at);
    return close == std::string_view::npos ? std::nullopt : std::optional<std::size_t>(close + 1);
}

std::optional<std::size_t> endOfText(std::string_view text, std::size_t at)
{
    const char quote = text[at];
    for (std::size_t i = at + 1; i < text.size() && text[i] != '\n'; ++i) {
        if (text[i] == quote)
            return i + 1;
        // The dollar sign takes the meaning from the character behind it.
        if (text[i] == '$')
            ++i;
    }
    return std::nullopt;
}

std::size_t endOfWord(std::string_view text, std::size_t at)
{
    while (at < text.size() && isWordPart(text[at]))
        ++at;
    return at;
}

bool opensDeclaration(std::string_view word)
{
    static const std::unordered_set<std::string> words{ "PROGRAM", "FUNCTION_BLOCK", "FUNCTION", "TYPE", "VAR_GLOBAL",
        "CONFIGURATION" };
    return words.count(foldedName(word)) > 0;
}

bool boundsBody(std::string_view word)
{
    static const std::unordered_set<std::string> words{ "END_PROGRAM", "END_FUNCTION_BLOCK", "END_FUNCTION", "END_TYPE",
        "END_CONFIGURATION" };
    return opensDeclaration(word) || words.count(foldedName(word)) > 0;
}

std::size_t nextDeclaration(std::string_view text, std::size_t from)
{
    bool commentsEnd = true;
    for (std::size_t at = std::min(from, text.size()); at < text.size();) {
        const std::size_t next = stepOver(text, at, commentsEnd);
        const bool member = at > 0 && text[at - 1] == '.';
        if (!member && isWordStart(text[at]) && opensDeclaration(text.substr(at, next - at)))
            return at;
        at = next;
    }
    return text.size();
}

std::string withoutBlanks(std::string_view text)
{
    std::string kept;
    bool commentsEnd = true;
    for (std::size_t at = 0; at < text.size();) {
        const bool comment = beginsComment(text, at);
        const std::size_t next = stepOver(text, at, commentsEnd);
        if (!isBlank(text[at]) && !(comment && commentsEnd))
            kept += text.substr(at, next - at);
        at = next;
    }
    return kept;
}

std::string commentText(std::string_view comment)
{
    const std::string_view signs = "/*()! \t\r\n\f\v";
    const std::size_t first = comment.find_first_not_of(signs);
    if (first == std::string_view::npos)
        return {};
    // A line comment may well end with a bracket of its own text.
    const bool line = comment.compare(0, 2, "//") == 0;
    const std::size_t inner = line ? comment.size() : comment.size() - 2;
    const std::size_t last = comment.substr(0, inner).find_last_not_of(line ? " \t\r" : "* \t\r\n\f\v");
    std::string text;
    for (const char c : comment.substr(first, last == std::string_view::npos || last < first ? 0 : last - first + 1)) {
        if (!isBlank(c))
            text += c;
        else if (text.back() != ' ')
            text += ' ';
    }
    return text;
}

PositionIndex::PositionIndex(std::string_view text) : m_text(text), m_lineStarts{ 0 }
{
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        m_lineStarts.push_back(at + 1);
}

Position PositionIndex::at(std::size_t offset) const
{
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    const std::size_t start = *(next - 1);
    const bool goesOn = m_lastOffset >= start && m_lastOffset <= offset;
    const std::size_t from = goesOn ? m_lastOffset : start;
    m_lastColumn = (goesOn ? m_lastColumn : 1) + characters(m_text.substr(from, offset - from));
    m_lastOffset = offset;
    return { static_cast<int>(next - m_lineStarts.begin()), m_lastColumn };
}

} // namespace ac::Lexical
