#pragma once

#include "host/projectmodel/AxisRecordData.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// Everything that a project file holds.
struct ProjectContents {
    QMap<QString, QString> settings;
    QMap<QString, QString> sources;
    QVector<AxisRecordData> axes;
    /// The descriptions of the present and of the former controller; the second may be empty.
    QByteArray controller;
    QByteArray formerController;
};

/// A record to store: its present contents and what the store holds of it, so that only differences are written.
struct AxisChange {
    AxisRecordData now;
    AxisRecordData stored;
    bool isStored = false;
};

/// What one durable transaction changes.
struct ProjectChanges {
    QVector<AxisChange> axes;
    QVector<quint32> removedAxes;
    QMap<QString, QString> settings;
    QMap<QString, QString> sources;
    QStringList removedSources;
    bool controllerChanged = false;
    QByteArray controller;
    QByteArray formerController;

    bool isEmpty() const;
};

/// The entries of the first map that the second has not, or has with another text.
QMap<QString, QString> differences(const QMap<QString, QString>& now, const QMap<QString, QString>& stored);
