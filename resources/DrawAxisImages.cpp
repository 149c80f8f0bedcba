#include "resources/ImageSet.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

namespace {

bool storeAll(const QString& folder, QTextStream& errors)
{
    const QVector<drawing::BundledImage> images = drawing::drawAllImages();
    for (const drawing::BundledImage& image : images) {
        QString error;
        if (!drawing::storeImage(image, folder, error)) {
            errors << error << '\n';
            return false;
        }
    }
    return true;
}

bool checkAll(const QString& folder, QTextStream& errors)
{
    bool good = true;
    const QVector<drawing::BundledImage> images = drawing::drawAllImages();
    for (const drawing::BundledImage& image : images) {
        QStringList faults = drawing::textFaults(image.picture);
        const QString stored = drawing::storedFault(image, folder);
        if (!stored.isEmpty())
            faults << stored;
        for (const QString& fault : qAsConst(faults))
            errors << image.path << ": " << fault << '\n';
        good = good && faults.isEmpty();
    }
    return good;
}

} // namespace

int main(int argc, char* argv[])
{
    // Pictures are drawn into memory; no screen is needed for that.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws the images of the axis plug-in's resource bundle."));
    parser.addHelpOption();
    const QCommandLineOption check(QStringLiteral("check"),
        QStringLiteral("Write nothing; tell which words leave their room and which images differ from FOLDER."));
    parser.addOption(check);
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Where the images are."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    const QString folder = parser.positionalArguments().constFirst();
    QTextStream errors(stderr);
    const bool good = parser.isSet(check) ? checkAll(folder, errors) : storeAll(folder, errors);
    return good ? 0 : 1;
}
