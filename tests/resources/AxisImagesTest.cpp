#include "resources/HomingMethods.h"
#include "resources/HomingPicture.h"
#include "resources/ImageSet.h"
#include "resources/UnitFigures.h"

#include <QFontDatabase>
#include <QProcess>
#include <QtMath>
#include <QtTest>

using drawing::BundledImage;
using drawing::Language;
using drawing::Palette;
using drawing::Picture;
using drawing::TextItem;
using drawing::Theme;

namespace {

QString committedImages()
{
    return QStringLiteral(KESTRUN_SOURCE_DIR "/resources/images");
}

double luminance(const QColor& colour)
{
    const auto linear
        = [](double channel) { return channel <= 0.03928 ? channel / 12.92 : qPow((channel + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& left, const QColor& right)
{
    const double first = luminance(left) + 0.05;
    const double second = luminance(right) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

bool holdsChinese(const QString& words)
{
    return words.contains(QRegularExpression(QStringLiteral("\\p{Han}")));
}

QStringList wordsOf(const Picture& picture)
{
    QStringList words;
    for (const TextItem& text : picture.texts)
        words << text.words;
    return words;
}

QString allWordsOf(int number, Language language)
{
    for (const homing::Method& method : homing::methods())
        if (method.number == number)
            return wordsOf(drawing::drawHomingPicture(method, Theme::Light, language)).join(QLatin1Char('\n'));
    return {};
}

} // namespace

/// The drawing program and what it draws, held against the committed files.
class AxisImagesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void drawnImageIsTheCommittedOne_data();
    void drawnImageIsTheCommittedOne();
    void changedFileIsNoticed();
    void wordsStayInTheirRoom_data();
    void wordsStayInTheirRoom();
    void wordsThatLeaveTheirRoomAreNoticed();
    void wordsOnOtherWordsAreNoticed();
    void wordsReadOnTheirPaper_data();
    void wordsReadOnTheirPaper();
    void homingPictureSpeaksOneLanguage_data();
    void homingPictureSpeaksOneLanguage();
    void homingPictureTellsHomeSignalsAndLimits_data();
    void homingPictureTellsHomeSignalsAndLimits();
    void homePositionIsMarkedOnTheTravel_data();
    void homePositionIsMarkedOnTheTravel();
    void unitFiguresNumberTheWheelsThatTheLabelsSpeakOf();
    void fileThatCannotBeWrittenIsNamed();
    void programDrawsWhatItChecks();
    void programNamesTheFileThatDiffers();
    void programAsksForOneFolder();

private:
    QVector<BundledImage> m_images;
};

void AxisImagesTest::initTestCase()
{
    QVERIFY2(QFontDatabase().families().contains(QStringLiteral("Noto Sans CJK SC")),
        "the pictures are drawn with the font of the package fonts-noto-cjk");
    m_images = drawing::drawAllImages();
    QCOMPARE(m_images.size(), 78);
}

void AxisImagesTest::drawnImageIsTheCommittedOne_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < m_images.size(); ++i)
        QTest::newRow(qPrintable(m_images[i].path)) << i;
}

void AxisImagesTest::drawnImageIsTheCommittedOne()
{
    QFETCH(int, index);
    QCOMPARE(drawing::storedFault(m_images[index], committedImages()), QString());
}

void AxisImagesTest::changedFileIsNoticed()
{
    QTemporaryDir folder;
    BundledImage changed = m_images.last();
    changed.picture.image = changed.picture.image.convertToFormat(QImage::Format_RGB32);
    changed.picture.image.setPixelColor(640, 300, Qt::magenta);
    QString error;
    QVERIFY2(drawing::storeImage(changed, folder.path(), error), qPrintable(error));
    QVERIFY(drawing::storedFault(m_images.last(), folder.path()).endsWith(QStringLiteral("differs at 640, 300")));

    changed.picture.image = changed.picture.image.copy(0, 0, 100, 100);
    QVERIFY(drawing::storeImage(changed, folder.path(), error));
    QVERIFY(drawing::storedFault(m_images.last(), folder.path()).endsWith(QStringLiteral("has another size")));

    QVERIFY(QFile::remove(folder.filePath(changed.path)));
    QVERIFY(drawing::storedFault(m_images.last(), folder.path()).endsWith(QStringLiteral("cannot be read")));
}

void AxisImagesTest::wordsStayInTheirRoom_data()
{
    drawnImageIsTheCommittedOne_data();
}

void AxisImagesTest::wordsStayInTheirRoom()
{
    QFETCH(int, index);
    QCOMPARE(drawing::textFaults(m_images[index].picture), QStringList());
}

void AxisImagesTest::wordsThatLeaveTheirRoomAreNoticed()
{
    drawing::PictureCanvas canvas(QSize(200, 100), Theme::Light);
    canvas.write(
        QRectF(10, 10, 30, 30), Qt::AlignVCenter, QStringLiteral("far too long"), drawing::font(20), Qt::black);
    canvas.write(
        QRectF(150, 50, 300, 30), Qt::AlignVCenter, QStringLiteral("over the rim"), drawing::font(20), Qt::black);
    const QStringList faults = drawing::textFaults(canvas.finish());
    QCOMPARE(faults,
        QStringList({ QStringLiteral("\"far too long\" leaves its cell"),
            QStringLiteral("\"over the rim\" leaves the picture") }));
}

void AxisImagesTest::wordsOnOtherWordsAreNoticed()
{
    drawing::PictureCanvas canvas(QSize(200, 100), Theme::Light);
    canvas.write(QRectF(10, 10, 150, 30), Qt::AlignVCenter, QStringLiteral("below"), drawing::font(20), Qt::black);
    canvas.write(QRectF(20, 12, 150, 30), Qt::AlignVCenter, QStringLiteral("above"), drawing::font(20), Qt::black);
    QCOMPARE(drawing::textFaults(canvas.finish()), QStringList(QStringLiteral("\"above\" covers \"below\"")));
}

void AxisImagesTest::wordsReadOnTheirPaper_data()
{
    QTest::addColumn<QColor>("paper");
    QTest::addColumn<QColor>("colour");
    for (Theme theme : { Theme::Light, Theme::Dark }) {
        const Palette& colours = drawing::palette(theme);
        const char* name = theme == Theme::Light ? "light" : "dark";
        QTest::addRow("text, %s", name) << colours.paper << colours.text;
        QTest::addRow("comments, %s", name) << colours.paper << colours.faint;
        QTest::addRow("position, %s", name) << colours.paper << colours.position;
        QTest::addRow("speed, %s", name) << colours.paper << colours.speed;
        QTest::addRow("signal, %s", name) << colours.paper << colours.signal;
        QTest::addRow("fault, %s", name) << colours.paper << colours.fault;
        QTest::addRow("letter on a machine part, %s", name) << colours.fill << colours.text;
    }
}

void AxisImagesTest::wordsReadOnTheirPaper()
{
    QFETCH(QColor, paper);
    QFETCH(QColor, colour);
    QVERIFY2(contrast(paper, colour) >= 4.5, qPrintable(QString::number(contrast(paper, colour))));
}

void AxisImagesTest::homingPictureSpeaksOneLanguage_data()
{
    QTest::addColumn<int>("number");
    for (const homing::Method& method : homing::methods())
        QTest::addRow("method %d", method.number) << method.number;
}

void AxisImagesTest::homingPictureSpeaksOneLanguage()
{
    QFETCH(int, number);
    const QString english = allWordsOf(number, Language::English);
    QVERIFY(english.startsWith(QStringLiteral("Mode %1\n").arg(number)));
    QVERIFY(!holdsChinese(english));
    QVERIFY(english.contains(QStringLiteral("home position, reads the home offset")));
    const QString chinese = allWordsOf(number, Language::Chinese);
    QVERIFY(chinese.startsWith(QStringLiteral("模式 %1\n").arg(number)));
    QVERIFY(chinese.contains(QStringLiteral("原点，位置值等于原点偏移")));
    for (const QString& line : chinese.split(QLatin1Char('\n')))
        QVERIFY2(holdsChinese(line) || line.size() == 1, qPrintable(line));
}

void AxisImagesTest::homingPictureTellsHomeSignalsAndLimits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("home");
    QTest::addColumn<QString>("needed");
    QTest::addColumn<QString>("negative");
    QTest::addColumn<QString>("positive");
    const QString fault = QStringLiteral("%1: fault");
    const QString reverse = QStringLiteral("%1: reverse once, a second limit is a fault");
    const QString target = QStringLiteral("%1: reverse, home is here");
    const QString home = QStringLiteral("home at %1, where %2 turns %3 moving %4");
    const auto row = [&](int number, const char* place, const char* signal, const char* change, const char* side,
                         const char* needed, const QString& negative, const QString& positive) {
        QTest::addRow("method %d", number)
            << number
            << home.arg(QLatin1String(place), QLatin1String(signal), QLatin1String(change), QLatin1String(side))
            << QString::fromLatin1(needed) << negative.arg(QLatin1Char('N')) << positive.arg(QLatin1Char('P'));
    };
    row(17, "the edge of N", "N", "off", "right", "needs N", target, fault);
    row(18, "the edge of P", "P", "off", "left", "needs P", fault, target);
    row(19, "a", "H", "off", "left", "needs H (N, P advised)", fault, reverse);
    row(20, "a", "H", "on", "right", "needs H (N, P advised)", fault, reverse);
    row(21, "b", "H", "off", "right", "needs H (N, P advised)", reverse, fault);
    row(22, "b", "H", "on", "left", "needs H (N, P advised)", reverse, fault);
    row(23, "a", "H", "off", "left", "needs H, P", fault, reverse);
    row(24, "a", "H", "on", "right", "needs H, P", fault, reverse);
    row(25, "b", "H", "on", "left", "needs H, P", fault, reverse);
    row(26, "b", "H", "off", "right", "needs H, P", fault, reverse);
    row(27, "b", "H", "off", "right", "needs H, N", reverse, fault);
    row(28, "b", "H", "on", "left", "needs H, N", reverse, fault);
    row(29, "a", "H", "on", "right", "needs H, N", reverse, fault);
    row(30, "a", "H", "off", "left", "needs H, N", reverse, fault);
    const QString unmoved = QStringLiteral("the axis does not move and meets none");
    QTest::newRow("method 33") << 33 << QStringLiteral("home at the next index pulse Z, moving left")
                               << QStringLiteral("needs Z") << QStringLiteral("N: fault") << QStringLiteral("P: fault");
    QTest::newRow("method 34") << 34 << QStringLiteral("home at the next index pulse Z, moving right")
                               << QStringLiteral("needs Z") << QStringLiteral("N: fault") << QStringLiteral("P: fault");
    QTest::newRow("method 35") << 35 << QStringLiteral("home where the axis stands, without motion")
                               << QStringLiteral("needs no signal") << unmoved << unmoved;
}

void AxisImagesTest::homingPictureTellsHomeSignalsAndLimits()
{
    QFETCH(int, number);
    QFETCH(QString, home);
    QFETCH(QString, needed);
    QFETCH(QString, negative);
    QFETCH(QString, positive);
    const QStringList lines = allWordsOf(number, Language::English).split(QLatin1Char('\n'));
    for (const QString& words : { home, needed, negative, positive })
        QVERIFY2(lines.contains(words), qPrintable(words));
}

void AxisImagesTest::homePositionIsMarkedOnTheTravel_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("x");
    // The travel runs from 316 to 1232; its limit switches take a tenth each.
    for (const homing::Method& method : homing::methods()) {
        const int cam = method.home == homing::HomePlace::CamLeft ? 701 : 847;
        const int half = method.home == homing::HomePlace::CamLeft ? 737 : 811;
        const int x = method.home == homing::HomePlace::NegativeLimitEdge ? 408
            : method.home == homing::HomePlace::PositiveLimitEdge         ? 1140
            : method.range == homing::HomeRange::Cam                      ? cam
            : method.range == homing::HomeRange::None                     ? 774
                                                                          : half;
        QTest::addRow("method %d", method.number) << method.number << x;
    }
}

void AxisImagesTest::homePositionIsMarkedOnTheTravel()
{
    QFETCH(int, number);
    QFETCH(int, x);
    for (const QString& theme : { QStringLiteral("default"), QStringLiteral("dark") }) {
        const QImage picture(
            committedImages() + QStringLiteral("/%1/Homing_en_US/Homing_%2.png").arg(theme).arg(number));
        const QColor position = drawing::palette(theme == QLatin1String("dark") ? Theme::Dark : Theme::Light).position;
        QCOMPARE(picture.pixelColor(x, 146), position);
        QCOMPARE(picture.pixelColor(x - 8, 146), position);
        QCOMPARE(picture.pixelColor(x + 8, 146), position);
        QVERIFY(picture.pixelColor(x - 18, 146) != position);
        QVERIFY(picture.pixelColor(x + 18, 146) != position);
    }
}

void AxisImagesTest::unitFiguresNumberTheWheelsThatTheLabelsSpeakOf()
{
    for (const Picture& figure :
        { drawing::drawLinearUnitFigure(Theme::Light), drawing::drawRotaryUnitFigure(Theme::Light) }) {
        QCOMPARE(figure.image.size(), QSize(960, 420));
        QStringList words = wordsOf(figure);
        words.sort();
        // Once at the wheel, once in the ratio; M and W each at the machine, in the ratio, and where one turn is
        // explained.
        QCOMPARE(words.join(QString()), QStringLiteral("4455MMMWWW"));
        QVector<double> numerator;
        QVector<double> denominator;
        for (const TextItem& text : figure.texts)
            if (text.box.center().x() > 700) {
                if (text.words == QLatin1String("5"))
                    numerator << text.box.center().y();
                if (text.words == QLatin1String("4"))
                    denominator << text.box.center().y();
            }
        QCOMPARE(numerator.size(), 1);
        QCOMPARE(denominator.size(), 1);
        QVERIFY2(numerator.first() < denominator.first(), "the wheel of the table is above the line");
    }
}

void AxisImagesTest::fileThatCannotBeWrittenIsNamed()
{
    QTemporaryDir folder;
    QFile inTheWay(folder.filePath(QStringLiteral("dark")));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QString error;
    QVERIFY(!drawing::storeImage({ QStringLiteral("dark/axis.png"), m_images.first().picture }, folder.path(), error));
    QVERIFY2(error.startsWith(folder.filePath(QStringLiteral("dark/axis.png: "))), qPrintable(error));
}

namespace {

/// Runs the drawing program; its exit code, and what it complained about.
int runProgram(const QStringList& arguments, QString& complaint)
{
    QProcess program;
    program.start(QStringLiteral(KESTRUN_BUILD_DIR "/bin/draw-axis-images"), arguments);
    if (!program.waitForFinished(100000))
        return -1;
    complaint = QString::fromUtf8(program.readAllStandardError());
    return program.exitCode();
}

} // namespace

void AxisImagesTest::programDrawsWhatItChecks()
{
    QTemporaryDir folder;
    QString complaint;
    QVERIFY2(runProgram({ folder.path() }, complaint) == 0, qPrintable(complaint));
    QVERIFY2(runProgram({ QStringLiteral("--check"), folder.path() }, complaint) == 0, qPrintable(complaint));
}

void AxisImagesTest::programNamesTheFileThatDiffers()
{
    QTemporaryDir folder;
    QString complaint;
    QCOMPARE(runProgram({ QStringLiteral("--check"), folder.path() }, complaint), 1);
    for (const BundledImage& image : m_images)
        QVERIFY2(complaint.contains(image.path), qPrintable(image.path));
}

void AxisImagesTest::programAsksForOneFolder()
{
    QString complaint;
    QCOMPARE(runProgram({}, complaint), 2);
    QCOMPARE(runProgram({ QStringLiteral("one"), QStringLiteral("two") }, complaint), 2);
}

QTEST_MAIN(AxisImagesTest)

#include "AxisImagesTest.moc"
