#include "online/OnlineDebugFields.h"

const std::array<OnlineDebugField, OnlineDebugFieldCount>& onlineDebugFields()
{
    using Form = Ui_OnlineDebugWidget;
    using Param = OnlineDebugParam;
    static const NumberRule wide{ NumberKind::Real, -9999999, 9999999 };
    static const NumberRule percent{ NumberKind::NarrowedUnsigned, 0, 1000 };
    static const NumberRule notNegative{ NumberKind::Real, 0, 9999999 };
    static const std::array<OnlineDebugField, OnlineDebugFieldCount> fields{ {
        { &Form::presetPositionLineEdit, &Param::presetPosition, wide },
        { &Form::originOffsetLineEdit, &Param::originOffset, wide },
        { &Form::speedMultiplierLineEdit, &Param::speedMultiplier, percent },
        { &Form::posJogSpeedLineEdit, &Param::posJogSpeed, wide },
        { &Form::posJogAccLineEdit, &Param::posJogAcc, wide },
        { &Form::negJogSpeedLineEdit, &Param::negJogSpeed, wide },
        { &Form::negJogAccLineEdit, &Param::negJogAcc, wide },
        { &Form::positionLineEdit, &Param::position, wide },
        { &Form::velocityLineEdit, &Param::velocity, wide },
        { &Form::accLineEdit, &Param::acc, wide },
        { &Form::decLineEdit, &Param::dec, wide },
        { &Form::jerkLineEdit, &Param::jerk, notNegative },
    } };
    return fields;
}
