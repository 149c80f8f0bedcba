#pragma once

#include "sdk/ILogManager.h"
#include "sdk/ILogger.h"

#include <map>
#include <memory>

/// Gives out loggers and passes their lines on; published as "LogManager".
class LogManager : public ILogManager {
    Q_OBJECT

public:
    explicit LogManager(QObject* parent = nullptr);
    ~LogManager() override;

    ILogger* logger(const std::string& name) override;
    /// Writes a line of the workbench's own.
    void report(LogLevel level, const QString& text);

signals:
    /// The origin is the module that wrote the line, or the logger's name, or empty for the workbench.
    void lineWritten(LogLevel level, const QString& origin, const QString& text);

private:
    std::map<std::string, std::unique_ptr<ILogger>> m_loggers;
};
