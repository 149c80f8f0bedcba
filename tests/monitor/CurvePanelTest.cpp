#include "workbench/monitor/CurvePanel.h"
#include "tests/monitor/CurvePanelFixture.h"
#include "tests/support/ModalDialogDriver.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTemporaryDir>

#include <cmath>

namespace {

/// Counts how often the size of a cell is asked for.
class SizeCounter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        ++count;
        return QStyledItemDelegate::sizeHint(option, index);
    }
    mutable int count = 0;
};

/// Takes its time, as thousands of curves would.
class SlowItem : public QwtPlotItem {
public:
    void draw(QPainter*, const QwtScaleMap&, const QwtScaleMap&, const QRectF&) const override { QTest::qSleep(70); }
};

} // namespace

/// What the panel of the curves shows and does, with real mouse and key events.
class CurvePanelTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void withoutReadingsItSaysWhatToDo();
    void theLegendHidesCurves();
    void theLegendHidesAnAxis();
    void theLegendIsWorkedByKeys();
    void hiddenCurvesStayHiddenWhenAxesCome();
    void theLegendShowsTheNewestValues();
    void slowDrawingDoesNotHoldTheValuesBack();
    void manyAxesInTheLegendCostNoMoreThanTheirShare();
    void pauseHoldsThePicture();
    void aGapIsNotDrawn();
    void valuesThatAreNoneAreNotDrawn();
    void clearForgets();
    void whileHiddenNothingIsDrawn();
    void withoutNewReadingsNothingIsDrawn();
    void aPartThatStandsIsDrawnOnce();
    void aSinglePeakAmongManyIsDrawn();
    void exportAsksForAFile();
    void exportWritesTheShownCurves();
    void aFileThatCannotBeWrittenIsReported();
    void oneExportAtATime();
    void thePanelMayGoUnderAnExport();
    void aLowPanelPutsThePlotsSideBySide();
    void bothThemesAreDrawn();
    void everythingHasAName();
    void theButtonsAreReachedByTab();
    void recordingAnAxisCanBeStopped();

private:
    std::optional<CurvePanelFixture> m;
};

void CurvePanelTest::initTestCase()
{
    Theme::prepare();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void CurvePanelTest::withoutReadingsItSaysWhatToDo()
{
    m->monitor->forgetAll();
    QVERIFY(m->panel->statusText().startsWith(QStringLiteral("No axis is recorded")));
    QVERIFY(!m->action("curves.export")->isEnabled());
    m->monitor->addAxis(0);
    m->monitor->releaseAxis(0, false);
    QCOMPARE(m->panel->statusText(), QStringLiteral("The last 5 minutes are kept"));
    QCOMPARE(m->panel->legend().topLevelItemCount(), 1);
}

void CurvePanelTest::theLegendHidesCurves()
{
    m->feed(0, 10, { 0, 1 });
    m->drawn();
    QVERIFY(m->isSeen(0, 0, SetPosition));
    m->toggle(m->curve(0, SetPosition));
    QVERIFY(!m->isSeen(0, 0, SetPosition));
    QVERIFY(m->isSeen(0, 0, ActualPosition));
    QVERIFY(m->isSeen(0, 1, SetPosition));
    QVERIFY(m->isSeen(1, 0, SetVelocity));
    m->toggle(m->curve(0, SetPosition));
    QVERIFY(m->isSeen(0, 0, SetPosition));
    m->toggle(m->curve(0, SetVelocity));
    QVERIFY(!m->isSeen(1, 0, SetVelocity));
}

void CurvePanelTest::theLegendHidesAnAxis()
{
    m->feed(0, 10, { 0, 1 });
    m->drawn();
    QVERIFY(m->inked(0, 0) > 100);
    m->toggle(m->panel->legend().topLevelItem(0));
    for (const CurveKind kind : { SetPosition, ActualPosition })
        QVERIFY(!m->isSeen(0, 0, kind));
    for (const CurveKind kind : { SetVelocity, ActualVelocity })
        QVERIFY(!m->isSeen(1, 0, kind));
    QVERIFY(m->isSeen(0, 1, SetPosition));
    QCOMPARE(m->inked(0, 0), 0);
    m->toggle(m->panel->legend().topLevelItem(0));
    QVERIFY(m->isSeen(1, 0, ActualVelocity));
}

void CurvePanelTest::theLegendIsWorkedByKeys()
{
    m->feed(0, 1);
    m->drawn();
    m->panel->legend().setFocus();
    m->panel->legend().setCurrentItem(m->curve(0, ActualVelocity));
    QTest::keyClick(&m->panel->legend(), Qt::Key_Space);
    QVERIFY(!m->isSeen(1, 0, ActualVelocity));
}

void CurvePanelTest::hiddenCurvesStayHiddenWhenAxesCome()
{
    m->feed(0, 1);
    m->drawn();
    m->toggle(m->curve(0, SetPosition));
    m->monitor->addAxis(7);
    m->monitor->releaseAxis(7, false);
    QCOMPARE(m->panel->legend().topLevelItemCount(), 3);
    QVERIFY(!m->isSeen(0, 0, SetPosition));
    QCOMPARE(m->curve(0, SetPosition)->checkState(0), Qt::Unchecked);
    QCOMPARE(m->panel->legend().topLevelItem(0)->checkState(0), Qt::PartiallyChecked);
}

void CurvePanelTest::theLegendShowsTheNewestValues()
{
    m->feed(0, 1);
    QTRY_COMPARE(m->curve(0, SetPosition)->text(1), QStringLiteral("1.980"));
    QCOMPARE(m->curve(0, ActualPosition)->text(1), QStringLiteral("1.480"));
    QCOMPARE(m->curve(0, SetVelocity)->text(1), QStringLiteral("2.000"));
    QCOMPARE(m->curve(0, ActualVelocity)->text(1), QStringLiteral("1.750"));
    QCOMPARE(m->curve(0, SetPosition)->text(2), QStringLiteral("Unit"));
    QCOMPARE(m->curve(0, ActualVelocity)->text(2), QStringLiteral("Unit/s"));
    QCOMPARE(m->curve(1, SetPosition)->text(1), QStringLiteral("\u2013"));
}

// The panel looks after itself more rarely then.
void CurvePanelTest::slowDrawingDoesNotHoldTheValuesBack()
{
    SlowItem slow;
    slow.attach(&m->plot(0));
    for (int i = 1; i <= 6; ++i) {
        m->feed(0.1 * (i - 1), 0.1 * i);
        m->drawn();
        if (i > 2)
            QCOMPARE(m->curve(0, SetPosition)->text(1), QString::number(2 * (0.1 * i - 0.01), 'f', 3));
    }
    slow.detach();
}

void CurvePanelTest::manyAxesInTheLegendCostNoMoreThanTheirShare()
{
    auto* counter = new SizeCounter(m->panel.operator->());
    m->panel->legend().setItemDelegate(counter);
    // The last axis that comes has all rows made anew.
    const auto costOf = [this, counter](int axes) {
        for (int axisNo = 0; axisNo < axes; ++axisNo) {
            counter->count = 0;
            m->monitor->addAxis(axisNo);
            m->monitor->releaseAxis(axisNo, false);
        }
        return counter->count;
    };
    const int few = costOf(16);
    const int many = costOf(64);
    QVERIFY(few > 0);
    QVERIFY2(many < 8 * few, qPrintable(QStringLiteral("%1, %2").arg(few).arg(many)));
}

void CurvePanelTest::pauseHoldsThePicture()
{
    m->feed(0, 30);
    m->drawn();
    m->press("curves.pause");
    QVERIFY(m->panel->isPaused());
    QCOMPARE(m->action("curves.pause")->text(), QStringLiteral("Continue"));
    QVERIFY(m->panel->statusText().startsWith(QStringLiteral("Paused")));
    const CurveRange::Interval held = m->plot(0).shownTimes();
    const QImage before = m->canvas()->grab().toImage();
    DrawCounter counter;
    counter.attach(&m->plot(0));
    m->feed(30, 500);
    QTest::qWait(120);
    QCOMPARE(m->plot(0).shownTimes().to, held.to);
    QCOMPARE(counter.count, 0);
    // What has left the live readings meanwhile still stands in the held picture.
    m->plot(0).replot();
    QCOMPARE(m->canvas()->grab().toImage(), before);
    m->press("curves.pause");
    QVERIFY(!m->panel->isPaused());
    QTRY_VERIFY(std::abs(m->plot(0).shownTimes().to - 499.99) < 1e-6);
    counter.detach();
}

void CurvePanelTest::aGapIsNotDrawn()
{
    m->feed(0, 5);
    m->feed(15, 20);
    m->drawn();
    const QImage image = m->canvas()->grab().toImage();
    const QColor ink = m->plot(0).items().at(0)->pen().color();
    const auto inkAt = [&](double time) {
        const int x = static_cast<int>(m->plot(0).transform(QwtPlot::xBottom, time));
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            count += image.pixelColor(x, y).rgb() == ink.rgb() ? 1 : 0;
        return count;
    };
    QVERIFY(inkAt(3) > 0);
    QVERIFY(inkAt(17) > 0);
    for (double time = 5.2; time < 14.9; time += 0.2)
        QCOMPARE(inkAt(time), 0);
    // Nor does a line leave the picture at either end.
    for (const double end : { 4.9, 4.95, 4.99, 5.05, 14.95, 15.0, 15.05 })
        QVERIFY2(inkAt(end) < 20, qPrintable(QString::number(inkAt(end))));
}

void CurvePanelTest::valuesThatAreNoneAreNotDrawn()
{
    for (int i = 0; i < 500; ++i) {
        const double odd[] = { std::nan(""), INFINITY, -INFINITY, 1e308, -1e308 };
        AxisSample sample = Readings::running(0, i * 0.01);
        if (i >= 100 && i < 400)
            sample.setPosition = odd[i % 5];
        m->monitor->addSamples({ sample });
    }
    m->drawn();
    QVERIFY(m->plot(0).shownValues().width() < 30);
    QVERIFY(m->inked(0) > 20);
}

void CurvePanelTest::clearForgets()
{
    m->feed(0, 30);
    m->drawn();
    m->drag({ 100, 30 }, { 300, 90 });
    m->press("curves.pause");
    m->press("curves.clear");
    QVERIFY(!m->panel->isPaused());
    QVERIFY(m->monitor->curves().isEmpty());
    QVERIFY(m->panel->range().isFollowing());
    QCOMPARE(m->inked(0), 0);
    m->feed(100, 101);
    QTRY_VERIFY(m->inked(0) > 0);
    QCOMPARE(m->monitor->curves().begin(), 0.0);
}

void CurvePanelTest::whileHiddenNothingIsDrawn()
{
    m->feed(0, 5);
    m->drawn();
    DrawCounter counters[2];
    for (int i = 0; i < 2; ++i)
        counters[i].attach(&m->plot(i));
    m->panel->hide();
    QCoreApplication::processEvents();
    counters[0].count = counters[1].count = 0;
    for (int i = 0; i < 10; ++i) {
        m->feed(5 + i, 6 + i);
        QTest::qWait(20);
    }
    QCOMPARE(counters[0].count + counters[1].count, 0);
    QCOMPARE(m->plot(0).shownTimes().to, 20.0);
    m->feed(15, 40);
    m->panel->show();
    QTRY_VERIFY(counters[0].count > 0 && counters[1].count > 0);
    QVERIFY(std::abs(m->plot(0).shownTimes().to - 39.99) < 1e-6);
    for (DrawCounter& counter : counters)
        counter.detach();
}

void CurvePanelTest::withoutNewReadingsNothingIsDrawn()
{
    m->feed(0, 5);
    m->drawn();
    QTest::qWait(120);
    DrawCounter counter;
    counter.attach(&m->plot(0));
    QCoreApplication::processEvents();
    counter.count = 0;
    QTest::qWait(200);
    QCOMPARE(counter.count, 0);
    counter.detach();
}

void CurvePanelTest::aPartThatStandsIsDrawnOnce()
{
    m->feed(0, 30);
    m->drawn();
    m->press("curves.fit");
    QCoreApplication::processEvents();
    DrawCounter counter;
    counter.attach(&m->plot(0));
    m->feed(30, 40);
    m->drawn();
    QTest::qWait(120);
    QCOMPARE(counter.count, 0);
    // The values beside go on.
    QTRY_COMPARE(m->curve(0, SetPosition)->text(1), QStringLiteral("79.980"));
    m->press("curves.follow");
    QTRY_VERIFY(counter.count > 0);
    counter.detach();
}

void CurvePanelTest::aSinglePeakAmongManyIsDrawn()
{
    for (int i = 0; i < CurveStore::keptPoints; ++i) {
        AxisSample sample{ 0, i * 0.01, 0, 0, 0, 0 };
        sample.setPosition = i == 10001 ? 100 : i == 20003 ? -100 : 0;
        m->monitor->addSamples({ sample });
    }
    m->press("curves.fit");
    const QImage image = m->canvas()->grab().toImage();
    const QColor ink = m->plot(0).items().at(0)->pen().color();
    const auto inkAt = [&](double value) {
        const int y = qRound(m->plot(0).transform(QwtPlot::yLeft, value));
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            for (int dy = -1; dy <= 1; ++dy)
                count += image.pixelColor(x, qBound(0, y + dy, image.height() - 1)).rgb() == ink.rgb() ? 1 : 0;
        }
        return count;
    };
    QVERIFY(m->plot(0).shownValues().to >= 100);
    for (const double value : { 90.0, 45.0, -45.0, -90.0 })
        QVERIFY2(inkAt(value) > 0, qPrintable(QString::number(value)));
}

void CurvePanelTest::exportAsksForAFile()
{
    const QTemporaryDir directory;
    m->feed(0, 1);
    m->drawn();
    ModalDialogDriver driver([&directory](QDialog* dialog) {
        auto* chooser = qobject_cast<QFileDialog*>(dialog);
        QVERIFY(chooser);
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
            ->setText(directory.filePath(QStringLiteral("run")));
        QTest::mouseClick(chooser->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    m->press("curves.export");
    QCOMPARE(driver.count, 1);
    QTRY_VERIFY(!m->panel->isExporting());
    QVERIFY(QFile::exists(directory.filePath(QStringLiteral("run.csv"))));
    driver.next([](QDialog* dialog) { dialog->reject(); });
    m->press("curves.export");
    QCOMPARE(driver.count, 2);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

void CurvePanelTest::exportWritesTheShownCurves()
{
    const QTemporaryDir directory;
    m->monitor->setAxisNames([](int axisNo) { return axisNo == 0 ? QStringLiteral("Feeder") : QString(); });
    m->feed(0, 1, { 0, 1 });
    m->drawn();
    m->toggle(m->panel->legend().topLevelItem(1));
    m->toggle(m->curve(0, ActualPosition));
    const auto reported = m->noteReports();
    const QString name = directory.filePath(QStringLiteral("curves.csv"));
    QVERIFY(m->panel->exportTo(name));
    QTRY_VERIFY(!m->panel->isExporting());
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QCOMPARE(lines.first(),
        QByteArray("\"Time [s]\",\"Feeder: Set position [Unit]\",\"Feeder: Set velocity [Unit/s]\","
                   "\"Feeder: Actual velocity [Unit/s]\""));
    QCOMPARE(lines.at(100), QByteArray("0.990000,1.98,2,1.75"));
    QCOMPARE(reported->size(), std::size_t(1));
    QCOMPARE(reported->front().first, LogInfo);
    QVERIFY(m->panel->statusText().contains(name));
}

void CurvePanelTest::aFileThatCannotBeWrittenIsReported()
{
    m->feed(0, 1);
    m->drawn();
    const auto reported = m->noteReports();
    const QString name = QStringLiteral("/nowhere at all/curves.csv");
    QVERIFY(m->panel->exportTo(name));
    QTRY_VERIFY(!m->panel->isExporting());
    QCOMPARE(reported->size(), std::size_t(1));
    QCOMPARE(reported->front().first, LogError);
    QVERIFY(reported->front().second.contains(name));
    QVERIFY(m->panel->statusText().contains(name));
}

void CurvePanelTest::oneExportAtATime()
{
    const QTemporaryDir directory;
    m->feed(0, 60, { 0, 1 });
    m->drawn();
    QVERIFY(m->action("curves.export")->isEnabled());
    QVERIFY(m->panel->exportTo(directory.filePath(QStringLiteral("first.csv"))));
    QVERIFY(!m->action("curves.export")->isEnabled());
    QCOMPARE(m->panel->statusText(), QString::fromUtf8("The curves are being saved…"));
    QVERIFY(!m->panel->exportTo(directory.filePath(QStringLiteral("second.csv"))));
    // What changes the buttons otherwise leaves this one alone.
    m->panel->setPaused(true);
    QVERIFY(!m->action("curves.export")->isEnabled());
    QTRY_VERIFY(m->action("curves.export")->isEnabled());
    QVERIFY(m->panel->statusText().contains(QStringLiteral("first.csv")));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList({ QStringLiteral("first.csv") }));
}

void CurvePanelTest::thePanelMayGoUnderAnExport()
{
    const QTemporaryDir directory;
    m->feed(0, 60, { 0, 1 });
    QVERIFY(m->panel->exportTo(directory.filePath(QStringLiteral("curves.csv"))));
    m->panel.reset();
    QCOMPARE(QDir(directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

void CurvePanelTest::aLowPanelPutsThePlotsSideBySide()
{
    m->feed(0, 5);
    m->drawn();
    QVERIFY(m->plot(0).y() + m->plot(0).height() <= m->plot(1).y());
    QCOMPARE(m->canvas(0)->mapTo(&*m->panel, QPoint()).x(), m->canvas(1)->mapTo(&*m->panel, QPoint()).x());
    m->panel->resize(1000, 200);
    QTRY_VERIFY(m->plot(0).x() + m->plot(0).width() <= m->plot(1).x());
    QVERIFY(m->canvas(0)->height() > 60);
    QCOMPARE(m->plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity [Unit/s]"));
    m->panel->resize(1000, 150);
    QCOMPARE(m->plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity"));
    QVERIFY(m->panel->minimumSizeHint().height() <= 150);
    m->panel->resize(1000, 600);
    QTRY_VERIFY(m->plot(0).y() + m->plot(0).height() <= m->plot(1).y());
}

void CurvePanelTest::bothThemesAreDrawn()
{
    m->feed(0, 10);
    m->drawn();
    const QRgb light = m->canvas()->grab().toImage().pixel(2, 2);
    QVERIFY(m->inked(0) > 50);
    Theme::apply(QStringLiteral("dark.qss"));
    QTRY_VERIFY(m->canvas()->grab().toImage().pixel(2, 2) != light);
    QVERIFY(qGray(m->canvas()->grab().toImage().pixel(2, 2)) < 64);
    QVERIFY(m->plot(0).items().at(0)->pen().color().lightness() > 128);
    QVERIFY(m->inked(0) > 50);
}

void CurvePanelTest::everythingHasAName()
{
    m->feed(0, 1);
    m->drawn();
    QCOMPARE(m->panel->windowTitle(), QStringLiteral("Curves"));
    for (const QWidget* widget : { static_cast<QWidget*>(&*m->panel), m->canvas(0), m->canvas(1),
             static_cast<QWidget*>(&m->panel->legend()), static_cast<QWidget*>(m->panel->findChild<QToolBar*>()) })
        QVERIFY(!widget->accessibleName().isEmpty());
    QVERIFY(m->canvas(0)->accessibleName() != m->canvas(1)->accessibleName());
    for (const char* name :
        { "curves.pause", "curves.follow", "curves.fit", "curves.back", "curves.clear", "curves.export" }) {
        QVERIFY(!m->action(name)->text().isEmpty());
        QVERIFY(!m->action(name)->toolTip().isEmpty());
        QVERIFY2(!m->action(name)->icon().isNull(), name);
    }
    QCOMPARE(m->plot(0).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Position [Unit]"));
    QCOMPARE(m->plot(1).axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Velocity [Unit/s]"));
}

void CurvePanelTest::theButtonsAreReachedByTab()
{
    m->feed(0, 1);
    m->drawn();
    auto* bar = m->panel->findChild<QToolBar*>();
    bar->widgetForAction(m->action("curves.pause"))->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QVERIFY(m->panel->isPaused());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(QApplication::focusWidget() != bar->widgetForAction(m->action("curves.pause")));
    QVERIFY(QApplication::focusWidget()->parentWidget() == bar);
}

void CurvePanelTest::recordingAnAxisCanBeStopped()
{
    m->feed(0, 1, { 0, 1 });
    m->drawn();
    m->panel->legend().setFocus();
    m->panel->legend().setCurrentItem(m->curve(1, SetVelocity));
    QTest::keyClick(&m->panel->legend(), Qt::Key_Delete);
    QCOMPARE(m->monitor->recordedAxes(), QVector<int>({ 0 }));
    // What has been recorded stays until it is cleared.
    QCOMPARE(m->panel->legend().topLevelItemCount(), 2);
    m->press("curves.clear");
    QCOMPARE(m->panel->legend().topLevelItemCount(), 1);
    m->panel->legend().setCurrentItem(m->panel->legend().topLevelItem(0));
    m->panel->legend().stopAction()->trigger();
    QVERIFY(m->monitor->recordedAxes().isEmpty());
    m->panel->legend().stopAction()->trigger();
}

QTEST_MAIN(CurvePanelTest)
#include "CurvePanelTest.moc"
