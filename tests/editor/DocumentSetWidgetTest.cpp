#include "axisdata/AxisConstants.h"
#include "editor/MotionControlAxisEditor.h"
#include "sdk/ServiceKeys.h"
#include "tests/editor/UnitPage.h"
#include "tests/support/NumberTyping.h"

#include <QDoubleValidator>
#include <QRegExpValidator>
#include <QSignalSpy>

#include <cmath>

namespace {

struct Field {
    const char* name;
    const char* key;
    bool real;
};

const Field fields[] = {
    { "lineEdit_2", "UnUseGearValue", true },
    { "lineEdit_3", "UseGearValue", true },
    { "lineEdit_4", "GearRatioMolecule", false },
    { "lineEdit_5", "GearRatioParent", false },
};

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// Keys written since the last look, in order.
class WrittenKeys {
public:
    explicit WrittenKeys(const UnitPage& page) : m_spy(page.axis(), &ModelObject::dataChanged) { }

    QStringList take()
    {
        QStringList keys;
        for (const QList<QVariant>& call : qAsConst(m_spy))
            keys.append(call.at(2).toString());
        m_spy.clear();
        return keys;
    }

private:
    QSignalSpy m_spy;
};

/// Types into a field of a page and leaves it.
void commit(UnitPage& page, const char* name, const QString& text)
{
    NumberTyping::replace(page.edit(name), text);
    page.button("checkBox_Reverse")->setFocus(Qt::TabFocusReason);
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
    void pendingEditLandsBeforeTheQuery();
    void gearSwitch();
    void switchingKeepsTheValues();
    void validators();
    void changeOfTypeRestoresTheGroup();
    void changeOfTypeWithoutARecordLeavesSignalsBlocked();
    void refreshDoesNothing();
    void goneRecordEndsEverySlot();
    void pageThatGoesWithAFieldInUse();
    void badRecords_data();
    void badRecords();
    void typedAndPastedRubbish_data();
    void typedAndPastedRubbish();
    void roundTrip();
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
    commit(page, "lineEdit_PulseCountPerCicle", typed);
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
    commit(page, "lineEdit_PulseCountPerCicle", QStringLiteral("FF"));
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
    WrittenKeys keys(page);
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("0"));
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), QStringLiteral("007x"));
    QCOMPARE(keys.take(), QStringList({ QStringLiteral("PulseCountDecOrHex"), QStringLiteral("PulseCountDecOrHex") }));
}

void DocumentSetWidgetTest::otherFieldsAreJudged_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("expected");
    for (int i = 0; i < int(std::size(fields)); ++i) {
        const auto row = [i](const char* typed, const char* expected) {
            QTest::addRow("%s \"%s\"", fields[i].key, typed) << i << latin(typed) << latin(expected);
        };
        // Refused: the stored text is back as it stands.
        const char* const refused = "05";
        if (fields[i].real) {
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
    page.store(fields[field].key, "05");
    page.store("UseGearEnable", field == 0 ? "FALSE" : "TRUE");
    page.openWindow();
    WrittenKeys keys(page);
    commit(page, fields[field].name, typed);
    QCOMPARE(page.stored(fields[field].key), expected);
    QCOMPARE(page.edit(fields[field].name)->text(), expected);
    QCOMPARE(keys.take().size(), expected == QLatin1String("05") ? 0 : 1);
}

void DocumentSetWidgetTest::returnStoresNothing_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("lineEdit_PulseCountPerCicle") << QStringLiteral("PulseCountPerCircle");
    for (const Field& field : fields)
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
    WrittenKeys keys(page);
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter);
    QCOMPARE(keys.take(), QStringList());
    QCOMPARE(edit->text(), QStringLiteral("8"));
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(keys.take(), QStringList(key));
    QCOMPARE(page.axis()->property(key, QString()).toDouble(), 8.0);
}

void DocumentSetWidgetTest::pendingEditLandsBeforeTheQuery()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q8"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feed"), QStringLiteral("Axis_Pulse"));
    MotionControlAxisEditor editor(nullptr);
    QVERIFY(editor.open(project.axisPath(axis->id()), AxisViewKey));
    auto* const view = qobject_cast<PropertyEditorView*>(editor.widget());
    auto* const page = view->findChild<DocumentSetWidget*>();
    QVERIFY(page);
    view->setCurrentWidget(page);
    view->resize(1000, 800);
    view->show();
    QApplication::setActiveWindow(view);
    QVERIFY(QTest::qWaitForWindowActive(view));
    QVERIFY(!editor.isModified());
    auto* const edit = page->findChild<QLineEdit*>(QStringLiteral("lineEdit_2"));
    NumberTyping::replace(edit, QStringLiteral("2.5"));
    QCOMPARE(axis->property(QStringLiteral("UnUseGearValue"), QString()), QStringLiteral("1"));
    QVERIFY(editor.isModified());
    QCOMPARE(axis->property(QStringLiteral("UnUseGearValue"), QString()), QStringLiteral("2.500000"));
}

void DocumentSetWidgetTest::gearSwitch()
{
    UnitPage page;
    page.openWindow();
    WrittenKeys keys(page);
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
    QCOMPARE(keys.take(), QStringList({ QStringLiteral("UseGearEnable"), QStringLiteral("UseGearEnable") }));
}

void DocumentSetWidgetTest::switchingKeepsTheValues()
{
    UnitPage page;
    for (const Field& field : fields)
        page.store(field.key, "17");
    page.open();
    page.button("radioButton_useGearSet")->click();
    page.button("radioButton_unUsedGear")->click();
    for (const Field& field : fields) {
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
    for (const Field& field : fields)
        page.store(field.key, "9");
    page.store("PulseCountPerCircle", "77");
    page.store("PulseCountDecOrHex", "FALSE");
    page.store("UseGearEnable", "TRUE");
    page.store("ReverseEnable", "TRUE");
    page.store("MaxVel", "mine");
    page.open();
    WrittenKeys keys(page);
    page.page->axisTypeChanged();
    // The group in key order; what the load writes after it changes nothing any more.
    QCOMPARE(keys.take(), QStringList(AxisUnitDefaults.keys()));
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
    WrittenKeys keys(page);
    page.page->refreshFromModel();
    QCOMPARE(page.edit("lineEdit_2")->text(), QStringLiteral("1"));
    QCOMPARE(keys.take(), QStringList());
}

void DocumentSetWidgetTest::goneRecordEndsEverySlot()
{
    for (const bool closed : { false, true }) {
        UnitPage page;
        page.openWindow();
        if (closed)
            page.project.close();
        else
            page.project.axisModel()->removeAxisTable(page.axis());
        for (const char* name :
            { "checkBox_Reverse", "checkBox_decimalDisplayPulse", "radioButton_useGearSet", "radioButton_unUsedGear" })
            page.button(name)->click();
        QVERIFY(!page.find<QLabel>("label_19")->isVisible());
        for (const Field& field : fields) {
            page.edit(field.name)->setText(QStringLiteral("0"));
            emit page.edit(field.name)->editingFinished();
            QCOMPARE(page.edit(field.name)->text(), QStringLiteral("0"));
        }
        commit(page, "lineEdit_PulseCountPerCicle", QStringLiteral("0"));
        QCOMPARE(page.pulses()->text(), QStringLiteral("0"));
        page.open();
        QCOMPARE(page.pulses()->text(), QStringLiteral("16#2710"));
    }
}

void DocumentSetWidgetTest::pageThatGoesWithAFieldInUse()
{
    UnitPage page;
    page.openWindow();
    NumberTyping::replace(page.edit("lineEdit_2"), QStringLiteral("3"));
    page.page.reset();
    QCOMPARE(page.stored("UnUseGearValue"), QStringLiteral("1"));
}

void DocumentSetWidgetTest::badRecords_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("no number") << QStringLiteral("rubbish");
    QTest::newRow("negative") << QStringLiteral("-1");
    QTest::newRow("far out of range") << QStringLiteral("1e300");
    QTest::newRow("400 digits") << QString(400, QLatin1Char('9'));
    QTest::newRow("line breaks") << QStringLiteral("1\n2");
    QTest::newRow("not a number") << QStringLiteral("nan");
}

void DocumentSetWidgetTest::badRecords()
{
    QFETCH(QString, text);
    UnitPage page;
    for (const QString& key : AxisUnitDefaults.keys())
        page.axis()->setProperty(key, text);
    page.openWindow();
    QVERIFY(!page.button("checkBox_Reverse")->isChecked());
    QVERIFY(page.button("radioButton_unUsedGear")->isChecked());
    QCOMPARE(page.pulses()->text(), QStringLiteral("0"));
    for (const Field& field : fields)
        QCOMPARE(page.edit(field.name)->text(), text);
    for (const QString& key : AxisUnitDefaults.keys())
        QCOMPARE(page.axis()->property(key, QString()), key == QLatin1String("PulseCountDecOrHex") ? AxisFalse : text);
    page.page->axisTypeChanged();
    QCOMPARE(page.pulses()->text(), QStringLiteral("10000"));
}

void DocumentSetWidgetTest::typedAndPastedRubbish_data()
{
    QTest::addColumn<bool>("decimal");
    QTest::newRow("decimal display") << true;
    QTest::newRow("hexadecimal display") << false;
}

void DocumentSetWidgetTest::typedAndPastedRubbish()
{
    QFETCH(bool, decimal);
    UnitPage page;
    page.store("PulseCountDecOrHex", decimal ? "TRUE" : "FALSE");
    page.store("UseGearEnable", decimal ? "TRUE" : "FALSE");
    page.openWindow();
    for (const QString& text : NumberTyping::rubbish()) {
        for (const auto how : { NumberTyping::Keys, NumberTyping::Paste, NumberTyping::InputMethod }) {
            for (const char* name :
                { "lineEdit_PulseCountPerCicle", "lineEdit_2", "lineEdit_3", "lineEdit_4", "lineEdit_5" }) {
                NumberTyping::enter(page.edit(name), text, how);
                page.button("checkBox_Reverse")->setFocus(Qt::TabFocusReason);
            }
            const double pulses = page.stored("PulseCountPerCircle").toDouble();
            QVERIFY2(pulses >= 1 && pulses <= 2147483647 && pulses == std::floor(pulses), qPrintable(text));
            for (const Field& field : fields) {
                const double value = page.stored(field.key).toDouble();
                QVERIFY2(value >= (field.real ? 0.01 : 1) && value <= (field.real ? 9999999 : 2147483647),
                    qPrintable(page.stored(field.key)));
            }
        }
    }
}

void DocumentSetWidgetTest::roundTrip()
{
    UnitPage page;
    page.openWindow();
    page.button("checkBox_Reverse")->click();
    page.decimalBox()->click();
    commit(page, "lineEdit_PulseCountPerCicle", QStringLiteral("1F4"));
    commit(page, "lineEdit_2", QStringLiteral("2.25"));
    page.button("radioButton_useGearSet")->click();
    commit(page, "lineEdit_4", QStringLiteral("3"));
    QVERIFY(page.axis()->save());
    page.page.reset();
    page.project.reopen();
    page.open();
    QVERIFY(page.button("checkBox_Reverse")->isChecked());
    QVERIFY(!page.decimalBox()->isChecked());
    QCOMPARE(page.pulses()->text(), QStringLiteral("1f4"));
    QCOMPARE(page.edit("lineEdit_2")->text(), QStringLiteral("2.250000"));
    QVERIFY(page.button("radioButton_useGearSet")->isChecked());
    QCOMPARE(page.edit("lineEdit_4")->text(), QStringLiteral("3"));
}

QTEST_MAIN(DocumentSetWidgetTest)
#include "DocumentSetWidgetTest.moc"
