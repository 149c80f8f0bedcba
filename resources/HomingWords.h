#pragma once

#include "resources/DrawingStyle.h"
#include "resources/HomingMethods.h"

#include <QString>
#include <QStringList>

/// The words of the homing pictures, in both languages.
namespace drawing {

/// The letter that stands for a signal everywhere in the pictures: N, P, H or Z.
QString signalLetter(homing::Signal signal);
QString signalName(homing::Signal signal, Language language);
QString levelName(bool active, Language language);

QString methodTitle(const homing::Method& method, Language language);
/// What makes the home position, as one sentence.
QString homeRule(const homing::Method& method, Language language);
QString neededSignals(const homing::Method& method, Language language);

/// Where the axis stands at the start of a case: one or two lines.
QStringList startWords(const homing::Method& method, homing::Start start, Language language);

/// What happens at a limit switch.
QString limitWords(homing::Signal limit, homing::LimitAction action, Language language);

/// Heading of a path that comes to the limit before an index pulse.
QString limitFirstWords(homing::Signal limit, Language language);

/// Heading of the row that tells what happens at the limits.
QString limitsHeading(Language language);

/// The explanations of the drawn signs.
struct LegendWords {
    QString start;
    QString search;
    QString close;
    QString edge;
    QString home;
};
LegendWords legendWords(Language language);

} // namespace drawing
