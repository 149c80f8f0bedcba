#include "tests/pages/ModePage.h"
#include "tests/support/RecordWrites.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTest>

namespace {

const QString yes = QStringLiteral("TRUE");
const QString no = QStringLiteral("FALSE");

QStringList one(const char* text)
{
    return { QString::fromLatin1(text) };
}

} // namespace

class ModelAndParamtSetWidgetTest : public QObject {
    Q_OBJECT

private slots:
    void flagsAreReadInAnyCase_data();
    void flagsAreReadInAnyCase();
    void textsAreShownAsStored();
    void softLimitEnablesItsFields();
    void modeDecidesTheThirdRow_data();
    void modeDecidesTheThirdRow();
    void radioButtonsWriteWhatTheyBecome();
    void checkBoxesWriteAndEnable_data();
    void checkBoxesWriteAndEnable();
    void partlyCheckedBoxCountsAsOff();
    void logicBoxesPileUp();
    void logicBoxesIgnoreTheRecord();
    void logicBoxesWrite_data();
    void logicBoxesWrite();
    void stackTakesTheHeightOfItsPage();
    void widthUnitByClick();
    void widthIsLoadedByItsUnit_data();
    void widthIsLoadedByItsUnit();
};

void ModelAndParamtSetWidgetTest::flagsAreReadInAnyCase_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checked");
    const auto rows = [](const char* key, const char* button, bool unknown, bool whenTrue = true) {
        const auto row = [&](const char* text, bool checked) {
            QTest::addRow("%s \"%s\" on %s", key, text, button)
                << QString::fromLatin1(key) << QString::fromLatin1(button) << QString::fromLatin1(text) << checked;
        };
        row("TRUE", whenTrue);
        row("true", whenTrue);
        row("True", whenTrue);
        row("FALSE", !whenTrue);
        row("false", !whenTrue);
        row("", unknown);
        row("maybe", unknown);
        row("1", unknown);
    };
    rows("EncoderMode", "radioButton", true, false);
    rows("EncoderMode", "radioButton_2", false);
    rows("ModeSet", "radioButton_3", true, false);
    rows("ModeSet", "radioButton_4", false);
    rows("SoftLimitEnable", "checkBox", false);
    rows("ErrorStopEnable", "checkBox_2", true);
    rows("CompareOutEnable", "checkBox_3", true);
    rows("PresetEnable", "checkBox_4", true);
    rows("Probe1Enable", "probe1checkBox", true);
    rows("Probe2Enable", "probe2checkBox", true);
    rows("CompareOutputWidthUnit", "radioButton_5", false);
    rows("CompareOutputWidthUnit", "radioButton_6", true, false);
}

void ModelAndParamtSetWidgetTest::flagsAreReadInAnyCase()
{
    QFETCH(QString, key);
    QFETCH(QString, button);
    QFETCH(QString, text);
    QFETCH(bool, checked);
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(key, text);
    page.open();
    QCOMPARE(page.find<QAbstractButton>(button.toLatin1())->isChecked(), checked);
}

void ModelAndParamtSetWidgetTest::textsAreShownAsStored()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    const QVector<QPair<QString, QString>> fields{ { QStringLiteral("lineEdit"), QStringLiteral("SoftLimitNeg") },
        { QStringLiteral("lineEdit_2"), QStringLiteral("SoftLimitPos") },
        { QStringLiteral("lineEdit_12"), QStringLiteral("RotationPeriod") },
        { QStringLiteral("lineEdit_3"), QStringLiteral("LimitDec") },
        { QStringLiteral("lineEdit_4"), QStringLiteral("AxisErrorDec") },
        { QStringLiteral("lineEdit_5"), QStringLiteral("FollowErrorThreshold") },
        { QStringLiteral("lineEdit_6"), QStringLiteral("VelocityThreshold") },
        { QStringLiteral("lineEdit_7"), QStringLiteral("MaxVel") },
        { QStringLiteral("lineEdit_8"), QStringLiteral("MaxAcc") },
        { QStringLiteral("lineEdit_11"), QStringLiteral("JogMaxVel") },
        { QStringLiteral("lineEdit_9"), QStringLiteral("PosTorqueMaxValue") },
        { QStringLiteral("lineEdit_10"), QStringLiteral("NegTorqueMaxValue") },
        { QStringLiteral("lineEdit_13"), QStringLiteral("InputSignalFilterTime") } };
    for (int i = 0; i < fields.size(); ++i)
        page.store(fields.at(i).second, QStringLiteral("0%1.50 x").arg(i));
    page.open();
    for (int i = 0; i < fields.size(); ++i) {
        const QString text = QStringLiteral("0%1.50 x").arg(i);
        QCOMPARE(page.edit(fields.at(i).first.toLatin1())->text(), text);
        QCOMPARE(page.stored(fields.at(i).second), text);
    }
}

void ModelAndParamtSetWidgetTest::softLimitEnablesItsFields()
{
    for (const bool on : { true, false }) {
        ModePage page(QStringLiteral("Axis_EtherCAT"));
        page.store(QStringLiteral("SoftLimitEnable"), on ? yes : no);
        page.openWindow();
        QCOMPARE(page.edit("lineEdit")->isEnabled(), on);
        QCOMPARE(page.edit("lineEdit_2")->isEnabled(), on);
        RecordWrites writes(page.axis());
        page.find<QCheckBox>("checkBox")->click();
        QCOMPARE(writes.take(), one(on ? "SoftLimitEnable=FALSE" : "SoftLimitEnable=TRUE"));
        QCOMPARE(page.edit("lineEdit")->isEnabled(), !on);
        QCOMPARE(page.edit("lineEdit_2")->isEnabled(), !on);
    }
}

void ModelAndParamtSetWidgetTest::modeDecidesTheThirdRow_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("heading");
    QTest::newRow("a linear axis has soft limits") << no << 0 << QStringLiteral("Soft Limit");
    QTest::newRow("a rotating axis has a period") << yes << 1 << QStringLiteral("Period Setting");
    QTest::newRow("an unknown mode is linear") << QString() << 0 << QStringLiteral("Soft Limit");
}

void ModelAndParamtSetWidgetTest::modeDecidesTheThirdRow()
{
    QFETCH(QString, mode);
    QFETCH(int, page);
    QFETCH(QString, heading);
    ModePage axis(QStringLiteral("Axis_Pulse"));
    axis.store(QStringLiteral("ModeSet"), mode);
    axis.open();
    const auto* const stack = axis.find<QStackedWidget>("stackedWidget");
    QCOMPARE(stack->currentIndex(), page);
    QCOMPARE(axis.find<QLabel>("label_4")->text(), heading);
    QVERIFY(stack->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(axis.stored(QStringLiteral("ModeSet")), mode);
}

void ModelAndParamtSetWidgetTest::radioButtonsWriteWhatTheyBecome()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(QStringLiteral("SoftLimitNeg"), QStringLiteral("-5"));
    page.openWindow();
    RecordWrites writes(page.axis());
    const auto click = [&](const char* name) {
        QTest::mouseClick(page.find<QRadioButton>(name), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    };
    click("radioButton_2");
    QCOMPARE(writes.take(), one("EncoderMode=TRUE"));
    QVERIFY(!page.find<QRadioButton>("radioButton")->isChecked());
    click("radioButton");
    QCOMPARE(writes.take(), one("EncoderMode=FALSE"));
    QVERIFY(!page.find<QRadioButton>("radioButton_2")->isChecked());
    click("radioButton");
    QCOMPARE(writes.take(), QStringList());
    click("radioButton_4");
    QCOMPARE(writes.take(), one("ModeSet=TRUE"));
    QCOMPARE(page.find<QLabel>("label_4")->text(), QStringLiteral("Period Setting"));
    QVERIFY(page.edit("lineEdit_12")->isVisible());
    QVERIFY(!page.edit("lineEdit")->isVisible());
    QCOMPARE(page.stored(QStringLiteral("SoftLimitNeg")), QStringLiteral("-5"));
    click("radioButton_3");
    QCOMPARE(writes.take(), one("ModeSet=FALSE"));
    QCOMPARE(page.find<QLabel>("label_4")->text(), QStringLiteral("Soft Limit"));
    QVERIFY(page.edit("lineEdit")->isVisible());
    QVERIFY(!page.edit("lineEdit_12")->isVisible());
}

void ModelAndParamtSetWidgetTest::checkBoxesWriteAndEnable_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("enabledByIt");
    QTest::newRow("checkBox_2") << QStringLiteral("ErrorStopEnable") << QStringList();
    QTest::newRow("checkBox_3") << QStringLiteral("CompareOutEnable")
                                << QStringList{ QStringLiteral("compareOutputPinCheckBox"),
                                       QStringLiteral("lineEdit_14"), QStringLiteral("radioButton_5"),
                                       QStringLiteral("radioButton_6") };
    QTest::newRow("checkBox_4") << QStringLiteral("PresetEnable") << one("inputPinComboBox");
    QTest::newRow("probe1checkBox") << QStringLiteral("Probe1Enable") << one("probe1ComboBox");
    QTest::newRow("probe2checkBox") << QStringLiteral("Probe2Enable") << one("probe2ComboBox");
}

void ModelAndParamtSetWidgetTest::checkBoxesWriteAndEnable()
{
    QFETCH(QString, key);
    QFETCH(QStringList, enabledByIt);
    for (const bool on : { true, false }) {
        ModePage page(QStringLiteral("Axis_Encoder"));
        page.store(key, on ? yes : no);
        page.open();
        auto* const box = page.find<QCheckBox>(QTest::currentDataTag());
        QCOMPARE(box->isChecked(), on);
        const auto enabled = [&](bool state) {
            for (const QString& name : enabledByIt)
                if (page.find<QWidget>(name.toLatin1())->isEnabledTo(page.page.get()) != state)
                    return false;
            return true;
        };
        QVERIFY(enabled(on));
        RecordWrites writes(page.axis());
        box->click();
        QCOMPARE(writes.take(), QStringList{ key + (on ? QStringLiteral("=FALSE") : QStringLiteral("=TRUE")) });
        QVERIFY(enabled(!on));
        box->click();
        QCOMPARE(page.stored(key), on ? yes : no);
        QVERIFY(enabled(on));
    }
}

void ModelAndParamtSetWidgetTest::partlyCheckedBoxCountsAsOff()
{
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.store(QStringLiteral("Probe1Enable"), yes);
    page.open();
    page.find<QCheckBox>("probe1checkBox")->setTristate(true);
    page.find<QCheckBox>("probe1checkBox")->setCheckState(Qt::PartiallyChecked);
    QCOMPARE(page.stored(QStringLiteral("Probe1Enable")), no);
    QVERIFY(!page.combo("probe1ComboBox")->isEnabled());
}

void ModelAndParamtSetWidgetTest::logicBoxesPileUp()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.open();
    const QStringList once{ QStringLiteral("Positive Logic"), QStringLiteral("Negitive Logic") };
    for (const char* name : { "HardLimPosBox", "HardLimNegBox" }) {
        QCOMPARE(page.entries(name), once);
        QCOMPARE(page.combo(name)->currentIndex(), 0);
    }
    page.combo("HardLimPosBox")->setCurrentIndex(1);
    page.page->axisTypeChanged();
    for (const char* name : { "HardLimPosBox", "HardLimNegBox" })
        QCOMPARE(page.entries(name), once + once);
    QCOMPARE(page.combo("HardLimPosBox")->currentIndex(), 1);
    QCOMPARE(page.combo("HardLimNegBox")->currentIndex(), 0);
    QCOMPARE(page.stored(QStringLiteral("HardLimitPos")), no);
    page.page->updateWidget();
    QCOMPARE(page.combo("HardLimPosBox")->count(), 4);
}

void ModelAndParamtSetWidgetTest::logicBoxesIgnoreTheRecord()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(QStringLiteral("HardLimitPos"), yes);
    page.store(QStringLiteral("HardLimitNeg"), yes);
    page.open();
    QCOMPARE(page.combo("HardLimPosBox")->currentText(), QStringLiteral("Positive Logic"));
    QCOMPARE(page.combo("HardLimNegBox")->currentText(), QStringLiteral("Positive Logic"));
    QCOMPARE(page.stored(QStringLiteral("HardLimitPos")), yes);
    QCOMPARE(page.stored(QStringLiteral("HardLimitNeg")), yes);
}

void ModelAndParamtSetWidgetTest::logicBoxesWrite_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("HardLimPosBox") << QStringLiteral("HardLimitPos");
    QTest::newRow("HardLimNegBox") << QStringLiteral("HardLimitNeg");
}

void ModelAndParamtSetWidgetTest::logicBoxesWrite()
{
    QFETCH(QString, key);
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.open();
    page.page->axisTypeChanged();
    QComboBox* box = page.combo(QTest::currentDataTag());
    const auto storedAt = [&](int index) {
        box->setCurrentIndex(index);
        return page.stored(key);
    };
    QCOMPARE(storedAt(1), yes);
    QCOMPARE(storedAt(0), no);
    // The item of the pile-up says "Positive Logic" again, and counts as negative all the same.
    QCOMPARE(box->itemText(2), QStringLiteral("Positive Logic"));
    QCOMPARE(storedAt(2), yes);
    QCOMPARE(storedAt(3), yes);
    QCOMPARE(page.stored(key == QLatin1String("HardLimitPos") ? QStringLiteral("HardLimitNeg")
                                                              : QStringLiteral("HardLimitPos")),
        no);
}

void ModelAndParamtSetWidgetTest::stackTakesTheHeightOfItsPage()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.openWindow();
    const auto* const stack = page.find<QStackedWidget>("stackedWidget");
    const int linear = stack->height();
    QCOMPARE(stack->widget(0)->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(stack->widget(0)->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(stack->widget(1)->sizePolicy().verticalPolicy(), QSizePolicy::Ignored);
    QCOMPARE(stack->widget(1)->sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
    page.find<QRadioButton>("radioButton_4")->click();
    QCoreApplication::processEvents();
    QCOMPARE(stack->widget(0)->sizePolicy().verticalPolicy(), QSizePolicy::Ignored);
    QCOMPARE(stack->widget(1)->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QTRY_VERIFY(stack->height() < linear);
}

void ModelAndParamtSetWidgetTest::widthUnitByClick()
{
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.store(QStringLiteral("CompareOutEnable"), yes);
    page.store(QStringLiteral("CompareOutputWidth"), QStringLiteral("12.75"));
    page.open();
    RecordWrites writes(page.axis());
    QCOMPARE(page.edit("lineEdit_14")->text(), QStringLiteral("12.8"));
    page.find<QRadioButton>("radioButton_5")->click();
    QCOMPARE(writes.take(), one("CompareOutputWidthUnit=TRUE"));
    QCOMPARE(page.find<QLabel>("label_47")->text(), QStringLiteral("ms"));
    QCOMPARE(page.edit("lineEdit_14")->text(), QStringLiteral("12"));
    QCOMPARE(page.edit("lineEdit_14")->validator()->metaObject()->className(), "RegExpValidator");
    page.find<QRadioButton>("radioButton_6")->click();
    QCOMPARE(writes.take(), one("CompareOutputWidthUnit=FALSE"));
    QCOMPARE(page.find<QLabel>("label_47")->text(), QStringLiteral("unit"));
    QCOMPARE(page.edit("lineEdit_14")->text(), QStringLiteral("12.8"));
    const auto* const real = qobject_cast<const QDoubleValidator*>(page.edit("lineEdit_14")->validator());
    QVERIFY(real);
    QCOMPARE(real->decimals(), 1);
    QCOMPARE(page.stored(QStringLiteral("CompareOutputWidth")), QStringLiteral("12.75"));
}

void ModelAndParamtSetWidgetTest::widthIsLoadedByItsUnit_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const QString& unit, const char* width, const char* shown) {
        QTest::newRow(name) << unit << QString::fromLatin1(width) << QString::fromLatin1(shown);
    };
    row("milliseconds are cut", yes, "9.99", "9");
    row("negative milliseconds are cut towards 0", yes, "-9.99", "-9");
    row("milliseconds that are no number", yes, "rubbish", "0");
    row("milliseconds beyond any integer", yes, "1e30", "2147483647");
    row("milliseconds below any integer", yes, "-1e30", "-2147483648");
    row("milliseconds of nan", yes, "nan", "0");
    row("units have one digit", no, "9.96", "10.0");
    row("units that are no number", no, "rubbish", "0.0");
    row("an empty width", no, "", "0.0");
    row("an unknown unit is no milliseconds", QStringLiteral("maybe"), "3", "3.0");
}

void ModelAndParamtSetWidgetTest::widthIsLoadedByItsUnit()
{
    QFETCH(QString, unit);
    QFETCH(QString, width);
    QFETCH(QString, shown);
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.store(QStringLiteral("CompareOutputWidthUnit"), unit);
    page.store(QStringLiteral("CompareOutputWidth"), width);
    page.open();
    QCOMPARE(page.edit("lineEdit_14")->text(), shown);
    QCOMPARE(page.stored(QStringLiteral("CompareOutputWidth")), width);
    const bool milliseconds = unit == yes;
    const QValidator* validator = page.edit("lineEdit_14")->validator();
    if (milliseconds)
        QCOMPARE(validator, page.edit("lineEdit_13")->validator());
    else
        QCOMPARE(qobject_cast<const QDoubleValidator*>(validator)->decimals(), 1);
}

QTEST_MAIN(ModelAndParamtSetWidgetTest)
#include "ModelAndParamtSetWidgetTest.moc"
