#pragma once

#include <QMap>
#include <QString>

/// What a plug-in says of itself: the JSON object in PluginInterface::packageText.
struct PluginPackage {
    /// Texts by language ("zh_CN", "en_US"); a package that gives one plain text has it under an empty key.
    using Texts = QMap<QString, QString>;

    QString name;
    QString version;
    Texts description;
    Texts provider;
    Texts category;
    /// Package name to the version that is needed at least.
    QMap<QString, QString> dependencies;
    /// The user cannot take the plug-in out of service.
    bool forceLoad = false;

    /// Reads a package text. False sets the error to what is wrong with it; the object is then unchanged.
    bool read(const QString& text, QString* error);

    /// The text in that language, else in English, else any.
    static QString inLanguage(const Texts& texts, const QString& language);
    /// True when a version that is present serves where another is wanted: the same major version, not older.
    static bool serves(const QString& present, const QString& wanted);
};
