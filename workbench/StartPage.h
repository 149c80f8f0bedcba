#pragma once

#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;

/// What stands in the editor area while nothing is open: the ways to get started, and the recent projects.
class StartPage : public QWidget {
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);
    ~StartPage() override;

    /// With an open project the page points to the tree; without one it offers new, open and recent projects.
    void setProjectOpen(bool open);
    void setRecent(const QStringList& files);

signals:
    void newRequested();
    void openRequested();
    void recentRequested(const QString& file);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QLabel* m_title;
    QLabel* m_hint;
    QPushButton* m_new;
    QPushButton* m_open;
    QLabel* m_recentTitle;
    QListWidget* m_recent;
    bool m_projectOpen = false;
};
