#pragma once

#include "axisdata/AxisRecord.h"
#include "host/projectmodel/AxisModel.h"
#include "online/OnlineDebugParam.h"

#include <QMap>
#include <QSet>
#include <QVariant>
#include <QWidget>

#include <memory>

class DeviceDiagnosiInfo;
class IBackgroundTransaction;
class QComboBox;
class QPushButton;
class QStandardItemModel;
class QTimer;
class Transfer;

namespace ac {
class ACCore;
}

namespace Ui {
class OnlineDebugWidget;
}

/// The online page of an axis: takes it into debug mode on the connected controller, commands it, and shows its state.
///
/// The page holds no state that could drift from the controller: a command shows only its failure, and what is enabled
/// follows from the next status reply. At most one status request is under way. Requests go out through the host's
/// background service and come back to the slots of their names. Closing the page sends nothing. Main thread only.
class OnlineDebugWidget : public QWidget {
    Q_OBJECT

public:
    /// The page exists also for a project that is not open; it then has neither timer nor services.
    OnlineDebugWidget(const QString& projectName, unsigned axisId, QWidget* parent);
    ~OnlineDebugWidget() override;

public slots:
    /// A status reply of 248 bytes (see protocol/AxisRefLayout.h); one of another length only counts as answered.
    void axisDebugGetAxisRef(const QByteArray& data);
    // Results of the commands: 0, or a diagnostic code.
    void axisDebugEnterDebugMode(qint16 result);
    void axisDebugKeepAlive(qint16 result);
    void axisDebugSetEnable(qint16 result);
    void axisDebugSetPosition(qint16 result);
    void axisDebugSetHomeOffset(qint16 result);
    void axisDebugSetVelRatio(qint16 result);
    void axisDebugSetHome(qint16 result);
    void axisDebugSetStop(qint16 result);
    void axisDebugMoveAbs(qint16 result);
    void axisDebugMoveRel(qint16 result);
    void axisDebugMoveVel(qint16 result);
    void axisDebugJopPos(qint16 result);
    void axisDebugJopNeg(qint16 result);
    void axisDebugReset(qint16 result);
    /// The connection has come up or gone down. An encoder axis is not monitored: nothing happens.
    void onlineStatechanged(bool state);

private slots:
    void onlineQTimerSlot();
    void motionTypeChanged(const QString& text);
    void curveTypeChanged(const QString& text);
    void presetPositionChanged();
    void originOffsetChanged();
    void speedMultiplierChanged();
    void posJogSpeedChanged();
    void posJogAccChanged();
    void negJogSpeedChanged();
    void negJogAccChanged();
    void positionChanged();
    void velocityChanged();
    void accChanged();
    void decChanged();
    void jerkChanged();
    void enterDebugClicked();
    void enableClicked();
    void presetPositionClicked();
    void motionClicked();
    void stopClicked();
    void resetClicked();
    void homeClicked();
    void speedMultiplierStateChanged(bool checked);
    void posJogPressed();
    void posJogReleased();
    void negJogPressed();
    void negJogReleased();

private:
    // Set-up.
    void setUpForm();
    void setUpTypes(QComboBox& box, const QMap<QString, int>& types, QString& chosen);
    void setUpValidators();
    void connectForm();
    void connectToHost();
    void readErrorNames(const ac::ACCore& core);

    // Session.
    /// Hands a request to the background service; ends silently while off line or without the services.
    void sendRequest(short code, const QVariant& param, QObject* receiver);
    template <typename Param>
    void send(short code, const Param& param)
    {
        sendRequest(code, QVariant::fromValue(param), this);
    }
    /// The axis's number on the controller as it stands in the record now; -1 without project or axis.
    static int currentAxisNo(const QString& projectName, unsigned axisId);
    /// Runs the function with the axis's number; not at all without project or axis.
    template <typename Function>
    void withAxisNo(Function function)
    {
        const AxisRecord record(projectName, axisId);
        if (record)
            function(static_cast<short>(record.text(QStringLiteral("AxisNo")).toInt(nullptr, 10)));
    }
    void startMonitor(const AxisRecord& record);
    void stopMonitor();
    void pollStatus();
    void keepAlive();
    void setDebugMode(bool on);
    void setAxisEnabled(bool on);
    void clearMonitor();
    /// Text of a non-zero result, empty without a diagnosis service.
    QString errorText(qint16 code);
    void showFailure(const QString& message, qint16 code);
    static void highlight(QPushButton& button, bool on);

    // Commands.
    void commitField(int field);
    void showSpeedMultiplierInForce(double ratio);
    void sendSpeedMultiplier();
    bool confirm(const QString& question);
    void setSpeedMultiplierChecked(bool checked);
    template <typename Param>
    void sendJog(short code, short pressed, const QString& speed, const QString& acceleration)
    {
        withAxisNo([&](short axisNo) {
            const double ramp = acceleration.toDouble();
            send(code, Param{ axisNo, pressed, speed.toDouble(), ramp, ramp, param.jerk.toDouble() });
        });
    }
    void takeJogAnswer(int& state, qint16 result, const QString& message);

    QSet<int> notMovingStates;
    std::unique_ptr<Ui::OnlineDebugWidget> ui;
    IBackgroundTransaction* background = nullptr;
    Transfer* transfer = nullptr;
    QStandardItemModel* variableModel = nullptr;
    QStandardItemModel* statusModel = nullptr;
    QString projectName;
    quint32 axisId;
    /// As given; tabs and stacks take a page for their own.
    QWidget* givenParent;
    OnlineDebugParam param;
    QMap<QString, int> motionTypeMap;
    QMap<QString, int> curveTypeMap;
    qint16 commTimeout = 0;
    QTimer* monitorTimer = nullptr;
    QMap<AxisModel::AxisState, QString> axisStateMap;
    QMap<short, QString> axisErrorMap;
    bool axisRefReplied = false;
    DeviceDiagnosiInfo* diagnosis = nullptr;
    QString monitoredAxisType;
    qint32 monitoredAxisNo = 0;
    qint16 keepAliveTicks = 0;
};
