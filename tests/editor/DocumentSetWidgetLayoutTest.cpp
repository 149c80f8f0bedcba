#include "tests/editor/UnitFields.h"
#include "tests/support/PageLooks.h"

#include <QPixmap>
#include <QScrollArea>
#include <QScrollBar>

namespace {

/// The longest number that a field of the page is given back in.
const QString longestNumber = QStringLiteral("9999999.000000");

} // namespace

/// How the page stands in the workbench: in both themes and languages, in a small window, and under the Tab key.
class DocumentSetWidgetLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void chineseTextsAreThere();
    void figuresKeepTheirShape();
    void barsStandUnderTheirNumerators();
    void fieldsStandUnderOneAnother();
    void smallWindowScrolls();
    void tabOrderFollowsTheRows_data();
    void tabOrderFollowsTheRows();
};

void DocumentSetWidgetLayoutTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void DocumentSetWidgetLayoutTest::nothingIsCutOff_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("language");
    for (const char* sheet : { "", "default.qss", "dark.qss" })
        for (const char* language : { "en", "zh_CN" })
            QTest::addRow("in %s with the sheet \"%s\"", language, sheet)
                << QString::fromLatin1(sheet) << QString::fromLatin1(language);
}

void DocumentSetWidgetLayoutTest::nothingIsCutOff()
{
    QFETCH(QString, sheet);
    QFETCH(QString, language);
    const WorkbenchLooks looks(sheet, language);
    UnitPage page;
    page.store("PulseCountDecOrHex", "FALSE");
    page.openWindow();
    QVERIFY(page.find<QLabel>("label_19")->isVisible());
    QCOMPARE(cutOffControls(*page.page, longestNumber).join(QLatin1Char(' ')), QString());
}

void DocumentSetWidgetLayoutTest::chineseTextsAreThere()
{
    const WorkbenchLooks looks(QString(), QStringLiteral("zh_CN"));
    UnitPage page;
    page.open();
    for (const char* label : { "label_PrfPulse", "label_5", "label_13", "label_33" })
        QVERIFY2(page.find<QLabel>(label)->text().at(0).unicode() >= 0x4e00, label);
}

void DocumentSetWidgetLayoutTest::figuresKeepTheirShape()
{
    const WorkbenchLooks looks(QStringLiteral("default.qss"), QStringLiteral("en"));
    UnitPage page;
    page.openWindow();
    for (const char* name : { "label_18", "label_32" }) {
        const auto* const label = page.find<QLabel>(name);
        const QSize drawn = label->pixmap()->size();
        QCOMPARE(label->width() * drawn.height(), label->height() * drawn.width());
        // Sharp on a screen of twice the resolution.
        QVERIFY(drawn.width() >= 2 * label->width());
    }
}

void DocumentSetWidgetLayoutTest::barsStandUnderTheirNumerators()
{
    const WorkbenchLooks looks(QStringLiteral("default.qss"), QStringLiteral("en"));
    UnitPage page;
    page.openWindow();
    const auto at = [&](const char* name) {
        return QRect(page.find<QLabel>(name)->mapTo(page.page.get(), QPoint()), page.find<QLabel>(name)->size());
    };
    const char* const formulas[][4] = { { "label_8", "label_7", "label", "label_9" },
        { "label_15", "label_16", "label_3", "label_14" }, { "label_29", "label_31", "label_2", "label_34" } };
    for (const auto& formula : formulas) {
        QVERIFY(at(formula[1]).bottom() < at(formula[2]).top());
        QVERIFY(at(formula[2]).bottom() < at(formula[3]).top());
        QCOMPARE(at(formula[1]).left(), at(formula[2]).left());
        QCOMPARE(at(formula[3]).left(), at(formula[2]).left());
        QVERIFY(at(formula[0]).right() < at(formula[2]).left());
        QCOMPARE(at(formula[0]).center().y(), at(formula[2]).center().y());
    }
}

void DocumentSetWidgetLayoutTest::fieldsStandUnderOneAnother()
{
    const WorkbenchLooks looks(QStringLiteral("default.qss"), QStringLiteral("en"));
    UnitPage page;
    page.store("PulseCountDecOrHex", "FALSE");
    page.openWindow();
    const auto left = [&](const char* name) { return page.find<QWidget>(name)->mapTo(page.page.get(), QPoint()).x(); };
    const int column = left("lineEdit_3");
    for (const char* name : { "lineEdit_2", "lineEdit_4", "lineEdit_5" })
        QCOMPARE(left(name), column);
    QVERIFY(qAbs(left("lineEdit_PulseCountPerCicle") - column) <= 2);
    QCOMPARE(left("label_5"), left("label_10"));
    QCOMPARE(left("label_4"), left("label_11"));
}

void DocumentSetWidgetLayoutTest::smallWindowScrolls()
{
    const WorkbenchLooks looks(QStringLiteral("default.qss"), QStringLiteral("en"));
    UnitPage page;
    page.store("UseGearEnable", "TRUE");
    page.openWindow();
    page.page->resize(300, 200);
    QCoreApplication::processEvents();
    const auto* const area = page.find<QScrollArea>("scrollArea");
    QVERIFY(area->verticalScrollBar()->maximum() > 0);
    QVERIFY(area->horizontalScrollBar()->maximum() > 0);
    QCOMPARE(cutOffControls(*page.page, longestNumber).join(QLatin1Char(' ')), QString());
    // The keyboard brings what it reaches into view.
    const auto isInView = [&](const QWidget* widget) {
        const QWidget* viewport = area->viewport();
        return viewport->rect().intersects(QRect(widget->mapTo(viewport, QPoint()), widget->size()));
    };
    QWidget* last = page.edit("lineEdit_5");
    QVERIFY(!isInView(last));
    page.edit("lineEdit_4")->setFocus();
    QTest::keyClick(page.edit("lineEdit_4"), Qt::Key_Tab);
    QVERIFY(last->hasFocus());
    QVERIFY(isInView(last));
}

void DocumentSetWidgetLayoutTest::tabOrderFollowsTheRows_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("gear");
    QTest::addColumn<QString>("tail");
    for (const char* type : { "Axis_Pulse", "Axis_Encoder", "Axis_Virtual", "Axis_EtherCAT" }) {
        QTest::addRow("%s without a gear", type)
            << QString::fromLatin1(type) << false << QStringLiteral("radioButton_unUsedGear lineEdit_2");
        QTest::addRow("%s with a gear", type) << QString::fromLatin1(
            type) << true << QStringLiteral("radioButton_unUsedGear lineEdit_3 lineEdit_4 lineEdit_5");
    }
}

void DocumentSetWidgetLayoutTest::tabOrderFollowsTheRows()
{
    QFETCH(QString, type);
    QFETCH(bool, gear);
    QFETCH(QString, tail);
    UnitPage page(type);
    page.store("UseGearEnable", gear ? "TRUE" : "FALSE");
    page.openWindow();
    const QString head = QStringLiteral("checkBox_Reverse lineEdit_PulseCountPerCicle checkBox_decimalDisplayPulse ");
    QCOMPARE(tabRound(page.button("checkBox_Reverse")).join(QLatin1Char(' ')), QString(head + tail));
}

QTEST_MAIN(DocumentSetWidgetLayoutTest)
#include "DocumentSetWidgetLayoutTest.moc"
