#include "workbench/tour/TourDriver.h"

#include "sdk/IEditor.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/Workbench.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTimer>
#include <QWindow>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int patienceInMs = 10000;
constexpr int watchPeriodInMs = 20;
/// A window that nobody announced may be one that is just closing; after so many looks it is not.
constexpr int unexpectedLooks = 100;

QWindow* windowOf(const QWidget* widget)
{
    return widget->window()->windowHandle();
}

QPoint inWindow(const QWidget* widget, const QPoint& place)
{
    return widget->mapTo(widget->window(), place);
}

void settle()
{
    QTest::qWait(15);
}

/// Without a window manager nobody else gives a new window the focus.
void bringToFront(QWidget* widget)
{
    widget->activateWindow();
    if (QTest::qWaitForWindowActive(widget, 1000))
        settle();
}

} // namespace

TourDriver::TourDriver(const WorkbenchPaths& paths, const QString& directory)
    : m_paths(std::make_unique<WorkbenchPaths>(paths)), m_directory(directory), m_alive(std::make_shared<bool>(true))
{
}

TourDriver::~TourDriver()
{
    *m_alive = false;
}

void TourDriver::start(const QString& project)
{
    m_workbench = std::make_unique<Workbench>(*m_paths);
    m_workbench->start();
    window()->resize(1440, 960);
    window()->move(0, 0);
    m_workbench->openFirst(project);
    bringToFront(window());
    watch();
}

void TourDriver::quit()
{
    window()->close();
    settle();
    m_workbench.reset();
}

QWidget* TourDriver::window() const
{
    return &m_workbench->window();
}

bool TourDriver::see(bool holds, const QString& what)
{
    return see(holds, what, false);
}

bool TourDriver::see(bool holds, const QString& what, bool onlyFailures)
{
    if (m_failed)
        return false;
    if (!holds)
        m_notes.append(QStringLiteral("**NOT SEEN:** %1").arg(what));
    else if (!onlyFailures)
        m_notes.append(what);
    m_failed = !holds;
    return holds;
}

bool TourDriver::seeSoon(const std::function<bool()>& holds, const QString& what)
{
    return see(m_failed || QTest::qWaitFor(holds, patienceInMs), what);
}

QStringList TourDriver::takeNotes()
{
    QStringList notes;
    notes.swap(m_notes);
    return notes;
}

QStringList TourDriver::takePictures()
{
    QStringList pictures;
    pictures.swap(m_pictures);
    return pictures;
}

void TourDriver::picture(const QString& name)
{
    if (!m_failed)
        store(name);
}

void TourDriver::pictureOfFailure()
{
    if (m_workbench)
        store(QStringLiteral("failure"));
}

void TourDriver::store(const QString& name)
{
    settle();
    QPixmap screen = window()->grab();
    QPainter painter(&screen);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* above : windows) {
        if (above == window() || !above->isVisible())
            continue;
        const QRect place(above->mapToGlobal(QPoint()) - window()->mapToGlobal(QPoint()), above->size());
        painter.drawPixmap(place.topLeft(), above->grab());
        painter.setPen(above->palette().color(QPalette::Mid));
        painter.drawRect(place.adjusted(-1, -1, 0, 0));
    }
    painter.end();
    const QString file = QStringLiteral("%1-%2.png").arg(++m_pictureCount, 2, 10, QLatin1Char('0')).arg(name);
    if (screen.save(QDir(m_directory).filePath(file)))
        m_pictures.append(file);
    else
        see(false, QStringLiteral("the picture %1 is written").arg(file));
}

void TourDriver::click(QWidget* widget)
{
    bringIntoSight(widget);
    click(widget, widget ? widget->rect().center() : QPoint());
}

void TourDriver::bringIntoSight(QWidget* widget)
{
    QScrollArea* area = page();
    if (!widget || !area || !area->widget() || !area->widget()->isAncestorOf(widget))
        return;
    const auto inSight
        = [&] { return area->viewport()->rect().contains(widget->mapTo(area->viewport(), widget->rect().center())); };
    if (!inSight())
        scrollBack(area);
    while (!m_failed && !inSight() && scrollOn(area)) { }
}

bool TourDriver::canClick(QWidget* widget)
{
    return see(widget && widget->isVisible() && widget->isEnabled(),
        QStringLiteral("%1 can be clicked").arg(widget ? widget->objectName() : QString()), true);
}

void TourDriver::click(QWidget* widget, const QPoint& place, Qt::MouseButton button)
{
    if (m_failed || !canClick(widget))
        return;
    keyReceiver();
    QTest::mouseClick(windowOf(widget), button, Qt::NoModifier, inWindow(widget, place));
    settle();
}

void TourDriver::press(QWidget* widget)
{
    bringIntoSight(widget);
    if (m_failed || !canClick(widget))
        return;
    QTest::mousePress(windowOf(widget), Qt::LeftButton, Qt::NoModifier, inWindow(widget, widget->rect().center()));
}

void TourDriver::release(QWidget* widget)
{
    if (widget)
        QTest::mouseRelease(
            windowOf(widget), Qt::LeftButton, Qt::NoModifier, inWindow(widget, widget->rect().center()));
}

void TourDriver::doubleClick(QWidget* widget, const QPoint& place)
{
    if (m_failed)
        return;
    QTest::mouseClick(windowOf(widget), Qt::LeftButton, Qt::NoModifier, inWindow(widget, place));
    QTest::mouseDClick(windowOf(widget), Qt::LeftButton, Qt::NoModifier, inWindow(widget, place));
    settle();
}

void TourDriver::clickItem(QAbstractItemView* view, const QModelIndex& index)
{
    if (!see(view && index.isValid(), QStringLiteral("there is an entry to click"), true))
        return;
    view->scrollTo(index);
    click(view->viewport(), view->visualRect(index).center());
}

void TourDriver::doubleClickItem(QAbstractItemView* view, const QModelIndex& index)
{
    if (!see(view && index.isValid(), QStringLiteral("there is an entry to click"), true))
        return;
    view->scrollTo(index);
    doubleClick(view->viewport(), view->visualRect(index).center());
}

void TourDriver::drag(const QPoint& from, const QPoint& to)
{
    if (m_failed)
        return;
    QWindow* target = windowOf(window());
    QTest::mouseMove(target, from);
    QTest::mousePress(target, Qt::LeftButton, Qt::NoModifier, from);
    // What can be pulled wants to see the mouse on its way.
    for (int step = 1; step <= 4; ++step)
        QTest::mouseMove(target, from + (to - from) * step / 4);
    QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, to);
    settle();
}

bool TourDriver::scrollOn(QAbstractScrollArea* area)
{
    QScrollBar* bar = area->verticalScrollBar();
    const int before = bar->value();
    if (m_failed || !bar->isVisible() || before == bar->maximum())
        return false;
    click(bar, { bar->width() / 2, bar->height() - 2 });
    return see(bar->value() > before, QStringLiteral("the page can be scrolled"), true);
}

void TourDriver::scrollBack(QAbstractScrollArea* area)
{
    QScrollBar* bar = area->verticalScrollBar();
    while (!m_failed && bar->isVisible() && bar->value() != bar->minimum()) {
        const int before = bar->value();
        click(bar, { bar->width() / 2, 2 });
        see(bar->value() < before, QStringLiteral("the page can be scrolled back"), true);
    }
}

QWidget* TourDriver::keyReceiver() const
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* receiver = modal ? modal : window();
    if (!receiver->isActiveWindow())
        bringToFront(receiver);
    return receiver;
}

void TourDriver::key(int key, Qt::KeyboardModifiers modifiers)
{
    if (m_failed)
        return;
    QTest::keyClick(windowOf(keyReceiver()), static_cast<Qt::Key>(key), modifiers);
    settle();
}

void TourDriver::type(const QString& text)
{
    for (const QChar letter : text) {
        if (!m_failed)
            QTest::keyClick(windowOf(keyReceiver()), letter.toLatin1());
    }
    settle();
}

void TourDriver::fill(QLineEdit* field, const QString& text)
{
    click(field);
    key(Qt::Key_A, Qt::ControlModifier);
    type(text);
}

void TourDriver::choose(QComboBox* box, int row)
{
    click(box);
    if (!seeSoon([box] { return box && box->view()->isVisible(); }, QStringLiteral("the list of choices opens")))
        return;
    key(Qt::Key_Home);
    for (int i = 0; i < row; ++i)
        key(Qt::Key_Down);
    key(Qt::Key_Return);
    see(box->currentIndex() == row, QStringLiteral("\"%1\" is chosen").arg(box->currentText()));
}

void TourDriver::clickTab(QTabBar* bar, int tab)
{
    if (bar)
        click(bar, bar->tabRect(tab).center());
}

void TourDriver::menu(const QString& menu, const QString& action)
{
    auto* bar = m_workbench->window().menuBar();
    auto* opened = bar->findChild<QMenu*>(menu);
    if (!see(opened != nullptr, QStringLiteral("there is a menu %1").arg(menu), true))
        return;
    click(bar, bar->actionGeometry(opened->menuAction()).center());
    seeSoon([opened] { return opened->isVisible(); }, QStringLiteral("the menu \"%1\" opens").arg(opened->title()));
    const QList<QAction*> actions = opened->actions();
    for (int entry = 0; entry < actions.size(); ++entry) {
        if (actions.at(entry)->objectName() == action)
            return clickEntry(opened, entry);
    }
    see(false, QStringLiteral("the menu has an entry %1").arg(action));
}

void TourDriver::clickEntry(QMenu* menu, int entry)
{
    QAction* action = menu->actions().value(entry);
    if (see(action && action->isEnabled(), QStringLiteral("the menu has a usable entry %1").arg(entry + 1), true))
        click(menu, menu->actionGeometry(action).center());
}

void TourDriver::whenMenu(const std::function<void(QMenu*)>& act)
{
    announce(true, [act](QWidget* widget) { act(qobject_cast<QMenu*>(widget)); });
}

void TourDriver::whenDialog(const std::function<void(QWidget*)>& act)
{
    announce(false, act);
}

void TourDriver::announce(bool menu, const std::function<void(QWidget*)>& act)
{
    if (!m_failed)
        m_announced.append({ menu, act });
}

// A single shot each time: the timer that found a window is still in its slot while that window's own loop runs.
void TourDriver::watch()
{
    QTimer::singleShot(watchPeriodInMs, qApp, [this, alive = m_alive] {
        if (!*alive || !m_workbench)
            return;
        watch();
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* found = popup ? popup : QApplication::activeModalWidget();
        if (found && found->isVisible() && !m_handled.contains(found))
            handle(found);
    });
}

void TourDriver::handle(QWidget* widget)
{
    const bool isMenu = qobject_cast<QMenu*>(widget) != nullptr;
    const bool expected
        = !m_announced.isEmpty() && m_announced.first().menu == isMenu && (isMenu || qobject_cast<QDialog*>(widget));
    // Menus of the menu bar and lists of choices are opened by the driver itself.
    if (!expected && (isMenu || !qobject_cast<QDialog*>(widget)))
        return;
    if (!expected && !m_failed && ++m_unexpected < unexpectedLooks)
        return;
    m_unexpected = 0;
    m_handled.append(widget);
    if (!expected) {
        see(false, QStringLiteral("no window \"%1\" opens by itself").arg(widget->windowTitle()));
        widget->close();
        return;
    }
    const Announced announced = m_announced.takeFirst();
    bringToFront(widget);
    const QPointer<QWidget> guard(widget);
    announced.act(widget);
    if (m_failed && guard)
        guard->close();
}

QModelIndex TourDriver::nodeIndex(const QStringList& texts)
{
    const QStandardItemModel* model = m_workbench->tree().model();
    QModelIndex index;
    for (const QString& text : texts) {
        QModelIndex next;
        for (int row = 0; row < model->rowCount(index) && !next.isValid(); ++row) {
            if (model->index(row, 0, index).data().toString() == text)
                next = model->index(row, 0, index);
        }
        if (!next.isValid())
            return {};
        index = next;
    }
    return index;
}

QString TourDriver::node(const QStringList& texts)
{
    const QModelIndex index = nodeIndex(texts);
    see(index.isValid(), QStringLiteral("the tree shows \"%1\"").arg(texts.join(QLatin1String(" / "))), true);
    return m_workbench->tree().path(index);
}

QStringList TourDriver::childTexts(const QStringList& texts)
{
    QStringList children;
    const QModelIndex index = nodeIndex(texts);
    const QStandardItemModel* model = m_workbench->tree().model();
    for (int row = 0; index.isValid() && row < model->rowCount(index); ++row)
        children.append(model->index(row, 0, index).data().toString());
    return children;
}

void TourDriver::clickNode(const QStringList& texts, Qt::MouseButton button)
{
    if (node(texts).isEmpty())
        return;
    ProjectTreeView& view = m_workbench->window().tree();
    view.scrollTo(nodeIndex(texts));
    click(view.viewport(), view.visualRect(nodeIndex(texts)).center(), button);
}

void TourDriver::doubleClickNode(const QStringList& texts)
{
    if (!node(texts).isEmpty())
        doubleClickItem(&m_workbench->window().tree(), nodeIndex(texts));
}

QWidget* TourDriver::editor() const
{
    IEditor* editor = m_workbench->editors().currentEditor();
    return editor ? editor->widget() : nullptr;
}

QScrollArea* TourDriver::page() const
{
    const QList<QScrollArea*> areas = editor() ? editor()->findChildren<QScrollArea*>() : QList<QScrollArea*>();
    const auto shown
        = std::find_if(areas.begin(), areas.end(), [](const QScrollArea* area) { return area->isVisible(); });
    return shown == areas.end() ? nullptr : *shown;
}

QTabBar* TourDriver::pageTabs()
{
    auto* bar = editor() ? editor()->findChild<QTabBar*>() : nullptr;
    see(bar != nullptr, QStringLiteral("the editor shows its pages as tabs"), true);
    return bar;
}

QTabBar* TourDriver::panelTabs()
{
    const QList<QTabBar*> bars = window()->findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    const auto shown = std::find_if(bars.begin(), bars.end(), [](const QTabBar* bar) { return bar->isVisible(); });
    see(shown != bars.end(), QStringLiteral("the panels have tabs"), true);
    return shown == bars.end() ? nullptr : *shown;
}

QString TourDriver::currentTitle() const
{
    const QTabWidget* tabs = m_workbench->editors().tabs();
    return tabs->tabText(tabs->currentIndex());
}
