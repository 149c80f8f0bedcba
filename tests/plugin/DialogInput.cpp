#include "tests/plugin/DialogInput.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace DialogInput {

QPushButton* button(const QDialog* dialog, const QString& text)
{
    const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
    for (QPushButton* candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    qFatal("the dialog has no button %s", qPrintable(text));
}

void type(const QDialog* dialog, const QString& text)
{
    auto* edit = dialog->findChild<QLineEdit*>();
    QTest::keySequence(edit, QKeySequence::SelectAll);
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    else
        QTest::keyClicks(edit, text);
}

void click(const QDialog* dialog, const QString& buttonText)
{
    QTest::mouseClick(button(dialog, buttonText), Qt::LeftButton);
}

void enter(const QDialog* dialog, const QString& text)
{
    type(dialog, text);
    click(dialog, QStringLiteral("OK"));
}

} // namespace DialogInput
