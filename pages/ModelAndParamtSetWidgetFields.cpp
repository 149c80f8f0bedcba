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

/// The row of a table that is about a control; there has to be one.
template <typename Row, typename Member>
const Row& rowOf(const QVector<Row>& rows, Member Row::*control, Member wanted)
{
    const auto row = std::find_if(
        rows.begin(), rows.end(), [control, wanted](const Row& candidate) { return candidate.*control == wanted; });
    Q_ASSERT(row != rows.end());
    return *row;
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
        { &Form::lineEdit_14, QStringLiteral("CompareOutputWidth"), NumberRule{ NumberKind::Tenths, 0.0, 65535.0 } },
    };
    return fields;
}

const ModeField& modeField(QLineEdit* Form::*edit)
{
    return rowOf(modeFields(), &ModeField::edit, edit);
}

QString compareWidthText(const QString& stored, bool milliseconds)
{
    const float width = stored.toFloat();
    return milliseconds ? QString::number(cut(width), 10) : QString::number(width, 'f', 1);
}

const ModeFlag& modeFlag(QCheckBox* Form::*box)
{
    static const QVector<ModeFlag> flags{
        { &Form::checkBox, QStringLiteral("SoftLimitEnable"), false,
            { modeControl<&Form::lineEdit>, modeControl<&Form::lineEdit_2> } },
        { &Form::checkBox_2, QStringLiteral("ErrorStopEnable"), true, {} },
        { &Form::checkBox_3, QStringLiteral("CompareOutEnable"), true,
            { modeControl<&Form::compareOutputPinCheckBox>, modeControl<&Form::lineEdit_14>,
                modeControl<&Form::radioButton_5>, modeControl<&Form::radioButton_6> } },
        { &Form::checkBox_4, QStringLiteral("PresetEnable"), true, { modeControl<&Form::inputPinComboBox> } },
        { &Form::probe1checkBox, QStringLiteral("Probe1Enable"), true, { modeControl<&Form::probe1ComboBox> } },
        { &Form::probe2checkBox, QStringLiteral("Probe2Enable"), true, { modeControl<&Form::probe2ComboBox> } },
    };
    return rowOf(flags, &ModeFlag::box, box);
}

const ModeChoice encoderChoice{ QStringLiteral("EncoderMode"), &Form::radioButton, &Form::radioButton_2 };
const ModeChoice modeChoice{ QStringLiteral("ModeSet"), &Form::radioButton_3, &Form::radioButton_4 };
const ModeChoice widthUnitChoice{ QStringLiteral("CompareOutputWidthUnit"), &Form::radioButton_6,
    &Form::radioButton_5 };

const ModePoint& modePoint(QComboBox* Form::*box)
{
    static const QString probes = QStringLiteral("ProbelInputPoint");
    static const QVector<ModePoint> points{
        { &Form::probe1ComboBox, QStringLiteral("Probe1"), probes },
        { &Form::probe2ComboBox, QStringLiteral("Probe2"), probes },
        { &Form::inputPinComboBox, QStringLiteral("Preset"), QStringLiteral("HightSpeedCountInputPoint") },
    };
    return rowOf(points, &ModePoint::box, box);
}

int pointOfName(const QMap<int, QString>& points, const QString& name)
{
    return points.key(name, 0);
}

const ModeLogic& modeLogic(QComboBox* Form::*box)
{
    static const QVector<ModeLogic> logics{
        { &Form::HardLimPosBox, QStringLiteral("HardLimitPos") },
        { &Form::HardLimNegBox, QStringLiteral("HardLimitNeg") },
    };
    return rowOf(logics, &ModeLogic::box, box);
}
