#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"

#include <QDialog>
#include <QLineEdit>
#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// Runs the rename command on an axis and enters a name.
void rename(PluginFixture& fixture, const AxisTable* axis, const QString& name)
{
    ModalDialogDriver dialogs([&name](QDialog* dialog) { DialogInput::enter(dialog, name); });
    fixture.send(fixture.pathOf(axis), Solution::NodeSelected);
    fixture.host.calls.clear();
    fixture.call("renameAxis");
}

} // namespace

/// The command "Rename" with its undo.
class RenameAxisTest : public QObject {
    Q_OBJECT

private slots:
    void recordAndNodeGetTheName();
    void recordIsStoredBeforeTheDialog();
    void dialogStartsWithThePresentName();
    void dialogHasNoParent();
    void openEditorIsClosed();
    void stepsFollowInOrder();
    void undoAndRedoRenameBothAndCloseTheEditor();
    void undoGoesBackToTheNameFromBeforeTheDialog();
    void selectionThatMovesOnDoesNotMislead();
    void cancelledDialogEndsTheFlow();
    void emptyNameEndsTheFlow();
    void refusedNameIsTold();
    void renameEndsSilentlyWithout_data();
    void renameEndsSilentlyWithout();
    void nodeWithoutRecordEndsTheFlow();
    void withoutEditorManagerThereIsNoUndoEntry();
    void withoutUndoStackTheNameStays();
    void otherAxesKeepTheirEditors();
};

void RenameAxisTest::recordAndNodeGetTheName()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    rename(fixture, axis, text("lift"));
    QCOMPARE(axis->name(), text("lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QCOMPARE(fixture.host.viewHelper.stack.count(), 1);
}

void RenameAxisTest::recordIsStoredBeforeTheDialog()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    QVERIFY(axis->modified);
    bool modifiedInDialog = true;
    ModalDialogDriver dialogs([&](QDialog*) { modifiedInDialog = axis->modified; });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(dialogs.count, 1);
    QVERIFY(!modifiedInDialog);
}

void RenameAxisTest::dialogStartsWithThePresentName()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    QString shown;
    ModalDialogDriver dialogs([&](QDialog* dialog) { shown = dialog->findChild<QLineEdit*>()->text(); });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(shown, text("feed"));
}

void RenameAxisTest::dialogHasNoParent()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    bool hasParent = true;
    ModalDialogDriver dialogs([&hasParent](QDialog* dialog) { hasParent = dialog->parent() != nullptr; });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(dialogs.count, 1);
    QVERIFY(!hasParent);
}

void RenameAxisTest::openEditorIsClosed()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    QVERIFY(fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView")));
    rename(fixture, axis, text("lift"));
    QVERIFY(fixture.host.editorManager.openFiles().isEmpty());
}

void RenameAxisTest::stepsFollowInOrder()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    const QString path = fixture.pathOf(axis);
    fixture.host.editorManager.openEditor(path, text("AxisView"));
    rename(fixture, axis, text("lift"));
    const QStringList order = fixture.host.calls.entriesOf({ text("view.nodeProperty"), text("view.setNodeProperty"),
        text("editorManager.findEditor"), text("editorManager.closeEditor"), text("viewHelper.pushCommand") });
    QCOMPARE(order,
        (QStringList{ text("view.nodeProperty(%1, DataBaseKey)").arg(path),
            text("view.setNodeProperty(%1, DisplayName, lift)").arg(path),
            text("view.nodeProperty(%1, FileName)").arg(path), text("editorManager.findEditor(%1, true)").arg(path),
            text("editorManager.closeEditor(%1)").arg(path), text("viewHelper.pushCommand()") }));
}

void RenameAxisTest::undoAndRedoRenameBothAndCloseTheEditor()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    rename(fixture, axis, text("lift"));
    QUndoStack& stack = fixture.host.viewHelper.stack;
    for (int round = 0; round < 2; ++round) {
        fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
        stack.undo();
        QCOMPARE(axis->name(), text("feed"));
        QCOMPARE(fixture.shownAxes(), QStringList{ text("feed") });
        QVERIFY(fixture.host.editorManager.openFiles().isEmpty());
        fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
        stack.redo();
        QCOMPARE(axis->name(), text("lift"));
        QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
        QVERIFY(fixture.host.editorManager.openFiles().isEmpty());
    }
}

void RenameAxisTest::undoGoesBackToTheNameFromBeforeTheDialog()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    ModalDialogDriver dialogs([&](QDialog* dialog) {
        fixture.project.axisModel()->renameAxisTable(axis->id(), text("turn"));
        DialogInput::enter(dialog, text("lift"));
    });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(axis->name(), text("lift"));
    fixture.host.viewHelper.stack.undo();
    QCOMPARE(axis->name(), text("feed"));
}

void RenameAxisTest::selectionThatMovesOnDoesNotMislead()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    const AxisTable* other = fixture.addAxis(text("turn"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    fixture.host.editorManager.openEditor(fixture.pathOf(other), text("AxisView"));
    fixture.host.view.selectedByChanges = fixture.pathOf(other);
    rename(fixture, axis, text("lift"));
    QCOMPARE(fixture.shownAxes(), (QStringList{ text("lift"), text("turn") }));
    QCOMPARE(fixture.host.editorManager.openFiles(), QStringList{ fixture.pathOf(other) });
}

void RenameAxisTest::cancelledDialogEndsTheFlow()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    ModalDialogDriver dialogs([](QDialog* dialog) {
        DialogInput::type(dialog, text("lift"));
        DialogInput::click(dialog, text("Cancel"));
    });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(axis->name(), text("feed"));
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void RenameAxisTest::emptyNameEndsTheFlow()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs([](QDialog* dialog) {
        DialogInput::type(dialog, QString());
        dialog->done(QDialog::Accepted);
    });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(boxes.count(), 0);
    QCOMPARE(fixture.axisNames(), QStringList{ text("feed") });
    QCOMPARE(fixture.host.editorManager.openFiles().size(), 1);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void RenameAxisTest::refusedNameIsTold()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    MessageBoxWatcher boxes;
    // The accepted name is taken between the check of the dialog and the renaming.
    ModalDialogDriver dialogs([&fixture](QDialog* dialog) {
        QObject::connect(dialog, &QDialog::accepted, dialog, [&fixture] { fixture.project.addAxis(text("Lift")); });
        DialogInput::enter(dialog, text("lift"));
    });
    fixture.send(fixture.pathOf(axis), Solution::NodeRename);
    QCOMPARE(boxes.texts(), QStringList{ text("rename axis(feed) error!") });
    QCOMPARE(boxes.boxes.first().title, text("Kestrun"));
    QCOMPARE(boxes.boxes.first().buttons, QStringList{ text("OK") });
    QVERIFY(!boxes.boxes.first().hasParent);
    QCOMPARE(axis->name(), text("feed"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("feed") });
    QCOMPARE(fixture.host.editorManager.openFiles().size(), 1);
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void RenameAxisTest::renameEndsSilentlyWithout_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the tree") << "Solution.View";
    QTest::newRow("the project") << "project";
}

void RenameAxisTest::renameEndsSilentlyWithout()
{
    QFETCH(QString, missing);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.send(fixture.pathOf(axis), Solution::NodeSelected);
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs;
    if (missing == text("project"))
        fixture.project.close();
    else
        fixture.host.withhold(missing);
    fixture.call("renameAxis");
    QCOMPARE(boxes.count() + dialogs.count, 0);
}

void RenameAxisTest::nodeWithoutRecordEndsTheFlow()
{
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    ModalDialogDriver dialogs;
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    fixture.call("renameAxis");
    QCOMPARE(dialogs.count, 0);
    QCOMPARE(fixture.host.view.lastFallback, QVariant(-1));
}

void RenameAxisTest::withoutEditorManagerThereIsNoUndoEntry()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.withhold(text("editor"));
    rename(fixture, axis, text("lift"));
    QCOMPARE(axis->name(), text("lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void RenameAxisTest::withoutUndoStackTheNameStays()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.withhold(text("Solution.ViewHelper"));
    rename(fixture, axis, text("lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

void RenameAxisTest::otherAxesKeepTheirEditors()
{
    PluginFixture fixture;
    const AxisTable* feed = fixture.addAxis(text("feed"));
    const AxisTable* turn = fixture.addAxis(text("turn"));
    fixture.host.editorManager.openEditor(fixture.pathOf(turn), text("AxisView"));
    rename(fixture, feed, text("lift"));
    QCOMPARE(fixture.host.editorManager.openFiles(), QStringList{ fixture.pathOf(turn) });
}

QTEST_MAIN(RenameAxisTest)
#include "RenameAxisTest.moc"
