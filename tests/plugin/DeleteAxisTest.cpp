#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "sdk/ServiceLocator.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"

#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// Three axes in model and tree.
class ThreeAxes : public PluginFixture {
public:
    ThreeAxes()
    {
        for (const char* name : { "feed", "lift", "turn" })
            addAxis(text(name));
    }
    AxisTable* axis(quint32 id) const { return project.axisModel()->axisTable(id); }

    void select(const QString& path)
    {
        send(path, Solution::NodeSelected);
        host.calls.clear();
    }
    void deleteAxis(quint32 id)
    {
        select(project.axisPath(id));
        MessageBoxWatcher boxes;
        boxes.answer(text("Yes"));
        call("deleteAxis");
    }
    /// How many questions a command asks while something is missing: the host, the project or one of its services.
    int questionsWithout(const QString& missing, const char* command)
    {
        MessageBoxWatcher boxes;
        boxes.answer(text("Yes"));
        if (missing == text("host"))
            Solution::publishApplication(nullptr);
        else if (missing == text("project"))
            project.close();
        else
            host.withhold(missing);
        call(command);
        Solution::publishApplication(&host);
        return boxes.count();
    }
    void deleteAll()
    {
        select(project.unitPath());
        MessageBoxWatcher boxes;
        boxes.answer(text("Yes"));
        call("deleteAllAxis");
    }
};

const QStringList all{ text("feed"), text("lift"), text("turn") };

} // namespace

/// The commands "Delete Axis" and "Delete All Axis" with their undo.
class DeleteAxisTest : public QObject {
    Q_OBJECT

private slots:
    void questionNamesWhatIsDeleted_data();
    void questionNamesWhatIsDeleted();
    void anyAnswerButYesKeepsTheAxes_data();
    void anyAnswerButYesKeepsTheAxes();

    void selectionThatMovesOnDoesNotMislead();
    void commandIsPushedBeforeTheRemoval();
    void undoPutsTheNodeBackInItsRow();
    void redoAfterRedoStaysInStep();
    void openEditorIsLeftAlone();
    void deletionEndsSilentlyWithout_data();
    void deletionEndsSilentlyWithout();
    void deletionOfANodeWithoutRecordEnds();
    void deletionWithoutUndoStackStopsAfterTheRow();

    void allAreRemovedFromTheLastToTheFirst();
    void allComeBackInOneStep();
    void rowsAreNotStoredWhenAllGo();
    void entriesWithoutRecordArePassedOver();
    void emptyUnitLeavesNoUndoEntry();
    void deletionOfAllEndsSilentlyWithout_data();
    void deletionOfAllEndsSilentlyWithout();
};

void DeleteAxisTest::questionNamesWhatIsDeleted_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("question");
    QTest::newRow("one axis") << QByteArray("deleteAxis") << "Do you want to delete the axis ?";
    QTest::newRow("all axes") << QByteArray("deleteAllAxis") << "Do you want to delete all axis ?";
}

void DeleteAxisTest::questionNamesWhatIsDeleted()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, question);
    ThreeAxes fixture;
    MessageBoxWatcher boxes;
    boxes.answer(text("No"));
    fixture.call(slot.constData());
    QCOMPARE(boxes.count(), 1);
    const MessageBoxWatcher::Box box = boxes.boxes.first();
    QCOMPARE(box.title, text("Kestrun"));
    QCOMPARE(box.text, question);
    QCOMPARE(box.icon, QMessageBox::Question);
    QVERIFY(!box.hasParent);
    QCOMPARE(box.buttons, (QStringList{ text("Yes"), text("No") }));
}

void DeleteAxisTest::anyAnswerButYesKeepsTheAxes_data()
{
    QTest::addColumn<bool>("everything");
    QTest::addColumn<bool>("escape");
    QTest::newRow("one axis, no") << false << false;
    QTest::newRow("one axis, Escape") << false << true;
    QTest::newRow("all axes, no") << true << false;
    QTest::newRow("all axes, Escape") << true << true;
}

void DeleteAxisTest::anyAnswerButYesKeepsTheAxes()
{
    QFETCH(bool, everything);
    QFETCH(bool, escape);
    ThreeAxes fixture;
    fixture.select(everything ? fixture.project.unitPath() : fixture.project.axisPath(1));
    MessageBoxWatcher boxes;
    if (escape)
        boxes.escape();
    else
        boxes.answer(text("No"));
    fixture.call(everything ? "deleteAllAxis" : "deleteAxis");
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(fixture.axisNames(), all);
    QVERIFY(fixture.host.calls.entries().isEmpty());
}

void DeleteAxisTest::selectionThatMovesOnDoesNotMislead()
{
    ThreeAxes fixture;
    fixture.host.view.selectedByChanges = fixture.project.axisPath(3);
    fixture.deleteAxis(2);
    QCOMPARE(fixture.axisNames(), (QStringList{ text("feed"), text("turn") }));
    QCOMPARE(fixture.shownAxes(), fixture.axisNames());

    fixture.host.view.selectedByChanges = fixture.project.unitPath();
    fixture.deleteAll();
    QVERIFY(fixture.axisNames().isEmpty());
    QVERIFY(fixture.shownAxes().isEmpty());
    fixture.host.viewHelper.stack.undo();
    QCOMPARE(fixture.shownAxes().size(), 2);
}

void DeleteAxisTest::commandIsPushedBeforeTheRemoval()
{
    ThreeAxes fixture;
    fixture.logModel();
    fixture.deleteAxis(2);
    QCOMPARE(fixture.host.calls.entries(),
        (QStringList{ text("view.nodeProperty(Line.ConfigAndSetup.Axis.AxisView2, DataBaseKey)"),
            text("view.nodeRow(Line.ConfigAndSetup.Axis.AxisView2)"), text("viewHelper.pushCommand()"),
            text("model.removed(2)"), text("view.removeNode(Line.ConfigAndSetup.Axis.AxisView2, true)") }));
    QCOMPARE(fixture.shownAxes(), (QStringList{ text("feed"), text("turn") }));
    QCOMPARE(fixture.axisNames(), (QStringList{ text("feed"), text("turn") }));
}

void DeleteAxisTest::undoPutsTheNodeBackInItsRow()
{
    ThreeAxes fixture;
    fixture.deleteAxis(2);
    fixture.host.viewHelper.stack.undo();
    QCOMPARE(fixture.shownAxes(), all);
    QVERIFY(fixture.axis(2));
    QCOMPARE(fixture.axis(2)->property(text("Row"), QString()), text("1"));
    const QMap<QString, QVariant> properties = fixture.host.view.node(fixture.project.axisPath(2))->properties;
    QCOMPARE(properties,
        (QMap<QString, QVariant>{ { text("FileName"), fixture.project.axisPath(2) },
            { text("MimeType"), text("AxisView") }, { text("NodeType"), text("AxisNode") },
            { text("DataBaseKey"), 2u } }));
}

void DeleteAxisTest::redoAfterRedoStaysInStep()
{
    ThreeAxes fixture;
    fixture.deleteAxis(3);
    fixture.deleteAxis(1);
    QUndoStack& stack = fixture.host.viewHelper.stack;
    for (int round = 0; round < 3; ++round) {
        stack.undo();
        QCOMPARE(fixture.shownAxes(), (QStringList{ text("feed"), text("lift") }));
        stack.undo();
        QCOMPARE(fixture.shownAxes(), all);
        QCOMPARE(fixture.axisNames().size(), 3);
        stack.redo();
        QCOMPARE(fixture.shownAxes(), (QStringList{ text("feed"), text("lift") }));
        stack.redo();
        QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
        QCOMPARE(fixture.axisNames(), QStringList{ text("lift") });
    }
}

void DeleteAxisTest::openEditorIsLeftAlone()
{
    ThreeAxes fixture;
    QVERIFY(fixture.host.editorManager.openEditor(fixture.project.axisPath(2), text("AxisView")));
    fixture.deleteAxis(2);
    QCOMPARE(fixture.host.editorManager.openFiles(), QStringList{ fixture.project.axisPath(2) });
    fixture.deleteAll();
    QCOMPARE(fixture.host.editorManager.openFiles(), QStringList{ fixture.project.axisPath(2) });
}

void DeleteAxisTest::deletionEndsSilentlyWithout_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the host") << "host";
    QTest::newRow("the tree") << "Solution.View";
    QTest::newRow("the project") << "project";
}

void DeleteAxisTest::deletionEndsSilentlyWithout()
{
    QFETCH(QString, missing);
    ThreeAxes fixture;
    fixture.select(fixture.project.axisPath(2));
    QCOMPARE(fixture.questionsWithout(missing, "deleteAxis"), 1);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
    QCOMPARE(fixture.shownAxes(), all);
}

void DeleteAxisTest::deletionOfANodeWithoutRecordEnds()
{
    ThreeAxes fixture;
    fixture.select(fixture.project.unitPath());
    MessageBoxWatcher boxes;
    boxes.answer(text("Yes"));
    fixture.call("deleteAxis");
    QCOMPARE(fixture.axisNames(), all);
    QCOMPARE(fixture.shownAxes(), all);
}

void DeleteAxisTest::deletionWithoutUndoStackStopsAfterTheRow()
{
    ThreeAxes fixture;
    fixture.host.withhold(text("Solution.ViewHelper"));
    fixture.deleteAxis(2);
    QCOMPARE(fixture.axisNames(), all);
    QCOMPARE(fixture.shownAxes(), all);
    QCOMPARE(fixture.axis(2)->property(text("Row"), QString()), text("1"));
}

void DeleteAxisTest::allAreRemovedFromTheLastToTheFirst()
{
    ThreeAxes fixture;
    fixture.logModel();
    fixture.deleteAll();
    QStringList expected{ text("viewHelper.beginMacro()"), text("view.childNodes(Line.ConfigAndSetup.Axis)") };
    for (const int id : { 3, 2, 1 }) {
        const QString path = fixture.project.axisPath(static_cast<quint32>(id));
        expected += { text("view.nodeProperty(%1, DataBaseKey)").arg(path), text("model.removed(%1)").arg(id),
            text("viewHelper.pushCommand()"), text("view.removeNode(%1, true)").arg(path) };
    }
    expected += text("viewHelper.endMacro()");
    QCOMPARE(fixture.host.calls.entries(), expected);
    QVERIFY(fixture.axisNames().isEmpty());
    QVERIFY(fixture.shownAxes().isEmpty());
}

void DeleteAxisTest::allComeBackInOneStep()
{
    ThreeAxes fixture;
    for (quint32 id = 1; id <= 3; ++id)
        fixture.axis(id)->setProperty(text("Row"), QString::number(id - 1));
    fixture.deleteAll();
    QUndoStack& stack = fixture.host.viewHelper.stack;
    QCOMPARE(stack.count(), 1);
    for (int round = 0; round < 2; ++round) {
        stack.undo();
        QCOMPARE(fixture.axisNames(), all);
        QCOMPARE(fixture.shownAxes(), all);
        stack.redo();
        QVERIFY(fixture.axisNames().isEmpty());
        QVERIFY(fixture.shownAxes().isEmpty());
    }
}

void DeleteAxisTest::rowsAreNotStoredWhenAllGo()
{
    ThreeAxes fixture;
    fixture.axis(2)->setProperty(text("Row"), text("7"));
    fixture.deleteAll();
    fixture.host.viewHelper.stack.undo();
    QCOMPARE(fixture.axis(2)->property(text("Row"), text("none")), text("7"));
    QCOMPARE(fixture.axis(1)->property(text("Row"), text("none")), text("none"));
    QCOMPARE(fixture.host.calls.count(text("view.nodeRow")), 0);
    QCOMPARE(fixture.shownAxes(), (QStringList{ text("turn"), text("feed"), text("lift") }));
}

void DeleteAxisTest::entriesWithoutRecordArePassedOver()
{
    ThreeAxes fixture;
    Solution::NodeDescription stranger;
    stranger.name = text("Stranger");
    stranger.displayText = text("stranger");
    fixture.host.view.insertNode(fixture.project.unitPath(), 1, stranger);
    fixture.deleteAll();
    QVERIFY(fixture.axisNames().isEmpty());
    QCOMPARE(fixture.shownAxes(), QStringList{ text("stranger") });
}

void DeleteAxisTest::emptyUnitLeavesNoUndoEntry()
{
    PluginFixture fixture;
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    MessageBoxWatcher boxes;
    boxes.answer(text("Yes"));
    fixture.call("deleteAllAxis");
    QCOMPARE(fixture.host.calls.count(text("viewHelper.endMacro")), 1);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void DeleteAxisTest::deletionOfAllEndsSilentlyWithout_data()
{
    deletionEndsSilentlyWithout_data();
    QTest::newRow("the undo stack") << "Solution.ViewHelper";
}

void DeleteAxisTest::deletionOfAllEndsSilentlyWithout()
{
    QFETCH(QString, missing);
    ThreeAxes fixture;
    fixture.select(fixture.project.unitPath());
    QCOMPARE(fixture.questionsWithout(missing, "deleteAllAxis"), 1);
    QCOMPARE(fixture.host.calls.count(text("viewHelper.beginMacro")), 0);
    QCOMPARE(fixture.shownAxes(), all);
}

QTEST_MAIN(DeleteAxisTest)
#include "DeleteAxisTest.moc"
