#pragma once

#include <QPlainTextEdit>

/// A structured text to be read, with line numbers and marked keywords, comments and literals.
class SourceView : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit SourceView(QWidget* parent = nullptr);
    ~SourceView() override;

    /// Puts the cursor on a place, both from 1, and brings it to the middle.
    void goTo(int line, int column);
    /// The name at the cursor with what it is a member of: "drive.limit" on its last part. A selection inside a name
    /// counts as its end does; one that goes over more than a name is taken as it is.
    QString nameAtCursor() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// The usual menu, with the actions that others have put on the view.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    class NumberArea;
    friend class NumberArea;

    void paintNumbers(QPaintEvent* event);
    int numberWidth() const;
    void layOutNumbers();
    void markCurrentLine();

    NumberArea* m_numbers;
};
