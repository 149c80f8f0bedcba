#include "tests/pages/ModePage.h"
#include "tests/support/RecordingTranslator.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMetaMethod>
#include <QRadioButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTest>

namespace {

QString utf(const char* text)
{
    return QString::fromUtf8(text);
}

/// The form as it stands before any record has been read.
class BareForm {
public:
    BareForm() : page(QStringLiteral("no such project"), 1, nullptr) { }

    template <typename Widget>
    Widget* find(const QString& name)
    {
        return page.findChild<Widget*>(name);
    }

    /// The text of the label in the cell beside a control, by columns to the right.
    QString cellText(const QWidget* control, int columns)
    {
        auto* const grid = qobject_cast<QGridLayout*>(control->parentWidget()->layout());
        int row = 0;
        int column = 0;
        int ignored = 0;
        grid->getItemPosition(grid->indexOf(const_cast<QWidget*>(control)), &row, &column, &ignored, &ignored);
        QLayoutItem* item = grid->itemAtPosition(row, column + columns);
        const auto* const label = item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
        return label ? label->text() : QStringLiteral("(none)");
    }

    ModelAndParamtSetWidget page;
};

/// Collects Qt's messages while it lives.
class MessageCatcher {
public:
    MessageCatcher() : m_former(qInstallMessageHandler(keep)) { messages().clear(); }
    ~MessageCatcher() { qInstallMessageHandler(m_former); }
    Q_DISABLE_COPY(MessageCatcher)

    static QStringList& messages()
    {
        static QStringList list;
        return list;
    }

private:
    static void keep(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
    {
        messages().append(text);
    }

    QtMessageHandler m_former;
};

} // namespace

class ModelAndParamtSetWidgetFormTest : public QObject {
    Q_OBJECT

private slots:
    void headings_data();
    void headings();
    void controls_data();
    void controls();
    void buttons_data();
    void buttons();
    void groupsHaveNoTitle();
    void windowAndScrollArea();
    void stack();
    void rowWidgetsOfTheInputGroup();
    void slotsInTheirOrder();
    void nothingIsReportedWhileBuilding();
    void connectionsByName();
    void everyControlHasAName();
    void textsAreLookedUpInTheirContext();
    void textsOfTheSlotsAreLookedUpToo();
};

void ModelAndParamtSetWidgetFormTest::headings_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("group");
    const auto row = [](int number, const char* name, const char* text, const char* group) {
        QTest::newRow(name) << number << utf(name) << utf(text) << utf(group);
    };
    row(0, "label", "ModeSelect：", "");
    row(1, "label_2", "Encoder Mode ", "groupBox");
    row(2, "label_3", "Mode Set", "groupBox_2");
    row(3, "label_4", "Soft Limit", "stackedWidget");
    row(4, "label_13", "Software Error Response", "groupBox_4");
    row(5, "label_18", "Threshold Setting", "groupBox_5");
    row(6, "label_23", "Axis Vel Set", "groupBox_6");
    row(7, "label_28", "Torque Set", "groupBox_7");
    row(8, "label_16", "Options", "groupBox_8");
    row(9, "label_34", "Hard limit logic", "groupBox_9");
    row(10, "label_39", "Input Signal Setting", "groupBox_11");
    row(11, "label_40", "OutPut Signal Setting", "groupBox_12");
    row(12, "label_36", "Compare output Setting", "groupBox_13");
}

void ModelAndParamtSetWidgetFormTest::headings()
{
    QFETCH(int, row);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, group);
    BareForm form;
    const auto* const label = form.find<QLabel>(name);
    QVERIFY(label);
    QCOMPARE(label->text(), text);
    auto* const content = form.find<QWidget>(QStringLiteral("scrollAreaWidgetContents"));
    auto* const grid = qobject_cast<QGridLayout*>(content->layout());
    QVERIFY(grid);
    QCOMPARE(grid->itemAtPosition(row, 0)->widget(), static_cast<const QWidget*>(label));
    QLayoutItem* right = grid->itemAtPosition(row, 1);
    QCOMPARE(right ? right->widget()->objectName() : QString(), group);
}

void ModelAndParamtSetWidgetFormTest::controls_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("unit");
    const auto row = [](const char* name, const char* kind, const char* parent, const char* label, const char* text,
                         const char* unit, bool enabled = true) {
        QTest::newRow(name) << utf(kind) << utf(parent) << utf(label) << utf(text) << enabled << utf(unit);
    };
    row("lineEdit", "QLineEdit", "groupBox_3", " Soft Limit Neg:", "0.00", "Unit");
    row("lineEdit_2", "QLineEdit", "groupBox_3", "Soft Limit Pos:", "1000.00", "Unit");
    row("lineEdit_12", "QLineEdit", "groupBox_10", "Period of Rot:", "360.00", "Unit");
    row("lineEdit_3", "QLineEdit", "groupBox_4", "Limit Dec:", "1000.00", "Unit/s^2");
    row("lineEdit_4", "QLineEdit", "groupBox_4", "Axis Error Dec:", "10000.00", "Unit/s^2");
    row("lineEdit_6", "QLineEdit", "groupBox_5", "Velocity Threshold:", "2000", "Unit");
    row("lineEdit_5", "QLineEdit", "groupBox_5", "Follow Error Threshold:", "100.00", "Unit");
    row("lineEdit_7", "QLineEdit", "groupBox_6", "Max Vel:", "1000.00", "Unit/s");
    row("lineEdit_8", "QLineEdit", "groupBox_6", "<html><head/><body><p>Max Acc:</p></body></html>", "30000.00",
        "Unit/s^2");
    row("lineEdit_11", "QLineEdit", "groupBox_6", "Jog Max Vel:", "500.00", "Unit/s");
    row("lineEdit_10", "QLineEdit", "groupBox_7", "Neg Torque Max Value:", "3000", "0.1%   ");
    row("lineEdit_9", "QLineEdit", "groupBox_7", "Pos Torque Max Value:", "3000", "0.1%");
    row("HardLimPosBox", "QComboBox", "groupBox_9", " Hard Limit Pos:", "", "(none)");
    row("HardLimNegBox", "QComboBox", "groupBox_9", "Hard Limit Neg:", "", "(none)");
    row("probe1ComboBox", "QComboBox", "widget", "(none)", "", "(none)", false);
    row("probe2ComboBox", "QComboBox", "widget", "(none)", "", "(none)", false);
    row("outputMethodComboBox", "QComboBox", "widget_2", "Encoder Mode:", "", "(none)");
    row("inputSignalComboBox", "QComboBox", "widget_2", "Input Signal:", "", "(none)");
    row("lineEdit_13", "QLineEdit", "widget_3", "Input Signal Filter Time:", "0", "100ns ");
    row("inputPinComboBox", "QComboBox", "widget_3", "(none)", "", "(none)", false);
    row("pulseMethodComboBox", "QComboBox", "groupBox_12", "Pulse Mode:", "", "(none)");
    row("outputPinComboBox", "QComboBox", "groupBox_12", "Output Pin:", "", "(none)");
    row("compareOutputPinCheckBox", "QComboBox", "groupBox_13", "Output Pin:", "", "(none)");
    row("lineEdit_14", "QLineEdit", "groupBox_13", "Compare Output Width:", "0", "unit", false);
}

void ModelAndParamtSetWidgetFormTest::controls()
{
    QFETCH(QString, kind);
    QFETCH(QString, parent);
    QFETCH(QString, label);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    QFETCH(QString, unit);
    BareForm form;
    const auto* const control = form.find<QWidget>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(control);
    QCOMPARE(QString::fromLatin1(control->metaObject()->className()), kind);
    QCOMPARE(control->parentWidget()->objectName(), parent);
    QCOMPARE(control->isEnabledTo(&form.page), enabled);
    QCOMPARE(form.cellText(control, -1), label);
    QCOMPARE(form.cellText(control, 1), unit);
    if (const auto* const edit = qobject_cast<const QLineEdit*>(control))
        QCOMPARE(edit->text(), text);
    if (const auto* const box = qobject_cast<const QComboBox*>(control)) {
        QCOMPARE(box->count(), 0);
        QVERIFY(!box->isEditable());
    }
}

void ModelAndParamtSetWidgetFormTest::buttons_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("enabled");
    const auto row = [](const char* name, const char* kind, const char* parent, const char* text, bool checked,
                         bool enabled = true) {
        QTest::newRow(name) << utf(kind) << utf(parent) << utf(text) << checked << enabled;
    };
    row("radioButton", "QRadioButton", "groupBox", "Increment Mode", true);
    row("radioButton_2", "QRadioButton", "groupBox", "Absolute Mode", false);
    row("radioButton_3", "QRadioButton", "groupBox_2", "Linear Mode", true);
    row("radioButton_4", "QRadioButton", "groupBox_2", "Rotate Mode", false);
    row("checkBox", "QCheckBox", "groupBox_3", "Enable", true);
    row("checkBox_2", "QCheckBox", "groupBox_8", "Do not enter the ErrorStop state after touching the limit", true);
    row("probe1checkBox", "QCheckBox", "widget", "Probe 1 Enable:", false);
    row("probe2checkBox", "QCheckBox", "widget", "Probe 2 Enable:", false);
    row("checkBox_4", "QCheckBox", "widget_3", "Preset Enable:", false);
    row("checkBox_3", "QCheckBox", "groupBox_13", "Compare output enable", false);
    row("radioButton_5", "QRadioButton", "groupBox_13", " ms", false, false);
    row("radioButton_6", "QRadioButton", "groupBox_13", " unit", true, false);
}

void ModelAndParamtSetWidgetFormTest::buttons()
{
    QFETCH(QString, kind);
    QFETCH(QString, parent);
    QFETCH(QString, text);
    QFETCH(bool, checked);
    QFETCH(bool, enabled);
    BareForm form;
    const auto* const button = form.find<QAbstractButton>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(button);
    QCOMPARE(QString::fromLatin1(button->metaObject()->className()), kind);
    QCOMPARE(button->parentWidget()->objectName(), parent);
    QCOMPARE(button->text(), text);
    QCOMPARE(button->isChecked(), checked);
    QCOMPARE(button->isEnabledTo(&form.page), enabled);
}

void ModelAndParamtSetWidgetFormTest::groupsHaveNoTitle()
{
    BareForm form;
    const QList<QGroupBox*> groups = form.page.findChildren<QGroupBox*>();
    QCOMPARE(groups.size(), 13);
    for (const QGroupBox* group : groups)
        QVERIFY2(group->title().isEmpty(), qPrintable(group->objectName()));
}

void ModelAndParamtSetWidgetFormTest::windowAndScrollArea()
{
    BareForm form;
    QCOMPARE(form.page.windowTitle(), QStringLiteral("ModelAndPrmtSet"));
    const QList<QScrollArea*> areas = form.page.findChildren<QScrollArea*>();
    QCOMPARE(areas.size(), 1);
    QVERIFY(areas.first()->widgetResizable());
    QVERIFY(areas.first()->widget());
    QVERIFY(ModelAndParamtSetWidget::staticMetaObject.superClass() == &QWidget::staticMetaObject);
}

void ModelAndParamtSetWidgetFormTest::stack()
{
    BareForm form;
    const auto* const stack = form.find<QStackedWidget>(QStringLiteral("stackedWidget"));
    QCOMPARE(stack->count(), 2);
    QCOMPARE(stack->widget(0)->objectName(), QStringLiteral("page"));
    QCOMPARE(stack->widget(1)->objectName(), QStringLiteral("page_2"));
    QCOMPARE(stack->currentIndex(), 1);
    QVERIFY(stack->widget(0)->findChild<QGroupBox*>(QStringLiteral("groupBox_3")));
    QVERIFY(stack->widget(1)->findChild<QGroupBox*>(QStringLiteral("groupBox_10")));
}

void ModelAndParamtSetWidgetFormTest::rowWidgetsOfTheInputGroup()
{
    BareForm form;
    for (const char* name : { "widget", "widget_2", "widget_3" }) {
        const auto* const row = form.find<QWidget>(utf(name));
        QVERIFY(row);
        QCOMPARE(row->metaObject()->className(), "QWidget");
        QCOMPARE(row->parentWidget()->objectName(), QStringLiteral("groupBox_11"));
    }
    const auto labelText = [&](const char* name) { return form.find<QLabel>(utf(name))->text(); };
    QCOMPARE(labelText("label_14"), QStringLiteral("Follow Error Threshold:"));
    QCOMPARE(labelText("label_15"), QStringLiteral("Unit"));
    QCOMPARE(labelText("label_29"), QStringLiteral("Jog Max Vel:"));
    QCOMPARE(labelText("label_30"), QStringLiteral("Unit/s"));
    QCOMPARE(labelText("label_38"), QStringLiteral("Output Pin:"));
    QCOMPARE(labelText("label_41"), QStringLiteral("Encoder Mode:"));
    QCOMPARE(labelText("label_42"), QStringLiteral("Output Pin:"));
    QCOMPARE(labelText("label_43"), QStringLiteral("100ns "));
    QCOMPARE(labelText("label_44"), QStringLiteral("Input Signal Filter Time:"));
    QCOMPARE(labelText("label_45"), QStringLiteral("Input Signal:"));
    QCOMPARE(labelText("label_46"), QStringLiteral("Compare Output Width:"));
    QCOMPARE(labelText("label_47"), QStringLiteral("unit"));
    QCOMPARE(labelText("label_48"), QStringLiteral("Unit:"));
    QCOMPARE(labelText("label_49"), QStringLiteral("Pulse Mode:"));
}

void ModelAndParamtSetWidgetFormTest::slotsInTheirOrder()
{
    QByteArrayList found;
    const QMetaObject& meta = ModelAndParamtSetWidget::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), found.size() < 2 ? QMetaMethod::Public : QMetaMethod::Private);
        found.append(meta.method(i).methodSignature());
    }
    const QByteArrayList expected{ "axisTypeChanged()", "updateWidget()", "on_radiobuttonclicked(bool)",
        "on_radiobutton2clicked(bool)", "on_radiobutton3clicked(bool)", "on_radiobutton4clicked(bool)",
        "on_radiobutton5clicked(bool)", "on_radiobutton6clicked(bool)", "on_checkedBox_Clicked(bool)",
        "on_lineEdit_TextChanged()", "on_lineEdit_2_TextChanged()", "on_lineEdit_3_TextChanged()",
        "on_lineEdit_4_TextChanged()", "on_lineEdit_5_TextChanged(QString)", "on_lineEdit_6_TextChanged()",
        "on_lineEdit_7_TextChanged()", "on_lineEdit_8_TextChanged()", "on_lineEdit_9_TextChanged(QString)",
        "on_lineEdit_10_TextChanged(QString)", "on_lineEdit_11_TextChanged()", "on_lineEdit_12_TextChanged()",
        "on_lineEdit_13_TextChanged()", "on_lineEdit_14_TextChanged()", "on_HardLimPosBoxChanged(int)",
        "on_HardLimNegBoxChanged(int)", "on_checkBox_2_stateChanged(int)", "on_checkBox_3_stateChanged(int)",
        "on_checkBox_4_stateChanged(int)", "on_probe1ComboBox(int)", "on_probe2ComboBox(int)",
        "on_outputMethodComboBox(int)", "on_outputPinComboBox(int)", "on_compareOutputPinCheckBox(int)",
        "on_inputPinComboBox(int)", "on_inputSignalComboBox(int)", "on_probe1checkBox_stateChanged(int)",
        "on_probe2checkBox_stateChanged(int)", "showStackWidgetPage(int)" };
    QCOMPARE(found, expected);
}

void ModelAndParamtSetWidgetFormTest::nothingIsReportedWhileBuilding()
{
    ModePage page(QStringLiteral("Axis_Pulse"));
    const MessageCatcher catcher;
    page.open();
    QCOMPARE(MessageCatcher::messages(), QStringList());
    // Silence ends with the building.
    qWarning("QMetaObject::connectSlotsByName: No matching signal for on_lineEdit_TextChanged()");
    QCOMPARE(MessageCatcher::messages().size(), 1);
}

void ModelAndParamtSetWidgetFormTest::connectionsByName()
{
    // Without a record the page's own connections are there all the same, and those of the form beside them.
    BareForm form;
    const auto count
        = [&](const char* name) { return connectionCount(form.find<QCheckBox>(utf(name)), SIGNAL(stateChanged(int))); };
    QCOMPARE(count("checkBox_2"), 2);
    QCOMPARE(count("checkBox"), 1);
    for (const char* name : { "checkBox_3", "checkBox_4", "probe1checkBox", "probe2checkBox" })
        QCOMPARE(count(name), 1);
    for (const char* name : { "HardLimPosBox", "HardLimNegBox", "probe1ComboBox", "probe2ComboBox",
             "outputMethodComboBox", "pulseMethodComboBox", "outputPinComboBox", "compareOutputPinCheckBox",
             "inputPinComboBox", "inputSignalComboBox" })
        QCOMPARE(connectionCount(form.find<QComboBox>(utf(name)), SIGNAL(currentIndexChanged(int))), 1);
    for (int i = 1; i <= 6; ++i) {
        const QString name = i == 1 ? QStringLiteral("radioButton") : QStringLiteral("radioButton_%1").arg(i);
        QCOMPARE(connectionCount(form.find<QRadioButton>(name), SIGNAL(toggled(bool))), 1);
    }
    for (int i = 1; i <= 14; ++i) {
        const QString name = i == 1 ? QStringLiteral("lineEdit") : QStringLiteral("lineEdit_%1").arg(i);
        const bool free = i == 5 || i == 9 || i == 10;
        QCOMPARE(connectionCount(form.find<QLineEdit>(name), SIGNAL(textChanged(QString))), free ? 1 : 0);
        QCOMPARE(connectionCount(form.find<QLineEdit>(name), SIGNAL(editingFinished())), free ? 0 : 1);
    }
}

void ModelAndParamtSetWidgetFormTest::everyControlHasAName()
{
    BareForm form;
    const QList<QWidget*> widgets = form.page.findChildren<QWidget*>();
    int named = 0;
    for (QWidget* widget : widgets) {
        if (widget->objectName().startsWith(QLatin1String("qt_"))
            || !(qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget)
                || qobject_cast<QAbstractButton*>(widget)))
            continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        const QString name = accessible->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!name.contains(QLatin1Char('<')), qPrintable(name));
        ++named;
    }
    QCOMPARE(named, 36);
}

void ModelAndParamtSetWidgetFormTest::textsAreLookedUpInTheirContext()
{
    BareForm plain;
    const RecordingTranslator translator;
    BareForm translated;
    const auto check = [](const QString& text, const QString& from) {
        QCOMPARE(text, from.isEmpty() ? QString() : QString(utf("ModelAndParamtSetWidget|") + from));
    };
    check(translated.page.windowTitle(), plain.page.windowTitle());
    int texts = 0;
    const QList<QWidget*> widgets = plain.page.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const QString name = widget->objectName();
        if (const auto* const label = qobject_cast<const QLabel*>(widget))
            check(translated.find<QLabel>(name)->text(), label->text());
        else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
            check(translated.find<QAbstractButton>(name)->text(), button->text());
        else
            continue;
        check(translated.find<QWidget>(name)->accessibleName(), widget->accessibleName());
        ++texts;
    }
    QVERIFY(texts > 50);
}

void ModelAndParamtSetWidgetFormTest::textsOfTheSlotsAreLookedUpToo()
{
    const RecordingTranslator translator;
    const auto ours = [](const char* text) { return QString(utf("ModelAndParamtSetWidget|") + utf(text)); };
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.store(QStringLiteral("CompareOutEnable"), QStringLiteral("TRUE"));
    page.open();
    const auto text = [&](const char* label) { return page.find<QLabel>(label)->text(); };
    const auto click = [&](const char* button) { page.find<QRadioButton>(button)->click(); };
    QCOMPARE(text("label_4"), ours("Soft Limit"));
    for (const char* box : { "HardLimPosBox", "HardLimNegBox" })
        QCOMPARE(page.entries(box), QStringList({ ours("Positive Logic"), ours("Negitive Logic") }));
    click("radioButton_4");
    QCOMPARE(text("label_4"), ours("Period Setting"));
    click("radioButton_3");
    QCOMPARE(text("label_4"), ours("Soft Limit"));
    click("radioButton_5");
    QCOMPARE(text("label_47"), ours("ms"));
    click("radioButton_6");
    QCOMPARE(text("label_47"), ours("unit"));
    page.store(QStringLiteral("ModeSet"), QStringLiteral("TRUE"));
    page.open();
    QCOMPARE(text("label_4"), ours("Period Setting"));
}

QTEST_MAIN(ModelAndParamtSetWidgetFormTest)
#include "ModelAndParamtSetWidgetFormTest.moc"
