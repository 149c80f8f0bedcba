#include "pages/OriginReturnSetWidget.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "host/components/CLineEdit.h"
#include "host/components/TypeAssistant.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace {

struct SignalRow {
    const char* box;
    const char* pin;
    const char* button;
    const char* positive;
    const char* negative;
    const char* enableKey;
    const char* pinKey;
    const char* logicKey;
    const char* viewKey;
};

constexpr SignalRow signalRows[] = {
    { "checkBox_1", "lineEditPos", "toolButtonPos", "radioButton_1", "radioButton_2", "PosLimitEnable", "PosLimitPin",
        "PosLimitLogic", "LineEditPosObjectName" },
    { "checkBox_2", "lineEditNeg", "toolButtonNeg", "radioButton_3", "radioButton_4", "NegsLimitEnable", "NegLimitPin",
        "NegLimitLogic", "LineEditNegObjectName" },
    { "checkBox_3", "lineEditOrg", "toolButtonOrg", "radioButton_5", "radioButton_6", "OrgSignalEnable", "OrgSignalPin",
        "OrgSignalLogic", "LineEditOrgObjectName" },
};

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace

class OriginReturnSetWidgetTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void slotsStandInTheirOrder();
    void controlsHaveTheirTexts_data();
    void controlsHaveTheirTexts();
    void theFormStartsWithItsRowsDisabled();
    void onlyIntendedNamesAreSilenced();
    void validatorsAreSet();

    void valuesAreShownUnchanged();
    void aModeThatIsNotOfferedBecomesTheFirst();
    void aVirtualAxisHasTheModesWith35();
    void aVirtualAxisLocksSpeedsAndBoxes();
    void aModeWithoutPictureShowsItsPath();
    void choosingAModeWritesItAndShowsItsPicture();
    void withoutSettingsThePictureIsEmpty();
    void updatingAgainKeepsOneConnection();
    void theProgramStyleShowsAndHidesThePickers();
    void withoutARecordThePageStands();

    void fieldsCommitOnLeaving_data();
    void fieldsCommitOnLeaving();
    void returnStoresNothing();

    void viewInfoNamesThePinEditors();
    void aReleasedMouseButtonAnywhereUpdatesTheFindIndex();
    void theFocusedPinIsNamed();

    void signalRowsFollowTheirBoxes_data();
    void signalRowsFollowTheirBoxes();
    void logicIsLoadedAndWritten_data();
    void logicIsLoadedAndWritten();
    void pinsCommitThroughTheCheck_data();
    void pinsCommitThroughTheCheck();
    void thePickerPutsItsChoiceThroughTheCheck();
    void aPickedVariableThatIsNoBoolIsRefused();
    void thePickerChangesNothing_data();
    void thePickerChangesNothing();
    void aDisabledRowKeepsItsText();
    void aPageClosedUnderTheMessageIsSurvived();

private:
    void makePage();
    void show();
    template <typename Widget = QWidget>
    Widget* control(const char* name) const
    {
        auto* found = m_page->findChild<Widget*>(latin(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    QString stored(const char* key) const { return m_axis->property(latin(key), QString()); }
    void enter(const char* name, const QString& text);

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
    AxisTable* m_axis = nullptr;
    std::unique_ptr<OriginReturnSetWidget> m_page;
};

void OriginReturnSetWidgetTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OriginReturnSetWidgetTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_host->settings.setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_project->addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main\nVAR\n  flag : BOOL;\n  counter : INT;\nEND_VAR\nEND_PROGRAM\n"));
    m_host->cookies.setValue(Solution::ConfigKey::projectName(), m_project->name());
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
    m_boxes = std::make_unique<MessageBoxWatcher>();
}

void OriginReturnSetWidgetTest::cleanup()
{
    m_page.reset();
    m_boxes.reset();
    m_project.reset();
    m_host.reset();
}

void OriginReturnSetWidgetTest::makePage()
{
    m_page = std::make_unique<OriginReturnSetWidget>(m_project->name(), m_axis->id(), nullptr);
}

void OriginReturnSetWidgetTest::show()
{
    m_page->show();
    m_page->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void OriginReturnSetWidgetTest::enter(const char* name, const QString& text)
{
    auto* field = control<QLineEdit>(name);
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Tab);
}

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

void OriginReturnSetWidgetTest::fieldsCommitOnLeaving_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QByteArray speed("lineEdit_7");
    const QByteArray close("lineEdit_9");
    QTest::newRow("a speed") << speed << QByteArray("HomeSpeed") << "12.5"
                             << "12.500000";
    QTest::newRow("a speed equal to the close speed") << speed << QByteArray("HomeSpeed") << "1"
                                                      << "1.000000";
    QTest::newRow("a speed below the close speed") << speed << QByteArray("HomeSpeed") << "0.5"
                                                   << "10";
    QTest::newRow("a speed above the limit") << speed << QByteArray("HomeSpeed") << "9999999.5"
                                             << "10";
    QTest::newRow("an empty speed") << speed << QByteArray("HomeSpeed") << ""
                                    << "10";
    QTest::newRow("an acceleration") << QByteArray("lineEdit_8") << QByteArray("HomeAcc") << "0.01"
                                     << "0.010000";
    QTest::newRow("no acceleration") << QByteArray("lineEdit_8") << QByteArray("HomeAcc") << "0"
                                     << "100";
    QTest::newRow("a close speed above the speed") << close << QByteArray("HomeCloseSpeed") << "20"
                                                   << "1";
    QTest::newRow("a close speed equal to the speed") << close << QByteArray("HomeCloseSpeed") << "10"
                                                      << "10.000000";
    QTest::newRow("a close speed too low") << close << QByteArray("HomeCloseSpeed") << "0.001"
                                           << "1";
    QTest::newRow("a time-out as typed") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "0100"
                                         << "0100";
    QTest::newRow("a time-out of nought") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "0"
                                          << "50000";
    QTest::newRow("a negative time-out") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "-5"
                                         << "50000";
    QTest::newRow("the largest time-out") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "2147483647"
                                          << "2147483647";
    QTest::newRow("a time-out beyond it") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "2147483648"
                                          << "50000";
}

void OriginReturnSetWidgetTest::fieldsCommitOnLeaving()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, key);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    makePage();
    show();
    enter(field.constData(), typed);
    QCOMPARE(control<QLineEdit>(field.constData())->text(), shown);
    QCOMPARE(stored(key.constData()), shown);
    QCOMPARE(m_boxes->count(), 0);
    QVERIFY(!control(field.constData())->hasFocus());
}

void OriginReturnSetWidgetTest::returnStoresNothing()
{
    makePage();
    show();
    auto* field = control<QLineEdit>("lineEdit_8");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("55"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(stored("HomeAcc"), QStringLiteral("100"));
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(stored("HomeAcc"), QStringLiteral("55.000000"));
}

void OriginReturnSetWidgetTest::viewInfoNamesThePinEditors()
{
    makePage();
    QCOMPARE(m_axis->getViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QString()),
        QStringLiteral("OriginReturnSetWidget"));
    for (const SignalRow& row : signalRows)
        QCOMPARE(m_axis->getViewInfo(latin(row.viewKey), QString()), latin(row.pin));
}

void OriginReturnSetWidgetTest::aReleasedMouseButtonAnywhereUpdatesTheFindIndex()
{
    makePage();
    show();
    QSignalSpy updates(m_page.get(), &OriginReturnSetWidget::updateFindIndex);
    QTest::mouseClick(control("lineEdit_7"), Qt::LeftButton);
    QVERIFY(updates.count() > 0);
    const int count = updates.count();
    QTest::mouseClick(control("lineEdit_7"), Qt::RightButton);
    QVERIFY(updates.count() > count);
    updates.clear();
    QTest::mousePress(m_page.get(), Qt::LeftButton);
    QCOMPARE(updates.count(), 0);
    QTest::mouseRelease(m_page.get(), Qt::LeftButton);
    QCOMPARE(updates.count(), 1);
    QTest::keyClick(control("lineEdit_7"), Qt::Key_A);
    QCOMPARE(updates.count(), 1);
}

void OriginReturnSetWidgetTest::theFocusedPinIsNamed()
{
    for (const SignalRow& row : signalRows)
        m_axis->setProperty(latin(row.enableKey), QStringLiteral("TRUE"));
    makePage();
    show();
    control("lineEdit_7")->setFocus();
    QCOMPARE(m_page->focusedPinViewInfo(), QString());
    for (const SignalRow& row : signalRows) {
        control(row.pin)->setFocus();
        QCOMPARE(m_page->focusedPinViewInfo(), latin(row.pin));
    }
}

void OriginReturnSetWidgetTest::signalRowsFollowTheirBoxes_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("positive limit") << 0;
    QTest::newRow("negative limit") << 1;
    QTest::newRow("origin") << 2;
}

void OriginReturnSetWidgetTest::signalRowsFollowTheirBoxes()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("true"));
    makePage();
    QVERIFY(control<QCheckBox>(signal.box)->isChecked());
    const auto enabled = [&] {
        return QVector<bool>({ control(signal.pin)->isEnabled(), control(signal.button)->isEnabled(),
            control(signal.positive)->isEnabled(), control(signal.negative)->isEnabled() });
    };
    QCOMPARE(enabled(), QVector<bool>(4, true));
    for (int other = 0; other < 3; ++other)
        QCOMPARE(control(signalRows[other].pin)->isEnabled(), other == row);
    QCOMPARE(stored(signal.enableKey), QStringLiteral("TRUE"));
    control<QCheckBox>(signal.box)->click();
    QCOMPARE(enabled(), QVector<bool>(4, false));
    QCOMPARE(stored(signal.enableKey), QStringLiteral("FALSE"));
    control<QCheckBox>(signal.box)->click();
    QCOMPARE(enabled(), QVector<bool>(4, true));
    QCOMPARE(stored(signal.enableKey), QStringLiteral("TRUE"));
}

void OriginReturnSetWidgetTest::logicIsLoadedAndWritten_data()
{
    signalRowsFollowTheirBoxes_data();
}

void OriginReturnSetWidgetTest::logicIsLoadedAndWritten()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
    m_axis->setProperty(latin(signal.logicKey), QStringLiteral("tRUE"));
    makePage();
    QVERIFY(control<QRadioButton>(signal.positive)->isChecked());
    m_axis->setProperty(latin(signal.logicKey), QStringLiteral("anything"));
    makePage();
    QVERIFY(control<QRadioButton>(signal.negative)->isChecked());
    QVERIFY(!control<QRadioButton>(signal.positive)->isChecked());
    control<QRadioButton>(signal.positive)->click();
    QCOMPARE(stored(signal.logicKey), QStringLiteral("TRUE"));
    control<QRadioButton>(signal.negative)->click();
    QCOMPARE(stored(signal.logicKey), QStringLiteral("FALSE"));
}

void OriginReturnSetWidgetTest::pinsCommitThroughTheCheck_data()
{
    signalRowsFollowTheirBoxes_data();
}

void OriginReturnSetWidgetTest::pinsCommitThroughTheCheck()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
    makePage();
    control<CLineEdit>(signal.pin)->setEnableComplete(false);
    show();
    enter(signal.pin, QStringLiteral("%QX7.3"));
    QCOMPARE(stored(signal.pinKey), QStringLiteral("%QX7.3"));
    enter(signal.pin, QStringLiteral("abc"));
    QCOMPARE(m_boxes->texts(), QStringList({ QStringLiteral(" not a valid bit address!") }));
    QCOMPARE(control<QLineEdit>(signal.pin)->text(), QStringLiteral("%QX7.3"));
    QCOMPARE(stored(signal.pinKey), QStringLiteral("%QX7.3"));
    // Return commits a pin, unlike a number.
    auto* pin = control<QLineEdit>(signal.pin);
    pin->setFocus();
    pin->selectAll();
    QTest::keyClicks(pin, QStringLiteral("Main.flag"));
    QTest::keyClick(pin, Qt::Key_Return);
    QCOMPARE(stored(signal.pinKey), QStringLiteral("Main.flag"));
}

void OriginReturnSetWidgetTest::thePickerPutsItsChoiceThroughTheCheck()
{
    for (const SignalRow& signal : signalRows) {
        m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
        makePage();
        show();
        ModalDialogDriver dialogs([](QDialog* dialog) {
            auto* picker = qobject_cast<TypeAssistant*>(dialog);
            QVERIFY(picker);
            QVERIFY(!picker->parent());
            picker->chosenTexts = QStringList({ QStringLiteral("Main.flag"), QStringLiteral("Main.other") });
            picker->QDialog::done(QDialog::Accepted);
        });
        QTest::mouseClick(control(signal.button), Qt::LeftButton);
        QCOMPARE(dialogs.count, 1);
        QCOMPARE(control<QLineEdit>(signal.pin)->text(), QStringLiteral("Main.flag"));
        QCOMPARE(stored(signal.pinKey), QStringLiteral("Main.flag"));
        QVERIFY(!control(signal.pin)->hasFocus());
    }
    QCOMPARE(m_boxes->count(), 0);
}

void OriginReturnSetWidgetTest::aPickedVariableThatIsNoBoolIsRefused()
{
    m_axis->setProperty(QStringLiteral("OrgSignalEnable"), QStringLiteral("TRUE"));
    makePage();
    show();
    ModalDialogDriver dialogs([](QDialog* dialog) {
        qobject_cast<TypeAssistant*>(dialog)->chosenTexts = QStringList({ QStringLiteral("Main.counter") });
        dialog->QDialog::done(QDialog::Accepted);
    });
    QTest::mouseClick(control("toolButtonOrg"), Qt::LeftButton);
    QCOMPARE(m_boxes->texts(), QStringList({ QStringLiteral("Main.counter is not of Boolean type!") }));
    QCOMPARE(control<QLineEdit>("lineEditOrg")->text(), QStringLiteral("%IX0.0"));
    QCOMPARE(stored("OrgSignalPin"), QStringLiteral("%IX0.0"));
}

void OriginReturnSetWidgetTest::thePickerChangesNothing_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("when it is cancelled") << false;
    QTest::newRow("when it is accepted without a choice") << true;
}

void OriginReturnSetWidgetTest::thePickerChangesNothing()
{
    QFETCH(bool, accepted);
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    makePage();
    show();
    ModalDialogDriver dialogs([accepted](QDialog* dialog) {
        if (!accepted)
            qobject_cast<TypeAssistant*>(dialog)->chosenTexts = QStringList({ QStringLiteral("Main.flag") });
        dialog->QDialog::done(accepted ? QDialog::Accepted : QDialog::Rejected);
    });
    QTest::mouseClick(control("toolButtonPos"), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(control<QLineEdit>("lineEditPos")->text(), QStringLiteral("%IX100.0"));
    QCOMPARE(stored("PosLimitPin"), QStringLiteral("%IX100.0"));
}

void OriginReturnSetWidgetTest::aDisabledRowKeepsItsText()
{
    m_axis->setProperty(QStringLiteral("NegsLimitEnable"), QStringLiteral("TRUE"));
    m_axis->setProperty(QStringLiteral("NegLimitPin"), QStringLiteral("no longer valid"));
    makePage();
    control<QCheckBox>("checkBox_2")->click();
    control<QCheckBox>("checkBox_2")->click();
    QCOMPARE(stored("NegLimitPin"), QStringLiteral("no longer valid"));
    QCOMPARE(control<QLineEdit>("lineEditNeg")->text(), QStringLiteral("no longer valid"));
    QCOMPARE(m_boxes->count(), 0);
}

void OriginReturnSetWidgetTest::aPageClosedUnderTheMessageIsSurvived()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    makePage();
    control<QLineEdit>("lineEditPos")->setText(QStringLiteral("abc"));
    m_boxes->meanwhile([this] { m_page.reset(); });
    QMetaObject::invokeMethod(m_page.get(), "onLineEditPosTextChanged");
    QVERIFY(!m_page);
    QCOMPARE(stored("PosLimitPin"), QStringLiteral("%IX100.0"));
}

QTEST_MAIN(OriginReturnSetWidgetTest)
#include "OriginReturnSetWidgetTest.moc"
