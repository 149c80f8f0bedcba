#include "tests/editor/BasicPageFixture.h"

#include "host/projectmodel/ProjectModel.h"

#include <QAbstractItemView>
#include <QJsonArray>
#include <QPointer>
#include <QSignalSpy>
#include <QSpinBox>

class BasicSetWidgetEditTest : public QObject, private BasicPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void pulseWithoutAFreeOutputKeepsStill();
    void pulseWithoutAFreeOutputCannotChangeItsType();
    void encoderToEtherCatLeavesTabsHidden();

    void pressBringsListsUpToDate_data();
    void pressBringsListsUpToDate();
    void pressOpensTheList();
    void releaseDoesNotRefresh();

    void userChangesTheType();
    void typeChangeKeepsDevicesInPlace();
    void typeChangeOfAMissingNameWritesNothingElse();
    void typeIsFoundByItsExactName_data();
    void typeIsFoundByItsExactName();
    void typeChangeIsToldWithTheProjectReleased();
    void deviceChangeIsToldWithTheProjectHeld_data();
    void deviceChangeIsToldWithTheProjectHeld();
    void userChangesTheEncoderInput();
    void userChangesTheEtherCatInput_data();
    void userChangesTheEtherCatInput();
    void userChangesThePulseOutput();
    void userTicksVirtual();
    void virtualPulseAxisKeepsItsOutput();
    void refreshEmitsNothing();
    void editsWithoutARecordDoNothing();
    void refreshWithoutARecordDropsTheChoices();
    void neverWritesTheAxisNumber();
};

void BasicSetWidgetEditTest::pulseWithoutAFreeOutputKeepsStill()
{
    setList("AxisPulseOutputDev", { "Pulse output 0" });
    AxisTable* other = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0"));
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    setTabs(false);
    m_axis->setProperty(inputKey, QStringLiteral("9"));
    m_axis->setProperty(typeKey, pulseType);
    inputs()->setEnabled(true);
    outputs()->setEnabled(true);
    virtualBox()->setEnabled(false);
    m_page->refreshFromModel();
    // The inputs are still filled and corrected.
    QCOMPARE(entriesOf(inputs()), (QStringList{ QStringLiteral("None"), QStringLiteral("Feedback") }));
    QCOMPARE(inputs()->currentIndex(), 0);
    QCOMPARE(text(inputKey), QStringLiteral("0"));
    // Nothing further is done.
    QCOMPARE(outputs()->count(), 0);
    QCOMPARE(text(outputKey), QStringLiteral("0"));
    QVERIFY(inputs()->isEnabled());
    QVERIFY(outputs()->isEnabled());
    QVERIFY(!virtualBox()->isEnabled());
    QCOMPARE(tabs(), (QList<bool>{ false, false, false }));

    other->setProperty(typeKey, virtualType);
    m_page->refreshFromModel();
    QCOMPARE(entriesOf(outputs()), QStringList{ QStringLiteral("Pulse output 0") });
    QVERIFY(!inputs()->isEnabled());
    QCOMPARE(tabs(), (QList<bool>{ true, true, true }));
}

void BasicSetWidgetEditTest::pulseWithoutAFreeOutputCannotChangeItsType()
{
    setList("AxisPulseOutputDev", { "Pulse output 0" });
    AxisTable* other = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0"));
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    const QSignalSpy changed(m_page, &BasicSetWidget::axisTypeChanged);
    const int encoder = types()->findText(QStringLiteral("Encoder Axis"));
    types()->setCurrentIndex(encoder);
    inputs()->setCurrentIndex(1);
    QCOMPARE(text(typeKey), pulseType);
    QCOMPARE(text(inputKey), QStringLiteral("0"));
    // The press refreshes, and that refresh ends early as well.
    QTest::mousePress(types(), Qt::LeftButton);
    QCOMPARE(types()->currentText(), QStringLiteral("Pulse Axis"));
    types()->hidePopup();
    types()->setCurrentIndex(encoder);
    QCOMPARE(text(typeKey), pulseType);
    QCOMPARE(changed.count(), 0);

    other->setProperty(typeKey, virtualType);
    QTest::mousePress(types(), Qt::LeftButton);
    types()->hidePopup();
    types()->setCurrentText(QStringLiteral("Encoder Axis"));
    QCOMPARE(text(typeKey), encoderType);
    QCOMPARE(changed.count(), 1);
}

void BasicSetWidgetEditTest::encoderToEtherCatLeavesTabsHidden()
{
    makePage(addAxis(encoderType, QStringLiteral("1"), QStringLiteral("1")));
    QCOMPARE(tabs(), (QList<bool>{ true, false, false }));
    types()->setCurrentText(QStringLiteral("EtherCAT Axis"));
    QCOMPARE(text(typeKey), etherCatType);
    QCOMPARE(tabs(), (QList<bool>{ true, false, false }));
    QVERIFY(inputs()->isEnabled());
    QVERIFY(!outputs()->isEnabled());
    QVERIFY(!virtualBox()->isEnabled());
    setTabs(true);
    m_page->refreshFromModel();
    QCOMPARE(tabs(), (QList<bool>{ true, true, true }));
}

void BasicSetWidgetEditTest::pressBringsListsUpToDate_data()
{
    QTest::addColumn<QString>("pressed");
    QTest::newRow("on the types") << QStringLiteral("comboBoxAxisType");
    QTest::newRow("on the inputs") << QStringLiteral("comboBoxInputDev");
    QTest::newRow("on the outputs") << QStringLiteral("comboBoxOutputDev");
}

void BasicSetWidgetEditTest::pressBringsListsUpToDate()
{
    QFETCH(QString, pressed);
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("2")));
    QVERIFY(showPage());
    addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    QCOMPARE(outputs()->count(), 3);
    auto* box = m_page->findChild<QComboBox*>(pressed);
    QTest::mousePress(box, Qt::LeftButton);
    QCOMPARE(entriesOf(outputs()), (QStringList{ QStringLiteral("Pulse output 0"), QStringLiteral("Pulse output 2") }));
    QCOMPARE(outputs()->currentText(), QStringLiteral("Pulse output 2"));
    box->hidePopup();
}

void BasicSetWidgetEditTest::pressOpensTheList()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("2")));
    QVERIFY(showPage());
    QTest::mousePress(outputs(), Qt::LeftButton);
    QTRY_VERIFY(outputs()->view()->isVisible());
    outputs()->hidePopup();
}

void BasicSetWidgetEditTest::releaseDoesNotRefresh()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("2")));
    QVERIFY(showPage());
    addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    QTest::mouseRelease(outputs(), Qt::LeftButton);
    QTest::mouseMove(outputs());
    QCOMPARE(outputs()->count(), 3);
}

void BasicSetWidgetEditTest::userChangesTheType()
{
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    QStringList seen;
    connect(m_page, &BasicSetWidget::axisTypeChanged, m_page,
        [&] { seen.append(QString(text(typeKey) + QLatin1Char(' ') + inputs()->itemText(0))); });
    types()->setFocus();
    QTest::keyClick(types(), Qt::Key_Down);
    QCOMPARE(seen, QStringList{ QStringLiteral("Axis_Pulse None") });
    QCOMPARE(types()->currentText(), QStringLiteral("Pulse Axis"));
    QCOMPARE(outputs()->count(), 3);
    QTest::keyClick(types(), Qt::Key_Down);
    QCOMPARE(seen.last(), QStringLiteral("Axis_Encoder Encoder input 0"));
    QCOMPARE(seen.size(), 2);
}

void BasicSetWidgetEditTest::typeChangeKeepsDevicesInPlace()
{
    AxisTable* axis = addAxis(pulseType, QStringLiteral("1"), QStringLiteral("1"));
    axis->setProperty(virtualKey, QStringLiteral("TRUE"));
    makePage(axis);
    types()->setCurrentText(QStringLiteral("Encoder Axis"));
    QCOMPARE(text(inputKey), QStringLiteral("1"));
    QCOMPARE(text(outputKey), QStringLiteral("1"));
    QCOMPARE(text(virtualKey), QStringLiteral("FALSE"));
    QCOMPARE(tabs(), (QList<bool>{ true, false, false }));
}

void BasicSetWidgetEditTest::typeChangeOfAMissingNameWritesNothingElse()
{
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    const QSignalSpy changed(m_page, &BasicSetWidget::axisTypeChanged);
    types()->addItem(QStringLiteral("Unheard Axis"));
    types()->setCurrentText(QStringLiteral("Unheard Axis"));
    QCOMPARE(text(typeKey), QString());
    QCOMPARE(changed.count(), 1);
}

void BasicSetWidgetEditTest::typeIsFoundByItsExactName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::newRow("before another that differs in letters only") << QStringLiteral("Drive") << encoderType;
    QTest::newRow("behind another that differs in letters only") << QStringLiteral("DRIVE") << pulseType;
    QTest::newRow("letters that no type has") << QStringLiteral("drive") << QString();
}

void BasicSetWidgetEditTest::typeIsFoundByItsExactName()
{
    QFETCH(QString, name);
    QFETCH(QString, type);
    QJsonObject controller = TestProject::description(QStringLiteral("NV3T_70Q12E"));
    controller.insert(QStringLiteral("axisTypes"),
        QJsonObject{ { virtualType, QStringLiteral("Virtual Axis") }, { pulseType, QStringLiteral("DRIVE") },
            { encoderType, QStringLiteral("Drive") }, { etherCatType, QStringLiteral("EtherCAT Axis") } });
    controller.insert(QStringLiteral("limits"),
        QJsonObject{ { QStringLiteral("Virtual Axis"), 4 }, { QStringLiteral("DRIVE"), 4 },
            { QStringLiteral("Drive"), 4 }, { QStringLiteral("MaxAxis"), 8 } });
    QJsonObject lists = controller.value(QStringLiteral("lists")).toObject();
    lists.insert(QStringLiteral("AxisType"),
        QJsonArray{ QStringLiteral("Virtual Axis"), QStringLiteral("DRIVE"), QStringLiteral("Drive") });
    controller.insert(QStringLiteral("lists"), lists);
    m_project->changeController(controller);
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    types()->addItem(QStringLiteral("drive"));
    types()->setCurrentIndex(types()->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive));
    QCOMPARE(text(typeKey), type);
}

void BasicSetWidgetEditTest::typeChangeIsToldWithTheProjectReleased()
{
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    const QPointer<ProjectModel> model = m_project->model();
    bool held = true;
    connect(m_page, &BasicSetWidget::axisTypeChanged, m_page, [&] {
        // A project that something holds outlives its closing.
        m_project->close();
        held = !model.isNull();
    });
    types()->setCurrentText(QStringLiteral("Pulse Axis"));
    QVERIFY(!held);
}

void BasicSetWidgetEditTest::deviceChangeIsToldWithTheProjectHeld_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("an input device") << encoderType;
    QTest::newRow("an output device") << pulseType;
}

void BasicSetWidgetEditTest::deviceChangeIsToldWithTheProjectHeld()
{
    QFETCH(QString, type);
    makePage(addAxis(type, QStringLiteral("1"), QStringLiteral("1")));
    const QPointer<ProjectModel> model = m_project->model();
    bool held = false;
    const auto close = [&] {
        m_project->close();
        held = !model.isNull();
    };
    connect(m_page, &BasicSetWidget::axisInputDeviceChanged, m_page, close);
    connect(m_page, &BasicSetWidget::axisOutputDeviceChanged, m_page, close);
    (type == encoderType ? inputs() : outputs())->setCurrentIndex(2);
    QVERIFY(held);
    QVERIFY2(!model, "and lets go of it after that");
}

void BasicSetWidgetEditTest::userChangesTheEncoderInput()
{
    addAxis(encoderType, QStringLiteral("1"), QStringLiteral("0"));
    makePage(addAxis(encoderType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    QStringList seen;
    connect(m_page, &BasicSetWidget::axisInputDeviceChanged, m_page, [&] { seen.append(text(inputKey)); });
    inputs()->setFocus();
    QTest::keyClick(inputs(), Qt::Key_Down);
    // The second entry of the free list is the third device.
    QCOMPARE(seen, QStringList{ QStringLiteral("2") });
    QCOMPARE(inputs()->currentText(), QStringLiteral("Encoder input 2"));
}

void BasicSetWidgetEditTest::userChangesTheEtherCatInput_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("stored");
    QTest::newRow("a name that no encoder list holds") << QStringLiteral("Drive 2") << QStringLiteral("-1");
    QTest::newRow("a name that the encoder list holds too") << QStringLiteral("Encoder input 2") << QStringLiteral("2");
}

void BasicSetWidgetEditTest::userChangesTheEtherCatInput()
{
    QFETCH(QString, chosen);
    QFETCH(QString, stored);
    makePage(addAxis(etherCatType, QStringLiteral("0"), QStringLiteral("0")));
    const QSignalSpy changed(m_page, &BasicSetWidget::axisInputDeviceChanged);
    inputs()->setCurrentText(chosen);
    QCOMPARE(text(inputKey), stored);
    QCOMPARE(changed.count(), 1);
}

void BasicSetWidgetEditTest::userChangesThePulseOutput()
{
    addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    QStringList seen;
    connect(m_page, &BasicSetWidget::axisOutputDeviceChanged, m_page, [&] { seen.append(text(outputKey)); });
    outputs()->setFocus();
    QTest::keyClick(outputs(), Qt::Key_Down);
    QCOMPARE(seen, QStringList{ QStringLiteral("2") });
    QTest::keyClick(outputs(), Qt::Key_Up);
    QCOMPARE(seen.last(), QStringLiteral("0"));
}

void BasicSetWidgetEditTest::userTicksVirtual()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    QTest::mouseClick(virtualBox(), Qt::LeftButton, Qt::NoModifier, QPoint(8, virtualBox()->height() / 2));
    QVERIFY(virtualBox()->isChecked());
    QCOMPARE(text(virtualKey), QStringLiteral("TRUE"));
    QVERIFY(!outputs()->isEnabled());
    virtualBox()->setFocus();
    QTest::keyClick(virtualBox(), Qt::Key_Space);
    QCOMPARE(text(virtualKey), QStringLiteral("FALSE"));
    QVERIFY(outputs()->isEnabled());

    // The tick of a box that stays usable on an EtherCAT axis never opens the outputs.
    m_axis->setProperty(typeKey, etherCatType);
    m_page->refreshFromModel();
    virtualBox()->click();
    QCOMPARE(text(virtualKey), QStringLiteral("TRUE"));
    virtualBox()->click();
    QCOMPARE(text(virtualKey), QStringLiteral("FALSE"));
    QVERIFY(!outputs()->isEnabled());
}

void BasicSetWidgetEditTest::virtualPulseAxisKeepsItsOutput()
{
    AxisTable* simulated = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    simulated->setProperty(virtualKey, QStringLiteral("TRUE"));
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(!entriesOf(outputs()).contains(QStringLiteral("Pulse output 1")));
}

void BasicSetWidgetEditTest::refreshEmitsNothing()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1")));
    const QSignalSpy type(m_page, &BasicSetWidget::axisTypeChanged);
    const QSignalSpy input(m_page, &BasicSetWidget::axisInputDeviceChanged);
    const QSignalSpy output(m_page, &BasicSetWidget::axisOutputDeviceChanged);
    for (const QString& word : { encoderType, etherCatType, virtualType, pulseType }) {
        m_axis->setProperty(typeKey, word);
        m_page->refreshFromModel();
        m_page->refreshFromModel();
    }
    QCOMPARE(type.count() + input.count() + output.count(), 0);
    // However often it has refreshed, one choice is one change.
    outputs()->setCurrentIndex(2);
    QCOMPARE(output.count(), 1);
}

void BasicSetWidgetEditTest::editsWithoutARecordDoNothing()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1")));
    const QSignalSpy type(m_page, &BasicSetWidget::axisTypeChanged);
    const QSignalSpy input(m_page, &BasicSetWidget::axisInputDeviceChanged);
    const QSignalSpy output(m_page, &BasicSetWidget::axisOutputDeviceChanged);
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    types()->setCurrentIndex(0);
    outputs()->setCurrentIndex(2);
    inputs()->setCurrentIndex(1);
    virtualBox()->setChecked(true);
    QCOMPARE(type.count() + input.count() + output.count(), 0);
    QCOMPARE(text(typeKey), pulseType);
    QCOMPARE(text(outputKey), QStringLiteral("1"));
    QCOMPARE(text(virtualKey), QStringLiteral("FALSE"));
    QVERIFY(outputs()->isEnabled());
}

void BasicSetWidgetEditTest::refreshWithoutARecordDropsTheChoices()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1")));
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    m_page->refreshFromModel();
    QCOMPARE(types()->count(), 0);
    // The lists of devices stand as they were.
    QCOMPARE(outputs()->count(), 3);
    QVERIFY(m_project->axisModel()->putObjectBack(m_axis));
    outputs()->setCurrentIndex(2);
    QCOMPARE(text(outputKey), QStringLiteral("1"));
    m_page->refreshFromModel();
    outputs()->setCurrentIndex(2);
    QCOMPARE(text(outputKey), QStringLiteral("2"));
}

void BasicSetWidgetEditTest::neverWritesTheAxisNumber()
{
    AxisTable* axis = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("300"));
    makePage(axis);
    control<QSpinBox>("spinBoxAxisNo")->setValue(5);
    QVERIFY(QMetaObject::invokeMethod(m_page, "onAxisNoChanged", Q_ARG(QString, QStringLiteral("5"))));
    QCOMPARE(text(QStringLiteral("AxisNo")), QStringLiteral("300"));
}

QTEST_MAIN(BasicSetWidgetEditTest)
#include "BasicSetWidgetEditTest.moc"
