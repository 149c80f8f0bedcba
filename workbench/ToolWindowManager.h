#pragma once

#include "sdk/IToolWindowManager.h"

#include <QHash>

class QDockWidget;
class QMainWindow;

/// The dock panels of the main window by name.
class ToolWindowManager : public IToolWindowManager {
    Q_OBJECT

public:
    explicit ToolWindowManager(QMainWindow& window, QObject* parent = nullptr);
    ~ToolWindowManager() override;

    /// Adds a panel at the bottom, behind those that are there. A name that is taken deletes the widget.
    void addToolWindow(const QString& name, const QString& title, QWidget* widget) override;
    void showToolWindow(const QString& name) override;

    /// The same at a side of the window.
    QDockWidget* addPanel(const QString& name, const QString& title, QWidget* widget, Qt::DockWidgetArea area);
    QDockWidget* panel(const QString& name) const;

private:
    QMainWindow& m_window;
    QHash<QString, QDockWidget*> m_panels;
    QDockWidget* m_lastAtBottom = nullptr;
};
