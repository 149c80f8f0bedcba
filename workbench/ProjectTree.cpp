#include "workbench/ProjectTree.h"

namespace {

const QString displayNameKey = QStringLiteral("DisplayName");
const QString iconKey = QStringLiteral("Icon");
const QString fileNameKey = QStringLiteral("FileName");
const QString mimeTypeKey = QStringLiteral("MimeType");
const QString nodeTypeKey = QStringLiteral("NodeType");
const QString databaseKey = QStringLiteral("DataBaseKey");

QString pathOf(const QStandardItem* item)
{
    return item->data(ProjectTree::PathRole).toString();
}

QVariantMap propertiesOf(const QStandardItem* item)
{
    return item->data(ProjectTree::PropertiesRole).toMap();
}

} // namespace

ProjectTree::ProjectTree(QObject* parent) : View(parent) { }

ProjectTree::~ProjectTree()
{
    emit aboutToBeDestroyed();
}

QStandardItem* ProjectTree::parentItem(const QString& path)
{
    return path.isEmpty() ? m_model.invisibleRootItem() : m_nodes.value(path, nullptr);
}

QStandardItem* ProjectTree::makeItem(const QString& path, const Solution::NodeDescription& node) const
{
    auto* item = new QStandardItem(node.icon, node.displayText);
    item->setEditable(false);
    item->setCheckable(node.checkable);
    if (node.color.isValid())
        item->setForeground(node.color);
    item->setData(path, PathRole);
    item->setData(QVariantMap(node.properties), PropertiesRole);
    item->setData(node.visible, VisibleRole);
    return item;
}

bool ProjectTree::addNode(const QString& parentPath, const Solution::NodeDescription& node, int)
{
    const QStandardItem* parent = parentItem(parentPath);
    return parent && insertNode(parentPath, parent->rowCount(), node);
}

bool ProjectTree::insertNode(const QString& parentPath, int row, const Solution::NodeDescription& node)
{
    QStandardItem* parent = parentItem(parentPath);
    const QString path = parentPath.isEmpty() ? node.name : QString(parentPath + QLatin1Char('.') + node.name);
    if (!parent || node.name.isEmpty() || m_nodes.contains(path))
        return false;
    QStandardItem* item = makeItem(path, node);
    m_nodes.insert(path, item);
    index(item);
    parent->insertRow(row < 0 || row > parent->rowCount() ? parent->rowCount() : row, item);
    return true;
}

bool ProjectTree::removeNode(const QString& path, bool)
{
    QStandardItem* item = m_nodes.value(path, nullptr);
    if (!item)
        return false;
    // A node that is gone must not be found any more, whatever the caller asks of the indexes.
    forgetBranch(item);
    QStandardItem* parent = item->parent() ? item->parent() : m_model.invisibleRootItem();
    parent->removeRow(item->row());
    return true;
}

void ProjectTree::forgetBranch(QStandardItem* item)
{
    for (int row = 0; row < item->rowCount(); ++row)
        forgetBranch(item->child(row));
    unindex(item);
    m_nodes.remove(pathOf(item));
}

void ProjectTree::index(QStandardItem* item)
{
    const QVariantMap properties = propertiesOf(item);
    const QString key = properties.value(databaseKey).toString();
    if (properties.contains(fileNameKey))
        m_index[{ fileNameKey, properties.value(fileNameKey).toString() }].append(item);
    if (key.isEmpty())
        return;
    for (const QString& type : { mimeTypeKey, nodeTypeKey }) {
        if (properties.contains(type))
            m_index[{ type, QString(properties.value(type).toString() + QLatin1Char('\n') + key) }].append(item);
    }
}

void ProjectTree::unindex(QStandardItem* item)
{
    const QVariantMap properties = propertiesOf(item);
    const QString suffix = QLatin1Char('\n') + properties.value(databaseKey).toString();
    const QVector<Key> keys{ { fileNameKey, properties.value(fileNameKey).toString() },
        { mimeTypeKey, properties.value(mimeTypeKey).toString() + suffix },
        { nodeTypeKey, properties.value(nodeTypeKey).toString() + suffix } };
    for (const Key& key : keys) {
        const auto items = m_index.find(key);
        if (items == m_index.end())
            continue;
        items->removeAll(item);
        if (items->isEmpty())
            m_index.erase(items);
    }
}

void ProjectTree::setNodeProperty(const QString& path, const QString& key, const QVariant& value)
{
    QStandardItem* item = m_nodes.value(path, nullptr);
    if (!item)
        return;
    if (key == displayNameKey) {
        item->setText(value.toString());
    } else if (key == iconKey) {
        item->setIcon(value.value<QIcon>());
    } else {
        unindex(item);
        QVariantMap properties = propertiesOf(item);
        properties.insert(key, value);
        item->setData(properties, PropertiesRole);
        index(item);
    }
}

QVariant ProjectTree::nodeProperty(const QString& path, const QString& key, const QVariant& fallback)
{
    const QStandardItem* item = m_nodes.value(path, nullptr);
    if (!item)
        return fallback;
    if (key == displayNameKey)
        return item->text();
    if (key == iconKey)
        return item->icon();
    return propertiesOf(item).value(key, fallback);
}

QStringList ProjectTree::childNodes(const QString& path)
{
    QStringList paths;
    const QStandardItem* item = parentItem(path);
    for (int row = 0; item && row < item->rowCount(); ++row)
        paths.append(pathOf(item->child(row)));
    return paths;
}

int ProjectTree::nodeRow(const QString& path)
{
    const QStandardItem* item = m_nodes.value(path, nullptr);
    return item ? item->row() : -1;
}

QStandardItem* ProjectTree::preferred(const Items& items, bool currentProjectFirst) const
{
    if (currentProjectFirst && !m_currentProject.isEmpty()) {
        for (QStandardItem* item : items) {
            if (pathOf(item).section(QLatin1Char('.'), 0, 0) == m_currentProject)
                return item;
        }
    }
    return items.isEmpty() ? nullptr : items.first();
}

QStandardItem* ProjectTree::find(
    const QString& kind, const QString& type, const QString& key, bool currentProjectFirst) const
{
    return preferred(m_index.value({ kind, QString(type + QLatin1Char('\n') + key) }), currentProjectFirst);
}

QString ProjectTree::fileNameOf(const QString& mimeType, unsigned id)
{
    const QStandardItem* item = find(mimeTypeKey, mimeType, QString::number(id), true);
    return item ? propertiesOf(item).value(fileNameKey).toString() : QString();
}

QString ProjectTree::nodePathOfFile(const QString& fileName, bool currentProjectFirst)
{
    const QStandardItem* item = preferred(m_index.value({ fileNameKey, fileName }), currentProjectFirst);
    return item ? pathOf(item) : QString();
}

QString ProjectTree::nodePathOfKey(const QString& nodeType, unsigned id)
{
    const QStandardItem* item = find(nodeTypeKey, nodeType, QString::number(id), true);
    return item ? pathOf(item) : QString();
}

QModelIndex ProjectTree::index(const QString& path) const
{
    const QStandardItem* item = m_nodes.value(path, nullptr);
    return item ? item->index() : QModelIndex();
}

QString ProjectTree::path(const QModelIndex& index) const
{
    return index.data(PathRole).toString();
}
