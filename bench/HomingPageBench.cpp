#include "bench/Measure.h"
#include "host/projectmodel/AxisTable.h"
#include "pages/OriginReturnSetWidget.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QPixmapCache>

#include <memory>

// What its picture adds to the opening of the homing page: the page built and painted with the picture, which is
// decoded anew or comes from the pixmap cache, beside the same page that finds none.

namespace {

constexpr int rounds = 60;

class Openings {
public:
    Openings()
    {
        m_host.settings.setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
        m_axis = m_project.addAxis(QStringLiteral("Feed"), QStringLiteral("Axis_Pulse"));
        m_axis->setProperty(QStringLiteral("HomeMode"), QStringLiteral("Homing_23"));
    }

    double withoutPicture()
    {
        m_host.withhold(Solution::ServiceKey::settings());
        const double time = open();
        m_host.restore(Solution::ServiceKey::settings());
        return time;
    }

    double decoded()
    {
        QPixmapCache::clear();
        return open();
    }

    double cached() { return open(); }

private:
    double open()
    {
        std::unique_ptr<OriginReturnSetWidget> page;
        const double time = Measure::once([&] {
            page = std::make_unique<OriginReturnSetWidget>(m_project.name(), m_axis->id(), nullptr);
            page->resize(1100, 750);
            page->show();
            QApplication::processEvents();
        });
        page.reset();
        QApplication::processEvents();
        m_host.calls.clear();
        return time;
    }

    TestHost m_host;
    TestProject m_project{ QStringLiteral("NV3T_70Q12E") };
    AxisTable* m_axis = nullptr;
};

void print(const char* what, const Measure::Pair& pair)
{
    std::printf("%-44s without %8.1f us  with %8.1f us  ratio %5.2f\n", what, pair.floor, pair.measured, pair.ratio());
}

/// Without a settings service the page says so of its picture each time.
void sayNothing(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Q_INIT_RESOURCE(axis_resources);
    const QApplication application(argc, argv);
    qInstallMessageHandler(sayNothing);
    Openings openings;
    const auto floor = [&] { return openings.withoutPicture(); };
    print("homing page, picture decoded", Measure::inTurns(rounds, floor, [&] { return openings.decoded(); }));
    print("homing page, picture from the cache", Measure::inTurns(rounds, floor, [&] { return openings.cached(); }));
    return 0;
}
