#pragma once

#include <QString>
#include <QVector>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class PropertyEditorView;

/// What the controls of an open editor hold, in a form that fills the same controls of bare forms.
class EditorSnapshot {
public:
    /// Reads the five pages of the view.
    explicit EditorSnapshot(const PropertyEditorView& view);

    using Filling = std::function<void(QWidget&)>;

    struct Step {
        /// Place among the child widgets of the bare page.
        int child;
        Filling fill;
    };

    /// The fillings of each page.
    std::array<QVector<Step>, 5> pages;
    /// Whether its tab is shown.
    std::array<bool, 5> shown{};
};

/// The five forms of an axis's editor with nothing behind them.
class BareEditor {
public:
    BareEditor();
    ~BareEditor();

    /// Makes the pages and their tabs. Microseconds.
    double setUp();
    /// Finds the controls; not part of what is measured.
    void lookUp();
    double fill(const EditorSnapshot& snapshot);
    /// Deletes the widgets.
    void clear();
    QWidget* view() const;

    /// Sets the form of a page, from 0 in the order of the tabs, up on a widget.
    static void setUpForm(int page, QWidget& widget);

private:
    std::unique_ptr<PropertyEditorView> m_view;
    std::array<QWidget*, 5> m_pages{};
    std::array<QList<QWidget*>, 5> m_children;
};
