#pragma once

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"

#include <QFile>
#include <QString>
#include <QStringList>

#include <vector>

/// What the tests of this folder ask of projects again and again.

/// The description of a controller model that the project ships.
inline ControllerDescription shippedController(const QString& model)
{
    ControllerDescription description;
    QString error;
    if (!description.readFile(QStringLiteral(KESTRUN_CONTROLLER_DIR "/") + model + QStringLiteral(".json"), &error))
        qFatal("%s", qPrintable(error));
    return description;
}

inline std::vector<AxisTable*> recordsOf(const AxisModel* model)
{
    std::vector<AxisTable*> records;
    model->allAxisTables(records);
    return records;
}

inline QStringList namesOf(const AxisModel* model)
{
    QStringList names;
    for (const AxisTable* each : recordsOf(model))
        names.append(each->name());
    return names;
}

/// The texts that the records have under a key, in their order; "-" where a record lacks it.
inline QStringList valuesOf(const AxisModel* model, const QString& key)
{
    QStringList values;
    for (const AxisTable* each : recordsOf(model))
        values.append(each->property(key, QStringLiteral("-")));
    return values;
}

inline QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}
