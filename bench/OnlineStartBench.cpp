#include "bench/Measure.h"
#include "host/communication/ControllerConnection.h"
#include "sdk/IEditor.h"
#include "workbench/Theme.h"
#include "workbench/Workbench.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdlib>
#include <map>
#include <memory>

// How long a user waits from the start of the workbench until work on the built-in controller may begin, and what the
// time goes into: the sample project, its axes taken over. Printed; no promise hangs on it.

namespace {

constexpr int rounds = 7;
constexpr int patienceMs = 20000;

using Parts = std::map<std::string, std::vector<double>>;

/// Runs the program's events until the session is in that state, and gives the microseconds that took; negative when it
/// never comes.
double until(OnlineSession& session, OnlineSession::State state)
{
    const double taken = Measure::once([&] {
        QEventLoop loop;
        QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
        QObject::connect(&session, &OnlineSession::stateChanged, &loop, [&] {
            if (session.state() == state || !session.isWanted())
                loop.quit();
        });
        if (session.state() != state)
            loop.exec();
    });
    return session.state() == state ? taken : -1;
}

bool startOnce(const QTemporaryDir& folder, Parts& parts)
{
    const WorkbenchPaths paths{ QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins"),
        QStringLiteral(KESTRUN_BUILD_DIR "/share/kestrun/controllers"), folder.filePath(QStringLiteral("settings.ini")),
        QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller") };
    std::unique_ptr<Workbench> workbench;
    std::vector<std::pair<const char*, double>> taken;
    taken.emplace_back(
        "1 services and window built", Measure::once([&] { workbench = std::make_unique<Workbench>(paths); }));
    taken.emplace_back("2 plug-in loaded, window shown", Measure::once([&] {
        workbench->start();
        QApplication::processEvents();
    }));
    taken.emplace_back("3 project opened, painted", Measure::once([&] {
        workbench->openFirst(folder.filePath(QStringLiteral("line.kproj")));
        QApplication::processEvents();
    }));
    OnlineSession& session = workbench->online().session();
    taken.emplace_back("4 program started", Measure::once([&] { session.connectBuiltIn(); }));
    taken.emplace_back("5 controller listens", until(session, OnlineSession::Connecting));
    taken.emplace_back("6 logged in", until(session, OnlineSession::Checking));
    taken.emplace_back("7 axes compared and taken over", until(session, OnlineSession::Online));
    double whole = 0;
    for (const auto& [name, time] : taken) {
        if (time < 0) {
            std::printf("%s: did not come\n", name);
            return false;
        }
        parts[name].push_back(time);
        whole += time;
    }
    parts["8 from the start to work on the controller"].push_back(whole);
    parts["9 disconnected and shut down"].push_back(Measure::once([&] { workbench.reset(); }));
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    Theme::prepare();
    const QTemporaryDir folder;
    if (!QFile::copy(QStringLiteral(KESTRUN_BUILD_DIR "/share/kestrun/examples/packaging-line.kproj"),
            folder.filePath(QStringLiteral("line.kproj")))) {
        std::puts("the sample project is not built");
        return EXIT_FAILURE;
    }
    Parts parts;
    for (int round = 0; round < rounds; ++round) {
        if (!startOnce(folder, parts))
            return EXIT_FAILURE;
    }
    for (const auto& [name, times] : parts)
        std::printf("%-46s %9.1f ms  (median of %d, first %.1f ms)\n", name.c_str() + 2, Measure::median(times) / 1000,
            rounds, times.front() / 1000);
    return EXIT_SUCCESS;
}
