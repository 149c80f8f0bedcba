#pragma once

#include "sdk/IVarMonitor.h"

class CallLog;

/// Records what it is told: "varMonitor.addAxis(3)", "varMonitor.releaseAxis(3, true)".
class TestVariableMonitor : public IVarMonitor {
    Q_OBJECT

public:
    explicit TestVariableMonitor(CallLog& log);
    ~TestVariableMonitor() override;

    void addAxis(int axisNo) override;
    void releaseAxis(int axisNo, bool released) override;

private:
    CallLog& m_log;
};
