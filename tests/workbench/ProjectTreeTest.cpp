#include "workbench/ProjectTree.h"

#include <QSignalSpy>
#include <QtTest>

using Solution::NodeDescription;

namespace {

NodeDescription node(const QString& name, const QMap<QString, QVariant>& properties = {})
{
    NodeDescription description;
    description.name = name;
    description.displayText = name.toUpper();
    description.properties = properties;
    return description;
}

NodeDescription axisNode(const QString& path, unsigned id)
{
    return node(path.section(QLatin1Char('.'), -1),
        { { QStringLiteral("FileName"), path }, { QStringLiteral("MimeType"), QStringLiteral("AxisView") },
            { QStringLiteral("NodeType"), QStringLiteral("AxisNode") }, { QStringLiteral("DataBaseKey"), id } });
}

} // namespace

class ProjectTreeTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aNodeStandsUnderThePathOfItsParentAndItsName();
    void aNodeIsNotAdded_data();
    void aNodeIsNotAdded();
    void insertingGivesTheRow_data();
    void insertingGivesTheRow();
    void theTextAndTheIconAreProperties();
    void anUnknownPathGivesFallbacks();
    void removingANodeForgetsItsBranch();
    void removingNothingIsSurvived();
    void nodesAreFoundByFileAndByKey();
    void aChangedPropertyIsFoundByItsNewValue();
    void lookupsPreferTheCurrentProject();
    void theFirstNodeWinsWithoutACurrentProject();
    void childrenStandInTheirOrder();
    void aNodeThatIsGoneIsNotFoundEvenIfTheIndexWasToStay();
    void itTellsBeforeItGoes();

private:
    ProjectTree* tree = nullptr;
};

void ProjectTreeTest::init()
{
    tree = new ProjectTree;
    QVERIFY(tree->addNode(QString(), node(QStringLiteral("P")), 0));
    QVERIFY(tree->addNode(QStringLiteral("P"), node(QStringLiteral("a")), 0));
    QVERIFY(tree->addNode(QStringLiteral("P"), node(QStringLiteral("b")), 0));
}

void ProjectTreeTest::cleanup()
{
    delete tree;
    tree = nullptr;
}

void ProjectTreeTest::aNodeStandsUnderThePathOfItsParentAndItsName()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), node(QStringLiteral("c")), 0));
    QVERIFY(tree->contains(QStringLiteral("P.a.c")));
    QCOMPARE(tree->index(QStringLiteral("P.a.c")).data().toString(), QStringLiteral("C"));
    QCOMPARE(tree->path(tree->index(QStringLiteral("P.a.c"))), QStringLiteral("P.a.c"));
}

void ProjectTreeTest::aNodeIsNotAdded_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("name");
    QTest::newRow("below a path that names no node") << QStringLiteral("P.x") << QStringLiteral("c");
    QTest::newRow("without a name") << QStringLiteral("P") << QString();
    QTest::newRow("where there is one of that name") << QStringLiteral("P") << QStringLiteral("a");
}

void ProjectTreeTest::aNodeIsNotAdded()
{
    QFETCH(QString, parent);
    QFETCH(QString, name);
    QVERIFY(!tree->addNode(parent, node(name), 0));
    QVERIFY(!tree->insertNode(parent, 0, node(name)));
    QCOMPARE(tree->childNodes(QStringLiteral("P")).size(), 2);
}

void ProjectTreeTest::insertingGivesTheRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("given");
    QTest::newRow("at the front") << 0 << 0;
    QTest::newRow("in the middle") << 1 << 1;
    QTest::newRow("at the end") << 2 << 2;
    QTest::newRow("past the end appends") << 99 << 2;
    QTest::newRow("before the front appends") << -1 << 2;
}

void ProjectTreeTest::insertingGivesTheRow()
{
    QFETCH(int, row);
    QVERIFY(tree->insertNode(QStringLiteral("P"), row, node(QStringLiteral("n"))));
    QTEST(tree->nodeRow(QStringLiteral("P.n")), "given");
}

void ProjectTreeTest::theTextAndTheIconAreProperties()
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    tree->setNodeProperty(QStringLiteral("P.a"), QStringLiteral("DisplayName"), QStringLiteral("Axis"));
    tree->setNodeProperty(QStringLiteral("P.a"), QStringLiteral("Icon"), QIcon(pixmap));
    const QModelIndex index = tree->index(QStringLiteral("P.a"));
    QCOMPARE(index.data().toString(), QStringLiteral("Axis"));
    QVERIFY(!index.data(Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(tree->nodeProperty(QStringLiteral("P.a"), QStringLiteral("DisplayName"), QVariant()).toString(),
        QStringLiteral("Axis"));
    QVERIFY(!tree->nodeProperty(QStringLiteral("P.a"), QStringLiteral("Icon"), QVariant()).value<QIcon>().isNull());
}

void ProjectTreeTest::anUnknownPathGivesFallbacks()
{
    QCOMPARE(tree->nodeProperty(QStringLiteral("x"), QStringLiteral("k"), 7).toInt(), 7);
    QCOMPARE(tree->nodeProperty(QStringLiteral("P.a"), QStringLiteral("k"), 7).toInt(), 7);
    QCOMPARE(tree->nodeRow(QStringLiteral("x")), -1);
    QCOMPARE(tree->childNodes(QStringLiteral("x")), QStringList());
    QCOMPARE(tree->fileNameOf(QStringLiteral("AxisView"), 1), QString());
    QCOMPARE(tree->nodePathOfFile(QStringLiteral("x"), true), QString());
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 1), QString());
    tree->setNodeProperty(QStringLiteral("x"), QStringLiteral("k"), 1);
    QVERIFY(!tree->contains(QStringLiteral("x")));
}

void ProjectTreeTest::removingANodeForgetsItsBranch()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), axisNode(QStringLiteral("P.a.AxisView1"), 1), 0));
    QVERIFY(tree->removeNode(QStringLiteral("P.a"), true));
    QVERIFY(!tree->contains(QStringLiteral("P.a.AxisView1")));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 1), QString());
    QCOMPARE(tree->childNodes(QStringLiteral("P")), QStringList(QStringLiteral("P.b")));
    QVERIFY(tree->addNode(QStringLiteral("P"), node(QStringLiteral("a")), 0));
}

void ProjectTreeTest::removingNothingIsSurvived()
{
    QVERIFY(!tree->removeNode(QString(), true));
    QVERIFY(!tree->removeNode(QStringLiteral("P.x"), true));
    QCOMPARE(tree->childNodes(QStringLiteral("P")).size(), 2);
}

void ProjectTreeTest::nodesAreFoundByFileAndByKey()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), axisNode(QStringLiteral("P.a.AxisView7"), 7), 0));
    QCOMPARE(tree->fileNameOf(QStringLiteral("AxisView"), 7), QStringLiteral("P.a.AxisView7"));
    QCOMPARE(tree->nodePathOfFile(QStringLiteral("P.a.AxisView7"), true), QStringLiteral("P.a.AxisView7"));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 7), QStringLiteral("P.a.AxisView7"));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 8), QString());
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisView"), 7), QString());
}

void ProjectTreeTest::aChangedPropertyIsFoundByItsNewValue()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), axisNode(QStringLiteral("P.a.AxisView7"), 7), 0));
    tree->setNodeProperty(QStringLiteral("P.a.AxisView7"), QStringLiteral("DataBaseKey"), 9U);
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 9), QStringLiteral("P.a.AxisView7"));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 7), QString());
}

void ProjectTreeTest::lookupsPreferTheCurrentProject()
{
    QVERIFY(tree->addNode(QString(), node(QStringLiteral("Q")), 0));
    QVERIFY(tree->addNode(QStringLiteral("P"), axisNode(QStringLiteral("P.AxisView1"), 1), 0));
    NodeDescription further = axisNode(QStringLiteral("P.AxisView1"), 1);
    QVERIFY(tree->addNode(QStringLiteral("Q"), further, 0));
    tree->setCurrentProject(QStringLiteral("Q"));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 1), QStringLiteral("Q.AxisView1"));
    QCOMPARE(tree->nodePathOfFile(QStringLiteral("P.AxisView1"), true), QStringLiteral("Q.AxisView1"));
    QCOMPARE(tree->nodePathOfFile(QStringLiteral("P.AxisView1"), false), QStringLiteral("P.AxisView1"));
    tree->setCurrentProject(QStringLiteral("P"));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 1), QStringLiteral("P.AxisView1"));
}

void ProjectTreeTest::theFirstNodeWinsWithoutACurrentProject()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), axisNode(QStringLiteral("P.a.AxisView1"), 1), 0));
    QVERIFY(tree->addNode(QStringLiteral("P.b"), axisNode(QStringLiteral("P.b.AxisView1"), 1), 0));
    QCOMPARE(tree->nodePathOfKey(QStringLiteral("AxisNode"), 1), QStringLiteral("P.a.AxisView1"));
}

void ProjectTreeTest::childrenStandInTheirOrder()
{
    QVERIFY(tree->insertNode(QStringLiteral("P"), 1, node(QStringLiteral("m"))));
    QCOMPARE(tree->childNodes(QStringLiteral("P")),
        QStringList({ QStringLiteral("P.a"), QStringLiteral("P.m"), QStringLiteral("P.b") }));
    QCOMPARE(tree->childNodes(QString()), QStringList(QStringLiteral("P")));
}

void ProjectTreeTest::aNodeThatIsGoneIsNotFoundEvenIfTheIndexWasToStay()
{
    QVERIFY(tree->addNode(QStringLiteral("P.a"), axisNode(QStringLiteral("P.a.AxisView7"), 7), 0));
    QVERIFY(tree->removeNode(QStringLiteral("P.a.AxisView7"), false));
    QCOMPARE(tree->nodePathOfFile(QStringLiteral("P.a.AxisView7"), true), QString());
}

void ProjectTreeTest::itTellsBeforeItGoes()
{
    QSignalSpy spy(tree, &Solution::View::aboutToBeDestroyed);
    delete tree;
    tree = nullptr;
    QCOMPARE(spy.count(), 1);
}

QTEST_MAIN(ProjectTreeTest)
#include "ProjectTreeTest.moc"
