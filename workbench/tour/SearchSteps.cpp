#include "workbench/ComparisonPanel.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/Workbench.h"
#include "workbench/tour/Tour.h"
#include "workbench/tour/TourDriver.h"
#include "workbench/tour/TourParts.h"
#include "workbench/tour/TourTools.h"

#include <QApplication>
#include <QDockWidget>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTreeView>
#include <QTreeWidget>

using namespace TourTools;

namespace {

const char* const changedAxis = "Pusher";

QDockWidget* panel(TourDriver& driver, const char* name)
{
    QDockWidget* dock = driver.workbench().window().toolWindows().panel(text(name));
    driver.see(dock && dock->isVisible(),
        QStringLiteral("the panel \"%1\" is there").arg(dock ? dock->windowTitle() : text(name)));
    return dock;
}

bool seeFocus(TourDriver& driver, const char* field)
{
    return driver.seeSoon(
        [&] { return QApplication::focusWidget() && QApplication::focusWidget()->objectName() == text(field); },
        QStringLiteral("the cursor stands in the field %1").arg(text(field)));
}

/// Sees the one result and goes to it by a double click.
void jump(TourDriver& driver, QDockWidget* dock, const QString& axis, const char* field, const QString& pin)
{
    auto* results = driver.inWidget<QTreeWidget>(dock, "results");
    if (!driver.see(results && results->topLevelItemCount() == 1, QStringLiteral("one place is found")))
        return;
    QTreeWidgetItem* found = results->topLevelItem(0);
    driver.see(found->text(0) == axis && found->text(2) == pin,
        QStringLiteral("it is \"%1\" of %2").arg(found->text(2), found->text(0)));
    driver.doubleClickItem(results, results->model()->index(0, 0));
    driver.see(driver.currentTitle() == axis, QStringLiteral("a double click on it opens %1").arg(axis));
    seeFocus(driver, field);
}

/// Picks a file of the folder that a window for files shows.
void pickFile(TourDriver& driver, QWidget* dialog, const QString& name)
{
    auto* list = driver.inWidget<QTreeView>(dialog, "treeView");
    QModelIndex found;
    const auto isListed = [&] {
        const QModelIndex folder = list->rootIndex();
        for (int row = 0; row < list->model()->rowCount(folder); ++row) {
            if (list->model()->index(row, 0, folder).data().toString() == name)
                found = list->model()->index(row, 0, folder);
        }
        return found.isValid();
    };
    if (!list || !driver.seeSoon(isListed, QStringLiteral("the file %1 can be picked").arg(name)))
        return;
    driver.clickItem(list, found);
    driver.picture(QStringLiteral("pick-a-project-%1").arg(appearanceName(driver)));
    driver.key(Qt::Key_Return);
}

QModelIndex rowOf(const QTreeView* tree, const char* axis)
{
    const QAbstractItemModel* model = tree->model();
    const QModelIndex project = model->index(0, 0);
    for (int row = 0; row < model->rowCount(project); ++row) {
        if (model->index(row, 0, project).data().toString() == text(axis))
            return model->index(row, 0, project);
    }
    return {};
}

/// Sees that the mode of the axis is among the keys that differ, with both values.
void seeDifference(TourDriver& driver, QDockWidget* dock)
{
    auto* values = driver.inWidget<QTableWidget>(dock, "values");
    int found = -1;
    for (int row = 0; values && row < values->rowCount(); ++row) {
        if (values->item(row, 0)->text().endsWith(QLatin1String("HomeMode")))
            found = row;
    }
    if (!driver.see(found >= 0, QStringLiteral("the keys that differ are listed, the home mode among them")))
        return;
    const QString here = values->item(found, 1)->text();
    const QString there = values->item(found, 2)->text();
    driver.see(here == stored(driver, text(changedAxis), "HomeMode") && here != there,
        QStringLiteral("it is %1 in this project and %2 in the other one").arg(here, there));
}

} // namespace

void TourParts::findAndJump(TourDriver& driver)
{
    openAxis(driver, QStringLiteral("FilmEncoder"));
    driver.key(Qt::Key_F, Qt::ControlModifier);
    QDockWidget* dock = panel(driver, "find");
    auto* words = driver.inWidget<QLineEdit>(dock, "text");
    driver.see(words && words->hasFocus(), QStringLiteral("Ctrl+F asks what to find"));
    driver.key(Qt::Key_A, Qt::ControlModifier);
    driver.type(QStringLiteral("limits.Negative"));
    driver.key(Qt::Key_Return);
    driver.picture(QStringLiteral("found-%1").arg(appearanceName(driver)));
    jump(driver, dock, text(changedAxis), "lineEditNeg", stored(driver, text(changedAxis), "NegLimitPin"));
    driver.picture(QStringLiteral("jumped-%1").arg(appearanceName(driver)));
}

void TourParts::findReferences(TourDriver& driver)
{
    const QString variable = QStringLiteral("originSensor");
    driver.doubleClickNode({ projectName(), QStringLiteral("Program sources"), QStringLiteral("InfeedControl") });
    auto* source = qobject_cast<QPlainTextEdit*>(driver.editor());
    if (!driver.see(source != nullptr, QStringLiteral("a source opens to be read")))
        return;
    QTextCursor word = source->document()->find(variable);
    word.setPosition(word.selectionStart() + 1);
    driver.click(source->viewport(), source->cursorRect(word).center());
    driver.key(Qt::Key_F12, Qt::ShiftModifier);
    QDockWidget* dock = panel(driver, "find");
    const auto* asked = driver.inWidget<QLineEdit>(dock, "variable");
    driver.see(asked && asked->text() == QStringLiteral("InfeedControl.") + variable,
        QStringLiteral("Shift+F12 asks for the uses of the variable under the cursor"));
    driver.picture(QStringLiteral("references"));
    const QString axis = QStringLiteral("InfeedBelt");
    jump(driver, dock, axis, "lineEditOrg", stored(driver, axis, "OrgSignalPin"));
}

void TourParts::compare(TourDriver& driver)
{
    openAxis(driver, text(changedAxis));
    driver.whenDialog([&driver](QWidget* dialog) { pickFile(driver, dialog, deliveredProject()); });
    driver.menu(QStringLiteral("projectMenu"), QStringLiteral("project.compare"));
    QDockWidget* dock = panel(driver, "comparison");
    auto* here = driver.inWidget<QTreeView>(dock, "here");
    if (!driver.see(here && driver.workbench().comparison().isOn(), QStringLiteral("a comparison is on")))
        return;
    const QModelIndex row = rowOf(here, changedAxis);
    driver.see(row.isValid()
            && row.siblingAtColumn(1).data().toString() == ComparisonPanel::stateText(ComparedAxis::Different),
        QStringLiteral("%1 is marked as different").arg(text(changedAxis)));
    driver.clickItem(here, row);
    seeDifference(driver, dock);
    const auto* mode = driver.inEditor<QWidget>("comboBox_3");
    driver.see(mode && !mode->isEnabled(), QStringLiteral("meanwhile the axis can only be read"));
    driver.picture(QStringLiteral("compared-%1").arg(appearanceName(driver)));
    pullPanels(driver, -200);
    driver.picture(QStringLiteral("compared-high-%1").arg(appearanceName(driver)));
    pullPanels(driver, 200);
    driver.click(driver.inWidget<QPushButton>(dock, "stop"));
    driver.see(!driver.workbench().comparison().isOn() && mode && mode->isEnabled(),
        QStringLiteral("after the comparison it can be changed again"));
}
