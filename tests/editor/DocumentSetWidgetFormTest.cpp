#include "sdk/ServiceKeys.h"
#include "tests/editor/UnitPage.h"
#include "tests/support/RecordingTranslator.h"

#include <QAccessible>
#include <QGroupBox>
#include <QMetaMethod>
#include <QPixmap>
#include <QScrollArea>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// The form as it stands before any record has been read.
class BareForm {
public:
    BareForm() : page(QStringLiteral("no such project"), 1, nullptr) { }

    DocumentSetWidget page;
};

} // namespace

class DocumentSetWidgetFormTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void labels_data();
    void labels();
    void buttons_data();
    void buttons();
    void fields_data();
    void fields();
    void windowAndScrollArea();
    void slotsInTheirOrder();
    void connections();
    void figures_data();
    void figures();
    void figuresWithoutCookies();
    void figuresFollowTheNextLoad();
    void everyControlHasAName();
    void textsAreLookedUpInTheirContext();
};

/// Style and font of the workbench.
void DocumentSetWidgetFormTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("Noto Sans"), 10));
}

void DocumentSetWidgetFormTest::labels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("parent");
    const auto row = [](const char* name, const QString& text, const char* parent = "scrollAreaWidgetContents") {
        QTest::newRow(name) << text << latin(parent);
    };
    const auto dashes
        = [](int count, const char* rest) { return QString(QString(count, QLatin1Char('-')) + latin(rest)); };
    row("label_UnitConvertSet", latin(" Unit Convert Set:"));
    row("label_MotorEncoderPulseCountPerCircle", latin("Motor/Encode pulse count per circle:"));
    row("label_19", latin("16#"));
    row("label_PrfPulse", latin("Command pulse"));
    row("label_4", latin("The amount of movement for one turn of the table:"), "groupBox_2");
    row("label_5", latin("Unit"), "groupBox_2");
    row("label_8", latin("Pulse counts(pulse)="), "groupBox_2");
    row("label_7", latin("Pulse number per turn of motor/encoder [DINT]"), "groupBox_2");
    row("label", dashes(71, "*Move distance(Uint)"), "groupBox_2");
    row("label_9", latin("The amount of movement for one turn of the table [REAL]"), "groupBox_2");
    row("label_6", latin("The amount of movement for one turn of the table:"), "groupBox_3");
    row("label_10", latin("Unit"), "groupBox_3");
    row("label_11", latin("Gear ratio molecule (Image 5) in the figure below :"), "groupBox_3");
    row("label_12", latin("Gear ratio parent (Image 4) in the figure below :"), "groupBox_3");
    row("label_13", latin("The axis type is linear mode:"));
    row("label_15", latin("Pulse counts(pulse)="));
    row("label_16", latin("Number of pulses per turn of motor/encoder [DINT]* gear ratio molecule [DINT]"));
    row("label_3", dashes(73, "*Move distance(Uint)"));
    row("label_14", latin("The amount of movement in one turn of the table [REAL]* gear ratio [DINT]"));
    row("label_17", latin("M: Motor/encoder, W: workbench"));
    row("label_18", QString());
    row("label_33", latin("The axis type is rotation mode:"));
    row("label_29", latin("Pulse counts(pulse)="));
    row("label_31",
        latin("Shaft type is rotary mode: Number of pulses [DINT]* gear ratio molecule [DINT] of motor/encoder "
              "rotation one turn"));
    row("label_2", dashes(70, "*Move distance (Uint)"));
    row("label_34", latin("The amount of movement in one turn of the table [REAL]* gear ratio [DINT]"));
    row("label_30", latin("M: Motor/encoder, W: workbench"));
    row("label_32", QString());
}

void DocumentSetWidgetFormTest::labels()
{
    QFETCH(QString, text);
    QFETCH(QString, parent);
    BareForm form;
    const auto* const label = form.page.findChild<QLabel*>(latin(QTest::currentDataTag()));
    QVERIFY(label);
    QCOMPARE(label->text(), text);
    QCOMPARE(label->parentWidget()->objectName(), parent);
}

void DocumentSetWidgetFormTest::buttons_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("checked");
    const auto row = [](const char* name, const char* kind, const char* text, bool checked) {
        QTest::newRow(name) << latin(kind) << latin(text) << checked;
    };
    row("checkBox_Reverse", "QCheckBox", "Reverse", false);
    row("checkBox_decimalDisplayPulse", "QCheckBox", "DecimalDisplayPulse", true);
    row("radioButton_unUsedGear", "QRadioButton", "Not Use Gear", true);
    row("radioButton_useGearSet", "QRadioButton", "Use of speed change gear", false);
}

void DocumentSetWidgetFormTest::buttons()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    QFETCH(bool, checked);
    BareForm form;
    const auto* const button = form.page.findChild<QAbstractButton*>(latin(QTest::currentDataTag()));
    QVERIFY(button);
    QCOMPARE(latin(button->metaObject()->className()), kind);
    QCOMPARE(button->text(), text);
    QCOMPARE(button->isChecked(), checked);
    QVERIFY(button->isEnabledTo(&form.page));
}

void DocumentSetWidgetFormTest::fields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("parent");
    const auto row = [](const char* name, const char* text, bool enabled, const char* parent) {
        QTest::newRow(name) << latin(text) << enabled << latin(parent);
    };
    row("lineEdit_PulseCountPerCicle", "16#2710", true, "scrollAreaWidgetContents");
    row("lineEdit_2", "1.0", true, "groupBox_2");
    row("lineEdit_3", "1.0", false, "groupBox_3");
    row("lineEdit_4", "1", false, "groupBox_3");
    row("lineEdit_5", "1", false, "groupBox_3");
}

void DocumentSetWidgetFormTest::fields()
{
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    QFETCH(QString, parent);
    BareForm form;
    const auto* const edit = form.page.findChild<QLineEdit*>(latin(QTest::currentDataTag()));
    QVERIFY(edit);
    QCOMPARE(edit->metaObject()->className(), "QLineEdit");
    QCOMPARE(edit->text(), text);
    QCOMPARE(edit->isEnabledTo(&form.page), enabled);
    QCOMPARE(edit->parentWidget()->objectName(), parent);
}

void DocumentSetWidgetFormTest::windowAndScrollArea()
{
    BareForm form;
    QCOMPARE(form.page.windowTitle(), QStringLiteral("DocConverSet"));
    QCOMPARE(form.page.size(), QSize(972, 693));
    const QList<QScrollArea*> areas = form.page.findChildren<QScrollArea*>();
    QCOMPARE(areas.size(), 1);
    QCOMPARE(areas.first()->objectName(), QStringLiteral("scrollArea"));
    QCOMPARE(areas.first()->widget()->objectName(), QStringLiteral("scrollAreaWidgetContents"));
    for (const char* name : { "groupBox_2", "groupBox_3" })
        QVERIFY(form.page.findChild<QGroupBox*>(latin(name))->title().isEmpty());
    QVERIFY(DocumentSetWidget::staticMetaObject.superClass() == &QWidget::staticMetaObject);
}

void DocumentSetWidgetFormTest::slotsInTheirOrder()
{
    QByteArrayList found;
    const QMetaObject& meta = DocumentSetWidget::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).access(), found.isEmpty() ? QMetaMethod::Public : QMetaMethod::Private);
        found.append(meta.method(i).methodSignature());
    }
    const QByteArrayList expected{ "axisTypeChanged()", "onCheckBox_ReverseChanged(int)",
        "onPulseCountPerCicleChanged()", "onCheckBox_decimalDisplayPulseChanged(int)", "onRadioChanged(bool)",
        "onRadio_2Changed(bool)", "onMoveDistancePerCicleChanged()", "onMoveDistancePerCicleChanged_useGear()",
        "onGearRatioMoleculeChanged()", "onGearRatioDenominatorChanged()" };
    QCOMPARE(found, expected);
}

void DocumentSetWidgetFormTest::connections()
{
    struct Receivers : QObject {
        using QObject::receivers;
    };
    BareForm form;
    const auto count = [&](const char* name, const char* signal) {
        const auto* const sender = form.page.findChild<QWidget*>(latin(name));
        return (static_cast<const QObject*>(sender)->*&Receivers::receivers)(signal);
    };
    for (const char* box : { "checkBox_Reverse", "checkBox_decimalDisplayPulse" })
        QCOMPARE(count(box, SIGNAL(stateChanged(int))), 1);
    for (const char* button : { "radioButton_unUsedGear", "radioButton_useGearSet" })
        QCOMPARE(count(button, SIGNAL(toggled(bool))), 1);
    for (const char* edit : { "lineEdit_PulseCountPerCicle", "lineEdit_2", "lineEdit_3", "lineEdit_4", "lineEdit_5" })
        QCOMPARE(count(edit, SIGNAL(editingFinished())), 1);
}

void DocumentSetWidgetFormTest::figures_data()
{
    QTest::addColumn<QVariant>("theme");
    QTest::addColumn<QString>("folder");
    const QString light = QStringLiteral("default");
    const QString dark = QStringLiteral("dark");
    QTest::newRow("no cookie counts as light") << QVariant() << light;
    QTest::newRow("the default sheet") << QVariant(QStringLiteral("default.qss")) << light;
    QTest::newRow("the default sheet in capitals") << QVariant(QStringLiteral("DEFAULT.QSS")) << light;
    QTest::newRow("the dark sheet") << QVariant(QStringLiteral("dark.qss")) << dark;
    QTest::newRow("any other sheet") << QVariant(QStringLiteral("blue.qss")) << dark;
    QTest::newRow("an empty name") << QVariant(QString()) << dark;
}

void DocumentSetWidgetFormTest::figures()
{
    QFETCH(QVariant, theme);
    QFETCH(QString, folder);
    UnitPage page;
    page.host.cookies.removeValue(Solution::ConfigKey::theme());
    if (theme.isValid())
        page.host.cookies.setValue(Solution::ConfigKey::theme(), theme);
    page.open();
    QCOMPARE(page.host.cookies.lastFallback(Solution::ConfigKey::theme()).toString(), QStringLiteral("default.qss"));
    int number = 0;
    for (const char* name : { "label_18", "label_32" }) {
        const auto* const label = page.find<QLabel>(name);
        const QPixmap expected(QStringLiteral(":/images/%1/workbench_%2.jpg").arg(folder).arg(++number));
        QVERIFY(!expected.isNull());
        QVERIFY(label->pixmap());
        QCOMPARE(label->pixmap()->toImage(), expected.toImage());
        QVERIFY(label->hasScaledContents());
    }
}

void DocumentSetWidgetFormTest::figuresWithoutCookies()
{
    UnitPage page;
    page.host.withhold(Solution::ServiceKey::cookies());
    page.open();
    QVERIFY(!page.find<QLabel>("label_18")->pixmap());
    QVERIFY(!page.find<QLabel>("label_32")->pixmap());
    QCOMPARE(page.pulses()->text(), QStringLiteral("10000"));
}

void DocumentSetWidgetFormTest::figuresFollowTheNextLoad()
{
    UnitPage page;
    page.open();
    const QImage light = page.find<QLabel>("label_18")->pixmap()->toImage();
    page.host.cookies.setValue(Solution::ConfigKey::theme(), QStringLiteral("dark.qss"));
    page.page->axisTypeChanged();
    QVERIFY(page.find<QLabel>("label_18")->pixmap()->toImage() != light);
}

void DocumentSetWidgetFormTest::everyControlHasAName()
{
    BareForm form;
    int named = 0;
    const QList<QWidget*> widgets = form.page.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (!qobject_cast<QLineEdit*>(widget) && !qobject_cast<QAbstractButton*>(widget))
            continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(), qPrintable(widget->objectName()));
        ++named;
    }
    QCOMPARE(named, 9);
}

void DocumentSetWidgetFormTest::textsAreLookedUpInTheirContext()
{
    BareForm plain;
    const RecordingTranslator translator;
    BareForm translated;
    const auto check = [](const QString& text, const QString& from) {
        QCOMPARE(text, from.isEmpty() ? QString() : QString(latin("DocumentSetWidget|") + from));
    };
    check(translated.page.windowTitle(), plain.page.windowTitle());
    int texts = 0;
    const QList<QWidget*> widgets = plain.page.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const QString name = widget->objectName();
        if (const auto* const label = qobject_cast<const QLabel*>(widget))
            check(translated.page.findChild<QLabel*>(name)->text(), label->text());
        else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
            check(translated.page.findChild<QAbstractButton*>(name)->text(), button->text());
        else
            continue;
        check(translated.page.findChild<QWidget*>(name)->accessibleName(), widget->accessibleName());
        ++texts;
    }
    QCOMPARE(texts, 32);
}

QTEST_MAIN(DocumentSetWidgetFormTest)
#include "DocumentSetWidgetFormTest.moc"
