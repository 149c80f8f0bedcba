#include "tests/support/CallLog.h"

#include <algorithm>

namespace {

QString operationOf(const QString& entry)
{
    return entry.section(QLatin1Char('('), 0, 0);
}

} // namespace

void CallLog::add(const char* operation, const QStringList& arguments)
{
    m_entries.append(
        QString::fromLatin1(operation) + QLatin1Char('(') + arguments.join(QStringLiteral(", ")) + QLatin1Char(')'));
    if (heard)
        heard(QString(m_entries.last()));
}

void CallLog::clear()
{
    m_entries.clear();
}

QStringList CallLog::entriesOf(const QStringList& operations) const
{
    QStringList found;
    for (const QString& entry : m_entries) {
        if (operations.contains(operationOf(entry)))
            found.append(entry);
    }
    return found;
}

int CallLog::count(const QString& operation) const
{
    return static_cast<int>(std::count_if(m_entries.begin(), m_entries.end(),
        [&operation](const QString& entry) { return operationOf(entry) == operation; }));
}

QString CallLog::text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}
