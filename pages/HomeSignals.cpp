#include "pages/HomeSignals.h"

const std::array<HomeSignal, HomeSignalCount>& homeSignals()
{
    using Form = Ui_OriginReturnSetWidget;
    static const std::array<HomeSignal, HomeSignalCount> rows{ {
        { &Form::checkBox_1, &Form::lineEditPos, &Form::toolButtonPos, &Form::radioButton_1, &Form::radioButton_2,
            QStringLiteral("PosLimitEnable"), QStringLiteral("PosLimitPin"), QStringLiteral("PosLimitLogic"),
            QStringLiteral("LineEditPosObjectName") },
        { &Form::checkBox_2, &Form::lineEditNeg, &Form::toolButtonNeg, &Form::radioButton_3, &Form::radioButton_4,
            QStringLiteral("NegsLimitEnable"), QStringLiteral("NegLimitPin"), QStringLiteral("NegLimitLogic"),
            QStringLiteral("LineEditNegObjectName") },
        { &Form::checkBox_3, &Form::lineEditOrg, &Form::toolButtonOrg, &Form::radioButton_5, &Form::radioButton_6,
            QStringLiteral("OrgSignalEnable"), QStringLiteral("OrgSignalPin"), QStringLiteral("OrgSignalLogic"),
            QStringLiteral("LineEditOrgObjectName") },
    } };
    return rows;
}
