#include "workbench/PluginManager.h"
#include "sdk/PluginInterface.h"
#include "workbench/LogManager.h"
#include "workbench/OptionManager.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <memory>

class PluginManagerTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pluginsComeIntoServiceInTheOrderOfTheirDependencies();
    void objectsGoInTheReverseOrder();
    void theTextsOfTheObjectsAreFilled();
    void aFailureIsNamedAndTheRestGoesOn_data();
    void aFailureIsNamedAndTheRestGoesOn();
    void aFileThatIsNoLibraryIsPassedOver();
    void oneThatCannotBeSwitchedOffIsLoaded();
    void applyingOptionsReachesEveryPlugin();
    void aMissingFolderIsNamed();
    void anEmptyFolderIsNoFault();
    void loadingAgainMakesNewObjects();

private:
    QString folder(const char* name) const;
    QStringList calls() const { return qApp->property("TestPluginCalls").toStringList(); }
    const PluginEntry* entry(const QString& file) const;

    std::unique_ptr<LogManager> log;
    std::unique_ptr<OptionManager> options;
    std::unique_ptr<PluginManager> plugins;
    QStringList lines;
};

void PluginManagerTest::init()
{
    qApp->setProperty("TestPluginCalls", QStringList());
    lines.clear();
    log = std::make_unique<LogManager>();
    connect(log.get(), &LogManager::lineWritten, this,
        [this](LogLevel, const QString&, const QString& text) { lines.append(text); });
    options = std::make_unique<OptionManager>();
    plugins = std::make_unique<PluginManager>(*log, *options);
    plugins->addPresent(QStringLiteral("project.solutionview"), QStringLiteral("1.0.0"));
}

void PluginManagerTest::cleanup()
{
    plugins.reset();
    options.reset();
    log.reset();
}

QString PluginManagerTest::folder(const char* name) const
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/tests/plugins/") + QLatin1String(name);
}

const PluginEntry* PluginManagerTest::entry(const QString& file) const
{
    for (const PluginEntry& entry : plugins->entries()) {
        if (QFileInfo(entry.fileName).completeBaseName() == file)
            return &entry;
    }
    return nullptr;
}

void PluginManagerTest::pluginsComeIntoServiceInTheOrderOfTheirDependencies()
{
    plugins->load(folder("order"), {});
    QCOMPARE(calls(),
        QStringList({ QStringLiteral("initialize first"), QStringLiteral("initialize middle"),
            QStringLiteral("initialize last"), QStringLiteral("finish first"), QStringLiteral("finish middle"),
            QStringLiteral("finish last") }));
    QCOMPARE(entry(QStringLiteral("c_first"))->order, 1);
    QCOMPARE(entry(QStringLiteral("a_last"))->order, 3);
    QCOMPARE(entry(QStringLiteral("a_last"))->plugin->loadOrder, 3);
    QCOMPARE(entry(QStringLiteral("a_last"))->state, PluginEntry::InService);
}

void PluginManagerTest::objectsGoInTheReverseOrder()
{
    plugins->load(folder("order"), {});
    qApp->setProperty("TestPluginCalls", QStringList());
    plugins->shutDown();
    QCOMPARE(calls(),
        QStringList({ QStringLiteral("gone last"), QStringLiteral("gone middle"), QStringLiteral("gone first") }));
    plugins->shutDown();
    QCOMPARE(calls().size(), 3);
}

void PluginManagerTest::theTextsOfTheObjectsAreFilled()
{
    plugins->load(folder("order"), {});
    plugins->setLanguage(QStringLiteral("zh_CN"));
    const PluginInterface* first = entry(QStringLiteral("c_first"))->plugin;
    QCOMPARE(first->name, QStringLiteral("first"));
    QCOMPARE(first->version, QStringLiteral("1.3.0"));
    QCOMPARE(first->description, QStringLiteral("插件 first"));
    QCOMPARE(first->enabled, 1);
    plugins->setLanguage(QStringLiteral("en_US"));
    QCOMPARE(first->description, QStringLiteral("Plug-in first"));
}

void PluginManagerTest::aFailureIsNamedAndTheRestGoesOn_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("one that declines") << QStringLiteral("declines") << QStringLiteral("declined");
    QTest::newRow("one that needs one that declines") << QStringLiteral("dependent") << QStringLiteral("\"declines\"");
    QTest::newRow("one that needs a package that is not there")
        << QStringLiteral("lonely") << QStringLiteral("\"nobody\"");
    QTest::newRow("one that needs a newer version") << QStringLiteral("newer") << QStringLiteral("1.1.0");
    QTest::newRow("one that needs another major version") << QStringLiteral("other_major") << QStringLiteral("0.9.0");
    QTest::newRow("one of a circle") << QStringLiteral("circle_a") << QStringLiteral("\"circle_b\"");
    QTest::newRow("the other one of the circle") << QStringLiteral("circle_b") << QStringLiteral("\"circle_a\"");
    QTest::newRow("one with a broken package text") << QStringLiteral("broken") << QStringLiteral("at byte");
    QTest::newRow("one whose package is already there")
        << QStringLiteral("twin_of_sound") << QStringLiteral("\"sound\"");
    QTest::newRow("one of another kind") << QStringLiteral("other_kind") << QStringLiteral("org.example.Other/1.0");
}

void PluginManagerTest::aFailureIsNamedAndTheRestGoesOn()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    plugins->load(folder("bad"), {});
    const PluginEntry* failed = entry(file);
    QVERIFY(failed);
    QCOMPARE(failed->state, PluginEntry::Failed);
    QVERIFY2(failed->reason.contains(reason), qPrintable(failed->reason));
    const bool named = std::any_of(lines.begin(), lines.end(),
        [&](const QString& line) { return line.contains(failed->fileName) && line.contains(failed->reason); });
    QVERIFY(named);
    QCOMPARE(entry(QStringLiteral("sound"))->state, PluginEntry::InService);
    QVERIFY(calls().contains(QStringLiteral("finish sound")));
    QVERIFY(!calls().contains(QString(QStringLiteral("finish ") + file)));
}

void PluginManagerTest::aFileThatIsNoLibraryIsPassedOver()
{
    const QTemporaryDir directory;
    QFile library(directory.filePath(QStringLiteral("text.so")));
    QVERIFY(library.open(QIODevice::WriteOnly));
    library.write("no library at all");
    library.close();
    QFile readme(directory.filePath(QStringLiteral("readme.txt")));
    QVERIFY(readme.open(QIODevice::WriteOnly));
    readme.close();
    plugins->load(directory.path(), {});
    QCOMPARE(int(plugins->entries().size()), 1);
    QCOMPARE(plugins->entries().front().state, PluginEntry::Failed);
    QVERIFY(!plugins->entries().front().reason.isEmpty());
    QVERIFY(lines.last().contains(QStringLiteral("text.so")));
}

void PluginManagerTest::oneThatCannotBeSwitchedOffIsLoaded()
{
    plugins->load(folder("optional"), { QStringLiteral("forced"), QStringLiteral("optional") });
    QCOMPARE(entry(QStringLiteral("forced"))->state, PluginEntry::InService);
    QCOMPARE(entry(QStringLiteral("forced"))->plugin->enabled, 1);
    QCOMPARE(entry(QStringLiteral("optional"))->state, PluginEntry::SwitchedOff);
    QCOMPARE(entry(QStringLiteral("optional"))->plugin->enabled, 0);
    QVERIFY(!calls().contains(QStringLiteral("initialize optional")));
}

void PluginManagerTest::applyingOptionsReachesEveryPlugin()
{
    plugins->load(folder("order"), {});
    emit options->applyOption(QString());
    QCOMPARE(calls().filter(QStringLiteral("apply")).size(), 3);
}

void PluginManagerTest::aMissingFolderIsNamed()
{
    plugins->load(QStringLiteral("/nowhere/plugins"), {});
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.first().contains(QStringLiteral("/nowhere/plugins")));
    QVERIFY(plugins->entries().empty());
}

void PluginManagerTest::anEmptyFolderIsNoFault()
{
    const QTemporaryDir directory;
    plugins->load(directory.path(), {});
    QCOMPARE(lines, QStringList());
}

void PluginManagerTest::loadingAgainMakesNewObjects()
{
    plugins->load(folder("order"), {});
    plugins->shutDown();
    PluginManager again(*log, *options);
    again.addPresent(QStringLiteral("project.solutionview"), QStringLiteral("1.0.0"));
    qApp->setProperty("TestPluginCalls", QStringList());
    again.load(folder("order"), {});
    QCOMPARE(calls().filter(QStringLiteral("initialize")).size(), 3);
}

QTEST_MAIN(PluginManagerTest)
#include "PluginManagerTest.moc"
