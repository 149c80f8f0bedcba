#include "workbench/Workbench.h"
#include "workbench/tour/TourDriver.h"
#include "workbench/tour/TourParts.h"
#include "workbench/tour/TourTools.h"

#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>

using namespace TourTools;

namespace {

/// An axis of the sample, and what the mode page must show of it and what not.
struct Kind {
    const char* axis;
    const char* name;
    std::vector<const char*> shown;
    std::vector<const char*> hidden;
};

const Kind& pulse()
{
    static const Kind kind{ "Pusher", "pulse", { "groupBox_8", "groupBox_12", "groupBox_11" },
        { "groupBox_7", "groupBox_9" } };
    return kind;
}

const Kind& encoder()
{
    static const Kind kind{ "FilmEncoder", "encoder",
        { "groupBox_11", "outputMethodComboBox", "inputSignalComboBox", "groupBox_13" },
        { "groupBox", "groupBox_6", "groupBox_8", "groupBox_12" } };
    return kind;
}

const Kind& etherCat()
{
    static const Kind kind{ "SealingJaw", "ethercat", { "groupBox", "groupBox_7", "groupBox_9" },
        { "groupBox_8", "groupBox_11", "groupBox_12", "groupBox_13" } };
    return kind;
}

/// One picture of a page, or more where it is higher than the window.
void takePage(TourDriver& driver, const QString& name)
{
    driver.picture(name);
    QScrollArea* area = driver.page();
    if (!area)
        return;
    for (int part = 2; driver.scrollOn(area); ++part)
        driver.picture(QStringLiteral("%1-%2").arg(name).arg(part));
    driver.scrollBack(area);
}

void seeUnits(TourDriver& driver, const Kind& kind)
{
    goToPage(driver, UnitPage);
    seeStored(driver, driver.page(), "lineEdit_PulseCountPerCicle", text(kind.axis), "PulseCountPerCircle");
    seeStored(driver, driver.page(), "lineEdit_2", text(kind.axis), "UnUseGearValue");
    const QString folder = look(driver) == Look::Light ? QStringLiteral("default") : QStringLiteral("dark");
    seePicture(driver, driver.page(), "label_18", QStringLiteral(":/images/%1/workbench_1.jpg").arg(folder));
    seePicture(driver, driver.page(), "label_32", QStringLiteral(":/images/%1/workbench_2.jpg").arg(folder));
    takePage(driver, QStringLiteral("%1-unit-%2").arg(text(kind.name), appearanceName(driver)));
}

void seeParts(TourDriver& driver, QWidget* page, const std::vector<const char*>& names, bool shown)
{
    for (const char* name : names) {
        const auto* part = driver.inWidget<QWidget>(page, name);
        driver.see(part && part->isVisible() == shown,
            QStringLiteral("%1 is %2").arg(text(name), shown ? QStringLiteral("shown") : QStringLiteral("hidden")),
            true);
    }
}

void seeModes(TourDriver& driver, const Kind& kind)
{
    goToPage(driver, ModePage);
    QWidget* page = driver.page();
    seeParts(driver, page, kind.shown, true);
    seeParts(driver, page, kind.hidden, false);
    driver.see(!driver.failed(),
        QStringLiteral("the page has the %1 groups of its type, and %2 of other types are hidden")
            .arg(kind.shown.size())
            .arg(kind.hidden.size()));
    takePage(driver, QStringLiteral("%1-mode-%2").arg(text(kind.name), appearanceName(driver)));
}

void lookAt(TourDriver& driver, const Kind& kind)
{
    openAxis(driver, text(kind.axis));
    seeUnits(driver, kind);
    seeModes(driver, kind);
}

void chooseMode(TourDriver& driver, int number)
{
    auto* modes = driver.inWidget<QComboBox>(driver.page(), "comboBox_3");
    const QString word = QStringLiteral("Homing_%1").arg(number);
    const int row = modes ? modes->findText(word) : -1;
    if (!driver.see(row >= 0, QStringLiteral("the mode %1 can be chosen").arg(word), true))
        return;
    driver.choose(modes, row);
    driver.see(
        stored(driver, text(pulse().axis), "HomeMode") == word, QStringLiteral("the record holds %1").arg(word), true);
    const QString theme = look(driver) == Look::Light ? QStringLiteral("default") : QStringLiteral("dark");
    const QString language = tongue(driver) == Tongue::English ? QStringLiteral("en_US") : QStringLiteral("zh_CN");
    seePicture(
        driver, driver.page(), "label_12", QStringLiteral(":/images/%1/Homing_%2/%3.png").arg(theme, language, word));
    takePage(driver, QStringLiteral("homing-%1-%2").arg(number).arg(appearanceName(driver)));
}

} // namespace

void TourParts::lookAtAPulseAxis(TourDriver& driver)
{
    lookAt(driver, pulse());
}

void TourParts::lookAtAnEncoder(TourDriver& driver)
{
    lookAt(driver, encoder());
    driver.see(driver.pageTabs() && driver.pageTabs()->count() == 3,
        QStringLiteral("an encoder has no page for homing and none to be tried out"));
}

void TourParts::lookAtAnEtherCatAxis(TourDriver& driver)
{
    lookAt(driver, etherCat());
}

void TourParts::lookAtThePages(TourDriver& driver)
{
    openAxis(driver, text(pulse().axis));
    for (const int page : { BasicPage, UnitPage, ModePage, HomingPage, OnlinePage }) {
        goToPage(driver, page);
        takePage(driver, QStringLiteral("page-%1-%2").arg(page + 1).arg(appearanceName(driver)));
    }
}

void TourParts::lookAtHoming(TourDriver& driver)
{
    openAxis(driver, text(pulse().axis));
    goToPage(driver, HomingPage);
    for (const int mode : { 17, 23, 30, 35 }) {
        if (!driver.failed())
            chooseMode(driver, mode);
    }
    driver.key(Qt::Key_S, Qt::ControlModifier);
    driver.see(driver.currentTitle() == text(pulse().axis), QStringLiteral("the axis is saved with the last mode"));
}
