#pragma once

#include <QSyntaxHighlighter>

class QPlainTextEdit;

/// Marks keywords, types, literals and comments of structured text, in colours that fit the widget's palette.
class StructuredTextHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    explicit StructuredTextHighlighter(QPlainTextEdit& view);
    ~StructuredTextHighlighter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void highlightBlock(const QString& text) override;

private:
    void chooseColors();
    void mark(const QString& text, const QString& pattern, const QTextCharFormat& format);
    void markComments(const QString& text);

    QPlainTextEdit& m_view;
    QTextCharFormat m_keyword;
    QTextCharFormat m_type;
    QTextCharFormat m_literal;
    QTextCharFormat m_comment;
};
