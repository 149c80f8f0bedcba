#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QtTest>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

constexpr int homingNumbers[] = { 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35 };

QStringList pathsOfBundle()
{
    QStringList paths{
        QStringLiteral(":/axis_package.json"),
        QStringLiteral(":/images/status_on.png"),
        QStringLiteral(":/images/status_off.png"),
    };
    for (const QString& theme : { QStringLiteral("default"), QStringLiteral("dark") }) {
        const QString folder = QStringLiteral(":/images/%1/").arg(theme);
        paths << folder + QStringLiteral("axiscfg.png") << folder + QStringLiteral("axis.png")
              << folder + QStringLiteral("workbench_1.jpg") << folder + QStringLiteral("workbench_2.jpg");
        for (const QString& language : { QStringLiteral("zh_CN"), QStringLiteral("en_US") })
            for (int number : homingNumbers)
                paths << folder + QStringLiteral("Homing_%1/Homing_%2.png").arg(language).arg(number);
    }
    return paths;
}

QStringList homingPaths()
{
    return pathsOfBundle().filter(QStringLiteral("/Homing_"));
}

} // namespace

/// The bundle as the code that uses it finds it: nothing here initialises it by name.
class AxisResourcesTest : public QObject {
    Q_OBJECT

private slots:
    void bundleHoldsExactlyItsPaths();
    void manifestHasItsKeysAndValues();
    void manifestEndsItsLinesWithCarriageReturnAndLineFeed();
    void manifestReadAsTextIsTheSameObject();
    void everyImageLoads_data();
    void everyImageLoads();
    void smallImagesAreTwiceSixteenPixels_data();
    void smallImagesAreTwiceSixteenPixels();
    void lampsAreToldApartByShapeAlone();
    void iconsDifferByTheme_data();
    void iconsDifferByTheme();
    void unitFiguresAreSharpTwiceTheirSizeOnThePage();
    void homingPicturesAreOfOneSize();
    void homingPicturesAllDiffer();
    void homingPicturesAreOnPaperOfTheirTheme();
};

void AxisResourcesTest::bundleHoldsExactlyItsPaths()
{
    QStringList found{ QStringLiteral(":/axis_package.json") };
    QVERIFY(QFile::exists(found.constFirst()));
    QDirIterator files(QStringLiteral(":/images"), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        found << files.next();
    found.sort();
    QStringList expected = pathsOfBundle();
    expected.sort();
    QCOMPARE(found, expected);
}

void AxisResourcesTest::manifestHasItsKeysAndValues()
{
    const QJsonObject expected{
        { QStringLiteral("name"), QStringLiteral("motioncontrol.axis") },
        { QStringLiteral("version"), QStringLiteral("1.0.0") },
        { QStringLiteral("descript"),
            QJsonObject{ { QStringLiteral("zh_CN"), QStringLiteral("运动控制轴") },
                { QStringLiteral("en_US"), QStringLiteral("Motion control axis") } } },
        { QStringLiteral("provider"),
            QJsonObject{ { QStringLiteral("zh_CN"), QStringLiteral("沃恩") },
                { QStringLiteral("en_US"), QStringLiteral("Vornhal") } } },
        { QStringLiteral("catgory"),
            QJsonObject{ { QStringLiteral("zh_CN"), QStringLiteral("/运动控制/轴") },
                { QStringLiteral("en_US"), QStringLiteral("/motioncontrol/axis") } } },
        { QStringLiteral("dependencies"),
            QJsonObject{ { QStringLiteral("project.solutionview"), QStringLiteral("1.0.0") } } },
        { QStringLiteral("forceLoad"), true },
    };
    QJsonParseError error;
    const QJsonDocument manifest = QJsonDocument::fromJson(bytesOf(QStringLiteral(":/axis_package.json")), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(manifest.object(), expected);
}

void AxisResourcesTest::manifestEndsItsLinesWithCarriageReturnAndLineFeed()
{
    QByteArray text = bytesOf(QStringLiteral(":/axis_package.json"));
    QVERIFY(!text.startsWith("\xEF\xBB\xBF"));
    QVERIFY(text.startsWith("{\r\n"));
    QVERIFY(text.endsWith("}\r\n"));
    text.replace("\r\n", "");
    QVERIFY(!text.contains('\n'));
    QVERIFY(!text.contains('\r'));
}

void AxisResourcesTest::manifestReadAsTextIsTheSameObject()
{
    QFile file(QStringLiteral(":/axis_package.json"));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    const QString text = stream.readAll();
    QVERIFY(text.contains(QStringLiteral("\"descript\": {\n        \"zh_CN\": \"运动控制轴\"")));
    QCOMPARE(QJsonDocument::fromJson(text.toUtf8()),
        QJsonDocument::fromJson(bytesOf(QStringLiteral(":/axis_package.json"))));
}

void AxisResourcesTest::everyImageLoads_data()
{
    QTest::addColumn<QString>("path");
    for (const QString& path : pathsOfBundle().mid(1))
        QTest::newRow(qPrintable(path)) << path;
}

void AxisResourcesTest::everyImageLoads()
{
    QFETCH(QString, path);
    QVERIFY(!QImage(path).isNull());
}

void AxisResourcesTest::smallImagesAreTwiceSixteenPixels_data()
{
    QTest::addColumn<QString>("path");
    for (const QString& path : pathsOfBundle().filter(QRegularExpression(QStringLiteral("(status_|/axis)\\w*\\.png"))))
        QTest::newRow(qPrintable(path)) << path;
}

void AxisResourcesTest::smallImagesAreTwiceSixteenPixels()
{
    QFETCH(QString, path);
    const QImage image(path);
    QCOMPARE(image.size(), QSize(32, 32));
    QVERIFY2(qAlpha(image.pixel(0, 0)) == 0, "the corner stands on any background");
}

void AxisResourcesTest::lampsAreToldApartByShapeAlone()
{
    // What somebody sees who tells no colours: light against dark inside the lamp.
    const auto bright = [](const QString& path) {
        const QImage grey = QImage(path).convertToFormat(QImage::Format_Grayscale8);
        QVector<bool> cells;
        for (int y = 8; y < 24; ++y)
            for (int x = 8; x < 24; ++x)
                cells << (qGray(grey.pixel(x, y)) > 170);
        return cells;
    };
    const QVector<bool> on = bright(QStringLiteral(":/images/status_on.png"));
    const QVector<bool> off = bright(QStringLiteral(":/images/status_off.png"));
    int different = 0;
    for (int i = 0; i < on.size(); ++i)
        different += on[i] != off[i] ? 1 : 0;
    QVERIFY2(different > on.size() / 4, qPrintable(QString::number(different)));
}

void AxisResourcesTest::iconsDifferByTheme_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("tree node") << QStringLiteral("axiscfg.png");
    QTest::newRow("single axis") << QStringLiteral("axis.png");
}

void AxisResourcesTest::iconsDifferByTheme()
{
    QFETCH(QString, name);
    const QImage light(QStringLiteral(":/images/default/") + name);
    const QImage dark(QStringLiteral(":/images/dark/") + name);
    QVERIFY(light != dark);
}

void AxisResourcesTest::unitFiguresAreSharpTwiceTheirSizeOnThePage()
{
    const QStringList paths = pathsOfBundle().filter(QStringLiteral("workbench_"));
    QCOMPARE(paths.size(), 4);
    QVector<QImage> figures;
    for (const QString& path : paths) {
        figures << QImage(path);
        QCOMPARE(figures.last().size(), QSize(960, 420));
        QCOMPARE(figures.indexOf(figures.last()), figures.size() - 1);
    }
}

void AxisResourcesTest::homingPicturesAreOfOneSize()
{
    QCOMPARE(homingPaths().size(), 68);
    for (const QString& path : homingPaths())
        QVERIFY2(QImage(path).size() == QSize(1280, 720), qPrintable(path));
}

void AxisResourcesTest::homingPicturesAllDiffer()
{
    QVector<QImage> pictures;
    for (const QString& path : homingPaths())
        pictures << QImage(path).convertToFormat(QImage::Format_RGB32);
    for (int i = 0; i < pictures.size(); ++i)
        for (int k = 0; k < i; ++k)
            QVERIFY2(pictures[i] != pictures[k], qPrintable(homingPaths()[i] + QLatin1Char(' ') + homingPaths()[k]));
}

void AxisResourcesTest::homingPicturesAreOnPaperOfTheirTheme()
{
    for (const QString& path : homingPaths()) {
        const int lightness = QImage(path).pixelColor(10, 10).lightness();
        QVERIFY2(path.contains(QLatin1String("/dark/")) ? lightness < 80 : lightness > 230, qPrintable(path));
    }
}

QTEST_GUILESS_MAIN(AxisResourcesTest)

#include "AxisResourcesTest.moc"
