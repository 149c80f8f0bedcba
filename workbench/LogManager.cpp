#include "workbench/LogManager.h"

#include <QByteArray>

#include <cstdarg>
#include <cstdio>

namespace {

class Logger : public ILogger {
public:
    Logger(LogManager& manager, std::string name) : m_manager(manager), m_name(std::move(name)) { }

    Q_ATTRIBUTE_FORMAT_PRINTF(4, 5)
    void write(const std::string& module, int level, const char* format, ...) override
    {
        va_list arguments;
        va_start(arguments, format);
        const QString text = formatted(format, arguments);
        va_end(arguments);
        const int bounded = qBound(static_cast<int>(LogInfo), level, static_cast<int>(LogError));
        emit m_manager.lineWritten(
            static_cast<LogLevel>(bounded), QString::fromStdString(module.empty() ? m_name : module), text);
    }

private:
    static QString formatted(const char* format, va_list arguments)
    {
        va_list measured;
        va_copy(measured, arguments);
        const int length = std::vsnprintf(nullptr, 0, format, measured);
        va_end(measured);
        if (length <= 0)
            return {};
        QByteArray text(length + 1, '\0');
        std::vsnprintf(text.data(), static_cast<size_t>(text.size()), format, arguments);
        text.chop(1);
        return QString::fromUtf8(text);
    }

    LogManager& m_manager;
    std::string m_name;
};

} // namespace

LogManager::LogManager(QObject* parent) : ILogManager(parent) { }

LogManager::~LogManager() = default;

ILogger* LogManager::logger(const std::string& name)
{
    std::unique_ptr<ILogger>& logger = m_loggers[name];
    if (!logger)
        logger = std::make_unique<Logger>(*this, name);
    return logger.get();
}

void LogManager::report(LogLevel level, const QString& text)
{
    emit lineWritten(level, QString(), text);
}
