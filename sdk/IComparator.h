#pragma once

#include "sdk/Export.h"

#include <QtGlobal>

#include <QString>

class QObject;

/// One side of a comparison of two nodes.
struct CompareItem {
    /// Must not be empty; for the host's own use.
    QString title;
    QString projectName;
    QString nodePath;
    /// Editor type key of the node.
    QString typeKey;
    /// Id of the object.
    quint32 id = 0;
};

/// Tells whether two objects of an editor type are the same. Main thread only.
class KESTRUN_SDK_EXPORT IComparator {
public:
    IComparator() = default;
    virtual ~IComparator();
    Q_DISABLE_COPY(IComparator)

    /// The editor type that the comparator handles.
    virtual QString typeKey() = 0;
    virtual bool compare(const CompareItem& a, const CompareItem& b) = 0;
    virtual bool optionCheck() = 0;
    virtual QObject* optionObject() = 0;
};
