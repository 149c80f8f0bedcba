#include "resources/ImageSet.h"

#include "resources/ColourTable.h"
#include "resources/HomingPicture.h"
#include "resources/SmallImages.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

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
    drawHomingPictures(theme, Language::Chinese, folder + QStringLiteral("Homing_zh_CN/"), images);
    drawHomingPictures(theme, Language::English, folder + QStringLiteral("Homing_en_US/"), images);
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
    writer.setCompression(100);
    if (path.endsWith(QLatin1String(".jpg"))) {
        writer.setQuality(94);
        writer.setOptimizedWrite(true);
    }
    if (writer.write(image.picture.image))
        return true;
    error = path + QStringLiteral(": ") + writer.errorString();
    return false;
}

} // namespace drawing
