#include "host/projectmodel/ProjectModel.h"
#include "workbench/MessageBar.h"
#include "workbench/RefusalBubble.h"
#include "workbench/StartPage.h"
#include "workbench/Workbench.h"
#include "workbench/tour/TourDriver.h"
#include "workbench/tour/TourParts.h"
#include "workbench/tour/TourTools.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QTabBar>

using namespace TourTools;

namespace {

const char* const axisName = "TourAxis";
const char* const otherName = "TourConveyor";
const char* const smallController = "NV3T_50Q4";

} // namespace

void TourParts::seeTheSample(TourDriver& driver)
{
    const QStringList names = driver.childTexts(axes());
    driver.see(names.size() >= 6, QStringLiteral("the tree shows the axes %1").arg(names.join(QLatin1String(", "))));
    driver.see(!driver.childTexts({ projectName(), QStringLiteral("Program sources") }).isEmpty(),
        QStringLiteral("the tree shows the program's sources"));
    driver.see(outputLines(driver).join(QLatin1Char('\n')).contains(QStringLiteral("is in service")),
        QStringLiteral("the output panel names the plug-in that came into service"));
    driver.picture(QStringLiteral("sample-project"));
}

void TourParts::addAnAxis(TourDriver& driver)
{
    driver.whenMenu([&driver](QMenu* menu) {
        driver.see(
            menu->actions().size() == 3, QStringLiteral("the context menu of \"Axis Config\" has three entries"));
        driver.picture(QStringLiteral("context-menu"));
        driver.clickEntry(menu, 0);
    });
    driver.whenDialog([&driver](QWidget* dialog) {
        auto* name = dialog->findChild<QLineEdit*>();
        if (!driver.see(name != nullptr, QStringLiteral("a window asks for the name of the new axis")))
            return;
        driver.fill(name, text(axisName));
        driver.picture(QStringLiteral("name-of-the-axis"));
        driver.key(Qt::Key_Return);
    });
    driver.clickNode(axes(), Qt::RightButton);
    driver.seeSoon([&driver] { return driver.childTexts(axes()).contains(text(axisName)); },
        QStringLiteral("the new axis stands in the tree"));
    driver.see(driver.currentTitle() == text(axisName), QStringLiteral("its editor is open and in front"));
    driver.picture(QStringLiteral("new-axis"));
}

void TourParts::setTypeAndDevice(TourDriver& driver)
{
    auto* type = driver.inEditor<QComboBox>("comboBoxAxisType");
    const int tabsBefore = driver.pageTabs() ? driver.pageTabs()->count() : 0;
    driver.choose(type, type ? type->findText(QStringLiteral("Pulse"), Qt::MatchContains) : 0);
    driver.see(driver.pageTabs() && driver.pageTabs()->count() >= tabsBefore,
        QStringLiteral("the editor shows the pages of a pulse axis"));
    driver.see(driver.currentTitle().startsWith(text(axisName)) && driver.currentTitle() != text(axisName),
        QStringLiteral("the tab bears the mark of unsaved changes"));
    auto* device = driver.inEditor<QComboBox>("comboBoxOutputDev");
    driver.see(device && device->count() > 1, QStringLiteral("there are output devices to choose from"));
    driver.choose(device, 1);
    driver.picture(QStringLiteral("type-and-device"));
}

void TourParts::save(TourDriver& driver)
{
    driver.key(Qt::Key_S, Qt::ControlModifier);
    driver.see(driver.currentTitle() == text(axisName), QStringLiteral("the mark of unsaved changes is gone"));
    driver.key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    driver.see(!driver.window()->isWindowModified(), QStringLiteral("the project is saved"));
    driver.picture(QStringLiteral("saved"));
}

void TourParts::refuseANumber(TourDriver& driver)
{
    driver.clickTab(driver.pageTabs(), 1);
    auto* pulses = driver.inEditor<QLineEdit>("lineEdit_PulseCountPerCicle");
    if (!pulses)
        return;
    const QString stored = pulses->text();
    driver.fill(pulses, QStringLiteral("99999999999"));
    driver.key(Qt::Key_Tab);
    auto* bubble = driver.window()->findChild<RefusalBubble*>();
    driver.see(
        bubble && bubble->isVisible(), QStringLiteral("a note beside the field says why the number was not taken"));
    driver.see(pulses->text() == stored, QStringLiteral("the field shows the stored number %1 again").arg(stored));
    driver.see(outputLines(driver).last().contains(QStringLiteral("99999999999")),
        QStringLiteral("the output panel says so too"));
    driver.picture(QStringLiteral("refused-number"));
}

void TourParts::undoAndRedo(TourDriver& driver)
{
    driver.clickNode(axes());
    driver.key(Qt::Key_Z, Qt::ControlModifier);
    driver.see(
        !driver.childTexts(axes()).contains(text(axisName)), QStringLiteral("undo takes the axis out of the tree"));
    driver.picture(QStringLiteral("undone"));
    driver.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    driver.see(driver.childTexts(axes()).contains(text(axisName)), QStringLiteral("redo brings it back"));
    driver.picture(QStringLiteral("redone"));
}

void TourParts::rename(TourDriver& driver)
{
    driver.whenDialog([&driver](QWidget* dialog) {
        driver.fill(dialog->findChild<QLineEdit*>(), text(otherName));
        driver.picture(QStringLiteral("rename"));
        driver.key(Qt::Key_Return);
    });
    driver.clickNode(axis(axisName));
    driver.key(Qt::Key_F2);
    driver.see(driver.childTexts(axes()).contains(text(otherName)), QStringLiteral("F2 renames the axis"));
}

void TourParts::deleteAndUndo(TourDriver& driver)
{
    driver.whenDialog([&driver](QWidget* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        if (!driver.see(box != nullptr, QStringLiteral("a question comes before an axis is deleted")))
            return;
        driver.picture(QStringLiteral("delete"));
        driver.click(box->buttons().value(0));
    });
    driver.clickNode(axis(otherName));
    driver.key(Qt::Key_Delete);
    driver.see(!driver.childTexts(axes()).contains(text(otherName)), QStringLiteral("Del deletes the axis"));
    driver.clickNode(axes());
    driver.key(Qt::Key_Z, Qt::ControlModifier);
    driver.see(driver.childTexts(axes()).contains(text(otherName)), QStringLiteral("undo brings it back"));
}

void TourParts::readASource(TourDriver& driver)
{
    driver.doubleClickNode({ projectName(), QStringLiteral("Program sources"), QStringLiteral("Main") });
    driver.see(driver.currentTitle() == QLatin1String("Main"), QStringLiteral("a source opens to be read"));
    driver.picture(QStringLiteral("source"));
}

void TourParts::changeController(TourDriver& driver)
{
    driver.whenDialog([&driver](QWidget* dialog) {
        auto* models = driver.inWidget<QListWidget>(dialog, "models");
        const QList<QListWidgetItem*> found
            = models ? models->findItems(text(smallController), Qt::MatchExactly) : QList<QListWidgetItem*>();
        if (!driver.see(!found.isEmpty(), QStringLiteral("the controllers can be chosen")))
            return;
        models->scrollToItem(found.first());
        driver.click(models->viewport(), models->visualItemRect(found.first()).center());
        driver.picture(QStringLiteral("change-controller"));
        clickButton(driver, dialog, QDialogButtonBox::Ok);
    });
    const int before = driver.childTexts(axes()).size();
    driver.menu(QStringLiteral("projectMenu"), QStringLiteral("project.controller"));
    auto* label = driver.window()->findChild<QLabel*>(QStringLiteral("controllerLabel"));
    driver.see(label && label->text().contains(text(smallController)),
        QStringLiteral("the status bar shows the new controller"));
    driver.see(driver.childTexts(axes()).size() < before,
        QStringLiteral("axes that cannot exist on it are gone: %1 of %2 are left")
            .arg(driver.childTexts(axes()).size())
            .arg(before));
    driver.see(
        outputLines(driver).last().startsWith(QLatin1String("Removed")), QStringLiteral("the output panel names them"));
    driver.picture(QStringLiteral("controller-changed"));
}

void TourParts::closeAndOpenAgain(TourDriver& driver)
{
    const QStringList before = driver.childTexts(axes());
    driver.menu(QStringLiteral("fileMenu"), QStringLiteral("file.saveAll"));
    driver.menu(QStringLiteral("fileMenu"), QStringLiteral("file.closeProject"));
    driver.see(driver.childTexts({ projectName() }).isEmpty(), QStringLiteral("the project is closed"));
    driver.picture(QStringLiteral("start-page"));
    auto* recent = driver.inWidget<QListWidget>(&driver.workbench().window().startPage(), "startRecent");
    if (driver.see(recent && recent->count() > 0, QStringLiteral("the start page lists the project")))
        driver.doubleClick(recent->viewport(), recent->visualItemRect(recent->item(0)).center());
    driver.see(!before.isEmpty() && driver.childTexts(axes()) == before,
        QStringLiteral("it opens again with the same axes: %1").arg(before.join(QLatin1String(", "))));
}

void TourParts::startAgain(TourDriver& driver)
{
    const QStringList before = driver.childTexts(axes());
    driver.doubleClickNode(axis("Pusher"));
    driver.see(driver.currentTitle() == QLatin1String("Pusher"), QStringLiteral("a double click opens an axis"));
    driver.quit();
    driver.start(QString());
    driver.see(driver.childTexts(axes()) == before, QStringLiteral("after a restart the project is open again"));
    driver.see(driver.currentTitle() == QLatin1String("Pusher"), QStringLiteral("with the editor that was open"));
    driver.picture(QStringLiteral("restarted"));
}

void TourParts::lookAtThePlugins(TourDriver& driver)
{
    driver.whenDialog([&driver](QWidget* dialog) {
        driver.picture(QStringLiteral("plug-ins"));
        clickButton(driver, dialog, QDialogButtonBox::Cancel);
    });
    driver.menu(QStringLiteral("toolsMenu"), QStringLiteral("tools.plugins"));
}

void TourParts::leave(TourDriver& driver)
{
    driver.quit();
}
