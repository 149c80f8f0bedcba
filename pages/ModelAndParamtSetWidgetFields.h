#pragma once

#include "axisdata/NumberRule.h"

#include <QString>
#include <QVector>

#include <optional>

class QLineEdit;

namespace Ui {
class ModelAndParamtSetWidget;
}

/// What a numeric field of the mode and parameter page means.
struct ModeField {
    QLineEdit* Ui::ModelAndParamtSetWidget::*edit;
    /// Key of the record that holds it.
    QString key;
    /// Without one the field is stored as a real on every change of its text, whatever it says.
    std::optional<NumberRule> rule;
};

/// The fields that show the text of their key as it stands, in the order in which they are loaded.
const QVector<ModeField>& modeFields();
/// The row of a field; it has to be one of those above.
const ModeField& modeField(QLineEdit* Ui::ModelAndParamtSetWidget::*edit);

/// The width of the compare output: its rule, and how a stored width is shown by its unit.
const NumberRule& compareWidthRule();
/// Cut to a whole number for milliseconds, with one digit behind the point for user units.
QString compareWidthText(const QString& stored, bool milliseconds);
