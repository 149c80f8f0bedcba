#include "workbench/ProjectComparison.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SourceModel.h"
#include "sdk/IComparator.h"
#include "workbench/ComparatorManager.h"
#include "workbench/ProjectTree.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace {

QString axisType()
{
    return QStringLiteral("AxisView");
}

/// Names of projects come from base names of files, which hold no slash: this one is never taken.
QString aliasFor(const QString& file)
{
    return QLatin1Char('/') + ProjectModelManager::projectNameForFile(file);
}

std::vector<AxisTable*> tablesOf(const ProjectModel& project)
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    return tables;
}

QMap<QString, QString> dataOf(const ProjectModel& project, quint32 id)
{
    const AxisTable* table = project.axisModel()->axisTable(id);
    return table ? table->getCompareData() : QMap<QString, QString>();
}

ComparedAxis::State stateOf(bool equal)
{
    return equal ? ComparedAxis::Equal : ComparedAxis::Different;
}

} // namespace

ProjectComparison::ProjectComparison(ProjectTree& tree, ComparatorManager& comparators, QObject* parent)
    : QObject(parent), m_tree(tree), m_comparators(comparators), m_refresh(new QTimer(this))
{
    m_refresh->setSingleShot(true);
    m_refresh->setInterval(0);
    connect(m_refresh, &QTimer::timeout, this, &ProjectComparison::refresh);
    connect(ProjectModelManager::instance(), &ProjectModelManager::projectAboutToClose, this,
        &ProjectComparison::onProjectAboutToClose);
}

ProjectComparison::~ProjectComparison()
{
    stop();
}

bool ProjectComparison::start(ProjectModel& here, const QString& file, QString* error)
{
    stop();
    if (!m_comparators.comparator(axisType())) {
        *error = tr("%1: no plug-in is loaded that compares axes.").arg(file);
        return false;
    }
    ProjectModel* other = ProjectModelManager::instance()->openProjectReadOnly(file, error, aliasFor(file));
    if (!other)
        return false;
    m_here = &here;
    m_other = other;
    m_comparators.setComparing(true);
    follow();
    refresh();
    return true;
}

void ProjectComparison::stop()
{
    if (m_other)
        ProjectModelManager::instance()->closeProject(m_other);
}

void ProjectComparison::giveUp(const QString& file)
{
    if (isOn() && QFileInfo(otherFile()) == QFileInfo(file))
        stop();
}

void ProjectComparison::onProjectAboutToClose(ProjectModel* project)
{
    if (isOn() && project == m_here)
        return stop();
    if (!isOn() || project != m_other)
        return;
    m_here->disconnect(this);
    m_here->axisModel()->disconnect(this);
    m_here->sourceModel()->disconnect(this);
    m_here = nullptr;
    m_other = nullptr;
    m_axes.clear();
    m_parts.clear();
    m_comparators.setComparing(false);
    emit changed();
}

QString ProjectComparison::otherFile() const
{
    return m_other ? m_other->filePath() : QString();
}

void ProjectComparison::follow()
{
    const AxisModel* axes = m_here->axisModel();
    connect(axes, &AxisModel::axisAdded, this, &ProjectComparison::scheduleRefresh);
    connect(axes, &AxisModel::axisRemoved, this, &ProjectComparison::scheduleRefresh);
    connect(axes, &AxisModel::axisRenamed, this, &ProjectComparison::scheduleRefresh);
    connect(axes, &AxisModel::cycleTimeChanged, this, &ProjectComparison::scheduleRefresh);
    connect(m_here->sourceModel(), &SourceModel::sourcesChanged, this, &ProjectComparison::scheduleRefresh);
    connect(m_here, &ProjectModel::controllerChanged, this, &ProjectComparison::scheduleRefresh);
    connect(m_here, &ProjectModel::modifiedChanged, this, &ProjectComparison::scheduleRefresh);
}

void ProjectComparison::scheduleRefresh()
{
    m_refresh->start();
}

void ProjectComparison::refresh()
{
    if (!isOn())
        return;
    compareAxes();
    compareParts();
    emit changed();
}

void ProjectComparison::compareAxes()
{
    QHash<QString, quint32> there;
    const std::vector<AxisTable*> others = tablesOf(*m_other);
    for (const AxisTable* table : others)
        there.insert(table->name().toCaseFolded(), table->id());
    m_axes.clear();
    for (const AxisTable* table : tablesOf(*m_here)) {
        m_axes.append(judge(table->name(), table->id(), there.take(table->name().toCaseFolded())));
        connect(table, &ModelObject::dataChanged, this, &ProjectComparison::scheduleRefresh, Qt::UniqueConnection);
    }
    for (const AxisTable* table : others) {
        if (there.contains(table->name().toCaseFolded()))
            m_axes.append(judge(table->name(), 0, table->id()));
    }
}

void ProjectComparison::compareParts()
{
    const ControllerDescription& here = m_here->controller();
    const ControllerDescription& there = m_other->controller();
    m_parts.clear();
    // Two controllers of one model are not the same when their descriptions are not.
    m_parts.append({ ComparedPart::Controller, stateOf(here.json() == there.json()), here.model(), there.model() });
    const QString style = QString::number(m_here->programStyle());
    const QString otherStyle = QString::number(m_other->programStyle());
    m_parts.append({ ComparedPart::ProgramStyle, stateOf(style == otherStyle), style, otherStyle });
    const QString cycle = m_here->axisModel()->getMotionTaskCfgCycleTime();
    const QString otherCycle = m_other->axisModel()->getMotionTaskCfgCycleTime();
    m_parts.append({ ComparedPart::CycleTime, stateOf(cycle == otherCycle), cycle, otherCycle });
    compareSources();
}

void ProjectComparison::compareSources()
{
    const SourceModel& here = *m_here->sourceModel();
    const SourceModel& there = *m_other->sourceModel();
    QStringList names = here.sourceNames() + there.sourceNames();
    names.sort();
    names.removeDuplicates();
    for (const QString& name : qAsConst(names)) {
        const bool isHere = here.sourceNames().contains(name);
        const bool isThere = there.sourceNames().contains(name);
        ComparedPart part{ ComparedPart::Source, stateOf(here.source(name) == there.source(name)),
            isHere ? name : QString(), isThere ? name : QString() };
        if (!isHere || !isThere)
            part.state = isHere ? ComparedAxis::OnlyHere : ComparedAxis::OnlyThere;
        m_parts.append(part);
    }
}

bool ProjectComparison::isEqual() const
{
    const auto equal = [](const auto& each) { return each.state == ComparedAxis::Equal; };
    return std::all_of(m_axes.begin(), m_axes.end(), equal) && std::all_of(m_parts.begin(), m_parts.end(), equal);
}

ComparedAxis ProjectComparison::judge(const QString& name, quint32 here, quint32 there) const
{
    const AxisTable* other = m_other->axisModel()->axisTable(there);
    ComparedAxis axis{ name, ComparedAxis::Different, here, there, other ? other->name() : QString() };
    if (there == 0)
        axis.state = ComparedAxis::OnlyHere;
    else if (here == 0)
        axis.state = ComparedAxis::OnlyThere;
    else if (isEqual(*m_comparators.comparator(axisType()), here, there))
        axis.state = ComparedAxis::Equal;
    return axis;
}

bool ProjectComparison::isEqual(IComparator& comparator, quint32 here, quint32 there) const
{
    const QString type = axisType();
    const QString herePath = m_tree.nodePathOfFile(m_tree.fileNameOf(type, here), true);
    // The other project has no nodes. Its paths are those that it would have in this project's place.
    const QString below = herePath.section(QLatin1Char('.'), 1, -2);
    const QString otherName = m_other->name();
    const QString otherPath
        = QStringList{ otherName, below, QString(type + QString::number(there)) }.join(QLatin1Char('.'));
    const CompareItem left{ m_here->filePath(), m_here->name(), herePath, type, here };
    const CompareItem right{ m_other->filePath(), otherName, otherPath, type, there };
    return comparator.compare(left, right);
}

QVector<ComparedValue> ProjectComparison::values(const ComparedAxis& axis) const
{
    QVector<ComparedValue> values;
    if (!isOn() || axis.here == 0 || axis.there == 0)
        return values;
    const QMap<QString, QString> here = dataOf(*m_here, axis.here);
    const QMap<QString, QString> there = dataOf(*m_other, axis.there);
    QMap<QString, QString> keys = here;
    for (auto each = there.begin(); each != there.end(); ++each)
        keys.insert(each.key(), QString());
    for (auto each = keys.begin(); each != keys.end(); ++each) {
        const QString& key = each.key();
        const bool same = here.contains(key) && there.contains(key) && here.value(key) == there.value(key);
        values.append({ key, here.value(key), there.value(key), !same });
    }
    return values;
}

QString ProjectComparison::nodePath(const ComparedAxis& axis) const
{
    const QString file = axis.here == 0 ? QString() : m_tree.fileNameOf(axisType(), axis.here);
    return file.isEmpty() ? QString() : m_tree.nodePathOfFile(file, true);
}
