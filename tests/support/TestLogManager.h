#pragma once

#include "sdk/ILogManager.h"
#include "sdk/ILogger.h"

class CallLog;

/// Writes the formatted lines into the log: "logger.write(module, level, text)".
class TestLogger : public ILogger {
public:
    explicit TestLogger(CallLog& log);
    ~TestLogger() override;

    void write(const std::string& module, int level, const char* format, ...) override;

private:
    CallLog& m_log;
};

/// Hands out one logger under any name.
class TestLogManager : public ILogManager {
    Q_OBJECT

public:
    explicit TestLogManager(CallLog& log);
    ~TestLogManager() override;

    ILogger* logger(const std::string& name) override;

    /// False: no logger is handed out.
    bool hasLogger = true;

private:
    CallLog& m_log;
    TestLogger m_logger;
};
