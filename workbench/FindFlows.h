#pragma once

#include "workbench/ProjectFind.h"
#include "workbench/ProjectWatch.h"

#include <QObject>

class FindPanel;
class IEditor;
class MainWindow;
struct NamedVariable;
class ProjectTree;
class QAction;
class Workspace;

/// A search as it was asked for, so that it can be made again.
struct FindQuestion {
    enum class Kind { None, Text, Uses };
    Kind kind = Kind::None;
    /// Name of the project.
    QString project;
    FindRequest request;
    /// The text is looked for in one editor, that of the node; the node is empty when none was open.
    bool inEditor = false;
    QString node;
    QString variable;
};

/// What a user does to find: open the panel, search, ask for the uses of a variable, go from place to place.
class FindFlows : public QObject {
    Q_OBJECT

public:
    /// The action asks for the uses of the variable under the cursor; source views offer it in their menus.
    FindFlows(Workspace& workspace, ProjectTree& tree, EditorManager& editors, MainWindow& window,
        QAction& referencesAction, QObject* parent = nullptr);
    ~FindFlows() override;

    /// Shows the panel, ready to be typed into.
    void showPanel();
    /// Searches for what stands in the panel.
    void find();
    /// Lists the uses of the variable that stands in the panel.
    void findReferences();
    /// The same for the variable under the cursor of the current source; without one the panel asks for it.
    void findReferencesAtCursor();
    /// Goes to the next place (1) or the one before (-1); searches first if the panel says something new or the
    /// project has changed. What is being typed in an editor counts.
    void step(int direction);

private:
    void goTo(const FoundPlace& place);
    /// Says something of a place where the user sees it.
    void tell(const QString& note);
    void ask(const FindQuestion& question);
    /// Asks the last question again; the direction is that of the step that comes next, 0 when only the language is
    /// new.
    void askAgain(int direction);
    struct Answer {
        QVector<FoundPlace> places;
        QString status;
    };
    Answer answer();
    Answer answerText();
    Answer answerUses() const;
    /// The list is one of what the project holds now.
    void noteSearched();
    QString currentNode() const;
    /// Places of a project that has gone lead nowhere.
    void forgetFormerProject();
    /// The same project may have another name now: what was asked and found goes by that one.
    void takeProjectName();
    /// The list is of another editor than the one that is to be searched.
    bool isOfAnotherEditor() const;
    /// Takes the focus from a field in which nothing has been typed, without its page taking that for an input.
    void leaveUntouchedField();
    IEditor* openNode(const QString& nodePath);
    /// Opens what the last search had to leave out, and searches again.
    void openUnsearched();
    QString textStatus(const FindOutcome& outcome) const;
    QString usesStatus(const NamedVariable& variable, int uses) const;
    void raisePanel();
    QString variableAtCursor() const;

    Workspace& m_workspace;
    ProjectTree& m_tree;
    EditorManager& m_editors;
    MainWindow& m_window;
    QAction& m_referencesAction;
    FindPanel& m_panel;
    ProjectFind m_find;
    ProjectWatch m_watch;
    FindQuestion m_question;
    /// The project has changed since the question was answered.
    bool m_stale = false;
    /// What the project held then.
    ProjectContents m_searched;
    /// Nodes that the last search had to leave out.
    QStringList m_unsearched;
};
