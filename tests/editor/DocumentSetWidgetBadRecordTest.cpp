#include "axisdata/AxisConstants.h"
#include "tests/editor/UnitFields.h"
#include "tests/support/MissingKeys.h"

#include <QDir>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

QStringList allControllers()
{
    const QStringList files
        = QDir(latin(KESTRUN_CONTROLLER_DIR)).entryList({ latin("*.json") }, QDir::Files, QDir::Name);
    QStringList models;
    for (const QString& file : files)
        models.append(file.chopped(5));
    return models;
}

const QStringList types{ AxisTypePulse, AxisTypeEncoder, AxisTypeVirtual, AxisTypeEtherCAT };

/// Empty, no number, negative, out of range, far out of range, doubtful words, and what would break a text apart.
QStringList badTexts()
{
    return { QString(), latin("rubbish"), latin("-1"), latin("0"), latin("2147483648"), latin("4294967295"),
        latin("4294967296"), latin("99999999999999999999"), latin("1.5"), latin("1e300"), latin("nan"), latin("inf"),
        latin("true"), latin("FALSE"), QString(400, QLatin1Char('9')), latin("1\n2"), QString(QChar(0xff11)),
        latin("<b>1</b>"), latin("16#FF") };
}

using Texts = QMap<QString, QString>;

Texts textsOf(const UnitPage& page)
{
    Texts texts;
    for (const QString& key : AxisUnitDefaults.keys())
        texts.insert(key, page.axis()->property(key, QString()));
    return texts;
}

/// What a page shows that does not follow from the texts before it was opened.
QStringList wronglyShown(const UnitPage& page, const Texts& texts)
{
    QStringList wrong;
    const auto check = [&](bool right, const char* what) {
        if (!right)
            wrong.append(latin(what));
    };
    const auto isTrue = [&](const char* key) { return texts.value(latin(key)).toUpper() == QLatin1String("TRUE"); };
    const bool decimal = isTrue("PulseCountDecOrHex");
    const bool gear = isTrue("UseGearEnable");
    check(page.button("checkBox_Reverse")->isChecked() == isTrue("ReverseEnable"), "checkBox_Reverse");
    check(page.decimalBox()->isChecked() == decimal, "checkBox_decimalDisplayPulse");
    check(page.find<QLabel>("label_19")->isHidden() == decimal, "label_19");
    check(page.button("radioButton_unUsedGear")->isChecked() == !gear, "radioButton_unUsedGear");
    check(page.button("radioButton_useGearSet")->isChecked() == gear, "radioButton_useGearSet");
    check(page.edit("lineEdit_2")->isEnabled() == !gear, "lineEdit_2 enabled");
    for (const char* name : { "lineEdit_3", "lineEdit_4", "lineEdit_5" })
        check(page.edit(name)->isEnabled() == gear, name);
    // In decimal display as it stands, however bad; in hexadecimal display what a 32-bit number can be made of it.
    const QString count = texts.value(latin("PulseCountPerCircle"));
    check(page.pulses()->text() == (decimal ? count : QString::number(count.toUInt(), 16)), "pulse count");
    for (const UnitPageField& field : unitPageFields)
        check(page.edit(field.name)->text() == texts.value(latin(field.key)), field.key);
    return wrong;
}

/// The texts as an opened page leaves them: the display is brought into its normal form, and nothing else.
Texts afterOpening(Texts texts)
{
    QString& display = texts[latin("PulseCountDecOrHex")];
    display = display.toUpper() == AxisTrue ? AxisTrue : AxisFalse;
    return texts;
}

void addTypesAndControllers()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("controller");
    for (const QString& type : types)
        for (const QString& controller : allControllers())
            QTest::addRow("%s on %s", qPrintable(type), qPrintable(controller)) << type << controller;
}

const QStringList none;

} // namespace

class DocumentSetWidgetBadRecordTest : public QObject {
    Q_OBJECT

private slots:
    void everyKeyBad_data();
    void everyKeyBad();
    void oneKeyBad_data();
    void oneKeyBad();
    void keysAbsent_data();
    void keysAbsent();
    void badCountInEitherDisplay_data();
    void badCountInEitherDisplay();
    void refusedEditShowsTheBadText_data();
    void refusedEditShowsTheBadText();

private:
    static void openAndCheck(UnitPage& page);
};

/// Opens the page on the record as it stands.
void DocumentSetWidgetBadRecordTest::openAndCheck(UnitPage& page)
{
    const Texts before = textsOf(page);
    page.open();
    QCOMPARE(wronglyShown(page, before), none);
    QCOMPARE(textsOf(page), afterOpening(before));
}

void DocumentSetWidgetBadRecordTest::everyKeyBad_data()
{
    addTypesAndControllers();
}

void DocumentSetWidgetBadRecordTest::everyKeyBad()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    UnitPage page(type, controller);
    for (const QString& text : badTexts()) {
        for (const QString& key : AxisUnitDefaults.keys())
            page.axis()->setProperty(key, text);
        openAndCheck(page);
        page.page->axisTypeChanged();
        QCOMPARE(textsOf(page), Texts(AxisUnitDefaults));
        QCOMPARE(wronglyShown(page, AxisUnitDefaults), none);
    }
}

void DocumentSetWidgetBadRecordTest::oneKeyBad_data()
{
    addTypesAndControllers();
}

void DocumentSetWidgetBadRecordTest::oneKeyBad()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    UnitPage page(type, controller);
    for (const QString& spoiled : AxisUnitDefaults.keys()) {
        for (const char* text : { "", "rubbish", "4294967295", "-1", "TRUE" }) {
            for (const QString& key : AxisUnitDefaults.keys())
                page.axis()->setProperty(key, key == spoiled ? latin(text) : AxisUnitDefaults.value(key));
            openAndCheck(page);
        }
    }
}

void DocumentSetWidgetBadRecordTest::keysAbsent_data()
{
    addTypesAndControllers();
}

void DocumentSetWidgetBadRecordTest::keysAbsent()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    UnitPage page(type, controller);
    removeAxisKeys(page.project, page.id, AxisUnitDefaults.keys());
    for (const QString& key : AxisUnitDefaults.keys())
        QCOMPARE(page.stored(key.toLatin1()), latin("(absent)"));
    page.open();
    QCOMPARE(wronglyShown(page, {}), none);
    // The display is told in its normal form; the other keys stay away until somebody sets them.
    for (const QString& key : AxisUnitDefaults.keys())
        QCOMPARE(
            page.stored(key.toLatin1()), key == QLatin1String("PulseCountDecOrHex") ? AxisFalse : latin("(absent)"));
    page.page->axisTypeChanged();
    QCOMPARE(textsOf(page), Texts(AxisUnitDefaults));
}

void DocumentSetWidgetBadRecordTest::badCountInEitherDisplay_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("hexadecimal");
    const auto row = [](const char* name, const QString& stored, const char* hexadecimal) {
        QTest::newRow(name) << stored << latin(hexadecimal);
    };
    row("an empty count", QString(), "0");
    row("a word", latin("rubbish"), "0");
    row("a negative count", latin("-1"), "0");
    row("a fraction", latin("1.5"), "0");
    row("a count above the highest", latin("2147483648"), "80000000");
    row("the largest unsigned number", latin("4294967295"), "ffffffff");
    row("more than any unsigned number", latin("4294967296"), "0");
    row("hexadecimal digits", latin("ff"), "0");
    row("leading zeros", latin("00255"), "ff");
    row("full-width digits", QStringLiteral("\uff11\uff12"), "0");
}

void DocumentSetWidgetBadRecordTest::badCountInEitherDisplay()
{
    QFETCH(QString, stored);
    QFETCH(QString, hexadecimal);
    UnitPage page;
    page.axis()->setProperty(latin("PulseCountPerCircle"), stored);
    page.open();
    QCOMPARE(page.pulses()->text(), stored);
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), hexadecimal);
    page.open();
    QCOMPARE(page.pulses()->text(), hexadecimal);
    page.decimalBox()->click();
    QCOMPARE(page.pulses()->text(), stored);
    QCOMPARE(page.stored("PulseCountPerCircle"), stored);
}

void DocumentSetWidgetBadRecordTest::refusedEditShowsTheBadText_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : { "", "rubbish", "4294967295", "-1" })
        QTest::addRow("stored \"%s\"", text) << latin(text);
}

/// What is bad already is put back as it is; only the pulse count is shown as the number that it reads as.
void DocumentSetWidgetBadRecordTest::refusedEditShowsTheBadText()
{
    QFETCH(QString, text);
    UnitPage page;
    for (const UnitPageField& field : unitPageFields)
        page.axis()->setProperty(latin(field.key), text);
    page.axis()->setProperty(latin("PulseCountPerCircle"), text);
    page.store("UseGearEnable", "TRUE");
    page.openWindow();
    for (const UnitPageField& field : unitPageFields) {
        page.edit(field.name)->setEnabled(true);
        typeAndLeave(page, field.name, QStringLiteral("0"));
        QCOMPARE(page.edit(field.name)->text(), text);
        QCOMPARE(page.stored(field.key), text);
    }
    typeAndLeave(page, "lineEdit_PulseCountPerCicle", QStringLiteral("0"));
    QCOMPARE(page.pulses()->text(), QString::number(text.toUInt()));
    QCOMPARE(page.stored("PulseCountPerCircle"), text);
}

QTEST_MAIN(DocumentSetWidgetBadRecordTest)
#include "DocumentSetWidgetBadRecordTest.moc"
