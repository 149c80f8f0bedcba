#include "host/projectmodel/AxisNumbers.h"

#include <QSet>

namespace {

/// -1 for a text that is no such number.
int numberIn(const QMap<QString, QString>& record, const QString& key)
{
    bool ok = false;
    const int number = record.value(key).toInt(&ok);
    return ok ? number : -1;
}

int lowestFree(const QSet<int>& taken, int from)
{
    while (taken.contains(from))
        ++from;
    return from;
}

} // namespace

QStringList axisNumberKeys()
{
    return { QStringLiteral("AxisNo"), QStringLiteral("AxisID") };
}

int lowestFreeNumber(const std::vector<QMap<QString, QString>*>& records, const QString& key)
{
    QSet<int> taken;
    for (const auto* each : records)
        taken.insert(numberIn(*each, key));
    return lowestFree(taken, 0);
}

void repairNumbers(const std::vector<QMap<QString, QString>*>& records, const QString& key, int limit)
{
    const int end = limit > 0 ? limit : 256;
    QSet<int> taken;
    std::vector<QMap<QString, QString>*> unsound;
    for (auto* each : records) {
        const int number = numberIn(*each, key);
        if (number >= 0 && number < end && !taken.contains(number))
            taken.insert(number);
        else
            unsound.push_back(each);
    }
    int next = 0;
    for (auto* each : unsound) {
        next = lowestFree(taken, next);
        taken.insert(next);
        each->insert(key, QString::number(next));
    }
}
