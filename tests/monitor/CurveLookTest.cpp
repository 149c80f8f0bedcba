#include "workbench/monitor/CurveLook.h"
#include "workbench/Theme.h"

#include <QPalette>
#include <QtTest>

#include <cmath>
#include <set>

/// Curves can be told apart and read in both themes.
class CurveLookTest : public QObject {
    Q_OBJECT

private slots:
    void theThemeIsReadFromThePalette();
    void linesStandOutFromTheGround_data();
    void linesStandOutFromTheGround();
    void setAndActualValuesDifferByTheLine();
    void twelveAxesLookDifferent();
    void noCurveIsRed();
    void aSampleShowsTheLine();
};

namespace {
const CurveKind kinds[] = { SetPosition, ActualPosition, SetVelocity, ActualVelocity };

double luminance(const QColor& color)
{
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}
} // namespace

void CurveLookTest::theThemeIsReadFromThePalette()
{
    QVERIFY(CurveLook::isLight(Theme::palette(true)));
    QVERIFY(!CurveLook::isLight(Theme::palette(false)));
}

void CurveLookTest::linesStandOutFromTheGround_data()
{
    QTest::addColumn<bool>("light");
    QTest::newRow("light theme") << true;
    QTest::newRow("dark theme") << false;
}

void CurveLookTest::linesStandOutFromTheGround()
{
    QFETCH(bool, light);
    const QColor ground = Theme::palette(light).color(QPalette::Base);
    for (int axisNo = 0; axisNo < 24; ++axisNo) {
        for (const CurveKind kind : kinds)
            QVERIFY(contrast(CurveLook::pen(axisNo, kind, light).color(), ground) >= 4.5);
    }
}

void CurveLookTest::setAndActualValuesDifferByTheLine()
{
    for (int axisNo = 0; axisNo < 24; ++axisNo) {
        const QPen set = CurveLook::pen(axisNo, SetPosition, true);
        const QPen actual = CurveLook::pen(axisNo, ActualPosition, true);
        QCOMPARE(set.color(), actual.color());
        QVERIFY(set.dashPattern() != actual.dashPattern());
    }
    QCOMPARE(CurveLook::pen(0, ActualVelocity, true).style(), Qt::SolidLine);
}

void CurveLookTest::twelveAxesLookDifferent()
{
    for (const CurveKind kind : kinds) {
        std::set<std::pair<QRgb, QVector<qreal>>> looks;
        for (int axisNo = 0; axisNo < 12; ++axisNo) {
            const QPen pen = CurveLook::pen(axisNo, kind, false);
            looks.insert({ pen.color().rgb(), pen.dashPattern() });
        }
        QCOMPARE(looks.size(), std::size_t(12));
    }
}

void CurveLookTest::noCurveIsRed()
{
    for (const bool light : { true, false }) {
        for (int axisNo = 0; axisNo < 12; ++axisNo) {
            const QColor color = CurveLook::pen(axisNo, SetPosition, light).color();
            QVERIFY(color.hue() > 20 && color.hue() < 345);
        }
    }
}

void CurveLookTest::aSampleShowsTheLine()
{
    const QImage solid = CurveLook::sample(CurveLook::pen(0, ActualPosition, true)).pixmap(32, 16).toImage();
    const QImage dashed = CurveLook::sample(CurveLook::pen(0, SetPosition, true)).pixmap(32, 16).toImage();
    QVERIFY(solid != dashed);
    QCOMPARE(solid.pixelColor(16, 8).rgb(), CurveLook::pen(0, ActualPosition, true).color().rgb());
}

QTEST_MAIN(CurveLookTest)
#include "CurveLookTest.moc"
