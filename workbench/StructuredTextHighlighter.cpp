#include "workbench/StructuredTextHighlighter.h"

#include <QEvent>
#include <QPlainTextEdit>
#include <QRegularExpression>

namespace {

enum BlockState { Plain = 0, InComment = 1 };

const char* const keywords
    = "\\b(PROGRAM|END_PROGRAM|FUNCTION|END_FUNCTION|FUNCTION_BLOCK|END_FUNCTION_BLOCK|VAR|VAR_GLOBAL|"
      "VAR_INPUT|VAR_OUTPUT|VAR_IN_OUT|VAR_TEMP|VAR_EXTERNAL|END_VAR|CONSTANT|RETAIN|TYPE|END_TYPE|STRUCT|"
      "END_STRUCT|AT|IF|THEN|ELSIF|ELSE|END_IF|CASE|OF|END_CASE|FOR|TO|BY|DO|END_FOR|WHILE|"
      "END_WHILE|REPEAT|UNTIL|END_REPEAT|RETURN|EXIT|AND|OR|XOR|NOT|MOD|ARRAY)\\b";
const char* const types
    = "\\b(BOOL|BYTE|WORD|DWORD|LWORD|SINT|INT|DINT|LINT|USINT|UINT|UDINT|ULINT|REAL|LREAL|TIME|DATE|"
      "TIME_OF_DAY|TOD|DATE_AND_TIME|DT|STRING|WSTRING)\\b";
const char* const literals = "(\\b(TRUE|FALSE)\\b|\\b\\d+#?[0-9A-Fa-f_.]*\\b|%[IQM][XBWDL]?[0-9.]+|'[^']*')";

} // namespace

StructuredTextHighlighter::StructuredTextHighlighter(QPlainTextEdit& view)
    : QSyntaxHighlighter(view.document()), m_view(view)
{
    chooseColors();
    view.installEventFilter(this);
}

StructuredTextHighlighter::~StructuredTextHighlighter() = default;

bool StructuredTextHighlighter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        chooseColors();
        rehighlight();
    }
    return QSyntaxHighlighter::eventFilter(watched, event);
}

void StructuredTextHighlighter::chooseColors()
{
    const bool light = m_view.palette().color(QPalette::Base).lightness() > 127;
    m_keyword.setForeground(light ? QColor(0x1d, 0x4f, 0xb8) : QColor(0x7d, 0xb0, 0xff));
    m_keyword.setFontWeight(QFont::Bold);
    m_type.setForeground(light ? QColor(0x0b, 0x6b, 0x6b) : QColor(0x63, 0xcf, 0xc4));
    m_literal.setForeground(light ? QColor(0x8a, 0x4b, 0x08) : QColor(0xe8, 0xb0, 0x6a));
    m_comment.setForeground(light ? QColor(0x5c, 0x68, 0x78) : QColor(0x9a, 0xa6, 0xb4));
    m_comment.setFontItalic(true);
}

void StructuredTextHighlighter::highlightBlock(const QString& text)
{
    mark(text, QLatin1String(keywords), m_keyword);
    mark(text, QLatin1String(types), m_type);
    mark(text, QLatin1String(literals), m_literal);
    markComments(text);
}

void StructuredTextHighlighter::mark(const QString& text, const QString& pattern, const QTextCharFormat& format)
{
    const QRegularExpression expression(pattern, QRegularExpression::CaseInsensitiveOption);
    QRegularExpressionMatchIterator matches = expression.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        setFormat(match.capturedStart(), match.capturedLength(), format);
    }
}

void StructuredTextHighlighter::markComments(const QString& text)
{
    static const QRegularExpression begin(QStringLiteral("//|\\(\\*"));
    setCurrentBlockState(Plain);
    int start = previousBlockState() == InComment ? 0 : text.indexOf(begin);
    while (start >= 0) {
        const bool toLineEnd = previousBlockState() != InComment && text.mid(start, 2) == QLatin1String("//");
        const int end = toLineEnd ? text.size() : text.indexOf(QLatin1String("*)"), start);
        if (end < 0)
            setCurrentBlockState(InComment);
        const int stop = end < 0 ? text.size() : qMin(end + 2, text.size());
        setFormat(start, stop - start, m_comment);
        start = text.indexOf(begin, stop);
    }
}
