#include "host/projectmodel/ControllerDescription.h"

#include <QtTest>

/// What is wrong with a description as a text, before its meaning is looked at.
class JsonSyntaxTest : public QObject {
    Q_OBJECT

private slots:
    void aTextThatIsNoSoundJsonIsRefused_data();
    void aTextThatIsNoSoundJsonIsRefused();
};

void JsonSyntaxTest::aTextThatIsNoSoundJsonIsRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* json, const char* expected) {
        QTest::newRow(name) << QByteArray(json) << QString::fromLatin1(expected);
    };
    row("an empty file", "", "f: at byte ");
    row("a truncated file", "{\"model\": \"K", "f: at byte ");
    row("a list at the top", "[]", "f: /: ");
    row("a doubled member at the top", "{\"model\": \"A\", \"model\": \"B\"}", "f: /model: ");
    row("a doubled member below", "{\"lists\": {\"A\": [], \"B\": [], \"A\": []}}", "f: /lists/A: ");
    row("a doubled member in a list", "{\"p\": [1, {\"a\": 1}, {\"k\": -1.5e3, \"k\": null}]}", "f: /p/2/k: ");
    row("a doubled member under two spellings", "{\"A\": {}, \"\\u0041\": true}", "f: /A: ");
    row("a name with a quotation mark is no end of a text", "{\"a\\\"\": 1, \"b\": \"}\", \"b\": 2}", "f: /b: ");
    row("like names in unlike objects are no doubles", "{\"a\": {\"k\": 1}, \"b\": {\"k\": 1}}", "f: /model: ");
}

void JsonSyntaxTest::aTextThatIsNoSoundJsonIsRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, expected);
    ControllerDescription controller;
    QString error;
    QVERIFY(!controller.read(json, QStringLiteral("f"), &error));
    QVERIFY2(error.startsWith(expected), qPrintable(error));
}

QTEST_GUILESS_MAIN(JsonSyntaxTest)
#include "JsonSyntaxTest.moc"
