#pragma once

#include "axisdata/NumberRule.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace Ui {
class ModelAndParamtSetWidget;
}

/// What the controls of the mode and parameter page mean: each key of the record stands here once, beside the control
/// that shows it. The boxes whose lists depend on the axis stand with their slots (ModelAndParamtSetWidget::ListBox).

/// A control of a form, whatever its kind.
using ModeControl = QWidget* (*)(const Ui::ModelAndParamtSetWidget&);

template <auto Member>
QWidget* modeControl(const Ui::ModelAndParamtSetWidget& form)
{
    return form.*Member;
}

/// A numeric field.
struct ModeField {
    QLineEdit* Ui::ModelAndParamtSetWidget::*edit;
    /// Key of the record that holds it.
    QString key;
    /// Without one the field is stored as a real on every change of its text, whatever it says.
    std::optional<NumberRule> rule;

    /// True for a field that takes any real; the filter time is a whole number, and the width goes by its unit.
    bool isReal() const { return !rule || rule->kind == NumberKind::Real; }
};

/// All of them; the reals in the order in which they are loaded.
const QVector<ModeField>& modeFields();
/// The row of a field.
const ModeField& modeField(QLineEdit* Ui::ModelAndParamtSetWidget::*edit);

/// How a stored width of the compare output is shown: cut to a whole number for milliseconds, with one digit behind the
/// point for user units.
QString compareWidthText(const QString& stored, bool milliseconds);

/// A check box.
struct ModeFlag {
    QCheckBox* Ui::ModelAndParamtSetWidget::*box;
    QString key;
    /// What a text that is neither "TRUE" nor "FALSE" reads as.
    bool unknown;
    /// What a change of the box enables and disables.
    QVector<ModeControl> enables;
};

/// The row of a check box.
const ModeFlag& modeFlag(QCheckBox* Ui::ModelAndParamtSetWidget::*box);

/// Two radio buttons that share a key.
struct ModeChoice {
    QString key;
    /// Checked while the key is not "TRUE".
    QRadioButton* Ui::ModelAndParamtSetWidget::*off;
    QRadioButton* Ui::ModelAndParamtSetWidget::*on;
};

/// Increment or absolute encoder mode.
extern const ModeChoice encoderChoice;
/// Linear or rotating axis.
extern const ModeChoice modeChoice;
/// Width of the compare output in user units or milliseconds.
extern const ModeChoice widthUnitChoice;

/// A combo box of input points. The key holds the number of a point, the box shows its name.
struct ModePoint {
    QComboBox* Ui::ModelAndParamtSetWidget::*box;
    QString key;
    /// Option list with the names to choose from.
    QString list;
};

/// The row of such a box.
const ModePoint& modePoint(QComboBox* Ui::ModelAndParamtSetWidget::*box);

/// The number of the point of that name: the lowest if there are several, 0 if there is none.
int pointOfName(const QMap<int, QString>& points, const QString& name);

/// A combo box of two logics that is not loaded from its key: "TRUE" for any entry but the first.
struct ModeLogic {
    QComboBox* Ui::ModelAndParamtSetWidget::*box;
    QString key;
};

/// The row of such a box.
const ModeLogic& modeLogic(QComboBox* Ui::ModelAndParamtSetWidget::*box);
