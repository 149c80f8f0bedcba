#include "pages/ModelAndParamtSetWidgetVisibility.h"

#include "axisdata/AxisConstants.h"
#include "pages/ModelAndParamtSetWidgetFields.h"
#include "ui_ModelAndParamtSetWidget.h"

namespace {

using Form = Ui::ModelAndParamtSetWidget;

/// What becomes of a control. The last four ask the controller.
enum Cell { keep, show, hide, inputSignals, pulseCompare, encoderCompare, inputFilter };

struct Row {
    ModeControl control;
    Cell pulse;
    Cell encoder;
    Cell virtualAxis;
    Cell etherCat;
};

const Row rows[] = {
    { modeControl<&Form::label_2>, show, hide, hide, show },
    { modeControl<&Form::groupBox>, show, hide, hide, show },
    { modeControl<&Form::label_4>, keep, keep, keep, show },
    { modeControl<&Form::stackedWidget>, keep, keep, keep, show },
    { modeControl<&Form::label_13>, show, hide, show, show },
    { modeControl<&Form::groupBox_4>, show, hide, show, show },
    { modeControl<&Form::label_18>, show, hide, show, show },
    { modeControl<&Form::groupBox_5>, show, hide, show, show },
    { modeControl<&Form::label_23>, show, hide, show, show },
    { modeControl<&Form::groupBox_6>, show, hide, show, show },
    { modeControl<&Form::label_29>, hide, keep, hide, keep },
    { modeControl<&Form::label_30>, hide, keep, hide, keep },
    { modeControl<&Form::lineEdit_11>, hide, show, hide, keep },
    { modeControl<&Form::label_28>, hide, hide, hide, show },
    { modeControl<&Form::groupBox_7>, hide, hide, hide, show },
    { modeControl<&Form::label_16>, show, hide, show, hide },
    { modeControl<&Form::groupBox_8>, show, hide, show, hide },
    { modeControl<&Form::label_34>, hide, hide, hide, show },
    { modeControl<&Form::groupBox_9>, hide, hide, hide, show },
    { modeControl<&Form::label_39>, inputSignals, show, hide, hide },
    { modeControl<&Form::groupBox_11>, inputSignals, show, hide, hide },
    { modeControl<&Form::widget>, show, inputSignals, show, show },
    { modeControl<&Form::widget_2>, hide, show, keep, keep },
    { modeControl<&Form::label_41>, hide, show, keep, keep },
    { modeControl<&Form::outputMethodComboBox>, hide, show, keep, keep },
    { modeControl<&Form::label_45>, hide, show, keep, keep },
    { modeControl<&Form::inputSignalComboBox>, hide, show, keep, keep },
    { modeControl<&Form::widget_3>, hide, inputFilter, keep, keep },
    { modeControl<&Form::label_44>, hide, hide, keep, keep },
    { modeControl<&Form::lineEdit_13>, hide, hide, keep, keep },
    { modeControl<&Form::label_43>, hide, hide, keep, keep },
    { modeControl<&Form::checkBox_4>, hide, show, keep, keep },
    { modeControl<&Form::inputPinComboBox>, hide, show, keep, keep },
    { modeControl<&Form::label_40>, show, hide, hide, hide },
    { modeControl<&Form::groupBox_12>, show, hide, hide, hide },
    { modeControl<&Form::label_49>, show, hide, keep, keep },
    { modeControl<&Form::pulseMethodComboBox>, show, hide, keep, keep },
    { modeControl<&Form::label_36>, pulseCompare, encoderCompare, hide, hide },
    { modeControl<&Form::groupBox_13>, pulseCompare, encoderCompare, hide, hide },
};

Cell cellOf(const Row& row, ModeAxisKind kind)
{
    switch (kind) {
    case ModeAxisKind::Pulse:
        return row.pulse;
    case ModeAxisKind::Encoder:
        return row.encoder;
    case ModeAxisKind::Virtual:
        return row.virtualAxis;
    case ModeAxisKind::EtherCAT:
        return row.etherCat;
    }
    Q_UNREACHABLE();
}

ModeRows partOf(Cell cell)
{
    switch (cell) {
    case inputSignals:
        return ModeRows::InputSignals;
    case pulseCompare:
    case encoderCompare:
        return ModeRows::CompareOutput;
    case inputFilter:
        return ModeRows::InputFilter;
    case keep:
    case show:
    case hide:
        break;
    }
    return ModeRows::Plain;
}

bool isShown(Cell cell, const ControllerFamily& family, uint device)
{
    switch (cell) {
    case inputSignals:
        return family.hasInputSignals(device);
    case pulseCompare:
        return family.hasPulseCompareOutput(device);
    case encoderCompare:
        return family.hasEncoderCompareOutput(device);
    case inputFilter:
        return family.hasInputFilter();
    case keep:
    case show:
    case hide:
        break;
    }
    return cell == show;
}

} // namespace

ControllerFamily::ControllerFamily(const QString& model)
    : m_nv2(NV2ModelSet.contains(model)), m_nv3t(NV3TModelSet.contains(model)),
      m_q12(model.compare(QLatin1String("NV3T_70Q12"), Qt::CaseInsensitive) == 0
          || model.compare(QLatin1String("NV3T_70Q12E"), Qt::CaseInsensitive) == 0)
{
}

bool ControllerFamily::hasInputSignals(uint device) const
{
    return !(m_nv2 && device > 1) && !(m_q12 && device > 3);
}

bool ControllerFamily::hasPulseCompareOutput(uint device) const
{
    return m_nv3t && !(m_q12 && device > 3);
}

bool ControllerFamily::hasEncoderCompareOutput(uint device) const
{
    return !m_nv2 && !(m_q12 && device > 3);
}

ModeAxisKind modeAxisKind(const QString& axisType)
{
    if (axisType == AxisTypePulse)
        return ModeAxisKind::Pulse;
    if (axisType == AxisTypeEncoder)
        return ModeAxisKind::Encoder;
    if (axisType == AxisTypeVirtual)
        return ModeAxisKind::Virtual;
    return ModeAxisKind::EtherCAT;
}

void applyModeVisibility(
    const Form& form, ModeRows part, ModeAxisKind kind, const ControllerFamily& family, uint device)
{
    for (const Row& row : rows) {
        const Cell cell = cellOf(row, kind);
        if (cell != keep && partOf(cell) == part)
            row.control(form)->setVisible(isShown(cell, family, device));
    }
}
