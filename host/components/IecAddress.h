#pragma once

#include <QString>

/// A direct address of the program, read from its text.
struct IecAddress {
    /// Size letter in upper case: X, B, W, D or L; null when the text is no address.
    QChar size;

    bool isValid() const { return !size.isNull(); }
    bool isBit() const { return size == QLatin1Char('X'); }

    static IecAddress parse(const QString& text);
    /// The size letter that a variable of that elementary type takes, null for other types.
    static QChar sizeOfType(const QString& type);
};
