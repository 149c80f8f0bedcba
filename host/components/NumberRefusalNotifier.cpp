#include "host/components/NumberRefusalNotifier.h"

namespace {

QString boundText(const QVariant& bound)
{
    switch (static_cast<QMetaType::Type>(bound.type())) {
    case QMetaType::Double:
        return QString::number(bound.toDouble(), 'g', 15);
    case QMetaType::Float:
        return QString::number(bound.toDouble(), 'g', 7);
    default:
        return bound.toString();
    }
}

} // namespace

QString NumberRefusal::range() const
{
    const QString from = boundText(low);
    const QString to = boundText(high);
    if (lowExcluded && highExcluded)
        return NumberRefusalNotifier::tr("above %1, below %2").arg(from, to);
    if (lowExcluded)
        return NumberRefusalNotifier::tr("above %1, at most %2").arg(from, to);
    if (highExcluded)
        return NumberRefusalNotifier::tr("at least %1, below %2").arg(from, to);
    return NumberRefusalNotifier::tr("%1 to %2").arg(from, to);
}

NumberRefusalNotifier* NumberRefusalNotifier::instance()
{
    static NumberRefusalNotifier notifier;
    return &notifier;
}

void NumberRefusalNotifier::notify(const NumberRefusal& refusal)
{
    emit numberRefused(refusal);
}
