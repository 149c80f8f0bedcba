#include "tests/pages/ModePage.h"

#include <QAbstractButton>
#include <QSignalSpy>
#include <QTest>

namespace {

/// Uses every control of a page once.
void useEverything(ModePage& page)
{
    const QList<QAbstractButton*> buttons = page.page->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
        button->click();
    const QList<QComboBox*> boxes = page.page->findChildren<QComboBox*>();
    for (QComboBox* box : boxes)
        for (int i = box->count() - 1; i >= 0; --i)
            box->setCurrentIndex(i);
    const QList<QLineEdit*> edits = page.page->findChildren<QLineEdit*>();
    for (QLineEdit* edit : edits) {
        edit->setText(QStringLiteral("5"));
        emit edit->editingFinished();
    }
    page.page->updateWidget();
}

/// All that a page shows, control by control.
QStringList looksOf(const ModePage& page)
{
    QStringList looks;
    for (auto entry = page.widgets.begin(); entry != page.widgets.end(); ++entry) {
        QWidget* widget = entry.value();
        QString look = entry.key() + QStringLiteral(" %1%2 ").arg(widget->isHidden()).arg(widget->isEnabled());
        if (const auto* const box = qobject_cast<QComboBox*>(widget))
            look += QString::number(box->currentIndex()) + page.entries(entry.key().toLatin1()).join(QLatin1Char(','));
        else
            look += widget->property("checked").toString() + widget->property("text").toString();
        looks.append(look + QString::number(widget->minimumHeight()));
    }
    return looks;
}

} // namespace

class ModelAndParamtSetWidgetGoneTest : public QObject {
    Q_OBJECT

private slots:
    void removedRecordEndsEverySlot();
    void closedProjectEndsEverySlot();
    void updateWithoutARecordChangesNothing_data();
    void updateWithoutARecordChangesNothing();
    void recordThatComesAndGoes();
    void pageThatGoesWithAFieldInUse();
    void listsThatAreEmpty_data();
    void listsThatAreEmpty();
};

void ModelAndParamtSetWidgetGoneTest::removedRecordEndsEverySlot()
{
    for (const QString& type : allAxisTypes()) {
        ModePage page(type);
        page.openWindow();
        AxisTable* gone = page.axis();
        QVERIFY(page.project.axisModel()->removeAxisTable(gone));
        QSignalSpy writes(gone, &ModelObject::dataChanged);
        useEverything(page);
        QCOMPARE(writes.count(), 0);
        // Controls stay as the user set them.
        QCOMPARE(page.edit("lineEdit_3")->text(), QStringLiteral("5"));
        page.page->axisTypeChanged();
        QCOMPARE(page.edit("lineEdit_3")->text(), QStringLiteral("5"));
        QCOMPARE(page.combo("HardLimPosBox")->count(), 2);
    }
}

void ModelAndParamtSetWidgetGoneTest::closedProjectEndsEverySlot()
{
    ModePage page(QStringLiteral("Axis_Encoder"));
    page.openWindow();
    page.project.close();
    useEverything(page);
    page.page->axisTypeChanged();
    QVERIFY(page.page->signalsBlocked());
    QCOMPARE(page.edit("lineEdit_3")->text(), QStringLiteral("5"));
    // A page on nothing is a form with nothing in its lists.
    page.open();
    QCOMPARE(page.combo("HardLimPosBox")->count(), 0);
}

void ModelAndParamtSetWidgetGoneTest::updateWithoutARecordChangesNothing_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("next");
    for (const QString& type : allAxisTypes())
        for (const QString& next : allAxisTypes())
            QTest::addRow("%s that was to become %s", qPrintable(type), qPrintable(next)) << type << next;
}

void ModelAndParamtSetWidgetGoneTest::updateWithoutARecordChangesNothing()
{
    QFETCH(QString, type);
    QFETCH(QString, next);
    ModePage page(type);
    page.open();
    const QStringList before = looksOf(page);
    AxisTable* axis = page.axis();
    // Whatever there would be to show anew.
    page.store(QStringLiteral("AxisType"), next);
    for (const char* key : { "PulseOutputMethod", "OutputMethod", "OutputDevice", "CompareOutputPin" })
        page.store(QString::fromLatin1(key), QStringLiteral("1"));
    page.store(QStringLiteral("CompareOutEnable"), QStringLiteral("TRUE"));
    page.project.changeController(QStringLiteral("KM1_M16"));
    QVERIFY(page.project.axisModel()->takeObject(axis));
    QSignalSpy writes(axis, &ModelObject::dataChanged);
    page.page->updateWidget();
    QCOMPARE(looksOf(page), before);
    QCOMPARE(writes.count(), 0);
    QVERIFY(page.project.axisModel()->putObjectBack(axis));
    page.page->updateWidget();
    QVERIFY(looksOf(page) != before);
}

void ModelAndParamtSetWidgetGoneTest::recordThatComesAndGoes()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.openWindow();
    AxisTable* axis = page.axis();
    QLineEdit* edit = page.edit("lineEdit_3");
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("44"));
    QVERIFY(page.project.axisModel()->takeObject(axis));
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(edit->text(), QStringLiteral("44"));
    QCOMPARE(axis->property(QStringLiteral("LimitDec"), QString()), QStringLiteral("1000"));
    QVERIFY(page.project.axisModel()->putObjectBack(axis));
    edit->setFocus();
    edit->end(false);
    QTest::keyClicks(edit, QStringLiteral(".5"));
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(page.stored(QStringLiteral("LimitDec")), QStringLiteral("44.500000"));
}

void ModelAndParamtSetWidgetGoneTest::pageThatGoesWithAFieldInUse()
{
    ModePage page(QStringLiteral("Axis_EtherCAT"));
    page.openWindow();
    QLineEdit* edit = page.edit("lineEdit_3");
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("44"));
    page.page.reset();
    QCOMPARE(page.stored(QStringLiteral("LimitDec")), QStringLiteral("1000"));
}

void ModelAndParamtSetWidgetGoneTest::listsThatAreEmpty_data()
{
    QTest::addColumn<QString>("type");
    for (const QString& type : allAxisTypes())
        QTest::addRow("%s", qPrintable(type)) << type;
}

/// A controller without pulse outputs and encoders; its axes of those types stay until the host has revalidated them.
void ModelAndParamtSetWidgetGoneTest::listsThatAreEmpty()
{
    QFETCH(QString, type);
    for (const QString& model :
        { QStringLiteral("NV3T_70Q8"), QStringLiteral("NV2_H48Q8E"), QStringLiteral("KM1_M16") }) {
        ModePage page(type, model);
        for (const char* key : { "PulseOutputMethod", "OutputPin", "OutputMethod", "InputSignal", "CompareOutputPin" })
            page.store(QString::fromLatin1(key), QStringLiteral("1"));
        page.openWindow();
        QJsonObject bare = withList(TestProject::description(model), QStringLiteral("AxisType"),
            { TestProject::description(model)[QStringLiteral("axisTypes")]
                    .toObject()[QStringLiteral("Axis_Virtual")]
                    .toString() });
        for (const char* list : { "AxisPulseOutputDev", "PulseEncodeMode", "EncoderEncodeMode", "AxisEncoderInputDev",
                 "HightSpeedCountInputPoint", "ProbelInputPoint", "HightSpeedPlusOutputPoint", "OutputPoint" })
            bare = withList(bare, QString::fromLatin1(list), {});
        page.project.changeController(bare);
        page.page->updateWidget();
        useEverything(page);
        for (const QString& next : allAxisTypes())
            page.changeType(next);
        page.open();
        for (const char* box : { "probe1ComboBox", "probe2ComboBox", "inputPinComboBox" })
            QCOMPARE(page.combo(box)->count(), 0);
    }
}

QTEST_MAIN(ModelAndParamtSetWidgetGoneTest)
#include "ModelAndParamtSetWidgetGoneTest.moc"
