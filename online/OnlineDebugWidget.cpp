#include "online/OnlineDebugWidget.h"

#include "axisdata/DoubleValidator.h"
#include "axisdata/PageTeardown.h"
#include "axisdata/RegExpValidator.h"
#include "axisdata/UserMessage.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"
#include "host/projectmodel/DeviceDiagnosiInfo.h"
#include "online/OnlineDebugFields.h"
#include "online/OnlineMonitorTables.h"
#include "protocol/AxisRefLayout.h"
#include "sdk/AxisDebugParams.h"
#include "sdk/IApplication.h"
#include "sdk/IBackgroundTransaction.h"
#include "sdk/IConfiguration.h"
#include "sdk/IVarMonitor.h"
#include "sdk/MotionControlDebug.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/Transaction.h"
#include "sdk/Transfer.h"
#include "ui_OnlineDebugWidget.h"

#include <QPushButton>
#include <QTimer>

#include <cstring>

namespace {

constexpr int statusReplySize = axisRefSize;
constexpr int defaultPollPeriodMs = 100;
constexpr int defaultTimeoutMs = 5000;
/// A hidden page keeps its debug session alive on every twelfth tick.
constexpr qint16 ticksBetweenKeepAlives = 11;
/// Class of the codes of axis debugging in the diagnosis table.
constexpr int axisDebugErrorClass = 11;

/// Axis types that have nothing to monitor.
const QSet<QString> noMonitorAxisTypes{ QStringLiteral("Axis_Encoder") };

IConfiguration* settings()
{
    return Solution::serviceAs<IConfiguration>(Solution::ServiceKey::settings());
}

IVarMonitor* variableMonitor()
{
    return Solution::serviceAs<IVarMonitor>(Solution::ServiceKey::variableMonitor());
}

/// A positive 16-bit number from the settings, else the fallback.
qint16 settingOr(const IConfiguration& settings, const QString& key, int fallback)
{
    const auto value = static_cast<qint16>(settings.value(key, QVariant()).toInt());
    return value < 1 ? static_cast<qint16>(fallback) : value;
}

/// A sheet that is set again has its widget styled anew, ten times a second for nothing.
void setSheet(QWidget& widget, const QString& sheet)
{
    if (widget.styleSheet() != sheet)
        widget.setStyleSheet(sheet);
}

} // namespace

OnlineDebugWidget::OnlineDebugWidget(const QString& project, unsigned id, QWidget* parent)
    : QWidget(parent), notMovingStates{ AxisModel::Disabled, AxisModel::ErrorStop, AxisModel::StandStill },
      ui(std::make_unique<Ui::OnlineDebugWidget>()), projectName(project), axisId(id), givenParent(parent)
{
    setUpForm();
    connectForm();
    connectToHost();
}

OnlineDebugWidget::~OnlineDebugWidget()
{
    disconnectControls(*this);
    if (!noMonitorAxisTypes.contains(monitoredAxisType)) {
        IVarMonitor* monitor = variableMonitor();
        if (monitor && param.debugMode)
            monitor->releaseAxis(monitoredAxisNo, true);
        if (monitorTimer)
            monitorTimer->stop();
    }
}

void OnlineDebugWidget::setUpForm()
{
    ui->setupUi(this);
    variableModel = OnlineMonitorTables::makeVariableModel(this);
    OnlineMonitorTables::setUpVariableView(*ui->varTableView, *variableModel);
    statusModel = OnlineMonitorTables::makeStatusModel(this);
    OnlineMonitorTables::setUpStatusView(*ui->runStatusView, *statusModel);
    for (QLineEdit* field : { ui->statueLineEdit, ui->comLineEdit, ui->axisErrorLineEdit, ui->servoErrorLineEdit })
        field->setReadOnly(true);
    for (const OnlineDebugField& field : onlineDebugFields())
        (ui.get()->*field.edit)->setText(param.*field.text);
    motionTypeMap
        = { { tr("Absolute positioning"), 0 }, { tr("Relative positioning"), 1 }, { tr("Continuous motion"), 2 } };
    setUpTypes(*ui->motionTypeComboBox, motionTypeMap, param.motionType);
    curveTypeMap = { { tr("trapezoid"), 0 }, { tr("S_type"), 1 } };
    setUpTypes(*ui->curveTypeComboBox, curveTypeMap, param.curveType);
    curveTypeChanged(param.curveType);
    setUpValidators();
    setAxisEnabled(param.axisEnabled);
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    for (QPushButton* button : buttons)
        button->setProperty("styleType", QStringLiteral("defaultButton"));
}

void OnlineDebugWidget::setUpTypes(QComboBox& box, const QMap<QString, int>& types, QString& chosen)
{
    chosen = types.key(0);
    box.addItems(types.keys());
    box.setCurrentText(chosen);
}

void OnlineDebugWidget::setUpValidators()
{
    auto* reals = new DoubleValidator(6, this);
    auto* integers = new RegExpValidator(RegExpValidator::decimalPattern(), this);
    for (const OnlineDebugField& field : onlineDebugFields()) {
        const bool real = field.rule.kind == NumberKind::Real;
        (ui.get()->*field.edit)->setValidator(real ? static_cast<QValidator*>(reals) : integers);
    }
}

void OnlineDebugWidget::connectForm()
{
    connect(ui->motionTypeComboBox, &QComboBox::currentTextChanged, this, &OnlineDebugWidget::motionTypeChanged);
    connect(ui->curveTypeComboBox, &QComboBox::currentTextChanged, this, &OnlineDebugWidget::curveTypeChanged);
    using Slot = void (OnlineDebugWidget::*)();
    const std::pair<QLineEdit*, Slot> fields[] = {
        { ui->presetPositionLineEdit, &OnlineDebugWidget::presetPositionChanged },
        { ui->originOffsetLineEdit, &OnlineDebugWidget::originOffsetChanged },
        { ui->speedMultiplierLineEdit, &OnlineDebugWidget::speedMultiplierChanged },
        { ui->posJogSpeedLineEdit, &OnlineDebugWidget::posJogSpeedChanged },
        { ui->posJogAccLineEdit, &OnlineDebugWidget::posJogAccChanged },
        { ui->negJogSpeedLineEdit, &OnlineDebugWidget::negJogSpeedChanged },
        { ui->negJogAccLineEdit, &OnlineDebugWidget::negJogAccChanged },
        { ui->positionLineEdit, &OnlineDebugWidget::positionChanged },
        { ui->velocityLineEdit, &OnlineDebugWidget::velocityChanged },
        { ui->accLineEdit, &OnlineDebugWidget::accChanged },
        { ui->decLineEdit, &OnlineDebugWidget::decChanged },
        { ui->jerkLineEdit, &OnlineDebugWidget::jerkChanged },
    };
    for (const auto& [edit, slot] : fields)
        connect(edit, &QLineEdit::editingFinished, this, slot);
    const std::pair<QPushButton*, Slot> buttons[] = {
        { ui->enterDebugButton, &OnlineDebugWidget::enterDebugClicked },
        { ui->enablePushButton, &OnlineDebugWidget::enableClicked },
        { ui->presetPositionPushButton, &OnlineDebugWidget::presetPositionClicked },
        { ui->motionPushButton, &OnlineDebugWidget::motionClicked },
        { ui->stopPushButton, &OnlineDebugWidget::stopClicked },
        { ui->resetPushButton, &OnlineDebugWidget::resetClicked },
        { ui->homePushButton, &OnlineDebugWidget::homeClicked },
    };
    for (const auto& [button, slot] : buttons)
        connect(button, &QPushButton::clicked, this, slot);
    connect(
        ui->speedMultiplierCheckBox, &QCheckBox::stateChanged, this, &OnlineDebugWidget::speedMultiplierStateChanged);
    connect(ui->posJogPushButton, &JogPushButton::jogPressed, this, &OnlineDebugWidget::posJogPressed);
    connect(ui->posJogPushButton, &JogPushButton::jogReleased, this, &OnlineDebugWidget::posJogReleased);
    connect(ui->negJogPushButton, &JogPushButton::jogPressed, this, &OnlineDebugWidget::negJogPressed);
    connect(ui->negJogPushButton, &JogPushButton::jogReleased, this, &OnlineDebugWidget::negJogReleased);
}

void OnlineDebugWidget::connectToHost()
{
    {
        const ProjectAxes axes(projectName);
        if (!axes.project())
            return;
        if (axes)
            axisStateMap = axes->getAxisStateMap();
    }
    monitorTimer = new QTimer(this);
    connect(monitorTimer, &QTimer::timeout, this, &OnlineDebugWidget::onlineQTimerSlot);
    if (!Solution::application())
        return;
    background = Solution::serviceAs<IBackgroundTransaction>(Solution::ServiceKey::backgroundTransaction());
    transfer = Solution::serviceAs<Transfer>(Solution::ServiceKey::transfer());
    const SafeAccore core(projectName.toStdString(), false);
    if (core)
        readErrorNames(*core.core());
}

void OnlineDebugWidget::readErrorNames(const ac::ACCore& core)
{
    std::vector<ac::Symbol*> symbols;
    core.allSymbols(ac::EnumSymbols, symbols);
    const ac::SymbolEnumType* errors = nullptr;
    const ac::SymbolEnumType* states = nullptr;
    for (const ac::Symbol* symbol : symbols) {
        if (!symbol)
            continue;
        if (symbol->name() == "MC_AXIS_ERROR_ID")
            errors = dynamic_cast<const ac::SymbolEnumType*>(symbol);
        else if (symbol->name() == "MC_AXIS_STATE")
            states = dynamic_cast<const ac::SymbolEnumType*>(symbol);
        if (errors && states)
            break;
    }
    for (int i = 0; errors && i < errors->membersCount(); ++i) {
        if (const ac::EnumMember* member = errors->member(i))
            axisErrorMap.insert(static_cast<short>(member->value), QString::fromStdString(member->name));
    }
}

void OnlineDebugWidget::sendRequest(short code, const QVariant& request, QObject* receiver)
{
    if (!background || !transfer || !transfer->isOnline())
        return;
    auto* debug = Solution::serviceAs<MotionControlDebug>(Solution::ServiceKey::motionControlDebug());
    if (!debug)
        return;
    if (Transaction* transaction = debug->createTransaction(code, request, receiver))
        background->submitTransaction(transaction, true);
}

int OnlineDebugWidget::currentAxisNo(const QString& project, unsigned id)
{
    const AxisRecord record(project, id);
    return record ? record.text(QStringLiteral("AxisNo")).toInt(nullptr, 10) : -1;
}

void OnlineDebugWidget::onlineStatechanged(bool state)
{
    const AxisRecord record(projectName, axisId);
    if (!record || noMonitorAxisTypes.contains(record.text(QStringLiteral("AxisType"))))
        return;
    if (state)
        startMonitor(record);
    else
        stopMonitor();
}

void OnlineDebugWidget::startMonitor(const AxisRecord& record)
{
    const IConfiguration* configuration = settings();
    if (!configuration || !monitorTimer)
        return;
    const int period = settingOr(*configuration, Solution::ConfigKey::monitorTime(), defaultPollPeriodMs);
    monitorTimer->stop();
    axisRefReplied = true;
    monitorTimer->start(period);
    IVarMonitor* monitor = variableMonitor();
    if (!monitor)
        return;
    monitoredAxisNo = record.text(QStringLiteral("AxisNo")).toInt(nullptr, 10);
    monitoredAxisType = record.text(QStringLiteral("AxisType"));
    monitor->addAxis(monitoredAxisNo);
    monitor->releaseAxis(monitoredAxisNo, false);
}

void OnlineDebugWidget::stopMonitor()
{
    if (monitorTimer)
        monitorTimer->stop();
    axisRefReplied = false;
    setDebugMode(false);
    setAxisEnabled(false);
    clearMonitor();
    param.posJogState = 0;
    param.negJogState = 0;
}

void OnlineDebugWidget::onlineQTimerSlot()
{
    if (!background || !transfer || !transfer->isOnline() || !axisRefReplied)
        return;
    if (isVisible())
        pollStatus();
    else
        keepAlive();
}

void OnlineDebugWidget::pollStatus()
{
    axisRefReplied = false;
    const int axisNo = currentAxisNo(projectName, axisId);
    if (axisNo < 0)
        return;
    keepAliveTicks = 0;
    send(AxisDebugGetAxisRef, GetAxisRefParam{ static_cast<short>(axisNo), statusReplySize });
}

void OnlineDebugWidget::keepAlive()
{
    if (keepAliveTicks < ticksBetweenKeepAlives) {
        ++keepAliveTicks;
        return;
    }
    keepAliveTicks = 0;
    const int axisNo = currentAxisNo(projectName, axisId);
    if (axisNo >= 0)
        send(AxisDebugKeepAlive, KeepAliveParam{ static_cast<short>(axisNo) });
}

void OnlineDebugWidget::axisDebugKeepAlive(qint16) { }

void OnlineDebugWidget::enterDebugClicked()
{
    if (!transfer || transfer->isDirectLogin()) {
        showInformation(QObject::tr("Direct login mode does not support axis online debugging."));
        return;
    }
    const IConfiguration* configuration = settings();
    if (!configuration)
        return;
    commTimeout = settingOr(*configuration, Solution::ConfigKey::communicationTimeout(), defaultTimeoutMs);
    withAxisNo([this](short axisNo) {
        const auto enter = static_cast<short>(param.debugMode ? 0 : 1);
        send(AxisDebugEnterDebugMode, EnterDebugModelParam{ axisNo, enter, commTimeout });
    });
}

void OnlineDebugWidget::axisDebugEnterDebugMode(qint16 result)
{
    if (result != 0)
        showFailure(param.debugMode ? QObject::tr("Failed to exit Debug menu!,%1")
                                    : QObject::tr("Failed to enter Debug menu!,%1"),
            result);
}

void OnlineDebugWidget::axisDebugGetAxisRef(const QByteArray& data)
{
    axisRefReplied = true;
    if (data.size() != statusReplySize)
        return;
    AxisRef status;
    std::memcpy(&status, data.constData(), sizeof status);
    OnlineMonitorTables::fillVariables(*variableModel, status);
    const int state = static_cast<qint16>(status.axisState);
    ui->statueLineEdit->setText(axisStateMap.value(static_cast<AxisModel::AxisState>(state)));
    ui->comLineEdit->setText(status.communication != 0 ? QStringLiteral("ON") : QStringLiteral("OFF"));
    const auto errorName = axisErrorMap.constFind(static_cast<short>(status.axisError));
    ui->axisErrorLineEdit->setText(
        errorName != axisErrorMap.constEnd() ? *errorName : QString::number(status.axisError));
    ui->servoErrorLineEdit->setText(status.servoError == 0 ? QStringLiteral("No error") : QStringLiteral("Error"));
    setSheet(
        *ui->axisErrorLineEdit, status.axisError != 0 ? QStringLiteral("border: 1px solid rgb(255,75,75)") : QString());
    OnlineMonitorTables::fillStatus(*statusModel, status, !notMovingStates.contains(state));
    const bool debugging = status.debugMode != 0;
    setDebugMode(debugging);
    setAxisEnabled(debugging && static_cast<quint16>(state) > AxisModel::ErrorStop);
    if (debugging && ui->speedMultiplierCheckBox->isChecked() && !ui->speedMultiplierLineEdit->isEnabled())
        showSpeedMultiplierInForce(status.speedRatio);
}

void OnlineDebugWidget::setDebugMode(bool on)
{
    param.debugMode = on;
    ui->basicTabWidget->setEnabled(on);
    highlight(*ui->enterDebugButton, on);
}

void OnlineDebugWidget::setAxisEnabled(bool on)
{
    param.axisEnabled = on;
    for (QPushButton* button :
        { static_cast<QPushButton*>(ui->posJogPushButton), static_cast<QPushButton*>(ui->negJogPushButton),
            ui->motionPushButton, ui->stopPushButton, ui->homePushButton })
        button->setEnabled(on);
    highlight(*ui->enablePushButton, on);
}

void OnlineDebugWidget::highlight(QPushButton& button, bool on)
{
    setSheet(button, on ? QStringLiteral("background-color: rgb(90,149,253)") : QString());
}

void OnlineDebugWidget::clearMonitor()
{
    OnlineMonitorTables::clearVariables(*variableModel);
    for (QLineEdit* field : { ui->statueLineEdit, ui->comLineEdit, ui->axisErrorLineEdit, ui->servoErrorLineEdit })
        field->setText(QString());
    OnlineMonitorTables::clearStatus(*statusModel);
    ui->axisErrorLineEdit->setStyleSheet(QString());
}

QString OnlineDebugWidget::errorText(qint16 code)
{
    if (!diagnosis)
        diagnosis = Solution::serviceAs<DeviceDiagnosiInfo>(Solution::ServiceKey::diagnosisInfo());
    return diagnosis ? diagnosis->errorInfo(axisDebugErrorClass, static_cast<unsigned short>(code)).text : QString();
}

void OnlineDebugWidget::showFailure(const QString& message, qint16 code)
{
    showInformation(message.arg(errorText(code), 0, QLatin1Char(' ')));
}
