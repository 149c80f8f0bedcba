#pragma once

#include <QWidget>

class CommandLog;
class QToolButton;
class QTreeView;

/// Shows the command log. Chosen lines can be copied, all of them cleared.
class CommandLogPanel : public QWidget {
    Q_OBJECT

public:
    /// The log is not owned.
    explicit CommandLogPanel(CommandLog& log, QWidget* parent = nullptr);
    ~CommandLogPanel() override;

    /// Puts the chosen lines into the clipboard; all of them when none is chosen.
    void copy();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void retranslate();

    CommandLog& m_log;
    QTreeView* m_view;
    QToolButton* m_copy;
    QToolButton* m_clear;
    /// The newest line was in sight before more came.
    bool m_atEnd = true;
};
