#include "pages/ModelAndParamtSetWidget.h"

#include "axisdata/AutoConnectionSilence.h"
#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/PageTeardown.h"
#include "axisdata/RegExpValidator.h"
#include "pages/ModelAndParamtSetWidgetFields.h"
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
    if (checked)
        setEncoderMode(false);
}

void ModelAndParamtSetWidget::on_radiobutton2clicked(bool checked)
{
    if (checked)
        setEncoderMode(true);
}

void ModelAndParamtSetWidget::on_radiobutton3clicked(bool checked)
{
    if (checked)
        setRotating(false);
}

void ModelAndParamtSetWidget::on_radiobutton4clicked(bool checked)
{
    if (checked)
        setRotating(true);
}

void ModelAndParamtSetWidget::on_radiobutton5clicked(bool checked)
{
    if (checked)
        setWidthUnit(true);
}

void ModelAndParamtSetWidget::on_radiobutton6clicked(bool checked)
{
    if (checked)
        setWidthUnit(false);
}

void ModelAndParamtSetWidget::on_checkedBox_Clicked(bool checked)
{
    setFlag(&Form::checkBox, checked);
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
    // A second time once the field shows it, so that nothing that follows the field's text has the last word.
    if (commit(&Form::lineEdit_11) == CommitResult::Stored)
        write(modeField(&Form::lineEdit_11).key, ui->lineEdit_11->text());
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
    commitWidth();
}

void ModelAndParamtSetWidget::on_HardLimPosBoxChanged(int index)
{
    setLogic(&Form::HardLimPosBox, index);
}

void ModelAndParamtSetWidget::on_HardLimNegBoxChanged(int index)
{
    setLogic(&Form::HardLimNegBox, index);
}

void ModelAndParamtSetWidget::on_checkBox_2_stateChanged(int arg)
{
    setFlag(&Form::checkBox_2, arg == Qt::Checked);
}

void ModelAndParamtSetWidget::on_checkBox_3_stateChanged(int arg)
{
    setFlag(&Form::checkBox_3, arg == Qt::Checked);
}

void ModelAndParamtSetWidget::on_checkBox_4_stateChanged(int arg)
{
    setFlag(&Form::checkBox_4, arg == Qt::Checked);
}

void ModelAndParamtSetWidget::on_probe1ComboBox(int /*index*/)
{
    setPoint(&Form::probe1ComboBox);
}

void ModelAndParamtSetWidget::on_probe2ComboBox(int /*index*/)
{
    setPoint(&Form::probe2ComboBox);
}

void ModelAndParamtSetWidget::on_outputMethodComboBox(int index)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    switch (kindOf(record)) {
    case ModeAxisKind::Encoder:
        changeEncoderMode(record, index);
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
    write(outputPin.key, QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_compareOutputPinCheckBox(int index)
{
    write(comparePin.key, QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_inputPinComboBox(int /*index*/)
{
    setPoint(&Form::inputPinComboBox);
}

void ModelAndParamtSetWidget::on_inputSignalComboBox(int index)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    if (kindOf(record) == ModeAxisKind::Encoder)
        ui->lineEdit_13->setEnabled(!isSignalWithoutFilter(record, index));
    record.set(inputSignal.key, QString::number(index, 10));
}

void ModelAndParamtSetWidget::on_probe1checkBox_stateChanged(int arg1)
{
    setFlag(&Form::probe1checkBox, arg1 == Qt::Checked);
}

void ModelAndParamtSetWidget::on_probe2checkBox_stateChanged(int arg1)
{
    setFlag(&Form::probe2checkBox, arg1 == Qt::Checked);
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

void ModelAndParamtSetWidget::setEncoderMode(bool absolute)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (record)
        choose(record, encoderChoice, absolute);
}

void ModelAndParamtSetWidget::setRotating(bool rotating)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    nameThirdRow(rotating);
    choose(record, modeChoice, rotating);
    showStackWidgetPage(rotating ? 1 : 0);
}

void ModelAndParamtSetWidget::setWidthUnit(bool milliseconds)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    choose(record, widthUnitChoice, milliseconds);
    ui->label_47->setText(milliseconds ? tr("ms") : tr("unit"));
    if (milliseconds)
        ui->lineEdit_14->setValidator(new RegExpValidator(RegExpValidator::decimalPattern(), this));
    else
        ui->lineEdit_14->setValidator(new DoubleValidator(1, this));
    showWidth(record, milliseconds);
}

void ModelAndParamtSetWidget::choose(const AxisRecord& record, const ModeChoice& choice, bool on)
{
    QRadioButton* const other = ui.get()->*(on ? choice.off : choice.on);
    other->setChecked(false);
    record.setFlag(choice.key, on);
}

void ModelAndParamtSetWidget::nameThirdRow(bool rotating)
{
    ui->label_4->setText(rotating ? tr("Period Setting") : tr("Soft Limit"));
}

CommitResult ModelAndParamtSetWidget::commit(QLineEdit* Form::*edit)
{
    const ModeField& field = modeField(edit);
    return commitNumber(*(ui.get()->*edit), *field.rule, field.key, m_projectName, m_axisId);
}

void ModelAndParamtSetWidget::commitWidth()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const ModeField& row = modeField(&Form::lineEdit_14);
    const bool milliseconds = record.isTrue(widthUnitChoice.key);
    QLineEdit& field = *ui->lineEdit_14;
    const CommitResult result = commitNumber(field, *row.rule,
        { [&] { return compareWidthText(record.text(row.key), milliseconds); },
            [&](const QString& text) { record.set(row.key, text); },
            [&](const QString& other) { return record.text(other); } });
    if (result == CommitResult::Stored && milliseconds)
        field.setText(QString(QChar(field.text().toUInt(nullptr, 10))));
}

void ModelAndParamtSetWidget::showWidth(const AxisRecord& record, bool milliseconds)
{
    ui->lineEdit_14->setText(compareWidthText(record.text(modeField(&Form::lineEdit_14).key), milliseconds));
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

void ModelAndParamtSetWidget::setFlag(QCheckBox* Form::*box, bool on)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const ModeFlag& flag = modeFlag(box);
    record.setFlag(flag.key, on);
    for (const ModeControl control : flag.enables)
        control(*ui)->setEnabled(on);
}

void ModelAndParamtSetWidget::setLogic(QComboBox* Form::*box, int index)
{
    write(modeLogic(box).key, index != 0 ? AxisTrue : AxisFalse);
}

void ModelAndParamtSetWidget::setPoint(QComboBox* Form::*box)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const int point = pointOfName(record.model()->getInputPointMap(), (ui.get()->*box)->currentText());
    record.set(modePoint(box).key, QString::number(point, 10));
}
