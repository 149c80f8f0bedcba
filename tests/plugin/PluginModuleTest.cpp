#include "host/projectmodel/AxisTable.h"
#include "sdk/IComparator.h"
#include "sdk/MotionControlDebug.h"
#include "sdk/PluginInterface.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QJsonObject>
#include <QPluginLoader>
#include <QPointer>
#include <QProcess>
#include <QtTest>

namespace {

QString modulePath()
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins/motioncontrol.axis.plugin.so");
}

/// Names that the module defines for others.
QStringList exportedNames()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), { QStringLiteral("-D"), QStringLiteral("--defined-only"), modulePath() });
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        qFatal("nm could not read the module");
    QStringList names;
    const QStringList lines = QString::fromUtf8(nm.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (!line.isEmpty())
            names.append(line.section(QLatin1Char(' '), -1));
    }
    names.sort();
    return names;
}

} // namespace

/// The finished module as a host loads it. This program links none of the plug-in's libraries.
class PluginModuleTest : public QObject {
    Q_OBJECT

private slots:
    void exportsTheTwoFunctionsOnly();
    void metadataNameInterfaceAndClass();
    void instanceIsTheSameUntilItIsDestroyed();
    void bundleRegistersWithTheModule();
    void isTakenIntoServiceDrivenAndPutOut();
};

void PluginModuleTest::exportsTheTwoFunctionsOnly()
{
    QVERIFY(QFileInfo::exists(modulePath()));
    QCOMPARE(exportedNames(),
        (QStringList{ QStringLiteral("qt_plugin_instance"), QStringLiteral("qt_plugin_query_metadata") }));
}

void PluginModuleTest::metadataNameInterfaceAndClass()
{
    const QPluginLoader loader(modulePath());
    const QJsonObject metadata = loader.metaData();
    QCOMPARE(metadata.value(QStringLiteral("IID")).toString(), QStringLiteral("vornhal.Kestrun/1.1"));
    QCOMPARE(metadata.value(QStringLiteral("className")).toString(), QStringLiteral("MotionControlAxisPlugin"));
    QVERIFY2(metadata.value(QStringLiteral("MetaData")).toObject().isEmpty(), "no other metadata");
    QVERIFY2(!loader.isLoaded(), "metadata is read without loading");
}

void PluginModuleTest::instanceIsTheSameUntilItIsDestroyed()
{
    QPluginLoader loader(modulePath());
    QPointer<QObject> first = loader.instance();
    QVERIFY2(first, qPrintable(loader.errorString()));
    QCOMPARE(QString::fromLatin1(first->metaObject()->className()), QStringLiteral("MotionControlAxisPlugin"));
    QCOMPARE(loader.instance(), first.data());
    QCOMPARE(QPluginLoader(modulePath()).instance(), first.data());
    delete first.data();
    QPointer<QObject> second = loader.instance();
    QVERIFY2(second, "the next call makes another one");
    delete second.data();
}

void PluginModuleTest::bundleRegistersWithTheModule()
{
    QPluginLoader loader(modulePath());
    QVERIFY(loader.load());
    for (const char* path : { ":/axis_package.json", ":/images/default/axiscfg.png", ":/images/dark/axiscfg.png",
             ":/images/default/axis.png", ":/images/dark/axis.png", ":/images/status_on.png",
             ":/images/status_off.png" })
        QVERIFY2(QFile::exists(QString::fromLatin1(path)), path);
}

void PluginModuleTest::isTakenIntoServiceDrivenAndPutOut()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    AxisTable* axis = project.addAxis(QStringLiteral("feed"), QStringLiteral("Axis_Pulse"));
    TestHost host;
    host.view.addProject(project.name());
    QPluginLoader loader(modulePath());
    auto* plugin = qobject_cast<PluginInterface*>(loader.instance());
    QVERIFY(plugin);
    QCOMPARE(plugin->objectName(), QStringLiteral("MotionControlAxis"));
    QVERIFY(plugin->packageText.contains(QStringLiteral("motioncontrol.axis")));
    QVERIFY(plugin->initialize());
    plugin->finish();

    Solution::ProjectInfo info;
    info.kind = QStringLiteral("NormalProject");
    info.current = true;
    emit host.view.projectOpened(project.nodePath(), info, Solution::LevelConfiguration);
    const Solution::NodeDescription* node = host.view.node(project.axisPath(axis->id()));
    QVERIFY(node);
    QVERIFY(!node->icon.pixmap(16).isNull());
    QVERIFY(host.editorManager.openEditor(project.axisPath(axis->id()), QStringLiteral("AxisView")));
    QVERIFY(qobject_cast<MotionControlDebug*>(host.objectTable.value(QStringLiteral("MotionControlDebug"))));

    host.editorManager.closeAllEditors();
    host.editorManager.factories.clear();
    host.comparatorMan.comparators.clear();
    host.objectTable.clear();
    delete plugin;
    QVERIFY2(loader.isLoaded(), "the module stays");
}

QTEST_MAIN(PluginModuleTest)
#include "PluginModuleTest.moc"
