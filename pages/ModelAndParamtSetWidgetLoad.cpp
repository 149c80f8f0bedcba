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

// Silent: only the selection that follows is live, so that a transient one never reaches the record.

void clearSilently(QComboBox* box)
{
    const QSignalBlocker blocker(box);
    box->clear();
}

void fillSilently(QComboBox* box, const QStringList& entries)
{
    const QSignalBlocker blocker(box);
    box->addItems(entries);
}

} // namespace

void ModelAndParamtSetWidget::loadFromModel()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    hideUnusedRows(*ui);
    const bool rotating = record.isTrue(modeChoice.key);
    loadModes(record);
    for (const ModeField& field : modeFields())
        if (field.isReal())
            loadField(record, field.edit);
    appendLogicItems();
    loadProbes(record);
    loadPreset(record);
    loadCompareOutput(record);
    updateWidget();
    ui->stackedWidget->setAttribute(Qt::WA_TranslucentBackground);
    nameThirdRow(rotating);
    showStackWidgetPage(rotating ? 1 : 0);
    loadValidators(record);
}

void ModelAndParamtSetWidget::loadChoice(const ModeChoice& choice, bool on)
{
    (ui.get()->*choice.off)->setChecked(!on);
    (ui.get()->*choice.on)->setChecked(on);
}

void ModelAndParamtSetWidget::loadFlag(const AxisRecord& record, QCheckBox* Form::*box)
{
    const ModeFlag& flag = modeFlag(box);
    (ui.get()->*box)->setChecked(flag.unknown ? !record.isFalse(flag.key) : record.isTrue(flag.key));
}

void ModelAndParamtSetWidget::loadField(const AxisRecord& record, QLineEdit* Form::*edit)
{
    (ui.get()->*edit)->setText(record.text(modeField(edit).key));
}

/// A point that the controller does not know leaves the first entry selected and the record as it is.
void ModelAndParamtSetWidget::loadPoint(const AxisRecord& record, QComboBox* Form::*box)
{
    const QMap<int, QString> points = record.model()->getInputPointMap();
    (ui.get()->*box)->setCurrentText(points.value(record.text(modePoint(box).key).toInt(nullptr, 10)));
}

void ModelAndParamtSetWidget::loadModes(const AxisRecord& record)
{
    loadChoice(encoderChoice, record.isTrue(encoderChoice.key));
    loadChoice(modeChoice, record.isTrue(modeChoice.key));
    loadFlag(record, &Form::checkBox);
    const bool limited = ui->checkBox->isChecked();
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
    QComboBox* Form::*const probes[] = { &Form::probe1ComboBox, &Form::probe2ComboBox };
    for (const auto box : probes)
        clearSilently(ui.get()->*box);
    for (const auto box : probes)
        fillSilently(ui.get()->*box, record.list(modePoint(box).list));
    for (const auto box : probes)
        loadPoint(record, box);
    loadFlag(record, &Form::probe1checkBox);
    loadFlag(record, &Form::probe2checkBox);
    loadFlag(record, &Form::checkBox_2);
}

void ModelAndParamtSetWidget::loadPreset(const AxisRecord& record)
{
    clearSilently(ui->inputPinComboBox);
    fillSilently(ui->inputPinComboBox, record.list(modePoint(&Form::inputPinComboBox).list));
    loadPoint(record, &Form::inputPinComboBox);
    loadFlag(record, &Form::checkBox_4);
    loadField(record, &Form::lineEdit_13);
}

void ModelAndParamtSetWidget::loadCompareOutput(const AxisRecord& record)
{
    loadFlag(record, &Form::checkBox_3);
    const bool on = ui->checkBox_3->isChecked();
    ui->lineEdit_14->setEnabled(on);
    ui->radioButton_5->setEnabled(on);
    ui->radioButton_6->setEnabled(on);
    // The button of the milliseconds comes first. Both are set, since one of an exclusive pair cannot be unchecked by
    // itself.
    const bool milliseconds = record.isTrue(widthUnitChoice.key);
    ui->radioButton_5->setChecked(milliseconds);
    ui->radioButton_6->setChecked(!milliseconds);
}

void ModelAndParamtSetWidget::loadValidators(const AxisRecord& record)
{
    auto* const real = new DoubleValidator(6, this);
    auto* const whole = new RegExpValidator(RegExpValidator::decimalPattern(), this);
    for (const ModeField& field : modeFields())
        if (field.isReal())
            (ui.get()->*field.edit)->setValidator(real);
    ui->lineEdit_13->setValidator(whole);
    loadCompareWidth(record, whole);
}

void ModelAndParamtSetWidget::loadCompareWidth(const AxisRecord& record, const QValidator* whole)
{
    const bool milliseconds = record.isTrue(widthUnitChoice.key);
    ui->lineEdit_14->setValidator(milliseconds ? whole : new DoubleValidator(1, this));
    showWidth(record, milliseconds);
}
