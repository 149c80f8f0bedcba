#include "workbench/ComparisonFlows.h"

#include "host/projectmodel/ProjectModel.h"
#include "sdk/IEditor.h"
#include "workbench/ComparisonPanel.h"
#include "workbench/EditorManager.h"
#include "workbench/LogManager.h"
#include "workbench/MainWindow.h"
#include "workbench/MessageBar.h"
#include "workbench/NewProjectDialog.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/Workspace.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

ComparisonFlows::ComparisonFlows(ProjectComparison& comparison, Workspace& workspace, EditorManager& editors,
    MainWindow& window, LogManager& log, QAction& stopAction, QObject* parent)
    : QObject(parent), m_comparison(comparison), m_workspace(workspace), m_editors(editors), m_window(window),
      m_log(log), m_stopAction(stopAction)
{
    const ComparisonPanel& panel = window.comparison();
    connect(&panel, &ComparisonPanel::compareRequested, this, &ComparisonFlows::chooseAndCompare);
    connect(&panel, &ComparisonPanel::stopRequested, &comparison, &ProjectComparison::stop);
    connect(&panel, &ComparisonPanel::axisChosen, this, &ComparisonFlows::openAxis);
    connect(&stopAction, &QAction::triggered, &comparison, &ProjectComparison::stop);
    connect(&comparison, &ProjectComparison::changed, this, &ComparisonFlows::show);
    connect(&workspace, &Workspace::aboutToUse, &comparison, &ProjectComparison::giveUp);
    // The project may have another name now.
    connect(&workspace, &Workspace::opened, &comparison, &ProjectComparison::refresh);
    connect(&workspace, &Workspace::opened, this, &ComparisonFlows::show);
    connect(&workspace, &Workspace::closed, this, &ComparisonFlows::show);
    show();
}

ComparisonFlows::~ComparisonFlows() = default;

void ComparisonFlows::chooseAndCompare()
{
    if (!m_workspace.project())
        return;
    const QString file = QFileDialog::getOpenFileName(&m_window, tr("Compare with project"),
        QFileInfo(m_workspace.project()->filePath()).absolutePath(),
        tr("Kestrun projects (*%1)").arg(NewProjectDialog::fileEnding()));
    if (!file.isEmpty())
        compare(file);
}

bool ComparisonFlows::compare(const QString& file)
{
    ProjectModel* project = m_workspace.project();
    if (!project)
        return false;
    QString error;
    if (!m_comparison.start(*project, QFileInfo(file).absoluteFilePath(), &error)) {
        m_log.report(LogError, error);
        m_window.messageBar().showMessage(error, QString());
        return false;
    }
    m_log.report(LogInfo, tr("Comparing with %1.").arg(QDir::toNativeSeparators(file)));
    m_window.toolWindows().showToolWindow(QStringLiteral("comparison"));
    return true;
}

void ComparisonFlows::show()
{
    const ProjectModel* project = m_workspace.project();
    m_stopAction.setEnabled(m_comparison.isOn());
    m_window.comparison().setProjectOpen(project);
    m_window.comparison().show(&m_comparison, project ? project->name() : QString());
}

void ComparisonFlows::openAxis(const ComparedAxis& axis)
{
    const QString path = m_comparison.nodePath(axis);
    if (path.isEmpty())
        return;
    if (IEditor* editor = m_editors.openEditor(path, QStringLiteral("AxisView")))
        m_editors.activateEditor(editor);
}
