#include "workbench/PluginListDialog.h"

#include "workbench/LogManager.h"
#include "workbench/OptionManager.h"
#include "workbench/PluginManager.h"

#include <QLabel>
#include <QTreeWidget>
#include <QtTest>

namespace {
enum Column { NameColumn, VersionColumn, ProviderColumn, OrderColumn, StateColumn };
}

class PluginListDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void everyLibraryIsListedWithWhatBecameOfIt();
    void needsAndReasonsAreTold();
    void whatMayBeSwitchedOffHasABox();
    void theBoxesDecideWhatIsSwitchedOff();
    void anEmptyFolderIsSaid();

private:
    void load(const char* folder, const QStringList& switchedOff = {});
    void open(const QStringList& switchedOff = {});
    QTreeWidget* list() const { return dialog->findChild<QTreeWidget*>(QStringLiteral("list")); }
    QTreeWidgetItem* item(const char* name) const
    {
        return list()->findItems(QLatin1String(name), Qt::MatchExactly).value(0);
    }
    QString details(const char* name) const;

    LogManager log;
    OptionManager options;
    std::unique_ptr<PluginManager> plugins;
    std::unique_ptr<PluginListDialog> dialog;
};

void PluginListDialogTest::init()
{
    dialog.reset();
    plugins = std::make_unique<PluginManager>(log, options);
    plugins->addPresent(QStringLiteral("project.solutionview"), QStringLiteral("1.0.0"));
}

void PluginListDialogTest::load(const char* folder, const QStringList& switchedOff)
{
    plugins->load(QString(QStringLiteral(KESTRUN_BUILD_DIR "/tests/plugins/") + QLatin1String(folder)), switchedOff);
    open(switchedOff);
}

void PluginListDialogTest::open(const QStringList& switchedOff)
{
    dialog = std::make_unique<PluginListDialog>(*plugins, QStringLiteral("en_US"), switchedOff);
}

QString PluginListDialogTest::details(const char* name) const
{
    list()->setCurrentItem(item(name));
    return dialog->findChild<QLabel*>(QStringLiteral("details"))->text();
}

void PluginListDialogTest::everyLibraryIsListedWithWhatBecameOfIt()
{
    load("order");
    QCOMPARE(list()->topLevelItemCount(), 3);
    QVERIFY(item("first") && item("middle") && item("last"));
    QCOMPARE(item("first")->text(VersionColumn), QStringLiteral("1.3.0"));
    QCOMPARE(item("first")->text(OrderColumn), QStringLiteral("1"));
    QCOMPARE(item("last")->text(OrderColumn), QStringLiteral("3"));
    QCOMPARE(item("last")->text(StateColumn), QStringLiteral("In service"));
}

void PluginListDialogTest::needsAndReasonsAreTold()
{
    load("order");
    QVERIFY2(details("middle").contains(QStringLiteral("Needs: first 1.2.0, project.solutionview 1.0.0")),
        qPrintable(details("middle")));
    QVERIFY(details("middle").contains(QStringLiteral("b_middle")));
    init();
    load("bad");
    QVERIFY(item("lonely"));
    QCOMPARE(item("lonely")->text(StateColumn), QStringLiteral("Failed"));
    QCOMPARE(item("lonely")->text(OrderColumn), QString());
    QVERIFY2(details("lonely").startsWith(QStringLiteral("It needs the package \"nobody\" 1.0.0")),
        qPrintable(details("lonely")));
}

void PluginListDialogTest::whatMayBeSwitchedOffHasABox()
{
    load("optional", { QStringLiteral("optional"), QStringLiteral("forced") });
    QVERIFY(item("optional") && item("forced"));
    QVERIFY(item("optional")->data(NameColumn, Qt::CheckStateRole).isValid());
    QCOMPARE(item("optional")->checkState(NameColumn), Qt::Unchecked);
    QCOMPARE(item("optional")->text(StateColumn), QStringLiteral("Switched off"));
    QVERIFY(!item("forced")->data(NameColumn, Qt::CheckStateRole).isValid());
    QCOMPARE(item("forced")->text(StateColumn), QStringLiteral("In service"));
    QVERIFY(details("forced").contains(QStringLiteral("it cannot be switched off")));
}

void PluginListDialogTest::theBoxesDecideWhatIsSwitchedOff()
{
    load("optional");
    QCOMPARE(dialog->switchedOff(), QStringList());
    item("optional")->setCheckState(NameColumn, Qt::Unchecked);
    QCOMPARE(dialog->switchedOff(), QStringList(QStringLiteral("optional")));
    item("optional")->setCheckState(NameColumn, Qt::Checked);
    QCOMPARE(dialog->switchedOff(), QStringList());
}

void PluginListDialogTest::anEmptyFolderIsSaid()
{
    open();
    QCOMPARE(list()->topLevelItemCount(), 0);
    QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("details"))->text(),
        QStringLiteral("There is no plug-in in the plug-in folder."));
}

QTEST_MAIN(PluginListDialogTest)
#include "PluginListDialogTest.moc"
