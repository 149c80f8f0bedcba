#include "bench/Measure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>
#include <map>
#include <string>

// How long a user waits from the start of the process `kestrun` until an axis of the built-in controller can be worked
// on. The finished program runs with the plug-in of the axes and one more that watches it and presses the buttons. The
// time until that plug-in is loaded includes what a run takes that prints the version and ends; it is printed with it.
// No promise hangs on it.

namespace {

constexpr int rounds = 5;
constexpr int patienceMs = 30000;

using Clock = std::chrono::steady_clock;
using Parts = std::map<std::string, std::vector<double>>;

std::int64_t now()
{
    return Clock::now().time_since_epoch().count();
}

QString program()
{
    return QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun");
}

/// What the plug-in writes, in the order of its coming, and what happened since the line before.
struct Step {
    const char* word;
    const char* part;
};
const Step steps[] = {
    { "loaded", "2 process started, window built, plug-ins loaded" },
    { "plugins", "3 plug-ins in service" },
    { "opened", "4 window shown, project opened" },
    { "painted", "5 painted" },
    { "online", "6 controller started, connected, axes taken over" },
    { "page", "7 online page of an axis opened" },
    { "ready", "8 axis in debug mode" },
};

/// Milliseconds from the start of the process to its end, when all it does is to tell its version.
double startToVersion()
{
    QProcess process;
    const double time = Measure::once([&] {
        process.start(program(), { QStringLiteral("--version") });
        process.waitForFinished(patienceMs);
    });
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 ? time / 1000 : -1;
}

std::map<QByteArray, std::int64_t> readTimes(QProcess& process)
{
    std::map<QByteArray, std::int64_t> times;
    while (process.canReadLine()) {
        const QList<QByteArray> words = process.readLine().simplified().split(' ');
        if (words.size() == 2)
            times.emplace(words.first(), words.last().toLongLong());
    }
    return times;
}

bool startOnce(const QTemporaryDir& folder, Parts& parts)
{
    const double version = startToVersion();
    QProcess process;
    // Each start is the first one: no window to restore, no editors.
    const QString settings = folder.filePath(QStringLiteral("settings.ini"));
    QFile::remove(settings);
    const std::int64_t begin = now();
    process.start(program(),
        { QStringLiteral("--plugins"), folder.filePath(QStringLiteral("plugins")), QStringLiteral("--settings"),
            settings, folder.filePath(QStringLiteral("line.kproj")) });
    if (version < 0 || !process.waitForFinished(patienceMs) || process.exitCode() != 0) {
        std::printf("%s", process.readAllStandardError().constData());
        return false;
    }
    const std::int64_t end = now();
    const std::map<QByteArray, std::int64_t> times = readTimes(process);
    std::int64_t last = begin;
    for (const Step& step : steps) {
        const auto time = times.find(step.word);
        if (time == times.end()) {
            std::printf("%s: did not come\n", step.part);
            return false;
        }
        parts[step.part].push_back(static_cast<double>(time->second - last) / 1e6);
        last = time->second;
    }
    parts["1 (a start that only tells the version)"].push_back(version);
    parts["9a start of the process to connected"].push_back(static_cast<double>(times.at("online") - begin) / 1e6);
    parts["9b start of the process to work on an axis"].push_back(static_cast<double>(last - begin) / 1e6);
    parts["9c disconnected and ended"].push_back(static_cast<double>(end - last) / 1e6);
    return true;
}

bool prepare(const QTemporaryDir& folder)
{
    const QString plugins = folder.filePath(QStringLiteral("plugins"));
    return QDir().mkdir(plugins)
        && QFile::link(QStringLiteral(KESTRUN_PLUGIN_MODULE), plugins + QStringLiteral("/axis.so"))
        && QFile::link(QStringLiteral(KESTRUN_WATCH_MODULE), plugins + QStringLiteral("/watch.so"))
        && QFile::copy(QStringLiteral(KESTRUN_BUILD_DIR "/share/kestrun/examples/packaging-line.kproj"),
            folder.filePath(QStringLiteral("line.kproj")));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    if (!prepare(folder)) {
        std::puts("the sample project or a plug-in is not built");
        return EXIT_FAILURE;
    }
    Parts parts;
    for (int round = 0; round < rounds; ++round) {
        if (!startOnce(folder, parts)) {
            std::puts("the program did not come to its end");
            return EXIT_FAILURE;
        }
    }
    for (const auto& [name, times] : parts)
        std::printf("%-50s %8.1f ms  (median of %d, first %.1f ms)\n", name.c_str() + name.find(' ') + 1,
            Measure::median(times), rounds, times.front());
    return EXIT_SUCCESS;
}
