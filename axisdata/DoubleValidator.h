#pragma once

#include <QDoubleValidator>

/// A double validator that lets half-typed numbers stand: a lone sign, a lone point and an empty text are acceptable,
/// so that such a field still reports that its editing has finished.
class DoubleValidator : public QDoubleValidator {
    Q_OBJECT

public:
    /// Standard notation with that many digits behind the point, unlimited range; a decimal point and no group
    /// separators in any language.
    DoubleValidator(int decimals, QObject* parent);
    ~DoubleValidator() override;

    QValidator::State validate(QString& input, int& pos) const override;
};
