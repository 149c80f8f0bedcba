#pragma once

#include "sdk/IComparator.h"

/// Tells the host's project comparison whether two axis nodes hold the same configuration. Stateless. The comparison
/// manager owns the one instance that the plug-in gives it.
class AxisComparator : public IComparator {
public:
    AxisComparator();
    ~AxisComparator() override;

    /// "AxisView".
    QString typeKey() override;
    /// True when both records compare equal. Items with an empty text, or of another editor type, are never equal. An
    /// item whose project or record is missing counts as an axis without contents.
    bool compare(const CompareItem& a, const CompareItem& b) override;
    bool optionCheck() override;
    QObject* optionObject() override;
};
