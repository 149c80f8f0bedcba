#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceLocator.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"

#include <QDialog>
#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// Runs "New Axis" on the unit node and enters a name.
void addAxis(PluginFixture& fixture, const QString& name)
{
    ModalDialogDriver dialogs([&name](QDialog* dialog) { DialogInput::enter(dialog, name); });
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    fixture.host.calls.clear();
    fixture.call("addNewAxis");
}

QJsonObject withLimit(int limit)
{
    QJsonObject description = TestProject::description(text("NV3T_70Q12"));
    QJsonObject limits = description.value(text("limits")).toObject();
    if (limit < 0)
        limits.remove(text("MaxAxis"));
    else
        limits.insert(text("MaxAxis"), limit);
    description.insert(text("limits"), limits);
    return description;
}

} // namespace

/// The command "New Axis", from its dialog to the undo entry.
class NewAxisTest : public QObject {
    Q_OBJECT

private slots:
    void axisIsInModelTreeEditorAndStack();
    void stepsFollowInOrder();
    void recordIsStoredBetweenActivationAndUndoEntry();
    void dialogHasNoParent();
    void nodeGoesUnderTheNodeOfTheMenu();
    void selectionThatMovesOnDoesNotMislead();
    void undoAndRedoMoveModelAndTreeTogether();
    void cancelledDialogEndsTheFlow();
    void emptyNameEndsTheFlow();
    void limitIsToldAfterANameWasAccepted_data();
    void limitIsToldAfterANameWasAccepted();
    void lastFreePlaceCanBeTaken();
    void onlyTheTotalLimitCounts();
    void refusedRecordIsTold();
    void withoutHostThereIsNoDialog();
    void withoutTreeTheFlowEndsAfterTheDialog();
    void projectThatIsGoneEndsTheFlow();
    void withoutEditorManagerThereIsNoUndoEntry();
    void withoutUndoStackTheAxisStays();
    void editorThatDoesNotOpenIsNotActivated();
};

void NewAxisTest::axisIsInModelTreeEditorAndStack()
{
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    addAxis(fixture, text("lift"));

    QCOMPARE(fixture.axisNames(), (QStringList{ text("feed"), text("lift") }));
    QCOMPARE(fixture.shownAxes(), (QStringList{ text("feed"), text("lift") }));
    const AxisTable* axis = fixture.project.axisModel()->axisTable(2);
    QCOMPARE(axis->property(text("AxisType"), QString()), text("Axis_Virtual"));
    QCOMPARE(axis->property(text("Row"), QString()), text("1"));
    QVERIFY2(!axis->modified, "the record is stored");
    const Solution::NodeDescription* node = fixture.host.view.node(fixture.pathOf(axis));
    QCOMPARE(node->properties.size(), 5);
    QCOMPARE(node->properties.value(text("FileName")).toString(), fixture.pathOf(axis));
    QCOMPARE(node->properties.value(text("DeviceID")).toString(), axis->property(text("AxisID"), QString()));
    IEditor* editor = fixture.host.editorManager.findEditor(fixture.pathOf(axis), true);
    QVERIFY(editor);
    QCOMPARE(fixture.host.editorManager.currentEditor(), editor);
    QCOMPARE(editor->displayName(), text("lift"));
    QCOMPARE(fixture.host.viewHelper.stack.count(), 1);
}

void NewAxisTest::stepsFollowInOrder()
{
    PluginFixture fixture;
    fixture.logModel();
    addAxis(fixture, text("lift"));
    const QString path = fixture.project.axisPath(1);
    const QStringList order
        = fixture.host.calls.entriesOf({ text("model.added"), text("view.addNode"), text("view.nodeRow"),
            text("editorManager.openEditor"), text("editorManager.activateEditor"), text("viewHelper.pushCommand") });
    QCOMPARE(order,
        (QStringList{ text("model.added(1)"), text("view.addNode(Line.ConfigAndSetup.Axis, AxisView1, 0)"),
            text("view.nodeRow(%1)").arg(path), text("editorManager.openEditor(%1, AxisView)").arg(path),
            text("editorManager.activateEditor(%1)").arg(path), text("viewHelper.pushCommand()") }));
}

void NewAxisTest::recordIsStoredBetweenActivationAndUndoEntry()
{
    PluginFixture fixture;
    const auto record = [&fixture] { return fixture.project.axisModel()->axisTable(1); };
    // The editor stores the record itself at its opening, so there has to be something new to store afterwards.
    connect(&fixture.host.editorManager, &IEditorManager::editorCreated, &fixture.host,
        [&record] { record()->setProperty(text("HomeAcc"), text("777")); });
    QStringList states;
    fixture.host.calls.heard = [&](const QString& entry) {
        const QString operation = entry.section(QLatin1Char('('), 0, 0);
        if (operation == text("editorManager.activateEditor") || operation == text("viewHelper.pushCommand"))
            states.append(operation + (record()->modified ? text(" unsaved") : text(" saved")));
    };
    addAxis(fixture, text("lift"));
    QCOMPARE(
        states, (QStringList{ text("editorManager.activateEditor unsaved"), text("viewHelper.pushCommand saved") }));
}

void NewAxisTest::dialogHasNoParent()
{
    PluginFixture fixture;
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    bool hasParent = true;
    ModalDialogDriver dialogs([&hasParent](QDialog* dialog) { hasParent = dialog->parent() != nullptr; });
    fixture.call("addNewAxis");
    QCOMPARE(dialogs.count, 1);
    QVERIFY(!hasParent);
}

void NewAxisTest::nodeGoesUnderTheNodeOfTheMenu()
{
    PluginFixture fixture;
    Solution::NodeDescription folder;
    folder.name = text("Folder");
    fixture.host.view.addNode(fixture.project.unitPath(), folder, 0);
    const QString folderPath = fixture.project.unitPath() + text(".Folder");
    fixture.send(folderPath, Solution::NodeSelected);
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::enter(dialog, text("lift")); });
    fixture.call("addNewAxis");
    const Solution::NodeDescription* node = fixture.host.view.node(folderPath + text(".AxisView1"));
    QVERIFY(node);
    QCOMPARE(node->properties.value(text("FileName")).toString(), fixture.project.axisPath(1));
    QCOMPARE(fixture.project.axisModel()->axisTable(1)->property(text("Row"), QString()), text("-1"));
}

void NewAxisTest::selectionThatMovesOnDoesNotMislead()
{
    PluginFixture fixture;
    const AxisTable* feed = fixture.addAxis(text("feed"));
    fixture.host.view.selectedByChanges = fixture.pathOf(feed);
    addAxis(fixture, text("lift"));
    QCOMPARE(fixture.shownAxes(), (QStringList{ text("feed"), text("lift") }));
    QVERIFY(fixture.host.view.childNodes(fixture.pathOf(feed)).isEmpty());
    const AxisTable* lift = fixture.project.axisModel()->axisTable(2);
    QCOMPARE(lift->property(text("Row"), QString()), text("1"));
}

void NewAxisTest::undoAndRedoMoveModelAndTreeTogether()
{
    PluginFixture fixture;
    addAxis(fixture, text("lift"));
    for (int round = 0; round < 2; ++round) {
        fixture.host.viewHelper.stack.undo();
        QVERIFY(fixture.axisNames().isEmpty());
        QVERIFY(fixture.shownAxes().isEmpty());
        fixture.host.viewHelper.stack.redo();
        QCOMPARE(fixture.axisNames(), QStringList{ text("lift") });
        QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    }
    QVERIFY2(!fixture.host.view.node(fixture.project.axisPath(1))->properties.contains(text("DeviceID")),
        "a node that comes back has no device number");
}

void NewAxisTest::cancelledDialogEndsTheFlow()
{
    PluginFixture fixture;
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::click(dialog, text("Cancel")); });
    dialogs.next([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    dialogs.next([](QDialog* dialog) { dialog->close(); });
    for (int round = 0; round < 3; ++round)
        fixture.call("addNewAxis");
    QCOMPARE(dialogs.count, 3);
    QVERIFY(fixture.axisNames().isEmpty());
    QVERIFY(fixture.shownAxes().isEmpty());
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void NewAxisTest::emptyNameEndsTheFlow()
{
    PluginFixture fixture;
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs([](QDialog* dialog) {
        DialogInput::type(dialog, QString());
        dialog->accept();
    });
    fixture.call("addNewAxis");
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(boxes.count(), 0);
    QVERIFY(fixture.axisNames().isEmpty());
}

void NewAxisTest::limitIsToldAfterANameWasAccepted_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("present");
    QTest::addColumn<QString>("message");
    QTest::newRow("limit reached") << 8 << 8 << "supports up to 8 axis!";
    QTest::newRow("limit exceeded") << 2 << 3 << "supports up to 2 axis!";
    QTest::newRow("no limit named") << -1 << 0 << "supports up to 0 axis!";
    QTest::newRow("limit of none") << 0 << 0 << "supports up to 0 axis!";
}

void NewAxisTest::limitIsToldAfterANameWasAccepted()
{
    QFETCH(int, limit);
    QFETCH(int, present);
    QFETCH(QString, message);
    PluginFixture fixture;
    for (int axis = 0; axis < present; ++axis)
        fixture.project.addAxis(text("axis%1").arg(axis));
    fixture.project.changeController(withLimit(limit));
    MessageBoxWatcher boxes;
    addAxis(fixture, text("lift"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(boxes.boxes.first().title, text("Kestrun"));
    QCOMPARE(boxes.boxes.first().text, message);
    QCOMPARE(boxes.boxes.first().buttons, QStringList{ text("OK") });
    QCOMPARE(boxes.boxes.first().icon, QMessageBox::Information);
    QVERIFY(!boxes.boxes.first().hasParent);
    QCOMPARE(fixture.axisNames().size(), present);
    QCOMPARE(fixture.host.calls.count(text("view.addNode")), 0);
    QCOMPARE(fixture.host.viewHelper.stack.count(), 0);
}

void NewAxisTest::lastFreePlaceCanBeTaken()
{
    PluginFixture fixture;
    for (int axis = 0; axis < 7; ++axis)
        fixture.project.addAxis(text("axis%1").arg(axis));
    fixture.project.changeController(withLimit(8));
    MessageBoxWatcher boxes;
    addAxis(fixture, text("lift"));
    QCOMPARE(boxes.count(), 0);
    QCOMPARE(fixture.axisNames().size(), 8);
}

void NewAxisTest::onlyTheTotalLimitCounts()
{
    PluginFixture fixture;
    const int virtualLimit = 16;
    for (int axis = 0; axis <= virtualLimit; ++axis)
        fixture.project.addAxis(text("axis%1").arg(axis));
    MessageBoxWatcher boxes;
    addAxis(fixture, text("lift"));
    QCOMPARE(boxes.count(), 0);
    QVERIFY(fixture.axisNames().contains(text("lift")));
}

void NewAxisTest::refusedRecordIsTold()
{
    PluginFixture fixture;
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs([&fixture](QDialog* dialog) {
        DialogInput::type(dialog, text("lift"));
        fixture.project.addAxis(text("LIFT"));
        DialogInput::click(dialog, text("OK"));
    });
    fixture.call("addNewAxis");
    QCOMPARE(boxes.texts(), QStringList{ text("add axis error!") });
    QCOMPARE(boxes.boxes.first().title, text("Kestrun"));
    QCOMPARE(boxes.boxes.first().buttons, QStringList{ text("OK") });
    QVERIFY(!boxes.boxes.first().hasParent);
    QCOMPARE(fixture.host.calls.count(text("view.addNode")), 0);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void NewAxisTest::withoutHostThereIsNoDialog()
{
    PluginFixture fixture;
    ModalDialogDriver dialogs;
    Solution::publishApplication(nullptr);
    fixture.call("addNewAxis");
    Solution::publishApplication(&fixture.host);
    QCOMPARE(dialogs.count, 0);
}

void NewAxisTest::withoutTreeTheFlowEndsAfterTheDialog()
{
    PluginFixture fixture;
    fixture.host.withhold(text("Solution.View"));
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::enter(dialog, text("lift")); });
    fixture.call("addNewAxis");
    QCOMPARE(dialogs.count, 1);
    QVERIFY(fixture.axisNames().isEmpty());
}

void NewAxisTest::projectThatIsGoneEndsTheFlow()
{
    PluginFixture fixture;
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs([&fixture](QDialog* dialog) {
        DialogInput::type(dialog, text("lift"));
        fixture.project.close();
        DialogInput::click(dialog, text("OK"));
    });
    fixture.call("addNewAxis");
    QCOMPARE(boxes.count(), 0);
    QCOMPARE(fixture.host.calls.count(text("view.addNode")), 0);
}

void NewAxisTest::withoutEditorManagerThereIsNoUndoEntry()
{
    PluginFixture fixture;
    fixture.host.withhold(text("editor"));
    addAxis(fixture, text("lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    const AxisTable* axis = fixture.project.axisModel()->axisTable(1);
    QCOMPARE(axis->property(text("Row"), QString()), text("0"));
    QVERIFY2(axis->modified, "the record is not stored");
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void NewAxisTest::withoutUndoStackTheAxisStays()
{
    PluginFixture fixture;
    fixture.host.withhold(text("Solution.ViewHelper"));
    addAxis(fixture, text("lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QVERIFY(!fixture.project.axisModel()->axisTable(1)->modified);
    QCOMPARE(fixture.host.editorManager.openFiles().size(), 1);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void NewAxisTest::editorThatDoesNotOpenIsNotActivated()
{
    PluginFixture fixture;
    fixture.host.editorManager.refuseToOpen = true;
    addAxis(fixture, text("lift"));
    QCOMPARE(fixture.host.calls.count(text("editorManager.activateEditor")), 0);
    QVERIFY2(!fixture.project.axisModel()->axisTable(1)->modified, "the record is stored all the same");
    QVERIFY(fixture.host.viewHelper.stack.canUndo());
}

QTEST_MAIN(NewAxisTest)
#include "NewAxisTest.moc"
