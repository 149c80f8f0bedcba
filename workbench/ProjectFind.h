#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class EditorManager;
class IEditorFinder;
class ProjectTree;

/// What is looked for.
struct FindRequest {
    QString text;
    bool wholeWord = false;
    bool caseSensitive = false;
    bool backwards = false;
};

/// A place that a finder has named.
struct FoundPlace {
    QString nodePath;
    /// Name of the node as a user reads it.
    QString objectName;
    /// What stands at the place.
    QString text;
    /// The place as a user reads it.
    QString label;
    /// The place, as IEditor::gotoLocation takes it.
    QString location;
    /// The variable that is used there; empty for a place that a text has found.
    QString variable;
};

/// What has become of a place since it was found.
struct CurrentPlace {
    /// Where it is now, or where it would be.
    QString location;
    /// False when what was found does not stand there any more, or is not in use there.
    bool holds = true;
};

/// What a search has come to.
struct FindOutcome {
    QVector<FoundPlace> places;
    /// What went wrong with single objects, for the user.
    QStringList problems;
    /// How many objects have been looked through.
    int objects = 0;
    /// Nodes that could not be searched for a text, since their editors were never built.
    QStringList unsearched;
};

/// Searches the objects of the project tree through the finders of their editors' factories. Objects whose factory has
/// no finder are passed over. Main thread only.
class ProjectFind {
    Q_DECLARE_TR_FUNCTIONS(ProjectFind)

public:
    /// So many answers of one finder are taken; one that goes on does not come to an end by itself.
    static constexpr int maximumAnswers = 1000;

    ProjectFind(ProjectTree& tree, const EditorManager& editors);

    /// Looks through all objects below a node, in the order of the tree or against it. Finders know places only where
    /// an editor was built once. An object that never had one takes over what the editor of another one has left; if
    /// there is none, an editor is built here and goes at once, unseen. Either leaves view information in memory and
    /// changes and stores nothing else. While a controller is connected no editor is built, since it might turn to the
    /// controller.
    FindOutcome findBelow(const QString& path, const FindRequest& request) const;
    /// Looks through one object, from the place on where the user is in it, and around to that place.
    FindOutcome findIn(const QString& nodePath, const FindRequest& request) const;
    /// The uses of a variable in all objects below a node, under any of its paths.
    FindOutcome findReferences(const QString& path, const QStringList& variablePaths) const;
    /// A place now that its editor is open: a finder may have named it without knowing the control.
    CurrentPlace currentPlace(const FoundPlace& place) const;

private:
    void collect(const QString& path, QStringList* nodes) const;
    std::unique_ptr<IEditorFinder> finderFor(const QString& nodePath) const;
    bool prepare(const QString& nodePath) const;
    bool buildUnseen(const QString& nodePath) const;
    void addReferences(IEditorFinder& finder, const QString& variable, FindOutcome* outcome) const;
    void search(IEditorFinder& finder, const QString& text, const QString& from, const QString& end,
        FindOutcome* outcome) const;
    QString startIn(IEditorFinder& finder) const;
    QString formerLocation(IEditorFinder& finder, const FoundPlace& place) const;
    FoundPlace placeAt(const QString& nodePath) const;

    ProjectTree& m_tree;
    const EditorManager& m_editors;
};
