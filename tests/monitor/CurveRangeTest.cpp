#include "workbench/monitor/CurveRange.h"

#include <QtTest>

/// Moving through the readings and back.
class CurveRangeTest : public QObject {
    Q_OBJECT

private slots:
    void atFirstTheNewestTwentySecondsRunThrough();
    void zoomingToAnAreaEndsFollowing();
    void theWheelKeepsThePlaceUnderThePointer();
    void whileFollowingTheWheelChangesTheStretch();
    void valuesZoomPerPlot();
    void fittingShowsEverything();
    void panningMovesAndEndsFollowing();
    void followingTakesAllValuesAgain();
    void backGoesThroughTheSteps();
    void oneGestureOfTheWheelIsOneStep();
    void stepsBackAreBounded();
    void zoomStaysWithinBounds();
};

namespace {
bool equal(const CurveRange::Interval& interval, double from, double to)
{
    return qFuzzyCompare(interval.from + 1e3, from + 1e3) && qFuzzyCompare(interval.to + 1e3, to + 1e3);
}
} // namespace

void CurveRangeTest::atFirstTheNewestTwentySecondsRunThrough()
{
    const CurveRange range;
    QVERIFY(range.isFollowing());
    QVERIFY(equal(range.times(0, 5), 0, 20));
    QVERIFY(equal(range.times(0, 65), 45, 65));
    QVERIFY(!range.values(0) && !range.values(1));
    QVERIFY(!range.canGoBack());
}

void CurveRangeTest::zoomingToAnAreaEndsFollowing()
{
    CurveRange range;
    range.zoomTo(1, QRectF(QPointF(3, 8), QPointF(5, -2)));
    QVERIFY(!range.isFollowing());
    QVERIFY(equal(range.times(0, 65), 3, 5));
    QVERIFY(!range.values(0));
    QVERIFY(equal(*range.values(1), -2, 8));
}

void CurveRangeTest::theWheelKeepsThePlaceUnderThePointer()
{
    CurveRange range;
    range.fit(0, 40);
    range.zoomTime(0.5, 10, { 0, 40 });
    QVERIFY(equal(range.times(0, 40), 5, 25));
    range.zoomTime(2, 10, range.times(0, 40));
    QVERIFY(equal(range.times(0, 40), 0, 40));
}

void CurveRangeTest::whileFollowingTheWheelChangesTheStretch()
{
    CurveRange range;
    range.zoomTime(0.5, 50, { 45, 65 });
    QVERIFY(range.isFollowing());
    QVERIFY(equal(range.times(0, 65), 55, 65));
}

void CurveRangeTest::valuesZoomPerPlot()
{
    CurveRange range;
    range.zoomValues(0, 0.5, 100, { 0, 100 });
    QVERIFY(equal(*range.values(0), 50, 100));
    QVERIFY(!range.values(1));
    QVERIFY(range.isFollowing());
}

void CurveRangeTest::fittingShowsEverything()
{
    CurveRange range;
    range.zoomTo(0, QRectF(0, 0, 1, 1));
    range.fit(2, 300);
    QVERIFY(equal(range.times(2, 310), 2, 300));
    QVERIFY(!range.values(0));
    range.fit(0, 0);
    QVERIFY(range.times(0, 0).width() > 0);
}

void CurveRangeTest::panningMovesAndEndsFollowing()
{
    CurveRange range;
    range.pan(-5, { 45, 65 });
    QVERIFY(!range.isFollowing());
    QVERIFY(equal(range.times(0, 70), 40, 60));
}

void CurveRangeTest::followingTakesAllValuesAgain()
{
    CurveRange range;
    range.zoomTo(0, QRectF(0, 0, 1, 1));
    range.follow();
    QVERIFY(range.isFollowing());
    QVERIFY(!range.values(0));
    QVERIFY(equal(range.times(0, 65), 45, 65));
}

void CurveRangeTest::backGoesThroughTheSteps()
{
    CurveRange range;
    range.zoomTo(0, QRectF(1, 0, 10, 10));
    range.zoomTo(0, QRectF(2, 1, 2, 2));
    range.back();
    QVERIFY(equal(range.times(0, 65), 1, 11));
    range.back();
    QVERIFY(range.isFollowing());
    QVERIFY(!range.values(0));
    range.back();
    QVERIFY(range.isFollowing());
    QVERIFY(!range.canGoBack());
}

void CurveRangeTest::oneGestureOfTheWheelIsOneStep()
{
    CurveRange range;
    range.fit(0, 40);
    for (int i = 0; i < 10; ++i)
        range.zoomTime(0.8, 10, range.times(0, 40));
    range.back();
    QVERIFY(equal(range.times(0, 40), 0, 40));
    range.zoomTime(0.8, 10, range.times(0, 40));
    range.back();
    QVERIFY(equal(range.times(0, 40), 0, 40));
}

void CurveRangeTest::stepsBackAreBounded()
{
    CurveRange range;
    for (int i = 0; i < 1000; ++i)
        range.fit(0, i + 1);
    int steps = 0;
    while (range.canGoBack()) {
        range.back();
        ++steps;
    }
    QCOMPARE(steps, 100);
}

void CurveRangeTest::zoomStaysWithinBounds()
{
    CurveRange range;
    range.fit(0, 40);
    for (int i = 0; i < 200; ++i)
        range.zoomTime(0.5, 10, range.times(0, 40));
    QVERIFY(range.times(0, 40).width() >= 0.0019);
    for (int i = 0; i < 400; ++i)
        range.zoomTime(2, 10, range.times(0, 40));
    QVERIFY(range.times(0, 40).width() <= 3601);
    for (int i = 0; i < 2000; ++i)
        range.zoomValues(0, 0.5, 1, range.values(0).value_or(CurveRange::Interval{ 0, 2 }));
    QVERIFY(range.values(0)->width() > 0);
    range.zoomTo(1, QRectF(1, 1, 0, 0));
    QVERIFY(range.times(0, 40).width() > 0);
    QVERIFY(range.values(1)->width() > 0);
}

QTEST_APPLESS_MAIN(CurveRangeTest)
#include "CurveRangeTest.moc"
