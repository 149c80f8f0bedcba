#include "bench/Measure.h"
#include "editor/AxisComparator.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "sdk/ServiceKeys.h"
#include "workbench/Application.h"
#include "workbench/ComparatorManager.h"
#include "workbench/Configuration.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/ProjectComparison.h"
#include "workbench/ProjectTree.h"

#include <QApplication>
#include <QTemporaryDir>

// What judging all axes of two projects costs beside reading the same maps of both and comparing them.

namespace {

constexpr int axes = 255;
constexpr double bound = 3;

ProjectModel* makeProject(const QString& file)
{
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QString error;
    ProjectModel* project
        = ProjectModelManager::instance()->createProject(file, *catalog.find(QStringLiteral("NV3T_70Q12E")), &error);
    for (int i = 0; project && i < axes; ++i)
        project->axisModel()->addAxisTable(QStringLiteral("Axis%1").arg(i));
    if (!project || !project->save(&error))
        qFatal("%s", qPrintable(error));
    return project;
}

std::vector<AxisTable*> tables(const ProjectModel& project)
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    return tables;
}

void addNodes(ProjectTree& tree, const ProjectModel& project)
{
    Solution::NodeDescription top;
    top.name = project.name();
    tree.addNode(QString(), top, 0);
    for (const AxisTable* table : tables(project)) {
        Solution::NodeDescription node;
        node.name = QStringLiteral("AxisView%1").arg(table->id());
        node.displayText = table->name();
        node.properties.insert(QStringLiteral("FileName"), QString(project.name() + QLatin1Char('.') + node.name));
        node.properties.insert(QStringLiteral("MimeType"), QStringLiteral("AxisView"));
        node.properties.insert(QStringLiteral("DataBaseKey"), table->id());
        tree.addNode(project.name(), node, 0);
    }
}

double readBare(const ProjectModel& here, const ProjectModel& there)
{
    const std::vector<AxisTable*> left = tables(here);
    const std::vector<AxisTable*> right = tables(there);
    std::size_t equal = 0;
    const double time = Measure::once([&] {
        for (std::size_t i = 0; i < left.size(); ++i)
            equal += left[i]->getCompareData() == right[i]->getCompareData() ? 1 : 0;
    });
    if (equal != axes)
        qFatal("the projects differ");
    return time;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    ProjectModel* there = makeProject(folder.filePath(QStringLiteral("there.kproj")));
    const QString thereFile = there->filePath();
    ProjectModelManager::instance()->closeProject(there);
    ProjectModel* here = makeProject(folder.filePath(QStringLiteral("here.kproj")));

    Application host;
    Cookies cookies;
    ProjectTree tree;
    host.publish(Solution::ServiceKey::view(), &tree);
    addNodes(tree, *here);
    ComparatorManager comparators(cookies);
    comparators.addComparator(new AxisComparator);
    ProjectComparison comparison(tree, comparators);
    QString error;
    if (!comparison.start(*here, thereFile, &error))
        qFatal("%s", qPrintable(error));
    const ProjectModel* other = ProjectModelManager::instance()->projects().last();
    const Measure::Pair pair = Measure::inTurns(
        41, [&] { return readBare(*here, *other); }, [&] { return Measure::once([&] { comparison.refresh(); }); });
    for (const ComparedAxis& axis : comparison.axes()) {
        if (axis.state != ComparedAxis::Equal)
            qFatal("the projects differ");
    }
    return Measure::report("compare two projects of 255 axes", pair, bound) ? 0 : 1;
}
