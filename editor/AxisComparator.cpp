#include "editor/AxisComparator.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"

#include <QMap>
#include <QVariant>

namespace {

bool isComplete(const CompareItem& item)
{
    return !item.title.isEmpty() && !item.projectName.isEmpty() && !item.nodePath.isEmpty() && !item.typeKey.isEmpty();
}

QMap<QString, QString> compareData(const CompareItem& item)
{
    // The record is found by project and id; the node is only asked.
    if (auto* view = Solution::serviceAs<Solution::View>(Solution::ServiceKey::view()))
        view->nodeProperty(item.nodePath, QStringLiteral("ObjPath"), QVariant());
    const AxisRecord record(item.projectName, item.id);
    return record ? record->getCompareData() : QMap<QString, QString>();
}

} // namespace

AxisComparator::AxisComparator() = default;

AxisComparator::~AxisComparator() = default;

QString AxisComparator::typeKey()
{
    return AxisViewKey;
}

bool AxisComparator::compare(const CompareItem& a, const CompareItem& b)
{
    if (!isComplete(a) || !isComplete(b))
        return false;
    if (a.typeKey != AxisViewKey || b.typeKey != AxisViewKey)
        return false;
    const QMap<QString, QString> left = compareData(a);
    return left == compareData(b);
}

bool AxisComparator::optionCheck()
{
    return false;
}

QObject* AxisComparator::optionObject()
{
    return nullptr;
}
