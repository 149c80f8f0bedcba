#pragma once

#include "host/projectmodel/Export.h"

#include <QMap>
#include <QPointer>
#include <QString>

class AxisTable;

/// While it lives, an editor can be built on an axis that nobody wants to edit: the record takes what is written, tells
/// nobody of it, and its `save` stores nothing and answers true. At the end its properties are as they were before.
/// What stays is the view information, in memory: it goes to the file with the record's next real save. One at a time
/// for a record. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT AxisTrial {
public:
    explicit AxisTrial(AxisTable& axis);
    ~AxisTrial();
    AxisTrial(const AxisTrial&) = delete;
    AxisTrial& operator=(const AxisTrial&) = delete;

private:
    const QPointer<AxisTable> m_axis;
    const QMap<QString, QString> m_properties;
    const bool m_pageBuild;
};
