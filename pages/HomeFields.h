#pragma once

#include "axisdata/NumberRule.h"

#include <QString>

#include <array>

class QLineEdit;

namespace Ui {
class OriginReturnSetWidget;
}

/// What a numeric field of the homing page means.
struct HomeField {
    QLineEdit* Ui::OriginReturnSetWidget::*edit;
    /// Key of the record that holds it.
    QString key;
    NumberRule rule;
};

/// Rows of the table, in its order, which is that of loading.
enum HomeFieldId { HomeSpeedField, HomeAccelerationField, HomeCloseSpeedField, HomeTimeOutField, HomeFieldCount };

const std::array<HomeField, HomeFieldCount>& homeFields();
