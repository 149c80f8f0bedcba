#include "workbench/UndoHelper.h"

#include <QtTest>

namespace {

/// Counts what the stack does with it.
class CountingCommand : public QUndoCommand {
public:
    CountingCommand(int& done, int& undone) : m_done(done), m_undone(undone) { }
    void redo() override { ++m_done; }
    void undo() override { ++m_undone; }

private:
    int& m_done;
    int& m_undone;
};

} // namespace

class UndoHelperTest : public QObject {
    Q_OBJECT

private slots:
    void aPushedCommandIsDoneOnce();
    void aMacroUndoesAsOne();
    void anEmptyMacroLeavesNoEntry();
    void nestedEmptyMacrosLeaveNoEntry();
    void anEmptyMacroKeepsWhatCanBeRedone();
    void aCommandAfterAnEmptyMacroStandsByItself();
    void aNestedMacroWithACommandUndoesAsOne();
    void anEndWithoutABeginIsSurvived();
    void nothingIsPushedForNull();
};

void UndoHelperTest::aPushedCommandIsDoneOnce()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.pushCommand(new CountingCommand(done, undone));
    QCOMPARE(done, 1);
    helper.stack()->undo();
    QCOMPARE(undone, 1);
}

void UndoHelperTest::aMacroUndoesAsOne()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.beginMacro();
    helper.pushCommand(new CountingCommand(done, undone));
    helper.pushCommand(new CountingCommand(done, undone));
    helper.endMacro();
    QCOMPARE(helper.stack()->count(), 1);
    helper.stack()->undo();
    QCOMPARE(undone, 2);
    QVERIFY(!helper.stack()->canUndo());
}

void UndoHelperTest::anEmptyMacroLeavesNoEntry()
{
    UndoHelper helper;
    helper.beginMacro();
    helper.endMacro();
    QCOMPARE(helper.stack()->count(), 0);
}

void UndoHelperTest::nestedEmptyMacrosLeaveNoEntry()
{
    UndoHelper helper;
    helper.beginMacro();
    helper.beginMacro();
    helper.endMacro();
    helper.endMacro();
    QCOMPARE(helper.stack()->count(), 0);
}

void UndoHelperTest::anEmptyMacroKeepsWhatCanBeRedone()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.pushCommand(new CountingCommand(done, undone));
    helper.stack()->undo();
    helper.beginMacro();
    helper.endMacro();
    QVERIFY(helper.stack()->canRedo());
}

void UndoHelperTest::aCommandAfterAnEmptyMacroStandsByItself()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.beginMacro();
    helper.endMacro();
    helper.pushCommand(new CountingCommand(done, undone));
    helper.pushCommand(new CountingCommand(done, undone));
    QCOMPARE(helper.stack()->count(), 2);
    helper.stack()->undo();
    QCOMPARE(undone, 1);
}

void UndoHelperTest::aNestedMacroWithACommandUndoesAsOne()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.beginMacro();
    helper.beginMacro();
    helper.pushCommand(new CountingCommand(done, undone));
    helper.endMacro();
    helper.pushCommand(new CountingCommand(done, undone));
    helper.endMacro();
    QCOMPARE(helper.stack()->count(), 1);
    helper.stack()->undo();
    QCOMPARE(undone, 2);
}

void UndoHelperTest::anEndWithoutABeginIsSurvived()
{
    int done = 0;
    int undone = 0;
    UndoHelper helper;
    helper.endMacro();
    helper.pushCommand(new CountingCommand(done, undone));
    QCOMPARE(helper.stack()->count(), 1);
}

void UndoHelperTest::nothingIsPushedForNull()
{
    UndoHelper helper;
    helper.pushCommand(nullptr);
    QCOMPARE(helper.stack()->count(), 0);
}

QTEST_MAIN(UndoHelperTest)
#include "UndoHelperTest.moc"
