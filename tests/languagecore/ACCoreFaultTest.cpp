#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace ac;

namespace {

QString firstProblem(const ACCore& core)
{
    if (core.problems().empty())
        return QStringLiteral("none");
    const SourceProblem& problem = core.problems().front();
    return QStringLiteral("%1:%2 %3").arg(problem.line).arg(problem.column).arg(QString::fromStdString(problem.text));
}

std::string repeated(const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

/// Sources that do not parse, or that declare what cannot be.
class ACCoreFaultTest : public QObject {
    Q_OBJECT

private slots:
    void faultsHaveAPlace_data();
    void faultsHaveAPlace();
    void declarationsThatCannotBe_data();
    void declarationsThatCannotBe();
    void whatStandsAroundAFaultStaysUsable();
    void otherSourcesStayUsable();
    void eachDeclarationReportsItsFault();
    void anOpenCommentHidesNoDeclaration();
    void typesThatContainThemselves();
    void constantsThatNeedThemselves();
    void constantsThatBranch();
    void hugeInputsEnd_data();
    void hugeInputsEnd();
    void countOfProblemsIsBounded();
};

void ACCoreFaultTest::faultsHaveAPlace_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("problem");

    QTest::newRow("no declaration")
        << "hello"
        << "1:1 a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected";
    QTest::newRow("a section outside of a program")
        << "\n VAR x : BOOL; END_VAR"
        << "2:2 a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected";
    QTest::newRow("a program without a name") << "PROGRAM\nVAR END_VAR END_PROGRAM"
                                              << "2:1 a name is expected";
    QTest::newRow("a program named by a keyword") << "PROGRAM If END_PROGRAM"
                                                  << "1:9 a name is expected";
    QTest::newRow("a program that does not end") << "PROGRAM P\nx := 1;"
                                                 << "2:8 END_PROGRAM is expected";
    QTest::newRow("a program in a program") << "PROGRAM P\nPROGRAM Q END_PROGRAM"
                                            << "2:1 END_PROGRAM is expected";
    QTest::newRow("a block that ends as a program") << "FUNCTION_BLOCK B\nEND_PROGRAM"
                                                    << "2:1 END_FUNCTION_BLOCK is expected";
    QTest::newRow("a function without its end") << "FUNCTION F : INT\n"
                                                << "2:1 END_FUNCTION is expected";
    QTest::newRow("a function without a type") << "FUNCTION F : VAR"
                                               << "1:14 a type is expected";
    QTest::newRow("a section without its end") << "PROGRAM P VAR x : BOOL;\n END_PROGRAM"
                                               << "2:2 the declaration of a variable or END_VAR is expected";
    QTest::newRow("a missing colon") << "VAR_GLOBAL\nx BOOL; END_VAR"
                                     << "2:7 ':' is expected";
    QTest::newRow("a missing colon in a program") << "PROGRAM P VAR x BOOL; END_VAR"
                                                  << "1:17 ':' is expected";
    QTest::newRow("a missing type") << "VAR_GLOBAL x : ; END_VAR"
                                    << "1:16 a type is expected";
    QTest::newRow("a structure within a section") << "VAR_GLOBAL x : STRUCT"
                                                  << "1:16 a type is expected";
    QTest::newRow("a missing semicolon") << "VAR_GLOBAL x : BOOL\n  y : BOOL; END_VAR"
                                         << "2:3 ';' is expected";
    QTest::newRow("a missing semicolon behind a value") << "VAR_GLOBAL x : INT := 5\n  y : BOOL; END_VAR"
                                                        << "2:3 ';' is expected";
    QTest::newRow("a missing value") << "VAR_GLOBAL x : INT := ; END_VAR"
                                     << "1:23 an initial value is expected";
    QTest::newRow("a missing name in a list of names") << "VAR_GLOBAL a, : INT; END_VAR"
                                                       << "1:15 the name of a variable is expected";
    QTest::newRow("an address that is none") << "VAR_GLOBAL x AT %Z1 : BOOL; END_VAR"
                                             << "1:17 an address such as %IX0.0 is expected";
    QTest::newRow("an array without its range") << "VAR_GLOBAL x : ARRAY [] OF INT; END_VAR"
                                                << "1:23 a range such as 0..9 is expected";
    QTest::newRow("an array without brackets") << "VAR_GLOBAL x : ARRAY OF INT; END_VAR"
                                               << "1:22 '[' is expected";
    QTest::newRow("a range without its end") << "VAR_GLOBAL x : ARRAY [0..] OF INT; END_VAR"
                                             << "1:26 an upper bound is expected";
    QTest::newRow("a range with one point") << "VAR_GLOBAL x : ARRAY [0.9] OF INT; END_VAR"
                                            << "1:24 '..' is expected";
    QTest::newRow("an array without OF") << "VAR_GLOBAL x : ARRAY [0..9] INT; END_VAR"
                                         << "1:29 OF is expected";
    QTest::newRow("a bound that is text") << "VAR_GLOBAL x : ARRAY [0..'a'] OF INT; END_VAR"
                                          << "1:26 an upper bound is expected";
    QTest::newRow("half a sum") << "VAR_GLOBAL x : ARRAY [0..N +] OF INT; END_VAR"
                                << "1:29 a whole number or constant is expected";
    QTest::newRow("a pointer to nothing") << "VAR_GLOBAL x : POINTER INT; END_VAR"
                                          << "1:24 TO is expected";
    QTest::newRow("a length that is not closed") << "VAR_GLOBAL x : STRING[80; END_VAR"
                                                 << "1:25 ']' is expected";
    QTest::newRow("an empty enumeration") << "TYPE E : (); END_TYPE"
                                          << "1:11 the name of a value is expected";
    QTest::newRow("an enumeration that is not closed") << "TYPE E : (A, B; END_TYPE"
                                                       << "1:15 ')' is expected";
    QTest::newRow("a value of an enumeration that is text") << "TYPE E : (A := 'x'); END_TYPE"
                                                            << "1:16 a whole number or constant is expected";
    QTest::newRow("a type without a colon") << "TYPE E (A); END_TYPE"
                                            << "1:8 ':' is expected";
    QTest::newRow("a type without its end") << "TYPE E : (A);\n"
                                            << "2:1 the declaration of a type or END_TYPE is expected";
    QTest::newRow("a structure without its end") << "TYPE S : STRUCT a : BOOL; END_TYPE"
                                                 << "1:27 the declaration of a member or END_STRUCT is expected";
    QTest::newRow("an alias without a semicolon") << "TYPE S : INT END_TYPE"
                                                  << "1:14 ';' is expected";
    QTest::newRow("a base that is missing") << "FUNCTION_BLOCK B EXTENDS VAR"
                                            << "1:26 the name of the extended type is expected";
    QTest::newRow("a task without a name") << "CONFIGURATION C TASK (PRIORITY := 1); END_CONFIGURATION"
                                           << "1:22 the name of a task is expected";
    QTest::newRow("a task without a semicolon") << "TASK T (PRIORITY := 1) TASK"
                                                << "1:24 ';' is expected";
    QTest::newRow("a configuration without its end")
        << "CONFIGURATION C"
        << "1:16 a resource, a task, a program or END_CONFIGURATION is expected";
    QTest::newRow("a resource without its end") << "CONFIGURATION C RESOURCE R ON P END_CONFIGURATION"
                                                << "1:33 a task, a program or END_RESOURCE is expected";
    QTest::newRow("a comment that does not end") << "VAR_GLOBAL (* x : BOOL; END_VAR"
                                                 << "1:12 the end of this comment is expected";
    QTest::newRow("a nested comment that does not end") << "(* (* *) VAR_GLOBAL_ x"
                                                        << "1:1 the end of this comment is expected";
    QTest::newRow("a pragma that does not end") << "{attribute"
                                                << "1:1 the end of this comment is expected";
    QTest::newRow("a text that does not end") << "PROGRAM P x := 'abc\n; END_PROGRAM"
                                              << "1:16 the closing quote of this text is expected";
    QTest::newRow("a text that escapes its end") << "PROGRAM P x := 'abc$'; END_PROGRAM"
                                                 << "1:16 the closing quote of this text is expected";
    QTest::newRow("a body beyond its end")
        << "PROGRAM P END_PROGRAM x := 1;"
        << "1:23 a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected";
    QTest::newRow("columns count characters")
        << "(* äöü€ *) ?"
        << "1:12 a declaration (PROGRAM, FUNCTION_BLOCK, FUNCTION, TYPE, VAR_GLOBAL or CONFIGURATION) is expected";
    QTest::newRow("lines end as in other systems") << "PROGRAM P\r\nVAR\r\n  x BOOL;"
                                                   << "3:5 ':' is expected";

    QTest::newRow("an empty source is sound") << ""
                                              << "none";
    QTest::newRow("a source of comments is sound") << "// nothing\n(* at (* all *) *) {pragma}"
                                                   << "none";
    QTest::newRow("an empty program is sound") << "PROGRAM P END_PROGRAM"
                                               << "none";
    QTest::newRow("semicolons behind declarations are sound") << "PROGRAM P END_PROGRAM; TYPE END_TYPE;"
                                                              << "none";
    QTest::newRow("keywords in any case are sound") << "program P Var x : Bool; end_VAR End_Program"
                                                    << "none";
    QTest::newRow("a mark of the encoding is sound")
        << QString(QChar(0xfeff)) + QStringLiteral("PROGRAM P END_PROGRAM") << "none";
    QTest::newRow("names that begin as keywords are sound")
        << "PROGRAM PROGRAM_1 VAR VAR_1, END_VAR1, ifx, TYPES : BOOL; END_VAR END_PROGRAM"
        << "none";
    QTest::newRow("names of functions and types may name variables")
        << "PROGRAM P VAR limit, left, max, find, word : BOOL; END_VAR END_PROGRAM"
        << "none";
}

void ACCoreFaultTest::faultsHaveAPlace()
{
    QFETCH(const QString, source);
    ACCore core;
    core.setSources({ { "S", source.toStdString() } });
    QTEST(firstProblem(core), "problem");
    if (!core.problems().empty())
        QCOMPARE(core.problems().front().source, std::string("S"));
}

void ACCoreFaultTest::declarationsThatCannotBe_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("problem");

    QTest::newRow("an unknown type") << "VAR_GLOBAL x : ARRAY [0..1] OF\n Foo; END_VAR"
                                     << "2:2 the type Foo is not declared";
    QTest::newRow("an alias of an unknown type") << "TYPE A : Foo; END_TYPE"
                                                 << "1:10 the type Foo is not declared";
    QTest::newRow("a program of a type's name") << "TYPE A : INT; END_TYPE PROGRAM a END_PROGRAM"
                                                << "1:32 the name a is declared already";
    QTest::newRow("a type of the system library") << "TYPE Mc_Axis_State : INT; END_TYPE"
                                                  << "1:6 the name Mc_Axis_State is declared already";
    QTest::newRow("a variable twice") << "PROGRAM P VAR x : INT; END_VAR VAR_INPUT X : BOOL; END_VAR END_PROGRAM"
                                      << "1:42 the name X is declared already";
    QTest::newRow("a global variable twice") << "VAR_GLOBAL A x : INT; END_VAR VAR_GLOBAL B x : INT; END_VAR"
                                             << "1:44 the name x is declared already";
    QTest::newRow("a global variable of a program's name") << "PROGRAM P END_PROGRAM VAR_GLOBAL A p : INT; END_VAR"
                                                           << "1:36 the name p is declared already";
    QTest::newRow("a structure that contains itself") << "TYPE S : STRUCT a : ARRAY [0..1] OF S; END_STRUCT END_TYPE"
                                                      << "1:6 the type S contains itself";
    QTest::newRow("a block that extends itself") << "FUNCTION_BLOCK B EXTENDS B END_FUNCTION_BLOCK"
                                                 << "1:16 the type B contains itself";
    QTest::newRow("a pointer to itself is sound") << "TYPE S : STRUCT next : POINTER TO S; END_STRUCT END_TYPE"
                                                  << "none";
    QTest::newRow("two blocks of one list are sound") << "VAR_GLOBAL x : INT; END_VAR VAR_GLOBAL y : INT; END_VAR"
                                                      << "none";
}

void ACCoreFaultTest::declarationsThatCannotBe()
{
    faultsHaveAPlace();
}

void ACCoreFaultTest::whatStandsAroundAFaultStaysUsable()
{
    ACCore core;
    core.setSources({ { "S",
        "VAR_GLOBAL before : BOOL; END_VAR\n"
        "PROGRAM Broken VAR first : BOOL; second ! BOOL; third : BOOL; END_VAR END_PROGRAM\n"
        "TYPE Good : STRUCT x : BOOL; END_STRUCT  Bad : STRUCT x ; END_STRUCT  Lost : INT; END_TYPE\n"
        "PROGRAM After VAR good : Good; last : BOOL; END_VAR END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(2));
    for (const char* path : { "before", "Broken.first", "After.last", "After.good.x" })
        QVERIFY2(core.type(path) != nullptr, path);
    QVERIFY(core.type("Broken.second") == nullptr);
    QVERIFY(core.type("Broken.third") == nullptr);
}

void ACCoreFaultTest::otherSourcesStayUsable()
{
    ACCore core;
    core.setSources({ { "A", "PROGRAM A VAR x : BOOL; END_VAR END_PROGRAM" }, { "B", "garbage ((( '" },
        { "C", "PROGRAM C VAR x : BOOL; END_VAR END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(1));
    QCOMPARE(core.problems().front().source, std::string("B"));
    QVERIFY(core.type("A.x") != nullptr);
    QVERIFY(core.type("C.x") != nullptr);
}

void ACCoreFaultTest::eachDeclarationReportsItsFault()
{
    ACCore core;
    core.setSources(
        { { "S", "PROGRAM A VAR x BOOL; END_VAR END_PROGRAM\nPROGRAM B VAR y BOOL; END_VAR END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(2));
    QCOMPARE(core.problems()[0].line, 1);
    QCOMPARE(core.problems()[1].line, 2);
}

void ACCoreFaultTest::anOpenCommentHidesNoDeclaration()
{
    ACCore core;
    core.setSources({ { "S",
        "PROGRAM A VAR x : BOOL; (* open y : BOOL; END_VAR END_PROGRAM\nPROGRAM B VAR z : BOOL; END_VAR "
        "END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(1));
    QVERIFY(core.type("A.x") != nullptr);
    QVERIFY(core.type("B.z") != nullptr);
}

void ACCoreFaultTest::typesThatContainThemselves()
{
    ACCore core;
    core.setSources({ { "S",
        "TYPE A : STRUCT b : B; f : BOOL; END_STRUCT  B : STRUCT a : A; END_STRUCT\n"
        "  Holder : STRUCT a : A; ok : BOOL; END_STRUCT  Round : Trip; Trip : Round; Loop : ARRAY [0..1] OF Loop; "
        "END_TYPE\n"
        "PROGRAM P VAR holder : Holder; round : Round; loop : Loop; END_VAR END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(2));
    QVERIFY(core.type("P.holder.ok") != nullptr);
    QVERIFY(core.type("P.holder.a.f") == nullptr);
    QVERIFY(core.type("P.round") != nullptr);
    QCOMPARE(core.type("P.round")->dataType(), NoType);
    QVERIFY(core.variables().size() <= 10010);
}

void ACCoreFaultTest::constantsThatNeedThemselves()
{
    ACCore core;
    core.setSources({ { "S",
        "VAR_GLOBAL CONSTANT a : INT := b; b : INT := a + 1; END_VAR VAR_GLOBAL x : ARRAY [0..a] OF BOOL; END_VAR\n"
        "TYPE E : (One := Two, Two := One); END_TYPE" } });
    QVERIFY(core.problems().empty());
    QVERIFY(core.type("x") != nullptr);
    QVERIFY(core.type("x[0]") == nullptr);
}

void ACCoreFaultTest::constantsThatBranch()
{
    std::string source = "VAR_GLOBAL CONSTANT c0 : LINT := 1;\n";
    for (int i = 1; i < 60; ++i) {
        const std::string before = "c" + std::to_string(i - 1);
        source += "c" + std::to_string(i) + " : LINT := " + before + " + " + before + " - 1;\n";
    }
    ACCore core;
    core.setSources({ { "S", source + "END_VAR VAR_GLOBAL x : ARRAY [c59..2] OF BOOL; END_VAR" } });
    QElapsedTimer timer;
    timer.start();
    QVERIFY(core.type("x[1]") != nullptr);
    QVERIFY(core.type("x[3]") == nullptr);
    QVERIFY(timer.elapsed() < 5000);
}

void ACCoreFaultTest::hugeInputsEnd_data()
{
    QTest::addColumn<QByteArray>("source");

    const auto row
        = [](const char* name, const std::string& source) { QTest::newRow(name) << QByteArray::fromStdString(source); };
    row("brackets in a value", "VAR_GLOBAL x : INT := " + repeated("(", 10000));
    row("closed brackets in a value",
        "VAR_GLOBAL x : INT := " + repeated("(", 5000) + "1" + repeated(")", 5000) + "; END_VAR");
    row("square brackets in a value", "VAR_GLOBAL x : INT := " + repeated("[", 10000));
    row("signs in a value", "VAR_GLOBAL x : INT := " + repeated("-", 10000) + "1; END_VAR");
    row("operands in a value", "VAR_GLOBAL x : INT := 1" + repeated(" + 1", 2500) + "; END_VAR");
    row("terms in a bound", "VAR_GLOBAL x : ARRAY [1" + repeated(" + 1", 2500) + "..3] OF BOOL; END_VAR");
    row("arrays in arrays", "VAR_GLOBAL x : " + repeated("ARRAY [0..9] OF ", 1000) + "BOOL; END_VAR");
    row("arrays in arrays, just allowed", "VAR_GLOBAL x : " + repeated("ARRAY [0..9] OF ", 60) + "BOOL; END_VAR");
    row("pointers to pointers", "VAR_GLOBAL x : " + repeated("POINTER TO ", 1000) + "BOOL; END_VAR");
    row("comments in comments", repeated("(*", 5000) + repeated("*)", 5000));
    row("open comments", repeated("PROGRAM P (* ", 1000));
    row("open texts", repeated("PROGRAM P '\n", 1000));
    row("open pragmas", repeated("PROGRAM P { ", 1000));
    row("a long name", "VAR_GLOBAL " + repeated("x", 10000) + " : BOOL; END_VAR");
    row("a long number",
        "VAR_GLOBAL CONSTANT x : INT := " + repeated("9", 10000)
            + "; END_VAR VAR_GLOBAL y : ARRAY [0..x] OF BOOL; END_VAR");
    row("many variables on one line", "VAR_GLOBAL " + repeated("x : BOOL; ", 20000) + "END_VAR");
    row("many names of one variable", "VAR_GLOBAL x" + repeated(", x", 20000) + " : BOOL; END_VAR");
    row("many programs", repeated("PROGRAM P END_PROGRAM\n", 5000));
    row("a path of many steps", "VAR_GLOBAL x : INT := a" + repeated(".a", 5000) + "; END_VAR");
    row("indices in indices", "VAR_GLOBAL x : INT := " + repeated("a[", 5000));
    row("bytes that are no text", repeated(std::string("\x00\xff\xfe\x80 PROGRAM", 12), 800));
    row("a megabyte of one letter", repeated("a", 1000000));
    row("a megabyte of opening signs", repeated("(*", 500000));
    row("a megabyte of program words", repeated("PROGRAM ", 125000));
}

void ACCoreFaultTest::hugeInputsEnd()
{
    QFETCH(const QByteArray, source);
    QElapsedTimer timer;
    timer.start();
    ACCore core;
    core.setSources({ { "S", source.toStdString() }, { "Z", "PROGRAM Z VAR x : BOOL; END_VAR END_PROGRAM" } });
    QVERIFY(core.type("Z.x") != nullptr);
    core.variables();
    std::map<int, std::map<int, Language::LogicSymInfo>> symbols;
    std::map<std::string, std::string> types;
    ParseDetails details;
    core.parserVariables(source.toStdString(), "U", 0, symbols, types, details);
    core.type(source.toStdString());
    QVERIFY2(timer.elapsed() < 20000, "took longer than 20 s");
}

void ACCoreFaultTest::countOfProblemsIsBounded()
{
    ACCore core;
    core.setSources({ { "S", repeated("PROGRAM ", 1000) } });
    QCOMPARE(core.problems().size(), std::size_t(100));
}

QTEST_GUILESS_MAIN(ACCoreFaultTest)
#include "ACCoreFaultTest.moc"
