#include "workbench/MainWindow.h"

#include "sdk/IEditor.h"
#include "workbench/ActionManager.h"
#include "workbench/ComparisonPanel.h"
#include "workbench/EditorManager.h"
#include "workbench/FindPanel.h"
#include "workbench/MainWindowActions.h"
#include "workbench/MessageBar.h"
#include "workbench/OutputPanel.h"
#include "workbench/ProblemsPanel.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/StartPage.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/online/StopBar.h"

#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QVBoxLayout>

MainWindow::MainWindow(
    ProjectTree& tree, EditorManager& editors, ActionManager& actions, QUndoStack& undo, QWidget* parent)
    : QMainWindow(parent), m_editors(editors), m_actions(actions), m_undo(undo), m_tree(new ProjectTreeView(tree)),
      m_output(new OutputPanel), m_problems(new ProblemsPanel), m_find(new FindPanel),
      m_comparison(new ComparisonPanel), m_messageBar(new MessageBar), m_startPage(new StartPage),
      m_centre(new QStackedWidget), m_toolWindows(new ToolWindowManager(*this, this)), m_toolBar(new QToolBar(this)),
      m_controllerLabel(new QLabel(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setAcceptDrops(true);
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    // The side panel reaches down beside the panels at the bottom: trees are tall.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    buildCentre();
    buildPanels();
    buildActions();
    buildToolBars();
    buildUndoActions();
    buildMenus();
    buildStatusBar();
    resize(1280, 800);
    resizeDocks({ m_toolWindows->panel(QStringLiteral("project")) }, { 240 }, Qt::Horizontal);
    resizeDocks({ m_toolWindows->panel(QStringLiteral("output")) }, { 148 }, Qt::Vertical);
    retranslate();
    setProjectState({});
}

MainWindow::~MainWindow() = default;

void MainWindow::buildCentre()
{
    auto* centre = new QWidget(this);
    centre->setObjectName(QStringLiteral("centre"));
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messageBar);
    column->addWidget(m_centre, 1);
    m_centre->addWidget(m_startPage);
    m_centre->addWidget(m_editors.tabs());
    setCentralWidget(centre);
    connect(&m_editors, &IEditorManager::editorCreated, this, &MainWindow::showEditorsOrStart);
    connect(&m_editors, &IEditorManager::editorClosed, this, &MainWindow::showEditorsOrStart);
}

void MainWindow::showEditorsOrStart()
{
    const bool any = !m_editors.editors().isEmpty();
    m_centre->setCurrentIndex(any ? 1 : 0);
    m_actions.action(QStringLiteral("file.closeEditor"))->setEnabled(any);
    m_startPage->setProjectOpen(m_state.open);
}

void MainWindow::buildPanels()
{
    m_toolWindows->addPanel(QStringLiteral("project"), QString(), m_tree, Qt::LeftDockWidgetArea);
    m_toolWindows->addToolWindow(QStringLiteral("output"), QString(), m_output);
    m_toolWindows->addToolWindow(QStringLiteral("problems"), QString(), m_problems);
    m_toolWindows->addToolWindow(QStringLiteral("find"), QString(), m_find);
    m_toolWindows->addToolWindow(QStringLiteral("comparison"), QString(), m_comparison);
    m_toolWindows->showToolWindow(QStringLiteral("output"));
    connect(m_problems, &ProblemsPanel::countChanged, this, &MainWindow::showProblemCount);
}

void MainWindow::buildActions()
{
    for (const ActionEntry& entry : mainWindowActions()) {
        auto* action = new QAction(this);
        action->setObjectName(QLatin1String(entry.name));
        action->setIcon(QIcon::fromTheme(QLatin1String(entry.symbol)));
        action->setShortcuts(entry.shortcuts());
        addAction(action);
        m_actions.add(QLatin1String(entry.name), action);
        if (qstrcmp(entry.name, "file.quit") == 0)
            action->setMenuRole(QAction::QuitRole);
    }
}

void MainWindow::buildToolBars()
{
    m_toolBar->setObjectName(QStringLiteral("mainToolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setIconSize({ 22, 22 });
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(m_toolBar);
    for (const char* name : mainToolBar()) {
        if (name)
            m_toolBar->addAction(m_actions.action(QLatin1String(name)));
        else
            m_toolBar->addSeparator();
    }
    m_stopBar = new StopBar(m_actions.action(QStringLiteral("online.release")), this);
    addToolBar(m_stopBar);
}

StopButton& MainWindow::stopButton()
{
    return m_stopBar->button();
}

QLabel& MainWindow::stopFeedback()
{
    return m_stopBar->feedback();
}

void MainWindow::buildUndoActions()
{
    QAction* undo = m_actions.action(QStringLiteral("edit.undo"));
    QAction* redo = m_actions.action(QStringLiteral("edit.redo"));
    showUndo();
    connect(&m_undo, &QUndoStack::canUndoChanged, this, &MainWindow::showUndo);
    connect(&m_undo, &QUndoStack::canRedoChanged, this, &MainWindow::showUndo);
    connect(&m_undo, &QUndoStack::undoTextChanged, this, &MainWindow::retranslateUndo);
    connect(&m_undo, &QUndoStack::redoTextChanged, this, &MainWindow::retranslateUndo);
    connect(undo, &QAction::triggered, &m_undo, &QUndoStack::undo);
    connect(redo, &QAction::triggered, &m_undo, &QUndoStack::redo);
}

void MainWindow::showUndo()
{
    m_actions.action(QStringLiteral("edit.undo"))->setEnabled(!m_online && m_undo.canUndo());
    m_actions.action(QStringLiteral("edit.redo"))->setEnabled(!m_online && m_undo.canRedo());
}

QMenu* MainWindow::addMenu(const char* title)
{
    QMenu* menu = menuBar()->addMenu(QString());
    m_menus.push_back({ menu, title });
    return menu;
}

void MainWindow::buildMenus()
{
    for (const MenuEntry& entry : mainMenus()) {
        QMenu* menu = addMenu(entry.title);
        menu->setObjectName(QLatin1String(entry.name));
        for (const char* name : entry.actions) {
            if (!name) {
                menu->addSeparator();
            } else if (qstrcmp(name, "file.recent") == 0) {
                m_recentMenu = menu->addMenu(QString());
                m_recentMenu->setIcon(QIcon::fromTheme(QStringLiteral("document-open-recent")));
                m_recentMenu->setObjectName(QStringLiteral("recentMenu"));
            } else {
                menu->addAction(m_actions.action(QLatin1String(name)));
            }
        }
        if (qstrcmp(entry.name, "viewMenu") == 0) {
            m_viewMenu = menu;
            for (const char* panel : { "project", "output", "problems", "find", "comparison" })
                menu->addAction(m_toolWindows->panel(QLatin1String(panel))->toggleViewAction());
        }
    }
}

void MainWindow::buildStatusBar()
{
    m_controllerLabel->setObjectName(QStringLiteral("controllerLabel"));
    statusBar()->addPermanentWidget(m_controllerLabel);
}

void MainWindow::setProjectState(const ProjectState& state)
{
    m_state = state;
    for (const ActionEntry& entry : mainWindowActions()) {
        if (entry.needsProject)
            m_actions.action(QLatin1String(entry.name))->setEnabled(state.open);
    }
    setOnline(m_online);
    const QString name = state.readOnly ? tr("%1 (read-only)").arg(state.name) : state.name;
    setWindowTitle(state.open ? QString(name + QStringLiteral("[*] \u2014 ") + tr("Kestrun")) : tr("Kestrun"));
    setWindowModified(state.modified);
    setWindowFilePath(QString());
    m_controllerLabel->setText(state.open ? tr("Controller: %1").arg(state.controller) : QString());
    m_controllerLabel->setVisible(state.open);
    showEditorsOrStart();
}

void MainWindow::setOnline(bool online)
{
    m_online = online;
    m_actions.action(QStringLiteral("project.controller"))->setEnabled(m_state.open && !online);
    showUndo();
}

void MainWindow::addPanel(const char* name, const char* title, QWidget* widget)
{
    m_toolWindows->addToolWindow(QLatin1String(name), translatedActionText(title), widget);
    m_addedPanels.push_back({ name, title });
    m_viewMenu->addAction(m_toolWindows->panel(QLatin1String(name))->toggleViewAction());
    m_toolWindows->showToolWindow(QStringLiteral("output"));
}

void MainWindow::setRecent(const QStringList& files)
{
    m_startPage->setRecent(files);
    m_recentMenu->clear();
    for (const QString& file : files) {
        QAction* action = m_recentMenu->addAction(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { emit recentChosen(file); });
    }
    m_recentMenu->setEnabled(!files.isEmpty());
}

void MainWindow::showProblemCount(int count)
{
    m_problemCount = count;
    m_toolWindows->panel(QStringLiteral("problems"))
        ->setWindowTitle(count > 0 ? tr("Problems (%1)").arg(count) : tr("Problems"));
}

void MainWindow::retranslate()
{
    for (const ActionEntry& entry : mainWindowActions()) {
        QAction* action = m_actions.action(QLatin1String(entry.name));
        action->setText(translatedActionText(entry.text));
        QString tip = translatedActionText(entry.text);
        // Chinese texts carry their keys in brackets behind them.
        static const QRegularExpression bracketedKey(QStringLiteral("\\(&\\w\\)"));
        tip.remove(bracketedKey);
        tip.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
        action->setIconText(tip);
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        action->setToolTip(keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
    }
    retranslateMenus();
    retranslateUndo();
    m_toolWindows->panel(QStringLiteral("project"))->setWindowTitle(tr("Project"));
    m_toolWindows->panel(QStringLiteral("output"))->setWindowTitle(tr("Output"));
    m_toolWindows->panel(QStringLiteral("find"))->setWindowTitle(tr("Find"));
    m_toolWindows->panel(QStringLiteral("comparison"))->setWindowTitle(tr("Comparison"));
    for (const TitledPanel& panel : m_addedPanels)
        m_toolWindows->panel(QLatin1String(panel.name))->setWindowTitle(translatedActionText(panel.title));
    m_toolBar->setWindowTitle(tr("Tool bar"));
    m_tree->setAccessibleName(tr("Project tree"));
    m_editors.tabs()->setAccessibleName(tr("Editors"));
    showProblemCount(m_problemCount);
    setProjectState(m_state);
}

void MainWindow::retranslateMenus()
{
    for (const TitledMenu& titled : m_menus)
        titled.menu->setTitle(translatedActionText(titled.title));
    m_recentMenu->setTitle(tr("Open &recent"));
}

void MainWindow::retranslateUndo()
{
    const auto name = [](const QString& base, const QString& what) {
        return what.isEmpty() ? base : QString(base + QLatin1Char(' ') + what);
    };
    m_actions.action(QStringLiteral("edit.undo"))->setText(name(tr("&Undo"), m_undo.undoText()));
    m_actions.action(QStringLiteral("edit.redo"))->setText(name(tr("&Redo"), m_undo.redoText()));
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    emit aboutToClose();
    if (m_mayClose && !m_mayClose())
        event->ignore();
    else
        event->accept();
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit escapePressed();
    QMainWindow::keyPressEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile())
        emit fileDropped(urls.first().toLocalFile());
}
