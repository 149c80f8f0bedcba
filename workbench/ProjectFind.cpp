#include "workbench/ProjectFind.h"

#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/AxisTrial.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "sdk/IEditorFinder.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/Transfer.h"
#include "workbench/EditorManager.h"
#include "workbench/ProjectObjects.h"
#include "workbench/ProjectTree.h"

#include <algorithm>

namespace {

int flagsOf(const FindRequest& request)
{
    return (request.wholeWord ? FindWholeWord : 0) | (request.caseSensitive ? FindCaseSensitive : 0)
        | (request.backwards ? FindBackwards : 0);
}

bool isSamePlace(const FoundPlace& a, const FoundPlace& b)
{
    return a.nodePath == b.nodePath && a.location == b.location && a.label == b.label && a.text == b.text;
}

/// Adds a place unless it is there already. Places of one object stand together, at the end.
void add(FindOutcome* outcome, const FoundPlace& place)
{
    for (auto each = outcome->places.rbegin(); each != outcome->places.rend(); ++each) {
        if (each->nodePath != place.nodePath)
            break;
        if (isSamePlace(*each, place))
            return;
    }
    outcome->places.append(place);
}

/// The first part of a location; none when it was not known.
QString page(const QString& location)
{
    return location.section(QLatin1Char('.'), 0, 0).trimmed();
}

/// The label without what stands at the place.
QString title(const FoundPlace& place)
{
    return place.label.endsWith(place.text) ? place.label.chopped(place.text.size()) : place.label;
}

bool isOnline()
{
    auto* transfer = Solution::serviceAs<Transfer>(Solution::ServiceKey::transfer());
    return transfer && transfer->isOnline();
}

} // namespace

ProjectFind::ProjectFind(ProjectTree& tree, const EditorManager& editors) : m_tree(tree), m_editors(editors) { }

void ProjectFind::collect(const QString& path, QStringList* nodes) const
{
    nodes->append(path);
    const QStringList children = m_tree.childNodes(path);
    for (const QString& child : children)
        collect(child, nodes);
}

std::unique_ptr<IEditorFinder> ProjectFind::finderFor(const QString& nodePath) const
{
    const QString type = m_tree.nodeProperty(nodePath, QStringLiteral("MimeType"), QString()).toString();
    IEditorFactory* factory = type.isEmpty() ? nullptr : m_editors.factory(type);
    std::unique_ptr<IEditorFinder> finder(factory ? factory->createFinder() : nullptr);
    return finder && finder->bindNode(nodePath) ? std::move(finder) : nullptr;
}

FoundPlace ProjectFind::placeAt(const QString& nodePath) const
{
    FoundPlace place;
    place.nodePath = nodePath;
    place.objectName = m_tree.nodeProperty(nodePath, QStringLiteral("DisplayName"), nodePath).toString();
    return place;
}

FindOutcome ProjectFind::findBelow(const QString& path, const FindRequest& request) const
{
    QStringList nodes;
    collect(path, &nodes);
    if (request.backwards)
        std::reverse(nodes.begin(), nodes.end());
    const bool isPrepared = allHaveLeftViewInfo(path.section(QLatin1Char('.'), 0, 0));
    FindOutcome outcome;
    for (const QString& node : qAsConst(nodes)) {
        const std::unique_ptr<IEditorFinder> finder = finderFor(node);
        if (!finder)
            continue;
        if (!isPrepared && !prepare(node))
            outcome.unsearched.append(node);
        finder->setFindFlags(flagsOf(request));
        search(*finder, request.text, QString(), QString(), &outcome);
        ++outcome.objects;
    }
    return outcome;
}

bool ProjectFind::prepare(const QString& nodePath) const
{
    return hasLeftViewInfo(m_tree, nodePath) || borrowViewInfo(m_tree, nodePath)
        || (buildUnseen(nodePath) && hasLeftViewInfo(m_tree, nodePath));
}

bool ProjectFind::buildUnseen(const QString& nodePath) const
{
    auto* axis = qobject_cast<AxisTable*>(objectOfNode(m_tree, nodePath));
    if (!axis || isOnline())
        return false;
    const AxisTrial trial(*axis);
    const QString file = m_tree.nodeProperty(nodePath, QStringLiteral("FileName"), QString()).toString();
    const QString type = m_tree.nodeProperty(nodePath, QStringLiteral("MimeType"), QString()).toString();
    IEditorFactory* factory = m_editors.factory(type);
    const std::unique_ptr<IEditor> editor(factory ? factory->createEditor(file, type) : nullptr);
    return editor != nullptr;
}

FindOutcome ProjectFind::findIn(const QString& nodePath, const FindRequest& request) const
{
    FindOutcome outcome;
    const std::unique_ptr<IEditorFinder> finder = finderFor(nodePath);
    if (!finder)
        return outcome;
    outcome.objects = 1;
    finder->setFindFlags(flagsOf(request) & ~FindWholeWord);
    const QString start = startIn(*finder);
    finder->setFindFlags(flagsOf(request));
    search(*finder, request.text, start, QString(), &outcome);
    if (!start.isEmpty())
        search(*finder, request.text, QString(), start, &outcome);
    return outcome;
}

// A finder may be given only places that it knows. An empty text stands at all of them, so a search for it tells
// whether the place where the user is is one.
QString ProjectFind::startIn(IEditorFinder& finder) const
{
    const QString position = finder.currentPosition();
    FindOutcome all;
    if (!position.isEmpty())
        search(finder, QString(), QString(), QString(), &all);
    const bool known = std::any_of(all.places.begin(), all.places.end(), [&position](const FoundPlace& place) {
        return place.location.section(QLatin1Char('.'), -1).compare(position, Qt::CaseInsensitive) == 0;
    });
    return known ? position : QString();
}

void ProjectFind::search(
    IEditorFinder& finder, const QString& text, const QString& from, const QString& end, FindOutcome* outcome) const
{
    const FoundPlace object = placeAt(finder.nodePath());
    finder.setStartPosition(from);
    finder.setEndPosition(end);
    for (int answer = 0; answer < maximumAnswers; ++answer) {
        if (!finder.findNext(text)) {
            outcome->problems.append(tr("%1 could not be read.").arg(object.objectName));
            return;
        }
        const EditorLocation result = finder.result();
        if (result.atEnd)
            return;
        FoundPlace found = object;
        found.text = result.matchedText;
        found.label = result.label;
        found.location = result.location;
        add(outcome, found);
    }
    outcome->problems.append(tr("The search in %1 did not come to an end and was stopped after %2 places.")
                                 .arg(object.objectName, QString::number(maximumAnswers)));
}

FindOutcome ProjectFind::findReferences(const QString& path, const QStringList& variablePaths) const
{
    QStringList nodes;
    collect(path, &nodes);
    FindOutcome outcome;
    for (const QString& node : qAsConst(nodes)) {
        const std::unique_ptr<IEditorFinder> finder = finderFor(node);
        if (!finder)
            continue;
        ++outcome.objects;
        for (const QString& variable : variablePaths)
            addReferences(*finder, variable, &outcome);
    }
    outcome.problems.removeDuplicates();
    return outcome;
}

void ProjectFind::addReferences(IEditorFinder& finder, const QString& variable, FindOutcome* outcome) const
{
    QVector<FindResult> results;
    if (!finder.findReferences(variable, results))
        outcome->problems.append(tr("%1 could not be read.").arg(placeAt(finder.nodePath()).objectName));
    for (const FindResult& result : qAsConst(results))
        add(outcome,
            { result.nodePath, result.objectName, result.matchedText, result.label, result.location, variable });
}

CurrentPlace ProjectFind::currentPlace(const FoundPlace& place) const
{
    CurrentPlace current{ place.location, true };
    const std::unique_ptr<IEditorFinder> finder = finderFor(place.nodePath);
    if (!finder)
        return current;
    FindOutcome now;
    finder->setFindFlags(0);
    if (place.variable.isEmpty())
        search(*finder, place.text, QString(), QString(), &now);
    else
        addReferences(*finder, place.variable, &now);
    // What cannot be read says nothing of its places.
    current.holds = !now.problems.isEmpty();
    for (const FoundPlace& each : qAsConst(now.places)) {
        if (each.text != place.text)
            continue;
        if (each.location == place.location)
            return { place.location, true };
        if (each.label == place.label)
            current = { each.location, true };
    }
    return current.holds ? current : CurrentPlace{ formerLocation(*finder, place), false };
}

// The place was listed before its control had a name, and now something else stands there. An empty text stands at all
// places, this one among them unless it is switched off.
QString ProjectFind::formerLocation(IEditorFinder& finder, const FoundPlace& place) const
{
    if (!page(place.location).isEmpty())
        return place.location;
    FindOutcome all;
    search(finder, QString(), QString(), QString(), &all);
    const auto isThere = [&place](const FoundPlace& each) { return title(each) == title(place); };
    const auto found = std::find_if(all.places.begin(), all.places.end(), isThere);
    if (found != all.places.end())
        return found->location;
    const auto* axis = qobject_cast<AxisTable*>(objectOfNode(m_tree, place.nodePath));
    return axis ? axis->getViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QString()) : place.location;
}
