#include "axisdata/DoubleValidator.h"

#include "tests/axisdata/ValidatedField.h"

#include <QLineEdit>
#include <QtTest>

class DoubleValidatorTest : public QObject {
    Q_OBJECT

private slots:
    void isConfigured();
    void judgesTexts_data();
    void judgesTexts();
    void fieldReportsHalfTypedText_data();
    void fieldReportsHalfTypedText();
    void fieldRefusesAtTyping_data();
    void fieldRefusesAtTyping();
    void readsPointsInEveryLanguage();
};

void DoubleValidatorTest::isConfigured()
{
    QObject page;
    const auto* validator = new DoubleValidator(6, &page);
    QCOMPARE(validator->decimals(), 6);
    QCOMPARE(validator->notation(), QDoubleValidator::StandardNotation);
    QVERIFY(qIsInf(validator->bottom()) && validator->bottom() < 0);
    QVERIFY(qIsInf(validator->top()) && validator->top() > 0);
    QCOMPARE(validator->parent(), &page);
}

void DoubleValidatorTest::judgesTexts_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");

    const int acceptable = QValidator::Acceptable;
    const int invalid = QValidator::Invalid;
    QTest::newRow("a lone minus stands") << 6 << QStringLiteral("-") << acceptable;
    QTest::newRow("an empty text stands") << 6 << QString() << acceptable;
    QTest::newRow("a lone plus stands") << 6 << QStringLiteral("+") << acceptable;
    QTest::newRow("a lone point stands") << 6 << QStringLiteral(".") << acceptable;
    QTest::newRow("a whole number stands") << 6 << QStringLiteral("1000") << acceptable;
    QTest::newRow("a negative number stands") << 6 << QStringLiteral("-12.5") << acceptable;
    QTest::newRow("a number beyond every bound stands") << 6 << QStringLiteral("99999999999") << acceptable;
    QTest::newRow("six decimals stand") << 6 << QStringLiteral("1.123456") << acceptable;
    QTest::newRow("seven decimals are refused") << 6 << QStringLiteral("1.1234567") << invalid;
    QTest::newRow("an exponent is refused") << 6 << QStringLiteral("1e3") << invalid;
    QTest::newRow("a letter is refused") << 6 << QStringLiteral("a") << invalid;
    QTest::newRow("two points are refused") << 6 << QStringLiteral("1.2.3") << invalid;
    QTest::newRow("a group separator is refused") << 6 << QStringLiteral("1,000") << invalid;
    QTest::newRow("one decimal stands where one is allowed") << 1 << QStringLiteral("2.5") << acceptable;
    QTest::newRow("two decimals are refused where one is allowed") << 1 << QStringLiteral("2.55") << invalid;
}

void DoubleValidatorTest::judgesTexts()
{
    QFETCH(int, decimals);
    QFETCH(QString, text);
    QFETCH(int, state);
    const DoubleValidator validator(decimals, nullptr);
    const QString typed = text;
    int position = text.size();
    QCOMPARE(static_cast<int>(validator.validate(text, position)), state);
    QCOMPARE(text, typed);
}

void DoubleValidatorTest::fieldReportsHalfTypedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a lone minus") << QStringLiteral("-");
    QTest::newRow("a lone plus") << QStringLiteral("+");
    QTest::newRow("a lone point") << QStringLiteral(".");
    QTest::newRow("nothing") << QString();
}

void DoubleValidatorTest::fieldReportsHalfTypedText()
{
    QFETCH(QString, text);
    QLineEdit field;
    field.setValidator(new DoubleValidator(6, &field));
    typedTextIsReported(field, text);
}

void DoubleValidatorTest::fieldRefusesAtTyping_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("the e of an exponent") << QStringLiteral("1e3") << QStringLiteral("13");
    QTest::newRow("the seventh decimal") << QStringLiteral("1.1234567") << QStringLiteral("1.123456");
    QTest::newRow("a group separator") << QStringLiteral("1,5") << QStringLiteral("15");
}

void DoubleValidatorTest::fieldRefusesAtTyping()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QLineEdit field;
    field.setValidator(new DoubleValidator(6, &field));
    typingShows(field, typed, shown);
}

void DoubleValidatorTest::readsPointsInEveryLanguage()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QLineEdit field;
    field.setValidator(new DoubleValidator(6, &field));
    QTest::keyClicks(&field, QStringLiteral("1.5"));
    QVERIFY(field.hasAcceptableInput());
    QCOMPARE(field.text(), QStringLiteral("1.5"));
    QLocale::setDefault(before);
}

QTEST_MAIN(DoubleValidatorTest)
#include "DoubleValidatorTest.moc"
