#pragma once

#include "workbench/monitor/CurveRing.h"

#include <QIcon>
#include <QPen>

class QPalette;

/// How curves are drawn. An axis has a colour; set and actual values differ by the line, as do axes that share a
/// colour, so that curves can be told apart without colours.
namespace CurveLook {

/// True when text is darker than what it stands on.
bool isLight(const QPalette& palette);
QPen pen(int axisNo, CurveKind kind, bool light);
/// A short piece of the line.
QIcon sample(const QPen& pen);

} // namespace CurveLook
