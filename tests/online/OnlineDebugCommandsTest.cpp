#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/NumberTyping.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFocusEvent>
#include <QPushButton>

#include <optional>

/// The state that reads as the error state, when a test sets it: no controller's description may say so. The linker
/// leads the page's call to the function below.
static std::optional<AxisModel::AxisState> stateWithTextOfError;

using StateTexts = QMap<AxisModel::AxisState, QString>;
StateTexts stateTextsOfTheModel(const AxisModel* model) __asm__("__real__ZNK9AxisModel15getAxisStateMapEv");
Q_DECL_EXPORT StateTexts stateTextsForTheTest(const AxisModel* model) __asm__(
    "__wrap__ZNK9AxisModel15getAxisStateMapEv");

StateTexts stateTextsForTheTest(const AxisModel* model)
{
    StateTexts texts = stateTextsOfTheModel(model);
    if (stateWithTextOfError)
        texts.insert(*stateWithTextOfError, texts.value(AxisModel::ErrorStop));
    return texts;
}

namespace {

/// Notes why a widget gets the focus.
class FocusReasons : public QObject {
public:
    explicit FocusReasons(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            reasons.append(static_cast<QFocusEvent*>(event)->reason());
        return QObject::eventFilter(watched, event);
    }

    QVector<Qt::FocusReason> reasons;
};

} // namespace

/// Fields, commands and jog of the online page.
class OnlineDebugCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aFieldCommitsWhenTheFocusLeaves_data();
    void aFieldCommitsWhenTheFocusLeaves();
    void returnCommitsNothing();
    void limitsHold_data();
    void limitsHold();
    void aRefusedFieldTakesTheFocusForNoReasonOfTheKeyboard();

    void continuousMotionHidesThePosition();
    void leavingTheJerkCurveLosesTheJerk();
    void unknownTypesCountAsAbsoluteAndWithoutJerk_data();
    void unknownTypesCountAsAbsoluteAndWithoutJerk();

    void enableSendsTheOtherState_data();
    void enableSendsTheOtherState();
    void enableInErrorWarnsAndGoesOn();
    void enableSendsWhatStandsAfterItsWarning();
    void theFirstStateOfATextDecidesOnTheWarning_data();
    void theFirstStateOfATextDecidesOnTheWarning();
    void presetPositionSendsItsField();
    void homeSendsOffsetThenHome();
    void aFailedOffsetSendsNoHome();
    void motionSendsItsType_data();
    void motionSendsItsType();
    void stopSendsDecelerationAndJerk();
    void offsetAndMultiplierGoToTheNumberOfTheAxis();
    void resetSendsTheAxis();
    void commandsEndWithoutTheAxis();
    void failuresAreShown_data();
    void failuresAreShown();
    void successShowsNothing();

    void aHeldJogButtonSendsStartAndEnd_data();
    void aHeldJogButtonSendsStartAndEnd();
    void aTapSendsTheEndAlone();
    void jogTakesCommittedTextsOnly();
    void aPageClosedUnderABoxIsSurvived();

private:
    void type(const char* name, const QString& text) { NumberTyping::replace(m->field(name), text); }
    void leave(const char* name);
    void enter(const char* name, const QString& text);
    const RecordingDebug::Request& last() const { return m->debug.requests.last(); }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugCommandsTest::init()
{
    m.emplace();
    m->makePage();
    m->receive(OnlinePageFixture::status(3, true));
    m->show();
}

void OnlineDebugCommandsTest::cleanup()
{
    m.reset();
    stateWithTextOfError.reset();
}

void OnlineDebugCommandsTest::leave(const char* name)
{
    QTest::keyClick(m->field(name), Qt::Key_Tab);
}

void OnlineDebugCommandsTest::enter(const char* name, const QString& text)
{
    type(name, text);
    leave(name);
}

void OnlineDebugCommandsTest::aFieldCommitsWhenTheFocusLeaves_data()
{
    QTest::addColumn<QByteArray>("field");
    for (const char* name : { "presetPositionLineEdit", "originOffsetLineEdit", "posJogSpeedLineEdit",
             "posJogAccLineEdit", "negJogSpeedLineEdit", "negJogAccLineEdit", "positionLineEdit", "velocityLineEdit",
             "accLineEdit", "decLineEdit", "jerkLineEdit" })
        QTest::newRow(name) << QByteArray(name);
}

void OnlineDebugCommandsTest::aFieldCommitsWhenTheFocusLeaves()
{
    QFETCH(QByteArray, field);
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    enter(field.constData(), QStringLiteral("1.5"));
    QCOMPARE(m->field(field.constData())->text(), QStringLiteral("1.500000"));
    // A half-typed number counts as nought.
    enter(field.constData(), QStringLiteral("-"));
    QCOMPARE(m->field(field.constData())->text(), QStringLiteral("0.000000"));
    enter(field.constData(), QString());
    QCOMPARE(m->field(field.constData())->text(), QStringLiteral("0.000000"));
}

void OnlineDebugCommandsTest::returnCommitsNothing()
{
    type("positionLineEdit", QStringLiteral("7"));
    QTest::keyClick(m->field("positionLineEdit"), Qt::Key_Return);
    QCOMPARE(m->field("positionLineEdit")->text(), QStringLiteral("7"));
    m->page->findChild<QPushButton*>(QStringLiteral("motionPushButton"))->click();
    QCOMPARE(last().as<MoveAbsParam>().position + 0, 0.0);
    leave("positionLineEdit");
    QCOMPARE(m->field("positionLineEdit")->text(), QStringLiteral("7.000000"));
}

void OnlineDebugCommandsTest::limitsHold_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("stands");
    const auto row = [](const QByteArray& field, const char* typed, bool stands) {
        QTest::addRow("%s %s %s", field.constData(), stands ? "takes" : "refuses", typed)
            << field << QString::fromLatin1(typed) << stands;
    };
    for (const char* field : { "presetPosition", "originOffset", "posJogSpeed", "posJogAcc", "negJogSpeed", "negJogAcc",
             "position", "velocity", "acc", "dec" }) {
        row(field, "-9999999", true);
        row(field, "-9999999.000001", false);
    }
    row("jerk", "0", true);
    row("jerk", "-0.000001", false);
    for (const char* field : { "presetPosition", "originOffset", "posJogSpeed", "posJogAcc", "negJogSpeed", "negJogAcc",
             "position", "velocity", "acc", "dec", "jerk" }) {
        row(field, "9999999", true);
        row(field, "9999999.000001", false);
    }
    row("speedMultiplier", "0", true);
    // A negative multiplier counts as a huge one.
    row("speedMultiplier", "-1", false);
    row("speedMultiplier", "1000", true);
    row("speedMultiplier", "1001", false);
}

void OnlineDebugCommandsTest::limitsHold()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, typed);
    QFETCH(bool, stands);
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    const QByteArray name = field + "LineEdit";
    enter(name.constData(), QStringLiteral("5"));
    enter(name.constData(), typed);
    QCOMPARE(m->field(name.constData())->text().toDouble(), stands ? typed.toDouble() : 5.0);
    // A refused field takes the focus again.
    QCOMPARE(m->field(name.constData())->hasFocus(), !stands);
}

void OnlineDebugCommandsTest::aRefusedFieldTakesTheFocusForNoReasonOfTheKeyboard()
{
    for (const char* name : { "positionLineEdit", "speedMultiplierLineEdit" }) {
        type(name, QStringLiteral("10000000"));
        const FocusReasons focus(*m->field(name));
        leave(name);
        QCOMPARE(focus.reasons, QVector<Qt::FocusReason>({ Qt::OtherFocusReason }));
    }
}

void OnlineDebugCommandsTest::continuousMotionHidesThePosition()
{
    enter("positionLineEdit", QStringLiteral("12"));
    auto* box = m->control<QComboBox>("motionTypeComboBox");
    box->setCurrentText(QStringLiteral("Continuous motion"));
    QVERIFY(m->field("positionLineEdit")->isHidden());
    QVERIFY(m->control("label_13")->isHidden());
    box->setCurrentText(QStringLiteral("Relative positioning"));
    QVERIFY(!m->field("positionLineEdit")->isHidden());
    QVERIFY(!m->control("label_13")->isHidden());
    m->control<QPushButton>("motionPushButton")->click();
    QCOMPARE(last().as<MoveRelParam>().position + 0, 12.0);
}

void OnlineDebugCommandsTest::leavingTheJerkCurveLosesTheJerk()
{
    auto* box = m->control<QComboBox>("curveTypeComboBox");
    box->setCurrentText(QStringLiteral("S_type"));
    QVERIFY(!m->field("jerkLineEdit")->isHidden());
    QVERIFY(!m->control("label_18")->isHidden());
    enter("jerkLineEdit", QStringLiteral("40"));
    box->setCurrentText(QStringLiteral("trapezoid"));
    QVERIFY(m->field("jerkLineEdit")->isHidden());
    QVERIFY(m->control("label_18")->isHidden());
    m->control<QPushButton>("stopPushButton")->click();
    QCOMPARE(last().as<SetStopParam>().jerk + 0, 0.0);
    box->setCurrentText(QStringLiteral("S_type"));
    QCOMPARE(m->field("jerkLineEdit")->text(), QStringLiteral("0.000000"));
}

void OnlineDebugCommandsTest::unknownTypesCountAsAbsoluteAndWithoutJerk_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a text that stands for no type") << "Somewhere else";
    QTest::newRow("nothing chosen") << "";
}

void OnlineDebugCommandsTest::unknownTypesCountAsAbsoluteAndWithoutJerk()
{
    QFETCH(QString, text);
    auto* motionType = m->control<QComboBox>("motionTypeComboBox");
    auto* curveType = m->control<QComboBox>("curveTypeComboBox");
    motionType->setCurrentText(QStringLiteral("Continuous motion"));
    curveType->setCurrentText(QStringLiteral("S_type"));
    enter("jerkLineEdit", QStringLiteral("40"));
    for (QComboBox* box : { motionType, curveType }) {
        if (!text.isEmpty())
            box->addItem(text);
        box->setCurrentIndex(box->findText(text));
        QCOMPARE(box->currentText(), text);
    }
    QVERIFY(!m->field("positionLineEdit")->isHidden());
    QVERIFY(!m->control("label_13")->isHidden());
    QVERIFY(m->field("jerkLineEdit")->isHidden());
    QVERIFY(m->control("label_18")->isHidden());
    enter("positionLineEdit", QStringLiteral("12"));
    QTest::mouseClick(m->control("motionPushButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugMoveAbs }));
    QCOMPARE(last().as<MoveAbsParam>().position + 0, 12.0);
    QCOMPARE(last().as<MoveAbsParam>().jerk + 0, 0.0);
}

void OnlineDebugCommandsTest::enableSendsTheOtherState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("enable");
    QTest::newRow("a disabled axis is enabled") << 0 << 1;
    QTest::newRow("an enabled axis is disabled") << 3 << 0;
}

void OnlineDebugCommandsTest::enableSendsTheOtherState()
{
    QFETCH(int, state);
    QFETCH(int, enable);
    m->receive(OnlinePageFixture::status(static_cast<quint16>(state), true));
    QTest::mouseClick(m->control("enablePushButton"), Qt::LeftButton);
    QCOMPARE(last().code, int(AxisDebugSetEnable));
    QCOMPARE(int(last().as<SetEnableParam>().enable), enable);
    QCOMPARE(last().as<SetEnableParam>().axisNo, short(3));
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugCommandsTest::enableInErrorWarnsAndGoesOn()
{
    m->receive(OnlinePageFixture::status(1, true));
    m->boxes.meanwhile([this] { QVERIFY(m->debug.requests.isEmpty()); });
    m->control<QPushButton>("enablePushButton")->click();
    const QString state = m->project.axisModel()->getAxisStateMap().value(AxisModel::ErrorStop);
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("State: %1 ,Please reset first").arg(state) }));
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetEnable }));
}

void OnlineDebugCommandsTest::enableSendsWhatStandsAfterItsWarning()
{
    m->receive(OnlinePageFixture::status(1, true));
    m->boxes.meanwhile([this] {
        m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("9"));
        m->receive(OnlinePageFixture::status(3, true));
    });
    m->control<QPushButton>("enablePushButton")->click();
    QCOMPARE(m->boxes.count(), 1);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetEnable }));
    QCOMPARE(last().as<SetEnableParam>().axisNo, short(9));
    QCOMPARE(last().as<SetEnableParam>().enable, short(0));
}

void OnlineDebugCommandsTest::theFirstStateOfATextDecidesOnTheWarning_data()
{
    QTest::addColumn<int>("same");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("warnings");
    QTest::newRow("an error state that reads as the one before it") << 0 << 1 << 0;
    QTest::newRow("the one before the error state that reads as it") << 0 << 0 << 0;
    QTest::newRow("an error state that one behind it reads as") << 5 << 1 << 1;
    QTest::newRow("one behind the error state that reads as it") << 5 << 5 << 1;
}

void OnlineDebugCommandsTest::theFirstStateOfATextDecidesOnTheWarning()
{
    QFETCH(int, same);
    QFETCH(int, state);
    QFETCH(int, warnings);
    stateWithTextOfError = static_cast<AxisModel::AxisState>(same);
    m->makePage();
    m->receive(OnlinePageFixture::status(static_cast<quint16>(state), true));
    QCOMPARE(m->field("statueLineEdit")->text(), m->project.axisModel()->getAxisStateMap().value(AxisModel::ErrorStop));
    m->control<QPushButton>("enablePushButton")->click();
    QCOMPARE(m->boxes.count(), warnings);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetEnable }));
}

void OnlineDebugCommandsTest::presetPositionSendsItsField()
{
    enter("presetPositionLineEdit", QStringLiteral("-2.25"));
    QTest::mouseClick(m->control("presetPositionPushButton"), Qt::LeftButton);
    QCOMPARE(last().code, int(AxisDebugSetPosition));
    QCOMPARE(last().as<SetPositionParam>().axisNo, short(3));
    QCOMPARE(last().as<SetPositionParam>().position + 0, -2.25);
}

void OnlineDebugCommandsTest::homeSendsOffsetThenHome()
{
    enter("originOffsetLineEdit", QStringLiteral("4"));
    QTest::mouseClick(m->control("homePushButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetHomeOffset }));
    QCOMPARE(last().as<SetHomeOffsetParam>().offset + 0, 4.0);
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("5"));
    m->page->axisDebugSetHomeOffset(0);
    QCOMPARE(last().code, int(AxisDebugSetHome));
    QCOMPARE(last().as<SetHomeParam>().axisNo, short(5));
}

void OnlineDebugCommandsTest::aFailedOffsetSendsNoHome()
{
    m->page->axisDebugSetHomeOffset(4);
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Failed to set back to original offset!,text 4") }));
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugCommandsTest::motionSendsItsType_data()
{
    QTest::addColumn<QString>("motionType");
    QTest::addColumn<int>("code");
    QTest::newRow("absolute") << "Absolute positioning" << int(AxisDebugMoveAbs);
    QTest::newRow("relative") << "Relative positioning" << int(AxisDebugMoveRel);
    QTest::newRow("continuous") << "Continuous motion" << int(AxisDebugMoveVel);
}

void OnlineDebugCommandsTest::motionSendsItsType()
{
    QFETCH(QString, motionType);
    QFETCH(int, code);
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    enter("positionLineEdit", QStringLiteral("100"));
    enter("velocityLineEdit", QStringLiteral("-20"));
    enter("accLineEdit", QStringLiteral("30"));
    enter("decLineEdit", QStringLiteral("40"));
    enter("jerkLineEdit", QStringLiteral("50"));
    m->control<QComboBox>("motionTypeComboBox")->setCurrentText(motionType);
    QTest::mouseClick(m->control("motionPushButton"), Qt::LeftButton);
    QCOMPARE(last().code, code);
    QByteArray expected;
    const auto put = [&expected](auto value) { expected.append(reinterpret_cast<const char*>(&value), sizeof value); };
    put(short(3));
    if (code != AxisDebugMoveVel)
        put(100.0);
    for (const double value : { -20.0, 30.0, 40.0, 50.0 })
        put(value);
    QCOMPARE(QMetaType::sizeOf(last().param.userType()), expected.size());
    QCOMPARE(QByteArray(static_cast<const char*>(last().param.constData()), expected.size()), expected);
}

void OnlineDebugCommandsTest::stopSendsDecelerationAndJerk()
{
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    enter("decLineEdit", QStringLiteral("60"));
    enter("jerkLineEdit", QStringLiteral("70"));
    QTest::mouseClick(m->control("stopPushButton"), Qt::LeftButton);
    QCOMPARE(last().code, int(AxisDebugSetStop));
    QCOMPARE(last().as<SetStopParam>().axisNo, short(3));
    QCOMPARE(last().as<SetStopParam>().deceleration + 0, 60.0);
    QCOMPARE(last().as<SetStopParam>().jerk + 0, 70.0);
}

void OnlineDebugCommandsTest::offsetAndMultiplierGoToTheNumberOfTheAxis()
{
    // Neither the number that the page was made with nor the axis's id.
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("6"));
    QVERIFY(m->axis->id() != 6);
    QTest::mouseClick(m->control("homePushButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetHomeOffset }));
    QCOMPARE(last().as<SetHomeOffsetParam>().axisNo, short(6));
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    dialogs.next([](QDialog* dialog) { dialog->accept(); });
    auto* box = m->control<QCheckBox>("speedMultiplierCheckBox");
    for (const bool checked : { true, false }) {
        m->debug.requests.clear();
        QTest::mouseClick(box, Qt::LeftButton);
        QCOMPARE(box->isChecked(), checked);
        QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetVelRatio }));
        QCOMPARE(last().as<SetVelRatioParam>().axisNo, short(6));
    }
}

void OnlineDebugCommandsTest::resetSendsTheAxis()
{
    QTest::mouseClick(m->control("resetPushButton"), Qt::LeftButton);
    QCOMPARE(last().code, int(AxisDebugReset));
    QCOMPARE(last().as<ResetParam>().axisNo, short(3));
}

void OnlineDebugCommandsTest::commandsEndWithoutTheAxis()
{
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    for (const char* name : { "enterDebugButton", "enablePushButton", "presetPositionPushButton", "motionPushButton",
             "stopPushButton", "resetPushButton", "homePushButton", "posJogPushButton" })
        QTest::mouseClick(m->control(name), Qt::LeftButton);
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugCommandsTest::failuresAreShown_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* slot, const char* text, int state = 0) {
        QTest::newRow(text) << QByteArray(slot) << state << QString::fromLatin1(text);
    };
    row("axisDebugSetEnable", "Setting enable failed!,text 12");
    row("axisDebugSetEnable", "Cancel Enable Failed!,text 12", 3);
    row("axisDebugSetPosition", "Failed to set preset position!,text 12");
    row("axisDebugSetHomeOffset", "Failed to set back to original offset!,text 12");
    row("axisDebugSetHome", "Returning to the original state failed!,text 12");
    row("axisDebugSetVelRatio", "Failed to set speed multiplier!,text 12");
    row("axisDebugSetStop", "Stop failed!,text 12");
    row("axisDebugMoveAbs", "FAIL TO START!,text 12");
    QTest::newRow("relative move") << QByteArray("axisDebugMoveRel") << 0 << QStringLiteral("FAIL TO START!,text 12");
    QTest::newRow("velocity move") << QByteArray("axisDebugMoveVel") << 0 << QStringLiteral("FAIL TO START!,text 12");
    row("axisDebugJopPos", "Forward jog failure!,text 12");
    row("axisDebugJopNeg", "Negative jog failure,text 12");
    row("axisDebugReset", "Reset failed!,text 12");
}

void OnlineDebugCommandsTest::failuresAreShown()
{
    QFETCH(QByteArray, slot);
    QFETCH(int, state);
    QFETCH(QString, text);
    m->receive(OnlinePageFixture::status(static_cast<quint16>(state), true));
    QVERIFY(QMetaObject::invokeMethod(m->page.get(), slot.constData(), Q_ARG(qint16, 12)));
    QCOMPARE(m->boxes.texts(), QStringList({ text }));
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugCommandsTest::successShowsNothing()
{
    for (const char* slot : { "axisDebugEnterDebugMode", "axisDebugKeepAlive", "axisDebugSetEnable",
             "axisDebugSetPosition", "axisDebugSetVelRatio", "axisDebugSetHome", "axisDebugSetStop", "axisDebugMoveAbs",
             "axisDebugMoveRel", "axisDebugMoveVel", "axisDebugJopPos", "axisDebugJopNeg", "axisDebugReset" })
        QVERIFY(QMetaObject::invokeMethod(m->page.get(), slot, Q_ARG(qint16, 0)));
    m->page->axisDebugKeepAlive(9);
    QCOMPARE(m->boxes.count(), 0);
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugCommandsTest::aHeldJogButtonSendsStartAndEnd_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("speed");
    QTest::addColumn<QByteArray>("ramp");
    QTest::addColumn<int>("code");
    QTest::newRow("positive") << QByteArray("posJogPushButton") << QByteArray("posJogSpeedLineEdit")
                              << QByteArray("posJogAccLineEdit") << int(AxisDebugJopPos);
    QTest::newRow("negative") << QByteArray("negJogPushButton") << QByteArray("negJogSpeedLineEdit")
                              << QByteArray("negJogAccLineEdit") << int(AxisDebugJopNeg);
}

void OnlineDebugCommandsTest::aHeldJogButtonSendsStartAndEnd()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, speed);
    QFETCH(QByteArray, ramp);
    QFETCH(int, code);
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    enter("jerkLineEdit", QStringLiteral("70"));
    enter(speed.constData(), QStringLiteral("-25"));
    enter(ramp.constData(), QStringLiteral("35"));
    QWidget* jog = m->control(button.constData());
    QTest::mousePress(jog, Qt::LeftButton);
    QTRY_COMPARE(m->debug.requests.size(), 1);
    QTest::mouseRelease(jog, Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ code, code }));
    for (int i = 0; i < 2; ++i) {
        QByteArray expected;
        const auto put
            = [&expected](auto value) { expected.append(reinterpret_cast<const char*>(&value), sizeof value); };
        put(short(3));
        put(short(i == 0 ? 1 : 0));
        for (const double value : { -25.0, 35.0, 35.0, 70.0 })
            put(value);
        const QVariant& param = m->debug.requests.at(i).param;
        QCOMPARE(QMetaType::sizeOf(param.userType()), expected.size());
        QCOMPARE(QByteArray(static_cast<const char*>(param.constData()), expected.size()), expected);
        QCOMPARE(QByteArray(param.typeName()),
            code == AxisDebugJopPos ? QByteArray("JopPosParam") : QByteArray("JopNegParam"));
    }
}

void OnlineDebugCommandsTest::aTapSendsTheEndAlone()
{
    QTest::mouseClick(m->control("negJogPushButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugJopNeg }));
    QCOMPARE(last().as<JopNegParam>().pressed, short(0));
}

void OnlineDebugCommandsTest::jogTakesCommittedTextsOnly()
{
    type("posJogSpeedLineEdit", QStringLiteral("44"));
    // The click on the button takes the focus from the field and commits it.
    QTest::mousePress(m->control("posJogPushButton"), Qt::LeftButton);
    QCOMPARE(m->field("posJogSpeedLineEdit")->text(), QStringLiteral("44.000000"));
    QTRY_COMPARE(m->debug.requests.size(), 1);
    QCOMPARE(last().as<JopPosParam>().velocity + 0, 44.0);
    m->field("posJogSpeedLineEdit")->setText(QStringLiteral("55"));
    QTest::mouseRelease(m->control("posJogPushButton"), Qt::LeftButton);
    QCOMPARE(last().as<JopPosParam>().velocity + 0, 44.0);
}

void OnlineDebugCommandsTest::aPageClosedUnderABoxIsSurvived()
{
    m->receive(OnlinePageFixture::status(1, true));
    m->boxes.meanwhile([this] { m->page.reset(); });
    m->control<QPushButton>("enablePushButton")->animateClick(0);
    QTRY_COMPARE(m->boxes.count(), 1);
    QVERIFY(!m->page);
    QVERIFY(m->debug.requests.isEmpty());
}

QTEST_MAIN(OnlineDebugCommandsTest)
#include "OnlineDebugCommandsTest.moc"
