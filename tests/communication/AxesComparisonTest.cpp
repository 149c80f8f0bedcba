#include "host/communication/AxesComparison.h"

#include <QtTest>

namespace {
ControllerAxis axis(const char* name, const QMap<QString, QString>& values)
{
    return { QString::fromLatin1(name), values };
}

QMap<QString, QString> values(const char* axisNo, const char* velocity, const char* row = "0")
{
    return { { QStringLiteral("AxisNo"), QString::fromLatin1(axisNo) },
        { QStringLiteral("MaxVel"), QString::fromLatin1(velocity) },
        { QStringLiteral("Row"), QString::fromLatin1(row) } };
}
} // namespace

class AxesComparisonTest : public QObject {
    Q_OBJECT

private slots:
    void equalSetsDoNotDiffer();
    void parametersThatDifferAreNamed();
    void numbersCount();
    void whatTheControllerDoesNotRunDoesNotCount_data();
    void whatTheControllerDoesNotRunDoesNotCount();
    void axesOnOneSideAreNamed();
    void keysOnOneSideDiffer();
    void nothingEqualsNothing();
};

void AxesComparisonTest::equalSetsDoNotDiffer()
{
    const QVector<ControllerAxis> one{ axis("A", values("0", "1")), axis("B", values("1", "2")) };
    const QVector<ControllerAxis> other{ axis("B", values("1", "2")), axis("A", values("0", "1")) };
    QVERIFY(compareAxes(one, other).isEmpty());
}

void AxesComparisonTest::parametersThatDifferAreNamed()
{
    const auto list = compareAxes({ axis("A", values("0", "1")) }, { axis("A", values("0", "3")) });
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.at(0).kind, AxisDifference::Parameter);
    QCOMPARE(list.at(0).axis, QStringLiteral("A"));
    QCOMPARE(list.at(0).key, QStringLiteral("MaxVel"));
    QCOMPARE(list.at(0).inProject, QStringLiteral("1"));
    QCOMPARE(list.at(0).inController, QStringLiteral("3"));
}

void AxesComparisonTest::numbersCount()
{
    const auto list = compareAxes({ axis("A", values("0", "1")) }, { axis("A", values("1", "1")) });
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.at(0).key, QStringLiteral("AxisNo"));
}

void AxesComparisonTest::whatTheControllerDoesNotRunDoesNotCount_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key : { "Row", "AxisID", "Version" })
        QTest::newRow(key) << QString::fromLatin1(key);
}

void AxesComparisonTest::whatTheControllerDoesNotRunDoesNotCount()
{
    QFETCH(QString, key);
    ControllerAxis other = axis("A", values("0", "1"));
    other.values.insert(key, QStringLiteral("99"));
    QVERIFY(compareAxes({ axis("A", values("0", "1")) }, { other }).isEmpty());
}

void AxesComparisonTest::axesOnOneSideAreNamed()
{
    const auto list = compareAxes({ axis("A", values("0", "1")) }, { axis("B", values("0", "1")) });
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0).kind, AxisDifference::OnlyInProject);
    QCOMPARE(list.at(0).axis, QStringLiteral("A"));
    QCOMPARE(list.at(1).kind, AxisDifference::OnlyInController);
    QCOMPARE(list.at(1).axis, QStringLiteral("B"));
}

void AxesComparisonTest::keysOnOneSideDiffer()
{
    ControllerAxis more = axis("A", values("0", "1"));
    more.values.insert(QStringLiteral("Extra"), QStringLiteral("x"));
    const auto there = compareAxes({ axis("A", values("0", "1")) }, { more });
    QCOMPARE(there.size(), 1);
    QCOMPARE(there.at(0).inController, QStringLiteral("x"));
    const auto here = compareAxes({ more }, { axis("A", values("0", "1")) });
    QCOMPARE(here.size(), 1);
    QCOMPARE(here.at(0).inProject, QStringLiteral("x"));
}

void AxesComparisonTest::nothingEqualsNothing()
{
    QVERIFY(compareAxes({}, {}).isEmpty());
}

QTEST_APPLESS_MAIN(AxesComparisonTest)
#include "AxesComparisonTest.moc"
