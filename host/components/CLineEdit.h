#pragma once

#include "host/components/Export.h"

#include <QLineEdit>
#include <QStringList>

class QCompleter;
class QStringListModel;

/// A line edit with a completion list of the project's variables.
///
/// The list is read when the field gets the focus, so that building a page with such fields costs nothing. Return in
/// an open list takes the marked entry and finishes the edit with it.
class KESTRUN_COMPONENTS_EXPORT CLineEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit CLineEdit(QWidget* parent = nullptr);
    ~CLineEdit() override;

    /// Closes the completion list if it is open.
    void hideList();
    /// Switches completion on (the initial state) or off.
    void setEnableComplete(bool enable);
    bool isCompleteEnabled() const;
    /// The texts to complete from; without a call the boolean variables of the current project.
    void setCompletions(const QStringList& texts);

signals:
    /// The focus has gone (not to a popup or another window), or Return was pressed. Never from within a slot of its
    /// own emission. It tells of the end of an edit, not of a change: it comes at every loss of focus, also when the
    /// text is the one that Return has finished before, or one that setText has put there.
    void editFinished();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void finishEdit();
    void prepareCompletion();
    bool isListOpen() const;
    /// False when the list is not open.
    bool takeMarkedCompletion();

    /// Null until the first focus with completion on. Owned by the line edit.
    QCompleter* m_completer = nullptr;
    QStringListModel* m_completions = nullptr;
    bool m_completeEnabled = true;
    bool m_ownCompletions = false;
    bool m_emitting = false;
    QStringList m_texts;
};
