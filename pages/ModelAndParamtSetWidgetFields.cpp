#include "pages/ModelAndParamtSetWidgetFields.h"

#include "ui_ModelAndParamtSetWidget.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Form = Ui::ModelAndParamtSetWidget;

ModeField real(QLineEdit* Form::*edit, const char* key, const NumberBound& low, const NumberBound& high)
{
    return { edit, QString::fromLatin1(key), NumberRule{ NumberKind::Real, low, high } };
}

ModeField unchecked(QLineEdit* Form::*edit, const char* key)
{
    return { edit, QString::fromLatin1(key), std::nullopt };
}

NumberBound stored(const char* key, bool excluded = false)
{
    return NumberBound::stored(QString::fromLatin1(key), excluded);
}

/// The number without its fraction; what no integer can hold is brought to the nearest one that can, no number is 0.
int cut(float value)
{
    if (std::isnan(value))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(static_cast<double>(value), lowest, highest));
}

} // namespace

const QVector<ModeField>& modeFields()
{
    static const QVector<ModeField> fields{
        real(&Form::lineEdit, "SoftLimitNeg", -9999999, stored("SoftLimitPos", true)),
        real(&Form::lineEdit_2, "SoftLimitPos", stored("SoftLimitNeg", true), 9999999),
        real(&Form::lineEdit_12, "RotationPeriod", 0.01, 9999999),
        real(&Form::lineEdit_3, "LimitDec", 0, 9999999),
        real(&Form::lineEdit_4, "AxisErrorDec", 0.01, 9999999),
        unchecked(&Form::lineEdit_5, "FollowErrorThreshold"),
        real(&Form::lineEdit_6, "VelocityThreshold", 0.01, 9999999),
        real(&Form::lineEdit_7, "MaxVel", 0, 9999999),
        real(&Form::lineEdit_8, "MaxAcc", 0, 9999999),
        real(&Form::lineEdit_11, "JogMaxVel", 0.01, stored("MaxVel")),
        unchecked(&Form::lineEdit_9, "PosTorqueMaxValue"),
        unchecked(&Form::lineEdit_10, "NegTorqueMaxValue"),
        { &Form::lineEdit_13, QStringLiteral("InputSignalFilterTime"),
            NumberRule{ NumberKind::NarrowedUnsigned, 0, 150 } },
    };
    return fields;
}

const ModeField& modeField(QLineEdit* Form::*edit)
{
    const QVector<ModeField>& fields = modeFields();
    const auto row
        = std::find_if(fields.begin(), fields.end(), [edit](const ModeField& field) { return field.edit == edit; });
    Q_ASSERT(row != fields.end());
    return *row;
}

const NumberRule& compareWidthRule()
{
    static const NumberRule rule{ NumberKind::Tenths, 0.0, 65535.0 };
    return rule;
}

QString compareWidthText(const QString& stored, bool milliseconds)
{
    const float width = stored.toFloat();
    return milliseconds ? QString::number(cut(width), 10) : QString::number(width, 'f', 1);
}
