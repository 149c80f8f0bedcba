#include "workbench/tour/TourTools.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "workbench/OutputPanel.h"
#include "workbench/Theme.h"
#include "workbench/Workbench.h"
#include "workbench/tour/TourDriver.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

namespace {

AxisTable* record(TourDriver& driver, const QString& name)
{
    const ProjectModel* project = driver.workbench().workspace().project();
    std::vector<AxisTable*> records;
    if (project)
        project->axisModel()->allAxisTables(records);
    for (AxisTable* each : records) {
        if (each->name() == name)
            return each;
    }
    driver.see(false, QStringLiteral("the project has an axis %1").arg(name));
    return nullptr;
}

/// The texts of a node and of what it stands under, from the top.
QStringList textsOf(QModelIndex index)
{
    QStringList texts;
    for (; index.isValid(); index = index.parent())
        texts.prepend(index.data().toString());
    return texts;
}

/// Place of the border above the panels.
QPoint borderOf(TourDriver& driver)
{
    const QTabBar* bar = driver.panelTabs();
    return bar ? QPoint(bar->x() + bar->width() / 2, bar->y() - 1) : QPoint();
}

} // namespace

namespace TourTools {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

QString projectName()
{
    return QStringLiteral("packaging-line");
}

QStringList axes()
{
    return { projectName(), QStringLiteral("Configuration"), QStringLiteral("Axis Config") };
}

QStringList axis(const char* name)
{
    return axes() + QStringList(text(name));
}

void openAxis(TourDriver& driver, const QString& name)
{
    const AxisTable* axis = record(driver, name);
    if (!axis)
        return;
    ProjectTree& tree = driver.workbench().tree();
    const QString file = tree.fileNameOf(QStringLiteral("AxisView"), axis->id());
    driver.doubleClickNode(textsOf(tree.index(tree.nodePathOfFile(file, true))));
    driver.see(driver.currentTitle() == name, QStringLiteral("a double click opens the axis %1").arg(name));
}

QString stored(TourDriver& driver, const QString& axisName, const char* key)
{
    const AxisTable* axis = record(driver, axisName);
    return axis ? axis->property(text(key), QString()) : QString();
}

QStringList outputLines(TourDriver& driver)
{
    return driver.workbench().window().output().lines();
}

void clickButton(TourDriver& driver, QWidget* dialog, QDialogButtonBox::StandardButton button)
{
    auto* box = dialog->findChild<QDialogButtonBox*>();
    if (driver.see(box && box->button(button), QStringLiteral("the window has the button that is wanted"), true))
        driver.click(box->button(button));
}

Look look(TourDriver& driver)
{
    return Theme::isLight(driver.workbench().theme()) ? Look::Light : Look::Dark;
}

Tongue tongue(TourDriver& driver)
{
    return driver.workbench().language() == QLatin1String("zh_CN") ? Tongue::Chinese : Tongue::English;
}

void setAppearance(TourDriver& driver, Look look, Tongue tongue)
{
    driver.whenDialog([&driver, look, tongue](QWidget* dialog) {
        driver.choose(driver.inWidget<QComboBox>(dialog, "theme"), static_cast<int>(look));
        driver.choose(driver.inWidget<QComboBox>(dialog, "language"), static_cast<int>(tongue));
        driver.picture(QStringLiteral("options"));
        clickButton(driver, dialog, QDialogButtonBox::Ok);
    });
    driver.menu(QStringLiteral("toolsMenu"), QStringLiteral("tools.options"));
    driver.see(driver.window()->palette().color(QPalette::Window)
            == Theme::palette(look == Look::Light).color(QPalette::Window),
        look == Look::Light ? QStringLiteral("the window is light") : QStringLiteral("the window is dark"));
    const QString word = tongue == Tongue::English ? QStringLiteral("Save") : QStringLiteral("保存");
    driver.see(driver.workbench().action(QStringLiteral("file.save"))->text().contains(word),
        QStringLiteral("the menus speak %1")
            .arg(tongue == Tongue::English ? QStringLiteral("English") : QStringLiteral("Chinese")));
}

void goToPage(TourDriver& driver, int page)
{
    QTabBar* tabs = driver.pageTabs();
    driver.clickTab(tabs, page);
    driver.see(tabs && tabs->currentIndex() == page,
        QStringLiteral("the page \"%1\" comes to the front").arg(tabs ? tabs->tabText(page) : QString()));
}

void pullPanels(TourDriver& driver, int pixels)
{
    const QPoint border = borderOf(driver);
    driver.drag(border, border + QPoint(0, pixels));
    driver.see(qAbs(borderOf(driver).y() - border.y() - pixels) < 4,
        QStringLiteral("the border above the panels can be pulled"), true);
}

QString appearanceName(TourDriver& driver)
{
    const QString theme = look(driver) == Look::Light ? QStringLiteral("light") : QStringLiteral("dark");
    return tongue(driver) == Tongue::English ? theme : QString(theme + QStringLiteral("-zh"));
}

void seePicture(TourDriver& driver, QWidget* parent, const char* label, const QString& path)
{
    const auto* shown = driver.inWidget<QLabel>(parent, label);
    const QPixmap wanted(path);
    driver.see(!wanted.isNull(), QStringLiteral("there is a picture %1").arg(path), true);
    driver.see(shown && shown->isVisible() && shown->pixmap() && shown->pixmap()->toImage() == wanted.toImage(),
        QStringLiteral("the page shows the picture %1").arg(path));
}

void seeStored(TourDriver& driver, QWidget* parent, const char* field, const QString& axisName, const char* key)
{
    const auto* edit = driver.inWidget<QLineEdit>(parent, field);
    const QString value = stored(driver, axisName, key);
    driver.see(edit && !value.isEmpty() && edit->text() == value,
        QStringLiteral("the page shows %1 = %2").arg(text(key), value));
}

} // namespace TourTools
