#pragma once

#include "workbench/ActionManager.h"
#include "workbench/Application.h"
#include "workbench/ComparatorManager.h"
#include "workbench/ComparisonFlows.h"
#include "workbench/Configuration.h"
#include "workbench/ConnectionState.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/DiagnosisTable.h"
#include "workbench/EditorManager.h"
#include "workbench/FindFlows.h"
#include "workbench/Language.h"
#include "workbench/LogManager.h"
#include "workbench/MainWindow.h"
#include "workbench/OptionManager.h"
#include "workbench/PluginManager.h"
#include "workbench/ProjectComparison.h"
#include "workbench/ProjectFlows.h"
#include "workbench/ProjectTree.h"
#include "workbench/RefusalBubble.h"
#include "workbench/Session.h"
#include "workbench/SourceEditor.h"
#include "workbench/UndoHelper.h"
#include "workbench/Workspace.h"
#include "workbench/monitor/VariableMonitor.h"
#include "workbench/online/OnlineSide.h"

#include <QObject>

/// Where the program finds what it works with.
struct WorkbenchPaths {
    QString pluginDirectory;
    QString controllerDirectory;
    /// Empty for the user's own file.
    QString settingsFile;
    /// Program of the built-in controller; empty for the one beside this program.
    QString controllerProgram = QString();

    /// The places that belong to a program in that directory.
    static WorkbenchPaths besideProgram(const QString& programDirectory);
};

/// The whole program: makes the services, publishes them, loads the plug-ins, shows the window, and takes all of it
/// down in the order that plug-ins rely on. Members stand in the order in which they need one another.
class Workbench : public QObject {
    Q_OBJECT

public:
    explicit Workbench(const WorkbenchPaths& paths);
    ~Workbench() override;

    /// Loads the plug-ins and shows the window. Before, no plug-in is there.
    void start();
    /// Opens a project, or the one of the last run if the file is empty and the user was not somewhere else.
    void openFirst(const QString& file);
    /// Closes editors and project, takes the plug-ins out of service and deletes their objects. Can be called again.
    void shutDown();

    MainWindow& window() { return m_window; }
    Workspace& workspace() { return m_workspace; }
    EditorManager& editors() { return m_editors; }
    ProjectTree& tree() { return m_tree; }
    UndoHelper& undo() { return m_undo; }
    PluginManager& plugins() { return m_plugins; }
    ProjectFlows& flows() { return m_flows; }
    FindFlows& find() { return m_find; }
    ProjectComparison& comparison() { return m_comparison; }
    ComparisonFlows& comparisonFlows() { return m_comparisonFlows; }
    Settings& settings() { return m_settings; }
    ConnectionState& connection() { return m_connection; }
    VariableMonitor& monitor() { return m_monitor; }
    ComparatorManager& comparators() { return m_comparators; }
    Application& application() { return m_application; }
    OptionManager& options() { return m_options; }
    OnlineSide& online() { return m_online; }
    QAction* action(const QString& name) { return m_actions.action(name); }

    QString theme() const;
    void setTheme(const QString& theme);
    QString language() const;
    /// Puts the program into another language. Editors with unsaved changes are asked about first; the user may stay.
    void setLanguage(const QString& locale);

private:
    void publishServices();
    void addOptionPages();
    void connectActions();
    void connectPanels();
    void addCurvePanel();
    void connectTree();
    void onNodeEvent(const QString& path, Solution::NodeEvent event, const QVariant& param);
    void openUnchangedAnew();
    void showProjectState();
    void showPlugins();
    void showAbout();

    WorkbenchPaths m_paths;
    Settings m_settings;
    Cookies m_cookies;
    LogManager m_log;
    Language m_language;
    ProjectTree m_tree;
    UndoHelper m_undo;
    ActionManager m_actions;
    ConnectionState m_connection;
    VariableMonitor m_monitor;
    ComparatorManager m_comparators;
    OptionManager m_options;
    ControllerCatalog m_catalog;
    Application m_application;
    EditorManager m_editors;
    SourceEditorFactory m_sourceFactory;
    Workspace m_workspace;
    DiagnosisTable m_diagnosis;
    MainWindow m_window;
    RefusalBubble* m_bubble;
    Session m_session;
    PluginManager m_plugins;
    ProjectFlows m_flows;
    FindFlows m_find;
    ProjectComparison m_comparison;
    ComparisonFlows m_comparisonFlows;
    OnlineSide m_online;
    bool m_running = false;
};
