#include "workbench/FindFlows.h"

#include "host/projectmodel/ProjectModel.h"
#include "sdk/IEditor.h"
#include "workbench/EditorManager.h"
#include "workbench/FindPanel.h"
#include "workbench/MainWindow.h"
#include "workbench/ProjectTree.h"
#include "workbench/SourceView.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/VariablePlace.h"
#include "workbench/Workspace.h"

#include <QAction>

FindFlows::FindFlows(Workspace& workspace, ProjectTree& tree, EditorManager& editors, MainWindow& window,
    QAction& referencesAction, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_tree(tree), m_editors(editors), m_window(window),
      m_referencesAction(referencesAction), m_panel(window.find()), m_find(tree, editors)
{
    connect(&m_panel, &FindPanel::findRequested, this, &FindFlows::find);
    connect(&m_panel, &FindPanel::referencesRequested, this, &FindFlows::findReferences);
    connect(&m_panel, &FindPanel::placeChosen, this, &FindFlows::goTo);
    connect(&referencesAction, &QAction::triggered, this, &FindFlows::findReferencesAtCursor);
    connect(&editors, &IEditorManager::editorCreated, this, [this](IEditor* editor) {
        if (auto* source = qobject_cast<SourceView*>(editor->widget()))
            source->addAction(&m_referencesAction);
    });
    // Places of a project that has gone lead nowhere.
    connect(&workspace, &Workspace::closed, &m_panel, &FindPanel::clear);
}

FindFlows::~FindFlows() = default;

void FindFlows::raisePanel()
{
    m_window.toolWindows().showToolWindow(QStringLiteral("find"));
}

void FindFlows::showPanel()
{
    raisePanel();
    m_panel.editText();
}

void FindFlows::find()
{
    const ProjectModel* project = m_workspace.project();
    if (!project || m_panel.request().text.isEmpty())
        return;
    IEditor* editor = m_editors.currentEditor();
    FindOutcome outcome;
    if (m_panel.wholeProject())
        outcome = m_find.findBelow(project->name(), m_panel.request());
    else if (editor)
        outcome = m_find.findIn(editor->nodePath(), m_panel.request());
    QStringList status{ outcome.objects == 0 ? tr("There is nothing here that can be searched.")
                                             : tr("Places found: %1.").arg(outcome.places.size()) };
    m_panel.show(outcome.places, (status + outcome.problems).join(QLatin1Char(' ')));
}

void FindFlows::findReferences()
{
    const ProjectModel* project = m_workspace.project();
    const QString variable = m_panel.variable();
    if (!project || variable.isEmpty())
        return;
    const FindOutcome outcome = m_find.findReferences(project->name(), variable);
    QStringList status{ isVariable(project->name(), variable)
            ? tr("Uses of %1: %2.").arg(variable).arg(outcome.places.size())
            : tr("The project has no variable %1.").arg(variable) };
    m_panel.show(outcome.places, (status + outcome.problems).join(QLatin1Char(' ')));
}

QString FindFlows::variableAtCursor() const
{
    IEditor* editor = m_editors.currentEditor();
    const auto* source = editor ? qobject_cast<SourceView*>(editor->widget()) : nullptr;
    if (!source || !m_workspace.project())
        return {};
    const VariablePlace place{ m_workspace.project()->name(), editor->displayName(),
        source->textCursor().blockNumber() + 1, source->nameAtCursor() };
    const QString path = variablePathAt(place);
    return path.isEmpty() ? place.written : path;
}

void FindFlows::findReferencesAtCursor()
{
    const QString variable = variableAtCursor();
    raisePanel();
    if (variable.isEmpty())
        return m_panel.editVariable();
    m_panel.setVariable(variable);
    findReferences();
}

void FindFlows::step(int direction)
{
    if (!m_panel.isUpToDate())
        find();
    if (m_panel.places().isEmpty())
        raisePanel();
    m_panel.step(direction);
}

void FindFlows::goTo(const FoundPlace& place)
{
    const QString file = m_tree.nodeProperty(place.nodePath, QStringLiteral("FileName"), QString()).toString();
    const QString type = m_tree.nodeProperty(place.nodePath, QStringLiteral("MimeType"), QString()).toString();
    IEditor* editor = file.isEmpty() ? nullptr : m_editors.openEditor(file, type);
    if (!editor)
        return m_panel.showStatus(tr("%1 is not in the project any more.").arg(place.objectName));
    m_editors.activateEditor(editor);
    editor->gotoLocation(place.location);
}
