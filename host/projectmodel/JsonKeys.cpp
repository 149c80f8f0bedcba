#include "host/projectmodel/JsonKeys.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <cctype>
#include <cstring>

namespace {

/// Walks over a JSON text that is known to be sound, so it looks only for what separates its parts.
class KeyWalk {
public:
    explicit KeyWalk(const QByteArray& json) : m_at(json.constData()), m_end(m_at + json.size()) { }

    QString run()
    {
        value(QString());
        return m_doubled;
    }

private:
    void value(const QString& path)
    {
        switch (next()) {
        case '{':
            object(path);
            break;
        case '[':
            array(path);
            break;
        case '"':
            text();
            break;
        default:
            while (m_at < m_end && !std::strchr(",]} \t\r\n", *m_at))
                ++m_at;
        }
    }

    void object(const QString& path)
    {
        QSet<QString> keys;
        for (++m_at; next() == '"'; passComma()) {
            const QString key = text();
            const QString member = path + QLatin1Char('/') + key;
            if (keys.contains(key) && m_doubled.isEmpty())
                m_doubled = member;
            keys.insert(key);
            next();
            ++m_at;
            value(member);
        }
        ++m_at;
    }

    void array(const QString& path)
    {
        int index = 0;
        for (++m_at; m_at < m_end && next() != ']'; passComma())
            value(path + QLatin1Char('/') + QString::number(index++));
        ++m_at;
    }

    QString text()
    {
        const char* const start = m_at++;
        bool isEscaped = false;
        for (; m_at < m_end && *m_at != '"'; ++m_at) {
            if (*m_at == '\\') {
                isEscaped = true;
                ++m_at;
            }
        }
        ++m_at;
        const QByteArray quoted(start, static_cast<int>(m_at - start));
        if (!isEscaped)
            return QString::fromUtf8(quoted.mid(1, quoted.size() - 2));
        return QJsonDocument::fromJson('[' + quoted + ']').array().at(0).toString();
    }

    /// The first character that is no blank; 0 at the end.
    char next()
    {
        while (m_at < m_end && std::isspace(static_cast<unsigned char>(*m_at)))
            ++m_at;
        return m_at < m_end ? *m_at : '\0';
    }

    void passComma()
    {
        if (next() == ',')
            ++m_at;
    }

    const char* m_at;
    const char* m_end;
    QString m_doubled;
};

} // namespace

QString pathOfDoubledKey(const QByteArray& json)
{
    return KeyWalk(json).run();
}
