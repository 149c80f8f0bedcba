#pragma once

#include "sdk/SolutionViewHelper.h"

#include <QUndoStack>

class CallLog;

/// A real undo stack behind the contract. A macro is opened on the stack with the first command pushed into it, so
/// that one that stays empty leaves no entry.
class TestViewHelper : public Solution::ViewHelper {
    Q_OBJECT

public:
    explicit TestViewHelper(CallLog& log);
    ~TestViewHelper() override;

    void pushCommand(QUndoCommand* command) override;
    void beginMacro() override;
    void endMacro() override;

    QUndoStack stack;

private:
    CallLog& m_log;
    int m_emptyMacros = 0;
};
