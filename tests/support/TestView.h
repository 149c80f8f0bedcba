#pragma once

#include "sdk/SolutionView.h"

#include <QHash>

#include <memory>
#include <vector>

class CallLog;

/// A project tree in memory. Keeps to the contract: unknown paths are survived, an empty parent path names the root.
/// Nodes are found by path, file name and key in constant time, so that what a bench measures is not the tree.
class TestView : public Solution::View {
    Q_OBJECT

public:
    explicit TestView(CallLog& log);
    ~TestView() override;

    /// The nodes that a host has before plug-ins add theirs: the project and "ConfigAndSetup" below it. Not logged.
    void addProject(const QString& projectName);
    /// What was added under a path, with the changes made since; null when there is no such node.
    const Solution::NodeDescription* node(const QString& path) const;

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

    /// Reported as selected whenever a node comes, goes or changes, as by a tree whose current row moves with that;
    /// none if empty.
    QString selectedByChanges;
    /// The fallback that the last nodeProperty passed.
    QVariant lastFallback;

private:
    struct Node {
        Solution::NodeDescription description;
        Node* parent = nullptr;
        std::vector<std::unique_ptr<Node>> children;
    };
    using Index = QHash<QString, Node*>;

    void reportSelection();
    Node* find(const QString& path) const;
    bool insert(const QString& parentPath, int row, const Solution::NodeDescription& description);
    void enter(Node* node);
    void leave(Node* node);
    static int rowOf(const Node* node);
    static QString pathOf(const Node* node);
    static QString keyOf(const QString& word, unsigned id);

    CallLog& m_log;
    Node m_root;
    Index m_byPath;
    Index m_byFile;
    /// By "MimeType" or "NodeType" together with "DataBaseKey".
    Index m_byKey;
};
