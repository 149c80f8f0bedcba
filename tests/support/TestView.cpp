#include "tests/support/TestView.h"

#include "tests/support/CallLog.h"

#include <algorithm>

namespace {

QString textOf(const Solution::NodeDescription& node, const char* key)
{
    return node.properties.value(QLatin1String(key)).toString();
}

unsigned dataBaseKey(const Solution::NodeDescription& node)
{
    return node.properties.value(QStringLiteral("DataBaseKey")).toUInt();
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
    insert(QString(), static_cast<int>(m_root.children.size()), project);
    insert(projectName, 0, configuration);
}

const Solution::NodeDescription* TestView::node(const QString& path) const
{
    const Node* found = path.isEmpty() ? nullptr : find(path);
    return found ? &found->description : nullptr;
}

bool TestView::addNode(const QString& parentPath, const Solution::NodeDescription& node, int flags)
{
    m_log.add("view.addNode", { parentPath, node.name, QString::number(flags) });
    reportSelection();
    return insert(parentPath, -1, node);
}

bool TestView::insertNode(const QString& parentPath, int row, const Solution::NodeDescription& node)
{
    m_log.add("view.insertNode", { parentPath, QString::number(row), node.name });
    reportSelection();
    return insert(parentPath, row, node);
}

bool TestView::removeNode(const QString& path, bool withIndex)
{
    m_log.add("view.removeNode", { path, CallLog::text(withIndex) });
    reportSelection();
    Node* node = path.isEmpty() ? nullptr : find(path);
    if (!node)
        return false;
    leave(node);
    auto& siblings = node->parent->children;
    siblings.erase(siblings.begin() + rowOf(node));
    return true;
}

void TestView::setNodeProperty(const QString& path, const QString& key, const QVariant& value)
{
    m_log.add("view.setNodeProperty", { path, key, value.toString() });
    reportSelection();
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
    lastFallback = fallback;
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
    const Node* node = m_byKey.value(keyOf(mimeType, id));
    return node ? textOf(node->description, "FileName") : QString();
}

QString TestView::nodePathOfFile(const QString& fileName, bool currentProjectFirst)
{
    m_log.add("view.nodePathOfFile", { fileName, CallLog::text(currentProjectFirst) });
    const Node* node = m_byFile.value(fileName);
    return node ? pathOf(node) : QString();
}

QString TestView::nodePathOfKey(const QString& nodeType, unsigned id)
{
    m_log.add("view.nodePathOfKey", { nodeType, QString::number(id) });
    const Node* node = m_byKey.value(keyOf(nodeType, id));
    return node ? pathOf(node) : QString();
}

void TestView::reportSelection()
{
    if (!selectedByChanges.isEmpty())
        emit nodeEvent(selectedByChanges, Solution::NodeSelected, QVariant());
}

TestView::Node* TestView::find(const QString& path) const
{
    return path.isEmpty() ? const_cast<Node*>(&m_root) : m_byPath.value(path);
}

bool TestView::insert(const QString& parentPath, int row, const Solution::NodeDescription& description)
{
    Node* parent = find(parentPath);
    if (!parent)
        return false;
    auto node = std::make_unique<Node>();
    node->description = description;
    node->parent = parent;
    enter(node.get());
    auto& siblings = parent->children;
    const int count = static_cast<int>(siblings.size());
    const int place = row < 0 || row > count ? count : row;
    siblings.insert(siblings.begin() + place, std::move(node));
    return true;
}

void TestView::enter(Node* node)
{
    const Solution::NodeDescription& description = node->description;
    m_byPath.insert(pathOf(node), node);
    if (description.properties.contains(QStringLiteral("FileName")))
        m_byFile.insert(textOf(description, "FileName"), node);
    if (description.properties.contains(QStringLiteral("DataBaseKey"))) {
        m_byKey.insert(keyOf(textOf(description, "MimeType"), dataBaseKey(description)), node);
        m_byKey.insert(keyOf(textOf(description, "NodeType"), dataBaseKey(description)), node);
    }
}

void TestView::leave(Node* node)
{
    for (const auto& child : node->children)
        leave(child.get());
    const Solution::NodeDescription& description = node->description;
    m_byPath.remove(pathOf(node));
    m_byFile.remove(textOf(description, "FileName"));
    m_byKey.remove(keyOf(textOf(description, "MimeType"), dataBaseKey(description)));
    m_byKey.remove(keyOf(textOf(description, "NodeType"), dataBaseKey(description)));
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

QString TestView::keyOf(const QString& word, unsigned id)
{
    return word + QLatin1Char('/') + QString::number(id);
}
