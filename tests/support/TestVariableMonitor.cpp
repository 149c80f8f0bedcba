#include "tests/support/TestVariableMonitor.h"

#include "tests/support/CallLog.h"

TestVariableMonitor::TestVariableMonitor(CallLog& log) : m_log(log) { }

TestVariableMonitor::~TestVariableMonitor() = default;

void TestVariableMonitor::addAxis(int axisNo)
{
    m_log.add("varMonitor.addAxis", { QString::number(axisNo) });
}

void TestVariableMonitor::releaseAxis(int axisNo, bool released)
{
    m_log.add("varMonitor.releaseAxis", { QString::number(axisNo), CallLog::text(released) });
}
