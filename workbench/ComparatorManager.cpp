#include "workbench/ComparatorManager.h"

#include "sdk/IComparator.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"

ComparatorManager::ComparatorManager(IConfiguration& cookies, QObject* parent)
    : IComparatorMan(parent), m_cookies(cookies)
{
}

ComparatorManager::~ComparatorManager() = default;

bool ComparatorManager::addComparator(IComparator* comparator)
{
    if (!comparator || m_comparators.count(comparator->typeKey()) > 0)
        return false;
    m_comparators[comparator->typeKey()].reset(comparator);
    return true;
}

IComparator* ComparatorManager::comparator(const QString& typeKey) const
{
    const auto found = m_comparators.find(typeKey);
    return found == m_comparators.end() ? nullptr : found->second.get();
}

void ComparatorManager::clear()
{
    m_comparators.clear();
}

void ComparatorManager::setComparing(bool comparing)
{
    if (m_comparing == comparing)
        return;
    m_comparing = comparing;
    // The cookie first: an editor that is opened by a slot of the signal must see the new state.
    m_cookies.setValue(Solution::ConfigKey::projectComparison(), comparing);
    emit cmpStateChanged(comparing);
}
