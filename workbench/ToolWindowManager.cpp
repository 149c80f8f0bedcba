#include "workbench/ToolWindowManager.h"

#include <QDockWidget>
#include <QMainWindow>

ToolWindowManager::ToolWindowManager(QMainWindow& window, QObject* parent)
    : IToolWindowManager(parent), m_window(window)
{
}

ToolWindowManager::~ToolWindowManager() = default;

void ToolWindowManager::addToolWindow(const QString& name, const QString& title, QWidget* widget)
{
    addPanel(name, title, widget, Qt::BottomDockWidgetArea);
}

QDockWidget* ToolWindowManager::addPanel(
    const QString& name, const QString& title, QWidget* widget, Qt::DockWidgetArea area)
{
    if (m_panels.contains(name)) {
        delete widget;
        return nullptr;
    }
    auto* dock = new QDockWidget(title, &m_window);
    dock->setObjectName(QString(name + QLatin1String("Dock")));
    dock->setWidget(widget);
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    m_window.addDockWidget(area, dock);
    if (area == Qt::BottomDockWidgetArea) {
        // Panels at the bottom stand behind one another: their tabs already show the titles.
        dock->setTitleBarWidget(new QWidget(dock));
        if (m_lastAtBottom)
            m_window.tabifyDockWidget(m_lastAtBottom, dock);
        m_lastAtBottom = dock;
    }
    m_panels.insert(name, dock);
    return dock;
}

void ToolWindowManager::showToolWindow(const QString& name)
{
    if (QDockWidget* dock = panel(name)) {
        dock->show();
        dock->raise();
    }
}

QDockWidget* ToolWindowManager::panel(const QString& name) const
{
    return m_panels.value(name, nullptr);
}
