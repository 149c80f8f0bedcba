#include "tests/monitor/CurvePanelFixture.h"

#include <QRubberBand>

#include <cmath>

/// Moving through the curves by mouse, wheel and keys, and the cursor.
class CurvePanelZoomTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void theNewestReadingsRunThrough();
    void bothPlotsShareTheTime();
    void valuesFillThePlots();
    void labelsOfALowPlotHaveRoom();
    void pausedReadingsCanStillBeZoomed();
    void aDragZooms();
    void aTinyDragDoesNothing();
    void anotherButtonDragsNothing();
    void theRightButtonGoesBack();
    void theWheelZoomsTime();
    void theWheelWithCtrlZoomsValues();
    void theWheelWithShiftMoves();
    void showAllShowsEverything();
    void followRunsAgain();
    void keysDoTheSame();
    void theCursorReadsValues();
    void theCursorMovesByKeys();
    void inAGapTheCursorReadsNothing();

private:
    std::optional<CurvePanelFixture> m;
};

void CurvePanelZoomTest::initTestCase()
{
    Theme::prepare();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void CurvePanelZoomTest::theNewestReadingsRunThrough()
{
    m->feed(0, 5);
    QTRY_COMPARE(m->plot(0).shownTimes().to, 20.0);
    m->feed(5, 30);
    QTRY_VERIFY(std::abs(m->plot(0).shownTimes().to - 29.99) < 1e-6);
    QVERIFY(std::abs(m->plot(0).shownTimes().from - 9.99) < 1e-6);
}

void CurvePanelZoomTest::bothPlotsShareTheTime()
{
    m->feed(0, 30);
    m->drawn();
    m->drag({ 100, 40 }, { 200, 100 }, Qt::LeftButton, 1);
    QVERIFY(m->plot(1).shownTimes().width() < 10);
    QCOMPARE(m->plot(0).shownTimes().from, m->plot(1).shownTimes().from);
    QCOMPARE(m->plot(0).shownTimes().to, m->plot(1).shownTimes().to);
}

void CurvePanelZoomTest::valuesFillThePlots()
{
    m->feed(0, 10);
    m->drawn();
    const CurveRange::Interval positions = m->plot(0).shownValues();
    QVERIFY(positions.from <= -0.5 && positions.from > -6);
    QVERIFY(positions.to >= 19.98 && positions.to < 26);
    const CurveRange::Interval velocities = m->plot(1).shownValues();
    QVERIFY(velocities.from <= 1.75 && velocities.from > 1);
    QVERIFY(velocities.to >= 2 && velocities.to < 2.5);
}

void CurvePanelZoomTest::labelsOfALowPlotHaveRoom()
{
    m->feed(0, 10);
    for (const int height : { 600, 240, 150 }) {
        m->panel->resize(1000, height);
        m->drawn();
        const CurvePlot& plot = m->plot(0);
        const int ticks = plot.axisScaleDiv(QwtPlot::yLeft).ticks(QwtScaleDiv::MajorTick).size();
        const int label = QFontMetrics(plot.axisFont(QwtPlot::yLeft)).height();
        QVERIFY(ticks >= 2);
        QVERIFY2((ticks - 1) * label <= plot.canvas()->height() || ticks <= 3,
            qPrintable(QStringLiteral("%1 labels in %2 pixels").arg(ticks).arg(plot.canvas()->height())));
    }
}

void CurvePanelZoomTest::pausedReadingsCanStillBeZoomed()
{
    m->feed(0, 30);
    m->drawn();
    m->press("curves.pause");
    m->feed(30, 60);
    m->press("curves.fit");
    QVERIFY(std::abs(m->plot(0).shownTimes().to - 29.99) < 1e-6);
    QCOMPARE(m->plot(0).shownTimes().from, 0.0);
}

void CurvePanelZoomTest::aDragZooms()
{
    m->feed(0, 30);
    m->drawn();
    const double from = m->plot(0).invTransform(QwtPlot::xBottom, 100);
    const double to = m->plot(0).invTransform(QwtPlot::xBottom, 300);
    const double top = m->plot(0).invTransform(QwtPlot::yLeft, 30);
    const double bottom = m->plot(0).invTransform(QwtPlot::yLeft, 90);
    QTest::mousePress(m->canvas(), Qt::LeftButton, Qt::NoModifier, { 100, 30 });
    QTest::mouseMove(m->canvas(), { 300, 90 });
    QVERIFY(m->canvas()->findChild<QRubberBand*>()->isVisible());
    QTest::mouseRelease(m->canvas(), Qt::LeftButton, Qt::NoModifier, { 300, 90 });
    QVERIFY(!m->canvas()->findChild<QRubberBand*>()->isVisible());
    QVERIFY(!m->panel->range().isFollowing());
    QVERIFY(std::abs(m->plot(0).shownTimes().from - from) < 0.05);
    QVERIFY(std::abs(m->plot(0).shownTimes().to - to) < 0.05);
    QVERIFY(std::abs(m->plot(0).shownValues().to - top) < 0.5);
    QVERIFY(std::abs(m->plot(0).shownValues().from - bottom) < 0.5);
    // The part stands while new readings come.
    m->feed(30, 40);
    QTest::qWait(120);
    QVERIFY(std::abs(m->plot(0).shownTimes().from - from) < 0.05);
}

void CurvePanelZoomTest::aTinyDragDoesNothing()
{
    m->feed(0, 30);
    m->drawn();
    m->drag({ 100, 30 }, { 103, 90 });
    m->drag({ 100, 30 }, { 300, 33 });
    QTest::mouseClick(m->canvas(), Qt::LeftButton, Qt::NoModifier, { 50, 50 });
    QVERIFY(m->panel->range().isFollowing());
}

void CurvePanelZoomTest::anotherButtonDragsNothing()
{
    m->feed(0, 30);
    m->drawn();
    m->drag({ 100, 30 }, { 300, 90 }, Qt::MiddleButton);
    QVERIFY(m->panel->range().isFollowing());
}

void CurvePanelZoomTest::theRightButtonGoesBack()
{
    m->feed(0, 30);
    m->drawn();
    QVERIFY(!m->action("curves.back")->isEnabled());
    m->drag({ 100, 30 }, { 300, 90 });
    const double first = m->plot(0).shownTimes().from;
    m->drag({ 100, 30 }, { 300, 90 });
    QVERIFY(m->plot(0).shownTimes().from > first);
    QTest::mouseClick(m->canvas(), Qt::RightButton, Qt::NoModifier, { 10, 10 });
    QCOMPARE(m->plot(0).shownTimes().from, first);
    m->press("curves.back");
    QVERIFY(m->panel->range().isFollowing());
    QVERIFY(!m->action("curves.back")->isEnabled());
}

void CurvePanelZoomTest::theWheelZoomsTime()
{
    m->feed(0, 30);
    m->drawn();
    m->press("curves.fit");
    const double under = m->plot(0).invTransform(QwtPlot::xBottom, 200);
    m->wheel({ 200, 50 }, 3);
    QVERIFY(std::abs(m->plot(0).shownTimes().width() - 29.99 * 0.512) < 0.01);
    QVERIFY(std::abs(m->plot(0).invTransform(QwtPlot::xBottom, 200) - under) < 0.05);
    m->wheel({ 200, 50 }, -3);
    QVERIFY(std::abs(m->plot(0).shownTimes().width() - 29.99) < 0.01);
}

void CurvePanelZoomTest::theWheelWithCtrlZoomsValues()
{
    m->feed(0, 30);
    m->drawn();
    const CurveRange::Interval before = m->plot(0).shownValues();
    m->wheel({ 200, 50 }, 1, Qt::ControlModifier);
    QVERIFY(std::abs(m->plot(0).shownValues().width() - before.width() * 0.8) < 1e-6);
    QVERIFY(m->panel->range().isFollowing());
    QVERIFY(!m->panel->range().values(1));
    QVERIFY(m->action("curves.follow")->isEnabled());
}

void CurvePanelZoomTest::theWheelWithShiftMoves()
{
    m->feed(0, 60);
    m->drawn();
    const CurveRange::Interval before = m->plot(0).shownTimes();
    m->wheel({ 200, 50 }, 2, Qt::ShiftModifier);
    QVERIFY(std::abs(m->plot(0).shownTimes().from - (before.from - 4)) < 1e-6);
    QVERIFY(std::abs(m->plot(0).shownTimes().width() - before.width()) < 1e-6);
}

void CurvePanelZoomTest::showAllShowsEverything()
{
    m->feed(0, 120);
    m->drawn();
    m->press("curves.fit");
    QCOMPARE(m->plot(0).shownTimes().from, 0.0);
    QVERIFY(std::abs(m->plot(0).shownTimes().to - 119.99) < 1e-6);
    QVERIFY(m->plot(0).shownValues().to >= 239);
}

void CurvePanelZoomTest::followRunsAgain()
{
    m->feed(0, 60);
    m->drawn();
    QVERIFY(!m->action("curves.follow")->isEnabled());
    m->drag({ 100, 30 }, { 300, 90 });
    m->press("curves.follow");
    QVERIFY(std::abs(m->plot(0).shownTimes().to - 59.99) < 1e-6);
    m->feed(60, 70);
    QTRY_VERIFY(std::abs(m->plot(0).shownTimes().to - 69.99) < 1e-6);
}

void CurvePanelZoomTest::keysDoTheSame()
{
    m->feed(0, 60);
    m->drawn();
    m->canvas()->setFocus();
    QTest::keyClick(m->canvas(), Qt::Key_Home);
    QCOMPARE(m->plot(0).shownTimes().from, 0.0);
    const double whole = m->plot(0).shownTimes().width();
    QTest::keyClick(m->canvas(), Qt::Key_Plus);
    QVERIFY(std::abs(m->plot(0).shownTimes().width() - whole * 0.8) < 1e-6);
    QTest::keyClick(m->canvas(), Qt::Key_Minus);
    QVERIFY(std::abs(m->plot(0).shownTimes().width() - whole) < 1e-6);
    const CurveRange::Interval values = m->plot(0).shownValues();
    QTest::keyClick(m->canvas(), Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(std::abs(m->plot(0).shownValues().width() - values.width() * 0.8) < 1e-6);
    const double from = m->plot(0).shownTimes().from;
    QTest::keyClick(m->canvas(), Qt::Key_PageDown);
    QVERIFY(std::abs(m->plot(0).shownTimes().from - from - whole / 2) < 1e-6);
    QTest::keyClick(m->canvas(), Qt::Key_PageUp);
    QVERIFY(std::abs(m->plot(0).shownTimes().from - from) < 1e-6);
    QTest::keyClick(m->canvas(), Qt::Key_End);
    QVERIFY(m->panel->range().isFollowing());
    QTest::keyClick(m->canvas(), Qt::Key_Backspace);
    QVERIFY(!m->panel->range().isFollowing());
}

void CurvePanelZoomTest::theCursorReadsValues()
{
    m->feed(0, 20);
    m->drawn();
    const QPoint at(static_cast<int>(m->plot(0).transform(QwtPlot::xBottom, 10)), 40);
    const double time = m->plot(0).invTransform(QwtPlot::xBottom, at.x());
    m->hover(at);
    QTRY_VERIFY(m->panel->cursor());
    QVERIFY(std::abs(*m->panel->cursor() - time) < 1e-9);
    QVERIFY(std::abs(m->curve(0, SetPosition)->text(1).toDouble() - 2 * time) < 0.03);
    QVERIFY(m->panel->statusText().startsWith(QStringLiteral("Values at ")));
    // A line in both plots at the same time.
    for (int i = 0; i < 2; ++i) {
        const auto lines = m->canvas(i)->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first()->isVisible());
        QVERIFY(std::abs(lines.first()->x() - m->plot(i).transform(QwtPlot::xBottom, time)) < 1.5);
    }
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m->canvas(), &leave);
    QVERIFY(!m->panel->cursor());
    QVERIFY(!m->canvas()->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly).first()->isVisible());
    QCOMPARE(m->curve(0, SetPosition)->text(1), QStringLiteral("39.980"));
}

void CurvePanelZoomTest::theCursorMovesByKeys()
{
    m->feed(0, 20);
    m->drawn();
    m->canvas()->setFocus();
    const double middle = (m->plot(0).shownTimes().from + m->plot(0).shownTimes().to) / 2;
    QTest::keyClick(m->canvas(), Qt::Key_Right);
    QVERIFY(std::abs(*m->panel->cursor() - (middle + 0.1)) < 1e-6);
    QTest::keyClick(m->canvas(), Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(std::abs(*m->panel->cursor() - (middle - 0.9)) < 1e-6);
    QTest::keyClick(m->canvas(), Qt::Key_Escape);
    QVERIFY(!m->panel->cursor());
}

void CurvePanelZoomTest::inAGapTheCursorReadsNothing()
{
    m->feed(0, 5);
    m->feed(15, 20);
    m->drawn();
    const QPoint at(static_cast<int>(m->plot(0).transform(QwtPlot::xBottom, 10)), 40);
    m->hover(at);
    QTRY_VERIFY(m->panel->cursor());
    QCOMPARE(m->curve(0, SetPosition)->text(1), QStringLiteral("\u2013"));
}

QTEST_MAIN(CurvePanelZoomTest)
#include "CurvePanelZoomTest.moc"
