#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

#include <optional>

/// Form, session and status refresh of the online page.
class OnlineDebugWidgetTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void slotsStandInTheirOrder();
    void controlsHaveTheirTextsAndStates_data();
    void controlsHaveTheirTextsAndStates();
    void fieldsShareTheirValidators();
    void sizesAreFixed();
    void everyPushButtonIsStyled();
    void comboBoxesListTheirTextsInSortOrder();

    void aProjectThatIsNotOpenGivesAPageWithoutTimer();
    void goingOnLineStartsThePoll_data();
    void goingOnLineStartsThePoll();
    void withoutSettingsNothingStarts();
    void goingOnLineTellsTheVariableMonitor();
    void anEncoderAxisIsNotMonitored();
    void aVisiblePagePollsOnceUntilTheReply();
    void aHiddenPageKeepsAliveOnEveryTwelfthTick();
    void becomingVisibleResetsTheTicks();
    void noTickSendsAnything_data();
    void noTickSendsAnything();
    void aVanishedAxisEndsThePoll();
    void requestsEndSilently_data();
    void requestsEndSilently();
    void goingOffLineBlanksThePage();
    void enteringDebugModeCarriesTheTimeout_data();
    void enteringDebugModeCarriesTheTimeout();
    void theSameButtonLeavesDebugMode();
    void directLoginIsRefused();
    void withoutTransferEnteringIsRefused();
    void aRefusedEntryIsShown_data();
    void aRefusedEntryIsShown();
    void withoutDiagnosisTheMessageIsShownAllTheSame();
    void repliesOfAnotherLengthChangeNothing_data();
    void repliesOfAnotherLengthChangeNothing();
    void aReplyFillsTheFields_data();
    void aReplyFillsTheFields();
    void errorsAreNamedFromTheLanguageCore();
    void whatIsEnabledFollowsTheReply_data();
    void whatIsEnabledFollowsTheReply();
    void theRatioInForceIsShown();
    void closingSendsNothing();
    void closingInDebugModeReleasesTheMonitor();

private:
    void tick() { QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot"); }
    QTimer* timer() const { return m->page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly); }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugWidgetTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineDebugWidgetTest::slotsStandInTheirOrder()
{
    const QByteArrayList expected{ "axisDebugGetAxisRef(QByteArray)", "axisDebugEnterDebugMode(short)",
        "axisDebugKeepAlive(short)", "axisDebugSetEnable(short)", "axisDebugSetPosition(short)",
        "axisDebugSetHomeOffset(short)", "axisDebugSetVelRatio(short)", "axisDebugSetHome(short)",
        "axisDebugSetStop(short)", "axisDebugMoveAbs(short)", "axisDebugMoveRel(short)", "axisDebugMoveVel(short)",
        "axisDebugJopPos(short)", "axisDebugJopNeg(short)", "axisDebugReset(short)", "onlineStatechanged(bool)",
        "onlineQTimerSlot()" };
    const QMetaObject& meta = OnlineDebugWidget::staticMetaObject;
    for (int i = 0; i < expected.size(); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        QCOMPARE(method.methodSignature(), expected.at(i));
        QCOMPARE(method.access(), i < 16 ? QMetaMethod::Public : QMetaMethod::Private);
    }
}

void OnlineDebugWidgetTest::controlsHaveTheirTextsAndStates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("hidden");
    const auto row = [](const char* name, const char* text, bool hidden = false) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(text) << hidden;
    };
    row("label_2", "          Status:");
    row("label_3", "          Communication:");
    row("label_4", "        Axis Error:");
    row("label_5", "      Servo Error:");
    row("statueLineEdit", "");
    row("comLineEdit", "");
    row("axisErrorLineEdit", "");
    row("servoErrorLineEdit", "");
    row("enterDebugButton", "Enter debugging");
    row("label", "Preset Position:");
    row("presetPositionLineEdit", "0");
    row("label_6", "Origin Offset:");
    row("originOffsetLineEdit", "0");
    row("label_7", "Speed Multiplier:");
    row("speedMultiplierLineEdit", "100");
    row("label_19", "% ");
    row("speedMultiplierCheckBox", "");
    row("label_8", "Positive Jog Speed:");
    row("posJogSpeedLineEdit", "10");
    row("label_9", "Positive Jog Acc:");
    row("posJogAccLineEdit", "10");
    row("label_10", "Negative Jog Speed:");
    row("negJogSpeedLineEdit", "10");
    row("label_11", "Negative Jog Acc:");
    row("negJogAccLineEdit", "10");
    row("label_12", "Motion Type:");
    row("label_15", "Curve Type:");
    row("label_13", "Position:");
    row("positionLineEdit", "0");
    row("label_14", "Velocity:");
    row("velocityLineEdit", "10");
    row("label_16", "Acceleration:");
    row("accLineEdit", "10");
    row("label_17", "Deceleration:");
    row("decLineEdit", "10");
    row("label_18", "jerk:", true);
    row("jerkLineEdit", "0.000000", true);
    row("enablePushButton", "Enable");
    row("presetPositionPushButton", "Preset Pos");
    row("posJogPushButton", "JOG+");
    row("negJogPushButton", "JOG-");
    row("motionPushButton", "Motion");
    row("stopPushButton", "Stop");
    row("resetPushButton", "Reset");
    row("homePushButton", "Home");
}

void OnlineDebugWidgetTest::controlsHaveTheirTextsAndStates()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(bool, hidden);
    m->makePage();
    const auto* control = m->page->findChild<QWidget*>(name);
    QVERIFY(control);
    QCOMPARE(control->property("text").toString(), text);
    QCOMPARE(control->isHidden(), hidden);
    const bool monitorField
        = QStringList({ QStringLiteral("statueLineEdit"), QStringLiteral("comLineEdit"),
                          QStringLiteral("axisErrorLineEdit"), QStringLiteral("servoErrorLineEdit") })
              .contains(name);
    if (monitorField) {
        QVERIFY(!control->isEnabled());
        QVERIFY(control->property("readOnly").toBool());
    }
    QCOMPARE(m->page->windowTitle(), QString());
    QVERIFY(!m->control<QTabWidget>("basicTabWidget")->isEnabled());
    QCOMPARE(m->control<QTabWidget>("basicTabWidget")->tabText(0), QStringLiteral("Basic"));
    QCOMPARE(m->control<QTabWidget>("basicTabWidget")->widget(0)->objectName(), QStringLiteral("tab"));
}

void OnlineDebugWidgetTest::fieldsShareTheirValidators()
{
    m->makePage();
    const char* reals[] = { "presetPositionLineEdit", "originOffsetLineEdit", "posJogSpeedLineEdit",
        "posJogAccLineEdit", "negJogSpeedLineEdit", "negJogAccLineEdit", "positionLineEdit", "velocityLineEdit",
        "accLineEdit", "decLineEdit", "jerkLineEdit" };
    const QValidator* shared = m->field(reals[0])->validator();
    const auto* real = qobject_cast<const DoubleValidator*>(shared);
    QVERIFY(real);
    QCOMPARE(real->decimals(), 6);
    QCOMPARE(real->notation(), QDoubleValidator::StandardNotation);
    QCOMPARE(real->parent(), m->page.get());
    for (const char* name : reals)
        QCOMPARE(m->field(name)->validator(), shared);
    const auto* integer = qobject_cast<const RegExpValidator*>(m->field("speedMultiplierLineEdit")->validator());
    QVERIFY(integer);
    QCOMPARE(integer->regExp().pattern(), QStringLiteral("-?[0-9]*"));
    QCOMPARE(integer->regExp().caseSensitivity(), Qt::CaseSensitive);
}

void OnlineDebugWidgetTest::sizesAreFixed()
{
    m->makePage();
    const auto isFixed = [this](const char* name, const QSize& size) {
        const auto* control = m->control(name);
        return control->minimumSize() == size && control->maximumSize() == size;
    };
    QVERIFY(isFixed("varTableView", QSize(300, 200)));
    QVERIFY(isFixed("runStatusView", QSize(875, 50)));
    QVERIFY(isFixed("enterDebugButton", QSize(120, 30)));
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "posJogPushButton", "negJogPushButton",
             "motionPushButton", "stopPushButton", "resetPushButton", "homePushButton" })
        QVERIFY2(isFixed(name, QSize(100, 40)), name);
}

void OnlineDebugWidgetTest::everyPushButtonIsStyled()
{
    m->makePage();
    const QList<QPushButton*> buttons = m->page->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 9);
    for (const QPushButton* button : buttons)
        QCOMPARE(button->property("styleType").toString(), QStringLiteral("defaultButton"));
}

void OnlineDebugWidgetTest::comboBoxesListTheirTextsInSortOrder()
{
    m->makePage();
    const auto texts = [this](const char* name) {
        QStringList all;
        const auto* box = m->control<QComboBox>(name);
        for (int i = 0; i < box->count(); ++i)
            all << box->itemText(i);
        return all;
    };
    QCOMPARE(texts("motionTypeComboBox"),
        QStringList({ QStringLiteral("Absolute positioning"), QStringLiteral("Continuous motion"),
            QStringLiteral("Relative positioning") }));
    QCOMPARE(m->control<QComboBox>("motionTypeComboBox")->currentText(), QStringLiteral("Absolute positioning"));
    QCOMPARE(texts("curveTypeComboBox"), QStringList({ QStringLiteral("S_type"), QStringLiteral("trapezoid") }));
    QCOMPARE(m->control<QComboBox>("curveTypeComboBox")->currentText(), QStringLiteral("trapezoid"));
}

void OnlineDebugWidgetTest::aProjectThatIsNotOpenGivesAPageWithoutTimer()
{
    m->page = std::make_unique<OnlineDebugWidget>(QStringLiteral("Nowhere"), 1, nullptr);
    QVERIFY(!timer());
    m->page->onlineStatechanged(true);
    m->page->onlineStatechanged(false);
    tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::goingOnLineStartsThePoll_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<int>("period");
    QTest::newRow("a usual period") << QVariant(250) << 250;
    QTest::newRow("missing") << QVariant() << 100;
    QTest::newRow("nought") << QVariant(0) << 100;
    QTest::newRow("negative") << QVariant(-5) << 100;
    QTest::newRow("negative in its low 16 bits") << QVariant(40000) << 100;
    QTest::newRow("low 16 bits alone count") << QVariant(65536 + 30) << 30;
    QTest::newRow("a text") << QVariant(QStringLiteral("70")) << 70;
}

void OnlineDebugWidgetTest::goingOnLineStartsThePoll()
{
    QFETCH(QVariant, setting);
    QFETCH(int, period);
    if (setting.isValid())
        m->host.settings.setValue(Solution::ConfigKey::monitorTime(), setting);
    m->makePage();
    QVERIFY(!timer()->isActive());
    m->page->onlineStatechanged(true);
    QVERIFY(timer()->isActive());
    QCOMPARE(timer()->interval(), period);
    QVERIFY(!m->host.settings.lastFallback(Solution::ConfigKey::monitorTime()).isValid());
}

void OnlineDebugWidgetTest::withoutSettingsNothingStarts()
{
    m->makePage();
    m->host.withhold(Solution::ServiceKey::settings());
    m->page->onlineStatechanged(true);
    QVERIFY(!timer()->isActive());
    m->control<QPushButton>("enterDebugButton")->click();
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetTest::goingOnLineTellsTheVariableMonitor()
{
    m->makePage();
    m->host.calls.clear();
    m->page->onlineStatechanged(true);
    QCOMPARE(
        m->host.calls.entriesOf({ QStringLiteral("varMonitor.addAxis"), QStringLiteral("varMonitor.releaseAxis") }),
        QStringList({ QStringLiteral("varMonitor.addAxis(3)"), QStringLiteral("varMonitor.releaseAxis(3, false)") }));
}

void OnlineDebugWidgetTest::anEncoderAxisIsNotMonitored()
{
    m.reset();
    m.emplace(QStringLiteral("Axis_Encoder"));
    m->makePage();
    m->receive(OnlinePageFixture::status(3));
    m->page->onlineStatechanged(true);
    QVERIFY(!timer()->isActive());
    m->page->onlineStatechanged(false);
    QVERIFY(!m->field("comLineEdit")->text().isEmpty());
}

void OnlineDebugWidgetTest::aVisiblePagePollsOnceUntilTheReply()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    const auto param = m->debug.requests.first().as<GetAxisRefParam>();
    QCOMPARE(param.axisNo, short(3));
    const int size = param.size;
    QCOMPARE(size, 248);
    QCOMPARE(m->debug.requests.first().receiver, m->page.get());
    QCOMPARE(m->host.background.submitted, 1);
    QVERIFY(m->host.background.allReported);
    m->page->axisDebugGetAxisRef(QByteArray());
    tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugWidgetTest::aHiddenPageKeepsAliveOnEveryTwelfthTick()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 11; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugKeepAlive }));
    QCOMPARE(m->debug.requests.first().as<KeepAliveParam>().axisNo, short(3));
    for (int i = 0; i < 12; ++i)
        tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugWidgetTest::becomingVisibleResetsTheTicks()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 11; ++i)
        tick();
    m->show();
    tick();
    m->page->axisDebugGetAxisRef(QByteArray());
    m->page->hide();
    for (int i = 0; i < 11; ++i)
        tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef, AxisDebugKeepAlive }));
}

void OnlineDebugWidgetTest::noTickSendsAnything_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("before the page went on line") << "offline page";
    QTest::newRow("while the connection is down") << "offline transfer";
    QTest::newRow("without a background service") << Solution::ServiceKey::backgroundTransaction();
    QTest::newRow("without a connection service") << Solution::ServiceKey::transfer();
}

void OnlineDebugWidgetTest::noTickSendsAnything()
{
    QFETCH(QString, what);
    if (m->host.keys().contains(what))
        m->host.withhold(what);
    m->makePage();
    m->show();
    if (what != QLatin1String("offline page"))
        m->page->onlineStatechanged(true);
    if (what == QLatin1String("offline transfer"))
        m->host.transfer.setOnline(false);
    if (timer())
        timer()->stop();
    for (int i = 0; i < 13; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::aVanishedAxisEndsThePoll()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    tick();
    QVERIFY(m->debug.requests.isEmpty());
    // The request counts as under way: neither polls nor keep-alives follow.
    m->project.axisModel()->putObjectBack(m->axis);
    tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::requestsEndSilently_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("without a background service") << Solution::ServiceKey::backgroundTransaction();
    QTest::newRow("without a debug service") << Solution::ServiceKey::motionControlDebug();
    QTest::newRow("off line") << QString();
}

void OnlineDebugWidgetTest::requestsEndSilently()
{
    QFETCH(QString, missing);
    if (missing == Solution::ServiceKey::motionControlDebug())
        m->host.objectTable.remove(missing);
    else if (missing.isEmpty())
        m->host.transfer.setOnline(false);
    else
        m->host.withhold(missing);
    m->makePage();
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "resetPushButton" }) {
        m->control("basicTabWidget")->setEnabled(true);
        m->control<QPushButton>(name)->click();
    }
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->host.background.submitted, 0);
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetTest::goingOffLineBlanksThePage()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    AxisRef status = OnlinePageFixture::status(4, true);
    status.axisError = 9;
    status.homeSwitch = 1;
    m->receive(status);
    m->page->onlineStatechanged(false);
    QVERIFY(!timer()->isActive());
    for (const char* name : { "statueLineEdit", "comLineEdit", "axisErrorLineEdit", "servoErrorLineEdit" })
        QCOMPARE(m->field(name)->text(), QString());
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QString());
    QVERIFY(!m->control("basicTabWidget")->isEnabled());
    QVERIFY(!m->control("stopPushButton")->isEnabledTo(m->control("tab")));
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), QString());
    QCOMPARE(m->control("enablePushButton")->styleSheet(), QString());
    const QAbstractItemModel& states = *m->control<QTableView>("runStatusView")->model();
    QCOMPARE(states.index(0, 4).data().toString(), QString());
    QVERIFY(!states.index(0, 4).data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetTest::enteringDebugModeCarriesTheTimeout_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<int>("timeout");
    QTest::newRow("a usual time-out") << QVariant(3000) << 3000;
    QTest::newRow("missing") << QVariant() << 5000;
    QTest::newRow("nought") << QVariant(0) << 5000;
    QTest::newRow("negative") << QVariant(-1) << 5000;
    QTest::newRow("negative in its low 16 bits") << QVariant(50000) << 5000;
}

void OnlineDebugWidgetTest::enteringDebugModeCarriesTheTimeout()
{
    QFETCH(QVariant, setting);
    QFETCH(int, timeout);
    m->makePage();
    if (setting.isValid())
        m->host.settings.setValue(Solution::ConfigKey::communicationTimeout(), setting);
    QTest::mouseClick(m->control("enterDebugButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugEnterDebugMode }));
    const auto param = m->debug.requests.first().as<EnterDebugModelParam>();
    QCOMPARE(param.axisNo, short(3));
    QCOMPARE(param.enter, short(1));
    QCOMPARE(int(param.timeout), timeout);
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), QString());
}

void OnlineDebugWidgetTest::theSameButtonLeavesDebugMode()
{
    m->makePage();
    m->receive(OnlinePageFixture::status(0, true));
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->debug.requests.last().as<EnterDebugModelParam>().enter, short(0));
    m->page->axisDebugEnterDebugMode(0);
    QCOMPARE(m->boxes.count(), 0);
    QVERIFY(m->control("basicTabWidget")->isEnabled());
}

void OnlineDebugWidgetTest::directLoginIsRefused()
{
    m->host.transfer.setDirectLogin(true);
    m->makePage();
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->boxes.count(), 1);
    const MessageBoxWatcher::Box box = m->boxes.boxes.first();
    QCOMPARE(box.text, QStringLiteral("Direct login mode does not support axis online debugging."));
    QCOMPARE(box.title, QStringLiteral("Kestrun"));
    QCOMPARE(box.buttons, QStringList({ QStringLiteral("OK") }));
    QCOMPARE(box.icon, QMessageBox::Information);
    QVERIFY(!box.hasParent);
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::withoutTransferEnteringIsRefused()
{
    m->host.withhold(Solution::ServiceKey::transfer());
    m->makePage();
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(
        m->boxes.texts(), QStringList({ QStringLiteral("Direct login mode does not support axis online debugging.") }));
}

void OnlineDebugWidgetTest::aRefusedEntryIsShown_data()
{
    QTest::addColumn<bool>("debugMode");
    QTest::addColumn<QString>("text");
    QTest::newRow("on entering") << false << "Failed to enter Debug menu!,text 77";
    QTest::newRow("on leaving") << true << "Failed to exit Debug menu!,text 77";
}

void OnlineDebugWidgetTest::aRefusedEntryIsShown()
{
    QFETCH(bool, debugMode);
    QFETCH(QString, text);
    m->makePage();
    m->receive(OnlinePageFixture::status(0, debugMode));
    m->page->axisDebugEnterDebugMode(77);
    QCOMPARE(m->boxes.texts(), QStringList({ text }));
    QCOMPARE(m->control("basicTabWidget")->isEnabled(), debugMode);
}

void OnlineDebugWidgetTest::withoutDiagnosisTheMessageIsShownAllTheSame()
{
    m->host.withhold(Solution::ServiceKey::diagnosisInfo());
    m->makePage();
    m->page->axisDebugEnterDebugMode(-1);
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Failed to enter Debug menu!,") }));
}

void OnlineDebugWidgetTest::repliesOfAnotherLengthChangeNothing_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("nothing") << 0;
    QTest::newRow("one byte short") << 247;
    QTest::newRow("one byte long") << 249;
    QTest::newRow("a million bytes") << 1000000;
}

void OnlineDebugWidgetTest::repliesOfAnotherLengthChangeNothing()
{
    QFETCH(int, size);
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->receive(OnlinePageFixture::status(3, true));
    tick();
    const QImage before = m->page->grab().toImage();
    m->page->axisDebugGetAxisRef(QByteArray(size, '\1'));
    QCOMPARE(m->page->grab().toImage(), before);
    tick();
    QCOMPARE(m->debug.requests.size(), 3);
}

void OnlineDebugWidgetTest::aReplyFillsTheFields_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("communication");
    QTest::addColumn<int>("servoError");
    QTest::addColumn<QString>("communicationText");
    QTest::addColumn<QString>("servoText");
    QTest::addColumn<bool>("moving");
    QTest::newRow("disabled") << 0 << 0 << 0 << "OFF"
                              << "No error" << false;
    QTest::newRow("in error") << 1 << 1 << 5 << "ON"
                              << "Error" << false;
    QTest::newRow("stopping") << 2 << 255 << -1 << "ON"
                              << "Error" << true;
    QTest::newRow("standing still") << 3 << 1 << 0 << "ON"
                                    << "No error" << false;
    QTest::newRow("moving") << 4 << 1 << 0 << "ON"
                            << "No error" << true;
    QTest::newRow("homing") << 7 << 1 << 0 << "ON"
                            << "No error" << true;
    QTest::newRow("a state without a text") << 900 << 1 << 0 << "ON"
                                            << "No error" << true;
}

void OnlineDebugWidgetTest::aReplyFillsTheFields()
{
    QFETCH(int, state);
    QFETCH(int, communication);
    QFETCH(int, servoError);
    QFETCH(QString, communicationText);
    QFETCH(QString, servoText);
    QFETCH(bool, moving);
    m->makePage();
    AxisRef status = OnlinePageFixture::status(static_cast<quint16>(state));
    status.communication = static_cast<quint8>(communication);
    status.servoError = static_cast<qint16>(servoError);
    status.actualPosition = 1.239;
    m->receive(status);
    QCOMPARE(m->field("statueLineEdit")->text(),
        m->project.axisModel()->getAxisStateMap().value(static_cast<AxisModel::AxisState>(state)));
    QCOMPARE(m->field("statueLineEdit")->text().isEmpty(), state == 900);
    QCOMPARE(m->field("comLineEdit")->text(), communicationText);
    QCOMPARE(m->field("servoErrorLineEdit")->text(), servoText);
    QCOMPARE(m->field("servoErrorLineEdit")->styleSheet(), QString());
    QCOMPARE(m->control<QTableView>("varTableView")->model()->index(0, 2).data().toString(), QStringLiteral("1.23"));
    QCOMPARE(m->control<QTableView>("runStatusView")->model()->index(0, 1).data().toString(),
        moving ? QStringLiteral("ON") : QStringLiteral("OFF"));
}

void OnlineDebugWidgetTest::errorsAreNamedFromTheLanguageCore()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(1);
    status.axisError = 1;
    m->receive(status);
    QVERIFY(!m->field("axisErrorLineEdit")->text().isEmpty());
    QVERIFY(m->field("axisErrorLineEdit")->text() != QStringLiteral("1"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QStringLiteral("border: 1px solid rgb(255,75,75)"));
    status.axisError = 60000;
    m->receive(status);
    QCOMPARE(m->field("axisErrorLineEdit")->text(), QStringLiteral("60000"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QStringLiteral("border: 1px solid rgb(255,75,75)"));
    status.axisError = 0;
    m->receive(status);
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QString());
}

void OnlineDebugWidgetTest::whatIsEnabledFollowsTheReply_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("debugMode");
    QTest::addColumn<bool>("tab");
    QTest::addColumn<bool>("commands");
    QTest::newRow("on line only") << 3 << false << false << false;
    QTest::newRow("debug mode, disabled") << 0 << true << true << false;
    QTest::newRow("debug mode, in error") << 1 << true << true << false;
    QTest::newRow("debug mode, stopping") << 2 << true << true << true;
    QTest::newRow("debug mode, standing still") << 3 << true << true << true;
    QTest::newRow("an unsigned comparison") << 0xffff << true << true << true;
}

void OnlineDebugWidgetTest::whatIsEnabledFollowsTheReply()
{
    QFETCH(int, state);
    QFETCH(bool, debugMode);
    QFETCH(bool, tab);
    QFETCH(bool, commands);
    m->makePage();
    m->receive(OnlinePageFixture::status(static_cast<quint16>(state), debugMode));
    QCOMPARE(m->control("basicTabWidget")->isEnabled(), tab);
    const QString blue = QStringLiteral("background-color: rgb(90,149,253)");
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), tab ? blue : QString());
    QCOMPARE(m->control("enablePushButton")->styleSheet(), commands ? blue : QString());
    for (const char* name :
        { "posJogPushButton", "negJogPushButton", "motionPushButton", "stopPushButton", "homePushButton" })
        QCOMPARE(m->control(name)->isEnabled(), commands);
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "resetPushButton" })
        QCOMPARE(m->control(name)->isEnabled(), tab);
    QCOMPARE(m->control<QPushButton>("enterDebugButton")->text(), QStringLiteral("Enter debugging"));
}

void OnlineDebugWidgetTest::theRatioInForceIsShown()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(3, true);
    status.speedRatio = 0.557;
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("100"));
    {
        const QSignalBlocker blocker(m->control("speedMultiplierCheckBox"));
        m->control<QCheckBox>("speedMultiplierCheckBox")->setChecked(true);
    }
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("100"));
    m->field("speedMultiplierLineEdit")->setEnabled(false);
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("55"));
    status.debugMode = 0;
    status.speedRatio = 0.2;
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("55"));
}

void OnlineDebugWidgetTest::closingSendsNothing()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    m->receive(OnlinePageFixture::status(4, true));
    m->page.reset();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::closingInDebugModeReleasesTheMonitor()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    m->receive(OnlinePageFixture::status(3, true));
    m->host.calls.clear();
    m->page.reset();
    QCOMPARE(m->host.calls.entriesOf({ QStringLiteral("varMonitor.releaseAxis") }),
        QStringList({ QStringLiteral("varMonitor.releaseAxis(3, true)") }));
    m->makePage();
    m->page->onlineStatechanged(true);
    m->host.calls.clear();
    m->page.reset();
    QCOMPARE(m->host.calls.count(QStringLiteral("varMonitor.releaseAxis")), 0);
}

QTEST_MAIN(OnlineDebugWidgetTest)
#include "OnlineDebugWidgetTest.moc"
