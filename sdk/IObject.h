#pragma once

#include "sdk/Export.h"

#include <QHash>
#include <QObject>
#include <QString>

/// An object that carries a table of named objects.
///
/// The application's table is how host and plug-ins publish services to one another. The table owns nothing:
/// who puts an entry in keeps the object alive until the host has emptied the table. Main thread only, unlocked.
class KESTRUN_SDK_EXPORT IObject : public QObject {
    Q_OBJECT

public:
    explicit IObject(QObject* parent = nullptr);
    ~IObject() override;

    /// Named objects. A key that is not there yields null; an entry that exists is not to be replaced.
    QHash<QString, QObject*> objectTable;
};
