#pragma once

#include "sdk/IComparatorMan.h"

#include <memory>
#include <vector>

class CallLog;

/// Keeps the comparators it is given.
class TestComparatorMan : public IComparatorMan {
    Q_OBJECT

public:
    explicit TestComparatorMan(CallLog& log);
    ~TestComparatorMan() override;

    bool addComparator(IComparator* comparator) override;

    /// Begins or ends a comparison: emits cmpStateChanged.
    void setComparing(bool comparing);

    std::vector<std::unique_ptr<IComparator>> comparators;
    /// True: comparators are refused and stay with their caller.
    bool refuse = false;

private:
    CallLog& m_log;
};
