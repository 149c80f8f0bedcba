#pragma once

#include <QVariant>

#include <optional>

/// A number out of a variant, held so that no variant type loses a digit.
class ExactNumber {
public:
    /// Nothing for a variant that holds no number, and for nan. Booleans and texts are no numbers.
    static std::optional<ExactNumber> fromVariant(const QVariant& variant);

    bool isFinite() const;
    bool operator<(const ExactNumber& other) const { return m_value < other.m_value; }

private:
    explicit ExactNumber(long double value) : m_value(value) { }

    long double m_value;
};
