#pragma once

#include <QToolBar>

class QAction;
class QLabel;
class StopButton;

/// The tool bar of the emergency stop: what became of it, the release, and the button. It cannot be hidden, and however
/// narrow the window, nothing of it goes into the menu of what has no room.
class StopBar : public QToolBar {
    Q_OBJECT

public:
    /// The action of the release is not owned.
    explicit StopBar(QAction* release, QWidget* parent = nullptr);
    ~StopBar() override;

    StopButton& button() { return *m_button; }
    QLabel& feedback() { return *m_feedback; }

    QSize minimumSizeHint() const override;

private:
    StopButton* m_button;
    QLabel* m_feedback;
};
