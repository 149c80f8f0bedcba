#include "host/languagecore/Keywords.h"

#include <QtTest>

/// The words that may name nothing.
class KeywordsTest : public QObject {
    Q_OBJECT

private slots:
    void words_data();
    void words();
};

void KeywordsTest::words_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("reserved");

    for (const char* word : { "PROGRAM", "End_Function_Block", "if", "VAR_GLOBAL", "xor", "TRUE", "BOOL", "ltime",
             "Tod", "STRING", "ANY_INT", "ABS", "limit", "CONCAT", "INT_TO_REAL", "to_dint", "REAL_TO_INT",
             "BCD_TO_UINT", "UINT_TO_BCD", "TIME_OF_DAY_TO_TIME", "ANY_TO_BYTE" })
        QTest::addRow("%s is reserved", word) << QString::fromLatin1(word) << true;
    for (const char* word : { "", "Axis_0", "PROGRAM_1", "MYTYPE", "LIMITS", "TO_", "_TO_INT_", "FOO_TO_INT",
             "INT_TO_FOO", "TO_TO", "Int_To", "ready" })
        QTest::addRow("'%s' is free", word) << QString::fromLatin1(word) << false;
}

void KeywordsTest::words()
{
    QFETCH(const QString, word);
    QTEST(ac::Keywords::isReserved(word.toStdString()), "reserved");
}

QTEST_GUILESS_MAIN(KeywordsTest)
#include "KeywordsTest.moc"
