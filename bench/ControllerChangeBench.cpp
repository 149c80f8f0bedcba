#include "bench/Measure.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "plugin/AxisNodes.h"
#include "plugin/MotionControlAxisPlugin.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>

#include <ctime>

// What the plug-in's part of a change of controller costs for each record, at 255 records beside 16, with no editor
// open.

namespace {

constexpr double bound = 1.5;
constexpr int rounds = 61;

QString modelOf(int round)
{
    return round % 2 ? QStringLiteral("NV3T_70Q12E") : QStringLiteral("KM1_M16");
}

/// The description of a model with room for as many axes as a description can name.
QJsonObject roomyController(int round)
{
    QJsonObject description = TestProject::description(modelOf(round));
    QJsonObject limits = description.value(QStringLiteral("limits")).toObject();
    limits.insert(QStringLiteral("MaxAxis"), 255);
    description.insert(QStringLiteral("limits"), limits);
    return description;
}

/// Microseconds of the processor that this thread has had. The two changes differ so much in length that on a busy
/// machine only the longer one would be interrupted.
double threadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// A project in the tree of a host, with axes that both controllers can keep.
class Line {
public:
    explicit Line(int count) : m_project(modelOf(0), QStringLiteral("Line%1").arg(count)), m_count(count)
    {
        m_host.view.addProject(m_project.name());
        m_plugin.initialize();
        Solution::ProjectInfo info;
        info.kind = QStringLiteral("NormalProject");
        info.current = true;
        const QStringList types{ QStringLiteral("Axis_Pulse"), QStringLiteral("Axis_Encoder"),
            QStringLiteral("Axis_EtherCAT") };
        for (int axis = 0; axis < count; ++axis)
            m_project.addAxis(QStringLiteral("axis%1").arg(axis), types.at(axis % types.size()));
        emit m_host.view.projectOpened(m_project.nodePath(), info, Solution::LevelConfiguration);
    }

    /// Microseconds a record.
    double change()
    {
        m_project.changeController(roomyController(++m_round));
        m_host.calls.clear();
        const double start = threadTime();
        emit m_host.view.displayEvent(m_project.nodePath(), Solution::DataControllerChanged, QVariant());
        const double all = threadTime() - start;
        if (m_host.view.childNodes(m_project.unitPath()).size() != m_count)
            qFatal("axes were lost");
        return all / m_count;
    }

private:
    TestProject m_project;
    TestHost m_host;
    MotionControlAxisPlugin m_plugin;
    int m_count;
    int m_round = 0;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    std::vector<double> few;
    std::vector<double> many;
    {
        Line line(16);
        for (int round = 0; round < rounds; ++round)
            few.push_back(line.change());
    }
    {
        Line line(255);
        for (int round = 0; round < rounds; ++round)
            many.push_back(line.change());
    }
    const Measure::Pair pair{ Measure::median(few), Measure::median(many) };
    return Measure::report("controller change, a record of 255 beside 16", pair, bound) ? 0 : 1;
}
