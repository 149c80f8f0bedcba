#pragma once

#include <QString>

namespace Ui {
class ModelAndParamtSetWidget;
}

/// What the page knows of a controller model by its name alone. A model of no family has none of the three.
class ControllerFamily {
public:
    explicit ControllerFamily(const QString& model);

    /// NV3T family, by exact name.
    bool isNv3t() const { return m_nv3t; }
    /// True when the device at that position can count fast enough for the input signal settings: NV2 models have 2 of
    /// them, the twelve-axis models 4, the others any number.
    bool hasInputSignals(uint device) const;
    /// True when a pulse axis on that output device can switch a compare output.
    bool hasPulseCompareOutput(uint device) const;
    /// The same for an encoder axis on that input device.
    bool hasEncoderCompareOutput(uint device) const;
    /// True when inputs have a filter time and a preset input.
    bool hasInputFilter() const { return !m_nv2; }

private:
    bool m_nv2;
    bool m_nv3t;
    /// One of the pair of twelve-axis models, in any case of letters.
    bool m_q12;
};

/// The kinds of axes that the page tells apart. A type word that is none of the first three counts as the last.
enum class ModeAxisKind { Pulse, Encoder, Virtual, EtherCAT };

ModeAxisKind modeAxisKind(const QString& axisType);

/// The rows of the page by what decides on them besides the kind of axis: nothing, or what its device can do. An update
/// takes them in turns, with other work in between.
enum class ModeRows { Plain, InputSignals, CompareOutput, InputFilter };

/// Shows and hides some rows of the page for an axis on a device of a controller. What the kind of axis leaves alone
/// keeps the state that an earlier kind gave it.
void applyModeVisibility(const Ui::ModelAndParamtSetWidget& form, ModeRows part, ModeAxisKind kind,
    const ControllerFamily& family, uint device);
