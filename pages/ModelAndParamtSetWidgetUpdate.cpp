#include "axisdata/AxisRecord.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/ModelAndParamtSetWidgetFields.h"
#include "pages/ModelAndParamtSetWidgetVisibility.h"
#include "ui_ModelAndParamtSetWidget.h"

// What the axis type, its device and the controller make of the page: lists with the positions selected in them, what
// is enabled, and what is shown.

namespace {

const QString encoderModes = QStringLiteral("EncoderEncodeMode");
const QString fastOutputs = QStringLiteral("HightSpeedPlusOutputPoint");

QStringList pulseDevices(const AxisRecord& record)
{
    return record.list(QStringLiteral("AxisPulseOutputDev"));
}

/// Position of the output device among them, put right in the record if it lies past their end.
int pulseDevice(const AxisRecord& record, const QStringList& devices)
{
    return record.position(QStringLiteral("OutputDevice"), devices.size());
}

} // namespace

using Page = ModelAndParamtSetWidget;

const Page::ListBox Page::pulseMode{ &Form::pulseMethodComboBox, QStringLiteral("PulseOutputMethod"),
    &Page::on_outputMethodComboBox };
const Page::ListBox Page::outputPin{ &Form::outputPinComboBox, QStringLiteral("OutputPin"),
    &Page::on_outputPinComboBox };
const Page::ListBox Page::encoderMode{ &Form::outputMethodComboBox, QStringLiteral("OutputMethod"),
    &Page::on_outputMethodComboBox };
const Page::ListBox Page::inputSignal{ &Form::inputSignalComboBox, QStringLiteral("InputSignal"),
    &Page::on_inputSignalComboBox };
const Page::ListBox Page::comparePin{ &Form::compareOutputPinCheckBox, QStringLiteral("CompareOutputPin"),
    &Page::on_compareOutputPinCheckBox };

ModeAxisKind ModelAndParamtSetWidget::kindOf(const AxisRecord& record)
{
    return modeAxisKind(record.text(QStringLiteral("AxisType")));
}

void ModelAndParamtSetWidget::updateWidget()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const ControllerFamily family(record.model()->getDeviceName());
    ui->probe2checkBox->setVisible(family.isNv3t());
    ui->probe2ComboBox->setVisible(family.isNv3t());
    const ModeAxisKind kind = kindOf(record);
    switch (kind) {
    case ModeAxisKind::Pulse:
        updatePulse(record, family);
        return;
    case ModeAxisKind::Encoder:
        updateEncoder(record, family);
        return;
    case ModeAxisKind::EtherCAT:
        ui->radioButton_2->setEnabled(true);
        break;
    case ModeAxisKind::Virtual:
        break;
    }
    applyModeVisibility(*ui, ModeRows::Plain, kind, family, 0);
}

void ModelAndParamtSetWidget::updatePulse(const AxisRecord& record, const ControllerFamily& family)
{
    refill(record, pulseMode, record.list(QStringLiteral("PulseEncodeMode")));
    beginRefill(outputPin);
    const QStringList devices = pulseDevices(record);
    if (devices.isEmpty())
        return; // the box stays empty and disconnected until a controller with pulse outputs refills it
    const int device = pulseDevice(record, devices);
    const auto show = [&](ModeRows part) {
        applyModeVisibility(*ui, part, ModeAxisKind::Pulse, family, static_cast<uint>(device));
    };
    endOutputPins(record, devices.at(device));
    ui->outputPinComboBox->setEnabled(true);
    chooseIncrements(record);
    setInputGroupHeight(50);
    show(ModeRows::InputSignals);
    show(ModeRows::CompareOutput);
    if (family.hasPulseCompareOutput(static_cast<uint>(device)))
        refill(record, comparePin, record.list(fastOutputs));
    enableComparePin(record);
    show(ModeRows::Plain);
}

void ModelAndParamtSetWidget::updateEncoder(const AxisRecord& record, const ControllerFamily& family)
{
    refill(record, encoderMode, record.list(encoderModes));
    refill(record, comparePin, record.list(family.isNv3t() ? fastOutputs : QStringLiteral("OutputPoint")));
    refillInputSignals(record);
    enableComparePin(record);
    ui->radioButton_2->setEnabled(true);
    const uint device = record.number(QStringLiteral("InputDevice"));
    const auto show = [&](ModeRows part) { applyModeVisibility(*ui, part, ModeAxisKind::Encoder, family, device); };
    show(ModeRows::InputSignals);
    show(ModeRows::CompareOutput);
    setInputGroupHeight(100);
    show(ModeRows::InputFilter);
    show(ModeRows::Plain);
}

/// A pulse axis counts by increments only, whatever its record says.
void ModelAndParamtSetWidget::chooseIncrements(const AxisRecord& record)
{
    ui->radioButton_2->setEnabled(false);
    const bool chosen = ui->radioButton->isChecked();
    ui->radioButton->setChecked(true);
    // The first load makes the choice before the slot is connected. Nothing changes at the next update, so that the
    // slot has to be told that the record still says otherwise.
    if (chosen && record.isTrue(encoderChoice.key))
        on_radiobuttonclicked(true);
}

void ModelAndParamtSetWidget::enableComparePin(const AxisRecord& record)
{
    ui->compareOutputPinCheckBox->setEnabled(!record.isFalse(modeFlag(&Form::checkBox_3).key));
}

void ModelAndParamtSetWidget::setInputGroupHeight(int height)
{
    ui->groupBox_11->setMinimumHeight(height);
    ui->groupBox_11->setMaximumHeight(height);
}

void ModelAndParamtSetWidget::refill(const AxisRecord& record, const ListBox& list, const QStringList& entries)
{
    beginRefill(list);
    endRefill(record, list, entries);
}

void ModelAndParamtSetWidget::beginRefill(const ListBox& list)
{
    QComboBox* box = ui.get()->*list.box;
    disconnect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, list.slot);
    box->clear();
}

void ModelAndParamtSetWidget::endRefill(const AxisRecord& record, const ListBox& list, const QStringList& entries)
{
    QComboBox* box = ui.get()->*list.box;
    box->addItems(entries);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, list.slot);
    box->setCurrentIndex(record.position(list.key, entries.size()));
}

void ModelAndParamtSetWidget::endOutputPins(const AxisRecord& record, const QString& device)
{
    const QString group = device + QLatin1Char('.') + ui->pulseMethodComboBox->currentText();
    endRefill(record, outputPin, record.list(group));
}

void ModelAndParamtSetWidget::refillInputSignals(const AxisRecord& record)
{
    const QString group = QStringLiteral("Encoder.") + ui->outputMethodComboBox->currentText();
    refill(record, inputSignal, record.list(group));
}

void ModelAndParamtSetWidget::changeEncoderMode(const AxisRecord& record, int index)
{
    record.set(encoderMode.key, QString::number(index, 10));
    refillInputSignals(record);
}

void ModelAndParamtSetWidget::changePulseMode(const AxisRecord& record, int index)
{
    beginRefill(outputPin);
    const QStringList devices = pulseDevices(record);
    const int device = pulseDevice(record, devices);
    record.set(pulseMode.key, QString::number(index, 10));
    ui->pulseMethodComboBox->setCurrentIndex(index);
    // A controller without pulse outputs has no pins either.
    endOutputPins(record, devices.value(device));
}

bool ModelAndParamtSetWidget::isSignalWithoutFilter(const AxisRecord& record, int index) const
{
    const QStringList modes = record.list(encoderModes);
    return !modes.isEmpty() && ui->outputMethodComboBox->currentText() == modes.last()
        && index > ui->inputSignalComboBox->count() - 3;
}
