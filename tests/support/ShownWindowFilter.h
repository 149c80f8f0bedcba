#pragma once

#include <QObject>

class QWidget;

/// Watches the application for windows that appear and handles each once its event loop runs. Base of the drivers of
/// modal windows: those block the test in their exec, so that the test's part has to be done from within.
class ShownWindowFilter : public QObject {
    Q_OBJECT

public:
    ShownWindowFilter();
    ~ShownWindowFilter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    /// True for a window that handle() is to be called with.
    virtual bool wants(QWidget* window) const = 0;
    virtual void handle(QWidget* window) = 0;
};
