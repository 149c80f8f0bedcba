#pragma once

#include "host/components/Export.h"

#include <QLineEdit>
#include <QStringList>

class QCompleter;

/// A line edit with a completion list of the project's variables.
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
    /// own emission.
    void editFinished();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void finishEdit();

    QCompleter* m_completer = nullptr;
    bool m_completeEnabled = true;
    bool m_ownCompletions = false;
    bool m_emitting = false;
};
