#pragma once

#include "ui_OriginReturnSetWidget.h"

#include <QString>

#include <array>

/// One of the three signals of homing: its controls in the form and its keys in the record.
struct HomeSignal {
    using Form = Ui_OriginReturnSetWidget;
    QCheckBox* Form::*enable;
    CLineEdit* Form::*pin;
    QToolButton* Form::*picker;
    QRadioButton* Form::*positive;
    QRadioButton* Form::*negative;
    QString enableKey;
    QString pinKey;
    QString logicKey;
    /// Key of the record's view information that names the pin's line edit.
    QString viewInfoKey;
};

/// Rows of the table, in its order.
enum HomeSignalId { PositiveLimitSignal, NegativeLimitSignal, OriginSignal, HomeSignalCount };

const std::array<HomeSignal, HomeSignalCount>& homeSignals();
