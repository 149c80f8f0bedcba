#include "workbench/ProjectTreeView.h"

#include "workbench/ProjectTree.h"

#include <QContextMenuEvent>
#include <QHeaderView>

ProjectTreeView::ProjectTreeView(ProjectTree& tree, QWidget* parent) : QTreeView(parent), m_tree(tree)
{
    setObjectName(QStringLiteral("projectTree"));
    setModel(tree.model());
    header()->hide();
    setEditTriggers(NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setIconSize({ 16, 16 });
}

ProjectTreeView::~ProjectTreeView() = default;

QString ProjectTreeView::currentPath() const
{
    return m_tree.path(currentIndex());
}

void ProjectTreeView::select(const QString& path)
{
    const QModelIndex index = m_tree.index(path);
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    scrollTo(index);
}

void ProjectTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    const QPoint point = byMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).center());
    emit m_tree.nodeEvent(m_tree.path(index), Solution::NodeContextMenu, point);
}

void ProjectTreeView::keyPressEvent(QKeyEvent* event)
{
    const QString path = currentPath();
    if (path.isEmpty() || event->modifiers() != Qt::NoModifier) {
        QTreeView::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_F2:
        emit m_tree.nodeEvent(path, Solution::NodeRename, QVariant());
        break;
    case Qt::Key_Delete:
        emit m_tree.nodeEvent(path, Solution::NodeDelete, QVariant());
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        open(currentIndex());
        break;
    default:
        QTreeView::keyPressEvent(event);
    }
}

void ProjectTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid())
        open(index);
}

void ProjectTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    if (current.isValid())
        emit m_tree.nodeEvent(m_tree.path(current), Solution::NodeSelected, QVariant());
}

void ProjectTreeView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    for (int row = start; row <= end; ++row)
        setRowHidden(row, parent, !model()->index(row, 0, parent).data(ProjectTree::VisibleRole).toBool());
}

void ProjectTreeView::open(const QModelIndex& index)
{
    const QString path = m_tree.path(index);
    const QString fileName = m_tree.nodeProperty(path, QStringLiteral("FileName"), QString()).toString();
    const QString mimeType = m_tree.nodeProperty(path, QStringLiteral("MimeType"), QString()).toString();
    emit m_tree.nodeEvent(path, Solution::NodeActivated, QVariant());
    if (!fileName.isEmpty() && !mimeType.isEmpty())
        emit openRequested(fileName, mimeType);
    else if (model()->hasChildren(index))
        setExpanded(index, !isExpanded(index));
}
