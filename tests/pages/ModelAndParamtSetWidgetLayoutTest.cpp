#include "tests/pages/ModePage.h"
#include "tests/support/PageLooks.h"

#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QTest>

namespace {

/// The longest number that a field of the page is given back in.
const QString longestNumber = QStringLiteral("-9999999.000000");

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

/// How the page stands in the workbench: in both themes and languages, in a small window, and under the Tab key.
class ModelAndParamtSetWidgetLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void chineseTextsAreThere();
    void fieldsStandUnderOneAnother();
    void smallWindowScrolls();
    void tabOrderFollowsTheRows_data();
    void tabOrderFollowsTheRows();
};

void ModelAndParamtSetWidgetLayoutTest::nothingIsCutOff_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("language");
    for (const QString& type : allAxisTypes())
        for (const char* sheet : { "", "default.qss", "dark.qss" })
            for (const char* language : { "en", "zh_CN" })
                QTest::addRow("%s in %s with the sheet \"%s\"", qPrintable(type), language, sheet)
                    << type << QString::fromLatin1(sheet) << QString::fromLatin1(language);
}

void ModelAndParamtSetWidgetLayoutTest::nothingIsCutOff()
{
    QFETCH(QString, type);
    QFETCH(QString, sheet);
    QFETCH(QString, language);
    const WorkbenchLooks looks(sheet, language);
    ModePage page(type);
    page.openWindow();
    QCOMPARE(cutOffControls(*page.page, longestNumber).join(QLatin1Char(' ')), QString());
    // The other face of the third row, and the controller with the longest entries.
    page.find<QRadioButton>("radioButton_4")->click();
    page.project.changeController(QStringLiteral("KM1_M16"));
    page.page->updateWidget();
    QCoreApplication::processEvents();
    QCOMPARE(cutOffControls(*page.page, longestNumber).join(QLatin1Char(' ')), QString());
}

void ModelAndParamtSetWidgetLayoutTest::chineseTextsAreThere()
{
    const WorkbenchLooks looks(QString(), QStringLiteral("zh_CN"));
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.open();
    for (const char* label : { "label", "label_3", "label_4", "label_13", "label_36" }) {
        const QString text = page.find<QLabel>(label)->text();
        QVERIFY2(text.at(0).unicode() >= 0x4e00, label);
    }
}

void ModelAndParamtSetWidgetLayoutTest::fieldsStandUnderOneAnother()
{
    const WorkbenchLooks looks(QString(), QStringLiteral("en"));
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.openWindow();
    const auto left = [&](const char* name) { return page.find<QWidget>(name)->mapTo(page.page.get(), QPoint()).x(); };
    for (const char* name : { "lineEdit_3", "lineEdit_6", "lineEdit_7", "lineEdit_11", "lineEdit_10", "HardLimPosBox" })
        QCOMPARE(left(name), left("lineEdit"));
    for (const char* name : { "lineEdit_4", "lineEdit_8", "lineEdit_9", "HardLimNegBox" })
        QCOMPARE(left(name), left("lineEdit_2"));
    for (const char* name : { "label_12", "label_20", "label_22", "label_30", "label_31" })
        QCOMPARE(left(name), left("label_6"));
    for (const char* name : { "label_21", "label_26", "label_33" })
        QCOMPARE(left(name), left("label_8"));
}

void ModelAndParamtSetWidgetLayoutTest::smallWindowScrolls()
{
    const WorkbenchLooks looks(QStringLiteral("default.qss"), QStringLiteral("en"));
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.openWindow();
    page.page->resize(300, 200);
    QCoreApplication::processEvents();
    const auto* const area = page.find<QScrollArea>("scrollArea");
    QVERIFY(area->widget()->height() > area->viewport()->height());
    QVERIFY(area->widget()->width() > area->viewport()->width());
    QVERIFY(page.edit("lineEdit_3")->width() >= 100);
}

void ModelAndParamtSetWidgetLayoutTest::tabOrderFollowsTheRows_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("rotating");
    QTest::addColumn<QStringList>("order");
    const char* const limits = "checkBox lineEdit lineEdit_2";
    const auto row = [](const char* name, const char* type, bool rotating, const QString& order) {
        QTest::newRow(name) << QString::fromLatin1(type) << rotating << order.split(QLatin1Char(' '));
    };
    const QString responses = QStringLiteral("lineEdit_3 lineEdit_4 lineEdit_6 lineEdit_7 lineEdit_8 ");
    const QString compare = QStringLiteral(" checkBox_3 compareOutputPinCheckBox");
    const QString probes = QStringLiteral("probe1checkBox probe1ComboBox probe2checkBox probe2ComboBox");
    const QString linear = QString(QStringLiteral("radioButton_3 ") + QLatin1String(limits) + QLatin1Char(' '));
    // Tab stops at the first of two radio buttons.
    const QString rotating = QStringLiteral("radioButton_3 lineEdit_12 ");
    const QString ethercat
        = responses + QStringLiteral("lineEdit_11 lineEdit_10 lineEdit_9 HardLimPosBox HardLimNegBox");
    const QString pulse = responses + QStringLiteral("checkBox_2 ") + probes
        + QStringLiteral(" pulseMethodComboBox outputPinComboBox") + compare;
    const QString increments = QStringLiteral("radioButton ");
    row("linear EtherCAT axis", "Axis_EtherCAT", false, increments + linear + ethercat);
    row("rotating EtherCAT axis", "Axis_EtherCAT", true, increments + rotating + ethercat);
    row("linear pulse axis", "Axis_Pulse", false, increments + linear + pulse);
    row("rotating pulse axis", "Axis_Pulse", true, increments + rotating + pulse);
    row("linear virtual axis", "Axis_Virtual", false, linear + responses + QStringLiteral("checkBox_2"));
    row("linear encoder axis", "Axis_Encoder", false,
        linear + probes + QStringLiteral(" outputMethodComboBox inputSignalComboBox checkBox_4 inputPinComboBox")
            + compare);
}

void ModelAndParamtSetWidgetLayoutTest::tabOrderFollowsTheRows()
{
    QFETCH(QString, type);
    QFETCH(bool, rotating);
    QFETCH(QStringList, order);
    ModePage page(type);
    for (const QString& key : words("SoftLimitEnable Probe1Enable Probe2Enable PresetEnable CompareOutEnable"))
        page.store(key, QStringLiteral("TRUE"));
    page.store(QStringLiteral("ModeSet"), rotating ? QStringLiteral("TRUE") : QStringLiteral("FALSE"));
    page.openWindow();
    QCOMPARE(
        tabRound(page.find<QWidget>(order.first().toLatin1())).join(QLatin1Char(' ')), order.join(QLatin1Char(' ')));
}

QTEST_MAIN(ModelAndParamtSetWidgetLayoutTest)
#include "ModelAndParamtSetWidgetLayoutTest.moc"
