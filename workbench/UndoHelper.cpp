#include "workbench/UndoHelper.h"

UndoHelper::UndoHelper(QObject* parent) : ViewHelper(parent) { }

UndoHelper::~UndoHelper() = default;

void UndoHelper::pushCommand(QUndoCommand* command)
{
    if (!command)
        return;
    openWaitingMacros();
    m_stack.push(command);
}

void UndoHelper::openWaitingMacros()
{
    for (; m_waiting > 0; --m_waiting, ++m_open)
        m_stack.beginMacro(QString());
}

void UndoHelper::beginMacro()
{
    ++m_waiting;
}

void UndoHelper::endMacro()
{
    if (m_waiting > 0) {
        --m_waiting;
    } else if (m_open > 0) {
        --m_open;
        m_stack.endMacro();
    }
}
