#include "host/projectmodel/JsonReader.h"

#include <QJsonArray>
#include <QJsonObject>

JsonReader::JsonReader(const QJsonValue& value, const QString& path, QString* error)
    : m_value(value), m_path(path), m_error(error)
{
}

JsonReader JsonReader::member(const QString& key) const
{
    JsonReader found = at(m_value.toObject().value(key), key);
    if (!m_value.isObject())
        fail(tr("an object is expected"));
    else if (!has(key))
        found.fail(tr("is missing"));
    return found;
}

bool JsonReader::has(const QString& key) const
{
    return m_value.toObject().contains(key);
}

QStringList JsonReader::keys() const
{
    if (!m_value.isObject())
        fail(tr("an object is expected"));
    return m_value.toObject().keys();
}

QVector<JsonReader> JsonReader::elements() const
{
    if (!m_value.isArray())
        fail(tr("a list is expected"));
    QVector<JsonReader> all;
    const QJsonArray array = m_value.toArray();
    for (int i = 0; i < array.size(); ++i)
        all.append(at(array.at(i), QString::number(i)));
    return all;
}

QString JsonReader::text() const
{
    if (!m_value.isString())
        fail(tr("a text is expected"));
    else if (m_value.toString().isEmpty())
        fail(tr("the text is empty"));
    return m_value.toString();
}

QStringList JsonReader::texts() const
{
    QStringList all;
    const QVector<JsonReader> list = elements();
    for (const JsonReader& each : list) {
        const QString text = each.text();
        if (all.contains(text))
            each.fail(tr("\"%1\" stands in the list twice").arg(text));
        all.append(text);
    }
    return all;
}

int JsonReader::number(int least, int most) const
{
    const double number = m_value.toDouble();
    if (!m_value.isDouble())
        fail(tr("a number is expected"));
    else if (!(number >= least && number <= most))
        fail(tr("%1 is outside %2 to %3").arg(number).arg(least).arg(most));
    else if (number != static_cast<int>(number))
        fail(tr("a whole number is expected"));
    else
        return static_cast<int>(number);
    return least;
}

bool JsonReader::fail(const QString& reason) const
{
    if (isGood())
        *m_error = m_path + QStringLiteral(": ") + reason;
    return false;
}

JsonReader JsonReader::at(const QJsonValue& value, const QString& step) const
{
    return JsonReader(value, m_path + QLatin1Char('/') + step, m_error);
}
