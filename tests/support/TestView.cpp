#include "tests/support/TestView.h"

#include "tests/support/CallLog.h"

#include <algorithm>

namespace {

bool hasKey(const Solution::NodeDescription& node, const QString& kind, const QString& word, unsigned id)
{
    return node.properties.value(kind).toString() == word && node.properties.contains(QStringLiteral("DataBaseKey"))
        && node.properties.value(QStringLiteral("DataBaseKey")).toUInt() == id;
}

} // namespace

TestView::TestView(CallLog& log) : m_log(log) { }

TestView::~TestView() = default;

void TestView::addProject(const QString& projectName)
{
    Solution::NodeDescription project;
    project.name = projectName;
    Solution::NodeDescription configuration;
    configuration.name = QStringLiteral("ConfigAndSetup");
    insert(&m_root, static_cast<int>(m_root.children.size()), project);
    insert(m_root.children.back().get(), 0, configuration);
}

const Solution::NodeDescription* TestView::node(const QString& path) const
{
    const Node* found = path.isEmpty() ? nullptr : find(path);
    return found ? &found->description : nullptr;
}

bool TestView::addNode(const QString& parentPath, const Solution::NodeDescription& node, int flags)
{
    m_log.add("view.addNode", { parentPath, node.name, QString::number(flags) });
    Node* parent = find(parentPath);
    return insert(parent, parent ? static_cast<int>(parent->children.size()) : 0, node);
}

bool TestView::insertNode(const QString& parentPath, int row, const Solution::NodeDescription& node)
{
    m_log.add("view.insertNode", { parentPath, QString::number(row), node.name });
    return insert(find(parentPath), row, node);
}

bool TestView::removeNode(const QString& path, bool withIndex)
{
    m_log.add("view.removeNode", { path, CallLog::text(withIndex) });
    Node* node = path.isEmpty() ? nullptr : find(path);
    if (!node)
        return false;
    auto& siblings = node->parent->children;
    siblings.erase(siblings.begin() + rowOf(node));
    return true;
}

void TestView::setNodeProperty(const QString& path, const QString& key, const QVariant& value)
{
    m_log.add("view.setNodeProperty", { path, key, value.toString() });
    Node* node = find(path);
    if (!node)
        return;
    if (key == QLatin1String("DisplayName"))
        node->description.displayText = value.toString();
    else if (key == QLatin1String("Icon"))
        node->description.icon = value.value<QIcon>();
    else
        node->description.properties.insert(key, value);
}

QVariant TestView::nodeProperty(const QString& path, const QString& key, const QVariant& fallback)
{
    m_log.add("view.nodeProperty", { path, key });
    const Node* node = find(path);
    if (!node)
        return fallback;
    if (key == QLatin1String("DisplayName"))
        return node->description.displayText;
    return node->description.properties.value(key, fallback);
}

QStringList TestView::childNodes(const QString& path)
{
    m_log.add("view.childNodes", { path });
    QStringList paths;
    if (const Node* node = find(path)) {
        for (const auto& child : node->children)
            paths.append(pathOf(child.get()));
    }
    return paths;
}

int TestView::nodeRow(const QString& path)
{
    m_log.add("view.nodeRow", { path });
    const Node* node = path.isEmpty() ? nullptr : find(path);
    return node ? rowOf(node) : -1;
}

QString TestView::fileNameOf(const QString& mimeType, unsigned id)
{
    m_log.add("view.fileNameOf", { mimeType, QString::number(id) });
    const Node* node = search(m_root, [&mimeType, id](const Solution::NodeDescription& description) {
        return hasKey(description, QStringLiteral("MimeType"), mimeType, id);
    });
    return node ? node->description.properties.value(QStringLiteral("FileName")).toString() : QString();
}

QString TestView::nodePathOfFile(const QString& fileName, bool currentProjectFirst)
{
    m_log.add("view.nodePathOfFile", { fileName, CallLog::text(currentProjectFirst) });
    if (fileName.isEmpty())
        return {};
    const Node* node = search(m_root, [&fileName](const Solution::NodeDescription& description) {
        return description.properties.value(QStringLiteral("FileName")).toString() == fileName;
    });
    return node ? pathOf(node) : QString();
}

QString TestView::nodePathOfKey(const QString& nodeType, unsigned id)
{
    m_log.add("view.nodePathOfKey", { nodeType, QString::number(id) });
    const Node* node = search(m_root, [&nodeType, id](const Solution::NodeDescription& description) {
        return hasKey(description, QStringLiteral("NodeType"), nodeType, id);
    });
    return node ? pathOf(node) : QString();
}

TestView::Node* TestView::find(const QString& path) const
{
    auto* node = const_cast<Node*>(&m_root);
    if (path.isEmpty())
        return node;
    const QStringList segments = path.split(QLatin1Char('.'));
    for (const QString& segment : segments) {
        const auto child = std::find_if(node->children.begin(), node->children.end(),
            [&segment](const std::unique_ptr<Node>& candidate) { return candidate->description.name == segment; });
        if (child == node->children.end())
            return nullptr;
        node = child->get();
    }
    return node;
}

bool TestView::insert(Node* parent, int row, const Solution::NodeDescription& description)
{
    if (!parent)
        return false;
    auto node = std::make_unique<Node>();
    node->description = description;
    node->parent = parent;
    auto& siblings = parent->children;
    const int count = static_cast<int>(siblings.size());
    const int place = row < 0 || row > count ? count : row;
    siblings.insert(siblings.begin() + place, std::move(node));
    return true;
}

int TestView::rowOf(const Node* node)
{
    const auto& siblings = node->parent->children;
    const auto place = std::find_if(siblings.begin(), siblings.end(),
        [node](const std::unique_ptr<Node>& candidate) { return candidate.get() == node; });
    return static_cast<int>(place - siblings.begin());
}

QString TestView::pathOf(const Node* node)
{
    QStringList segments;
    for (; node->parent; node = node->parent)
        segments.prepend(node->description.name);
    return segments.join(QLatin1Char('.'));
}

const TestView::Node* TestView::search(const Node& node, const Match& match)
{
    for (const auto& child : node.children) {
        if (match(child->description))
            return child.get();
        if (const Node* found = search(*child, match))
            return found;
    }
    return nullptr;
}
