#pragma once

#include "axisdata/NumberRule.h"
#include "online/OnlineDebugParam.h"
#include "ui_OnlineDebugWidget.h"

#include <array>

/// A numeric field of the online page: where it is typed, where its last good text is kept, and what it may hold.
struct OnlineDebugField {
    QLineEdit* Ui_OnlineDebugWidget::*edit;
    QString OnlineDebugParam::*text;
    NumberRule rule;
};

/// Rows of the table, in its order.
enum OnlineDebugFieldId {
    PresetPositionField,
    OriginOffsetField,
    SpeedMultiplierField,
    PosJogSpeedField,
    PosJogAccField,
    NegJogSpeedField,
    NegJogAccField,
    PositionField,
    VelocityField,
    AccField,
    DecField,
    JerkField,
    OnlineDebugFieldCount
};

/// The one table of the page's numeric fields. No field is bounded by the limits of the axis record: the controller
/// judges what its axis can do.
const std::array<OnlineDebugField, OnlineDebugFieldCount>& onlineDebugFields();
