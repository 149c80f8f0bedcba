#include "pages/ModelAndParamtSetWidgetFields.h"
#include "tests/pages/ModePage.h"

#include <QJsonObject>
#include <QTest>

namespace {

const QString pulse = QStringLiteral("Axis_Pulse");
const QString encoder = QStringLiteral("Axis_Encoder");

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// A controller that offers virtual axes only, so that its lists for the other types may be anything. Axes of those
/// types stay in the project until the host has revalidated them.
QJsonObject bareController(const QString& model)
{
    const QJsonObject full = TestProject::description(model);
    const QString virtualName = full[latin("axisTypes")].toObject()[latin("Axis_Virtual")].toString();
    return withList(full, latin("AxisType"), { virtualName });
}

/// A page on an encoder axis whose last encoder mode is selected and has eight input signals.
class LastModePage : public ModePage {
public:
    LastModePage() : ModePage(encoder, latin("NV3T_70Q8"))
    {
        const QStringList modes = list(latin("EncoderEncodeMode"));
        QStringList eight;
        for (int i = 0; i < 8; ++i)
            eight.append(QStringLiteral("S%1").arg(i));
        project.changeController(
            withList(TestProject::description(latin("NV3T_70Q8")), QString(latin("Encoder.") + modes.last()), eight));
        store(latin("OutputMethod"), QString::number(modes.size() - 1));
    }
};

} // namespace

/// How the lists that depend on the axis are filled anew.
class ModelAndParamtSetWidgetRefillTest : public QObject {
    Q_OBJECT

private slots:
    void storedSignalDecidesTheFilterTimeAtOnce_data();
    void storedSignalDecidesTheFilterTimeAtOnce();
    void storedPulseModeRunsItsSlot();
    void typeDecidesWhichModeBoxCalled();
    void emptyListResetsItsKey_data();
    void emptyListResetsItsKey();
    void noOutputDevicesWithAPulseModeInUse_data();
    void noOutputDevicesWithAPulseModeInUse();
    void firstOfSeveralPointsOfOneName();
    void hiddenComparePinFollowsItsSwitch_data();
    void hiddenComparePinFollowsItsSwitch();
};

void ModelAndParamtSetWidgetRefillTest::storedSignalDecidesTheFilterTimeAtOnce_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("signal 5 of eight has one") << QStringLiteral("5") << true;
    QTest::newRow("signal 6 of eight has none") << QStringLiteral("6") << false;
    QTest::newRow("signal 7 of eight has none") << QStringLiteral("7") << false;
}

/// The selection after a refill is live: it runs the slot of the box, in the first load too.
void ModelAndParamtSetWidgetRefillTest::storedSignalDecidesTheFilterTimeAtOnce()
{
    QFETCH(QString, stored);
    QFETCH(bool, enabled);
    LastModePage page;
    page.store(latin("InputSignal"), stored);
    page.open();
    QCOMPARE(page.combo("inputSignalComboBox")->count(), 8);
    QCOMPARE(page.edit("lineEdit_13")->isEnabledTo(page.page.get()), enabled);
    QCOMPARE(page.stored(latin("InputSignal")), stored);
    page.edit("lineEdit_13")->setEnabled(!enabled);
    page.page->updateWidget();
    QCOMPARE(page.edit("lineEdit_13")->isEnabledTo(page.page.get()), enabled);
}

void ModelAndParamtSetWidgetRefillTest::storedPulseModeRunsItsSlot()
{
    ModePage page(pulse);
    page.store(latin("PulseOutputMethod"), QStringLiteral("2"));
    int filled = 0;
    page.open();
    connect(page.combo("outputPinComboBox")->model(), &QAbstractItemModel::rowsInserted, this,
        [&](const QModelIndex&, int first) { filled += first == 0; });
    page.page->updateWidget();
    // Once by the slot of the mode, once by the update itself.
    QCOMPARE(filled, 2);
    page.store(latin("PulseOutputMethod"), QStringLiteral("0"));
    page.page->updateWidget();
    // The first entry is selected already when the slot is connected again.
    QCOMPARE(filled, 3);
}

void ModelAndParamtSetWidgetRefillTest::typeDecidesWhichModeBoxCalled()
{
    ModePage page(encoder);
    page.open();
    page.store(latin("AxisType"), pulse);
    page.page->updateWidget();
    QComboBox* encoderModes = page.combo("outputMethodComboBox");
    QComboBox* pulseModes = page.combo("pulseMethodComboBox");
    QCOMPARE(pulseModes->currentIndex(), 0);
    encoderModes->setCurrentIndex(2);
    QCOMPARE(pulseModes->currentIndex(), 2);
    QCOMPARE(page.stored(latin("PulseOutputMethod")), QStringLiteral("2"));
    QCOMPARE(page.stored(latin("OutputMethod")), QStringLiteral("0"));
    const QString pins = page.list(latin("AxisPulseOutputDev")).first() + QLatin1Char('.') + pulseModes->itemText(2);
    QCOMPARE(page.entries("outputPinComboBox"), page.list(pins));

    page.store(latin("AxisType"), encoder);
    page.page->updateWidget();
    QCOMPARE(encoderModes->currentIndex(), 0);
    page.store(latin("InputSignal"), QStringLiteral("99"));
    pulseModes->setCurrentIndex(1);
    QCOMPARE(page.stored(latin("OutputMethod")), QStringLiteral("1"));
    QCOMPARE(page.stored(latin("PulseOutputMethod")), QStringLiteral("2"));
    // The box of the encoder modes is not touched; the signals are those of the mode that it shows.
    QCOMPARE(encoderModes->currentIndex(), 0);
    QCOMPARE(page.entries("inputSignalComboBox"), page.list(QString(latin("Encoder.") + encoderModes->currentText())));
    QCOMPARE(page.stored(latin("InputSignal")), QStringLiteral("0"));
}

void ModelAndParamtSetWidgetRefillTest::emptyListResetsItsKey_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("emptyList");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("emptyToo");
    const auto row = [](const char* name, const QString& type, const char* model, const char* emptyList,
                         const char* box, const char* key, const QStringList& emptyToo = {}) {
        QTest::newRow(name) << type << latin(model) << latin(emptyList) << latin(box) << latin(key) << emptyToo;
    };
    row("no pulse modes, and so no pins", pulse, "NV3T_70Q8", "PulseEncodeMode", "pulseMethodComboBox",
        "PulseOutputMethod", { latin("outputPinComboBox"), latin("OutputPin") });
    row("no encoder modes, and so no signals", encoder, "KM1_M16", "EncoderEncodeMode", "outputMethodComboBox",
        "OutputMethod", { latin("inputSignalComboBox"), latin("InputSignal") });
    row("no fast outputs for a pulse axis", pulse, "NV3T_70Q8", "HightSpeedPlusOutputPoint", "compareOutputPinCheckBox",
        "CompareOutputPin");
    row("no fast outputs for an encoder axis", encoder, "NV3T_70Q8", "HightSpeedPlusOutputPoint",
        "compareOutputPinCheckBox", "CompareOutputPin");
    row("no outputs for an encoder axis", encoder, "KM1_M16", "OutputPoint", "compareOutputPinCheckBox",
        "CompareOutputPin");
}

void ModelAndParamtSetWidgetRefillTest::emptyListResetsItsKey()
{
    QFETCH(QString, type);
    QFETCH(QString, model);
    QFETCH(QString, emptyList);
    QFETCH(QString, box);
    QFETCH(QString, key);
    QFETCH(QStringList, emptyToo);
    ModePage page(type, model);
    QVERIFY(!page.list(emptyList).isEmpty());
    page.project.changeController(withList(bareController(model), emptyList, {}));
    const QStringList keys = type == pulse
        ? QStringList{ latin("PulseOutputMethod"), latin("OutputPin"), latin("CompareOutputPin"),
              latin("OutputDevice") }
        : QStringList{ latin("OutputMethod"), latin("InputSignal"), latin("CompareOutputPin") };
    for (const QString& position : keys)
        page.store(position, QStringLiteral("1"));
    // Empty from the start, and after lists that were full.
    for (const bool full : { false, true }) {
        if (full) {
            page.project.changeController(model);
            page.open();
            page.store(key, QStringLiteral("1"));
            page.project.changeController(withList(bareController(model), emptyList, {}));
            page.page->updateWidget();
        } else {
            page.open();
        }
        QCOMPARE(page.combo(box.toLatin1())->count(), 0);
        for (const QString& position : keys)
            QCOMPARE(page.stored(position),
                position == key || emptyToo.contains(position) ? QStringLiteral("0") : QStringLiteral("1"));
        if (!emptyToo.isEmpty()) {
            QCOMPARE(page.combo(emptyToo.first().toLatin1())->count(), 0);
            page.store(emptyToo.last(), QStringLiteral("1"));
        }
    }
}

void ModelAndParamtSetWidgetRefillTest::noOutputDevicesWithAPulseModeInUse_data()
{
    QTest::addColumn<QString>("mode");
    QTest::newRow("the second mode") << QStringLiteral("1");
    QTest::newRow("the last mode") << QStringLiteral("2");
}

/// The selection of the mode runs its slot, which has no device to take pins of.
void ModelAndParamtSetWidgetRefillTest::noOutputDevicesWithAPulseModeInUse()
{
    QFETCH(QString, mode);
    const QString model = latin("NV3T_70Q8");
    ModePage page(pulse, model);
    page.store(latin("PulseOutputMethod"), mode);
    page.store(latin("OutputPin"), QStringLiteral("1"));
    page.store(latin("OutputDevice"), QStringLiteral("1"));
    page.project.changeController(withList(bareController(model), latin("AxisPulseOutputDev"), {}));
    page.open();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(page.combo("pulseMethodComboBox")->count(), 3);
        QCOMPARE(page.combo("pulseMethodComboBox")->currentIndex(), mode.toInt());
        QCOMPARE(page.combo("outputPinComboBox")->count(), 0);
        QCOMPARE(page.stored(latin("PulseOutputMethod")), mode);
        QCOMPARE(page.stored(latin("OutputDevice")), QStringLiteral("0"));
        QCOMPARE(page.stored(latin("OutputPin")), QStringLiteral("0"));
        page.page->updateWidget();
    }
    // Disconnected until there is something to choose again.
    QCOMPARE(connectionCount(page.combo("outputPinComboBox"), SIGNAL(currentIndexChanged(int))), 0);
    page.project.changeController(model);
    page.page->updateWidget();
    QCOMPARE(connectionCount(page.combo("outputPinComboBox"), SIGNAL(currentIndexChanged(int))), 1);
    QVERIFY(page.combo("outputPinComboBox")->count() > 0);
}

/// No description of a controller has them, but whoever reads the map does not rest on that.
void ModelAndParamtSetWidgetRefillTest::firstOfSeveralPointsOfOneName()
{
    const QMap<int, QString> points{ { 9, latin("X1") }, { 7, latin("X2") }, { 4, latin("X1") }, { 2, latin("X0") },
        { -3, latin("X3") }, { 8, latin("X3") } };
    QCOMPARE(pointOfName(points, latin("X1")), 4);
    QCOMPARE(pointOfName(points, latin("X3")), -3);
    QCOMPARE(pointOfName(points, latin("X2")), 7);
    QCOMPARE(pointOfName(points, latin("x2")), 0);
    QCOMPARE(pointOfName(points, QString()), 0);
    QCOMPARE(pointOfName({}, latin("X1")), 0);
}

void ModelAndParamtSetWidgetRefillTest::hiddenComparePinFollowsItsSwitch_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    for (const char* model : { "NV2_H48Q8E", "NV2_H48Q6E", "KM1_M16" }) {
        QTest::addRow("%s on", model) << latin(model) << QStringLiteral("TRUE") << true;
        QTest::addRow("%s off", model) << latin(model) << QStringLiteral("FALSE") << false;
        QTest::addRow("%s off in small letters", model) << latin(model) << QStringLiteral("false") << false;
        QTest::addRow("%s unknown", model) << latin(model) << QString() << true;
    }
}

void ModelAndParamtSetWidgetRefillTest::hiddenComparePinFollowsItsSwitch()
{
    QFETCH(QString, model);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    ModePage page(pulse, model);
    page.open();
    QVERIFY(page.find<QWidget>("groupBox_13")->isHidden());
    page.combo("compareOutputPinCheckBox")->setEnabled(!enabled);
    page.store(latin("CompareOutEnable"), text);
    page.page->updateWidget();
    QVERIFY(page.find<QWidget>("groupBox_13")->isHidden());
    QCOMPARE(page.combo("compareOutputPinCheckBox")->isEnabledTo(page.page.get()), enabled);
}

QTEST_MAIN(ModelAndParamtSetWidgetRefillTest)
#include "ModelAndParamtSetWidgetRefillTest.moc"
