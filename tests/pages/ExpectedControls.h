#pragma once

#include "tests/pages/ModePage.h"

#include <QMap>

/// What a freshly opened mode and parameter page ought to show of a record, worked out anew from its texts: marks and
/// texts, entries and selections of the boxes, what is enabled and what is hidden. Knows nothing of the page's tables.
class ExpectedControls {
public:
    /// The texts are those before the page was opened; a key that is missing counts as empty.
    ExpectedControls(
        const ModePage& page, const QString& type, const QString& model, const QMap<QString, QString>& texts);

    /// Controls that show otherwise, each with what is wrong.
    QStringList differences();

private:
    bool isTrue(const char* key) const;
    bool isFalse(const char* key) const;
    /// The position that a key holds in a list, 0 past its end.
    int position(const char* key, const QStringList& list) const;

    void checkMarks();
    void checkFields();
    void checkPoints();
    void checkPulseLists();
    void checkEncoderLists();
    void checkEnabled();
    void checkVisible();

    void mark(const char* button, bool checked);
    void entries(const char* box, const QStringList& expected, int index);
    void enabled(const char* control, bool expected);

    const ModePage& m_page;
    QString m_type;
    QString m_model;
    QMap<QString, QString> m_texts;
    QStringList m_wrong;
};
