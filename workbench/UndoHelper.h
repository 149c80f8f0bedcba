#pragma once

#include "sdk/SolutionViewHelper.h"

#include <QUndoStack>

/// The undo stack of the current project, as plug-ins reach it.
class UndoHelper : public Solution::ViewHelper {
    Q_OBJECT

public:
    explicit UndoHelper(QObject* parent = nullptr);
    ~UndoHelper() override;

    void pushCommand(QUndoCommand* command) override;
    /// Macros nest. The stack learns of one with its first command only, so that an empty one leaves no entry.
    void beginMacro() override;
    void endMacro() override;

    QUndoStack* stack() { return &m_stack; }

private:
    void openWaitingMacros();

    QUndoStack m_stack;
    int m_waiting = 0;
    int m_open = 0;
};
