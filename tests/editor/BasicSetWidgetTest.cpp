#include "tests/editor/BasicPageFixture.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>

class BasicSetWidgetTest : public QObject, private BasicPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void signalsAndSlotsStandInTheirOrder();
    void formHoldsItsControls();
    void formHasItsSizeAndPlaces();
    void withoutARecordTheFormStandsAsDrawn();
    void labelsAreBuddiesAndFieldsHaveNames();

    void showsTheAxisNumber_data();
    void showsTheAxisNumber();
    void showsTheVirtualFlag_data();
    void showsTheVirtualFlag();
    void autoMapIsNeverVisible();
    void livesWithoutARecord();
    void buildingEmitsNothing();

    void offersTypesByTheirLimits_data();
    void offersTypesByTheirLimits();
    void ownTypeStaysOfferedBelowTheLimit();
    void unknownTypesOfOthersCountForNone();
    void typeThatIsNotOfferedLeavesTheFirstOneShown();

    void branches_data();
    void branches();
    void unknownTypeDoesNothing();
    void virtualBranchWritesTheFlag();
    void plainDevices_data();
    void plainDevices();
    void freeDevices_data();
    void freeDevices();
    void deviceTakenLaterShowsAsEmpty();
    void encoderWithoutAFreeInput();
};

void BasicSetWidgetTest::signalsAndSlotsStandInTheirOrder()
{
    const QMetaObject& meta = BasicSetWidget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods.append(QString::fromLatin1(meta.method(index).methodSignature()));
    QCOMPARE(methods,
        (QStringList{ QStringLiteral("axisTypeChanged()"), QStringLiteral("axisInputDeviceChanged()"),
            QStringLiteral("axisOutputDeviceChanged()"), QStringLiteral("onAxisVritualStateChanged(bool)"),
            QStringLiteral("onAxisNoChanged(QString)"), QStringLiteral("onAxisTypeChanged(int)"),
            QStringLiteral("onAxisInputDevChanged(int)"), QStringLiteral("onAxisOutputDevChanged(int)") }));
}

void BasicSetWidgetTest::formHoldsItsControls()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QCOMPARE(m_page->parentWidget() != nullptr, true);
    QCOMPARE(m_page->windowTitle(), QStringLiteral("BasicSet"));
    auto* area = control<QScrollArea>("scrollArea");
    QVERIFY(area);
    QCOMPARE(area->widget()->objectName(), QStringLiteral("scrollAreaWidgetContents"));
    const QMap<QString, QString> labels{ { QStringLiteral("label"), QStringLiteral("AxisBasicSet") },
        { QStringLiteral("label_3"), QStringLiteral("AxisNo:") },
        { QStringLiteral("label_4"), QStringLiteral("AxisType:") },
        { QStringLiteral("label_5"), QStringLiteral("InputDev:") },
        { QStringLiteral("label_6"), QStringLiteral("OutputDev:") } };
    for (auto label = labels.begin(); label != labels.end(); ++label)
        QCOMPARE(m_page->findChild<QLabel*>(label.key())->text(), label.value());
    QCOMPARE(virtualBox()->text(), QStringLiteral("AxisVritual"));
    QCOMPARE(control<QCheckBox>("checkBoxAxisAutoMap")->text(), QStringLiteral("AxisAutoMap"));
    QVERIFY(control<QCheckBox>("checkBoxAxisAutoMap")->isChecked());
    const auto* number = control<QSpinBox>("spinBoxAxisNo");
    QVERIFY(!number->isEnabled());
    QCOMPARE(number->buttonSymbols(), QAbstractSpinBox::NoButtons);
    QCOMPARE(number->minimum(), 0);
    QCOMPARE(number->maximum(), 255);
    for (QWidget* child :
        m_page->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^(label|comboBox|checkBox|spinBox)"))))
        QVERIFY2(area->widget()->isAncestorOf(child), qPrintable(child->objectName()));
}

void BasicSetWidgetTest::formHasItsSizeAndPlaces()
{
    PropertyEditorView view;
    const BasicSetWidget page(m_project->name(), addAxis(pulseType, {}, {})->id(), &view);
    QCOMPARE(page.size(), QSize(937, 596));
    const auto* grid = page.findChild<QGridLayout*>(QStringLiteral("gridLayout"));
    QVERIFY(grid);
    const QVector<QStringList> rows{ { QStringLiteral("label") },
        { QStringLiteral("label_3"), QStringLiteral("spinBoxAxisNo") },
        { QStringLiteral("label_4"), QStringLiteral("comboBoxAxisType") },
        { QStringLiteral("label_5"), QStringLiteral("comboBoxInputDev") },
        { QStringLiteral("label_6"), QStringLiteral("comboBoxOutputDev") },
        { QStringLiteral("checkBoxAxisVritual"), QStringLiteral("checkBoxAxisAutoMap") } };
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < rows.at(row).size(); ++column) {
            QLayoutItem* place = grid->itemAtPosition(row, column);
            QVERIFY(place && place->widget());
            QCOMPARE(place->widget()->objectName(), rows.at(row).at(column));
        }
    }
}

void BasicSetWidgetTest::withoutARecordTheFormStandsAsDrawn()
{
    PropertyEditorView view;
    const BasicSetWidget page(m_project->name(), 4711, &view);
    QVERIFY(page.findChild<QCheckBox*>(QStringLiteral("checkBoxAxisVritual"))->isChecked());
    QVERIFY(page.findChild<QCheckBox*>(QStringLiteral("checkBoxAxisAutoMap"))->isChecked());
}

void BasicSetWidgetTest::labelsAreBuddiesAndFieldsHaveNames()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    const QMap<QString, QString> buddies{ { QStringLiteral("label_3"), QStringLiteral("spinBoxAxisNo") },
        { QStringLiteral("label_4"), QStringLiteral("comboBoxAxisType") },
        { QStringLiteral("label_5"), QStringLiteral("comboBoxInputDev") },
        { QStringLiteral("label_6"), QStringLiteral("comboBoxOutputDev") } };
    for (auto pair = buddies.begin(); pair != buddies.end(); ++pair) {
        const QWidget* buddy = m_page->findChild<QLabel*>(pair.key())->buddy();
        QVERIFY(buddy);
        QCOMPARE(buddy->objectName(), pair.value());
        QVERIFY(!buddy->accessibleName().isEmpty());
    }
}

void BasicSetWidgetTest::showsTheAxisNumber_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("shown");
    QTest::newRow("the lowest") << QStringLiteral("0") << 0;
    QTest::newRow("a number") << QStringLiteral("17") << 17;
    QTest::newRow("the highest") << QStringLiteral("255") << 255;
    QTest::newRow("above the highest") << QStringLiteral("300") << 255;
    QTest::newRow("no number") << QStringLiteral("x") << 0;
}

void BasicSetWidgetTest::showsTheAxisNumber()
{
    QFETCH(QString, stored);
    QFETCH(int, shown);
    AxisTable* axis = addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0"));
    axis->setProperty(QStringLiteral("AxisNo"), stored);
    makePage(axis);
    QCOMPARE(control<QSpinBox>("spinBoxAxisNo")->value(), shown);
    // It is read once: a later refresh leaves it.
    axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("99"));
    m_page->refreshFromModel();
    QCOMPARE(control<QSpinBox>("spinBoxAxisNo")->value(), shown);
}

void BasicSetWidgetTest::showsTheVirtualFlag_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("checked");
    QTest::newRow("FALSE is off") << QStringLiteral("FALSE") << false;
    QTest::newRow("false in small letters is off") << QStringLiteral("false") << false;
    QTest::newRow("TRUE is on") << QStringLiteral("TRUE") << true;
    QTest::newRow("an empty text is on") << QString() << true;
    QTest::newRow("an unknown word is on") << QStringLiteral("no") << true;
}

void BasicSetWidgetTest::showsTheVirtualFlag()
{
    QFETCH(QString, stored);
    QFETCH(bool, checked);
    AxisTable* axis = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0"));
    axis->setProperty(virtualKey, stored);
    makePage(axis);
    QCOMPARE(virtualBox()->isChecked(), checked);
    QCOMPARE(outputs()->isEnabled(), !checked);
    QCOMPARE(text(virtualKey), stored);
}

void BasicSetWidgetTest::autoMapIsNeverVisible()
{
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(showPage());
    QVERIFY(types()->isVisible());
    const auto* box = control<QCheckBox>("checkBoxAxisAutoMap");
    QVERIFY(!box->isVisible());
    for (const QString& type : { virtualType, pulseType, encoderType, etherCatType }) {
        m_axis->setProperty(typeKey, type);
        m_page->refreshFromModel();
        QVERIFY(!box->isVisible());
    }
    QCOMPARE(text(QStringLiteral("AxisAutoMap")), QStringLiteral("FALSE"));
}

void BasicSetWidgetTest::livesWithoutARecord()
{
    PropertyEditorView view;
    for (const QString& project : { m_project->name(), QStringLiteral("Nowhere") }) {
        BasicSetWidget page(project, 4711, &view);
        QCOMPARE(page.findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"))->count(), 0);
        page.refreshFromModel();
    }
}

void BasicSetWidgetTest::buildingEmitsNothing()
{
    AxisTable* axis = addAxis(encoderType, QStringLiteral("1"), QStringLiteral("0"));
    const QSignalSpy changed(axis, &ModelObject::dataChanged);
    makePage(axis);
    QCOMPARE(changed.count(), 0);
}

void BasicSetWidgetTest::offersTypesByTheirLimits_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("others");
    QTest::addColumn<bool>("offered");
    QTest::newRow("none in use") << 2 << 0 << true;
    QTest::newRow("one left") << 2 << 1 << true;
    QTest::newRow("used up") << 2 << 2 << false;
    QTest::newRow("exceeded wraps below 0 and stays offered") << 2 << 3 << true;
    QTest::newRow("a limit of 0 is used up") << 0 << 0 << false;
    QTest::newRow("a limit of 0 that is exceeded wraps too") << 0 << 1 << true;
    QTest::newRow("eight bits: exceeded by 256 is used up again") << 2 << 258 << false;
}

void BasicSetWidgetTest::offersTypesByTheirLimits()
{
    QFETCH(int, limit);
    QFETCH(int, others);
    QFETCH(bool, offered);
    setLimit("Encoder Axis", limit);
    for (int count = 0; count < others; ++count)
        addAxis(encoderType, QStringLiteral("0"), QStringLiteral("0"));
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    QStringList expected{ QStringLiteral("Virtual Axis"), QStringLiteral("Pulse Axis"), QStringLiteral("Encoder Axis"),
        QStringLiteral("EtherCAT Axis") };
    if (!offered)
        expected.removeOne(QStringLiteral("Encoder Axis"));
    QCOMPARE(entriesOf(types()), expected);
    QCOMPARE(types()->currentText(), QStringLiteral("Virtual Axis"));
}

void BasicSetWidgetTest::ownTypeStaysOfferedBelowTheLimit()
{
    setLimit("Encoder Axis", 2);
    addAxis(encoderType, QStringLiteral("1"), QStringLiteral("0"));
    makePage(addAxis(encoderType, QStringLiteral("2"), QStringLiteral("0")));
    QCOMPARE(types()->currentText(), QStringLiteral("Encoder Axis"));
    addAxis(encoderType, QStringLiteral("0"), QStringLiteral("0"));
    m_page->refreshFromModel();
    QVERIFY(!entriesOf(types()).contains(QStringLiteral("Encoder Axis")));
}

void BasicSetWidgetTest::unknownTypesOfOthersCountForNone()
{
    setLimit("Encoder Axis", 1);
    addAxis(QStringLiteral("Axis_Unheard"), QStringLiteral("0"), QStringLiteral("0"));
    addAxis(QString(), QStringLiteral("0"), QStringLiteral("0"));
    makePage(addAxis(virtualType, QStringLiteral("0"), QStringLiteral("0")));
    QVERIFY(entriesOf(types()).contains(QStringLiteral("Encoder Axis")));
}

void BasicSetWidgetTest::typeThatIsNotOfferedLeavesTheFirstOneShown()
{
    makePage(addAxis(QStringLiteral("Axis_Unheard"), QStringLiteral("0"), QStringLiteral("0")));
    QCOMPARE(types()->currentIndex(), 0);
    QCOMPARE(text(typeKey), QStringLiteral("Axis_Unheard"));
}

void BasicSetWidgetTest::branches_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QStringList>("inputList");
    QTest::addColumn<QStringList>("outputList");
    QTest::addColumn<bool>("inputEnabled");
    QTest::addColumn<bool>("outputEnabled");
    QTest::addColumn<bool>("flagEnabled");
    QTest::addColumn<QList<bool>>("tabsShown");

    const auto list = [](std::initializer_list<const char*> texts) {
        QStringList entries;
        for (const char* text : texts)
            entries.append(QString::fromLatin1(text));
        return entries;
    };
    const QString off = QStringLiteral("FALSE");
    QTest::newRow("virtual") << virtualType << off << list({ "None", "Spare" }) << list({ "None", "Spare" }) << false
                             << false << false << QList<bool>{ false, true, true };
    QTest::newRow("pulse") << pulseType << off << list({ "None", "Feedback" })
                           << list({ "Pulse output 0", "Pulse output 1", "Pulse output 2" }) << false << true << true
                           << QList<bool>{ true, true, true };
    QTest::newRow("pulse, simulated") << pulseType << QStringLiteral("TRUE") << list({ "None", "Feedback" })
                                      << list({ "Pulse output 0", "Pulse output 1", "Pulse output 2" }) << false
                                      << false << true << QList<bool>{ true, true, true };
    QTest::newRow("encoder") << encoderType << off << list({ "Encoder input 0", "Encoder input 1", "Encoder input 2" })
                             << list({ "None", "Spare" }) << true << false << false
                             << QList<bool>{ true, false, false };
}

void BasicSetWidgetTest::branches()
{
    QFETCH(QString, type);
    QFETCH(QString, flag);
    QFETCH(QStringList, inputList);
    QFETCH(QStringList, outputList);
    QFETCH(bool, inputEnabled);
    QFETCH(bool, outputEnabled);
    QFETCH(bool, flagEnabled);
    QFETCH(QList<bool>, tabsShown);
    AxisTable* axis = addAxis(type, QStringLiteral("0"), QStringLiteral("0"));
    axis->setProperty(virtualKey, flag);
    makePage(axis);
    for (const bool before : { true, false }) {
        setTabs(before);
        inputs()->setEnabled(!inputEnabled);
        outputs()->setEnabled(!outputEnabled);
        virtualBox()->setEnabled(!flagEnabled);
        m_page->refreshFromModel();
        QCOMPARE(tabs(), tabsShown);
        QCOMPARE(inputs()->isEnabled(), inputEnabled);
        QCOMPARE(outputs()->isEnabled(), outputEnabled);
        QCOMPARE(virtualBox()->isEnabled(), flagEnabled);
    }
    QCOMPARE(entriesOf(inputs()), inputList);
    QCOMPARE(entriesOf(outputs()), outputList);
    QVERIFY(m_view->isTabVisible(QStringLiteral("basic setting")));
    QVERIFY(m_view->isTabVisible(QStringLiteral("model and param setting")));
}

void BasicSetWidgetTest::unknownTypeDoesNothing()
{
    for (const char* type : { "axis_pulse", "", "Axis_Unheard" }) {
        makePage(addAxis(QString::fromLatin1(type), QStringLiteral("0"), QStringLiteral("0")));
        QCOMPARE(inputs()->count(), 0);
        QCOMPARE(outputs()->count(), 0);
        QCOMPARE(tabs(), (QList<bool>{ true, true, true }));
        // The choices work all the same.
        types()->setCurrentText(QStringLiteral("Encoder Axis"));
        QCOMPARE(text(typeKey), encoderType);
        QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    }
}

void BasicSetWidgetTest::virtualBranchWritesTheFlag()
{
    for (const QString& type : { virtualType, encoderType }) {
        AxisTable* axis = addAxis(type, QStringLiteral("1"), QStringLiteral("1"));
        axis->setProperty(virtualKey, QStringLiteral("TRUE"));
        makePage(axis);
        QVERIFY(!virtualBox()->isChecked());
        QCOMPARE(text(virtualKey), QStringLiteral("FALSE"));
        QVERIFY(!outputs()->isEnabled());
    }
    AxisTable* drive = addAxis(etherCatType, QStringLiteral("0"), QStringLiteral("0"));
    drive->setProperty(virtualKey, QStringLiteral("TRUE"));
    makePage(drive);
    QVERIFY(virtualBox()->isChecked());
    QVERIFY(virtualBox()->isEnabled());
    QCOMPARE(text(virtualKey), QStringLiteral("TRUE"));
}

void BasicSetWidgetTest::plainDevices_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isInput");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("storedThen");
    const auto row = [](const char* name, const QString& type, bool isInput, const char* stored, int index,
                         const char* storedThen) {
        QTest::newRow(name) << type << isInput << QString::fromLatin1(stored) << index
                            << QString::fromLatin1(storedThen);
    };
    row("virtual input", virtualType, true, "1", 1, "1");
    row("virtual input past the end stays", virtualType, true, "9", -1, "9");
    row("virtual output", virtualType, false, "1", 1, "1");
    row("virtual output past the end stays", virtualType, false, "2", -1, "2");
    row("pulse input", pulseType, true, "1", 1, "1");
    row("pulse input at the end is put back", pulseType, true, "2", 0, "0");
    row("pulse input that is no number shows the first", pulseType, true, "-1", 0, "-1");
    row("encoder output", encoderType, false, "1", 1, "1");
    row("encoder output at the end is put back", encoderType, false, "2", 0, "0");
    row("EtherCAT input", etherCatType, true, "2", 2, "2");
    row("EtherCAT input past the end stays", etherCatType, true, "3", -1, "3");
    row("EtherCAT input -1 shows the first", etherCatType, true, "-1", 0, "-1");
    row("EtherCAT output", etherCatType, false, "1", 1, "1");
    row("EtherCAT output past the end stays", etherCatType, false, "7", -1, "7");
}

void BasicSetWidgetTest::plainDevices()
{
    QFETCH(QString, type);
    QFETCH(bool, isInput);
    QFETCH(QString, stored);
    QFETCH(int, index);
    QFETCH(QString, storedThen);
    makePage(addAxis(type, isInput ? stored : QStringLiteral("1"), isInput ? QStringLiteral("1") : stored));
    QCOMPARE((isInput ? inputs() : outputs())->currentIndex(), index);
    QCOMPARE(text(isInput ? inputKey : outputKey), storedThen);
}

void BasicSetWidgetTest::freeDevices_data()
{
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QList<int>>("offered");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("storedThen");
    const auto texts = [](std::initializer_list<const char*> list) {
        QStringList entries;
        for (const char* text : list)
            entries.append(QString::fromLatin1(text));
        return entries;
    };
    using Positions = QList<int>;
    QTest::newRow("alone and not chosen yet: the first")
        << texts({}) << QStringLiteral("0") << Positions{ 0, 1, 2 } << 0 << QStringLiteral("0");
    QTest::newRow("a chosen device is kept")
        << texts({ "0" }) << QStringLiteral("2") << Positions{ 1, 2 } << 1 << QStringLiteral("2");
    QTest::newRow("another at 1, own at 0 keeps 0")
        << texts({ "1" }) << QStringLiteral("0") << Positions{ 0, 2 } << 0 << QStringLiteral("0");
    QTest::newRow("another holds 0: own at 0 moves on")
        << texts({ "0" }) << QStringLiteral("0") << Positions{ 1, 2 } << 0 << QStringLiteral("1");
    QTest::newRow("two hold 0 and 1: own at 0 moves to 2")
        << texts({ "1", "0" }) << QStringLiteral("0") << Positions{ 2 } << 0 << QStringLiteral("2");
    QTest::newRow("at the end of the list takes the first free one")
        << texts({ "0" }) << QStringLiteral("3") << Positions{ 1, 2 } << 0 << QStringLiteral("1");
    QTest::newRow("far past the end takes the first free one")
        << texts({}) << QStringLiteral("99") << Positions{ 0, 1, 2 } << 0 << QStringLiteral("0");
    QTest::newRow("a stored -1 takes the first free one")
        << texts({ "0" }) << QStringLiteral("-1") << Positions{ 1, 2 } << 0 << QStringLiteral("1");
    QTest::newRow("a word takes the first free one")
        << texts({}) << QStringLiteral("two") << Positions{ 0, 1, 2 } << 0 << QStringLiteral("0");
    QTest::newRow("a kept device that another holds shows as empty")
        << texts({ "2" }) << QStringLiteral("2") << Positions{ 0, 1 } << -1 << QStringLiteral("2");
    QTest::newRow("another past the end takes none")
        << texts({ "3" }) << QStringLiteral("1") << Positions{ 0, 1, 2 } << 1 << QStringLiteral("1");
    QTest::newRow("another that holds no number counts as 0")
        << texts({ "x" }) << QStringLiteral("1") << Positions{ 1, 2 } << 0 << QStringLiteral("1");
}

void BasicSetWidgetTest::freeDevices()
{
    QFETCH(QStringList, others);
    QFETCH(QString, stored);
    QFETCH(QList<int>, offered);
    QFETCH(int, index);
    QFETCH(QString, storedThen);
    // The rule is one for the outputs of pulse axes and the inputs of encoder axes; axes of other types take nothing.
    for (const bool pulse : { true, false }) {
        cleanup();
        init();
        for (const QString& other : others)
            addAxis(pulse ? pulseType : encoderType, pulse ? QStringLiteral("0") : other,
                pulse ? other : QStringLiteral("0"));
        addAxis(pulse ? encoderType : pulseType, QStringLiteral("1"), QStringLiteral("1"));
        addAxis(etherCatType, QStringLiteral("1"), QStringLiteral("1"));
        makePage(addAxis(pulse ? pulseType : encoderType, pulse ? QStringLiteral("0") : stored,
            pulse ? stored : QStringLiteral("0")));
        const QComboBox* box = pulse ? outputs() : inputs();
        const QString name = pulse ? QStringLiteral("Pulse output %1") : QStringLiteral("Encoder input %1");
        QStringList entries;
        for (const int position : offered)
            entries.append(name.arg(position));
        QCOMPARE(entriesOf(box), entries);
        QCOMPARE(box->currentIndex(), index);
        QCOMPARE(text(pulse ? outputKey : inputKey), storedThen);
    }
}

void BasicSetWidgetTest::deviceTakenLaterShowsAsEmpty()
{
    AxisTable* other = addAxis(pulseType, QStringLiteral("0"), QStringLiteral("1"));
    makePage(addAxis(pulseType, QStringLiteral("0"), QStringLiteral("2")));
    QCOMPARE(outputs()->currentText(), QStringLiteral("Pulse output 2"));
    other->setProperty(outputKey, QStringLiteral("2"));
    m_page->refreshFromModel();
    QCOMPARE(outputs()->currentIndex(), -1);
    QCOMPARE(text(outputKey), QStringLiteral("2"));
}

void BasicSetWidgetTest::encoderWithoutAFreeInput()
{
    setList("AxisEncoderInputDev", { "Encoder input 0" });
    addAxis(encoderType, QStringLiteral("0"), QStringLiteral("0"));
    makePage(addAxis(encoderType, QStringLiteral("0"), QStringLiteral("0")));
    QCOMPARE(inputs()->count(), 0);
    QCOMPARE(text(inputKey), QStringLiteral("-1"));
    QVERIFY(inputs()->isEnabled());
    QCOMPARE(tabs(), (QList<bool>{ true, false, false }));
    types()->setCurrentText(QStringLiteral("Virtual Axis"));
    QCOMPARE(text(typeKey), virtualType);
}

QTEST_MAIN(BasicSetWidgetTest)
#include "BasicSetWidgetTest.moc"
