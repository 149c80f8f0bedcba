#include "workbench/FindFlows.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
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
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>

#include <algorithm>
#include <vector>

namespace {

class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY(WaitCursor)
};

/// Takes the focus from a field on a page that an editor does not show: what is typed there would change the object
/// unseen.
void leaveHiddenField(QWidget& view)
{
    QWidget* field = view.focusWidget();
    if (!field || field->isVisibleTo(&view))
        return;
    // Nothing has been typed in it, so there is nothing to check or to store.
    const QSignalBlocker blocker(field);
    view.setFocus(Qt::OtherFocusReason);
}

/// A path that begins with the name of a project, under the name that this has now.
QString renamed(const QString& path, const QString& former, const QString& name)
{
    return path.isEmpty() ? path : QString(name + path.mid(former.size()));
}

/// What stands in the axes of a project.
QStringList propertyTexts(const ProjectModel* project)
{
    std::vector<AxisTable*> axes;
    if (project)
        project->axisModel()->allAxisTables(axes);
    QStringList texts;
    for (const AxisTable* axis : axes)
        texts += axis->allProperties().values();
    return texts;
}

/// Leaves the places that have just that name: below a variable that there is, there may be none of it.
void keepOnly(const QString& written, QVector<FoundPlace>* places)
{
    const QString name = withoutBlanks(written);
    const auto differs = [&name](const FoundPlace& place) {
        return withoutBlanks(place.text).compare(name, Qt::CaseInsensitive) != 0;
    };
    places->erase(std::remove_if(places->begin(), places->end(), differs), places->end());
}

/// The field of a place, "page.field", or null.
const QWidget* fieldAt(const QWidget& view, const QString& location)
{
    const QString page = location.section(QLatin1Char('.'), 0, 0);
    const QString field = location.section(QLatin1Char('.'), 1);
    // An empty name would find any widget.
    const auto* content = page.isEmpty() || field.isEmpty() ? nullptr : view.findChild<QWidget*>(page);
    return content ? content->findChild<QWidget*>(field) : nullptr;
}

/// True for a place on a page that an editor does not show; a field that is disabled cannot tell by the focus.
bool isHidden(const QWidget& view, const QString& location)
{
    const QWidget* field = fieldAt(view, location);
    return field && !field->isVisibleTo(&view);
}

} // namespace

FindFlows::FindFlows(Workspace& workspace, ProjectTree& tree, EditorManager& editors, MainWindow& window,
    QAction& referencesAction, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_tree(tree), m_editors(editors), m_window(window),
      m_referencesAction(referencesAction), m_panel(window.find()), m_find(tree, editors), m_watch(workspace)
{
    connect(&m_panel, &FindPanel::findRequested, this, &FindFlows::find);
    connect(&m_panel, &FindPanel::referencesRequested, this, &FindFlows::findReferences);
    connect(&m_panel, &FindPanel::openUnsearchedRequested, this, &FindFlows::openUnsearched);
    connect(&m_panel, &FindPanel::placeChosen, this, &FindFlows::goTo);
    connect(&m_panel, &FindPanel::languageChanged, this, [this] { askAgain(0); });
    connect(&m_watch, &ProjectWatch::changed, this, [this] {
        m_stale = true;
        // Without a list there is nothing to overtake, and axes change at every field that is filled.
        if (m_question.kind != FindQuestion::Kind::None)
            m_panel.setOvertaken(contentsOf(m_workspace.project()) != m_searched);
    });
    connect(&referencesAction, &QAction::triggered, this, &FindFlows::findReferencesAtCursor);
    connect(&editors, &IEditorManager::editorCreated, this, [this](IEditor* editor) {
        if (auto* source = qobject_cast<SourceView*>(editor->widget()))
            source->addAction(&m_referencesAction);
    });
    connect(&workspace, &Workspace::closed, this, &FindFlows::forgetFormerProject);
    connect(&workspace, &Workspace::opened, this, &FindFlows::takeProjectName);
}

FindFlows::~FindFlows() = default;

void FindFlows::forgetFormerProject()
{
    m_question = FindQuestion();
    m_unsearched.clear();
    m_panel.clear();
}

// Any other project opens only after the one before has closed.
void FindFlows::takeProjectName()
{
    const QString name = m_workspace.project()->name();
    const QString former = m_question.project;
    if (former.isEmpty() || name == former)
        return;
    m_question.project = name;
    m_question.node = renamed(m_question.node, former, name);
    for (QString& node : m_unsearched)
        node = renamed(node, former, name);
    m_panel.renameNodes([&](const QString& node) { return renamed(node, former, name); });
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

QString FindFlows::currentNode() const
{
    IEditor* editor = m_editors.currentEditor();
    return editor ? editor->nodePath() : QString();
}

void FindFlows::find()
{
    const ProjectModel* project = m_workspace.project();
    if (!project || m_panel.request().text.isEmpty())
        return;
    FindQuestion question;
    question.kind = FindQuestion::Kind::Text;
    question.project = project->name();
    question.request = m_panel.request();
    question.inEditor = !m_panel.wholeProject();
    question.node = currentNode();
    ask(question);
}

void FindFlows::findReferences()
{
    const ProjectModel* project = m_workspace.project();
    if (!project || m_panel.variable().isEmpty())
        return;
    FindQuestion question;
    question.kind = FindQuestion::Kind::Uses;
    question.project = project->name();
    question.variable = m_panel.variable();
    ask(question);
}

void FindFlows::ask(const FindQuestion& question)
{
    m_question = question;
    const Answer found = answer();
    m_panel.show(found.places, found.status);
    m_panel.offerOpening(!m_unsearched.isEmpty());
}

void FindFlows::askAgain(int direction)
{
    if (m_question.kind == FindQuestion::Kind::None)
        return;
    const Answer found = answer();
    m_panel.showAnew(found.places, found.status, direction);
    m_panel.offerOpening(!m_unsearched.isEmpty());
}

FindFlows::Answer FindFlows::answer()
{
    m_stale = false;
    noteSearched();
    m_unsearched.clear();
    return m_question.kind == FindQuestion::Kind::Text ? answerText() : answerUses();
}

void FindFlows::noteSearched()
{
    m_searched = contentsOf(m_workspace.project());
    m_panel.setOvertaken(false);
}

FindFlows::Answer FindFlows::answerText()
{
    FindOutcome outcome;
    if (!m_question.inEditor) {
        const WaitCursor cursor;
        outcome = m_find.findBelow(m_question.project, m_question.request);
    } else if (!m_question.node.isEmpty()) {
        outcome = m_find.findIn(m_question.node, m_question.request);
    }
    m_unsearched = outcome.unsearched;
    return { outcome.places, textStatus(outcome) };
}

FindFlows::Answer FindFlows::answerUses() const
{
    const NamedVariable variable
        = namedVariable(m_question.project, m_question.variable, propertyTexts(m_workspace.project()));
    FindOutcome outcome = m_find.findReferences(m_question.project, variable.paths);
    if (variable.isBehindPointer)
        keepOnly(variable.path, &outcome.places);
    else if (variable.reach == ac::ACCore::Reach::None)
        keepOnly(m_question.variable, &outcome.places);
    const QStringList status = QStringList(usesStatus(variable, outcome.places.size())) + outcome.problems;
    return { outcome.places, status.join(QLatin1Char(' ')) };
}

QString FindFlows::usesStatus(const NamedVariable& variable, int uses) const
{
    using Reach = ac::ACCore::Reach;
    const QString number = QString::number(uses);
    if (variable.isBehindPointer)
        return tr("What %1 leads to is known only while the program runs. Places that use it as it is written: %2.")
            .arg(variable.path, number);
    switch (variable.reach) {
    case Reach::Variable:
        return tr("Uses of %1: %2.").arg(variable.path, number);
    case Reach::Element:
        return tr("An index of %1 is known only while the program runs. Places that use it as it is written: %2.")
            .arg(variable.path, number);
    case Reach::Stray:
        return tr("The project does not know an index of %1. Places that use it as it is written: %2.")
            .arg(variable.path, number);
    case Reach::Inner:
        return tr("%1 belongs to a function, a block or a type. No place can use it by this name.").arg(variable.path);
    case Reach::None:
        break;
    }
    return uses == 0 ? tr("The project has no variable %1.").arg(m_question.variable)
                     : tr("The project has no variable %1. Places that use it as it is written: %2.")
                           .arg(m_question.variable, number);
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
    askAgain(0);
    const QStringList nodes = m_unsearched;
    for (const QString& node : nodes)
        openNode(node);
    if (!nodes.isEmpty())
        askAgain(0);
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
    return m_question.inEditor && m_editors.currentEditor() && currentNode() != m_question.node;
}

void FindFlows::step(int direction)
{
    const QPointer<QWidget> field = m_editors.finishInput();
    const bool isNew = !m_panel.isUpToDate() && !m_panel.request().text.isEmpty();
    if (isNew || isOfAnotherEditor())
        find();
    // Without a text there is nothing new to ask, and the list is still that of the last question.
    if (m_stale)
        askAgain(direction);
    if (!m_panel.places().isEmpty()) {
        leaveUntouchedField();
        return m_panel.step(direction);
    }
    raisePanel();
    if (field)
        field->setFocus(Qt::OtherFocusReason);
}

void FindFlows::leaveUntouchedField()
{
    QLineEdit* field = m_editors.untouchedField();
    if (!field)
        return;
    // Its page would check and store it again, and ask about what the user has not typed.
    const QSignalBlocker blocker(field);
    m_editors.currentEditor()->widget()->setFocus(Qt::OtherFocusReason);
}

IEditor* FindFlows::openNode(const QString& nodePath)
{
    const QString file = m_tree.nodeProperty(nodePath, QStringLiteral("FileName"), QString()).toString();
    const QString type = m_tree.nodeProperty(nodePath, QStringLiteral("MimeType"), QString()).toString();
    if (file.isEmpty())
        return nullptr;
    const bool isAsSearched = contentsOf(m_workspace.project()) == m_searched;
    IEditor* editor = m_editors.openEditor(file, type);
    // A page that is built corrects what it finds, which no user takes for a change.
    if (isAsSearched)
        noteSearched();
    return editor;
}

void FindFlows::goTo(const FoundPlace& place)
{
    IEditor* editor = openNode(place.nodePath);
    if (!editor)
        return tell(tr("%1 is not in the project any more.").arg(place.objectName));
    m_editors.activateEditor(editor);
    // The editor may have been built just now, and only with it did the place get its name.
    const CurrentPlace current = m_find.currentPlace(place);
    m_panel.correctVisited(current.location);
    editor->gotoLocation(current.location);
    leaveHiddenField(*editor->widget());
    if (isHidden(*editor->widget(), current.location))
        tell(tr("The page of this place is not shown for the type of %1.").arg(place.objectName));
    else if (!current.holds)
        tell(tr("%1 is not in use at this place any more.").arg(place.text));
}

void FindFlows::tell(const QString& note)
{
    m_panel.showNote(note);
    raisePanel();
}
