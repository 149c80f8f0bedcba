#pragma once

#include "host/components/Export.h"

#include <QObject>
#include <QString>
#include <QVariant>

/// What a number check has refused.
struct NumberRefusal {
    QString text;
    QVariant value;
    QVariant low;
    QVariant high;
    bool lowExcluded = false;
    bool highExcluded = false;

    /// The range as a user reads it: "0.01 to 9999999", "above 5, at most 10".
    KESTRUN_COMPONENTS_EXPORT QString range() const;
};

/// Tells the host of refused numbers, so that it can show value and range without a modal box. One for the process,
/// main thread only.
class KESTRUN_COMPONENTS_EXPORT NumberRefusalNotifier : public QObject {
    Q_OBJECT

public:
    static NumberRefusalNotifier* instance();
    void notify(const NumberRefusal& refusal);

signals:
    void numberRefused(const NumberRefusal& refusal);
};
