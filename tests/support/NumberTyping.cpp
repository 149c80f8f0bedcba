#include "tests/support/NumberTyping.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>

namespace {

void commitFromInputMethod(QLineEdit* field, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(field, &event);
}

void typeKeys(QLineEdit* field, const QString& text)
{
    for (const QChar letter : text) {
        if (letter == QLatin1Char('\n') || letter == QLatin1Char('\r'))
            QTest::keyClick(field, Qt::Key_Return);
        else if (letter.unicode() >= 0x20 && letter.unicode() < 0x7f)
            QTest::keyClick(field, letter.toLatin1());
        else
            commitFromInputMethod(field, letter);
    }
}

} // namespace

void NumberTyping::replace(QLineEdit* field, const QString& text)
{
    enter(field, text, Keys);
}

void NumberTyping::enter(QLineEdit* field, const QString& text, How how)
{
    field->setFocus(Qt::MouseFocusReason);
    QTest::keySequence(field, QKeySequence::SelectAll);
    QTest::keyClick(field, Qt::Key_Delete);
    if (how == Keys) {
        typeKeys(field, text);
    } else if (how == InputMethod) {
        commitFromInputMethod(field, text);
    } else {
        QApplication::clipboard()->setText(text);
        QTest::keySequence(field, QKeySequence::Paste);
    }
}

QStringList NumberTyping::rubbish()
{
    return { QString(), QStringLiteral("-"), QStringLiteral("+"), QStringLiteral("."), QStringLiteral("-."),
        QStringLiteral("--1"), QStringLiteral(","), QStringLiteral("1,5"), QStringLiteral("1,500"),
        QStringLiteral("1.5.2"), QStringLiteral("1e3"), QStringLiteral("1E-3"), QStringLiteral("e"),
        QStringLiteral("1e999"), QString(400, QLatin1Char('9')), QString(400, QLatin1Char('0')),
        QStringLiteral("0.") + QString(400, QLatin1Char('1')), QStringLiteral("nan"), QStringLiteral("NaN"),
        QStringLiteral("inf"), QStringLiteral("-inf"), QStringLiteral("\uff11\uff12\uff13"),
        QStringLiteral("\u0661\u0662"), QStringLiteral("12\n34"), QStringLiteral("12\r\n"), QStringLiteral("\n12"),
        QStringLiteral("1 2"), QStringLiteral(" 12 "), QStringLiteral("0x10"), QStringLiteral("12abc"),
        QStringLiteral("1.1234567"), QStringLiteral("18446744073709551616"), QString(QChar(0)) };
}

QByteArray NumberTyping::Attempt::name() const
{
    static const char* const hows[] = { "typed", "pasted", "composed" };
    return text.left(12).toUtf8().toPercentEncoding() + ' ' + hows[how];
}

QVector<NumberTyping::Attempt> NumberTyping::attempts()
{
    QVector<Attempt> all;
    for (const QString& text : rubbish())
        for (const How how : { Keys, Paste, InputMethod })
            all.append({ text, how });
    return all;
}

NumberTyping::Taken NumberTyping::enterAndTab(QLineEdit* field, const Attempt& attempt)
{
    enter(field, attempt.text, attempt.how);
    const Taken taken{ field->text(), field->hasAcceptableInput() };
    QTest::keyClick(field, Qt::Key_Tab);
    return taken;
}
