#pragma once

#include <QMap>
#include <QWidget>

#include <memory>

class AxisRecord;
class QLineEdit;
class QToolButton;
struct HomeField;

namespace Ui {
class OriginReturnSetWidget;
}

/// The homing page of an axis: speeds, time-out, the homing mode with its picture, and the limit and origin signals.
/// The record is the only store; every edit goes straight into it. Main thread only.
class OriginReturnSetWidget : public QWidget {
    Q_OBJECT

public:
    OriginReturnSetWidget(const QString& projectName, unsigned axisId, QWidget* parent);
    ~OriginReturnSetWidget() override;

    /// Object name of the pin editor that has the focus, as the record's view information holds it; else empty.
    QString focusedPinViewInfo();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// A mouse button was released anywhere on the page: the pin editor in focus may be another one.
    void updateFindIndex();

public slots:
    /// Brings the list of modes, the picture and what can be set in line with the axis type and the program style.
    void updateWidget();

private slots:
    void on_combobox_3Changed(const QString& str);
    void onLineEditPosTextChanged();
    void onLineEditNegTextChanged();
    void onlineEditOrgTextChanged();
    void onToolButtonClicked(bool checked = false);
    void onLineEdit_7textChanged();
    void onLineEdit_8textChanged();
    void onLineEdit_9textChanged();
    void onLineEdit_10textChanged();
    void on_checkBox_1_stateChanged(int arg);
    void on_checkBox_2_stateChanged(int arg);
    void on_checkBox_3_stateChanged(int arg);
    void on_radioButton_1_toggled(bool checked);
    void on_radioButton_2_toggled(bool checked);
    void on_radioButton_3_toggled(bool checked);
    void on_radioButton_4_toggled(bool checked);
    void on_radioButton_5_toggled(bool checked);
    void on_radioButton_6_toggled(bool checked);

private:
    void setUpForm();
    void loadFromModel();
    void loadModes(const AxisRecord& record);
    void loadSignals(const AxisRecord& record);
    void setUpValidators();
    void connectForm();
    void describeToFind();
    void commitField(const HomeField& field);
    void commitPin(int signal);
    /// Whether a text may be stored as a pin; tells the user why not.
    bool checkPinText(QString& text);
    void enableSignal(int signal, int state);
    void setLogic(int signal, bool positive, bool checked);

    std::unique_ptr<Ui::OriginReturnSetWidget> ui;
    QString projectName;
    quint32 axisId;
    /// As given; not owned.
    QWidget* m_parent;
    QMap<QToolButton*, QLineEdit*> pinButtons;
};
