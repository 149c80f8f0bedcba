#include "host/projectmodel/AxisTable.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/PopupMenuDriver.h"

#include <QDialog>
#include <QtTest>

/// What node events lead to: menus, the commands behind their entries, and the delete and rename requests.
class AxisMenuTest : public QObject {
    Q_OBJECT

private slots:
    void menuOffersTheEntriesOfTheNode_data();
    void menuOffersTheEntriesOfTheNode();
    void otherNodesHaveNoMenu_data();
    void otherNodesHaveNoMenu();
    void entryStartsItsCommand_data();
    void entryStartsItsCommand();
    void requestsOnAnAxisNodeAreHandled_data();
    void requestsOnAnAxisNodeAreHandled();
    void requestsOnOtherNodesAreIgnored_data();
    void requestsOnOtherNodesAreIgnored();
    void otherEventsOnlyMoveTheCurrentNode();
    void withoutTreeTheNodeIsNotTaken();
};

void AxisMenuTest::menuOffersTheEntriesOfTheNode_data()
{
    QTest::addColumn<bool>("onAxis");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("unit node") << false
                               << QStringList{ QStringLiteral("New Axis"), QStringLiteral("Motion Control Task CFG"),
                                      QStringLiteral("Delete All Axis") };
    QTest::newRow("axis node") << true << QStringList{ QStringLiteral("Delete Axis"), QStringLiteral("Rename") };
}

void AxisMenuTest::menuOffersTheEntriesOfTheNode()
{
    QFETCH(bool, onAxis);
    QFETCH(QStringList, entries);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(QStringLiteral("feed"));
    PopupMenuDriver menus;
    const QPoint position(37, 41);
    fixture.send(onAxis ? fixture.pathOf(axis) : fixture.project.unitPath(), Solution::NodeContextMenu, position);
    QCOMPARE(menus.menus.size(), 1);
    const PopupMenuDriver::Menu menu = menus.menus.first();
    QCOMPARE(menu.entries, entries);
    QCOMPARE(menu.position, position);
    QVERIFY(menu.allEnabled);
    QVERIFY(!menu.anyShortcut);
    QVERIFY(!menu.hasParent);
}

void AxisMenuTest::otherNodesHaveNoMenu_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a node of the host") << "Line.ConfigAndSetup";
    QTest::newRow("a node that is not there") << "Line.Nothing";
    QTest::newRow("no node") << "";
}

void AxisMenuTest::otherNodesHaveNoMenu()
{
    QFETCH(QString, path);
    PluginFixture fixture;
    PopupMenuDriver menus;
    fixture.send(path, Solution::NodeContextMenu, QPoint(1, 1));
    QVERIFY(menus.menus.isEmpty());
}

void AxisMenuTest::entryStartsItsCommand_data()
{
    QTest::addColumn<bool>("onAxis");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("question");
    QTest::newRow("new axis") << false << "New Axis"
                              << "New Axis"
                              << "";
    QTest::newRow("cycle time") << false << "Motion Control Task CFG"
                                << "MotionControlTaskCfg"
                                << "";
    QTest::newRow("delete all") << false << "Delete All Axis"
                                << ""
                                << "Do you want to delete all axis ?";
    QTest::newRow("delete") << true << "Delete Axis"
                            << ""
                            << "Do you want to delete the axis ?";
    QTest::newRow("rename") << true << "Rename"
                            << "Rename Axis"
                            << "";
}

void AxisMenuTest::entryStartsItsCommand()
{
    QFETCH(bool, onAxis);
    QFETCH(QString, entry);
    QFETCH(QString, title);
    QFETCH(QString, question);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(QStringLiteral("feed"));
    PopupMenuDriver menus;
    menus.choose(entry);
    MessageBoxWatcher boxes;
    QString shownTitle;
    ModalDialogDriver dialogs([&shownTitle](QDialog* dialog) { shownTitle = dialog->windowTitle(); });
    fixture.send(onAxis ? fixture.pathOf(axis) : fixture.project.unitPath(), Solution::NodeContextMenu, QPoint(1, 1));
    QCOMPARE(shownTitle, title);
    QCOMPARE(boxes.texts(), question.isEmpty() ? QStringList() : QStringList{ question });
    QCOMPARE(fixture.axisNames(), QStringList{ QStringLiteral("feed") });
}

void AxisMenuTest::requestsOnAnAxisNodeAreHandled_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("delete request") << 9 << QStringList();
    QTest::newRow("rename request") << 8 << QStringList{ QStringLiteral("lift") };
}

void AxisMenuTest::requestsOnAnAxisNodeAreHandled()
{
    QFETCH(int, event);
    QFETCH(QStringList, left);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(QStringLiteral("feed"));
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("Yes"));
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::enter(dialog, QStringLiteral("lift")); });
    fixture.send(fixture.pathOf(axis), static_cast<Solution::NodeEvent>(event));
    QCOMPARE(fixture.axisNames(), left);
    QCOMPARE(fixture.shownAxes(), left);
}

void AxisMenuTest::requestsOnOtherNodesAreIgnored_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("unit node") << "Line.ConfigAndSetup.Axis";
    QTest::newRow("a node of the host") << "Line.ConfigAndSetup";
}

void AxisMenuTest::requestsOnOtherNodesAreIgnored()
{
    QFETCH(QString, path);
    PluginFixture fixture;
    fixture.addAxis(QStringLiteral("feed"));
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs;
    fixture.send(path, Solution::NodeDelete);
    fixture.send(path, Solution::NodeRename);
    QCOMPARE(boxes.count() + dialogs.count, 0);
}

void AxisMenuTest::otherEventsOnlyMoveTheCurrentNode()
{
    PluginFixture fixture;
    const AxisTable* feed = fixture.addAxis(QStringLiteral("feed"));
    const AxisTable* lift = fixture.addAxis(QStringLiteral("lift"));
    PopupMenuDriver menus;
    MessageBoxWatcher boxes;
    fixture.send(fixture.pathOf(feed), Solution::NodeActivated);
    fixture.send(fixture.pathOf(lift), static_cast<Solution::NodeEvent>(7));
    QVERIFY(menus.menus.isEmpty());
    QCOMPARE(boxes.count(), 0);
    boxes.answer(QStringLiteral("Yes"));
    fixture.call("deleteAxis");
    QCOMPARE(fixture.axisNames(), QStringList{ QStringLiteral("feed") });
}

void AxisMenuTest::withoutTreeTheNodeIsNotTaken()
{
    PluginFixture fixture;
    const AxisTable* feed = fixture.addAxis(QStringLiteral("feed"));
    const AxisTable* lift = fixture.addAxis(QStringLiteral("lift"));
    fixture.send(fixture.pathOf(feed), Solution::NodeSelected);
    fixture.host.withhold(QStringLiteral("Solution.View"));
    fixture.send(fixture.pathOf(lift), Solution::NodeSelected);
    fixture.host.restore(QStringLiteral("Solution.View"));
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("Yes"));
    fixture.call("deleteAxis");
    QCOMPARE(fixture.axisNames(), QStringList{ QStringLiteral("lift") });
}

QTEST_MAIN(AxisMenuTest)
#include "AxisMenuTest.moc"
