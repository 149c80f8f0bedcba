#include "editor/AxisComparator.h"

#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

using ItemText = QString CompareItem::*;
Q_DECLARE_METATYPE(ItemText)

class AxisComparatorTest : public QObject {
    Q_OBJECT

private slots:
    void handlesAxesAndHasNoOptions();
    void sameRecordIsEqualToItself();
    void itemWithAnEmptyTextIsNeverEqual_data();
    void itemWithAnEmptyTextIsNeverEqual();
    void otherEditorTypesAreNeverEqual_data();
    void otherEditorTypesAreNeverEqual();
    void differenceInContentsIsSeen_data();
    void differenceInContentsIsSeen();
    void equalValuesUnderDifferentKeysDiffer();
    void whatIsBoundToThePlaceDoesNotCount();
    void missingSidesCountAsEmpty();
    void nodeIsAskedOfBothSidesInOrder();
    void nodeIsAskedWithANullFallback();
    void withoutTreeOrHostTheRecordsAreStillCompared();

private:
    static CompareItem item(const TestProject& project, quint32 id)
    {
        return { QStringLiteral("side"), project.name(), project.axisPath(id), QStringLiteral("AxisView"), id };
    }
    static CompareItem item(const TestProject& project, const AxisTable* axis) { return item(project, axis->id()); }
};

void AxisComparatorTest::handlesAxesAndHasNoOptions()
{
    AxisComparator comparator;
    QCOMPARE(comparator.typeKey(), QStringLiteral("AxisView"));
    QVERIFY(!comparator.optionCheck());
    QVERIFY(!comparator.optionObject());
}

void AxisComparatorTest::sameRecordIsEqualToItself()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const CompareItem axis = item(project, project.addAxis(QStringLiteral("feed")));
    QVERIFY(AxisComparator().compare(axis, axis));
}

void AxisComparatorTest::itemWithAnEmptyTextIsNeverEqual_data()
{
    QTest::addColumn<ItemText>("text");
    QTest::addColumn<bool>("onFirst");
    const auto add = [](const char* name, ItemText text) {
        QTest::addRow("%s of the first", name) << text << true;
        QTest::addRow("%s of the second", name) << text << false;
    };
    add("title", &CompareItem::title);
    add("project name", &CompareItem::projectName);
    add("node path", &CompareItem::nodePath);
    add("type key", &CompareItem::typeKey);
}

void AxisComparatorTest::itemWithAnEmptyTextIsNeverEqual()
{
    QFETCH(ItemText, text);
    QFETCH(bool, onFirst);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    CompareItem a = item(project, project.addAxis(QStringLiteral("feed")));
    CompareItem b = a;
    (onFirst ? a : b).*text = QString();
    QVERIFY(!AxisComparator().compare(a, b));
    QVERIFY2(host.calls.entries().isEmpty(), "nothing is read for an incomplete item");
}

void AxisComparatorTest::otherEditorTypesAreNeverEqual_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("first of another type") << "PouView"
                                           << "AxisView";
    QTest::newRow("second of another type") << "AxisView"
                                            << "PouView";
    QTest::newRow("both of another type") << "PouView"
                                          << "PouView";
    QTest::newRow("other case") << "AxisView"
                                << "axisview";
}

void AxisComparatorTest::otherEditorTypesAreNeverEqual()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    CompareItem a = item(project, project.addAxis(QStringLiteral("feed")));
    CompareItem b = a;
    a.typeKey = first;
    b.typeKey = second;
    QVERIFY(!AxisComparator().compare(a, b));
}

void AxisComparatorTest::differenceInContentsIsSeen_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::newRow("another value") << "MaxVel"
                                   << "10"
                                   << "11";
    QTest::newRow("texts that mean the same number") << "MaxVel"
                                                     << "10"
                                                     << "10.0";
    QTest::newRow("a key that one side has") << "Extra"
                                             << "1" << QString();
}

void AxisComparatorTest::differenceInContentsIsSeen()
{
    QFETCH(QString, key);
    QFETCH(QString, left);
    QFETCH(QString, right);
    TestHost host;
    TestProject ours(QStringLiteral("NV3T_70Q12"), QStringLiteral("Ours"));
    TestProject theirs(QStringLiteral("NV3T_70Q12"), QStringLiteral("Theirs"));
    AxisTable* a = ours.addAxis(QStringLiteral("feed"));
    AxisTable* b = theirs.addAxis(QStringLiteral("feed"));
    AxisComparator comparator;
    QVERIFY(comparator.compare(item(ours, a), item(theirs, b)));
    a->setProperty(key, left);
    if (!right.isNull())
        b->setProperty(key, right);
    QVERIFY(!comparator.compare(item(ours, a), item(theirs, b)));
    QVERIFY(!comparator.compare(item(theirs, b), item(ours, a)));
    b->setProperty(key, left);
    QVERIFY(comparator.compare(item(ours, a), item(theirs, b)));
}

void AxisComparatorTest::equalValuesUnderDifferentKeysDiffer()
{
    TestHost host;
    TestProject ours(QStringLiteral("NV3T_70Q12"), QStringLiteral("Ours"));
    TestProject theirs(QStringLiteral("NV3T_70Q12"), QStringLiteral("Theirs"));
    AxisTable* a = ours.addAxis(QStringLiteral("feed"));
    AxisTable* b = theirs.addAxis(QStringLiteral("feed"));
    a->setProperty(QStringLiteral("First"), QStringLiteral("same"));
    b->setProperty(QStringLiteral("Firth"), QStringLiteral("same"));
    QVERIFY(!AxisComparator().compare(item(ours, a), item(theirs, b)));
}

void AxisComparatorTest::whatIsBoundToThePlaceDoesNotCount()
{
    TestHost host;
    TestProject ours(QStringLiteral("NV3T_70Q12"), QStringLiteral("Ours"));
    TestProject theirs(QStringLiteral("NV3T_70Q12"), QStringLiteral("Theirs"));
    theirs.addAxis(QStringLiteral("other"));
    AxisTable* a = ours.addAxis(QStringLiteral("feed"));
    AxisTable* b = theirs.addAxis(QStringLiteral("feed"));
    a->setProperty(QStringLiteral("Row"), QStringLiteral("4"));
    QVERIFY(a->property(QStringLiteral("AxisNo"), QString()) != b->property(QStringLiteral("AxisNo"), QString()));
    QVERIFY(AxisComparator().compare(item(ours, a), item(theirs, b)));
}

void AxisComparatorTest::missingSidesCountAsEmpty()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const CompareItem axis = item(project, project.addAxis(QStringLiteral("feed")));
    const CompareItem noRecord = item(project, 99);
    CompareItem noProject = axis;
    noProject.projectName = QStringLiteral("Elsewhere");
    AxisComparator comparator;
    QVERIFY2(comparator.compare(noRecord, noProject), "two that are missing are the same");
    QVERIFY(!comparator.compare(noRecord, axis));
    QVERIFY(!comparator.compare(axis, noProject));
}

void AxisComparatorTest::nodeIsAskedOfBothSidesInOrder()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    AxisTable* first = project.addAxis(QStringLiteral("feed"));
    AxisTable* second = project.addAxis(QStringLiteral("lift"));
    AxisComparator().compare(item(project, first), item(project, second));
    QCOMPARE(host.calls.entries(),
        (QStringList{ QStringLiteral("view.nodeProperty(%1, ObjPath)").arg(project.axisPath(first->id())),
            QStringLiteral("view.nodeProperty(%1, ObjPath)").arg(project.axisPath(second->id())) }));
}

void AxisComparatorTest::nodeIsAskedWithANullFallback()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const CompareItem axis = item(project, project.addAxis(QStringLiteral("feed")));
    host.view.lastFallback = QStringLiteral("nothing asked");
    AxisComparator().compare(axis, axis);
    QVERIFY(!host.view.lastFallback.isValid());
}

void AxisComparatorTest::withoutTreeOrHostTheRecordsAreStillCompared()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const CompareItem feed = item(project, project.addAxis(QStringLiteral("feed")));
    const CompareItem lift = item(project, project.addAxis(QStringLiteral("lift")));
    AxisComparator comparator;
    QVERIFY2(!comparator.compare(feed, lift), "no host");
    QVERIFY(comparator.compare(feed, feed));
    TestHost host;
    QVERIFY(!comparator.compare(feed, lift));
    host.withhold(QStringLiteral("Solution.View"));
    QVERIFY2(!comparator.compare(feed, lift), "no tree");
    QVERIFY(comparator.compare(feed, feed));
}

QTEST_MAIN(AxisComparatorTest)
#include "AxisComparatorTest.moc"
