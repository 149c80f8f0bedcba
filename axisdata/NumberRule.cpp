#include "axisdata/NumberRule.h"

#include "axisdata/AxisRecord.h"
#include "host/components/DataVerification.h"

#include <QLineEdit>

#include <optional>

NumberBound::NumberBound(int number) : fixed(number) { }

NumberBound::NumberBound(double number) : fixed(number) { }

NumberBound NumberBound::stored(const QString& key, bool excluded)
{
    NumberBound bound(0);
    bound.key = key;
    bound.excluded = excluded;
    return bound;
}

namespace {

QVariant parsed(NumberKind kind, const QString& text)
{
    switch (kind) {
    case NumberKind::Real:
        return text.toDouble();
    case NumberKind::Unsigned:
        return text.toUInt(nullptr, 10);
    case NumberKind::Hexadecimal:
        return text.toUInt(nullptr, 16);
    case NumberKind::NarrowedUnsigned:
        return static_cast<uint>(text.toLongLong(nullptr, 10));
    case NumberKind::Tenths:
        return text.toFloat();
    }
    Q_UNREACHABLE();
}

/// Digits behind the point that a committed text of the kind has; none for a text that stays as typed.
std::optional<int> decimals(NumberKind kind)
{
    switch (kind) {
    case NumberKind::Real:
        return 6;
    case NumberKind::Tenths:
        return 1;
    case NumberKind::Unsigned:
    case NumberKind::Hexadecimal:
    case NumberKind::NarrowedUnsigned:
        break;
    }
    return std::nullopt;
}

QVariant boundValue(const NumberBound& bound, const NumberStore& store)
{
    return bound.key.isEmpty() ? bound.fixed : QVariant(store.bound(bound.key).toDouble());
}

} // namespace

QString realText(double value)
{
    return QString::number(value, 'd', 6);
}

CommitResult commitNumber(QLineEdit& field, const NumberRule& rule, const NumberStore& store)
{
    if (field.hasFocus())
        return CommitResult::StillEditing;
    QString text = field.text();
    const QVariant value = parsed(rule.kind, text);
    const bool valid = DataVerification::getInstance().isValidNumber(
        text, value, boundValue(rule.low, store), boundValue(rule.high, store), rule.low.excluded, rule.high.excluded);
    if (!valid) {
        field.setText(store.read());
        return CommitResult::Refused;
    }
    const std::optional<int> digits = decimals(rule.kind);
    if (digits)
        text = QString::number(value.toDouble(), 'd', *digits);
    store.write(text);
    if (digits)
        field.setText(text);
    return CommitResult::Stored;
}

CommitResult commitNumber(
    QLineEdit& field, const NumberRule& rule, const QString& key, const QString& projectName, quint32 axisId)
{
    if (field.hasFocus())
        return CommitResult::StillEditing;
    const AxisRecord record(projectName, axisId);
    if (!record)
        return CommitResult::StillEditing;
    return commitNumber(field, rule,
        { [&] { return record.text(key); }, [&](const QString& text) { record.set(key, text); },
            [&](const QString& other) { return record.text(other); } });
}
