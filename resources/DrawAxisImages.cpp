#include "resources/ImageSet.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

namespace {

bool storeAll(const QString& folder, QTextStream& errors)
{
    for (const drawing::BundledImage& image : drawing::drawAllImages()) {
        QString error;
        if (!drawing::storeImage(image, folder, error)) {
            errors << error << '\n';
            return false;
        }
    }
    return true;
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
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Where the images go."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    QTextStream errors(stderr);
    return storeAll(parser.positionalArguments().constFirst(), errors) ? 0 : 1;
}
