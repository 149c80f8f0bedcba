#pragma once

#include "sdk/AxisDefaults.h"

#include <QMap>
#include <QSet>
#include <QString>

/// The constant tables that all axis code includes: the default groups of a record (sdk/AxisDefaults.h) and what the
/// axis code itself knows of particular controller models.

/// Editor type key, mime type, comparator and finder key of axes, and the prefix of their node names.
inline const QString AxisViewKey = QStringLiteral("AxisView");
/// Name of the sub-model that holds the axes.
constexpr const char* axisSubModelName = "AxisModel";

/// The four type words that "AxisType" holds.
inline const QString AxisTypeVirtual = QStringLiteral("Axis_Virtual");
inline const QString AxisTypePulse = QStringLiteral("Axis_Pulse");
inline const QString AxisTypeEncoder = QStringLiteral("Axis_Encoder");
inline const QString AxisTypeEtherCAT = QStringLiteral("Axis_EtherCAT");

/// The boolean words of a record.
inline const QString AxisTrue = QStringLiteral("TRUE");
inline const QString AxisFalse = QStringLiteral("FALSE");

/// Cycle times of the motion control task in microseconds, by their decimal text.
inline const QMap<QString, quint16> CycleTimeChoices{
    { QStringLiteral("4000"), 4000 },
    { QStringLiteral("2000"), 2000 },
    { QStringLiteral("1000"), 1000 },
    { QStringLiteral("750"), 750 },
    { QStringLiteral("500"), 500 },
};

/// Controller models of the NV2 family; names compare exactly.
inline const QSet<QString> NV2ModelSet{
    QStringLiteral("NV2_H48Q6E"),
    QStringLiteral("NV2_H48Q8E"),
};

/// Controller models of the NV3T family; names compare exactly.
inline const QSet<QString> NV3TModelSet{
    QStringLiteral("NV3T_50Q4"),
    QStringLiteral("NV3T_50Q4E"),
    QStringLiteral("NV3T_50Q6"),
    QStringLiteral("NV3T_50Q6E"),
    QStringLiteral("NV3T_70Q6"),
    QStringLiteral("NV3T_70Q6E"),
    QStringLiteral("NV3T_70Q8"),
    QStringLiteral("NV3T_70Q8E"),
    QStringLiteral("NV3T_70Q12"),
    QStringLiteral("NV3T_70Q12E"),
};
