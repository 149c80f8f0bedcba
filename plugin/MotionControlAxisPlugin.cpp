#include "plugin/MotionControlAxisPlugin.h"

#include "axisdata/AxisRecord.h"
#include "editor/AxisComparator.h"
#include "online/MotionControlDebugInstance.h"
#include "plugin/AxisCommands.h"
#include "plugin/AxisNodes.h"
#include "plugin/AxisTreeSync.h"
#include "plugin/ControllerChange.h"
#include "plugin/MotionControlTaskCfg.h"
#include "sdk/IApplication.h"
#include "sdk/IComparatorMan.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditorManager.h"
#include "sdk/ILogManager.h"
#include "sdk/ILogger.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"
#include "sdk/SolutionViewHelper.h"

#include <QFile>
#include <QMenu>
#include <QPoint>
#include <QTextStream>

#include <memory>
#include <vector>

namespace Key = Solution::ServiceKey;

namespace {

QString readManifest()
{
    QFile file(QStringLiteral(":/axis_package.json"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    return stream.readAll();
}

bool isLightTheme(const IConfiguration& cookies)
{
    const QString light = Solution::ThemeName::light();
    return cookies.value(Solution::ConfigKey::theme(), light).toString() == light;
}

bool carriesAxes(Solution::NodeLevel level, const Solution::ProjectInfo& info)
{
    const bool rightLevel
        = level == Solution::LevelConfiguration || level == Solution::LevelController || level == Solution::LevelDevice;
    return rightLevel && info.kind == QLatin1String("NormalProject");
}

} // namespace

MotionControlAxisPlugin::MotionControlAxisPlugin()
{
    setObjectName(QStringLiteral("MotionControlAxis"));
    packageText = readManifest();
}

MotionControlAxisPlugin::~MotionControlAxisPlugin() = default;

bool MotionControlAxisPlugin::initialize()
{
    IApplication* host = Solution::application();
    if (!host)
        return false;
    application = host;
    IEditorManager* editors = Solution::editorManager(application);
    if (!editors)
        return false;
    auto* view = Solution::serviceAs<Solution::View>(application, Key::view());
    if (!view)
        return false;
    if (const auto* cookies = Solution::serviceAs<IConfiguration>(application, Key::cookies()))
        defaultTheme = isLightTheme(*cookies);
    connectView(view);
    editors->addEditorFactory(&factory);
    connectViewHelper();
    publishDebugInstance();
    offerComparator();
    return true;
}

void MotionControlAxisPlugin::finish() { }

void MotionControlAxisPlugin::connectView(Solution::View* view)
{
    connect(view, &Solution::View::projectOpened, this, &MotionControlAxisPlugin::projectOpened, Qt::UniqueConnection);
    connect(view, &Solution::View::nodeEvent, this, &MotionControlAxisPlugin::nodeEvent, Qt::UniqueConnection);
    connect(view, &Solution::View::displayEvent, this, &MotionControlAxisPlugin::displayEvent);
}

void MotionControlAxisPlugin::connectViewHelper()
{
    if (auto* helper = Solution::serviceAs<Solution::ViewHelper>(application, Key::viewHelper()))
        connect(helper, &Solution::ViewHelper::commandExecuted, this, &MotionControlAxisPlugin::onCommandExecuted,
            Qt::UniqueConnection);
}

void MotionControlAxisPlugin::publishDebugInstance()
{
    debugInstance = new MotionControlDebugInstance(this);
    debugInstance->setObjectName(Key::motionControlDebug());
    if (!application->objectTable.contains(Key::motionControlDebug()))
        application->objectTable.insert(Key::motionControlDebug(), debugInstance);
}

void MotionControlAxisPlugin::offerComparator()
{
    auto* manager = Solution::serviceAs<IComparatorMan>(application, Key::comparatorManager());
    if (!manager)
        return;
    auto comparator = std::make_unique<AxisComparator>();
    if (manager->addComparator(comparator.get()))
        static_cast<void>(comparator.release()); // the manager keeps it
}

void MotionControlAxisPlugin::writeLog(int level, const QString& text)
{
    auto* manager = Solution::serviceAs<ILogManager>(Key::logManager());
    ILogger* logger = manager ? manager->logger(std::string()) : nullptr;
    if (logger)
        logger->write("MotionControlAxisPlugin", level, "%s", text.toUtf8().constData());
}

void MotionControlAxisPlugin::projectOpened(
    const QString& projectName, const Solution::ProjectInfo& info, Solution::NodeLevel lev)
{
    if (!carriesAxes(lev, info) || !Solution::application())
        return;
    const QString name = projectName.section(QLatin1Char('.'), 0, 0);
    if (info.current) {
        this->projectName = name;
        unitNodePath = AxisNodes::childPath(projectName, QStringLiteral("Axis"));
    }
    const SafeProjectModel project(name);
    if (!project)
        return;
    QObject* transfer = Solution::service(application, Key::transfer());
    if (!transfer)
        return;
    connect(transfer, SIGNAL(onlineState(bool)), this, SLOT(onlineStatechanged(bool)));
    if (auto* view = Solution::serviceAs<Solution::View>(application, Key::view()))
        addProjectNodes(*view, ProjectAxes(name).model(), projectName);
}

void MotionControlAxisPlugin::addProjectNodes(Solution::View& view, AxisModel* axes, const QString& parentPath)
{
    const Solution::NodeDescription unit = AxisNodes::unitNode(defaultTheme);
    view.addNode(parentPath, unit, 0);
    if (!axes)
        return;
    const QString unitPath = AxisNodes::childPath(parentPath, unit.name);
    std::vector<AxisTable*> tables;
    axes->allAxisTables(tables);
    for (const AxisTable* table : tables) {
        if (table)
            view.addNode(unitPath, AxisNodes::axisNode(*table, unitNodePath, defaultTheme), 0);
    }
    axes->updateDeviceAxisInfo();
}

void MotionControlAxisPlugin::nodeEvent(const QString& path, Solution::NodeEvent event, const QVariant& param)
{
    auto* view = Solution::serviceAs<Solution::View>(Key::view());
    if (!view)
        return;
    currentNodePath = path;
    const QString nodeType = view->nodeProperty(path, QStringLiteral("NodeType"), QVariant()).toString();
    if (online)
        return;
    if (event == Solution::NodeContextMenu)
        showMenu(nodeType, param.toPoint());
    else if (event == Solution::NodeDelete && nodeType == AxisNodes::axisType())
        deleteAxis();
    else if (event == Solution::NodeRename && nodeType == AxisNodes::axisType())
        renameAxis();
}

void MotionControlAxisPlugin::showMenu(const QString& nodeType, const QPoint& position)
{
    QMenu menu;
    if (nodeType == AxisNodes::unitType()) {
        menu.addAction(tr("New Axis"), this, &MotionControlAxisPlugin::addNewAxis);
        menu.addAction(tr("Motion Control Task CFG"), this, &MotionControlAxisPlugin::motionControlTaskCfg);
        menu.addAction(tr("Delete All Axis"), this, &MotionControlAxisPlugin::deleteAllAxis);
    } else if (nodeType == AxisNodes::axisType()) {
        menu.addAction(tr("Delete Axis"), this, &MotionControlAxisPlugin::deleteAxis);
        menu.addAction(tr("Rename"), this, &MotionControlAxisPlugin::renameAxis);
    } else {
        return;
    }
    menu.exec(position);
}

void MotionControlAxisPlugin::onlineStatechanged(bool state)
{
    online = state;
}

void MotionControlAxisPlugin::onApplyOption(const QString&)
{
    const auto* cookies = Solution::serviceAs<IConfiguration>(Key::cookies());
    auto* view = Solution::serviceAs<Solution::View>(Key::view());
    const SafeProjectModel project(projectName);
    if (!cookies || !view || !project)
        return;
    defaultTheme = isLightTheme(*cookies);
    view->setNodeProperty(
        projectName + QStringLiteral(".ConfigAndSetup.Axis"), QStringLiteral("Icon"), AxisNodes::icon(defaultTheme));
}

void MotionControlAxisPlugin::displayEvent(const QString&, Solution::DataEvent event, const QVariant&)
{
    if (event == Solution::DataControllerChanged)
        ControllerChange(treeState()).apply();
}

void MotionControlAxisPlugin::onCommandExecuted(
    const QString& type, const QString& subModel, const QString& path, const QString& param)
{
    AxisTreeSync(treeState()).follow(type, subModel, path, param);
}

void MotionControlAxisPlugin::motionControlTaskCfg()
{
    MotionControlTaskCfg dialog;
    dialog.exec();
}

void MotionControlAxisPlugin::addNewAxis()
{
    AxisCommands(treeState()).addNew();
}

void MotionControlAxisPlugin::deleteAxis()
{
    AxisCommands(treeState()).deleteCurrent();
}

void MotionControlAxisPlugin::deleteAllAxis()
{
    AxisCommands(treeState()).deleteAll();
}

void MotionControlAxisPlugin::renameAxis()
{
    AxisCommands(treeState()).renameCurrent();
}

AxisTreeState MotionControlAxisPlugin::treeState() const
{
    return { projectName, unitNodePath, currentNodePath, defaultTheme, application, this };
}
