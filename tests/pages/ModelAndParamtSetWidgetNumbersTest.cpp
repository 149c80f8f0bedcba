#include "tests/pages/TypingPage.h"
#include "tests/support/NumberTyping.h"

#include <QSignalSpy>
#include <QTest>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace

class ModelAndParamtSetWidgetNumbersTest : public QObject {
    Q_OBJECT

private slots:
    void edgesOfTheRanges_data();
    void edgesOfTheRanges();
    void returnStoresNothing_data();
    void returnStoresNothing();
    void clickElsewhereCommits();
    void namedCases_data();
    void namedCases();
    void loweringTheMaximumLeavesTheJogLimit();
    void boundIsTheStoredTextNotTheOtherField();
    void jogLimitIsWrittenAgainAfterTheField();
    void freeFieldsAreWrittenAtEveryKey_data();
    void freeFieldsAreWrittenAtEveryKey();
    void filterTime_data();
    void filterTime();
    void width_data();
    void width();
    void validators();
    void halfTypedNumbersAreJudgedAsZero_data();
    void halfTypedNumbersAreJudgedAsZero();
};

void ModelAndParamtSetWidgetNumbersTest::edgesOfTheRanges_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    for (int i = 0; i < int(std::size(checkedFields)); ++i) {
        const CheckedField& field = checkedFields[i];
        const bool lowExcluded = field.excludesStored() && field.lowKey;
        const bool highExcluded = field.excludesStored() && field.highKey;
        const auto row = [&](const char* what, double number, bool accepted) {
            QTest::addRow("%s %s", field.key, what) << i << QString::number(number, 'f', 6) << accepted;
        };
        row("at its low bound", field.low, !lowExcluded);
        row("just below its low bound", field.low - 0.000001, false);
        row("just above its low bound", field.low + 0.000001, true);
        row("at its high bound", field.high, !highExcluded);
        row("just above its high bound", field.high + 0.000001, false);
        row("just below its high bound", field.high - 0.000001, true);
    }
}

void ModelAndParamtSetWidgetNumbersTest::edgesOfTheRanges()
{
    QFETCH(int, field);
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    const CheckedField& row = checkedFields[field];
    TypingPage page(row, QStringLiteral("0040"));
    NumberTyping::replace(page.edit(row.name), typed);
    QTest::keyClick(page.edit(row.name), Qt::Key_Tab);
    // Refused: the stored text is back as it was, without being brought into the normal form.
    const QString expected = accepted ? QString::number(typed.toDouble(), 'f', 6) : QStringLiteral("0040");
    QCOMPARE(page.stored(latin(row.key)), expected);
    QCOMPARE(page.edit(row.name)->text(), expected);
}

void ModelAndParamtSetWidgetNumbersTest::returnStoresNothing_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("then");
    const QString real = QStringLiteral("7.000000");
    for (const CheckedField& field : checkedFields)
        QTest::addRow("%s", field.key) << latin(field.name) << latin(field.key) << QStringLiteral("7") << real;
    QTest::newRow("InputSignalFilterTime") << QStringLiteral("lineEdit_13") << QStringLiteral("InputSignalFilterTime")
                                           << QStringLiteral("7") << QStringLiteral("7");
    QTest::newRow("CompareOutputWidth") << QStringLiteral("lineEdit_14") << QStringLiteral("CompareOutputWidth")
                                        << QStringLiteral("7") << QStringLiteral("7.0");
}

void ModelAndParamtSetWidgetNumbersTest::returnStoresNothing()
{
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QString, typed);
    QFETCH(QString, then);
    TypingPage page({}, key == QLatin1String("RotationPeriod"));
    QLineEdit* edit = page.edit(field.toLatin1());
    const QString before = page.stored(key);
    NumberTyping::replace(edit, typed);
    QSignalSpy changes(page.axis(), &ModelObject::dataChanged);
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter);
    QVERIFY(edit->hasFocus());
    QCOMPARE(changes.count(), 0);
    QCOMPARE(page.stored(key), before);
    QCOMPARE(edit->text(), typed);
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(page.stored(key), then);
}

void ModelAndParamtSetWidgetNumbersTest::clickElsewhereCommits()
{
    TypingPage page;
    NumberTyping::replace(page.edit("lineEdit_3"), QStringLiteral("12.5"));
    QTest::mouseClick(page.edit("lineEdit_4"), Qt::LeftButton);
    QCOMPARE(page.stored(QStringLiteral("LimitDec")), QStringLiteral("12.500000"));
    QCOMPARE(page.edit("lineEdit_3")->text(), QStringLiteral("12.500000"));
}

void ModelAndParamtSetWidgetNumbersTest::namedCases_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("otherKey");
    QTest::addColumn<QString>("otherText");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* field, const char* key, const char* otherKey,
                         const char* otherText, const char* typed, const char* expected) {
        QTest::newRow(name) << latin(field) << latin(key) << latin(otherKey) << latin(otherText) << latin(typed)
                            << latin(expected);
    };
    row("a positive limit at the negative one is refused", "lineEdit_2", "SoftLimitPos", "SoftLimitNeg", "500", "500",
        "1000");
    row("a positive limit just above the negative one is taken", "lineEdit_2", "SoftLimitPos", "SoftLimitNeg", "500",
        "500.000001", "500.000001");
    row("a negative limit at the positive one is refused", "lineEdit", "SoftLimitNeg", "SoftLimitPos", "500", "500",
        "0");
    row("a jog velocity above the maximum is refused", "lineEdit_11", "JogMaxVel", "MaxVel", "10", "20", "500");
    row("a jog velocity at the maximum is taken", "lineEdit_11", "JogMaxVel", "MaxVel", "10", "10", "10.000000");
    row("a period of 0 is refused", "lineEdit_12", "RotationPeriod", "ModeSet", "TRUE", "0", "360");
    row("a limit deceleration of 0 is taken", "lineEdit_3", "LimitDec", "MaxVel", "10", "0", "0.000000");
    row("a bound that is no number counts as 0", "lineEdit_2", "SoftLimitPos", "SoftLimitNeg", "rubbish", "1",
        "1.000000");
    row("below a bound that is no number", "lineEdit_2", "SoftLimitPos", "SoftLimitNeg", "rubbish", "-1", "1000");
}

void ModelAndParamtSetWidgetNumbersTest::namedCases()
{
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QString, otherKey);
    QFETCH(QString, otherText);
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    TypingPage page({ { otherKey, otherText } }, otherKey == QLatin1String("ModeSet"));
    QLineEdit* edit = page.edit(field.toLatin1());
    NumberTyping::replace(edit, typed);
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(page.stored(key), expected);
    QCOMPARE(edit->text(), expected);
    QCOMPARE(page.stored(otherKey), otherText);
}

void ModelAndParamtSetWidgetNumbersTest::loweringTheMaximumLeavesTheJogLimit()
{
    TypingPage page({ { QStringLiteral("MaxVel"), QStringLiteral("1000") } });
    NumberTyping::replace(page.edit("lineEdit_7"), QStringLiteral("10"));
    QTest::keyClick(page.edit("lineEdit_7"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("MaxVel")), QStringLiteral("10.000000"));
    QCOMPARE(page.stored(QStringLiteral("JogMaxVel")), QStringLiteral("500"));
    QCOMPARE(page.edit("lineEdit_11")->text(), QStringLiteral("500"));
    NumberTyping::replace(page.edit("lineEdit_11"), QStringLiteral("11"));
    QTest::keyClick(page.edit("lineEdit_11"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("JogMaxVel")), QStringLiteral("500"));
}

void ModelAndParamtSetWidgetNumbersTest::boundIsTheStoredTextNotTheOtherField()
{
    TypingPage page;
    // The other field shows something that has never been committed.
    page.edit("lineEdit_7")->setText(QStringLiteral("9000"));
    NumberTyping::replace(page.edit("lineEdit_11"), QStringLiteral("20"));
    QTest::keyClick(page.edit("lineEdit_11"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("JogMaxVel")), QStringLiteral("500"));
}

/// Whatever follows the text of the field does not have the last word on the record.
void ModelAndParamtSetWidgetNumbersTest::jogLimitIsWrittenAgainAfterTheField()
{
    TypingPage page;
    const QString key = QStringLiteral("JogMaxVel");
    NumberTyping::replace(page.edit("lineEdit_11"), QStringLiteral("8"));
    connect(page.edit("lineEdit_11"), &QLineEdit::textChanged, this,
        [&](const QString&) { page.store(key, QStringLiteral("1")); });
    QTest::keyClick(page.edit("lineEdit_11"), Qt::Key_Tab);
    QCOMPARE(page.edit("lineEdit_11")->text(), QStringLiteral("8.000000"));
    QCOMPARE(page.stored(key), QStringLiteral("8.000000"));
    // A refused one is not written at all.
    NumberTyping::replace(page.edit("lineEdit_11"), QStringLiteral("11"));
    QTest::keyClick(page.edit("lineEdit_11"), Qt::Key_Tab);
    QCOMPARE(page.stored(key), QStringLiteral("1"));
}

void ModelAndParamtSetWidgetNumbersTest::freeFieldsAreWrittenAtEveryKey_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    for (const FreeField& field : freeFields)
        QTest::newRow(field.key) << latin(field.name) << latin(field.key);
}

void ModelAndParamtSetWidgetNumbersTest::freeFieldsAreWrittenAtEveryKey()
{
    QFETCH(QString, field);
    QFETCH(QString, key);
    TypingPage page({ { key, QStringLiteral("77") } });
    QLineEdit* edit = page.edit(field.toLatin1());
    edit->setFocus();
    edit->selectAll();
    const auto type = [&](char letter, const char* shown, const char* stored) {
        QTest::keyClick(edit, letter);
        QCOMPARE(edit->text(), latin(shown));
        QCOMPARE(page.stored(key), latin(stored));
    };
    type('-', "-", "0.000000");
    type('9', "-9", "-9.000000");
    type('9', "-99", "-99.000000");
    type('.', "-99.", "-99.000000");
    type('5', "-99.5", "-99.500000");
    type('x', "-99.5", "-99.500000");
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(edit->text(), QStringLiteral("-99.5"));
    QCOMPARE(page.stored(key), QStringLiteral("-99.500000"));
    edit->setText(QStringLiteral("99999999999"));
    QCOMPARE(page.stored(key), QStringLiteral("99999999999.000000"));
}

void ModelAndParamtSetWidgetNumbersTest::filterTime_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    const auto row = [](const char* typed, bool accepted) { QTest::newRow(typed) << latin(typed) << accepted; };
    row("0", true);
    row("150", true);
    row("007", true);
    row("151", false);
    row("-1", false);
    row("4294967296", true);
    row("4294967447", false);
    row("99999999999999999999999", true);
    row("-", true);
    QTest::newRow("nothing") << QString() << true;
}

void ModelAndParamtSetWidgetNumbersTest::filterTime()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    TypingPage page({ { QStringLiteral("InputSignalFilterTime"), QStringLiteral("33") } });
    NumberTyping::replace(page.edit("lineEdit_13"), typed);
    QCOMPARE(page.edit("lineEdit_13")->text(), typed);
    QTest::keyClick(page.edit("lineEdit_13"), Qt::Key_Tab);
    const QString expected = accepted ? typed : QStringLiteral("33");
    QCOMPARE(page.stored(QStringLiteral("InputSignalFilterTime")), expected);
    QCOMPARE(page.edit("lineEdit_13")->text(), expected);
}

void ModelAndParamtSetWidgetNumbersTest::width_data()
{
    QTest::addColumn<bool>("milliseconds");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    const auto row
        = [](const char* name, bool milliseconds, const char* typed, const char* stored, const QString& shown) {
              QTest::newRow(name) << milliseconds << latin(typed) << latin(stored) << shown;
          };
    const QString code0 = QString(QChar(0));
    row("units take one digit", false, "12.5", "12.5", QStringLiteral("12.5"));
    row("units refuse a second digit at typing", false, "12.55", "12.5", QStringLiteral("12.5"));
    row("units at the high bound", false, "65535", "65535.0", QStringLiteral("65535.0"));
    row("units above it show the stored width with one digit", false, "65535.5", "42.75", QStringLiteral("42.8"));
    row("units below 0", false, "-0.1", "42.75", QStringLiteral("42.8"));
    row("units of nothing are 0", false, "", "0.0", QStringLiteral("0.0"));
    row("milliseconds are stored with a digit and shown as one character", true, "12", "12.0", code0);
    row("milliseconds at the high bound", true, "65535", "65535.0", code0);
    row("milliseconds above it show the stored width cut", true, "65536", "42.75", QStringLiteral("42"));
    row("milliseconds refuse a point at typing", true, "1.2", "12.0", code0);
    row("negative milliseconds", true, "-5", "42.75", QStringLiteral("42"));
}

void ModelAndParamtSetWidgetNumbersTest::width()
{
    QFETCH(bool, milliseconds);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    TypingPage page({ { QStringLiteral("CompareOutputWidth"), QStringLiteral("42.75") },
        { QStringLiteral("CompareOutputWidthUnit"),
            milliseconds ? QStringLiteral("true") : QStringLiteral("FALSE") } });
    NumberTyping::replace(page.edit("lineEdit_14"), typed);
    QTest::keyClick(page.edit("lineEdit_14"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("CompareOutputWidth")), stored);
    QCOMPARE(page.edit("lineEdit_14")->text(), shown);
}

void ModelAndParamtSetWidgetNumbersTest::validators()
{
    TypingPage page;
    const auto* const first = qobject_cast<const QDoubleValidator*>(page.edit("lineEdit")->validator());
    QVERIFY(first);
    QCOMPARE(first->metaObject()->className(), "DoubleValidator");
    QCOMPARE(first->decimals(), 6);
    QCOMPARE(first->notation(), QDoubleValidator::StandardNotation);
    QCOMPARE(first->parent(), static_cast<QObject*>(page.page.get()));
    for (const char* name : { "lineEdit_2", "lineEdit_3", "lineEdit_4", "lineEdit_5", "lineEdit_6", "lineEdit_7",
             "lineEdit_8", "lineEdit_9", "lineEdit_10", "lineEdit_11", "lineEdit_12" })
        QCOMPARE(page.edit(name)->validator(), static_cast<const QValidator*>(first));
    const auto* const pattern = qobject_cast<const QRegExpValidator*>(page.edit("lineEdit_13")->validator());
    QVERIFY(pattern);
    QCOMPARE(pattern->regExp().pattern(), QStringLiteral("-?[0-9]*"));
    QCOMPARE(pattern->parent(), static_cast<QObject*>(page.page.get()));
    page.page->axisTypeChanged();
    QVERIFY(page.edit("lineEdit")->validator() != first);
    QCOMPARE(page.page->findChildren<QDoubleValidator*>().contains(const_cast<QDoubleValidator*>(first)), true);
}

void ModelAndParamtSetWidgetNumbersTest::halfTypedNumbersAreJudgedAsZero_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("nothing") << QString();
    QTest::newRow("a minus") << QStringLiteral("-");
    QTest::newRow("a plus") << QStringLiteral("+");
    QTest::newRow("a point") << QStringLiteral(".");
}

void ModelAndParamtSetWidgetNumbersTest::halfTypedNumbersAreJudgedAsZero()
{
    QFETCH(QString, typed);
    TypingPage page;
    NumberTyping::replace(page.edit("lineEdit_3"), typed);
    QCOMPARE(page.edit("lineEdit_3")->text(), typed);
    QTest::keyClick(page.edit("lineEdit_3"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("LimitDec")), QStringLiteral("0.000000"));
    NumberTyping::replace(page.edit("lineEdit_4"), typed);
    QTest::keyClick(page.edit("lineEdit_4"), Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("AxisErrorDec")), QStringLiteral("10000"));
}

QTEST_MAIN(ModelAndParamtSetWidgetNumbersTest)
#include "ModelAndParamtSetWidgetNumbersTest.moc"
