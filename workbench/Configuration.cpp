#include "workbench/Configuration.h"

Cookies::Cookies(QObject* parent) : IConfiguration(parent) { }

Cookies::~Cookies() = default;

void Cookies::setValue(const QString& key, const QVariant& value)
{
    const auto present = m_values.constFind(key);
    if (present != m_values.constEnd() && *present == value)
        return;
    m_values.insert(key, value);
    emit valueChanged(key);
}

QVariant Cookies::value(const QString& key, const QVariant& fallback) const
{
    return m_values.value(key, fallback);
}

void Cookies::remove(const QString& key)
{
    if (m_values.remove(key) > 0)
        emit valueChanged(key);
}

namespace {

QString userFile()
{
    const QSettings standard(
        QSettings::IniFormat, QSettings::UserScope, QStringLiteral("kestrun"), QStringLiteral("kestrun"));
    return standard.fileName();
}

} // namespace

Settings::Settings(const QString& fileName, QObject* parent)
    : IConfiguration(parent), m_settings(fileName.isEmpty() ? userFile() : fileName, QSettings::IniFormat)
{
    m_settings.setIniCodec("UTF-8");
}

Settings::~Settings() = default;

void Settings::setValue(const QString& key, const QVariant& value)
{
    if (m_settings.contains(key) && m_settings.value(key) == value)
        return;
    m_settings.setValue(key, value);
    emit valueChanged(key);
}

QVariant Settings::value(const QString& key, const QVariant& fallback) const
{
    return m_settings.value(key, fallback);
}

QString Settings::fileName() const
{
    return m_settings.fileName();
}

bool Settings::flush()
{
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}
