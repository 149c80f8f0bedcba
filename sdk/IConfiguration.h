#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QVariant>

/// A table of values by key: "ICookies" lives as long as the host runs, "ISettings" is kept for the user.
/// Main thread only.
class KESTRUN_SDK_EXPORT IConfiguration : public QObject {
    Q_OBJECT

public:
    explicit IConfiguration(QObject* parent = nullptr);
    ~IConfiguration() override;

    /// Stores a value; emits valueChanged when it differs from the present one.
    virtual void setValue(const QString& key, const QVariant& value) = 0;
    /// The value of the key, else the fallback.
    virtual QVariant value(const QString& key, const QVariant& fallback) const = 0;

signals:
    void valueChanged(QString key);
};
