#pragma once

#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"

#include <QApplication>
#include <QTabWidget>

/// Opens an axis's editor in a tab as a host does, until it is painted, and closes it again with all that its deletion
/// leaves for the event loop. The tabs must be shown.
inline void openAndCloseEditor(QTabWidget& tabs, IEditorFactory& factory, const QString& path)
{
    IEditor* editor = factory.createEditor(path, QStringLiteral("AxisView"));
    QWidget* view = editor->widget();
    tabs.setCurrentIndex(tabs.addTab(view, editor->displayName()));
    QApplication::processEvents();
    tabs.removeTab(tabs.indexOf(view));
    view->setParent(nullptr);
    delete editor;
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
