#include "workbench/ProjectTreeView.h"
#include "workbench/ProjectTree.h"

#include <QContextMenuEvent>
#include <QSignalSpy>
#include <QtTest>

using Solution::NodeDescription;

class ProjectTreeViewTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aKeyRaisesAnEvent_data();
    void aKeyRaisesAnEvent();
    void keysWithModifiersAreNoCommands();
    void keysWithoutANodeRaiseNothing();
    void aDoubleClickOpensANodeThatNamesAnEditor();
    void returnOpensToo();
    void aNodeWithoutAnEditorUnfolds();
    void aNodeThatLacksOneOfTheTwoIsNotOpened_data();
    void aNodeThatLacksOneOfTheTwoIsNotOpened();
    void selectingRaisesAnEvent();
    void theContextMenuTellsNodeAndPlace();
    void theContextMenuKeyWorksOnTheCurrentNode();
    void aContextMenuBesideTheNodesRaisesNothing();
    void hiddenNodesAreNotShown();

private:
    void add(const QString& parent, const QString& name, const QMap<QString, QVariant>& properties = {}) const;
    QPoint centerOf(const QString& path) const;

    ProjectTree* tree = nullptr;
    ProjectTreeView* view = nullptr;
    QSignalSpy* events = nullptr;
};

void ProjectTreeViewTest::init()
{
    qRegisterMetaType<Solution::NodeEvent>();
    tree = new ProjectTree;
    view = new ProjectTreeView(*tree);
    add(QString(), QStringLiteral("P"));
    add(QStringLiteral("P"), QStringLiteral("axis"),
        { { QStringLiteral("FileName"), QStringLiteral("P.axis") },
            { QStringLiteral("MimeType"), QStringLiteral("AxisView") } });
    view->resize(300, 300);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view));
    view->expandAll();
    events = new QSignalSpy(tree, &Solution::View::nodeEvent);
}

void ProjectTreeViewTest::cleanup()
{
    delete events;
    delete view;
    delete tree;
}

void ProjectTreeViewTest::add(
    const QString& parent, const QString& name, const QMap<QString, QVariant>& properties) const
{
    NodeDescription node;
    node.name = name;
    node.displayText = name;
    node.properties = properties;
    QVERIFY(tree->addNode(parent, node, 0));
}

QPoint ProjectTreeViewTest::centerOf(const QString& path) const
{
    return view->visualRect(tree->index(path)).center();
}

void ProjectTreeViewTest::aKeyRaisesAnEvent_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("event");
    QTest::newRow("F2 renames") << int(Qt::Key_F2) << 8;
    QTest::newRow("Delete deletes") << int(Qt::Key_Delete) << 9;
    QTest::newRow("Return activates") << int(Qt::Key_Return) << 1;
    QTest::newRow("Enter activates") << int(Qt::Key_Enter) << 1;
}

void ProjectTreeViewTest::aKeyRaisesAnEvent()
{
    QFETCH(int, key);
    view->select(QStringLiteral("P.axis"));
    events->clear();
    QTest::keyClick(view, static_cast<Qt::Key>(key));
    QCOMPARE(events->count(), 1);
    QCOMPARE(events->first().at(0).toString(), QStringLiteral("P.axis"));
    QTEST(static_cast<int>(events->first().at(1).value<Solution::NodeEvent>()), "event");
}

void ProjectTreeViewTest::keysWithModifiersAreNoCommands()
{
    view->select(QStringLiteral("P.axis"));
    events->clear();
    QTest::keyClick(view, Qt::Key_Delete, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_F2, Qt::ShiftModifier);
    QCOMPARE(events->count(), 0);
}

void ProjectTreeViewTest::keysWithoutANodeRaiseNothing()
{
    view->setCurrentIndex({});
    events->clear();
    QTest::keyClick(view, Qt::Key_Delete);
    QTest::keyClick(view, Qt::Key_F2);
    QCOMPARE(events->count(), 0);
}

void ProjectTreeViewTest::aDoubleClickOpensANodeThatNamesAnEditor()
{
    QSignalSpy opened(view, &ProjectTreeView::openRequested);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centerOf(QStringLiteral("P.axis")));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centerOf(QStringLiteral("P.axis")));
    QCOMPARE(opened.count(), 1);
    QCOMPARE(opened.first().at(0).toString(), QStringLiteral("P.axis"));
    QCOMPARE(opened.first().at(1).toString(), QStringLiteral("AxisView"));
}

void ProjectTreeViewTest::returnOpensToo()
{
    QSignalSpy opened(view, &ProjectTreeView::openRequested);
    view->select(QStringLiteral("P.axis"));
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(opened.count(), 1);
}

void ProjectTreeViewTest::aNodeWithoutAnEditorUnfolds()
{
    QSignalSpy opened(view, &ProjectTreeView::openRequested);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centerOf(QStringLiteral("P")));
    QVERIFY(!view->isExpanded(tree->index(QStringLiteral("P"))));
    QCOMPARE(opened.count(), 0);
}

void ProjectTreeViewTest::aNodeThatLacksOneOfTheTwoIsNotOpened_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("no MimeType") << QStringLiteral("FileName");
    QTest::newRow("no FileName") << QStringLiteral("MimeType");
}

void ProjectTreeViewTest::aNodeThatLacksOneOfTheTwoIsNotOpened()
{
    QFETCH(QString, key);
    add(QStringLiteral("P"), QStringLiteral("half"), { { key, QStringLiteral("x") } });
    QSignalSpy opened(view, &ProjectTreeView::openRequested);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centerOf(QStringLiteral("P.half")));
    QCOMPARE(opened.count(), 0);
}

void ProjectTreeViewTest::selectingRaisesAnEvent()
{
    view->setCurrentIndex({});
    events->clear();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centerOf(QStringLiteral("P.axis")));
    QCOMPARE(events->count(), 1);
    QCOMPARE(static_cast<int>(events->first().at(1).value<Solution::NodeEvent>()), 0);
    QCOMPARE(view->currentPath(), QStringLiteral("P.axis"));
}

void ProjectTreeViewTest::theContextMenuTellsNodeAndPlace()
{
    view->setCurrentIndex(tree->index(QStringLiteral("P.axis")));
    events->clear();
    const QPoint place = centerOf(QStringLiteral("P.axis"));
    const QPoint global = view->viewport()->mapToGlobal(place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, global);
    QApplication::sendEvent(view->viewport(), &event);
    QCOMPARE(events->count(), 1);
    QCOMPARE(events->first().at(0).toString(), QStringLiteral("P.axis"));
    QCOMPARE(static_cast<int>(events->first().at(1).value<Solution::NodeEvent>()), 2);
    QCOMPARE(events->first().at(2).toPoint(), global);
}

void ProjectTreeViewTest::theContextMenuKeyWorksOnTheCurrentNode()
{
    view->select(QStringLiteral("P.axis"));
    events->clear();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), view->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(view->viewport(), &event);
    QCOMPARE(events->count(), 1);
    QCOMPARE(events->first().at(0).toString(), QStringLiteral("P.axis"));
    QCOMPARE(events->first().at(2).toPoint(), view->viewport()->mapToGlobal(centerOf(QStringLiteral("P.axis"))));
}

void ProjectTreeViewTest::aContextMenuBesideTheNodesRaisesNothing()
{
    events->clear();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 290), view->mapToGlobal(QPoint(10, 290)));
    QApplication::sendEvent(view->viewport(), &event);
    QCOMPARE(events->count(), 0);
}

void ProjectTreeViewTest::hiddenNodesAreNotShown()
{
    NodeDescription node;
    node.name = QStringLiteral("hidden");
    node.visible = false;
    QVERIFY(tree->addNode(QStringLiteral("P"), node, 0));
    QVERIFY(view->isRowHidden(1, tree->index(QStringLiteral("P"))));
    QVERIFY(!view->isRowHidden(0, tree->index(QStringLiteral("P"))));
}

QTEST_MAIN(ProjectTreeViewTest)
#include "ProjectTreeViewTest.moc"
