#include "axisdata/DoubleValidator.h"

#include <QLocale>

DoubleValidator::DoubleValidator(int decimals, QObject* parent) : QDoubleValidator(parent)
{
    setDecimals(decimals);
    setNotation(QDoubleValidator::StandardNotation);
    // Records hold numbers with a point and no group separators, and fields are read that way, whatever the user's
    // language: "1,5" must not get past the keyboard and then count as 0.
    QLocale plain = QLocale::c();
    plain.setNumberOptions(QLocale::RejectGroupSeparator);
    setLocale(plain);
}

DoubleValidator::~DoubleValidator() = default;

QValidator::State DoubleValidator::validate(QString& input, int& pos) const
{
    if (input == QLatin1String("-") || input.isEmpty() || input == QLatin1String("+") || input == QLatin1String("."))
        return QValidator::Acceptable;
    return QDoubleValidator::validate(input, pos);
}
