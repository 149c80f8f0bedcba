#pragma once

#include <QTreeView>

class ProjectTree;

/// Shows the project tree and turns what the user does on it into node events: by mouse and by keyboard alike.
class ProjectTreeView : public QTreeView {
    Q_OBJECT

public:
    explicit ProjectTreeView(ProjectTree& tree, QWidget* parent = nullptr);
    ~ProjectTreeView() override;

    QString currentPath() const;
    /// Selects a node and makes it visible; an unknown path changes nothing.
    void select(const QString& path);

signals:
    /// A node that names an editor was opened.
    void openRequested(const QString& fileName, const QString& mimeType);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

private:
    void open(const QModelIndex& index);

    ProjectTree& m_tree;
};
