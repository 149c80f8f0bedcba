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
    void namesAtASelection_data();
    void namesAtASelection();
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
    QTest::newRow("a member behind blanks") << text("x := Aside . st|op;") << text("Aside . stop");
    QTest::newRow("an index behind a blank") << text("x := row [1]. op|en;") << text("row [1]. open");
    QTest::newRow("an index in a second one") << text("x := row [1]\t[2].open|;") << text("row [1]\t[2].open");
    QTest::newRow("a name behind a blank") << text("NOT st|op") << text("stop");
    QTest::newRow("a name behind a blank and an index") << text("row[1] st|op") << text("stop");
    QTest::newRow("an index behind a sign") << text("x := [1]|") << text("[1]");
    QTest::newRow("the end of a range") << text("row : ARRAY [0..LA|ST] OF BOOL;") << text("LAST");
    QTest::newRow("the begin of a range") << text("n : INT (FIR|ST..LAST);") << text("FIRST");
    QTest::newRow("a path at the end of a range") << text("1..Main.LI|M:") << text("Main.LIM");
    QTest::newRow("the end of a range behind blanks") << text("1 .. LI|M:") << text("LIM");
    QTest::newRow("the begin of a range before blanks") << text("Main.LI|M .. 3:") << text("Main.LIM");
    QTest::newRow("what THIS points to") << text("THIS^.st|op := x;") << text("THIS^.stop");
    QTest::newRow("what a pointer points to, with blanks") << text("x := p ^ . op|en;") << text("p ^ . open");
    QTest::newRow("by a pointer in an array") << text("x := p[1]^[2].op|en;") << text("p[1]^[2].open");
    QTest::newRow("a pointer alone") << text("x := |p^.open;") << text("p");
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

void SourceViewTest::namesAtASelection_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    // The bars stand around what is selected.
    QTest::newRow("a name") << text("x := |front|;") << text("front");
    QTest::newRow("a member") << text("x := Aside.|stop|;") << text("Aside.stop");
    QTest::newRow("a member with the blank behind it") << text("Aside.|stop |:= x;") << text("Aside.stop");
    QTest::newRow("a name with blanks on both sides") << text("x :=|  front  |;") << text("front");
    QTest::newRow("a part of a name") << text("x := Aside.s|t|op;") << text("Aside.stop");
    QTest::newRow("what a member belongs to") << text("x := |Aside|.stop;") << text("Aside");
    QTest::newRow("a whole path") << text("x := |Aside.stop|;") << text("Aside.stop");
    QTest::newRow("a member behind an index") << text("grid[1, 2].|open|") << text("grid[1, 2].open");
    QTest::newRow("an index with what is behind it") << text("grid|[1, 2].open|") << text("grid[1, 2].open");
    QTest::newRow("the end of a range") << text("ARRAY [0..|LAST|] OF BOOL") << text("LAST");
    QTest::newRow("more than a name") << text("x := |front AND back|;") << text("front AND back");
    QTest::newRow("the same name twice") << text("front := |front|;") << text("front");
    QTest::newRow("lines") << text("a|b\nc|d")
                           << QString(QString(text("b") + QChar(QChar::ParagraphSeparator)) + QLatin1Char('c'));
    QTest::newRow("blanks") << text("front |  |") << QString();
}

void SourceViewTest::namesAtASelection()
{
    QFETCH(QString, text);
    for (const bool backwards : { false, true }) {
        const QStringList parts = text.split(QLatin1Char('|'));
        SourceView source;
        source.setPlainText(parts.join(QString()));
        const int begin = parts.at(0).size();
        const int end = begin + parts.at(1).size();
        QTextCursor cursor = source.textCursor();
        cursor.setPosition(backwards ? end : begin);
        cursor.setPosition(backwards ? begin : end, QTextCursor::KeepAnchor);
        source.setTextCursor(cursor);
        QTEST(source.nameAtCursor(), "name");
    }
}

QTEST_MAIN(SourceViewTest)
#include "SourceViewTest.moc"
