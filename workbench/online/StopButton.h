#pragma once

#include <QToolButton>

/// The button of the emergency stop. It counts from the press, not from the release, and never takes the focus.
class StopButton : public QToolButton {
    Q_OBJECT

public:
    explicit StopButton(QWidget* parent = nullptr);
    ~StopButton() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
};
