#include "tests/pages/ModePage.h"
#include "tests/support/RecordWrites.h"

#include "axisdata/AxisConstants.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTest>

#include <functional>

namespace {

const QString yes = QStringLiteral("TRUE");
const QString no = QStringLiteral("FALSE");

/// The page that is being built; the test has no pointer to it yet.
QWidget* pageInTheMaking()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (qobject_cast<ModelAndParamtSetWidget*>(window))
            return window;
    return nullptr;
}

/// What a page under construction shows at the moment at which it writes a key.
class MomentOfWriting : public QObject {
public:
    MomentOfWriting(AxisTable* axis, const QString& key, const std::function<void(const QWidget&)>& look)
    {
        connect(axis, &ModelObject::dataChanged, this, [=](ModelObject*, const QString&, const QString& written) {
            if (written != key || !pageInTheMaking())
                return;
            ++m_count;
            look(*pageInTheMaking());
        });
    }

    int count() const { return m_count; }

private:
    int m_count = 0;
};

QString textOf(const QWidget& page, const char* edit)
{
    return page.findChild<QLineEdit*>(QString::fromLatin1(edit))->text();
}

int entriesOf(const QWidget& page, const char* box)
{
    return page.findChild<QComboBox*>(QString::fromLatin1(box))->count();
}

/// All texts of a record outside a group.
QMap<QString, QString> textsBeside(const ModePage& page, const AxisDefaultGroup& group)
{
    QMap<QString, QString> texts;
    for (const AxisDefaultGroup& other : { AxisBaseDefaults, AxisUnitDefaults, AxisModeDefaults, AxisHomeDefaults })
        for (auto entry = other.begin(); entry != other.end(); ++entry)
            if (!group.contains(entry.key()))
                texts.insert(entry.key(), page.stored(entry.key()));
    texts.insert(QStringLiteral("Row"), page.stored(QStringLiteral("Row")));
    return texts;
}

} // namespace

class ModelAndParamtSetWidgetLoadTest : public QObject {
    Q_OBJECT

private slots:
    void firstLoadRunsOnlyTheSlotsOfTheForm();
    void pulseAxisGetsItsModeAtTheNextUpdate_data();
    void pulseAxisGetsItsModeAtTheNextUpdate();
    void laterLoadRunsAllSlots();
    void torqueIsRewrittenByALaterLoad();
    void updatesAreOffWhileLoading();
    void firstLoadRunsInItsOrder();
    void probeBoxesAreClearedBeforeTheyAreFilled();
    void rowsAreShownBeforeTheComparePinsAreFilled();
    void changeOfTypeRestoresTheGroup();
    void changeOfTypeWritesInKeyOrder_data();
    void changeOfTypeWritesInKeyOrder();
    void changeOfTypeSelectsWhatTheDefaultsSay();
    void changeOfTypeWithoutARecordLeavesSignalsBlocked();
};

void ModelAndParamtSetWidgetLoadTest::firstLoadRunsOnlyTheSlotsOfTheForm()
{
    ModePage page(QStringLiteral("Axis_Pulse"));
    page.store(QStringLiteral("EncoderMode"), yes);
    page.store(QStringLiteral("SoftLimitEnable"), QStringLiteral("true"));
    page.store(QStringLiteral("ModeSet"), QStringLiteral("true"));
    page.store(QStringLiteral("PosTorqueMaxValue"), QStringLiteral("7"));
    page.store(QStringLiteral("CompareOutputWidthUnit"), QStringLiteral("true"));
    page.store(QStringLiteral("ErrorStopEnable"), QStringLiteral("false"));
    page.store(QStringLiteral("Probe1Enable"), QStringLiteral("unknown"));
    page.store(QStringLiteral("Probe2Enable"), QStringLiteral("false"));
    RecordWrites writes(page.axis());
    page.open();
    const QStringList expected{ QStringLiteral("Probe1Enable=TRUE"), QStringLiteral("ErrorStopEnable=FALSE") };
    QCOMPARE(writes.take(), expected);
    QVERIFY(page.combo("probe1ComboBox")->isEnabled());
    QVERIFY(!page.combo("probe2ComboBox")->isEnabled());
    QCOMPARE(page.find<QLabel>("label_47")->text(), QStringLiteral("unit"));
    // A pulse axis is put into increment mode; the record hears of it with the next update.
    QVERIFY(page.find<QRadioButton>("radioButton")->isChecked());
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), yes);
    page.page->updateWidget();
    QCOMPARE(writes.take(), QStringList{ QStringLiteral("EncoderMode=FALSE") });
}

void ModelAndParamtSetWidgetLoadTest::pulseAxisGetsItsModeAtTheNextUpdate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("then");
    QTest::newRow("absolute mode becomes increment mode") << yes << no;
    QTest::newRow("so it does in small letters") << QStringLiteral("true") << no;
    QTest::newRow("increment mode stays") << no << no;
    QTest::newRow("an unknown text is increment mode already") << QStringLiteral("maybe") << QStringLiteral("maybe");
    QTest::newRow("and so is an empty one") << QString() << QString();
}

void ModelAndParamtSetWidgetLoadTest::pulseAxisGetsItsModeAtTheNextUpdate()
{
    QFETCH(QString, text);
    QFETCH(QString, then);
    ModePage page(QStringLiteral("Axis_Pulse"));
    page.store(QStringLiteral("EncoderMode"), text);
    page.open();
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), text);
    page.page->updateWidget();
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), then);
    // Neither is it missed when somebody else writes it behind the page's back.
    page.store(QStringLiteral("EncoderMode"), text);
    page.page->updateWidget();
    QCOMPARE(page.stored(QStringLiteral("EncoderMode")), then);
    QVERIFY(page.find<QRadioButton>("radioButton")->isChecked());
    QVERIFY(!page.find<QRadioButton>("radioButton_2")->isChecked());
}

void ModelAndParamtSetWidgetLoadTest::laterLoadRunsAllSlots()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(QStringLiteral("Probe1Enable"), yes);
    page.store(QStringLiteral("ModeSet"), yes);
    page.store(QStringLiteral("CompareOutputWidthUnit"), yes);
    page.store(QStringLiteral("CompareOutEnable"), yes);
    page.open();
    page.find<QLabel>("label_47")->setText(QStringLiteral("ms"));
    page.page->axisTypeChanged();
    QVERIFY(!page.find<QCheckBox>("probe1checkBox")->isChecked());
    QVERIFY(!page.combo("probe1ComboBox")->isEnabled());
    QVERIFY(!page.combo("compareOutputPinCheckBox")->isEnabled());
    QVERIFY(page.find<QRadioButton>("radioButton_3")->isChecked());
    QCOMPARE(page.find<QLabel>("label_4")->text(), QStringLiteral("Soft Limit"));
    QCOMPARE(page.find<QStackedWidget>("stackedWidget")->currentIndex(), 0);
    // Only the slot of the radio button says so.
    QCOMPARE(page.find<QLabel>("label_47")->text(), QStringLiteral("unit"));
}

void ModelAndParamtSetWidgetLoadTest::torqueIsRewrittenByALaterLoad()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(QStringLiteral("PosTorqueMaxValue"), QStringLiteral("30"));
    page.open();
    QCOMPARE(page.stored(QStringLiteral("PosTorqueMaxValue")), QStringLiteral("30"));
    page.page->axisTypeChanged();
    QCOMPARE(page.stored(QStringLiteral("PosTorqueMaxValue")), QStringLiteral("0.000000"));
    QCOMPARE(page.edit("lineEdit_9")->text(), QStringLiteral("0"));
    // The other field showed "0" already, so its text did not change.
    QCOMPARE(page.stored(QStringLiteral("NegTorqueMaxValue")), QStringLiteral("0"));
}

void ModelAndParamtSetWidgetLoadTest::updatesAreOffWhileLoading()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.store(QStringLiteral("Probe1Enable"), QString());
    const MomentOfWriting moment(
        page.axis(), QStringLiteral("Probe1Enable"), [](const QWidget& widget) { QVERIFY(!widget.updatesEnabled()); });
    page.open();
    QCOMPARE(moment.count(), 1);
    QVERIFY(page.page->updatesEnabled());
}

/// The boxes of the form write a doubtful text right while the page loads, which shows how far the load has come.
void ModelAndParamtSetWidgetLoadTest::firstLoadRunsInItsOrder()
{
    ModePage page(QStringLiteral("Axis_Encoder"));
    const QString doubtful = QStringLiteral("?");
    for (const char* key : { "Probe1Enable", "PresetEnable", "CompareOutEnable" })
        page.store(QString::fromLatin1(key), doubtful);
    page.store(QStringLiteral("NegTorqueMaxValue"), QStringLiteral("31"));
    page.store(QStringLiteral("InputSignalFilterTime"), QStringLiteral("32"));
    page.store(QStringLiteral("CompareOutputWidth"), QStringLiteral("33"));
    page.store(QStringLiteral("ModeSet"), yes);
    const MomentOfWriting probe(page.axis(), QStringLiteral("Probe1Enable"), [](const QWidget& widget) {
        QCOMPARE(textOf(widget, "lineEdit_10"), QStringLiteral("31"));
        QCOMPARE(entriesOf(widget, "HardLimPosBox"), 2);
        QVERIFY(entriesOf(widget, "probe1ComboBox") > 0);
        QVERIFY(entriesOf(widget, "probe2ComboBox") > 0);
        QCOMPARE(entriesOf(widget, "inputPinComboBox"), 0);
    });
    const MomentOfWriting preset(page.axis(), QStringLiteral("PresetEnable"), [](const QWidget& widget) {
        QVERIFY(entriesOf(widget, "inputPinComboBox") > 0);
        QCOMPARE(textOf(widget, "lineEdit_13"), QStringLiteral("0"));
    });
    const MomentOfWriting compare(page.axis(), QStringLiteral("CompareOutEnable"), [](const QWidget& widget) {
        QCOMPARE(textOf(widget, "lineEdit_13"), QStringLiteral("32"));
        QCOMPARE(entriesOf(widget, "outputMethodComboBox"), 0);
        QCOMPARE(widget.findChild<QLabel*>(QStringLiteral("label_4"))->text(), QStringLiteral("Soft Limit"));
        QCOMPARE(textOf(widget, "lineEdit_14"), QStringLiteral("0"));
    });
    page.open();
    QCOMPARE(probe.count(), 1);
    QCOMPARE(preset.count(), 1);
    QCOMPARE(compare.count(), 1);
    QCOMPARE(page.edit("lineEdit_14")->text(), QStringLiteral("33.0"));
    QCOMPARE(page.find<QLabel>("label_4")->text(), QStringLiteral("Period Setting"));
}

void ModelAndParamtSetWidgetLoadTest::probeBoxesAreClearedBeforeTheyAreFilled()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.open();
    QStringList events;
    for (const char* name : { "probe1ComboBox", "probe2ComboBox" }) {
        const QAbstractItemModel* model = page.combo(name)->model();
        const QString box = QString::fromLatin1(name).left(6);
        const auto note = [&events, box](const char* what) {
            const QString event = box + QString::fromLatin1(what);
            if (!events.contains(event))
                events.append(event);
        };
        connect(model, &QAbstractItemModel::rowsRemoved, this, [note] { note(" cleared"); });
        connect(model, &QAbstractItemModel::rowsInserted, this, [note] { note(" filled"); });
    }
    page.page->axisTypeChanged();
    const QStringList expected{ QStringLiteral("probe1 cleared"), QStringLiteral("probe2 cleared"),
        QStringLiteral("probe1 filled"), QStringLiteral("probe2 filled") };
    QCOMPARE(events, expected);
}

void ModelAndParamtSetWidgetLoadTest::rowsAreShownBeforeTheComparePinsAreFilled()
{
    ModePage page(QStringLiteral("Axis_Pulse"), QStringLiteral("NV3T_70Q12"));
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("4"));
    page.store(QStringLiteral("CompareOutEnable"), yes);
    page.open();
    QComboBox* pins = page.combo("compareOutputPinCheckBox");
    pins->setEnabled(false);
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("3"));
    int filled = 0;
    connect(pins->model(), &QAbstractItemModel::rowsInserted, this, [&] {
        for (const char* name : { "label_39", "groupBox_11", "label_36", "groupBox_13" })
            QVERIFY2(!page.find<QWidget>(name)->isHidden(), name);
        QVERIFY(!pins->isEnabledTo(page.page.get()));
        ++filled;
    });
    page.page->updateWidget();
    QVERIFY(filled > 0);
    QVERIFY(pins->isEnabledTo(page.page.get()));
}

void ModelAndParamtSetWidgetLoadTest::changeOfTypeRestoresTheGroup()
{
    ModePage page(QStringLiteral("Axis_Pulse"));
    for (auto entry = AxisModeDefaults.begin(); entry != AxisModeDefaults.end(); ++entry)
        page.store(entry.key(), entry.value() == yes ? no : entry.value() == no ? yes : QStringLiteral("1"));
    QMap<QString, QString> others = AxisHomeDefaults;
    others.unite(AxisUnitDefaults);
    for (auto entry = others.begin(); entry != others.end(); ++entry)
        page.store(entry.key(), QStringLiteral("mine"));
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("1"));
    page.store(QStringLiteral("InputDevice"), QStringLiteral("1"));
    page.open();
    page.changeType(QStringLiteral("Axis_Encoder"));
    const QStringList torque{ QStringLiteral("PosTorqueMaxValue"), QStringLiteral("NegTorqueMaxValue"),
        QStringLiteral("FollowErrorThreshold") };
    for (auto entry = AxisModeDefaults.begin(); entry != AxisModeDefaults.end(); ++entry)
        QCOMPARE(page.stored(entry.key()), torque.contains(entry.key()) ? QStringLiteral("0.000000") : entry.value());
    for (auto entry = others.begin(); entry != others.end(); ++entry)
        QCOMPARE(page.stored(entry.key()), QStringLiteral("mine"));
    QCOMPARE(page.stored(QStringLiteral("OutputDevice")), QStringLiteral("1"));
    QCOMPARE(page.stored(QStringLiteral("InputDevice")), QStringLiteral("1"));
    QVERIFY(!page.page->signalsBlocked());
}

void ModelAndParamtSetWidgetLoadTest::changeOfTypeWritesInKeyOrder_data()
{
    QTest::addColumn<QString>("type");
    for (const QString& type : allAxisTypes())
        QTest::addRow("%s", qPrintable(type)) << type;
}

/// From a record in which nothing has its default: the group in key order, then what the fields that are written at
/// every change of their text make of it, and not a key more.
void ModelAndParamtSetWidgetLoadTest::changeOfTypeWritesInKeyOrder()
{
    QFETCH(QString, type);
    ModePage page(type);
    for (auto entry = AxisModeDefaults.begin(); entry != AxisModeDefaults.end(); ++entry)
        page.store(entry.key(), entry.value() == yes ? no : entry.value() == no ? yes : QStringLiteral("1"));
    page.store(QStringLiteral("InputDevice"), QStringLiteral("1"));
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("1"));
    page.store(QStringLiteral("Row"), QStringLiteral("7"));
    for (const char* key : { "AxisNo", "AxisID", "VirtualAxis", "AxisAutoMap" })
        page.store(QString::fromLatin1(key), QStringLiteral("mine"));
    page.open();
    page.page->updateWidget();
    page.store(QStringLiteral("EncoderMode"), yes);
    const QMap<QString, QString> others = textsBeside(page, AxisModeDefaults);
    QCOMPARE(others.value(QStringLiteral("AxisNo")), QStringLiteral("mine"));
    RecordWrites writes(page.axis());
    page.page->axisTypeChanged();
    QCOMPARE(writes.takeKeys(),
        QStringList(AxisModeDefaults.keys())
            << QStringLiteral("FollowErrorThreshold") << QStringLiteral("PosTorqueMaxValue")
            << QStringLiteral("NegTorqueMaxValue"));
    QCOMPARE(textsBeside(page, AxisModeDefaults), others);
}

void ModelAndParamtSetWidgetLoadTest::changeOfTypeSelectsWhatTheDefaultsSay()
{
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.store(QStringLiteral("OutputMethod"), QStringLiteral("2"));
    page.store(QStringLiteral("InputSignal"), QStringLiteral("1"));
    page.open();
    QCOMPARE(page.combo("outputMethodComboBox")->currentIndex(), 2);
    page.page->axisTypeChanged();
    QCOMPARE(page.combo("outputMethodComboBox")->currentIndex(), 0);
    QCOMPARE(page.combo("inputSignalComboBox")->currentIndex(), 0);
    QCOMPARE(page.edit("lineEdit_7")->text(), QStringLiteral("10"));
}

void ModelAndParamtSetWidgetLoadTest::changeOfTypeWithoutARecordLeavesSignalsBlocked()
{
    ModePage page(QStringLiteral("Axis_Pulse"));
    page.open();
    QVERIFY(page.project.axisModel()->removeAxisTable(page.axis()));
    page.page->axisTypeChanged();
    QVERIFY(page.page->signalsBlocked());
}

QTEST_MAIN(ModelAndParamtSetWidgetLoadTest)
#include "ModelAndParamtSetWidgetLoadTest.moc"
