#include "tests/support/TestLogManager.h"

#include "tests/support/CallLog.h"

#include <cstdarg>

TestLogger::TestLogger(CallLog& log) : m_log(log) { }

TestLogger::~TestLogger() = default;

void TestLogger::write(const std::string& module, int level, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::vasprintf(format, arguments);
    va_end(arguments);
    m_log.add("logger.write", { QString::fromStdString(module), QString::number(level), text });
}

TestLogManager::TestLogManager(CallLog& log) : m_log(log), m_logger(log) { }

TestLogManager::~TestLogManager() = default;

ILogger* TestLogManager::logger(const std::string& name)
{
    m_log.add("logManager.logger", { QString::fromStdString(name) });
    return hasLogger ? &m_logger : nullptr;
}
