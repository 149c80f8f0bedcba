#include "axisdata/DoubleValidator.h"

DoubleValidator::DoubleValidator(int decimals, QObject* parent) : QDoubleValidator(parent)
{
    setDecimals(decimals);
    setNotation(QDoubleValidator::StandardNotation);
}

DoubleValidator::~DoubleValidator() = default;

QValidator::State DoubleValidator::validate(QString& input, int& pos) const
{
    if (input == QLatin1String("-") || input.isEmpty() || input == QLatin1String("+") || input == QLatin1String("."))
        return QValidator::Acceptable;
    return QDoubleValidator::validate(input, pos);
}
