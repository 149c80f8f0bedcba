#pragma once

#include <QString>

/// What the online page keeps for itself while it lives. Numbers are texts, exactly as they stand in the fields;
/// requests are built from them and never from the widgets, so that a text still being edited does not count. Nothing
/// of this is stored with the axis.
struct OnlineDebugParam {
    QString presetPosition = QStringLiteral("0");
    QString originOffset = QStringLiteral("0");
    /// Percent.
    QString speedMultiplier = QStringLiteral("100");
    QString posJogSpeed = QStringLiteral("10");
    QString posJogAcc = QStringLiteral("10");
    QString negJogSpeed = QStringLiteral("10");
    QString negJogAcc = QStringLiteral("10");
    QString motionType;
    QString curveType;
    QString position = QStringLiteral("0");
    QString velocity = QStringLiteral("10");
    QString acc = QStringLiteral("10");
    QString dec = QStringLiteral("10");
    QString jerk = QStringLiteral("0");
    /// As the last status reply said.
    bool debugMode = false;
    bool axisEnabled = false;
    /// Answers since the last press: 0 none, 1 and 2 successes, 3 a failure has been shown.
    int posJogState = 0;
    int negJogState = 0;
};
