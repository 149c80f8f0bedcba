#pragma once

#include "sdk/IConfiguration.h"

#include <QHash>

class CallLog;

/// A table of values in memory.
class TestConfiguration : public IConfiguration {
    Q_OBJECT

public:
    /// The name stands for the service in the log: "cookies.value(Project.Name)".
    TestConfiguration(CallLog& log, const QByteArray& name);
    ~TestConfiguration() override;

    void setValue(const QString& key, const QVariant& value) override;
    QVariant value(const QString& key, const QVariant& fallback) const override;
    /// Takes a value out again, so that the fallback is read.
    void removeValue(const QString& key);
    /// The fallback that the last reading of a key passed.
    QVariant lastFallback(const QString& key) const;

private:
    CallLog& m_log;
    QByteArray m_name;
    QHash<QString, QVariant> m_values;
    mutable QHash<QString, QVariant> m_fallbacks;
};
