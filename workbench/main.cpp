#include "workbench/Theme.h"
#include "workbench/Workbench.h"
#include "workbench/tour/Tour.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

namespace {

QString sampleProject()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(programs.absoluteFilePath(QStringLiteral("../share/kestrun/examples/packaging-line.kproj")));
}

struct Arguments {
    WorkbenchPaths paths;
    QString project;
    /// Directory for the pictures of the tour; empty for a normal run.
    QString tour;
};

Arguments readArguments(const QApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A workbench for controllers and their motion axes."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption plugins(QStringLiteral("plugins"),
        QStringLiteral("Load plug-ins from <dir> instead of the folder beside the program."), QStringLiteral("dir"));
    const QCommandLineOption controllers(QStringLiteral("controllers"),
        QStringLiteral("Read controller descriptions from <dir>."), QStringLiteral("dir"));
    const QCommandLineOption settings(QStringLiteral("settings"),
        QStringLiteral("Keep settings in <file> instead of the user's own."), QStringLiteral("file"));
    const QCommandLineOption tour(QStringLiteral("tour"),
        QStringLiteral("Show the program by itself on a copy of the project, with pictures and a summary in <dir>."),
        QStringLiteral("dir"));
    parser.addOptions({ plugins, controllers, settings, tour });
    parser.addPositionalArgument(
        QStringLiteral("project"), QStringLiteral("The project to open."), QStringLiteral("[PROJECT]"));
    parser.process(application);
    Arguments arguments{ WorkbenchPaths::besideProgram(QCoreApplication::applicationDirPath()),
        parser.positionalArguments().value(0), parser.value(tour) };
    if (parser.isSet(plugins))
        arguments.paths.pluginDirectory = parser.value(plugins);
    if (parser.isSet(controllers))
        arguments.paths.controllerDirectory = parser.value(controllers);
    arguments.paths.settingsFile = parser.value(settings);
    return arguments;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // A desktop's own dialogs keep the keyboard to themselves, and with it the key of STOP.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kestrun"));
    QApplication::setApplicationVersion(QStringLiteral(KESTRUN_VERSION));
    const Arguments arguments = readArguments(application);
    Theme::prepare();
    if (!arguments.tour.isEmpty())
        return runTour(
            arguments.paths, arguments.project.isEmpty() ? sampleProject() : arguments.project, arguments.tour);
    Workbench workbench(arguments.paths);
    workbench.start();
    workbench.openFirst(arguments.project);
    const int result = QApplication::exec();
    workbench.shutDown();
    return result;
}
