#include "workbench/SourceView.h"

#include <QtTest>

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class SourceViewTest : public QObject {
    Q_OBJECT

private slots:
    void namesAtTheCursor_data();
    void namesAtTheCursor();
};

void SourceViewTest::namesAtTheCursor_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("name");
    // The cursor stands at the bar.
    QTest::newRow("in a name") << text("x := fr|ont;") << text("front");
    QTest::newRow("before it") << text("x := |front;") << text("front");
    QTest::newRow("behind it") << text("x := front|;") << text("front");
    QTest::newRow("a member with what is before it") << text("a.b|c.d") << text("a.bc");
    QTest::newRow("in an index") << text("a[n|]") << text("n");
    QTest::newRow("behind an index") << text("a[1]|.open") << text("a[1]");
    QTest::newRow("a member behind an index") << text("a[n + 1].op|en") << text("a[n + 1].open");
    QTest::newRow("a member behind an index in an index") << text("x := a[b[2], c].open|") << text("a[b[2], c].open");
    QTest::newRow("an index that begins nowhere") << text("x := 1].op|en") << text(".open");
    QTest::newRow("nothing") << text("x := | 1") << QString();
}

void SourceViewTest::namesAtTheCursor()
{
    QFETCH(QString, line);
    SourceView source;
    const int column = line.indexOf(QLatin1Char('|'));
    source.setPlainText(line.remove(column, 1));
    source.goTo(1, column + 1);
    QTEST(source.nameAtCursor(), "name");
}

QTEST_MAIN(SourceViewTest)
#include "SourceViewTest.moc"
