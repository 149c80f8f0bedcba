#pragma once

#include <QPushButton>

class QTimer;

/// A button that is held: a left press that lasts 200 ms begins a jog, any left release ends one.
///
/// The end is reported for every release, also where no beginning was: a release that finds nothing to end is harmless,
/// one that is missing is not.
class JogPushButton : public QPushButton {
    Q_OBJECT

public:
    explicit JogPushButton(QWidget* parent = nullptr);
    ~JogPushButton() override;

signals:
    /// The left button has been held for 200 ms and this button has the keyboard focus. Once a press at most.
    void jogPressed();
    /// The left button has been released, however short the press was.
    void jogReleased();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private slots:
    void onTimeout();

private:
    QTimer* m_holdTimer;
};
