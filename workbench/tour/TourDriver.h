#pragma once

#include <QModelIndex>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class QAbstractItemView;
class QAbstractScrollArea;
class QComboBox;
class QLineEdit;
class QMenu;
class QScrollArea;
class QTabBar;
class Workbench;
struct WorkbenchPaths;

/// Drives the program as a user does, with mouse and key events that go through the window system, and notes what is
/// to be seen. The first thing that is not as it should be ends the tour: from then on nothing more is done.
class TourDriver {
public:
    TourDriver(const WorkbenchPaths& paths, const QString& directory);
    ~TourDriver();
    TourDriver(const TourDriver&) = delete;
    TourDriver& operator=(const TourDriver&) = delete;

    /// Starts the program, on a project or with what the last run left.
    void start(const QString& project);
    void quit();
    Workbench& workbench() { return *m_workbench; }
    QWidget* window() const;

    // What is seen.
    /// Notes a fact; one that does not hold fails the step.
    bool see(bool holds, const QString& what);
    /// The same, but only a failure is noted.
    bool see(bool holds, const QString& what, bool onlyFailures);
    /// Waits for a fact, ten seconds at most.
    bool seeSoon(const std::function<bool()>& holds, const QString& what);
    bool failed() const { return m_failed; }
    QStringList takeNotes();
    QStringList takePictures();
    /// Stores what is on screen, windows above the main window included.
    void picture(const QString& name);
    /// The same after a failure.
    void pictureOfFailure();

    // What is done.
    /// Clicks the middle of a widget, scrolled into sight if its page is higher than the window.
    void click(QWidget* widget);
    void click(QWidget* widget, const QPoint& place, Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(QWidget* widget, const QPoint& place);
    /// Presses the left button on a widget and holds it, until release().
    void press(QWidget* widget);
    void release(QWidget* widget);
    /// Clicks an entry of a list, a tree or a table, scrolled into sight.
    void clickItem(QAbstractItemView* view, const QModelIndex& index);
    void doubleClickItem(QAbstractItemView* view, const QModelIndex& index);
    /// Pulls what is at that place of the window to another one.
    void drag(const QPoint& from, const QPoint& to);
    /// Scrolls down by a click under the handle of the scroll bar. False when the end is in sight already.
    bool scrollOn(QAbstractScrollArea* area);
    void scrollBack(QAbstractScrollArea* area);
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    /// Replaces the text of a field, as a user does who marks it whole and types.
    void fill(QLineEdit* field, const QString& text);
    void choose(QComboBox* box, int row);
    void clickTab(QTabBar* bar, int tab);
    /// Opens a menu of the menu bar and clicks an entry. Menus and actions by object name.
    void menu(const QString& menu, const QString& action);
    /// Says what to do in the next menu or dialog that opens; to be called before what opens it.
    void whenMenu(const std::function<void(QMenu*)>& act);
    void whenDialog(const std::function<void(QWidget*)>& act);
    void clickEntry(QMenu* menu, int entry);
    /// True when all that was announced has opened and closed again.
    bool nothingPending() const { return m_announced.isEmpty(); }

    // The project tree.
    /// Path of the node with these texts from the top; a failure when there is none.
    QString node(const QStringList& texts);
    QStringList childTexts(const QStringList& texts);
    void clickNode(const QStringList& texts, Qt::MouseButton button = Qt::LeftButton);
    void doubleClickNode(const QStringList& texts);

    /// A widget of the current editor by object name; a failure when there is none.
    template <typename Widget>
    Widget* inEditor(const char* name)
    {
        return inWidget<Widget>(editor(), name);
    }
    template <typename Widget>
    Widget* inWidget(QWidget* parent, const char* name)
    {
        auto* found = parent ? parent->findChild<Widget*>(QLatin1String(name)) : nullptr;
        see(found != nullptr, QStringLiteral("there is a control %1").arg(QLatin1String(name)), true);
        return found;
    }
    QWidget* editor() const;
    /// The page of the current editor that is in front, in what scrolls it; null when it has none. Pages of an editor
    /// use the same names for their controls.
    QScrollArea* page() const;
    /// The tabs of the current editor's pages.
    QTabBar* pageTabs();
    QString currentTitle() const;
    /// The tabs of the panels at the bottom, which stand behind one another.
    QTabBar* panelTabs();

private:
    struct Announced {
        bool menu;
        std::function<void(QWidget*)> act;
    };

    void announce(bool menu, const std::function<void(QWidget*)>& act);
    void watch();
    void handle(QWidget* widget);
    QModelIndex nodeIndex(const QStringList& texts);
    QWidget* keyReceiver() const;
    void bringIntoSight(QWidget* widget);
    bool canClick(QWidget* widget);
    void store(const QString& name);

    std::unique_ptr<WorkbenchPaths> m_paths;
    QString m_directory;
    std::unique_ptr<Workbench> m_workbench;
    QList<Announced> m_announced;
    QList<QPointer<QWidget>> m_handled;
    QStringList m_notes;
    QStringList m_pictures;
    int m_pictureCount = 0;
    int m_unexpected = 0;
    bool m_failed = false;
    std::shared_ptr<bool> m_alive;
};
