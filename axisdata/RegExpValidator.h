#pragma once

#include <QRegExpValidator>

/// A pattern validator that lets half-typed numbers stand: a lone sign and an empty text are acceptable.
class RegExpValidator : public QRegExpValidator {
    Q_OBJECT

public:
    /// The pattern is case-sensitive, in QRegExp's default syntax.
    RegExpValidator(const QString& pattern, QObject* parent);
    ~RegExpValidator() override;

    QValidator::State validate(QString& input, int& pos) const override;

    /// The patterns of the integer fields.
    static QString decimalPattern() { return QStringLiteral("-?[0-9]*"); }
    static QString hexadecimalPattern() { return QStringLiteral("-?[A-Fa-f0-9]*"); }
};
