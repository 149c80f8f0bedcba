#pragma once

#include <QJsonObject>

/// Two controllers made for the rules of a change from one to the other. Every kind of match and mismatch between
/// their lists stands beside its case in AxisRevalidationTest.
namespace ControllerLists {

QJsonObject former();
QJsonObject latter();

} // namespace ControllerLists
