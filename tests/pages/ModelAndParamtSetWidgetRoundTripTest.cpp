#include "tests/pages/ModePage.h"
#include "tests/support/NumberTyping.h"

#include <QAbstractButton>
#include <QTest>

namespace {

struct Entry {
    const char* field;
    const char* key;
    const char* typed;
    const char* reopened;
};

/// In an order in which each is within the bounds that those before it have left.
const Entry entries[] = {
    { "lineEdit", "SoftLimitNeg", "-12.5", "-12.500000" },
    { "lineEdit_2", "SoftLimitPos", "700", "700.000000" },
    { "lineEdit_12", "RotationPeriod", "90.25", "90.250000" },
    { "lineEdit_3", "LimitDec", "0", "0.000000" },
    { "lineEdit_4", "AxisErrorDec", "44", "44.000000" },
    { "lineEdit_5", "FollowErrorThreshold", "1.5", "1.500000" },
    { "lineEdit_6", "VelocityThreshold", "66", "66.000000" },
    { "lineEdit_7", "MaxVel", "900", "900.000000" },
    { "lineEdit_8", "MaxAcc", "88.125", "88.125000" },
    { "lineEdit_9", "PosTorqueMaxValue", "300", "300.000000" },
    { "lineEdit_10", "NegTorqueMaxValue", "-310", "-310.000000" },
    { "lineEdit_11", "JogMaxVel", "30", "30.000000" },
    { "lineEdit_13", "InputSignalFilterTime", "0120", "0120" },
    // Typed in user units; the milliseconds that are chosen after it are whole.
    { "lineEdit_14", "CompareOutputWidth", "12.5", "12" },
};

const char* const boxes[]
    = { "checkBox", "checkBox_2", "checkBox_3", "checkBox_4", "probe1checkBox", "probe2checkBox" };

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

QStringList words(const char* text)
{
    return latin(text).split(QLatin1Char(' '));
}

/// The second mode, which has more than one pin or signal; the others stand at places of their own.
int choiceOf(const QString& combo)
{
    const QStringList later = words("compareOutputPinCheckBox probe2ComboBox inputPinComboBox");
    return later.contains(combo) ? 2 + later.indexOf(combo) : 1;
}

} // namespace

/// What is typed, clicked and chosen, saved and opened again is what is shown.
class ModelAndParamtSetWidgetRoundTripTest : public QObject {
    Q_OBJECT

private slots:
    void everyControl_data();
    void everyControl();
    void logicIsStoredThoughNotShown();
};

void ModelAndParamtSetWidgetRoundTripTest::everyControl_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("combos");
    const QString points = latin("probe1ComboBox probe2ComboBox inputPinComboBox");
    const auto row = [&](const char* type, const char* own) {
        QTest::newRow(type) << latin(type) << words(own) + points.split(QLatin1Char(' '));
    };
    row("Axis_Pulse", "pulseMethodComboBox outputPinComboBox compareOutputPinCheckBox");
    row("Axis_Encoder", "outputMethodComboBox inputSignalComboBox compareOutputPinCheckBox");
    row("Axis_Virtual", "probe1ComboBox");
    row("Axis_EtherCAT", "probe1ComboBox");
}

void ModelAndParamtSetWidgetRoundTripTest::everyControl()
{
    QFETCH(QString, type);
    QFETCH(QStringList, combos);
    ModePage page(type);
    page.openWindow();
    QMap<QString, bool> marks;
    for (const char* box : boxes) {
        auto* const button = page.find<QAbstractButton>(box);
        marks.insert(latin(box), !button->isChecked());
        button->click();
    }
    for (const Entry& entry : entries) {
        page.reveal(entry.field);
        NumberTyping::replace(page.edit(entry.field), latin(entry.typed));
        QTest::keyClick(page.edit(entry.field), Qt::Key_Tab);
    }
    const bool pulse = type == QLatin1String("Axis_Pulse");
    for (const char* button : { "radioButton_2", "radioButton_4", "radioButton_5" }) {
        page.find<QAbstractButton>(button)->click();
        marks.insert(latin(button), !(pulse && latin(button) == QLatin1String("radioButton_2")));
    }
    for (const char* button : { "radioButton", "radioButton_3", "radioButton_6" })
        marks.insert(latin(button), pulse && latin(button) == QLatin1String("radioButton"));
    QMap<QString, QString> chosen;
    for (const QString& combo : qAsConst(combos)) {
        QComboBox* box = page.combo(combo.toLatin1());
        QVERIFY2(box->count() > 1, qPrintable(combo));
        QVERIFY2(box->isEnabledTo(page.page.get()), qPrintable(combo));
        box->setCurrentIndex(choiceOf(combo));
        QCOMPARE(box->currentIndex(), choiceOf(combo));
        chosen.insert(combo, box->currentText());
    }

    QVERIFY(page.axis()->save());
    page.page.reset();
    page.project.reopen();
    page.open();
    for (const Entry& entry : entries)
        QCOMPARE(page.edit(entry.field)->text(), latin(entry.reopened));
    QCOMPARE(page.stored(latin("CompareOutputWidth")), QStringLiteral("12.5"));
    for (auto mark = marks.begin(); mark != marks.end(); ++mark)
        QVERIFY2(
            page.find<QAbstractButton>(mark.key().toLatin1())->isChecked() == mark.value(), qPrintable(mark.key()));
    for (auto choice = chosen.begin(); choice != chosen.end(); ++choice) {
        QCOMPARE(page.combo(choice.key().toLatin1())->currentIndex(), choiceOf(choice.key()));
        QCOMPARE(page.combo(choice.key().toLatin1())->currentText(), choice.value());
    }
    QVERIFY(page.edit("lineEdit")->isEnabledTo(page.page.get()));
    QVERIFY(page.combo("inputPinComboBox")->isEnabledTo(page.page.get()));
}

/// These two boxes alone always open at their first entry.
void ModelAndParamtSetWidgetRoundTripTest::logicIsStoredThoughNotShown()
{
    ModePage page(latin("Axis_EtherCAT"));
    page.openWindow();
    for (const char* name : { "HardLimPosBox", "HardLimNegBox" }) {
        page.combo(name)->setFocus();
        QTest::keyClick(page.combo(name), Qt::Key_Down);
        QCOMPARE(page.combo(name)->currentText(), QStringLiteral("Negitive Logic"));
    }
    QVERIFY(page.axis()->save());
    page.page.reset();
    page.project.reopen();
    page.open();
    for (const char* name : { "HardLimPosBox", "HardLimNegBox" })
        QCOMPARE(page.combo(name)->currentText(), QStringLiteral("Positive Logic"));
    QCOMPARE(page.stored(latin("HardLimitPos")), QStringLiteral("TRUE"));
    QCOMPARE(page.stored(latin("HardLimitNeg")), QStringLiteral("TRUE"));
}

QTEST_MAIN(ModelAndParamtSetWidgetRoundTripTest)
#include "ModelAndParamtSetWidgetRoundTripTest.moc"
