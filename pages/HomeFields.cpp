#include "pages/HomeFields.h"

#include "ui_OriginReturnSetWidget.h"

const std::array<HomeField, HomeFieldCount>& homeFields()
{
    using Form = Ui::OriginReturnSetWidget;
    const auto stored = [](const char* key) { return NumberBound::stored(QString::fromLatin1(key)); };
    static const std::array<HomeField, HomeFieldCount> fields{ {
        { &Form::lineEdit_7, QStringLiteral("HomeSpeed"), { NumberKind::Real, stored("HomeCloseSpeed"), 9999999 } },
        { &Form::lineEdit_8, QStringLiteral("HomeAcc"), { NumberKind::Real, 0.01, 9999999 } },
        { &Form::lineEdit_9, QStringLiteral("HomeCloseSpeed"), { NumberKind::Real, 0.01, stored("HomeSpeed") } },
        { &Form::lineEdit_10, QStringLiteral("HomeTimeOut"), { NumberKind::Unsigned, 1, 2147483647 } },
    } };
    return fields;
}
