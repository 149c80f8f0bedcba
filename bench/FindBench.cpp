#include "axisdata/AxisRecord.h"
#include "bench/Measure.h"
#include "editor/MotionControlAxisFactory.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "sdk/ServiceKeys.h"
#include "workbench/Application.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/EditorManager.h"
#include "workbench/ProjectFind.h"
#include "workbench/ProjectTree.h"

#include <QApplication>
#include <QTemporaryDir>

// What a search through 255 axes with three pins each costs beside reading the same strings bare: for each axis the
// walk to its record, and for each pin whether it is enabled, its text, the control that shows it and the page.

namespace {

constexpr int axes = 255;
constexpr double bound = 5;
const QString what = QStringLiteral("stop199");

struct Pin {
    QString enable;
    QString pin;
    QString control;
};
const Pin pins[] = { { QStringLiteral("PosLimitEnable"), QStringLiteral("PosLimitPin"),
                         QStringLiteral("LineEditPosObjectName") },
    { QStringLiteral("NegsLimitEnable"), QStringLiteral("NegLimitPin"), QStringLiteral("LineEditNegObjectName") },
    { QStringLiteral("OrgSignalEnable"), QStringLiteral("OrgSignalPin"), QStringLiteral("LineEditOrgObjectName") } };
const QString pageKey = QStringLiteral("OriginReturnSetWidgetObjectName");

ProjectModel* makeProject(const QString& file, ProjectTree& tree)
{
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QString error;
    ProjectModel* project
        = ProjectModelManager::instance()->createProject(file, *catalog.find(QStringLiteral("NV3T_70Q12E")), &error);
    if (!project)
        qFatal("%s", qPrintable(error));
    Solution::NodeDescription top;
    top.name = project->name();
    tree.addNode(QString(), top, 0);
    for (int i = 0; i < axes; ++i) {
        AxisTable* table = project->axisModel()->addAxisTable(QStringLiteral("Axis%1").arg(i));
        table->setViewInfo(pageKey, QStringLiteral("OriginReturnSetWidget"));
        for (const Pin& pin : pins) {
            table->setProperty(pin.enable, QStringLiteral("TRUE"));
            table->setProperty(pin.pin, QStringLiteral("Main.stop%1").arg(i));
            table->setViewInfo(pin.control, QString(QLatin1String("lineEdit") + pin.pin));
        }
        Solution::NodeDescription node;
        node.name = QStringLiteral("AxisView%1").arg(table->id());
        node.displayText = table->name();
        node.properties.insert(QStringLiteral("FileName"), QString(project->name() + QLatin1Char('.') + node.name));
        node.properties.insert(QStringLiteral("MimeType"), QStringLiteral("AxisView"));
        node.properties.insert(QStringLiteral("DataBaseKey"), table->id());
        tree.addNode(project->name(), node, 0);
    }
    return project;
}

double readBare(const ProjectModel& project)
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    std::vector<quint32> ids;
    for (const AxisTable* table : tables)
        ids.push_back(table->id());
    int found = 0;
    const double time = Measure::once([&] {
        for (const quint32 id : ids) {
            const AxisRecord record(project.name(), id);
            for (const Pin& pin : pins) {
                if (record->property(pin.enable, QString()).compare(QLatin1String("TRUE"), Qt::CaseInsensitive) != 0)
                    continue;
                const QString control = record->getViewInfo(pin.control, QString());
                const QString place = record->getViewInfo(pageKey, QString()) + QLatin1Char('.') + control;
                if (record->property(pin.pin, QString()).contains(what, Qt::CaseInsensitive) && !place.isEmpty())
                    ++found;
            }
        }
    });
    if (found != 3)
        qFatal("%d places read", found);
    return time;
}

double find(const ProjectFind& search, const QString& project)
{
    FindRequest request;
    request.text = what;
    FindOutcome outcome;
    const double time = Measure::once([&] { outcome = search.findBelow(project, request); });
    if (outcome.places.size() != 3 || outcome.objects != axes)
        qFatal("%d places found", outcome.places.size());
    return time;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    Application host;
    ProjectTree tree;
    host.publish(Solution::ServiceKey::view(), &tree);
    const ProjectModel* project = makeProject(folder.filePath(QStringLiteral("find.kproj")), tree);
    EditorManager editors(tree);
    MotionControlAxisFactory factory;
    editors.addEditorFactory(&factory);
    const ProjectFind search(tree, editors);
    const Measure::Pair pair = Measure::inTurns(
        41, [&] { return readBare(*project); }, [&] { return find(search, project->name()); });
    return Measure::report("find through 255 axes of three pins", pair, bound) ? 0 : 1;
}
