#include "axisdata/RegExpValidator.h"

#include "tests/axisdata/ValidatedField.h"

#include <QLineEdit>
#include <QtTest>

class RegExpValidatorTest : public QObject {
    Q_OBJECT

private slots:
    void isConfigured();
    void judgesTexts_data();
    void judgesTexts();
    void fieldReportsHalfTypedText_data();
    void fieldReportsHalfTypedText();
    void fieldRefusesAtTyping_data();
    void fieldRefusesAtTyping();
};

void RegExpValidatorTest::isConfigured()
{
    QObject page;
    const auto* validator = new RegExpValidator(RegExpValidator::decimalPattern(), &page);
    QCOMPARE(validator->regExp().pattern(), QStringLiteral("-?[0-9]*"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(validator->regExp().patternSyntax(), QRegExp::RegExp);
    QCOMPARE(validator->parent(), &page);
    QCOMPARE(RegExpValidator::hexadecimalPattern(), QStringLiteral("-?[A-Fa-f0-9]*"));
}

void RegExpValidatorTest::judgesTexts_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");

    const int acceptable = QValidator::Acceptable;
    const int invalid = QValidator::Invalid;
    const QString decimal = RegExpValidator::decimalPattern();
    const QString hexadecimal = RegExpValidator::hexadecimalPattern();
    const QString wordPattern = QStringLiteral("[a-z]+");
    QTest::newRow("a lone minus stands") << decimal << QStringLiteral("-") << acceptable;
    QTest::newRow("an empty text stands") << decimal << QString() << acceptable;
    QTest::newRow("a lone plus stands though no pattern begins so") << decimal << QStringLiteral("+") << acceptable;
    QTest::newRow("a lone minus stands against any pattern") << wordPattern << QStringLiteral("-") << acceptable;
    QTest::newRow("an empty text stands against any pattern") << wordPattern << QString() << acceptable;
    QTest::newRow("a lone point is refused") << decimal << QStringLiteral(".") << invalid;
    QTest::newRow("a plus before a digit is refused") << decimal << QStringLiteral("+1") << invalid;
    QTest::newRow("a negative number stands") << decimal << QStringLiteral("-3") << acceptable;
    QTest::newRow("a number stands") << decimal << QStringLiteral("2147483648") << acceptable;
    QTest::newRow("a letter is refused in decimal") << decimal << QStringLiteral("ff") << invalid;
    QTest::newRow("small letters stand in hexadecimal") << hexadecimal << QStringLiteral("ff") << acceptable;
    QTest::newRow("capitals stand in hexadecimal") << hexadecimal << QStringLiteral("FF") << acceptable;
    QTest::newRow("g is refused in hexadecimal") << hexadecimal << QStringLiteral("g") << invalid;
    QTest::newRow("case counts in a pattern") << wordPattern << QStringLiteral("A") << invalid;
}

void RegExpValidatorTest::judgesTexts()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(int, state);
    const RegExpValidator validator(pattern, nullptr);
    int position = text.size();
    QCOMPARE(static_cast<int>(validator.validate(text, position)), state);
}

void RegExpValidatorTest::fieldReportsHalfTypedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a lone minus") << QStringLiteral("-");
    QTest::newRow("a lone plus") << QStringLiteral("+");
    QTest::newRow("nothing") << QString();
}

void RegExpValidatorTest::fieldReportsHalfTypedText()
{
    QFETCH(QString, text);
    QLineEdit field;
    field.setValidator(new RegExpValidator(RegExpValidator::decimalPattern(), &field));
    typedTextIsReported(field, text);
}

void RegExpValidatorTest::fieldRefusesAtTyping_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a point") << RegExpValidator::decimalPattern() << QStringLiteral("1.5") << QStringLiteral("15");
    QTest::newRow("a lone point") << RegExpValidator::decimalPattern() << QStringLiteral(".") << QString();
    QTest::newRow("letters in decimal") << RegExpValidator::decimalPattern() << QStringLiteral("1a")
                                        << QStringLiteral("1");
    QTest::newRow("letters past f in hexadecimal")
        << RegExpValidator::hexadecimalPattern() << QStringLiteral("1fg") << QStringLiteral("1f");
}

void RegExpValidatorTest::fieldRefusesAtTyping()
{
    QFETCH(QString, pattern);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QLineEdit field;
    field.setValidator(new RegExpValidator(pattern, &field));
    typingShows(field, typed, shown);
}

QTEST_MAIN(RegExpValidatorTest)
#include "RegExpValidatorTest.moc"
