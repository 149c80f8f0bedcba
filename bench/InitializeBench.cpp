#include "bench/Measure.h"
#include "sdk/PluginInterface.h"
#include "tests/support/TestHost.h"

#include <QCoreApplication>
#include <QPluginLoader>
#include <QProcess>

// What taking the plug-in into service costs beside loading its module. A module is loaded once in the life of a
// process, so that each pair of values comes from a process of its own; the libraries that the host has loaded by then
// are linked into it.

namespace {

constexpr double bound = 1.0;
constexpr int rounds = 41;

QString childArgument()
{
    return QStringLiteral("--child");
}

/// Loads and initialises once, and prints both times in microseconds.
int measureOnce()
{
    TestHost host;
    QPluginLoader loader(QStringLiteral(KESTRUN_PLUGIN_MODULE));
    bool done = false;
    const double load = Measure::once([&] { done = loader.load(); });
    auto* plugin = qobject_cast<PluginInterface*>(loader.instance());
    if (!done || !plugin)
        qFatal("%s", qPrintable(loader.errorString()));
    const double initialize = Measure::once([&] { done = plugin->initialize(); });
    std::printf("%.3f %.3f\n", load, initialize);
    delete plugin;
    return done ? 0 : 1;
}

/// Both times of another process: loading, then taking into service.
QStringList childTimes()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), { childArgument() });
    if (!child.waitForFinished() || child.exitCode() != 0)
        qFatal("%s", child.readAllStandardError().constData());
    return QString::fromLatin1(child.readAllStandardOutput()).trimmed().split(QLatin1Char(' '));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(childArgument()))
        return measureOnce();
    QStringList times;
    const Measure::Pair pair = Measure::inTurns(
        rounds,
        [&times] {
            times = childTimes();
            return times.at(0).toDouble();
        },
        [&times] { return times.at(1).toDouble(); });
    return Measure::report("initialize beside loading the module", pair, bound) ? 0 : 1;
}
