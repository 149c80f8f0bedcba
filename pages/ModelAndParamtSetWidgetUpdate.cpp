#include "axisdata/AxisRecord.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/ModelAndParamtSetWidgetVisibility.h"
#include "ui_ModelAndParamtSetWidget.h"

// What the axis type, its device and the controller make of the page: lists with the positions selected in them, what
// is enabled, and what is shown.

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

void ModelAndParamtSetWidget::updateWidget()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const ControllerFamily family(record.model()->getDeviceName());
    ui->probe2checkBox->setVisible(family.isNv3t());
    ui->probe2ComboBox->setVisible(family.isNv3t());
    const ModeAxisKind kind = modeAxisKind(record.text(QStringLiteral("AxisType")));
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
    applyModeVisibility(*ui, kind, family, 0);
}

void ModelAndParamtSetWidget::updatePulse(const AxisRecord& record, const ControllerFamily& family)
{
    refill(record, pulseMode, record.list(QStringLiteral("PulseEncodeMode")));
    beginRefill(outputPin);
    const QStringList devices = record.list(QStringLiteral("AxisPulseOutputDev"));
    if (devices.isEmpty())
        return; // the box stays empty and disconnected until a controller with pulse outputs refills it
    const int device = record.position(QStringLiteral("OutputDevice"), devices.size());
    endOutputPins(record, devices.at(device));
    ui->outputPinComboBox->setEnabled(true);
    // A pulse axis counts by increments only.
    ui->radioButton_2->setEnabled(false);
    ui->radioButton->setChecked(true);
    setInputGroupHeight(50);
    if (family.hasPulseCompareOutput(static_cast<uint>(device)))
        refill(record, comparePin, record.list(QStringLiteral("HightSpeedPlusOutputPoint")));
    enableComparePin(record);
    applyModeVisibility(*ui, ModeAxisKind::Pulse, family, static_cast<uint>(device));
}

void ModelAndParamtSetWidget::updateEncoder(const AxisRecord& record, const ControllerFamily& family)
{
    refill(record, encoderMode, record.list(QStringLiteral("EncoderEncodeMode")));
    refill(record, comparePin,
        record.list(family.isNv3t() ? QStringLiteral("HightSpeedPlusOutputPoint") : QStringLiteral("OutputPoint")));
    refillInputSignals(record);
    enableComparePin(record);
    ui->radioButton_2->setEnabled(true);
    setInputGroupHeight(100);
    applyModeVisibility(*ui, ModeAxisKind::Encoder, family, record.number(QStringLiteral("InputDevice")));
}

void ModelAndParamtSetWidget::enableComparePin(const AxisRecord& record)
{
    ui->compareOutputPinCheckBox->setEnabled(!record.isFalse(QStringLiteral("CompareOutEnable")));
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

void ModelAndParamtSetWidget::changePulseMode(const AxisRecord& record, int index)
{
    beginRefill(outputPin);
    const QStringList devices = record.list(QStringLiteral("AxisPulseOutputDev"));
    const int device = record.position(QStringLiteral("OutputDevice"), devices.size());
    record.set(pulseMode.key, QString::number(index, 10));
    ui->pulseMethodComboBox->setCurrentIndex(index);
    // A controller without pulse outputs has no pins either.
    endOutputPins(record, devices.value(device));
}
