#pragma once

#include <QString>
#include <QVariant>

#include <functional>

class QLineEdit;

/// How the text of a numeric field is read and written.
enum class NumberKind {
    /// QString::toDouble; stored and shown with six digits behind the point.
    Real,
    /// QString::toUInt in base 10; stored as typed.
    Unsigned,
    /// QString::toUInt in base 16; stored as typed.
    Hexadecimal,
    /// QString::toLongLong in base 10, its low 32 bits as an unsigned number; stored as typed.
    NarrowedUnsigned,
    /// QString::toFloat; stored and shown with one digit behind the point.
    Tenths,
};

/// One bound of a numeric field: a number, or the number that another key of the record holds.
struct NumberBound {
    NumberBound(int number); // NOLINT: rows of a table read best as plain numbers
    NumberBound(double number); // NOLINT
    /// The bound is the stored text of the key, read with toDouble; it may be excluded from the range.
    static NumberBound stored(const QString& key, bool excluded = false);

    QVariant fixed;
    QString key;
    bool excluded = false;
};

/// A row of a page's table of numeric fields: all that its commit needs to know.
struct NumberRule {
    NumberKind kind;
    NumberBound low;
    NumberBound high;
};

/// Where the committed text of a field lives.
struct NumberStore {
    /// The text that was good last.
    std::function<QString()> read;
    std::function<void(const QString&)> write;
    /// The stored text of another key, for bounds.
    std::function<QString(const QString& key)> bound;
};

/// What a commit did.
enum class CommitResult {
    /// The field still has the focus, or there is no record: nothing was done.
    StillEditing,
    Stored,
    /// The last good text is back in the field.
    Refused,
};

/// The commit rule of all numeric fields: nothing while the field has the focus; then read the text, ignoring whether
/// it is a number (a half-typed one counts as 0), judge it against the bounds, and store it or put the last good text
/// back. Reals are written with the digits of their kind behind the point, in the store and in the field; integers stay
/// as typed, in the field and in what the store is given.
CommitResult commitNumber(QLineEdit& field, const NumberRule& rule, const NumberStore& store);

/// The same on a key of an axis record. A missing record ends it silently with the field as the user left it.
CommitResult commitNumber(
    QLineEdit& field, const NumberRule& rule, const QString& key, const QString& projectName, quint32 axisId);

/// The normal form of a real: fixed notation, six digits behind the point.
QString realText(double value);
