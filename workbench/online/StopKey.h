#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;

/// The key of the emergency stop. It works whatever has the focus, also under modal boxes, dialogs, open menus and
/// while something is dragged, since it is taken before any window gets it. While an open menu has the mouse, it also
/// notices a press on the STOP button behind it.
class StopKey : public QObject {
    Q_OBJECT

public:
    static constexpr Qt::Key key = Qt::Key_F9;

    explicit StopKey(QObject* parent = nullptr);
    ~StopKey() override;

    /// While it is off the key has no effect of its own.
    void setEnabled(bool enabled) { m_enabled = enabled; }
    /// Tells whether a place on the screen lies on the STOP button.
    void setButtonAt(std::function<bool(const QPoint& place)> buttonAt) { m_buttonAt = std::move(buttonAt); }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void pressed();

private:
    bool takeKey(QKeyEvent& event);

    bool m_enabled = false;
    std::function<bool(const QPoint&)> m_buttonAt;
};
