#include "pages/OriginReturnSetWidget.h"

#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "tests/pages/HomingPageFixture.h"
#include "tests/support/ReceiverCount.h"

#include <QGroupBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QScrollArea>

namespace {

/// A controller that offers just these homing modes.
QJsonObject withModes(const QStringList& modes)
{
    QJsonObject description = TestProject::description(QStringLiteral("NV3T_70Q12"));
    QJsonObject lists = description[QStringLiteral("lists")].toObject();
    lists[QStringLiteral("HomeMode")] = QJsonArray::fromStringList(modes);
    description[QStringLiteral("lists")] = lists;
    return description;
}

} // namespace

/// The form, the list of modes with the pictures, and what can be set.
class OriginReturnSetWidgetTest : public QObject, private HomingPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void slotsStandInTheirOrder();
    void controlsHaveTheirTexts_data();
    void controlsHaveTheirTexts();
    void theFormStartsWithItsRowsDisabled();
    void onlyIntendedNamesAreSilenced();
    void signalsAreHeardAsOften();
    void validatorsAreSet();

    void valuesAreShownUnchanged();
    void aModeThatIsNotOfferedBecomesTheFirst();
    void aLoadReplacesTheModeAndShowsItsPicture();
    void aLoadWithoutAPictureShowsNone();
    void aVirtualAxisHasTheModesWith35();
    void aVirtualAxisLocksSpeedsAndBoxes();
    void aModeWithoutPictureShowsItsPath();
    void choosingAModeWritesItAndShowsItsPicture();
    void aModeOfAMissingRecordChangesNothing();
    void withoutSettingsThePictureIsEmpty();
    void updatingAgainKeepsOneConnection();
    void theProgramStyleShowsAndHidesThePickers();
    void theProgramStyleIsFollowedWhileThePageLives();
    void aPageOfAnotherProjectThanTheCurrentOne_data();
    void aPageOfAnotherProjectThanTheCurrentOne();
    void withoutARecordThePageStands();
};

void OriginReturnSetWidgetTest::slotsStandInTheirOrder()
{
    const QByteArrayList expected{ "updateFindIndex()", "updateWidget()", "on_combobox_3Changed(QString)",
        "onLineEditPosTextChanged()", "onLineEditNegTextChanged()", "onlineEditOrgTextChanged()",
        "onToolButtonClicked(bool)", "onToolButtonClicked()", "onLineEdit_7textChanged()", "onLineEdit_8textChanged()",
        "onLineEdit_9textChanged()", "onLineEdit_10textChanged()", "on_checkBox_1_stateChanged(int)",
        "on_checkBox_2_stateChanged(int)", "on_checkBox_3_stateChanged(int)", "on_radioButton_1_toggled(bool)",
        "on_radioButton_2_toggled(bool)", "on_radioButton_3_toggled(bool)", "on_radioButton_4_toggled(bool)",
        "on_radioButton_5_toggled(bool)", "on_radioButton_6_toggled(bool)" };
    const QMetaObject& meta = OriginReturnSetWidget::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(meta.method(meta.methodOffset() + i).methodSignature(), expected.at(i));
}

void OriginReturnSetWidgetTest::controlsHaveTheirTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buddy");
    QTest::newRow("home speed") << "Home Speed:"
                                << "lineEdit_7";
    QTest::newRow("home acceleration") << "Home Acc:"
                                       << "lineEdit_8";
    QTest::newRow("close speed") << "Home Close Speed:"
                                 << "lineEdit_9";
    QTest::newRow("time-out") << "Home TimeOut:"
                              << "lineEdit_10";
    QTest::newRow("mode") << "Home Mode:"
                          << "comboBox_3";
    QTest::newRow("positive limit") << "Positive limit:"
                                    << "lineEditPos";
    QTest::newRow("negative limit") << "Negative limit:"
                                    << "lineEditNeg";
    QTest::newRow("origin signal") << "Origin signal:"
                                   << "lineEditOrg";
}

void OriginReturnSetWidgetTest::controlsHaveTheirTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, buddy);
    makePage();
    const QList<QLabel*> labels = m_page->findChildren<QLabel*>();
    const auto found
        = std::find_if(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == text; });
    QVERIFY(found != labels.end());
    QVERIFY((*found)->buddy());
    QCOMPARE((*found)->buddy()->objectName(), buddy);
    QCOMPARE(m_page->windowTitle(), QStringLiteral("OriginReturnSet"));
    QCOMPARE(m_page->findChildren<QScrollArea*>().size(), 1);
    QStringList units;
    for (const QLabel* label : labels)
        units << label->text();
    QCOMPARE(units.count(QStringLiteral("Unit/s")), 2);
    QCOMPARE(units.count(QStringLiteral("Unit/s^2")), 1);
    QCOMPARE(units.count(QStringLiteral("ms")), 1);
}

void OriginReturnSetWidgetTest::theFormStartsWithItsRowsDisabled()
{
    m_project->close();
    m_page = std::make_unique<OriginReturnSetWidget>(QStringLiteral("Line"), 1, nullptr);
    const char* boxTexts[] = { "Positive limit enable", "Negative limit enable", "Origin signal enable" };
    for (int i = 0; i < 3; ++i) {
        const SignalRow& row = signalRows[i];
        QVERIFY(control(row.box)->isEnabled());
        QVERIFY(!control<QCheckBox>(row.box)->isChecked());
        QCOMPARE(control<QCheckBox>(row.box)->text(), latin(boxTexts[i]));
        for (const char* name : { row.pin, row.button, row.positive, row.negative })
            QVERIFY2(!control(name)->isEnabled(), name);
        QVERIFY(control<QRadioButton>(row.positive)->isChecked());
        QCOMPARE(control<QRadioButton>(row.positive)->text(), QStringLiteral("Positive logic"));
        QCOMPARE(control<QRadioButton>(row.negative)->text(), QStringLiteral("Negative logic"));
        QCOMPARE(control<QToolButton>(row.button)->text(), QStringLiteral("..."));
        QCOMPARE(control(row.button)->property("styleType").toString(), QStringLiteral("littleButton"));
        // A title would say twice what the box beside it says; a pair of its own keeps the signals apart.
        const auto* group = control<QGroupBox>(row.group);
        QCOMPARE(group->title(), QString());
        QCOMPARE(group->findChildren<QRadioButton*>(),
            (QList<QRadioButton*>{ control<QRadioButton>(row.positive), control<QRadioButton>(row.negative) }));
    }
    QCOMPARE(control<QLineEdit>("lineEdit_7")->text(), QStringLiteral("10.0"));
    QCOMPARE(control<QLineEdit>("lineEdit_8")->text(), QStringLiteral("100.0"));
    QCOMPARE(control<QLineEdit>("lineEdit_9")->text(), QStringLiteral("2.0"));
    QCOMPARE(control<QLineEdit>("lineEdit_10")->text(), QStringLiteral("50000"));
    QVERIFY(!control<QLineEdit>("lineEdit_7")->validator());
    QVERIFY(!control<QLabel>("label_12")->pixmap());
}

void OriginReturnSetWidgetTest::onlyIntendedNamesAreSilenced()
{
    static int warnings;
    warnings = 0;
    const QtMessageHandler before
        = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warnings; });
    makePage();
    qInstallMessageHandler(before);
    QCOMPARE(warnings, 0);
}

void OriginReturnSetWidgetTest::validatorsAreSet()
{
    makePage();
    const auto* reals = qobject_cast<const DoubleValidator*>(control<QLineEdit>("lineEdit_7")->validator());
    QVERIFY(reals);
    QCOMPARE(reals->decimals(), 6);
    QCOMPARE(control<QLineEdit>("lineEdit_8")->validator(), reals);
    QCOMPARE(control<QLineEdit>("lineEdit_9")->validator(), reals);
    const auto* integer = qobject_cast<const RegExpValidator*>(control<QLineEdit>("lineEdit_10")->validator());
    QVERIFY(integer);
    QCOMPARE(integer->regExp().pattern(), QStringLiteral("-?[0-9]*"));
    for (const SignalRow& row : signalRows)
        QVERIFY(!control<QLineEdit>(row.pin)->validator());
}

void OriginReturnSetWidgetTest::valuesAreShownUnchanged()
{
    m_axis->setProperty(QStringLiteral("HomeSpeed"), QStringLiteral("12.50"));
    m_axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("abc"));
    m_axis->setProperty(QStringLiteral("HomeCloseSpeed"), QString());
    m_axis->setProperty(QStringLiteral("HomeTimeOut"), QStringLiteral("007"));
    m_axis->setProperty(QStringLiteral("PosLimitPin"), QStringLiteral("<b>no pin</b>"));
    makePage();
    QCOMPARE(control<QLineEdit>("lineEdit_7")->text(), QStringLiteral("12.50"));
    QCOMPARE(control<QLineEdit>("lineEdit_8")->text(), QStringLiteral("abc"));
    QCOMPARE(control<QLineEdit>("lineEdit_9")->text(), QString());
    QCOMPARE(control<QLineEdit>("lineEdit_10")->text(), QStringLiteral("007"));
    QCOMPARE(control<QLineEdit>("lineEditPos")->text(), QStringLiteral("<b>no pin</b>"));
    QCOMPARE(control<QLineEdit>("lineEditNeg")->text(), QStringLiteral("%IX100.1"));
    QCOMPARE(control<QLineEdit>("lineEditOrg")->text(), QStringLiteral("%IX0.0"));
}

void OriginReturnSetWidgetTest::aModeThatIsNotOfferedBecomesTheFirst()
{
    m_axis->setProperty(QStringLiteral("HomeMode"), QStringLiteral("homing_17"));
    makePage();
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_17"));
    QCOMPARE(control<QComboBox>("comboBox_3")->currentText(), QStringLiteral("Homing_17"));
    QCOMPARE(control<QComboBox>("comboBox_3")->count(), 17);
}

void OriginReturnSetWidgetTest::aVirtualAxisHasTheModesWith35()
{
    m_axis->setProperty(QStringLiteral("HomeMode"), QStringLiteral("Homing_17"));
    makePage();
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    m_page->updateWidget();
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_35"));
    QCOMPARE(control<QComboBox>("comboBox_3")->count(), 1);
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Pulse"));
    m_page->updateWidget();
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_35"));
    QCOMPARE(control<QComboBox>("comboBox_3")->currentText(), QStringLiteral("Homing_35"));
    QCOMPARE(control<QComboBox>("comboBox_3")->count(), 17);
}

void OriginReturnSetWidgetTest::aVirtualAxisLocksSpeedsAndBoxes()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    makePage();
    const char* locked[]
        = { "lineEdit_7", "lineEdit_8", "lineEdit_9", "lineEdit_10", "checkBox_1", "checkBox_2", "checkBox_3" };
    for (const char* name : locked)
        QVERIFY2(!control(name)->isEnabled(), name);
    // A ticked row stays usable, though its box is locked.
    for (const char* name : { "lineEditPos", "toolButtonPos", "radioButton_1", "radioButton_2" })
        QVERIFY2(control(name)->isEnabled(), name);
    for (const char* typeWord : { "Axis_Pulse", "Axis_Encoder", "Axis_EtherCAT", "anything" }) {
        m_axis->setProperty(QStringLiteral("AxisType"), latin(typeWord));
        m_page->updateWidget();
        for (const char* name : locked)
            QVERIFY2(control(name)->isEnabled(), name);
    }
}

void OriginReturnSetWidgetTest::aModeWithoutPictureShowsItsPath()
{
    makePage();
    QMetaObject::invokeMethod(m_page.get(), "on_combobox_3Changed", Q_ARG(QString, QStringLiteral("Homing_1")));
    QCOMPARE(control<QLabel>("label_12")->text(), QStringLiteral(":/images/default/Homing_en_US/Homing_1.png"));
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_1"));
}

void OriginReturnSetWidgetTest::choosingAModeWritesItAndShowsItsPicture()
{
    makePage();
    auto* box = control<QComboBox>("comboBox_3");
    box->setCurrentText(QStringLiteral("Homing_23"));
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_23"));
    const auto* label = control<QLabel>("label_12");
    QVERIFY(label->hasScaledContents());
    QVERIFY(label->pixmap());
    const QImage shown = label->pixmap()->toImage();
    QCOMPARE(shown, QPixmap(QStringLiteral(":/images/default/Homing_en_US/Homing_23.png")).toImage());
    m_axis->setProperty(QStringLiteral("HomeMode"), QStringLiteral("Homing_27"));
    m_page->updateWidget();
    QVERIFY(label->pixmap()->toImage() != shown);
}

void OriginReturnSetWidgetTest::withoutSettingsThePictureIsEmpty()
{
    m_host->withhold(Solution::ServiceKey::settings());
    makePage();
    QCOMPARE(control<QLabel>("label_12")->text(), QString());
    QVERIFY(!control<QLabel>("label_12")->pixmap() || control<QLabel>("label_12")->pixmap()->isNull());
}

void OriginReturnSetWidgetTest::updatingAgainKeepsOneConnection()
{
    makePage();
    m_page->updateWidget();
    m_page->updateWidget();
    QSignalSpy changes(m_axis, &ModelObject::dataChanged);
    control<QComboBox>("comboBox_3")->setCurrentText(QStringLiteral("Homing_30"));
    QCOMPARE(changes.count(), 1);
}

void OriginReturnSetWidgetTest::theProgramStyleShowsAndHidesThePickers()
{
    makePage();
    for (const SignalRow& row : signalRows) {
        QVERIFY(!control(row.button)->isHidden());
        QVERIFY(control<CLineEdit>(row.pin)->isCompleteEnabled());
    }
    m_project->model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    for (const char* typeWord : { "Axis_Pulse", "Axis_Encoder", "Axis_EtherCAT", "Axis_Virtual" }) {
        m_axis->setProperty(QStringLiteral("AxisType"), latin(typeWord));
        makePage();
        for (const SignalRow& row : signalRows) {
            QVERIFY(control(row.button)->isHidden());
            QVERIFY(!control<CLineEdit>(row.pin)->isCompleteEnabled());
        }
    }
}

void OriginReturnSetWidgetTest::withoutARecordThePageStands()
{
    makePage();
    show();
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    const QString before = stored("HomeSpeed");
    m_page->updateWidget();
    enter("lineEdit_7", QStringLiteral("77"));
    QCOMPARE(control<QLineEdit>("lineEdit_7")->text(), QStringLiteral("77"));
    QCOMPARE(stored("HomeSpeed"), before);
    control<QComboBox>("comboBox_3")->setCurrentText(QStringLiteral("Homing_30"));
    control<QCheckBox>("checkBox_1")->click();
    control<QRadioButton>("radioButton_2")->click();
    control<QToolButton>("toolButtonPos")->click();
    QCOMPARE(m_page->focusedPinViewInfo(), QString());
    QCOMPARE(m_boxes->count(), 0);
}

void OriginReturnSetWidgetTest::signalsAreHeardAsOften()
{
    makePage();
    // The constructor connects the list once in its update and once more with all others.
    const char* changed = SIGNAL(currentTextChanged(QString));
    QCOMPARE(receiverCount(*control("comboBox_3"), changed), 2);
    for (int update = 0; update < 2; ++update) {
        m_page->updateWidget();
        QCOMPARE(receiverCount(*control("comboBox_3"), changed), 1);
    }
    for (const char* field : { "lineEdit_7", "lineEdit_8", "lineEdit_9", "lineEdit_10" })
        QCOMPARE(receiverCount(*control(field), SIGNAL(editingFinished())), 1);
    for (const SignalRow& row : signalRows) {
        QCOMPARE(receiverCount(*control(row.pin), SIGNAL(editFinished())), 1);
        QCOMPARE(receiverCount(*control(row.button), SIGNAL(clicked(bool))), 1);
        QCOMPARE(receiverCount(*control(row.box), SIGNAL(stateChanged(int))), 1);
        QCOMPARE(receiverCount(*control(row.positive), SIGNAL(toggled(bool))), 1);
        QCOMPARE(receiverCount(*control(row.negative), SIGNAL(toggled(bool))), 1);
    }
}

void OriginReturnSetWidgetTest::aLoadReplacesTheModeAndShowsItsPicture()
{
    store("AxisType", QStringLiteral("Axis_Virtual"));
    store("HomeMode", QStringLiteral("unheard of"));
    QStringList changes;
    QVector<QImage> pictures;
    connect(m_axis, &ModelObject::dataChanged, this, [&](ModelObject*, const QString& type, const QString& key) {
        if (type != QLatin1String("property"))
            return;
        const QLabel* label = nullptr;
        const QWidgetList widgets = QApplication::allWidgets();
        for (const QWidget* each : widgets) {
            if (each->objectName() == QLatin1String("label_12"))
                label = qobject_cast<const QLabel*>(each);
        }
        QVERIFY(label);
        changes.append(QString(key + QLatin1Char(' ') + stored("HomeMode")));
        pictures.append(label->pixmap() ? label->pixmap()->toImage() : QImage());
        QCOMPARE(label->hasScaledContents(), changes.size() > 1);
    });
    makePage();
    // First the load takes the first mode of all; when the update cuts the list for the type, its picture is there.
    QCOMPARE(changes, (QStringList{ QStringLiteral("HomeMode Homing_17"), QStringLiteral("HomeMode Homing_35") }));
    QVERIFY(pictures.first().isNull());
    QCOMPARE(pictures.last(), QImage(QPixmap(QStringLiteral(":/images/default/Homing_en_US/Homing_17.png")).toImage()));
}

void OriginReturnSetWidgetTest::aLoadWithoutAPictureShowsNone()
{
    m_project->changeController(withModes({ QStringLiteral("Homing_1"), QStringLiteral("Homing_35") }));
    store("AxisType", QStringLiteral("Axis_Virtual"));
    store("HomeMode", QStringLiteral("Homing_1"));
    bool hadPicture = true;
    connect(m_axis, &ModelObject::dataChanged, this, [&](ModelObject*, const QString& type) {
        const QWidgetList widgets = QApplication::allWidgets();
        for (const QWidget* each : widgets) {
            const auto* label = qobject_cast<const QLabel*>(each);
            if (label && type == QLatin1String("property") && label->objectName() == QLatin1String("label_12"))
                hadPicture = !label->text().isEmpty() || (label->pixmap() && !label->pixmap()->isNull());
        }
    });
    makePage();
    QVERIFY(!hadPicture);
    QCOMPARE(stored("HomeMode"), QStringLiteral("Homing_35"));
}

void OriginReturnSetWidgetTest::aModeOfAMissingRecordChangesNothing()
{
    makePage();
    const auto* label = control<QLabel>("label_12");
    const qint64 picture = label->pixmap()->cacheKey();
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    const QString mode = stored("HomeMode");
    for (const char* word : { "Homing_23", "Homing_1" }) {
        call("on_combobox_3Changed", Q_ARG(QString, latin(word)));
        QVERIFY(label->pixmap());
        QCOMPARE(label->pixmap()->cacheKey(), picture);
        QCOMPARE(label->text(), QString());
        QCOMPARE(stored("HomeMode"), mode);
    }
}

void OriginReturnSetWidgetTest::theProgramStyleIsFollowedWhileThePageLives()
{
    makePage();
    for (const char* style : { "0", "1", "0", "1" }) {
        m_project->model()->setSetting(QStringLiteral("ProgramStyle"), latin(style));
        m_page->updateWidget();
        for (const SignalRow& row : signalRows)
            QCOMPARE(control(row.button)->isHidden(), latin(style) == QLatin1String("1"));
    }
}

void OriginReturnSetWidgetTest::aPageOfAnotherProjectThanTheCurrentOne_data()
{
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("current");
    QTest::newRow("the current one knows addresses only") << "0"
                                                          << "1";
    QTest::newRow("its own knows addresses only") << "1"
                                                  << "0";
}

void OriginReturnSetWidgetTest::aPageOfAnotherProjectThanTheCurrentOne()
{
    QFETCH(QString, own);
    QFETCH(QString, current);
    const TestProject other(QStringLiteral("NV3T_70Q12"), QStringLiteral("Current"));
    m_project->model()->setSetting(QStringLiteral("ProgramStyle"), own);
    other.model()->setSetting(QStringLiteral("ProgramStyle"), current);
    m_host->cookies.setValue(Solution::ConfigKey::projectName(), other.name());
    makePage();
    for (const SignalRow& row : signalRows) {
        // Completion offers the variables of the current project, the picker those of the page's.
        QCOMPARE(control<CLineEdit>(row.pin)->isCompleteEnabled(), current == QLatin1String("0"));
        QCOMPARE(control(row.button)->isHidden(), own == QLatin1String("1"));
    }
}

QTEST_MAIN(OriginReturnSetWidgetTest)
#include "OriginReturnSetWidgetTest.moc"
