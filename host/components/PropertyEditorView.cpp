#include "host/components/PropertyEditorView.h"

#include "sdk/IEditContext.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

enum class UndoKey { None, Undo, Redo };

/// Ctrl+Y means redo on every platform here, since the host offers it beside the platform's own key.
UndoKey undoKey(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Undo))
        return UndoKey::Undo;
    const bool ctrlY = event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier;
    return ctrlY || event.matches(QKeySequence::Redo) ? UndoKey::Redo : UndoKey::None;
}

/// Undo of typing in the field that has the focus in a view.
class FieldContext : public IEditContext {
public:
    explicit FieldContext(const QWidget& view) : m_view(view) { }

    bool canUndo() const override { return field() != nullptr && field()->isUndoAvailable(); }
    bool canRedo() const override { return field() != nullptr && field()->isRedoAvailable(); }

    void undo() override
    {
        if (canUndo())
            field()->undo();
    }

    void redo() override
    {
        if (canRedo())
            field()->redo();
    }

private:
    QLineEdit* field() const
    {
        QWidget* focus = QApplication::focusWidget();
        // A menu bar that is worked by keyboard has the focus only for the time of the choice.
        if (focus == nullptr || qobject_cast<QMenuBar*>(focus) != nullptr)
            focus = m_view.focusWidget();
        auto* edit = qobject_cast<QLineEdit*>(focus);
        return edit != nullptr && m_view.isAncestorOf(edit) && !edit->isReadOnly() ? edit : nullptr;
    }

    const QWidget& m_view;
};

struct Page {
    QWidget* widget;
    QString title;
    bool visible;
};

} // namespace

struct PropertyEditorView::Private {
    explicit Private(PropertyEditorView* view) : tabs(new QTabWidget(view)), context(*view) { }

    std::vector<Page>::iterator find(const QString& title)
    {
        return std::find_if(pages.begin(), pages.end(), [&title](const Page& page) { return page.title == title; });
    }

    /// Where a page stands among the visible ones.
    int visiblePosition(std::vector<Page>::iterator page)
    {
        return static_cast<int>(std::count_if(pages.begin(), page, [](const Page& each) { return each.visible; }));
    }

    void forget(const QObject* widget)
    {
        pages.erase(
            std::remove_if(pages.begin(), pages.end(), [widget](const Page& page) { return page.widget == widget; }),
            pages.end());
    }

    QTabWidget* tabs;
    FieldContext context;
    std::vector<Page> pages;
    bool undoRedoBlocked = false;
};

PropertyEditorView::PropertyEditorView(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this))
{
    setObjectName(QStringLiteral("PropertyEditorView"));
    d->tabs->setObjectName(QStringLiteral("propertyTabs"));
    d->tabs->setAccessibleName(tr("Settings"));
    d->tabs->setDocumentMode(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->tabs);
    // A click beside the fields ends the edit of the one that has the focus; the view is no stop of the tab key.
    setFocusPolicy(Qt::ClickFocus);
}

PropertyEditorView::~PropertyEditorView()
{
    for (const Page& page : d->pages)
        page.widget->disconnect(this);
}

void PropertyEditorView::addTab(QWidget* page, const QString& title)
{
    if (page == nullptr)
        return;
    d->forget(page);
    d->pages.push_back({ page, title, true });
    d->tabs->addTab(page, title);
    connect(page, &QObject::destroyed, this, [this](const QObject* gone) { d->forget(gone); });
}

void PropertyEditorView::setCurrentWidget(QWidget* page)
{
    if (d->tabs->indexOf(page) >= 0)
        d->tabs->setCurrentWidget(page);
}

QWidget* PropertyEditorView::currentWidget() const
{
    return d->tabs->currentWidget();
}

void PropertyEditorView::setTabVisible(const QString& title, bool visible)
{
    const auto page = d->find(title);
    if (page == d->pages.end() || page->visible == visible)
        return;
    // A removed page stays a child of the tab widget's stack and so lives on with the view.
    if (visible)
        d->tabs->insertTab(d->visiblePosition(page), page->widget, page->title);
    else
        d->tabs->removeTab(d->tabs->indexOf(page->widget));
    page->visible = visible;
}

bool PropertyEditorView::isTabVisible(const QString& title) const
{
    const auto page = d->find(title);
    return page != d->pages.end() && page->visible;
}

void PropertyEditorView::blockUndoRedo(bool block)
{
    d->undoRedoBlocked = block;
}

bool PropertyEditorView::isUndoRedoBlocked() const
{
    return d->undoRedoBlocked;
}

IEditContext* PropertyEditorView::getCurrentContext()
{
    return &d->context;
}

bool PropertyEditorView::event(QEvent* event)
{
    const bool key = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!key || !d->undoRedoBlocked)
        return QWidget::event(event);
    const UndoKey pressed = undoKey(*static_cast<QKeyEvent*>(event));
    if (pressed == UndoKey::None)
        return QWidget::event(event);
    // Taking the key in the override keeps it from the project's commands; it then arrives as a key press.
    if (event->type() == QEvent::KeyPress)
        pressed == UndoKey::Undo ? d->context.undo() : d->context.redo();
    event->accept();
    return true;
}
