#pragma once

#include "host/languagecore/Declarations.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The lowest level of the language: comments, pragmas, texts and words in a source. Offsets count bytes.
namespace ac::Lexical {

bool isWordStart(char c);
bool isWordPart(char c);

/// True when a comment of any kind, or a pragma, begins there.
bool beginsComment(std::string_view text, std::size_t at);
/// The offset behind a comment or pragma that begins there; nothing when it does not end. Comments nest in comments of
/// their own kind; a line comment ends before the end of the line.
std::optional<std::size_t> endOfComment(std::string_view text, std::size_t at);
/// The offset behind a text in quotes that begins there; nothing when it does not end on its line.
std::optional<std::size_t> endOfText(std::string_view text, std::size_t at);
/// The offset behind a word that begins there.
std::size_t endOfWord(std::string_view text, std::size_t at);

/// True for a word that begins a declaration at the top of a source.
bool opensDeclaration(std::string_view word);
/// True for a word that can stand in no body of a program: one that opens or closes a declaration.
bool boundsBody(std::string_view word);

/// The offset of the next word from there on that begins a declaration, or the end of the text. Words in comments and
/// texts do not count; what does not end is read like anything else.
std::size_t nextDeclaration(std::string_view text, std::size_t from);

/// The text without blanks and comments.
std::string withoutBlanks(std::string_view text);

/// What a comment says: its text without the signs around it, blanks and line ends as one blank.
std::string commentText(std::string_view comment);

/// Lines and columns of a text. Asking in rising order is cheap however long the lines are.
class PositionIndex {
public:
    explicit PositionIndex(std::string_view text);
    Position at(std::size_t offset) const;

private:
    std::string_view m_text;
    std::vector<std::size_t> m_lineStarts;
    mutable std::size_t m_lastOffset = 0;
    mutable int m_lastColumn = 1;
};

} // namespace ac::Lexical
