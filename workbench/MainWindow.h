#pragma once

#include <QMainWindow>

#include <functional>
#include <vector>

class ActionManager;
class ComparisonPanel;
class EditorManager;
class FindPanel;
class MessageBar;
class OutputPanel;
class ProblemsPanel;
class ProjectTree;
class ProjectTreeView;
class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;
class QUndoStack;
class StartPage;
class StopBar;
class StopButton;
class ToolWindowManager;

/// The window: project tree on the left, editors as tabs, panels at the bottom, menus, tool bar, status bar. What its
/// actions do is connected by others, through the names of the actions.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// What the frame of the window says about the project.
    struct ProjectState {
        bool open = false;
        bool modified = false;
        bool readOnly = false;
        QString name;
        QString filePath;
        QString controller;
    };

    MainWindow(
        ProjectTree& tree, EditorManager& editors, ActionManager& actions, QUndoStack& undo, QWidget* parent = nullptr);
    ~MainWindow() override;

    ProjectTreeView& tree() { return *m_tree; }
    OutputPanel& output() { return *m_output; }
    ProblemsPanel& problems() { return *m_problems; }
    FindPanel& find() { return *m_find; }
    ComparisonPanel& comparison() { return *m_comparison; }
    MessageBar& messageBar() { return *m_messageBar; }
    StartPage& startPage() { return *m_startPage; }
    ToolWindowManager& toolWindows() { return *m_toolWindows; }

    void setProjectState(const ProjectState& state);
    void setRecent(const QStringList& files);
    /// While online what would change the project's axes or their numbers is out of reach.
    void setOnline(bool online);
    /// Adds a panel at the bottom, with a place in the menu. The title is translated in the context "MainWindow".
    void addPanel(const char* name, const char* title, QWidget* widget);
    StopButton& stopButton();
    /// The place beside the STOP button for what became of it.
    QLabel& stopFeedback();
    /// Asked when the window is to close; false keeps it open.
    void setMayClose(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }

signals:
    void recentChosen(const QString& file);
    void escapePressed();
    void aboutToClose();
    void fileDropped(const QString& fileName);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildActions();
    void buildToolBars();
    void buildUndoActions();
    void buildMenus();
    void buildCentre();
    void buildPanels();
    void showUndo();
    void buildStatusBar();
    void retranslate();
    void retranslateMenus();
    void retranslateUndo();
    void showProblemCount(int count);
    void showEditorsOrStart();
    QMenu* addMenu(const char* title);

    EditorManager& m_editors;
    ActionManager& m_actions;
    QUndoStack& m_undo;
    ProjectTreeView* m_tree;
    OutputPanel* m_output;
    ProblemsPanel* m_problems;
    FindPanel* m_find;
    ComparisonPanel* m_comparison;
    MessageBar* m_messageBar;
    StartPage* m_startPage;
    QStackedWidget* m_centre;
    ToolWindowManager* m_toolWindows;
    QToolBar* m_toolBar;
    StopBar* m_stopBar = nullptr;
    QMenu* m_recentMenu = nullptr;
    struct TitledMenu {
        QMenu* menu;
        const char* title;
    };
    std::vector<TitledMenu> m_menus;
    struct TitledPanel {
        const char* name;
        const char* title;
    };
    std::vector<TitledPanel> m_addedPanels;
    QLabel* m_controllerLabel;
    QMenu* m_viewMenu = nullptr;
    ProjectState m_state;
    int m_problemCount = 0;
    bool m_online = false;
    std::function<bool()> m_mayClose;
};
