#include "tests/editor/UnitFields.h"
#include "tests/support/RecordWrites.h"

#include <cmath>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// What is stored before each attempt, in no normal form.
const QString former = QStringLiteral("0040");

bool isWithin(bool real, double number)
{
    return std::isfinite(number) && number >= (real ? 0.01 : 1) && number <= (real ? 9999999 : 2147483647);
}

void click(UnitPage& page, const char* elsewhere)
{
    QTest::mouseClick(page.edit(elsewhere), Qt::LeftButton);
}

} // namespace

/// Edits by real keys and clicks: what commits them, what is refused, and what is there again after a restart.
class DocumentSetWidgetEditTest : public QObject {
    Q_OBJECT

private slots:
    void leavingCommits_data();
    void leavingCommits();
    void rubbishHoldsTheBounds_data();
    void rubbishHoldsTheBounds();
    void rubbishInThePulseCount_data();
    void rubbishInThePulseCount();
    void whatTheFieldTakes_data();
    void whatTheFieldTakes();
    void roundTrip_data();
    void roundTrip();
};

void DocumentSetWidgetEditTest::leavingCommits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("byClick");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("stored");
    for (const bool byClick : { false, true }) {
        const char* const how = byClick ? "a click elsewhere" : "Tab";
        const auto row = [&](const char* name, const char* key, const char* typed, const char* shown,
                             const char* stored, const char* what) {
            QTest::addRow("%s of %s by %s", what, key, how)
                << latin(name) << latin(key) << byClick << latin(typed) << latin(shown) << latin(stored);
        };
        const char* const count = "PulseCountPerCircle";
        row("lineEdit_PulseCountPerCicle", count, "0012", "0012", "12", "an accepted edit");
        row("lineEdit_PulseCountPerCicle", count, "0", "40", "0040", "a refused edit");
        for (const UnitPageField& field : unitPageFields) {
            row(field.name, field.key, "12", field.real ? "12.000000" : "12", field.real ? "12.000000" : "12",
                "an accepted edit");
            row(field.name, field.key, "0", "0040", "0040", "a refused edit");
        }
    }
}

void DocumentSetWidgetEditTest::leavingCommits()
{
    QFETCH(QString, name);
    QFETCH(QString, key);
    QFETCH(bool, byClick);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QString, stored);
    UnitPage page;
    page.axis()->setProperty(key, former);
    const bool gear = key != QLatin1String("UnUseGearValue");
    page.store("UseGearEnable", gear ? "TRUE" : "FALSE");
    page.openWindow();
    QLineEdit* edit = page.edit(name.toLatin1());
    QTest::mouseClick(edit, Qt::LeftButton);
    QVERIFY(edit->hasFocus());
    QTest::keySequence(edit, QKeySequence::SelectAll);
    QTest::keyClicks(edit, typed);
    RecordWrites writes(page.axis());
    if (byClick)
        click(page,
            name == QLatin1String("lineEdit_PulseCountPerCicle") ? (gear ? "lineEdit_3" : "lineEdit_2")
                                                                 : "lineEdit_PulseCountPerCicle");
    else
        QTest::keyClick(edit, Qt::Key_Tab);
    QVERIFY(!edit->hasFocus());
    QCOMPARE(edit->text(), shown);
    QCOMPARE(page.axis()->property(key, QString()), stored);
    QCOMPARE(writes.takeKeys(), stored == former ? QStringList() : QStringList(key));
}

void DocumentSetWidgetEditTest::rubbishHoldsTheBounds_data()
{
    QTest::addColumn<int>("field");
    for (int i = 0; i < int(std::size(unitPageFields)); ++i)
        QTest::newRow(unitPageFields[i].key) << i;
}

void DocumentSetWidgetEditTest::rubbishHoldsTheBounds()
{
    QFETCH(int, field);
    const UnitPageField& row = unitPageFields[field];
    UnitPage page;
    page.store("UseGearEnable", field == 0 ? "FALSE" : "TRUE");
    page.openWindow();
    QLineEdit* edit = page.edit(row.name);
    for (const NumberTyping::Attempt& attempt : NumberTyping::attempts()) {
        page.store(row.key, "0040");
        edit->setText(former);
        const NumberTyping::Taken taken = NumberTyping::enterAndTab(edit, attempt);
        const double number = row.real ? taken.left.toDouble() : taken.left.toUInt();
        QString shown = taken.left;
        QString stored = former;
        if (taken.finished && isWithin(row.real, number))
            shown = stored = row.real ? QString::number(number, 'f', 6) : taken.left;
        else if (taken.finished)
            shown = former;
        QCOMPARE(edit->text(), shown);
        QCOMPARE(page.stored(row.key), stored);
    }
}

void DocumentSetWidgetEditTest::rubbishInThePulseCount_data()
{
    QTest::addColumn<int>("base");
    QTest::newRow("decimal display") << 10;
    QTest::newRow("hexadecimal display") << 16;
}

void DocumentSetWidgetEditTest::rubbishInThePulseCount()
{
    QFETCH(int, base);
    UnitPage page;
    page.store("PulseCountDecOrHex", base == 10 ? "TRUE" : "FALSE");
    page.openWindow();
    for (const NumberTyping::Attempt& attempt : NumberTyping::attempts()) {
        page.store("PulseCountPerCircle", "0040");
        page.pulses()->setText(QStringLiteral("9"));
        const NumberTyping::Taken taken = NumberTyping::enterAndTab(page.pulses(), attempt);
        const uint number = taken.left.toUInt(nullptr, base);
        const bool stores = taken.finished && isWithin(false, number);
        QCOMPARE(page.stored("PulseCountPerCircle"), stores ? QString::number(number) : former);
        // What is taken stays as typed; what is refused gives way to the stored number in the digits of the display.
        QCOMPARE(page.pulses()->text(), stores || !taken.finished ? taken.left : QString::number(40, base));
    }
}

void DocumentSetWidgetEditTest::whatTheFieldTakes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("how");
    QTest::addColumn<QString>("real");
    QTest::addColumn<QString>("whole");
    QTest::addColumn<QString>("hexadecimal");
    const auto row = [](const char* name, const QString& text, NumberTyping::How how, const char* real,
                         const char* whole, const char* hexadecimal) {
        QTest::newRow(name) << text << int(how) << latin(real) << latin(whole) << latin(hexadecimal);
    };
    const QString wide = QStringLiteral("\uff11\uff12\uff13");
    row("a typed comma is left out", latin("1,5"), NumberTyping::Keys, "15", "15", "15");
    row("a pasted comma refuses the text", latin("1,5"), NumberTyping::Paste, "", "", "");
    row("a typed exponent is left out but is a digit too", latin("1e3"), NumberTyping::Keys, "13", "13", "1e3");
    row("a pasted exponent refuses the text", latin("1e3"), NumberTyping::Paste, "", "", "1e3");
    row("typed full-width digits are left out", wide, NumberTyping::Keys, "", "", "");
    row("pasted full-width digits refuse the text", wide, NumberTyping::Paste, "", "", "");
    row("a typed line break is no character", latin("12\n34"), NumberTyping::Keys, "1234", "1234", "1234");
    row("a pasted line break refuses the text", latin("12\n34"), NumberTyping::Paste, "", "", "");
    row("a typed prefix is left out", latin("16#ff"), NumberTyping::Keys, "16", "16", "16ff");
    row("a pasted prefix refuses the text", latin("16#ff"), NumberTyping::Paste, "", "", "");
}

void DocumentSetWidgetEditTest::whatTheFieldTakes()
{
    QFETCH(QString, text);
    QFETCH(int, how);
    QFETCH(QString, real);
    QFETCH(QString, whole);
    QFETCH(QString, hexadecimal);
    UnitPage page;
    page.store("UseGearEnable", "TRUE");
    page.openWindow();
    const auto taken = [&](const char* name) {
        NumberTyping::enter(page.edit(name), text, NumberTyping::How(how));
        return page.edit(name)->text();
    };
    QCOMPARE(taken("lineEdit_3"), real);
    QCOMPARE(taken("lineEdit_4"), whole);
    QCOMPARE(taken("lineEdit_PulseCountPerCicle"), whole);
    page.decimalBox()->click();
    QCOMPARE(taken("lineEdit_PulseCountPerCicle"), hexadecimal);
}

void DocumentSetWidgetEditTest::roundTrip_data()
{
    QTest::addColumn<bool>("gear");
    QTest::newRow("without a gear") << false;
    QTest::newRow("with a gear") << true;
}

/// Every control is used by hand, saved, closed and opened again.
void DocumentSetWidgetEditTest::roundTrip()
{
    QFETCH(bool, gear);
    UnitPage page;
    page.store("UseGearEnable", gear ? "FALSE" : "TRUE");
    page.openWindow();
    typeAndLeave(page, "lineEdit_PulseCountPerCicle", QStringLiteral("500"));
    page.button("checkBox_Reverse")->click();
    page.decimalBox()->click();
    page.button(gear ? "radioButton_unUsedGear" : "radioButton_useGearSet")->click();
    page.button(gear ? "radioButton_useGearSet" : "radioButton_unUsedGear")->click();
    QMap<QString, QString> shown{ { latin("lineEdit_PulseCountPerCicle"), latin("1f4") } };
    for (const UnitPageField& field : unitPageFields) {
        const bool usable = (latin(field.name) == QLatin1String("lineEdit_2")) != gear;
        QCOMPARE(page.edit(field.name)->isEnabled(), usable);
        if (usable)
            typeAndLeave(page, field.name, field.real ? QStringLiteral("2.25") : QStringLiteral("0077"));
        shown.insert(latin(field.name),
            usable ? (field.real ? latin("2.250000") : latin("0077")) : page.edit(field.name)->text());
    }
    QVERIFY(page.axis()->save());
    page.page.reset();
    page.project.reopen();
    page.open();
    QVERIFY(page.button("checkBox_Reverse")->isChecked());
    QVERIFY(!page.decimalBox()->isChecked());
    QVERIFY(!page.find<QLabel>("label_19")->isHidden());
    QCOMPARE(page.button("radioButton_useGearSet")->isChecked(), gear);
    QCOMPARE(page.button("radioButton_unUsedGear")->isChecked(), !gear);
    for (auto entry = shown.begin(); entry != shown.end(); ++entry)
        QCOMPARE(page.edit(entry.key().toLatin1())->text(), entry.value());
    QCOMPARE(page.stored("PulseCountPerCircle"), QStringLiteral("500"));
}

QTEST_MAIN(DocumentSetWidgetEditTest)
#include "DocumentSetWidgetEditTest.moc"
