#include "host/components/PlainToolTip.h"

#include <QTextDocument>
#include <QtTest>

/// Tool tips show markup; a text that somebody else has chosen must read there as it stands.
class PlainToolTipTest : public QObject {
    Q_OBJECT

private slots:
    void textsReadAsTheyStand_data();
    void textsReadAsTheyStand();
};

void PlainToolTipTest::textsReadAsTheyStand_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << "";
    QTest::newRow("a plain text") << "Main.stop is a variable";
    QTest::newRow("signs that are no markup") << "a < b && c > d";
    QTest::newRow("markup") << "<b>bold</b>";
    QTest::newRow("a picture") << "<img src=\"x.png\"> in a path";
    QTest::newRow("an entity in markup") << "<i>&lt;</i>";
    QTest::newRow("lines") << "<p>one</p>\ntwo";
}

void PlainToolTipTest::textsReadAsTheyStand()
{
    QFETCH(QString, text);
    const QString tip = plainToolTip(text);
    QString shown = tip;
    if (Qt::mightBeRichText(tip)) {
        QTextDocument document;
        document.setHtml(tip);
        shown = document.toPlainText();
    }
    QCOMPARE(shown, text);
}

QTEST_MAIN(PlainToolTipTest)
#include "PlainToolTipTest.moc"
