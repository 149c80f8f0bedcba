#include "pages/ModelAndParamtSetWidgetVisibility.h"
#include "tests/pages/ExpectedVisibility.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QJsonArray>
#include <QTest>

namespace {

QStringList words(const QString& text)
{
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char(' '));
}

const QStringList none;

/// Writes down in which order an update touches some controls of a page: the names of those that it shows or hides,
/// "X enabled" and "X filled" for what else becomes of them, "height" for the group of the input signals.
class UpdateRecorder : public QObject {
public:
    explicit UpdateRecorder(const ModePage& page) : m_inputGroup(page.find<QWidget>("groupBox_11"))
    {
        for (const char* name :
            { "label_2", "label_39", "groupBox_11", "widget", "widget_3", "label_36", "groupBox_13" })
            watchOpposite(page.find<QWidget>(name));
        for (const char* name : { "radioButton_2", "compareOutputPinCheckBox" }) {
            auto* const control = page.find<QWidget>(name);
            control->setEnabled(!control->isEnabled());
            control->installEventFilter(this);
        }
        m_inputGroup->setFixedHeight(m_height);
        QComboBox* const pin = page.combo("compareOutputPinCheckBox");
        connect(pin->model(), &QAbstractItemModel::rowsRemoved, this,
            [this] { note(QStringLiteral("compareOutputPinCheckBox filled")); });
    }

    QStringList seen;

protected:
    bool eventFilter(QObject* control, QEvent* event) override
    {
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            note(control->objectName());
        else if (event->type() == QEvent::EnabledChange)
            note(QString(control->objectName() + QStringLiteral(" enabled")));
        return false;
    }

private:
    /// A control is told nothing that it already is.
    void watchOpposite(QWidget* control)
    {
        control->setVisible(control->isHidden());
        control->installEventFilter(this);
    }

    void note(const QString& step)
    {
        if (m_height != m_inputGroup->minimumHeight()) {
            m_height = m_inputGroup->minimumHeight();
            seen.append(QStringLiteral("height"));
        }
        seen.append(step);
    }

    QWidget* m_inputGroup;
    int m_height = 77;
};

} // namespace

class ModelAndParamtSetWidgetVisibilityTest : public QObject {
    Q_OBJECT

private slots:
    void thereAreThirteenControllers();
    void freshPage_data();
    void freshPage();
    void afterAChangeOfType_data();
    void afterAChangeOfType();
    void afterALongWalkThroughTheTypes();
    void everyDevice_data();
    void everyDevice();
    void namedCases_data();
    void namedCases();
    void jogRowOfAnEtherCatAxis();
    void unknownTypeCountsAsEtherCat();
    void familyByName_data();
    void familyByName();
    void changeOfDeviceShowsAtTheNextUpdate();
    void eighthDeviceOfASmallModel();
    void anUpdateTakesItsStepsInOrder_data();
    void anUpdateTakesItsStepsInOrder();
    void everyLoadHidesTheRowsThatNobodyUses_data();
    void everyLoadHidesTheRowsThatNobodyUses();

private:
    static void addTypesAndControllers();
};

void ModelAndParamtSetWidgetVisibilityTest::thereAreThirteenControllers()
{
    const QStringList models = allControllers();
    QCOMPARE(models.size(), 13);
    int neither = 0;
    for (const QString& model : models)
        neither += !isNv2(model) && !isNv3(model);
    QCOMPARE(neither, 1);
}

void ModelAndParamtSetWidgetVisibilityTest::addTypesAndControllers()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("controller");
    for (const QString& type : allAxisTypes())
        for (const QString& controller : allControllers())
            QTest::addRow("%s on %s", qPrintable(type), qPrintable(controller)) << type << controller;
}

void ModelAndParamtSetWidgetVisibilityTest::freshPage_data()
{
    addTypesAndControllers();
}

void ModelAndParamtSetWidgetVisibilityTest::freshPage()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    page.open();
    page.page->show();
    ExpectedVisibility expected(page);
    expected.apply(type, controller, 0);
    QCOMPARE(expected.differences(page), none);
}

void ModelAndParamtSetWidgetVisibilityTest::afterAChangeOfType_data()
{
    addTypesAndControllers();
}

void ModelAndParamtSetWidgetVisibilityTest::afterAChangeOfType()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    for (const QString& next : allAxisTypes()) {
        page.store(QStringLiteral("AxisType"), type);
        page.open();
        page.page->show();
        ExpectedVisibility expected(page);
        expected.apply(type, controller, 0);
        page.changeType(next);
        expected.apply(next, controller, 0);
        QVERIFY2(expected.differences(page).isEmpty(),
            qPrintable(next + QStringLiteral(": ") + expected.differences(page).join(QStringLiteral(", "))));
    }
}

void ModelAndParamtSetWidgetVisibilityTest::afterALongWalkThroughTheTypes()
{
    for (const QString& controller : allControllers()) {
        ModePage page(QStringLiteral("Axis_EtherCAT"), controller);
        page.open();
        page.page->show();
        ExpectedVisibility expected(page);
        expected.apply(QStringLiteral("Axis_EtherCAT"), controller, 0);
        for (const int step : { 1, 3, 0, 3, 2, 1, 2, 3, 1, 0, 2, 0, 1, 3 }) {
            const QString type = allAxisTypes().at(step);
            page.changeType(type);
            expected.apply(type, controller, 0);
            QCOMPARE(expected.differences(page), none);
        }
    }
}

void ModelAndParamtSetWidgetVisibilityTest::everyDevice_data()
{
    QTest::addColumn<QString>("controller");
    for (const QString& controller : allControllers())
        QTest::addRow("%s", qPrintable(controller)) << controller;
}

void ModelAndParamtSetWidgetVisibilityTest::everyDevice()
{
    QFETCH(QString, controller);
    for (const QString& type : { QStringLiteral("Axis_Pulse"), QStringLiteral("Axis_Encoder") }) {
        const bool pulse = type == QLatin1String("Axis_Pulse");
        ModePage page(type, controller);
        page.open();
        page.page->show();
        ExpectedVisibility expected(page);
        const int outputs = page.list(QStringLiteral("AxisPulseOutputDev")).size();
        for (int device = 0; device < (pulse ? outputs : 20); ++device) {
            page.store(pulse ? QStringLiteral("OutputDevice") : QStringLiteral("InputDevice"), QString::number(device));
            page.page->updateWidget();
            expected.apply(type, controller, static_cast<uint>(device));
            QCOMPARE(expected.differences(page), none);
        }
    }
}

void ModelAndParamtSetWidgetVisibilityTest::namedCases_data()
{
    QTest::addColumn<QString>("controller");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("hidden");
    const QString pulse = QStringLiteral("Axis_Pulse");
    const QString encoder = QStringLiteral("Axis_Encoder");
    const QString inputs = QStringLiteral("label_39 groupBox_11");
    const QString compare = QStringLiteral("label_36 groupBox_13");
    const QString both = QString(inputs + QLatin1Char(' ') + compare);
    const auto row = [](const char* name, const char* controller, const QString& type, const char* device,
                         const QString& shown, const QString& hidden) {
        QTest::newRow(name) << QString::fromLatin1(controller) << type << QString::fromLatin1(device) << shown
                            << hidden;
    };
    row("pulse output 3 of twelve has the compare output", "NV3T_70Q12", pulse, "3", both, QString());
    row("pulse output 4 of twelve has neither group", "NV3T_70Q12", pulse, "4", QString(), both);
    row("the same holds for the E model", "NV3T_70Q12E", pulse, "4", QString(), both);
    row("pulse output 5 of six has both groups", "NV3T_70Q6", pulse, "5", both, QString());
    row("pulse output 1 of an NV2 has inputs and no compare output", "NV2_H48Q8E", pulse, "1", inputs,
        compare + QStringLiteral(" probe2checkBox probe2ComboBox"));
    row("pulse output 2 of an NV2 has no inputs", "NV2_H48Q8E", pulse, "2", QString(), inputs);
    row("encoder input 2 of an NV2 has no probes, compare output or preset", "NV2_H48Q8E", encoder, "2", inputs,
        compare + QStringLiteral(" widget widget_3"));
    row("encoder input 0 of an NV2 has probes, but no compare output or preset", "NV2_H48Q8E", encoder, "0",
        QStringLiteral("widget"), compare + QStringLiteral(" widget_3"));
    row("encoder input 3 of twelve has probes and compare output", "NV3T_70Q12", encoder, "3",
        compare + QStringLiteral(" widget"), QString());
    row("encoder input 4 of twelve has neither", "NV3T_70Q12", encoder, "4", QString(),
        compare + QStringLiteral(" widget"));
    row("an encoder input that is no number counts as 0", "NV3T_70Q12", encoder, "-7",
        compare + QStringLiteral(" widget"), QString());
}

void ModelAndParamtSetWidgetVisibilityTest::namedCases()
{
    QFETCH(QString, controller);
    QFETCH(QString, type);
    QFETCH(QString, device);
    QFETCH(QString, shown);
    QFETCH(QString, hidden);
    ModePage page(type, controller);
    page.store(
        type == QLatin1String("Axis_Pulse") ? QStringLiteral("OutputDevice") : QStringLiteral("InputDevice"), device);
    page.open();
    page.page->show();
    QStringList wrong;
    for (const QString& name : words(shown))
        if (page.page->findChild<QWidget*>(name)->isHidden())
            wrong.append(name);
    for (const QString& name : words(hidden))
        if (!page.page->findChild<QWidget*>(name)->isHidden())
            wrong.append(name);
    QCOMPARE(wrong, none);
}

void ModelAndParamtSetWidgetVisibilityTest::jogRowOfAnEtherCatAxis()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.open();
    page.page->show();
    QVERIFY(page.edit("lineEdit_11")->isVisibleTo(page.page.get()));
    page.changeType(QStringLiteral("Axis_Pulse"));
    page.changeType(QStringLiteral("Axis_EtherCAT"));
    QVERIFY(!page.edit("lineEdit_11")->isVisibleTo(page.page.get()));
    page.open();
    page.page->show();
    QVERIFY(page.edit("lineEdit_11")->isVisibleTo(page.page.get()));
}

void ModelAndParamtSetWidgetVisibilityTest::unknownTypeCountsAsEtherCat()
{
    for (const QString& type : { QString(), QStringLiteral("axis_pulse"), QStringLiteral("Pulse") }) {
        ModePage page(type);
        page.open();
        page.page->show();
        ExpectedVisibility expected(page);
        expected.apply(QStringLiteral("Axis_EtherCAT"), QStringLiteral("NV3T_70Q8"), 0);
        QCOMPARE(expected.differences(page), none);
    }
}

void ModelAndParamtSetWidgetVisibilityTest::familyByName_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool>("nv3");
    QTest::addColumn<bool>("filter");
    QTest::addColumn<bool>("signalsOfDevice4");
    QTest::addColumn<bool>("pulseCompare");
    QTest::newRow("six pulses") << QStringLiteral("NV3T_70Q6") << true << true << true << true;
    QTest::newRow("twelve pulses") << QStringLiteral("NV3T_70Q12") << true << true << false << true;
    QTest::newRow("twelve pulses in small letters are no NV3T but have their limit")
        << QStringLiteral("nv3t_70q12e") << false << true << false << false;
    QTest::newRow("NV3T in small letters is no NV3T") << QStringLiteral("nv3t_70q6") << false << true << true << false;
    QTest::newRow("NV2") << QStringLiteral("NV2_H48Q6E") << false << false << false << false;
    QTest::newRow("NV2 in small letters is no NV2") << QStringLiteral("nv2_h48q6e") << false << true << true << false;
    QTest::newRow("no name") << QString() << false << true << true << false;
}

void ModelAndParamtSetWidgetVisibilityTest::familyByName()
{
    QFETCH(QString, model);
    QFETCH(bool, nv3);
    QFETCH(bool, filter);
    QFETCH(bool, signalsOfDevice4);
    QFETCH(bool, pulseCompare);
    const ControllerFamily family(model);
    QCOMPARE(family.isNv3t(), nv3);
    QCOMPARE(family.hasInputFilter(), filter);
    QCOMPARE(family.hasInputSignals(4), signalsOfDevice4);
    QCOMPARE(family.hasInputSignals(1), true);
    QCOMPARE(family.hasPulseCompareOutput(3), pulseCompare);
    QCOMPARE(family.hasEncoderCompareOutput(4), filter && signalsOfDevice4);
}

void ModelAndParamtSetWidgetVisibilityTest::changeOfDeviceShowsAtTheNextUpdate()
{
    ModePage page(QStringLiteral("Axis_Pulse"), QStringLiteral("NV3T_70Q12"));
    page.open();
    page.page->show();
    QVERIFY(!page.find<QWidget>("groupBox_13")->isHidden());
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("7"));
    QVERIFY(!page.find<QWidget>("groupBox_13")->isHidden());
    page.page->updateWidget();
    QVERIFY(page.find<QWidget>("groupBox_13")->isHidden());
}

/// The limit of four fast devices belongs to the pair of twelve-axis models alone.
void ModelAndParamtSetWidgetVisibilityTest::eighthDeviceOfASmallModel()
{
    const QString model = QStringLiteral("NV3T_70Q6");
    QJsonObject description = TestProject::description(model);
    const QJsonObject lists = description[QStringLiteral("lists")].toObject();
    QStringList devices;
    for (int i = 0; i < 8; ++i)
        devices.append(QStringLiteral("Pulse output %1").arg(i));
    description = withList(description, QStringLiteral("AxisPulseOutputDev"), devices);
    for (const QJsonValue& mode : lists[QStringLiteral("PulseEncodeMode")].toArray())
        for (const QString& device : devices.mid(6))
            description = withList(
                description, QString(device + QLatin1Char('.') + mode.toString()), { QStringLiteral("Y18, Y19") });
    ModePage page(QStringLiteral("Axis_Pulse"), model);
    page.project.changeController(description);
    page.store(QStringLiteral("OutputDevice"), QStringLiteral("7"));
    page.open();
    for (const char* name : { "label_39", "groupBox_11", "label_36", "groupBox_13" })
        QVERIFY2(!page.find<QWidget>(name)->isHidden(), name);
    QCOMPARE(page.stored(QStringLiteral("OutputDevice")), QStringLiteral("7"));
    QCOMPARE(page.entries("outputPinComboBox"), QStringList{ QStringLiteral("Y18, Y19") });
}

void ModelAndParamtSetWidgetVisibilityTest::anUpdateTakesItsStepsInOrder_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("steps");
    QTest::newRow("a pulse axis enables its compare pin between what the device shows and the rest")
        << "Axis_Pulse"
        << "radioButton_2 enabled,height,label_39,groupBox_11,label_36,groupBox_13,compareOutputPinCheckBox filled,"
           "compareOutputPinCheckBox enabled,label_2,widget,widget_3";
    QTest::newRow("an encoder axis sets the height between its groups and the row of the filter")
        << "Axis_Encoder"
        << "compareOutputPinCheckBox filled,compareOutputPinCheckBox enabled,radioButton_2 enabled,widget,label_36,"
           "groupBox_13,height,widget_3,label_2,label_39,groupBox_11";
}

void ModelAndParamtSetWidgetVisibilityTest::anUpdateTakesItsStepsInOrder()
{
    QFETCH(QString, type);
    QFETCH(QString, steps);
    ModePage page(type);
    page.open();
    UpdateRecorder recorder(page);
    page.page->updateWidget();
    QCOMPARE(recorder.seen.join(QLatin1Char(',')), steps);
}

void ModelAndParamtSetWidgetVisibilityTest::everyLoadHidesTheRowsThatNobodyUses_data()
{
    addTypesAndControllers();
}

void ModelAndParamtSetWidgetVisibilityTest::everyLoadHidesTheRowsThatNobodyUses()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    page.open();
    const QStringList secondProbe{ QStringLiteral("probe2checkBox"), QStringLiteral("probe2ComboBox") };
    for (const QString& name : buriedControls() + secondProbe)
        page.find<QWidget>(name.toLatin1())->show();
    page.page->axisTypeChanged();
    for (const QString& name : buriedControls())
        QVERIFY2(page.find<QWidget>(name.toLatin1())->isHidden(), qPrintable(name));
    for (const QString& name : secondProbe)
        QCOMPARE(page.find<QWidget>(name.toLatin1())->isHidden(), !isNv3(controller));
}

QTEST_MAIN(ModelAndParamtSetWidgetVisibilityTest)
#include "ModelAndParamtSetWidgetVisibilityTest.moc"
