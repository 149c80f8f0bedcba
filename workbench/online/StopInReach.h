#pragma once

#include <QObject>
#include <QPointer>

class StopButton;
class QDialog;

/// Keeps the STOP button in reach under modal windows, which shut the main window off from the mouse: over each of
/// them stands another button, at the very place of the first one.
class StopInReach : public QObject {
    Q_OBJECT

public:
    /// The button of the main window, which must outlive this object.
    explicit StopInReach(const StopButton& button, QObject* parent = nullptr);
    ~StopInReach() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void pressed();

private:
    void attachTo(QWidget* modal);

    const StopButton& m_button;
};
