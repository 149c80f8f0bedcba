#pragma once

#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVector>

/// An axis as it goes to a controller and comes back: its name and its parameters under the keys of the record.
struct ControllerAxis {
    QString name;
    QMap<QString, QString> values;
};

/// What became of a download: 0, or a code with the axis, the parameter and the reason.
struct DownloadOutcome {
    short result = 0;
    QString axis;
    QString key;
    QString reason;
    /// The controller's count of its downloads with this one; 0 when it was refused or the controller keeps none.
    quint64 revision = 0;
};

Q_DECLARE_METATYPE(ControllerAxis)
Q_DECLARE_METATYPE(QVector<ControllerAxis>)
Q_DECLARE_METATYPE(DownloadOutcome)
