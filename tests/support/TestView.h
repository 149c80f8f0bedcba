#pragma once

#include "sdk/SolutionView.h"

#include <functional>
#include <memory>
#include <vector>

class CallLog;

/// A project tree in memory. Keeps to the contract: unknown paths are survived, an empty parent path names the root.
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

private:
    struct Node {
        Solution::NodeDescription description;
        Node* parent = nullptr;
        std::vector<std::unique_ptr<Node>> children;
    };
    using Match = std::function<bool(const Solution::NodeDescription&)>;

    Node* find(const QString& path) const;
    static bool insert(Node* parent, int row, const Solution::NodeDescription& description);
    static int rowOf(const Node* node);
    static QString pathOf(const Node* node);
    static const Node* search(const Node& node, const Match& match);

    CallLog& m_log;
    Node m_root;
};
