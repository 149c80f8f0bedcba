#pragma once

#include "tests/support/ShownWindowFilter.h"

#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// Answers message boxes while it lives and records what they said. Answers are taken in the order in which they were
/// given; a box without one left is answered by its only button, or by Escape when it has several.
class MessageBoxWatcher : public ShownWindowFilter {
    Q_OBJECT

public:
    struct Box {
        QString title;
        QString text;
        /// Texts of the buttons from left to right.
        QStringList buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool hasParent = false;
    };

    /// Clicks the button at that place, from 0 in the order of Box::buttons.
    void answer(int button);
    /// Clicks the button of that text.
    void answer(const QString& buttonText);
    /// Presses Escape.
    void escape();
    /// Runs something while the next box is open, before it is answered by the answer that comes next.
    void meanwhile(std::function<void()> action);

    int count() const { return boxes.size(); }
    /// Texts of all boxes so far.
    QStringList texts() const;

    QVector<Box> boxes;

protected:
    bool wants(QWidget* window) const override;
    void handle(QWidget* window) override;

private:
    using Answer = std::function<void(QMessageBox&)>;

    QVector<Answer> m_answers;
    QVector<std::function<void()>> m_actions;
};
