#pragma once

#include <QStringList>

class QLineEdit;

/// Puts text into a numeric field the way a user does, past its validator.
class NumberTyping {
public:
    enum How { Keys, Paste, InputMethod };

    /// Focuses the field, empties it by keys and types the text. Characters beyond Latin-1 come from an input method.
    static void replace(QLineEdit* field, const QString& text);
    static void enter(QLineEdit* field, const QString& text, How how);

    /// What people and clipboards put into numeric fields: signs and points alone, commas, exponents, hundreds of
    /// digits, words, full-width digits, line breaks.
    static QStringList rubbish();
};
