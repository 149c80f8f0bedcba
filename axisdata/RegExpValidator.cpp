#include "axisdata/RegExpValidator.h"

RegExpValidator::RegExpValidator(const QString& pattern, QObject* parent)
    : QRegExpValidator(QRegExp(pattern, Qt::CaseSensitive, QRegExp::RegExp), parent)
{
}

RegExpValidator::~RegExpValidator() = default;

QValidator::State RegExpValidator::validate(QString& input, int& pos) const
{
    if (input == QLatin1String("-") || input.isEmpty() || input == QLatin1String("+"))
        return QValidator::Acceptable;
    return QRegExpValidator::validate(input, pos);
}
