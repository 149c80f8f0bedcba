#pragma once

#include "sdk/IConfiguration.h"

#include <QHash>
#include <QSettings>

/// Values that live as long as the program runs; published as "ICookies".
class Cookies : public IConfiguration {
    Q_OBJECT

public:
    explicit Cookies(QObject* parent = nullptr);
    ~Cookies() override;

    void setValue(const QString& key, const QVariant& value) override;
    QVariant value(const QString& key, const QVariant& fallback) const override;
    /// Forgets the value of a key, so that readers get their fallback.
    void remove(const QString& key);

private:
    QHash<QString, QVariant> m_values;
};

/// Values that are kept for the user in an ini file; published as "ISettings".
class Settings : public IConfiguration {
    Q_OBJECT

public:
    /// The file of the settings, or an empty text for the user's own.
    explicit Settings(const QString& fileName, QObject* parent = nullptr);
    ~Settings() override;

    void setValue(const QString& key, const QVariant& value) override;
    QVariant value(const QString& key, const QVariant& fallback) const override;
    QString fileName() const;
    /// Writes what is pending. False when the file cannot be written.
    bool flush();

private:
    QSettings m_settings;
};
