#include "host/projectmodel/StoreRows.h"

#include "host/projectmodel/RecordChecksum.h"

#include <algorithm>

qint64 textChecksum(const QString& table, const QString& key, const QString& text)
{
    return RecordChecksum().add(table).add(key).add(text).value();
}

qint64 tallyChecksum(const QString& table, int rows)
{
    return RecordChecksum().add(table).add(static_cast<quint64>(rows)).value();
}

QString presentRole()
{
    return QStringLiteral("present");
}

QString formerRole()
{
    return QStringLiteral("former");
}

bool isStorableText(const QString& text)
{
    // A null text would be stored as no value at all.
    return !text.isNull() && !text.startsWith(QChar::ByteOrderMark)
        && std::none_of(text.begin(), text.end(), [](QChar unit) { return unit.isSurrogate(); });
}

QString storableText(const QString& text)
{
    if (isStorableText(text))
        return text;
    const QByteArray bytes = text.toUtf8();
    QString sound = QString::fromUtf8(bytes.constData(), bytes.size());
    while (sound.startsWith(QChar::ByteOrderMark))
        sound.remove(0, 1);
    return sound.isNull() ? QStringLiteral("") : sound;
}
