#include "workbench/SourceView.h"

#include "workbench/StructuredTextHighlighter.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QPainter>
#include <QTextBlock>

#include <memory>

namespace {

bool isNamePart(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_');
}

/// Where the "[" of a "]" stands that ends there; that place itself when it has none.
int indexBegin(const QString& line, int end)
{
    int depth = 0;
    for (int at = end - 1; at >= 0; --at) {
        depth += line.at(at) == QLatin1Char(']');
        depth -= line.at(at) == QLatin1Char('[');
        if (depth == 0)
            return at;
    }
    return end;
}

/// A point that parts a path: one of the two of a range does not.
bool isPoint(const QString& line, int at)
{
    const QChar point = QLatin1Char('.');
    return line.at(at) == point && (at == 0 || line.at(at - 1) != point)
        && (at + 1 == line.size() || line.at(at + 1) != point);
}

bool isPathPart(const QString& line, int at)
{
    const QChar character = line.at(at);
    return isNamePart(character) || character == QLatin1Char(']') || character == QLatin1Char('^') || isPoint(line, at);
}

/// A point between two parts of a path, or an index or "^" behind one; blanks may stand around the first and before the
/// others.
bool joins(const QString& line, int left, int right)
{
    const QChar behind = line.at(right);
    const bool goesOn = isPoint(line, right) || behind == QLatin1Char('[') || behind == QLatin1Char('^');
    return isPoint(line, left) || (isPathPart(line, left) && goesOn);
}

/// Where the blanks end that stand there within a path, going back; that place itself when it begins there.
int partEnd(const QString& line, int begin)
{
    int end = begin;
    while (end > 0 && line.at(end - 1).isSpace())
        --end;
    return end > 0 && joins(line, end - 1, begin) ? end : begin;
}

/// Begin of the path, indices included, that ends there.
int pathBegin(const QString& line, int end)
{
    while (end > 0 && isPathPart(line, end - 1)) {
        const int begin = line.at(end - 1) == QLatin1Char(']') ? indexBegin(line, end) : end - 1;
        if (begin == end)
            break;
        end = partEnd(line, begin);
    }
    return end;
}

} // namespace

class SourceView::NumberArea : public QWidget {
public:
    explicit NumberArea(SourceView& view) : QWidget(&view), m_view(view) { }

protected:
    void paintEvent(QPaintEvent* event) override { m_view.paintNumbers(event); }

private:
    SourceView& m_view;
};

SourceView::SourceView(QWidget* parent) : QPlainTextEdit(parent), m_numbers(new NumberArea(*this))
{
    setObjectName(QStringLiteral("sourceView"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(NoWrap);
    setFrameShape(NoFrame);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSize(font().pointSize());
    setFont(fixed);
    new StructuredTextHighlighter(*this);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &SourceView::layOutNumbers);
    connect(this, &QPlainTextEdit::updateRequest, m_numbers, QOverload<>::of(&QWidget::update));
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &SourceView::markCurrentLine);
    layOutNumbers();
}

SourceView::~SourceView() = default;

void SourceView::goTo(int line, int column)
{
    const QTextBlock block = document()->findBlockByNumber(qMin(line, blockCount()) - 1);
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + qMin(column - 1, block.length() - 1));
    setTextCursor(cursor);
    centerCursor();
    setFocus(Qt::OtherFocusReason);
}

QString SourceView::nameAtCursor() const
{
    const QTextCursor cursor = textCursor();
    QString selected = cursor.selectedText().trimmed();
    const QTextBlock block = document()->findBlock(cursor.selectionStart());
    const QString line = block.text();
    const int from = line.indexOf(selected, cursor.selectionStart() - block.position());
    if (from < 0)
        return selected;
    int end = from + selected.size();
    while (end < line.size() && isNamePart(line.at(end)))
        ++end;
    const int begin = pathBegin(line, end);
    return begin <= from ? line.mid(begin, end - begin) : selected;
}

void SourceView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Mouse && !textCursor().hasSelection())
        setTextCursor(cursorForPosition(event->pos()));
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    menu->addSeparator();
    menu->addActions(actions());
    menu->exec(event->globalPos());
}

void SourceView::markCurrentLine()
{
    QTextEdit::ExtraSelection line;
    QColor color = palette().color(QPalette::Highlight);
    color.setAlpha(32);
    line.format.setBackground(color);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = textCursor();
    line.cursor.clearSelection();
    setExtraSelections({ line });
}

int SourceView::numberWidth() const
{
    const int digits = QString::number(blockCount()).size();
    return fontMetrics().horizontalAdvance(QLatin1Char('9')) * qMax(digits, 3) + 16;
}

void SourceView::layOutNumbers()
{
    setViewportMargins(numberWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    m_numbers->setGeometry(area.left(), area.top(), numberWidth(), area.height());
}

void SourceView::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    layOutNumbers();
}

void SourceView::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_numbers)
        layOutNumbers();
}

void SourceView::paintNumbers(QPaintEvent* event)
{
    QPainter painter(m_numbers);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
        if (area.top() > event->rect().bottom())
            break;
        painter.drawText(0, qRound(area.top()), m_numbers->width() - 8, fontMetrics().height(), Qt::AlignRight,
            QString::number(block.blockNumber() + 1));
    }
}
