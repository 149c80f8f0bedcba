#include "workbench/Workbench.h"

#include "host/projectmodel/ProjectModel.h"
#include "sdk/IEditor.h"
#include "sdk/ServiceKeys.h"
#include "workbench/AppearanceOption.h"
#include "workbench/CommunicationOption.h"
#include "workbench/MessageBar.h"
#include "workbench/OutputPanel.h"
#include "workbench/PluginListDialog.h"
#include "workbench/ProblemsPanel.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/StartPage.h"
#include "workbench/Theme.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/monitor/CurvePanel.h"
#include "workbench/online/ProjectAxes.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>

namespace {

QString switchedOffKey()
{
    return QStringLiteral("Plugins/SwitchedOff");
}

QString startLanguage(const IConfiguration& settings)
{
    const QString wanted = settings.value(Solution::ConfigKey::language(), QLocale::system().name()).toString();
    return wanted.startsWith(QLatin1String("zh")) ? QStringLiteral("zh_CN") : QStringLiteral("en_US");
}

} // namespace

WorkbenchPaths WorkbenchPaths::besideProgram(const QString& programDirectory)
{
    const QDir folder(programDirectory);
    return { folder.absoluteFilePath(QStringLiteral("plugins")),
        QDir::cleanPath(folder.absoluteFilePath(QStringLiteral("../share/kestrun/controllers"))), QString(),
        QString() };
}

Workbench::Workbench(const WorkbenchPaths& paths)
    : m_paths(paths), m_settings(paths.settingsFile), m_comparators(m_cookies), m_catalog(paths.controllerDirectory),
      m_editors(m_tree), m_sourceFactory(m_tree), m_workspace(m_tree, m_undo, m_editors, m_cookies),
      m_diagnosis(
          m_settings, [this] { return m_workspace.project() ? &m_workspace.project()->controller() : nullptr; }),
      m_window(m_tree, m_editors, m_actions, *m_undo.stack()), m_bubble(new RefusalBubble(&m_window)),
      m_session(m_settings, m_window, m_workspace, m_editors), m_plugins(m_log, m_options),
      m_flows(m_workspace, m_editors, m_window, m_catalog, m_settings, m_log),
      m_find(m_workspace, m_tree, m_editors, m_window, *m_actions.action(QStringLiteral("edit.findReferences"))),
      m_comparison(m_tree, m_comparators), m_comparisonFlows(m_comparison, m_workspace, m_editors, m_window, m_log,
                                               *m_actions.action(QStringLiteral("project.closeComparison"))),
      m_online(
          { m_connection, m_workspace, m_window, m_actions, m_settings, m_log, m_diagnosis, paths.controllerProgram })
{
    m_cookies.setValue(Solution::ConfigKey::theme(), theme());
    m_settings.setValue(Solution::ConfigKey::language(), startLanguage(m_settings));
    m_language.install(language());
    Theme::apply(theme());
    publishServices();
    addOptionPages();
    connectActions();
    connectPanels();
    addCurvePanel();
    connectTree();
}

Workbench::~Workbench()
{
    shutDown();
}

void Workbench::publishServices()
{
    m_application.addManager(Solution::ManagerName::editor(), &m_editors);
    m_application.addManager(Solution::ManagerName::option(), &m_options);
    m_application.addManager(QStringLiteral("action"), &m_actions);
    m_application.addManager(QStringLiteral("toolwindow"), &m_window.toolWindows());
    m_application.publish(Solution::ServiceKey::view(), &m_tree);
    m_application.publish(Solution::ServiceKey::viewHelper(), &m_undo);
    m_application.publish(Solution::ServiceKey::cookies(), &m_cookies);
    m_application.publish(Solution::ServiceKey::settings(), &m_settings);
    m_application.publish(Solution::ServiceKey::logManager(), &m_log);
    m_application.publish(Solution::ServiceKey::transfer(), &m_connection);
    m_application.publish(Solution::ServiceKey::variableMonitor(), &m_monitor);
    m_application.publish(Solution::ServiceKey::comparatorManager(), &m_comparators);
    m_application.publish(Solution::ServiceKey::diagnosisInfo(), &m_diagnosis);
    m_application.publish(Solution::ServiceKey::backgroundTransaction(), &m_online.background());
    m_editors.addEditorFactory(&m_sourceFactory);
    m_plugins.addPresent(QStringLiteral("project.solutionview"), QStringLiteral("1.0.0"));
}

void Workbench::addOptionPages()
{
    m_options.setWindow(&m_window);
    m_options.addOptionFactory(
        new AppearanceOptionFactory({ [this] { return theme(); }, [this](const QString& theme) { setTheme(theme); },
            [this] { return language(); }, [this](const QString& locale) { setLanguage(locale); } }));
    m_options.addOptionFactory(new CommunicationOptionFactory(m_settings));
}

void Workbench::connectActions()
{
    const auto on = [this](const char* name, auto slot) {
        connect(m_actions.action(QLatin1String(name)), &QAction::triggered, this, slot);
    };
    on("file.new", [this] { m_flows.newProject(); });
    on("file.open", [this] { m_flows.chooseAndOpen(); });
    on("file.save", [this] { m_flows.save(); });
    on("file.saveAll", [this] { m_flows.saveAll(); });
    on("file.saveAs", [this] { m_flows.saveAs(); });
    on("file.closeEditor", [this] { m_flows.closeEditor(); });
    on("file.closeProject", [this] { m_flows.closeProject(); });
    on("file.quit", [this] { m_window.close(); });
    on("edit.find", [this] { m_find.showPanel(); });
    on("edit.findNext", [this] { m_find.step(1); });
    on("edit.findPrevious", [this] { m_find.step(-1); });
    on("project.compare", [this] { m_comparisonFlows.chooseAndCompare(); });
    on("project.controller", [this] { m_flows.changeController(); });
    on("tools.options", [this] { m_options.exec(QString()); });
    on("tools.plugins", [this] { showPlugins(); });
    on("help.about", [this] { showAbout(); });
}

void Workbench::connectPanels()
{
    OutputPanel& output = m_window.output();
    connect(&m_log, &LogManager::lineWritten, &output, &OutputPanel::addLine);
    connect(m_bubble, &RefusalBubble::refused, this, [this](const QString& text) { m_log.report(LogWarning, text); });
    connect(&m_window.problems(), &ProblemsPanel::placeChosen, &m_workspace, &Workspace::showSource);
    connect(&m_workspace, &Workspace::sourcesChanged, this, [this] {
        m_window.problems().show(m_workspace.project()->name());
        if (m_window.problems().count() > 0)
            m_window.toolWindows().showToolWindow(QStringLiteral("problems"));
    });
    connect(&m_workspace, &Workspace::closed, this, [this] { m_window.problems().show(QString()); });
    connect(&m_window.startPage(), &StartPage::newRequested, &m_flows, &ProjectFlows::newProject);
    connect(&m_window.startPage(), &StartPage::openRequested, &m_flows, &ProjectFlows::chooseAndOpen);
    connect(&m_window.startPage(), &StartPage::recentRequested, &m_flows, &ProjectFlows::open);
    connect(&m_window, &MainWindow::recentChosen, &m_flows, &ProjectFlows::open);
    connect(&m_window, &MainWindow::escapePressed, &m_application, &IApplication::key_escape);
    connect(&m_window, &MainWindow::aboutToClose, &m_application, &IApplication::aboutToClse);
    connect(&m_window, &MainWindow::fileDropped, &m_application, &IApplication::fileDropped);
    connect(&m_window, &MainWindow::fileDropped, &m_flows, &ProjectFlows::open);
    connect(&m_connection, &Transfer::onlineState, &m_window, &MainWindow::setOnline);
    m_window.setMayClose([this] {
        const bool may = m_flows.mayLeave();
        if (may)
            shutDown();
        return may;
    });
    m_editors.setAskUnsaved([this](const QStringList& names) { return m_flows.askUnsaved(names); });
}

void Workbench::addCurvePanel()
{
    const QString name = QStringLiteral("curves");
    auto* panel = new CurvePanel(m_monitor);
    m_window.toolWindows().addToolWindow(name, panel->windowTitle(), panel);
    QDockWidget* dock = m_window.toolWindows().panel(name);
    connect(panel, &QWidget::windowTitleChanged, dock, &QDockWidget::setWindowTitle);
    connect(panel, &CurvePanel::reported, &m_log, &LogManager::report);
    m_window.toolWindows().showToolWindow(QStringLiteral("output"));
    if (auto* menu = m_window.findChild<QMenu*>(QStringLiteral("viewMenu")))
        menu->addAction(dock->toggleViewAction());
    m_monitor.readFrom(&m_online.session().connection());
    m_monitor.setAxisNames([this](int axisNo) { return axisNameOf(m_workspace.project(), axisNo); });
    connect(m_undo.stack(), &QUndoStack::indexChanged, &m_monitor, &VariableMonitor::axesChanged);
    connect(&m_workspace, &Workspace::closed, &m_monitor, &VariableMonitor::forgetAll);
}

void Workbench::connectTree()
{
    connect(&m_tree, &Solution::View::nodeEvent, this, &Workbench::onNodeEvent);
    connect(&m_window.tree(), &ProjectTreeView::openRequested, this, [this](const QString& file, const QString& type) {
        if (IEditor* editor = m_editors.openEditor(file, type))
            m_editors.activateEditor(editor);
    });
    connect(m_undo.stack(), &QUndoStack::indexChanged, &m_editors, &EditorManager::refreshTitles);
    connect(m_tree.model(), &QAbstractItemModel::rowsInserted, &m_editors, &EditorManager::refreshTitles);
    connect(m_tree.model(), &QAbstractItemModel::rowsRemoved, &m_editors, &EditorManager::refreshTitles);
    connect(&m_workspace, &Workspace::opened, this, [this] {
        // Two levels: the project's parts, and what plug-ins have put below them.
        m_window.tree().expandToDepth(2);
        m_window.tree().select(m_workspace.configurationPath());
        showProjectState();
    });
    connect(&m_workspace, &Workspace::closed, this, &Workbench::showProjectState);
    connect(&m_workspace, &Workspace::modifiedChanged, this, &Workbench::showProjectState);
    connect(&m_workspace, &Workspace::controllerChanged, this, &Workbench::showProjectState);
}

void Workbench::onNodeEvent(const QString& path, Solution::NodeEvent event, const QVariant& param)
{
    if (event != Solution::NodeContextMenu)
        return;
    const QString type = m_tree.nodeProperty(path, QStringLiteral("NodeType"), QString()).toString();
    QStringList names;
    if (type == QLatin1String("ProjectNode"))
        names << QStringLiteral("file.saveAll") << QStringLiteral("file.saveAs") << QStringLiteral("project.controller")
              << QStringLiteral("file.closeProject");
    else if (type == QLatin1String("ConfigurationNode"))
        names << QStringLiteral("project.controller");
    if (names.isEmpty())
        return;
    QMenu menu;
    for (const QString& name : qAsConst(names))
        menu.addAction(m_actions.action(name));
    menu.exec(param.toPoint());
}

void Workbench::start()
{
    if (m_running)
        return;
    m_running = true;
    m_window.setRecent(m_flows.recent());
    for (const QString& problem : m_catalog.problems())
        m_log.report(LogError, problem);
    m_plugins.load(m_paths.pluginDirectory, m_settings.value(switchedOffKey(), QStringList()).toStringList());
    m_language.addModules(m_plugins.modulePaths());
    m_plugins.setLanguage(language());
    emit m_application.loaded();
    m_session.restoreWindow();
    m_window.show();
}

void Workbench::openFirst(const QString& file)
{
    const QString last = m_session.lastProject();
    if (!file.isEmpty())
        m_flows.open(file);
    else if (!last.isEmpty() && QFileInfo::exists(last))
        m_flows.open(last);
    m_session.restoreEditors();
}

void Workbench::shutDown()
{
    if (!m_running)
        return;
    m_running = false;
    emit m_application.aboutToQuit();
    m_session.saveWindow();
    m_session.saveProject();
    m_workspace.close();
    m_editors.closeAllEditors();
    // Editors go with their factories at the latest; here they go while their services still stand.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_editors.forgetFactories();
    m_comparators.clear();
    m_options.clear();
    m_online.shutDown();
    m_application.withdrawAll();
    m_plugins.shutDown();
    m_settings.flush();
}

QString Workbench::theme() const
{
    return m_settings.value(Solution::ConfigKey::theme(), Solution::ThemeName::light()).toString();
}

void Workbench::setTheme(const QString& theme)
{
    if (theme == this->theme())
        return;
    m_settings.setValue(Solution::ConfigKey::theme(), theme);
    m_cookies.setValue(Solution::ConfigKey::theme(), theme);
    Theme::apply(theme);
    openUnchangedAnew();
}

void Workbench::openUnchangedAnew()
{
    // Pages choose their pictures by the theme when they are built. What the user is at is left alone.
    if (m_connection.isOnline() || m_comparison.isOn())
        return;
    const QVector<EditorManager::OpenFile> files = m_editors.openFiles();
    const QString current = m_editors.currentEditor() ? m_editors.currentEditor()->nodePath() : QString();
    const QVector<IEditor*> open = m_editors.editors();
    for (IEditor* editor : open) {
        if (!editor->isModified())
            m_editors.closeEditor(editor);
    }
    m_workspace.openEditors(files, current);
}

QString Workbench::language() const
{
    return m_settings.value(Solution::ConfigKey::language(), QStringLiteral("en_US")).toString();
}

void Workbench::setLanguage(const QString& locale)
{
    if (locale == language())
        return;
    // Closing the editors would end the debug sessions of their axes.
    if (m_connection.isOnline()) {
        m_log.report(LogWarning, tr("The language stays as it is until the controller is disconnected."));
        return;
    }
    // Editors write their titles once. They are opened anew, and opening stores what they show.
    const QVector<EditorManager::OpenFile> files = m_editors.openFiles();
    const QString current = m_editors.currentEditor() ? m_editors.currentEditor()->nodePath() : QString();
    if (!m_editors.closeAsking(m_editors.editors()))
        return;
    m_settings.setValue(Solution::ConfigKey::language(), locale);
    m_language.install(locale);
    m_plugins.setLanguage(locale);
    // Plug-ins hear of the option page that is being applied first: they may describe their nodes by another of its
    // choices, the theme.
    QMetaObject::invokeMethod(
        &m_workspace,
        [this, files, current] {
            m_workspace.showAnew();
            m_workspace.openEditors(files, current);
        },
        Qt::QueuedConnection);
}

void Workbench::showProjectState()
{
    MainWindow::ProjectState state;
    if (const ProjectModel* project = m_workspace.project()) {
        state.open = true;
        state.modified = project->isModified();
        state.readOnly = project->isReadOnly();
        state.name = project->name();
        state.filePath = project->filePath();
        state.controller = project->controller().model();
    }
    m_window.setProjectState(state);
}

void Workbench::showPlugins()
{
    PluginListDialog dialog(
        m_plugins, language(), m_settings.value(switchedOffKey(), QStringList()).toStringList(), &m_window);
    if (dialog.exec() == QDialog::Accepted)
        m_settings.setValue(switchedOffKey(), dialog.switchedOff());
}

void Workbench::showAbout()
{
    QMessageBox box(QMessageBox::NoIcon, tr("About Kestrun"),
        tr("Kestrun %1\n\nA workbench for controllers and their motion axes.").arg(QApplication::applicationVersion()),
        QMessageBox::Ok, &m_window);
    box.setIconPixmap(QIcon::fromTheme(QStringLiteral("project-development")).pixmap(48, 48));
    box.exec();
}
