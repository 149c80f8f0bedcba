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
                            "END_TYPE\n";

const char* const globals = "VAR_GLOBAL\n"
                            "  ready : BOOL;\n"
                            "  speed : REAL;\n"
                            "  cover : Guard;\n"
                            "END_VAR\n";

} // namespace

class VariablePlaceTest : public QObject {
    Q_OBJECT

private slots:
    void namesAtAPlace_data();
    void namesAtAPlace();
    void namesOfTheProject_data();
    void namesOfTheProject();
    void aGlobalOneIsUsedByWayOfExternals();
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

void VariablePlaceTest::namesOfTheProject_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("path");
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
    QCOMPARE(variablePath(project.name(), written), path);
}

void VariablePlaceTest::aGlobalOneIsUsedByWayOfExternals()
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    project.addSource(QStringLiteral("IO"), QString::fromLatin1(globals));
    QCOMPARE(pathSpellings(project.name(), QStringLiteral("IO.speed")),
        QStringList({ QStringLiteral("IO.speed"), QStringLiteral("speed"), QStringLiteral("Second.speed") }));
    QCOMPARE(pathSpellings(project.name(), QStringLiteral("IO.cover.open")),
        QStringList({ QStringLiteral("IO.cover.open"), QStringLiteral("cover.open") }));
    QCOMPARE(
        pathSpellings(project.name(), QStringLiteral("First.speed")), QStringList({ QStringLiteral("First.speed") }));
}

void VariablePlaceTest::withoutAProjectThereIsNone()
{
    QCOMPARE(variablePath(QStringLiteral("Nowhere"), QStringLiteral("IO.ready")), QString());
    QCOMPARE(
        variablePathAt({ QStringLiteral("Nowhere"), QStringLiteral("Main"), 1, QStringLiteral("speed") }), QString());
}

QTEST_MAIN(VariablePlaceTest)
#include "VariablePlaceTest.moc"
