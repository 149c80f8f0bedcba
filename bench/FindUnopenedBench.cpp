#include "bench/Measure.h"
#include "tests/workbench/RunningProgram.h"
#include "workbench/FindPanel.h"
#include "workbench/ToolWindowManager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTimer>

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>

// What a user waits for who searches a project of 255 axes none of which has been opened yet: the search has one editor
// built unseen, since only then do records know their controls, and gives what it leaves to the others. In the whole
// program, from the Return key in the panel to the place in its list, with the longest time in which the window stands
// still. A second search shows what is left of it. Printed, beside the memory that the program keeps of it; no promise
// hangs on it.

namespace {

constexpr int axes = 255;
const QString what = QStringLiteral("stop199");

struct Memory {
    double residentMiB = 0;
    /// The most that it has been so far.
    double peakMiB = 0;
};

Memory memory()
{
    malloc_trim(0);
    Memory memory;
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return memory;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const double value = line.simplified().split(' ').value(1).toDouble() / 1024;
        if (line.startsWith("VmRSS:"))
            memory.residentMiB = value;
        if (line.startsWith("VmHWM:"))
            memory.peakMiB = value;
    }
    return memory;
}

/// The project as a user finds it after a start, all of it stored and no axis opened.
bool openProject(const RunningProgram& program)
{
    QStringList names;
    for (int i = 0; i < axes; ++i)
        names.append(QStringLiteral("Axis%1").arg(i));
    const QString path = program.write(program.file(QStringLiteral("Unopened")), names, [](AxisTable& axis) {
        axis.setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Pulse"));
        axis.setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
        axis.setProperty(QStringLiteral("PosLimitPin"), QStringLiteral("Main.stop%1").arg(axis.name().mid(4)));
    });
    program.workbench->openFirst(path);
    return QTest::qWaitFor([&program] { return program.project() != nullptr; });
}

/// Milliseconds.
struct Times {
    double whole = -1;
    double longestStandstill = 0;
};

/// The whole is negative when the place was not found.
Times find(const RunningProgram& program)
{
    FindPanel& panel = program.workbench->window().find();
    auto* edit = panel.findChild<QLineEdit*>(QStringLiteral("text"));
    panel.clear();
    edit->setText(what);
    edit->setFocus();
    QElapsedTimer sinceTick;
    qint64 longest = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] { longest = std::max(longest, sinceTick.restart()); });
    tick.start(1);
    sinceTick.start();
    Times times;
    bool found = false;
    times.whole = Measure::once([&] {
        QTest::keyClick(edit, Qt::Key_Return);
        found = QTest::qWaitFor([&panel] { return panel.places().size() == 1; }, 120000);
    }) / 1000;
    QCoreApplication::processEvents();
    times.longestStandstill = static_cast<double>(std::max(longest, sinceTick.elapsed()));
    times.whole = found ? times.whole : -1;
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const RunningProgram program;
    if (!openProject(program)) {
        std::puts("the project cannot be opened");
        return EXIT_FAILURE;
    }
    program.workbench->window().toolWindows().showToolWindow(QStringLiteral("find"));
    QCoreApplication::processEvents();
    const Memory before = memory();
    const Times first = find(program);
    const Memory after = memory();
    const Times second = find(program);
    if (first.whole < 0 || second.whole < 0) {
        std::puts("the place was not found");
        return EXIT_FAILURE;
    }
    std::printf("find through %d axes that were never opened: %.0f ms, %.1f ms an axis; the same again %.1f ms\n", axes,
        first.whole, first.whole / axes, second.whole);
    std::printf("  the window stands still for %.0f ms at the longest\n", first.longestStandstill);
    std::printf("  memory: %.1f MiB before, %.1f MiB more after, %.1f MiB more at the most\n", before.residentMiB,
        after.residentMiB - before.residentMiB, after.peakMiB - before.peakMiB);
    return EXIT_SUCCESS;
}
