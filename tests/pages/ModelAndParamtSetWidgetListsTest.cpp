#include "tests/pages/ModePage.h"
#include "tests/support/RecordWrites.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QJsonObject>
#include <QRadioButton>
#include <QTest>

namespace {

const QString pulse = QStringLiteral("Axis_Pulse");
const QString encoder = QStringLiteral("Axis_Encoder");
const QString ethercat = QStringLiteral("Axis_EtherCAT");

/// The key of a point of the controller, and its name.
QPair<int, QString> point(const ModePage& page, const QString& name)
{
    return { page.project.axisModel()->getInputPointMap().key(name, 0), name };
}

int connections(const ModePage& page, const char* box)
{
    return connectionCount(page.combo(box), SIGNAL(currentIndexChanged(int)));
}

} // namespace

class ModelAndParamtSetWidgetListsTest : public QObject {
    Q_OBJECT

private slots:
    void listsOfAPulseAxis();
    void listsOfAnEncoderAxis_data();
    void listsOfAnEncoderAxis();
    void positionsPastTheEnd_data();
    void positionsPastTheEnd();
    void anotherPulseModeHasItsOwnPins();
    void anotherEncoderModeHasItsOwnSignals();
    void modeBoxDoesNothingOnOtherAxes();
    void refillingIsSilent();
    void firstLoadLeavesSlotsConnectedTwice();
    void noPulseOutputsEndTheUpdate();
    void hiddenCompareOutputStaysUntouched();
    void comparePinFollowsItsSwitch_data();
    void comparePinFollowsItsSwitch();
    void encoderModeButtonsByType();
    void heightOfTheInputGroup();
    void pointBoxesShowTheirPoint_data();
    void pointBoxesShowTheirPoint();
    void pointBoxesWriteTheKey_data();
    void pointBoxesWriteTheKey();
    void unknownPointStaysUntilTheUserChooses_data();
    void unknownPointStaysUntilTheUserChooses();
    void laterLoadOfPointsWritesWhatTheRecordHeld();
    void positionBoxesWriteTheirIndex_data();
    void positionBoxesWriteTheirIndex();
    void lastSignalsHaveNoFilterTime_data();
    void lastSignalsHaveNoFilterTime();
    void signalIsWrittenOnEveryAxis();
    void updateIsRepeatable();
};

void ModelAndParamtSetWidgetListsTest::listsOfAPulseAxis()
{
    ModePage page(pulse);
    page.store(QStringLiteral("PulseOutputMethod"), QStringLiteral("1"));
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("3"));
    page.store(QStringLiteral("OutputPin"), QStringLiteral("1"));
    page.store(QStringLiteral("CompareOutputPin"), QStringLiteral("2"));
    page.open();
    QCOMPARE(page.entries("pulseMethodComboBox"), page.list(QStringLiteral("PulseEncodeMode")));
    QCOMPARE(page.combo("pulseMethodComboBox")->currentIndex(), 1);
    const QString group = page.list(QStringLiteral("AxisPulseOutputDev")).at(3) + QLatin1Char('.')
        + page.list(QStringLiteral("PulseEncodeMode")).at(1);
    QVERIFY(!page.list(group).isEmpty());
    QCOMPARE(page.entries("outputPinComboBox"), page.list(group));
    QCOMPARE(page.combo("outputPinComboBox")->currentIndex(), 1);
    QVERIFY(page.combo("outputPinComboBox")->isEnabled());
    QCOMPARE(page.entries("compareOutputPinCheckBox"), page.list(QStringLiteral("HightSpeedPlusOutputPoint")));
    QCOMPARE(page.combo("compareOutputPinCheckBox")->currentIndex(), 2);
    QCOMPARE(page.combo("outputMethodComboBox")->count(), 0);
    page.combo("outputPinComboBox")->setEnabled(false);
    page.page->updateWidget();
    QVERIFY(page.combo("outputPinComboBox")->isEnabled());
}

void ModelAndParamtSetWidgetListsTest::listsOfAnEncoderAxis_data()
{
    QTest::addColumn<QString>("compareList");
    for (const QString& controller : allControllers())
        QTest::addRow("%s", qPrintable(controller))
            << (controller.startsWith(QLatin1String("NV3T_")) ? QStringLiteral("HightSpeedPlusOutputPoint")
                                                              : QStringLiteral("OutputPoint"));
}

void ModelAndParamtSetWidgetListsTest::listsOfAnEncoderAxis()
{
    QFETCH(QString, compareList);
    ModePage page(encoder, QString::fromLatin1(QTest::currentDataTag()));
    page.store(QStringLiteral("OutputMethod"), QStringLiteral("1"));
    page.store(QStringLiteral("InputSignal"), QStringLiteral("1"));
    page.store(QStringLiteral("CompareOutputPin"), QStringLiteral("1"));
    page.store(QStringLiteral("InputDevice"), QStringLiteral("4711"));
    page.open();
    const QStringList modes = page.list(QStringLiteral("EncoderEncodeMode"));
    QCOMPARE(page.entries("outputMethodComboBox"), modes);
    QCOMPARE(page.combo("outputMethodComboBox")->currentIndex(), 1);
    QCOMPARE(page.entries("inputSignalComboBox"), page.list(QString(QStringLiteral("Encoder.") + modes.at(1))));
    QCOMPARE(page.combo("inputSignalComboBox")->currentIndex(), 1);
    QCOMPARE(page.entries("compareOutputPinCheckBox"), page.list(compareList));
    QCOMPARE(page.combo("compareOutputPinCheckBox")->currentIndex(), 1);
    QCOMPARE(page.combo("pulseMethodComboBox")->count(), 0);
    QCOMPARE(page.stored(QStringLiteral("InputDevice")), QStringLiteral("4711"));
}

void ModelAndParamtSetWidgetListsTest::positionsPastTheEnd_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& type, const char* key, const char* box, const char* text,
                         const char* expected) {
        QTest::newRow(name) << type << QString::fromLatin1(key) << QString::fromLatin1(box) << QString::fromLatin1(text)
                            << QString::fromLatin1(expected);
    };
    row("pulse mode 7 of three", pulse, "PulseOutputMethod", "pulseMethodComboBox", "7", "0");
    row("pulse mode just past the end", pulse, "PulseOutputMethod", "pulseMethodComboBox", "3", "0");
    row("output pin", pulse, "OutputPin", "outputPinComboBox", "99", "0");
    row("output device", pulse, "OutputDevice", "outputPinComboBox", "8", "0");
    row("compare pin of a pulse axis", pulse, "CompareOutputPin", "compareOutputPinCheckBox", "6", "0");
    row("encoder mode", encoder, "OutputMethod", "outputMethodComboBox", "6", "0");
    row("input signal", encoder, "InputSignal", "inputSignalComboBox", "4", "0");
    row("compare pin of an encoder axis", encoder, "CompareOutputPin", "compareOutputPinCheckBox", "6", "0");
    row("a negative position reads as 0 and is no correction", pulse, "PulseOutputMethod", "pulseMethodComboBox", "-1",
        "-1");
    row("no number reads as 0 and is no correction", pulse, "PulseOutputMethod", "pulseMethodComboBox", "second",
        "second");
    row("more than an unsigned number holds reads as 0", pulse, "PulseOutputMethod", "pulseMethodComboBox",
        "4294967297", "4294967297");
    row("the largest unsigned number is past the end", pulse, "PulseOutputMethod", "pulseMethodComboBox", "4294967295",
        "0");
}

void ModelAndParamtSetWidgetListsTest::positionsPastTheEnd()
{
    QFETCH(QString, type);
    QFETCH(QString, key);
    QFETCH(QString, box);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    ModePage page(type);
    page.store(key, text);
    page.open();
    QCOMPARE(page.combo(box.toLatin1())->currentIndex(), 0);
    QCOMPARE(page.stored(key), expected);
    page.store(key, text);
    page.page->updateWidget();
    QCOMPARE(page.combo(box.toLatin1())->currentIndex(), 0);
    QCOMPARE(page.stored(key), expected);
}

void ModelAndParamtSetWidgetListsTest::anotherPulseModeHasItsOwnPins()
{
    ModePage page(pulse);
    page.store(QStringLiteral("OutputPin"), QStringLiteral("1"));
    page.open();
    const auto pins = [&](int mode) {
        return page.list(QString(page.list(QStringLiteral("AxisPulseOutputDev")).at(0) + QLatin1Char('.')
            + page.list(QStringLiteral("PulseEncodeMode")).at(mode)));
    };
    QCOMPARE(pins(1).size(), 2);
    QCOMPARE(pins(2).size(), 1);
    page.combo("pulseMethodComboBox")->setCurrentIndex(1);
    QCOMPARE(page.stored(QStringLiteral("PulseOutputMethod")), QStringLiteral("1"));
    QCOMPARE(page.entries("outputPinComboBox"), pins(1));
    QCOMPARE(page.stored(QStringLiteral("OutputPin")), QStringLiteral("1"));
    QCOMPARE(page.combo("outputPinComboBox")->currentIndex(), 1);
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("77"));
    page.combo("pulseMethodComboBox")->setCurrentIndex(2);
    QCOMPARE(page.stored(QStringLiteral("PulseOutputMethod")), QStringLiteral("2"));
    QCOMPARE(page.stored(QStringLiteral("OutputDevice")), QStringLiteral("0"));
    QCOMPARE(page.entries("outputPinComboBox"), pins(2));
    QCOMPARE(page.stored(QStringLiteral("OutputPin")), QStringLiteral("0"));
    QCOMPARE(connections(page, "outputPinComboBox"), 1);
}

void ModelAndParamtSetWidgetListsTest::anotherEncoderModeHasItsOwnSignals()
{
    ModePage page(encoder);
    page.store(QStringLiteral("InputSignal"), QStringLiteral("3"));
    page.open();
    const QStringList modes = page.list(QStringLiteral("EncoderEncodeMode"));
    const int shorter = 4;
    QVERIFY(page.list(QString(QStringLiteral("Encoder.") + modes.at(shorter))).size() <= 3);
    page.combo("outputMethodComboBox")->setCurrentIndex(2);
    QCOMPARE(page.stored(QStringLiteral("OutputMethod")), QStringLiteral("2"));
    QCOMPARE(page.stored(QStringLiteral("InputSignal")), QStringLiteral("3"));
    page.combo("outputMethodComboBox")->setCurrentIndex(shorter);
    QCOMPARE(page.stored(QStringLiteral("OutputMethod")), QString::number(shorter));
    QCOMPARE(page.entries("inputSignalComboBox"), page.list(QString(QStringLiteral("Encoder.") + modes.at(shorter))));
    QCOMPARE(page.stored(QStringLiteral("InputSignal")), QStringLiteral("0"));
    QCOMPARE(page.stored(QStringLiteral("PulseOutputMethod")), QStringLiteral("0"));
}

void ModelAndParamtSetWidgetListsTest::modeBoxDoesNothingOnOtherAxes()
{
    for (const QString& type : { QStringLiteral("Axis_Virtual"), ethercat }) {
        ModePage page(encoder);
        page.open();
        page.store(QStringLiteral("AxisType"), type);
        RecordWrites keys(page.axis());
        page.combo("outputMethodComboBox")->setCurrentIndex(2);
        QCOMPARE(keys.takeKeys(), QStringList());
    }
}

void ModelAndParamtSetWidgetListsTest::refillingIsSilent()
{
    for (const QString& type : { pulse, encoder }) {
        ModePage page(type);
        for (const char* key :
            { "PulseOutputMethod", "OutputPin", "OutputMethod", "InputSignal", "CompareOutputPin", "OutputDevice" })
            page.store(QString::fromLatin1(key), QStringLiteral("1"));
        RecordWrites keys(page.axis());
        page.open();
        page.page->updateWidget();
        page.page->updateWidget();
        QCOMPARE(keys.takeKeys(), QStringList());
    }
}

void ModelAndParamtSetWidgetListsTest::firstLoadLeavesSlotsConnectedTwice()
{
    ModePage page(pulse);
    page.open();
    for (const char* refilled : { "pulseMethodComboBox", "outputPinComboBox", "compareOutputPinCheckBox" })
        QCOMPARE(connections(page, refilled), 2);
    for (const char* other : { "outputMethodComboBox", "inputSignalComboBox", "probe1ComboBox", "HardLimPosBox" })
        QCOMPARE(connections(page, other), 1);
    page.page->updateWidget();
    for (const char* refilled : { "pulseMethodComboBox", "outputPinComboBox", "compareOutputPinCheckBox" })
        QCOMPARE(connections(page, refilled), 1);
}

void ModelAndParamtSetWidgetListsTest::noPulseOutputsEndTheUpdate()
{
    ModePage page(pulse);
    page.open();
    page.page->show();
    const QJsonObject full = TestProject::description(QStringLiteral("NV3T_70Q8"));
    const QString virtualName = full[QStringLiteral("axisTypes")].toObject()[QStringLiteral("Axis_Virtual")].toString();
    const QJsonObject bare = withList(
        withList(full, QStringLiteral("AxisType"), { virtualName }), QStringLiteral("AxisPulseOutputDev"), {});
    page.project.changeController(bare);
    page.find<QWidget>("groupBox_12")->hide();
    page.find<QRadioButton>("radioButton_2")->setEnabled(true);
    page.store(QStringLiteral("OutputPin"), QStringLiteral("9"));
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("9"));
    page.page->updateWidget();
    QCOMPARE(page.combo("outputPinComboBox")->count(), 0);
    QCOMPARE(connections(page, "outputPinComboBox"), 0);
    QCOMPARE(page.combo("pulseMethodComboBox")->count(), 3);
    QVERIFY(page.find<QWidget>("groupBox_12")->isHidden());
    QVERIFY(page.find<QRadioButton>("radioButton_2")->isEnabled());
    QCOMPARE(page.stored(QStringLiteral("OutputPin")), QStringLiteral("9"));
    QCOMPARE(page.stored(QStringLiteral("OutputDevice")), QStringLiteral("9"));
    page.project.changeController(full);
    page.page->updateWidget();
    QVERIFY(page.combo("outputPinComboBox")->count() > 0);
    QCOMPARE(connections(page, "outputPinComboBox"), 1);
    QVERIFY(!page.find<QWidget>("groupBox_12")->isHidden());
}

void ModelAndParamtSetWidgetListsTest::hiddenCompareOutputStaysUntouched()
{
    for (const char* controller : { "KM1_M16", "NV2_H48Q8E" }) {
        ModePage page(pulse, QString::fromLatin1(controller));
        page.store(QStringLiteral("CompareOutputPin"), QStringLiteral("999"));
        page.open();
        QCOMPARE(page.combo("compareOutputPinCheckBox")->count(), 0);
        QCOMPARE(page.stored(QStringLiteral("CompareOutputPin")), QStringLiteral("999"));
    }
    ModePage page(pulse, QStringLiteral("NV3T_70Q12"));
    page.open();
    const QStringList before = page.entries("compareOutputPinCheckBox");
    QVERIFY(!before.isEmpty());
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("4"));
    page.store(QStringLiteral("CompareOutputPin"), QStringLiteral("999"));
    page.page->updateWidget();
    QCOMPARE(page.entries("compareOutputPinCheckBox"), before);
    QCOMPARE(page.stored(QStringLiteral("CompareOutputPin")), QStringLiteral("999"));
}

void ModelAndParamtSetWidgetListsTest::comparePinFollowsItsSwitch_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    for (const QString& type : { pulse, encoder }) {
        QTest::addRow("%s on", qPrintable(type)) << type << QStringLiteral("TRUE") << true;
        QTest::addRow("%s off", qPrintable(type)) << type << QStringLiteral("FALSE") << false;
        QTest::addRow("%s off in small letters", qPrintable(type)) << type << QStringLiteral("false") << false;
        QTest::addRow("%s unknown", qPrintable(type)) << type << QStringLiteral("?") << true;
    }
}

void ModelAndParamtSetWidgetListsTest::comparePinFollowsItsSwitch()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    ModePage page(type);
    page.open();
    page.combo("compareOutputPinCheckBox")->setEnabled(!enabled);
    page.store(QStringLiteral("CompareOutEnable"), text);
    page.page->updateWidget();
    QCOMPARE(page.combo("compareOutputPinCheckBox")->isEnabledTo(page.page.get()), enabled);
}

void ModelAndParamtSetWidgetListsTest::encoderModeButtonsByType()
{
    ModePage page(pulse);
    page.open();
    auto* const absolute = page.find<QRadioButton>("radioButton_2");
    QVERIFY(!absolute->isEnabledTo(page.page.get()));
    page.changeType(QStringLiteral("Axis_Virtual"));
    QVERIFY(!absolute->isEnabledTo(page.page.get()));
    page.changeType(encoder);
    QVERIFY(absolute->isEnabledTo(page.page.get()));
    page.changeType(pulse);
    QVERIFY(!absolute->isEnabledTo(page.page.get()));
    page.changeType(ethercat);
    QVERIFY(absolute->isEnabledTo(page.page.get()));
    absolute->setChecked(true);
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), QStringLiteral("TRUE"));
    page.store(QStringLiteral("AxisType"), pulse);
    page.page->updateWidget();
    QVERIFY(page.find<QRadioButton>("radioButton")->isChecked());
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), QStringLiteral("FALSE"));
}

void ModelAndParamtSetWidgetListsTest::heightOfTheInputGroup()
{
    ModePage page(pulse);
    page.open();
    const auto* const group = page.find<QGroupBox>("groupBox_11");
    const auto isFixed
        = [&](int height) { return group->minimumHeight() == height && group->maximumHeight() == height; };
    QVERIFY(isFixed(50));
    page.changeType(encoder);
    QVERIFY(isFixed(100));
    page.changeType(ethercat);
    QVERIFY(isFixed(100));
    page.changeType(pulse);
    QVERIFY(isFixed(50));
}

void ModelAndParamtSetWidgetListsTest::pointBoxesShowTheirPoint_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("group");
    QTest::newRow("probe1ComboBox") << QStringLiteral("Probe1") << QStringLiteral("ProbelInputPoint");
    QTest::newRow("probe2ComboBox") << QStringLiteral("Probe2") << QStringLiteral("ProbelInputPoint");
    QTest::newRow("inputPinComboBox") << QStringLiteral("Preset") << QStringLiteral("HightSpeedCountInputPoint");
}

void ModelAndParamtSetWidgetListsTest::pointBoxesShowTheirPoint()
{
    QFETCH(QString, key);
    QFETCH(QString, group);
    ModePage page(ethercat);
    const QStringList names = page.list(group);
    QVERIFY(names.size() > 3);
    for (int i = 0; i < names.size(); ++i) {
        page.store(key, QString::number(point(page, names.at(i)).first));
        page.open();
        QCOMPARE(page.entries(QTest::currentDataTag()), names);
        QCOMPARE(page.combo(QTest::currentDataTag())->currentIndex(), i);
        QVERIFY(!page.combo(QTest::currentDataTag())->isEnabled());
    }
}

void ModelAndParamtSetWidgetListsTest::pointBoxesWriteTheKey_data()
{
    pointBoxesShowTheirPoint_data();
}

void ModelAndParamtSetWidgetListsTest::pointBoxesWriteTheKey()
{
    QFETCH(QString, key);
    QFETCH(QString, group);
    ModePage page(ethercat);
    page.open();
    QComboBox* box = page.combo(QTest::currentDataTag());
    const QStringList names = page.list(group);
    for (int i = names.size() - 1; i >= 0; --i) {
        box->setCurrentIndex(i);
        QVERIFY(point(page, names.at(i)).first > 0);
        QCOMPARE(page.stored(key), QString::number(point(page, names.at(i)).first));
    }
    box->addItem(QStringLiteral("no point of this controller"));
    box->setCurrentIndex(box->count() - 1);
    QCOMPARE(page.stored(key), QStringLiteral("0"));
}

void ModelAndParamtSetWidgetListsTest::unknownPointStaysUntilTheUserChooses_data()
{
    pointBoxesShowTheirPoint_data();
}

void ModelAndParamtSetWidgetListsTest::unknownPointStaysUntilTheUserChooses()
{
    QFETCH(QString, key);
    for (const char* text : { "999", "-4", "", "X8", "99999999999" }) {
        ModePage page(ethercat);
        page.store(key, QString::fromLatin1(text));
        page.open();
        QCOMPARE(page.combo(QTest::currentDataTag())->currentIndex(), 0);
        QCOMPARE(page.stored(key), QString::fromLatin1(text));
        page.page->updateWidget();
        QCOMPARE(page.stored(key), QString::fromLatin1(text));
        page.combo(QTest::currentDataTag())->setCurrentIndex(1);
        QVERIFY(page.stored(key) != QString::fromLatin1(text));
    }
}

void ModelAndParamtSetWidgetListsTest::laterLoadOfPointsWritesWhatTheRecordHeld()
{
    ModePage page(ethercat);
    const QStringList keys{ QStringLiteral("Probe1"), QStringLiteral("Probe2"), QStringLiteral("Preset") };
    const QStringList names = page.list(QStringLiteral("ProbelInputPoint"));
    const QString second = QString::number(point(page, names.at(1)).first);
    for (const QString& key : keys)
        page.store(key, second);
    page.open();
    RecordWrites written(page.axis());
    page.page->axisTypeChanged();
    const QStringList all = written.takeKeys();
    for (const QString& key : keys) {
        QCOMPARE(page.stored(key), QStringLiteral("0"));
        QCOMPARE(all.count(key), 1);
    }
    QCOMPARE(page.combo("probe1ComboBox")->currentIndex(), 0);
    QCOMPARE(page.entries("probe1ComboBox"), names);
}

void ModelAndParamtSetWidgetListsTest::positionBoxesWriteTheirIndex_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("key");
    QTest::newRow("pulseMethodComboBox") << pulse << QStringLiteral("PulseOutputMethod");
    QTest::newRow("outputPinComboBox") << pulse << QStringLiteral("OutputPin");
    QTest::newRow("compareOutputPinCheckBox") << pulse << QStringLiteral("CompareOutputPin");
    QTest::newRow("outputMethodComboBox") << encoder << QStringLiteral("OutputMethod");
    QTest::newRow("inputSignalComboBox") << encoder << QStringLiteral("InputSignal");
}

void ModelAndParamtSetWidgetListsTest::positionBoxesWriteTheirIndex()
{
    QFETCH(QString, type);
    QFETCH(QString, key);
    ModePage page(type);
    page.store(QStringLiteral("CompareOutEnable"), QStringLiteral("TRUE"));
    page.openWindow();
    QComboBox* box = page.combo(QTest::currentDataTag());
    QVERIFY(box->isVisible());
    QVERIFY(box->count() > 1);
    box->setFocus();
    for (int i = 1; i < box->count(); ++i) {
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(page.stored(key), QString::number(i));
    }
    QTest::keyClick(box, Qt::Key_Home);
    QCOMPARE(page.stored(key), QStringLiteral("0"));
    // As often again after a refill.
    page.page->updateWidget();
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(page.stored(key), QStringLiteral("1"));
}

void ModelAndParamtSetWidgetListsTest::lastSignalsHaveNoFilterTime_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("lastMode");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("signal 5 of eight in the last mode") << encoder << true << 5 << true;
    QTest::newRow("signal 6 of eight in the last mode") << encoder << true << 6 << false;
    QTest::newRow("signal 7 of eight in the last mode") << encoder << true << 7 << false;
    QTest::newRow("signal 6 of eight in another mode") << encoder << false << 6 << true;
    QTest::newRow("signal 6 of eight on an EtherCAT axis") << ethercat << true << 6 << true;
}

void ModelAndParamtSetWidgetListsTest::lastSignalsHaveNoFilterTime()
{
    QFETCH(QString, type);
    QFETCH(bool, lastMode);
    QFETCH(int, index);
    QFETCH(bool, enabled);
    const QString controller = QStringLiteral("NV3T_70Q8");
    ModePage page(encoder, controller);
    const QStringList modes = page.list(QStringLiteral("EncoderEncodeMode"));
    const QString mode = lastMode ? modes.last() : modes.first();
    QStringList eight;
    for (int i = 0; i < 8; ++i)
        eight.append(QStringLiteral("S%1").arg(i));
    page.project.changeController(
        withList(TestProject::description(controller), QString(QStringLiteral("Encoder.") + mode), eight));
    page.store(QStringLiteral("OutputMethod"), QString::number(modes.indexOf(mode)));
    page.open();
    QCOMPARE(page.combo("inputSignalComboBox")->count(), 8);
    page.store(QStringLiteral("AxisType"), type);
    page.combo("inputSignalComboBox")->setCurrentIndex(index);
    QCOMPARE(page.edit("lineEdit_13")->isEnabled(), enabled);
    QCOMPARE(page.stored(QStringLiteral("InputSignal")), QString::number(index));
    page.combo("inputSignalComboBox")->setCurrentIndex(1);
    QCOMPARE(page.edit("lineEdit_13")->isEnabled(), true);
}

void ModelAndParamtSetWidgetListsTest::signalIsWrittenOnEveryAxis()
{
    ModePage page(encoder);
    page.open();
    for (const QString& type : allAxisTypes()) {
        page.combo("inputSignalComboBox")->setCurrentIndex(0);
        page.store(QStringLiteral("AxisType"), type);
        page.combo("inputSignalComboBox")->setCurrentIndex(2);
        QCOMPARE(page.stored(QStringLiteral("InputSignal")), QStringLiteral("2"));
    }
}

void ModelAndParamtSetWidgetListsTest::updateIsRepeatable()
{
    for (const QString& type : allAxisTypes()) {
        ModePage page(type);
        page.open();
        page.page->updateWidget();
        QMap<QString, QStringList> before;
        for (const QComboBox* box : page.page->findChildren<QComboBox*>())
            before.insert(box->objectName(), page.entries(box->objectName().toLatin1()));
        RecordWrites keys(page.axis());
        for (int i = 0; i < 3; ++i)
            page.page->updateWidget();
        QCOMPARE(keys.takeKeys(), QStringList());
        for (auto entry = before.begin(); entry != before.end(); ++entry)
            QCOMPARE(page.entries(entry.key().toLatin1()), entry.value());
    }
}

QTEST_MAIN(ModelAndParamtSetWidgetListsTest)
#include "ModelAndParamtSetWidgetListsTest.moc"
