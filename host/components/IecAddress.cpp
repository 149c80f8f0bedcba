#include "host/components/IecAddress.h"

#include <QHash>
#include <QRegularExpression>

#include <limits>

namespace {

bool fits(const QString& digits)
{
    bool ok = false;
    const qulonglong number = digits.toULongLong(&ok);
    return ok && number <= static_cast<qulonglong>(std::numeric_limits<int>::max());
}

} // namespace

IecAddress IecAddress::parse(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A%[IQM](?:(X)([0-9]+)\\.0*[0-7]|([BWDL])([0-9]+))\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    const int group = match.capturedStart(1) >= 0 ? 1 : 3;
    if (!fits(match.captured(group + 1)))
        return {};
    return { match.captured(group).at(0).toUpper() };
}

QChar IecAddress::sizeOfType(const QString& type)
{
    static const QHash<QString, char> sizes = [] {
        const QHash<char, QStringList> types{
            { 'X', { QStringLiteral("BOOL") } },
            { 'B', { QStringLiteral("BYTE"), QStringLiteral("SINT"), QStringLiteral("USINT") } },
            { 'W', { QStringLiteral("WORD"), QStringLiteral("INT"), QStringLiteral("UINT") } },
            { 'D',
                { QStringLiteral("DWORD"), QStringLiteral("DINT"), QStringLiteral("UDINT"), QStringLiteral("REAL"),
                    QStringLiteral("TIME"), QStringLiteral("DATE"), QStringLiteral("TIME_OF_DAY"),
                    QStringLiteral("TOD") } },
            { 'L',
                { QStringLiteral("LWORD"), QStringLiteral("LINT"), QStringLiteral("ULINT"), QStringLiteral("LREAL"),
                    QStringLiteral("DATE_AND_TIME"), QStringLiteral("DT") } },
        };
        QHash<QString, char> byType;
        for (auto size = types.begin(); size != types.end(); ++size) {
            for (const QString& each : size.value())
                byType.insert(each, size.key());
        }
        return byType;
    }();
    const char size = sizes.value(type.toUpper(), '\0');
    return size == '\0' ? QChar() : QChar::fromLatin1(size);
}
