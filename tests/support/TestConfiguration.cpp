#include "tests/support/TestConfiguration.h"

#include "tests/support/CallLog.h"

TestConfiguration::TestConfiguration(CallLog& log, const QByteArray& name) : m_log(log), m_name(name) { }

TestConfiguration::~TestConfiguration() = default;

void TestConfiguration::setValue(const QString& key, const QVariant& value)
{
    if (m_values.contains(key) && m_values.value(key) == value)
        return;
    m_values.insert(key, value);
    emit valueChanged(key);
}

QVariant TestConfiguration::value(const QString& key, const QVariant& fallback) const
{
    const QByteArray operation = m_name + QByteArrayLiteral(".value");
    m_log.add(operation.constData(), { key });
    m_fallbacks.insert(key, fallback);
    return m_values.value(key, fallback);
}

void TestConfiguration::removeValue(const QString& key)
{
    m_values.remove(key);
}

QVariant TestConfiguration::lastFallback(const QString& key) const
{
    return m_fallbacks.value(key);
}
