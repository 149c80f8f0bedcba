#include "tests/support/TestViewHelper.h"

#include "tests/support/CallLog.h"

TestViewHelper::TestViewHelper(CallLog& log) : m_log(log) { }

TestViewHelper::~TestViewHelper() = default;

void TestViewHelper::pushCommand(QUndoCommand* command)
{
    m_log.add("viewHelper.pushCommand");
    for (; m_emptyMacros > 0; --m_emptyMacros)
        stack.beginMacro(QStringLiteral("macro"));
    stack.push(command);
}

void TestViewHelper::beginMacro()
{
    m_log.add("viewHelper.beginMacro");
    ++m_emptyMacros;
}

void TestViewHelper::endMacro()
{
    m_log.add("viewHelper.endMacro");
    if (m_emptyMacros > 0)
        --m_emptyMacros;
    else
        stack.endMacro();
}
