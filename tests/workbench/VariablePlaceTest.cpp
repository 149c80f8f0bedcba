#include "workbench/VariablePlace.h"

#include "tests/support/TestProject.h"

#include <QtTest>

namespace {

const char* const program = "PROGRAM First\n"
                            "VAR\n"
                            "  speed : REAL;\n"
                            "  axes : ARRAY [0..2000] OF Guard;\n"
                            "END_VAR\n"
                            "speed := ready;\n"
                            "END_PROGRAM\n"
                            "PROGRAM Second\n"
                            "VAR_EXTERNAL\n"
                            "  speed : REAL;\n"
                            "END_VAR\n"
                            "speed := 1.0;\n"
                            "END_PROGRAM\n"
                            "TYPE Guard : STRUCT\n"
                            "  open : BOOL;\n"
                            "END_STRUCT\n"
                            "END_TYPE\n"
                            "PROGRAM Third\n"
                            "VAR_TEMP\n"
                            "  ready : BOOL;\n"
                            "END_VAR\n"
                            "ready := TRUE;\n"
                            "END_PROGRAM\n"
                            "FUNCTION_BLOCK Watch\n"
                            "VAR\n"
                            "  guard : Guard;\n"
                            "  limit : REAL;\n"
                            "END_VAR\n"
                            "VAR_TEMP\n"
                            "  ready : BOOL;\n"
                            "END_VAR\n"
                            "VAR_EXTERNAL\n"
                            "  speed : REAL;\n"
                            "END_VAR\n"
                            "ready := guard.open;\n"
                            "END_FUNCTION_BLOCK\n"
                            "FUNCTION Half : REAL\n"
                            "VAR_INPUT\n"
                            "  speed : REAL;\n"
                            "END_VAR\n"
                            "END_FUNCTION\n"
                            "FUNCTION_BLOCK Closer EXTENDS Watch\n"
                            "END_FUNCTION_BLOCK\n"
                            "PROGRAM Fourth\n"
                            "VAR\n"
                            "  watch : Watch;\n"
                            "  latch : Latch;\n"
                            "  shut : BOOL; cover : Unheard;\n"
                            "END_VAR\n"
                            "END_PROGRAM\n"
                            "TYPE Latch : STRUCT\n"
                            "  shut : BOOL;\n"
                            "END_STRUCT\n"
                            "END_TYPE\n"
                            "PROGRAM Fifth\n"
                            "VAR CONSTANT LAST : INT := 1; END_VAR\n"
                            "VAR n : INT; grid : ARRAY [0..3, 1..2] OF Guard; rack : Rack; END_VAR\n"
                            "grid[n, 1].open := ready;\n"
                            "END_PROGRAM\n"
                            "FUNCTION_BLOCK Rack\n"
                            "VAR CONSTANT EDGE : INT := 2; END_VAR\n"
                            "VAR n : INT; row : ARRAY [0..3] OF BOOL; END_VAR\n"
                            "row[n] := row[EDGE];\n"
                            "END_FUNCTION_BLOCK\n"
                            "FUNCTION_BLOCK Blk\n"
                            "VAR a : Guard; END_VAR\n"
                            "VAR_TEMP t : BOOL; END_VAR\n"
                            "t := a.open;\n"
                            "END_FUNCTION_BLOCK\n";

const char* const globals = "VAR_GLOBAL\n"
                            "  ready : BOOL;\n"
                            "  speed : REAL;\n"
                            "  cover : Guard;\n"
                            "  doors : ARRAY [1..4] OF Guard;\n"
                            "END_VAR\n"
                            "VAR_GLOBAL CONSTANT\n"
                            "  TOP : INT := 3;\n"
                            "END_VAR\n";

} // namespace

class VariablePlaceTest : public QObject {
    Q_OBJECT

private slots:
    void namesAtAPlace_data();
    void namesAtAPlace();
    void constantsOfTheOwnerGoBeforeGlobalOnes();
    void namesOfTheProject_data();
    void namesOfTheProject();
    void aGlobalOneIsUsedByWayOfExternals();
    void whatIsNoVariableIsTold_data();
    void whatIsNoVariableIsTold();
    void withoutAProjectThereIsNone();
};

void VariablePlaceTest::namesAtAPlace_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("path");
    QTest::newRow("a variable of the program") << 6 << "speed"
                                               << "First.speed";
    QTest::newRow("one in other letters") << 6 << "SPEED"
                                          << "First.speed";
    QTest::newRow("one that the program declares as external") << 10 << "speed"
                                                               << "IO.speed";
    QTest::newRow("an external one where it is used") << 12 << "Speed"
                                                      << "IO.speed";
    QTest::newRow("a global one by its bare name") << 6 << "ready"
                                                   << "IO.ready";
    QTest::newRow("a member of a global one") << 6 << "cover.open"
                                              << "IO.cover.open";
    QTest::newRow("a full path") << 12 << "first.Speed"
                                 << "First.speed";
    QTest::newRow("an element of a large array") << 6 << "axes[1999].open"
                                                 << "First.axes[1999].open";
    QTest::newRow("an element beyond it") << 6 << "axes[2001].open"
                                          << "First.axes[2001].open";
    QTest::newRow("a member that it lacks, which the global one of its name has") << 46 << "cover.open"
                                                                                  << "Fourth.cover.open";
    QTest::newRow("a member at its declaration in a type") << 15 << "open"
                                                           << "IO.cover.open";
    QTest::newRow("a temporary one hides the global one") << 22 << "ready"
                                                          << "Third.ready";
    QTest::newRow("a member of a type that is also the name of a variable before it") << 52 << "shut"
                                                                                      << "Fourth.latch.shut";
    QTest::newRow("a variable of a block") << 35 << "Limit"
                                           << "Fourth.watch.limit";
    QTest::newRow("a member of a block's variable") << 35 << "guard.open"
                                                    << "Fourth.watch.guard.open";
    QTest::newRow("an unknown member of a block's variable") << 35 << "guard.shut"
                                                             << "Watch.guard.shut";
    QTest::newRow("a variable of the block's base") << 43 << "limit"
                                                    << "Fourth.watch.limit";
    QTest::newRow("a temporary one of a block hides the global one") << 35 << "ready"
                                                                     << "Watch.ready";
    QTest::newRow("an external one of a block") << 35 << "speed"
                                                << "IO.speed";
    QTest::newRow("one of a function hides the global one") << 39 << "speed"
                                                            << "Half.speed";
    const auto row = [](const char* tag, int line, const char* written, const char* found) {
        QTest::newRow(tag) << line << QString::fromLatin1(written) << QString::fromLatin1(found);
    };
    row("an element with blanks in its index", 58, "grid[ 1, 2 ] .open", "Fifth.grid[1,2].open");
    row("an element by a constant of the program", 58, "grid[LAST, LAST].open", "Fifth.grid[1,1].open");
    row("a global element by a constant of the program", 58, "doors[LAST].open", "IO.doors[1].open");
    row("an element by a global constant", 58, "grid[TOP, 2].open", "Fifth.grid[3,2].open");
    row("an element by a variable", 58, "grid[n, 1].open", "Fifth.grid[n,1].open");
    row("a global element by a variable", 58, "doors[n + 1].open", "IO.doors[n+1].open");
    row("an element of a block's variable by its constant", 63, "row[EDGE]", "Fifth.rack.row[2]");
    row("an element of a block's variable by a variable", 63, "row[n]", "Fifth.rack.row[n]");
    row("a variable of a block that nothing is made of", 68, "a.open", "Blk.a.open");
    row("a temporary one of it", 68, "t", "Blk.t");
    QTest::newRow("an unknown name") << 6 << "unheard" << QString();
    QTest::newRow("no name") << 6 << "" << QString();
}

void VariablePlaceTest::namesAtAPlace()
{
    QFETCH(int, line);
    QFETCH(QString, written);
    QFETCH(QString, path);
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    project.addSource(QStringLiteral("IO"), QString::fromLatin1(globals));
    QCOMPARE(variablePathAt({ project.name(), QStringLiteral("Main"), line, written }), path);
}

void VariablePlaceTest::constantsOfTheOwnerGoBeforeGlobalOnes()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main\n"
                       "VAR CONSTANT LAST : INT := 1; END_VAR\n"
                       "g[LAST] := TRUE;\n"
                       "END_PROGRAM\n"
                       "FUNCTION_BLOCK Blk\n"
                       "VAR CONSTANT LAST : INT := 3; END_VAR\n"
                       "g[LAST] := TRUE;\n"
                       "END_FUNCTION_BLOCK\n"
                       "PROGRAM Aside\n"
                       "g[LAST] := TRUE;\n"
                       "END_PROGRAM\n"));
    project.addSource(QStringLiteral("Consts"), QStringLiteral("VAR_GLOBAL CONSTANT LAST : INT := 2; END_VAR\n"));
    project.addSource(QStringLiteral("Glob"), QStringLiteral("VAR_GLOBAL g : ARRAY [1..3] OF BOOL; END_VAR\n"));
    const auto variableAt = [&project](int line) {
        const QString path
            = variablePathAt({ project.name(), QStringLiteral("Main"), line, QStringLiteral("g[LAST]") });
        return namedVariable(project.name(), path).path;
    };
    QCOMPARE(variableAt(3), QStringLiteral("Glob.g[1]"));
    QCOMPARE(variableAt(7), QStringLiteral("Glob.g[3]"));
    QCOMPARE(variableAt(10), QStringLiteral("Glob.g[2]"));
}

void VariablePlaceTest::namesOfTheProject_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("path");
    const auto row = [](const char* tag, const char* written, const char* path) {
        QTest::newRow(tag) << QString::fromLatin1(written) << QString::fromLatin1(path);
    };
    row("an element with blanks in its index", "Fifth . grid[1 ,\t2].open ", "Fifth.grid[1,2].open");
    row("an element by a constant of its program", "fifth.grid[LAST, 2].open", "Fifth.grid[1,2].open");
    row("an element by a global constant", "doors[top].open", "IO.doors[3].open");
    row("names with a blank between them", "Fifth grid", "");
    QTest::newRow("a bare global name") << "READY"
                                        << "IO.ready";
    QTest::newRow("a bare path below a global") << "cover.open"
                                                << "IO.cover.open";
    QTest::newRow("a full path") << "io.READY"
                                 << "IO.ready";
    QTest::newRow("a variable of a program") << "First.speed"
                                             << "First.speed";
    QTest::newRow("by way of a program's external") << "Second.speed"
                                                    << "IO.speed";
    QTest::newRow("a temporary one") << "Third.ready"
                                     << "Third.ready";
    QTest::newRow("a bare name of a program") << "axes" << QString();
    QTest::newRow("points alone") << ".." << QString();
    QTest::newRow("nothing") << "" << QString();
}

void VariablePlaceTest::namesOfTheProject()
{
    QFETCH(QString, written);
    QFETCH(QString, path);
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    project.addSource(QStringLiteral("IO"), QString::fromLatin1(globals));
    QCOMPARE(namedVariable(project.name(), written).path, path);
}

void VariablePlaceTest::aGlobalOneIsUsedByWayOfExternals()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    project.addSource(QStringLiteral("IO"), QString::fromLatin1(globals));
    const auto paths = [&project](const char* written) {
        return namedVariable(project.name(), QString::fromLatin1(written)).paths.join(QLatin1Char(' '));
    };
    QCOMPARE(paths("IO.speed"), QStringLiteral("IO.speed speed Second.speed"));
    QCOMPARE(paths("IO.cover.open"), QStringLiteral("IO.cover.open cover.open"));
    QCOMPARE(paths("First.speed"), QStringLiteral("First.speed"));
    QCOMPARE(
        paths("doors[TOP].open"), QStringLiteral("IO.doors[3].open doors[3].open IO.doors[TOP].open doors[TOP].open"));
    QCOMPARE(paths("doors[n MOD 2].open"), QStringLiteral("IO.doors[nMOD2].open doors[nMOD2].open"));
    QCOMPARE(paths("Main.unheard"), QStringLiteral("Main.unheard"));
    QCOMPARE(paths(""), QString());
}

void VariablePlaceTest::whatIsNoVariableIsTold_data()
{
    using Reach = ac::ACCore::Reach;
    QTest::addColumn<int>("reach");
    const auto row = [](const char* written, Reach reach) { QTest::newRow(written) << int(reach); };
    row("Fifth.grid[LAST, 1].open", Reach::Variable);
    row("Fifth.grid[TOP, 1].open", Reach::Variable);
    row("Fifth.grid[n, 1].open", Reach::Element);
    row("Fifth.grid[n MOD 2, 1].open", Reach::Element);
    row("doors[n].open", Reach::Element);
    row("doors[unheard].open", Reach::Stray);
    row("doors[].open", Reach::Stray);
    row("Fifth.grid[n, 3].open", Reach::None);
    row("Fifth.grid[4, 1].open", Reach::None);
    row("Blk.a", Reach::Inner);
    row("Blk.t", Reach::Inner);
    row("Half.speed", Reach::Inner);
    row("Guard.open", Reach::Inner);
    row("Blk.unheard", Reach::None);
    row("Fifth grid", Reach::None);
}

void VariablePlaceTest::whatIsNoVariableIsTold()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    project.addSource(QStringLiteral("IO"), QString::fromLatin1(globals));
    QTEST(int(namedVariable(project.name(), QString::fromLatin1(QTest::currentDataTag())).reach), "reach");
}

void VariablePlaceTest::withoutAProjectThereIsNone()
{
    QCOMPARE(namedVariable(QStringLiteral("Nowhere"), QStringLiteral("IO.ready")).path, QString());
    QCOMPARE(
        variablePathAt({ QStringLiteral("Nowhere"), QStringLiteral("Main"), 1, QStringLiteral("speed") }), QString());
}

QTEST_MAIN(VariablePlaceTest)
#include "VariablePlaceTest.moc"
