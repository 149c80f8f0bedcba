#pragma once

#include "axisdata/NumberRule.h"
#include "pages/ModelAndParamtSetWidgetVisibility.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class AxisRecord;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QValidator;
struct ModeChoice;

namespace Ui {
class ModelAndParamtSetWidget;
}

/// Third tab of the axis editor: operating modes, limits, dynamics, inputs and outputs of one axis. Holds no values of
/// its own: every control is loaded from the record and every edit goes straight into it. A project, sub-model or
/// record that is missing ends any operation silently. Main thread only.
class ModelAndParamtSetWidget : public QWidget {
    Q_OBJECT

public:
    /// The project by its name and the axis by the id of its record; both are looked up anew by each operation.
    ModelAndParamtSetWidget(const QString& projectName, quint32 axisId, QWidget* parent);
    ~ModelAndParamtSetWidget() override;

public slots:
    /// The axis has become one of another type: puts all keys of the page back to their defaults and loads them.
    void axisTypeChanged();
    /// Shows and enables what the axis type, its device and the controller allow, fills the lists that depend on them,
    /// and corrects positions past the end of a list in the record. May be called at any time.
    void updateWidget();

private slots:
    void on_radiobuttonclicked(bool checked);
    void on_radiobutton2clicked(bool checked);
    void on_radiobutton3clicked(bool checked);
    void on_radiobutton4clicked(bool checked);
    void on_radiobutton5clicked(bool checked);
    void on_radiobutton6clicked(bool checked);
    void on_checkedBox_Clicked(bool checked);
    void on_lineEdit_TextChanged();
    void on_lineEdit_2_TextChanged();
    void on_lineEdit_3_TextChanged();
    void on_lineEdit_4_TextChanged();
    void on_lineEdit_5_TextChanged(const QString& text);
    void on_lineEdit_6_TextChanged();
    void on_lineEdit_7_TextChanged();
    void on_lineEdit_8_TextChanged();
    void on_lineEdit_9_TextChanged(const QString& text);
    void on_lineEdit_10_TextChanged(const QString& text);
    void on_lineEdit_11_TextChanged();
    void on_lineEdit_12_TextChanged();
    void on_lineEdit_13_TextChanged();
    void on_lineEdit_14_TextChanged();
    void on_HardLimPosBoxChanged(int index);
    void on_HardLimNegBoxChanged(int index);
    void on_checkBox_2_stateChanged(int arg);
    void on_checkBox_3_stateChanged(int arg);
    void on_checkBox_4_stateChanged(int arg);
    void on_probe1ComboBox(int index);
    void on_probe2ComboBox(int index);
    void on_outputMethodComboBox(int index);
    void on_outputPinComboBox(int index);
    void on_compareOutputPinCheckBox(int index);
    void on_inputPinComboBox(int index);
    void on_inputSignalComboBox(int index);
    void on_probe1checkBox_stateChanged(int arg1);
    void on_probe2checkBox_stateChanged(int arg1);
    void showStackWidgetPage(int index);

private:
    using Form = Ui::ModelAndParamtSetWidget;
    /// A combo box whose list depends on the axis, the key that holds the position in it, and its slot.
    struct ListBox {
        QComboBox* Form::*box;
        QString key;
        void (ModelAndParamtSetWidget::*slot)(int);
    };
    static const ListBox pulseMode;
    static const ListBox outputPin;
    static const ListBox encoderMode;
    static const ListBox inputSignal;
    static const ListBox comparePin;

    void connectModes();
    void connectNumbers();
    void connectLists();

    void loadFromModel();
    void loadChoice(const ModeChoice& choice, bool on);
    void loadFlag(const AxisRecord& record, QCheckBox* Form::*box);
    void loadField(const AxisRecord& record, QLineEdit* Form::*edit);
    void loadPoint(const AxisRecord& record, QComboBox* Form::*box);
    void loadModes(const AxisRecord& record);
    void appendLogicItems();
    void loadProbes(const AxisRecord& record);
    void loadPreset(const AxisRecord& record);
    void loadCompareOutput(const AxisRecord& record);
    void loadValidators(const AxisRecord& record);
    void loadCompareWidth(const AxisRecord& record, const QValidator* whole);

    static ModeAxisKind kindOf(const AxisRecord& record);
    void updatePulse(const AxisRecord& record, const ControllerFamily& family);
    void updateEncoder(const AxisRecord& record, const ControllerFamily& family);
    void chooseIncrements(const AxisRecord& record);
    void enableComparePin(const AxisRecord& record);
    void setInputGroupHeight(int height);
    void refill(const AxisRecord& record, const ListBox& list, const QStringList& entries);
    void beginRefill(const ListBox& list);
    void endRefill(const AxisRecord& record, const ListBox& list, const QStringList& entries);
    void endOutputPins(const AxisRecord& record, const QString& device);
    void refillInputSignals(const AxisRecord& record);
    void changeEncoderMode(const AxisRecord& record, int index);
    void changePulseMode(const AxisRecord& record, int index);
    bool isSignalWithoutFilter(const AxisRecord& record, int index) const;

    void setEncoderMode(bool absolute);
    void setRotating(bool rotating);
    void setWidthUnit(bool milliseconds);
    void choose(const AxisRecord& record, const ModeChoice& choice, bool on);
    void nameThirdRow(bool rotating);
    CommitResult commit(QLineEdit* Form::*edit);
    void commitWidth();
    void showWidth(const AxisRecord& record, bool milliseconds);
    void store(QLineEdit* Form::*edit, const QString& text);
    void write(const QString& key, const QString& text);
    void setFlag(QCheckBox* Form::*box, bool on);
    void setLogic(QComboBox* Form::*box, int index);
    void setPoint(QComboBox* Form::*box);

    std::unique_ptr<Form> ui;
    QString m_projectName;
    quint32 m_axisId;
    QWidget* m_parent;
};
