#include "pages/ModelAndParamtSetWidget.h"

#include "axisdata/AutoConnectionSilence.h"
#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/PageTeardown.h"
#include "axisdata/RegExpValidator.h"
#include "pages/ModelAndParamtSetWidgetFields.h"
#include "pages/ModelAndParamtSetWidgetVisibility.h"
#include "ui_ModelAndParamtSetWidget.h"

#include <QLayout>

namespace {

/// Named like automatic connections, but connected by hand to signals of other names.
QByteArrayList handConnectedSlots()
{
    return {
        "on_checkedBox_Clicked(bool)",
        "on_lineEdit_TextChanged()",
        "on_lineEdit_2_TextChanged()",
        "on_lineEdit_3_TextChanged()",
        "on_lineEdit_4_TextChanged()",
        "on_lineEdit_5_TextChanged(QString)",
        "on_lineEdit_6_TextChanged()",
        "on_lineEdit_7_TextChanged()",
        "on_lineEdit_8_TextChanged()",
        "on_lineEdit_9_TextChanged(QString)",
        "on_lineEdit_10_TextChanged(QString)",
        "on_lineEdit_11_TextChanged()",
        "on_lineEdit_12_TextChanged()",
        "on_lineEdit_13_TextChanged()",
        "on_lineEdit_14_TextChanged()",
    };
}

} // namespace

ModelAndParamtSetWidget::ModelAndParamtSetWidget(const QString& projectName, quint32 axisId, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Form>()), m_projectName(projectName), m_axisId(axisId), m_parent(parent)
{
    {
        const AutoConnectionSilence silence(handConnectedSlots());
        ui->setupUi(this);
    }
    setUpdatesEnabled(false);
    loadFromModel();
    connectModes();
    connectNumbers();
    connectLists();
    setUpdatesEnabled(true);
}

ModelAndParamtSetWidget::~ModelAndParamtSetWidget()
{
    disconnectControls(*this);
}

void ModelAndParamtSetWidget::connectModes()
{
    using Page = ModelAndParamtSetWidget;
    connect(ui->radioButton, &QRadioButton::toggled, this, &Page::on_radiobuttonclicked);
    connect(ui->radioButton_2, &QRadioButton::toggled, this, &Page::on_radiobutton2clicked);
    connect(ui->radioButton_3, &QRadioButton::toggled, this, &Page::on_radiobutton3clicked);
    connect(ui->radioButton_4, &QRadioButton::toggled, this, &Page::on_radiobutton4clicked);
    connect(ui->radioButton_5, &QRadioButton::toggled, this, &Page::on_radiobutton5clicked);
    connect(ui->radioButton_6, &QRadioButton::toggled, this, &Page::on_radiobutton6clicked);
    connect(ui->checkBox, &QCheckBox::stateChanged, this, &Page::on_checkedBox_Clicked);
}

void ModelAndParamtSetWidget::connectNumbers()
{
    using Page = ModelAndParamtSetWidget;
    connect(ui->lineEdit, &QLineEdit::editingFinished, this, &Page::on_lineEdit_TextChanged);
    connect(ui->lineEdit_2, &QLineEdit::editingFinished, this, &Page::on_lineEdit_2_TextChanged);
    connect(ui->lineEdit_3, &QLineEdit::editingFinished, this, &Page::on_lineEdit_3_TextChanged);
    connect(ui->lineEdit_4, &QLineEdit::editingFinished, this, &Page::on_lineEdit_4_TextChanged);
    connect(ui->lineEdit_5, &QLineEdit::textChanged, this, &Page::on_lineEdit_5_TextChanged);
    connect(ui->lineEdit_6, &QLineEdit::editingFinished, this, &Page::on_lineEdit_6_TextChanged);
    connect(ui->lineEdit_7, &QLineEdit::editingFinished, this, &Page::on_lineEdit_7_TextChanged);
    connect(ui->lineEdit_8, &QLineEdit::editingFinished, this, &Page::on_lineEdit_8_TextChanged);
    connect(ui->lineEdit_9, &QLineEdit::textChanged, this, &Page::on_lineEdit_9_TextChanged);
    connect(ui->lineEdit_10, &QLineEdit::textChanged, this, &Page::on_lineEdit_10_TextChanged);
    connect(ui->lineEdit_11, &QLineEdit::editingFinished, this, &Page::on_lineEdit_11_TextChanged);
    connect(ui->lineEdit_12, &QLineEdit::editingFinished, this, &Page::on_lineEdit_12_TextChanged);
    connect(ui->lineEdit_13, &QLineEdit::editingFinished, this, &Page::on_lineEdit_13_TextChanged);
    connect(ui->lineEdit_14, &QLineEdit::editingFinished, this, &Page::on_lineEdit_14_TextChanged);
}

void ModelAndParamtSetWidget::connectLists()
{
    using Page = ModelAndParamtSetWidget;
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(ui->HardLimPosBox, indexChanged, this, &Page::on_HardLimPosBoxChanged);
    connect(ui->HardLimNegBox, indexChanged, this, &Page::on_HardLimNegBoxChanged);
    connect(ui->checkBox_2, &QCheckBox::stateChanged, this, &Page::on_checkBox_2_stateChanged);
    connect(ui->probe1ComboBox, indexChanged, this, &Page::on_probe1ComboBox);
    connect(ui->probe2ComboBox, indexChanged, this, &Page::on_probe2ComboBox);
    connect(ui->outputMethodComboBox, indexChanged, this, &Page::on_outputMethodComboBox);
    connect(ui->pulseMethodComboBox, indexChanged, this, &Page::on_outputMethodComboBox);
    connect(ui->outputPinComboBox, indexChanged, this, &Page::on_outputPinComboBox);
    connect(ui->compareOutputPinCheckBox, indexChanged, this, &Page::on_compareOutputPinCheckBox);
    connect(ui->inputPinComboBox, indexChanged, this, &Page::on_inputPinComboBox);
    connect(ui->inputSignalComboBox, indexChanged, this, &Page::on_inputSignalComboBox);
}

void ModelAndParamtSetWidget::axisTypeChanged()
{
    blockSignals(true);
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return; // signals stay blocked: this page has nothing left to tell
    for (auto entry = AxisModeDefaults.begin(); entry != AxisModeDefaults.end(); ++entry)
        record.set(entry.key(), entry.value());
    loadFromModel();
    blockSignals(false);
    updateWidget();
}

void ModelAndParamtSetWidget::on_radiobuttonclicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->radioButton_2->setChecked(false);
    record.set(QStringLiteral("EncoderMode"), AxisFalse);
}

void ModelAndParamtSetWidget::on_radiobutton2clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->radioButton->setChecked(false);
    record.set(QStringLiteral("EncoderMode"), AxisTrue);
}

void ModelAndParamtSetWidget::on_radiobutton3clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->label_4->setText(tr("Soft Limit"));
    ui->radioButton_4->setChecked(false);
    record.set(QStringLiteral("ModeSet"), AxisFalse);
    showStackWidgetPage(0);
}

void ModelAndParamtSetWidget::on_radiobutton4clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->label_4->setText(tr("Period Setting"));
    ui->radioButton_3->setChecked(false);
    record.set(QStringLiteral("ModeSet"), AxisTrue);
    showStackWidgetPage(1);
}

void ModelAndParamtSetWidget::on_radiobutton5clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->radioButton_6->setChecked(false);
    record.set(QStringLiteral("CompareOutputWidthUnit"), AxisTrue);
    ui->label_47->setText(tr("ms"));
    ui->lineEdit_14->setValidator(new RegExpValidator(RegExpValidator::decimalPattern(), this));
    showWidth(true, record);
}

void ModelAndParamtSetWidget::on_radiobutton6clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!checked || !record)
        return;
    ui->radioButton_5->setChecked(false);
    record.set(QStringLiteral("CompareOutputWidthUnit"), AxisFalse);
    ui->label_47->setText(tr("unit"));
    ui->lineEdit_14->setValidator(new DoubleValidator(1, this));
    showWidth(false, record);
}

void ModelAndParamtSetWidget::on_checkedBox_Clicked(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    record.setFlag(QStringLiteral("SoftLimitEnable"), checked);
    ui->lineEdit->setEnabled(checked);
    ui->lineEdit_2->setEnabled(checked);
}

void ModelAndParamtSetWidget::on_lineEdit_TextChanged()
{
    commit(&Form::lineEdit);
}

void ModelAndParamtSetWidget::on_lineEdit_2_TextChanged()
{
    commit(&Form::lineEdit_2);
}

void ModelAndParamtSetWidget::on_lineEdit_3_TextChanged()
{
    commit(&Form::lineEdit_3);
}

void ModelAndParamtSetWidget::on_lineEdit_4_TextChanged()
{
    commit(&Form::lineEdit_4);
}

void ModelAndParamtSetWidget::on_lineEdit_5_TextChanged(const QString& text)
{
    store(&Form::lineEdit_5, text);
}

void ModelAndParamtSetWidget::on_lineEdit_6_TextChanged()
{
    commit(&Form::lineEdit_6);
}

void ModelAndParamtSetWidget::on_lineEdit_7_TextChanged()
{
    commit(&Form::lineEdit_7);
}

void ModelAndParamtSetWidget::on_lineEdit_8_TextChanged()
{
    commit(&Form::lineEdit_8);
}

void ModelAndParamtSetWidget::on_lineEdit_9_TextChanged(const QString& text)
{
    store(&Form::lineEdit_9, text);
}

void ModelAndParamtSetWidget::on_lineEdit_10_TextChanged(const QString& text)
{
    store(&Form::lineEdit_10, text);
}

void ModelAndParamtSetWidget::on_lineEdit_11_TextChanged()
{
    commit(&Form::lineEdit_11);
}

void ModelAndParamtSetWidget::on_lineEdit_12_TextChanged()
{
    commit(&Form::lineEdit_12);
}

void ModelAndParamtSetWidget::on_lineEdit_13_TextChanged()
{
    commit(&Form::lineEdit_13);
}

void ModelAndParamtSetWidget::on_lineEdit_14_TextChanged()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const QString key = QStringLiteral("CompareOutputWidth");
    const bool milliseconds = record.isTrue(QStringLiteral("CompareOutputWidthUnit"));
    QLineEdit& field = *ui->lineEdit_14;
    const CommitResult result = commitNumber(field, compareWidthRule(),
        { [&] { return compareWidthText(record.text(key), milliseconds); },
            [&](const QString& text) { record.set(key, text); },
            [&](const QString& other) { return record.text(other); } });
    if (result == CommitResult::Stored && milliseconds)
        field.setText(QString(QChar(field.text().toUInt(nullptr, 10))));
}

void ModelAndParamtSetWidget::on_HardLimPosBoxChanged(int index)
{
    writeFlag(QStringLiteral("HardLimitPos"), index != 0);
}

void ModelAndParamtSetWidget::on_HardLimNegBoxChanged(int index)
{
    writeFlag(QStringLiteral("HardLimitNeg"), index != 0);
}

void ModelAndParamtSetWidget::on_checkBox_2_stateChanged(int arg)
{
    writeFlag(QStringLiteral("ErrorStopEnable"), arg == Qt::Checked);
}

void ModelAndParamtSetWidget::on_checkBox_3_stateChanged(int arg)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const bool on = arg == Qt::Checked;
    record.setFlag(QStringLiteral("CompareOutEnable"), on);
    ui->compareOutputPinCheckBox->setEnabled(on);
    ui->lineEdit_14->setEnabled(on);
    ui->radioButton_5->setEnabled(on);
    ui->radioButton_6->setEnabled(on);
}

void ModelAndParamtSetWidget::on_checkBox_4_stateChanged(int arg)
{
    writeFlag(QStringLiteral("PresetEnable"), arg == Qt::Checked, ui->inputPinComboBox);
}

void ModelAndParamtSetWidget::on_probe1ComboBox(int /*index*/)
{
    writePoint(QStringLiteral("Probe1"), ui->probe1ComboBox);
}

void ModelAndParamtSetWidget::on_probe2ComboBox(int /*index*/)
{
    writePoint(QStringLiteral("Probe2"), ui->probe2ComboBox);
}

void ModelAndParamtSetWidget::on_outputMethodComboBox(int index)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    switch (modeAxisKind(record.text(QStringLiteral("AxisType")))) {
    case ModeAxisKind::Encoder:
        record.set(QStringLiteral("OutputMethod"), QString::number(index, 10));
        refillInputSignals(record);
        break;
    case ModeAxisKind::Pulse:
        changePulseMode(record, index);
        break;
    case ModeAxisKind::Virtual:
    case ModeAxisKind::EtherCAT:
        break;
    }
}

void ModelAndParamtSetWidget::on_outputPinComboBox(int index)
{
    write(QStringLiteral("OutputPin"), QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_compareOutputPinCheckBox(int index)
{
    write(QStringLiteral("CompareOutputPin"), QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_inputPinComboBox(int /*index*/)
{
    writePoint(QStringLiteral("Preset"), ui->inputPinComboBox);
}

void ModelAndParamtSetWidget::on_inputSignalComboBox(int index)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    if (record.text(QStringLiteral("AxisType")) == AxisTypeEncoder)
        ui->lineEdit_13->setEnabled(!isSignalWithoutFilter(record.list(QStringLiteral("EncoderEncodeMode")), index));
    record.set(QStringLiteral("InputSignal"), QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_probe1checkBox_stateChanged(int arg1)
{
    writeFlag(QStringLiteral("Probe1Enable"), arg1 == Qt::Checked, ui->probe1ComboBox);
}

void ModelAndParamtSetWidget::on_probe2checkBox_stateChanged(int arg1)
{
    writeFlag(QStringLiteral("Probe2Enable"), arg1 == Qt::Checked, ui->probe2ComboBox);
}

void ModelAndParamtSetWidget::showStackWidgetPage(int index)
{
    ui->stackedWidget->setCurrentIndex(index);
    for (int i = 0; i < ui->stackedWidget->count(); ++i) {
        QWidget* page = ui->stackedWidget->widget(i);
        const QSizePolicy::Policy policy = i == index ? QSizePolicy::Expanding : QSizePolicy::Ignored;
        page->setSizePolicy(policy, policy);
        page->adjustSize();
    }
    ui->stackedWidget->adjustSize();
    // Sized before it is shown, the stack would keep the height from before its controls got their style.
    ui->stackedWidget->layout()->invalidate();
}

void ModelAndParamtSetWidget::commit(QLineEdit* Form::*edit)
{
    const ModeField& field = modeField(edit);
    commitNumber(*(ui.get()->*edit), *field.rule, field.key, m_projectName, m_axisId);
}

void ModelAndParamtSetWidget::store(QLineEdit* Form::*edit, const QString& text)
{
    write(modeField(edit).key, realText(text.toDouble()));
}

void ModelAndParamtSetWidget::write(const QString& key, const QString& text)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (record)
        record.set(key, text);
}

void ModelAndParamtSetWidget::writeFlag(const QString& key, bool on, QComboBox* enabledByIt)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    record.setFlag(key, on);
    if (enabledByIt)
        enabledByIt->setEnabled(on);
}

void ModelAndParamtSetWidget::writePoint(const QString& key, const QComboBox* box)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    // The map gives the first of several points of one name.
    const int point = record.model()->getInputPointMap().key(box->currentText(), 0);
    record.set(key, QString::number(point, 10));
}

bool ModelAndParamtSetWidget::isSignalWithoutFilter(const QStringList& encoderModes, int index) const
{
    return !encoderModes.isEmpty() && ui->outputMethodComboBox->currentText() == encoderModes.last()
        && index > ui->inputSignalComboBox->count() - 3;
}

void ModelAndParamtSetWidget::showWidth(bool milliseconds, const AxisRecord& record)
{
    ui->lineEdit_14->setText(compareWidthText(record.text(QStringLiteral("CompareOutputWidth")), milliseconds));
}
