#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/ModelAndParamtSetWidgetFields.h"
#include "ui_ModelAndParamtSetWidget.h"

#include <QSignalBlocker>

// How the page takes its controls from the record. The first load runs before the page's own connections are made; a
// later one runs with all of them, so that the slots write back what the controls have just been given.

namespace {

using Form = Ui::ModelAndParamtSetWidget;

/// Rows that no axis shows. Only the second probe comes back, where the controller has one.
void hideUnusedRows(const Form& form)
{
    QWidget* const unused[] = { form.label_14, form.lineEdit_5, form.label_15, form.probe2checkBox, form.probe2ComboBox,
        form.label_46, form.lineEdit_14, form.label_47, form.label_48, form.radioButton_5, form.radioButton_6 };
    for (QWidget* control : unused)
        control->setVisible(false);
}

/// Silent: only the selection that follows is live, so that a transient one never reaches the record.
void fillSilently(QComboBox* box, const QStringList& entries)
{
    const QSignalBlocker blocker(box);
    box->clear();
    box->addItems(entries);
}

/// A point that the controller does not know leaves the first entry selected and the record as it is.
void selectPoint(QComboBox* box, const AxisRecord& record, const QString& key)
{
    const QMap<int, QString> points = record.model()->getInputPointMap();
    box->setCurrentText(points.value(record.text(key).toInt(nullptr, 10)));
}

} // namespace

void ModelAndParamtSetWidget::loadFromModel()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    hideUnusedRows(*ui);
    const bool rotating = record.isTrue(QStringLiteral("ModeSet"));
    loadModes(record, rotating);
    for (const ModeField& field : modeFields())
        (ui.get()->*field.edit)->setText(record.text(field.key));
    appendLogicItems();
    loadProbes(record);
    loadPreset(record);
    loadCompareOutput(record);
    updateWidget();
    ui->stackedWidget->setAttribute(Qt::WA_TranslucentBackground);
    ui->label_4->setText(rotating ? tr("Period Setting") : tr("Soft Limit"));
    showStackWidgetPage(rotating ? 1 : 0);
    loadCompareWidth(record, installValidators());
}

void ModelAndParamtSetWidget::loadModes(const AxisRecord& record, bool rotating)
{
    const bool absolute = record.isTrue(QStringLiteral("EncoderMode"));
    ui->radioButton->setChecked(!absolute);
    ui->radioButton_2->setChecked(absolute);
    ui->radioButton_3->setChecked(!rotating);
    ui->radioButton_4->setChecked(rotating);
    const bool limited = record.isTrue(QStringLiteral("SoftLimitEnable"));
    ui->checkBox->setChecked(limited);
    ui->lineEdit->setEnabled(limited);
    ui->lineEdit_2->setEnabled(limited);
}

void ModelAndParamtSetWidget::appendLogicItems()
{
    const QStringList logic{ tr("Positive Logic"), tr("Negitive Logic") };
    ui->HardLimNegBox->addItems(logic);
    ui->HardLimPosBox->addItems(logic);
}

void ModelAndParamtSetWidget::loadProbes(const AxisRecord& record)
{
    const QStringList points = record.list(QStringLiteral("ProbelInputPoint"));
    fillSilently(ui->probe1ComboBox, points);
    fillSilently(ui->probe2ComboBox, points);
    selectPoint(ui->probe1ComboBox, record, QStringLiteral("Probe1"));
    selectPoint(ui->probe2ComboBox, record, QStringLiteral("Probe2"));
    ui->probe1checkBox->setChecked(!record.isFalse(QStringLiteral("Probe1Enable")));
    ui->probe2checkBox->setChecked(!record.isFalse(QStringLiteral("Probe2Enable")));
    ui->checkBox_2->setChecked(!record.isFalse(QStringLiteral("ErrorStopEnable")));
}

void ModelAndParamtSetWidget::loadPreset(const AxisRecord& record)
{
    fillSilently(ui->inputPinComboBox, record.list(QStringLiteral("HightSpeedCountInputPoint")));
    selectPoint(ui->inputPinComboBox, record, QStringLiteral("Preset"));
    ui->checkBox_4->setChecked(!record.isFalse(QStringLiteral("PresetEnable")));
}

void ModelAndParamtSetWidget::loadCompareOutput(const AxisRecord& record)
{
    const bool on = !record.isFalse(QStringLiteral("CompareOutEnable"));
    ui->checkBox_3->setChecked(on);
    ui->lineEdit_14->setEnabled(on);
    ui->radioButton_5->setEnabled(on);
    ui->radioButton_6->setEnabled(on);
    // Both from the unit: a button of an exclusive pair cannot be unchecked by itself.
    const bool milliseconds = record.isTrue(QStringLiteral("CompareOutputWidthUnit"));
    ui->radioButton_5->setChecked(milliseconds);
    ui->radioButton_6->setChecked(!milliseconds);
}

RegExpValidator* ModelAndParamtSetWidget::installValidators()
{
    auto* const real = new DoubleValidator(6, this);
    auto* const whole = new RegExpValidator(RegExpValidator::decimalPattern(), this);
    for (const ModeField& field : modeFields()) {
        const bool isReal = !field.rule || field.rule->kind == NumberKind::Real;
        (ui.get()->*field.edit)->setValidator(isReal ? static_cast<QValidator*>(real) : whole);
    }
    return whole;
}

void ModelAndParamtSetWidget::loadCompareWidth(const AxisRecord& record, RegExpValidator* whole)
{
    const bool milliseconds = record.isTrue(QStringLiteral("CompareOutputWidthUnit"));
    if (milliseconds)
        ui->lineEdit_14->setValidator(whole);
    else
        ui->lineEdit_14->setValidator(new DoubleValidator(1, this));
    showWidth(milliseconds, record);
}
