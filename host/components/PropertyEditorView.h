#pragma once

#include "host/components/Export.h"

#include <QString>
#include <QWidget>

#include <memory>

class IEditContext;
class QTabWidget;

/// The view of an editor: pages as tabs. Owned by its editor.
class KESTRUN_COMPONENTS_EXPORT PropertyEditorView : public QWidget {
    Q_OBJECT

public:
    explicit PropertyEditorView(QWidget* parent = nullptr);
    ~PropertyEditorView() override;

    /// Appends a page; the view becomes its parent.
    void addTab(QWidget* page, const QString& title);
    /// Brings a page to the front; a page that is hidden or unknown changes nothing.
    void setCurrentWidget(QWidget* page);
    QWidget* currentWidget() const;
    /// Shows or hides the tab of that title in its place; an unknown title changes nothing. A hidden page stays alive.
    void setTabVisible(const QString& title, bool visible);
    bool isTabVisible(const QString& title) const;
    /// True: undo and redo keys undo typing in the focused field and never reach the project's commands.
    void blockUndoRedo(bool block);
    bool isUndoRedoBlocked() const;
    /// Undo and redo of the focused field. Owned by the view.
    IEditContext* getCurrentContext();

protected:
    bool event(QEvent* event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
