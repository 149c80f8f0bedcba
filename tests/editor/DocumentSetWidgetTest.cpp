#include "axisdata/AxisConstants.h"
#include "tests/editor/UnitFields.h"
#include "tests/support/RecordWrites.h"

#include <QDoubleValidator>
#include <QRegExpValidator>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace

class DocumentSetWidgetTest : public QObject {
    Q_OBJECT

private slots:
    void flagsAreReadInAnyCase_data();
    void flagsAreReadInAnyCase();
    void reverse();
    void pulseCountIsJudged_data();
    void pulseCountIsJudged();
    void hexadecimalKeepsWhatWasTyped();
    void changeOfDisplayLeavesTheCount();
    void otherFieldsAreJudged_data();
    void otherFieldsAreJudged();
    void returnStoresNothing_data();
    void returnStoresNothing();
    void gearSwitch();
    void switchingKeepsTheValues();
    void validators();
    void changeOfTypeRestoresTheGroup();
    void loadSetsAndFillsTheRealsFirst();
    void changeOfTypeWithoutARecordLeavesSignalsBlocked();
    void refreshDoesNothing();
};

void DocumentSetWidgetTest::flagsAreReadInAnyCase_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checked");
    const auto rows = [](const char* key, const char* button) {
        for (const char* text : { "TRUE", "true", "True", "FALSE", "", "yes", "1" })
            QTest::addRow("%s \"%s\"", key, text)
                << latin(key) << latin(button) << latin(text) << (latin(text).toUpper() == AxisTrue);
    };
    rows("ReverseEnable", "checkBox_Reverse");
    rows("PulseCountDecOrHex", "checkBox_decimalDisplayPulse");
    rows("UseGearEnable", "radioButton_useGearSet");
}

void DocumentSetWidgetTest::flagsAreReadInAnyCase()
{
    QFETCH(QString, key);
    QFETCH(QString, button);
    QFETCH(QString, text);
    QFETCH(bool, checked);
    UnitPage page;
    page.axis()->setProperty(key, text);
    page.open();
    QCOMPARE(page.button(button.toLatin1())->isChecked(), checked);
    if (key == QLatin1String("UseGearEnable")) {
        QCOMPARE(page.button("radioButton_unUsedGear")->isChecked(), !checked);
        QCOMPARE(page.edit("lineEdit_2")->isEnabled(), !checked);
        for (const char* name : { "lineEdit_3", "lineEdit_4", "lineEdit_5" })
            QCOMPARE(page.edit(name)->isEnabled(), checked);
    }
    // Only the display is written while loading, in its normal form.
    QCOMPARE(page.axis()->property(key, QString()),
        key == QLatin1String("PulseCountDecOrHex") ? (checked ? AxisTrue : AxisFalse) : text);
}

void DocumentSetWidgetTest::reverse()
{
    UnitPage page;
    page.openWindow();
    QTest::mouseClick(page.button("checkBox_Reverse"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    QCOMPARE(page.stored("ReverseEnable"), AxisTrue);
    QTest::keyClick(page.button("checkBox_Reverse"), Qt::Key_Space);
    QCOMPARE(page.stored("ReverseEnable"), AxisFalse);
    auto* const box = page.find<QCheckBox>("checkBox_Reverse");
    box->setTristate(true);
    box->setCheckState(Qt::Checked);
    box->setCheckState(Qt::PartiallyChecked);
    QCOMPARE(page.stored("ReverseEnable"), AxisFalse);
}

void DocumentSetWidgetTest::pulseCountIsJudged_data()
{
    QTest::addColumn<bool>("decimal");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, bool decimal, const char* typed, const char* stored, const char* shown) {
        QTest::newRow(name) << decimal << latin(typed) << latin(stored) << latin(shown);
    };
    row("decimal 1 is the least", true, "1", "1", "1");
    row("decimal 0 is refused", true, "0", "4096", "4096");
    row("decimal nothing is refused", true, "", "4096", "4096");
    row("decimal minus is refused", true, "-", "4096", "4096");
    row("decimal negative is refused", true, "-3", "4096", "4096");
    row("decimal 2147483647 is the most", true, "2147483647", "2147483647", "2147483647");
    row("decimal above it is refused", true, "2147483648", "4096", "4096");
    row("decimal beyond 32 bits is refused", true, "99999999999", "4096", "4096");
    row("decimal leading zeros stay in the field only", true, "0012", "12", "0012");
    row("decimal takes no letters", true, "1f2", "12", "12");
    row("hexadecimal ff", false, "ff", "255", "ff");
    row("hexadecimal FF stays in capitals", false, "FF", "255", "FF");
    row("hexadecimal 1 is the least", false, "1", "1", "1");
    row("hexadecimal 0 shows the stored count", false, "0", "4096", "1000");
    row("hexadecimal 7fffffff is the most", false, "7fffffff", "2147483647", "7fffffff");
    row("hexadecimal 80000000 is refused", false, "80000000", "4096", "1000");
    row("hexadecimal negative is refused", false, "-a", "4096", "1000");
    row("hexadecimal takes no other letters", false, "1g2", "18", "12");
}

void DocumentSetWidgetTest::pulseCountIsJudged()
{
    QFETCH(bool, decimal);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    UnitPage page;
    page.store("PulseCountPerCircle", "4096");
    page.store("PulseCountDecOrHex", decimal ? "TRUE" : "FALSE");
    page.openWindow();
    QCOMPARE(page.pulses()->text(), decimal ? QStringLiteral("4096") : QStringLiteral("1000"));
    typeAndLeave(page, "lineEdit_PulseCountPerCicle", typed);
    QCOMPARE(page.stored("PulseCountPerCircle"), stored);
    QCOMPARE(page.pulses()->text(), shown);
}

void DocumentSetWidgetTest::hexadecimalKeepsWhatWasTyped()
{
    UnitPage page;
    page.openWindow();
    QVERIFY(!page.find<QLabel>("label_19")->isVisible());
    page.decimalBox()->click();
    QVERIFY(page.find<QLabel>("label_19")->isVisible());
    QCOMPARE(page.stored("PulseCountDecOrHex"), AxisFalse);
    QCOMPARE(page.pulses()->text(), QStringLiteral("2710"));
    typeAndLeave(page, "lineEdit_PulseCountPerCicle", QStringLiteral("FF"));
    QCOMPARE(page.stored("PulseCountPerCircle"), QStringLiteral("255"));
    QCOMPARE(page.pulses()->text(), QStringLiteral("FF"));
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("255"));
    QCOMPARE(page.stored("PulseCountDecOrHex"), AxisTrue);
    QVERIFY(!page.find<QLabel>("label_19")->isVisible());
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("ff"));
    QCOMPARE(page.stored("PulseCountPerCircle"), QStringLiteral("255"));
}

void DocumentSetWidgetTest::changeOfDisplayLeavesTheCount()
{
    UnitPage page;
    page.store("PulseCountPerCircle", "007x");
    page.open();
    QCOMPARE(page.pulses()->text(), QStringLiteral("007x"));
    RecordWrites keys(page.axis());
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("0"));
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("007x"));
    QCOMPARE(
        keys.takeKeys(), QStringList({ QStringLiteral("PulseCountDecOrHex"), QStringLiteral("PulseCountDecOrHex") }));
}

void DocumentSetWidgetTest::otherFieldsAreJudged_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    for (int i = 0; i < int(std::size(unitPageFields)); ++i) {
        const auto row = [i](const char* typed, const char* expected) {
            QTest::addRow("%s \"%s\"", unitPageFields[i].key, typed) << i << latin(typed) << latin(expected);
        };
        // Refused: the stored text is back as it stands.
        const char* const refused = "05";
        if (unitPageFields[i].real) {
            row("1.5", "1.500000");
            row("0.01", "0.010000");
            row("0.009999", refused);
            row("0", refused);
            row("9999999", "9999999.000000");
            row("9999999.000001", refused);
            row("-1", refused);
            row("", refused);
            row("-", refused);
            row("+", refused);
            row(".", refused);
            row("1e3", "13.000000");
            row("1.1234567", "1.123456");
        } else {
            row("7", "7");
            row("007", "007");
            row("1", "1");
            row("0", refused);
            row("-3", refused);
            row("", refused);
            row("-", refused);
            row("+", refused);
            row("2147483647", "2147483647");
            row("2147483648", refused);
            row("4294967297", refused);
            row("1.5", "15");
        }
    }
}

void DocumentSetWidgetTest::otherFieldsAreJudged()
{
    QFETCH(int, field);
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    UnitPage page;
    page.store(unitPageFields[field].key, "05");
    page.store("UseGearEnable", field == 0 ? "FALSE" : "TRUE");
    page.openWindow();
    RecordWrites keys(page.axis());
    typeAndLeave(page, unitPageFields[field].name, typed);
    QCOMPARE(page.stored(unitPageFields[field].key), expected);
    QCOMPARE(page.edit(unitPageFields[field].name)->text(), expected);
    QCOMPARE(keys.takeKeys().size(), expected == QLatin1String("05") ? 0 : 1);
}

void DocumentSetWidgetTest::returnStoresNothing_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("lineEdit_PulseCountPerCicle") << QStringLiteral("PulseCountPerCircle");
    for (const UnitPageField& field : unitPageFields)
        QTest::newRow(field.name) << latin(field.key);
}

void DocumentSetWidgetTest::returnStoresNothing()
{
    QFETCH(QString, key);
    UnitPage page;
    page.store("UseGearEnable", key == QLatin1String("UnUseGearValue") ? "FALSE" : "TRUE");
    page.openWindow();
    QLineEdit* edit = page.edit(QTest::currentDataTag());
    NumberTyping::replace(edit, QStringLiteral("8"));
    RecordWrites keys(page.axis());
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter);
    QCOMPARE(keys.takeKeys(), QStringList());
    QCOMPARE(edit->text(), QStringLiteral("8"));
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(keys.takeKeys(), QStringList(key));
    QCOMPARE(page.axis()->property(key, QString()).toDouble(), 8.0);
}

void DocumentSetWidgetTest::gearSwitch()
{
    UnitPage page;
    page.openWindow();
    RecordWrites keys(page.axis());
    const auto click
        = [&](const char* name) { QTest::mouseClick(page.button(name), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8)); };
    const auto geared = [&] {
        return !page.edit("lineEdit_2")->isEnabled() && page.edit("lineEdit_3")->isEnabled()
            && page.edit("lineEdit_4")->isEnabled() && page.edit("lineEdit_5")->isEnabled();
    };
    const auto ungeared = [&] {
        return page.edit("lineEdit_2")->isEnabled() && !page.edit("lineEdit_3")->isEnabled()
            && !page.edit("lineEdit_4")->isEnabled() && !page.edit("lineEdit_5")->isEnabled();
    };
    QVERIFY(ungeared());
    click("radioButton_useGearSet");
    QVERIFY(geared());
    QCOMPARE(page.stored("UseGearEnable"), AxisTrue);
    click("radioButton_unUsedGear");
    QVERIFY(ungeared());
    QCOMPARE(page.stored("UseGearEnable"), AxisFalse);
    QCOMPARE(keys.takeKeys(), QStringList({ QStringLiteral("UseGearEnable"), QStringLiteral("UseGearEnable") }));
}

void DocumentSetWidgetTest::switchingKeepsTheValues()
{
    UnitPage page;
    for (const UnitPageField& field : unitPageFields)
        page.store(field.key, "17");
    page.open();
    page.button("radioButton_useGearSet")->click();
    page.button("radioButton_unUsedGear")->click();
    for (const UnitPageField& field : unitPageFields) {
        QCOMPARE(page.stored(field.key), QStringLiteral("17"));
        QCOMPARE(page.edit(field.name)->text(), QStringLiteral("17"));
    }
}

void DocumentSetWidgetTest::validators()
{
    UnitPage page;
    page.open();
    const auto* const real = qobject_cast<const QDoubleValidator*>(page.edit("lineEdit_2")->validator());
    QVERIFY(real);
    QCOMPARE(real->metaObject()->className(), "DoubleValidator");
    QCOMPARE(real->decimals(), 6);
    QCOMPARE(real->notation(), QDoubleValidator::StandardNotation);
    QCOMPARE(page.edit("lineEdit_3")->validator(), static_cast<const QValidator*>(real));
    const auto pattern = [](const QLineEdit* edit) {
        return qobject_cast<const QRegExpValidator*>(edit->validator())->regExp().pattern();
    };
    QCOMPARE(pattern(page.edit("lineEdit_4")), QStringLiteral("-?[0-9]*"));
    QCOMPARE(page.edit("lineEdit_5")->validator(), page.edit("lineEdit_4")->validator());
    QCOMPARE(pattern(page.pulses()), QStringLiteral("-?[0-9]*"));
    page.decimalBox()->click();
    QCOMPARE(pattern(page.pulses()), QStringLiteral("-?[A-Fa-f0-9]*"));
    QCOMPARE(page.pulses()->validator()->parent(), static_cast<QObject*>(page.page.get()));
}

void DocumentSetWidgetTest::changeOfTypeRestoresTheGroup()
{
    UnitPage page;
    for (const UnitPageField& field : unitPageFields)
        page.store(field.key, "9");
    page.store("PulseCountPerCircle", "77");
    page.store("PulseCountDecOrHex", "FALSE");
    page.store("UseGearEnable", "TRUE");
    page.store("ReverseEnable", "TRUE");
    page.store("MaxVel", "mine");
    page.open();
    RecordWrites keys(page.axis());
    page.page->axisTypeChanged();
    // The group in key order; what the load writes after it changes nothing any more.
    QCOMPARE(keys.takeKeys(), QStringList(AxisUnitDefaults.keys()));
    for (auto entry = AxisUnitDefaults.begin(); entry != AxisUnitDefaults.end(); ++entry)
        QCOMPARE(page.axis()->property(entry.key(), QString()), entry.value());
    QCOMPARE(page.stored("MaxVel"), QStringLiteral("mine"));
    QCOMPARE(page.pulses()->text(), QStringLiteral("10000"));
    QVERIFY(page.decimalBox()->isChecked());
    QVERIFY(!page.button("checkBox_Reverse")->isChecked());
    QVERIFY(page.button("radioButton_unUsedGear")->isChecked());
    QVERIFY(page.edit("lineEdit_2")->isEnabled());
    QVERIFY(!page.page->signalsBlocked());
}

void DocumentSetWidgetTest::loadSetsAndFillsTheRealsFirst()
{
    UnitPage page;
    for (const UnitPageField& field : unitPageFields)
        page.store(field.key, "9");
    page.open();
    const QValidator* real = page.edit("lineEdit_2")->validator();
    const QValidator* whole = page.edit("lineEdit_4")->validator();
    int filled = 0;
    connect(page.edit("lineEdit_2"), &QLineEdit::textChanged, this, [&] {
        QVERIFY(page.edit("lineEdit_3")->validator() != real);
        QCOMPARE(page.edit("lineEdit_4")->validator(), whole);
        ++filled;
    });
    connect(page.edit("lineEdit_4"), &QLineEdit::textChanged, this, [&] {
        QCOMPARE(page.edit("lineEdit_3")->text(), QStringLiteral("1"));
        QVERIFY(page.edit("lineEdit_5")->validator() != whole);
        ++filled;
    });
    page.page->axisTypeChanged();
    QCOMPARE(filled, 2);
}

void DocumentSetWidgetTest::changeOfTypeWithoutARecordLeavesSignalsBlocked()
{
    UnitPage page;
    page.open();
    page.project.axisModel()->removeAxisTable(page.axis());
    page.page->axisTypeChanged();
    QVERIFY(page.page->signalsBlocked());
}

void DocumentSetWidgetTest::refreshDoesNothing()
{
    UnitPage page;
    page.open();
    page.store("UnUseGearValue", "5");
    RecordWrites keys(page.axis());
    page.page->refreshFromModel();
    QCOMPARE(page.edit("lineEdit_2")->text(), QStringLiteral("1"));
    QCOMPARE(keys.takeKeys(), QStringList());
}

QTEST_MAIN(DocumentSetWidgetTest)
#include "DocumentSetWidgetTest.moc"
