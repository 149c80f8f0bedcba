#pragma once

#include "sdk/SolutionView.h"

#include <QHash>
#include <QStandardItemModel>
#include <QVector>

/// The project tree of the program, as a model that a tree view shows. Nodes are found by path, by "FileName" and by
/// "DataBaseKey" without a walk through the tree.
///
/// Of several nodes that answer a lookup, one of the current project wins, then the one that was added first.
class ProjectTree : public Solution::View {
    Q_OBJECT

public:
    enum Role { PathRole = Qt::UserRole + 1, PropertiesRole, VisibleRole };

    explicit ProjectTree(QObject* parent = nullptr);
    ~ProjectTree() override;

    /// An empty parent path adds a node at the top: a project.
    bool addNode(const QString& parentPath, const Solution::NodeDescription& node, int flags) override;
    bool insertNode(const QString& parentPath, int row, const Solution::NodeDescription& node) override;
    bool removeNode(const QString& path, bool withIndex) override;
    void setNodeProperty(const QString& path, const QString& key, const QVariant& value) override;
    QVariant nodeProperty(const QString& path, const QString& key, const QVariant& fallback) override;
    QStringList childNodes(const QString& path) override;
    int nodeRow(const QString& path) override;
    QString fileNameOf(const QString& mimeType, unsigned id) override;
    QString nodePathOfFile(const QString& fileName, bool currentProjectFirst) override;
    QString nodePathOfKey(const QString& nodeType, unsigned id) override;

    QStandardItemModel* model() { return &m_model; }
    bool contains(const QString& path) const { return m_nodes.contains(path); }
    QModelIndex index(const QString& path) const;
    QString path(const QModelIndex& index) const;
    /// The project that lookups prefer; empty for none.
    void setCurrentProject(const QString& name) { m_currentProject = name; }

private:
    using Key = QPair<QString, QString>;
    using Items = QVector<QStandardItem*>;

    QStandardItem* parentItem(const QString& path);
    QStandardItem* makeItem(const QString& path, const Solution::NodeDescription& node) const;
    void index(QStandardItem* item);
    void unindex(QStandardItem* item);
    void forgetBranch(QStandardItem* item);
    QStandardItem* preferred(const Items& items, bool currentProjectFirst) const;
    QStandardItem* find(const QString& kind, const QString& type, const QString& key, bool currentProjectFirst) const;

    QStandardItemModel m_model;
    QHash<QString, QStandardItem*> m_nodes;
    QHash<Key, Items> m_index;
    QString m_currentProject;
};
