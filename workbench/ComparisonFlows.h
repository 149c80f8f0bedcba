#pragma once

#include "workbench/ProjectComparison.h"

class EditorManager;
class LogManager;
class MainWindow;
class QAction;
class Workspace;

/// What a user does with a comparison: begin it with a file, look at an axis, end it. Failures stand in the message bar
/// and the output panel.
class ComparisonFlows : public QObject {
    Q_OBJECT

public:
    /// The action ends a comparison and is enabled while one is on.
    ComparisonFlows(ProjectComparison& comparison, Workspace& workspace, EditorManager& editors, MainWindow& window,
        LogManager& log, QAction& stopAction, QObject* parent = nullptr);
    ~ComparisonFlows() override;

    void chooseAndCompare();
    /// True when the comparison is on afterwards.
    bool compare(const QString& file);

private:
    void show();
    void openAxis(const ComparedAxis& axis);

    ProjectComparison& m_comparison;
    Workspace& m_workspace;
    EditorManager& m_editors;
    MainWindow& m_window;
    LogManager& m_log;
    QAction& m_stopAction;
};
