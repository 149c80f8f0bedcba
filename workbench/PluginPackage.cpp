#include "workbench/PluginPackage.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVersionNumber>

namespace {

/// The package is no QObject; its texts have its name as their context.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(PluginPackage)
};

bool readText(const QJsonObject& object, const QString& key, QString* text, QString* error)
{
    if (!object.value(key).isString() || object.value(key).toString().isEmpty()) {
        *error = Text::tr("The package text has no \"%1\".").arg(key);
        return false;
    }
    *text = object.value(key).toString();
    return true;
}

bool readMap(const QJsonValue& value, const QString& key, QMap<QString, QString>* map, QString* error)
{
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry->isString()) {
            *error = Text::tr("\"%1\" of the package text holds something that is no text under \"%2\".")
                         .arg(key, entry.key());
            return false;
        }
        map->insert(entry.key(), entry->toString());
    }
    if (value.isObject() || value.isUndefined())
        return true;
    *error = Text::tr("\"%1\" of the package text is no object.").arg(key);
    return false;
}

bool readTexts(const QJsonObject& object, const QString& key, PluginPackage::Texts* texts, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        return readMap(value, key, texts, error);
    texts->insert(QString(), value.toString());
    return true;
}

bool readDependencies(const QJsonObject& object, QMap<QString, QString>* dependencies, QString* error)
{
    const QString key = QStringLiteral("dependencies");
    if (!readMap(object.value(key), key, dependencies, error))
        return false;
    for (auto entry = dependencies->begin(); entry != dependencies->end(); ++entry) {
        if (QVersionNumber::fromString(*entry).isNull()) {
            *error = Text::tr("The package text wants \"%1\" in the version \"%2\", which is none.")
                         .arg(entry.key(), *entry);
            return false;
        }
    }
    return true;
}

} // namespace

bool PluginPackage::read(const QString& text, QString* error)
{
    if (text.trimmed().isEmpty()) {
        *error = Text::tr("The package text is empty.");
        return false;
    }
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &fault);
    if (!document.isObject()) {
        *error = fault.error == QJsonParseError::NoError
            ? Text::tr("The package text is no JSON object.")
            : Text::tr("The package text is no JSON: %1, at byte %2.").arg(fault.errorString()).arg(fault.offset);
        return false;
    }
    const QJsonObject object = document.object();
    PluginPackage read;
    const bool sound = readText(object, QStringLiteral("name"), &read.name, error)
        && readText(object, QStringLiteral("version"), &read.version, error)
        && readTexts(object, QStringLiteral("descript"), &read.description, error)
        && readTexts(object, QStringLiteral("provider"), &read.provider, error)
        && readTexts(object, QStringLiteral("catgory"), &read.category, error)
        && readDependencies(object, &read.dependencies, error);
    read.forceLoad = object.value(QStringLiteral("forceLoad")).toBool(false);
    if (sound)
        *this = read;
    return sound;
}

QString PluginPackage::inLanguage(const Texts& texts, const QString& language)
{
    for (const QString& key : { language, QStringLiteral("en_US"), QString() }) {
        if (texts.contains(key))
            return texts.value(key);
    }
    return texts.isEmpty() ? QString() : texts.first();
}

bool PluginPackage::serves(const QString& present, const QString& wanted)
{
    const QVersionNumber there = QVersionNumber::fromString(present);
    const QVersionNumber needed = QVersionNumber::fromString(wanted);
    return !there.isNull() && there.majorVersion() == needed.majorVersion() && there >= needed;
}
