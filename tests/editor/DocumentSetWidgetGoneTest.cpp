#include "tests/editor/UnitFields.h"
#include "tests/support/RecordWrites.h"

class DocumentSetWidgetGoneTest : public QObject {
    Q_OBJECT

private slots:
    void goneRecordEndsEverySlot();
    void recordThatComesAndGoes();
    void pageThatGoesWithAFieldInUse();
};

void DocumentSetWidgetGoneTest::goneRecordEndsEverySlot()
{
    for (const bool closed : { false, true }) {
        UnitPage page;
        page.openWindow();
        if (closed)
            page.project.close();
        else
            page.project.axisModel()->removeAxisTable(page.axis());
        for (const char* name :
            { "checkBox_Reverse", "checkBox_decimalDisplayPulse", "radioButton_useGearSet", "radioButton_unUsedGear" })
            page.button(name)->click();
        QVERIFY(!page.find<QLabel>("label_19")->isVisible());
        for (const UnitPageField& field : unitPageFields) {
            page.edit(field.name)->setText(QStringLiteral("0"));
            emit page.edit(field.name)->editingFinished();
            QCOMPARE(page.edit(field.name)->text(), QStringLiteral("0"));
        }
        typeAndLeave(page, "lineEdit_PulseCountPerCicle", QStringLiteral("0"));
        QCOMPARE(page.pulses()->text(), QStringLiteral("0"));
        page.open();
        QCOMPARE(page.pulses()->text(), QStringLiteral("16#2710"));
    }
}

/// As when the axis is deleted while a field is being edited, and the deletion is undone.
void DocumentSetWidgetGoneTest::recordThatComesAndGoes()
{
    UnitPage page;
    page.store("UseGearEnable", "TRUE");
    page.openWindow();
    AxisTable* axis = page.axis();
    const auto leave = [&] { page.button("checkBox_Reverse")->setFocus(Qt::TabFocusReason); };
    for (const char* name : { "lineEdit_PulseCountPerCicle", "lineEdit_3", "lineEdit_4", "lineEdit_5" }) {
        QLineEdit* edit = page.edit(name);
        NumberTyping::replace(edit, QStringLiteral("0"));
        RecordWrites writes(axis);
        QVERIFY(page.project.axisModel()->takeObject(axis));
        leave();
        // Neither judged nor stored.
        QCOMPARE(edit->text(), QStringLiteral("0"));
        page.decimalBox()->click();
        page.button("checkBox_Reverse")->click();
        page.button("radioButton_unUsedGear")->click();
        QVERIFY(page.edit("lineEdit_3")->isEnabled());
        QVERIFY(!page.edit("lineEdit_2")->isEnabled());
        page.button("radioButton_useGearSet")->click();
        page.decimalBox()->click();
        page.button("checkBox_Reverse")->click();
        QCOMPARE(writes.takeKeys(), QStringList());
        QVERIFY(page.project.axisModel()->putObjectBack(axis));
        writes.takeKeys();
        NumberTyping::replace(edit, QStringLiteral("44"));
        leave();
        QCOMPARE(writes.takeKeys().size(), 1);
        QCOMPARE(edit->text().toDouble(), 44.0);
    }
    QCOMPARE(page.stored("PulseCountPerCircle"), QStringLiteral("44"));
    QCOMPARE(page.stored("UseGearValue"), QStringLiteral("44.000000"));
    QCOMPARE(page.stored("GearRatioParent"), QStringLiteral("44"));
    QVERIFY(page.project.axisModel()->takeObject(axis));
    page.page->axisTypeChanged();
    QCOMPARE(page.pulses()->text(), QStringLiteral("44"));
    QVERIFY(page.project.axisModel()->putObjectBack(axis));
    page.page->axisTypeChanged();
    QCOMPARE(page.pulses()->text(), QStringLiteral("10000"));
    QVERIFY(!page.page->signalsBlocked());
}

void DocumentSetWidgetGoneTest::pageThatGoesWithAFieldInUse()
{
    UnitPage page;
    page.openWindow();
    NumberTyping::replace(page.edit("lineEdit_2"), QStringLiteral("3"));
    page.page.reset();
    QCOMPARE(page.stored("UnUseGearValue"), QStringLiteral("1"));
}

QTEST_MAIN(DocumentSetWidgetGoneTest)
#include "DocumentSetWidgetGoneTest.moc"
