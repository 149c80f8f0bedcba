#include "bench/Measure.h"
#include "host/projectmodel/AxisTable.h"
#include "online/OnlineDebugWidget.h"
#include "protocol/AxisRefLayout.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QStandardItemModel>

#include <array>
#include <cstring>

// What a refresh of the online page from a status reply costs beside setting the same cells of models without a view.

namespace {

constexpr double bound = 8.0;
constexpr int rounds = 2000;
constexpr int variableRows = 4;
constexpr int signalCount = 6;

/// The cells of the page's two tables, with texts and images that are made beforehand. Each lamp that is on gets a
/// new icon, as on the page.
class BareCells {
public:
    BareCells()
    {
        m_variables.setColumnCount(3);
        m_variables.setRowCount(variableRows);
        m_signals.setColumnCount(1 + signalCount);
        m_signals.setRowCount(1);
    }

    /// With every lamp on and with none, since both are paid for in turn.
    double refresh() { return set(m_texts[0], true) + set(m_texts[1], false); }

private:
    double set(const QString& text, bool on)
    {
        return Measure::once([&] {
            for (const int column : { 1, 2 }) {
                for (int row = 0; row < variableRows; ++row)
                    m_variables.setData(m_variables.index(row, column), text);
            }
            for (int i = 1; i <= signalCount; ++i)
                m_signals.setData(m_signals.index(0, i), on ? m_on : m_off);
            for (int i = 1; i <= signalCount; ++i)
                m_signals.setData(m_signals.index(0, i), on ? QIcon(m_lamp) : QIcon(), Qt::DecorationRole);
        });
    }

    QStandardItemModel m_variables;
    QStandardItemModel m_signals;
    const std::array<QString, 2> m_texts{ QStringLiteral("123.45"), QStringLiteral("678.90") };
    const QString m_on = QStringLiteral("ON");
    const QString m_off = QStringLiteral("OFF");
    const QPixmap m_lamp{ QStringLiteral(":/images/status_on.png") };
};

/// An axis in debug mode; every value and lamp differs between the two.
QByteArray replyOf(bool moving)
{
    AxisRef status;
    std::memset(&status, 0, sizeof status);
    const double value = moving ? 678.90 : 123.45;
    status.axisState = static_cast<std::uint16_t>(moving ? 4 : 3);
    status.communication = 1;
    status.setPosition = status.actualPosition = value;
    status.setVelocity = status.actualVelocity = value;
    status.setAcceleration = status.actualAcceleration = value;
    status.setTorque = status.actualTorque = value;
    const auto on = static_cast<std::uint8_t>(moving);
    status.positiveHardLimit = status.negativeHardLimit = on;
    status.homeSwitch = on;
    status.positiveSoftLimit = status.negativeSoftLimit = on;
    status.debugMode = 1;
    status.speedRatio = 1;
    return QByteArray(reinterpret_cast<const char*>(&status), sizeof status);
}

template <typename After>
double refresh(OnlineDebugWidget& page, const QByteArray& reply, After after)
{
    const double time = Measure::once([&] {
        page.axisDebugGetAxisRef(reply);
        after();
    });
    QCoreApplication::processEvents();
    return time;
}

template <typename After>
Measure::Pair measure(OnlineDebugWidget& page, BareCells& bare, int count, After after)
{
    const QByteArray moving = replyOf(true);
    const QByteArray standing = replyOf(false);
    return Measure::inTurns(
        count, [&] { return bare.refresh(); },
        [&] { return refresh(page, moving, after) + refresh(page, standing, after); });
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Q_INIT_RESOURCE(axis_resources);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const AxisTable* axis = project.addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
    OnlineDebugWidget page(project.name(), axis->id(), nullptr);
    page.show();
    page.axisDebugGetAxisRef(replyOf(false));
    QCoreApplication::processEvents();
    BareCells bare;
    const auto nothing = [] {};
    bool holds = Measure::report("refresh of the shown page / bare cells", measure(page, bare, rounds, nothing), bound);
    const Measure::Pair painted = measure(page, bare, rounds / 10, [] { QCoreApplication::processEvents(); });
    std::printf(
        "%-44s %.1f us, %.1f times the bare cells\n", "refresh with its drawing", painted.measured, painted.ratio());
    page.hide();
    QCoreApplication::processEvents();
    holds = Measure::report("refresh of the hidden page / bare cells", measure(page, bare, rounds, nothing), bound)
        && holds;
    return holds ? 0 : 1;
}
