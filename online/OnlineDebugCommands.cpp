// The commands of the online page: its fields, its buttons, and what their answers show.

#include "axisdata/UserMessage.h"
#include "online/OnlineDebugFields.h"
#include "online/OnlineDebugWidget.h"
#include "sdk/AxisDebugParams.h"
#include "ui_OnlineDebugWidget.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <cmath>

namespace {

/// The number that the motion type box maps to continuous motion, and the one of the curve with a jerk.
constexpr int relativePositioning = 1;
constexpr int continuousMotion = 2;
constexpr int jerkLimitedCurve = 1;

/// A percent value as the integer of its text shows it, cut off and kept in the range of an int.
int percentOf(double ratio)
{
    const double percent = ratio * 100;
    if (std::isnan(percent))
        return 0;
    return static_cast<int>(std::fmax(-2147483648.0, std::fmin(2147483647.0, percent)));
}

} // namespace

void OnlineDebugWidget::commitField(int field)
{
    const OnlineDebugField& row = onlineDebugFields()[static_cast<size_t>(field)];
    QLineEdit& edit = *(ui.get()->*row.edit);
    QString& kept = param.*row.text;
    const CommitResult result
        = commitNumber(edit, row.rule, { [&] { return kept; }, [&](const QString& text) { kept = text; }, {} });
    if (result == CommitResult::Refused)
        edit.setFocus(Qt::OtherFocusReason);
}

void OnlineDebugWidget::presetPositionChanged()
{
    commitField(PresetPositionField);
}
void OnlineDebugWidget::originOffsetChanged()
{
    commitField(OriginOffsetField);
}
void OnlineDebugWidget::speedMultiplierChanged()
{
    commitField(SpeedMultiplierField);
}
void OnlineDebugWidget::posJogSpeedChanged()
{
    commitField(PosJogSpeedField);
}
void OnlineDebugWidget::posJogAccChanged()
{
    commitField(PosJogAccField);
}
void OnlineDebugWidget::negJogSpeedChanged()
{
    commitField(NegJogSpeedField);
}
void OnlineDebugWidget::negJogAccChanged()
{
    commitField(NegJogAccField);
}
void OnlineDebugWidget::positionChanged()
{
    commitField(PositionField);
}
void OnlineDebugWidget::velocityChanged()
{
    commitField(VelocityField);
}
void OnlineDebugWidget::accChanged()
{
    commitField(AccField);
}
void OnlineDebugWidget::decChanged()
{
    commitField(DecField);
}
void OnlineDebugWidget::jerkChanged()
{
    commitField(JerkField);
}

void OnlineDebugWidget::motionTypeChanged(const QString& text)
{
    param.motionType = text;
    const bool withPosition = motionTypeMap.value(text, 0) != continuousMotion;
    ui->label_13->setVisible(withPosition);
    ui->positionLineEdit->setVisible(withPosition);
}

void OnlineDebugWidget::curveTypeChanged(const QString& text)
{
    param.curveType = text;
    const bool withJerk = curveTypeMap.value(text, 0) == jerkLimitedCurve;
    ui->label_18->setVisible(withJerk);
    ui->jerkLineEdit->setVisible(withJerk);
    if (withJerk)
        return;
    param.jerk = realText(0);
    ui->jerkLineEdit->setText(param.jerk);
}

void OnlineDebugWidget::enableClicked()
{
    // The warning and the questions below let events through: the page may be gone when they close.
    const QPointer<OnlineDebugWidget> page(this);
    const QString shown = ui->statueLineEdit->text();
    for (auto state = axisStateMap.constBegin(); state != axisStateMap.constEnd(); ++state) {
        if (state.value() != shown)
            continue;
        if (state.key() == AxisModel::ErrorStop)
            showInformation(QObject::tr("State: %1 ,Please reset first").arg(shown, 0, QLatin1Char(' ')));
        break;
    }
    if (!page)
        return;
    withAxisNo([this](short axisNo) {
        send(AxisDebugSetEnable, SetEnableParam{ axisNo, static_cast<short>(param.axisEnabled ? 0 : 1) });
    });
}

void OnlineDebugWidget::axisDebugSetEnable(qint16 result)
{
    if (result != 0)
        showFailure(
            param.axisEnabled ? QObject::tr("Cancel Enable Failed!,%1") : QObject::tr("Setting enable failed!,%1"),
            result);
}

void OnlineDebugWidget::presetPositionClicked()
{
    withAxisNo([this](short axisNo) {
        send(AxisDebugSetPosition, SetPositionParam{ axisNo, param.presetPosition.toDouble() });
    });
}

void OnlineDebugWidget::axisDebugSetPosition(qint16 result)
{
    if (result != 0)
        showFailure(QObject::tr("Failed to set preset position!,%1"), result);
}

void OnlineDebugWidget::homeClicked()
{
    withAxisNo([this](short axisNo) {
        send(AxisDebugSetHomeOffset, SetHomeOffsetParam{ axisNo, param.originOffset.toDouble() });
    });
}

void OnlineDebugWidget::axisDebugSetHomeOffset(qint16 result)
{
    if (result != 0) {
        showFailure(QObject::tr("Failed to set back to original offset!,%1"), result);
        return;
    }
    withAxisNo([this](short axisNo) { send(AxisDebugSetHome, SetHomeParam{ axisNo }); });
}

void OnlineDebugWidget::axisDebugSetHome(qint16 result)
{
    if (result != 0)
        showFailure(QObject::tr("Returning to the original state failed!,%1"), result);
}

void OnlineDebugWidget::motionClicked()
{
    const int type = motionTypeMap.value(param.motionType, 0);
    const double position = param.position.toDouble();
    const double velocity = param.velocity.toDouble();
    const double acceleration = param.acc.toDouble();
    const double deceleration = param.dec.toDouble();
    const double jerk = param.jerk.toDouble();
    withAxisNo([&](short axisNo) {
        if (type == continuousMotion)
            send(AxisDebugMoveVel, MoveVelParam{ axisNo, velocity, acceleration, deceleration, jerk });
        else if (type == relativePositioning)
            send(AxisDebugMoveRel, MoveRelParam{ axisNo, position, velocity, acceleration, deceleration, jerk });
        else
            send(AxisDebugMoveAbs, MoveAbsParam{ axisNo, position, velocity, acceleration, deceleration, jerk });
    });
}

void OnlineDebugWidget::axisDebugMoveAbs(qint16 result)
{
    if (result != 0)
        showFailure(QObject::tr("FAIL TO START!,%1"), result);
}

void OnlineDebugWidget::axisDebugMoveRel(qint16 result)
{
    axisDebugMoveAbs(result);
}

void OnlineDebugWidget::axisDebugMoveVel(qint16 result)
{
    axisDebugMoveAbs(result);
}

void OnlineDebugWidget::stopClicked()
{
    withAxisNo([this](short axisNo) {
        send(AxisDebugSetStop, SetStopParam{ axisNo, param.dec.toDouble(), param.jerk.toDouble() });
    });
}

void OnlineDebugWidget::axisDebugSetStop(qint16 result)
{
    if (result != 0)
        showFailure(QObject::tr("Stop failed!,%1"), result);
}

void OnlineDebugWidget::resetClicked()
{
    withAxisNo([this](short axisNo) { send(AxisDebugReset, ResetParam{ axisNo }); });
}

void OnlineDebugWidget::axisDebugReset(qint16 result)
{
    if (result != 0)
        showFailure(QObject::tr("Reset failed!,%1"), result);
}

void OnlineDebugWidget::speedMultiplierStateChanged(bool checked)
{
    const QPointer<OnlineDebugWidget> page(this);
    const bool accepted
        = confirm(checked ? tr("Set the current speed multiplier?") : tr("Cancel the speed multiplier setting?"));
    if (!page)
        return;
    if (!accepted) {
        setSpeedMultiplierChecked(!checked);
        return;
    }
    if (!checked) {
        ui->speedMultiplierLineEdit->setEnabled(true);
        param.speedMultiplier = OnlineDebugParam().speedMultiplier;
        ui->speedMultiplierLineEdit->setText(param.speedMultiplier);
    }
    sendSpeedMultiplier();
}

void OnlineDebugWidget::sendSpeedMultiplier()
{
    withAxisNo([this](short axisNo) {
        send(AxisDebugSetVelRatio, SetVelRatioParam{ axisNo, static_cast<short>(param.speedMultiplier.toInt()) });
    });
}

void OnlineDebugWidget::axisDebugSetVelRatio(qint16 result)
{
    const bool checked = ui->speedMultiplierCheckBox->isChecked();
    if (result == 0) {
        ui->speedMultiplierLineEdit->setEnabled(!checked);
        return;
    }
    if (!checked)
        ui->speedMultiplierLineEdit->setEnabled(false);
    setSpeedMultiplierChecked(!checked);
    showFailure(QObject::tr("Failed to set speed multiplier!,%1"), result);
}

void OnlineDebugWidget::showSpeedMultiplierInForce(double ratio)
{
    const int percent = percentOf(ratio);
    if (percent != ui->speedMultiplierLineEdit->text().toInt())
        ui->speedMultiplierLineEdit->setText(QString::number(percent));
}

bool OnlineDebugWidget::confirm(const QString& question)
{
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(question, &dialog));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return dialog.exec() == QDialog::Accepted;
}

void OnlineDebugWidget::setSpeedMultiplierChecked(bool checked)
{
    const QSignalBlocker blocker(ui->speedMultiplierCheckBox);
    ui->speedMultiplierCheckBox->setChecked(checked);
}

void OnlineDebugWidget::posJogPressed()
{
    param.posJogState = 0;
    sendJog<JopPosParam>(AxisDebugJopPos, 1, param.posJogSpeed, param.posJogAcc);
}

void OnlineDebugWidget::posJogReleased()
{
    sendJog<JopPosParam>(AxisDebugJopPos, 0, param.posJogSpeed, param.posJogAcc);
}

void OnlineDebugWidget::negJogPressed()
{
    param.negJogState = 0;
    sendJog<JopNegParam>(AxisDebugJopNeg, 1, param.negJogSpeed, param.negJogAcc);
}

void OnlineDebugWidget::negJogReleased()
{
    sendJog<JopNegParam>(AxisDebugJopNeg, 0, param.negJogSpeed, param.negJogAcc);
}

void OnlineDebugWidget::axisDebugJopPos(qint16 result)
{
    takeJogAnswer(param.posJogState, result, QObject::tr("Forward jog failure!,%1"));
}

void OnlineDebugWidget::axisDebugJopNeg(qint16 result)
{
    takeJogAnswer(param.negJogState, result, QObject::tr("Negative jog failure,%1"));
}

void OnlineDebugWidget::takeJogAnswer(int& state, qint16 result, const QString& message)
{
    // In state 3 a failure of this press has been shown; the failure of its release would only say it again.
    constexpr int failureShown = 3;
    if (state == failureShown)
        return;
    if (result == 0) {
        state = (state + 1) % failureShown;
        return;
    }
    state = failureShown;
    showFailure(message, result);
}
