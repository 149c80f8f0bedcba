#include "editor/MotionControlAxisFactory.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/EditorOpening.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QFile>

#include <unistd.h>

#include <cstdio>

// By how much a thousand openings of an axis's editor make the process grow.

namespace {

constexpr int warmUp = 40;
constexpr int openings = 1000;
constexpr double boundInKiB = 1024;

/// Resident pages of this process, in KiB.
double residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Q_INIT_RESOURCE(axis_resources);
    const QApplication application(argc, argv);
    MotionControlAxisFactory factory;
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12E"));
    QStringList paths;
    for (const char* type : { "Axis_Pulse", "Axis_Encoder", "Axis_Virtual", "Axis_EtherCAT" })
        paths.append(project.axisPath(project.addAxis(QString::fromLatin1(type), QString::fromLatin1(type))->id()));
    QTabWidget tabs;
    tabs.addTab(new QWidget, QStringLiteral("start"));
    tabs.resize(1100, 750);
    tabs.show();
    const auto open = [&](int times) {
        for (int i = 0; i < times; ++i) {
            openAndCloseEditor(tabs, factory, paths.at(i % paths.size()));
            host.calls.clear();
        }
        return residentKiB();
    };
    const double before = open(warmUp);
    const double growth = open(openings) - before;
    const bool holds = before > 0 && growth < boundInKiB;
    std::printf("%d openings of the editor: %.0f KiB before, %.0f KiB more after, bound %.0f KiB  %s\n", openings,
        before, growth, boundInKiB, holds ? "ok" : "EXCEEDED");
    return holds ? 0 : 1;
}
