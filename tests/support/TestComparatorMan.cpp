#include "tests/support/TestComparatorMan.h"

#include "sdk/IComparator.h"
#include "tests/support/CallLog.h"

TestComparatorMan::TestComparatorMan(CallLog& log) : m_log(log) { }

TestComparatorMan::~TestComparatorMan() = default;

bool TestComparatorMan::addComparator(IComparator* comparator)
{
    m_log.add("comparatorMan.addComparator", { comparator->typeKey() });
    if (refuse)
        return false;
    comparators.emplace_back(comparator);
    return true;
}

void TestComparatorMan::setComparing(bool comparing)
{
    emit cmpStateChanged(comparing);
}
