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
};

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
        "FUNCTION_BLOCK Next EXTENDS Base END_FUNCTION_BLOCK\n" } });
    const LocalName found = core.localName("Main", line, name.toStdString());
    QTEST(int(found.kind), "kind");
    QTEST(found.line, "declared");
    QCOMPARE(QString::fromStdString(found.source), found.line > 0 ? QStringLiteral("Main") : QString());
    QCOMPARE(core.localName("Elsewhere", line, name.toStdString()).line, 0);
}

QTEST_GUILESS_MAIN(ACCorePlacesTest)
#include "ACCorePlacesTest.moc"
