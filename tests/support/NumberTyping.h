#pragma once

#include <QStringList>
#include <QVector>

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

    struct Attempt {
        QString text;
        How how;

        /// Tells the attempt in a failure's message.
        QByteArray name() const;
    };
    /// Every piece of rubbish in every way.
    static QVector<Attempt> attempts();

    /// What a field took of an attempt before it was left, and whether that is a finished text.
    struct Taken {
        QString left;
        bool finished;
    };
    /// Makes the attempt and leaves the field by Tab.
    static Taken enterAndTab(QLineEdit* field, const Attempt& attempt);
};
