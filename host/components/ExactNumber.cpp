#include "host/components/ExactNumber.h"

#include <cmath>
#include <limits>

// The widest type of the platform holds each 64-bit integer, signed or not, as well as each double.
static_assert(
    std::numeric_limits<long double>::digits >= std::numeric_limits<quint64>::digits, "integers would lose digits");

std::optional<ExactNumber> ExactNumber::fromVariant(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return ExactNumber(static_cast<long double>(variant.toLongLong()));
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return ExactNumber(static_cast<long double>(variant.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double:
        break;
    default:
        return std::nullopt;
    }
    const double value = variant.toDouble();
    return std::isnan(value) ? std::nullopt : std::optional<ExactNumber>(ExactNumber(value));
}

bool ExactNumber::isFinite() const
{
    return std::isfinite(m_value);
}
