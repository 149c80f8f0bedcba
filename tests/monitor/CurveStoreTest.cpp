#include "workbench/monitor/CurveStore.h"
#include "tests/monitor/Readings.h"

#include <QtTest>

#include <cmath>
#include <limits>

/// What is kept of readings: the newest points, the time that runs on, the gaps.
class CurveStoreTest : public QObject {
    Q_OBJECT

private slots:
    void aRingKeepsTheNewest();
    void aRingFindsTimes_data();
    void aRingFindsTimes();
    void valuesThatNoScaleShowsAreNotDrawn_data();
    void valuesThatNoScaleShowsAreNotDrawn();
    void theFirstReadingIsAtNought();
    void valuesGoToTheirCurves();
    void whatIsKeptIsBounded();
    void anInterruptionLeavesAGap();
    void severalInterruptionsLeaveOneGap();
    void aLongStepIsAGap_data();
    void aLongStepIsAGap();
    void aRestartedControllerGoesOnInTime();
    void anotherControllerGoesOnInTime();
    void theSameControllerKeepsItsClock();
    void aSlowWindowIsNoGap();
    void aReadingThatComesTwiceCountsOnce();
    void readingsWithoutATimeAreLeftOut();
    void theNearestReadingIsFound_data();
    void theNearestReadingIsFound();
    void inAGapThereIsNoReading();
    void aCopyStands();
    void clearingStartsAtNoughtAgain();

private:
    /// Readings of axis 0 every 10 ms from one controller time to before another, the clocks in step.
    static void run(CurveStore& store, double from, double to, double clockAhead = 0)
    {
        const int count = qRound((to - from) * 100);
        for (int i = 0; i < count; ++i)
            store.append(Readings::runningAll({ 0 }, from + i * 0.01), from + i * 0.01 + clockAhead);
    }
    static int gaps(const CurveRing& ring)
    {
        int count = 0;
        for (int i = 0; i < ring.size(); ++i)
            count += ring.at(i).isGap() ? 1 : 0;
        return count;
    }
};

void CurveStoreTest::aRingKeepsTheNewest()
{
    CurveRing ring(3);
    QVERIFY(ring.isEmpty());
    for (int i = 0; i < 8; ++i) {
        CurvePoint point;
        point.time = i;
        ring.append(point);
        QCOMPARE(ring.size(), std::min(i + 1, 3));
        QCOMPARE(ring.newest().time, double(i));
        QCOMPARE(ring.at(0).time, double(std::max(0, i - 2)));
    }
}

void CurveStoreTest::aRingFindsTimes_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<int>("index");
    QTest::newRow("before all") << -1.0 << 0;
    QTest::newRow("the oldest") << 5.0 << 0;
    QTest::newRow("between two") << 5.5 << 1;
    QTest::newRow("the newest") << 7.0 << 2;
    QTest::newRow("after all") << 7.5 << 3;
}

void CurveStoreTest::aRingFindsTimes()
{
    QFETCH(double, time);
    QFETCH(int, index);
    CurveRing ring(3);
    for (int i = 0; i < 8; ++i) {
        CurvePoint point;
        point.time = i;
        ring.append(point);
    }
    QCOMPARE(ring.firstFrom(time), index);
}

void CurveStoreTest::valuesThatNoScaleShowsAreNotDrawn_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("nought") << 0.0 << true;
    QTest::newRow("large") << -1e99 << true;
    QTest::newRow("too large") << 1e300 << false;
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity() << false;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << false;
}

void CurveStoreTest::valuesThatNoScaleShowsAreNotDrawn()
{
    QFETCH(double, value);
    QFETCH(bool, drawn);
    CurvePoint point;
    point.values[ActualVelocity] = value;
    QCOMPARE(point.isDrawable(ActualVelocity), drawn);
    QVERIFY(point.isDrawable(SetPosition));
    QVERIFY(!point.isGap());
}

void CurveStoreTest::theFirstReadingIsAtNought()
{
    CurveStore store;
    QVERIFY(store.isEmpty());
    QCOMPARE(store.end(), 0.0);
    run(store, 4000, 4001);
    QCOMPARE(store.begin(), 0.0);
    QVERIFY(std::abs(store.end() - 0.99) < 1e-9);
    QCOMPARE(store.axes(), QVector<int>({ 0 }));
    QVERIFY(!store.curves(1));
}

void CurveStoreTest::valuesGoToTheirCurves()
{
    CurveStore store;
    store.append({ AxisSample{ 7, 1, 10, 20, 30, 40 } }, 0);
    const CurvePoint& point = store.curves(7)->at(0);
    QCOMPARE(point.values[SetPosition], 10.0);
    QCOMPARE(point.values[SetVelocity], 20.0);
    QCOMPARE(point.values[ActualPosition], 30.0);
    QCOMPARE(point.values[ActualVelocity], 40.0);
}

void CurveStoreTest::whatIsKeptIsBounded()
{
    CurveStore store;
    run(store, 0, 301);
    QCOMPARE(CurveStore::keptPoints, 30000);
    QCOMPARE(store.curves(0)->size(), 30000);
    QVERIFY(std::abs(store.end() - store.begin() - 300) < 0.011);
}

void CurveStoreTest::anInterruptionLeavesAGap()
{
    CurveStore store;
    run(store, 0, 0.5);
    store.interrupt();
    run(store, 0.5, 1);
    const CurveRing& ring = *store.curves(0);
    QCOMPARE(gaps(ring), 1);
    QVERIFY(ring.at(50).isGap());
    QCOMPARE(ring.at(50).time, ring.at(49).time);
    QVERIFY(std::abs(ring.at(51).time - 0.5) < 1e-9);
}

void CurveStoreTest::severalInterruptionsLeaveOneGap()
{
    CurveStore store;
    store.interrupt();
    run(store, 0, 0.1);
    store.interrupt();
    store.interrupt();
    run(store, 60, 60.1);
    QCOMPARE(gaps(*store.curves(0)), 1);
}

void CurveStoreTest::aLongStepIsAGap_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("expected");
    QTest::newRow("a late reading is joined") << 0.2 << 0;
    QTest::newRow("a lost link is not, though nobody has told of it yet") << 0.3 << 1;
}

void CurveStoreTest::aLongStepIsAGap()
{
    QFETCH(double, step);
    QFETCH(int, expected);
    CurveStore store;
    store.append(Readings::runningAll({ 0 }, 1), 1);
    store.append(Readings::runningAll({ 0 }, 1 + step), 1 + step);
    QCOMPARE(gaps(*store.curves(0)), expected);
}

void CurveStoreTest::aRestartedControllerGoesOnInTime()
{
    CurveStore store;
    run(store, 100, 110);
    store.append(Readings::runningAll({ 0 }, 0.5), 113);
    const CurveRing& ring = *store.curves(0);
    QCOMPARE(gaps(ring), 1);
    QVERIFY(std::abs(ring.newest().time - 13) < 0.02);
    QCOMPARE(ring.newest().values[SetPosition], 1.0);
}

void CurveStoreTest::anotherControllerGoesOnInTime()
{
    CurveStore store;
    run(store, 100, 110);
    store.interrupt();
    store.append(Readings::runningAll({ 0 }, 90000), 113);
    QVERIFY(std::abs(store.end() - 13) < 0.02);
}

void CurveStoreTest::theSameControllerKeepsItsClock()
{
    CurveStore store;
    run(store, 100, 110);
    store.interrupt();
    // Told of late: the readings themselves say how long the link was gone.
    store.append(Readings::runningAll({ 0 }, 112.25), 112.9);
    QVERIFY(std::abs(store.end() - 12.25) < 1e-9);
}

void CurveStoreTest::aSlowWindowIsNoGap()
{
    CurveStore store;
    run(store, 100, 101);
    run(store, 101, 102, 5);
    QCOMPARE(gaps(*store.curves(0)), 0);
    QVERIFY(std::abs(store.end() - 1.99) < 1e-9);
}

void CurveStoreTest::aReadingThatComesTwiceCountsOnce()
{
    CurveStore store;
    for (int i = 0; i < 3; ++i)
        store.append(Readings::runningAll({ 0, 1 }, 5), 5 + i * 0.01);
    QCOMPARE(store.curves(0)->size(), 1);
    QCOMPARE(store.curves(1)->size(), 1);
}

void CurveStoreTest::readingsWithoutATimeAreLeftOut()
{
    CurveStore store;
    store.append({}, 0);
    store.append(Readings::runningAll({ 0 }, std::numeric_limits<double>::quiet_NaN()), 0);
    store.append(Readings::runningAll({ 0 }, std::numeric_limits<double>::infinity()), 0);
    QVERIFY(store.isEmpty());
}

void CurveStoreTest::theNearestReadingIsFound_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("found");
    QTest::newRow("on a reading") << 0.5 << 0.5;
    QTest::newRow("just behind one") << 0.503 << 0.5;
    QTest::newRow("just before one") << 0.507 << 0.51;
    QTest::newRow("a little before the first") << -0.1 << 0.0;
    QTest::newRow("a little behind the last") << 1.1 << 0.99;
    QTest::newRow("far behind the last") << 2.0 << -1.0;
}

void CurveStoreTest::theNearestReadingIsFound()
{
    QFETCH(double, time);
    QFETCH(double, found);
    CurveStore store;
    run(store, 0, 1);
    const CurvePoint* point = store.nearest(0, time);
    QCOMPARE(point != nullptr, found >= 0);
    if (point)
        QVERIFY(std::abs(point->time - found) < 1e-9);
    QVERIFY(!store.nearest(3, time));
}

void CurveStoreTest::inAGapThereIsNoReading()
{
    CurveStore store;
    run(store, 0, 1);
    store.interrupt();
    run(store, 3, 4);
    QVERIFY(!store.nearest(0, 2));
    QVERIFY(store.nearest(0, 0.98));
    QVERIFY(store.nearest(0, 3.02));
}

void CurveStoreTest::aCopyStands()
{
    CurveStore store;
    run(store, 0, 1);
    const CurveStore copy = store;
    run(store, 1, 2);
    QCOMPARE(copy.curves(0)->size(), 100);
    QCOMPARE(store.curves(0)->size(), 200);
}

void CurveStoreTest::clearingStartsAtNoughtAgain()
{
    CurveStore store;
    run(store, 0, 5);
    store.clear();
    QVERIFY(store.isEmpty());
    store.append(Readings::runningAll({ 0 }, 8), 8);
    QCOMPARE(store.begin(), 0.0);
    QCOMPARE(store.end(), 0.0);
}

QTEST_APPLESS_MAIN(CurveStoreTest)
#include "CurveStoreTest.moc"
