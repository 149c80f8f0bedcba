#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"
#include "protocol/DiagnosisCodes.h"

#include <QDir>
#include <QtTest>

#include <algorithm>

using namespace ac;

namespace {

using Sources = std::map<std::string, std::string>;

QString typeText(const ACCore& core, const QString& path)
{
    const SymbolDataType* type = core.type(path.toStdString());
    return type == nullptr ? QStringLiteral("none") : QString::fromStdString(type->typeName());
}

QStringList names(const ACCore& core, SymbolKind kind)
{
    std::vector<Symbol*> symbols;
    core.allSymbols(kind, symbols);
    QStringList found;
    for (const Symbol* symbol : symbols)
        found.append(QString::fromStdString(symbol->name()));
    return found;
}

const SymbolEnumType* enumeration(const ACCore& core, const char* name)
{
    std::vector<Symbol*> symbols;
    core.allSymbols(EnumSymbols, symbols);
    for (Symbol* symbol : symbols) {
        if (symbol->name() == name)
            return dynamic_cast<SymbolEnumType*>(symbol);
    }
    return nullptr;
}

QStringList members(const SymbolEnumType& type)
{
    QStringList found;
    for (int i = 0; i < type.membersCount(); ++i)
        found.append(
            QStringLiteral("%1=%2").arg(QString::fromStdString(type.member(i)->name)).arg(type.member(i)->value));
    return found;
}

QStringList problems(const ACCore& core)
{
    QStringList found;
    for (const SourceProblem& problem : core.problems())
        found.append(QStringLiteral("%1:%2:%3 %4")
                         .arg(QString::fromStdString(problem.source))
                         .arg(problem.line)
                         .arg(problem.column)
                         .arg(QString::fromStdString(problem.text)));
    return found;
}

QStringList paths(const ACCore& core)
{
    QStringList found;
    for (const VariableInfo& variable : core.variables())
        found.append(QString::fromStdString(variable.path));
    return found;
}

/// A line with something of everything.
Sources line()
{
    return {
        { "Io.st",
            "VAR_GLOBAL ready AT %IX0.0 : BOOL; speed : LREAL; END_VAR\n"
            "VAR_GLOBAL CONSTANT LAST : INT := FIRST + 3; FIRST : INT := 16#0; END_VAR" },
        { "Named",
            "VAR_GLOBAL RETAIN Spare PERSISTENT old : BOOL; END_VAR\n"
            "VAR_GLOBAL Group : AXES_GROUP_REF; END_VAR" },
        { "Types",
            "TYPE PUBLIC\n"
            "  Guard : STRUCT open, locked : BOOL; level : INT := 3; END_STRUCT;\n"
            "  Door EXTENDS Guard : STRUCT width : Length; END_STRUCT\n"
            "  Length : LREAL;\n"
            "  Row : ARRAY [0..1] OF Door;\n"
            "  Percent : INT (0..100) := 50;\n"
            "  Color : (Red, Green := 5, Blue) := Red;\n"
            "  Mode : INT (Off, On := 4);\n"
            "  Either : UNION number : DWORD; bits : ARRAY [0..3] OF BYTE; END_UNION\n"
            "END_TYPE" },
        { "Blocks",
            "FUNCTION_BLOCK Valve EXTENDS Base IMPLEMENTS IValve, ITwo\n"
            "VAR_INPUT open : BOOL R_EDGE; END_VAR VAR_OUTPUT isOpen : BOOL; END_VAR\n"
            "VAR inner : BOOL; END_VAR VAR_TEMP passing : BOOL; END_VAR\n"
            "METHOD PUBLIC Close : BOOL VAR_INPUT fast : BOOL; END_VAR Close := fast; END_METHOD\n"
            "END_FUNCTION_BLOCK\n"
            "FUNCTION_BLOCK ABSTRACT Base VAR_OUTPUT fault : BOOL; END_VAR END_FUNCTION_BLOCK\n"
            "FUNCTION Twice : INT VAR_INPUT x : INT; END_VAR Twice := 2 * x; END_FUNCTION" },
        { "Main",
            "PROGRAM Main\n"
            "VAR CONSTANT WIDTH : INT := 2; END_VAR\n"
            "VAR\n"
            "  counter, other : INT := 5;\n"
            "  guard : Guard;\n"
            "  doors : ARRAY [FIRST..Main.WIDTH, -1..1] OF Door;\n"
            "  nested : ARRAY [1..2] OF ARRAY [1..2] OF BOOL;\n"
            "  row : Row;\n"
            "  flags : WORD; wide : LWORD; small : USINT;\n"
            "  delay : TON := (PT := T#1s500ms);\n"
            "  valve : Valve;\n"
            "  text : STRING[80] := 'it$'s END_PROGRAM'; name : WSTRING(LAST) := \"x\"; plain : STRING;\n"
            "  color : Color := Color#Green; mode : Mode; percent : Percent; inline : (A, B := 7) INT;\n"
            "  link : POINTER TO Guard; refer : REF_TO INT; either : Either;\n"
            "  open : ARRAY [*] OF BOOL; day : DATE := D#2020-01-31; clock : TOD := TOD#12:30:00.5;\n"
            "  moment : DT := DT#2020-01-31-12:30:00; span : LTIME; char : CHAR;\n"
            "  table : ARRAY [0..4] OF INT := [1, 2(0), -3]; point : Guard := (open := TRUE, level := -1);\n"
            "  placed AT %QW4 : INT; AT %MX1.0 : BOOL; later AT %I* : BOOL; sum : REAL := (1.5E-3 + LN(2)) ** 2 / 4;\n"
            "END_VAR\n"
            "VAR_EXTERNAL ready : BOOL; END_VAR VAR_TEMP moving : BOOL; END_VAR\n"
            "IF counter > 3 THEN other := 'END_PROGRAM'; (* END_PROGRAM (* nested *) *) // END_PROGRAM\n"
            "  guard.type := 16#1F; /* END_PROGRAM */ {pragma END_PROGRAM} END_IF\n"
            "END_PROGRAM" },
        { "Tasks",
            "CONFIGURATION Plant\n"
            "  VAR_GLOBAL plantWide : BOOL; END_VAR\n"
            "  RESOURCE Cpu ON Controller\n"
            "    TASK Motion(INTERVAL := T#1ms, PRIORITY := 1);\n"
            "    TASK Slow(INTERVAL := T#100ms);\n"
            "    PROGRAM RETAIN Instance WITH Motion : Main(x := 1);\n"
            "  END_RESOURCE\n"
            "  VAR_ACCESS a : Cpu.Main.counter : INT READ_ONLY; END_VAR\n"
            "END_CONFIGURATION\n"
            "TASK Alone(SINGLE := Io.ready);" },
    };
}

ACCore* lineCore()
{
    static ACCore core;
    static const bool once = (core.setSources(line()), true);
    Q_UNUSED(once)
    return &core;
}

} // namespace

/// What the declarations of a project mean together.
class ACCoreTest : public QObject {
    Q_OBJECT

private slots:
    void everythingParses();
    void theSampleParses();
    void pathsResolve_data();
    void pathsResolve();
    void dataTypes_data();
    void dataTypes();
    void symbolsByKind();
    void symbolsKeepTheOrderOfTheSources();
    void enumerations();
    void systemEnumerations();
    void errorNamesCoverTheCodes();
    void memberOutOfRangeIsNull();
    void variablesByPath();
    void variablesTellWhereTheyAre();
    void largeArraysAreListedWithoutElements();
    void manyMembersEndTheList();
    void aProjectWithoutSourcesHasACore();
    void newSourcesReplaceTheOld();
    void programStyle();
    void equalTypesAreOne();
};

void ACCoreTest::everythingParses()
{
    QCOMPARE(problems(*lineCore()), QStringList());
}

void ACCoreTest::theSampleParses()
{
    Sources sources;
    const QDir directory(QStringLiteral(KESTRUN_SOURCE_DIR "/examples/packaging-line"));
    for (const QString& name : directory.entryList({ QStringLiteral("*.st") })) {
        QFile file(directory.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        sources[name.section(QLatin1Char('.'), 0, 0).toStdString()] = file.readAll().toStdString();
    }
    QVERIFY(!sources.empty());
    ACCore core;
    core.setSources(sources);
    QCOMPARE(problems(core), QStringList());
    QVERIFY(core.variables().size() > 50);
}

void ACCoreTest::pathsResolve_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("type");

    QTest::newRow("a global variable by its name") << "ready"
                                                   << "BOOL";
    QTest::newRow("a global variable by list and name") << "Io.ready"
                                                        << "BOOL";
    QTest::newRow("a list that its source names") << "Spare.old"
                                                  << "BOOL";
    QTest::newRow("a second block of a source without a name") << "Named.Group.GroupNo"
                                                               << "INT";
    QTest::newRow("a global variable of a configuration") << "Tasks.plantWide"
                                                          << "BOOL";
    QTest::newRow("a variable of a program") << "Main.counter"
                                             << "INT";
    QTest::newRow("a member of a structure") << "Main.guard.open"
                                             << "BOOL";
    QTest::newRow("an inherited member") << "Main.row[1].locked"
                                         << "BOOL";
    QTest::newRow("a member of an alias' type") << "Main.row[0].width"
                                                << "Length";
    QTest::newRow("an element with two indices") << "Main.doors[2,-1].open"
                                                 << "BOOL";
    QTest::newRow("an index that is a constant") << "Main.doors[Main.WIDTH,1].open"
                                                 << "BOOL";
    QTest::newRow("an index that is a sum") << "Main.nested[FIRST+2][1]"
                                            << "BOOL";
    QTest::newRow("arrays in arrays") << "Main.nested[2][1]"
                                      << "BOOL";
    QTest::newRow("a bit of a word") << "Main.flags.15"
                                     << "BOOL";
    QTest::newRow("the last bit of a long word") << "Main.wide.63"
                                                 << "BOOL";
    QTest::newRow("a bit of a small integer") << "Main.small.7"
                                              << "BOOL";
    QTest::newRow("a bit of a union's byte") << "Main.either.bits[3].7"
                                             << "BOOL";
    QTest::newRow("an output of a standard block") << "Main.delay.Q"
                                                   << "BOOL";
    QTest::newRow("an output of a block") << "Main.valve.isOpen"
                                          << "BOOL";
    QTest::newRow("an inherited output of a block") << "Main.valve.fault"
                                                    << "BOOL";
    QTest::newRow("names in other letters") << "MAIN.Guard.OPEN"
                                            << "BOOL";
    QTest::newRow("an array as a whole") << "Main.table"
                                         << "ARRAY [0..4] OF INT";
    QTest::newRow("an array of open size") << "Main.open"
                                           << "ARRAY [*] OF BOOL";
    QTest::newRow("a structure as a whole") << "Main.guard"
                                            << "Guard";
    QTest::newRow("a subrange by its name") << "Main.percent"
                                            << "Percent";
    QTest::newRow("an enumeration without a name") << "Main.inline"
                                                   << "(A, ...)";
    QTest::newRow("a pointer") << "Main.link"
                               << "POINTER TO Guard";

    QTest::newRow("a bit beyond the word") << "Main.flags.16"
                                           << "none";
    QTest::newRow("a bit of a boolean") << "Main.guard.open.0"
                                        << "none";
    QTest::newRow("a bit of a bit") << "Main.flags.1.0"
                                    << "none";
    QTest::newRow("a bit of a real") << "Io.speed.0"
                                     << "none";
    QTest::newRow("an element beyond the array") << "Main.table[5]"
                                                 << "none";
    QTest::newRow("an element before the array") << "Main.nested[0][1]"
                                                 << "none";
    QTest::newRow("too few indices") << "Main.doors[1]"
                                     << "none";
    QTest::newRow("too many indices") << "Main.table[1,2]"
                                      << "none";
    QTest::newRow("an element of an array of open size") << "Main.open[0]"
                                                         << "none";
    QTest::newRow("an element of no array") << "Main.counter[0]"
                                            << "none";
    QTest::newRow("a member of an array") << "Main.doors.open"
                                          << "none";
    QTest::newRow("a member of no structure") << "Main.counter.open"
                                              << "none";
    QTest::newRow("a member that is not there") << "Main.guard.closed"
                                                << "none";
    QTest::newRow("a temporary variable of a block") << "Main.valve.passing"
                                                     << "none";
    QTest::newRow("a member behind a pointer") << "Main.link.open"
                                               << "none";
    QTest::newRow("a program alone") << "Main"
                                     << "none";
    QTest::newRow("a list alone") << "Io"
                                  << "none";
    QTest::newRow("a variable of a program without the program") << "counter"
                                                                 << "none";
    QTest::newRow("a type") << "Guard"
                            << "none";
    QTest::newRow("a value of an enumeration") << "Color.Red"
                                               << "none";
    QTest::newRow("a type's member") << "Guard.open"
                                     << "none";
    QTest::newRow("an address") << "%IX0.0"
                                << "none";
    QTest::newRow("nothing") << ""
                             << "none";
    QTest::newRow("a point") << "."
                             << "none";
    QTest::newRow("a point at the end") << "Main.guard."
                                        << "none";
    QTest::newRow("a point at the beginning") << ".Main.guard"
                                              << "none";
    QTest::newRow("two points") << "Main..guard"
                                << "none";
    QTest::newRow("a blank in front") << " Main.guard"
                                      << "none";
    QTest::newRow("a blank inside") << "Main. guard"
                                    << "none";
    QTest::newRow("an open bracket") << "Main.table[1"
                                     << "none";
    QTest::newRow("an empty index") << "Main.table[]"
                                    << "none";
    QTest::newRow("an index that is text") << "Main.table[x]"
                                           << "none";
    QTest::newRow("an index too large for any number") << "Main.table[99999999999999999999]"
                                                       << "none";
    QTest::newRow("a bit too large for any number") << "Main.flags.99999999999999999999"
                                                    << "none";
    QTest::newRow("a bracket the wrong way") << "Main.table]1["
                                             << "none";
}

void ACCoreTest::pathsResolve()
{
    QFETCH(const QString, path);
    QTEST(typeText(*lineCore(), path), "type");
}

void ACCoreTest::dataTypes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("type");

    QTest::newRow("BOOL is 9") << "Io.ready" << 9;
    QTest::newRow("INT") << "Main.counter" << int(Int);
    QTest::newRow("LREAL under another name") << "Main.row[0].width" << int(LReal);
    QTest::newRow("TIME") << "Main.delay.PT" << int(Time);
    QTest::newRow("LTIME") << "Main.span" << int(Time);
    QTest::newRow("DATE") << "Main.day" << int(Date);
    QTest::newRow("TOD") << "Main.clock" << int(TimeOfDay);
    QTest::newRow("DT") << "Main.moment" << int(DateAndTime);
    QTest::newRow("STRING with a length") << "Main.text" << int(String);
    QTest::newRow("WSTRING with a length that is a constant") << "Main.name" << int(WString);
    QTest::newRow("STRING without a length") << "Main.plain" << int(String);
    QTest::newRow("structure") << "Main.guard" << int(Struct);
    QTest::newRow("union") << "Main.either" << int(Struct);
    QTest::newRow("array under a name") << "Main.row" << int(Array);
    QTest::newRow("named enumeration") << "Main.color" << int(Enum);
    QTest::newRow("enumeration with a type in front") << "Main.mode" << int(Enum);
    QTest::newRow("subrange") << "Main.percent" << int(Int);
    QTest::newRow("function block") << "Main.valve" << int(FunctionBlock);
    QTest::newRow("bit") << "Main.flags.0" << int(Bool);
    QTest::newRow("reference") << "Main.refer" << int(NoType);
}

void ACCoreTest::dataTypes()
{
    QFETCH(const QString, path);
    const SymbolDataType* type = lineCore()->type(path.toStdString());
    QVERIFY(type != nullptr);
    QTEST(int(type->dataType()), "type");
}

void ACCoreTest::symbolsByKind()
{
    const ACCore& core = *lineCore();
    QCOMPARE(names(core, ProgramSymbols), QStringList{ QStringLiteral("Main") });
    QVERIFY(names(core, FunctionBlockSymbols).contains(QStringLiteral("Valve")));
    QVERIFY(names(core, FunctionBlockSymbols).contains(QStringLiteral("TON")));
    QCOMPARE(names(core, FunctionSymbols), QStringList{ QStringLiteral("Twice") });
    QVERIFY(names(core, StructSymbols).contains(QStringLiteral("Door")));
    QVERIFY(!names(core, StructSymbols).contains(QStringLiteral("Color")));
    QCOMPARE(names(core, OtherTypeSymbols).join(QLatin1Char(' ')), QStringLiteral("Length Row Percent"));
    QCOMPARE(names(core, GlobalVariableListSymbols).join(QLatin1Char(' ')), QStringLiteral("Io Io Spare Named Tasks"));
    QCOMPARE(names(core, TaskSymbols).join(QLatin1Char(' ')), QStringLiteral("Motion Slow Alone"));
    QCOMPARE(names(core, AxisGroupSymbols), QStringList{ QStringLiteral("Group") });
    QVERIFY(names(core, VariableSymbols).contains(QStringLiteral("Main.counter")));
    std::vector<Symbol*> none;
    core.allSymbols(99, none);
    QVERIFY(none.empty());
}

void ACCoreTest::symbolsKeepTheOrderOfTheSources()
{
    QCOMPARE(names(*lineCore(), EnumSymbols).join(QLatin1Char(' ')),
        QStringLiteral("MC_AXIS_ERROR_ID MC_AXIS_STATE Color Mode"));
    std::vector<Symbol*> symbols{ nullptr };
    lineCore()->allSymbols(ProgramSymbols, symbols);
    QCOMPARE(symbols.size(), std::size_t(2));
}

void ACCoreTest::enumerations()
{
    QCOMPARE(
        members(*enumeration(*lineCore(), "Color")).join(QLatin1Char(' ')), QStringLiteral("Red=0 Green=5 Blue=6"));
    QCOMPARE(members(*enumeration(*lineCore(), "Mode")).join(QLatin1Char(' ')), QStringLiteral("Off=0 On=4"));

    ACCore core;
    core.setSources({ { "E",
        "TYPE E : (A := 16#10, B, C := A - 1, D := 2#1010_0000, F := LIMIT_CODE, G := -3, H := 99999999999) DINT; "
        "END_TYPE VAR_GLOBAL CONSTANT LIMIT_CODE : INT := 7; END_VAR" } });
    QCOMPARE(members(*enumeration(core, "E")).join(QLatin1Char(' ')),
        QStringLiteral("A=16 B=17 C=15 D=160 F=7 G=-3 H=2147483647"));
}

void ACCoreTest::systemEnumerations()
{
    const ACCore core;
    const SymbolEnumType* states = enumeration(core, "MC_AXIS_STATE");
    QVERIFY(states != nullptr);
    QCOMPARE(states->membersCount(), 8);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(states->member(i)->value, i);
    QCOMPARE(states->member(3)->name, std::string("MC_STANDSTILL"));
    QCOMPARE(problems(core), QStringList());
}

void ACCoreTest::errorNamesCoverTheCodes()
{
    const ACCore core;
    const SymbolEnumType* errors = enumeration(core, "MC_AXIS_ERROR_ID");
    QVERIFY(errors != nullptr);
    QMap<int, QString> byCode;
    for (int i = 0; i < errors->membersCount(); ++i)
        byCode.insert(errors->member(i)->value, QString::fromStdString(errors->member(i)->name));
    QCOMPARE(byCode.size(), errors->membersCount());
    QCOMPARE(byCode.value(Diagnosis::ok), QStringLiteral("MC_NO_ERROR"));
    QCOMPARE(byCode.value(Diagnosis::followingError), QStringLiteral("MC_FOLLOWING_ERROR"));

    QFile header(QStringLiteral(KESTRUN_SOURCE_DIR "/protocol/DiagnosisCodes.h"));
    QVERIFY(header.open(QIODevice::ReadOnly));
    const int codes = QString::fromUtf8(header.readAll()).count(QStringLiteral("constexpr std::int16_t "));
    QCOMPARE(errors->membersCount(), codes);
}

void ACCoreTest::memberOutOfRangeIsNull()
{
    const ACCore core;
    const SymbolEnumType* states = enumeration(core, "MC_AXIS_STATE");
    QVERIFY(states->member(-1) == nullptr);
    QVERIFY(states->member(8) == nullptr);
}

void ACCoreTest::variablesByPath()
{
    const QStringList all = paths(*lineCore());
    for (const char* path : { "Io.ready", "Main.guard", "Main.guard.open", "Main.doors[0,-1].locked", "Main.table[4]",
             "Main.nested[2][1]", "Main.valve.isOpen", "Main.valve.fault", "Tasks.plantWide" })
        QVERIFY2(all.contains(QLatin1String(path)), path);
    for (const char* path :
        { "Main.moving", "Main.ready", "Main.valve.passing", "Main.open[0]", "Main.flags.0", "Main.table[5]" })
        QVERIFY2(!all.contains(QLatin1String(path)), path);
    QVERIFY(all.indexOf(QStringLiteral("Io.ready")) < all.indexOf(QStringLiteral("Main.counter")));
    QVERIFY(all.indexOf(QStringLiteral("Main.counter")) < all.indexOf(QStringLiteral("Main.other")));
    // A path that is listed is a path that resolves, to the same type.
    for (const VariableInfo& variable : lineCore()->variables())
        QVERIFY2(lineCore()->type(variable.path) == variable.type, variable.path.c_str());
}

void ACCoreTest::variablesTellWhereTheyAre()
{
    ACCore core;
    core.setSources({ { "Types", "TYPE Pair : STRUCT\n  left : BOOL;\n  right : BOOL;\nEND_STRUCT END_TYPE" },
        { "Umlaut", "PROGRAM P\nVAR (* äöü *) pair AT %MW3 : Pair; // Grüße\nEND_VAR\nEND_PROGRAM" } });
    const std::vector<VariableInfo>& variables = core.variables();
    QCOMPARE(variables.size(), std::size_t(3));
    QCOMPARE(variables[0].source, std::string("Umlaut"));
    QCOMPARE(variables[0].line, 2);
    QCOMPARE(variables[0].column, 15);
    QCOMPARE(variables[0].address, std::string("%MW3"));
    QCOMPARE(variables[0].comment, std::string("Grüße"));
    QCOMPARE(variables[2].path, std::string("P.pair.right"));
    QCOMPARE(variables[2].source, std::string("Types"));
    QCOMPARE(variables[2].line, 3);
    QCOMPARE(variables[2].column, 3);
    QCOMPARE(variables[2].address, std::string());
}

void ACCoreTest::largeArraysAreListedWithoutElements()
{
    ACCore core;
    core.setSources({ { "P",
        "PROGRAM P VAR large : ARRAY [0..1000] OF BOOL; full : ARRAY [1..10, 1..100] OF BOOL; none : ARRAY [1..0] OF "
        "BOOL; "
        "huge : ARRAY [-9223372036854775807..9223372036854775807, 0..9] OF BOOL; END_VAR END_PROGRAM" } });
    QCOMPARE(core.variables().size(), std::size_t(1004));
    QVERIFY(core.type("P.large[1000]") != nullptr);
    QVERIFY(core.type("P.huge[-5,9]") != nullptr);
    QCOMPARE(core.variables()[1].path, std::string("P.full"));
    QCOMPARE(core.variables()[3].path, std::string("P.full[1,2]"));
    QCOMPARE(core.variables()[1001].path, std::string("P.full[10,100]"));
}

void ACCoreTest::manyMembersEndTheList()
{
    std::string types = "TYPE T0 : STRUCT a : BOOL; END_STRUCT\n";
    for (int i = 1; i <= 40; ++i)
        types += "T" + std::to_string(i) + " : STRUCT a, b : T" + std::to_string(i - 1) + "; END_STRUCT\n";
    ACCore core;
    core.setSources(
        { { "Types", types + "END_TYPE" }, { "Z", "PROGRAM Z VAR first : T40; last : BOOL; END_VAR END_PROGRAM" } });
    QCOMPARE(core.problems().size(), std::size_t(0));
    QCOMPARE(core.variables().size(), std::size_t(10001));
    QCOMPARE(core.variables().back().path, std::string("Z.last"));
}

void ACCoreTest::aProjectWithoutSourcesHasACore()
{
    const ACCore core;
    QVERIFY(core.variables().empty());
    QVERIFY(core.type("Main.x") == nullptr);
    QVERIFY(core.checkUnitHelper() != nullptr);
    QVERIFY(names(core, EnumSymbols).contains(QStringLiteral("MC_AXIS_ERROR_ID")));
}

void ACCoreTest::newSourcesReplaceTheOld()
{
    ACCore core;
    core.setSources({ { "A", "VAR_GLOBAL a : BOOL; END_VAR" } });
    QVERIFY(core.type("A.a") != nullptr);
    QCOMPARE(core.variables().size(), std::size_t(1));
    core.setSources({ { "B", "VAR_GLOBAL b : INT; END_VAR" } });
    QVERIFY(core.type("A.a") == nullptr);
    QCOMPARE(typeText(core, QStringLiteral("B.b")), QStringLiteral("INT"));
    QCOMPARE(core.variables().size(), std::size_t(1));
}

void ACCoreTest::programStyle()
{
    ACCore core;
    QCOMPARE(core.getProgramStyle(), SymbolicStyle);
    core.setProgramStyle(AddressStyle);
    QCOMPARE(int(core.getProgramStyle()), 1);
}

void ACCoreTest::equalTypesAreOne()
{
    QVERIFY(lineCore()->type("Io.ready") == lineCore()->type("Main.guard.open"));
    QVERIFY(lineCore()->type("Io.ready") != lineCore()->type("Main.counter"));
}

QTEST_GUILESS_MAIN(ACCoreTest)
#include "ACCoreTest.moc"
