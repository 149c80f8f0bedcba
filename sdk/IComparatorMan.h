#pragma once

#include "sdk/Export.h"

#include <QObject>

class IComparator;

/// Compares projects through the comparators that plug-ins give it. Main thread only.
class KESTRUN_SDK_EXPORT IComparatorMan : public QObject {
    Q_OBJECT

public:
    explicit IComparatorMan(QObject* parent = nullptr);
    ~IComparatorMan() override;

    /// True: the manager has taken the comparator and deletes it. False (there is one of that type already): the
    /// caller keeps it.
    virtual bool addComparator(IComparator* comparator) = 0;

signals:
    /// A comparison has begun or ended.
    void cmpStateChanged(bool comparing);
};
