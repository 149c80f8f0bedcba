#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/ProjectModel.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/Workbench.h"
#include "workbench/monitor/CurvePlot.h"
#include "workbench/monitor/VariableMonitor.h"
#include "workbench/tour/TourDriver.h"
#include "workbench/tour/TourParts.h"
#include "workbench/tour/TourTools.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSet>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTreeView>

#include <utility>

using namespace TourTools;

namespace {

const char* const triedAxis = "Pusher";

enum class Place { Set = 1, Actual = 2 };

/// A number of the table that shows what the controller reports of the axis.
double shownPosition(TourDriver& driver, Place place)
{
    const auto* table = driver.inEditor<QTableView>("varTableView");
    return table ? table->model()->index(0, int(place)).data().toDouble() : 0;
}

QString shownState(TourDriver& driver)
{
    const auto* field = driver.inEditor<QLineEdit>("statueLineEdit");
    return field ? field->text() : QString();
}

bool seeState(TourDriver& driver, AxisModel::AxisState state)
{
    const ProjectModel* project = driver.workbench().workspace().project();
    const QString name = project ? project->axisModel()->getAxisStateMap().value(state) : QString();
    return driver.seeSoon([&] { return !name.isEmpty() && shownState(driver) == name; },
        QStringLiteral("the page shows the state %1").arg(name));
}

void clickOnPage(TourDriver& driver, const char* name)
{
    driver.click(driver.inWidget<QPushButton>(driver.page(), name));
}

/// Types into a field of the page and leaves it, which commits the number.
void setField(TourDriver& driver, const char* name, double value)
{
    auto* field = driver.inWidget<QLineEdit>(driver.page(), name);
    driver.fill(field, QString::number(value));
    driver.key(Qt::Key_Tab);
    driver.see(
        field && field->text().toDouble() == value, QStringLiteral("%1 takes %2").arg(text(name)).arg(value), true);
}

void chooseMotion(TourDriver& driver, const char* motion)
{
    auto* types = driver.inWidget<QComboBox>(driver.page(), "motionTypeComboBox");
    driver.choose(types, types ? types->findText(text(motion)) : 0);
}

/// The lowest and the highest actual position that the monitor has recorded of the axis.
std::pair<double, double> recordedRange(TourDriver& driver)
{
    const int axisNo = stored(driver, text(triedAxis), "AxisNo").toInt();
    const CurveRing* curves = driver.workbench().monitor().curves().curves(axisNo);
    std::pair<double, double> range{ 0, 0 };
    for (int i = 0; curves && i < curves->size(); ++i) {
        const CurvePoint& point = curves->at(i);
        if (point.isGap())
            continue;
        range.first = qMin(range.first, point.values[ActualPosition]);
        range.second = qMax(range.second, point.values[ActualPosition]);
    }
    return range;
}

/// Sees the state StandStill, and waits until the curves have been level for a while, so that they are in the picture.
void seeRest(TourDriver& driver)
{
    constexpr int readings = 30;
    seeState(driver, AxisModel::StandStill);
    const int axisNo = stored(driver, text(triedAxis), "AxisNo").toInt();
    const auto isLevel = [&] {
        const CurveRing* curves = driver.workbench().monitor().curves().curves(axisNo);
        if (!curves || curves->size() < readings)
            return false;
        for (int i = curves->size() - readings; i < curves->size(); ++i) {
            if (!(qAbs(curves->at(i).values[ActualVelocity]) < 0.1))
                return false;
        }
        return true;
    };
    driver.seeSoon(isLevel, QStringLiteral("the curves are level"));
}

/// Number of pixels of the plot in the colour of the axis's lines.
int inkOf(CurvePlot& plot, int axisNo)
{
    const QImage image = plot.canvas()->grab().toImage();
    QSet<QRgb> inks;
    for (const auto& item : plot.items()) {
        if (item->axisNo() == axisNo)
            inks.insert(item->pen().color().rgb());
    }
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += inks.contains(image.pixel(x, y)) ? 1 : 0;
    }
    return count;
}

/// The lines of the axis that is tried out are there to be seen, in each of the plots.
void seeLines(TourDriver& driver)
{
    const int axisNo = stored(driver, text(triedAxis), "AxisNo").toInt();
    const QList<CurvePlot*> plots = driver.window()->findChildren<CurvePlot*>();
    driver.see(plots.size() == 2, QStringLiteral("there are two plots"));
    for (CurvePlot* plot : plots) {
        driver.seeSoon([&] { return inkOf(*plot, axisNo) > plot->width() / 4; },
            QStringLiteral("the lines of the axis are drawn"));
    }
}

void showPanel(TourDriver& driver, const char* name)
{
    QDockWidget* dock = driver.workbench().window().toolWindows().panel(text(name));
    if (!driver.see(dock != nullptr, QStringLiteral("there is a panel %1").arg(text(name)), true))
        return;
    QTabBar* tabs = driver.panelTabs();
    int tab = -1;
    for (int i = 0; tabs && i < tabs->count(); ++i) {
        if (tabs->tabText(i) == dock->windowTitle())
            tab = i;
    }
    if (driver.see(tab >= 0, QStringLiteral("the panel has a tab"), true))
        driver.clickTab(tabs, tab);
    driver.see(!dock->widget()->visibleRegion().isEmpty(),
        QStringLiteral("the panel \"%1\" comes to the front").arg(dock->windowTitle()));
}

} // namespace

void TourParts::prepareToTryOut(TourDriver& driver)
{
    while (!driver.failed() && driver.editor()) {
        const QWidget* editor = driver.editor();
        driver.key(Qt::Key_W, Qt::ControlModifier);
        driver.see(driver.editor() != editor, QStringLiteral("Ctrl+W closes an editor"), true);
    }
    openAxis(driver, text(triedAxis));
    goToPage(driver, HomingPage);
    auto* modes = driver.inWidget<QComboBox>(driver.page(), "comboBox_3");
    driver.choose(modes, modes ? modes->findText(QStringLiteral("Homing_17")) : 0);
    goToPage(driver, ModePage);
    auto* goesOn = driver.inWidget<QCheckBox>(driver.page(), "checkBox_2");
    driver.click(goesOn, QPoint(8, goesOn ? goesOn->height() / 2 : 0));
    driver.see(stored(driver, text(triedAxis), "ErrorStopEnable") == QLatin1String("FALSE"),
        QStringLiteral("a limit is to be an error of the axis"));
    driver.key(Qt::Key_S, Qt::ControlModifier);
    driver.see(driver.currentTitle() == text(triedAxis), QStringLiteral("the axis is saved"));
}

void TourParts::connectToTheController(TourDriver& driver)
{
    driver.menu(QStringLiteral("onlineMenu"), QStringLiteral("online.connect"));
    OnlineSession& session = driver.workbench().online().session();
    driver.seeSoon([&] { return session.state() == OnlineSession::Online; },
        QStringLiteral("the built-in controller has been started and is connected"));
    const auto* label = driver.window()->findChild<QLabel*>(QStringLiteral("connectionLabel"));
    driver.see(label && label->text().contains(session.target()),
        QStringLiteral("the status bar says where the controller is"));
    driver.see(outputLines(driver).last().contains(QStringLiteral("has taken the axes over")),
        QStringLiteral("the output panel says that the controller has taken the axes over"));
    showPanel(driver, "output");
    driver.picture(QStringLiteral("connected"));
    driver.menu(QStringLiteral("onlineMenu"), QStringLiteral("online.takeOver"));
    driver.seeSoon([&] { return outputLines(driver).last().contains(QStringLiteral("has the axes of the project")); },
        QStringLiteral("asked once more, it says that nothing differs"));
}

void TourParts::enterDebugMode(TourDriver& driver)
{
    openAxis(driver, text(triedAxis));
    goToPage(driver, OnlinePage);
    seeState(driver, AxisModel::Disabled);
    clickOnPage(driver, "enterDebugButton");
    auto* commands = driver.inWidget<QTabWidget>(driver.page(), "basicTabWidget");
    driver.seeSoon([&] { return commands && commands->isEnabled(); }, QStringLiteral("the commands can be used"));
    driver.picture(QStringLiteral("debug-mode"));
    showPanel(driver, "curves");
    pullPanels(driver, -120);
    clickOnPage(driver, "enablePushButton");
    seeState(driver, AxisModel::StandStill);
    driver.picture(QStringLiteral("enabled"));
}

void TourParts::jog(TourDriver& driver)
{
    setField(driver, "posJogSpeedLineEdit", 40);
    setField(driver, "posJogAccLineEdit", 200);
    auto* button = driver.inWidget<QPushButton>(driver.page(), "posJogPushButton");
    driver.press(button);
    seeState(driver, AxisModel::ContinuousMotion);
    driver.seeSoon(
        [&] { return shownPosition(driver, Place::Actual) > 20; }, QStringLiteral("the axis moves while JOG+ is held"));
    driver.picture(QStringLiteral("jog"));
    driver.release(button);
    seeRest(driver);
    const double stop = shownPosition(driver, Place::Actual);
    driver.see(stop > 20, QStringLiteral("it stands at %1 when the button is let go").arg(stop));
}

void TourParts::moveAbsolute(TourDriver& driver)
{
    chooseMotion(driver, "Absolute positioning");
    setField(driver, "positionLineEdit", 120);
    setField(driver, "velocityLineEdit", 80);
    setField(driver, "accLineEdit", 400);
    setField(driver, "decLineEdit", 400);
    clickOnPage(driver, "motionPushButton");
    seeState(driver, AxisModel::DiscreteMotion);
    seeRest(driver);
    driver.seeSoon(
        [&] { return shownPosition(driver, Place::Set) == 120 && shownPosition(driver, Place::Actual) == 120; },
        QStringLiteral("set and actual position are 120.00"));
    driver.see(recordedRange(driver).second > 119, QStringLiteral("the curves reach up to there"));
    seeLines(driver);
    driver.picture(QStringLiteral("absolute-move"));
}

void TourParts::home(TourDriver& driver)
{
    setField(driver, "originOffsetLineEdit", 10);
    clickOnPage(driver, "homePushButton");
    seeState(driver, AxisModel::Homing);
    driver.picture(QStringLiteral("homing"));
    seeRest(driver);
    const double place = shownPosition(driver, Place::Actual);
    driver.see(
        qAbs(place - 10) < 0.5, QStringLiteral("home found: the axis stands at %1, by the home offset").arg(place));
    seeLines(driver);
    driver.picture(QStringLiteral("homed"));
}

void TourParts::stopAMotion(TourDriver& driver)
{
    chooseMotion(driver, "Continuous motion");
    setField(driver, "velocityLineEdit", 40);
    clickOnPage(driver, "motionPushButton");
    seeState(driver, AxisModel::ContinuousMotion);
    driver.seeSoon(
        [&] { return shownPosition(driver, Place::Actual) > 40; }, QStringLiteral("the axis goes on and on"));
    clickOnPage(driver, "stopPushButton");
    seeRest(driver);
    driver.picture(QStringLiteral("stopped"));
    clickOnPage(driver, "motionPushButton");
    seeState(driver, AxisModel::ContinuousMotion);
    driver.key(Qt::Key_F9);
    driver.seeSoon([&] { return driver.workbench().online().stop().isHeld(); },
        QStringLiteral("F9 stops every axis in debug mode, and holds"));
    seeRest(driver);
    driver.picture(QStringLiteral("stop-held"));
    driver.menu(QStringLiteral("onlineMenu"), QStringLiteral("online.release"));
    driver.seeSoon([&] { return !driver.workbench().online().stop().isHeld(); },
        QStringLiteral("it is released through the menu"));
}

void TourParts::failAndReset(TourDriver& driver)
{
    setField(driver, "velocityLineEdit", -40);
    clickOnPage(driver, "motionPushButton");
    seeState(driver, AxisModel::ErrorStop);
    const auto* error = driver.inWidget<QLineEdit>(driver.page(), "axisErrorLineEdit");
    driver.see(error && error->styleSheet().contains(QLatin1String("255,75,75")) && !error->text().isEmpty(),
        QStringLiteral("the page names the error: %1").arg(error ? error->text() : QString()));
    driver.scrollBack(driver.page());
    driver.picture(QStringLiteral("error"));
    clickOnPage(driver, "resetPushButton");
    seeState(driver, AxisModel::StandStill);
    driver.see(error && error->styleSheet().isEmpty(), QStringLiteral("the error is gone"));
    driver.picture(QStringLiteral("reset"));
}

void TourParts::lookAtTheCommandLog(TourDriver& driver)
{
    showPanel(driver, "commands");
    const auto* log = driver.window()->findChild<QTreeView*>(QStringLiteral("commandLog"));
    driver.see(log && log->model() && log->model()->rowCount() > 10,
        QStringLiteral("the command log holds %1 lines").arg(log && log->model() ? log->model()->rowCount() : 0));
    driver.picture(QStringLiteral("command-log"));
}

void TourParts::lookAtTheCurvesInTheDark(TourDriver& driver)
{
    showPanel(driver, "curves");
    setAppearance(driver, Look::Dark, Tongue::English);
    driver.see(driver.workbench().online().session().state() == OnlineSession::Online,
        QStringLiteral("the program is still on line"));
    seeLines(driver);
    driver.picture(QStringLiteral("curves-dark"));
    setAppearance(driver, Look::Light, Tongue::English);
}

void TourParts::disconnectFromTheController(TourDriver& driver)
{
    clickOnPage(driver, "enablePushButton");
    seeState(driver, AxisModel::Disabled);
    clickOnPage(driver, "enterDebugButton");
    auto* commands = driver.inWidget<QTabWidget>(driver.page(), "basicTabWidget");
    driver.seeSoon([&] { return commands && !commands->isEnabled(); }, QStringLiteral("debug mode is left"));
    driver.menu(QStringLiteral("onlineMenu"), QStringLiteral("online.disconnect"));
    OnlineSession& session = driver.workbench().online().session();
    driver.seeSoon([&] { return session.state() == OnlineSession::Offline && !session.process().isRunning(); },
        QStringLiteral("the program is off line, and the built-in controller has ended"));
    pullPanels(driver, 120);
    driver.picture(QStringLiteral("disconnected"));
}
