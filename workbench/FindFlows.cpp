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
#include <QGuiApplication>
#include <QSignalBlocker>

namespace {

class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY(WaitCursor)
};

/// Takes the focus from a field on a page that an editor does not show: what is typed there would change the object
/// unseen. False when there was nothing to take.
bool leaveHiddenField(QWidget& view)
{
    QWidget* field = view.focusWidget();
    if (!field || field->isVisibleTo(&view))
        return false;
    // Nothing has been typed in it, so there is nothing to check or to store.
    const QSignalBlocker blocker(field);
    view.setFocus(Qt::OtherFocusReason);
    return true;
}

} // namespace

FindFlows::FindFlows(Workspace& workspace, ProjectTree& tree, EditorManager& editors, MainWindow& window,
    QAction& referencesAction, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_tree(tree), m_editors(editors), m_window(window),
      m_referencesAction(referencesAction), m_panel(window.find()), m_find(tree, editors)
{
    connect(&m_panel, &FindPanel::findRequested, this, &FindFlows::find);
    connect(&m_panel, &FindPanel::referencesRequested, this, &FindFlows::findReferences);
    connect(&m_panel, &FindPanel::openUnsearchedRequested, this, &FindFlows::openUnsearched);
    connect(&m_panel, &FindPanel::placeChosen, this, &FindFlows::goTo);
    connect(&referencesAction, &QAction::triggered, this, &FindFlows::findReferencesAtCursor);
    connect(&editors, &IEditorManager::editorCreated, this, [this](IEditor* editor) {
        if (auto* source = qobject_cast<SourceView*>(editor->widget()))
            source->addAction(&m_referencesAction);
    });
    connect(&workspace, &Workspace::closed, this, &FindFlows::forgetFormerProject);
    connect(&workspace, &Workspace::opened, this, &FindFlows::forgetFormerProject);
}

FindFlows::~FindFlows() = default;

void FindFlows::forgetFormerProject()
{
    const ProjectModel* project = m_workspace.project();
    if (project && project->name() == m_searchedProject)
        return;
    m_unsearched.clear();
    m_panel.clear();
}

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
    m_searchedProject = project->name();
    m_searchedNode.clear();
    if (m_panel.wholeProject()) {
        const WaitCursor cursor;
        outcome = m_find.findBelow(project->name(), m_panel.request());
    } else if (editor) {
        m_searchedNode = editor->nodePath();
        outcome = m_find.findIn(m_searchedNode, m_panel.request());
    }
    m_unsearched = outcome.unsearched;
    m_panel.show(outcome.places, textStatus(outcome));
    m_panel.offerOpening(!m_unsearched.isEmpty());
}

QString FindFlows::textStatus(const FindOutcome& outcome) const
{
    QStringList status{ outcome.objects == 0 ? tr("There is nothing here that can be searched.")
                                             : tr("Places found: %1.").arg(outcome.places.size()) };
    if (!outcome.unsearched.isEmpty())
        status.append(tr("Never opened, so not searched: %1.").arg(outcome.unsearched.size()));
    return (status + outcome.problems).join(QLatin1Char(' '));
}

void FindFlows::openUnsearched()
{
    // What stood in the way may be over.
    find();
    const QStringList nodes = m_unsearched;
    for (const QString& node : nodes)
        openNode(node);
    if (!nodes.isEmpty())
        find();
}

void FindFlows::findReferences()
{
    const ProjectModel* project = m_workspace.project();
    const QString variable = m_panel.variable();
    if (!project || variable.isEmpty())
        return;
    m_searchedProject = project->name();
    m_searchedNode.clear();
    const QString path = variablePath(project->name(), variable);
    const QStringList paths = path.isEmpty() ? QStringList(variable) : pathSpellings(project->name(), path);
    const FindOutcome outcome = m_find.findReferences(project->name(), paths);
    QStringList status{ path.isEmpty() ? tr("The project has no variable %1.").arg(variable)
                                       : tr("Uses of %1: %2.").arg(path).arg(outcome.places.size()) };
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

bool FindFlows::isOfAnotherEditor() const
{
    IEditor* editor = m_editors.currentEditor();
    return !m_searchedNode.isEmpty() && editor && editor->nodePath() != m_searchedNode;
}

void FindFlows::step(int direction)
{
    if (!m_panel.isUpToDate() || isOfAnotherEditor())
        find();
    if (m_panel.places().isEmpty())
        raisePanel();
    m_panel.step(direction);
}

IEditor* FindFlows::openNode(const QString& nodePath)
{
    const QString file = m_tree.nodeProperty(nodePath, QStringLiteral("FileName"), QString()).toString();
    const QString type = m_tree.nodeProperty(nodePath, QStringLiteral("MimeType"), QString()).toString();
    return file.isEmpty() ? nullptr : m_editors.openEditor(file, type);
}

void FindFlows::goTo(const FoundPlace& place)
{
    IEditor* editor = openNode(place.nodePath);
    if (!editor)
        return tell(tr("%1 is not in the project any more.").arg(place.objectName));
    m_editors.activateEditor(editor);
    // The editor may have been built just now, and only with it did the place get its name.
    editor->gotoLocation(m_find.currentLocation(place));
    if (leaveHiddenField(*editor->widget()))
        tell(tr("The page of this place is not shown for the type of %1.").arg(place.objectName));
}

void FindFlows::tell(const QString& note)
{
    m_panel.showNote(note);
    raisePanel();
}
