#include "resources/ImageSet.h"

#include "resources/ColourTable.h"
#include "resources/HomingPicture.h"
#include "resources/SmallImages.h"
#include "resources/UnitFigures.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QRegion>

namespace drawing {

namespace {

QString themeFolder(Theme theme)
{
    return theme == Theme::Light ? QStringLiteral("default/") : QStringLiteral("dark/");
}

void drawHomingPictures(Theme theme, Language language, const QString& folder, QVector<BundledImage>& images)
{
    for (const homing::Method& method : homing::methods()) {
        Picture picture = drawHomingPicture(method, theme, language);
        picture.image = withColourTable(picture.image);
        images.append({ folder + QStringLiteral("Homing_%1.png").arg(method.number), picture });
    }
}

void drawTheme(Theme theme, QVector<BundledImage>& images)
{
    const QString folder = themeFolder(theme);
    images.append({ folder + QStringLiteral("axiscfg.png"), { axisConfigIcon(theme), {} } });
    images.append({ folder + QStringLiteral("axis.png"), { axisIcon(theme), {} } });
    images.append({ folder + QStringLiteral("workbench_1.jpg"), drawLinearUnitFigure(theme) });
    images.append({ folder + QStringLiteral("workbench_2.jpg"), drawRotaryUnitFigure(theme) });
    drawHomingPictures(theme, Language::Chinese, folder + QStringLiteral("Homing_zh_CN/"), images);
    drawHomingPictures(theme, Language::English, folder + QStringLiteral("Homing_en_US/"), images);
}

/// How far a channel may be off where another version of the font gives the picture another table of colours.
constexpr int storingTolerance = 40;
constexpr int jpegQuality = 94;

bool alike(QRgb left, QRgb right)
{
    return qAbs(qRed(left) - qRed(right)) <= storingTolerance && qAbs(qGreen(left) - qGreen(right)) <= storingTolerance
        && qAbs(qBlue(left) - qBlue(right)) <= storingTolerance
        && qAbs(qAlpha(left) - qAlpha(right)) <= storingTolerance;
}

/// Where words stand, with a rim for the same words in another version of the font.
QRegion wordsOf(const Picture& picture)
{
    QRegion words;
    for (const TextItem& text : picture.texts)
        words += text.box.toAlignedRect().adjusted(-6, -2, 6, 2);
    return words;
}

bool writeSmall(QImageWriter& writer, const BundledImage& image)
{
    // The scale of compression ends at 100, the smallest file; it costs no quality.
    writer.setCompression(100);
    if (image.path.endsWith(QLatin1String(".jpg"))) {
        writer.setQuality(jpegQuality);
        writer.setOptimizedWrite(true);
    }
    return writer.write(image.picture.image);
}

/// The image after it has been through its file format, which for a PNG changes nothing.
QImage asStored(const BundledImage& image)
{
    if (image.path.endsWith(QLatin1String(".png")))
        return image.picture.image.convertToFormat(QImage::Format_ARGB32);
    QBuffer file;
    QImageWriter writer(&file, QFileInfo(image.path).suffix().toLatin1());
    writeSmall(writer, image);
    return QImage::fromData(file.data()).convertToFormat(QImage::Format_ARGB32);
}

/// The first pixel outside the words that is not alike, or (-1, -1).
QPoint differingPixel(const QImage& drawn, const QImage& stored, const QRegion& words)
{
    for (int y = 0; y < drawn.height(); ++y) {
        const QRgb* left = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
        const QRgb* right = reinterpret_cast<const QRgb*>(stored.constScanLine(y));
        for (int x = 0; x < drawn.width(); ++x)
            if (left[x] != right[x] && !alike(left[x], right[x]) && !words.contains(QPoint(x, y)))
                return { x, y };
    }
    return { -1, -1 };
}

} // namespace

QVector<BundledImage> drawAllImages()
{
    QVector<BundledImage> images{
        { QStringLiteral("status_on.png"), { statusOnLamp(), {} } },
        { QStringLiteral("status_off.png"), { statusOffLamp(), {} } },
    };
    drawTheme(Theme::Light, images);
    drawTheme(Theme::Dark, images);
    return images;
}

bool storeImage(const BundledImage& image, const QString& folder, QString& error)
{
    const QString path = QDir(folder).filePath(image.path);
    if (!QDir().mkpath(QFileInfo(path).path())) {
        error = path + QStringLiteral(": the folder cannot be made");
        return false;
    }
    QImageWriter writer(path);
    if (writeSmall(writer, image))
        return true;
    error = path + QStringLiteral(": ") + writer.errorString();
    return false;
}

QString storedFault(const BundledImage& image, const QString& folder)
{
    const QString path = QDir(folder).filePath(image.path);
    const QImage stored = QImage(path).convertToFormat(QImage::Format_ARGB32);
    if (stored.isNull())
        return path + QStringLiteral(": cannot be read");
    if (stored.size() != image.picture.image.size())
        return path + QStringLiteral(": has another size");
    const QPoint place = differingPixel(asStored(image), stored, wordsOf(image.picture));
    if (place.x() < 0)
        return {};
    return path + QStringLiteral(": differs at %1, %2").arg(place.x()).arg(place.y());
}

} // namespace drawing
