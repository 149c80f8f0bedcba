#include "plugin/MotionControlAxisPlugin.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/PopupMenuDriver.h"
#include "tests/support/ReceiverCount.h"

#include <QtTest>

// How often the sub-model was told to bring its numbers in order. The linker leads the plug-in's calls of
// AxisModel::updateDeviceAxisInfo to the wrapper, since without axes the call leaves no trace.
static int numberUpdates = 0;

extern "C" void __real__ZN9AxisModel20updateDeviceAxisInfoEv(AxisModel* model);
extern "C" Q_DECL_EXPORT void __wrap__ZN9AxisModel20updateDeviceAxisInfoEv(AxisModel* model)
{
    ++numberUpdates;
    __real__ZN9AxisModel20updateDeviceAxisInfoEv(model);
}

namespace {

const QString model = QStringLiteral("NV3T_70Q12");

bool showsImage(const QIcon& icon, const QString& theme)
{
    const QImage expected = QIcon(QStringLiteral(":/images/%1/axiscfg.png").arg(theme)).pixmap(16).toImage();
    return !expected.isNull() && icon.pixmap(16).toImage() == expected;
}

/// A host with the plug-in in service, before any project is reported.
class Started {
public:
    explicit Started(TestProject& project)
    {
        host.view.addProject(project.name());
        if (!plugin.initialize())
            qFatal("the plug-in was not taken into service");
        host.calls.clear();
    }
    void open(const QString& path, int level = Solution::LevelConfiguration,
        const Solution::ProjectInfo& info = PluginFixture::info())
    {
        emit host.view.projectOpened(path, info, static_cast<Solution::NodeLevel>(level));
    }

    TestHost host;
    MotionControlAxisPlugin plugin;
};

} // namespace

/// What the plug-in object does when projects open, the connection changes, and the theme is switched.
class MotionControlAxisPluginTest : public QObject {
    Q_OBJECT

private slots:
    void openedProjectShowsItsAxes();
    void projectWithoutAxesShowsTheUnitNodeAlone();
    void onlySomeLevelsCarryAxes_data();
    void onlySomeLevelsCarryAxes();
    void onlyNormalProjectsCarryAxes_data();
    void onlyNormalProjectsCarryAxes();
    void openingRepairsTheAxisNumbers();
    void axesOfAStoredProjectComeBack();
    void openingEndsSilentlyWithout_data();
    void openingEndsSilentlyWithout();
    void currentProjectIsKnownEvenWithout_data();
    void currentProjectIsKnownEvenWithout();
    void everyOpeningHearsTheConnectionAnew();
    void nodesHoldTheDeviceNumbersFromBeforeTheRepair();
    void unknownProjectAddsNothing();
    void furtherProjectLeavesTheCurrentOne();
    void anotherCurrentProjectReplacesTheFormer();
    void unitPathFollowsTheReportedPath();

    void onlineBlocksMenusAndKeys_data();
    void onlineBlocksMenusAndKeys();
    void lastNodeIsKeptWhileOnline();

    void themeAtTheStartDecidesTheIcons_data();
    void themeAtTheStartDecidesTheIcons();
    void themeSwitchChangesTheUnitNodeOnly();
    void themeSwitchKeepsToTheFixedPath();
    void themeSwitchEndsSilentlyWithout_data();
    void themeSwitchEndsSilentlyWithout();
    void themeSwitchWithoutProjectChangesNothing();
};

void MotionControlAxisPluginTest::openedProjectShowsItsAxes()
{
    TestProject project(model);
    AxisTable* feed = project.addAxis(QStringLiteral("feed"));
    AxisTable* lift = project.addAxis(QStringLiteral("lift"));
    Started started(project);
    started.open(project.nodePath());

    QCOMPARE(started.host.calls.entries(),
        (QStringList{ QStringLiteral("view.addNode(Line.ConfigAndSetup, Axis, 0)"),
            QStringLiteral("view.addNode(Line.ConfigAndSetup.Axis, AxisView%1, 0)").arg(feed->id()),
            QStringLiteral("view.addNode(Line.ConfigAndSetup.Axis, AxisView%1, 0)").arg(lift->id()) }));
    const Solution::NodeDescription* unit = started.host.view.node(project.unitPath());
    QVERIFY(unit);
    QCOMPARE(unit->displayText, QStringLiteral("Axis Config"));
    const QMap<QString, QVariant> unitProperties{ { QStringLiteral("NodeType"), QStringLiteral("AxisUnitNode") } };
    QCOMPARE(unit->properties, unitProperties);
    QVERIFY(!unit->checkable && unit->visible && !unit->color.isValid());

    const Solution::NodeDescription* node = started.host.view.node(project.axisPath(lift->id()));
    QVERIFY(node);
    QCOMPARE(node->displayText, QStringLiteral("lift"));
    QVERIFY(!node->checkable && node->visible && !node->color.isValid());
    const QMap<QString, QVariant> nodeProperties{
        { QStringLiteral("FileName"), project.axisPath(lift->id()) },
        { QStringLiteral("MimeType"), QStringLiteral("AxisView") },
        { QStringLiteral("NodeType"), QStringLiteral("AxisNode") },
        { QStringLiteral("DataBaseKey"), lift->id() },
        { QStringLiteral("DeviceID"), lift->property(QStringLiteral("AxisID"), QString()) },
    };
    QCOMPARE(node->properties, nodeProperties);
    QCOMPARE(node->properties.value(QStringLiteral("DataBaseKey")).type(), QVariant::UInt);
    QCOMPARE(node->properties.value(QStringLiteral("DeviceID")).type(), QVariant::String);
}

void MotionControlAxisPluginTest::projectWithoutAxesShowsTheUnitNodeAlone()
{
    TestProject project(model);
    Started started(project);
    numberUpdates = 0;
    started.open(project.nodePath());
    QCOMPARE(started.host.view.childNodes(project.nodePath()), QStringList{ project.unitPath() });
    QVERIFY(started.host.view.childNodes(project.unitPath()).isEmpty());
    QCOMPARE(numberUpdates, 1);
}

void MotionControlAxisPluginTest::onlySomeLevelsCarryAxes_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("carries");
    for (int level = 0; level <= 7; ++level)
        QTest::addRow("level %d", level) << level << (level == 2 || level == 3 || level == 5);
}

void MotionControlAxisPluginTest::onlySomeLevelsCarryAxes()
{
    QFETCH(int, level);
    QFETCH(bool, carries);
    TestProject project(model);
    Started started(project);
    started.open(project.nodePath(), level);
    QCOMPARE(!started.host.view.childNodes(project.nodePath()).isEmpty(), carries);
}

void MotionControlAxisPluginTest::onlyNormalProjectsCarryAxes_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("another kind") << "LibraryProject";
    QTest::newRow("no kind") << "";
    QTest::newRow("other case") << "normalproject";
}

void MotionControlAxisPluginTest::onlyNormalProjectsCarryAxes()
{
    QFETCH(QString, kind);
    TestProject project(model);
    Started started(project);
    Solution::ProjectInfo info = PluginFixture::info();
    info.kind = kind;
    started.open(project.nodePath(), Solution::LevelConfiguration, info);
    QVERIFY(started.host.view.childNodes(project.nodePath()).isEmpty());
}

void MotionControlAxisPluginTest::openingRepairsTheAxisNumbers()
{
    const QString key = QStringLiteral("AxisNo");
    TestProject project(model);
    AxisTable* feed = project.addAxis(QStringLiteral("feed"));
    AxisTable* lift = project.addAxis(QStringLiteral("lift"));
    lift->setProperty(key, feed->property(key, QString()));
    Started started(project);
    started.open(project.nodePath());
    QVERIFY(lift->property(key, QString()) != feed->property(key, QString()));
}

void MotionControlAxisPluginTest::axesOfAStoredProjectComeBack()
{
    TestProject project(model);
    project.addAxis(QStringLiteral("feed"), QStringLiteral("Axis_Pulse"));
    project.save();
    project.reopen();
    Started started(project);
    started.open(project.nodePath());
    QCOMPARE(started.host.view.childNodes(project.unitPath()), QStringList{ project.axisPath(1) });
    QCOMPARE(started.host.view.node(project.axisPath(1))->displayText, QStringLiteral("feed"));
}

void MotionControlAxisPluginTest::openingEndsSilentlyWithout_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("the connection") << "zelport.Transfer";
    QTest::newRow("the tree") << "Solution.View";
}

void MotionControlAxisPluginTest::openingEndsSilentlyWithout()
{
    QFETCH(QString, key);
    MessageBoxWatcher boxes;
    TestProject project(model);
    Started started(project);
    started.host.withhold(key);
    started.open(project.nodePath());
    QVERIFY(started.host.view.childNodes(project.nodePath()).isEmpty());
    QCOMPARE(boxes.count(), 0);
}

void MotionControlAxisPluginTest::currentProjectIsKnownEvenWithout_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the connection") << "zelport.Transfer";
    QTest::newRow("the project") << "project";
}

void MotionControlAxisPluginTest::currentProjectIsKnownEvenWithout()
{
    QFETCH(QString, missing);
    TestProject project(model);
    Started started(project);
    if (missing == QLatin1String("project"))
        project.close();
    else
        started.host.withhold(missing);
    started.open(QStringLiteral("Line.ConfigAndSetup"));
    QVERIFY(started.host.view.childNodes(QStringLiteral("Line.ConfigAndSetup")).isEmpty());

    project.reopen();
    const AxisTable* axis = project.addAxis(QStringLiteral("feed"));
    started.host.calls.clear();
    started.plugin.onApplyOption(QString());
    emit started.host.viewHelper.commandExecuted(QStringLiteral("PROJECT_MODEL_STACK_INSERT"),
        QStringLiteral("AxisModel"), QString::number(axis->id()), QString());
    const QStringList changes
        = started.host.calls.entriesOf({ QStringLiteral("view.setNodeProperty"), QStringLiteral("view.insertNode") });
    QCOMPARE(changes.size(), 2);
    QVERIFY(changes.first().startsWith(QStringLiteral("view.setNodeProperty(Line.ConfigAndSetup.Axis, Icon")));
    QVERIFY(changes.last().startsWith(QStringLiteral("view.insertNode(Line.ConfigAndSetup.Axis, ")));
}

void MotionControlAxisPluginTest::everyOpeningHearsTheConnectionAnew()
{
    TestProject project(model);
    Started started(project);
    const char* const signal = SIGNAL(onlineState(bool));
    QCOMPARE(receiverCount(started.host.transfer, signal), 0);
    started.open(project.nodePath());
    QCOMPARE(receiverCount(started.host.transfer, signal), 1);
    started.open(project.nodePath());
    QCOMPARE(receiverCount(started.host.transfer, signal), 2);
}

void MotionControlAxisPluginTest::nodesHoldTheDeviceNumbersFromBeforeTheRepair()
{
    const QString key = QStringLiteral("AxisID");
    TestProject project(model);
    const AxisTable* feed = project.addAxis(QStringLiteral("feed"));
    AxisTable* lift = project.addAxis(QStringLiteral("lift"));
    const QString doubled = feed->property(key, QString());
    lift->setProperty(key, doubled);
    Started started(project);
    started.open(project.nodePath());
    QVERIFY(lift->property(key, QString()) != doubled);
    const Solution::NodeDescription* node = started.host.view.node(project.axisPath(lift->id()));
    QCOMPARE(node->properties.value(QStringLiteral("DeviceID")).toString(), doubled);
}

void MotionControlAxisPluginTest::unknownProjectAddsNothing()
{
    TestProject project(model);
    Started started(project);
    project.close();
    started.open(QStringLiteral("Line.ConfigAndSetup"));
    QVERIFY(started.host.view.childNodes(QStringLiteral("Line.ConfigAndSetup")).isEmpty());
}

void MotionControlAxisPluginTest::furtherProjectLeavesTheCurrentOne()
{
    PluginFixture fixture;
    TestProject further(model, QStringLiteral("Further"));
    AxisTable* axis = further.addAxis(QStringLiteral("feed"));
    fixture.host.view.addProject(further.name());
    emit fixture.host.view.projectOpened(further.nodePath(), PluginFixture::info(false), Solution::LevelConfiguration);
    const Solution::NodeDescription* node = fixture.host.view.node(further.axisPath(axis->id()));
    QVERIFY2(node, "its nodes go under its own unit node");
    // Editors work on the current project, so every file is named by its unit path.
    QCOMPARE(node->properties.value(QStringLiteral("FileName")).toString(),
        QStringLiteral("Line.ConfigAndSetup.Axis.AxisView%1").arg(axis->id()));

    fixture.plugin->onApplyOption(QString());
    QVERIFY(fixture.host.calls.entries().last().startsWith(
        QStringLiteral("view.setNodeProperty(Line.ConfigAndSetup.Axis, Icon")));
}

void MotionControlAxisPluginTest::anotherCurrentProjectReplacesTheFormer()
{
    PluginFixture fixture;
    TestProject further(model, QStringLiteral("Further"));
    fixture.host.view.addProject(further.name());
    emit fixture.host.view.projectOpened(further.nodePath(), PluginFixture::info(true), Solution::LevelDevice);
    fixture.plugin->onApplyOption(QString());
    QVERIFY(fixture.host.calls.entries().last().startsWith(
        QStringLiteral("view.setNodeProperty(Further.ConfigAndSetup.Axis, Icon")));
}

void MotionControlAxisPluginTest::unitPathFollowsTheReportedPath()
{
    TestProject project(model);
    AxisTable* axis = project.addAxis(QStringLiteral("feed"));
    Started started(project);
    started.open(project.name());
    const QString path = QStringLiteral("Line.Axis.AxisView%1").arg(axis->id());
    QVERIFY(started.host.view.node(path));
    QCOMPARE(started.host.view.node(path)->properties.value(QStringLiteral("FileName")).toString(), path);
}

void MotionControlAxisPluginTest::onlineBlocksMenusAndKeys_data()
{
    QTest::addColumn<int>("event");
    QTest::newRow("context menu") << static_cast<int>(Solution::NodeContextMenu);
    QTest::newRow("delete request") << static_cast<int>(Solution::NodeDelete);
    QTest::newRow("rename request") << static_cast<int>(Solution::NodeRename);
}

void MotionControlAxisPluginTest::onlineBlocksMenusAndKeys()
{
    QFETCH(int, event);
    PluginFixture fixture;
    AxisTable* axis = fixture.addAxis(QStringLiteral("feed"));
    PopupMenuDriver menus;
    MessageBoxWatcher boxes;
    fixture.host.transfer.setOnline(true);
    fixture.send(fixture.pathOf(axis), static_cast<Solution::NodeEvent>(event), QPoint(1, 1));
    QVERIFY(menus.menus.isEmpty());
    QCOMPARE(boxes.count(), 0);
    QVERIFY2(!axis->property(QStringLiteral("AxisNo"), QString()).isEmpty() && axis->modified, "nothing was saved");

    fixture.host.transfer.setOnline(false);
    fixture.send(fixture.pathOf(axis), Solution::NodeContextMenu, QPoint(1, 1));
    QCOMPARE(menus.menus.size(), 1);
}

void MotionControlAxisPluginTest::lastNodeIsKeptWhileOnline()
{
    PluginFixture fixture;
    AxisTable* feed = fixture.addAxis(QStringLiteral("feed"));
    AxisTable* lift = fixture.addAxis(QStringLiteral("lift"));
    fixture.send(fixture.pathOf(feed), Solution::NodeSelected);
    fixture.host.transfer.setOnline(true);
    fixture.send(fixture.pathOf(lift), Solution::NodeSelected);
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("Yes"));
    fixture.call("deleteAxis");
    QCOMPARE(fixture.axisNames(), QStringList{ QStringLiteral("feed") });
}

void MotionControlAxisPluginTest::themeAtTheStartDecidesTheIcons_data()
{
    QTest::addColumn<QVariant>("theme");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no value is light") << QVariant() << "default";
    QTest::newRow("default.qss is light") << QVariant(QStringLiteral("default.qss")) << "default";
    QTest::newRow("dark.qss is dark") << QVariant(QStringLiteral("dark.qss")) << "dark";
    QTest::newRow("other case is dark") << QVariant(QStringLiteral("Default.qss")) << "dark";
    QTest::newRow("an empty text is dark") << QVariant(QStringLiteral("")) << "dark";
}

void MotionControlAxisPluginTest::themeAtTheStartDecidesTheIcons()
{
    QFETCH(QVariant, theme);
    QFETCH(QString, expected);
    TestProject project(model);
    project.addAxis(QStringLiteral("feed"));
    TestHost host;
    host.view.addProject(project.name());
    if (theme.isValid())
        host.cookies.setValue(QStringLiteral("Werkbay/Qss"), theme);
    MotionControlAxisPlugin plugin;
    QVERIFY(plugin.initialize());
    emit host.view.projectOpened(project.nodePath(), PluginFixture::info(), Solution::LevelConfiguration);
    QVERIFY(showsImage(host.view.node(project.unitPath())->icon, expected));
    QVERIFY(showsImage(host.view.node(project.axisPath(1))->icon, expected));
}

void MotionControlAxisPluginTest::themeSwitchChangesTheUnitNodeOnly()
{
    PluginFixture fixture;
    AxisTable* axis = fixture.addAxis(QStringLiteral("feed"));
    const QString theme = QStringLiteral("Werkbay/Qss");
    fixture.host.cookies.setValue(theme, QStringLiteral("dark.qss"));
    fixture.plugin->onApplyOption(QStringLiteral("anything"));
    QCOMPARE(fixture.host.cookies.lastFallback(theme).toString(), QStringLiteral("default.qss"));
    QVERIFY(showsImage(fixture.host.view.node(fixture.project.unitPath())->icon, QStringLiteral("dark")));
    QVERIFY(showsImage(fixture.host.view.node(fixture.pathOf(axis))->icon, QStringLiteral("default")));

    fixture.host.view.removeNode(fixture.pathOf(axis), true);
    fixture.plugin->onCommandExecuted(QStringLiteral("PROJECT_MODEL_STACK_INSERT"), QStringLiteral("AxisModel"),
        QString::number(axis->id()), QString());
    QVERIFY2(showsImage(fixture.host.view.node(fixture.pathOf(axis))->icon, QStringLiteral("dark")),
        "a node that comes after the switch has the new icon");

    fixture.host.cookies.setValue(theme, QStringLiteral("default.qss"));
    fixture.plugin->onApplyOption(QString());
    QVERIFY(showsImage(fixture.host.view.node(fixture.project.unitPath())->icon, QStringLiteral("default")));
}

void MotionControlAxisPluginTest::themeSwitchKeepsToTheFixedPath()
{
    TestProject project(model);
    Started started(project);
    started.open(project.name());
    started.host.calls.clear();
    started.plugin.onApplyOption(QString());
    QCOMPARE(started.host.calls.entries(),
        (QStringList{ QStringLiteral("cookies.value(Werkbay/Qss)"),
            QStringLiteral("view.setNodeProperty(Line.ConfigAndSetup.Axis, Icon, )") }));
}

void MotionControlAxisPluginTest::themeSwitchEndsSilentlyWithout_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("cookies") << "ICookies";
    QTest::newRow("the tree") << "Solution.View";
}

void MotionControlAxisPluginTest::themeSwitchEndsSilentlyWithout()
{
    QFETCH(QString, key);
    PluginFixture fixture;
    fixture.host.cookies.setValue(QStringLiteral("Werkbay/Qss"), QStringLiteral("dark.qss"));
    fixture.host.withhold(key);
    fixture.plugin->onApplyOption(QString());
    QVERIFY(showsImage(fixture.host.view.node(fixture.project.unitPath())->icon, QStringLiteral("default")));
}

void MotionControlAxisPluginTest::themeSwitchWithoutProjectChangesNothing()
{
    PluginFixture fixture;
    fixture.project.addAxis(QStringLiteral("feed"));
    fixture.project.save();
    fixture.host.cookies.setValue(QStringLiteral("Werkbay/Qss"), QStringLiteral("dark.qss"));
    fixture.project.close();
    fixture.plugin->onApplyOption(QString());
    QCOMPARE(fixture.host.calls.count(QStringLiteral("view.setNodeProperty")), 0);

    fixture.project.reopen();
    fixture.plugin->onCommandExecuted(
        QStringLiteral("PROJECT_MODEL_STACK_INSERT"), QStringLiteral("AxisModel"), QStringLiteral("1"), QString());
    QVERIFY2(showsImage(fixture.host.view.node(fixture.project.axisPath(1))->icon, QStringLiteral("default")),
        "the switch has not reached the icons of nodes to come");
}

QTEST_MAIN(MotionControlAxisPluginTest)
#include "MotionControlAxisPluginTest.moc"
