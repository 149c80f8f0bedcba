#include "tests/support/MessageBoxWatcher.h"

#include <QAbstractButton>
#include <QPointer>
#include <QtTest>

namespace {

QAbstractButton* buttonOf(const QMessageBox& box, const QString& text)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    for (QAbstractButton* button : buttons) {
        if (button->text() == text)
            return button;
    }
    qFatal("%s", qPrintable(QStringLiteral("the box \"%1\" has no button \"%2\"").arg(box.text(), text)));
}

void click(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton);
}

void pressEscape(QMessageBox& box)
{
    QTest::keyClick(&box, Qt::Key_Escape);
}

void answerAlone(QMessageBox& box)
{
    if (box.buttons().size() == 1)
        click(box.buttons().first());
    else
        pressEscape(box);
}

MessageBoxWatcher::Box contentsOf(const QMessageBox& box)
{
    QStringList texts;
    const QList<QAbstractButton*> buttons = box.buttons();
    for (const QAbstractButton* button : buttons)
        texts.append(button->text());
    return { box.windowTitle(), box.text(), texts, box.icon(), box.parentWidget() != nullptr };
}

} // namespace

void MessageBoxWatcher::answer(int button)
{
    m_answers.append([button](QMessageBox& box) { click(box.buttons().at(button)); });
}

void MessageBoxWatcher::answer(const QString& buttonText)
{
    m_answers.append([buttonText](QMessageBox& box) { click(buttonOf(box, buttonText)); });
}

void MessageBoxWatcher::escape()
{
    m_answers.append(pressEscape);
}

void MessageBoxWatcher::meanwhile(std::function<void()> action)
{
    m_actions.append(std::move(action));
}

QStringList MessageBoxWatcher::texts() const
{
    QStringList all;
    for (const Box& box : boxes)
        all.append(box.text);
    return all;
}

bool MessageBoxWatcher::wants(QWidget* window) const
{
    return qobject_cast<QMessageBox*>(window) != nullptr;
}

void MessageBoxWatcher::handle(QWidget* window)
{
    const QPointer<QMessageBox> box(qobject_cast<QMessageBox*>(window));
    boxes.append(contentsOf(*box));
    if (!m_actions.isEmpty())
        m_actions.takeFirst()();
    if (!box)
        return;
    const Answer answer = m_answers.isEmpty() ? Answer(answerAlone) : m_answers.takeFirst();
    answer(*box);
}
