#include "plugin/MotionControlAxisPlugin.h"

#include "sdk/IEditorFactory.h"
#include "sdk/MotionControlDebug.h"
#include "sdk/ServiceLocator.h"
#include "tests/plugin/PluginFixture.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaMethod>
#include <QTextCodec>
#include <QtTest>

/// The plug-in object from its making to its end, as the host sees it.
class PluginRegistrationTest : public QObject {
    Q_OBJECT

private slots:
    void takesItsNameAndThePackageText();
    void packageTextTellsWhatTheHostNeeds();
    void packageTextIsReadAsUtf8InEveryLocale();
    void answersToItsClassAndToTheInterface();
    void slotsStandInTheirOrder();
    void initializeRegistersInOrder();
    void initializeFailsWithout_data();
    void initializeFailsWithout();
    void initializeSurvivesTheLackOf_data();
    void initializeSurvivesTheLackOf();
    void withoutHostEverySlotReturnsAtOnce();
    void debugServiceIsPublishedUnlessThereIsOne();
    void refusedComparatorIsGivenUp();
    void connectionsAreUniqueButThatOfData();
    void finishDoesNothing();
    void nothingIsTakenBackFromTheHost();
    void logLineGoesToTheCommonLogger();
    void logLineIsDroppedWithoutLog();
};

void PluginRegistrationTest::takesItsNameAndThePackageText()
{
    const MotionControlAxisPlugin plugin;
    QCOMPARE(plugin.objectName(), QStringLiteral("MotionControlAxis"));
    QVERIFY(!plugin.parent());
    QFile file(QStringLiteral(":/axis_package.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString bundled = QString::fromUtf8(file.readAll());
    QVERIFY2(bundled.contains(QStringLiteral("\r\n")), "the bundle holds the text with its own line ends");
    QCOMPARE(plugin.packageText, bundled.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}

void PluginRegistrationTest::packageTextTellsWhatTheHostNeeds()
{
    const auto texts = [](const QString& chinese, const QString& english) {
        return QJsonObject{ { QStringLiteral("zh_CN"), chinese }, { QStringLiteral("en_US"), english } };
    };
    const QJsonObject expected{
        { QStringLiteral("name"), QStringLiteral("motioncontrol.axis") },
        { QStringLiteral("version"), QStringLiteral("1.0.0") },
        { QStringLiteral("descript"),
            texts(QStringLiteral("\u8fd0\u52a8\u63a7\u5236\u8f74"), QStringLiteral("Motion control axis")) },
        { QStringLiteral("provider"), texts(QStringLiteral("\u6c83\u6069"), QStringLiteral("Vornhal")) },
        { QStringLiteral("catgory"),
            texts(QStringLiteral("/\u8fd0\u52a8\u63a7\u5236/\u8f74"), QStringLiteral("/motioncontrol/axis")) },
        { QStringLiteral("dependencies"),
            QJsonObject{ { QStringLiteral("project.solutionview"), QStringLiteral("1.0.0") } } },
        { QStringLiteral("forceLoad"), true },
    };
    QCOMPARE(QJsonDocument::fromJson(MotionControlAxisPlugin().packageText.toUtf8()).object(), expected);
}

void PluginRegistrationTest::packageTextIsReadAsUtf8InEveryLocale()
{
    QTextCodec* before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QString packageText = MotionControlAxisPlugin().packageText;
    QTextCodec::setCodecForLocale(before);
    QVERIFY(packageText.contains(QStringLiteral("\u8fd0\u52a8\u63a7\u5236\u8f74")));
}

void PluginRegistrationTest::answersToItsClassAndToTheInterface()
{
    MotionControlAxisPlugin plugin;
    QVERIFY(plugin.qt_metacast("MotionControlAxisPlugin"));
    QVERIFY(plugin.qt_metacast("vornhal.Kestrun/1.1"));
    QVERIFY(!plugin.qt_metacast("vornhal.Kestrun/1.2"));
    QCOMPARE(qobject_cast<PluginInterface*>(static_cast<QObject*>(&plugin)), static_cast<PluginInterface*>(&plugin));
}

void PluginRegistrationTest::slotsStandInTheirOrder()
{
    const QStringList expected{
        QStringLiteral("public projectOpened(QString,Solution::ProjectInfo,Solution::NodeLevel)"),
        QStringLiteral("public nodeEvent(QString,Solution::NodeEvent,QVariant)"),
        QStringLiteral("public onlineStatechanged(bool)"),
        QStringLiteral("public onApplyOption(QString)"),
        QStringLiteral("public displayEvent(QString,Solution::DataEvent,QVariant)"),
        QStringLiteral("public onCommandExecuted(QString,QString,QString,QString)"),
        QStringLiteral("private motionControlTaskCfg()"),
        QStringLiteral("private addNewAxis()"),
        QStringLiteral("private deleteAxis()"),
        QStringLiteral("private deleteAllAxis()"),
        QStringLiteral("private renameAxis()"),
    };
    QStringList declared;
    const QMetaObject& meta = MotionControlAxisPlugin::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        const bool isPublic = method.access() == QMetaMethod::Public;
        declared.append((isPublic ? QStringLiteral("public ") : QStringLiteral("private "))
            + QString::fromLatin1(method.methodSignature()));
    }
    QCOMPARE(declared, expected);
}

void PluginRegistrationTest::initializeRegistersInOrder()
{
    TestHost host;
    MotionControlAxisPlugin plugin;
    QVERIFY2(host.calls.entries().isEmpty(), "construction asks the host for nothing");
    QVERIFY(plugin.initialize());
    QCOMPARE(host.calls.entries(),
        (QStringList{ QStringLiteral("application.manager(editor)"), QStringLiteral("cookies.value(Werkbay/Qss)"),
            QStringLiteral("editorManager.addEditorFactory(AxisView)"),
            QStringLiteral("comparatorMan.addComparator(AxisView)") }));
    QCOMPARE(host.cookies.lastFallback(QStringLiteral("Werkbay/Qss")).toString(), QStringLiteral("default.qss"));
    QCOMPARE(host.comparatorMan.comparators.size(), size_t(1));
    QVERIFY(host.editorManager.factories.first()->canCreate(QStringLiteral("AxisView")));
}

void PluginRegistrationTest::initializeFailsWithout_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("the editor manager") << "editor";
    QTest::newRow("the tree") << "Solution.View";
}

void PluginRegistrationTest::initializeFailsWithout()
{
    QFETCH(QString, key);
    TestProject project(QStringLiteral("NV3T_70Q12"));
    TestHost host;
    host.view.addProject(project.name());
    host.withhold(key);
    MotionControlAxisPlugin plugin;
    QVERIFY(!plugin.initialize());
    host.restore(key);
    host.calls.clear();

    QVERIFY(host.editorManager.factories.isEmpty());
    QVERIFY(host.comparatorMan.comparators.empty());
    QVERIFY(!host.objectTable.contains(QStringLiteral("MotionControlDebug")));
    emit host.view.projectOpened(project.nodePath(), PluginFixture::info(), Solution::LevelConfiguration);
    emit host.view.nodeEvent(project.nodePath(), Solution::NodeContextMenu, QPoint());
    emit host.view.displayEvent(project.nodePath(), Solution::DataControllerChanged, QVariant());
    QVERIFY2(host.calls.entries().isEmpty(), "nothing is connected");
}

void PluginRegistrationTest::initializeSurvivesTheLackOf_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("comparators");
    const QStringList keys = TestHost::keys();
    for (const QString& key : keys) {
        if (key != QLatin1String("editor") && key != QLatin1String("Solution.View"))
            QTest::newRow(qPrintable(key)) << key << (key == QLatin1String("COMPARATORMAN") ? 0 : 1);
    }
}

void PluginRegistrationTest::initializeSurvivesTheLackOf()
{
    QFETCH(QString, key);
    QFETCH(int, comparators);
    TestHost host;
    host.withhold(key);
    MotionControlAxisPlugin plugin;
    QVERIFY(plugin.initialize());
    QCOMPARE(host.editorManager.factories.size(), 1);
    QCOMPARE(static_cast<int>(host.comparatorMan.comparators.size()), comparators);
    QVERIFY(host.objectTable.contains(QStringLiteral("MotionControlDebug")));
}

void PluginRegistrationTest::withoutHostEverySlotReturnsAtOnce()
{
    TestHost host;
    Solution::publishApplication(nullptr);
    MotionControlAxisPlugin plugin;
    QVERIFY(!plugin.initialize());
    plugin.projectOpened(QStringLiteral("P"), PluginFixture::info(), Solution::LevelConfiguration);
    plugin.nodeEvent(QStringLiteral("P"), Solution::NodeContextMenu, QPoint());
    plugin.onApplyOption(QString());
    plugin.displayEvent(QStringLiteral("P"), Solution::DataControllerChanged, QVariant());
    plugin.onCommandExecuted(
        QStringLiteral("PROJECT_MODEL_STACK_REMOVE"), QStringLiteral("AxisModel"), QStringLiteral("1"), QString());
    QVERIFY(QMetaObject::invokeMethod(&plugin, "addNewAxis"));
    QVERIFY(QMetaObject::invokeMethod(&plugin, "renameAxis"));
    QVERIFY(host.calls.entries().isEmpty());
}

void PluginRegistrationTest::debugServiceIsPublishedUnlessThereIsOne()
{
    TestHost host;
    MotionControlAxisPlugin plugin;
    QVERIFY(!plugin.findChild<MotionControlDebug*>());
    QVERIFY(plugin.initialize());
    QObject* published = host.objectTable.value(QStringLiteral("MotionControlDebug"));
    QVERIFY(qobject_cast<MotionControlDebug*>(published));
    QCOMPARE(published->objectName(), QStringLiteral("MotionControlDebug"));
    QCOMPARE(published->parent(), static_cast<QObject*>(&plugin));

    MotionControlAxisPlugin second;
    QVERIFY(second.initialize());
    QCOMPARE(host.objectTable.value(QStringLiteral("MotionControlDebug")), published);
    QVERIFY2(second.findChild<MotionControlDebug*>(), "its own instance is made all the same");
}

void PluginRegistrationTest::refusedComparatorIsGivenUp()
{
    TestHost host;
    host.comparatorMan.refuse = true;
    MotionControlAxisPlugin plugin;
    QVERIFY(plugin.initialize());
    QCOMPARE(host.calls.count(QStringLiteral("comparatorMan.addComparator")), 1);
    QVERIFY(host.comparatorMan.comparators.empty());
}

void PluginRegistrationTest::connectionsAreUniqueButThatOfData()
{
    PluginFixture fixture;
    QVERIFY(fixture.plugin->initialize());
    fixture.addAxis(QStringLiteral("feed"));
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    QCOMPARE(fixture.host.calls.count(QStringLiteral("view.nodeProperty")), 1);
    emit fixture.host.viewHelper.commandExecuted(
        QStringLiteral("PROJECT_MODEL_STACK_REMOVE"), QStringLiteral("AxisModel"), QStringLiteral("99"), QString());
    QCOMPARE(fixture.host.calls.count(QStringLiteral("view.removeNode")), 1);
    emit fixture.host.view.displayEvent(fixture.project.nodePath(), Solution::DataControllerChanged, QVariant());
    QCOMPARE(fixture.host.calls.count(QStringLiteral("view.fileNameOf")), 2);
    fixture.openProject();
    emit fixture.host.view.projectOpened(
        fixture.project.nodePath(), PluginFixture::info(), Solution::LevelConfiguration);
    QCOMPARE(fixture.host.calls.count(QStringLiteral("view.addNode")), 2);
}

void PluginRegistrationTest::finishDoesNothing()
{
    PluginFixture fixture;
    fixture.plugin->finish();
    QVERIFY(fixture.host.calls.entries().isEmpty());
}

void PluginRegistrationTest::nothingIsTakenBackFromTheHost()
{
    TestHost host;
    auto plugin = std::make_unique<MotionControlAxisPlugin>();
    QVERIFY(plugin->initialize());
    host.calls.clear();
    plugin.reset();
    QVERIFY(host.calls.entries().isEmpty());
    QCOMPARE(host.editorManager.factories.size(), 1);
    QCOMPARE(host.comparatorMan.comparators.size(), size_t(1));
    QVERIFY(host.objectTable.contains(QStringLiteral("MotionControlDebug")));
}

void PluginRegistrationTest::logLineGoesToTheCommonLogger()
{
    TestHost host;
    MotionControlAxisPlugin::writeLog(2, QStringLiteral("100% of %s"));
    QCOMPARE(host.calls.entries(),
        (QStringList{ QStringLiteral("logManager.logger()"),
            QStringLiteral("logger.write(MotionControlAxisPlugin, 2, 100% of %s)") }));
}

void PluginRegistrationTest::logLineIsDroppedWithoutLog()
{
    MotionControlAxisPlugin::writeLog(0, QStringLiteral("no host"));
    TestHost host;
    host.logManager.hasLogger = false;
    MotionControlAxisPlugin::writeLog(0, QStringLiteral("no logger"));
    host.withhold(QStringLiteral("LogManager"));
    MotionControlAxisPlugin::writeLog(0, QStringLiteral("no manager"));
    QCOMPARE(host.calls.count(QStringLiteral("logger.write")), 0);
}

QTEST_MAIN(PluginRegistrationTest)
#include "PluginRegistrationTest.moc"
