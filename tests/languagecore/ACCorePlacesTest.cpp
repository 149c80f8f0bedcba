#include "host/languagecore/ACCore.h"

#include <QtTest>

#include <algorithm>

using namespace ac;

/// What the text around a declaration says of it: its comment, and the unit at a line of a source.
class ACCorePlacesTest : public QObject {
    Q_OBJECT

private slots:
    void comments_data();
    void comments();
    void unitsAtLines_data();
    void unitsAtLines();
    void namesInsideDeclarations_data();
    void namesInsideDeclarations();
    void reaches_data();
    void reaches();
    void indexValues_data();
    void indexValues();
};

namespace {

const char* const rows = "VAR_GLOBAL CONSTANT FIRST : INT := 1; LAST : INT := 3; END_VAR\n"
                         "PROGRAM Main\n"
                         "VAR CONSTANT LAST : INT := TOP - 1; TOP : INT := 3; END_VAR\n"
                         "VAR n : INT; row : ARRAY [0..3, 1..2] OF Guard; own : ARRAY [0..TOP] OF BOOL; END_VAR\n"
                         "VAR_TEMP t : BOOL; END_VAR\n"
                         "END_PROGRAM\n"
                         "PROGRAM Aside\n"
                         "VAR_EXTERNAL CONSTANT LAST : INT; END_VAR\n"
                         "END_PROGRAM\n"
                         "FUNCTION_BLOCK Base VAR a : Guard; END_VAR VAR_TEMP t : BOOL; END_VAR END_FUNCTION_BLOCK\n"
                         "FUNCTION_BLOCK Blk EXTENDS Base\n"
                         "VAR CONSTANT EDGE : INT := 2; END_VAR VAR row : ARRAY [1..2] OF BOOL; END_VAR\n"
                         "END_FUNCTION_BLOCK\n"
                         "FUNCTION Half : REAL VAR_INPUT speed : REAL; END_VAR END_FUNCTION\n"
                         "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n";

} // namespace

void ACCorePlacesTest::comments_data()
{
    QTest::addColumn<QString>("declaration");
    QTest::addColumn<QString>("comment");

    QTest::newRow("behind, to the end of the line") << "x : BOOL; // the lamp "
                                                    << "the lamp";
    QTest::newRow("behind, in brackets") << "x : BOOL; (* the\n lamp *)"
                                         << "the lamp";
    QTest::newRow("behind, with stars and slashes") << "x : BOOL; /** the lamp **/"
                                                    << "the lamp";
    QTest::newRow("behind, with a bracket at its end") << "x : BOOL; // lamp (red)"
                                                       << "lamp (red)";
    QTest::newRow("behind, in brackets with brackets") << "x : BOOL; (* lamp (red) *)"
                                                       << "lamp (red)";
    QTest::newRow("above") << "// the lamp\n x : BOOL;"
                           << "the lamp";
    QTest::newRow("behind goes before above") << "// above\n x : BOOL; // behind"
                                              << "behind";
    QTest::newRow("above, an empty line between") << "// the lamp\n\n x : BOOL;"
                                                  << "";
    QTest::newRow("behind the variable before") << "y : BOOL; // the other\n x : BOOL;"
                                                << "";
    QTest::newRow("on the next line") << "x : BOOL;\n // the next"
                                      << "";
    QTest::newRow("a pragma") << "x : BOOL; {the lamp}"
                              << "";
    QTest::newRow("an empty one") << "x : BOOL; (**)"
                                  << "";
}

void ACCorePlacesTest::comments()
{
    QFETCH(const QString, declaration);
    ACCore core;
    core.setSources({ { "P", "PROGRAM P\nVAR\n" + declaration.toStdString() + "\nEND_VAR\nEND_PROGRAM" } });
    QVERIFY(core.problems().empty());
    const auto found = std::find_if(core.variables().begin(), core.variables().end(),
        [](const VariableInfo& variable) { return variable.path == "P.x"; });
    QVERIFY(found != core.variables().end());
    QTEST(QString::fromStdString(found->comment), "comment");
}

void ACCorePlacesTest::unitsAtLines_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("unit");
    QTest::newRow("before the first") << "Main" << 1 << QString();
    QTest::newRow("at its name") << "Main" << 2 << "First";
    QTest::newRow("in its variables") << "Main" << 3 << "First";
    QTest::newRow("behind its end") << "Main" << 5 << "First";
    QTest::newRow("in the next one") << "Main" << 7 << "Second";
    QTest::newRow("in a type") << "Main" << 9 << "Guard";
    QTest::newRow("behind the last") << "Main" << 1000 << "Guard";
    QTest::newRow("in a list") << "IO" << 2 << "IO";
    QTest::newRow("in a list behind a type") << "Mixed" << 5 << "Mixed";
    QTest::newRow("in a type before a list") << "Mixed" << 2 << "Door";
    QTest::newRow("in a program between two lists") << "Mixed" << 8 << "Third";
    QTest::newRow("in the second list") << "Mixed" << 12 << "Mixed";
    QTest::newRow("in a list with a name behind the others") << "Mixed" << 15 << "Own";
    QTest::newRow("in an unknown source") << "Elsewhere" << 2 << QString();
    QTest::newRow("at no line") << "Main" << 0 << QString();
}

void ACCorePlacesTest::unitsAtLines()
{
    QFETCH(QString, source);
    QFETCH(int, line);
    QFETCH(QString, unit);
    ACCore core;
    core.setSources({ { "IO", "VAR_GLOBAL\n ready : BOOL;\nEND_VAR\n" },
        { "Mixed",
            "TYPE Door :\nSTRUCT open : BOOL; END_STRUCT\nEND_TYPE\n"
            "VAR_GLOBAL\n open : BOOL;\nEND_VAR\n"
            "PROGRAM Third VAR shut : BOOL; END_VAR\nshut := TRUE;\nEND_PROGRAM\n\n"
            "VAR_GLOBAL\n next : BOOL;\nEND_VAR\n"
            "VAR_GLOBAL Own\n last : BOOL;\nEND_VAR\n" },
        { "Main",
            "// comment\nPROGRAM First\nVAR x : INT; END_VAR\nEND_PROGRAM\n\nFUNCTION_BLOCK "
            "Second\nEND_FUNCTION_BLOCK\n"
            "TYPE Guard :\nSTRUCT open : BOOL; END_STRUCT\nEND_TYPE\n" } });
    QCOMPARE(QString::fromStdString(core.unitAt(source.toStdString(), line)), unit);
}

void ACCorePlacesTest::namesInsideDeclarations_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("declared");
    const auto row = [](const char* tag, int line, const char* name, LocalName::Kind kind, int declared) {
        QTest::newRow(tag) << line << QString::fromLatin1(name) << int(kind) << declared;
    };
    row("before the first declaration", 0, "x", LocalName::Kind::None, 0);
    row("a variable before an unnamed list", 2, "x", LocalName::Kind::Own, 2);
    row("a global one by its own name", 2, "own", LocalName::Kind::None, 0);
    row("a global one in its list", 7, "own", LocalName::Kind::Own, 7);
    row("a variable in other letters", 3, "X", LocalName::Kind::Own, 2);
    row("an external one", 3, "ready", LocalName::Kind::External, 2);
    row("one of another declaration", 3, "limit", LocalName::Kind::None, 0);
    row("a temporary one", 5, "t", LocalName::Kind::Own, 4);
    row("an inherited one", 6, "limit", LocalName::Kind::Own, 4);
    row("a temporary one of the base is not inherited", 6, "t", LocalName::Kind::None, 0);
}

void ACCorePlacesTest::namesInsideDeclarations()
{
    QFETCH(int, line);
    QFETCH(QString, name);
    ACCore core;
    core.setSources({ { "Main",
        "PROGRAM First\n"
        "VAR x : INT; END_VAR VAR_EXTERNAL ready : BOOL; END_VAR\n"
        "END_PROGRAM\n"
        "FUNCTION_BLOCK Base VAR limit : REAL; END_VAR VAR_TEMP t : INT; END_VAR\n"
        "END_FUNCTION_BLOCK\n"
        "FUNCTION_BLOCK Next EXTENDS Base END_FUNCTION_BLOCK\n"
        "VAR_GLOBAL own : BOOL; END_VAR\n" } });
    const LocalName found = core.localName("Main", line, name.toStdString());
    QTEST(int(found.kind), "kind");
    QTEST(found.line, "declared");
    QCOMPARE(QString::fromStdString(found.source), found.line > 0 ? QStringLiteral("Main") : QString());
    QCOMPARE(core.localName("Elsewhere", line, name.toStdString()).line, 0);
}

void ACCorePlacesTest::reaches_data()
{
    using Reach = ACCore::Reach;
    QTest::addColumn<int>("reach");
    const auto row = [](const char* path, Reach reach) { QTest::newRow(path) << int(reach); };
    row("Main.row[0,1].open", Reach::Variable);
    row("main.ROW[FIRST,1].open", Reach::Variable);
    row("Main.row", Reach::Variable);
    row("Main.t", Reach::Variable);
    row("Main.own[2]", Reach::Variable);
    row("Main.row[n,1].open", Reach::Element);
    row("Main.row[n*2,1].open", Reach::Element);
    row("Main.row[unheard,1].open", Reach::Stray);
    row("Main.row[n+unheard,1].open", Reach::Stray);
    row("Main.row[,1].open", Reach::Stray);
    row("Main.row[n MOD 2,1].open", Reach::Element);
    row("Main.row[n+INT#1,1].open", Reach::Element);
    row("Main.row[n+16#A,1].open", Reach::Element);
    row("Main.row[Main.n,1].open", Reach::Element);
    row("Main.row[n,3].open", Reach::None);
    row("Main.row[4,1].open", Reach::None);
    row("Main.row[n].open", Reach::None);
    row("Main.row[n,1].shut", Reach::None);
    row("Base.a", Reach::Inner);
    row("base.A.open", Reach::Inner);
    row("Base.a.shut", Reach::None);
    row("Base.t", Reach::Inner);
    row("Blk.a.open", Reach::Inner);
    row("Blk.t", Reach::None);
    row("Blk.row[2]", Reach::Inner);
    row("Blk.row[3]", Reach::None);
    row("Half.speed", Reach::Inner);
    row("Guard.open", Reach::Inner);
    row("Guard", Reach::None);
    row("Guard[1]", Reach::None);
    row("Unheard.open", Reach::None);
    row("..", Reach::None);
}

void ACCorePlacesTest::reaches()
{
    ACCore core;
    core.setSources({ { "IO", rows } });
    QCOMPARE(core.problems().size(), std::size_t(0));
    QTEST(int(core.reachOf(QTest::currentDataTag())), "reach");
    QCOMPARE(int(core.reachOf(std::string())), int(ACCore::Reach::None));
}

void ACCorePlacesTest::indexValues_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("owner");
    QTest::addColumn<QString>("known");
    const auto row = [](const char* tag, const char* path, const char* owner, const char* known) {
        QTest::newRow(tag) << QString::fromLatin1(path) << QString::fromLatin1(owner) << QString::fromLatin1(known);
    };
    row("numbers", "Main.row[0,1].open", "Main", "Main.row[0,1].open");
    row("a global constant", "Main.row[FIRST,1].open", "Main", "Main.row[1,1].open");
    row("a constant of the owner goes before", "Main.row[last,1].open", "Main", "Main.row[2,1].open");
    row("the global one without an owner", "Main.row[LAST,1].open", "", "Main.row[3,1].open");
    row("the global one by way of an external", "Main.row[LAST,1]", "Aside", "Main.row[3,1]");
    row("one of a program by its path", "Main.row[Main.LAST,1]", "", "Main.row[2,1]");
    row("one of a block", "Blk.row[EDGE]", "Blk", "Blk.row[2]");
    row("a sum", "Main.row[LAST-1,1]", "Main", "Main.row[1,1]");
    row("a variable", "Main.row[n,LAST].open", "Main", "Main.row[n,2].open");
    row("a member", "Main.t", "Main", "Main.t");
    row("a bit", "Main.n.3", "Main", "Main.n.3");
    row("no path", "Main.row[1", "Main", "Main.row[1");
    row("nothing", "", "Main", "");
}

void ACCorePlacesTest::indexValues()
{
    QFETCH(QString, path);
    QFETCH(QString, owner);
    ACCore core;
    core.setSources({ { "IO", rows } });
    QTEST(QString::fromStdString(core.withIndexValues(path.toStdString(), owner.toStdString())), "known");
}

QTEST_GUILESS_MAIN(ACCorePlacesTest)
#include "ACCorePlacesTest.moc"
