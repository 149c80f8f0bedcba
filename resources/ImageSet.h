#pragma once

#include "resources/PictureCanvas.h"

#include <QString>
#include <QVector>

namespace drawing {

/// One image of the bundle, as the drawing program makes it.
struct BundledImage {
    /// Below the folder "images", for example "dark/axis.png"; the ending says how it is stored.
    QString path;
    Picture picture;
};

/// Draws all images of the bundle. Needs a QGuiApplication, on any platform, for the fonts.
QVector<BundledImage> drawAllImages();

/// Stores the image under `folder`/path, as small as its kind allows. False, with the file and the reason in
/// `error`, if it cannot be written.
bool storeImage(const BundledImage& image, const QString& folder, QString& error);

/// How the file under `folder`/path differs from the drawn image, as a line for a person; empty if it does not. Words
/// may differ as much as one version of the font differs from the next, all else by no more than storing costs.
QString storedFault(const BundledImage& image, const QString& folder);

} // namespace drawing
