#include "workbench/FindFlows.h"

#include "sdk/IEditor.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

/// Where a variable is used, however it is named.
class FindUsesTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void usesAreAskedForAgain();
    void usesInAxesThatWereNeverOpenedAreGoneThroughInTurn();
    void aVariableThatNoPlaceCanUseIsToldOf_data();
    void aVariableThatNoPlaceCanUseIsToldOf();
    void aNameIsThatOfTheDeclarationAroundIt_data();
    void aNameIsThatOfTheDeclarationAroundIt();
    void usesByAConstantAndByItsValueAreTheSame_data();
    void usesByAConstantAndByItsValueAreTheSame();
    void whatTheProjectDoesNotKnowIsLookedForAsItIsWritten_data();
    void whatTheProjectDoesNotKnowIsLookedForAsItIsWritten();
    void blanksInAnIndexDoNotMatter();
    void aPlaceIsListedOnce();
    void namesByPointers_data();
    void namesByPointers();

private:
    AxisTable* addAxis(const char* name, const char* pin) const { return program->addAxis(text(name), text(pin)); }
    void setPin(const char* axis, const char* pin) const
    {
        program->axis(text(axis))->setProperty(text("PosLimitPin"), text(pin));
    }
    void next() const { program->press(Qt::Key_F3); }
    void previous() const { program->press(Qt::Key_F3, Qt::ShiftModifier); }
    QString here() const { return program->currentAxis() + QLatin1Char(' ') + FindProgram::focus(); }

    std::unique_ptr<FindProgram> program;
    std::unique_ptr<MessageBoxWatcher> boxes;
};

void FindUsesTest::init()
{
    boxes = std::make_unique<MessageBoxWatcher>();
    program = std::make_unique<FindProgram>();
    program->create(text("Line"), {});
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR\n  stop, near, far : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
}

void FindUsesTest::cleanup()
{
    program.reset();
    const QStringList texts = boxes->texts();
    boxes.reset();
    QCOMPARE(texts, QStringList());
}

void FindUsesTest::usesAreAskedForAgain()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.near");
    program->findReferences(text("Main.stop"));
    next();
    // What stands in the panel but has not been asked for is another question.
    program->child<QLineEdit>("variable")->setText(text("Main.far"));
    setPin("Turn", "Main.stop");
    next();
    QCOMPARE(program->status(), text("Uses of Main.stop: 2."));
    QCOMPARE(here(), text("Turn lineEditPos"));
}

/// They are listed without a control, and opening the first of them names it.
void FindUsesTest::usesInAxesThatWereNeverOpenedAreGoneThroughInTurn()
{
    for (const char* axis : { "Cut", "Saw" }) {
        AxisTable* table = addAxis(axis, "Main.stop");
        table->setProperty(text("OrgSignalEnable"), text("TRUE"));
        table->setProperty(text("OrgSignalPin"), text("Main.stop"));
    }
    program->findReferences(text("Main.stop"));
    for (const char* reached :
        { "Cut lineEditPos", "Cut lineEditOrg", "Saw lineEditPos", "Saw lineEditOrg", "Cut lineEditPos" }) {
        next();
        QCOMPARE(here(), text(reached));
    }
    for (const char* reached : { "Saw lineEditOrg", "Saw lineEditPos", "Cut lineEditOrg" }) {
        previous();
        QCOMPARE(here(), text(reached));
    }
}

void FindUsesTest::aVariableThatNoPlaceCanUseIsToldOf_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("status");
    QTest::newRow("of a block that nothing is made of")
        << 8 << 6 << text("Blk.a")
        << text("Blk.a belongs to a function, a block or a type. No place can use it by this name.");
    QTest::newRow("a temporary one")
        << 8 << 1 << text("Blk.t")
        << text("Blk.t belongs to a function, a block or a type. No place can use it by this name.");
    QTest::newRow("of a function")
        << 10 << 33 << text("Half.speed")
        << text("Half.speed belongs to a function, a block or a type. No place can use it by this name.");
    QTest::newRow("an element by a variable")
        << 4 << 9 << text("Main.row[n].open")
        << text("An index of Main.row[n].open is known only while the program runs. Places that use it as it is "
                "written: 1.");
    QTest::newRow("an element by a constant")
        << 4 << 29 << text("Main.row[2].open") << text("Uses of Main.row[2].open: 1.");
    QTest::newRow("an element that there is not")
        << 4 << 45 << text("Main.row[4].open") << text("The project has no variable Main.row[4].open.");
}

void FindUsesTest::aVariableThatNoPlaceCanUseIsToldOf()
{
    program->project()->sourceModel()->setSource(text("Main"),
        text("PROGRAM Main\n"
             "VAR CONSTANT LAST : INT := 2; END_VAR\n"
             "VAR n : INT; row : ARRAY [1..3] OF Guard; END_VAR\n"
             "row[n].open := row[ LAST ].open AND row[4].open;\n"
             "END_PROGRAM\n"
             "FUNCTION_BLOCK Blk\n"
             "VAR a : BOOL; END_VAR VAR_TEMP t : BOOL; END_VAR\n"
             "t := a;\n"
             "END_FUNCTION_BLOCK\n"
             "FUNCTION Half : REAL VAR_INPUT speed : REAL; END_VAR END_FUNCTION\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n"));
    addAxis("Cut", "Main.row[2].open");
    addAxis("Turn", "Main.row[n].open");
    QFETCH(int, line);
    QFETCH(int, column);
    program->workbench->workspace().showSource(text("Main"), line, column);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QTEST(program->child<QLineEdit>("variable")->text(), "variable");
    QTEST(program->status(), "status");
}

void FindUsesTest::aNameIsThatOfTheDeclarationAroundIt_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("variable");
    QTest::newRow("of a program before a list") << 3 << 1 << text("Main.front");
    QTest::newRow("of a list behind a program") << 6 << 3 << text("Mixed.front");
    QTest::newRow("of a type between two lists") << 8 << 21 << text("Mixed.cover.open");
    QTest::newRow("of the second list") << 11 << 3 << text("Mixed.open");
}

void FindUsesTest::aNameIsThatOfTheDeclarationAroundIt()
{
    QFETCH(int, line);
    QFETCH(int, column);
    program->project()->sourceModel()->removeSource(text("Main"));
    program->project()->sourceModel()->setSource(text("Mixed"),
        text("PROGRAM Main\nVAR front : BOOL; END_VAR\nfront := TRUE;\nEND_PROGRAM\n"
             "VAR_GLOBAL\n  front, ready : BOOL; cover : Guard;\nEND_VAR\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n\n"
             "VAR_GLOBAL\n  open : BOOL;\nEND_VAR\n"));
    addAxis("Cut", "Main.front");
    addAxis("Saw", "Mixed.front");
    addAxis("Turn", "Mixed.cover.open");
    addAxis("Wind", "Mixed.open");
    program->workbench->workspace().showSource(text("Mixed"), line, column);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QTEST(program->child<QLineEdit>("variable")->text(), "variable");
    QCOMPARE(program->results().size(), 1);
    QVERIFY2(program->results().first().endsWith(program->child<QLineEdit>("variable")->text()),
        qPrintable(program->results().first()));
}

void FindUsesTest::usesByAConstantAndByItsValueAreTheSame_data()
{
    QTest::addColumn<QString>("variable");
    for (const char* variable :
        { "Main.row[2].open", "Main.row[LAST].open", "main.row[ LAST ].open", "Main.row[FIRST + 1].open" })
        QTest::newRow(variable) << text(variable);
}

void FindUsesTest::usesByAConstantAndByItsValueAreTheSame()
{
    QFETCH(QString, variable);
    program->project()->sourceModel()->setSource(text("Main"),
        text("PROGRAM Main\nVAR row : ARRAY [1..3] OF Guard; END_VAR\nEND_PROGRAM\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n"));
    program->project()->sourceModel()->setSource(
        text("Consts"), text("VAR_GLOBAL CONSTANT LAST : INT := 2; FIRST : INT := 1; END_VAR\n"));
    addAxis("Cut", "Main.row[2].open");
    addAxis("Saw", "Main.row[FIRST].open");
    addAxis("Turn", "Main.row[ LAST ].open");
    addAxis("Wind", "main.row[FIRST+1].open");
    program->findReferences(variable);
    QCOMPARE(program->status(), text("Uses of Main.row[2].open: 3."));
    QCOMPARE(program->results().size(), 3);
}

void FindUsesTest::whatTheProjectDoesNotKnowIsLookedForAsItIsWritten_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("status");
    QTest::newRow("an element out of bounds") << text(
        "Main.row[ 9 ]") << text("The project has no variable Main.row[ 9 ]. Places that use it as it is written: 1.");
    QTest::newRow("a name that is nowhere") << text("Main.gone%2") << text("The project has no variable Main.gone%2.");
    QTest::newRow("below what has nothing below it")
        << text("Main.stop.open") << text("The project has no variable Main.stop.open.");
    QTest::newRow("an index that nothing declares")
        << text("Main.row[unheard]")
        << text("The project does not know an index of Main.row[unheard]. Places that use it as it is written: 0.");
    QTest::newRow("no index")
        << text("Main.row[]")
        << text("The project does not know an index of Main.row[]. Places that use it as it is written: 0.");
}

void FindUsesTest::whatTheProjectDoesNotKnowIsLookedForAsItIsWritten()
{
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR stop : BOOL; row : ARRAY [1..3] OF BOOL; END_VAR\nEND_PROGRAM\n"));
    addAxis("Cut", "Main.row[9]");
    addAxis("Turn", "Main.stop");
    QFETCH(QString, variable);
    program->findReferences(variable);
    QTEST(program->status(), "status");
}

void FindUsesTest::blanksInAnIndexDoNotMatter()
{
    program->project()->sourceModel()->setSource(text("Main"),
        text("PROGRAM Main\nVAR grid : ARRAY [0..2, 1..2] OF Guard; END_VAR\ngrid[1, 2].open := TRUE;\nEND_PROGRAM\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n"));
    addAxis("Cut", "Main.grid[1,2].open");
    addAxis("Turn", "Main.grid[ 1 , 2 ].open");
    program->workbench->workspace().showSource(text("Main"), 3, 14);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QCOMPARE(program->status(), text("Uses of Main.grid[1,2].open: 2."));
    program->findReferences(text("Main.grid[1, 2].open"));
    QCOMPARE(program->status(), text("Uses of Main.grid[1,2].open: 2."));
}

/// Its structure stands before the element by either way to write that.
void FindUsesTest::aPlaceIsListedOnce()
{
    program->project()->sourceModel()->setSource(text("IO"),
        text("VAR_GLOBAL CONSTANT TOP : INT := 3; END_VAR\n"
             "VAR_GLOBAL cells : ARRAY [1..2] OF Cell; END_VAR\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT Cell : STRUCT row : ARRAY [1..3] OF Guard; END_STRUCT "
             "END_TYPE\n"));
    addAxis("Cut", "IO.cells[1].row[3].open");
    addAxis("Saw", "IO.cells[1].row[TOP].open");
    addAxis("Turn", "IO.cells[1]");
    program->findReferences(text("IO.cells[1].row[3].open"));
    QCOMPARE(program->status(), text("Uses of IO.cells[1].row[3].open: 3."));
    QCOMPARE(program->results().size(), 3);
}

void FindUsesTest::namesByPointers_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("status");
    QTest::newRow("a member of the block itself")
        << 7 << 7 << text("Main.drive.halt") << text("Uses of Main.drive.halt: 1.");
    QTest::newRow("one that only a list has")
        << 7 << 22 << text("THIS^.ready") << text("The project has no variable THIS^.ready.");
    QTest::newRow("what a pointer leads to")
        << 3 << 4 << text("Main.p^.open")
        << text("What Main.p^.open leads to is known only while the program runs. Places that use it as it is "
                "written: 0.");
}

void FindUsesTest::namesByPointers()
{
    program->project()->sourceModel()->setSource(text("Main"),
        text("PROGRAM Main\nVAR drive : Blk; p : POINTER TO Guard; END_VAR\np^.open := TRUE;\nEND_PROGRAM\n"
             "FUNCTION_BLOCK Blk\nVAR halt : BOOL; END_VAR\nTHIS^.halt := THIS^.ready;\nEND_FUNCTION_BLOCK\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n"));
    program->project()->sourceModel()->setSource(text("IO"), text("VAR_GLOBAL ready, halt : BOOL; END_VAR\n"));
    addAxis("Cut", "Main.drive.halt");
    addAxis("Turn", "IO.ready");
    QFETCH(int, line);
    QFETCH(int, column);
    program->workbench->workspace().showSource(text("Main"), line, column);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QTEST(program->child<QLineEdit>("variable")->text(), "variable");
    QTEST(program->status(), "status");
}

QTEST_MAIN(FindUsesTest)
#include "FindUsesTest.moc"
