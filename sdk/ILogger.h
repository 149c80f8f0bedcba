#pragma once

#include "sdk/Export.h"

#include <QtGlobal>

#include <string>

/// Levels of a log line.
enum LogLevel { LogInfo = 0, LogWarning = 1, LogError = 2 };

/// Writes lines into the host's output panel. Owned by the log manager.
class KESTRUN_SDK_EXPORT ILogger {
public:
    ILogger() = default;
    virtual ~ILogger();
    Q_DISABLE_COPY(ILogger)

    /// Writes a line; format and arguments as in printf, texts in UTF-8.
    virtual void write(const std::string& module, int level, const char* format, ...) = 0;
};
